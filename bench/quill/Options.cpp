#include "Options.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include <unistd.h>

namespace Bench {

std::vector< WorkloadKind > const workloadKinds{
    { Workload::hit, "hit", "look up keys that are there" },
    { Workload::hitBatch, "hitBatch", "the same, 64 in a call" },
    { Workload::miss, "miss", "look up keys that are not there" },
    { Workload::missBatch, "missBatch", "the same, 64 in a call" },
    { Workload::beside, "beside", "hit while a second thread or process overwrites at full speed" },
    { Workload::besideLatency, "besideLatency", "the same, each look-up timed alone" },
    { Workload::overwrite, "overwrite", "change the values of keys that are there" },
    { Workload::overwriteBatch, "overwriteBatch", "the same, 32 in a call" },
    { Workload::churn, "churn", "remove a key and insert it again" },
    { Workload::grow, "grow", "insert all keys into a table that starts small" },
    { Workload::growLatency, "growLatency", "the same, each insert timed alone" },
    { Workload::memory, "memory", "bytes an entry, once filled" },
};

namespace {

void printHelp( std::vector< std::string > const & peerNames ) {
  std::printf(
      "quillBench: tables in shared memory, and what else one would take, in turns in one run\n\n"
      "  --entries 1k,64k,1M    sizes of table (default 1M; k = 1,000, M = 1,000,000)\n"
      "  --peers NAME,...       which peers (default all)\n"
      "  --workloads NAME,...   which workloads (default all)\n"
      "  --seconds S            how long each pass lasts at least (default 0.1)\n"
      "  --rounds N             passes of each, of which the median counts (default 5)\n"
      "  --against PEER         besides, all figures as ratios to this peer's\n"
      "  --json                 prints JSON, with each pass\n"
      "  --folder DIR           where files are shared (default /dev/shm)\n"
      "  --smoke                1k entries, one short pass of each\n\n"
      "workloads:\n" );
  for( WorkloadKind const & kind : workloadKinds )
    std::printf( "  %-22s %s\n", kind.name, kind.line );
  std::printf( "\npeers:\n " );
  for( std::string const & name : peerNames )
    std::printf( " %s", name.c_str() );
  std::printf( "\n" );
}

[[noreturn]] void refuse( std::string const & text ) {
  std::fprintf( stderr, "quillBench: %s (--help tells)\n", text.c_str() );
  std::exit( 2 );
}

std::vector< std::string > listed( std::string_view text ) {
  std::vector< std::string > all;
  for( std::size_t end; !text.empty(); text.remove_prefix( std::min( end + 1, text.size() ) ) ) {
    end = std::min( text.find( ',' ), text.size() );
    all.emplace_back( text.substr( 0, end ) );
  }
  return all;
}

std::vector< std::string > known( std::vector< std::string > names,
                                  std::vector< std::string > const & all, char const * what ) {
  for( std::string const & name : names )
    if( std::ranges::find( all, name ) == all.end() )
      refuse( std::string( "there is no " ) + what + " " + name );
  return names;
}

double number( std::string const & text, double least, double most ) {
  char * end;
  double value = std::strtod( text.c_str(), &end );
  if( *end == 'k' )
    value *= 1e3, ++end;
  else if( *end == 'M' )
    value *= 1e6, ++end;
  if( end == text.c_str() || *end || !( value >= least && value <= most ) )
    refuse( "not a number that will do: " + text );
  return value;
}

}  // namespace

Options parsed( int argc, char ** argv, std::vector< std::string > const & peerNames ) {
  Options options;
  std::filesystem::path const shared = "/dev/shm";
  options.folder =
      access( shared.c_str(), W_OK ) == 0 ? shared : std::filesystem::temp_directory_path();
  std::vector< std::string > workloadNames;
  for( WorkloadKind const & kind : workloadKinds )
    workloadNames.emplace_back( kind.name );

  for( int i = 1; i < argc; ++i ) {
    std::string const option = argv[i];
    auto const value = [&] {
      if( ++i == argc )
        refuse( option + " needs a value" );
      return std::string( argv[i] );
    };
    if( option == "--help" ) {
      printHelp( peerNames );
      std::exit( 0 );
    } else if( option == "--entries" ) {
      options.sizes.clear();
      for( std::string const & size : listed( value() ) )
        options.sizes.push_back( static_cast< std::size_t >( number( size, 1, 64e6 ) ) );
    } else if( option == "--peers" ) {
      options.peers = known( listed( value() ), peerNames, "peer" );
    } else if( option == "--workloads" ) {
      options.workloads = known( listed( value() ), workloadNames, "workload" );
    } else if( option == "--seconds" ) {
      options.seconds = number( value(), 0, 60 );
    } else if( option == "--rounds" ) {
      options.rounds = static_cast< unsigned >( number( value(), 1, 1000 ) );
    } else if( option == "--against" ) {
      options.against = known( { value() }, peerNames, "peer" ).front();
    } else if( option == "--json" ) {
      options.json = true;
    } else if( option == "--folder" ) {
      options.folder = value();
    } else if( option == "--smoke" ) {
      options.sizes = { 1000 };
      options.seconds = 0.001;
      options.rounds = 1;
    } else {
      refuse( "what is " + option );
    }
  }
  return options;
}

}  // namespace Bench
