// lumo: the command line. docs/lumo-command.md says what it is for, and what its exit status says.

#include <csignal>

#include "CommandGroup.h"
#include "TypesCommand.h"

namespace {

using namespace Lumo;

Status failed( Status status, char const * why ) {
  complain( why );
  return status;
}

Status run( CLI::App & program, int argc, char ** argv, Output & output ) {
  TypesCommand const types( program );
  CommandGroup const groups[] = {
      { program,
        "show",
        "shows what there is now",
        { showMac, showInterface, showSubinterface, showVlanInterface, showPortId, showVlanCounters,
          showIntfCounters } },
      { program, "watch", "shows what changes, until it is interrupted", { watchMac } },
      { program, "clear", "begins anew", { clearVlanCounters, clearIntfCounters } },
      { program,
        "table",
        "looks at tables in shared memory",
        { tableList, tableStat, tableDump, tableVerify, tableFollow } } };
  try {
    program.parse( argc, argv );
    for( CommandGroup const & group : groups )
      if( group.isGiven() )
        return group.run( output );
    if( !types.isGiven() )
      return failed( wrongUse, "a command is required; lumo --help names them" );
    output.write( types.output() );
  } catch( CLI::CallForHelp const & ) {
    output.write( program.help() );
  } catch( CLI::ParseError const & e ) {
    return failed( wrongUse, e.what() );
  }
  return succeeded;
}

}  // namespace

int main( int argc, char ** argv ) {
  std::signal( SIGPIPE, SIG_IGN );  // Output looks at the error
  CLI::App program( "Looks at the Layer-2 state of a switch.", "lumo" );
  program.require_subcommand( 0, 1 );
  program.footer(
      "Exit status: 0; 1 for a wrong argument or a name of a type that is none; 2 for what cannot "
      "be read or written; 3 for no such table, entry or interface; 4 for a table that is "
      "corrupt." );
  try {
    Output output;
    Status const status = run( program, argc, argv, output );
    output.flush();
    return status;
  } catch( Failure const & e ) {
    return failed( e.status, e.what() );
  } catch( std::bad_alloc const & ) {
    return failed( unreachable, "out of memory" );
  }
}
