// learn: packet captures in, MAC address table out. README.md in this folder says what it learns
// from.
//
// Exit status: 0; 2 for a wrong argument, a capture that could not be read to its end or a table
// that could not be written; 130 when it was interrupted, after the table of what was read until
// then.

#include <fmt/format.h>
#include <frames/MergedCaptures.h>
#include <frames/Pace.h>
#include <mac-table/MacTable.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>

#include "ConfigFile.h"
#include "Learner.h"
#include "Options.h"
#include "Progress.h"
#include "Publication.h"
#include "TotalsText.h"

namespace {

constexpr int statusFailed = 2;
constexpr int statusInterrupted = 128 + SIGINT;

volatile std::sig_atomic_t interrupted = 0;

void onInterrupt( int ) { interrupted = 1; }

void setSignals() {
  // Whoever reads the table may leave early (`| head`): the write fails then, which writeTable()
  // looks at.
  std::signal( SIGPIPE, SIG_IGN );
  // No SA_RESTART: the interrupt ends a read that waits for a pipe. A second one ends the program.
  struct sigaction action {};
  action.sa_handler = onInterrupt;
  action.sa_flags = static_cast< int >( SA_RESETHAND );
  sigaction( SIGINT, &action, nullptr );
}

/// False, after a line on standard error, when there is no room for it or the like.
bool writeTable( std::string const & table ) {
  if( std::fwrite( table.data(), 1, table.size(), stdout ) == table.size() &&
      std::fflush( stdout ) == 0 )
    return true;
  if( errno == EPIPE )
    return true;
  fmt::print( stderr, "learn: the table could not be written: {}\n", std::strerror( errno ) );
  return false;
}

void complain( std::string const & text ) { fmt::print( stderr, "learn: {}\n", text ); }

}  // namespace

int main( int argc, char ** argv ) {
  Learn::Options options;
  if( auto const status = Learn::readCommandLine( argc, argv, options ) )
    return *status;
  setSignals();

  std::vector< std::string > paths;
  for( auto const & capture : options.captures )
    paths.push_back( capture.path );

  Learn::Progress progress;
  auto const config = Bridging::configFactory( Koi::Name( "config" ) );
  try {
    if( !options.configPath.empty() )
      Learn::readConfigFile( options.configPath, *config );
  } catch( std::runtime_error const & e ) {  // its text names the file and the place
    complain( e.what() );
    return statusFailed;
  }
  options.applyTo( *config );
  auto const activity = Koi::activityFactory();
  Koi::Ptr< Bridging::Status > status;
  std::optional< Learn::Publication > publication;
  Learn::TablePlace const place{
      options.root.empty() ? Mem::RootPath() : Mem::RootPath( options.root ), options.table };
  bool const publishes = !place.name.empty();
  std::unique_ptr< Learn::Learner > learning;
  try {  // first what was left, then the writer: who follows the table sees nothing go
    if( publishes )
      status = Learn::hostsLeft( place, complain );
    learning =
        std::make_unique< Learn::Learner >( Learn::Bridge{ .config = config, .status = status } );
    if( publishes )
      publication.emplace( activity.ptr(), place, status );
  } catch( Koi::Exception const & e ) {  // of the table: the learner alone raises none
    complain( std::string( "--table: " ) + e.what() );
    return statusFailed;
  }
  Learn::Learner & learner = *learning;
  std::vector< Learn::Port * > ports;
  for( auto const & capture : options.captures )
    ports.push_back( &learner.port( capture.intf ) );
  bool sound = true;
  Learn::MergedCaptures captures(
      paths,
      [&]( std::size_t capture, std::string const & why, Koi::U64 numFrames ) {
        if( interrupted )
          return;
        progress.erase();
        std::string const & path = paths[capture];
        fmt::print( stderr, "learn: {}: {} (after {} frames)\n",
                    path == "-" ? "standard input" : path, why, numFrames );
        sound = false;
      },
      publishes ? Frames::Capture::watched : Frames::Capture::plain );
  Frames::Pace pace( *activity, options.pace );
  while( !interrupted ) {
    // Who follows the table is served while a pipe is silent.
    if( publishes && !pace.isReady( captures ) )
      continue;
    auto const [capture, frame] = captures.next();
    if( !frame )
      break;
    while( !interrupted && !pace.isDue( frame->time ) ) {
    }
    learner.frameIs( *ports[capture], *frame );
    progress.totalsAre( learner );
  }
  progress.erase();

  bool const written = writeTable( options.json ? MacTable::json( *learner.bridge().status )
                                                : MacTable::text( *learner.bridge().status ) +
                                                      "\n" + Learn::totalsText( learner ) );
  if( interrupted )
    return statusInterrupted;
  return sound && written ? 0 : statusFailed;
}
