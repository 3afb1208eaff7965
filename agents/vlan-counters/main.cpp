// vlan-counters: packet captures in, counters of each VLAN in a table. README.md in this folder
// says what it counts.
//
// Exit status: 0; 2 for a wrong argument, a table that could not be written, a tree that could not
// be served or a capture that could not be read to its end; 130 when it was interrupted before the
// captures had ended.

#include <fmt/format.h>
#include <frames/Interrupts.h>
#include <frames/Replay.h>
#include <koijson/JsonFile.h>

#include <csignal>

#include "CounterAgent.h"
#include "Options.h"

namespace {

constexpr int statusFailed = 2;
constexpr int statusInterrupted = 128 + SIGINT;

int failed( std::string const & why ) {
  fmt::print( stderr, "vlan-counters: {}\n", why );
  return statusFailed;
}

int run( VlanCounters::Options const & options ) {
  auto const config = Bridging::configFactory( Koi::Name( "config" ) );
  if( !options.configPath.empty() )
    Koi::entityFromJsonFile( *config, options.configPath );
  Frames::applyNativeVlans( options.captures, *config );

  Koi::Activity * const activity = Koi::defaultActivity();
  Frames::Interrupts const signals( activity );
  Mem::RootPath const root = options.root.empty() ? Mem::RootPath() : Mem::RootPath( options.root );
  VlanCounters::CounterAgent agent( activity, root, options.interval, config );
  std::vector< Frames::Port * > ports;
  for( auto const & capture : options.captures )
    ports.push_back( &agent.port( capture.intf ) );
  Frames::Replay replay(
      *activity, options.captures, options.pace, [&] { return signals.isInterrupted(); },
      [&]( std::string const & why ) { failed( why ); } );
  for( auto taken = replay.next(); taken.frame; taken = replay.next() )
    agent.frameIs( *ports[taken.capture], *taken.frame );
  bool const isSound = agent.refresh() && replay.isSound();
  if( signals.isInterrupted() )
    return statusInterrupted;
  fmt::print( "{} frames counted, {} dropped by their ports; counters of {} VLANs\n",
              agent.counts().numFrames(), agent.numDropped(), agent.counts().numVlans() );
  std::fflush( stdout );
  if( options.serve )
    activity->run();
  return isSound ? 0 : statusFailed;
}

}  // namespace

int main( int argc, char ** argv ) {
  VlanCounters::Options options;
  if( auto const status = VlanCounters::readCommandLine( argc, argv, options ) )
    return *status;
  try {
    return run( options );
  } catch( std::runtime_error const & e ) {  // no room, another writer, a wrong configuration
    return failed( e.what() );
  }
}
