// BusGuard.h: keeps a reader alive whose file is cut under its mapping. Any thread registers and
// forgets; the signal may come in any.
//
// The first registration installs a handler of SIGBUS. An access behind the end of a registered
// mapping makes the rest of it plain zeros and sets its flag; any other SIGBUS goes where it would
// have gone without us.
#pragma once

#include <mem/Words.h>

namespace Mem {

/// Guards [base, base + size); what comes back is for unguard(). 0: no more than 1,024 mappings are
/// guarded, this one is not.
unsigned busGuard( void * base, std::size_t size, Flag & lost );
void busUnguard( unsigned guard );

}  // namespace Mem
