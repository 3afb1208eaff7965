// FieldOf.h: a field of a wrapped value, by its number. As GenericIf.h says of threads.
#pragma once

#include <koi/GenericIf.h>

namespace Koi {

/// The field that the value's type node lists at that place.
inline GenericIfPtr fieldOf( GenericIf const & v, std::size_t index ) {
  GenericIfOp const read{ static_cast< int >( index ), GenericIfOp::read };
  return v.type()->genericIfAttributeOp( v, read, {}, nullptr );
}

}  // namespace Koi
