#include "TypeJson.h"

#include <nlohmann/json.hpp>

#include <koi/EnumType.h>

#include "TypeKind.h"

namespace Lumo {
namespace {

using Json = nlohmann::ordered_json;

Json attributeJson( Koi::KoiType const & type, Koi::KoiAttribute const & attribute ) {
  Json json{ { "name", attribute.name },
             { "kind", attributeKind( type, attribute ) },
             { "type", typeName( attribute ) } };
  if( attribute.key )
    json["key"] = attribute.key->name;
  if( attribute.keyInValue )
    json["keyInValue"] = true;
  if( attribute.zeroAdmitted )
    json["zeroAdmitted"] = true;
  return json;
}

Json typeJson( Koi::KoiType const & type ) {
  Json json{ { "name", type.name },
             { "kind", kindOf( type ) },
             { "size", type.size },
             { "ordered", type.less != nullptr },
             { "hashable", type.hashable } };
  if( type.kind == Koi::KoiType::entity ) {
    json["parameters"] = Json::array();
    for( auto const & parameter : type.parameters )
      json["parameters"].push_back(
          { { "name", parameter.name + 1 }, { "type", typeName( parameter ) } } );
  }
  if( type.enumType ) {
    for( auto const & entry : type.enumType->entries )
      json["enumerators"].push_back( { { "name", entry.name }, { "value", entry.value } } );
    return json;
  }
  json["attributes"] = Json::array();
  for( auto const & attribute : type.fields )
    json["attributes"].push_back( attributeJson( type, attribute ) );
  return json;
}

}  // namespace

std::string typesJson( Types types ) {
  Json all{ { "schema", "lumo.types/1" }, { "types", Json::array() } };
  for( auto const * const type : types )
    all["types"].push_back( typeJson( *type ) );
  return all.dump( 2 ) + "\n";
}

}  // namespace Lumo
