// CommandGroup.h: the commands of `lumo` that have one word in common: `lumo table ls`, ...
#pragma once

#include <initializer_list>
#include <vector>

#include "Subcommands.h"

namespace Lumo {

class CommandGroup {
 public:
  /// Adds the group to the program, which fills this object when it parses.
  CommandGroup( CLI::App & program, std::string const & name, std::string const & description,
                std::initializer_list< AddSubcommand * > subcommands );

  bool isGiven() const { return command_->parsed(); }

  /// Does what the command line says. Raises Failure.
  Status run( Output & output ) const;

 private:
  CLI::App * const command_;
  std::vector< std::unique_ptr< Subcommand > > subcommands_;
};

}  // namespace Lumo
