// EthIntfDetailsProviderTest.cpp: who is asked about an interface, and what is said of Ethernet
// ports.
#include <gtest/gtest.h>

#include <Interface/EthIntfPortId.h>
#include <interface/EthIntfDetailsProvider.h>

#include "support/Refusal.h"

using namespace EthIntf;

namespace {

Koi::Ptr< EthIntfStatus > statusOf( char const * intf ) {
  return Interface::ethIntfStatusFactory( Wirex::IntfId( intf ), 1 );
}

TEST( DetailsRegistry, hasOneProviderForEachTypeOfStatus ) {
  auto const port = statusOf( "eth1" );
  auto const provider = detailsProvider( *port );
  ASSERT_TRUE( provider );
  EXPECT_EQ( provider, detailsProvider( "Interface::EthIntfStatus" ) );
  for( char const * type :
       { "Interface::EthIntfStatus", "Interface::SubIntfStatus", "Interface::VlanIntfStatus" } ) {
    ASSERT_TRUE( detailsProvider( type ) ) << type;
    EXPECT_EQ( detailsProvider( type )->statusTypeName(), type );
  }
  EXPECT_FALSE( detailsProvider( "Interface::EthIntfConfig" ) );

  Koi::Ptr< EthIntfDetailsProvider > const other = new EthPortDetailsProvider( 100 );
  detailsProviderIs( other );
  EXPECT_EQ( detailsProvider( *port ), other );
  detailsProviderIs( provider );
  EXPECT_EQ( refusal( [] { detailsProviderIs( nullptr ); } ), "null details provider not allowed" );
}

TEST( EthPortDetails, areThoseOfTheStatus ) {
  EthPortDetailsProvider const provider;
  auto const port = statusOf( "eth3/1" );
  port->speedIs( 25'000'000'000 );
  EXPECT_EQ( provider.intfType( *port ), 6u );
  EXPECT_EQ( provider.speed( *port ), 25e9 );
  EXPECT_TRUE( provider.connectorPresent( *port ) );
}

TEST( EthPortDetails, indicesSayThePlace ) {
  struct Row {
    char const * intf;
    Koi::I32 index;
  } const rows[] = {
      { "eth1", 1 },
      { "eth1023", 1023 },
      { "eth1/1", ( 1 << 13 ) + 1 },
      { "eth30/1023", ( 30 << 13 ) + 1023 },
      { "eth1/2/3", ( 1 << 13 ) + 43 },
      { "eth1/204/31", ( 1 << 13 ) + 203 * 40 + 31 },
      { "eth31/1", -1 },
      { "eth1/205/1", -1 },
      { "", -1 },
      { "eth1.7", -1 },
      { "lag1", -1 },
      { "vlan1", -1 },
  };
  EthPortDetailsProvider provider;
  for( auto const & row : rows )
    EXPECT_EQ( provider.intfIndex( *statusOf( row.intf ) ), row.index ) << row.intf;
  provider.baseIndexIs( 1000 );
  EXPECT_EQ( provider.intfIndex( *statusOf( "eth7" ) ), 1007 );
  provider.baseIndexIs( 0x7fffffff );
  EXPECT_EQ( provider.intfIndex( *statusOf( "eth1" ) ), -0x7fffffff - 1 );
}

TEST( NumberOfPlaceDeathTest, needsAPlaceThatHasOne ) {
  struct Row {
    Koi::U32 module, port, lane;
    char const * text;
  } const rows[] = {
      { 31, 1, 0, "module <= 30" }, { 1, 1, 41, "lane <= 40" },     { 1, 0, 0, "port" },
      { 1, 205, 1, "port <= 204" }, { 1, 8192, 0, "port <= 8191" },
  };
  for( auto const & row : rows ) {
    EXPECT_FALSE( hasNumber( row.module, row.port, row.lane ) );
    EXPECT_DEATH( numberOfPlace( row.module, row.port, row.lane ),
                  std::string( "assertion failed: " ) + row.text + " \\(" );
  }
  EXPECT_TRUE( hasNumber( 30, 8191, 0 ) && hasNumber( 30, 204, 40 ) );
}

TEST( EthPortId, isNoneOrATag ) {
  using Interface::EthPortId;
  EXPECT_EQ( EthPortId( 0 ), EthPortId() );
  EXPECT_EQ( EthPortId( 4094 ).value(), EthPortId::max() );
  EXPECT_EQ( refusal( [] { EthPortId( 4095 ); } ),
             "EthPortId::value < EthPortId::min or > EthPortId::max not allowed" );
  auto const dir = Interface::ethIntfPortIdDirFactory( Koi::Name( "portId" ) );
  dir->portIdIs( Wirex::IntfId( "ue3" ), EthPortId( 7 ) );
  EXPECT_EQ( dir->portId( Wirex::IntfId( "ue3" ) ), EthPortId( 7 ) );
  EXPECT_EQ( dir->portId( Wirex::IntfId( "ue4" ) ), EthPortId( 0 ) );
}

}  // namespace
