#include "ConfigFile.h"

#include <koijson/EntityFromJson.h>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <iterator>

namespace Learn {

namespace {

std::string contentsOf( std::string const & path ) {
  std::ifstream file( path, std::ios::binary );
  if( !file )
    throw std::runtime_error( path + ": " + std::strerror( errno ) );
  try {
    return { std::istreambuf_iterator< char >( file ), {} };
  } catch( std::ios_base::failure const & e ) {  // a folder, say: it opens
    throw std::runtime_error( path + ": " + e.code().message() );
  }
}

}  // namespace

void readConfigFile( std::string const & path, Bridging::Config & config ) {
  std::string const text = contentsOf( path );
  try {
    Koi::entityFromJson( config, text );
  } catch( Koi::JsonException const & e ) {
    throw std::runtime_error( path + ": " + e.what() );
  }
}

}  // namespace Learn
