// EverythingTest.cpp: what koigen writes for every construct of entities and reactors does what its
// model says.
#include <gtest/gtest.h>

#include <koi/GenericIf.h>
#include <support/Refusal.h>

#include "EverythingHandlers.h"

using namespace Everything;

namespace {

std::vector< std::string > attributeNames( Koi::KoiType const & type ) {
  std::vector< std::string > names;
  for( auto const & field : type.fields )
    names.push_back( field.name );
  return names;
}

}  // namespace

TEST( Everything, attributesBeginWithTheirDefaults ) {
  auto const lamp = lampFactory( Koi::Name( "a" ) );
  EXPECT_FALSE( lamp->lit() );
  EXPECT_EQ( lamp->watts(), 40 );
  EXPECT_EQ( lamp->label(), "lamp" );
  EXPECT_TRUE( lamp->maker().empty() );
  EXPECT_EQ( lamp->glow(), 1.5 );
  EXPECT_EQ( lamp->color(), amber );
  EXPECT_EQ( lamp->spot(), Spot( ShelfNumber( 1 ), 7 ) );
}

TEST( Everything, derivedAttributesAndFunctionsFollowTheirSources ) {
  auto const lamp = lampFactory( Koi::Name( "a" ) );
  lamp->spotIs( Spot( ShelfNumber( 9 ), 0 ) );
  lamp->litIs( true );
  EXPECT_EQ( lamp->shelf(), ShelfNumber( 9 ) );
  EXPECT_EQ( lamp->brightness(), 40u );
  EXPECT_TRUE( lamp->isLike( *lampFactory( Koi::Name( "b" ) ) ) );
  lamp->doReset();
  EXPECT_EQ( lamp->brightness(), 0u );
  EXPECT_EQ( lamp->label(), "" );
  Koi::Ptr< Lamp > const spotlight = spotlightFactory( Koi::Name( "s" ) );
  EXPECT_EQ( spotlight->kind(), "spotlight" );
}

TEST( Everything, refusalsSayWhatTheModelSaysAndChangeNothing ) {
  auto const lamp = lampFactory( Koi::Name( "a" ) );
  auto const room = roomFactory( Koi::Name( "r" ) );
  EXPECT_EQ( refusal< Koi::RangeException >( [&] { lamp->wattsIs( 101 ); } ),
             "Lamp::watts > Lamp::wattsMax not allowed" );
  EXPECT_EQ( lamp->watts(), 40 );
  EXPECT_EQ( refusal< Koi::RangeException >( [&] { lamp->labelIs( "123456789" ); } ),
             "Lamp::bytes > 8 not allowed" );
  EXPECT_EQ( lamp->label(), "lamp" );
  EXPECT_EQ( refusal< Koi::RangeException >( [&] { lamp->spotIs( Spot() ); } ),
             "ShelfNumber::value < 1 or > 99 not allowed" );
  EXPECT_EQ( refusal< Koi::RangeException >( [&] { room->mainLampIs( nullptr ); } ),
             "null _mainLamp parameter to mutator for Everything::Room::mainLamp not allowed" );
  EXPECT_EQ( refusal< Koi::RangeException >( [&] { room->lampAtIs( lamp->spot(), nullptr ); } ),
             "null _lampAt parameter to mutator for Everything::Room::lampAt not allowed" );
  EXPECT_TRUE( room->lampAt().empty() );
}

TEST( Everything, whatIsStoredBeforeTheCheckStaysAndTellsNobody ) {
  struct Watcher : Lamp::NotifieeConst {
    int calls = 0;
    void onDimmed() override { ++calls; }
  } watcher;
  auto const lamp = lampFactory( Koi::Name( "a" ) );
  watcher.notifierIs( lamp );
  lamp->dimmedIs( 100 );
  EXPECT_EQ( refusal< Koi::RangeException >( [&] { lamp->dimmedIs( 101 ); } ),
             "Lamp::dimmed > Lamp::wattsMax not allowed" );
  EXPECT_EQ( lamp->dimmed(), 101 );
  EXPECT_EQ( refusal< Koi::RangeException >( [&] { lamp->dimmedIs( 101 ); } ), "accepted" );
  EXPECT_EQ( watcher.calls, 1 );
}

TEST( Everything, aValueWithItsKeyInsideIsSetWhole ) {
  auto const shelf = shelfFactory( ShelfNumber( 7 ), true, nullptr );
  EXPECT_EQ( shelf->name(), Koi::Name( "7" ) );
  shelf->bookIs( Book( "Emma", Spot( ShelfNumber( 7 ), 1 ), 0.5 ) );
  shelf->bookIs( Book( "Emma", Spot( ShelfNumber( 7 ), 2 ), 0.5 ) );
  EXPECT_EQ( shelf->book().size(), 1u );
  EXPECT_EQ( shelf->book( "Emma" ).spot().position(), 2u );
  EXPECT_EQ( shelf->bookDel( "Emma" ).weight(), 0.5 );
  EXPECT_TRUE( !shelf->book( "Emma" ) );
}

TEST( Everything, anOnlyChildIsKeptForEqualArguments ) {
  auto const room = roomFactory( Koi::Name( "r" ) );
  auto const first = room->findingIs( Koi::Name( "coin" ), "Ann" );
  EXPECT_EQ( room->findingIs( Koi::Name( "coin" ), "Ann" ), first );
  EXPECT_EQ( first->fullName(), "r/coin" );
  EXPECT_EQ(
      refusal< Koi::NameInUseException >( [&] { room->findingIs( Koi::Name( "ring" ), "Ann" ); } ),
      "Reinstantiating the entity with name coin where constructor parameter attribute _name has a "
      "different value of 'ring' than the current value of 'coin' not allowed" );
  EXPECT_EQ(
      refusal< Koi::NameInUseException >( [&] { room->findingIs( Koi::Name( "coin" ), "Bob" ); } ),
      "Reinstantiating the entity with name coin where constructor parameter attribute _finder has "
      "a "
      "different value of 'Bob' than the current value of 'Ann' not allowed" );
  EXPECT_EQ( room->findingDel(), first );
  EXPECT_EQ( room->finding(), nullptr );
  EXPECT_EQ( first->parent(), nullptr );
}

TEST( Everything, typeNodesListTheAttributesInOrder ) {
  auto const & room = *Koi::typeNode( "Everything::Room" );
  EXPECT_EQ( room.kind, Koi::KoiType::entity );
  EXPECT_EQ(
      attributeNames( room ),
      ( std::vector< std::string >{ "shelf", "lamp", "lampAt", "borrowed", "mainLamp", "spareLamp",
                                    "colorCount", "visitor", "lent", "ceiling", "finding" } ) );
  EXPECT_EQ( room.fields[0].type, &Shelf::_koiType );
  EXPECT_EQ( room.fields[4].type, nullptr );
  EXPECT_EQ( room.fields[6].type, &Koi::koiTypeU32 );
  EXPECT_EQ( room.fields[7].type, &ShelfNumber::_koiType );
  EXPECT_EQ( attributeNames( *Koi::typeNode( "Everything::Shelf" ) ),
             ( std::vector< std::string >{ "number", "wide", "light", "book" } ) );
  auto const spotlight = attributeNames( *Koi::typeNode( "Everything::Spotlight" ) );
  EXPECT_EQ( spotlight.front(), "wattsMax" );
  EXPECT_EQ( spotlight.back(), "angle" );
  EXPECT_EQ( Koi::typeNode( "Everything::Bystander" )->kind, Koi::KoiType::reactor );
  Koi::Ptr< Koi::Entity > const entity( spotlightFactory( Koi::Name( "s" ) ).ptr() );
  EXPECT_EQ( entity->koiType(), &Spotlight::_koiType );
}

TEST( Everything, aReactorsOwnStateObeysItsLimits ) {
  auto const keeper = RoomKeeperIs( nullptr, nullptr, 3, nullptr );
  EXPECT_EQ( keeper->fwkType(), Koi::typeNode( "Everything::RoomKeeper" ) );
  EXPECT_EQ( keeper->patience(), 3u );
  EXPECT_EQ( refusal< Koi::RangeException >( [&] { keeper->stepIs( 1001 ); } ),
             "RoomKeeper::step > RoomKeeper::stepMax not allowed" );
  keeper->seenIs( "a", 4 );
  keeper->heardEnq( 8 );
  EXPECT_EQ( keeper->seenDel( "a" ), 4u );
  EXPECT_EQ( keeper->heardDeq(), 8u );
  keeper->seenIs( "b", 1 );
  keeper->seenDelAll();
  EXPECT_TRUE( keeper->seen().empty() );
  EXPECT_TRUE( bystanderFactory()->hasNotificationActive() );
}
