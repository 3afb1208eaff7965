// WeakTest.cpp: weak attributes and members leave when their target goes: against a plain twin, in
// every order of destruction, and whatever those who are told of it do.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>

#include <tools/koigen/EverythingHandlers.h>

using namespace Everything;
using Calls = std::vector< std::string >;

namespace {

/// Writes down what it is told of weak references, and may act.
struct Watcher : Room::Notifiee {
  Watcher( Room * room, Calls & calls, std::function< void() > then = {} )
      : act( std::move( then ) ), calls_( calls ) {
    notifierIs( room );
  }
  void onSpareLamp() override { told( "spareLamp", notifier()->spareLamp() == nullptr ); }
  void onBorrowed( Koi::U32 k ) override {
    told( "borrowed " + std::to_string( k ), !notifier()->borrowed().contains( k ) );
  }
  void onLent( Koi::U32 k ) override {
    told( "lent " + std::to_string( k ), !notifier()->lent().contains( k ) );
  }
  void told( std::string const & what, bool gone ) {
    calls_.push_back( std::string( notifier()->name().view() ) + " " + what +
                      ( gone ? " gone" : "" ) );
    if( auto const acts = act )
      acts();
  }
  using NotifieeConst::onBorrowed;
  using NotifieeConst::onLent;
  std::function< void() > act;

 private:
  Calls & calls_;
};

Koi::Ptr< Room > newRoom( std::string const & name ) {
  return roomFactory( Koi::Name( Koi::String8( name ) ) );
}
Koi::Ptr< Lamp > newLamp() { return lampFactory( Koi::Name( "lamp" ) ); }

// ---- a plain twin

/// Three rooms, six lamps, and which of these the rooms refer to.
class World {
 public:
  explicit World( unsigned seed ) : bits_( seed ) {
    for( auto & room : rooms_ )
      build( room );
    for( auto & lamp : lamps_ )
      lamp = newLamp();
  }

  void step() {
    Calls expected;
    expected_ = &expected;
    if( below( 4 ) == 0 )
      Koi::transaction( [&] { act( rooms_[below( 3 )] ); } );
    else
      act( rooms_[below( 3 )] );
    std::sort( calls_.begin(), calls_.end() );
    std::sort( expected.begin(), expected.end() );
    ASSERT_EQ( std::exchange( calls_, {} ), expected );
  }

  void compare() {
    for( auto & it : rooms_ ) {
      ASSERT_EQ( it.room->spareLamp(), it.spare );
      ASSERT_EQ( membersOf( it.room->borrowed() ), it.borrowed );
      ASSERT_EQ( membersOf( it.room->lent() ), it.lent );
      ASSERT_EQ( it.room->koiChanges(), it.numChanges );
      it.room->borrowed().koiCheck();
      it.room->lent().koiCheck();
    }
  }

 private:
  using Lamps = std::map< Koi::U32, Lamp * >;
  struct RoomAndTwin {
    Koi::Ptr< Room > room;
    std::unique_ptr< Watcher > watcher;
    Lamp * spare;
    Lamps borrowed, lent;
    Koi::U64 numChanges;
  };

  void act( RoomAndTwin & it ) {
    auto & lamp = lamps_[below( 6 )];
    Koi::U32 const k = below( 1500 );
    switch( unsigned const what = below( 400 ) ) {
      case 0:  // the room goes
        build( it );
        break;
      case 1:  // all but a few members go on a walk, and those move together
        for( auto i = it.room->borrowedIterator(); i; ++i )
          if( below( 60 ) != 0 ) {
            lose( it, it.borrowed, "borrowed ", i.key() );
            it.room->borrowedDel( i );
          }
        break;
      default:
        if( what < 30 ) {
          for( auto & each : rooms_ )
            leave( each, lamp );
          lamp = newLamp();
        } else if( what < 60 ) {
          Koi::Ptr< Lamp > const spare( what < 40 ? nullptr : lamp );
          if( std::exchange( it.spare, spare.ptr() ) != spare )
            expect( it, spare ? "spareLamp" : "spareLamp gone" );
          it.room->spareLampIs( spare );
        } else if( what < 90 ) {
          lose( it, it.borrowed, "borrowed ", k );
          it.room->borrowedDel( k );
        } else if( what < 120 ) {
          lose( it, it.lent, "lent ", k );
          it.room->lentDel( k );
        } else if( what < 250 ) {
          if( std::exchange( it.lent[k], lamp.ptr() ) != lamp )
            expect( it, "lent " + std::to_string( k ) );
          it.room->lentIs( k, lamp );
        } else {
          if( std::exchange( it.borrowed[k], lamp.ptr() ) != lamp )
            expect( it, "borrowed " + std::to_string( k ) );
          it.room->borrowedIs( k, lamp );
        }
    }
  }

  void build( RoomAndTwin & it ) {
    it = { newRoom( std::to_string( below( 1000 ) ) ), nullptr, nullptr, {}, {}, 0 };
    it.watcher = std::make_unique< Watcher >( it.room, calls_ );
  }
  void expect( RoomAndTwin & it, std::string const & what ) {
    ++it.numChanges;
    expected_->push_back( std::string( it.room->name().view() ) + " " + what );
  }
  void lose( RoomAndTwin & it, Lamps & members, char const * name, Koi::U32 k ) {
    if( members.erase( k ) == 1 )
      expect( it, name + std::to_string( k ) + " gone" );
  }
  void leave( RoomAndTwin & it, Lamp * lamp ) {
    if( it.spare == lamp ) {
      it.spare = nullptr;
      expect( it, "spareLamp gone" );
    }
    for( auto const & [k, there] : Lamps( it.borrowed ) )
      if( there == lamp )
        lose( it, it.borrowed, "borrowed ", k );
    for( auto const & [k, there] : Lamps( it.lent ) )
      if( there == lamp )
        lose( it, it.lent, "lent ", k );
  }
  static Lamps membersOf( auto const & collection ) {
    Lamps members;
    for( auto const & i : collection )
      members[i.key()] = i.value().ptr();
    return members;
  }
  unsigned below( std::size_t most ) { return static_cast< unsigned >( bits_() % most ); }

  std::mt19937 bits_;
  Calls calls_;
  Calls * expected_ = nullptr;
  Koi::Ptr< Lamp > lamps_[6];
  RoomAndTwin rooms_[3]{};
};

}  // namespace

TEST( WeakWorld, referencesAreLikeTheirTwins ) {
  for( unsigned seed : { 1u, 2u, std::random_device()() } ) {
    SCOPED_TRACE( testing::Message() << "seed " << seed );
    World world( seed );
    for( int i = 0; i < 20000 && !testing::Test::HasFailure(); ++i ) {
      world.step();
      if( i % 200 == 0 )
        world.compare();
    }
  }
}

// ---- the rules, one by one

namespace {

struct Weak : testing::Test {
  Calls taken() { return std::exchange( calls, {} ); }
  Calls calls;
  Koi::Ptr< Room > first = newRoom( "1" ), second = newRoom( "2" );
  Koi::Ptr< Lamp > lamp = newLamp();
};

}  // namespace

TEST_F( Weak, theyLeaveInTheOrderInWhichTheyWereMadeHoweverOften ) {
  auto const other = newLamp();
  for( int i = 0; i < 1000; ++i ) {
    second->spareLampIs( i % 2 ? lamp : other );
    first->borrowedIs( 7, i % 3 ? lamp : other );
  }
  first->lentIs( 250, lamp );
  first->borrowedIs( 8, lamp );
  first->borrowedIs( 8, other );
  first->borrowedIs( 9, nullptr );
  Watcher one( first, calls ), two( second, calls );
  lamp = nullptr;
  EXPECT_EQ( taken(), ( Calls{ "2 spareLamp gone", "1 lent 250 gone" } ) );
  EXPECT_EQ( first->borrowed( 8 ), other );
  EXPECT_TRUE( first->borrowed().contains( 9 ) );
}

TEST_F( Weak, theyStayWithATargetThatIsKept ) {
  struct Keeper : Lamp::NotifieeConst {
    Koi::Ptr< Lamp const > kept;
    bool keep = true;
    void zeroReferencesIs( bool gone ) override {
      if( gone && keep )
        kept = notifier();
    }
  } keeper;
  keeper.notifierIs( lamp );
  first->borrowedIs( 1, lamp );
  Watcher watcher( first, calls );
  lamp = nullptr;
  EXPECT_EQ( taken(), Calls{} );
  EXPECT_EQ( first->borrowed( 1 ), keeper.kept );
  keeper.keep = false;
  keeper.kept = nullptr;
  EXPECT_EQ( taken(), Calls{ "1 borrowed 1 gone" } );
}

TEST_F( Weak, anExceptionOfWhoIsToldIsDropped ) {
  Watcher one( first, calls, [] { throw std::logic_error( "dropped" ); } ), two( second, calls );
  EXPECT_THROW( first->spareLampIs( lamp ), std::logic_error );
  EXPECT_THROW( first->borrowedIs( 1, lamp ), std::logic_error );
  second->spareLampIs( lamp );
  calls.clear();
  EXPECT_NO_THROW( lamp = nullptr );
  EXPECT_EQ( taken(), ( Calls{ "1 spareLamp gone", "1 borrowed 1 gone", "2 spareLamp gone" } ) );
}

TEST_F( Weak, whoIsToldMayDoAnything ) {
  auto next = newLamp();
  first->spareLampIs( lamp );
  first->borrowedIs( 1, lamp );
  second->borrowedIs( 1, lamp );
  second->borrowedIs( 2, next );
  second->spareLampIs( lamp );
  Watcher one( first, calls ), two( second, calls );
  one.act = [&] {
    one.act = {};
    EXPECT_EQ( first->borrowed( 1 ), nullptr );  // it has not left yet
    EXPECT_TRUE( first->borrowed().contains( 1 ) );
    second->borrowedDel( 1 );  // that one need not leave any more
    first->spareLampIs( next );
    next = nullptr;  // nested: at once
    EXPECT_EQ( second->borrowed().size(), 0u );
    first->borrowedIs( 1, nullptr );  // as it reads: nothing to do
    first = nullptr;
  };
  lamp = nullptr;
  EXPECT_EQ( taken(), ( Calls{ "1 spareLamp gone", "2 borrowed 1 gone", "1 spareLamp",
                               "2 borrowed 2 gone", "1 spareLamp gone", "2 spareLamp gone" } ) );
}

TEST_F( Weak, theyLeaveWhenAllIsGoneThatWentAlong ) {
  auto const shelf = second->shelfIs( ShelfNumber( 1 ), true, lamp );
  auto const sibling = second->lampIs( Koi::Name( "sibling" ) );
  first->borrowedIs( 1, second->lampIs( Koi::Name( "other" ) ) );
  first->borrowedIs( 2, second->ceilingIs( Koi::Name( "ceiling" ) ) );
  first->borrowedIs( 3, sibling );
  Watcher watcher( first, calls, [&] {
    EXPECT_EQ( shelf->parent(), nullptr );
    EXPECT_EQ( sibling->parent(), nullptr );
    EXPECT_EQ( first->borrowed( 1 ), nullptr );
    EXPECT_EQ( first->borrowed( 2 ), nullptr );
  } );
  second = nullptr;
  std::sort( calls.begin(), calls.end() );
  EXPECT_EQ( taken(), ( Calls{ "1 borrowed 1 gone", "1 borrowed 2 gone" } ) );
}

TEST_F( Weak, aTransactionTellsAtItsEndOfWhatLeft ) {
  first->borrowedIs( 1, lamp );
  first->spareLampIs( lamp );
  Watcher watcher( first, calls );
  Koi::transaction( [&] {
    lamp = nullptr;
    EXPECT_EQ( first->borrowed().size(), 0u );
    first->borrowedIs( 1, newLamp() );  // goes at the end of the line, and is told of once
    EXPECT_EQ( calls, Calls{} );
  } );
  EXPECT_EQ( taken(), ( Calls{ "1 borrowed 1 gone", "1 spareLamp gone" } ) );
}

TEST_F( Weak, allMayGoInWhateverOrder ) {
  std::vector< int > order{ 0, 1, 2, 3, 4 };
  do {
    std::vector< Koi::Ptr< Koi::Entity > > all{ newRoom( "a" ).ptr(), newRoom( "b" ).ptr(),
                                                newLamp().ptr(), newLamp().ptr() };
    Room *const a = static_cast< Room * >( all[0].ptr() ),
                *b = static_cast< Room * >( all[1].ptr() );
    all.push_back( a->lampIs( Koi::Name( "own" ) ).ptr() );
    Lamp * const own = static_cast< Lamp * >( all[4].ptr() );
    a->mainLampIs( static_cast< Lamp * >( all[2].ptr() ) );
    b->mainLampIs( own );
    Watcher one( a, calls ), two( b, calls );
    for( Room * room : { a, b } )
      for( Koi::U32 i = 2; i < 5; ++i ) {
        Koi::Ptr< Lamp > const each = static_cast< Lamp * >( all[i].ptr() );
        room->spareLampIs( each );
        room->lentIs( i, each );
        room->borrowedIs( i, each );
      }
    for( int which : order ) {
      all[which] = nullptr;
      for( Watcher * watcher : { &one, &two } )
        if( auto * const room = watcher->notifier() ) {
          for( auto const & i : room->lent() )
            EXPECT_NE( i.value(), nullptr );
        }
    }
    EXPECT_EQ( one.notifier(), nullptr );
    EXPECT_EQ( two.notifier(), nullptr );
  } while( std::next_permutation( order.begin(), order.end() ) );
}

// ---- reactors

TEST_F( Weak, aReactorsMembersLeaveWithoutAWord ) {
  auto const keeper = RoomKeeperIs( nullptr, nullptr, 0, nullptr );
  auto const other = newLamp();
  keeper->noticedIs( 1, lamp );
  keeper->noticedIs( 2, other );
  lamp = nullptr;
  EXPECT_EQ( keeper->noticed().size(), 1u );
  EXPECT_EQ( keeper->noticed( 2 ), other );
  EXPECT_EQ( keeper->noticedDel( keeper->noticedIterator() ), other );
}

TEST_F( Weak, aReactorMayBeReboundByWhatGoesWhenItIsRebound ) {
  HandlerLog log;
  auto const keeper = RoomKeeperIs( nullptr, lamp, 0, nullptr );
  auto const last = newLamp();
  first->spareLampIs( lamp );
  Watcher watcher( first, calls, [&] { keeper->lampIs( last ); } );
  lamp = newLamp();
  keeper->lampIs( lamp );
  EXPECT_EQ( taken(), Calls{ "1 spareLamp gone" } );
  EXPECT_EQ( keeper->lamp(), last );
  log.taken();
  lamp->litIs( true );
  last->litIs( true );
  EXPECT_EQ( log.taken(), Calls{ "lit" } );
}
