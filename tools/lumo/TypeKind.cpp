#include "TypeKind.h"

#include <algorithm>

#include <koi/AttributeAccess.h>
#include <koi/EnumType.h>

namespace Lumo {

using Koi::AttributeKind;
using Koi::KoiType;

std::string_view kindOf( KoiType const & type ) {
  switch( type.kind ) {
    case KoiType::primitive:
      // Those of the runtime have names of its own namespace.
      return std::string_view( type.name ).starts_with( "Koi::" ) ? "primitive" : "foreign value";
    case KoiType::enumeration:
      return "enumeration";
    case KoiType::single:
      return "value";
    case KoiType::structure:
      return type.less ? "ordered value" : "value";
    case KoiType::entity:
      return "entity";
    case KoiType::reactor:
      break;
  }
  return "reactor";
}

std::size_t numAttributes( KoiType const & type ) {
  return type.enumType ? type.enumType->entries.size() : type.fields.size();
}

std::string attributeKind( KoiType const & type, Koi::KoiAttribute const & attribute ) {
  if( !attribute.access )
    return "field";
  bool const isInitial = std::ranges::any_of( type.parameters, [&]( auto const & parameter ) {
    return parameter.isInitial && std::string_view( parameter.name + 1 ) == attribute.name;
  } );
  std::string const reference = attribute.isWeak ? "weak reference" : "reference";
  std::string const order = attribute.inKeyOrder ? "ordered collection" : "hashed collection";
  switch( attribute.access->kind ) {
    case AttributeKind::parameter:
      return attribute.target ? "parameter, " + reference : "parameter";
    case AttributeKind::computed:
      return attribute.isConstant ? "constant" : "computed";
    case AttributeKind::table:
      return "table in shared memory";
    case AttributeKind::scalar:
      return isInitial ? "settable parameter" : attribute.target ? reference : "attribute";
    case AttributeKind::child:
      return "child";
    case AttributeKind::members:
      return attribute.target ? order + " of " + reference + "s" : order;
    case AttributeKind::children:
      return order + " of children";
    case AttributeKind::queue:
      break;
  }
  return attribute.target ? "queue of " + reference + "s" : "queue";
}

}  // namespace Lumo
