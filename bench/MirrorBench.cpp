// MirrorBench.cpp: what it costs to bring a whole collection to an empty proxy through two mirrors
// and a buffer of bytes, beside filling a hash map of Boost with the same values and hash.

#include <cstdio>
#include <optional>
#include <random>
#include <vector>

#include <Lumo/Bridging.h>
#include <koi/Mirror.h>
#include <boost/unordered_map.hpp>

#include "Pairs.h"

namespace {

using Bench::Heap;
using Bridging::FdbStatus;
using Bridging::LearnedHost;
using Koi::Mirror;
using Wirex::EthAddr;

struct HashOfKey {
  std::size_t operator()( EthAddr const & address ) const { return address.hash(); }
};
using Plain = boost::unordered_map< EthAddr, LearnedHost, HashOfKey >;

std::vector< LearnedHost > hosts( std::size_t count ) {
  std::mt19937_64 bits( 1 );
  std::vector< LearnedHost > all;
  for( std::size_t i = 0; i < count; ++i ) {
    std::uint64_t const word = bits();
    all.emplace_back( EthAddr::ofBytes( reinterpret_cast< Koi::U8 const * >( &word ) ),
                      Wirex::IntfId( 32 ), static_cast< Koi::U32 >( i ), 1.5,
                      Bridging::EntryType() );
  }
  return all;
}

Koi::Ptr< FdbStatus > statusOf( std::vector< LearnedHost > const & all ) {
  auto const status = Bridging::fdbStatusFactory( Bridging::Fid( 1 ) );
  for( LearnedHost const & host : all )
    status->learnedHostIs( host );
  return status;
}

/// What hears of each member that comes.
struct Listener final : FdbStatus::NotifieeConst {
  using NotifieeConst::onLearnedHost;
  void onLearnedHost( EthAddr const & ) override { ++numCalls; }
  std::uint64_t numCalls = 0;
};

/// A connection between two trees, of which the proxy's begins empty.
class Connection {
 public:
  explicit Connection( Koi::Ptr< FdbStatus > const & status, Listener * listener )
      : source_( status, Mirror::source ) {
    if( listener )
      listener->notifierIs( copy_.ptr() );
  }

  /// Carries until neither end has anything to say. How many members the proxy has then.
  std::uint64_t settle() {
    while( source_.hasOutput() || proxy_.hasOutput() ) {
      carry( source_, proxy_ );
      carry( proxy_, source_ );
    }
    return copy_->learnedHost().size();
  }

 private:
  void carry( Mirror & from, Mirror & to ) {
    from.flush( *bytes_ );
    to.received( bytes_->data(), bytes_->size() );
    bytes_->cut( 0 );
  }

  Koi::Ptr< FdbStatus > const copy_ = Bridging::fdbStatusFactory( Bridging::Fid( 1 ) );
  Koi::Ptr< Koi::NboAttrLog::Out > const bytes_{ new Koi::NboAttrLog::Out };
  Mirror source_;
  Mirror proxy_{ copy_, Mirror::proxy };
};

/// A tree that is full, and what is made of it.
struct Twins {
  explicit Twins( std::size_t count ) : all( hosts( count ) ), status( statusOf( all ) ) {}

  std::vector< LearnedHost > const all;
  Koi::Ptr< FdbStatus > const status;
  Listener listener;
  std::optional< Connection > connection;
  std::optional< Plain > plain;
};

void addMirror( char const * name, Twins & twins, bool isObserved ) {
  Bench::addPair(
      name, twins.all.size(), Heap::used,
      [&twins, isObserved] {
        twins.connection.reset();
        twins.connection.emplace( twins.status, isObserved ? &twins.listener : nullptr );
        return twins.connection->settle();
      },
      [&twins] {
        twins.plain.emplace();
        for( LearnedHost const & host : twins.all )
          twins.plain->emplace( host.address(), host );
        return std::uint64_t{ twins.plain->size() };
      },
      [&twins] {
        twins.connection.reset();
        twins.plain.reset();
      } );
}

}  // namespace

int main( int argc, char ** argv ) {
  Twins small( 1000 ), large( 1'000'000 );
  addMirror( "mirror/1k", small, false );
  addMirror( "mirror/1M", large, false );
  addMirror( "mirrorObserved/1k", small, true );
  addMirror( "mirrorObserved/1M", large, true );
  return Bench::runPairs( argc, argv );
}
