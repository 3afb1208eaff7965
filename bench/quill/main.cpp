// main.cpp: quillBench. Fills each peer with the same entries, makes sure that it answers right,
// and then has all of them do each workload in turns. Exit status 1: a peer answered wrongly.

#include <algorithm>
#include <cstdio>
#include <exception>

#include <unistd.h>

#include "Keeper.h"
#include "Options.h"
#include "Report.h"
#include "Timing.h"

namespace Bench {

#define PEER( peer ) extern PeerKind const kindOf##peer;
#define ABSENT( peer, package )
#include "PeerList.inc"
#undef PEER
#undef ABSENT

namespace {

struct AbsentPeer {
  char const * name;
  char const * package;
};

std::vector< PeerKind > const peerKinds{
#define PEER( peer ) kindOf##peer,
#define ABSENT( peer, package )
#include "PeerList.inc"
#undef PEER
#undef ABSENT
};

std::vector< AbsentPeer > const absentPeers{
#define PEER( peer )
#define ABSENT( peer, package ) { #peer, package },
#include "PeerList.inc"
#undef PEER
#undef ABSENT
};

/// A peer that takes its time has fewer passes of a workload than were asked for, but one at least.
constexpr double mostSecondsOfWorkload = 10;

bool wanted( std::vector< std::string > const & names, char const * name ) {
  return names.empty() || std::ranges::find( names, name ) != names.end();
}

struct Runner {
  char const * name;
  std::unique_ptr< Contender > contender;
  double seconds = 0;  // spent on this workload
};

class Benchmark {
 public:
  Benchmark( Options const & options, std::filesystem::path const & folder )
      : options_( options ), folder_( folder ) {}

  int run() {
    for( AbsentPeer const & absent : absentPeers )
      report_.leftOut( std::string( absent.name ) + ": it was built without " + absent.package );
    for( std::size_t const size : options_.sizes )
      runSize( size );
    if( options_.json )
      report_.printJson();
    else
      report_.print( options_.against );
    return faultless_ ? 0 : 1;
  }

 private:
  void runSize( std::size_t size ) {
    Keys const keys( size );
    Room const room{ folder_, size, std::ranges::max( options_.sizes ) };
    std::vector< Runner > runners;
    for( PeerKind const & kind : peerKinds )
      if( wanted( options_.peers, kind.name ) ) {
        progress( size, "filling", kind.name );
        try {
          runners.push_back( { kind.name, kind.filled( room, keys ) } );
        } catch( Unavailable const & lacking ) {
          report_.leftOut( lacking.what() );
        }
      }
    judge( size, runners );
    for( WorkloadKind const & kind : workloadKinds )
      if( wanted( options_.workloads, kind.name ) )
        runWorkload( size, kind, runners );
    judge( size, runners );
    progress( size, "done", "" );
  }

  void runWorkload( std::size_t size, WorkloadKind const & kind, std::vector< Runner > & runners ) {
    for( Runner & runner : runners )
      runner.seconds = 0;
    unsigned const rounds = kind.workload == Workload::memory ? 1 : options_.rounds;
    for( unsigned round = 0; round < rounds; ++round ) {
      Pass const pass{ options_.seconds, round * 37 * stride };
      for( std::size_t turn = 0; turn < runners.size(); ++turn ) {
        // Whoever began the last round ends this one, so that nobody always follows the same peer.
        Runner & runner = runners[( turn + round ) % runners.size()];
        if( runner.seconds > mostSecondsOfWorkload )
          continue;
        progress( size, kind.name, runner.name );
        auto const start = Clock::now();
        for( auto const & [figure, value] : runner.contender->measured( kind.workload, pass ) )
          report_.add( size, runner.name, figure, value );
        runner.seconds += nanoseconds( Clock::now() - start ) / 1e9;
      }
    }
  }

  void judge( std::size_t size, std::vector< Runner > & runners ) {
    for( Runner & runner : runners ) {
      progress( size, "judging", runner.name );
      std::string const fault = runner.contender->fault();
      if( !fault.empty() ) {
        std::fprintf( stderr, "\nquillBench: %s, %zu entries: %s\n", runner.name, size,
                      fault.c_str() );
        faultless_ = false;
      }
    }
  }

  /// What it is doing, on a terminal.
  static void progress( std::size_t size, char const * what, char const * name ) {
    if( isatty( 2 ) )
      std::fprintf( stderr, "\r\033[K%s %s %zu\r", what, name, size );
  }

  Options const & options_;
  std::filesystem::path const folder_;
  Report report_;
  bool faultless_ = true;
};

}  // namespace
}  // namespace Bench

int main( int argc, char ** argv ) {
  std::vector< std::string > names;
  for( Bench::PeerKind const & kind : Bench::peerKinds )
    names.emplace_back( kind.name );
  Bench::Options const options = Bench::parsed( argc, argv, names );
  try {
    return Bench::kept( options.folder, [&]( std::filesystem::path const & folder ) {
      try {
        return Bench::Benchmark( options, folder ).run();
      } catch( std::exception const & failure ) {
        std::fprintf( stderr, "quillBench: %s\n", failure.what() );
        return 2;
      }
    } );
  } catch( std::exception const & failure ) {
    std::fprintf( stderr, "quillBench: %s\n", failure.what() );
    return 2;
  }
}
