// Subcommand.h: one command of a group of `lumo`, as `lumo table dump`. Each is a file of its own;
// Subcommands.h names them.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

#include <mem/TableDir.h>

#include "Output.h"

namespace Lumo {

class Subcommand {
 public:
  virtual ~Subcommand() = default;

  bool isGiven() const { return command_->parsed(); }
  /// Raises Failure.
  virtual Status run( Output & output ) const = 0;

 protected:
  Subcommand( CLI::App & group, std::string const & name, std::string const & description )
      : command_( group.add_subcommand( name, description ) ) {
    command_
        ->add_option( "--root", root_,
                      "where tables lie; LUMO_SHM_ROOT of the environment, else /dev/shm/lumo" )
        ->type_name( "DIR" );
  }

  CLI::App & command() { return *command_; }
  Mem::RootPath root() const { return root_.empty() ? Mem::RootPath() : Mem::RootPath( root_ ); }

 private:
  CLI::App * const command_;
  std::string root_;
};

}  // namespace Lumo
