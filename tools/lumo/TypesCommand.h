// TypesCommand.h: `lumo types`: which types there are, and what they are made of.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace Lumo {

class TypesCommand {
 public:
  /// Adds the command to the program, which fills this object when it parses.
  explicit TypesCommand( CLI::App & program );

  /// Whether the command line named it.
  bool isGiven() const { return command_->parsed(); }

  /// What it prints. Raises Failure "there is no type 'Bridging::Confg'; did you mean
  /// "Bridging::Config"?" for a name that is none.
  std::string output() const;

 private:
  CLI::App * const command_;
  std::vector< std::string > names_;
  bool isInFull_ = false;
  bool isJson_ = false;
};

}  // namespace Lumo
