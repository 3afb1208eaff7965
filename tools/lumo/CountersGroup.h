// CountersGroup.h: the word `counters` in `lumo show counters vlan` and its like.
#pragma once

#include <CLI/CLI.hpp>

#include <string>

namespace Lumo {

/// The word in a group, added when it is not there yet, for the commands that begin with it.
inline CLI::App & countersGroup( CLI::App & group, std::string const & description ) {
  auto const isIt = []( CLI::App const * command ) { return command->get_name() == "counters"; };
  if( auto const there = group.get_subcommands( isIt ); !there.empty() )
    return *there.front();
  CLI::App & counters = *group.add_subcommand( "counters", description );
  counters.require_subcommand( 1 );
  return counters;
}

}  // namespace Lumo
