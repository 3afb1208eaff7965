#include "CommandGroup.h"

namespace Lumo {

CommandGroup::CommandGroup( CLI::App & program, std::string const & name,
                            std::string const & description,
                            std::initializer_list< AddSubcommand * > subcommands )
    : command_( program.add_subcommand( name, description ) ) {
  command_->require_subcommand( 1 );
  for( auto const add : subcommands )
    subcommands_.push_back( add( *command_ ) );
}

Status CommandGroup::run( Output & output ) const {
  for( auto const & subcommand : subcommands_ )
    if( subcommand->isGiven() )
      return subcommand->run( output );
  return wrongUse;
}

}  // namespace Lumo
