// main.cpp: showBench: seconds until a MAC address table is printed in order, beside what other
// programs take to print or to order the same lines. Each is the median of its rounds, in turns in
// one run; what is printed goes to a file in memory.
//
//   showBench [--entries N] [--rounds N]     default 1,000,000 and 5
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <stdexcept>
#include <string>

#include <Lumo/QuillBridging.h>
#include <quill/QuillWriter.h>

#include "../Setting.h"
#include "Keeper.h"

namespace Bench {
namespace {

using Host = ::Quill::Bridging::QuillFdbStatus;

/// Random addresses in a thousand VLANs on 48 ports.
void fill( std::string const & root, long numEntries ) {
  ::Quill::TableParameters parameters;
  parameters.classType = "Bridging::Status";
  parameters.maxSlots = 1 << 24;
  ::Quill::QuillWriter< Host > writer( Mem::RootPath( root ), "quillFdbStatus", parameters );
  std::mt19937_64 random( 1 );
  for( long i = 0; i < numEntries; ++i ) {
    auto const bits = random();
    auto const byte = [&]( int n ) { return static_cast< Koi::U8 >( bits >> 8 * n ); };
    writer.write( { { ::Bridging::Fid( static_cast< Koi::U16 >( 1 + i % 1000 ) ),
                      Wirex::EthAddr( 2, byte( 0 ), byte( 1 ), byte( 2 ), byte( 3 ), byte( 4 ) ) },
                    Wirex::IntfId( Koi::String8( "eth" + std::to_string( 1 + byte( 5 ) % 48 ) ) ),
                    byte( 6 ) % 4u,
                    1.7e9 + static_cast< double >( bits % 100000000 ) / 1000,
                    ::Bridging::learnedDynamicMac } );
  }
}

struct Contender {
  char const * name;
  std::string command;
  std::vector< double > seconds{};

  double median() {
    std::ranges::sort( seconds );
    return seconds[seconds.size() / 2];
  }
};

int run( std::filesystem::path const & folder, long numEntries, int rounds ) {
  for( auto const & [name, value] : setting() )
    std::printf( "%s: %s\n", name.c_str(), value.c_str() );
  auto const file = [&]( char const * name ) { return ( folder / name ).string(); };
  auto const root = file( "root" );
  fill( root, numEntries );
  std::string const lumo = "'" LUMO_PROGRAM "' ", at = " --root " + root;
  std::string const unordered = file( "unordered" );
  Contender all[] = {
      { "lumo show mac", lumo + "show mac" + at },
      { "lumo show mac --json", lumo + "show mac --json" + at },
      { "lumo show mac --count", lumo + "show mac --count" + at },
      { "lumo table dump", lumo + "table dump quillFdbStatus" + at },
      { "cat, of its lines", "cat " + unordered },
      { "sort, of its lines", "LC_ALL=C sort -k1,1n -k2,2 " + unordered },
  };
  auto const did = [&]( std::string const & command, std::string const & out ) {
    if( std::system( ( command + " >" + out ).c_str() ) != 0 )
      throw std::runtime_error( "failed: " + command );
  };
  did( lumo + "show mac" + at + " | tail -n +2 | shuf", unordered );
  for( int i = 0; i < rounds; ++i )
    for( auto & one : all ) {
      auto const start = std::chrono::steady_clock::now();
      did( one.command, file( "out" ) );
      std::chrono::duration< double > const took = std::chrono::steady_clock::now() - start;
      one.seconds.push_back( took.count() );
    }
  std::printf( "\n%ld entries          seconds   ours over it\n", numEntries );
  double const ours = all[0].median();
  for( auto & one : all )
    std::printf( "%-22s %8.3f %10.2f\n", one.name, one.median(), ours / one.median() );
  return 0;
}

}  // namespace
}  // namespace Bench

int main( int argc, char ** argv ) {
  long numEntries = 1'000'000;
  int rounds = 5;
  for( int i = 1; i < argc; ++i ) {
    std::string const option = argv[i];
    char const * const value = i + 1 < argc ? argv[++i] : "";
    long const number = std::strtol( value, nullptr, 10 );
    if( option == "--entries" && number > 0 )
      numEntries = number;
    else if( option == "--rounds" && number > 0 )
      rounds = static_cast< int >( number );
    else
      return std::fprintf( stderr, "showBench: --entries N and --rounds N, not %s %s\n",
                           option.c_str(), value ),
             2;
  }
  try {
    return Bench::kept( "/dev/shm", [&]( std::filesystem::path const & folder ) {
      return Bench::run( folder, numEntries, rounds );
    } );
  } catch( std::exception const & failure ) {
    std::fprintf( stderr, "showBench: %s\n", failure.what() );
    return 2;
  }
}
