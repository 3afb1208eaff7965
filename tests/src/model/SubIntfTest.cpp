// SubIntfTest.cpp: the indices of sub-interfaces, and what their frames carry.
#include <gtest/gtest.h>

#include <Lumo/LumoIntfId.h>
#include <Lumo/SubIntf.h>
#include <model/SubIntfDetailsProvider.h>
#include <wirex/EthIntfId.h>

#include "support/Refusal.h"
#include "support/Traced.h"

using namespace Interface;
using Tests::traced;
using Wirex::IntfId;

namespace {

Koi::I32 indexOf( IntfId const & intfId, Koi::I32 base = 0 ) {
  return SubIntfDetailsProvider( base ).intfIndex( *subIntfStatusFactory( intfId, 1 ) );
}

TEST( SubIntfDetails, indicesSayThePlaceAndTheNumber ) {
  struct Row {
    char const * intf;
    Koi::I32 index;
  } const rows[] = {
      { "eth1/1.10", 2629633 },
      { "eth1/2/3.1", 270379 },
      { "lag7.100", 26468359 },
      { "eth1.1", ( 1 << 18 ) + 1 },
      { "eth30/204/31.4094", ( 30 << 13 ) + 203 * 40 + 31 + ( 4094 << 18 ) },
      { "lag8191.4094", 8191 + 0x3E000 + ( 4094 << 18 ) },
  };
  for( auto const & row : rows ) {
    EXPECT_EQ( indexOf( IntfId( row.intf ) ), row.index ) << row.intf;
    EXPECT_EQ( indexOf( IntfId( row.intf ), 1000 ), row.index + 1000 ) << row.intf;
  }
  EXPECT_EQ( indexOf( IntfId( "eth1.1" ), 0x7fffffff ), -0x7fffffff - 1 + ( 1 << 18 ) );

  SubIntfDetailsProvider const provider;
  auto const status = subIntfStatusFactory( IntfId( "eth1.1" ), 1 );
  EXPECT_EQ( provider.intfType( *status ), 136u );
  EXPECT_EQ( provider.speed( *status ), 0.0 );
  EXPECT_TRUE( provider.connectorPresent( *status ) );
  EXPECT_EQ( provider.intfIndex( *ethIntfStatusFactory( IntfId( "eth1.1" ), 1 ) ), -1 );
}

TEST( SubIntfDetails, interfacesBeyondTheLayoutHaveNoIndex ) {
  for( char const * intf : { "eth1.4095", "lag7.4095", "eth31/1.1", "eth1/205/1.1", "vlan7",
                             "peer-eth1.1", "intf-0x0000000100000000" } )
    EXPECT_EQ( traced( [&] { EXPECT_EQ( indexOf( IntfId( intf ), 5 ), -1 ); } ),
               std::string( "SubIntfDetailsProvider::intfIndex() no index for " ) + intf + "\n" );
}

TEST( SubIntfDetails, portChannelsAbove8191ShareTheirIndices ) {
  EXPECT_EQ( traced( [] { EXPECT_EQ( indexOf( IntfId( "lag7.1" ) ), 0x7E007 ); } ), "" );
  EXPECT_EQ( traced( [] { EXPECT_EQ( indexOf( IntfId( "lag8199.1" ) ), 0x7E007 ); } ),
             "SubIntfDetailsProvider::intfIndex() not the only one of its index: lag8199.1\n" );
}

TEST( SubIntfNumberDeathTest, needsAnInterfaceThatHasOne ) {
  struct Row {
    char const * intf;
    char const * text;
  } const rows[] = {
      { "eth1.4095", "subIntfNum <= 4094" },
      { "lag7.4095", "subIntfNum <= 4094" },
      { "eth31/1.1", "module <= 30" },
      { "intf-0x0000000100000000", "port" },
      { "eth1/205/1.1", "port <= 204" },
      { "vlan7", "PortChannelIntfId::isPortChannelIntfId\\( intfId \\)" },
  };
  for( auto const & row : rows )
    EXPECT_DEATH( subIntfNumber( IntfId( row.intf ) ),
                  std::string( "assertion failed: " ) + row.text + " \\(" );
}

TEST( SubIntfConfigDir, setsTheTagOfWhatIsConfigured ) {
  auto const dir = subIntfConfigDirFactory( Koi::Name( "config" ) );
  IntfId const intfId( "eth1.100" );
  EXPECT_FALSE( dir->setVlanEncap( intfId, 100 ) );
  EXPECT_TRUE( dir->intfConfig().empty() );
  auto const config = dir->intfConfigIs( intfId );
  EXPECT_TRUE( dir->setVlanEncap( intfId, 100 ) );
  EXPECT_EQ( config->encapType(), encapTypeDot1q );
  EXPECT_EQ( config->dot1qEncap(), Bridging::Dot1qEncap( 100, 0 ) );
  EXPECT_EQ( refusal( [&] { dir->setVlanEncap( intfId, 4095 ); } ),
             "VlanIdOrNone::value > 4094 not allowed" );
  EXPECT_EQ( config->dot1qEncap(), Bridging::Dot1qEncap( 100, 0 ) );
  EXPECT_TRUE( dir->setVlanEncap( intfId, 0 ) );
  EXPECT_EQ( config->encapType(), encapTypeNone );
  EXPECT_EQ( config->dot1qEncap(), Bridging::Dot1qEncap( 0, 0 ) );
}

}  // namespace
