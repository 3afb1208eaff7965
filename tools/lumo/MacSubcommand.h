// MacSubcommand.h: what `lumo show mac` and `lumo watch mac` share: which table, which entries.
#pragma once

#include <string>

#include "MacFilter.h"
#include "Subcommands.h"

namespace Lumo {

class MacSubcommand : public Subcommand {
 protected:
  MacSubcommand( CLI::App & group, std::string const & description )
      : Subcommand( group, "mac", description ), filter_( command() ) {
    command()
        .add_option( "--table", table_, "the table, as lumo table ls names it" )
        ->type_name( "NAME" )
        ->capture_default_str();
  }

  std::string const & table() const { return table_; }
  MacFilter const & filter() const { return filter_; }
  /// Raises Failure when there is no such table, when its headers are not believed, and when it
  /// holds something else.
  void requireMacTable() const;

 private:
  std::string table_ = "quillFdbStatus";
  MacFilter filter_;
};

}  // namespace Lumo
