// VlanIntfCounterCheckpointSmTest.cpp: what the counters of a VLAN interface were when it was
// listed.
#include <gtest/gtest.h>

#include <vector>

#include <Lumo/VlanIntf.h>

#include "support/Refusal.h"
#include "support/Traced.h"
#include "support/VlanIntfCounters.h"

using namespace Interface;
using Tests::entryOf;
using Tests::vlanIntf;
using Wirex::IntfId;

namespace {

struct Checkpoints : testing::Test {
  /// The sets of a system of this test's own.
  static Koi::Ptr< AllVlanIntfCounterDir > dirOf( std::string const & sysname ) {
    auto const made = allVlanIntfCounterDirFactory( Koi::Name( "counters" ) );
    Coredb::systemDirectory( Koi::Name( sysname ) )->entityIs( Koi::Name( "counters" ), made );
    return made;
  }
  Koi::Ptr< VlanIntfCounter > lastClear( unsigned vlan ) const {
    auto const of = dir->intfCounterDir( vlanIntf( vlan ) );
    return of ? of->intfCounter( Koi::Name( "lastClear" ) ) : nullptr;
  }

  std::string const sysname = testing::UnitTest::GetInstance()->current_test_info()->name();
  Koi::Ptr< AllVlanIntfCounterDir > const dir = dirOf( sysname );
  Koi::Ptr< VlanIntfCounterWriterStatus > const writerStatus =
      vlanIntfCounterWriterStatusFactory( Koi::Name( "writer" ) );
  Koi::Ptr< VlanIntfCounterCheckpointSm > const sm =
      vlanIntfCounterCheckpointSmFactory( writerStatus, dir );
};

TEST_F( Checkpoints, waitForTheInitialisation ) {
  writerStatus->intfIs( vlanIntf( 1 ), true );
  EXPECT_TRUE( dir->intfCounterDir().empty() );
  sm->initializedIs( true );
  EXPECT_TRUE( lastClear( 1 ) );
  writerStatus->intfIs( vlanIntf( 2 ), true );
  EXPECT_TRUE( lastClear( 2 ) );
  sm->initializedIs( false );
  writerStatus->intfDel( vlanIntf( 1 ) );
  EXPECT_TRUE( lastClear( 1 ) );
  sm->initializedIs( true );
  EXPECT_FALSE( lastClear( 1 ) );
}

TEST_F( Checkpoints, areOfVlanInterfacesThatAreListed ) {
  sm->initializedIs( true );
  EXPECT_NE( Tests::traced( [&] {
               writerStatus->intfIs( IntfId( "eth1" ), true );
             } ).find( "VlanIntfCounterCheckpointSm::handleVlanIntf() vlanIntf: eth1\n" ),
             std::string::npos );
  EXPECT_TRUE( dir->intfCounterDir().empty() );
  writerStatus->intfIs( vlanIntf( 1 ), true );
  auto const first = lastClear( 1 );
  ASSERT_TRUE( first );
  writerStatus->intfIs( vlanIntf( 1 ), false );  // listed is listed
  EXPECT_EQ( lastClear( 1 ), first );
  first->genIdIs( 9 );
  writerStatus->intfNotify( vlanIntf( 1 ) );
  EXPECT_EQ( lastClear( 1 )->genId(), 9u );
  writerStatus->intfDel( vlanIntf( 1 ) );
  EXPECT_FALSE( dir->intfCounterDir( vlanIntf( 1 ) ) );
  writerStatus->intfIs( vlanIntf( 1 ), true );
  EXPECT_NE( lastClear( 1 ), first );
  EXPECT_EQ( lastClear( 1 )->genId(), 0u );
  writerStatus->intfDelAll();
  EXPECT_TRUE( dir->intfCounterDir().empty() );
}

TEST_F( Checkpoints, ofADirectoryThatIsThereAreLeftAlone ) {
  dir->intfCounterDirIs( vlanIntf( 1 ) );
  writerStatus->intfIs( vlanIntf( 1 ), true );
  sm->initializedIs( true );
  EXPECT_TRUE( dir->intfCounterDir( vlanIntf( 1 ) )->intfCounter().empty() );
}

TEST_F( Checkpoints, areThoseOfTheWriterThatIsWatched ) {
  writerStatus->intfIs( vlanIntf( 1 ), true );
  writerStatus->intfIs( vlanIntf( 2 ), true );
  sm->initializedIs( true );
  auto const kept = lastClear( 2 );
  auto const other = vlanIntfCounterWriterStatusFactory( Koi::Name( "other" ) );
  other->intfIs( vlanIntf( 2 ), true );
  other->intfIs( vlanIntf( 3 ), true );
  sm->vlanIntfCounterWriterStatusIs( other );
  EXPECT_FALSE( lastClear( 1 ) );
  EXPECT_EQ( lastClear( 2 ), kept );
  EXPECT_TRUE( lastClear( 3 ) );
  writerStatus->intfIs( vlanIntf( 4 ), true );
  EXPECT_FALSE( lastClear( 4 ) );
  sm->vlanIntfCounterWriterStatusDel();  // nobody to ask: all stay
  EXPECT_TRUE( lastClear( 2 ) && lastClear( 3 ) );
}

TEST_F( Checkpoints, areTheCountersAsTheyAre ) {
  Tests::CounterWriter const writer( sysname );
  auto const entry = entryOf( 1, 100 );
  writer.table->counterIs( entry );
  sm->initializedIs( true );
  writerStatus->intfIs( vlanIntf( 1 ), true );
  writerStatus->intfIs( vlanIntf( 2 ), true );
  writer.table->counterIs( entryOf( 1, 200 ) );
  auto const one = lastClear( 1 ), two = lastClear( 2 );
  EXPECT_EQ( one->vlanStatistics(), entry.vlanStatistics() );
  EXPECT_EQ( one->statistics(), entry.statistics() );
  EXPECT_EQ( one->rates(), entry.rates() );
  EXPECT_EQ( one->linkStatusChanges(), entry.linkStatusChanges() );
  EXPECT_EQ( one->genId(), entry.genId() );
  EXPECT_EQ( two->vlanStatistics(), VlanIntfStatistics() );
  EXPECT_EQ( two->statistics(), IntfStatistics() );
}

TEST_F( Checkpoints, areToldOfWhenTheyAreComplete ) {
  struct Watcher : AllVlanIntfCounterDir::NotifieeConst {
    using NotifieeConst::onIntfCounterDir;
    void onIntfCounterDir( IntfId const & intfId ) override {
      auto const set =
          notifier()->intfCounterDir( intfId )->intfCounter( Koi::Name( "lastClear" ) );
      genIds.push_back( set ? set->genId() : 0 );
    }
    std::vector< Koi::U32 > genIds;
  } watcher;
  watcher.notifierIs( dir.ptr() );
  Tests::CounterWriter const writer( sysname );
  writer.table->counterIs( entryOf( 1, 100 ) );
  sm->initializedIs( true );
  writerStatus->intfIs( vlanIntf( 1 ), true );
  EXPECT_EQ( watcher.genIds, std::vector< Koi::U32 >{ entryOf( 1, 100 ).genId() } );
}

TEST_F( Checkpoints, areOfAListThatADirectoryMakes ) {
  auto const made =
      Coredb::newEntity( *Coredb::systemDirectory( Koi::Name( sysname ) ), Koi::Name( "list" ),
                         "Interface::VlanIntfCounterWriterStatus" );
  sm->initializedIs( true );
  sm->vlanIntfCounterWriterStatusIs( dynamic_cast< VlanIntfCounterWriterStatus * >( made.ptr() ) );
  sm->vlanIntfCounterWriterStatus()->intfIs( vlanIntf( 1 ), true );
  EXPECT_TRUE( lastClear( 1 ) );
}

TEST_F( Checkpoints, mountHelperRefusesWhatItCannotMount ) {
  EXPECT_EQ( refusal( [] { vlanIntfCounterMountHelperFactory( nullptr ); } ),
             "null entity manager not allowed" );
  Koi::Ptr< KoiQuill::EntityManager > const manager =
      new KoiQuill::EntityManager( nullptr, Tests::namedRoot.root() );
  auto const helper = vlanIntfCounterMountHelperFactory( manager );
  auto const table = helper->doMountWrite( Koi::Name( "a/b" ), 5 );
  EXPECT_EQ( manager->getEntity( "counters/vlanIntf/a%2Fb" ), table.ptr() );
  EXPECT_EQ( table->counterControl().map().maxSize(), 5u );
  EXPECT_EQ( helper->doMount( Koi::Name( "a/b" ) ), table );
  EXPECT_EQ(
      refusal< Koi::ArgumentException >( [&] { helper->doMountWrite( Koi::Name( "a/b" ), 5 ); } ),
      "counters/vlanIntf/a%2Fb is mounted already" );
}

}  // namespace
