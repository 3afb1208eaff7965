// CollectionsTest.cpp: the keyed collections against plain twins: what they hold, what their
// iterators meet while they change, and what attribute logs are told of them.
#include <koi/LinkQueue.h>

#include <functional>
#include <map>
#include <memory>
#include <random>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Koi::Change;
using Koi::MemberState;
using Koi::Place;
using Koi::Stamp;
using Koi::U16;
using Koi::U32;
using Koi::U64;
using Koi::U8;

/// Few hashes, so that keys share them; as many as the keys when there are few keys.
struct Key {
  U32 number = 0;
  U32 hash() const { return number % 97 * 0x9e3779b9; }
  friend auto operator<=>( Key const &, Key const & ) = default;
};

/// `life` differs when the key went and came again.
struct Held {
  U64 life = 0;
  U32 number = 0;
  friend bool operator==( Held const &, Held const & ) = default;
};
bool same( Held const & a, Held const & b ) { return a == b; }

class Tag;
using Hashed = Koi::HashMap< Tag, Key, Held >;
using Ordered = Koi::RbTreeMap< Tag, Key, Held >;
using Queue = Koi::LinkQueue< Tag, U8, Held >;

class Random {
 public:
  explicit Random( unsigned seed ) : bits_( seed ) {}
  U32 below( U32 most ) { return static_cast< U32 >( bits_() % most ); }
  bool oneIn( U32 count ) { return below( count ) == 0; }

 private:
  std::mt19937 bits_;
};

/// Each of a few seeds, which a failure names; the last one is new in every run.
void forSeeds( std::function< void( Random & ) > const & run ) {
  for( unsigned seed : { 1u, 2u, 3u, 4u, 4137658830u, std::random_device()() } ) {
    SCOPED_TRACE( testing::Message() << "seed " << seed );
    Random random( seed );
    run( random );
    if( testing::Test::HasFatalFailure() )
      return;
  }
}

template< class C >
using Copy = std::map< typename C::Key, Held >;

template< class C >
Copy< C > copyOf( C const & members ) {
  Copy< C > copy;
  for( auto const & i : members )
    EXPECT_TRUE( copy.emplace( i.key(), i.value() ).second );
  return copy;
}

/// A log and the copy that its peer has.
template< class C >
struct Peer {
  explicit Peer( U16 origin ) : place( origin ) {}

  /// True when the peer has been told all. Stops now and then.
  bool flush( C & members, U64 now, std::map< typename C::Key, U16 > const & madeBy,
              Random & random, U32 stops ) {
    bool const told =
        members.koiWhole( place, now,
                          [&]( auto const & k, Held const & v ) {
                            if( random.oneIn( stops ) )
                              return false;
                            apply( k, &v, MemberState::present );
                            return true;
                          } ) &&
        members.koiPending( place, now, [&]( auto const & k, Held const * v, MemberState state ) {
          if( random.oneIn( stops ) )
            return false;
          EXPECT_EQ( !v, state == MemberState::absent );
          EXPECT_NE( madeBy.at( k ), place.origin );
          apply( k, v, state );
          return true;
        } );
    return told;
  }
  void apply( typename C::Key const & k, Held const * v, MemberState state ) {
    if( state != MemberState::present )
      copy.erase( k );
    if( v ) {
      // What is told of one that is there does not make it another one.
      U64 const life = copy.contains( k ) ? copy[k].life : v->life;
      copy[k] = Held{ life, v->number };
    }
  }

  Place place;
  Copy< C > copy, acked;
};

/// Random changes of a collection by this program and, where `peersChange`, by peers; they come and
/// go, lag, acknowledge and lose what was on its way.
template< class C >
class World {
 public:
  World( Random & random, U32 numKeys, bool peersChange )
      : random_( random ), numKeys_( numKeys ), peersChange_( peersChange ) {}
  ~World() {
    while( !peers_.empty() )
      detach( 0 );
  }

  void step() {
    // Now and then it grows or shrinks for a while.
    if( random_.oneIn( 2000 ) )
      removals_ = 1 + random_.below( 20 );
    if( random_.oneIn( 4 ) && !peers_.empty() )
      traffic( random_.below( static_cast< U32 >( peers_.size() ) ) );
    else
      change( 0, nullptr );
    if( peers_.size() < 3 && random_.oneIn( 300 ) )
      attach();
    if( random_.oneIn( 200 ) ) {
      members_.koiCheck();
      ASSERT_EQ( copyOf( members_ ), twin_ );
      ASSERT_EQ( members_.size(), twin_.size() );
    }
  }

  void settle() {
    for( auto & peer : peers_ ) {
      while( !flush( *peer, 5 ) ) {
      }
      members_.koiAck( peer->place );
    }
    members_.koiCheck();
  }

 private:
  using K = typename C::Key;

  K someKey() {
    if constexpr( std::is_same_v< K, Key > )
      return Key{ random_.below( numKeys_ ) };
    else
      return static_cast< K >( members_.metadata().head + random_.below( numKeys_ ) );
  }

  void change( U16 origin, Peer< C > * maker ) {
    K const k = someKey();
    Stamp const stamp{ now_ + 1, origin };
    if( random_.below( 21 ) < removals_ ) {
      Held old;
      bool const was = twin_.erase( k ) == 1;
      ASSERT_EQ( members_.koiTake( k, old, stamp ), was );
      counted( was, k, origin );
      if( maker ) {
        maker->copy.erase( k );
        maker->acked.erase( k );
      }
    } else {
      bool const was = twin_.contains( k );
      Held const v{ was ? twin_[k].life : now_ + 1, random_.below( 4 ) };
      Change const expected = !was            ? Change::created
                              : v == twin_[k] ? Change::unchanged
                                              : Change::changed;
      ASSERT_EQ( members_.koiSet( k, v, stamp ), expected );
      twin_[k] = v;
      counted( expected != Change::unchanged, k, origin );
      if( maker )
        maker->copy[k] = maker->acked[k] = v;
    }
    ASSERT_EQ( members_.contains( k ), twin_.contains( k ) );
    ASSERT_EQ( members_.value( k ), twin_.contains( k ) ? twin_[k] : Held() );
  }
  void counted( bool changed, K const & k, U16 origin ) {
    if( !changed )
      return;
    ++now_;
    madeBy_[k] = origin;
    changedAt_[k] = now_;
  }

  void traffic( U32 which ) {
    Peer< C > & peer = *peers_[which];
    switch( random_.below( 12 ) ) {
      case 0:
        members_.koiAck( peer.place );
        peer.acked = peer.copy;
        break;
      case 1:  // the connection breaks: what was not acknowledged is lost, or is not
        if( random_.oneIn( 2 ) )
          peer.copy = peer.acked;
        else
          peer.acked = peer.copy;
        members_.koiUnsend( peer.place );
        break;
      case 2:
        if( random_.oneIn( 10 ) )
          detach( which );
        break;
      case 3:
      case 4:
        if( peersChange_ && peer.place.started )
          change( peer.place.origin, &peer );
        break;
      case 5: {
        K const k = someKey();
        EXPECT_EQ( members_.koiIsUnacked( peer.place, k ), isUnacked( peer.place, k ) );
        break;
      }
      default:
        flush( peer, 1 + random_.below( 60 ) );
    }
  }

  // What was made and removed before a peer was told of it, it need not be told.
  bool isUnacked( Place const & place, K const & k ) {
    bool const answer = members_.koiIsUnacked( place, k );
    bool const maybe = place.started && madeBy_.contains( k ) && madeBy_[k] != place.origin &&
                       changedAt_[k] > place.acked;
    return twin_.contains( k ) ? maybe && answer : answer && maybe;
  }

  bool flush( Peer< C > & peer, U32 stops ) {
    if( !peer.flush( members_, now_, madeBy_, random_, stops + 1 ) )
      return false;
    auto told = peer.copy;
    if( peersChange_ )  // who changes a member that he has not heard of takes it for another one
      for( auto & [k, v] : told )
        v.life = twin_.contains( k ) ? twin_[k].life : 0;
    EXPECT_EQ( told, twin_ );
    return true;
  }

  void attach() {
    peers_.push_back( std::make_unique< Peer< C > >( ++lastOrigin_ ) );
    members_.koiPlaceIs( peers_.back()->place );
  }
  void detach( U32 which ) {
    members_.koiPlaceDel( peers_[which]->place );
    peers_.erase( peers_.begin() + which );
    members_.koiCheck();
  }

  Random & random_;
  U32 const numKeys_;
  bool const peersChange_;
  U32 removals_ = 5;
  U64 now_ = 0;
  U16 lastOrigin_ = 0;
  C members_;
  Copy< C > twin_;
  std::map< K, U16 > madeBy_;
  std::map< K, U64 > changedAt_;
  std::vector< std::unique_ptr< Peer< C > > > peers_;
};

template< class C >
void live( U32 numKeys, int numSteps, bool peersChange ) {
  forSeeds( [=]( Random & random ) {
    World< C > world( random, numKeys, peersChange );
    for( int i = 0; i < numSteps && !testing::Test::HasFailure(); ++i )
      world.step();
    world.settle();
  } );
}

TEST( Collections, areLikeTheirTwinsAndSoAreThePeersCopies ) {
  for( bool peersChange : { false, true } )
    for( U32 numKeys : { 5, 60, 5000 } ) {
      live< Hashed >( numKeys, 12000, peersChange );
      live< Ordered >( numKeys, 8000, peersChange );
    }
  live< Queue >( 5, 10000, false );
  live< Queue >( 200, 10000, false );
}

/// What is there throughout is met once, what went is not met.
template< class C >
void walkWhileItChanges( Random & random ) {
  C members;
  U64 now = 0;
  Held old;
  for( U32 i = 0; i < 3000; ++i )
    members.koiSet( Key{ i * 7 }, Held{ 0, i }, { ++now } );
  std::map< Key, int > throughout;
  for( auto const & i : members )
    throughout[i.key()] = 0;
  U32 const removals = 1 + random.below( 6 );
  for( auto i = members.begin(); i; ++i ) {
    if( throughout.contains( i.key() ) )
      ++throughout[i.key()];
    ASSERT_TRUE( members.contains( i.key() ) );
    Key const here = i.key();
    for( U32 n = 0; n < 4; ++n ) {
      Key const k = n == 0 && random.oneIn( 3 ) ? here : Key{ random.below( 21000 ) };
      if( random.below( 7 ) < removals ) {
        members.koiTake( k, old, { ++now } );
        throughout.erase( k );
      } else if( members.size() < 10000 ) {
        members.koiSet( k, Held{ 1, n }, { ++now } );
      }
    }
    ASSERT_EQ( i.key(), here );
    ASSERT_EQ( i.value(), members.value( here ) );
  }
  for( auto const & [k, count] : throughout )
    ASSERT_EQ( count, 1 ) << k.number;
  members.koiCheck();
}

TEST( Collections, areWalkedWhileTheyChange ) {
  forSeeds( []( Random & random ) {
    walkWhileItChanges< Hashed >( random );
    walkWhileItChanges< Ordered >( random );
  } );
}

TEST( Collections, anIteratorOutlivesItsMember ) {
  Hashed members;
  members.koiSet( Key{ 1 }, Held{ 0, 5 }, { 1 } );
  auto const at = Hashed::Iterator( members.iteratorAt( Key{ 1 } ) );
  EXPECT_EQ( at.value().number, 5u );
  Held old;
  members.koiTake( at.key(), old, { 2 } );
  EXPECT_EQ( at.key(), Key{ 1 } );
  EXPECT_EQ( at.value(), Held() );
  EXPECT_TRUE( at );
  EXPECT_FALSE( members.iteratorAt( Key{ 1 } ) );
  EXPECT_EQ( members.begin(), members.end() );
}

/// Deletes what it is told to when the value goes that refers to it.
struct Meddler final : Koi::PtrInterface {
  explicit Meddler( std::function< void() > f ) : act( std::move( f ) ) {}
  std::function< void() > act;

 private:
  void handleZeroRef() const override {
    act();
    delete this;
  }
};

TEST( Collections, aValueThatGoesMayChangeThem ) {
  Koi::HashMap< Tag, Key, Koi::Ptr< Meddler > > members;
  U64 now = 0;
  U32 next = 100;
  Koi::Ptr< Meddler > old, still( new Meddler( [] {} ) );
  auto const meddle = [&] {
    Koi::Ptr< Meddler > gone;
    members.koiTake( Key{ 1 }, gone, { ++now } );
    for( U32 i = 0; i < 600; ++i )
      members.koiSet( Key{ next++ }, still, { ++now } );
  };
  members.koiSet( Key{ 1 }, new Meddler( meddle ), { ++now } );
  EXPECT_EQ( members.koiSet( Key{ 1 }, still, { ++now } ), Change::changed );
  EXPECT_EQ( members.size(), 600u );
  members.koiSet( Key{ 2 }, new Meddler( meddle ), { ++now } );
  members.koiTake( Key{ 2 }, old, { ++now } );
  old = nullptr;
  EXPECT_EQ( members.size(), 1200u );
  members.koiCheck();
  members.koiClear();
  EXPECT_EQ( members.koiBytes(), 0u );
}

// ---- memory

TEST( Collections, giveTheirMemoryBack ) {
  Hashed members;
  EXPECT_EQ( members.koiBytes(), 0u );
  EXPECT_LE( sizeof members, 128u );
  EXPECT_LE( ( sizeof( Koi::Member< std::array< U8, 6 >, std::array< U64, 5 > > ) ), 64u );
  U64 now = 0;
  Held old;
  members.koiSet( Key{ 0 }, Held(), { ++now } );
  EXPECT_LE( members.koiBytes(), 512u );
  for( U32 i = 0; i < 20000; ++i )
    members.koiSet( Key{ i }, Held(), { ++now } );
  std::size_t const most = members.koiBytes();
  EXPECT_LE( most, 20000 * ( sizeof( Koi::Member< Key, Held > ) + sizeof( Koi::Trace ) + 8 ) );
  for( U32 i = 0; i < 19990; ++i )
    members.koiTake( Key{ i }, old, { ++now } );
  EXPECT_LE( members.koiBytes(), most / 50 );
  members.koiCheck();
  for( U32 i = 19990; i < 20000; ++i )
    members.koiTake( Key{ i }, old, { ++now } );
  EXPECT_EQ( members.koiBytes(), 0u );
}

template< class C >
void stormAndFlood() {
  C members;
  U64 now = 0;
  Held old;
  for( U32 i = 0; i < 1000; ++i )
    members.koiSet( Key{ i }, Held(), { ++now } );
  Place place( 1 );
  members.koiPlaceIs( place );
  auto const all = []( auto const &... ) { return true; };
  EXPECT_TRUE( members.koiWhole( place, now, all ) );
  EXPECT_TRUE( members.koiPending( place, now, all ) );
  std::size_t const before = members.koiBytes();
  // A storm over the same keys: each is told once, and that takes no memory.
  for( U32 i = 0; i < 200000; ++i )
    members.koiSet( Key{ i % 1000 }, Held{ i, 1 }, { ++now } );
  EXPECT_EQ( members.koiBytes(), before );
  // Removing and making again as well.
  for( U32 i = 0; i < 200000; ++i ) {
    members.koiTake( Key{ i % 1000 }, old, { ++now } );
    members.koiSet( Key{ i % 1000 }, Held{ i, 2 }, { ++now } );
  }
  EXPECT_EQ( members.koiBytes(), before );
  // A flood of ever new keys beside a peer that never reads, by this program and by others.
  for( U32 i = 1000; i < 200000; ++i ) {
    members.koiSet( Key{ i }, Held(), { ++now, static_cast< U16 >( i % 3 ) } );
    members.koiTake( Key{ i }, old, { ++now, static_cast< U16 >( i % 3 ) } );
  }
  EXPECT_LE( members.koiBytes(), before * 5 / 4 + 30000 );
  U32 numTold = 0;
  EXPECT_TRUE( members.koiPending( place, now, [&]( auto const &, auto, MemberState state ) {
    EXPECT_EQ( state, MemberState::anew );
    ++numTold;
    return true;
  } ) );
  EXPECT_EQ( numTold, 1000u );
  members.koiCheck();
  members.koiPlaceDel( place );
  members.koiCheck();
}

TEST( Collections, stormsAndFloodsCostNothingBesideAPeerThatDoesNotRead ) {
  stormAndFlood< Hashed >();
  stormAndFlood< Ordered >();
}

// ---- what peers know without having been told

TEST( Collections, aPeerThatMadeAMemberHearsThatItWent ) {
  Hashed members;
  Held old;
  Place mine( 7 ), other( 8 );
  auto const all = []( auto const &... ) { return true; };
  for( Place * place : { &mine, &other } ) {
    members.koiPlaceIs( *place );
    members.koiWhole( *place, 0, all );
  }
  members.koiSet( Key{ 1 }, Held{ 1, 1 }, { 1, 7 } );
  members.koiSet( Key{ 1 }, Held{ 1, 2 }, { 2, 0 } );
  EXPECT_TRUE( members.koiIsUnacked( mine, Key{ 1 } ) );
  members.koiTake( Key{ 1 }, old, { 3, 0 } );
  std::vector< MemberState > told;
  members.koiPending( mine, 3, [&]( auto const &, auto, MemberState state ) {
    told.push_back( state );
    return true;
  } );
  EXPECT_EQ( told, std::vector{ MemberState::absent } );
  members.koiAck( mine );
  EXPECT_FALSE( members.koiIsUnacked( mine, Key{ 1 } ) );
  members.koiPlaceDel( other );
  members.koiPlaceDel( mine );
  EXPECT_EQ( members.koiBytes(), 0u );
}

TEST( Collections, aPeerThatSetWhatIsThereHearsThatItWent ) {
  Ordered members;
  Held old;
  Place mine( 7 );
  members.koiPlaceIs( mine );
  members.koiWhole( mine, 0, []( auto const &... ) { return true; } );
  members.koiSet( Key{ 1 }, Held{ 1, 1 }, { 1, 0 } );
  EXPECT_EQ( members.koiSet( Key{ 1 }, Held{ 1, 1 }, { 2, 7 } ), Change::unchanged );
  members.koiTake( Key{ 1 }, old, { 2, 0 } );
  int numAbsent = 0;
  members.koiPending( mine, 2, [&]( auto const &, auto, MemberState state ) {
    numAbsent += state == MemberState::absent;
    return true;
  } );
  EXPECT_EQ( numAbsent, 1 );
  members.koiPlaceDel( mine );
}

// ---- the queue

TEST( Collections, aQueueIsLikeItsTwin ) {
  forSeeds( []( Random & random ) {
    Queue queue;
    std::map< U64, Held > twin;
    U64 head = 0, next = 0, now = 0;
    Held old;
    for( U32 i = 0; i < 20000; ++i ) {
      U8 const index = static_cast< U8 >( head + random.below( random.oneIn( 20 ) ? 256 : 20 ) );
      U64 const at = head + static_cast< U8 >( index - head );
      Held const v{ i, 0 };
      if( i / 1000 % 3 ? random.oneIn( 2 ) : random.oneIn( 5 ) ) {
        if( next - head == 256 ) {
          EXPECT_THROW( queue.koiEnq( v, { ++now } ), Koi::RangeException );
        } else {
          twin[next] = v;
          ASSERT_EQ( queue.koiEnq( v, { ++now } ), static_cast< U8 >( next++ ) );
        }
      } else if( random.oneIn( 8 ) ) {
        ASSERT_EQ( queue.koiSet( index, v, { ++now } ),
                   twin.contains( at ) ? Change::changed : Change::created );
        twin[at] = v;
        next = std::max( next, at + 1 );
      } else {
        ASSERT_EQ( queue.koiTake( index, old, { ++now } ), twin.erase( at ) == 1 );
      }
      head = twin.empty() ? next : twin.begin()->first;
      ASSERT_EQ( queue.metadata(), ( Koi::LinkQueueMetadata< U8 >{ static_cast< U8 >( head ),
                                                                   static_cast< U8 >( next ) } ) );
      if( i % 50 == 0 ) {
        auto expected = twin.begin();
        for( auto const & member : queue ) {
          ASSERT_EQ( member.key(), static_cast< U8 >( expected->first ) );
          ASSERT_EQ( member.value(), ( expected++ )->second );
        }
        ASSERT_EQ( expected, twin.end() );
        ASSERT_EQ( queue.size(), twin.size() );
      }
    }
    queue.koiCheck();
  } );
}

}  // namespace
