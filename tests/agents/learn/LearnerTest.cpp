// What is learned from frames, how long it stays, and what the configuration does to it.

#include <gtest/gtest.h>
#include <learn/Learner.h>

#include <functional>
#include <random>
#include <sstream>

#include "../frames/Bridges.h"
#include "../frames/Frames.h"

namespace Learn {
namespace {

using namespace Bridging;
using Bridging::access;  // a function of the system has that name, too

struct LearnerTest : testing::Test, TestBridge {
  Learner learner{ { .config = config, .topology = topology } };
  Bridge const & bridge = learner.bridge();
  Status & status = *bridge.status;

  void frameIs( char const * name, std::int64_t seconds, std::string const & bytes ) {
    learner.frameIs( learner.port( intf( name ) ), { { seconds, 250'000'000 }, bytesOf( bytes ) } );
  }
  /// The host number n sends a frame, tagged for that VLAN.
  void hostIs( unsigned n, char const * name, unsigned vlan = 5, std::int64_t seconds = 0 ) {
    frameIs( name, seconds, frameFrom( mac( n ), tag( 0x8100, vlan ) ) );
  }
  /// The table in words: "fid-host@port*moves", and the kind of those that are not learned.
  std::string table() const {
    std::ostringstream words;
    for( auto const & fdb : status.fdbStatus() ) {
      std::map< Wirex::EthAddr, LearnedHost > sorted;
      for( auto const & host : fdb.value()->learnedHost() )
        sorted.emplace( host.key(), host.value() );
      for( auto const & [address, host] : sorted ) {
        words << ( words.tellp() > 0 ? " " : "" ) << fdb.key().value() << "-"
              << unsigned{ address.bytes()[5] } << "@" << host.intf().stringValue().view();
        if( host.moves() != 0 )
          words << "*" << host.moves();
        if( host.entryType() != learnedDynamicMac )
          words << "=" << stringValue( host.entryType() ).view();
      }
    }
    return words.str();
  }
  static Wirex::EthAddr host( unsigned n ) {
    return Wirex::EthAddr( 2, 0, 0, 0, 0, static_cast< Koi::U8 >( n ) );
  }
  Koi::U64 numNot( NotLearned why ) const {
    return learner.totals().numNotLearned[static_cast< unsigned >( why )];
  }
};

/// Counts what observers of one database hear, and does something then.
struct Listener : FdbStatus::NotifieeConst {
  using NotifieeConst::onLearnedHost;
  void onLearnedHost( Wirex::EthAddr const & ) override {
    ++heard;
    if( react )
      react();
  }
  int heard = 0;
  std::function< void() > react;
};

TEST_F( LearnerTest, aHostMovesBetweenPortsButNotBetweenVlans ) {
  frameIs( "eth1", 10, frameFrom( mac( 1 ) ) );
  Listener listener;
  listener.notifierIs( status.fdbStatus( Fid( 1 ) ).ptr() );
  auto const now = [&] { return status.fdbStatus( Fid( 1 ) )->learnedHost( host( 1 ) ); };

  frameIs( "eth1", 20, frameFrom( mac( 1 ) ) );
  EXPECT_EQ( listener.heard, 0 );  // where it was: nothing has changed, not even a time
  EXPECT_EQ( now(), LearnedHost( host( 1 ), intf( "eth1" ), 0, 10.25, learnedDynamicMac ) );

  frameIs( "eth2", 30, frameFrom( mac( 1 ) ) );
  frameIs( "eth2", 40, frameFrom( mac( 1 ) ) );
  EXPECT_EQ( listener.heard, 1 );
  frameIs( "eth1", 50, frameFrom( mac( 1 ) ) );
  EXPECT_EQ( now(), LearnedHost( host( 1 ), intf( "eth1" ), 2, 50.25, learnedDynamicMac ) );
  hostIs( 1, "eth3", 2, 60 );
  EXPECT_EQ( table(), "1-1@eth1*2 2-1@eth3" );
  EXPECT_EQ( learner.totals().numHosts, 2u );
  EXPECT_EQ( learner.totals().numMoves, 2u );
}

TEST_F( LearnerTest, vlansMayShareADatabase ) {
  config->vidToFidMapIs( VlanId( 5 ), Fid( 60000 ) );
  config->vidToFidMapIs( VlanId( 6 ), Fid( 60000 ) );
  hostIs( 1, "eth1", 5 );
  hostIs( 1, "eth2", 6 );
  hostIs( 2, "eth2", 6 );
  hostIs( 3, "eth2", 7 );
  EXPECT_EQ( table(), "7-3@eth2 60000-1@eth2*1 60000-2@eth2" );
  config->vidToFidMapDel( VlanId( 6 ) );  // what it has taught goes with it
  EXPECT_EQ( table(), "7-3@eth2" );
  hostIs( 1, "eth2", 6 );
  EXPECT_EQ( table(), "6-1@eth2 7-3@eth2" );
}

// ---- ageing: hosts are seen at whole seconds and a quarter

TEST_F( LearnerTest, hostsThatAreNotSeenForLongerThanTheAgeingTimeGo ) {
  hostIs( 1, "eth1", 5, 0 );
  hostIs( 2, "eth1", 5, 100 );
  hostIs( 1, "eth1", 5, 200 );
  hostIs( 3, "eth1", 5, 400 );
  EXPECT_EQ( table(), "5-1@eth1 5-2@eth1 5-3@eth1" );  // 300 seconds are not longer
  frameIs( "eth2", 401, "" );                          // any frame moves the clock
  EXPECT_EQ( table(), "5-1@eth1 5-3@eth1" );
  EXPECT_EQ( learner.totals().numAged, 1u );
  EXPECT_EQ( learner.totals().numHosts, 2u );
  hostIs( 1, "eth2", 5, 1000 );  // aged out before it is seen: no move
  EXPECT_EQ( table(), "5-1@eth2" );
  config->hostAgingTimeIs( 0 );
  frameIs( "eth2", 1'000'000, "" );
  EXPECT_EQ( table(), "5-1@eth2" );
  config->hostAgingTimeIs( 0.5 );  // at once
  EXPECT_EQ( table(), "" );
}

TEST_F( LearnerTest, clocksThatRunBackwardsOrWildAgeNothingWrongly ) {
  hostIs( 1, "eth1", 5, 1000 );
  hostIs( 2, "eth1", 5, 500 );  // counts as 1000
  hostIs( 3, "eth1", 5, INT64_MIN );
  hostIs( 4, "eth1", 5, 1300 );
  EXPECT_EQ( table(), "5-1@eth1 5-2@eth1 5-3@eth1 5-4@eth1" );
  hostIs( 4, "eth1", 5, 1301 );
  EXPECT_EQ( table(), "5-4@eth1" );
  hostIs( 5, "eth1", 5, INT64_MAX );
  hostIs( 6, "eth1", 5, 1302 );
  EXPECT_EQ( table(), "5-5@eth1 5-6@eth1" );
}

TEST_F( LearnerTest, spanningTreeMayShortenTheAgeingTime ) {
  hostIs( 1, "eth1", 5, 0 );
  hostIs( 2, "eth1", 5, 20 );
  topology->agingTimeIs( 400 );
  EXPECT_EQ( table(), "5-1@eth1 5-2@eth1" );
  topology->agingTimeIs( 15 );
  EXPECT_EQ( table(), "5-2@eth1" );
  config->hostAgingTimeIs( 0 );
  frameIs( "eth1", 40, "" );
  EXPECT_EQ( table(), "" );
}

// ---- configured hosts

TEST_F( LearnerTest, aConfiguredHostStandsInItsPlaceUntilItIsRemoved ) {
  auto const fdb = config->fdbConfigIs( Fid( 5 ) );
  fdb->configuredHostIs( ConfiguredHost( host( 1 ), intf( "eth2" ), configuredStaticMac, "" ) );
  hostIs( 1, "eth1" );
  hostIs( 1, "eth2" );
  hostIs( 1, "eth1", 6 );
  hostIs( 2, "eth1" );
  hostIs( 2, "eth3" );
  EXPECT_EQ( table(), "5-1@eth2=configuredStaticMac 5-2@eth3*1 6-1@eth1" );
  EXPECT_EQ( numNot( NotLearned::configured ), 2u );
  fdb->configuredHostIs( ConfiguredHost( host( 2 ), intf( "eth4" ), configuredSecureMac, "a" ) );
  fdb->configuredHostIs( ConfiguredHost( host( 1 ), intf( "eth5" ), configuredStaticMac, "" ) );
  frameIs( "eth1", 1'000'000, "" );
  EXPECT_EQ( table(), "5-1@eth5=configuredStaticMac 5-2@eth4=configuredSecureMac" );
  EXPECT_TRUE( learner.flush( 0, {} ) );
  fdb->configuredHostDel( host( 2 ) );
  EXPECT_EQ( table(), "5-1@eth5=configuredStaticMac" );
  hostIs( 2, "eth1", 5, 1'000'000 );
  config->fdbConfigDel( Fid( 5 ) );
  EXPECT_EQ( table(), "5-2@eth1" );
  EXPECT_EQ( learner.totals().numHosts, 1u );
}

TEST_F( LearnerTest, aLearnerBeginsWithWhatIsConfigured ) {
  hostIs( 1, "eth1" );
  config->fdbConfigIs( Fid( 5 ) )
      ->configuredHostIs( ConfiguredHost( host( 2 ), intf( "eth2" ), configuredStaticMac, "" ) );
  config->vidToFidMapIs( VlanId( 6 ), Fid( 5 ) );
  bridge.flushRequests->hostTableFlushRequestIs( "mine", HostTableFlushRequest() );
  bridge.flushReplies->hostTableFlushReplyIs( "stale", true );
  Learner next( bridge );
  EXPECT_EQ( table(), "5-2@eth2=configuredStaticMac" );
  next.frameIs( next.port( intf( "eth1" ) ),
                { {}, bytesOf( frameFrom( mac( 3 ), tag( 0x8100, 6 ) ) ) } );
  EXPECT_EQ( table(), "5-2@eth2=configuredStaticMac 5-3@eth1" );
  EXPECT_TRUE( bridge.flushReplies->hostTableFlushReply( "mine" ) );
  EXPECT_FALSE( bridge.flushReplies->hostTableFlushReply().contains( "stale" ) );
}

TEST_F( LearnerTest, aLearnerGoesOnWithTheHostsThatAreThere ) {
  auto const left = statusFactory( Koi::Name( "left" ) );
  auto const was = [&]( Koi::U16 fid, unsigned n, char const * name, Koi::Seconds time,
                        EntryType type = learnedDynamicMac ) {
    left->fdbStatusIs( Fid( fid ) )
        ->learnedHostIs(
            LearnedHost( host( n ), name ? intf( name ) : Wirex::IntfId(), 2, time, type ) );
  };
  config->vidToFidMapIs( VlanId( 8 ), Fid( 5000 ) );
  config->switchIntfConfigIs( intf( "eth3" ),
                              SwitchportModeAndNativeVlan( Bridging::access, VlanIdOrNone( 5 ) ) );
  was( 5, 1, "eth1", 100 );
  was( 5, 2, "eth2", -1e300 );  // no clock said that
  was( 5, 3, "eth3", 400.5 );
  was( 6, 4, "eth3", 90 );                       // which does not carry VLAN 6
  was( 7, 5, "eth1", 90, configuredStaticMac );  // which is not configured
  was( 8, 6, "eth1", 90 );                       // nothing learns in that database any more
  was( 5000, 7, "eth1", 90 );                    // where VLAN 8 does
  was( 5001, 8, "eth1", 90 );
  was( 9, 9, nullptr, 90 );
  Learner next( { .config = config, .status = left } );
  auto const hosts = [&] {
    std::string words;
    for( auto const & fdb : left->fdbStatus() )
      for( unsigned n = 1; n < 10; ++n )
        if( fdb.value()->learnedHost().contains( host( n ) ) )
          words += std::to_string( fdb.key().value() ) + "-" + std::to_string( n ) + " ";
    return words;
  };
  EXPECT_EQ( hosts(), "5-1 5-2 5-3 5000-7 " );
  EXPECT_EQ( left->fdbStatus().size(), 2u );
  EXPECT_EQ( next.totals().numHosts, 4u );
  auto const frame = [&]( std::int64_t seconds, char const * name, unsigned n, unsigned vlan ) {
    next.frameIs( next.port( intf( name ) ),
                  { { seconds, 0 }, bytesOf( frameFrom( mac( n ), tag( 0x8100, vlan ) ) ) } );
  };
  frame( 0, "eth1", 1, 5 );  // where it was: nothing changes
  frame( 0, "eth1", 2, 5 );  // moved
  EXPECT_EQ( left->fdbStatus( Fid( 5 ) )->learnedHost( host( 1 ) ).lastMoveTime(), 100 );
  EXPECT_EQ( left->fdbStatus( Fid( 5 ) )->learnedHost( host( 2 ) ).moves(), 3u );
  frame( 600, "eth1", 7, 8 );  // all were seen when the last of them was
  EXPECT_EQ( hosts(), "5-1 5-2 5-3 5000-7 " );
  frame( 701, "eth1", 9, 9 );
  EXPECT_EQ( hosts(), "9-9 5000-7 " );
}

// ---- configuration that changes

struct ConfigChange {
  char const * name;
  void ( *change )( TestBridge const & );
  char const * left;   // of 5-1@eth1, 5-2@eth2, 6-3@eth1 and the untagged 1-4@eth1
  char const * later;  // when all four have sent again
};
void PrintTo( ConfigChange const & c, std::ostream * out ) { *out << c.name; }

struct AfterAChange : LearnerTest, testing::WithParamInterface< ConfigChange > {};

TEST_P( AfterAChange, goesWhatThePortNoLongerCarriesAndStaysTheRest ) {
  for( char const * port_ : { "eth1", "eth2" } )
    for( unsigned vlan_ : { 1u, 5u, 6u } )
      member( vlan_, port_ );
  port( "eth1" );
  auto const topo = topologyOf( 5, Topology::forwarding );
  topo->topoPortConfigIs( intf( "eth1" ), 1, Topology::forwarding );
  auto const all = [&] {
    hostIs( 1, "eth1", 5 );
    hostIs( 2, "eth2", 5 );
    hostIs( 3, "eth1", 6 );
    frameIs( "eth1", 0, frameFrom( mac( 4 ) ) );
  };
  all();
  ASSERT_EQ( table(), "1-4@eth1 5-1@eth1 5-2@eth2 6-3@eth1" );
  GetParam().change( *this );
  EXPECT_EQ( table(), GetParam().left );
  all();
  EXPECT_EQ( table(), GetParam().later );
}

INSTANTIATE_TEST_SUITE_P(
    Learner, AfterAChange,
    testing::Values(
        ConfigChange{ "portLeavesTheVlan",
                      []( TestBridge const & b ) { b.vlan( 5 )->intfDel( intf( "eth1" ) ); },
                      "1-4@eth1 5-2@eth2 6-3@eth1", "1-4@eth1 5-2@eth2 6-3@eth1" },
        ConfigChange{ "portCarriesTheVlanOutwards",
                      []( TestBridge const & b ) { b.member( 5, "eth1", egress ); },
                      "1-4@eth1 5-2@eth2 6-3@eth1", "1-4@eth1 5-2@eth2 6-3@eth1" },
        ConfigChange{ "vlanIsSuspended",
                      []( TestBridge const & b ) { b.vlan( 5 )->adminStateIs( suspended ); },
                      "1-4@eth1 6-3@eth1", "1-4@eth1 6-3@eth1" },
        ConfigChange{ "vlanIsRemoved",
                      []( TestBridge const & b ) { b.config->vlanConfigDel( VlanId( 5 ) ); },
                      "1-4@eth1 6-3@eth1", "1-4@eth1 5-1@eth1 5-2@eth2 6-3@eth1" },
        ConfigChange{
            "portIsRemoved",
            []( TestBridge const & b ) { b.config->switchIntfConfigDel( intf( "eth1" ) ); },
            "5-2@eth2", "1-4@eth1 5-1@eth1 5-2@eth2 6-3@eth1" },
        ConfigChange{ "portBecomesAnAccessPort",
                      []( TestBridge const & b ) { b.port( "eth1", access, 6 ); },
                      "5-2@eth2 6-3@eth1", "5-2@eth2 6-3@eth1 6-4@eth1" },
        ConfigChange{ "portBecomesATunnel",
                      []( TestBridge const & b ) { b.port( "eth1", dot1qTunnel, 6 ); },
                      "5-2@eth2 6-3@eth1", "5-2@eth2 6-1@eth1 6-3@eth1 6-4@eth1" },
        ConfigChange{ "portIsRouted", []( TestBridge const & b ) { b.port( "eth1", routed, 1 ); },
                      "5-2@eth2", "5-2@eth2" },
        ConfigChange{
            "nativeVlanChanges", []( TestBridge const & b ) { b.port( "eth1", trunk, 6 ); },
            "1-4@eth1 5-1@eth1 5-2@eth2 6-3@eth1", "1-4@eth1 5-1@eth1 5-2@eth2 6-3@eth1 6-4@eth1" },
        ConfigChange{ "tagsOfAnotherType",
                      []( TestBridge const & b ) {
                        b.port( "eth1" )->vlanTpidIs( VlanTpidOrNone( 0x88a8 ) );
                      },
                      "1-4@eth1 5-1@eth1 5-2@eth2 6-3@eth1",
                      "1-1@eth1 1-3@eth1 1-4@eth1 5-1@eth1 5-2@eth2 6-3@eth1" } ),
    []( auto const & c ) { return c.param.name; } );

TEST_F( LearnerTest, whereLearningIsSwitchedOffWhatWasLearnedStaysAndAges ) {
  struct {
    std::function< void( bool ) > pauseIs;
    NotLearned why;
  } const cases[] = {
      { [&]( bool p ) { port( "eth1" )->macLearningEnabledIs( !p ); }, NotLearned::portLearnsNot },
      { [&]( bool p ) { member( 5, "eth1" )->macLearningIs( !p ); }, NotLearned::vlanLearnsNot },
      { [&]( bool p ) {
         topologyOf( 5, Topology::forwarding )
             ->topoPortConfigIs( intf( "eth1" ), 1, Topology::learning )
             ->stateIs( p ? Topology::discarding : Topology::learning );
       },
        NotLearned::blocked },
  };
  member( 5, "eth1" );
  std::int64_t time = 0;
  for( auto const & c : cases ) {
    hostIs( 1, "eth1", 5, time );
    c.pauseIs( true );
    EXPECT_EQ( table(), "5-1@eth1" );
    hostIs( 1, "eth1", 5, time + 200 );
    hostIs( 2, "eth1", 5, time + 200 );
    EXPECT_EQ( numNot( c.why ), 2u );
    EXPECT_EQ( table(), "5-1@eth1" );
    frameIs( "eth2", time += 301, "" );
    EXPECT_EQ( table(), "" );
    c.pauseIs( false );
    hostIs( 2, "eth1", 5, time );
    EXPECT_EQ( table(), "5-2@eth1" );
    frameIs( "eth2", time += 301, "" );
  }
}

// ---- flush

struct FlushTest : LearnerTest {
  /// The answer to a request: 1 or 0; -1: none.
  int answer( unsigned vlan, char const * name ) {
    HostTableFlushRequest const request( static_cast< Koi::U16 >( vlan ), intf( name ) );
    bridge.flushRequests->hostTableFlushRequestIs( "me", request );
    auto const & replies = bridge.flushReplies->hostTableFlushReply();
    int const got = replies.contains( "me" ) ? replies.value( "me" ) : -1;
    bridge.flushRequests->hostTableFlushRequestDel( "me" );
    EXPECT_TRUE( replies.empty() ) << "the answer goes with the request";
    return got;
  }
};

TEST_F( FlushTest, forgetsByVlanByPortByBothOrAll ) {
  config->fdbConfigIs( Fid( 5 ) )
      ->configuredHostIs( ConfiguredHost( host( 9 ), intf( "eth1" ), configuredStaticMac, "" ) );
  vlan( 8 );
  struct {
    unsigned vlan;
    char const * intf;
    int answer;
    std::string left;
  } const cases[] = {
      { 5, "", 1, "6-3@eth1 6-4@eth2" },
      { 0, "eth1", 1, "5-2@eth2 6-4@eth2" },
      { 6, "eth1", 1, "5-1@eth1 5-2@eth2 6-4@eth2" },
      { 0, "", 1, "" },
      { 0, "eth9", 1, "5-1@eth1 5-2@eth2 6-3@eth1 6-4@eth2" },
      { 8, "", 1, "5-1@eth1 5-2@eth2 6-3@eth1 6-4@eth2" },  // configured, with no host
      { 9, "", 0, "5-1@eth1 5-2@eth2 6-3@eth1 6-4@eth2" },  // nobody knows it
      { 4095, "eth1", 0, "5-1@eth1 5-2@eth2 6-3@eth1 6-4@eth2" },
      { 65535, "", 0, "5-1@eth1 5-2@eth2 6-3@eth1 6-4@eth2" },
  };
  for( auto const & c : cases ) {
    hostIs( 1, "eth1", 5 );
    hostIs( 2, "eth2", 5 );
    hostIs( 3, "eth1", 6 );
    hostIs( 4, "eth2", 6 );
    EXPECT_EQ( answer( c.vlan, c.intf ), c.answer ) << c.vlan << c.intf;
    std::string left = table();
    std::string const fixed = "5-9@eth1=configuredStaticMac";
    ASSERT_NE( left.find( fixed ), std::string::npos ) << left;
    left.erase( left.find( fixed ), fixed.size() + 1 );
    if( left.ends_with( " " ) )
      left.pop_back();
    EXPECT_EQ( left, c.left ) << c.vlan << c.intf;
  }
}

TEST_F( FlushTest, aRequestThatChangesIsServedAgain ) {
  hostIs( 1, "eth1" );
  auto const & requests = bridge.flushRequests;
  requests->hostTableFlushRequestIs( "me", HostTableFlushRequest( 7, {} ) );
  EXPECT_FALSE( bridge.flushReplies->hostTableFlushReply( "me" ) );
  EXPECT_EQ( table(), "5-1@eth1" );
  requests->hostTableFlushRequestIs( "me", HostTableFlushRequest( 5, {} ) );
  EXPECT_TRUE( bridge.flushReplies->hostTableFlushReply( "me" ) );
  EXPECT_EQ( table(), "" );
}

TEST_F( FlushTest, spanningTreeGetsAReportOfEachFlushOfItsPort ) {
  auto const topo = topologyOf( 5, Topology::forwarding );
  auto const port_ = topo->topoPortConfigIs( intf( "eth1" ), 7, Topology::forwarding );
  hostIs( 1, "eth1", 5 );
  hostIs( 2, "eth2", 5 );
  hostIs( 3, "eth1", 6 );
  EXPECT_TRUE( bridge.topologyStatus->topoStatus().empty() );  // nothing was asked for
  port_->fdbFlushIs( 3 );
  EXPECT_EQ( table(), "5-2@eth2 6-3@eth1" );
  auto const report = [&] {
    auto const found = bridge.topologyStatus->topoStatus( topo->name() );
    return found ? found->topoPortStatus( intf( "eth1" ) ) : nullptr;
  };
  ASSERT_TRUE( report() );
  EXPECT_EQ( report()->fdbFlushReport(), 3u );
  EXPECT_EQ( report()->creationNonce(), 7u );

  // Another port of the same name that asks at once.
  hostIs( 1, "eth1", 5 );
  topo->topoPortConfigDel( intf( "eth1" ) );
  EXPECT_EQ( table(), "5-1@eth1 5-2@eth2 6-3@eth1" );
  Koi::transaction(
      [&] { topo->topoPortConfigIs( intf( "eth1" ), 8, Topology::forwarding )->fdbFlushIs( 1 ); } );
  EXPECT_EQ( table(), "5-2@eth2 6-3@eth1" );
  EXPECT_EQ( report()->creationNonce(), 8u );
  EXPECT_EQ( report()->fdbFlushReport(), 1u );
}

// ---- who is told may do anything

TEST_F( LearnerTest, anObserverMayChangeTheConfigurationWhileItIsTold ) {
  for( unsigned n = 1; n <= 4; ++n )
    hostIs( n, "eth1" );
  Listener listener;
  listener.notifierIs( status.fdbStatus( Fid( 5 ) ).ptr() );
  listener.react = [&] {  // in the midst of a flush
    config->vlanConfigIs( VlanId( 5 ), false )->adminStateIs( suspended );
    learner.flush( 0, {} );
    config->vlanConfigDel( VlanId( 5 ) );
    config->fdbConfigIs( Fid( 5 ) )
        ->configuredHostIs( ConfiguredHost( host( 3 ), intf( "eth7" ), configuredStaticMac, "" ) );
  };
  learner.flush( 5, intf( "eth1" ) );
  EXPECT_EQ( table(), "5-3@eth7=configuredStaticMac" );
  listener.react = nullptr;
  hostIs( 4, "eth1" );
  EXPECT_EQ( table(), "5-3@eth7=configuredStaticMac 5-4@eth1" );
  EXPECT_EQ( learner.totals().numHosts, 2u );
}

TEST_F( LearnerTest, anObserverMayRemoveTheVlanThatIsBeingSuspended ) {
  auto const five = member( 5, "eth1" );
  for( unsigned n = 1; n <= 3; ++n )
    hostIs( n, "eth1" );
  Listener listener;
  listener.notifierIs( status.fdbStatus( Fid( 5 ) ).ptr() );
  listener.react = [&] { config->vlanConfigDel( VlanId( 5 ) ); };
  five->adminStateIs( suspended );
  EXPECT_EQ( table(), "" );
  hostIs( 1, "eth1" );
  EXPECT_EQ( table(), "5-1@eth1" );
}

// Whatever is changed, in whatever order: what a port has read before it reads again.
TEST_F( LearnerTest, portsFollowEveryChange ) {
  unsigned const seed = std::random_device()();
  SCOPED_TRACE( "seed " + std::to_string( seed ) );
  std::mt19937 random( seed );
  char const * const names[] = { "eth1", "eth2" };
  auto const oneIn = [&]( unsigned n ) { return random() % n == 0; };
  auto const step = [&] {
    char const * const name = names[random() % 2];
    VlanId const vlan_( 5 + random() % 3 );
    Koi::Name const topo( oneIn( 2 ) ? "a" : "b" );
    auto const port_ = config->switchIntfConfig( intf( name ) );
    auto const config_ = config->vlanConfig( vlan_ );
    auto const topo_ = topology->topoConfig( topo );
    auto const state = static_cast< Topology::PortState >( random() % 4 );
    switch( random() % 14 ) {
      case 0:
        return oneIn( 2 ) ? void( config->switchIntfConfigDel( intf( name ) ) )
                          : void( port( name ) );
      case 1:
        return void( port( name, static_cast< SwitchportMode >( random() % 6 ),
                           oneIn( 4 ) ? 0 : 5 + random() % 3 ) );
      case 2:
        return port_ ? port_->macLearningEnabledIs( !oneIn( 4 ) ) : void();
      case 3:
        return port_ ? port_->vlanTpidIs( VlanTpidOrNone( oneIn( 2 ) ? 0x8100 : 0x88a8 ) ) : void();
      case 4:
        return port_ ? port_->vlanTagFormatDropIs( singleTagged, oneIn( 4 ) ) : void();
      case 5:
        return oneIn( 3 ) ? void( config->vlanConfigDel( vlan_ ) ) : void( vlan( vlan_.value() ) );
      case 6:
      case 7:
        if( config_ && oneIn( 4 ) )
          config_->intfDel( intf( name ) );
        else
          member( vlan_.value(), name, static_cast< AllowedTrafficDirection >( random() % 3 ) );
        return;
      case 8:
        return config_ ? config_->adminStateIs( oneIn( 4 ) ? suspended : active ) : void();
      case 9:
        return config_ ? config_->macLearningIs( !oneIn( 4 ) ) : void();
      case 10:
        return oneIn( 3 ) ? void( topology->topoConfigDel( topo ) )
                          : void( topology->topoConfigIs( topo, 1, Topology::learning, false ) );
      case 11:
        return oneIn( 3 ) ? void( topology->vidToTopoMapDel( vlan_ ) )
               : topo_    ? topology->vidToTopoMapIs( vlan_, topo_ )
                          : void();
      case 12:
        return !topo_       ? void()
               : oneIn( 3 ) ? void( topo_->topoPortConfigDel( intf( name ) ) )
                            : topo_->topoPortConfigIs( intf( name ), 1, state )->stateIs( state );
      default:
        if( topo_ && topo_->topoPortConfig( intf( name ) ) )
          topo_->topoPortConfig( intf( name ) )->stateIs( state );
    }
  };
  unsigned numAdmitted = 0;
  for( int n = 0; n < 5000; ++n ) {
    step();
    for( char const * name : names ) {
      Port fresh( intf( name ), config, topology );
      for( unsigned vlan_ = 4; vlan_ < 8; ++vlan_ ) {
        std::string const tags = vlan_ == 4 ? "" : tag( oneIn( 4 ) ? 0x88a8 : 0x8100, vlan_ );
        std::string const frame = frameFrom( mac( vlan_ ), tags );
        frameIs( name, n, frame );
        auto const got = learner.port( intf( name ) ).admissionOf( bytesOf( frame ) );
        auto const expected = fresh.admissionOf( bytesOf( frame ) );
        ASSERT_EQ( got.vlan, expected.vlan ) << n << name;
        ASSERT_EQ( got.why, expected.why ) << n << name;
        numAdmitted += got.vlan != 0;
      }
    }
    std::size_t numHosts = 0;
    for( auto const & fdb : status.fdbStatus() )
      for( auto const & host : fdb.value()->learnedHost() ) {
        ++numHosts;  // each VLAN has its own database here
        ASSERT_TRUE( Port( host.value().intf(), config, topology ).carries( fdb.key().value() ) )
            << n;
      }
    ASSERT_EQ( learner.totals().numHosts, numHosts );
  }
  EXPECT_GT( numAdmitted, 1000u );
}

TEST_F( LearnerTest, countsHostsByDatabase ) {
  hostIs( 1, "eth1", 5 );
  hostIs( 2, "eth1", 5 );
  hostIs( 1, "eth1", 6 );
  hostIs( 1, "eth2", 6 );
  auto const counts = [&] {
    std::string words;
    for( auto const & count : learner.counts().numHosts() )
      words += std::to_string( count.key().value() ) + ":" + std::to_string( count.value() ) + " ";
    return words + std::to_string( learner.counts().total() );
  };
  EXPECT_EQ( counts(), "5:2 6:1 3" );
  learner.flush( 5, {} );
  EXPECT_EQ( counts(), "5:0 6:1 1" );

  auto const mine = hostCountsFactory( Koi::Name( "mine" ) );
  auto const counter = hostCounterFactory( bridge.status, mine );
  EXPECT_EQ( mine->total(), 1u );
  status.fdbStatusDel( Fid( 6 ) );
  EXPECT_EQ( mine->total(), 0u );
  EXPECT_FALSE( mine->numHosts().contains( Fid( 6 ) ) );
}

}  // namespace
}  // namespace Learn
