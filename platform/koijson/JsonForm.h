// JsonForm.h: how JSON writes the values of a type. Private to the room.
#pragma once

#include <koi/KoiType.h>

namespace Koi {

enum class JsonForm {
  boolean,
  wholeNumber,
  seconds,
  string,      ///< whose canonical text is in quotes, which JSON does without
  text,        ///< a string that holds the canonical text
  enumerator,  ///< a string
  object       ///< or a string that holds the canonical text
};

JsonForm jsonFormOf( KoiType const * type );

}  // namespace Koi
