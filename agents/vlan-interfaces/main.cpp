// vlan-interfaces: the agent of a system's VLAN interfaces. README.md in this folder says what it
// does.
//
// Exit status: 0 when it was interrupted; 2 for a wrong argument, a table that could not be
// written, a tree that could not be served or a capture that could not be read to its end.

#include <fmt/format.h>
#include <frames/Interrupts.h>
#include <frames/Replay.h>
#include <koi/Exception.h>
#include <koijson/JsonFile.h>

#include "InterfaceAgent.h"
#include "Options.h"

namespace {

constexpr int statusFailed = 2;

int failed( std::string const & why ) {
  fmt::print( stderr, "vlan-interfaces: {}\n", why );
  return statusFailed;
}

void say( std::string const & line ) {
  fmt::print( "{}\n", line );
  std::fflush( stdout );
}

char const * priorityText( Koi::I32 priority ) {
  return priority == Interface::configPriorityLow      ? "low"
         : priority == Interface::configPriorityMedium ? "medium"
                                                       : "high";
}

int run( VlanInterfaces::Options const & options ) {
  auto const config = Bridging::configFactory( Koi::Name( "config" ) );
  if( !options.configPath.empty() )
    Koi::entityFromJsonFile( *config, options.configPath );
  Frames::applyNativeVlans( options.captures, *config );

  Koi::Activity * const activity = Koi::defaultActivity();
  Frames::Interrupts const signals( activity );
  VlanInterfaces::InterfaceAgent agent(
      activity, { .sysname = Koi::Name( options.sysname ),
                  .root = options.root.empty() ? Mem::RootPath() : Mem::RootPath( options.root ),
                  .interval = options.interval,
                  .config = config } );
  agent.onWinner( []( auto const & intfId, auto const & pair ) {
    std::string const name( intfId.stringValue() );
    say( !pair ? fmt::format( "{}: nobody asks for it any more", name )
               : fmt::format( "{}: {} has it, with {} priority", name, std::string( pair.source() ),
                              priorityText( pair.priority() ) ) );
  } );
  std::vector< Frames::Port * > ports;
  for( auto const & capture : options.captures )
    ports.push_back( &agent.port( capture.intf ) );
  say( fmt::format( "serving {} at {}", options.sysname, agent.socket() ) );

  Frames::Replay replay(
      *activity, options.captures, options.pace, [&] { return signals.isInterrupted(); },
      [&]( std::string const & why ) { failed( why ); } );
  for( auto taken = replay.next(); taken.frame; taken = replay.next() )
    agent.frameIs( *ports[taken.capture], *taken.frame );
  bool const isSound = agent.refresh() && replay.isSound();
  if( !signals.isInterrupted() ) {
    if( !options.captures.empty() )
      say( fmt::format( "{} frames counted", agent.numFrames() ) );
    activity->run();
  }
  return isSound ? 0 : statusFailed;
}

}  // namespace

int main( int argc, char ** argv ) {
  VlanInterfaces::Options options;
  if( auto const status = VlanInterfaces::readCommandLine( argc, argv, options ) )
    return *status;
  try {
    return run( options );
  } catch( std::runtime_error const & e ) {  // no room, another writer, a wrong configuration
    return failed( e.what() );
  }
}
