// MirrorTest.cpp: two trees or three, their mirrors, and what becomes of them: random changes at
// one end or at all, cuts at any byte, peers that do not read, refusals, strangers.
#include <gtest/gtest.h>

#include <koi/Mirror.h>

#include <sstream>

#include "RoomChanges.h"

using namespace Everything;
using Koi::Mirror;
using TestSupport::PlainRoom;
using TestSupport::RoomChange;
using TestSupport::withoutLights;

namespace {

/// A room and its mirror.
struct End {
  explicit End( Mirror::Role role, bool writable = true,
                Koi::Ptr< Room > const & of = roomFactory( Koi::Name( "room" ) ) )
      : room( of ), mirror( room, role, writable ) {}

  /// What is to go to the peer, at most about so many bytes at a time.
  std::string out( std::size_t most = 1 << 20 ) {
    Koi::Ptr< Koi::NboAttrLog::Out > const bytes( new Koi::NboAttrLog::Out );
    mirror.flush( *bytes, most );
    return { reinterpret_cast< char const * >( bytes->data() ), bytes->size() };
  }
  void in( std::string_view bytes ) { mirror.received( bytes.data(), bytes.size() ); }

  Koi::Ptr< Room > const room;
  Mirror mirror;
};

/// Both ends, with nothing between them but what is carried by hand.
struct Pair {
  explicit Pair( bool writable = true ) : source( Mirror::source, writable ) {}
  explicit Pair( Koi::Ptr< Room > const & of ) : source( Mirror::source, true, of ) {}

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

/// A source and two proxies.
struct Three {
  Room & room( unsigned end ) {
    return end == 0 ? *first.source.room : end == 1 ? *first.proxy.room : *second.proxy.room;
  }
  void settle() {
    auto const isTalking = [this] {
      return second.source.mirror.hasOutput() || second.proxy.mirror.hasOutput();
    };
    first.settle();
    for( int i = 0; isTalking(); ++i ) {
      ASSERT_LT( i, 100 ) << "the ends talk for ever";
      second.settle();
      first.settle();
    }
  }
  void requireEqual( std::string ( *text )( Room const & ) ) {
    ASSERT_EQ( text( room( 1 ) ), text( room( 0 ) ) );
    ASSERT_EQ( text( room( 2 ) ), text( room( 0 ) ) );
  }

  Pair first;
  Pair second{ first.source.room };
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
    ASSERT_EQ( withoutLights( *pair.proxy.room ), withoutLights( *pair.source.room ) );
    requireFollowed( follower, *pair.proxy.room );
    requireFollowed( sourceFollower, *pair.source.room );
  }
}

TEST( Mirror, changesAtASourceAndTwoProxiesMeet ) {
  // Few changes at a time leave much as it was; many meet in every way.
  for( unsigned const most : { 3u, 12u, 50u } )
    for( unsigned const seed : seeds() ) {
      SCOPED_TRACE( testing::Message() << "seed " << seed << ", at most " << most );
      std::mt19937 random( seed );
      Three three;
      three.settle();
      for( int round = 0; round < 6; ++round ) {
        // 1. One end at a time.
        for( unsigned n = random() % most, end = random() % 3; n != 0; --n )
          RoomChange::any( random ).apply( three.room( end ) );
        three.settle();
        if( round == 0 )  // since then children may be made from what both ends have replaced
          three.requireEqual( TestSupport::wholeText );
        // 2. All of them, while bytes are under way.
        for( int i = 0; i < 6; ++i ) {
          for( unsigned end = 0; end < 3; ++end )
            for( unsigned n = random() % most; n != 0; --n )
              RoomChange::any( random ).apply( three.room( end ) );
          Pair & pair = random() % 2 ? three.first : three.second;
          bool const down = random() % 2;
          std::string const bytes = ( down ? pair.source : pair.proxy )
                                        .out( random() % 2 ? 1 + random() % 200 : 1 << 20 );
          End & to = down ? pair.proxy : pair.source;
          if( random() % 16 == 0 ) {
            to.in( bytes.substr( 0, random() % ( bytes.size() + 1 ) ) );
            pair.cut();
          } else {
            to.in( bytes );
          }
        }
        three.settle();
        three.requireEqual( withoutLights );
        if( HasFatalFailure() )
          return;
      }
    }
}

TEST( Mirror, theNumbersOfAQueueThatFillsAndEmptiesAtOnceReachTheOtherProxy ) {
  Three three;
  three.settle();
  for( unsigned end = 0; end < 3; ++end ) {
    three.room( end ).visitorEnq( ShelfNumber( 1 ) );
    three.room( end ).visitorDeq();
    three.settle();
    EXPECT_EQ( three.room( 2 ).visitorMetadata().head, end + 1 );
    three.requireEqual( TestSupport::wholeText );
  }
}

TEST( Mirror, aVisitorThatAProxyLetOutStaysOutWhateverItsSourceTellsMeanwhile ) {
  Pair pair;
  for( unsigned i = 1; i <= 3; ++i )
    pair.source.room->visitorEnq( ShelfNumber( i ) );
  pair.settle();
  pair.proxy.room->visitorDeq();
  pair.source.room->koiNboAttrLogSa( pair.source.mirror )->doRemountSelf();
  pair.source.room->visitorEnq( ShelfNumber( 4 ) );
  pair.proxy.in( pair.source.out() );
  EXPECT_EQ( pair.proxy.room->visitorMetadata().head, 1 );
  pair.settle();
  EXPECT_EQ( pair.source.room->visitorMetadata().head, 1 );
  EXPECT_EQ( pair.source.room->visitor().size(), 3u );
  EXPECT_EQ( pair.proxyText(), pair.sourceText() );
}

TEST( Mirror, whatAProxyLeftOfItsSourceAndThenDeletesGoesAtBothEnds ) {
  Pair pair;
  pair.settle();
  pair.proxy.room->colorCountIs( red, 1 );
  pair.source.room->colorCountIs( red, 2 );
  pair.proxy.in( pair.source.out() );
  EXPECT_EQ( pair.proxy.room->colorCount( red ), 1u );
  pair.proxy.room->colorCountDel( red );
  pair.settle();
  EXPECT_FALSE( pair.source.room->colorCount().contains( red ) );
}

TEST( Mirror, whatAProxyRefersToWhileItsSourceRemovesItGoesOnAtBothEnds ) {
  Pair pair;
  Koi::Name const hall( "hall" );
  pair.source.room->lampIs( hall );
  pair.settle();
  pair.proxy.room->mainLampIs( pair.proxy.room->lamp( hall ) );
  pair.source.room->lampDel( hall );
  pair.settle();
  ASSERT_TRUE( pair.source.room->mainLamp() );
  EXPECT_EQ( pair.source.room->mainLamp()->name(), hall );
  EXPECT_EQ( pair.proxyText(), pair.sourceText() );
}

TEST( Mirror, aFlushThatIsCutAtAnyByteIsAsIfItHadNotBeen ) {
  Pair pair;
  std::mt19937 random( 7 );
  for( int i = 0; i < 60; ++i )
    RoomChange::any( random ).apply( *pair.source.room );
  pair.settle();
  std::size_t numCuts = 0;
  for( std::size_t at = 0, size = 1; at < size; ++at, ++numCuts ) {
    pair.source.room->colorCountIs( amber, static_cast< Koi::U32 >( at ) );
    pair.source.room->lampDel( Koi::Name( "hall" ) );
    pair.source.room->lampIs( Koi::Name( "hall" ) )->wattsIs( at % 2 );
    std::string const before = pair.proxyText();
    std::string const bytes = pair.source.out();
    size = bytes.size();
    pair.proxy.in( bytes.substr( 0, at ) );
    ASSERT_EQ( pair.proxyText(), before ) << at;
    pair.cut();
    pair.settle();
    ASSERT_EQ( pair.proxyText(), pair.sourceText() ) << at;
  }
  EXPECT_GT( numCuts, 150u );
}

TEST( Mirror, whatDidNotChangeTellsNobodyAfterACut ) {
  Pair pair;
  std::mt19937 random( 3 );
  for( int i = 0; i < 200; ++i ) {
    auto const change = RoomChange::any( random );
    // What is out of the tree is made anew.
    if( change.kind != RoomChange::lampDel && change.kind != RoomChange::lampAgain &&
        change.kind != RoomChange::mainLampIs )
      change.apply( *pair.source.room );
  }
  pair.source.room->mainLampIs( pair.source.room->lampIs( Koi::Name( "hall" ) ) );
  pair.settle();
  struct Counter : Room::NotifieeConst {
    void onShelf( ShelfNumber const & ) override { ++numCalls; }
    void onLamp( Koi::Name const & ) override { ++numCalls; }
    void onMainLamp() override { ++numCalls; }
    void onColorCount( Color ) override { ++numCalls; }
    void onVisitor( Koi::U8 ) override { ++numCalls; }
    void onCeiling() override { ++numCalls; }
    using NotifieeConst::onColorCount;
    using NotifieeConst::onLamp;
    using NotifieeConst::onShelf;
    using NotifieeConst::onVisitor;
    int numCalls = 0;
  } counter;
  counter.notifierIs( pair.proxy.room );
  pair.cut();
  pair.settle();
  EXPECT_EQ( counter.numCalls, 0 );
  pair.source.room->colorCountIs( red, 77 );
  pair.cut();
  pair.settle();
  EXPECT_EQ( counter.numCalls, 1 );
}

TEST( Mirror, aChildThatWasMadeAgainIsAnotherOneAlsoAcrossACut ) {
  for( bool const cut : { false, true } ) {
    Pair pair;
    Koi::Name const hall( "hall" );
    pair.source.room->lampIs( hall );
    pair.settle();
    Koi::Ptr< Lamp > const before = pair.proxy.room->lamp( hall );
    pair.source.room->lampDel( hall );
    pair.source.room->lampIs( hall );
    if( cut )
      pair.cut();
    pair.settle();
    EXPECT_NE( pair.proxy.room->lamp( hall ), before ) << cut;
    EXPECT_EQ( before->parent(), nullptr );
  }
}

TEST( Mirror, aMemberThatIsPutIntoAGapOfAQueueStandsThereAtBothEnds ) {
  for( bool const fromProxy : { false, true } ) {
    SCOPED_TRACE( fromProxy );
    Pair pair;
    Room & room = fromProxy ? *pair.proxy.room : *pair.source.room;
    room.visitorIs( 9, ShelfNumber( 1 ) );
    room.visitorIs( 2, ShelfNumber( 2 ) );  // behind it: numbers begin anew
    pair.settle();
    room.visitorIs( 16, ShelfNumber( 3 ) );
    room.visitorDel( 9 );
    pair.settle();
    EXPECT_EQ( room.visitorMetadata().head, 16 );
    EXPECT_EQ( pair.proxyText(), pair.sourceText() );
  }
}

TEST( Mirror, aFlushIsToldWhenAllOfItIsThere ) {
  Pair pair;
  pair.settle();
  struct Reader : Room::NotifieeConst {
    void onColorCount( Color ) override {
      EXPECT_TRUE( notifier()->ceiling() && notifier()->ceiling()->watts() == 7 );
      ++numCalls;
    }
    using NotifieeConst::onColorCount;
    int numCalls = 0;
  } reader;
  reader.notifierIs( pair.proxy.room );
  pair.source.room->colorCountIs( red, 1 );
  pair.source.room->ceilingIs( Koi::Name( "top" ) )->wattsIs( 7 );
  pair.settle();
  EXPECT_EQ( reader.numCalls, 1 );
}

TEST( Mirror, whatObserversRaiseIsCountedAndTheRestIsApplied ) {
  Pair pair;
  pair.settle();
  struct Thrower : Room::NotifieeConst {
    void onColorCount( Color ) override { throw std::runtime_error( "not today" ); }
    using NotifieeConst::onColorCount;
  } thrower;
  thrower.notifierIs( pair.proxy.room );
  pair.source.room->colorCountIs( red, 1 );
  pair.source.room->ceilingIs( Koi::Name( "top" ) );
  pair.settle();
  EXPECT_EQ( pair.proxyText(), pair.sourceText() );
  EXPECT_EQ( pair.proxy.mirror.counts().exceptions, 1u );
  EXPECT_EQ( pair.proxy.mirror.lastException(), "not today" );
}

TEST( Mirror, theProxysChangeHoldsWhereBothChange ) {
  Pair pair;
  pair.source.room->ceilingIs( Koi::Name( "top" ) );
  pair.settle();
  pair.source.room->colorCountIs( red, 1 );
  pair.source.room->ceiling()->wattsIs( 10 );
  pair.proxy.room->colorCountIs( red, 2 );
  pair.proxy.room->ceiling()->wattsIs( 20 );
  pair.settle();
  EXPECT_EQ( pair.source.room->colorCount( red ), 2u );
  EXPECT_EQ( pair.source.room->ceiling()->watts(), 20 );
  EXPECT_EQ( pair.proxyText(), pair.sourceText() );
}

TEST( Mirror, aReadOnlyProxyRefusesWhatItsSourceDoesNotWant ) {
  Pair pair( false );
  pair.proxy.room->colorCountIs( red, 5 );  // before it knows
  pair.source.room->ceilingIs( Koi::Name( "top" ) );
  pair.settle();
  EXPECT_EQ( pair.proxyText(), pair.sourceText() );
  auto const refusal = []( auto const & change ) -> std::string {
    try {
      change();
    } catch( Koi::ReadOnlyException const & e ) {
      return e.what();
    }
    return "done";
  };
  Room & room = *pair.proxy.room;
  std::string const ofRoom = "write-update from readonly proxy: room";
  EXPECT_EQ( refusal( [&] { room.colorCountIs( red, 1 ); } ), ofRoom );
  EXPECT_EQ( refusal( [&] { room.visitorEnq( ShelfNumber( 1 ) ); } ), ofRoom );
  EXPECT_EQ( refusal( [&] { room.lampIs( Koi::Name( "a" ) ); } ), ofRoom );
  EXPECT_EQ( refusal( [&] { room.ceilingDel(); } ), ofRoom );
  EXPECT_EQ( refusal( [&] { room.ceiling()->wattsIs( 3 ); } ), ofRoom + "/top" );
  EXPECT_EQ( refusal( [&] { room.ceiling()->wattsIs( 40 ); } ), "done" );  // as it is
  EXPECT_EQ( refusal( [&] { room.colorCountDel( red ); } ), "done" );      // there is none
  EXPECT_EQ( pair.proxyText(), pair.sourceText() );
}

/// Puts another number in the place of the only one of that kind in the bytes.
void replace( std::string & bytes, std::string_view from, std::string_view to ) {
  auto const at = bytes.find( from );
  ASSERT_NE( at, std::string::npos );
  ASSERT_EQ( bytes.find( from, at + 1 ), std::string::npos );
  bytes.replace( at, from.size(), to );
}

TEST( Mirror, aRefusedChangeIsCountedAndTheProxyGetsWhatIsThere ) {
  using namespace std::string_view_literals;
  Pair pair;
  pair.source.room->ceilingIs( Koi::Name( "top" ) );
  pair.settle();
  auto const ceiling = [&]( End & end ) { return end.room->ceiling(); };
  // From the source: left out.
  ceiling( pair.source )->wattsIs( 0x55 );
  std::string bytes = pair.source.out();
  replace( bytes, "\0\x55"sv, "\1\x55"sv );
  pair.proxy.in( bytes );
  pair.settle();
  EXPECT_EQ( ceiling( pair.proxy )->watts(), 40 );
  EXPECT_EQ( pair.proxy.mirror.counts().refused, 1u );
  EXPECT_EQ( pair.proxy.mirror.lastRefusal(),
             "room/top.watts: Lamp::watts > Lamp::wattsMax not allowed" );
  // From the proxy: answered.
  ceiling( pair.proxy )->wattsIs( 0x44 );
  bytes = pair.proxy.out();
  replace( bytes, "\0\x44"sv, "\1\x44"sv );
  pair.source.in( bytes );
  pair.settle();
  EXPECT_EQ( pair.source.mirror.counts().refused, 1u );
  EXPECT_EQ( ceiling( pair.proxy )->watts(), 0x55 );
  EXPECT_EQ( pair.proxyText(), pair.sourceText() );
}

TEST( Mirror, anEntityWithoutAParentComesWithTheReferenceToIt ) {
  Pair pair;
  auto const lamp = lampFactory( Koi::Name( "somewhere" ) );
  lamp->labelIs( "far" );
  pair.source.room->mainLampIs( lamp );
  pair.settle();
  auto const mirrored = pair.proxy.room->mainLamp();
  ASSERT_TRUE( mirrored );
  EXPECT_EQ( mirrored->label(), Koi::String8( "far" ) );
  lamp->labelIs( "near" );
  pair.settle();
  EXPECT_EQ( mirrored->label(), Koi::String8( "near" ) );
}

TEST( Mirror, aRelayCarriesBothWays ) {
  Pair pair;
  Mirror relay( pair.proxy.room, Mirror::source );
  End far( Mirror::proxy );
  auto const settle = [&] {
    for( int i = 0; i < 20; ++i ) {
      pair.settle();
      Koi::Ptr< Koi::NboAttrLog::Out > const out( new Koi::NboAttrLog::Out );
      relay.flush( *out );
      far.mirror.received( out->data(), out->size() );
      std::string const back = far.out();
      relay.received( back.data(), back.size() );
    }
  };
  std::mt19937 random( 11 );
  for( int i = 0; i < 30; ++i ) {
    for( int n = 0; n < 4; ++n )
      RoomChange::any( random ).apply( i % 2 ? *far.room : *pair.source.room );
    settle();
    ASSERT_EQ( TestSupport::wholeText( *far.room ), pair.sourceText() ) << i;
    ASSERT_EQ( pair.proxyText(), pair.sourceText() ) << i;
  }
}

TEST( Mirror, saysOnceThatItHasSomethingToSay ) {
  Pair pair;
  pair.settle();
  int numCalls = 0;
  pair.source.mirror.onOutput( [&] { ++numCalls; } );
  for( int i = 0; i < 10; ++i )
    pair.source.room->colorCountIs( red, static_cast< Koi::U32 >( i ) );
  EXPECT_EQ( numCalls, 1 );
  pair.settle();
  pair.source.room->colorCountDel( red );
  EXPECT_EQ( numCalls, 2 );
}

TEST( Mirror, anAdapterTellsAllAgainWhenItIsAskedTo ) {
  Pair pair;
  for( unsigned i = 0; i < 20; ++i )
    pair.source.room->visitorEnq( ShelfNumber( i + 1 ) );
  pair.source.room->ceilingIs( Koi::Name( "top" ) );
  pair.settle();
  auto * const ceiling = pair.source.room->ceiling()->koiNboAttrLogSa( pair.source.mirror );
  ASSERT_TRUE( ceiling );
  EXPECT_FALSE( pair.source.mirror.hasOutput() );
  ceiling->doRemountSelf();
  EXPECT_TRUE( pair.source.mirror.hasOutput() );
  pair.settle();
  EXPECT_EQ( pair.proxyText(), pair.sourceText() );
  // A place in a first flow may be taken up again: what was told since is told twice.
  auto & room = *pair.source.room->koiNboAttrLogSa( pair.source.mirror );
  auto const attributes = pair.source.room->koiType()->fields;
  auto const visitor = static_cast< unsigned >(
      std::ranges::find( attributes, std::string_view( "visitor" ),
                         []( auto const & attribute ) { return attribute.name; } ) -
      attributes.begin() );
  room.tellWhole( visitor );
  auto const mark = room.koiFlowOutBookmarkEnq( visitor );
  pair.proxy.in( pair.source.out() );
  room.koiFlowOutBookmarkDeq( visitor, mark );
  pair.settle();
  EXPECT_EQ( pair.proxyText(), pair.sourceText() );
  // Another log gets an adapter of its own.
  Mirror other( pair.source.room, Mirror::source );
  auto & clone = ceiling->cloneSa( other );
  EXPECT_EQ( &clone.mirror(), &other );
  EXPECT_NE( &clone, ceiling );
  EXPECT_EQ( &ceiling->cloneSa( other ), &clone );
}

TEST( Mirror, strangersAreRefusedByName ) {
  auto const refusal = []( End & end, std::string const & bytes ) -> std::string {
    try {
      end.in( bytes );
    } catch( Koi::ParseException const & e ) {
      return e.what();
    }
    return "taken";
  };
  End source( Mirror::source );
  EXPECT_EQ( refusal( source, End( Mirror::source ).out() ),
             "attribute log: both ends are sources" );
  source.mirror.restart();
  EXPECT_EQ( refusal( source, std::string( "GET / HTTP/1.1\r\n" ) ),
             "attribute log: a frame of 1195725856 bytes" );
  source.mirror.restart();
  auto const spot = spotlightFactory( Koi::Name( "room" ) );
  Mirror other( spot, Mirror::proxy );
  Koi::Ptr< Koi::NboAttrLog::Out > const out( new Koi::NboAttrLog::Out );
  other.flush( *out );
  EXPECT_EQ( refusal( source,
                      std::string( reinterpret_cast< char const * >( out->data() ), out->size() ) ),
             "attribute log: the peer's tree is a Everything::Spotlight, not a Everything::Room" );
}

}  // namespace
