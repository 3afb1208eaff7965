#include "Options.h"

#include <CLI/CLI.hpp>

namespace Learn {

namespace {

Koi::Seconds agingTimeOf( std::string const & given ) {
  if( auto const time = numberOf( given ) )
    return *time;
  throw UsageException( "--aging '" + given +
                        "': a number of seconds was expected, or 0 for no ageing" );
}

}  // namespace

void Options::applyTo( Bridging::Config & config ) const {
  if( agingTime )
    config.hostAgingTimeIs( *agingTime );
  applyNativeVlans( captures, config );
}

std::optional< int > readCommandLine( int argc, char ** argv, Options & options ) {
  CLI::App app(
      "Learns MAC addresses from packet captures, as a switch would from its ports, and prints the "
      "table.",
      "learn" );
  CaptureArguments given;
  std::optional< std::string > aging;
  addCaptureOptions( app, given );
  app.add_option( "--config", options.configPath,
                  "the bridge's configuration in JSON; --native and --aging prevail" )
      ->type_name( "FILE" );
  app.add_option( "--aging", aging, "how long a host stays that is not seen (300); 0 is for ever" )
      ->type_name( "SECONDS" );
  app.add_option( "--table", options.table,
                  "publish the hosts as this table in shared memory, beginning with those that it "
                  "has; lumo shows it" )
      ->type_name( "NAME" );
  app.add_option( "--root", options.root,
                  "where tables lie; LUMO_SHM_ROOT of the environment, else /dev/shm/lumo" )
      ->type_name( "DIR" );
  app.add_flag( "--json", options.json, "print one JSON object instead of the table" );
  app.footer(
      "Ports are named as interfaces are: eth1, eth3/1, lag7. Several captures are read by time." );
  return parsed( app, argc, argv, [&] {
    options.captures = portCapturesOf( given );
    if( options.captures.empty() )
      throw UsageException( "--capture PORT=FILE is required" );
    if( aging )
      options.agingTime = agingTimeOf( *aging );
    options.pace = paceOf( given );
    if( options.table.empty() && !options.root.empty() )
      throw UsageException( "--root '" + options.root + "': no --table says what lies there" );
  } );
}

}  // namespace Learn
