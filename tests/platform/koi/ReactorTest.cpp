// ReactorTest.cpp: the life of a reactor: built, listening, rebound, ended, from outside and from
// its own handlers.
#include <gtest/gtest.h>

#include <tools/koigen/EverythingHandlers.h>

using namespace Everything;
using Calls = std::vector< std::string >;

namespace {

ShelfNumber const seven( 7 ), eight( 8 );

Book book( char const * title ) { return Book( title, Spot( seven, 1 ), 0.1 ); }

struct Reactor : testing::Test {
  Koi::Ptr< Room > room = roomFactory( Koi::Name( "room" ) );
  Koi::Ptr< Lamp > lamp = lampFactory( Koi::Name( "door" ) );

  Koi::Ptr< RoomKeeper > keeper() { return roomKeeperFactory( room, lamp, 3, room ); }
  Koi::Ptr< Shelf > shelf( ShelfNumber number ) { return room->shelfIs( number, false, nullptr ); }
};

}  // namespace

TEST_F( Reactor, runsItsStartHandlerWhenBuiltAndListensWhenActive ) {
  HandlerLog log;
  Koi::Ptr< RoomKeeper > const keeper( new RoomKeeper( room, lamp, 3, room ) );
  EXPECT_EQ( log.taken(), Calls{ "initialized" } );
  room->mainLampIs( lamp );
  EXPECT_EQ( log.taken(), Calls{} );

  // What changed before it listened is not lost.
  keeper->hasNotificationActiveIs( true );
  EXPECT_EQ( log.taken(), Calls{ "initialized" } );
  keeper->hasNotificationActiveIs( true );
  EXPECT_EQ( log.taken(), Calls{} );
  shelf( seven )->bookIs( book( "Emma" ) );
  lamp->litIs( true );
  EXPECT_EQ( log.taken(), ( Calls{ "shelf 7", "book 7 Emma", "lit" } ) );

  keeper->hasNotificationActiveIs( false );
  lamp->litIs( false );
  shelf( seven )->bookDelAll();
  EXPECT_EQ( log.taken(), Calls{} );
}

TEST_F( Reactor, startsAgainOnlyWhenSomethingChangedSinceItsStartHandlerBegan ) {
  HandlerLog quiet;
  auto const first = keeper();
  EXPECT_EQ( quiet.taken(), Calls{ "initialized" } );

  bool done = false;
  HandlerLog busy( [&]( RoomKeeper & keeper, std::string const & ) {
    if( !std::exchange( done, true ) )
      keeper.room()->mainLampIs( keeper.lamp() );
  } );
  auto const second = keeper();
  EXPECT_EQ( busy.taken(), ( Calls{ "initialized", "mainLamp", "initialized" } ) );
}

TEST_F( Reactor, watchesNothingWhereNullIsGivenUntilItIsRebound ) {
  shelf( seven );
  HandlerLog log;
  auto const keeper = RoomKeeperIs( nullptr, nullptr, 3, nullptr );
  EXPECT_EQ( log.taken(), Calls{ "initialized" } );
  keeper->roomIs( room );
  keeper->roomIs( room );
  EXPECT_EQ( log.taken(), Calls{ "initialized" } );
  EXPECT_EQ( keeper->shelfKeys(), std::vector< ShelfNumber >{ seven } );
  room->mainLampIs( lamp );
  keeper->roomIs( nullptr );
  room->mainLampIs( lampFactory( Koi::Name( "other" ) ) );
  EXPECT_EQ( log.taken(), ( Calls{ "mainLamp", "initialized" } ) );
}

TEST_F( Reactor, followsEachMemberUnderItsKey ) {
  auto const keeper = this->keeper();
  HandlerLog log;
  shelf( seven )->bookIs( book( "Emma" ) );
  auto const gone = room->shelfDel( seven );
  gone->bookDelAll();
  EXPECT_EQ( keeper->shelf( seven ), nullptr );
  shelf( eight )->bookIs( book( "Emma" ) );
  keeper->shelfDelAll();
  shelf( eight )->bookDelAll();
  EXPECT_EQ( log.taken(),
             ( Calls{ "shelf 7", "book 7 Emma", "shelf 7", "shelf 8", "book 8 Emma" } ) );
  EXPECT_EQ( keeper->seen( "Emma" ), 2u );
}

TEST_F( Reactor, mayRebindAndRemoveWhatCallsIt ) {
  HandlerLog log( [&]( RoomKeeper & keeper, std::string const & what ) {
    if( what == "book 7 leave" )
      keeper.shelfDel( seven );
    if( what == "lit" )
      keeper.lampIs( lampFactory( Koi::Name( "new" ) ) );
  } );
  auto const keeper = this->keeper();
  lamp->litIs( true );
  EXPECT_EQ( keeper->lamp()->name(), Koi::Name( "new" ) );
  shelf( seven )->bookIs( book( "leave" ) );
  shelf( seven )->bookDelAll();
  EXPECT_EQ( log.taken(),
             ( Calls{ "initialized", "lit", "initialized", "shelf 7", "book 7 leave" } ) );
}

TEST_F( Reactor, livesUntilItsHandlerReturns ) {
  Koi::Ptr< RoomKeeper > keeper;
  HandlerLog log( [&]( RoomKeeper & self, std::string const & what ) {
    // A reference that comes and goes inside the constructor or the cleanup ends nothing.
    Koi::Ptr< RoomKeeper > const held( &self );
    if( what == "lit" )
      keeper = nullptr;
  } );
  keeper = this->keeper();
  lamp->litIs( true );
  EXPECT_EQ( keeper, nullptr );
  lamp->litIs( false );
  EXPECT_EQ( log.taken(), ( Calls{ "initialized", "lit", "cleanup" } ) );
}

TEST_F( Reactor, cleansUpOnceAndHearsNothingAsAZombie ) {
  HandlerLog log;
  {
    auto const keeper = this->keeper();
    shelf( seven );
    keeper->koiDoZombieReactors( true );
    keeper->koiDoZombieReactors( true );
    EXPECT_TRUE( keeper->isZombie() );
    shelf( seven )->bookIs( book( "Emma" ) );
    lamp->litIs( true );
  }
  EXPECT_EQ( log.taken(), ( Calls{ "initialized", "shelf 7", "cleanup" } ) );
}

TEST_F( Reactor, leavesNothingBehindWhenItsConstructorThrows ) {
  HandlerLog log( []( RoomKeeper &, std::string const & ) { throw std::logic_error( "no" ); } );
  EXPECT_THROW( keeper(), std::logic_error );
  lamp->litIs( true );
  room->mainLampIs( lamp );
  EXPECT_EQ( log.taken(), Calls{ "initialized" } );
}

TEST_F( Reactor, throwsIntoTheMutatorThatCalledIt ) {
  HandlerLog log( []( RoomKeeper &, std::string const & what ) {
    if( what == "lit" )
      throw std::logic_error( "no" );
  } );
  auto const keeper = this->keeper();
  EXPECT_THROW( lamp->litIs( true ), std::logic_error );
  EXPECT_TRUE( lamp->lit() );
  EXPECT_EQ( keeper->step(), 1u );
}

TEST( ValidPtr, refusesNull ) {
  auto const refusal = []( Koi::Ptr< Lamp > const & lamp ) -> std::string {
    try {
      return std::string( Koi::ValidPtr< Lamp >( lamp )->name().view() );
    } catch( Koi::RangeException const & e ) {
      return e.what();
    }
  };
  EXPECT_EQ( refusal( lampFactory( Koi::Name( "door" ) ) ), "door" );
  EXPECT_EQ( refusal( nullptr ), "null ValidPtr" );
}

/// A keeper without a room, and what its handlers and those of its shelf keepers did.
struct InnerReactors : testing::Test {
  Koi::Ptr< Shelf > one = shelfFactory( seven, false, nullptr );
  Koi::Ptr< Shelf > other = shelfFactory( eight, false, nullptr );
  Koi::Ptr< RoomKeeper > keeper{ new RoomKeeper( nullptr, nullptr, 3, nullptr ) };
  HandlerLog log;
};

TEST_F( InnerReactors, areActiveLikeTheirOwnerAndEndWhenTakenOut ) {
  auto const first = keeper->shelfKeeperIs( seven, one, keeper );
  one->bookIs( book( "Emma" ) );
  EXPECT_EQ( log.taken(), Calls{ "start at 7" } );
  keeper->hasNotificationActiveIs( true );
  auto const second = keeper->shelfKeeperIs( eight, other, keeper );
  other->bookIs( book( "Emma" ) );
  EXPECT_EQ( log.taken(), ( Calls{ "start at 7", "start at 8", "at 8 Emma" } ) );
  keeper->hasNotificationActiveIs( false );
  other->bookDelAll();
  EXPECT_EQ( log.taken(), Calls{} );

  EXPECT_EQ( keeper->shelfKeeperDel( seven ), first );
  EXPECT_TRUE( first->isZombie() );
  EXPECT_EQ( keeper->shelfKeeper( seven ), nullptr );
  keeper->koiDoZombieReactors( true );
  EXPECT_TRUE( second->isZombie() );
  EXPECT_TRUE( keeper->shelfKeeperIs( seven, one, keeper )->isZombie() );
  EXPECT_EQ( log.taken(),
             ( Calls{ "cleanup at 7", "cleanup", "cleanup at 8", "start at 7", "cleanup at 7" } ) );
}

TEST_F( InnerReactors, areBuiltOnceAndNeverWithOtherArguments ) {
  auto const first = keeper->shelfKeeperIs( seven, one, keeper );
  EXPECT_EQ( keeper->shelfKeeperIs( seven, one, keeper ), first );
  auto const refusal = [&]( Shelf * shelf, RoomKeeper * whose ) -> std::string {
    try {
      keeper->shelfKeeperIs( seven, shelf, whose );
    } catch( Koi::NameInUseException const & e ) {
      return e.what();
    }
    return "accepted";
  };
  EXPECT_EQ(
      refusal( other, keeper ),
      "Reinstantiating the pointer interface where constructor parameter attribute _shelf has "
      "a different value of 8 than the current value of 7 not allowed" );
  EXPECT_EQ( refusal( one, nullptr ),
             "Reinstantiating the pointer interface where constructor parameter attribute _keeper "
             "has a different value of null than the current value of Everything::RoomKeeper not "
             "allowed" );
  EXPECT_THROW( keeper->shelfKeeperIs( ShelfNumber(), one, keeper ), Koi::RangeException );
  EXPECT_EQ( log.taken(), Calls{ "start at 7" } );
  EXPECT_EQ( keeper->shelfKeeper().size(), 1u );
}

TEST_F( InnerReactors, mayBeRemovedByTheirOwnHandlersAndOutliveTheirOwner ) {
  HandlerLog acting( []( RoomKeeper & whose, std::string const & what ) {
    if( what == "at 7 leave" )
      whose.shelfKeeperDel( seven );
    if( what == "start at 8" )  // leads to itself
      whose.shelfKeeperIs( seven, nullptr, &whose );
  } );
  keeper->hasNotificationActiveIs( true );
  keeper->shelfKeeperIs( seven, one, keeper );
  one->bookIs( book( "leave" ) );
  EXPECT_EQ( keeper->shelfKeeper( seven ), nullptr );
  auto const second = keeper->shelfKeeperIs( eight, other, keeper );
  EXPECT_EQ( keeper->shelfKeeper().size(), 2u );
  keeper = nullptr;
  EXPECT_TRUE( second->isZombie() );
  EXPECT_EQ( second->keeper(), nullptr );
  EXPECT_EQ( acting.taken(), ( Calls{ "start at 7", "at 7 leave", "cleanup at 7", "start at 8",
                                      "start at 7", "cleanup", "cleanup at 7", "cleanup at 8" } ) );
}

TEST_F( InnerReactors, endWhileTheirOwnerIsWholeWhenItsConstructorThrows ) {
  Koi::Ptr< ShelfKeeper > inner;
  HandlerLog acting( [&]( RoomKeeper & whose, std::string const & what ) {
    if( what == "initialized" ) {
      inner = whose.shelfKeeperIs( seven, one, &whose );
      throw std::logic_error( "no" );
    }
    if( what == "cleanup at 7" )
      throw std::logic_error( "dropped" );
  } );
  EXPECT_THROW( new RoomKeeper( nullptr, nullptr, 3, nullptr ), std::logic_error );
  EXPECT_TRUE( inner->isZombie() );
  EXPECT_EQ( inner->keeper(), nullptr );
  EXPECT_EQ( acting.taken(), ( Calls{ "initialized", "start at 7", "cleanup at 7" } ) );
}

/// The lamps of a room, two of them with keepers, and how many keepers there are.
struct EntityReactors : testing::Test {
  Koi::Ptr< Room > room = roomFactory( Koi::Name( "room" ) );
  Koi::Ptr< Lamp > lamp = room->lampIs( Koi::Name( "a" ) );
  Koi::Ptr< LampKeeper > keeper = lamp->keeperIs( lamp );

  static Koi::U64 numKeepers() { return Koi::allocTrack< LampKeeper >().numLive(); }
  static Koi::U64 numLamps() { return Koi::allocTrack< Lamp >().numLive(); }
};

TEST_F( EntityReactors, areActivatedOnce ) {
  lamp->litIs( true );
  EXPECT_EQ( lamp->dimmed(), 10u );
  try {
    lamp->keeperIs( nullptr );
    ADD_FAILURE();
  } catch( Koi::RangeException const & e ) {
    EXPECT_STREQ( e.what(), "entity reactor is already active" );
  }
  EXPECT_EQ( lamp->keeper(), keeper );
  EXPECT_EQ( lamp->keeperDel(), keeper );
  EXPECT_TRUE( keeper->isZombie() );
  EXPECT_EQ( lamp->label(), "over" );
  EXPECT_EQ( lamp->keeperDel(), nullptr );
  EXPECT_NE( lamp->keeperIs( lamp ), keeper );
  room->lampDelAll();
}

TEST_F( EntityReactors, endWhenTheirEntityLeavesItsTree ) {
  room->lampDel( Koi::Name( "a" ) );
  EXPECT_TRUE( keeper->isZombie() );
  EXPECT_EQ( lamp->keeper(), nullptr );
  EXPECT_EQ( lamp->label(), "over" );
  keeper = nullptr;
  lamp = nullptr;
  EXPECT_EQ( numKeepers() + numLamps(), 0u );

  // One that does not hold its entity goes with it.
  lamp = lampFactory( Koi::Name( "b" ) );
  keeper = lamp->keeperIs( nullptr );
  lamp = nullptr;
  EXPECT_TRUE( keeper->isZombie() );
}

TEST_F( EntityReactors, endWithTheTree ) {
  Koi::Ptr< Spotlight > const root = spotlightFactory( Koi::Name( "s" ) );
  root->keeperIs( root );
  root->koiEndReactors();
  EXPECT_EQ( root->keeper(), nullptr );

  auto const ceiling = room->ceilingIs( Koi::Name( "ceiling" ) );
  ceiling->keeperIs( ceiling );
  room->koiEndReactors();
  EXPECT_TRUE( keeper->isZombie() );
  EXPECT_EQ( room->ceiling(), ceiling );
  keeper = nullptr;
  EXPECT_EQ( numKeepers(), 0u );
}
