// ValueName.h: values as people write them where the type is known: strings without quotes. Any
// thread, but for what Ptr.h says of wrapped values.
#pragma once

#include <string>

#include <koi/GenericIf.h>

namespace Koi {

/// The value's canonical text, without the quotes around a word.
std::string valueName( GenericIf const & v );

/// The value of that name, or of that canonical text where that has no quotes. Raises
/// ParseException or RangeException.
GenericIfPtr valueFromName( KoiType const * type, std::string const & name );

}  // namespace Koi
