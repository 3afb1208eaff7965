// JsonText.h: a JSON text that says nothing twice. Private to the room.
#pragma once

#include <string_view>

#include "JsonPlace.h"

namespace Koi {

/// Raises JsonException "parse error at line 3, column 5: ..." for what is no JSON, and
/// "<path>: "<name>" stands there twice" for an object that names a member twice.
Json parsedJson( std::string_view text );

}  // namespace Koi
