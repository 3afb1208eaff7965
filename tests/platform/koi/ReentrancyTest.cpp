// ReentrancyTest.cpp: what an observer may do while it is told, pair by pair: every action, for
// every kind of attribute, by the first, the middle and the last observer, with and without an
// exception. What must come out is worked out by a plain list beside it.
#include <gtest/gtest.h>

#include <algorithm>

#include <tools/koigen/EverythingHandlers.h>

using namespace Everything;
using Calls = std::vector< std::string >;

namespace {

enum Action {
  lookOn,
  detachItself,
  destroyItself,
  detachEarlier,
  detachLater,
  attachNew,
  attachAgain,
  switchLaterOff,
  changeAgain,
  changeAnother,
  deleteAndCreate,
  dropTheEntity,
  numActions
};

/// The house in which all happens: 0 stands for no change yet.
struct House {
  Koi::Ptr< Room > room = roomFactory( Koi::Name( "room" ) );
  std::vector< Koi::Ptr< Lamp > > lamps;
  int numChanges = 0;

  House() {
    for( int i = 0; i < 8; ++i )
      lamps.push_back( lampFactory( Koi::Name( Koi::format( "lamp %d", i ) ) ) );
  }
  Koi::Ptr< Lamp > const & nextLamp() { return lamps[++numChanges % lamps.size()]; }
};

/// How one kind of attribute is changed; `again` is two changes, one undoing the other.
struct Kind {
  char const * name;
  std::function< void( House & ) > change, again;
};

std::vector< Kind > const & kinds() {
  static std::vector< Kind > const all{
      { "reference", []( House & h ) { h.room->mainLampIs( h.nextLamp() ); },
        []( House & h ) {
          auto const lamp = h.room->mainLamp();
          h.room->mainLampIs( h.nextLamp() );
          h.room->mainLampIs( lamp );
        } },
      { "weak reference", []( House & h ) { h.room->spareLampIs( h.nextLamp() ); },
        []( House & h ) {
          auto const lamp = h.room->spareLamp();
          h.room->spareLampIs( nullptr );
          h.room->spareLampIs( lamp );
        } },
      { "optional child",
        []( House & h ) {
          if( h.room->ceiling() )
            h.room->ceilingDel();
          else
            h.room->ceilingIs( Koi::Name( "c" ) );
        },
        []( House & h ) {
          bool const there = h.room->ceiling() != nullptr;
          if( there )
            h.room->ceilingDel();
          h.room->ceilingIs( Koi::Name( "c" ) );
          if( !there )
            h.room->ceilingDel();
        } },
      { "tree of values",
        []( House & h ) { h.room->colorCountIs( red, static_cast< Koi::U32 >( ++h.numChanges ) ); },
        []( House & h ) {
          auto const count = h.room->colorCountDel( red );
          h.room->colorCountIs( red, count );
        } },
      { "tree of children",
        []( House & h ) {
          ++h.numChanges;
          h.room->shelfIs( ShelfNumber( h.numChanges ), true, nullptr );
        },
        []( House & h ) {
          ShelfNumber const number( h.numChanges );
          h.room->shelfDel( number );
          h.room->shelfIs( number, false, nullptr );
        } },
      { "hashed references",
        []( House & h ) { h.room->lampAtIs( Spot( ShelfNumber( 1 ), 7 ), h.nextLamp() ); },
        []( House & h ) {
          auto const lamp = h.room->lampAtDel( Spot( ShelfNumber( 1 ), 7 ) );
          h.room->lampAtIs( Spot( ShelfNumber( 1 ), 7 ), lamp );
        } },
      { "hashed weak references", []( House & h ) { h.room->borrowedIs( 7, h.nextLamp() ); },
        []( House & h ) {
          auto const lamp = h.room->borrowedDel( 7 );
          h.room->borrowedIs( 7, lamp );
        } },
      { "queue", []( House & h ) { h.room->visitorEnq( ShelfNumber( ++h.numChanges ) ); },
        []( House & h ) { h.room->visitorEnq( h.room->visitorDeq() ); } },
  };
  return all;
}

/// Writes down that it was told, and acts once.
struct Watcher : Room::Notifiee {
  Watcher( char const * its, Calls & calls ) : name( its ), calls_( calls ) {}
  void onMainLamp() override { told(); }
  void onSpareLamp() override { told(); }
  void onCeiling() override { told(); }
  void onColorCount( Color ) override { told(); }
  void onShelf( ShelfNumber const & ) override { told(); }
  void onLampAt( Spot const & ) override { told(); }
  void onBorrowedKoiImmediate( Koi::U32 ) override { told(); }
  void onVisitor( Koi::U8 ) override { told(); }
  void onLamp( Koi::Name const & ) override { calls_.push_back( name + " hears of a lamp" ); }

  void told() {
    calls_.push_back( name );
    if( auto const acts = std::exchange( act, {} ) )
      acts();  // it may end this object: nothing of it is used any more
  }
  using NotifieeConst::onBorrowed;
  using NotifieeConst::onColorCount;
  using NotifieeConst::onLamp;
  using NotifieeConst::onLampAt;
  using NotifieeConst::onShelf;
  using NotifieeConst::onVisitor;

  std::string const name;
  std::function< void() > act;

 private:
  Calls & calls_;
};

/// The plain list: who is attached, in which order, and what each of them must hear.
class Twin {
 public:
  Twin( Action action, std::string actor, std::string earlier, std::string later )
      : action_( action ), actor_( actor ), earlier_( earlier ), later_( later ) {}

  void notify( std::string const & what = "" ) {
    auto const order = attached_;
    for( auto const & [name, since] : order ) {
      auto const still = std::find( attached_.begin(), attached_.end(), std::pair( name, since ) );
      if( still == attached_.end() )
        continue;
      calls.push_back( name + what );
      if( name == actor_ && what.empty() && !std::exchange( done_, true ) )
        act();
    }
  }
  Calls calls;

 private:
  void detach( std::string const & name ) {
    std::erase_if( attached_, [&]( auto const & one ) { return one.first == name; } );
  }
  void act() {
    switch( action_ ) {
      case detachItself:
      case destroyItself:
        return detach( actor_ );
      case detachEarlier:
        return detach( earlier_ );
      case detachLater:
      case switchLaterOff:
        return detach( later_ );
      case attachNew:
        return attached_.push_back( { "new", ++count_ } );
      case attachAgain:
        detach( actor_ );
        return attached_.push_back( { actor_, ++count_ } );
      case changeAgain:
        return notify();
      case changeAnother:
        return notify( " hears of a lamp" );
      case deleteAndCreate:
        notify();
        return notify();
      default:
        return;
    }
  }

  Action const action_;
  std::string const actor_, earlier_, later_;
  bool done_ = false;
  int count_ = 3;
  std::vector< std::pair< std::string, int > > attached_{ { "1", 1 }, { "2", 2 }, { "3", 3 } };
};

struct Reentrancy : testing::TestWithParam< Kind > {};

}  // namespace

TEST_P( Reentrancy, everyActionOfEveryObserverEndsAsTheRulesSay ) {
  Kind const & kind = GetParam();
  for( int action = 0; action < numActions; ++action )
    for( std::size_t position = 0; position < 3; ++position )
      for( bool const throws : { false, true } ) {
        SCOPED_TRACE( Koi::format( "action %d, observer %d%s", action,
                                   static_cast< int >( position ) + 1, throws ? ", throws" : "" ) );
        Calls calls;
        std::optional< House > house( std::in_place );
        std::unique_ptr< Watcher > watchers[3], fresh;
        char const * const names[] = { "1", "2", "3" };
        kind.change( *house );  // so that there is something to change, delete and create again
        for( std::size_t i = 0; i < 3; ++i ) {
          watchers[i] = std::make_unique< Watcher >( names[i], calls );
          watchers[i]->notifierIs( house->room );
        }
        std::size_t const earlier = position == 0 ? 2 : position - 1,
                          later = position == 2 ? 0 : position + 1;
        Koi::Ptr< Room > const & room = house->room;
        auto const act = [&] {
          auto * const self = watchers[position].get();
          switch( action ) {
            case lookOn:
              EXPECT_EQ( self->notifier(), room );
              break;
            case detachItself:
              self->notifierIs( nullptr );
              break;
            case destroyItself:
              watchers[position].reset();
              break;
            case detachEarlier:
              watchers[earlier]->notifierIs( nullptr );
              break;
            case detachLater:
              watchers[later]->notifierIs( nullptr );
              break;
            case attachNew:
              fresh = std::make_unique< Watcher >( "new", calls );
              fresh->notifierIs( room );
              break;
            case attachAgain:
              self->notifierIs( nullptr );
              self->notifierIs( room );
              break;
            case switchLaterOff:
              watchers[later]->isRegisteredNotifieeIs( false );
              break;
            case changeAgain:
              kind.change( *house );
              break;
            case changeAnother:
              house->room->lampIs( Koi::Name( "another" ) );
              break;
            case deleteAndCreate:
              kind.again( *house );
              break;
            case dropTheEntity:
              house->room = nullptr;
              break;
          }
          if( throws )
            throw std::logic_error( "thrown" );
        };
        watchers[position]->act = act;
        std::string thrown;
        try {
          kind.change( *house );
        } catch( std::logic_error const & e ) {
          thrown = e.what();
        }
        Twin twin( static_cast< Action >( action ), names[position], names[earlier], names[later] );
        twin.notify();
        EXPECT_EQ( thrown, throws ? "thrown" : "" );
        if( action == dropTheEntity ) {
          EXPECT_EQ( watchers[0]->notifier(), nullptr );
        } else {
          // Once more: what the action left behind.
          kind.change( *house );
          twin.notify();
        }
        EXPECT_EQ( calls, twin.calls );
      }
}

INSTANTIATE_TEST_SUITE_P( OfAllKinds, Reentrancy, testing::ValuesIn( kinds() ),
                          []( auto const & kind ) {
                            std::string name = kind.param.name;
                            std::replace( name.begin(), name.end(), ' ', '_' );
                            return name;
                          } );

namespace {

/// Lights a lamp ever dimmer, or brighter: a loop.
struct Restless : Lamp::Notifiee {
  explicit Restless( Lamp * lamp ) { notifierIs( lamp ); }
  void onGlow() override {
    ++calls;
    notifier()->glowIs( notifier()->glow() + 1 );
  }
  int calls = 0;
};

}  // namespace

TEST( Nesting, aLoopOfObserversEndsAfterAThousandSteps ) {
  auto const lamp = lampFactory( Koi::Name( "50%" ) );
  Restless first( lamp ), second( lamp );
  std::string text;
  try {
    lamp->glowIs( 2 );
  } catch( Koi::NestingException const & e ) {
    text = e.what();
  }
  EXPECT_EQ( text, "notifications nested more than 1000 deep at 50%25" );
  EXPECT_EQ( first.calls, 1000 );
  EXPECT_EQ( second.calls, 1000 );

  // It was the loop that was refused, not the lamp.
  second.notifierIs( nullptr );
  first.notifierIs( nullptr );
  struct : Lamp::NotifieeConst {
    int calls = 0;
    void onGlow() override { ++calls; }
  } calm;
  calm.notifierIs( lamp );
  lamp->glowIs( 3 );
  EXPECT_EQ( calm.calls, 1 );
}

TEST( ImmediateForm, isWhatTheEntityCallsAndPassesOnToThePlainOne ) {
  struct : Lamp::NotifieeConst {
    std::string calls;
    void onLitKoiImmediate() override { calls += "immediate "; }
    void onLit() override { calls += "never "; }
    void onGlow() override { calls += "glow "; }
  } watcher;
  auto const lamp = lampFactory( Koi::Name( "l" ) );
  watcher.notifierIs( lamp );
  lamp->litIs( true );
  lamp->glowIs( 2 );
  lamp->glowIs( 3 );
  lamp->litIs( false );
  EXPECT_EQ( watcher.calls, "immediate glow glow immediate " );
}

TEST( ZeroReferences, areToldAndMayBeAnsweredByTakingOne ) {
  struct Keeper : Lamp::Notifiee {
    explicit Keeper( Lamp * lamp ) { notifierIs( lamp ); }
    void zeroReferencesIs( bool zero ) override {
      told += zero ? "zero " : "kept ";
      if( zero && keep )
        kept = notifier();
      throw std::logic_error( "nobody hears this" );
    }
    std::string told;
    bool keep = false;
    Koi::Ptr< Lamp > kept;
  };
  auto room = roomFactory( Koi::Name( "room" ) );
  auto const lamp = room->lampIs( Koi::Name( "l" ) );
  Keeper first( lamp ), second( lamp );
  second.keep = true;
  const_cast< Koi::Ptr< Lamp > & >( lamp ) = nullptr;
  EXPECT_EQ( first.told, "" );
  room->lampDel( Koi::Name( "l" ) );
  EXPECT_EQ( first.told, "zero kept " );
  ASSERT_EQ( second.kept->koiRefCount(), 1u );
  EXPECT_EQ( second.kept->parent(), nullptr );

  second.keep = false;
  second.kept = nullptr;
  EXPECT_EQ( first.told, "zero kept zero " );
  EXPECT_EQ( first.notifier(), nullptr );
}

namespace {

struct Transaction : testing::Test {
  struct Watcher : Room::Notifiee {
    void onColorCount( Color k ) override { told( Koi::format( "count %u", unsigned( k ) ) ); }
    void onMainLamp() override { told( "mainLamp" ); }
    void onShelf( ShelfNumber const & k ) override { told( Koi::format( "shelf %u", k.value() ) ); }
    void told( Koi::String8 const & what ) {
      calls.push_back( std::string( what ) );
      if( act )
        act();
    }
    using NotifieeConst::onColorCount;
    using NotifieeConst::onShelf;
    Calls calls;
    std::function< void() > act;
  };

  Transaction() { watcher.notifierIs( room ); }
  Koi::Ptr< Room > room = roomFactory( Koi::Name( "room" ) );
  Koi::Ptr< Lamp > lamp = lampFactory( Koi::Name( "l" ) );
  Watcher watcher;
};

}  // namespace

TEST_F( Transaction, tellsOnceOfEachAttributeOrKeyInTheOrderOfFirstChanges ) {
  Koi::transaction( [&] {
    room->colorCountIs( red, 1 );
    room->mainLampIs( lamp );
    Koi::transaction( [&] { room->colorCountIs( white, 1 ); } );
    room->colorCountIs( red, 2 );
    room->colorCountDel( red );
    room->shelfIs( ShelfNumber( 4 ), true, nullptr );
    room->shelfDel( ShelfNumber( 4 ) );
    EXPECT_EQ( watcher.calls, Calls{} );
    EXPECT_EQ( room->colorCount( white ), 1u );
  } );
  EXPECT_EQ( watcher.calls, ( Calls{ "count 6", "mainLamp", "count 0", "shelf 4" } ) );
}

TEST_F( Transaction, isOverWhenItTells ) {
  watcher.act = [&] {
    if( watcher.calls.size() == 1 )
      room->colorCountIs( amber, 9 );
  };
  Koi::transaction( [&] {
    room->colorCountIs( red, 1 );
    room->colorCountIs( white, 1 );
  } );
  EXPECT_EQ( watcher.calls, ( Calls{ "count 6", "count 5", "count 0" } ) );
}

TEST_F( Transaction, keepsWhatHasSomethingToTell ) {
  Koi::transaction( [&] {
    room->mainLampIs( lamp );
    room = nullptr;
    EXPECT_NE( watcher.notifier(), nullptr );
  } );
  EXPECT_EQ( watcher.calls, Calls{ "mainLamp" } );
  EXPECT_EQ( watcher.notifier(), nullptr );
}

TEST_F( Transaction, hasNoUndoAndLetsTheExceptionOfTheWorkThrough ) {
  watcher.act = [] { throw std::logic_error( "an observer's" ); };
  auto const text = []( auto work ) -> std::string {
    try {
      Koi::transaction( work );
    } catch( std::logic_error const & e ) {
      return e.what();
    }
    return "none";
  };
  EXPECT_EQ( text( [&] {
               room->mainLampIs( lamp );
               throw std::logic_error( "the work's" );
             } ),
             "the work's" );
  EXPECT_EQ( watcher.calls, Calls{ "mainLamp" } );
  EXPECT_EQ( text( [&] {
               room->colorCountIs( red, 1 );
               room->colorCountIs( white, 1 );
             } ),
             "an observer's" );
  EXPECT_EQ( watcher.calls, ( Calls{ "mainLamp", "count 6", "count 0" } ) );
}
