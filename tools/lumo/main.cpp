// lumo: the command line. docs/lumo-command.md says what it is for.
//
// Exit status: 0; 2 for a wrong argument, a name that is none, or output that could not be written.

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>

#include "TypesCommand.h"

namespace {

constexpr int statusFailed = 2;

int failed( char const * why ) {
  std::fprintf( stderr, "lumo: %s\n", why );
  return statusFailed;
}

int written( std::string const & text ) {
  bool const isWritten = std::fwrite( text.data(), 1, text.size(), stdout ) == text.size() &&
                         std::fflush( stdout ) == 0;
  // Whoever reads may leave early (`| head`).
  if( isWritten || errno == EPIPE )
    return 0;
  return failed( ( std::string( "standard output: " ) + std::strerror( errno ) ).c_str() );
}

}  // namespace

int main( int argc, char ** argv ) {
  std::signal( SIGPIPE, SIG_IGN );  // written() looks at the error
  CLI::App program( "Looks at the Layer-2 state of a switch.", "lumo" );
  program.require_subcommand( 0, 1 );
  program.footer(
      "Exit status: 0; 2 for a wrong argument, a name that is none, or output that could not be "
      "written." );
  Lumo::TypesCommand const types( program );
  try {
    program.parse( argc, argv );
    if( !types.isGiven() )
      return failed( "a command is required; lumo --help names them" );
    return written( types.output() );
  } catch( CLI::CallForHelp const & ) {
    return written( program.help() );
  } catch( CLI::ParseError const & e ) {
    return failed( e.what() );
  } catch( std::runtime_error const & e ) {  // a name that is none
    return failed( e.what() );
  }
}
