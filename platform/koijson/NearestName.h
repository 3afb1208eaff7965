// NearestName.h: what somebody may have meant who misspelt a name.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Koi {

/// The name that takes the fewest changes of one character to become from `given`, the first of
/// several; empty when even that takes more than a third of its characters.
std::string_view nearestName( std::string_view given,
                              std::vector< std::string_view > const & names );

/// "; did you mean "hostAgingTime"?", or nothing when no name is near.
std::string didYouMean( std::string_view given, std::vector< std::string_view > const & names );

}  // namespace Koi
