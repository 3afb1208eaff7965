// TableProofs.h: what must hold of a scenario wherever its writer stops, and whatever readers meet
// between two of their loads. Empty, or what does not hold.
#pragma once

#include <string>

#include "TableScenario.h"

namespace Tests {

/// How much was tried.
struct Tried {
  U64 crashes = 0, schedules = 0;
};

/// Stops the writer after every single store; the next attach, and the one after an attach that was
/// stopped anywhere, finds the table.
std::string crashFault( Story const & story, Tried & tried );

/// Lets readers look up and walk under every schedule of up to `mostSwitches` switches between the
/// two, and with a writer that stopped anywhere for good. Operations of more than 60 stores are
/// tried with every seventh of them, others in each run, unless LUMO_EVERY_SCHEDULE is in the
/// environment.
std::string raceFault( Story const & story, Tried & tried );

/// Lets copies of the table, of values and of keys alone, follow its queue under such schedules.
std::string followFault( Story const & story, Tried & tried );

/// The same beside a writer that dies after any store, and another one that puts the table right.
std::string followRepairFault( Story const & story, Tried & tried );

}  // namespace Tests
