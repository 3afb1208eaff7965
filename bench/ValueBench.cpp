// ValueBench.cpp: what the value contract costs: hash, comparison, log and text of our values, each
// beside plain code for the same work. RESULTS.md says how to read it.

#include <cstdio>
#include <cstring>
#include <memory>
#include <random>
#include <vector>

#include <Lumo/Bridging.h>
#include <Lumo/VlanId.h>

#include "Pairs.h"
#include "PlainMurmur3.h"

namespace {

using Bench::addPair;
using Bench::Heap;
using Bench::plainMurmur3;
using Bridging::LearnedHost;
using Bridging::VlanId;
using Bridging::VlanXlateKey;
using Wirex::EthAddr;

constexpr std::size_t batch = 1024;          // stays in the first cache
constexpr std::size_t numRecords = 1 << 20;  // does not fit any cache
constexpr std::size_t recordSize = 30;

/// A host as somebody would write it who needs no library.
struct PlainHost {
  std::uint8_t address[6];
  std::uint64_t intf;
  std::uint32_t moves;
  double lastMoveTime;
  std::uint32_t entryType;
};
struct PlainKey {
  std::uint16_t outerVid, innerVid;
};

std::mt19937_64 randomBits( 1 );

Koi::U16 randomVid() { return static_cast< Koi::U16 >( 1 + randomBits() % 4094 ); }

PlainHost randomHost() {
  PlainHost host{};
  std::uint64_t const bits = randomBits();
  std::memcpy( host.address, &bits, sizeof host.address );
  host.intf = ( 1 + randomBits() % 64 ) << 5;
  host.moves = static_cast< std::uint32_t >( randomBits() % 1000 );
  host.lastMoveTime = static_cast< double >( randomBits() % 1000000 ) / 1000;
  host.entryType = static_cast< std::uint32_t >( randomBits() % 4 );
  return host;
}

LearnedHost hostOf( PlainHost const & host ) {
  return LearnedHost( EthAddr::ofBytes( host.address ), Wirex::IntfId( host.intf ), host.moves,
                      host.lastMoveTime, static_cast< Bridging::EntryType >( host.entryType ) );
}

template< class T, class Make >
std::vector< T > several( std::size_t count, Make make ) {
  std::vector< T > all;
  all.reserve( count );
  for( std::size_t i = 0; i < count; ++i )
    all.push_back( make( i ) );
  return all;
}

/// A pass that adds up what each of the items gives.
template< class T, class Each >
Bench::Pass sumOver( std::vector< T > const & items, Each each ) {
  return [&items, each] {
    std::uint64_t sum = 0;
    for( T const & item : items )
      sum += each( item );
    return sum;
  };
}

/// A pass over neighbours: item i and item i + 1.
template< class T, class Each >
Bench::Pass sumOverNeighbours( std::vector< T > const & items, Each each ) {
  return [&items, each] {
    std::uint64_t sum = 0;
    for( std::size_t i = 0; i + 1 < items.size(); ++i )
      sum += each( items[i], items[i + 1] );
    return sum;
  };
}

// The same values twice: as ours and as plain data. Every second one equals the one before it.
template< class T, class Make >
std::vector< T > twins( Make make ) {
  T last{};
  return several< T >( batch, [&]( std::size_t i ) { return last = i % 2 ? last : make(); } );
}

struct Values {
  std::vector< std::uint16_t > plainVids =
      several< std::uint16_t >( batch, []( std::size_t ) { return randomVid(); } );
  std::vector< PlainKey > plainKeys = twins< PlainKey >( [] {
    return PlainKey{ randomVid(), randomVid() };
  } );
  std::vector< PlainHost > plainHosts = twins< PlainHost >( randomHost );

  std::vector< VlanId > vids =
      several< VlanId >( batch, [&]( std::size_t i ) { return VlanId( plainVids[i] ); } );
  std::vector< VlanXlateKey > keys = several< VlanXlateKey >( batch, [&]( std::size_t i ) {
    return VlanXlateKey( VlanId( plainKeys[i].outerVid ),
                         Bridging::VlanIdOrNone( plainKeys[i].innerVid ) );
  } );
  std::vector< LearnedHost > hosts =
      several< LearnedHost >( batch, [&]( std::size_t i ) { return hostOf( plainHosts[i] ); } );
  std::vector< EthAddr > addresses =
      several< EthAddr >( batch, [&]( std::size_t i ) { return hosts[i].address(); } );
};

void addHashes( Values const & v ) {
  auto const ours = []( auto const & value ) { return value.hash(); };
  addPair( "hash/VlanId", batch, Heap::untouched, sumOver( v.vids, ours ),
           sumOver( v.plainVids, []( std::uint16_t vid ) { return plainMurmur3( &vid, 2 ); } ) );
  addPair( "hash/VlanXlateKey", batch, Heap::untouched, sumOver( v.keys, ours ),
           sumOver( v.plainKeys, []( PlainKey const & key ) {
             std::uint32_t const words[] = { plainMurmur3( &key.outerVid, 2 ),
                                             plainMurmur3( &key.innerVid, 2 ) };
             return plainMurmur3( words, sizeof words );
           } ) );
  addPair( "hash/EthAddr", batch, Heap::untouched, sumOver( v.addresses, ours ),
           sumOver( v.plainHosts,
                    []( PlainHost const & host ) { return plainMurmur3( host.address, 6 ); } ) );
  addPair( "hash/LearnedHost", batch, Heap::untouched, sumOver( v.hosts, ours ),
           sumOver( v.plainHosts, []( PlainHost const & host ) {
             std::uint32_t words[6] = { plainMurmur3( host.address, 6 ),
                                        plainMurmur3( &host.intf, 8 ), host.moves };
             std::memcpy( words + 3, &host.lastMoveTime, 8 );
             words[5] = host.entryType;
             return plainMurmur3( words, sizeof words );
           } ) );
}

void addComparisons( Values const & v ) {
  auto const equal = []( auto const & a, auto const & b ) { return a == b; };
  auto const less = []( auto const & a, auto const & b ) { return a < b; };
  addPair( "equal/VlanXlateKey", batch - 1, Heap::untouched, sumOverNeighbours( v.keys, equal ),
           sumOverNeighbours( v.plainKeys, []( PlainKey const & a, PlainKey const & b ) {
             return std::memcmp( &a, &b, sizeof a ) == 0;
           } ) );
  addPair( "equal/EthAddr", batch - 1, Heap::untouched, sumOverNeighbours( v.addresses, equal ),
           sumOverNeighbours( v.plainHosts, []( PlainHost const & a, PlainHost const & b ) {
             return std::memcmp( a.address, b.address, 6 ) == 0;
           } ) );
  addPair( "equal/LearnedHost", batch - 1, Heap::untouched, sumOverNeighbours( v.hosts, equal ),
           sumOverNeighbours( v.plainHosts, []( PlainHost const & a, PlainHost const & b ) {
             return std::memcmp( a.address, b.address, 6 ) == 0 && a.intf == b.intf &&
                    a.moves == b.moves && a.lastMoveTime == b.lastMoveTime &&
                    a.entryType == b.entryType;
           } ) );
  addPair( "less/VlanXlateKey", batch - 1, Heap::untouched, sumOverNeighbours( v.keys, less ),
           sumOverNeighbours( v.plainKeys, []( PlainKey const & a, PlainKey const & b ) {
             return a.outerVid != b.outerVid ? a.outerVid < b.outerVid : a.innerVid < b.innerVid;
           } ) );
  addPair( "less/EthAddr", batch - 1, Heap::untouched, sumOverNeighbours( v.addresses, less ),
           sumOverNeighbours( v.plainHosts, []( PlainHost const & a, PlainHost const & b ) {
             return std::memcmp( a.address, b.address, 6 ) < 0;
           } ) );
}

/// A million hosts, their log, and room for one more of either.
struct Records {
  std::vector< LearnedHost > hosts =
      several< LearnedHost >( numRecords, []( std::size_t ) { return hostOf( randomHost() ); } );
  std::vector< LearnedHost > readHosts = std::vector< LearnedHost >( numRecords );
  std::vector< std::uint8_t > copied = std::vector< std::uint8_t >( numRecords * recordSize );
  Koi::Ptr< Koi::NboAttrLog::Out > log = new Koi::NboAttrLog::Out;
  Koi::Ptr< Koi::NboAttrLog::Out > again = new Koi::NboAttrLog::Out;
};

void addLogs( Records & r ) {
  r.again->reserve( numRecords * recordSize );
  for( auto const & host : r.hosts )
    r.log << host;
  auto const copy = [&r] {
    std::memcpy( r.copied.data(), r.log->data(), r.log->size() );
    return std::uint64_t{ r.copied.back() };
  };
  addPair(
      "encode/LearnedHost", numRecords, Heap::untouched,
      [&r] {
        r.again->cut( 0 );
        for( auto const & host : r.hosts )
          r.again << host;
        return std::uint64_t{ r.again->data()[r.again->size() - 1] };
      },
      copy );
  addPair(
      "decode/LearnedHost", numRecords, Heap::untouched,
      [&r] {
        Koi::NboAttrLog::In in( r.log->data(), r.log->size() );
        for( auto & host : r.readHosts )
          std::construct_at( &host, &in, Koi::StreamBogon() );
        return std::uint64_t{ r.readHosts.back().entryType() };
      },
      copy );
}

// Plain text, with what the C library has for it.

constexpr char const * plainKinds[] = { "learnedDynamicMac", "learnedSecureMac",
                                        "configuredDynamicMac", "configuredSecureMac" };
constexpr char plainFormat[] =
    "Value('Bridging::LearnedHost', ** {'address': %02x:%02x:%02x:%02x:%02x:%02x, 'intf': 'eth%u', "
    "'moves': %u, 'lastMoveTime': %.9g, 'entryType': %s})";
constexpr char plainScan[] =
    "Value('Bridging::LearnedHost', ** {'address': %hhx:%hhx:%hhx:%hhx:%hhx:%hhx, 'intf': 'eth%u', "
    "'moves': %u, 'lastMoveTime': %lf, 'entryType': %31[a-zA-Z]})";

std::string plainText( PlainHost const & h ) {
  char text[256];
  auto const & a = h.address;
  int const size = std::snprintf( text, sizeof text, plainFormat, a[0], a[1], a[2], a[3], a[4],
                                  a[5], static_cast< unsigned >( h.intf >> 5 ), h.moves,
                                  h.lastMoveTime, plainKinds[h.entryType] );
  return { text, static_cast< std::size_t >( size ) };
}

std::uint32_t plainMovesIn( Koi::String8 const & text ) {
  PlainHost h;
  auto & a = h.address;
  unsigned port = 0;
  char kind[32];
  std::sscanf( text.data(), plainScan, &a[0], &a[1], &a[2], &a[3], &a[4], &a[5], &port, &h.moves,
               &h.lastMoveTime, kind );
  for( h.entryType = 0; std::strcmp( kind, plainKinds[h.entryType] ) != 0; )
    ++h.entryType;
  return h.moves;
}

template< class T >
T parsed( Koi::String8 const & text ) {
  Koi::String8::IteratorConst it = text.begin();
  return T( it, text.end() );
}

struct Texts {
  explicit Texts( Values const & v )
      : hosts( several< Koi::String8 >(
            batch, [&]( std::size_t i ) { return valueToStrep( v.hosts[i] ); } ) ),
        vids( several< Koi::String8 >(
            batch, [&]( std::size_t i ) { return valueToStrep( v.vids[i] ); } ) ) {}
  std::vector< Koi::String8 > hosts, vids;
};

void addTexts( Values const & v, Texts const & t ) {
  auto const hashed = []( std::string_view text ) {
    return std::uint64_t{ plainMurmur3( text.data(), text.size() ) };
  };
  addPair(
      "print/VlanId", batch, Heap::used,
      sumOver( v.vids, [=]( VlanId const & vid ) { return hashed( valueToStrep( vid ).view() ); } ),
      sumOver( v.plainVids, [=]( std::uint16_t vid ) {
        char text[8];
        auto const size = std::snprintf( text, sizeof text, "%u", unsigned{ vid } );
        return hashed( std::string( text, static_cast< std::size_t >( size ) ) );
      } ) );
  addPair(
      "print/LearnedHost", batch, Heap::used,
      sumOver( v.hosts,
               [=]( LearnedHost const & h ) { return hashed( valueToStrep( h ).view() ); } ),
      sumOver( v.plainHosts, [=]( PlainHost const & h ) { return hashed( plainText( h ) ); } ) );
  addPair( "parse/VlanId", batch, Heap::used,
           sumOver( t.vids,
                    []( Koi::String8 const & text ) { return parsed< VlanId >( text ).value(); } ),
           sumOver( t.vids, []( Koi::String8 const & text ) {
             unsigned vid = 0;
             std::sscanf( text.data(), "%u", &vid );
             return vid;
           } ) );
  addPair(
      "parse/LearnedHost", batch, Heap::used,
      sumOver( t.hosts,
               []( Koi::String8 const & text ) { return parsed< LearnedHost >( text ).moves(); } ),
      sumOver( t.hosts, plainMovesIn ) );
}

}  // namespace

int main( int argc, char ** argv ) {
  Values const values;
  Texts const texts( values );
  auto const records = std::make_unique< Records >();
  addHashes( values );
  addComparisons( values );
  addLogs( *records );
  addTexts( values, texts );
  return Bench::runPairs( argc, argv );
}
