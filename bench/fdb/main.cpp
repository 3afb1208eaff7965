// main.cpp: fdbBench: what it costs to carry a MAC table into shared memory and out of it, beside
// filling a hash map with the same entries, in turns in one run.
//
//   fdbBench [--entries N] [--rounds N]     default 1,000,000 and 5
#include <algorithm>
#include <boost/unordered_map.hpp>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <functional>
#include <vector>

#include <stdlib.h>

#include <Lumo/FdbStatusSm.h>
#include <koi/Activity.h>

#include "../Setting.h"

namespace {

using namespace Bridging;
using Clock = std::chrono::steady_clock;
using Quill::QuillType;
using Quill::Bridging::QuillFdbStatus;

double millisecondsSince( Clock::time_point began ) {
  return std::chrono::duration< double, std::milli >( Clock::now() - began ).count();
}
double medianOf( std::vector< double > all ) {
  auto const middle = all.begin() + static_cast< std::ptrdiff_t >( all.size() / 2 );
  std::ranges::nth_element( all, middle );
  return *middle;
}

struct KeyHash {
  std::size_t operator()( HostKey const & key ) const { return key.hash(); }
};

/// Hosts of a hundred VLANs, with addresses in no order.
HostKey keyOf( std::size_t number ) {
  auto const mixed = static_cast< Koi::U32 >( number * 2654435761U );
  auto const byte = [&]( int shift ) { return static_cast< Koi::U8 >( mixed >> shift ); };
  return HostKey( Fid( static_cast< Koi::U16 >( 1 + number % 100 ) ),
                  Wirex::EthAddr( 2, 0, byte( 24 ), byte( 16 ), byte( 8 ), byte( 0 ) ) );
}

class Tables {
 public:
  explicit Tables( std::size_t numEntries ) : numEntries_( numEntries ) {
    char path[] = "/dev/shm/lumo-bench-XXXXXX";
    root_ = mkdtemp( path );
    for( std::size_t i = 0; i < numEntries_; ++i ) {
      HostKey const key = keyOf( i );
      source_->fdbStatusIs( key.fid() )
          ->learnedHostIs( LearnedHost( key.addr(), eth_, 0, 1.0, learnedDynamicMac ) );
    }
  }
  ~Tables() { std::filesystem::remove_all( root_ ); }

  /// The source's hosts into a new table, and beside one that holds them already.
  void write( double & cold, double & again ) {
    for( double * const took : { &cold, &again } ) {
      auto const table = tableOf( QuillType::writer, true );
      auto const began = Clock::now();
      auto const mirror = writerFdbStatusSmFactory( source_, table );
      *took = millisecondsSince( began );
      mirror->koiDoZombieReactors( true );
    }
  }

  /// A process that knows nothing until it knows all; and for how long its loop served nobody else.
  double read( double & longest ) {
    auto const target = statusFactory( Koi::Name( "target" ) );
    auto const table = tableOf( QuillType::shadow, false );
    auto const began = Clock::now();
    auto const mirror = readerFdbStatusSmFactory( table, target );
    for( std::size_t count = 0; count < numEntries_; ) {
      auto const turn = Clock::now();
      activity_->runOnce();
      longest = std::max( longest, millisecondsSince( turn ) );
      count = 0;
      for( auto const & fdb : target->fdbStatus() )
        count += fdb.value()->learnedHost().size();
    }
    return millisecondsSince( began );
  }

  double plain() {
    std::vector< QuillFdbStatus > entries;
    for( std::size_t i = 0; i < numEntries_; ++i )
      entries.emplace_back( keyOf( i ), eth_, 0, 1.0, learnedDynamicMac );
    auto const began = Clock::now();
    boost::unordered_map< HostKey, QuillFdbStatus, KeyHash > map;
    for( auto const & entry : entries )
      map.emplace( entry.key(), entry );
    double const took = millisecondsSince( began );
    return map.size() == numEntries_ ? took : 0;
  }

 private:
  Koi::Ptr< Quill::Bridging::Status > tableOf( QuillType mode, bool synchronous ) const {
    auto const table = Quill::Bridging::statusFactory( Koi::Name( "fdb" ) );
    Quill::QuillParameters parameters;
    parameters.activity = activity_.ptr();
    parameters.root = Mem::RootPath( root_ );
    table->quillFdbStatusControl().init( mode, synchronous, 1 << 24, parameters );
    return table;
  }

  std::size_t const numEntries_;
  std::string root_;
  Wirex::IntfId const eth_{ Koi::String8( "eth1" ) };
  Koi::Ptr< Koi::Activity > const activity_ = Koi::activityFactory();
  Koi::Ptr< Status > const source_ = statusFactory( Koi::Name( "source" ) );
};

std::size_t numberAfter( int argc, char ** argv, char const * option, std::size_t otherwise ) {
  for( int i = 1; i + 1 < argc; ++i )
    if( std::strcmp( argv[i], option ) == 0 )
      return std::strtoull( argv[i + 1], nullptr, 10 );
  return otherwise;
}

}  // namespace

int main( int argc, char ** argv ) {
  for( auto const & [name, value] : Bench::setting() )
    std::printf( "%-12s %s\n", name.c_str(), value.c_str() );
  std::size_t const numEntries = numberAfter( argc, argv, "--entries", 1'000'000 );
  std::size_t const numRounds = numberAfter( argc, argv, "--rounds", 5 );
  Tables bench( numEntries );
  std::vector< double > plain, cold, writes, again;
  double longest = 0;
  for( std::size_t round = 0; round < numRounds; ++round ) {
    plain.push_back( bench.plain() );
    double first = 0, second = 0;
    bench.write( first, second );
    if( round == 0 )
      writes.push_back( first );  // later on, the table is there
    again.push_back( second );
    cold.push_back( bench.read( longest ) );
  }
  std::printf( "\n%zu entries, milliseconds, medians of %zu\n", numEntries, numRounds );
  auto const line = [&]( char const * what, std::vector< double > const & all ) {
    std::printf( "%-52s %9.1f  %5.2f of filling a map\n", what, medianOf( all ),
                 medianOf( all ) / medianOf( plain ) );
  };
  line( "boost::unordered_map, filled", plain );
  line( "ReaderFdbStatusSm, from nothing to all", cold );
  line( "WriterFdbStatusSm, into a new table (once)", writes );
  line( "WriterFdbStatusSm, beside a table that is right", again );
  std::printf( "%-52s %9.1f\n", "longest turn of the reader's loop", longest );
  return 0;
}
