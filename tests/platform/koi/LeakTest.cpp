// LeakTest.cpp: entities, reactors and the memory of their collections are counted, and nothing of
// a tree is left when it has gone.
#include <map>

#include <gtest/gtest.h>

#include <tools/koigen/EverythingHandlers.h>

using namespace Everything;

namespace {

/// What there is of every type.
std::map< std::string, Koi::U64 > live() {
  std::map< std::string, Koi::U64 > live;
  for( auto const & row : Koi::allocTracks() )
    if( row.numLive != 0 )
      live[row.typeName] = row.numLive;
  return live;
}

}  // namespace

TEST( Leaks, everyTypeIsCountedUnderItsOwnNameUntilNothingIsLeft ) {
  auto const before = live();
  auto const countOf = []( char const * type ) { return live()[type]; };
  auto room = roomFactory( Koi::Name( "room" ) );
  EXPECT_EQ( countOf( "Everything::Room" ), 1u );
  EXPECT_EQ( countOf( "Koi::MemberMemory" ), 0u );
  room->lampIs( Koi::Name( "a" ) );
  room->lampIs( Koi::Name( "b" ) );
  Koi::Ptr< Lamp > spot = spotlightFactory( Koi::Name( "s" ) );
  EXPECT_EQ( countOf( "Everything::Lamp" ), 2u );
  EXPECT_EQ( countOf( "Everything::Spotlight" ), 1u );
  EXPECT_GT( countOf( "Koi::MemberMemory" ), 0u );

  auto keeper = roomKeeperFactory( room, spot, 3, nullptr );
  auto shelf = room->shelfIs( ShelfNumber( 7 ), false, spot );
  keeper->shelfKeeperIs( ShelfNumber( 7 ), shelf, keeper );
  shelf->bookIs( Book( "Emma", Spot( ShelfNumber( 7 ), 1 ), 0.1 ) );
  EXPECT_EQ( countOf( "Everything::RoomKeeper" ), 1u );
  EXPECT_EQ( countOf( "Everything::ShelfKeeper" ), 1u );
  keeper = nullptr;
  EXPECT_EQ( countOf( "Everything::ShelfKeeper" ), 0u );

  shelf->bookDelAll();
  room->shelfDelAll();
  room->lampDelAll();
  room->ceilingIs( Koi::Name( "ceiling" ) );
  spot = nullptr;
  EXPECT_EQ( countOf( "Everything::Lamp" ), 1u );
  EXPECT_EQ( countOf( "Everything::Shelf" ), 1u );
  EXPECT_EQ( countOf( "Koi::MemberMemory" ), 0u );
  room = nullptr;
  shelf = nullptr;
  EXPECT_EQ( live(), before );
}
