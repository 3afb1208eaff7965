// vlan-source: asks for VLAN interfaces as its standard input says, and prints what becomes of
// them. README.md in this folder has the commands.
//
// Exit status: 0; 1 when a line could not be done, which is said; 2 for a wrong argument, or when
// no agent answers.

#include <coredb/SystemSocket.h>
#include <frames/Interrupts.h>
#include <koi/Exception.h>
#include <CLI/CLI.hpp>

#include <poll.h>
#include <unistd.h>

#include <cstdio>
#include <string>

#include "Source.h"

namespace {

constexpr int statusWrongLine = 1, statusFailed = 2;
constexpr Koi::Seconds patience = 5;

struct Options {
  std::string name, sysname = "switch", root;
};

int failed( std::string const & why ) {
  std::fprintf( stderr, "vlan-source: %s\n", why.c_str() );
  return statusFailed;
}

/// Reads the lines as they come; the activity runs meanwhile.
int run( Options const & options ) {
  Koi::Activity * const activity = Koi::defaultActivity();
  Frames::Interrupts const signals( activity );
  auto const root = options.root.empty() ? Mem::RootPath() : Mem::RootPath( options.root );
  Koi::Name const sysname( options.sysname );
  std::string const socket = Coredb::systemSocket( root, sysname );
  VlanInterfaces::Source source( activity, options.name, sysname, socket,
                                 [&]( std::string const & line ) {
                                   std::printf( "%-10s %s\n", options.name.c_str(), line.c_str() );
                                   std::fflush( stdout );
                                 } );
  if( !source.begin( patience ) )
    return failed( "nobody serves " + options.sysname + ": " +
                   ( source.trouble().empty() ? socket + " does not answer" : source.trouble() ) );

  int status = 0;
  std::string pending;
  bool hasEnded = false;
  while( !hasEnded && !signals.isInterrupted() ) {
    {
      Koi::DescriptorWatch const input( activity, STDIN_FILENO, Koi::DescriptorWatch::readable,
                                        [&] { activity->stop(); } );
      activity->run();
    }
    // The activity may have stopped for something else.
    pollfd readable{ STDIN_FILENO, POLLIN, 0 };
    if( !signals.isInterrupted() && poll( &readable, 1, 0 ) == 0 )
      continue;
    char bytes[4096];
    auto const size = signals.isInterrupted() ? 0 : read( STDIN_FILENO, bytes, sizeof bytes );
    hasEnded = size <= 0;
    pending.append( bytes, size > 0 ? static_cast< std::size_t >( size ) : 0 );
    if( hasEnded && !pending.empty() )
      pending += '\n';
    for( std::size_t end;
         !signals.isInterrupted() && ( end = pending.find( '\n' ) ) != pending.npos; ) {
      std::string const line = pending.substr( 0, end );
      pending.erase( 0, end + 1 );
      try {
        source.command( line );
      } catch( std::runtime_error const & e ) {  // what it is not told to do right
        failed( e.what() );
        status = statusWrongLine;
      }
    }
  }
  source.end( patience );
  return status;
}

}  // namespace

int main( int argc, char ** argv ) {
  CLI::App app( "Asks for VLAN interfaces, and prints what becomes of them.", "vlan-source" );
  Options options;
  app.add_option( "NAME", options.name, "what the source is called" )->required()->type_name( "" );
  app.add_option( "--sysname", options.sysname, "the system whose interfaces they are" )
      ->type_name( "NAME" )
      ->capture_default_str();
  app.add_option( "--root", options.root,
                  "where tables lie; LUMO_SHM_ROOT of the environment, else /dev/shm/lumo" )
      ->type_name( "DIR" );
  app.footer(
      "Commands on standard input: announce vlan10 [mtu N] [cli] [description TEXT]; withdraw "
      "vlan10; priority low|medium|high; wait SECONDS." );
  try {
    app.parse( argc, argv );
    if( options.name.empty() || options.sysname.empty() )
      return failed( "a name is empty" );
    return run( options );
  } catch( CLI::CallForHelp const & ) {
    std::fputs( app.help().c_str(), stdout );
    return 0;
  } catch( CLI::ParseError const & e ) {
    return failed( e.what() );
  } catch( std::runtime_error const & e ) {
    return failed( e.what() );
  }
}
