// TracedTest.cpp: what the reactors say of their decisions, word for word: people and scripts look
// for these texts.
#include <gtest/gtest.h>

#include <Lumo/EthIntfPortIdManager.h>
#include <Lumo/VlanDynIntfSm.h>
#include <coredb/Tree.h>
#include <wirex/GenericIntfId.h>
#include <wirex/NumberedIntfId.h>

#include "support/Traced.h"

using namespace Interface;
using Tests::traced;
using Wirex::IntfId;

namespace {

IntfId intf( std::string const & name ) { return IntfId( Koi::String8( name ) ); }

TEST( Traced, portIds ) {
  auto const ids = ethIntfPortIdDirFactory( Koi::Name( "ids" ) );
  auto const intfs = ethIntfStatusDirFactory( Koi::Name( "intfs" ) );
  auto const manager = portIdManagerFactory( ids, intfs );
  auto const come = [&]( IntfId const & intfId ) {
    return traced( [&] { intfs->intfStatusIs( intfId, 1 ); } );
  };
  Wirex::GenericIntfId onModule( intf( "ue3" ) );
  onModule.partIs( 1, 1 << 16 | 3 );
  std::string const name( onModule.intfId().stringValue() );
  EXPECT_EQ( come( intf( "lag1" ) ), "BaseId: 100\nassigning 100 to lag1\n" );
  EXPECT_EQ( come( intf( "lag2" ) ),
             "BaseId: 100\n100 is being used by lag1\nassigning 101 to lag2\n" );
  EXPECT_EQ( come( intf( "vlan7" ) ), "vlan7 doesnt need port id\n" );
  EXPECT_EQ( come( intf( "mgmt0" ) ), "mgmt0 doesn't need a port id\n" );
  EXPECT_EQ( come( intf( "eth1.5" ) ), "" );
  EXPECT_EQ( come( onModule.intfId() ),
             "No support for Ue interface on modulars\n" + name + " gets no port id\n" );
  EXPECT_EQ( come( intf( "mgmt1/3" ) ),
             "mgmt1/3 gets no port id: a supervisor's ports are 1 and 2\n" );
  traced( [&] {
    for( Koi::U32 i = 1; i <= 4092; ++i )
      intfs->intfStatusIs( Wirex::VxlanIntfId::intfId( i ), 1 );
  } );
  std::string const full = come( intf( "eth1" ) );
  EXPECT_TRUE( full.ends_with( "\nNo more ids are avaibale for eth1\n" ) );
  std::string const gone = traced( [&] { intfs->intfStatusDel( intf( "lag1" ) ); } );
  EXPECT_TRUE( gone.ends_with( "\nreclaiming 100 of lag1\nassigning 100 to eth1\n" ) );
  manager->koiDoZombieReactors( true );
}

TEST( Traced, sourcesOfVlanInterfaces ) {
  auto const sources = Coredb::dirFactory( Koi::Name( "sources" ) );
  auto const errors = Coredb::dirFactory( Koi::Name( "errors" ) );
  auto const list = Lumo::dynVlanIntfListFactory( Koi::Name( "list" ) );
  auto const sm = Lumo::dynVlanIntfReactorFactory( sources, errors, list, true );
  auto const a = vlanIntfConfigDirFactory( Koi::Name( "a" ) );
  EXPECT_EQ( traced( [&] { sources->entityIs( Koi::Name( "a" ), a ); } ),
             "DynVlanIntfReactor: source a\n"
             "DynVlanIntfConfigPrioritySm: a no change from previous priority \n" );
  EXPECT_EQ( traced( [&] {
               a->newIntfConfig( intf( "vlan7" ) );
               a->intfConfig( intf( "vlan7" ) )->dynamicIs( true );
             } ),
             "DynVlanIntfReactor: publishing vlan7\n" );
  errors->entityDel( Koi::Name( "a" ) );
  errors->entityIs( Koi::Name( "a" ), Coredb::dirFactory( Koi::Name() ) );
  EXPECT_EQ( traced( [&] { list->intfConfigErrorIs( intf( "vlan7" ), true ); } ),
             "DynVlanIntfReactor: no errors for a: errors/a is another entity\n" );
  EXPECT_EQ( traced( [&] {
               sources->entityDel( Koi::Name( "a" ) );
             } ).find( "DynVlanIntfReactor: source a goes\n" ),
             0u );
  sm->koiDoZombieReactors( true );
}

}  // namespace
