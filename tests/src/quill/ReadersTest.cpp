// ReadersTest.cpp: readers at full speed beside a writer that never rests, in threads and in
// processes, judged key by key against a ledger that the writer marks before and after each call.
// LUMO_LOOKUPS in the environment is how many look-ups all readers make; 2,000,000 without it.
#include <atomic>
#include <chrono>
#include <random>
#include <thread>

#include <sys/wait.h>

#include <gtest/gtest.h>

#include "OneMapping.h"
#include "ProofValue.h"

using namespace Tests;
using namespace Quill;

namespace {

// The race detector follows addresses, and takes a mapping for what had its address before.
#if defined( __SANITIZE_THREAD__ )
constexpr bool isWatched = true;
#else
constexpr bool isWatched = false;
#endif

// Stable keys come first and never go.
constexpr U32 numStable = 512, numOthers = 1 << 16, numKeys = numStable + numOthers;
constexpr U64 lookupsAnAttach = 200000, lookupsAWalk = 50000;
Ntrace::Handler const quiet( -1, {} );

using ProofRecord = Record< ProofValue >;
using Words = ValueWords< ProofRecord >;
using KeyOf = KeyWords< ProofRecord >;

Words wordsOf( U32 k, U64 version ) {
  Words w{};
  ProofRecord::put( ProofValue::of( k, version ), w.word );
  return w;
}

/// Relaxed: what is marked is to order nothing that the engine does not order itself.
class Mark {
 public:
  operator U64() const { return v_.load( std::memory_order_relaxed ); }
  void operator=( U64 v ) { v_.store( v, std::memory_order_relaxed ); }
  U64 operator+=( U64 v ) { return v_.fetch_add( v, std::memory_order_relaxed ) + v; }

 private:
  std::atomic< U64 > v_;
};

/// Of each key the version that the last call left and the one that the next may have, odd when it
/// is there; of each reader what became of it.
struct Ledger {
  struct Reader {
    Mark isDone, lookups, walks, retries;
    char fault[256];
  };
  Mark done[numKeys], doing[numKeys];
  Reader readers[2];
};

/// Some stable keys are touched more often than others.
U32 stable( std::mt19937 & random ) { return random() % ( 1u << random() % 10 ); }

// ---- the writer

/// Lets a table grow and shrink between nothing but its stable keys and numOthers more.
template< class Engine >
class Churn {
 public:
  Churn( Engine & engine, Ledger & ledger, unsigned seed )
      : engine_( engine ), ledger_( ledger ), random_( seed ) {
    for( U32 k = 0; k < numStable; ++k )
      becomes( k, true );
  }

  /// To another number of entries, in an order of chance.
  void phase() {
    U32 const wanted = random_() % ( 1u << random_() % 17 ), from = random_();
    for( U32 i = 0; i < numOthers && numThere_ != wanted; ++i ) {
      U32 const k = numStable + ( i * 0x9e3779b1 + from ) % numOthers;
      if( bool const isThere = ledger_.done[k] % 2; isThere != ( numThere_ < wanted ) ) {
        becomes( k, !isThere );
        numThere_ += isThere ? U32( -1 ) : 1;
      }
      if( i % 4 == 0 )
        becomes( stable( random_ ), true );
    }
    // Values change side by side: more of them than the queue holds, now and then.
    for( U32 i = random_() % 64; i-- > 0; )
      severalChange( random_() % ( numStable - most_ ) );
    ++numPhases;
  }

  U64 numPhases = 0, numSlotChanges = 0, numBucketChanges = 0, numCompactions = 0;

 private:
  static constexpr U32 most_ = 40;

  U64 begun( U32 k, bool isThere ) {
    U64 const now = ledger_.done[k], next = isThere ? now + 1 + now % 2 : now + now % 2;
    ledger_.doing[k] = next;
    return next;
  }
  void becomes( U32 k, bool isThere ) {
    U64 const version = begun( k, isThere );
    Words const value = wordsOf( k, version );
    if( !isThere ) {
      engine_.remove( value.key() );
    } else if( random_() % 8 == 0 ) {
      U32 * const at = engine_.directWrite( value.key() );
      constexpr U32 keyWords = KeyOf::count;
      storeWords< Mem::Plain, numWordsOf< ProofRecord > - keyWords >( at + keyWords,
                                                                      value.word + keyWords );
      engine_.directCommit();
    } else {
      engine_.write( value );
    }
    ledger_.done[k] = version;
    isCounted();
  }
  void severalChange( U32 first ) {
    Words values[most_];
    for( U32 i = 0; i < most_; ++i )
      values[i] = wordsOf( first + i, begun( first + i, true ) );
    engine_.write( std::span< Words const >( values ) );
    for( U32 i = 0; i < most_; ++i )
      ledger_.done[first + i] = U64( ledger_.doing[first + i] );
    isCounted();
  }
  void isCounted() {
    auto const counted = []( U64 & changes, U32 & was, U32 is ) {
      changes += std::exchange( was, is ) != is;
    };
    counted( numSlotChanges, slots_, engine_.slots().numSlots() );
    counted( numBucketChanges, buckets_, engine_.buckets().numBuckets() );
    counted( numCompactions, current_, engine_.queue().current() );
  }

  Engine & engine_;
  Ledger & ledger_;
  std::mt19937 random_;
  U32 numThere_ = 0;
  U32 slots_ = 0, buckets_ = 0, current_ = conquer1;
};

// ---- a reader

/// One that looks up key after key, and judges what it is told.
class Judge {
 public:
  Judge( Ledger & ledger, Ledger::Reader & result )
      : ledger_( ledger ), result_( result ), last_( numKeys ), walk_( numKeys ) {}

  /// `open` attaches to the table anew.
  template< class Open >
  void reads( Open open, U64 numLookups, unsigned seed ) {
    std::mt19937 random( seed );
    try {
      for( U64 next = 0; result_.lookups < numLookups && !*result_.fault; ) {
        auto const reader = open();
        auto & engine = reader->engine();
        for( next += lookupsAnAttach; result_.lookups < next && !*result_.fault; ) {
          for( U64 const walkAt = result_.lookups + lookupsAWalk; result_.lookups < walkAt; )
            if( random() % 65 == 0 )
              some( engine, random );
            else
              one( engine, chosen( random ) );
          walk( engine );
        }
        result_.retries += engine.numRetries();
      }
    } catch( Koi::Exception const & e ) {
      fault( e.what() );
    }
    result_.isDone = 1;
  }

 private:
  static U32 chosen( std::mt19937 & random ) {
    return random() % 2 ? stable( random ) : numStable + random() % numOthers;
  }
  void fault( std::string const & text ) {
    std::snprintf( result_.fault, sizeof result_.fault, "%s", text.c_str() );
  }

  template< class Engine >
  void one( Engine & engine, U32 k ) {
    Words value;
    U64 const before = ledger_.done[k];
    bool const found = engine.lookup( KeyOf{ { k, 0 } }, value );
    judge( k, found ? &value : nullptr, before );
  }
  template< class Engine >
  void some( Engine & engine, std::mt19937 & random ) {
    KeyOf keys[64];
    U64 before[64];
    for( U32 i = 0; i < 64; ++i ) {
      keys[i] = { { chosen( random ), 0 } };
      before[i] = ledger_.done[keys[i].word[0]];
    }
    engine.lookup( std::span< KeyOf const >( keys ), [&]( std::size_t i, Words const * value ) {
      judge( keys[i].word[0], value, before[i] );
    } );
  }
  template< class Engine >
  void walk( Engine & engine ) {
    result_.walks += 1;
    U32 stable = 0;
    Words value;
    for( bool is = engine.first( value ); is; is = engine.next( value.key(), value ) ) {
      U32 const k = value.word[0];
      if( k >= numKeys || std::exchange( walk_[k], result_.walks ) == result_.walks )
        return fault( "a walk met a key twice, or one from nowhere" );
      judge( k, &value, last_[k] );
      stable += k < numStable;
    }
    if( stable != numStable )
      fault( "a walk met " + std::to_string( stable ) + " stable keys" );
  }
  /// Whether the key has had that value, or was away, since it was at version `before`.
  void judge( U32 k, Words const * found, U64 before ) {
    result_.lookups += 1;
    U64 const after = ledger_.doing[k];
    if( !found ) {
      if( k < numStable || ( before % 2 && before == after ) )
        fault( "a key that is there was not found" );
      return;
    }
    ProofValue const v = ProofRecord::value( found->word );
    if( !v.isSound() || v.number != k )
      fault( "a torn value" );
    else if( v.version < last_[k] )
      fault( "a version that went back" );
    else if( v.version % 2 == 0 || v.version < before || v.version > after )
      fault( "a version from another time" );
    last_[k] = v.version;
  }

  Ledger & ledger_;
  Ledger::Reader & result_;
  std::vector< U64 > last_;  // of each key, as it was met
  std::vector< U64 > walk_;  // in which it was met
};

/// Has two readers beside a writer, so many of them in processes of their own, the rest in threads.
template< class Engine, class Open >
void proves( Engine & engine, Open open, unsigned numProcesses, U64 numLookups ) {
  if( char const * const text = std::getenv( "LUMO_LOOKUPS" ) )
    numLookups = std::strtoull( text, nullptr, 10 );
  unsigned const seed = std::random_device()();
  auto const start = std::chrono::steady_clock::now();
  Shared< Ledger > const ledger;
  Churn churn( engine, *ledger, seed );
  auto const reads = [&]( unsigned i ) {
    Judge( *ledger, ledger->readers[i] ).reads( open, numLookups / 2, seed + i );
  };
  std::vector< pid_t > processes;
  for( unsigned i = 0; i < numProcesses; ++i )
    if( processes.push_back( fork() ); processes.back() == 0 ) {
      reads( i );
      _exit( 0 );
    }
  {
    std::vector< std::jthread > threads;
    for( unsigned i = numProcesses; i < 2; ++i )
      threads.emplace_back( reads, i );
    while( !ledger->readers[0].isDone || !ledger->readers[1].isDone ) {
      churn.phase();
      for( unsigned i = 0; i < numProcesses; ++i )
        if( int status = 0; waitpid( processes[i], &status, WNOHANG ) > 0 && status != 0 )
          ledger->readers[i].isDone = 1;
    }
  }
  double const seconds =
      std::chrono::duration< double >( std::chrono::steady_clock::now() - start ).count();
  auto const & [a, b] = ledger->readers;
  std::printf(
      "seed %u, %.1f s: %.0f look-ups, %.0f walks, %.0f retries; writer: %.0f phases, %.0f "
      "resizes, %.0f splits and joins, %.0f compactions\n",
      seed, seconds, double( a.lookups + b.lookups ), double( a.walks + b.walks ),
      double( a.retries + b.retries ), double( churn.numPhases ), double( churn.numSlotChanges ),
      double( churn.numBucketChanges ), double( churn.numCompactions ) );
  EXPECT_STREQ( a.fault, "" );
  EXPECT_STREQ( b.fault, "" );
  EXPECT_GE( a.lookups + b.lookups, numLookups );
  EXPECT_TRUE( churn.numSlotChanges && churn.numBucketChanges && churn.numCompactions );
  EXPECT_EQ( ( Validator( engine ).fault() ), "" );
}

TEST( Readers, ofFilesMeetWhatWas ) {
  ShmRoot const shm;
  ProofWriter writer( shm.root(), "table", proofParameters(), quiet );
  proves(
      writer.engine(),
      [&] { return std::make_unique< ProofReader >( shm.root(), "table", quiet ); },
      isWatched ? 2 : 1, isWatched ? 200000 : 2000000 );
}

TEST( Readers, ofOneMappingMeetWhatWas ) {
  using Attach = TableAttach< ProofRecord, OneMapping >;
  using Engine = TableReader< ProofRecord, OneMapping >;
  OneMapping::Dir dir;
  auto const parameters = proofParameters();
  Attach attach( dir,
                 { { ProofRecord::valueType, parameters.classType, ProofRecord::valueSize,
                     parameters.maxSlots, 1 },
                   { parameters.minSlots, parameters.maxSlots },
                   parameters.initialSlots },
                 quiet );
  auto const writer = attach.attach();
  struct Opened {
    Engine engine_;
    Engine & engine() { return engine_; }
  };
  proves(
      *writer,
      [&] {
        return std::make_unique< Opened >(
            Opened{ { dir.open( SlotTable::fileName, OneMapping::File::readOnly ),
                      dir.open( BucketTable::fileName, OneMapping::File::readOnly ) } } );
      },
      0, 200000 );
}

}  // namespace
