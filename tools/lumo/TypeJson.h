// TypeJson.h: types as programs read them.
#pragma once

#include <string>

#include "TypeText.h"

namespace Lumo {

/// One object, {"schema": "lumo.types/1", "types": [...]}: each type in full, as
/// docs/lumo-command.md says.
std::string typesJson( Types types );

}  // namespace Lumo
