#include <coredb/SystemSocket.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <system_error>

#include <sys/stat.h>

#include <coredb/ServeException.h>
#include <koi/EntityPath.h>

namespace Coredb {
namespace {

std::string directoryIn( Mem::RootPath const & root ) { return root.path() + "/coredb"; }

void make( std::string const & path ) {
  if( mkdir( path.c_str(), 0755 ) != 0 && errno != EEXIST )
    throw ServeException( "cannot make " + path + ": " + std::generic_category().message( errno ) );
}

}  // namespace

std::string systemSocket( Mem::RootPath const & root, Koi::Name const & sysname ) {
  return directoryIn( root ) + "/" + Koi::escapedName( sysname.view() );
}

std::string newSystemSocket( Mem::RootPath const & root, Koi::Name const & sysname ) {
  make( root.path() );
  make( directoryIn( root ) );
  return systemSocket( root, sysname );
}

std::vector< Koi::Name > systemsServed( Mem::RootPath const & root ) {
  std::vector< std::string > names;
  std::error_code none;
  for( auto const & file : std::filesystem::directory_iterator( directoryIn( root ), none ) )
    if( std::string const name = file.path().filename();
        file.is_socket( none ) && !name.starts_with( '.' ) ) {
      std::string_view rest = name;
      names.push_back( Koi::nextName( rest ) );
    }
  std::ranges::sort( names );
  return { names.begin(), names.end() };
}

}  // namespace Coredb
