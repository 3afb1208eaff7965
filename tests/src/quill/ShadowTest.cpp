// ShadowTest.cpp: copies of a table, kept by kicks: beside a writer in the same process, and beside
// writers that come, go and are killed.
#include <csignal>
#include <map>
#include <random>

#include <sys/mman.h>
#include <sys/wait.h>

#include <gtest/gtest.h>

#include <quill/QuillShadow.h>

#include "ProofValue.h"

using namespace Tests;
using namespace Quill;

namespace {

Ntrace::Handler const quiet( -1, {} );

/// A copy, and what its owner was told: the versions of the keys, as they were looked up.
template< Keeps keeps >
struct Follower {
  using Shadow = QuillShadow< ProofValue, keeps >;

  Follower( Koi::Activity * activity, Mem::RootPath const & root )
      : shadow( activity, root, "table",
                { [this] { ready(); }, [this]( ProofKey const & key ) { told( key ); },
                  [this]( bool is ) { numAttached += is; } },
                quiet ) {}

  void ready() {
    U32 place = 0;
    while( auto const v = shadow.next( place ) )
      known[v->number] = v->version;
    isReady = true;
  }
  void told( ProofKey const & key ) {
    ++numTold;
    auto const v = shadow.lookup( key );
    if( !v ) {
      numGone += known.erase( key.number );
      EXPECT_LT( key.number, firstStable ) << "a key that stays was reported as gone";
      return;
    }
    EXPECT_TRUE( v->isSound() );
    EXPECT_GE( v->version, known[key.number] );
    known[key.number] = v->version;
  }

  static constexpr U32 firstStable = 100000;
  std::map< U32, U64 > known;
  U64 numTold = 0, numGone = 0, numAttached = 0;
  bool isReady = false;
  Shadow shadow;
};
using ValueFollower = Follower< Keeps::values >;
using KeyFollower = Follower< Keeps::keys >;

TableParameters kicking( Koi::Activity * activity ) {
  auto p = proofParameters();
  p.activity = activity;
  return p;
}

/// Runs the activity until `isSo`, at most for 30 seconds.
template< class Condition >
bool runUntil( Koi::Activity & activity, Condition isSo ) {
  for( int i = 0; i < 30000 && !isSo(); ++i )
    activity.runFor( 0.001 );
  return isSo();
}

std::map< U32, U64 > contentOf( Mem::RootPath const & root ) {
  std::map< U32, U64 > all;
  ProofReader reader( root, "table", quiet );
  for( auto v = reader.first(); v; v = reader.next( { v->number } ) )
    all.emplace( v->number, v->version );
  return all;
}

TEST( Shadow, followsAWriterThatKicksIt ) {
  ShmRoot const shm;
  auto const activity = Koi::activityFactory();
  // 1. The reader comes first.
  ValueFollower values( activity.ptr(), shm.root() );
  KeyFollower keys( activity.ptr(), shm.root() );
  activity->runFor( 0.02 );
  EXPECT_FALSE( values.shadow.isAttached() );
  std::optional< ProofWriter > writer;
  writer.emplace( shm.root(), "table", kicking( activity.ptr() ), quiet );
  for( U32 i = 0; i < 1000; ++i )
    writer->write( ProofValue::of( i, 1 ) );
  auto const areKicked = [&] { return values.shadow.isKicked() && keys.shadow.isKicked(); };
  ASSERT_TRUE( runUntil( *activity, areKicked ) );
  ASSERT_TRUE( runUntil( *activity, [&] { return values.isReady && keys.isReady; } ) );
  EXPECT_EQ( values.known.size(), 1000u );
  EXPECT_EQ( writer->kicks()->numReaders(), 2u );
  // 2. Each change is told once, and nobody is woken who is awake.
  auto const toldBefore = values.numTold;
  auto const kicksBefore = writer->kicks()->numKicks();
  for( U32 i = 0; i < 300; ++i )
    writer->write( ProofValue::of( i, 2 ) );
  writer->remove( { 7 } );
  writer->write( ProofValue::of( 8, 2 ) );  // the same value
  EXPECT_LE( writer->kicks()->numKicks() - kicksBefore, 2u );
  auto const isRight = [&] {
    auto const content = contentOf( shm.root() );
    return values.known == content && keys.known == content;
  };
  ASSERT_TRUE( runUntil( *activity, isRight ) );
  EXPECT_EQ( values.numTold - toldBefore, 300u );
  EXPECT_EQ( values.numGone, 1u );
  EXPECT_FALSE( values.shadow.lookup( { 7 } ) );
  EXPECT_EQ( values.shadow.lookup( { 8 } )->version, 2u );
  // 3. The writer goes and comes again; what it changed meanwhile is told, nothing else.
  writer.reset();
  ASSERT_TRUE( runUntil( *activity, [&] { return !values.shadow.isKicked(); } ) );
  writer.emplace( shm.root(), "table", kicking( activity.ptr() ), quiet );
  EXPECT_EQ( writer->attached(), Attached::toExisting );
  writer->write( ProofValue::of( 5000, 1 ) );
  auto const told = values.numTold;
  ASSERT_TRUE( runUntil( *activity, [&] { return areKicked() && isRight(); } ) );
  EXPECT_EQ( values.numTold - told, 1u );
  // 4. The files are replaced: differences are told.
  writer->cleanup();
  writer.reset();
  writer.emplace( shm.root(), "table", kicking( activity.ptr() ), quiet );
  EXPECT_EQ( writer->attached(), Attached::toNew );
  for( U32 i = 0; i < 300; ++i )
    if( i != 7 )
      writer->write( ProofValue::of( i, 2 ) );
  auto const gone = values.numGone;
  ASSERT_TRUE( runUntil( *activity, isRight ) );
  EXPECT_EQ( values.numGone - gone, 701u );
  EXPECT_EQ( values.numAttached, 1u );
}

TEST( Shadow, looksNowAndThenWhereNobodyKicks ) {
  ShmRoot const shm;
  auto const activity = Koi::activityFactory();
  ProofWriter writer( shm.root(), "table", proofParameters(), quiet );
  KeyFollower keys( activity.ptr(), shm.root() );
  ASSERT_TRUE( runUntil( *activity, [&] { return keys.isReady; } ) );
  EXPECT_FALSE( keys.shadow.isKicked() );
  writer.write( ProofValue::of( 1, 1 ) );
  EXPECT_TRUE( runUntil( *activity, [&] { return keys.known.size() == 1; } ) );
  // More deletions than the queue keeps for a reader that it does not know.
  for( U32 round = 0; round < 50; ++round )
    for( U32 i = 0; i < 200; ++i ) {
      writer.write( ProofValue::of( i, 2 + round ) );
      if( i % 3 )
        writer.remove( { i } );
    }
  EXPECT_TRUE( runUntil( *activity, [&] { return keys.known == contentOf( shm.root() ); } ) );
}

TEST( Shadow, costsNoKickAsLongAsItStaysAwake ) {
  ShmRoot const shm;
  auto const activity = Koi::activityFactory();
  ProofWriter writer( shm.root(), "table", kicking( activity.ptr() ), quiet );
  ValueFollower values( activity.ptr(), shm.root() );
  values.shadow.staysAwakeIs( true );
  ASSERT_TRUE( runUntil( *activity, [&] { return values.isReady && values.shadow.isKicked(); } ) );
  auto const kicks = writer.kicks()->numKicks();
  for( U32 i = 0; i < 100; ++i ) {
    writer.write( ProofValue::of( i, 1 ) );
    ASSERT_TRUE( runUntil( *activity, [&] { return values.numTold == i + 1; } ) );
  }
  EXPECT_EQ( writer.kicks()->numKicks(), kicks );
  values.shadow.staysAwakeIs( false );
  ASSERT_TRUE( runUntil( *activity, [&] {
    writer.write( ProofValue::of( 1, 1 + values.numTold ) );
    return writer.kicks()->numKicks() > kicks;
  } ) );
}

TEST( Shadow, corruptionDetachesAndIsReportedToTheWriter ) {
  ShmRoot const shm;
  auto const activity = Koi::activityFactory();
  ProofWriter writer( shm.root(), "table", kicking( activity.ptr() ), quiet );
  ValueFollower values( activity.ptr(), shm.root() );
  ASSERT_TRUE( runUntil( *activity, [&] { return values.isReady && values.shadow.isKicked(); } ) );
  values.shadow.corruptionDetected( "slot 3 is odd" );
  EXPECT_FALSE( values.shadow.isAttached() );
  auto const report = shm.path() + "/table/corruption-detected";
  EXPECT_TRUE( runUntil( *activity, [&] { return std::filesystem::exists( report ); } ) );
  // It comes again by itself.
  writer.write( ProofValue::of( 1, 1 ) );
  EXPECT_TRUE( runUntil( *activity, [&] { return values.known.size() == 1; } ) );
}

/// What the writing process and this one share.
struct Shared {
  U64 volatile version;
  bool volatile mayEnd;
  U64 nextVersion() {
    version = version + 1;
    return version;
  }
};

/// Changes keys until it is told to end, or killed.
[[noreturn]] void churns( Mem::RootPath const & root, Shared * shared, unsigned seed ) {
  std::mt19937 random( seed );
  auto const activity = Koi::activityFactory();
  {
    ProofWriter writer( root, "table", kicking( activity.ptr() ), quiet );
    for( U32 i = 0; i < 200; ++i )
      if( shared->version < 200 )
        writer.write( ProofValue::of( ValueFollower::firstStable + i, shared->nextVersion() ) );
    do {
      U32 const span = 1u << random() % 13;
      bool const removes = random() % 2;
      for( int i = 0; i < 300; ++i ) {
        U32 const k = random() % span;
        if( random() % 8 < ( removes ? 6 : 2 ) )
          writer.remove( { k } );
        else
          writer.write( ProofValue::of( random() % 20 ? k : ValueFollower::firstStable + k % 200,
                                        shared->nextVersion() ) );
      }
      activity->runFor( 0 );
    } while( !shared->mayEnd );
  }
  _exit( 0 );
}

/// Follows until it is killed.
[[noreturn]] void follows( Mem::RootPath const & root ) {
  auto const activity = Koi::activityFactory();
  ValueFollower values( activity.ptr(), root );
  activity->run();
  _exit( 1 );
}

TEST( Shadow, convergesBesideWritersThatAreKilled ) {
  char const * const text = std::getenv( "LUMO_ROUNDS" );
  int const rounds = text ? std::atoi( text ) : 200;
  unsigned const seed = std::random_device()();
  SCOPED_TRACE( "seed " + std::to_string( seed ) );
  std::mt19937 random( seed );
  ShmRoot const shm;
  auto * const shared = static_cast< Shared * >( mmap(
      nullptr, sizeof( Shared ), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0 ) );
  auto const activity = Koi::activityFactory();
  ValueFollower values( activity.ptr(), shm.root() );
  KeyFollower keys( activity.ptr(), shm.root() );
  std::unique_ptr< ValueFollower > late;
  for( int round = 0; round < rounds && !testing::Test::HasFailure(); ++round ) {
    bool const isKilled = round % 3 != 2;
    shared->mayEnd = false;
    pid_t const child = fork();
    if( child == 0 )
      churns( shm.root(), shared, seed + static_cast< unsigned >( round ) );
    // A slow reader, one that comes while everything changes, one that is stopped or killed.
    keys.shadow.sampleIs( round % 2 ? KeyFollower::Shadow::defaultSample : 3 );
    keys.shadow.yieldTimeIs( round % 2 ? KeyFollower::Shadow::defaultYieldTime : 0 );
    if( round % 5 == 0 )
      late = std::make_unique< ValueFollower >( activity.ptr(), shm.root() );
    pid_t const other = fork();
    if( other == 0 )
      follows( shm.root() );
    usleep( random() % 4000 );
    kill( other, round % 2 ? SIGSTOP : SIGKILL );
    // Those here are as if they were stopped, every fourth time.
    if( round % 4 )
      activity->runFor( 0.001 * static_cast< double >( random() % 8 ) );
    kill( other, SIGKILL );
    waitpid( other, nullptr, 0 );
    if( isKilled )
      kill( child, SIGKILL );
    else
      shared->mayEnd = true;
    int status = 0;
    waitpid( child, &status, 0 );
    if( isKilled )
      continue;
    ASSERT_TRUE( WIFEXITED( status ) && WEXITSTATUS( status ) == 0 );
    auto const content = contentOf( shm.root() );
    EXPECT_TRUE( runUntil( *activity,
                           [&] {
                             return values.known == content && keys.known == content &&
                                    late->known == content;
                           } ) )
        << "round " << round << ": " << content.size() << " entries, known " << values.known.size()
        << ", " << keys.known.size() << " and " << late->known.size();
  }
  std::printf( "%d rounds, %llu changes, %llu told, %llu gone\n", rounds,
               static_cast< unsigned long long >( shared->version ),
               static_cast< unsigned long long >( values.numTold ),
               static_cast< unsigned long long >( values.numGone ) );
  munmap( shared, sizeof( Shared ) );
}

}  // namespace
