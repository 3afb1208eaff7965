// ValueFromJson.h: values of any type out of JSON, by their type nodes. Private to the room.
#pragma once

#include <koi/GenericIf.h>

#include "JsonPlace.h"

namespace Koi {

/// A field whose value is settled otherwise: the text may leave it out, but not contradict it.
struct SettledField {
  std::size_t index = static_cast< std::size_t >( -1 );
  GenericIfPtr value{};
};

/// The value that stands there. Fields that it leaves out are those of `present`; zero, empty where
/// that is null. Raises JsonException.
GenericIfPtr valueFromJson( KoiType const * type, JsonPlace const & place,
                            GenericIfPtr const & present = nullptr,
                            SettledField const & settled = {} );

/// The value that a default-constructed one is. Raises RangeException when the type has none: a
/// field refuses zero.
GenericIfPtr zeroOf( KoiType const * type );

/// Whether two values are the same; they are of one type.
bool isSame( GenericIf const & a, GenericIf const & b );

}  // namespace Koi
