// IntfIdTest.cpp: interface identifiers as values and as numbers: layout, log, hash, the views.

#include <algorithm>
#include <sstream>

#include <gtest/gtest.h>
#include <wirex/EthIntfId.h>
#include <wirex/MgmtIntfId.h>
#include <wirex/NumberedIntfId.h>

namespace {

using namespace Wirex;

template< class Exception, class Action >
void expectRefusal( char const * text, Action action ) {
  try {
    action();
    ADD_FAILURE() << "nothing was refused with: " << text;
  } catch( Exception const & refusal ) {
    EXPECT_STREQ( refusal.what(), text );
  }
}

TEST( IntfId, printsItsNameAsAStringDoes ) {
  IntfId const intfId( "eth3/1/2.100" );
  EXPECT_EQ( Koi::valueToStrep( intfId ), "'eth3/1/2.100'" );
  std::ostringstream out;
  out << intfId;
  EXPECT_EQ( out.str(), "'eth3/1/2.100'" );

  Koi::String8 const text( "'eth1', 'moves': 3" );
  Koi::String8::IteratorConst it = text.begin();
  EXPECT_EQ( IntfId( it, text.end() ), IntfId( "eth1" ) );
  EXPECT_EQ( it - text.begin(), 6 );
  for( Koi::String8 bad : { "eth1", "'eth1", "'eth01'" } ) {
    it = bad.begin();
    EXPECT_THROW( IntfId( it, bad.end() ), Koi::ParseException ) << bad;
  }
}

TEST( IntfId, noInterfaceIsTheEmptyName ) {
  EXPECT_EQ( IntfId().stringValue(), "" );
  EXPECT_EQ( IntfId( "" ), IntfId() );
  EXPECT_EQ( Koi::valueToStrep( IntfId() ), "''" );
}

TEST( IntfId, aRefusedNameLeavesItUnchanged ) {
  IntfId intfId( "lag7" );
  EXPECT_THROW( intfId.handleInitialized( "lag0" ), Koi::RangeException );
  EXPECT_THROW( intfId.handleInitialized( "nothing" ), Koi::ParseException );
  EXPECT_EQ( intfId, IntfId( "lag7" ) );
}

TEST( IntfId, isEightBytesInTheLogHighestFirst ) {
  Koi::Ptr< Koi::NboAttrLog::Out > out = new Koi::NboAttrLog::Out;
  out << IntfId( 0x0102030405060708 );
  Koi::U8 const bytes[] = { 1, 2, 3, 4, 5, 6, 7, 8 };
  ASSERT_EQ( out->size(), 8u );
  EXPECT_TRUE( std::equal( bytes, bytes + 8, out->data() ) );
  Koi::NboAttrLog::In in( bytes, 8 );
  EXPECT_EQ( IntfId( &in, Koi::StreamBogon() ).value(), 0x0102030405060708u );
}

TEST( IntfId, hashesTwoWordsTheLowOneFirst ) {
  EXPECT_EQ( IntfId().hash(), 0x63852afcu );
  EXPECT_EQ( IntfId( "eth1" ).hash(), 0x1cd7ab89u );
  EXPECT_EQ( IntfId( "eth3/1/2.100" ).hash(), 0x847ab91fu );
  EXPECT_EQ( IntfId( "lag7" ).hash(), 0xc82b1e95u );
}

TEST( GenericIntfId, changesOnePartAndNoOther ) {
  GenericIntfId intf( IntfId( 0xffffffffffffffff ) );
  intf.typeIdIs( GenericIntfId::portChannelType );
  EXPECT_EQ( intf.intfId().value(), 0xffffffff0fffffffu );
  intf.subTypeIs( GenericIntfId::ecmpSubType );
  EXPECT_EQ( intf.intfId().value(), 0xffffffff0e02ffffu );
  intf.partIs( 1, 7 );
  EXPECT_EQ( intf.intfId().value(), 0xffffffff0e020007u );
  intf.partIs( 0, 5 );
  EXPECT_EQ( intf.intfId().value(), 0x000000050e020007u );
  EXPECT_EQ( intf.typeId(), 7u );
  EXPECT_EQ( intf.subType(), 2u );
  EXPECT_EQ( intf.part( 0 ), 5u );
  EXPECT_EQ( intf.part( 1 ), 7u );
}

TEST( GenericIntfId, partOneIsTwentyFiveBitsWhereThereAreNoSubTypes ) {
  GenericIntfId intf( IntfId( 0x77ffffff ) );
  EXPECT_EQ( intf.typeId(), GenericIntfId::pseudowireType );
  EXPECT_EQ( intf.subType(), 0u );
  EXPECT_EQ( intf.part( 1 ), 0x1ffffffu );
}

TEST( GenericIntfId, refusesWhatDoesNotFit ) {
  GenericIntfId eth( IntfId( "eth1" ) ), lag( IntfId( "lag7" ) );
  using Koi::RangeException;
  expectRefusal< RangeException >( "GenericIntfId::typeId > 127 not allowed",
                                   [&] { eth.typeIdIs( 128 ); } );
  expectRefusal< RangeException >( "GenericIntfId::subType > 0 not allowed",
                                   [&] { eth.subTypeIs( 1 ); } );
  expectRefusal< RangeException >( "GenericIntfId::subType > 511 not allowed",
                                   [&] { lag.subTypeIs( 512 ); } );
  expectRefusal< RangeException >( "GenericIntfId::part > 65535 not allowed",
                                   [&] { lag.partIs( 1, 65536 ); } );
  expectRefusal< RangeException >( "GenericIntfId::part > 33554431 not allowed",
                                   [&] { eth.partIs( 1, 1u << 25 ); } );
  EXPECT_EQ( eth.intfId(), IntfId( "eth1" ) );
  EXPECT_EQ( lag.intfId(), IntfId( "lag7" ) );
  EXPECT_DEATH( eth.part( 2 ), "index < parts\\(\\)" );
}

TEST( EthIntfId, takesAPlaceApartAndPutsItTogether ) {
  IntfId const intfId( "eth3/1/2.100" );
  EXPECT_TRUE( EthIntfId::isEthIntfId( intfId ) );
  EXPECT_EQ( EthIntfId::module( intfId ), 3u );
  EXPECT_EQ( EthIntfId::port( intfId ), 1u );
  EXPECT_EQ( EthIntfId::lane( intfId ), 2u );
  EXPECT_EQ( EthIntfId::subIntf( intfId ), 100u );
  EXPECT_EQ( EthIntfId::intfId( 3, 1, 2, 100 ), intfId );
  EXPECT_EQ( EthIntfId::parentIntfIdFromSubIntf( intfId ), IntfId( "eth3/1/2" ) );
  EXPECT_EQ( EthIntfId::intfId( 1023, 1023, 31, 0xffffffff ).stringValue(),
             "eth1023/1023/31.4294967295" );
}

TEST( EthIntfId, refusesPlacesThatNoNameHas ) {
  using Koi::RangeException;
  expectRefusal< RangeException >( "EthIntfId::module > 1023 not allowed",
                                   [] { EthIntfId::intfId( 1024, 1 ); } );
  expectRefusal< RangeException >( "EthIntfId::port < 1 or > 1023 not allowed",
                                   [] { EthIntfId::intfId( 0, 0 ); } );
  expectRefusal< RangeException >( "EthIntfId::lane > 31 not allowed",
                                   [] { EthIntfId::intfId( 1, 1, 32 ); } );
  expectRefusal< RangeException >( "EthIntfId::lane > 0 without a module not allowed",
                                   [] { EthIntfId::intfId( 0, 1, 1 ); } );
}

TEST( EthIntfId, anotherKindStopsTheProcess ) {
  IntfId const lag( "lag7.1" ), port( "eth1" );
  EXPECT_DEATH( EthIntfId::port( lag ), "isEthIntfId\\( intfId \\)" );
  EXPECT_DEATH( EthIntfId::parentIntfIdFromSubIntf( lag ), "isEthIntfId\\( subIntfId \\)" );
  EXPECT_DEATH( EthIntfId::parentIntfIdFromSubIntf( port ), "subIntf\\( subIntfId \\)" );
}

TEST( OtherIntfIds, haveOnlyTheirOwnKind ) {
  IntfId const mgmt = MgmtIntfId::intfId( 1, 2 ), vlan = VlanIntfId::intfId( 100 ),
               vxlan = VxlanIntfId::intfId( 1 ), ue = UnconnectedEthIntfId::intfId( 3 );
  EXPECT_EQ( mgmt, IntfId( "mgmt1/2" ) );
  EXPECT_EQ( vlan, IntfId( "vlan100" ) );
  EXPECT_EQ( vxlan, IntfId( "vxlan1" ) );
  EXPECT_EQ( ue, IntfId( "ue3" ) );
  EXPECT_EQ( MgmtIntfId::module( mgmt ), 1u );
  EXPECT_EQ( MgmtIntfId::port( mgmt ), 2u );
  EXPECT_EQ( VlanIntfId::vlanId( vlan ), 100u );
  EXPECT_EQ( VxlanIntfId::tunnelId( vxlan ), 1u );
  EXPECT_EQ( UnconnectedEthIntfId::port( ue ), 3u );
  for( IntfId const & other : { mgmt, vlan, vxlan, ue, IntfId( "eth1" ), IntfId( "cpu" ) } ) {
    EXPECT_EQ( MgmtIntfId::isMgmtIntfId( other ), other == mgmt );
    EXPECT_EQ( VlanIntfId::isVlanIntfId( other ), other == vlan );
    EXPECT_EQ( VxlanIntfId::isVxlanIntfId( other ), other == vxlan );
    EXPECT_EQ( UnconnectedEthIntfId::isUnconnectedEthIntfId( other ), other == ue );
  }
  EXPECT_DEATH( VlanIntfId::vlanId( ue ), "isVlanIntfId\\( intfId \\)" );
  expectRefusal< Koi::RangeException >( "VlanIntfId::vlanId < 1 or > 4094 not allowed",
                                        [] { VlanIntfId::intfId( 4095 ); } );
}

}  // namespace
