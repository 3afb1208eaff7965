// LearnBench.cpp: what a learner takes for a frame of a capture in memory, beside the same loop
// over a bare hash map of Boost: the tag and the sender are read, the sender is looked up, and
// learned or moved where it is not where it was.
//
// The map keeps what the table shows of a host. It has no configuration to obey, ages nothing and
// tells nobody.

#include <algorithm>
#include <boost/unordered_map.hpp>
#include <optional>
#include <random>
#include <vector>

#include <learn/Learner.h>

#include "Pairs.h"

namespace {

using Bench::Heap;
using Learn::CapturedFrame;
using Learn::CaptureTime;

constexpr std::size_t numFrames = 1 << 20, numSources = 1 << 16, numVlans = 16;
constexpr unsigned framesForAMove = 1000;

/// A capture of two ports: tagged frames of 64 bytes, a microsecond apart, of random sources.
class Traffic {
 public:
  static constexpr std::size_t size = 64;

  Traffic() : bytes_( numFrames * size ), ports_( numFrames ) {
    std::mt19937 bits( 1 );
    std::vector< std::uint32_t > addresses( numSources );
    std::ranges::generate( addresses, bits );
    std::vector< bool > isOnSecond( numSources );
    for( std::size_t i = 0; i < numFrames; ++i ) {
      // Every source once, then any.
      std::uint32_t const source = i < numSources
                                       ? static_cast< std::uint32_t >( i )
                                       : static_cast< std::uint32_t >( bits() % numSources );
      if( i % framesForAMove == framesForAMove - 1 )
        isOnSecond[source] = !isOnSecond[source];
      ports_[i] = isOnSecond[source];
      write( &bytes_[i * size], source % numVlans, addresses[source] );
    }
  }

  CapturedFrame frame( std::size_t i ) const {
    return { { static_cast< std::int64_t >( i / 1'000'000 ),
               static_cast< std::uint32_t >( i % 1'000'000 * 1000 ) },
             { &bytes_[i * size], size } };
  }
  std::size_t port( std::size_t i ) const { return ports_[i]; }

 private:
  static void write( std::uint8_t * at, std::uint32_t vlanIndex, std::uint32_t address ) {
    auto const byte = [&]( unsigned shift ) {
      return static_cast< std::uint8_t >( address >> shift );
    };
    auto const vlan = static_cast< std::uint8_t >( 1 + vlanIndex );
    // To all; from an address that is administered by hand; the tag; an IPv4 packet.
    std::uint8_t const head[] = { 0xff, 0xff, 0xff,       0xff,       0xff,      0xff,
                                  0x02, 0x00, byte( 24 ), byte( 16 ), byte( 8 ), byte( 0 ),
                                  0x81, 0x00, 0x00,       vlan,       0x08,      0x00 };
    std::copy( std::begin( head ), std::end( head ), at );
  }

  std::vector< std::uint8_t > bytes_;
  std::vector< std::uint8_t > ports_;
};

std::uint64_t result( std::uint64_t numHosts, std::uint64_t numMoves ) {
  return numHosts << 32 | numMoves;
}

struct PlainHost {
  std::uint64_t seenAt;
  std::uint32_t port;
  std::uint32_t moves;
  double lastMoveTime;
};
using Plain = boost::unordered_map< std::uint64_t, PlainHost >;

/// Into the VLAN and the sender of a frame on a trunk.
std::uint64_t plainKey( std::span< std::uint8_t const > frame ) {
  if( frame.size() < 18 )
    return 0;
  std::uint64_t const vlan =
      frame[12] == 0x81 && frame[13] == 0x00 ? ( frame[14] << 8 | frame[15] ) & 0xfff : 1;
  std::uint64_t key = vlan;
  for( std::size_t i = 6; i < 12; ++i )
    key = key << 8 | frame[i];
  bool const isGroup = ( frame[6] & 1 ) != 0;
  return vlan == 4095 || isGroup ? 0 : key;
}

std::uint64_t plainPass( Traffic const & traffic, std::optional< Plain > & hosts ) {
  hosts.emplace();
  std::uint64_t numMoves = 0;
  for( std::size_t i = 0; i < numFrames; ++i ) {
    CapturedFrame const frame = traffic.frame( i );
    std::uint64_t const key = plainKey( frame.bytes );
    if( key == 0 )
      continue;
    auto const port = static_cast< std::uint32_t >( traffic.port( i ) );
    auto const [at, isFresh] =
        hosts->try_emplace( key, PlainHost{ i, port, 0, frame.time.asSeconds() } );
    PlainHost & host = at->second;
    host.seenAt = i;
    if( !isFresh && host.port != port ) {
      host.port = port;
      ++host.moves;
      host.lastMoveTime = frame.time.asSeconds();
      ++numMoves;
    }
  }
  return result( hosts->size(), numMoves );
}

std::uint64_t learnerPass( Traffic const & traffic, std::optional< Learn::Learner > & learner ) {
  learner.emplace();
  Learn::Port * const ports[] = { &learner->port( Wirex::IntfId( "eth1" ) ),
                                  &learner->port( Wirex::IntfId( "eth2" ) ) };
  for( std::size_t i = 0; i < numFrames; ++i )
    learner->frameIs( *ports[traffic.port( i )], traffic.frame( i ) );
  return result( learner->totals().numHosts, learner->totals().numMoves );
}

}  // namespace

int main( int argc, char ** argv ) {
  Traffic const traffic;
  std::optional< Learn::Learner > learner;
  std::optional< Plain > plain;
  Bench::addPair(
      "learn/64Ki sources, 16 VLANs", numFrames, Heap::used,
      [&] { return learnerPass( traffic, learner ); }, [&] { return plainPass( traffic, plain ); },
      [&] {
        learner.reset();
        plain.reset();
      } );
  return Bench::runPairs( argc, argv );
}
