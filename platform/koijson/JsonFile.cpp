#include <koijson/JsonFile.h>

#include <cerrno>
#include <cstring>
#include <fstream>
#include <iterator>

namespace Koi {
namespace {

std::string contentsOf( std::string const & path ) {
  std::ifstream file( path, std::ios::binary );
  if( !file )
    throw JsonException( std::strerror( errno ) );
  try {
    return { std::istreambuf_iterator< char >( file ), {} };
  } catch( std::ios_base::failure const & e ) {  // a folder, say: it opens
    throw JsonException( e.code().message() );
  }
}

}  // namespace

void entityFromJsonFile( Entity & entity, std::string const & path ) {
  try {
    entityFromJson( entity, contentsOf( path ) );
  } catch( JsonException const & e ) {
    throw JsonException( path + ": " + e.what() );
  }
}

}  // namespace Koi
