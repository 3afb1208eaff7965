// internal-vlan: would this configuration serve these requests for internal VLANs? README.md in
// this folder has an example.
//
// Exit status: 0 when every request that wants a VLAN gets one; 1 when one gets none; 2 for a wrong
// argument, a file that is refused, or output that could not be written.

#include <internal-vlan/Report.h>
#include <koijson/JsonFile.h>
#include <CLI/CLI.hpp>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>

namespace {

constexpr int statusRefused = 1, statusFailed = 2;

struct Options {
  std::string config, requests;
  bool json = false;
};

void addOptions( CLI::App & app, Options & options ) {
  app.add_option( "--config", options.config,
                  "the range, its direction and the VLANs of users: a Bridging::Config" )
      ->type_name( "FILE" );
  app.add_option( "--requests", options.requests,
                  "requests, wishes and lists: a Bridging::InternalVlanConfigDir" )
      ->type_name( "FILE" )
      ->required();
  app.add_flag( "--json", options.json, "print one JSON object instead of the table" );
  app.footer(
      "Both files are JSON, by the names that `lumo types` shows. Exit status: 0 when every "
      "request that "
      "wants a VLAN gets one, 1 when one gets none, 2 for a wrong argument, a file that is "
      "refused, or "
      "output that could not be written." );
}

int failed( std::string const & why ) {
  std::fprintf( stderr, "internal-vlan: %s\n", why.c_str() );
  return statusFailed;
}

int run( Options const & options ) {
  using namespace Bridging;
  Koi::Ptr< Config > const config = configFactory( Koi::Name( "config" ) );
  Koi::Ptr< InternalVlanConfigDir > const requests =
      internalVlanConfigDirFactory( Koi::Name( "requests" ) );
  Koi::Ptr< InternalVlanStatusDir > const answers =
      internalVlanStatusDirFactory( Koi::Name( "answers" ) );
  if( !options.config.empty() )
    Koi::entityFromJsonFile( *config, options.config );
  Koi::entityFromJsonFile( *requests, options.requests );
  // It answers all that is there before it is handed out.
  auto const allocator = internalVlanAllocatorFactory( requests, config, answers );

  InternalVlan::Report const report = InternalVlan::reportOf( *allocator );
  std::string const text =
      options.json ? InternalVlan::reportJson( report ) : InternalVlan::reportText( report );
  bool const isWritten = std::fwrite( text.data(), 1, text.size(), stdout ) == text.size() &&
                         std::fflush( stdout ) == 0;
  if( !isWritten && errno != EPIPE )  // whoever reads may leave early
    return failed( std::string( "standard output: " ) + std::strerror( errno ) );
  return report.numRefused == 0 ? 0 : statusRefused;
}

}  // namespace

int main( int argc, char ** argv ) {
  std::signal( SIGPIPE, SIG_IGN );
  CLI::App app( "Says which internal VLANs a configuration would hand out.", "internal-vlan" );
  Options options;
  addOptions( app, options );
  try {
    app.parse( argc, argv );
    return run( options );
  } catch( CLI::CallForHelp const & ) {
    std::fputs( app.help().c_str(), stdout );
    return 0;
  } catch( CLI::ParseError const & e ) {
    return failed( e.what() );
  } catch( Koi::JsonException const & e ) {
    return failed( e.what() );
  }
}
