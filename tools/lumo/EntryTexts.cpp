#include "EntryTexts.h"

#include <algorithm>

#include <koi/FieldOf.h>
#include <koi/Text.h>
#include <koijson/ValueName.h>

namespace Lumo {
namespace {

bool isNumber( std::string const & text ) {
  return text.find_first_of( "0123456789" ) <= 1 &&
         text.find_first_not_of( "0123456789.+-e" ) == text.npos;
}

}  // namespace

void addEntryHeadings( KoiType const & type, std::string const & name,
                       std::vector< Column > & columns ) {
  if( type.kind != KoiType::structure ) {
    columns.push_back( { name } );
    return;
  }
  for( auto const & field : type.fields )
    addEntryHeadings( *field.type, name.empty() ? field.name : name + "." + field.name, columns );
}
void addEntryTexts( GenericIf const & value, Row & row ) {
  if( value.type()->kind != KoiType::structure ) {
    row.push_back( Koi::valueName( value ) );
    return;
  }
  for( std::size_t i = 0; i < value.type()->fields.size(); ++i )
    addEntryTexts( *Koi::fieldOf( value, i ), row );
}

GenericIfPtr keyFromText( KoiType const & type, std::string const & text ) {
  if( type.kind != KoiType::structure || text.find( '(' ) != text.npos )
    return Koi::valueFromName( &type, text );
  Koi::CtorArgs fields;
  std::size_t from = 0;
  for( auto const & field : type.fields ) {
    auto const comma = std::min( text.find( ',', from ), text.size() );
    fields.push_back( Koi::valueFromName( field.type, text.substr( from, comma - from ) ) );
    from = std::min( comma + 1, text.size() );
  }
  if( from != text.size() )
    Koi::throwParseException( "'" + text.substr( from ) + "' is left over" );
  return type.genericIfFromCtorArgs( &type, fields, nullptr );
}

Columns entryColumns( std::vector< Column > columns, std::vector< Row > const & rows ) {
  for( std::size_t i = 0; i < columns.size(); ++i )
    columns[i].isNumber =
        std::ranges::all_of( rows, [&]( Row const & row ) { return isNumber( row[i] ); } );
  Columns fitted( std::move( columns ) );
  fitted.fit( rows );
  return fitted;
}

}  // namespace Lumo
