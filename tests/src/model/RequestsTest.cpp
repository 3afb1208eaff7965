// RequestsTest.cpp: topologies, dynamic VLANs, internal and reserved VLANs: what is particular of
// them.
#include <gtest/gtest.h>

#include <Lumo/BrTopology.h>
#include <Lumo/DynVlan.h>
#include <Lumo/InternalVlan.h>
#include <support/Refusal.h>

using namespace Bridging;
using Koi::Name;
using Wirex::IntfId;

namespace {

IntfId const eth1( "eth1" );

}  // namespace

TEST( Topology, vlansLeaveTheMapWithTheirTopology ) {
  auto const config = Topology::configFactory( Name( "config" ) );
  struct Watcher : Topology::Config::NotifieeConst {
    using NotifieeConst::onVidToTopoMap;
    void onVidToTopoMap( VlanId const & vlan ) override { told.push_back( vlan.value() ); }
    std::vector< int > told;
  } watcher;
  auto topology = config->topoConfigIs( Name( "mst1" ), 7, Topology::discarding, false );
  config->vidToTopoMapIs( VlanId( 10 ), topology );
  watcher.notifierIs( config );
  topology = nullptr;
  config->topoConfigDel( Name( "mst1" ) );
  EXPECT_TRUE( config->vidToTopoMap().empty() );
  EXPECT_EQ( watcher.told, std::vector< int >{ 10 } );
}

TEST( Topology, aPortsStateChangesAndItsNonceDoesNot ) {
  auto const topology = Topology::configFactory( Name( "config" ) )
                            ->topoConfigIs( Name( "mst1" ), 7, Topology::discarding, false );
  auto const port = topology->topoPortConfigIs( eth1, 7, Topology::learning );
  port->stateIs( Topology::forwarding );
  EXPECT_EQ( topology->topoPortConfigIs( eth1, 7, Topology::learning ), port );
  EXPECT_EQ( port->state(), Topology::forwarding );
  EXPECT_THROW( topology->topoPortConfigIs( eth1, 8, Topology::learning ),
                Koi::NameInUseException );
  auto const status = Topology::statusFactory( Name( "status" ) );
  EXPECT_EQ( status->maximumMstpInstances(), 65u );
  EXPECT_EQ( status->topoStatusIs( Name( "mst1" ), 7 )->topoPortStatusIs( eth1, 7 )->state(),
             Topology::portStateUnknown );
}

TEST( DynVlan, resetTellsOfEachChange ) {
  auto const set = Input::vlanIdSetFactory( Name( "set" ) );
  struct Watcher : Input::VlanIdSet::NotifieeConst {
    using NotifieeConst::onTrunkGroup;
    void onVlans() override { told += "vlans "; }
    void onTrunkGroup( Koi::String8 const & k ) override { told += std::string( k.view() ) + " "; }
    void onConfigPriority() override { told += "priority "; }
    void onMlagSync() override { told += "sync "; }
    std::string told;
  } watcher;
  set->vlansIs( "1-10" );
  set->trunkGroupIs( "a", true );
  set->configPriorityIs( Input::VlanIdSet::configPriorityHigh() );
  set->mlagSyncIs( false );
  watcher.notifierIs( set );
  set->reset();
  EXPECT_EQ( watcher.told, "vlans a priority sync " );
  EXPECT_EQ( set->configPriority(), 100u );

  auto const allowed = Input::allowedVlansFactory( Name( "allowed" ) );
  allowed->vlansIs( eth1, "1-10" );
  allowed->trunkGroupIs( "a" )->intfListIs( eth1, true );
  allowed->reset();
  EXPECT_TRUE( allowed->vlans().empty() && allowed->trunkGroup().empty() );
}

TEST( InternalVlan, keysHaveTheirLengths ) {
  EXPECT_EQ( refusal( [] { InternalVlanKey( "0123456789" ); } ), "accepted" );
  EXPECT_EQ( refusal( [] { InternalVlanKey( "0123456789a" ); } ),
             "InternalVlanKey::bytes > 10 not allowed" );
  EXPECT_EQ( refusal( [] { InternalVlanSource( "012345678" ); } ),
             "InternalVlanSource::bytes > 8 not allowed" );
  auto const pair = []( char const * key, char const * source ) {
    return InternalVlanKeySourcePair( InternalVlanKey( key ), InternalVlanSource( source ) );
  };
  EXPECT_LT( pair( "a", "x" ), pair( "a", "y" ) );
  EXPECT_LT( pair( "a", "y" ), pair( "b", "a" ) );
  EXPECT_LT( pair( "a", "y" ), pair( "\xff", "a" ) );
}

TEST( InternalVlan, theWhitelistIsWalkedFromTheLowestVlan ) {
  auto const dir = internalVlanConfigDirFactory( Name( "dir" ) );
  for( unsigned vlan : { 4094u, 1u, 1006u } )
    dir->whitelistIs( VlanId( vlan ), true );
  std::vector< int > walked;
  for( auto const & i : dir->whitelist() )
    walked.push_back( i.key().value() );
  EXPECT_EQ( walked, ( std::vector< int >{ 1, 1006, 4094 } ) );
}
