#include "TypeText.h"

#include <algorithm>
#include <vector>

#include <koi/EnumType.h>

#include "TypeKind.h"

namespace Lumo {
namespace {

struct Column {
  std::string heading;    // empty in all of them: no line of headings
  bool isNumber = false;  // to the right, as numbers stand
};
using Row = std::vector< std::string >;

/// The rows in columns as wide as they need to be, two blanks between them, none at a line's end.
std::string aligned( std::vector< Column > const & columns, std::vector< Row > const & rows,
                     std::string const & indent = {} ) {
  std::vector< Row > lines;
  Row headings;
  for( Column const & column : columns )
    headings.push_back( column.heading );
  if( !columns[0].heading.empty() )
    lines.push_back( headings );
  lines.insert( lines.end(), rows.begin(), rows.end() );
  std::vector< std::size_t > widths( columns.size() );
  for( Row const & line : lines )
    for( std::size_t i = 0; i < line.size(); ++i )
      widths[i] = std::max( widths[i], line[i].size() );
  std::string text;
  for( Row const & line : lines ) {
    text += indent;
    for( std::size_t i = 0; i < line.size(); ++i ) {
      std::string const blanks( widths[i] - line[i].size(), ' ' );
      bool const isLast = i + 1 == line.size();
      text += columns[i].isNumber ? blanks + line[i] : line[i] + ( isLast ? "" : blanks );
      text += isLast ? "\n" : "  ";
    }
  }
  return text;
}

std::string counted( std::size_t count, std::string const & one, std::string const & many ) {
  return std::to_string( count ) + " " + ( count == 1 ? one : many );
}

std::vector< Row > attributeRows( Koi::KoiType const & type ) {
  std::vector< Row > rows;
  for( auto const & attribute : type.fields ) {
    std::string const key =
        attribute.key ? "[ " + std::string( attribute.key->name ) + " ]" : std::string();
    std::string kind = attributeKind( type, attribute );
    if( attribute.keyInValue )
      kind += ", members hold their key";
    if( attribute.zeroAdmitted )
      kind += ", or 0";
    rows.push_back( { attribute.name + key, std::string( typeName( attribute ) ), kind } );
  }
  return rows;
}

/// "( vlanId : Bridging::VlanId, internal : Koi::Bool )"
std::string constructorOf( Koi::KoiType const & type ) {
  std::string parameters;
  for( auto const & parameter : type.parameters )
    parameters += ( parameters.empty() ? " " : ", " ) + std::string( parameter.name + 1 ) + " : " +
                  std::string( typeName( parameter ) );
  return "(" + parameters + " )";
}

}  // namespace

std::string typeTable( Types types ) {
  std::vector< Row > rows;
  for( auto const * const type : types )
    rows.push_back( { type->name, std::string( kindOf( *type ) ), std::to_string( type->size ),
                      std::to_string( numAttributes( *type ) ) } );
  return aligned( { { "type" }, { "kind" }, { "bytes", true }, { "attributes", true } }, rows ) +
         counted( types.size(), "type", "types" ) + "\n";
}

std::string typeInFull( Koi::KoiType const & type ) {
  std::string text = type.name + ( ": " + std::string( kindOf( type ) ) ) + ", " +
                     counted( type.size, "byte", "bytes" ) +
                     ( type.hashable ? ", hashable\n" : "\n" );
  if( type.kind == Koi::KoiType::entity )
    text += "  built from " + constructorOf( type ) + "\n";
  std::vector< Row > rows;
  if( !type.enumType )
    return text + aligned( { {}, {}, {} }, attributeRows( type ), "  " );
  for( auto const & entry : type.enumType->entries )
    rows.push_back( { entry.name, std::to_string( entry.value ) } );
  return text + aligned( { {}, { "", true } }, rows, "  " );
}

}  // namespace Lumo
