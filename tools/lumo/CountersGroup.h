// CountersGroup.h: the word `counters` in `lumo show counters vlan` and its like.
#pragma once

#include <CLI/CLI.hpp>

#include <string>

namespace Lumo {

/// Adds it to a group, for the commands that begin with it.
inline CLI::App & countersGroup( CLI::App & group, std::string const & description ) {
  CLI::App & counters = *group.add_subcommand( "counters", description );
  counters.require_subcommand( 1 );
  return counters;
}

}  // namespace Lumo
