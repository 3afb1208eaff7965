// EthDevPamTest.cpp: packets through real devices, at both ends of a wire.

#include <wirex/EthDevPam.h>

#include <sys/wait.h>

#include <functional>

#include <gtest/gtest.h>
#include <support/Packets.h>
#include <support/Refusal.h>
#include <support/VethPair.h>

namespace {

using TestSupport::bytesOf;
using TestSupport::pktOf;
using TestSupport::Receiver;
using TestSupport::VethPair;
using Wirex::DeviceException;
using Wirex::EthDevPam;
using Wirex::VlanTag;

/// A frame of an EtherType that nobody answers, with a payload that tells it from others.
std::string frame( unsigned n, std::size_t payloadSize = 46 ) {
  std::string bytes( "\x00\x00\x5e\x00\x53\x02\x00\x00\x5e\x00\x53\x01\x88\xb5", 14 );
  bytes += std::to_string( n );
  bytes.resize( 14 + payloadSize, '.' );
  return bytes;
}

std::string const tagBytes( "\x81\x00\x60\x05", 4 );

class EthDev : public testing::Test {
 protected:
  void SetUp() override {
    if( !veth.isThere() )
      GTEST_SKIP() << VethPair::skipped;
    open();
  }
  void open() {
    near = new EthDevPam( "near0", activity );
    far = new EthDevPam( "far0", activity );
    sender.notifierIs( near );
    receiver.notifierIs( far );
  }
  /// Runs until that holds; false when it does not in time.
  bool comes( std::function< bool() > const & holds, double seconds = 30 ) {
    double const end = activity->now() + seconds;
    while( !holds() && activity->now() < end )
      activity->runFor( 0.01 );
    return holds();
  }
  bool received( std::size_t numPkts ) {
    return comes( [&] { return receiver.pkts.size() >= numPkts; } );
  }

  VethPair veth;
  Koi::Ptr< Koi::Activity > activity = Koi::activityFactory();
  Koi::Ptr< EthDevPam > near, far;
  Receiver sender, receiver;
};

TEST_F( EthDev, carriesFramesAsTheyAreAndHearsNotItself ) {
  for( unsigned i = 0; i < 200; ++i )
    EXPECT_TRUE( near->send( pktOf( frame( i, 46 + i ) ) ) );
  ASSERT_TRUE( received( 200 ) );
  for( unsigned i = 0; i < 200; ++i )
    EXPECT_EQ( bytesOf( *receiver.pkts[i] ), frame( i, 46 + i ) );
  EXPECT_EQ( receiver.pkts[0]->headRoom(), Wirex::Pkt::headRoomDefault );
  EXPECT_FALSE( receiver.pkts[0]->isShared() );
  EXPECT_TRUE( sender.pkts.empty() );
  EXPECT_EQ( near->counters().txPkts, 200u );
  EXPECT_EQ( far->counters().rxBytes, near->counters().txBytes );
}

TEST_F( EthDev, tellsATagThatTheSystemSplitsOff ) {
  for( unsigned const tpid : { 0x8100u, 0x88a8u } ) {
    VlanTag const tag{ static_cast< Koi::U16 >( tpid ), 0xe005 };
    receiver.pkts.clear();
    auto const inside = pktOf( frame( 1 ) );
    inside->tagIs( tag );
    near->send( inside );
    auto const beside = pktOf( frame( 2 ) );
    beside->separateVlanTagIs( tag );
    near->send( beside );
    auto const both = pktOf( frame( 3 ).insert( 12, tagBytes ) );
    both->separateVlanTagIs( tag );
    near->send( both );
    ASSERT_TRUE( received( 3 ) );
    for( auto const & pkt : receiver.pkts ) {
      ASSERT_TRUE( pkt->hasSeparateVlanTag() );
      EXPECT_EQ( pkt->separateVlanTag(), tag );
    }
    EXPECT_EQ( receiver.frames(),
               ( std::vector{ frame( 1 ), frame( 2 ), frame( 3 ).insert( 12, tagBytes ) } ) );
  }
}

TEST_F( EthDev, losesWhatIsTooLongAndGoesOn ) {
  near->send( pktOf( frame( 1, 1500 ) ) );
  near->send( pktOf( frame( 2, 1600 ) ) );
  near->send( pktOf( frame( 3 ) ) );
  ASSERT_TRUE( received( 2 ) );
  EXPECT_EQ( receiver.frames(), ( std::vector{ frame( 1, 1500 ), frame( 3 ) } ) );
  EXPECT_EQ( near->counters().txPkts, 2u );
  EXPECT_EQ( near->counters().txDropped, 1u );

  // Frames get longer while the devices are open: the first tells so, and is lost.
  ASSERT_TRUE( VethPair::did( "ip link set near0 mtu 9000 && ip link set far0 mtu 9000" ) );
  near->send( pktOf( frame( 4, 9000 ) ) );
  ASSERT_TRUE( comes( [&] { return far->counters().rxDropped == 1; } ) );
  near->send( pktOf( frame( 5, 9000 ) ) );
  for( unsigned i = 0; i < 64; ++i )
    near->send( pktOf( frame( 6, 9000 ) ) );
  ASSERT_TRUE(
      comes( [&] { return receiver.pkts.size() + far->counters().rxDropped == 2 + 1 + 65; } ) );
  EXPECT_EQ( bytesOf( *receiver.pkts.back() ), frame( 6, 9000 ) );
  EXPECT_EQ( far->counters().rxDropped, 1u );
}

TEST_F( EthDev, pushesBackWhenTheDeviceHasNoRoom ) {
  if( !VethPair::did( "tc qdisc add dev near0 root tbf rate 40mbit burst 3kb limit 6000" ) )
    GTEST_SKIP() << "this system can slow no device down";
  unsigned numSent = 0;
  while( near->send( pktOf( frame( numSent, 1000 ) ) ) )
    ASSERT_LT( ++numSent, 10000u );
  EXPECT_EQ( near->numQueued(), EthDevPam::queueMost );
  EXPECT_FALSE( near->isWritable() );
  ASSERT_TRUE( comes( [&] { return sender.numWritable == 1; } ) );
  EXPECT_LE( near->numQueued(), EthDevPam::queueMost / 2 );
  ASSERT_TRUE( received( numSent ) );
  for( unsigned i = 0; i < numSent; ++i )
    ASSERT_EQ( bytesOf( *receiver.pkts[i] ), frame( i, 1000 ) );
  EXPECT_EQ( near->counters().txDropped, 1u );
}

TEST_F( EthDev, leavesFramesToTheSystemWhileNobodyReads ) {
  far->isReadingIs( false );
  for( unsigned i = 0; i < 100; ++i )
    near->send( pktOf( frame( i ) ) );
  activity->runFor( 0.05 );
  EXPECT_TRUE( receiver.pkts.empty() );
  EXPECT_EQ( far->numWaiting(), 0u );
  far->isReadingIs( true );
  EXPECT_TRUE( received( 100 ) );
}

TEST_F( EthDev, outlivesItsDevice ) {
  auto const isUp = [&] { return near->isUp() && far->isUp(); };
  ASSERT_TRUE( VethPair::did( "ip link set near0 down" ) );
  ASSERT_TRUE( comes( [&] { return !near->isUp(); } ) );
  EXPECT_EQ( near->numDown(), 1u );
  EXPECT_EQ( sender.numUp, 1 );
  EXPECT_FALSE( near->send( pktOf( frame( 1 ) ) ) );
  ASSERT_TRUE( VethPair::did( "ip link set near0 up" ) && VethPair::carries() );
  ASSERT_TRUE( comes( isUp ) );
  EXPECT_EQ( sender.numWritable, 1 );
  near->send( pktOf( frame( 2 ) ) );
  ASSERT_TRUE( received( 1 ) );

  // Away, and another one of that name; what waited for it is lost.
  near->send( pktOf( frame( 3 ) ) );
  ASSERT_TRUE( VethPair::did( "ip link del near0" ) );
  ASSERT_TRUE( comes( [&] { return !near->isUp() && !far->isUp(); } ) );
  EXPECT_EQ( near->counters().txDropped, 2u );
  ASSERT_TRUE( VethPair::did( "ip link add name near0 type veth peer name far0 && "
                              "ip link set near0 up && ip link set far0 up" ) &&
               VethPair::carries() );
  ASSERT_TRUE( comes( isUp ) );
  near->send( pktOf( frame( 4 ) ) );
  ASSERT_TRUE( received( 2 ) );
  EXPECT_EQ( receiver.frames(), ( std::vector{ frame( 2 ), frame( 4 ) } ) );
}

TEST_F( EthDev, mayGoWhileItIsHeard ) {
  struct Ending : Receiver {
    explicit Ending( Koi::Ptr< EthDevPam > & pam ) : pam_( pam ) {}
    void onPkt( Koi::Ptr< Wirex::Pkt > const & ) override {
      ++num;
      pam_ = nullptr;
    }
    Koi::Ptr< EthDevPam > & pam_;
    int num = 0;
  } ending( far );
  receiver.notifierIs( nullptr );
  ending.notifierIs( far );
  near->send( pktOf( frame( 1 ) ) );
  near->send( pktOf( frame( 2 ) ) );
  ASSERT_TRUE( comes( [&] { return ending.num != 0; } ) );
  activity->runFor( 0.01 );
  EXPECT_EQ( far, nullptr );
  near = nullptr;  // with something to send
}

TEST_F( EthDev, saysWhichDeviceAndWhyItCannotBeOpened ) {
  auto const said = []( char const * name ) {
    return refusal< DeviceException >( [&] { Koi::Ptr< EthDevPam >( new EthDevPam( name ) ); } );
  };
  EXPECT_EQ( said( "gone0" ), "cannot open device 'gone0': No such device" );
  EXPECT_EQ( said( "" ), "cannot open device '': No such device" );
  EXPECT_EQ( said( "a-name-that-is-too-long" ),
             "cannot open device 'a-name-that-is-too-long': No such device" );
  pid_t const child = fork();
  if( child == 0 )
    _exit( setuid( 65534 ) == 0 &&
                   said( "near0" ) == "cannot open device 'near0': Operation not permitted"
               ? 0
               : 1 );
  int status = -1;
  waitpid( child, &status, 0 );
  EXPECT_EQ( status, 0 );
}

}  // namespace
