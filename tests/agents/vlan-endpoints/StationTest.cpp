// StationTest.cpp: what a station answers, and what it does not.

#include <vlan-endpoints/Station.h>

#include <gtest/gtest.h>
#include <support/Packets.h>
#include <wirex/MemoryPam.h>

namespace {

using TestSupport::pktOf;
using TestSupport::Receiver;

std::string const asker( "\x00\x00\x5e\x00\x53\x01", 6 ), station( "\x00\x00\x5e\x00\x53\x0a", 6 );
std::string const askerIp( "\xc0\x00\x02\x01", 4 ), stationIp( "\xc0\x00\x02\x0a", 4 );
std::string const everybody( 6, '\xff' );

std::string arp( char operation, std::string const & from, std::string const & to ) {
  return std::string( "\x08\x06\x00\x01\x08\x00\x06\x04\x00", 9 ) + operation + from + to;
}
std::string const arpRequest =
    everybody + asker + arp( 1, asker + askerIp, std::string( 6, '\0' ) + stationIp );
std::string const arpReply = asker + station + arp( 2, station + stationIp, asker + askerIp );

/// With checksums that Python has worked out.
std::string const echoRequest =
    station + asker +
    std::string( "\x08\x00\x45\x00\x00\x20\x00\x01\x00\x00\x40\x01\xf6\xd0", 14 ) + askerIp +
    stationIp + std::string( "\x08\x00\x0b\xe6\x12\x34\x00\x01lumo", 12 );
std::string const echoReply =
    asker + station +
    std::string( "\x08\x00\x45\x00\x00\x20\x00\x01\x00\x00\x40\x01\xf6\xd0", 14 ) + stationIp +
    askerIp + std::string( "\x00\x00\x13\xe6\x12\x34\x00\x01lumo", 12 );

struct OnWire : testing::Test {
  OnWire() {
    std::tie( near, far ) = Wirex::memoryPamFactory( activity );
    asking.notifierIs( far );
    answering = std::make_unique< VlanEndpoints::Station >(
        near, Wirex::EthAddr( 0, 0, 0x5e, 0, 0x53, 0x0a ), Wirex::Ip4Addr( 192, 0, 2, 10 ) );
  }
  std::vector< std::string > answers( std::string const & frame ) {
    asking.pkts.clear();
    far->send( pktOf( frame, 0 ) );
    for( int turn = 0; turn < 2; ++turn )  // there, and back
      activity->runFor( 0 );
    return asking.frames();
  }
  Koi::Ptr< Koi::Activity > activity = Koi::activityFactory();
  Koi::Ptr< Wirex::Pam > near, far;
  Receiver asking;
  std::unique_ptr< VlanEndpoints::Station > answering;
};

TEST_F( OnWire, answersWhoAsksForItsAddressAndPingsIt ) {
  EXPECT_EQ( answers( arpRequest ), std::vector{ arpReply } );
  EXPECT_EQ( answers( arpRequest + "padding" ), std::vector{ arpReply + "padding" } );
  EXPECT_EQ( answers( echoRequest ), std::vector{ echoReply } );
  EXPECT_EQ( answering->numAnswered(), 3u );
}

TEST_F( OnWire, doesNotAnswerAnythingElse ) {
  auto const changed = []( std::string frame, std::size_t offset, char byte ) {
    frame[offset] = byte;
    return frame;
  };
  for( auto const & frame :
       { arpReply, echoReply, changed( arpRequest, 41, 11 ),  // for another address
         changed( arpRequest, 18, 8 ),                        // of longer addresses
         changed( echoRequest, 5, 11 ),                       // for another station
         changed( echoRequest, 33, 11 ),                      // for another address
         changed( echoRequest, 14, 0x65 ),                    // another version
         changed( echoRequest, 14, 0x44 ),                    // a header that is too short
         changed( echoRequest, 14, 0x4f ),                    // or longer than all
         changed( echoRequest, 17, 0x21 ),                    // longer than it is
         changed( echoRequest, 17, 27 ),                      // too short for ICMP
         changed( echoRequest, 20, 0x20 ),                    // a fragment
         changed( echoRequest, 23, 17 ) } )
    EXPECT_EQ( answers( frame ), std::vector< std::string >{} );
  for( auto const & whole : { arpRequest, echoRequest } )
    for( std::size_t size = 14; size < whole.size(); ++size )
      EXPECT_EQ( answers( whole.substr( 0, size ) ), std::vector< std::string >{} ) << size;
}

}  // namespace
