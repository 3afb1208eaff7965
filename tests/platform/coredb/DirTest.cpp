// DirTest.cpp: directories, whose entries are of any type: what they take and refuse, full names,
// and what becomes of them in another process.
#include <gtest/gtest.h>

#include <coredb/Tree.h>
#include <coredb/TreeMount.h>
#include <koi/EntityPath.h>

#include <random>

#include "Everything.h"
#include "support/Refusal.h"
#include "support/ShmRoot.h"

using namespace Everything;
using Coredb::Dir;
using Coredb::TreeMount;
using Coredb::TreeServer;

namespace {

Koi::Name operator""_n( char const * text, std::size_t size ) {
  return Koi::Name( std::string_view( text, size ) );
}
Koi::Ptr< Dir > newDir( char const * name ) { return Coredb::dirFactory( Koi::Name( name ) ); }
Koi::Ptr< Lamp > newLamp() { return lampFactory( Koi::Name( "lamp" ) ); }

TEST( Directory, namesWhatItTakesAndLetsGoOfIt ) {
  auto const top = newDir( "" ), below = newDir( "x" );
  EXPECT_EQ( top->entityIs( "a/b"_n, below ), below );
  EXPECT_EQ( top->entityIs( "a/b"_n, below ), below );  // it is that one already
  auto const lamp = newLamp();
  below->entityIs( "left"_n, lamp );
  EXPECT_EQ( lamp->fullName(), "/a%2Fb/left" );
  EXPECT_EQ( Koi::entityNamed( *top, "a%2Fb/left" ), lamp.ptr() );
  EXPECT_EQ( Koi::entityNamed( *top, "a%2Fb/right" ), nullptr );
  EXPECT_EQ( Koi::entityAt( *top, "entity/a%2Fb/entity/left" ), lamp.ptr() );
  EXPECT_EQ( below->entityDel( "left"_n ), lamp );
  EXPECT_EQ( lamp->parent(), nullptr );
  EXPECT_EQ( lamp->fullName(), "left" );
  top->entityIs( "lamp"_n, lamp );  // to another place
  EXPECT_EQ( lamp->fullName(), "/lamp" );
}

TEST( Directory, refusesWhatCannotStandInIt ) {
  auto const top = newDir( "top" ), below = newDir( "below" );
  top->entityIs( "below"_n, below );
  auto const lamp = newLamp();
  below->entityIs( "lamp"_n, lamp );
  EXPECT_EQ( refusal< Koi::RangeException >( [&] { below->entityIs( "a"_n, nullptr ); } ),
             "null child of top/below not allowed" );
  EXPECT_EQ( refusal< Koi::RangeException >( [&] { below->entityIs( ""_n, newLamp() ); } ),
             "a child of top/below without a name not allowed" );
  EXPECT_EQ( refusal< Koi::NameInUseException >( [&] { below->entityIs( "lamp"_n, newLamp() ); } ),
             "top/below/lamp is another entity" );
  EXPECT_EQ( refusal< Koi::NameInUseException >( [&] { top->entityIs( "lamp"_n, lamp ); } ),
             "top/below/lamp has a place in a tree" );
  EXPECT_EQ( refusal< Koi::RangeException >( [&] { below->entityIs( "top"_n, top ); } ),
             "top below itself not allowed" );
  EXPECT_EQ( refusal< Koi::RangeException >( [&] { top->entityIs( "top"_n, top ); } ),
             "top below itself not allowed" );
  EXPECT_EQ( top->entity().size(), 1u );
  EXPECT_EQ( below->entity().size(), 1u );
  Koi::Ptr< Dir > deepest = below;
  EXPECT_EQ( refusal( [&] {
               for( int level = 1; level < 200; ++level ) {
                 auto const next = newDir( "" );
                 deepest->entityIs( Koi::Name( "d" + std::to_string( level ) ), next );
                 deepest = next;
               }
             } ),
             "more than 100 levels below top not allowed" );
  EXPECT_EQ( deepest->name().view(), "d99" );
}

TEST( Directory, makesEntriesByTheNameOfTheirType ) {
  auto const top = newDir( "top" );
  auto const finder = []( char const * text ) {
    return Koi::CtorArgs{ Koi::genericIf( Koi::String8( text ) ) };
  };
  auto const finding = Coredb::newEntity( *top, "one"_n, "Everything::Finding", finder( "Ann" ) );
  EXPECT_EQ( dynamic_cast< Finding & >( *finding ).finder(), "Ann" );
  EXPECT_EQ( finding->fullName(), "top/one" );
  EXPECT_EQ( Coredb::newEntity( *top, "one"_n, "Everything::Finding", finder( "Ann" ) ), finding );
  EXPECT_EQ( refusal< Koi::NameInUseException >( [&] {
               Coredb::newEntity( *top, "one"_n, "Everything::Finding", finder( "Bob" ) );
             } ),
             "top/one is another entity" );
  EXPECT_EQ( refusal< Koi::NameInUseException >(
                 [&] { Coredb::newEntity( *top, "one"_n, "Everything::Lamp" ); } ),
             "top/one is another entity" );
  EXPECT_EQ( refusal< Koi::UnknownTypeException >(
                 [&] { Coredb::newEntity( *top, "two"_n, "Everything::Ghost" ); } ),
             "type 'Everything::Ghost' is not registered" );
  EXPECT_EQ( refusal< Koi::ArgumentException >(
                 [&] { Coredb::newEntity( *top, "two"_n, "Everything::Color" ); } ),
             "Everything::Color is no entity type" );
  EXPECT_EQ( refusal< Koi::ArgumentException >(
                 [&] { Coredb::newEntity( *top, "two"_n, "Everything::Finding" ); } ),
             "Everything::Finding takes 2 arguments, not 1" );
  EXPECT_EQ( top->entity().size(), 1u );
}

TEST( Directory, ofASystemStandsInTheTreeOfTheProcess ) {
  auto const system = Coredb::systemDirectory( "switch/1"_n );
  EXPECT_EQ( Coredb::systemDirectory( "switch/1"_n ), system );
  EXPECT_EQ( system->fullName(), "/switch%2F1/Coredb" );
  auto const ports = Coredb::directoryIs( system, "interface/status" );
  EXPECT_EQ( ports->fullName(), "/switch%2F1/Coredb/interface/status" );
  ports->entityIs( "lamp"_n, newLamp() );
  EXPECT_TRUE( Coredb::entityAt< Lamp >( "/switch%2F1/Coredb/interface/status/lamp" ) );
  EXPECT_FALSE( Coredb::entityAt< Dir >( "switch%2F1/Coredb/interface/status/lamp" ) );
  EXPECT_EQ(
      refusal< Koi::NameInUseException >( [&] { Coredb::directoryIs( ports, "lamp/below" ); } ),
      "/switch%2F1/Coredb/interface/status/lamp is no directory" );
  EXPECT_EQ( refusal< Koi::RangeException >( [&] { Coredb::systemDirectory( ""_n ); } ),
             "a system without a name not allowed" );
  Coredb::globalDirectory()->entityDel( "switch/1"_n );
}

/// Tells which entries came, changed or went.
struct Watcher : Dir::NotifieeConst {
  using NotifieeConst::onEntity;
  void onEntity( Koi::Name const & name ) override { told += name.view(), told += " "; }
  std::string told;
};

TEST( Directory, tellsOfItsEntriesByName ) {
  auto const top = newDir( "top" );
  Watcher watcher;
  watcher.notifierIs( top );
  top->entityIs( "a"_n, newLamp() );
  top->entityIs( "a"_n, top->entity( "a"_n ) );
  top->entityDel( "a"_n );
  top->entityDel( "a"_n );
  EXPECT_EQ( watcher.told, "a a " );
}

// ---- in another process

/// All of a tree: types, names, what lamps and findings have of their own.
std::string textOf( Koi::Entity const & entity ) {
  std::string text = std::string( entity.name().view() ) + ":" + entity.koiType()->name;
  if( auto const * lamp = dynamic_cast< Lamp const * >( &entity ) )
    text += " " + std::to_string( lamp->watts() );
  if( auto const * finding = dynamic_cast< Finding const * >( &entity ) )
    text += " " + std::string( finding->finder() );
  if( auto const * dir = dynamic_cast< Dir const * >( &entity ) )
    for( auto const & member : dir->entity() )
      text += " { " + textOf( *member.value() ) + " }";
  return text;
}

void changeAnything( std::mt19937 & random, Dir & top ) {
  auto const number = [&]( unsigned below ) { return static_cast< unsigned >( random() % below ); };
  Koi::Ptr< Dir > at( &top );
  for( unsigned depth = number( 4 ); depth != 0; --depth )
    if( auto * const below = dynamic_cast< Dir * >(
            at->entity( Koi::Name( std::string( 1, 'a' + number( 4 ) ) ) ).ptr() ) )
      at = below;
  Koi::Name const name( std::string( 1, 'a' + number( 4 ) ) );
  Koi::Ptr< Koi::Entity > const there = at->entity( name );
  if( auto * const lamp = dynamic_cast< Lamp * >( there.ptr() ); lamp && number( 2 ) )
    return lamp->wattsIs( number( 100 ) );
  if( there && number( 2 ) )
    at->entityDel( name );
  if( at->entity( name ) )
    return;
  switch( number( 3 ) ) {
    case 0:
      at->entityIs( name, newDir( "" ) );
      break;
    case 1:
      at->entityIs( name, newLamp() );
      break;
    default:
      at->entityIs( name, findingFactory( name, number( 2 ) ? "Ann" : "Bob" ) );
  }
}

struct ServedDirectory : testing::Test {
  template< class Condition >
  bool runUntil( Condition isSo ) const {
    for( int i = 0; i < 3000 && !isSo(); ++i )
      activity->runFor( 0.005 );
    return isSo();
  }
  std::unique_ptr< TreeServer > served() const {
    return std::make_unique< TreeServer >( top, socket, Coredb::Access::writable, activity.ptr(),
                                           quiet );
  }

  Ntrace::Handler const quiet{ -1, {} };
  Koi::Ptr< Koi::Activity > const activity = Koi::activityFactory();
  Tests::ShmRoot const shm;
  std::string const socket = shm.path() + "/tree";
  Koi::Ptr< Dir > const top = newDir( "top" ), mounted = newDir( "top" );
};

TEST_F( ServedDirectory, isEqualWhereverItIsChanged ) {
  std::mt19937 random( 3 );
  for( int i = 0; i < 50; ++i )
    changeAnything( random, *top );
  auto server = served();
  TreeMount const mount( mounted, socket, Coredb::Access::writable, {}, activity.ptr(), quiet );
  for( int round = 0; round < 60; ++round ) {
    if( round % 10 == 9 ) {
      server.reset();  // what changes meanwhile is told afterwards, by difference
      ASSERT_TRUE( runUntil( [&] { return !mount.isSynchronised(); } ) );
      for( int i = 0; i < 20; ++i )
        changeAnything( random, *top );
      server = served();
    }
    ASSERT_TRUE( runUntil( [&] { return mount.isSynchronised(); } ) );
    for( int i = 0; i < 20; ++i )
      changeAnything( random, round % 2 ? *top : *mounted );
    ASSERT_TRUE( runUntil( [&] { return textOf( *top ) == textOf( *mounted ); } ) )
        << round << "\n"
        << textOf( *top ) << "\n"
        << textOf( *mounted );
  }
}

TEST_F( ServedDirectory, takesInWhatWasReferredToBefore ) {
  auto const room = roomFactory( Koi::Name( "room" ) );
  auto const lamp = newLamp();
  top->entityIs( "room"_n, room );
  room->mainLampIs( lamp );
  auto const server = served();
  TreeMount const mount( mounted, socket, Coredb::Access::readOnly, {}, activity.ptr(), quiet );
  auto const there = [&] { return dynamic_cast< Room * >( mounted->entity( "room"_n ).ptr() ); };
  ASSERT_TRUE( runUntil( [&] { return there() && there()->mainLamp(); } ) );
  top->entityIs( "lamp"_n, lamp );
  lamp->wattsIs( 7 );
  ASSERT_TRUE( runUntil( [&] { return !!mounted->entity( "lamp"_n ); } ) );
  ASSERT_TRUE( runUntil( [&] { return textOf( *top ) == textOf( *mounted ); } ) );
  EXPECT_EQ( there()->mainLamp().ptr(), mounted->entity( "lamp"_n ).ptr() );
  top->entityDel( "lamp"_n );  // it is where it was before
  lamp->wattsIs( 8 );
  ASSERT_TRUE( runUntil( [&] { return there()->mainLamp()->watts() == 8; } ) );
  EXPECT_FALSE( mounted->entity( "lamp"_n ) );
}

TEST_F( ServedDirectory, keepsEntriesThatAreTheSame ) {
  top->entityIs( "lamp"_n, newLamp() );
  top->entityIs( "finding"_n, findingFactory( Koi::Name( "finding" ), "Ann" ) );
  auto server = served();
  TreeMount const mount( mounted, socket, Coredb::Access::readOnly, {}, activity.ptr(), quiet );
  ASSERT_TRUE( runUntil( [&] { return mount.isSynchronised(); } ) );
  auto const lamp = mounted->entity( "lamp"_n ), finding = mounted->entity( "finding"_n );
  ASSERT_TRUE( lamp && finding );
  EXPECT_THROW( mounted->entityIs( "other"_n, newLamp() ), Koi::ReadOnlyException );
  server.reset();
  ASSERT_TRUE( runUntil( [&] { return !mount.isSynchronised(); } ) );
  top->entityDel( "finding"_n );
  top->entityIs( "finding"_n, findingFactory( Koi::Name( "finding" ), "Bob" ) );
  server = served();
  ASSERT_TRUE( runUntil( [&] { return mount.isSynchronised(); } ) );
  EXPECT_EQ( mounted->entity( "lamp"_n ), lamp );
  EXPECT_NE( mounted->entity( "finding"_n ), finding );
  EXPECT_EQ( textOf( *mounted ), textOf( *top ) );
}

}  // namespace
