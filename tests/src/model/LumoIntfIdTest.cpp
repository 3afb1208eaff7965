// LumoIntfIdTest.cpp: the interface kinds of bridging, told apart, taken apart and converted.

#include <Lumo/LumoIntfId.h>
#include <gtest/gtest.h>

namespace {

using namespace Wirex;

TEST( LumoIntfId, everyNameHasOneKind ) {
  struct Row {
    char const * name;
    bool cpu, portChannel, peerEth, peerPortChannel, sub;
  } const rows[] = {
      { "eth1", false, false, false, false, false },
      { "eth1.1", false, false, false, false, true },
      { "lag7", false, true, false, false, false },
      { "lag7.5", false, true, false, false, true },
      { "recirc7", false, true, false, false, false },
      { "ecmp7.1", false, true, false, false, true },
      { "cpu", true, false, false, false, false },
      { "peer-eth1", false, false, true, false, false },
      { "peer-eth1.1", false, false, true, false, false },
      { "peer-lag7", false, false, false, true, false },
      { "vlan7", false, false, false, false, false },
      { "eth1:10", false, false, false, false, false },
  };
  for( Row const & row : rows ) {
    IntfId const intfId( row.name );
    EXPECT_EQ( CpuIntfId::isCpuIntfId( intfId ), row.cpu ) << row.name;
    EXPECT_EQ( PortChannelIntfId::isPortChannelIntfId( intfId ), row.portChannel ) << row.name;
    EXPECT_EQ( PeerEthIntfId::isPeerEthIntfId( intfId ), row.peerEth ) << row.name;
    EXPECT_EQ( PeerPortChannelIntfId::isPeerPortChannelIntfId( intfId ), row.peerPortChannel )
        << row.name;
    EXPECT_EQ( SubIntfId::isSubIntfId( intfId ), row.sub ) << row.name;
  }
}

TEST( PortChannelIntfId, isTakenApart ) {
  IntfId const sub( "lag7.5" ), recirc( "recirc8" ), ecmp( "ecmp9" );
  EXPECT_EQ( PortChannelIntfId::portChannel( sub ), 7 );
  EXPECT_EQ( PortChannelIntfId::subIntf( sub ), 5u );
  EXPECT_EQ( PortChannelIntfId::parentIntfIdFromSubIntf( sub ), IntfId( "lag7" ) );
  EXPECT_EQ( PortChannelIntfId::portChannel( recirc ), 8 );
  EXPECT_TRUE( PortChannelIntfId::isRecirc( recirc ) && !PortChannelIntfId::isEcmp( recirc ) );
  EXPECT_TRUE( PortChannelIntfId::isEcmp( ecmp ) && !PortChannelIntfId::isRecirc( ecmp ) );
  EXPECT_FALSE( PortChannelIntfId::isRecirc( IntfId( "peer-recirc8" ) ) );
  EXPECT_FALSE( PortChannelIntfId::isEcmp( sub ) );
}

TEST( PeerIntfIds, goThereAndBack ) {
  for( char const * name : { "eth1", "eth3/1/2", "eth1.100" } ) {
    IntfId const peer = PeerEthIntfId::toPeerEthIntfId( IntfId( name ) );
    EXPECT_EQ( peer.stringValue(), "peer-" + std::string( name ) );
    EXPECT_EQ( PeerEthIntfId::fromPeerEthIntfId( peer ), IntfId( name ) );
  }
  for( char const * name : { "lag7", "lag7.20", "ecmp7", "recirc7.1" } ) {
    IntfId const peer = PeerPortChannelIntfId::toPeerPortChannelIntfId( IntfId( name ) );
    EXPECT_EQ( peer.stringValue(), "peer-" + std::string( name ) );
    EXPECT_EQ( PeerPortChannelIntfId::fromPeerPortChannelIntfId( peer ), IntfId( name ) );
  }
}

TEST( SubIntfId, knowsWhatItBelongsTo ) {
  EXPECT_EQ( SubIntfId::parentIntfId( IntfId( "eth3/1/2.100" ) ), IntfId( "eth3/1/2" ) );
  EXPECT_EQ( SubIntfId::parentIntfId( IntfId( "ecmp7.5" ) ), IntfId( "ecmp7" ) );
}

TEST( LumoIntfId, aWrongKindStopsTheProcess ) {
  IntfId const eth( "eth1" ), lag( "lag7" ), vlan( "vlan1" );
  EXPECT_DEATH( PortChannelIntfId::portChannel( eth ), "isPortChannelIntfId\\( intfId \\)" );
  EXPECT_DEATH( PortChannelIntfId::subIntf( eth ), "isPortChannelIntfId\\( intfId \\)" );
  EXPECT_DEATH( PortChannelIntfId::parentIntfIdFromSubIntf( eth ),
                "isPortChannelIntfId\\( subIntfId \\)" );
  EXPECT_DEATH( PortChannelIntfId::parentIntfIdFromSubIntf( lag ), "subIntf\\( subIntfId \\)" );
  EXPECT_DEATH( PeerEthIntfId::toPeerEthIntfId( lag ), "EthIntfId::isEthIntfId\\( intfId \\)" );
  EXPECT_DEATH( PeerEthIntfId::fromPeerEthIntfId( eth ), "isPeerEthIntfId\\( intfId \\)" );
  EXPECT_DEATH( PeerPortChannelIntfId::toPeerPortChannelIntfId( eth ),
                "PortChannelIntfId::isPortChannelIntfId\\( intfId \\)" );
  EXPECT_DEATH( PeerPortChannelIntfId::fromPeerPortChannelIntfId( lag ),
                "isPeerPortChannelIntfId\\( intfId \\)" );
  EXPECT_DEATH( SubIntfId::parentIntfId( vlan ),
                "PortChannelIntfId::isPortChannelIntfId\\( intfId \\)" );
}

TEST( LumoIntfId, aViewIsTheIdentifiersNumber ) {
  PortChannelIntfId const view( Koi::String8( "lag7.20" ) );
  EXPECT_EQ( view.value(), 0x140e000007u );
  EXPECT_EQ( Koi::valueToStrep( view ), "86134226951" );
  EXPECT_EQ( view.hash(), IntfId( "lag7.20" ).hash() );
  EXPECT_EQ( view, PortChannelIntfId( IntfId( "lag7.20" ) ) );
  EXPECT_EQ( CpuIntfId( Koi::String8( "cpu" ) ).value(), IntfId( "cpu" ).value() );
  EXPECT_THROW( CpuIntfId( Koi::String8( "nothing" ) ), Koi::ParseException );
  EXPECT_EQ( SubIntfId( Koi::String8( "" ) ), SubIntfId() );
}

}  // namespace
