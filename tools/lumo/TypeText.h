// TypeText.h: types as people read them.
#pragma once

#include <span>
#include <string>

#include <koi/KoiType.h>

namespace Lumo {

using Types = std::span< Koi::KoiType const * const >;

/// A line for each type under a line of headings: its name, kind, size and number of attributes;
/// then how many types there are.
std::string typeTable( Types types );

/// A type with all its attributes, fields or enumerators, a line each.
std::string typeInFull( Koi::KoiType const & type );

}  // namespace Lumo
