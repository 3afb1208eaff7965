#include <koijson/ValueName.h>

#include <algorithm>

#include <koi/EnumType.h>
#include <koi/Text.h>
#include <koi/Value.h>

#include "JsonForm.h"

namespace Koi {
namespace {

GenericIfPtr ofText( KoiType const * type, String8 const & text ) {
  return type->genericIfFromStrRep( type, text, nullptr );
}

GenericIfPtr ofEnumerator( KoiType const * type, std::string const & name ) {
  auto const & entries = type->enumType->entries;
  if( std::ranges::none_of( entries, [&]( auto const & entry ) { return entry.name == name; } ) ) {
    std::string all;
    for( auto const & entry : entries )
      ( all += all.empty() ? "" : ", " ) += entry.name;
    throwParseException( "there is no \"" + name + "\" in " + type->name + " (" + all + ")" );
  }
  return type->genericIfFromCtorArgs( type, CtorArgs{ genericIf( String8( name ) ) }, nullptr );
}

}  // namespace

std::string valueName( GenericIf const & v ) {
  String8 const text = v.strRep();
  if( text.view().starts_with( '\'' ) ) {
    auto it = text.begin();
    String8 const plain = stringFromText( it, text.end() );
    if( !plain.view().empty() &&
        plain.view().find_first_of( " \t\n'\"" ) == std::string_view::npos )
      return std::string( plain.view() );
  }
  return std::string( text.view() );
}

GenericIfPtr valueFromName( KoiType const * type, std::string const & name ) {
  switch( jsonFormOf( type ) ) {
    case JsonForm::enumerator:
      return ofEnumerator( type, name );
    case JsonForm::string:
      return ofText( type, valueToStrep( String8( name ) ) );
    default:
      return ofText( type, name );
  }
}

}  // namespace Koi
