#include "Options.h"

#include <CLI/CLI.hpp>

namespace VlanInterfaces {

std::optional< int > readCommandLine( int argc, char ** argv, Options & options ) {
  CLI::App app(
      "Makes VLAN interfaces of what several sources ask for, and serves them to other processes "
      "until it is interrupted.",
      "vlan-interfaces" );
  Frames::CaptureArguments given;
  Frames::addCaptureOptions( app, given );
  app.add_option( "--sysname", options.sysname, "the system whose interfaces they are" )
      ->type_name( "NAME" )
      ->capture_default_str();
  app.add_option( "--config", options.configPath,
                  "the bridge's configuration in JSON; --native prevails" )
      ->type_name( "FILE" );
  app.add_option( "--interval", options.interval, "how often the counters are refreshed, seconds" )
      ->check( CLI::Range( 0.001, 86400.0 ) )
      ->type_name( "SECONDS" )
      ->capture_default_str();
  app.add_option( "--root", options.root,
                  "where tables lie; LUMO_SHM_ROOT of the environment, else /dev/shm/lumo" )
      ->type_name( "DIR" );
  app.footer( "Ports are named as interfaces are: eth1, eth3/1, lag7." );
  return Frames::parsed( app, argc, argv, [&] {
    options.captures = Frames::portCapturesOf( given );
    options.pace = Frames::paceOf( given );
    if( options.sysname.empty() )
      throw Frames::UsageException( "--sysname '': a name was expected" );
  } );
}

}  // namespace VlanInterfaces
