#include "Pairs.h"

#include <algorithm>
#include <cstdio>
#include <map>
#include <vector>

#include <benchmark/benchmark.h>

#include "Allocations.h"
#include "Setting.h"

namespace Bench {
namespace {

struct Pair {
  std::string name;
  double oursAllocations, plainAllocations;  // an item
};

std::vector< Pair > pairs;
bool promisesKept = true;

void broken( std::string const & name, char const * promise ) {
  std::fprintf( stderr, "%s: %s\n", name.c_str(), promise );
  promisesKept = false;
}

/// Allocations of one pass once everything it needs is there.
std::uint64_t allocationsOf( Pass const & pass ) {
  pass();
  std::uint64_t const before = numAllocations();
  pass();
  return numAllocations() - before;
}

void add( std::string const & name, std::size_t numItems, Pass const & pass,
          std::function< void() > const & after ) {
  benchmark::RegisterBenchmark( name.c_str(), [=]( benchmark::State & state ) {
    for( auto _ : state ) {
      benchmark::DoNotOptimize( pass() );
      if( after ) {
        state.PauseTiming();
        after();
        state.ResumeTiming();
      }
    }
    state.SetItemsProcessed( state.iterations() * static_cast< std::int64_t >( numItems ) );
  } );
}

void printSetting() {
  for( auto const & [what, value] : setting() )
    std::printf( "%-9s %s\n", what.c_str(), value.c_str() );
  std::printf( "\n" );
}

/// Gathers every repetition of every benchmark and prints the pairs at the end.
class PairReporter final : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext( Context const & ) override { return true; }

  void ReportRuns( std::vector< Run > const & runs ) override {
    for( Run const & run : runs )
      if( run.run_type == Run::RT_Iteration && !run.error_occurred )
        times_[run.run_name.function_name].push_back( 1e9 /
                                                      run.counters.at( "items_per_second" ).value );
  }

  void Finalize() override {
    std::printf( "%-24s %9s %9s %8s   %s\n", "nanoseconds an item", "ours", "plain", "ratio",
                 "allocations an item, ours and plain" );
    for( Pair const & pair : pairs ) {
      double const ours = median( pair.name + "/ours" ), plain = median( pair.name + "/plain" );
      if( ours > 0 && plain > 0 )
        std::printf( "%-24s %9.2f %9.2f %8.2f   %.0f %.0f\n", pair.name.c_str(), ours, plain,
                     ours / plain, pair.oursAllocations, pair.plainAllocations );
    }
  }

 private:
  /// 0 when the benchmark did not run: an option chose others.
  double median( std::string const & name ) {
    std::vector< double > & all = times_[name];
    if( all.empty() )
      return 0;
    auto const middle = all.begin() + static_cast< std::ptrdiff_t >( all.size() / 2 );
    std::ranges::nth_element( all, middle );
    return *middle;
  }

  std::map< std::string, std::vector< double > > times_;
};

}  // namespace

void addPair( std::string const & name, std::size_t numItems, Heap heap, Pass ours, Pass plain,
              std::function< void() > after ) {
  if( ours() != plain() )
    broken( name, "ours and plain come to different results" );
  std::uint64_t const oursAllocations = allocationsOf( ours );
  if( heap == Heap::untouched && oursAllocations != 0 )
    broken( name, "the heap was to stay untouched" );
  auto const each = [&]( std::uint64_t allocations ) {
    return static_cast< double >( allocations ) / static_cast< double >( numItems );
  };
  pairs.push_back( { name, each( oursAllocations ), each( allocationsOf( plain ) ) } );
  add( name + "/ours", numItems, ours, after );
  add( name + "/plain", numItems, plain, after );
}

int runPairs( int argc, char ** argv ) {
  std::string repetitions = "--benchmark_repetitions=5",
              inTurns = "--benchmark_enable_random_interleaving=true";
  std::vector< char * > arguments( argv, argv + argc );
  arguments.insert( arguments.begin() + 1, { repetitions.data(), inTurns.data() } );
  int count = static_cast< int >( arguments.size() );
  benchmark::Initialize( &count, arguments.data() );
  if( benchmark::ReportUnrecognizedArguments( count, arguments.data() ) )
    return 2;
  printSetting();
  PairReporter reporter;
  benchmark::RunSpecifiedBenchmarks( &reporter );
  return promisesKept ? 0 : 1;
}

}  // namespace Bench
