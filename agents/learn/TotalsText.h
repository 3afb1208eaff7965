// TotalsText.h: what a learner has seen, for people.
#pragma once

#include <string>

#include "Learner.h"

namespace Learn {

/// Hosts, frames, and what nothing was learned from by reason; a line each.
std::string totalsText( Learner const & learner );

}  // namespace Learn
