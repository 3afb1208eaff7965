// EthIntfPortIdManagerTest.cpp: port ids: where the search begins, what happens when all are taken,
// interfaces that come, go and come back.
#include <gtest/gtest.h>

#include <Lumo/EthIntfPortIdManager.h>
#include <koi/KeysOf.h>
#include <koi/Transaction.h>
#include <wirex/EthIntfId.h>
#include <wirex/GenericIntfId.h>
#include <wirex/NumberedIntfId.h>

#include <map>
#include <random>
#include <set>

#include "support/Refusal.h"

using namespace Interface;
using Wirex::IntfId;

namespace {

IntfId intf( std::string const & name ) { return IntfId( Koi::String8( name ) ); }

TEST( PortId, beginsWhereTheInterfaceIs ) {
  std::map< std::string, int > const expected{
      { "lag7", 100 },
      { "peer-lag2000", 100 },
      { "recirc3", 100 },
      { "peer-eth5", 205 },
      { "peer-eth2/5", 205 },
      { "peer-eth3/5", 1505 },
      { "peer-eth10/5", 2555 },
      { "mgmt1", 97 },
      { "mgmt1/1", 1 },
      { "mgmt1/2", 2 },
      { "mgmt4/2", 8 },
      { "vxlan1", 2001 },
      { "vxlan65535", 1999 },
      { "ue3", 2503 },
      { "ue65535", 2499 },
      { "eth1", 1 },
      { "eth1023", 1023 },
      { "eth1/7", 157 },
      { "eth1/7/1", 179 },
      { "eth15/1/31", 2285 },
      { "eth16/1", 301 },
      { "eth16/2/3", 311 },
      { "eth1023/1023/31", 16507 },
  };
  for( auto const & [name, base] : expected ) {
    EXPECT_EQ( getBaseId( intf( name ) ), base ) << name;
    EXPECT_TRUE( isPortIdNeeded( intf( name ) ) ) << name;
  }
  for( auto const * name : { "eth1.100", "lag7.1", "mgmt0", "vlan100", "cpu", "eth1:10" } )
    EXPECT_FALSE( isPortIdNeeded( intf( name ) ) ) << name;
  Wirex::GenericIntfId onModule( intf( "ue3" ) );
  onModule.partIs( 1, 1 << 16 | 3 );
  EXPECT_FALSE( isPortIdNeeded( onModule.intfId() ) );
  EXPECT_DEATH( getBaseId( intf( "vlan100" ) ),
                "assertion failed: Wirex::EthIntfId::isEthIntfId\\( intfId \\) " );
  EXPECT_DEATH( getBaseId( intf( "mgmt1/3" ) ),
                "assertion failed: \\( port == 1 \\) \\|\\| \\( port == 2 \\) " );
}

TEST( PortId, isFromZeroTo4094 ) {
  EXPECT_EQ( EthPortId( 4094 ).value(), 4094 );
  EXPECT_EQ( refusal( [] { EthPortId( 4095 ); } ),
             "EthPortId::value < EthPortId::min or > EthPortId::max not allowed" );
}

struct PortIds : testing::Test {
  ~PortIds() override { manager->koiDoZombieReactors( true ); }

  void come( IntfId const & intfId ) { intfs->intfStatusIs( intfId, 1 ); }
  void go( IntfId const & intfId ) { intfs->intfStatusDel( intfId ); }
  int idOf( IntfId const & intfId ) const { return ids->portId( intfId ).value(); }
  int idOf( std::string const & name ) const { return idOf( intf( name ) ); }

  /// What always holds.
  void check() const {
    std::set< int > taken;
    for( auto const & i : ids->portId() ) {
      EXPECT_TRUE( i.value().value() >= 1 && i.value().value() <= 4094 );
      EXPECT_TRUE( taken.insert( i.value().value() ).second ) << i.value().value();
      EXPECT_EQ( manager->reversePortIdMap( i.value() ), i.key() );
    }
    EXPECT_EQ( manager->reversePortIdMap().size(), taken.size() );
  }

  Koi::Ptr< EthIntfPortIdDir > const ids = ethIntfPortIdDirFactory( Koi::Name( "ids" ) );
  Koi::Ptr< EthIntfStatusDir > const intfs = ethIntfStatusDirFactory( Koi::Name( "intfs" ) );
  Koi::Ptr< PortIdManager > manager = portIdManagerFactory( ids, intfs );
};

TEST_F( PortIds, areTheNextFreeOnes ) {
  for( auto const * name : { "lag1", "lag2", "peer-lag1", "mgmt0", "eth1.5", "mgmt1/3" } )
    come( intf( name ) );
  EXPECT_EQ( idOf( "lag1" ), 100 );
  EXPECT_EQ( idOf( "lag2" ), 101 );
  EXPECT_EQ( idOf( "peer-lag1" ), 102 );
  EXPECT_EQ( ids->portId().size(), 3u );  // nor for a port that no supervisor has
  come( IntfId() );                       // the search for an Ethernet port of no place begins at 0
  EXPECT_EQ( idOf( IntfId() ), 1 );
  come( intf( "eth1023/1023/31" ) );  // above the last one
  EXPECT_EQ( idOf( "eth1023/1023/31" ), 2 );
  come( intf( "vxlan2094" ) );
  come( Wirex::EthIntfId::intfId( 200, 587, 3 ) );  // 4859
  EXPECT_EQ( idOf( "vxlan2094" ), 4094 );
  EXPECT_EQ( idOf( Wirex::EthIntfId::intfId( 200, 587, 3 ) ), 3 );
  check();
}

TEST_F( PortIds, areKeptForTheReturnAndReclaimedOldestFirst ) {
  for( int i = 1; i <= 4094; ++i )
    come( Wirex::VxlanIntfId::intfId( static_cast< Koi::U32 >( i ) ) );
  EXPECT_EQ( ids->portId().size(), 4094u );
  EXPECT_EQ( idOf( "vxlan2094" ), 4094 );
  EXPECT_EQ( idOf( "vxlan2095" ), 1 );
  check();
  come( intf( "eth1" ) );  // there is none
  EXPECT_EQ( idOf( "eth1" ), 0 );
  go( intf( "vxlan7" ) );  // eth1 has waited for it
  EXPECT_EQ( idOf( "eth1" ), 2007 );
  EXPECT_EQ( idOf( "vxlan7" ), 0 );
  go( intf( "vxlan9" ) );
  go( intf( "vxlan8" ) );
  EXPECT_EQ( idOf( "vxlan9" ), 2009 );  // kept
  come( intf( "vxlan9" ) );
  go( intf( "vxlan9" ) );
  come( intf( "eth2" ) );
  EXPECT_EQ( idOf( "eth2" ), 2008 );
  EXPECT_EQ( idOf( "vxlan8" ), 0 );
  come( intf( "vxlan9" ) );
  EXPECT_EQ( idOf( "vxlan9" ), 2009 );
  Koi::transaction( [&] {  // it was never away
    go( intf( "vxlan9" ) );
    come( intf( "vxlan9" ) );
  } );
  come( intf( "vxlan8" ) );
  EXPECT_EQ( idOf( "vxlan8" ), 0 );
  check();
}

TEST_F( PortIds, thatThereAreStay ) {
  manager->koiDoZombieReactors( true );
  come( intf( "eth5" ) );
  come( intf( "eth6" ) );
  ids->portIdIs( intf( "eth5" ), EthPortId( 77 ) );
  ids->portIdIs( intf( "eth4" ), EthPortId( 77 ) );  // one that is not there has the same
  ids->portIdIs( intf( "eth6" ), EthPortId( 0 ) );
  ids->portIdIs( intf( "lag1" ), EthPortId( 6 ) );  // gone while nobody looked
  manager = portIdManagerFactory( ids, intfs );
  EXPECT_EQ( idOf( "eth5" ), 77 );
  EXPECT_EQ( idOf( "eth4" ), 0 );
  EXPECT_EQ( idOf( "eth6" ), 7 );
  EXPECT_EQ( idOf( "lag1" ), 6 );
  check();
  auto const others = ethIntfStatusDirFactory( Koi::Name( "others" ) );
  others->intfStatusIs( intf( "lag1" ), 1 );
  others->intfStatusIs( intf( "eth7" ), 1 );
  manager->allEthIntfStatusDirIs( others );
  EXPECT_EQ( idOf( "lag1" ), 6 );
  EXPECT_EQ( idOf( "eth7" ), 8 );
  EXPECT_EQ( manager->vanished().size(), 2u );
  check();
}

TEST_F( PortIds, areUniqueAndStableHoweverInterfacesComeAndGo ) {
  std::mt19937 random( 11 );
  std::vector< IntfId > all;
  for( Koi::U32 module = 0; module < 12; ++module )
    for( Koi::U32 port = 1; port <= 60; ++port ) {
      all.push_back( Wirex::EthIntfId::intfId( module, port ) );
      if( module > 0 )
        for( Koi::U32 lane = 1; lane <= 6; ++lane )
          all.push_back( Wirex::EthIntfId::intfId( module, port, lane ) );
    }
  ASSERT_GT( all.size(), 4094u );
  std::map< IntfId, int > before;  // of all that ever had one
  for( int i = 0; i < 100000; ++i ) {
    IntfId const intfId = all[random() % all.size()];
    if( intfs->intfStatus().contains( intfId ) ) {
      go( intfId );
    } else {
      bool const isKept = ids->portId().contains( intfId );
      come( intfId );
      ASSERT_NE( idOf( intfId ), 0 );
      if( isKept ) {
        ASSERT_EQ( idOf( intfId ), before[intfId] );
      }
      before[intfId] = idOf( intfId );
    }
    if( i % 1000 == 0 )
      check();
  }
  check();
  EXPECT_EQ( ids->portId().size(), 4094u );  // the churn went through all of them
}

}  // namespace
