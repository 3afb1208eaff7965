// MirrorTest.cpp: two trees, two mirrors, and what becomes of them: random changes at one end or at
// both, cuts at any byte, peers that do not read, refusals, strangers.
#include <gtest/gtest.h>

#include <koi/Mirror.h>

#include "RoomChanges.h"

using namespace Everything;
using Koi::Mirror;
using TestSupport::PlainRoom;
using TestSupport::RoomChange;

namespace {

/// A room and its mirror.
struct End {
  explicit End( Mirror::Role role, bool writable = true ) : mirror( room, role, writable ) {}

  /// What is to go to the peer, at most about so many bytes at a time.
  std::string out( std::size_t most = 1 << 20 ) {
    Koi::Ptr< Koi::NboAttrLog::Out > const bytes( new Koi::NboAttrLog::Out );
    mirror.flush( *bytes, most );
    return { reinterpret_cast< char const * >( bytes->data() ), bytes->size() };
  }
  void in( std::string_view bytes ) { mirror.received( bytes.data(), bytes.size() ); }

  Koi::Ptr< Room > room = roomFactory( Koi::Name( "room" ) );
  Mirror mirror;
};

/// Both ends, with nothing between them but what is carried by hand.
struct Pair {
  explicit Pair( bool writable = true ) : source( Mirror::source, writable ) {}

  /// Carries until neither end has anything to say.
  void settle() {
    for( int i = 0; source.mirror.hasOutput() || proxy.mirror.hasOutput(); ++i ) {
      ASSERT_LT( i, 1000 ) << "the ends talk for ever";
      proxy.in( source.out() );
      source.in( proxy.out() );
    }
  }
  void cut() {
    source.mirror.restart();
    proxy.mirror.restart();
  }
  std::string sourceText() const { return TestSupport::wholeText( *source.room ); }
  std::string proxyText() const { return TestSupport::wholeText( *proxy.room ); }

  End source, proxy{ Mirror::proxy };
};

/// Keeps a copy of what it is told of a room, reading again what it is told about.
struct Follower : Room::NotifieeConst {
  explicit Follower( Room * room ) { notifierIs( room ); }
  void onColorCount( Color k ) override {
    if( notifier()->colorCount().contains( k ) )
      counts[k] = notifier()->colorCount( k );
    else
      counts.erase( k );
  }
  void onLamp( Koi::Name const & k ) override {
    if( auto const lamp = notifier()->lamp( k ) )
      lamps[std::string( Koi::String8( k ) )] = lamp.ptr();
    else
      lamps.erase( std::string( Koi::String8( k ) ) );
    ++numCalls;
  }
  using NotifieeConst::onColorCount;
  using NotifieeConst::onLamp;

  std::map< Color, Koi::U32 > counts;
  std::map< std::string, Lamp const * > lamps;
  int numCalls = 0;
};

void requireFollowed( Follower const & follower, Room const & room ) {
  std::map< Color, Koi::U32 > counts;
  for( auto const & i : room.colorCount() )
    counts[i.key()] = i.value();
  EXPECT_EQ( follower.counts, counts );
  std::map< std::string, Lamp const * > lamps;
  for( auto const & i : room.lamp() )
    lamps[std::string( Koi::String8( i.key() ) )] = i.value().ptr();
  EXPECT_EQ( follower.lamps, lamps );
}

std::vector< unsigned > seeds() {
  std::vector< unsigned > all;
  for( unsigned seed = 1; seed <= ( getenv( "ONE" ) ? 0 : 40 ); ++seed )
    all.push_back( seed );
  all.push_back( getenv( "ONE" ) ? atoi( getenv( "ONE" ) ) : std::random_device()() );
  return all;
}

TEST( Mirror, aTreeThatIsThereIsMirroredWhole ) {
  Pair pair;
  std::mt19937 random( 1 );
  for( int i = 0; i < 200; ++i )
    RoomChange::any( random ).apply( *pair.source.room );
  pair.settle();
  EXPECT_EQ( pair.proxyText(), pair.sourceText() );
  EXPECT_TRUE( pair.proxy.mirror.isSynchronised() );
  EXPECT_EQ( pair.source.mirror.counts().refused + pair.proxy.mirror.counts().refused, 0u );
}

TEST( Mirror, changesOfTheSourceReachTheProxyWhateverIsCut ) {
  for( unsigned const seed : seeds() ) {
    SCOPED_TRACE( testing::Message() << "seed " << seed );
    std::mt19937 random( seed );
    Pair pair;
    PlainRoom plain;
    Follower follower( pair.proxy.room );
    for( int i = 0; i < 60; ++i ) {
      for( unsigned n = random() % 12; n != 0; --n ) {
        auto const change = RoomChange::any( random );
        change.apply( *pair.source.room );
        plain.apply( change );
      }
      std::string const bytes = pair.source.out( 1 + random() % 200 );
      if( random() % 4 == 0 ) {
        pair.proxy.in( bytes.substr( 0, random() % ( bytes.size() + 1 ) ) );
        pair.cut();
      } else {
        pair.proxy.in( bytes );
        pair.source.in( pair.proxy.out() );
      }
    }
    pair.settle();
    ASSERT_EQ( TestSupport::plainText( *pair.source.room ), TestSupport::plainText( plain ) );
    ASSERT_EQ( pair.proxyText(), pair.sourceText() );
    requireFollowed( follower, *pair.proxy.room );
    pair.source.room->lamp();
  }
}

TEST( Mirror, changesAtBothEndsMeetWhateverIsCut ) {
  for( unsigned const seed : seeds() ) {
    SCOPED_TRACE( testing::Message() << "seed " << seed );
    std::mt19937 random( seed );
    Pair pair;
    Follower follower( pair.proxy.room ), sourceFollower( pair.source.room );
    for( int i = 0; i < 60; ++i ) {
      for( unsigned n = random() % 6; n != 0; --n )
        RoomChange::any( random ).apply( *pair.source.room );
      for( unsigned n = random() % 6; n != 0; --n )
        RoomChange::any( random ).apply( *pair.proxy.room );
      End & from = random() % 2 ? pair.source : pair.proxy;
      End & to = &from == &pair.source ? pair.proxy : pair.source;
      std::string const bytes = from.out( 1 + random() % 200 );
      if( random() % 8 == 0 ) {
        to.in( bytes.substr( 0, random() % ( bytes.size() + 1 ) ) );
        pair.cut();
      } else {
        to.in( bytes );
      }
    }
    pair.settle();
    ASSERT_EQ( pair.proxyText(), pair.sourceText() );
    requireFollowed( follower, *pair.proxy.room );
    requireFollowed( sourceFollower, *pair.source.room );
  }
}

}  // namespace
