#include "TypeText.h"

#include <koi/EnumType.h>

#include "Columns.h"
#include "TypeKind.h"

namespace Lumo {
namespace {

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
