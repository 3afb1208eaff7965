// TableSubcommand.h: what the commands of `lumo table` share, and which there are. Each is a file
// of its own.
#pragma once

#include <CLI/CLI.hpp>
#include <memory>
#include <string>

#include <mem/Rova.h>
#include <quill/QuillException.h>
#include <quill/TableType.h>

#include "Output.h"
#include "TableFacts.h"

namespace Lumo {

class TableSubcommand {
 public:
  virtual ~TableSubcommand() = default;

  bool isGiven() const { return command_->parsed(); }
  /// Raises Failure.
  virtual Status run( Output & output ) const = 0;

 protected:
  TableSubcommand( CLI::App & table, std::string const & name, std::string const & description )
      : command_( table.add_subcommand( name, description ) ) {
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

std::unique_ptr< TableSubcommand > tableList( CLI::App & table );
std::unique_ptr< TableSubcommand > tableStat( CLI::App & table );
std::unique_ptr< TableSubcommand > tableDump( CLI::App & table );
std::unique_ptr< TableSubcommand > tableVerify( CLI::App & table );
std::unique_ptr< TableSubcommand > tableFollow( CLI::App & table );

/// The type of a table's values. Raises Failure "table <name> holds <type>, which this build does
/// not know".
Quill::TableType const & knownType( TableFacts const & facts );

/// What `work` gives; what the engine refuses in it is a Failure of that table.
template< class Work >
auto onTable( std::string const & name, Work work ) {
  try {
    return work();
  } catch( Rova::CorruptionDetectedException const & e ) {
    throw Failure( corrupt, name + ": corrupt: " + e.what() );
  } catch( Rova::MemoryResourceException const & e ) {
    throw Failure( unreachable, e.what() );
  } catch( Quill::ReaderStarvedException const & e ) {
    throw Failure( unreachable, name + ": " + e.what() );
  }
}

}  // namespace Lumo
