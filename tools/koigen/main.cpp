// main.cpp: the command koigen. Exit 0: written, or as it should be; 1: an error in a model, a
// header that differs, a file that cannot be written; 2: the call itself is wrong.
#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>
#include <map>

#include "Emitter.h"
#include "Files.h"

namespace {

/// Says which headers are not what the models say. True when there are none.
bool isFresh( Koigen::Model const & model, std::string const & headers ) {
  bool fresh = true;
  for( auto const & module : model.modules ) {
    if( module.imported || Koigen::isForeign( module ) )
      continue;
    std::string const path = headers + "/" + module.name + ".h";
    bool found = false;
    bool const same = Koigen::contentOf( path, &found ) == Koigen::headerOf( model, module );
    if( found && same )
      continue;
    std::cerr << path << ( found ? ": differs from its model\n" : ": is missing\n" );
    fresh = false;
  }
  return fresh;
}

/// How many sources each module has; those that are not named have one.
using Parts = std::map< std::string, std::size_t >;

void write( Koigen::Model const & model, std::string const & headers, std::string const & sources,
            Parts const & parts ) {
  std::filesystem::create_directories( headers );
  std::filesystem::create_directories( sources );
  for( auto const & module : model.modules ) {
    if( module.imported || Koigen::isForeign( module ) )
      continue;
    Koigen::writeChanged( headers + "/" + module.name + ".h", Koigen::headerOf( model, module ) );
    auto const named = parts.find( module.name );
    auto const texts = Koigen::sourcesOf( model, module, named == parts.end() ? 1 : named->second );
    for( std::size_t i = 0; i < texts.size(); ++i )
      Koigen::writeChanged( sources + "/" + module.name + ".module" +
                                ( i == 0 ? "" : "." + std::to_string( i + 1 ) ) + ".cpp",
                            texts[i] );
  }
}

}  // namespace

int main( int argc, char ** argv ) {
  Koigen::Call call;
  std::string headers, sources;
  Parts parts;
  bool check = false;

  CLI::App app( "Writes the C++ that models declare." );
  app.add_option( "MODEL", call.models, "Model files; all of one call are one pass" )->required();
  app.add_option( "--headers", headers, "Where <Module>.h goes" )->required();
  app.add_option( "--sources", sources, "Where <Module>.module.cpp goes" );
  app.add_option( "--include-prefix", call.prefix, "How the headers are included" )
      ->capture_default_str();
  app.add_option( "--import", call.imports, "A folder of models that may be used" )
      ->allow_extra_args( false );
  app.add_option( "--import-prefix", call.importPrefix, "How their headers are included" )
      ->capture_default_str();
  app.add_option( "--parts", parts, "MODULE N: into how many sources a large module goes" )
      ->allow_extra_args( false );
  app.add_flag( "--check", check, "Write nothing; name the headers that differ or are missing" );
  try {
    app.parse( argc, argv );
    if( !check && sources.empty() )
      throw CLI::RequiredError( "--sources" );
  } catch( CLI::ParseError const & e ) {
    return app.exit( e ) == 0 ? 0 : 2;
  }

  try {
    Koigen::Model const model = Koigen::loaded( call );
    if( check )
      return isFresh( model, headers ) ? 0 : 1;
    write( model, headers, sources, parts );
    return 0;
  } catch( std::exception const & e ) {
    std::cerr << e.what() << "\n";
    return 1;
  }
}
