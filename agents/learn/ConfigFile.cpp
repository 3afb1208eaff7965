#include "ConfigFile.h"

#include <koijson/JsonFile.h>

namespace Learn {

void readConfigFile( std::string const & path, Bridging::Config & config ) {
  Koi::entityFromJsonFile( config, path );
}

}  // namespace Learn
