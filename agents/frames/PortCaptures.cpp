#include "PortCaptures.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <filesystem>

namespace Frames {

namespace {

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

PortCapture * find( std::vector< PortCapture > & captures, Wirex::IntfId intf ) {
  auto const at = std::ranges::find( captures, intf, &PortCapture::intf );
  return at == captures.end() ? nullptr : &*at;
}

void addCapture( std::vector< PortCapture > & captures, std::string const & given ) {
  Assignment const capture = assignmentOf( "--capture", given, "PORT=FILE" );
  if( find( captures, capture.intf ) )
    capture.refuse( "the port has a capture already" );
  if( capture.value == "-" ) {
    for( PortCapture const & other : captures )
      if( other.path == "-" )
        capture.refuse( "standard input is another port's capture" );
  } else if( std::error_code error; !std::filesystem::exists( capture.value, error ) && !error ) {
    capture.refuse( "no such file" );
  }
  captures.push_back( { capture.intf, capture.value, std::nullopt } );
}

Bridging::VlanId vlanOf( Assignment const & native ) {
  Koi::U32 vlan = 0;
  char const * const end = native.value.data() + native.value.size();
  auto const [stop, error] = std::from_chars( native.value.data(), end, vlan );
  if( error != std::errc() || stop != end || vlan < 1 || vlan > 4094 )
    native.refuse( "the VLAN is a number from 1 to 4094" );
  return Bridging::VlanId( static_cast< Koi::U16 >( vlan ) );
}

void setNative( std::vector< PortCapture > & captures, std::string const & given ) {
  Assignment const native = assignmentOf( "--native", given, "PORT=VLAN" );
  Bridging::VlanId const vlan = vlanOf( native );
  PortCapture * const capture = find( captures, native.intf );
  if( !capture )
    native.refuse( "no --capture names the port" );
  if( capture->nativeVlan )
    native.refuse( "the port has a native VLAN already" );
  capture->nativeVlan = vlan;
}

}  // namespace

std::optional< int > parsed( CLI::App & app, int argc, char ** argv,
                             std::function< void() > const & taken ) {
  auto const refused = [&]( std::exception const & why ) {
    std::fprintf( stderr, "%s: %s\n", app.get_name().c_str(), why.what() );
    return 2;
  };
  try {
    app.parse( argc, argv );
    taken();
    return std::nullopt;
  } catch( CLI::CallForHelp const & ) {
    std::fputs( app.help().c_str(), stdout );
    return 0;
  } catch( CLI::ParseError const & e ) {  // an unknown option, or none of those that must be there
    return refused( e );
  } catch( UsageException const & e ) {
    return refused( e );
  }
}

void addCaptureOptions( CLI::App & app, CaptureArguments & given ) {
  app.add_option( "--capture", given.captures,
                  "a pcap or pcapng file whose frames come in on PORT; - is standard input" )
      ->type_name( "PORT=FILE" )
      ->allow_extra_args( false );
  app.add_option( "--native", given.natives, "the VLAN of the port's untagged frames (1)" )
      ->type_name( "PORT=VLAN" )
      ->allow_extra_args( false );
  app.add_option( "--pace", given.pace, "let frames come as they came, so many times faster" )
      ->type_name( "TIMES" );
}

std::vector< PortCapture > portCapturesOf( CaptureArguments const & given ) {
  std::vector< PortCapture > captures;
  for( auto const & one : given.captures )
    addCapture( captures, one );
  for( auto const & one : given.natives )
    setNative( captures, one );
  return captures;
}

std::optional< double > numberOf( std::string const & given ) {
  double number = 0;
  char const * const end = given.data() + given.size();
  auto const [stop, error] = std::from_chars( given.data(), end, number );
  return error == std::errc() && stop == end && number >= 0 && number < 1e9
             ? std::optional( number )
             : std::nullopt;
}

double paceOf( CaptureArguments const & given ) {
  if( !given.pace )
    return 0;
  if( auto const pace = numberOf( *given.pace ); pace && *pace > 0 )
    return *pace;
  throw UsageException( "--pace '" + *given.pace + "': a number was expected, 1 for as they came" );
}

void applyNativeVlans( std::vector< PortCapture > const & captures, Bridging::Config & config ) {
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

}  // namespace Frames
