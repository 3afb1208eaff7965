#include "Options.h"

#include <CLI/CLI.hpp>

namespace VlanCounters {

namespace {

Koi::Seconds intervalOf( std::string const & given ) {
  if( auto const interval = Frames::numberOf( given ); interval && *interval >= 0.001 )
    return *interval;
  throw Frames::UsageException( "--interval '" + given +
                                "': a number of seconds was expected, at least 0.001" );
}

}  // namespace

std::optional< int > readCommandLine( int argc, char ** argv, Options & options ) {
  CLI::App app(
      "Counts the frames of packet captures by VLAN into a table in shared memory, and serves "
      "requests to clear the counters.",
      "vlan-counters" );
  Frames::CaptureArguments given;
  Frames::addCaptureOptions( app, given );
  app.add_option( "--config", options.configPath,
                  "the bridge's configuration in JSON; --native prevails" )
      ->type_name( "FILE" );
  std::optional< std::string > interval;
  app.add_option( "--interval", interval, "how often the table is refreshed (1)" )
      ->type_name( "SECONDS" );
  app.add_flag( "--serve", options.serve, "go on serving requests when the captures have ended" );
  app.add_option( "--root", options.root,
                  "where tables lie; LUMO_SHM_ROOT of the environment, else /dev/shm/lumo" )
      ->type_name( "DIR" );
  app.footer( "Ports are named as interfaces are: eth1, eth3/1, lag7." );
  return Frames::parsed( app, argc, argv, [&] {
    options.captures = Frames::portCapturesOf( given );
    options.pace = Frames::paceOf( given );
    if( interval )
      options.interval = intervalOf( *interval );
    if( options.captures.empty() && !options.serve )
      throw Frames::UsageException( "--capture PORT=FILE or --serve is required" );
  } );
}

}  // namespace VlanCounters
