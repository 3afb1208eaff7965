#include "TableCommand.h"

namespace Lumo {

TableCommand::TableCommand( CLI::App & program )
    : command_( program.add_subcommand( "table", "looks at tables in shared memory" ) ) {
  command_->require_subcommand( 1 );
  for( auto const add : { tableList, tableStat, tableDump, tableVerify, tableFollow } )
    subcommands_.push_back( add( *command_ ) );
}

Status TableCommand::run( Output & output ) const {
  for( auto const & subcommand : subcommands_ )
    if( subcommand->isGiven() )
      return subcommand->run( output );
  return wrongUse;
}

Quill::TableType const & knownType( TableFacts const & facts ) {
  std::string const name = facts.slots.valueTypeName();
  auto const * const type = Quill::tableType( name );
  if( !type && !facts.fault.empty() )
    throw Failure( corrupt, facts.name + ": corrupt: " + facts.fault );
  if( !type )
    throw Failure( unreachable,
                   "table " + facts.name + " holds " + name + ", which this build does not know" );
  return *type;
}

}  // namespace Lumo
