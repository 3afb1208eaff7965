// MountTest.cpp: tables that come, go and are replaced in whatever order: with watches, where the
// system has none left to give, and where so much happened that the rest was not told.
#include <array>
#include <fstream>
#include <set>

#include <fcntl.h>
#include <sched.h>
#include <sys/wait.h>

#include <gtest/gtest.h>

#include <quill/QuillMap.h>

#include "ProofValue.h"

using namespace Tests;
using namespace Quill;
namespace fs = std::filesystem;

namespace {

using Map = QuillMap< ProofValue >;

/// A table's life, as readers of all kinds see it.
class Life {
 public:
  /// What happens while the reader's activity does not run, before the table changes.
  using Meanwhile = std::function< void( Life & ) >;

  Life( Meanwhile meanwhile, bool isWatched )
      : meanwhile_( std::move( meanwhile ) ), isWatched_( isWatched ) {
    come( readers_ );
  }

  void live() {
    // The readers come first, and there is but the way to the root.
    EXPECT_FALSE( runUntil( [&] { return readers_[0].isAttached(); }, 20 ) );
    comes( "the first", [] {} );
    comes( "another generation", [&] { fs::remove( root_ / "kindle" ); } );
    comes( "the table anew", [&] { fs::remove_all( root_ / "a" ); } );
    comes( "the root anew", [&] { fs::remove_all( root_ ); } );
    comes( "a table in place of one that was moved away",
           [&] { fs::rename( table_, root_ / "a" / "old" ); } );
    comes( "a root in place of one that was moved away",
           [&] { fs::rename( root_, root_.string() + "-old" ); } );
    Readers late{ Map( "a/table", {}, quiet_ ), Map( "a/table", {}, quiet_ ),
                  Map( "a/table", {}, quiet_ ) };
    come( late );
    EXPECT_TRUE( runUntil( [&] { return areRight( late ); } ) );
  }

  /// As many events in the table's directory as the system keeps, and more.
  void overflow() {
    unsigned most = 0;
    std::ifstream( "/proc/sys/fs/inotify/max_queued_events" ) >> most;
    auto const name = ( fs::is_directory( table_ ) ? table_ : fs::path( shm_.path() ) ) / "some";
    for( unsigned i = 0; i < most; ++i ) {
      close( open( name.c_str(), O_CREAT | O_CLOEXEC | O_WRONLY, 0600 ) );
      unlink( name.c_str() );
    }
  }

 private:
  using Readers = std::array< Map, 3 >;

  void come( Readers & readers ) {
    for( std::size_t i = 0; i < readers.size(); ++i )
      readers[i].init( kinds[i], false, 1, parameters() );
  }
  template< class Change >
  void comes( char const * what, Change change ) {
    SCOPED_TRACE( what );
    if( testing::Test::HasFailure() )
      return;
    writer_.reset();
    meanwhile_( *this );
    change();
    writer_.emplace( "a/table", Map::Handlers{}, quiet_ );
    writer_->init( QuillType::writer, true, 1000, parameters() );
    auto const isFollowed = [&] { return areRight( readers_ ); };
    writer_->write( ProofValue::of( ++number_, 1 ) );
    EXPECT_TRUE( runUntil( isFollowed ) );
    writer_->write( ProofValue::of( ++number_, 1 ) );
    EXPECT_TRUE( runUntil( isFollowed ) );
    EXPECT_EQ( keysOf( *writer_ ).size(), 2u );
    // These files' directory is watched now, if any.
    auto const isWatched = [&] {
      auto const sign = "sign" + std::to_string( number_ );
      std::ofstream( table_ / sign ) << "";
      fs::remove( table_ / sign );
      return lastEvents_.contains( sign );
    };
    EXPECT_EQ( runUntil( isWatched, isWatched_ ? 30000 : 20 ), isWatched_ );
    lastEvents_.clear();
  }
  template< class Condition >
  bool runUntil( Condition isSo, int milliseconds = 30000 ) {
    for( int i = 0; i < milliseconds && !isSo(); ++i )
      activity_->runFor( 0.001 );
    return isSo();
  }
  bool areRight( Readers & readers ) {
    return std::ranges::all_of(
        readers, [&]( Map & reader ) { return keysOf( reader ) == keysOf( *writer_ ); } );
  }
  static std::set< U32 > keysOf( Map & map ) {
    std::set< U32 > all;
    ProofValue v;
    Map::Hint hint;
    for( bool is = map.first( v, hint ); is; is = map.next( { v.number }, v, hint ) )
      all.insert( v.number );
    return all;
  }
  QuillParameters parameters() const {
    QuillParameters p;
    p.activity = activity_.ptr();
    p.root = Mem::RootPath( root_.string() );
    return p;
  }
  void traced( std::string const & line ) {
    if( auto const at = line.find( "notify() eventName:" ); at != line.npos )
      lastEvents_.insert( line.substr( line.find( ':', at ) + 1 ) );
  }

  Meanwhile const meanwhile_;
  bool const isWatched_;
  ShmRoot const shm_;
  fs::path const root_ = shm_.path() + "/root", table_ = root_ / "a" / "table";
  std::set< std::string > lastEvents_;
  Ntrace::Handler const quiet_{ -1, {} };
  Ntrace::Handler const trace_{ 7, [this]( int, std::string const & line ) { traced( line ); } };
  Koi::Ptr< Koi::Activity > const activity_ = Koi::activityFactory();
  static constexpr QuillType kinds[] = { QuillType::reader, QuillType::keyshadow,
                                         QuillType::shadow };
  Readers readers_{ Map( "a/table", {}, trace_ ), Map( "a/table", {}, trace_ ),
                    Map( "a/table", {}, trace_ ) };
  std::optional< Map > writer_;
  U32 number_ = 0;
};

TEST( Mount, followsFilesThatAreReplaced ) {
  Life( []( Life & ) {}, true ).live();
}

TEST( Mount, followsWhenEventsAreLost ) {
  Life( []( Life & life ) { life.overflow(); }, true ).live();
}

TEST( Mount, followsWithoutWatches ) {
  constexpr int notPermitted = 77;
  std::vector< pid_t > children;
  for( char const * const what : { "max_inotify_instances", "max_inotify_watches" } ) {
    children.push_back( fork() );
    if( children.back() != 0 )
      continue;
    // A user of its own, for whom there is none.
    if( unshare( CLONE_NEWUSER ) != 0 ||
        !( std::ofstream( std::string( "/proc/sys/user/" ) + what ) << 0 << std::flush ) )
      _exit( notPermitted );
    Life( []( Life & ) {}, false ).live();
    std::fflush( nullptr );
    _exit( HasFailure() );
  }
  int all = 0;
  for( pid_t const child : children ) {
    int status = 0;
    waitpid( child, &status, 0 );
    EXPECT_TRUE( WIFEXITED( status ) );
    all = std::max( all, WEXITSTATUS( status ) );
  }
  if( all == notPermitted )
    GTEST_SKIP() << "this user can have no user of its own without watches";
  EXPECT_EQ( all, 0 );
}

}  // namespace
