// mac-reader: follows the MAC table that another process publishes, until it is interrupted, and
// shows what it has seen. README.md in this folder says how.
//
// Exit status: 0; 2 for a wrong argument or a table that cannot be believed.

#include <fmt/format.h>
#include <mac-table/MacTable.h>

#include <CLI/CLI.hpp>
#include <csignal>
#include <cstdio>
#include <map>
#include <nlohmann/json.hpp>

#include "View.h"

namespace {

constexpr int statusFailed = 2;

volatile std::sig_atomic_t isOver = 0;

void onEnd( int ) { isOver = 1; }

void setSignals() {
  std::signal( SIGPIPE, SIG_IGN );
  std::signal( SIGINT, onEnd );
  std::signal( SIGTERM, onEnd );
}

struct Options {
  MacReader::Mode mode = MacReader::Mode::shadow;
  std::string table = "quillFdbStatus", root;
  double time = 0;  // 0: until it is interrupted
  bool json = false;
};

std::map< std::string, MacReader::Mode > const modes{ { "direct", MacReader::Mode::direct },
                                                      { "keyshadow", MacReader::Mode::keyshadow },
                                                      { "shadow", MacReader::Mode::shadow },
                                                      { "status", MacReader::Mode::status } };

/// The exit status when the program ends here.
std::optional< int > readCommandLine( int argc, char ** argv, Options & options ) {
  CLI::App app( "Follows the MAC table of another process, and shows it at the end.",
                "mac-reader" );
  app.add_option( "--mode", options.mode, "how the table is seen (shadow)" )
      ->transform( CLI::CheckedTransformer( modes ) )
      ->type_name( "direct|keyshadow|shadow|status" );
  app.add_option( "--table", options.table, "the table's name (quillFdbStatus)" )
      ->type_name( "NAME" );
  app.add_option( "--root", options.root,
                  "where tables lie; LUMO_SHM_ROOT of the environment, else /dev/shm/lumo" )
      ->type_name( "DIR" );
  app.add_option( "--for", options.time, "how long; without it until SIGINT or SIGTERM" )
      ->type_name( "SECONDS" )
      ->check( CLI::Range( 0.0, 1e9 ) );
  app.add_flag( "--json", options.json, "print one JSON object instead of the table" );
  try {
    app.parse( argc, argv );
    return std::nullopt;
  } catch( CLI::CallForHelp const & ) {
    std::fputs( app.help().c_str(), stdout );
    return 0;
  } catch( CLI::ParseError const & e ) {
    fmt::print( stderr, "mac-reader: {}\n", e.what() );
    return statusFailed;
  }
}

std::string shown( MacReader::View & view, bool asJson ) {
  auto const hosts = view.hosts();
  if( !asJson )
    return fmt::format( "{}\nEntries seen to go: {}\n", MacTable::text( *hosts ),
                        view.numDeletions() );
  auto table = nlohmann::ordered_json::parse( MacTable::json( *hosts ) );
  table["numDeletions"] = view.numDeletions();
  return table.dump( 2 ) + "\n";
}

}  // namespace

int main( int argc, char ** argv ) {
  Options options;
  if( auto const status = readCommandLine( argc, argv, options ) )
    return *status;
  setSignals();
  auto const activity = Koi::activityFactory();
  try {
    auto const view = MacReader::view(
        options.mode, activity.ptr(),
        options.root.empty() ? Mem::RootPath() : Mem::RootPath( options.root ), options.table );
    constexpr Koi::Seconds turn = 0.05;  // a signal is heard between two
    Koi::Seconds const end = activity->now() + options.time;
    while( !isOver && ( options.time == 0 || activity->now() < end ) )
      activity->runFor( turn );
    activity->runFor( turn );  // what is on its way comes
    std::fputs( shown( *view, options.json ).c_str(), stdout );
    return 0;
  } catch( Koi::Exception const & e ) {
    fmt::print( stderr, "mac-reader: {}: {}\n", options.table, e.what() );
    return statusFailed;
  }
}
