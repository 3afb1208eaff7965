#include <vlan-endpoints/Options.h>

#include <arpa/inet.h>
#include <CLI/CLI.hpp>

#include <array>
#include <charconv>
#include <cstdio>
#include <vector>

namespace VlanEndpoints {
namespace {

Wirex::Ip4Addr addressOf( std::string const & option, std::string const & text ) {
  std::array< Koi::U8, 4 > at{};
  if( inet_pton( AF_INET, text.c_str(), at.data() ) != 1 )
    throw CLI::ValidationError( option, "'" + text + "' is no IPv4 address" );
  return { at[0], at[1], at[2], at[3] };
}

/// VLAN=ADDRESS
void readVlan( std::string const & given, Options & options ) {
  auto const equals = given.find( '=' );
  Koi::U32 vlan = 0;
  auto const end = given.data() + std::min( equals, given.size() );
  auto const [at, error] = std::from_chars( given.data(), end, vlan );
  if( equals == std::string::npos || error != std::errc() || at != end || vlan < 1 || vlan > 4094 )
    throw CLI::ValidationError( "--vlan",
                                "'" + given + "': VLAN=ADDRESS was expected, a VLAN 1 to 4094" );
  if( !options.addresses.try_emplace( vlan, addressOf( "--vlan", given.substr( equals + 1 ) ) )
           .second )
    throw CLI::ValidationError( "--vlan", "VLAN " + std::to_string( vlan ) + " is named twice" );
}

}  // namespace

std::optional< int > readCommandLine( int argc, char ** argv, Options & options ) {
  CLI::App app( "Answers ARP and ICMP echo in many VLANs of one Ethernet device.",
                "vlan-endpoints" );
  app.add_option( "device", options.device, "the Ethernet device; its frames are read and written" )
      ->required()
      ->type_name( "DEVICE" );
  std::vector< std::string > vlans;
  app.add_option( "--vlan", vlans, "a station of that address in that VLAN" )
      ->type_name( "VLAN=ADDRESS" )
      ->allow_extra_args( false );
  std::string untagged, eth;
  app.add_option( "--untagged", untagged, "a station for frames without a VLAN" )
      ->type_name( "ADDRESS" );
  app.add_option( "--mac", eth, "the stations' MAC address (00:00:5e:00:53:0a)" )
      ->type_name( "MAC" );
  app.add_option( "--for", options.duration, "end after so long; else when interrupted" )
      ->type_name( "SECONDS" )
      ->check( CLI::PositiveNumber );
  try {
    app.parse( argc, argv );
    for( auto const & given : vlans )
      readVlan( given, options );
    if( !untagged.empty() )
      options.addresses[0] = addressOf( "--untagged", untagged );
    if( !eth.empty() )
      options.eth = Wirex::EthAddr( eth );
    if( options.addresses.empty() )
      throw CLI::ValidationError( "--vlan VLAN=ADDRESS or --untagged ADDRESS is required" );
    return std::nullopt;
  } catch( CLI::CallForHelp const & ) {
    std::fputs( app.help().c_str(), stdout );
    return 0;
  } catch( CLI::ParseError const & e ) {
    std::fprintf( stderr, "vlan-endpoints: %s\n", e.what() );
  } catch( Koi::ParseException const & e ) {
    std::fprintf( stderr, "vlan-endpoints: --mac: %s\n", e.what() );
  }
  return 2;
}

}  // namespace VlanEndpoints
