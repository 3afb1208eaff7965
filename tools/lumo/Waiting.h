// Waiting.h: how long a command waits for what another process is to do.
#pragma once

#include <functional>

#include <coredb/TreeMount.h>

namespace Lumo {

/// In seconds.
inline constexpr Koi::Seconds patience = 5;

/// Runs this thread's activity until that is so: true. False when it is not after so long, or as
/// soon as the mount has no connection.
bool waitUntil( Coredb::TreeMount const & mount, std::function< bool() > const & isSo,
                Koi::Seconds most = patience );

/// "not cleared within 5 s: <what>".
std::string notClearedText( std::string const & what );

}  // namespace Lumo
