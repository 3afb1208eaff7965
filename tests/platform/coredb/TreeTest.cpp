// TreeTest.cpp: trees that are served and mounted over sockets: random changes at several ends,
// servers that are killed, come later and again, what they acknowledge, peers that talk nonsense or
// do not read, paths that cannot be.
#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>

#include <coredb/TreeMount.h>

#include "../koi/RoomChanges.h"
#include "support/Refusal.h"
#include "support/ShmRoot.h"

using namespace Everything;
using Coredb::Access;
using Coredb::ServeException;
using Coredb::TreeMount;
using Coredb::TreeServer;
using TestSupport::RoomChange;
using TestSupport::wholeText;

namespace {

Ntrace::Handler const quiet( -1, {} );

Koi::Ptr< Room > newRoom() { return roomFactory( Koi::Name( "room" ) ); }

struct Trees;

/// A room and a mount of it.
struct Mounted {
  Mounted( Trees const & trees, Access access = Access::writable );

  Koi::Ptr< Room > room = newRoom();
  std::vector< bool > told;
  TreeMount mount;
};

struct Trees : testing::Test {
  std::unique_ptr< TreeServer > served( Koi::Ptr< Room > const & tree,
                                        Access access = Access::writable ) const {
    return std::make_unique< TreeServer >( tree, socket, access, activity.ptr(), quiet );
  }
  template< class Condition >
  bool runUntil( Condition isSo, int numTurns = 3000 ) const {
    for( int i = 0; i < numTurns && !isSo(); ++i )
      activity->runFor( 0.005 );
    return isSo();
  }
  /// A client that knows nothing of trees.
  int strangerOf( std::string const & path ) const {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy( address.sun_path, sizeof address.sun_path - 1 );
    int const made = ::socket( AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0 );
    return connect( made, reinterpret_cast< sockaddr * >( &address ), sizeof address ) == 0 ? made
                                                                                            : -1;
  }

  Koi::Ptr< Koi::Activity > const activity = Koi::activityFactory();
  Koi::Ptr< Room > const room = newRoom();
  Tests::ShmRoot const shm;
  std::string const directory = shm.path();
  std::string socket = directory + "/tree";
};

Mounted::Mounted( Trees const & trees, Access access )
    : mount(
          room, trees.socket, access, [this]( bool is ) { told.push_back( is ); },
          trees.activity.ptr(), quiet ) {}

TEST_F( Trees, areEqualWhereverTheyChange ) {
  std::mt19937 random( 7 );
  Mounted early( *this ), late( *this );  // both before there is a server
  EXPECT_FALSE( early.mount.isConnected() );
  auto const server = served( room );
  ASSERT_TRUE(
      runUntil( [&] { return early.mount.isSynchronised() && late.mount.isSynchronised(); } ) );
  EXPECT_EQ( server->numClients(), 2u );
  for( int round = 0; round < 120; ++round ) {
    Room & changed = *( round % 3 == 0 ? room : round % 3 == 1 ? early.room : late.room );
    for( int i = round % 2 ? 5 : 50; i > 0; --i )
      RoomChange::any( random ).apply( changed );
    ASSERT_TRUE( runUntil( [&] {
      std::string const text = wholeText( *room );
      return wholeText( *early.room ) == text && wholeText( *late.room ) == text;
    } ) )
        << round;
  }
  EXPECT_EQ( early.told, std::vector< bool >{ true } );
}

TEST_F( Trees, areMountedAgainWhenTheirServerIs ) {
  room->colorCountIs( white, 1 );
  auto server = served( room );
  Mounted mounted( *this );
  ASSERT_TRUE( runUntil( [&] { return mounted.mount.isSynchronised(); } ) );
  server.reset();
  EXPECT_FALSE( std::filesystem::exists( socket ) );
  ASSERT_TRUE( runUntil( [&] { return !mounted.mount.isSynchronised(); } ) );
  EXPECT_EQ( mounted.mount.trouble(), socket + ": the other end has gone" );
  EXPECT_EQ( wholeText( *mounted.room ), wholeText( *room ) );  // it stays as it was
  room->colorCountIs( red, 2 );
  server = served( room );
  ASSERT_TRUE( runUntil( [&] { return mounted.mount.isSynchronised(); } ) );
  EXPECT_EQ( wholeText( *mounted.room ), wholeText( *room ) );
  EXPECT_EQ( mounted.told, ( std::vector< bool >{ true, false, true } ) );
}

TEST_F( Trees, ofProcessesThatAreKilledAreTakenOver ) {
  Mounted mounted( *this );
  for( unsigned generation = 1; generation <= 5; ++generation ) {
    pid_t const child = fork();
    if( child == 0 ) {
      auto const own = Koi::activityFactory();
      auto const tree = newRoom();
      tree->colorCountIs( white, generation );
      TreeServer const server( tree, socket, Access::writable, own.ptr(), quiet );
      // It answers: red follows what another process makes amber.
      for( ;; ) {
        own->runFor( 0.001 );
        tree->colorCountIs( red, tree->colorCount( amber ) );
      }
    }
    auto const isOf = [&] {
      return mounted.mount.isSynchronised() && mounted.room->colorCount( white ) == generation;
    };
    EXPECT_TRUE( runUntil( isOf ) ) << mounted.mount.trouble();
    mounted.room->colorCountIs( amber, 10 + generation );
    EXPECT_TRUE( runUntil( [&] { return mounted.room->colorCount( red ) == 10 + generation; } ) );
    kill( child, SIGKILL );
    waitpid( child, nullptr, 0 );
    EXPECT_TRUE( runUntil( [&] { return !mounted.mount.isSynchronised(); } ) );
    EXPECT_TRUE( std::filesystem::exists( socket ) );
  }
}

// ---- what a server has taken in

/// Whatever is told of the room's colors, by the number that white had.
struct WhiteTold : Room::NotifieeConst {
  using NotifieeConst::onColorCount;
  void onColorCount( Color ) override { last = notifier()->colorCount( white ); }
  Koi::U32 last = 0;
};

TEST_F( Trees, areAcknowledgedWhenTheServerAndItsObserversHaveThem ) {
  auto const server = served( room );
  WhiteTold told;
  told.notifierIs( room.ptr() );
  Mounted mounted( *this ), other( *this );
  EXPECT_FALSE( mounted.mount.isAcknowledged() );  // it is not even synchronised
  ASSERT_TRUE(
      runUntil( [&] { return mounted.mount.isSynchronised() && other.mount.isSynchronised(); } ) );
  EXPECT_TRUE( mounted.mount.isAcknowledged() );
  std::mt19937 random( 11 );
  int numEarly = 0;
  for( unsigned round = 1; round <= 300; ++round ) {
    for( unsigned i = 0; i < random() % 5; ++i ) {  // things that need not change anything
      RoomChange::any( random ).apply( *mounted.room );
      RoomChange::any( random ).apply( *room );
    }
    // Changed while the change before may be under way.
    mounted.room->colorCountIs( white, 1000 + round );
    ASSERT_FALSE( mounted.mount.isAcknowledged() );
    for( unsigned steps = random() % 12; steps != 0 && !mounted.mount.isAcknowledged(); --steps ) {
      activity->runOnce();
      numEarly += !mounted.mount.isAcknowledged() && room->colorCount( white ) == 1000 + round;
    }
    if( mounted.mount.isAcknowledged() ) {
      ASSERT_EQ( room->colorCount( white ), 1000 + round );
      ASSERT_EQ( told.last, 1000 + round );
    }
  }
  EXPECT_GT( numEarly, 0 );  // it was there, and its acknowledgement on the way
  EXPECT_TRUE( runUntil( [&] { return mounted.mount.isAcknowledged(); } ) );
  EXPECT_EQ( room->colorCount( white ), 1300u );
}

TEST_F( Trees, areAcknowledgedToEachMountOfItsOwnChanges ) {
  auto const server = served( room );
  Mounted early( *this ), late( *this ), looking( *this, Access::readOnly );
  EXPECT_FALSE( looking.mount.isAcknowledged() );
  auto const areAcknowledged = [&] {
    return early.mount.isAcknowledged() && late.mount.isAcknowledged() &&
           looking.mount.isAcknowledged();
  };
  ASSERT_TRUE( runUntil( areAcknowledged ) );
  early.room->colorCountIs( white, 1 );
  EXPECT_FALSE( early.mount.isAcknowledged() );
  while( late.room->colorCount( white ) != 1 || looking.room->colorCount( white ) != 1 ) {
    ASSERT_TRUE( late.mount.isAcknowledged() && looking.mount.isAcknowledged() );
    ASSERT_TRUE( activity->runOnce() );
  }
  // Both change the same at a time; one of the two is taken in first.
  early.room->colorCountIs( white, 2 );
  late.room->colorCountIs( white, 3 );
  EXPECT_FALSE( early.mount.isAcknowledged() || late.mount.isAcknowledged() );
  EXPECT_TRUE( runUntil( areAcknowledged ) );
  EXPECT_TRUE( runUntil( [&] {
    return wholeText( *early.room ) == wholeText( *room ) &&
           wholeText( *late.room ) == wholeText( *room );
  } ) );
  EXPECT_GE( room->colorCount( white ), 2u );
}

TEST_F( Trees, areNotAcknowledgedByAServerThatIsGone ) {
  auto const unheard = [&]( Mounted const & mounted ) {
    return !runUntil( [&] { return mounted.mount.isAcknowledged(); }, 40 );
  };
  pid_t const child = fork();
  if( child == 0 ) {
    auto const own = Koi::activityFactory();
    TreeServer const server( newRoom(), socket, Access::writable, own.ptr(), quiet );
    own->run();
  }
  Mounted mounted( *this );
  EXPECT_TRUE( runUntil( [&] { return mounted.mount.isAcknowledged(); } ) );
  mounted.room->colorCountIs( white, 1 );
  EXPECT_TRUE( runUntil( [&] { return mounted.mount.isAcknowledged(); } ) );
  kill( child, SIGSTOP );
  waitpid( child, nullptr, WUNTRACED );
  mounted.room->colorCountIs( red, 2 );
  EXPECT_TRUE( unheard( mounted ) );
  EXPECT_TRUE( mounted.mount.isConnected() );
  kill( child, SIGKILL );
  waitpid( child, nullptr, 0 );
  EXPECT_TRUE( unheard( mounted ) );
  EXPECT_FALSE( mounted.mount.isConnected() );
  // The next server is told what the one before did not take in.
  auto const server = served( room );
  EXPECT_TRUE( runUntil( [&] { return mounted.mount.isAcknowledged(); } ) );
  EXPECT_EQ( room->colorCount( red ), 2u );
  EXPECT_EQ( wholeText( *mounted.room ), wholeText( *room ) );
}

TEST_F( Trees, haveNothingUnderWayWhereTheyAreReadOnly ) {
  room->colorCountIs( white, 1 );
  auto server = served( room, Access::readOnly );
  Mounted looking( *this, Access::readOnly ), writable( *this );
  writable.room->colorCountIs( white, 2 );  // it does not know yet that it cannot
  EXPECT_FALSE( looking.mount.isAcknowledged() || writable.mount.isAcknowledged() );
  EXPECT_TRUE( runUntil(
      [&] { return looking.mount.isSynchronised() && writable.mount.isSynchronised(); } ) );
  EXPECT_TRUE( looking.mount.isAcknowledged() && writable.mount.isAcknowledged() );
  EXPECT_EQ( looking.room->colorCount( white ) + writable.room->colorCount( white ), 2u );
  server.reset();
  EXPECT_TRUE( runUntil( [&] { return !looking.mount.isAcknowledged(); } ) );
}

// ---- what peers and paths may be

TEST_F( Trees, areNotHarmedByPeersThatTalkNonsenseOrDoNotRead ) {
  auto const server = served( room );
  Mounted mounted( *this );
  int const silent = strangerOf( socket ), loud = strangerOf( socket );
  ASSERT_TRUE( runUntil( [&] { return server->numClients() == 3; } ) );
  std::string const nonsense( 100, 'x' );
  EXPECT_EQ( send( loud, nonsense.data(), nonsense.size(), MSG_NOSIGNAL ), 100 );
  EXPECT_TRUE( runUntil( [&] { return server->numClients() == 2; } ) );
  for( unsigned i = 1; i <= 3000; ++i )
    room->colorCountIs( white, i );
  EXPECT_TRUE( runUntil( [&] { return mounted.room->colorCount( white ) == 3000; } ) );
  close( loud );
  close( silent );
  EXPECT_TRUE( runUntil( [&] { return server->numClients() == 1; } ) );
}

TEST_F( Trees, mayBeServedToBeReadOnly ) {
  auto const server = served( room, Access::readOnly );
  Mounted mounted( *this );
  ASSERT_TRUE( runUntil( [&] { return mounted.mount.isSynchronised(); } ) );
  EXPECT_EQ( std::filesystem::status( socket ).permissions(), std::filesystem::perms( 0666 ) );
  EXPECT_THROW( mounted.room->colorCountIs( white, 1 ), Koi::ReadOnlyException );
}

TEST_F( Trees, areServedAtFreePathsOnly ) {
  auto const refused = [&] { return refusal< ServeException >( [&] { served( room ); } ); };
  std::string const where = "cannot listen at " + socket + ": ";
  // 1. Somebody else's.
  {
    auto const server = served( newRoom() );
    EXPECT_EQ( std::filesystem::status( socket ).permissions(), std::filesystem::perms( 0660 ) );
    EXPECT_EQ( refused(), where + "another process does" );
    EXPECT_NE( strangerOf( socket ), -1 );
  }
  // 2. What is no socket.
  std::filesystem::create_directory( socket );
  EXPECT_EQ( refused(), where + "it is no socket" );
  std::filesystem::remove( socket );
  // 3. A path that the system's addresses cannot hold.
  socket = directory;
  for( int i = 0; i < 5; ++i )
    std::filesystem::create_directory( socket += "/" + std::string( 50, 'd' ) );
  socket += "/tree";
  auto const server = served( room );
  EXPECT_EQ( server->path(), socket );
  Mounted mounted( *this );
  EXPECT_TRUE( runUntil( [&] { return mounted.mount.isSynchronised(); } ) );
  socket = directory + "/" + std::string( 100, 'f' );
  EXPECT_EQ( refused(), "cannot listen at " + socket + ": File name too long" );
  socket = directory + "/nowhere/tree";
  EXPECT_EQ( refused(), "cannot listen at " + socket + ": No such file or directory" );
}

}  // namespace
