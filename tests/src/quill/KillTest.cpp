// KillTest.cpp: writers that are killed at any moment, judged against a ledger in memory that is
// marked before and after each call. In the environment LUMO_KILLS is how many, 500 without it, and
// LUMO_KILL_ENTRIES how many entries the table begins with, 4,096 without it.
#include <csignal>
#include <cstdlib>
#include <random>

#include <sys/wait.h>

#include <gtest/gtest.h>

#include "ProofValue.h"

using namespace Tests;
using namespace Quill;

namespace {

U32 wished( char const * name, U32 without ) {
  char const * const text = std::getenv( name );
  return text ? static_cast< U32 >( std::strtoul( text, nullptr, 10 ) ) : without;
}

U32 const numKeys = wished( "LUMO_KILL_ENTRIES", 4096 );
Ntrace::Handler const quiet( -1, {} );

/// What each key is: a version, 0 when it is not there. Shared with the writers.
struct Ledger {
  U32 key;  ///< the one whose call is under way; numKeys: none
  U32 isAttached;
  U64 version;
  U64 numCalls;
  struct {
    U64 done, doing;
  } of[1];  // numKeys
};

using SharedLedger = Shared< Ledger volatile >;

struct Writing {
  ShmRoot const & shm;
  SharedLedger const & ledger;
  ProofWriter writer{ shm.root(), "table", proofParameters( numKeys ), quiet };

  void change( U32 k, bool isRemoval, bool inPlace ) {
    U64 const version = isRemoval ? 0 : ledger->version + 1;
    if( !isRemoval )
      ledger->version = version;
    ledger->of[k].doing = version;
    ledger->key = k;
    if( isRemoval ) {
      writer.remove( { k } );
    } else if( inPlace ) {
      writer.directWrite( { k } );
      writer.directValueIs( ProofValue::of( k, version ) );
      writer.directCommit();
    } else {
      writer.write( ProofValue::of( k, version ) );
    }
    ledger->of[k].done = version;
    ledger->key = numKeys;
    ledger->numCalls = ledger->numCalls + 1;
  }
  /// To where one more entry makes the table grow, or one less makes it shrink.
  void goToAnEdge( std::mt19937 & random ) {
    auto const & slots = writer.engine().slots();
    bool const removes = random() % 2;
    U32 const from = random() % numKeys;
    for( U32 i = 0; i < numKeys; ++i ) {
      U32 const k = ( from + i ) % numKeys;
      if( removes ? slots.occupiedSlots() <= slots.shrinkThreshold() / 2
                  : slots.occupiedSlots() == slots.numSlots() )
        return;
      if( removes == ( ledger->of[k].done != 0 ) )
        change( k, removes, false );
    }
  }
};

/// Changes entries for ever.
[[noreturn]] void writes( ShmRoot const & shm, SharedLedger const & ledger, unsigned seed ) {
  std::mt19937 random( seed );
  Writing writing{ shm, ledger };
  ledger->isAttached = 1;
  U32 const span = std::min( numKeys, 1u << random() % 21 );
  bool const removes = random() % 2;
  for( ;; ) {
    unsigned const what = random() % 8;
    writing.change( random() % span, what < ( removes ? 5 : 1 ), what == 7 );
  }
}

TEST( Kill, nothingIsLost ) {
  U32 const kills = wished( "LUMO_KILLS", 500 ), moments = 1500 + numKeys / 20;
  unsigned const seed = std::random_device()();
  std::printf( "%u kills, seed %u\n", kills, seed );
  std::mt19937 random( seed );
  ShmRoot const shm;
  SharedLedger const ledger( sizeof( Ledger ) + numKeys * sizeof( Ledger::of ) );
  ledger->key = numKeys;
  {
    Writing first{ shm, ledger };
    for( U32 k = 0; k < numKeys; ++k )
      first.change( k, false, false );
  }
  ProofReader reader( shm.root(), "table", quiet );
  U32 numInside = 0;
  for( U32 kill_ = 0; kill_ < kills; ++kill_ ) {
    unsigned const childSeed = random();
    ledger->isAttached = 0;
    pid_t const child = fork();
    ASSERT_GE( child, 0 );
    if( child == 0 )
      writes( shm, ledger, childSeed );
    // 1. Killed at some moment of its work, now and then while it attaches.
    bool const isAttached = random() % 16 != 0;
    while( isAttached && !ledger->isAttached )
      usleep( 50 );
    usleep( random() % ( isAttached ? moments : 8 * moments ) );
    ASSERT_EQ( kill( child, SIGKILL ), 0 );
    ASSERT_EQ( waitpid( child, nullptr, 0 ), child );
    // 2. What it left serves readers, and then a writer.
    U32 const inside = ledger->key;
    numInside += inside != numKeys;
    ASSERT_FALSE( reader.isReplaced() );
    auto const judged = [&]( U32 k, std::optional< ProofValue > const & v ) {
      U64 const version = v ? v->version : 0;
      bool const isSound = !v || ( v->isSound() && v->number == k );
      return isSound &&
             ( version == ledger->of[k].done || ( k == inside && version == ledger->of[k].doing ) );
    };
    for( U32 k = 0; k < numKeys; k += 1 + random() % 8 )
      ASSERT_TRUE( judged( k, reader.lookup( { k } ) ) ) << "kill " << kill_ << " key " << k;
    Writing next{ shm, ledger };
    ASSERT_EQ( next.writer.attached(), Attached::toExisting ) << "kill " << kill_;
    for( U32 k = 0; k < numKeys; ++k )
      ASSERT_TRUE( judged( k, next.writer.value( { k } ) ) ) << "kill " << kill_ << " key " << k;
    if( inside != numKeys ) {
      auto const v = next.writer.value( { inside } );
      ledger->of[inside].done = v ? v->version : 0;
      ledger->key = numKeys;
    }
    if( random() % 4 == 0 )
      next.goToAnEdge( random );
  }
  std::printf( "%llu calls, %u kills inside a call\n",
               static_cast< unsigned long long >( ledger->numCalls ), numInside );
  EXPECT_GT( numInside, kills / 10 );
}

}  // namespace
