// EntityBench.cpp: what a change of an entity costs: without observers beside a compare and a
// store, with observers beside plain virtual calls; and, while a peer of its log does not read,
// whether the changes cost memory.

#include <malloc.h>
#include <chrono>
#include <cstdio>
#include <deque>
#include <random>
#include <utility>
#include <vector>

#include <Lumo/Bridging.h>
#include <Lumo/LumoHitless.h>
#include <koi/Mirror.h>

#include "Pairs.h"

namespace {

using Bench::Heap;
using Bridging::FdbStatus;
using Bridging::LearnedHost;
using Lumo::LumoHitlessState;

constexpr std::size_t numChanges = 4096;

// ---- mutators and observers

[[gnu::noinline]] void storeIfOther( bool & up, bool v ) {
  if( up != v )
    up = v;
}

struct Watcher final : LumoHitlessState::NotifieeConst {
  void onLumoSubIntfUp() override { ++numCalls; }
  std::uint64_t numCalls = 0;
};

/// A state and what watches it. The plain calls are of the same virtual function, in a library.
struct Watched {
  explicit Watched( std::size_t numWatchers ) : watchers( numWatchers ) {
    for( Watcher & watcher : watchers ) {
      watcher.notifierIs( state.ptr() );
      callees.push_back( &watcher );
    }
  }
  std::uint64_t called() {
    std::uint64_t sum = 0;
    for( Watcher & watcher : watchers )
      sum += std::exchange( watcher.numCalls, 0 );
    return sum;
  }

  Koi::Ptr< LumoHitlessState > state = Lumo::lumoHitlessStateFactory( Koi::Name( "state" ) );
  std::deque< Watcher > watchers;
  std::vector< LumoHitlessState::NotifieeConst * > callees;
};

void addMutator( LumoHitlessState & state, bool & plain ) {
  Bench::addPair(
      "set/unobserved", numChanges, Heap::untouched,
      [&] {
        for( std::size_t i = 1; i <= numChanges; ++i )
          state.lumoSubIntfUpIs( i % 2 == 1 );
        return std::uint64_t{ state.lumoSubIntfUp() };
      },
      [&] {
        for( std::size_t i = 1; i <= numChanges; ++i )
          storeIfOther( plain, i % 2 == 1 );
        return std::uint64_t{ plain };
      } );
}

void addObservers( char const * name, Watched & watched ) {
  Bench::addPair(
      name, numChanges * watched.callees.size(), Heap::untouched,
      [&] {
        for( std::size_t i = 1; i <= numChanges; ++i )
          watched.state->lumoSubIntfUpIs( i % 2 == 1 );
        return watched.called();
      },
      [&] {
        for( std::size_t i = 0; i < numChanges; ++i )
          for( auto * const callee : watched.callees )
            callee->onLumoSubIntfUp();
        return watched.called();
      } );
}

// ---- the storm

std::size_t bytesTaken() {
  auto const info = mallinfo2();
  return info.uordblks + info.hblkhd;
}

/// Two mirrors that have synchronised; then the proxy reads no more.
struct DeafPeer {
  DeafPeer() {
    while( source.hasOutput() || proxy.hasOutput() ) {
      carry( source, proxy );
      carry( proxy, source );
    }
  }
  void carry( Koi::Mirror & from, Koi::Mirror & to ) {
    from.flush( *bytes );
    to.received( bytes->data(), bytes->size() );
    bytes->cut( 0 );
  }

  Koi::Ptr< FdbStatus > const status = Bridging::fdbStatusFactory( Bridging::Fid( 1 ) );
  Koi::Ptr< FdbStatus > const copy = Bridging::fdbStatusFactory( Bridging::Fid( 1 ) );
  Koi::Ptr< Koi::NboAttrLog::Out > const bytes{ new Koi::NboAttrLog::Out };
  Koi::Mirror source{ status, Koi::Mirror::source };
  Koi::Mirror proxy{ copy, Koi::Mirror::proxy };
};

/// Hosts come, move and go; what is written to the peer is never acknowledged.
class Storm {
 public:
  static constexpr std::size_t numKeys = 1000;

  explicit Storm( DeafPeer & peer ) : peer_( peer ) {}

  void blow( std::size_t numTimes ) {
    for( std::size_t i = 0; i < numTimes; ++i ) {
      std::uint64_t const bits = random_();
      Wirex::EthAddr const address( 0, 0, 0x5e, 0, static_cast< Koi::U8 >( bits % numKeys >> 8 ),
                                    static_cast< Koi::U8 >( bits % numKeys ) );
      if( bits >> 61 == 0 )
        peer_.status->learnedHostDel( address );
      else
        peer_.status->learnedHostIs(
            LearnedHost( address, Wirex::IntfId( 32 ), ++moves_, 1.5, Bridging::EntryType() ) );
      if( i % 1000 == 0 )
        peer_.source.flush( *peer_.bytes );
    }
  }

 private:
  DeafPeer & peer_;
  std::mt19937_64 random_{ 1 };
  Koi::U32 moves_ = 0;
};

/// False when the changes cost memory.
bool stormIsFree() {
  constexpr std::size_t numBlows = 10'000'000;
  constexpr std::size_t bytesAKeyMost = 64;  // of its mark
  DeafPeer peer;
  Storm storm( peer );
  storm.blow( 20 * Storm::numKeys );  // every key was there once, and its mark is
  std::size_t const before = bytesTaken();
  auto const begun = std::chrono::steady_clock::now();
  storm.blow( numBlows );
  std::chrono::duration< double, std::nano > const took = std::chrono::steady_clock::now() - begun;
  std::size_t const after = bytesTaken();
  std::printf( "%-24s %9.1f   nanoseconds a change; heap %zu bytes before, %zu after\n\n",
               "storm/10M", took.count() / numBlows, before, after );
  return after <= before + bytesAKeyMost * Storm::numKeys;
}

}  // namespace

int main( int argc, char ** argv ) {
  bool const isFree = stormIsFree();
  if( !isFree )
    std::fprintf( stderr, "storm: memory grew with the number of changes\n" );
  bool plain = false;
  Watched none( 0 ), one( 1 ), few( 4 ), many( 16 );
  addMutator( *none.state, plain );
  addObservers( "observed/1", one );
  addObservers( "observed/4", few );
  addObservers( "observed/16", many );
  int const status = Bench::runPairs( argc, argv );
  return isFree ? status : 1;
}
