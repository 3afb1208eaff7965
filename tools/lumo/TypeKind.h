// TypeKind.h: what people call the kinds of types and attributes that type nodes tell apart.
#pragma once

#include <string>
#include <string_view>

#include <koi/KoiType.h>

namespace Lumo {

/// "primitive", "foreign value", "enumeration", "value", "ordered value", "entity" or "reactor".
/// Foreign is a value whose bytes are laid out by hand.
std::string_view kindOf( Koi::KoiType const & type );

/// How many attributes, fields or enumerators it has.
std::size_t numAttributes( Koi::KoiType const & type );

/// "field"; of an entity "parameter", "settable parameter", "attribute", "constant", "computed",
/// "child", "hashed collection", "ordered collection" or "queue", and " of children" where it owns
/// entities; "reference", "weak reference" or " of references" where it refers to entities.
std::string attributeKind( Koi::KoiType const & type, Koi::KoiAttribute const & attribute );

/// The type of what an attribute or a parameter holds, or refers to; "Koi::Entity" where that may
/// be of any.
template< class Described >
std::string_view typeName( Described const & described ) {
  auto const * const type = described.type ? described.type : described.target;
  return type ? type->name : "Koi::Entity";
}

}  // namespace Lumo
