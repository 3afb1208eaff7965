// PamTest.cpp: packet endpoints: one that is read, one that is not, and many on one.

#include <functional>

#include <gtest/gtest.h>
#include <support/Packets.h>
#include <support/Refusal.h>
#include <wirex/MemoryPam.h>
#include <wirex/PamMuxDemux.h>

namespace {

using TestSupport::bytesOf;
using TestSupport::pktOf;
using TestSupport::Receiver;
using Wirex::Pam;
using Wirex::PamMuxDemux;
using Wirex::Pkt;
using Strings = std::vector< std::string >;

/// A frame of 14 bytes.
std::string frame( char c ) { return std::string( 14, c ); }

struct Wire : testing::Test {
  explicit Wire( std::size_t capacity = 4 ) { std::tie( near, far ) = made( capacity ); }
  std::pair< Koi::Ptr< Pam >, Koi::Ptr< Pam > > made( std::size_t capacity ) {
    return Wirex::memoryPamFactory( activity, capacity );
  }
  void settle() { activity->runFor( 0 ); }

  Koi::Ptr< Koi::Activity > activity = Koi::activityFactory();
  Koi::Ptr< Pam > near, far;
};

TEST_F( Wire, carriesFramesInALaterTurnAndCountsThem ) {
  Receiver receiver( far );
  EXPECT_TRUE( near->send( pktOf( frame( 'a' ) ) ) );
  auto const tagged = pktOf( frame( 'b' ) );
  tagged->separateVlanTagIs( { 0x8100, 5 } );
  EXPECT_TRUE( near->send( tagged ) );
  EXPECT_TRUE( receiver.pkts.empty() );
  settle();
  EXPECT_EQ( receiver.frames(), ( Strings{ frame( 'a' ), frame( 'b' ) } ) );
  EXPECT_EQ( receiver.pkts[1], tagged );
  EXPECT_EQ( near->counters().txPkts, 2u );
  EXPECT_EQ( near->counters().txBytes, 32u );
  EXPECT_EQ( far->counters().rxPkts, 2u );
  EXPECT_EQ( far->counters().rxBytes, 32u );
}

TEST_F( Wire, refusesWhatHasNoWholeHeader ) {
  EXPECT_FALSE( near->send( pktOf( std::string( 13, 'a' ) ) ) );
  EXPECT_FALSE( near->send( new Pkt ) );
  EXPECT_EQ( near->counters().txDropped, 2u );
  EXPECT_EQ( near->counters().txPkts, 0u );
}

TEST_F( Wire, dropsWhatNobodyReceives ) {
  near->send( pktOf( frame( 'a' ) ) );
  settle();
  Receiver receiver( far );
  receiver.isRegisteredNotifieeIs( false );
  near->send( pktOf( frame( 'b' ) ) );
  settle();
  EXPECT_EQ( far->counters().rxDropped, 2u );
  EXPECT_TRUE( receiver.pkts.empty() );
}

TEST_F( Wire, hasOneObserver ) {
  Receiver first( far ), second;
  EXPECT_EQ( refusal( [&] { second.notifierIs( far ); } ), "the packet endpoint has an observer" );
  first.notifierIs( nullptr );
  second.notifierIs( far );
  far = nullptr;
  EXPECT_EQ( second.notifier(), nullptr );
  EXPECT_FALSE( near->isUp() || near->isWritable() || near->send( pktOf( frame( 'a' ) ) ) );
}

TEST_F( Wire, isFullWhileTheFarEndDoesNotReadAndSaysWhenItIsNot ) {
  Receiver sender( near ), receiver( far );
  far->isReadingIs( false );
  for( char c = 'a'; c != 'e'; ++c )
    EXPECT_TRUE( near->send( pktOf( frame( c ) ) ) );
  EXPECT_FALSE( near->isWritable() );
  EXPECT_FALSE( near->send( pktOf( frame( 'x' ) ) ) );
  settle();
  EXPECT_TRUE( receiver.pkts.empty() );
  EXPECT_EQ( sender.numWritable, 0 );
  far->isReadingIs( true );
  settle();
  EXPECT_EQ( receiver.pkts.size(), 4u );
  EXPECT_EQ( sender.numWritable, 1 );
  EXPECT_TRUE( near->isWritable() );
}

/// Numbers stand in the first byte of the frames from the device.
class ByteMux final : public Koi::Tracked< ByteMux, PamMuxDemux > {
 public:
  explicit ByteMux( Koi::Ptr< Pam > const & pam ) : Tracked( pam ) { koiBegin(); }
  Koi::U32 decapsulate( Koi::Ptr< Pkt > const & pkt ) override {
    Koi::U32 const number = pkt->data()[0];
    pkt->frontDel( 1 );
    return number;
  }
  void doEncapsulate( Koi::Ptr< Pkt > const & pkt, Koi::U32 number ) override {
    pkt->frontIs( 1 );
    pkt->ownData()[0] = static_cast< Koi::U8 >( number );
  }
  void doInitMux() override {
    modeIs( muxAndDemux );
    initializedIs( true );
  }
  Koi::KoiType const * fwkType() const override { return nullptr; }
};

struct Mux : Wire {
  Mux() { mux->hasNotificationActiveIs( true ); }
  Koi::Ptr< ByteMux > mux{ new ByteMux( near ) };
  Receiver device{ far };

  void comes( char number, char c ) {
    far->send( pktOf( number + frame( c ) ) );
    settle();
  }
};

TEST_F( Mux, sendsFramesOfTheDeviceToWhoHasTheirNumber ) {
  Receiver a( mux->manyPamIs( 1 ) ), b( mux->manyPamIs( 200 ) );
  comes( 1, 'x' );
  comes( '\xc8', 'y' );
  comes( 3, 'z' );
  EXPECT_EQ( a.frames(), Strings{ frame( 'x' ) } );
  EXPECT_EQ( b.frames(), Strings{ frame( 'y' ) } );
  EXPECT_EQ( mux->manyPamKeys(), ( std::vector< Koi::U32 >{ 1, 200 } ) );
  EXPECT_EQ( mux->manyPam( 3 ), nullptr );
  EXPECT_EQ( mux->counters().unknownPkts, 1u );
  EXPECT_EQ( mux->counters().unknownBytes, 15u );

  EXPECT_TRUE( mux->manyPam( 1 )->send( pktOf( frame( 'p' ) ) ) );
  settle();
  EXPECT_EQ( device.frames(), Strings{ '\1' + frame( 'p' ) } );
  EXPECT_EQ( mux->manyPam( 1 )->counters().txBytes, 14u );
}

TEST_F( Mux, passesNothingAgainstItsMode ) {
  Receiver a( mux->manyPamIs( 1 ) );
  mux->modeIs( PamMuxDemux::mux );
  comes( 1, 'x' );
  EXPECT_TRUE( a.pkts.empty() );
  EXPECT_TRUE( mux->manyPam( 1 )->isWritable() );
  EXPECT_EQ( a.numWritable, 1 );
  mux->modeIs( PamMuxDemux::demux );
  comes( 1, 'y' );
  EXPECT_EQ( a.frames(), Strings{ frame( 'y' ) } );
  EXPECT_FALSE( mux->manyPam( 1 )->send( pktOf( frame( 'p' ) ) ) );
  mux->modeIs( PamMuxDemux::muxAndDemux );
  mux->initializedIs( false );
  comes( 1, 'z' );
  EXPECT_FALSE( mux->manyPam( 1 )->isWritable() );
  EXPECT_EQ( mux->counters().closedPkts, 2u );
}

TEST_F( Mux, letsOneThatDoesNotReadWaitAloneAndDropsWhatIsTooMuch ) {
  Receiver a( mux->manyPamIs( 1 ) ), b( mux->manyPamIs( 2 ) );
  mux->manyPam( 1 )->isReadingIs( false );
  for( std::size_t i = 0; i < Pam::waitingMost + 3; ++i )
    comes( 1, static_cast< char >( i ) );
  comes( 2, 'b' );
  EXPECT_TRUE( a.pkts.empty() );
  EXPECT_EQ( b.pkts.size(), 1u );
  EXPECT_EQ( mux->manyPam( 1 )->numWaiting(), Pam::waitingMost );
  EXPECT_EQ( mux->manyPam( 1 )->counters().rxDropped, 3u );
  mux->manyPam( 1 )->isReadingIs( true );
  ASSERT_EQ( a.pkts.size(), Pam::waitingMost );
  for( std::size_t i = 0; i < a.pkts.size(); ++i )
    EXPECT_EQ( bytesOf( *a.pkts[i] ), frame( static_cast< char >( i ) ) );
}

/// Does something with each packet.
struct Doing : Receiver {
  Doing( Pam * pam, std::function< void() > does ) : Receiver( pam ), does_( std::move( does ) ) {}
  void onPkt( Koi::Ptr< Pkt > const & pkt ) override {
    Receiver::onPkt( pkt );
    does_();
  }
  std::function< void() > does_;
};

TEST_F( Mux, keepsTheOrderWhenReadingStopsAndGoesOnInACallback ) {
  Koi::Ptr< Pam > const pam = mux->manyPamIs( 1 );
  pam->isReadingIs( false );
  Doing a( pam, [&] {
    pam->isReadingIs( false );
    pam->isReadingIs( a.pkts.size() != 3 );
  } );
  for( char c = 'a'; c != 'f'; ++c )
    comes( 1, c );
  pam->isReadingIs( true );
  EXPECT_EQ( a.pkts.size(), 3u );
  comes( 1, 'f' );
  pam->isReadingIs( true );
  EXPECT_EQ( a.frames(), ( Strings{ frame( 'a' ), frame( 'b' ), frame( 'c' ), frame( 'd' ),
                                    frame( 'e' ), frame( 'f' ) } ) );

  // What a callback throws keeps nobody from going on.
  pam->isReadingIs( false );
  comes( 1, 'g' );
  comes( 1, 'h' );
  a.does_ = [&] {
    if( bytesOf( *a.pkts.back() ) == frame( 'g' ) )
      throw std::runtime_error( "no" );
  };
  EXPECT_THROW( pam->isReadingIs( true ), std::runtime_error );
  comes( 1, 'i' );
  EXPECT_EQ( a.pkts.size(), 9u );
}

TEST_F( Mux, tellsTheManyOfRoomInTurns ) {
  struct Sender : Receiver {
    using Receiver::Receiver;
    void onWritable() override {
      Receiver::onWritable();
      while( notifier()->send( pktOf( frame( 's' ) ) ) ) {
      }
    }
  };
  Sender a( mux->manyPamIs( 1 ) ), b( mux->manyPamIs( 2 ) ), c( mux->manyPamIs( 3 ) );
  a.onWritable();  // fills the wire
  EXPECT_FALSE( c.notifier()->isWritable() );
  for( int i = 0; i < 3; ++i ) {
    device.pkts.clear();
    settle();
    settle();
  }
  EXPECT_GT( b.notifier()->counters().txPkts, 0u );
  EXPECT_GT( c.notifier()->counters().txPkts, 0u );
}

TEST_F( Mux, takesAnotherDeviceAndOneThatGoes ) {
  Receiver a( mux->manyPamIs( 1 ) );
  auto const [newNear, newFar] = made( 4 );
  Receiver newDevice( newFar );
  mux->onePamIs( newNear );
  EXPECT_EQ( a.numUp, 1 );
  comes( 1, 'x' );
  EXPECT_TRUE( a.pkts.empty() );  // the old one is not heard
  EXPECT_TRUE( mux->manyPam( 1 )->send( pktOf( frame( 'p' ) ) ) );
  settle();
  EXPECT_EQ( newDevice.pkts.size(), 1u );

  Receiver other( near );  // one that has an observer is refused, and nothing changes
  EXPECT_EQ( refusal( [&] { mux->onePamIs( near ); } ), "the packet endpoint has an observer" );
  EXPECT_EQ( mux->onePam(), newNear );
  newFar->send( pktOf( '\1' + frame( 'z' ) ) );
  settle();
  EXPECT_EQ( a.frames(), Strings{ frame( 'z' ) } );

  mux->onePamIs( nullptr );
  EXPECT_FALSE( mux->manyPam( 1 )->isUp() || mux->manyPam( 1 )->send( pktOf( frame( 'p' ) ) ) );
}

TEST_F( Mux, mayGoInACallbackAndLeavesEndpointsThatAreOfNoUse ) {
  Koi::Ptr< Pam > const kept = mux->manyPamIs( 1 );
  Doing a( kept, [&] { mux = nullptr; } );
  comes( 1, 'x' );
  EXPECT_EQ( a.pkts.size(), 1u );
  EXPECT_EQ( mux, nullptr );
  EXPECT_FALSE( kept->isUp() || kept->send( pktOf( frame( 'p' ) ) ) );
  comes( 1, 'y' );
  EXPECT_EQ( near->counters().rxDropped, 1u );
}

TEST_F( Mux, letsAnEndpointGo ) {
  Koi::Ptr< Pam > const kept = mux->manyPamIs( 1 );
  Receiver a( kept );
  mux->manyPamDel( 1 );
  mux->manyPamDel( 1 );
  comes( 1, 'x' );
  EXPECT_EQ( mux->counters().unknownPkts, 1u );
  EXPECT_FALSE( kept->send( pktOf( frame( 'p' ) ) ) );
}

TEST_F( Mux, hearsNothingBeforeItIsActiveAndAfterItHasEnded ) {
  auto const [one, other] = made( 4 );
  Koi::Ptr< ByteMux > const quiet( new ByteMux( one ) );
  Receiver a( quiet->manyPamIs( 1 ) );
  other->send( pktOf( '\1' + frame( 'x' ) ) );
  settle();
  EXPECT_TRUE( a.pkts.empty() );
  quiet->hasNotificationActiveIs( true );
  other->send( pktOf( '\1' + frame( 'y' ) ) );
  settle();
  EXPECT_EQ( a.pkts.size(), 1u );
  quiet->koiDoZombieReactors( true );
  EXPECT_EQ( quiet->onePam(), nullptr );
  EXPECT_TRUE( quiet->manyPamKeys().empty() );
}

}  // namespace
