// VlanIntfTest.cpp: how VLAN interfaces find their counters: in the tree, and in shared memory,
// whoever writes it.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include <Lumo/SubIntf.h>
#include <Lumo/VlanIntf.h>
#include <interface/IntfCounterSearch.h>
#include <model/VlanIntfDetailsProvider.h>

#include "support/Refusal.h"
#include "support/Traced.h"
#include "support/VlanIntfCounters.h"

using namespace Interface;
using Tests::CounterWriter;
using Tests::entryOf;
using Tests::traced;
using Tests::vlanIntf;
using Wirex::IntfId;

namespace {

Koi::Name operator""_n( char const * text, std::size_t size ) {
  return Koi::Name( std::string_view( text, size ) );
}

/// The VLAN interfaces of a system of that name, which only one test has.
Koi::Ptr< VlanIntfStatusDir > statusDirOf( char const * sysname ) {
  auto const dir = vlanIntfStatusDirFactory( "vlanIntfStatus"_n );
  Coredb::systemDirectory( Koi::Name( sysname ) )->entityIs( "vlanIntfStatus"_n, dir );
  return dir;
}

TEST( VlanIntfDetails, areThoseOfARoutedInterfaceWithoutASocket ) {
  VlanIntfDetailsProvider provider;
  auto const status = vlanIntfStatusFactory( vlanIntf( 100 ), 1, "vlan100" );
  EXPECT_EQ( provider.intfType( *status ), 136u );
  EXPECT_EQ( provider.speed( *status ), 0.0 );
  EXPECT_FALSE( provider.connectorPresent( *status ) );
  EXPECT_EQ( provider.intfIndex( *status ), 100 );
  provider.baseIndexIs( 1000 );
  EXPECT_EQ( provider.intfIndex( *status ), 1100 );
  EXPECT_EQ( provider.intfIndex( *vlanIntfStatusFactory( IntfId( "eth1" ), 1, "" ) ), -1 );
  EXPECT_EQ( provider.intfIndex( *ethIntfStatusFactory( vlanIntf( 100 ), 1 ) ), -1 );
}

TEST( VlanIntfConfig, isMadeAndCollected ) {
  auto const dir = vlanIntfConfigDirFactory( "config"_n );
  auto const config = dir->newIntfConfig( vlanIntf( 7 ) );
  EXPECT_EQ( config, dir->intfConfigIs( vlanIntf( 7 ) ) );
  EXPECT_EQ( dir->configPriority(), configPriorityLow );
  EXPECT_LT( configPriorityLow, configPriorityMedium );
  EXPECT_LT( configPriorityMedium, configPriorityHigh );
  auto const after = vlanIntfConfigAfterCodefFactory();
  after->intfConfigIs( vlanIntf( 7 ), config );
  EXPECT_EQ( after->intfConfig( vlanIntf( 7 ) ), config );
  EXPECT_EQ( refusal( [&] { after->intfConfigIs( vlanIntf( 8 ), nullptr ); } ),
             "null _intfConfig parameter to mutator for "
             "Interface::VlanIntfConfigAfterCodef::intfConfig not allowed" );
  auto const addr = Input::vlanIntfAddrFactory( "addr"_n );
  addr->newVlanIntf( vlanIntf( 7 ), true );
  EXPECT_TRUE( addr->vlanIntf( vlanIntf( 7 ) ) );
}

// ---- the place in the tree

TEST( CounterArgs, areEmptyBelowNoSystem ) {
  auto const status = vlanIntfStatusFactory( vlanIntf( 10 ), 1, "" );
  EXPECT_EQ( traced( [&] { EXPECT_FALSE( status->vlanCounter() ); } ),
             "'vlan10': ->parent() at level 0 is null\n"
             "VlanIntfCounter args not initialized, returning nullptr\n" );
  auto const root = Coredb::dirFactory( "Coredb"_n );
  auto const dir = vlanIntfStatusDirFactory( "status"_n );
  root->entityIs( "status"_n, dir );
  auto const below = dir->intfStatusIs( vlanIntf( 10 ), 1, "" );
  EXPECT_EQ( traced( [&] { EXPECT_EQ( below->counterArgs(), VlanIntfCounterArgs() ); } ),
             "Unable to access parent of Coredb root\n" );
}

TEST( CounterArgs, sayTheSystemAndWhetherThereIsAnAgent ) {
  auto const status = statusDirOf( "args" )->intfStatusIs( vlanIntf( 10 ), 1, "" );
  EXPECT_EQ(
      traced( [&] { EXPECT_EQ( status->counterArgs(), VlanIntfCounterArgs( "args", true ) ); } ),
      "Derived sysname: args\nDerived cohabiting: True\n" );
  Tests::AgentEnv const agentEnv;
  EXPECT_EQ(
      traced( [&] { EXPECT_EQ( status->counterArgs(), VlanIntfCounterArgs( "args", false ) ); } ),
      "Derived sysname: args\nDerived cohabiting: False\n" );
}

// ---- counters in the tree

TEST( Counter, isFoundWhereTheDirectorySaysOrByTheKind ) {
  auto const dir = statusDirOf( "found" );
  auto const status = dir->intfStatusIs( vlanIntf( 10 ), 1, "" );
  auto const all = [] {
    auto const made = allVlanIntfCounterDirFactory( "all"_n );
    made->intfCounterDirIs( vlanIntf( 10 ) )->intfCounterIs( "current"_n );
    return made;
  };
  auto const currentOf = []( Koi::Ptr< AllVlanIntfCounterDir > const & of ) {
    return of->intfCounterDir( vlanIntf( 10 ) )->intfCounter( "current"_n );
  };
  // By the kind, below the system.
  auto const byKind = all();
  Coredb::directoryIs( Coredb::systemDirectory( "found"_n ), "counter" )
      ->entityIs( "vlan"_n, byKind );
  EXPECT_EQ( traced( [&] { EXPECT_EQ( status->counter(), currentOf( byKind ).ptr() ); } ),
             "Constructed counterDir path counter/vlan for vlan10\n"
             "/found/Coredb/vlanIntfStatus has counterDirPath counter/vlan\n" );
  // Where the directory says, in the whole tree.
  auto const said = all();
  Coredb::globalDirectory()->entityIs( "foundCounters"_n, said );
  for( char const * path : { "/foundCounters", "foundCounters" } ) {
    dir->counterDirPathIs( path );
    EXPECT_EQ( status->counter(), currentOf( said ).ptr() );
  }
  // What it holds.
  auto const held = all();
  dir->counterDirIs( held );
  EXPECT_EQ( status->counter(), currentOf( held ).ptr() );
  EXPECT_TRUE( status->counter()->exists() );
}

TEST( Counter, otherKindsAreLookedForAlike ) {
  struct Row {
    char const * intf;
    char const * kind;
  } const rows[] = {
      { "eth1.1", "subintf" }, { "lag7.1", "subintf" }, { "lag7", "lag" },
      { "peer-lag7", "mlag" }, { "peer-eth1", "mlag" }, { "eth1", "eth" },
      { "mgmt0", "mgmt" },     { "vxlan1", "vxlan" },   { "cpu", "intf" },
  };
  auto const dir = subIntfStatusDirFactory( "subIntfStatus"_n );
  Coredb::systemDirectory( "kinds"_n )->entityIs( "subIntfStatus"_n, dir );
  for( auto const & row : rows ) {
    auto const status = dir->intfStatusIs( IntfId( row.intf ), 1 );
    EXPECT_EQ( traced( [&] { EXPECT_FALSE( status->counter() ); } ),
               std::string( "Constructed counterDir path counter/" ) + row.kind + " for " +
                   row.intf + "\n/kinds/Coredb/subIntfStatus has counterDirPath counter/" +
                   row.kind + "\n/kinds/Coredb/subIntfStatus: ->counterDir() is null\n" );
  }
}

TEST( Counter, whatIsMissingIsSaid ) {
  auto const alone = vlanIntfStatusFactory( vlanIntf( 10 ), 1, "" );
  EXPECT_EQ( traced( [&] { EXPECT_FALSE( alone->counter() ); } ),
             "'vlan10': ->parent() is null\n" );
  Coredb::directoryIs( Coredb::globalDirectory(), "odd" )->entityIs( "vlan10"_n, alone );
  EXPECT_EQ( traced( [&] { EXPECT_FALSE( alone->counter() ); } ),
             "/odd: dynamic_cast to Interface::IntfStatusDirBase failed; typeid is "
             "Coredb::Dir\n" );

  auto const dir = vlanIntfStatusDirFactory( "missing"_n );
  auto const status = dir->intfStatusIs( vlanIntf( 10 ), 1, "" );
  EXPECT_EQ( traced( [&] { EXPECT_FALSE( status->counter() ); } ),
             "Constructed counterDir path counter/vlan for vlan10\n"
             "missing: ->parent() at level 0 is null\n" );
  auto const said = [&]( char const * path ) {
    dir->counterDirPathIs( path );
    return traced( [&] { EXPECT_FALSE( status->counter() ); } );
  };
  EXPECT_EQ( said( "nowhere" ),
             "missing has counterDirPath nowhere\n"
             "missing: ->counterDir() is null\n" );
  EXPECT_EQ( said( "odd" ),
             "missing has counterDirPath odd\n"
             "/odd: dynamic_cast to Interface::IntfCounterDirDirBase failed; "
             "typeid is Coredb::Dir\n" );
  auto const all = allVlanIntfCounterDirFactory( "all"_n );
  dir->counterDirIs( all );
  EXPECT_EQ( said( "" ), "all: ->doGetIntfCounterDir(vlan10) returned null\n" );
  all->intfCounterDirIs( vlanIntf( 10 ) );
  EXPECT_EQ( said( "" ), "all/'vlan10': ->doGetIntfCounter(current) returned null\n" );
}

// ---- counters in shared memory

TEST( QuillCounter, isReadWhereTheDirectorySays ) {
  auto const dir = statusDirOf( "quill" );
  auto const status = dir->intfStatusIs( vlanIntf( 10 ), 1, "" );
  auto const said = [&]( char const * path ) {
    dir->counterDirPathIs( path );
    return traced( [&] { EXPECT_FALSE( status->counter() ); } );
  };
  EXPECT_EQ( said( "Quill/nowhere" ), "Vlan Quill counterDir is null\n" );
  EXPECT_EQ( said( "quill/Quill" ), "Vlan Quill counterDir is null\n" );
  auto const held = allVlanIntfCounterDirFactory( "held"_n );
  dir->counterDirIs( held );
  EXPECT_EQ( said( "Quill/nowhere" ),
             "Vlan counterDirPath Quill/nowhere does not match counterDir\n"
             "Vlan Quill counterDir is null\n" );

  CounterWriter const writer( "quill" );
  Coredb::directoryIs( Coredb::globalDirectory(), "Quill/counters/vlanIntf" )
      ->entityIs( "quill"_n, writer.table );
  dir->counterDirIs( writer.table );
  dir->counterDirPathIs( "Quill/counters/vlanIntf/quill" );
  EXPECT_EQ( traced( [&] {
               auto const counter = status->counter();
               ASSERT_TRUE( counter );
               EXPECT_EQ( counter->name(), "current"_n );
               EXPECT_FALSE( counter->exists() );
             } ).find( "does not match" ),
             std::string::npos );
  auto const entry = entryOf( 10, 1000 );
  writer.table->counterIs( entry );
  auto const counter = status->counter();
  EXPECT_TRUE( counter->exists() );
  EXPECT_EQ( counter->statistics(), entry.statistics() );
  EXPECT_EQ( counter->rates(), entry.rates() );
  EXPECT_EQ( counter->linkStatusChanges(), entry.linkStatusChanges() );
  EXPECT_EQ( counter->genId(), entry.genId() );

  // In an agent, the same table is that of the system.
  Tests::AgentEnv const agentEnv;
  auto const view = status->vlanCounter();
  ASSERT_TRUE( view );
  EXPECT_EQ( view->record(), entry );
  EXPECT_FALSE( dir->intfStatusIs( vlanIntf( 11 ), 1, "" )->vlanCounter() );
}

TEST( QuillCounter, otherKindsSayThatTheyFindNoneThere ) {
  auto const dir = subIntfStatusDirFactory( "dir"_n );
  auto const status = dir->intfStatusIs( IntfId( "eth1.1" ), 1 );
  dir->counterDirPathIs( "Quill/none" );
  EXPECT_EQ( traced( [&] { EXPECT_FALSE( status->counter() ); } ),
             "dir has counterDirPath Quill/none\ndir Quill counterDir path not found\n" );
  Coredb::directoryIs( Coredb::globalDirectory(), "QuillOfOthers" );
  dir->counterDirPathIs( "QuillOfOthers" );
  EXPECT_EQ( traced( [&] { EXPECT_FALSE( status->counter() ); } ),
             "dir has counterDirPath QuillOfOthers\n"
             "/QuillOfOthers: dynamic_cast to Interface::IntfCounterDirDirBase failed; typeid is "
             "Coredb::Dir\n"
             "dir Quill counterDir is null\n" );
}

TEST( VlanCounter, isKeptOnceItExists ) {
  auto const status = statusDirOf( "kept" )->intfStatusIs( vlanIntf( 10 ), 1, "" );
  EXPECT_FALSE( status->vlanCounter() );
  CounterWriter const writer( "kept" );
  auto const activity = Koi::defaultActivity();
  auto const finds = [&] {
    for( int i = 0; i < 3000 && !status->vlanCounter(); ++i )
      activity->runFor( 0.01 );
    return status->vlanCounter();
  };
  writer.table->counterIs( entryOf( 10, 1 ) );
  auto const view = finds();
  ASSERT_TRUE( view );
  EXPECT_EQ( view->record(), entryOf( 10, 1 ) );
  writer.table->counterIs( entryOf( 10, 2 ) );
  EXPECT_EQ( view->vlanStatistics(), entryOf( 10, 2 ).vlanStatistics() );
  writer.table->counterDel( vlanIntf( 10 ) );
  EXPECT_EQ( status->vlanCounter(), view );
  EXPECT_FALSE( view->exists() );
  EXPECT_EQ( view->record(), VlanIntfCounterQuill( vlanIntf( 10 ) ) );
}

TEST( VlanCounter, ofASystemThatCannotBeMountedIsNull ) {
  auto const status = statusDirOf( ".hidden" )->intfStatusIs( vlanIntf( 10 ), 1, "" );
  EXPECT_NE( traced( [&] {
               EXPECT_FALSE( status->vlanCounter() );
             } ).find( "VlanIntfStatusCounter: cannot mount the table of .hidden: " ),
             std::string::npos );
}

TEST( VlanCounter, ofADamagedTableIsMissing ) {
  auto const status = statusDirOf( "damaged" )->intfStatusIs( vlanIntf( 10 ), 1, "" );
  CounterWriter const writer( "damaged" );
  writer.table->counterIs( entryOf( 10, 1 ) );
  auto const view = status->vlanCounter();
  ASSERT_TRUE( view );
  // Every chain begins at a slot that there is not.
  std::string const path = Tests::namedRoot.path() + "/counters/vlanIntf/damaged/counter/buckets";
  std::fstream file( path, std::ios::in | std::ios::out | std::ios::binary );
  auto const size = std::filesystem::file_size( path );
  file.seekp( 32 );
  file << std::string( size - 32, '\x11' ) << std::flush;
  ASSERT_TRUE( file );
  EXPECT_NE( traced( [&] { EXPECT_FALSE( view->exists() ); } ).find( "corrupt" ),
             std::string::npos );
  EXPECT_EQ( view->record(), VlanIntfCounterQuill( vlanIntf( 10 ) ) );
  EXPECT_EQ( status->vlanCounter(), view );
}

}  // namespace
