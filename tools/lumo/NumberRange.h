// NumberRange.h: a number, or a range of them, as a command line names it.
#pragma once

#include <optional>
#include <string_view>

namespace Lumo {

struct NumberRange {
  unsigned first, last;
};

/// Of "7" and "20-29". Raises RangeException "a number from <low> to <high> was expected, or a
/// range as 20-29".
NumberRange numberRangeOf( std::string_view text, unsigned low, unsigned high );

/// A decimal number; none for another text.
std::optional< unsigned > numberOf( std::string_view text );

}  // namespace Lumo
