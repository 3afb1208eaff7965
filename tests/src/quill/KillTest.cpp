// KillTest.cpp: writers that are killed at any moment, judged against a ledger in memory that is
// marked before and after each call. LUMO_KILLS in the environment is how many; 2,000 without it.
#include <csignal>
#include <cstdlib>
#include <random>

#include <sys/mman.h>
#include <sys/wait.h>

#include <gtest/gtest.h>

#include "ProofValue.h"

using namespace Tests;
using namespace Quill;

namespace {

constexpr U32 numKeys = 4096;
Ntrace::Handler const quiet( -1, {} );

/// What each key is: a version, 0 when it is not there. Shared with the writers.
struct Ledger {
  U64 done[numKeys];
  U64 doing[numKeys];
  U32 key;  ///< the one whose call is under way; numKeys: none
  U64 version;
  U64 numCalls;
};

class SharedLedger {
 public:
  SharedLedger()
      : ledger_( static_cast< Ledger * >( mmap( nullptr, sizeof( Ledger ), PROT_READ | PROT_WRITE,
                                                MAP_SHARED | MAP_ANONYMOUS, -1, 0 ) ) ) {
    ledger_->key = numKeys;
  }
  ~SharedLedger() { munmap( ledger_, sizeof( Ledger ) ); }
  SharedLedger( SharedLedger const & ) = delete;
  SharedLedger & operator=( SharedLedger const & ) = delete;
  Ledger volatile * operator->() const { return ledger_; }

 private:
  Ledger * const ledger_;
};

/// Changes entries for ever.
[[noreturn]] void writes( ShmRoot const & shm, SharedLedger const & ledger, unsigned seed ) {
  std::mt19937 random( seed );
  auto parameters = proofParameters( numKeys );
  ProofWriter writer( shm.root(), "table", parameters, quiet );
  U32 const span = 1u << random() % 13;
  bool const removes = random() % 2;
  for( ;; ) {
    U32 const k = random() % span;
    U64 const version = ledger->version + 1;
    ledger->version = version;
    unsigned const what = random() % 8;
    bool const isRemoval = what < ( removes ? 5 : 1 );
    ledger->doing[k] = isRemoval ? 0 : version;
    ledger->key = k;
    if( isRemoval ) {
      writer.remove( { k } );
    } else if( what == 7 ) {
      writer.directWrite( { k } );
      writer.directValueIs( ProofValue::of( k, version ) );
      writer.directCommit();
    } else {
      writer.write( ProofValue::of( k, version ) );
    }
    ledger->done[k] = isRemoval ? 0 : version;
    ledger->key = numKeys;
    ledger->numCalls = ledger->numCalls + 1;
  }
}

TEST( Kill, nothingIsLost ) {
  char const * const text = std::getenv( "LUMO_KILLS" );
  int const kills = text ? std::atoi( text ) : 2000;
  unsigned const seed = std::random_device()();
  std::printf( "%d kills, seed %u\n", kills, seed );
  std::mt19937 random( seed );
  ShmRoot const shm;
  SharedLedger const ledger;
  { ProofWriter const first( shm.root(), "table", proofParameters( numKeys ), quiet ); }
  ProofReader reader( shm.root(), "table", quiet );
  int numInside = 0;
  for( int kill_ = 0; kill_ < kills; ++kill_ ) {
    unsigned const childSeed = random();
    U64 const before = ledger->numCalls;
    pid_t const child = fork();
    ASSERT_GE( child, 0 );
    if( child == 0 )
      writes( shm, ledger, childSeed );
    // 1. Killed at some moment of its work, now and then while it attaches.
    if( random() % 16 != 0 )
      while( ledger->numCalls == before )
        usleep( 50 );
    usleep( random() % 1500 );
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
             ( version == ledger->done[k] || ( k == inside && version == ledger->doing[k] ) );
    };
    for( U32 k = 0; k < numKeys; k += 1 + random() % 8 )
      ASSERT_TRUE( judged( k, reader.lookup( { k } ) ) ) << "kill " << kill_ << " key " << k;
    ProofWriter writer( shm.root(), "table", proofParameters( numKeys ), quiet );
    ASSERT_EQ( writer.attached(), Attached::toExisting ) << "kill " << kill_;
    for( U32 k = 0; k < numKeys; ++k )
      ASSERT_TRUE( judged( k, writer.value( { k } ) ) ) << "kill " << kill_ << " key " << k;
    if( inside != numKeys ) {
      auto const v = writer.value( { inside } );
      ledger->done[inside] = v ? v->version : 0;
      ledger->key = numKeys;
    }
  }
  std::printf( "%llu calls, %d kills inside a call\n",
               static_cast< unsigned long long >( ledger->numCalls ), numInside );
  EXPECT_GT( numInside, kills / 10 );
}

}  // namespace
