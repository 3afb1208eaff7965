// ConfigFile.h: the switch's configuration out of a file.
#pragma once

#include <Lumo/Bridging.h>

#include <string>

namespace Learn {

/// Makes the configuration what a JSON file says of it, by the model's own names; what the file
/// does not name stays as it is. koijson/EntityFromJson.h says how JSON writes an entity. Raises
/// std::runtime_error, for a file that cannot be read ("a.json: No such file or directory") and for
/// one that says what the configuration refuses ("a.json: /vlanConfig/5000: VlanId::value < 1 or >
/// 4094 not allowed"); the configuration is unchanged then.
void readConfigFile( std::string const & path, Bridging::Config & config );

}  // namespace Learn
