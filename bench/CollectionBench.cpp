// CollectionBench.cpp: what a hashed collection of learned hosts costs, beside a hash map of Boost
// with the same hash; and the memory of a member while a log is attached.

#include <algorithm>
#include <cstdio>
#include <optional>
#include <random>
#include <vector>

#include <Lumo/Bridging.h>
#include <koi/Collections.h>
#include <boost/unordered_map.hpp>

#include "Pairs.h"

namespace {

using Bench::Heap;
using Bridging::LearnedHost;
using Wirex::EthAddr;

struct HashOfKey {
  std::size_t operator()( EthAddr const & address ) const { return address.hash(); }
};
using Plain = boost::unordered_map< EthAddr, LearnedHost, HashOfKey >;
class Tag;
using Ours = Koi::HashMap< Tag, EthAddr, LearnedHost >;

std::vector< EthAddr > addresses( std::size_t count, unsigned seed ) {
  std::mt19937_64 bits( seed );
  std::vector< EthAddr > all;
  for( std::size_t i = 0; i < count; ++i ) {
    std::uint64_t const word = bits();
    all.push_back( EthAddr::ofBytes( reinterpret_cast< Koi::U8 const * >( &word ) ) );
  }
  return all;
}

LearnedHost hostOf( EthAddr const & address ) {
  return LearnedHost( address, Wirex::IntfId( 32 ), address.bytes()[0], 1.5,
                      Bridging::EntryType() );
}

void fill( Ours & map, std::vector< EthAddr > const & keys ) {
  Koi::U64 now = 0;
  for( EthAddr const & key : keys )
    map.koiSet( key, hostOf( key ), { ++now } );
}
void fill( Plain & map, std::vector< EthAddr > const & keys ) {
  for( EthAddr const & key : keys )
    map.emplace( key, hostOf( key ) );
}

std::uint64_t movesOf( Ours const & map, EthAddr const & key ) { return map.value( key ).moves(); }
std::uint64_t movesOf( Plain const & map, EthAddr const & key ) {
  auto const at = map.find( key );
  return at == map.end() ? 0 : at->second.moves();
}

/// Two equal collections, the keys in an order that is not that of the memory, and other keys.
struct Twins {
  explicit Twins( std::size_t count )
      : keys( addresses( count, 1 ) ), others( addresses( count, 2 ) ) {
    fill( ours, keys );
    fill( plain, keys );
    shuffled = keys;
    std::ranges::shuffle( shuffled, std::mt19937( 3 ) );
  }
  std::vector< EthAddr > keys, others, shuffled;
  Ours ours;
  Plain plain;
  std::optional< Ours > oursFresh;
  std::optional< Plain > plainFresh;
};

template< class Map >
Bench::Pass find( Map const & map, std::vector< EthAddr > const & keys ) {
  return [&] {
    std::uint64_t sum = 0;
    for( EthAddr const & key : keys )
      sum += movesOf( map, key );
    return sum;
  };
}

template< class Map >
Bench::Pass insert( std::optional< Map > & fresh, std::vector< EthAddr > const & keys ) {
  return [&] {
    fresh.emplace();
    fill( *fresh, keys );
    return std::uint64_t{ fresh->size() };
  };
}

void addSize( char const * size, Twins & twins ) {
  std::size_t const count = twins.keys.size();
  auto const name = [&]( char const * what ) { return std::string( what ) + "/" + size; };
  Bench::addPair( name( "findHit" ), count, Heap::untouched, find( twins.ours, twins.shuffled ),
                  find( twins.plain, twins.shuffled ) );
  Bench::addPair( name( "findMiss" ), count, Heap::untouched, find( twins.ours, twins.others ),
                  find( twins.plain, twins.others ) );
  Bench::addPair( name( "insert" ), count, Heap::used, insert( twins.oursFresh, twins.keys ),
                  insert( twins.plainFresh, twins.keys ), [&] {
                    twins.oursFresh.reset();
                    twins.plainFresh.reset();
                  } );
}

void printMemory() {
  constexpr std::size_t count = 1'050'000;
  Ours map;
  Koi::Place place( 1 );
  map.koiPlaceIs( place );
  map.koiWhole( place, 0, []( auto const &... ) { return true; } );
  fill( map, addresses( count, 1 ) );
  std::printf( "%-24s %9.1f   of %zu members, a log attached\n\n", "bytes a member",
               static_cast< double >( map.koiBytes() ) / static_cast< double >( map.size() ),
               map.size() );
  map.koiPlaceDel( place );
}

}  // namespace

int main( int argc, char ** argv ) {
  printMemory();
  Twins small( 1000 ), middle( 100'000 ), large( 1'000'000 );
  addSize( "1k", small );
  addSize( "100k", middle );
  addSize( "1M", large );
  return Bench::runPairs( argc, argv );
}
