// JsonFile.h: an entity out of a JSON file.
#pragma once

#include <string>

#include <koijson/EntityFromJson.h>

namespace Koi {

/// Makes the entity what the file says of it, as entityFromJson() does. Raises JsonException, for a
/// file that cannot be read ("a.json: No such file or directory") and for one that is refused
/// ("a.json: /vlanConfig/5000: VlanId::value < 1 or > 4094 not allowed"); the entity is unchanged
/// then.
void entityFromJsonFile( Entity & entity, std::string const & path );

}  // namespace Koi
