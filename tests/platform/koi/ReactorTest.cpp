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
