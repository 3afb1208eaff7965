// EntityTest.cpp: the rules of attributes, collections, children and observers.
#include <gtest/gtest.h>

#include <limits>
#include <map>

#include <support/Refusal.h>
#include <tools/koigen/EverythingHandlers.h>

using namespace Everything;
using Texts = std::vector< std::string >;

namespace {

std::string text( auto const & v ) {
  using Koi::valueToStrep;
  return std::string( valueToStrep( v ) );
}

/// Writes down what it is told, and may act inside.
struct Watcher : Room::Notifiee {
  explicit Watcher( Room * room, std::function< void() > then = {} ) : act( std::move( then ) ) {
    notifierIs( room );
  }
  void onShelf( ShelfNumber const & k ) override { told( "shelf " + text( k ) ); }
  void onMainLamp() override { told( "mainLamp" ); }
  void onColorCount( Color k ) override { told( "colorCount " + text( k ) ); }
  void onVisitor( Koi::U8 k ) override { told( "visitor " + text( k ) ); }
  void told( std::string const & what ) {
    calls.push_back( what );
    if( act )
      act();
  }
  Texts taken() { return std::exchange( calls, {} ); }

  using NotifieeConst::onColorCount;
  using NotifieeConst::onShelf;
  using NotifieeConst::onVisitor;
  Texts calls;
  std::function< void() > act;
};

struct Entity : testing::Test {
  Koi::Ptr< Room > room = roomFactory( Koi::Name( "room" ) );
  Koi::Ptr< Lamp > a = lampFactory( Koi::Name( "a" ) ), b = lampFactory( Koi::Name( "b" ) );
  ShelfNumber const seven = ShelfNumber( 7 );
};

}  // namespace

// ---- attributes and collections

TEST_F( Entity, anEqualValueTellsNobody ) {
  struct : Lamp::NotifieeConst {
    int calls = 0;
    void onGlow() override { ++calls; }
  } watcher;
  watcher.notifierIs( a );
  a->glowIs( 1.5 );
  EXPECT_EQ( watcher.calls, 0 );
  a->glowIs( std::numeric_limits< double >::quiet_NaN() );
  a->glowIs( -std::numeric_limits< double >::quiet_NaN() );
  EXPECT_EQ( watcher.calls, 1 );

  Watcher members( room );
  room->colorCountIs( red, 0 );
  room->colorCountIs( red, 0 );
  room->colorCountIs( red, 2 );
  EXPECT_EQ( members.taken(), ( Texts{ "colorCount red", "colorCount red" } ) );
}

TEST_F( Entity, anAbsentMemberReadsAsTheDefaultAndItsRemovalTellsNobody ) {
  Watcher watcher( room );
  EXPECT_EQ( room->colorCount( red ), 0u );
  EXPECT_EQ( room->colorCountDel( red ), 0u );
  EXPECT_EQ( room->shelf( seven ), nullptr );
  EXPECT_EQ( room->shelfDel( seven ), nullptr );
  EXPECT_EQ( watcher.taken(), Texts{} );
  room->colorCountIs( red, 2 );
  EXPECT_EQ( room->colorCountDel( red ), 2u );
  room->colorCountNotify( amber );
  EXPECT_EQ( watcher.taken(), ( Texts{ "colorCount red", "colorCount red", "colorCount amber" } ) );
}

TEST_F( Entity, allMembersGoOneByOneInTheOrderOfTheWalk ) {
  for( auto color : { red, white, amber } )
    room->colorCountIs( color, 1 );
  Watcher watcher( room );
  // One that comes back meanwhile stays.
  watcher.act = [&] { room->colorCountIs( white, 5 ); };
  room->colorCountDelAll();
  EXPECT_EQ( watcher.taken(), ( Texts{ "colorCount white", "colorCount white", "colorCount amber",
                                       "colorCount red" } ) );
  EXPECT_EQ( room->colorCount().size(), 1u );
}

TEST_F( Entity, aWalkMayRemoveAndMeetsEveryOtherMemberOnce ) {
  std::map< Koi::U32, int > met;
  auto const walk = [&]( auto i, auto act ) {
    met.clear();
    for( ; i; ++i ) {
      ++met[i.key()];
      act( i );
    }
    for( auto const & [k, count] : met )
      EXPECT_EQ( count, 1 ) << k;
  };
  Koi::U32 next = 100;
  for( Koi::U32 k = 0; k < next; ++k )
    room->borrowedIs( k, a );
  walk( room->borrowedIterator(), [&]( auto const & i ) {
    for( Koi::U32 n = 0; n < 30 && next < 3000; ++n )  // it grows meanwhile
      room->borrowedIs( next++, a );
    EXPECT_EQ( room->borrowedDel( i ), a );
    EXPECT_EQ( room->borrowedDel( i ), nullptr );
  } );
  for( Koi::U32 k = 0; k < 100; ++k )
    EXPECT_EQ( met[k], 1 );

  for( Koi::U32 k = 0; k < 5000; ++k )
    room->borrowedIs( k, a );
  std::size_t const size = room->borrowed().size();
  walk( room->borrowedIterator(), [&]( auto const & i ) {
    if( i.key() % 50 != 0 )  // what stays moves together
      room->borrowedDel( i );
  } );
  EXPECT_EQ( met.size(), size );
  room->borrowed().koiCheck();

  auto end = room->borrowedIterator();
  for( ; room->borrowed().size() > 1; ++end )
    room->borrowedDel( end );
  ++end;
  EXPECT_EQ( room->borrowedDel( end ), nullptr );
  EXPECT_EQ( room->borrowed().size(), 1u );

  for( int i = 0; i < 200; ++i )
    room->visitorEnq( seven );
  walk( room->visitorIterator(), [&]( auto const & i ) { room->visitorDel( i ); } );
  EXPECT_EQ( met.size(), 200u );
  EXPECT_TRUE( room->visitor().empty() );
}

TEST_F( Entity, aHashedCollectionIsWalkedByBitReversedHash ) {
  auto const shelf = shelfFactory( seven, true, nullptr );
  for( int i = 0; i < 500; ++i )
    shelf->bookIs( Book( Koi::format( "book %d", i ), Spot( seven, 1 ), 0.1 ) );
  Koi::U32 last = 0;
  std::size_t count = 0;
  for( auto const & i : shelf->book() ) {
    Koi::U32 const place = Koi::bitReverse( i.key().hash() );
    EXPECT_LE( last, place );
    EXPECT_EQ( i.value().title(), i.key() );
    last = place;
    ++count;
  }
  EXPECT_EQ( count, 500u );
  EXPECT_EQ( Koi::bitReverse( 0x80000001 ), 0x80000001u );
  EXPECT_EQ( Koi::bitReverse( 0x12345678 ), 0x1e6a2c48u );
}

TEST_F( Entity, aKeyMayStandInTheMemberThatGoes ) {
  room->shelfIs( seven, true, a );
  Watcher watcher( room );
  room->shelfDel( room->shelf().begin().key() );
  room->colorCountIs( red, 1 );
  Watcher remover( room, [&] { room->colorCountDel( red ); } );
  room->colorCountIs( room->colorCount().begin().key(), 2 );
  EXPECT_EQ( watcher.taken(),
             ( Texts{ "shelf 7", "colorCount red", "colorCount red", "colorCount red" } ) );
}

TEST_F( Entity, keysAndValuesAreCheckedAgainBeforeTheyAreStored ) {
  std::string const text = "ShelfNumber::value < 1 or > 99 not allowed";
  Watcher watcher( room );
  EXPECT_EQ( refusal< Koi::RangeException >( [&] { room->shelfIs( ShelfNumber(), true, a ); } ),
             text );
  EXPECT_EQ( refusal< Koi::RangeException >( [&] { room->lampAtIs( Spot(), a ); } ), text );
  EXPECT_EQ( refusal< Koi::RangeException >( [&] { room->visitorEnq( ShelfNumber() ); } ), text );
  EXPECT_EQ( refusal< Koi::RangeException >(
                 [&] { room->visitorIs( 3, ShelfNumber::koiUnchecked( 100 ) ); } ),
             text );
  EXPECT_TRUE( room->shelf().empty() && room->lampAt().empty() && room->visitor().empty() );
  EXPECT_EQ( watcher.taken(), Texts{} );
}

TEST_F( Entity, aQueueHoldsAsManyMembersAsItHasNumbers ) {
  for( int i = 0; i < 3; ++i )
    room->visitorEnq( seven );
  for( int i = 0; i < 3; ++i )
    EXPECT_EQ( room->visitorDeq(), seven );
  EXPECT_EQ( room->visitorDeq(), ShelfNumber() );
  Watcher watcher( room );
  for( int i = 0; i < 256; ++i )
    EXPECT_EQ( room->visitorEnq( seven ), static_cast< Koi::U8 >( i + 3 ) );
  EXPECT_EQ( watcher.taken().size(), 256u );
  EXPECT_EQ( refusal< Koi::RangeException >( [&] { room->visitorEnq( seven ); } ),
             "linkqueue index space full" );
  EXPECT_EQ( room->visitor().size(), 256u );

  // A gap counts until the head passes it.
  room->visitorDel( 4 );
  EXPECT_EQ( refusal< Koi::RangeException >( [&] { room->visitorEnq( seven ); } ),
             "linkqueue index space full" );
  room->visitorDeq();
  EXPECT_EQ( room->visitorMetadata(), ( Koi::LinkQueueMetadata< Koi::U8 >{ 5, 3 } ) );
  EXPECT_EQ( room->visitorEnq( ShelfNumber( 1 ) ), 3 );
  EXPECT_EQ( watcher.taken(), ( Texts{ "visitor 4", "visitor 3", "visitor 3" } ) );
  EXPECT_EQ( room->visitor().begin().key(), 5 );
  EXPECT_EQ( room->visitor( 3 ), ShelfNumber( 1 ) );
}

TEST_F( Entity, aQueueIsSetByNumber ) {
  room->visitorIs( 200, ShelfNumber( 1 ) );
  room->visitorIs( 2, ShelfNumber( 3 ) );
  room->visitorIs( 201, ShelfNumber( 2 ) );
  Watcher watcher( room );
  room->visitorIs( 201, ShelfNumber( 2 ) );
  EXPECT_EQ( watcher.taken(), Texts{} );
  EXPECT_EQ( room->visitorMetadata(), ( Koi::LinkQueueMetadata< Koi::U8 >{ 200, 3 } ) );
  Texts order;
  for( auto const & i : room->visitor() )
    order.push_back( text( i.key() ) + ":" + text( i.value() ) );
  EXPECT_EQ( order, ( Texts{ "200:1", "201:2", "2:3" } ) );
  room->visitorDelAll();
  EXPECT_EQ( watcher.taken(), ( Texts{ "visitor 200", "visitor 201", "visitor 2" } ) );
}

// ---- children and references

TEST_F( Entity, aChildIsMadeOnceAndKeepsItsArguments ) {
  Watcher watcher( room );
  auto const shelf = room->shelfIs( seven, true, a );
  EXPECT_EQ( room->shelfIs( seven, true, a ), shelf );
  EXPECT_EQ( watcher.taken(), Texts{ "shelf 7" } );
  EXPECT_EQ(
      refusal< Koi::NameInUseException >( [&] { room->shelfIs( seven, false, a ); } ),
      "Reinstantiating the entity with name 7 where constructor parameter attribute _wide has a "
      "different value of False than the current value of True not allowed" );
  EXPECT_EQ(
      refusal< Koi::NameInUseException >( [&] { room->shelfIs( seven, true, nullptr ); } ),
      "Reinstantiating the entity with name 7 where constructor parameter attribute _light has a "
      "different value of null than the current value of a not allowed" );
  EXPECT_TRUE( shelf->wide() );
  EXPECT_EQ( room->shelfDel( seven ), shelf );
  EXPECT_NE( room->shelfIs( seven, false, nullptr ), shelf );
  EXPECT_EQ( watcher.taken(), ( Texts{ "shelf 7", "shelf 7" } ) );
}

TEST_F( Entity, aFullNameEscapesWhatDividesNames ) {
  auto const odd = roomFactory( Koi::Name( "50%/50" ) );
  auto const lamp = odd->lampIs( Koi::Name( "a/b" ) );
  EXPECT_EQ( lamp->fullName(), "50%25%2F50/a%2Fb" );
  EXPECT_EQ( lamp->name(), Koi::Name( "a/b" ) );
  EXPECT_EQ( lamp->parent(), odd );
}

TEST_F( Entity, aChildOutlivesItsParentWithoutOne ) {
  auto const shelf = room->shelfIs( seven, true, a );
  auto const lamp = room->ceilingIs( Koi::Name( "c" ) );
  EXPECT_EQ( lamp->parent(), room );
  room = nullptr;
  EXPECT_EQ( shelf->parent(), nullptr );
  EXPECT_EQ( lamp->fullName(), "c" );
}

TEST_F( Entity, referencesKeepTheirTargetAndWeakOnesDoNot ) {
  room->mainLampIs( a );
  room->spareLampIs( b );
  room->borrowedIs( 1, b );
  EXPECT_EQ( room->spareLamp(), b );
  EXPECT_EQ( room->borrowed( 1 ), b );
  EXPECT_EQ( a->koiRefCount(), 2u );
  EXPECT_EQ( b->koiRefCount(), 1u );
  b = nullptr;
  EXPECT_EQ( room->spareLamp(), nullptr );
  EXPECT_EQ( room->borrowed( 1 ), nullptr );
}

// ---- observers

TEST_F( Entity, tellsItsObserversInTheOrderInWhichTheyCame ) {
  std::string order;
  Watcher first( room, [&] { order += "1"; } ), second( room, [&] { order += "2"; } );
  room->mainLampIs( a );
  first.notifierIs( nullptr );
  first.notifierIs( room );
  room->mainLampIs( b );
  second.isRegisteredNotifieeIs( false );
  room->mainLampIs( a );
  second.isRegisteredNotifieeIs( true );
  room->mainLampIs( b );
  EXPECT_EQ( order,
             "12"
             "21"
             "1"
             "12" );
  EXPECT_EQ( second.notifier(), room );
}

TEST_F( Entity, observersMayComeAndGoWhileItTells ) {
  std::unique_ptr< Watcher > later, last;
  Watcher self( room ), remover( room );
  last = std::make_unique< Watcher >( room );
  self.act = [&] { self.notifierIs( nullptr ); };
  remover.act = [&] {
    last.reset();
    if( !later )
      later = std::make_unique< Watcher >( room );
  };
  room->mainLampIs( a );
  EXPECT_EQ( self.taken(), Texts{ "mainLamp" } );
  EXPECT_EQ( remover.taken(), Texts{ "mainLamp" } );
  EXPECT_EQ( later->taken(), Texts{} );
  room->mainLampIs( b );
  EXPECT_EQ( self.taken(), Texts{} );
  EXPECT_EQ( later->taken(), Texts{ "mainLamp" } );
}

TEST_F( Entity, aChangeInsideACallbackIsToldAtOnce ) {
  Watcher first( room ), second( room );
  first.act = [&] { room->colorCountIs( red, 1 ); };
  room->mainLampIs( a );
  EXPECT_EQ( first.taken(), ( Texts{ "mainLamp", "colorCount red" } ) );
  EXPECT_EQ( second.taken(), ( Texts{ "colorCount red", "mainLamp" } ) );
  EXPECT_EQ( room->koiChanges(), 2u );
}

TEST_F( Entity, livesUntilAllAreTold ) {
  Watcher first( room, [&] { room = nullptr; } ), second( room );
  room->mainLampIs( a );
  EXPECT_EQ( second.taken(), Texts{ "mainLamp" } );
  EXPECT_EQ( first.notifier(), nullptr );
  EXPECT_EQ( second.notifier(), nullptr );
  EXPECT_EQ( a->koiRefCount(), 1u );
}

TEST_F( Entity, tellsAllAndThenThrowsTheFirstException ) {
  Watcher first( room, [] { throw std::logic_error( "first" ); } ),
      second( room, [] { throw std::logic_error( "second" ); } ), third( room );
  EXPECT_EQ( refusal< std::logic_error >( [&] { room->mainLampIs( a ); } ), "first" );
  EXPECT_EQ( third.taken(), Texts{ "mainLamp" } );
  EXPECT_EQ( room->mainLamp(), a );
}

TEST_F( Entity, anObserverOfTheBaseHearsTheBaseOfWhatExtendsIt ) {
  struct : Lamp::NotifieeConst {
    int calls = 0;
    void onLit() override { ++calls; }
  } base;
  struct : Spotlight::NotifieeConst {
    int calls = 0;
    void onLit() override { ++calls; }
    void onAngle() override { calls += 10; }
  } whole;
  auto const spotlight = spotlightFactory( Koi::Name( "s" ) );
  base.notifierIs( spotlight.ptr() );
  whole.notifierIs( spotlight );
  spotlight->litIs( true );
  spotlight->angleIs( 90 );
  EXPECT_EQ( base.calls, 1 );
  EXPECT_EQ( whole.calls, 11 );
}
