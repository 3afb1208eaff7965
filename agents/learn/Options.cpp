#include "Options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <cstdio>
#include <filesystem>

namespace Learn {

namespace {

/// A wrong argument; the text names the argument.
class UsageException : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// One PORT=VALUE as it was given, and what it says.
struct Assignment {
  std::string whole;  // with the option's name, for messages
  Wirex::IntfId intf;
  std::string value;

  [[noreturn]] void refuse( std::string_view why ) const {
    throw UsageException( whole + ": " + std::string( why ) );
  }
};

Assignment assignmentOf( char const * option, std::string const & given, char const * form ) {
  Assignment assignment{ std::string( option ) + " '" + given + "'", {}, {} };
  auto const equals = given.find( '=' );
  if( equals == std::string::npos || equals == 0 || equals + 1 == given.size() )
    assignment.refuse( std::string( form ) + " was expected" );
  assignment.value = given.substr( equals + 1 );
  try {
    assignment.intf = Wirex::IntfId( Koi::String8( given.substr( 0, equals ) ) );
  } catch( Koi::Exception const & e ) {
    // The name is the user's, so it is the user who is told.
    assignment.refuse( e.what() );
  }
  return assignment;
}

PortCapture * find( Options & options, Wirex::IntfId intf ) {
  auto const at = std::find_if( options.captures.begin(), options.captures.end(),
                                [&]( PortCapture const & c ) { return c.intf == intf; } );
  return at == options.captures.end() ? nullptr : &*at;
}

void addCapture( Options & options, std::string const & given ) {
  Assignment const capture = assignmentOf( "--capture", given, "PORT=FILE" );
  if( find( options, capture.intf ) )
    capture.refuse( "the port has a capture already" );
  if( capture.value == "-" ) {
    for( PortCapture const & other : options.captures )
      if( other.path == "-" )
        capture.refuse( "standard input is another port's capture" );
  } else if( std::error_code error; !std::filesystem::exists( capture.value, error ) && !error ) {
    capture.refuse( "no such file" );
  }
  options.captures.push_back( { capture.intf, capture.value, std::nullopt } );
}

Bridging::VlanId vlanOf( Assignment const & native ) {
  Koi::U32 vlan = 0;
  char const * const end = native.value.data() + native.value.size();
  auto const [stop, error] = std::from_chars( native.value.data(), end, vlan );
  if( error != std::errc() || stop != end || vlan < 1 || vlan > 4094 )
    native.refuse( "the VLAN is a number from 1 to 4094" );
  return Bridging::VlanId( static_cast< Koi::U16 >( vlan ) );
}

void setNative( Options & options, std::string const & given ) {
  Assignment const native = assignmentOf( "--native", given, "PORT=VLAN" );
  Bridging::VlanId const vlan = vlanOf( native );
  PortCapture * const capture = find( options, native.intf );
  if( !capture )
    native.refuse( "no --capture names the port" );
  if( capture->nativeVlan )
    native.refuse( "the port has a native VLAN already" );
  capture->nativeVlan = vlan;
}

/// A number below a thousand million; nothing when it is none.
std::optional< double > numberOf( std::string const & given ) {
  double number = 0;
  char const * const end = given.data() + given.size();
  auto const [stop, error] = std::from_chars( given.data(), end, number );
  return error == std::errc() && stop == end && number >= 0 && number < 1e9
             ? std::optional( number )
             : std::nullopt;
}

Koi::Seconds agingTimeOf( std::string const & given ) {
  if( auto const time = numberOf( given ) )
    return *time;
  throw UsageException( "--aging '" + given +
                        "': a number of seconds was expected, or 0 for no ageing" );
}

double paceOf( std::string const & given ) {
  if( auto const pace = numberOf( given ); pace && *pace > 0 )
    return *pace;
  throw UsageException( "--pace '" + given + "': a number was expected, 1 for as they came" );
}

}  // namespace

void Options::applyTo( Bridging::Config & config ) const {
  if( agingTime )
    config.hostAgingTimeIs( *agingTime );
  for( PortCapture const & capture : captures ) {
    if( !capture.nativeVlan )
      continue;
    Bridging::VlanIdOrNone const native( capture.nativeVlan->value() );
    auto const port = config.switchIntfConfigIs(
        capture.intf, Bridging::SwitchportModeAndNativeVlan( Bridging::trunk, native ) );
    port->switchportModeAndNativeVlanIs(
        Bridging::SwitchportModeAndNativeVlan( port->switchportMode(), native ) );
  }
}

std::optional< int > readCommandLine( int argc, char ** argv, Options & options ) {
  CLI::App app(
      "Learns MAC addresses from packet captures, as a switch would from its ports, and prints the "
      "table.",
      "learn" );
  std::vector< std::string > captures, natives;
  std::optional< std::string > aging, pace;
  app.add_option( "--capture", captures,
                  "a pcap or pcapng file whose frames come in on PORT; - is standard input" )
      ->type_name( "PORT=FILE" )
      ->allow_extra_args( false );
  app.add_option( "--native", natives, "the VLAN of the port's untagged frames (1)" )
      ->type_name( "PORT=VLAN" )
      ->allow_extra_args( false );
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
  app.add_option( "--pace", pace, "let frames come as they came, so many times faster" )
      ->type_name( "TIMES" );
  app.add_flag( "--json", options.json, "print one JSON object instead of the table" );
  app.footer(
      "Ports are named as interfaces are: eth1, eth3/1, lag7. Several captures are read by time." );
  try {
    app.parse( argc, argv );
    if( captures.empty() )
      throw UsageException( "--capture PORT=FILE is required" );
    for( auto const & given : captures )
      addCapture( options, given );
    for( auto const & given : natives )
      setNative( options, given );
    if( aging )
      options.agingTime = agingTimeOf( *aging );
    if( pace )
      options.pace = paceOf( *pace );
    if( options.table.empty() && !options.root.empty() )
      throw UsageException( "--root '" + options.root + "': no --table says what lies there" );
    return std::nullopt;
  } catch( CLI::CallForHelp const & ) {
    std::fputs( app.help().c_str(), stdout );
    return 0;
  } catch( CLI::ParseError const & e ) {  // an unknown option, or none of those that must be there
    std::fprintf( stderr, "learn: %s\n", e.what() );
  } catch( UsageException const & e ) {
    std::fprintf( stderr, "learn: %s\n", e.what() );
  }
  return 2;
}

}  // namespace Learn
