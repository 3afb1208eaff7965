// The agent's parts: what is counted, and what becomes of requests to clear.

#include <gtest/gtest.h>

#include <VlanCounterClearing.h>
#include <support/ShmRoot.h>
#include <vlan-counters/VlanCounts.h>

#include "../frames/Frames.h"

using namespace Quill::Bridging;
using Bridging::VlanId;
using Frames::mac;

namespace VlanCounters {
namespace {

/// Both tables, written here, and the requests.
struct Counters : testing::Test {
  Counters() {
    Quill::QuillParameters parameters;
    parameters.activity = activity.ptr();
    parameters.root = shm.root();
    counters->vlanCounterControl().init( Quill::QuillType::writer, true, 4094, parameters );
    snapshots->vlanCounterSnapshotControl().init( Quill::QuillType::writer, true, 4094,
                                                  parameters );
  }
  void ask( unsigned vlan, bool value = true ) const {
    requests->clearCountersRequestIs( VlanId( vlan ), value );
  }
  std::optional< VlanCounter > snapshot( unsigned vlan ) const {
    return snapshots->vlanCounterSnapshot().lookup( VlanId( vlan ) );
  }
  static VlanCounter record( unsigned vlan, Koi::U64 octets, Koi::Seconds time = 1 ) {
    return { VlanId( vlan ), VlanStats( octets, 1, 2, 3, 4, 5, 6, 7 ), time };
  }

  Tests::ShmRoot shm;
  Koi::Ptr< Koi::Activity > const activity = Koi::activityFactory();
  Koi::Ptr< VlanCounterDir > const counters = vlanCounterDirFactory( Koi::Name( "counters" ) );
  Koi::Ptr< VlanCounterSnapshotDir > const snapshots =
      vlanCounterSnapshotDirFactory( Koi::Name( "snapshots" ) );
  Koi::Ptr< Bridging::VlanCountersCliReq > const requests =
      Bridging::vlanCountersCliReqFactory( Koi::Name( "requests" ) );
};

/// A frame as it was captured, cut after its header.
struct Sent {
  explicit Sent( std::string const & destination, std::uint32_t wireSize )
      : bytes( destination + mac( 1 ) + std::string( "\x08\0", 2 ) ) {
    frame.bytes = { reinterpret_cast< Koi::U8 const * >( bytes.data() ), bytes.size() };
    frame.wireSize = wireSize;
  }
  std::string const bytes;
  Frames::CapturedFrame frame;
};

TEST_F( Counters, countFramesByWhomTheyAreFor ) {
  struct Telling : VlanCounterDir::NotifieeConst {
    using NotifieeConst::onVlanCounter;
    void onVlanCounter( VlanId const & vlan ) override { told.push_back( vlan.value() ); }
    std::vector< unsigned > told;
  } telling;
  telling.notifierIs( counters.ptr() );
  Sent const one( mac( 9 ), 1500 ), group( mac( 9, 3 ), 64 ), all( std::string( 6, '\xff' ), 100 );
  {
    VlanCounts counts( counters );
    for( auto const * sent : { &one, &group, &all, &all } )
      counts.frameIs( 7, sent->frame );
    counts.frameIs( 4094, one.frame );
    EXPECT_EQ( counters->vlanCounter().size(), 0u );  // nothing before it is refreshed
    counts.refresh( 10.5 );
    EXPECT_EQ( counters->vlanCounter( VlanId( 7 ) ),
               VlanCounter( VlanId( 7 ), VlanStats( 1764, 1, 1, 2, 0, 0, 0, 0 ), 10.5 ) );
    EXPECT_EQ( counts.numVlans(), 2u );
    telling.told.clear();
    counts.frameIs( 7, one.frame );
    counts.refresh( 11.5 );
    EXPECT_EQ( telling.told, std::vector< unsigned >{ 7 } );  // of what has changed alone
  }
  VlanCounts next( counters );  // of the process that comes after
  next.frameIs( 7, group.frame );
  next.refresh( 20 );
  EXPECT_EQ( counters->vlanCounter( VlanId( 7 ) ),
             VlanCounter( VlanId( 7 ), VlanStats( 3328, 2, 2, 2, 0, 0, 0, 0 ), 20 ) );
  EXPECT_EQ( counters->vlanCounter( VlanId( 4094 ) ).statsUpdateTime(), 10.5 );
}

TEST_F( Counters, areKeptAsASnapshotWhenTheyAreCleared ) {
  counters->vlanCounterIs( record( 1, 100 ) );
  counters->vlanCounterIs( record( 2, 200 ) );
  ask( 1 );  // before anybody serves
  auto const clearing = Bridging::vlanCounterClearSmFactory( requests, counters, snapshots );
  EXPECT_EQ( snapshot( 1 ), record( 1, 100 ) );
  EXPECT_FALSE( snapshot( 2 ) );
  EXPECT_TRUE( requests->clearCountersRequest().empty() );
  // Again, and with a value that says nothing.
  counters->vlanCounterIs( record( 1, 150, 2 ) );
  ask( 1, false );
  EXPECT_EQ( snapshot( 1 ), record( 1, 150, 2 ) );
  // What has no counters has nothing to be cleared.
  ask( 3 );
  EXPECT_TRUE( requests->clearCountersRequest().empty() );
  EXPECT_EQ( snapshots->vlanCounterSnapshot().size(), 1u );
  // The counts go on.
  EXPECT_EQ( counters->vlanCounter( VlanId( 1 ) ), record( 1, 150, 2 ) );
  clearing->koiDoZombieReactors( true );
  ask( 2 );
  EXPECT_EQ( requests->clearCountersRequest().size(), 1u );
}

}  // namespace
}  // namespace VlanCounters
