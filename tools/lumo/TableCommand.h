// TableCommand.h: `lumo table`: looks at keyed tables from outside, beside their writers.
#pragma once

#include <CLI/CLI.hpp>
#include <vector>

#include "TableSubcommand.h"

namespace Lumo {

class TableCommand {
 public:
  /// Adds the command to the program, which fills this object when it parses.
  explicit TableCommand( CLI::App & program );

  bool isGiven() const { return command_->parsed(); }

  /// Does what the command line says. Raises Failure.
  Status run( Output & output ) const;

 private:
  CLI::App * const command_;
  std::vector< std::unique_ptr< TableSubcommand > > subcommands_;
};

}  // namespace Lumo
