// IntfSubcommand.h: what the commands that show or clear something of interfaces have in common:
// which system, which interfaces, and in which form.
#pragma once

#include <set>
#include <vector>

#include <wirex/IntfId.h>
#include <nlohmann/json.hpp>

#include "Subcommand.h"
#include "SystemTree.h"

namespace Lumo {

using IntfSet = std::set< Wirex::IntfId >;

/// "vlan10,vlan20".
std::string intfsText( IntfSet const & intfs );

/// The interfaces that a command line names, and which of them have been met.
class IntfFilter {
 public:
  /// Of no names all interfaces are admitted. Raises Failure for a name that no interface has, with
  /// the parser's text.
  explicit IntfFilter( std::vector< std::string > const & names );

  bool admits( Wirex::IntfId const & intf );

  /// Complains of each that was named and not met, as "lumo: <name>: <what>".
  Status complainOfMissing( std::string const & what ) const;

 private:
  IntfSet named_;
  IntfSet missing_;
};

class IntfSubcommand : public Subcommand {
 protected:
  using Json = nlohmann::ordered_json;

  IntfSubcommand( CLI::App & group, std::string const & name, std::string const & description,
                  std::string const & namesDescription );
  void addJson() { command().add_flag( "--json", isJson_, "print one JSON object" ); }

  bool isJson() const { return isJson_; }
  std::vector< std::string > const & names() const { return names_; }
  std::string const & givenSysname() const { return sysname_; }
  SystemTree tree() const { return SystemTree( root(), systemMeant( root(), sysname_ ) ); }

  /// The object with its schema "lumo.<kind>/1" and the system's name, as text; what is no UTF-8
  /// is replaced.
  static std::string jsonText( std::string const & kind, std::string const & sysname,
                               std::string const & name, Json const & members );

 private:
  std::vector< std::string > names_;
  std::string sysname_;
  bool isJson_ = false;
};

}  // namespace Lumo
