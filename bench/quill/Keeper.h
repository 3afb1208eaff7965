// Keeper.h: runs the benchmark in a process of its own and puts away what it leaves, however it
// ends: its files are in memory, and some are gigabytes.
#pragma once

#include <filesystem>
#include <functional>

namespace Bench {

/// Makes a new folder in `parent`, runs work( folder ) in a child process, removes the folder, and
/// returns the child's exit status: what work returned, or 128 + the signal that ended it. Signals
/// that ask this process to end are passed on. Nothing can be put away after SIGKILL to this
/// process, but the child ends even then. Throws std::system_error when there is no folder or
/// process to be had.
int kept( std::filesystem::path const & parent,
          std::function< int( std::filesystem::path const & ) > const & work );

}  // namespace Bench
