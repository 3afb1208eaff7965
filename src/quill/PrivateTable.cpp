#include <quill/PrivateTable.h>

#include <cerrno>
#include <charconv>
#include <csignal>
#include <filesystem>
#include <string_view>
#include <vector>

#include <unistd.h>

#include <mem/Rova.h>

namespace Quill {
namespace {

namespace fs = std::filesystem;

/// The process that made a private table of that name is gone. Its lock alone would not do: who has
/// just made the directory does not have it yet.
bool isLeft( std::string_view name ) {
  std::string_view const number = name.substr( sizeof privatePrefix - 1 );
  pid_t process = 0;
  std::from_chars( number.data(), number.data() + number.size(), process );
  return process > 0 && kill( process, 0 ) != 0 && errno == ESRCH;
}

void removeLeft( Mem::RootPath const & root ) {
  std::error_code error;
  std::vector< std::string > left;
  for( fs::directory_iterator at( root.path(), error ), end; !error && at != end;
       at.increment( error ) ) {
    std::string const name = at->path().filename();
    if( name.starts_with( privatePrefix ) && isLeft( name ) )
      left.push_back( name );
  }
  for( auto const & name : left )
    try {
      // A process of another name space is not seen, but has the lock.
      if( Mem::TableDir( root, name, Mem::MappedFile::writable ).tryLock() )
        removePrivateTable( root, name );
    } catch( Koi::Exception const & ) {
      // Another user's, or gone by now: it is not ours to remove.
    }
}

}  // namespace

std::string newPrivateName( Mem::RootPath const & root ) {
  static unsigned number = 0;
  removeLeft( root );
  std::string name;
  do
    name = privatePrefix + std::to_string( getpid() ) + "-" + std::to_string( ++number );
  while( fs::exists( fs::path( root.path() ) / name ) );
  return name;
}

void removePrivateTable( Mem::RootPath const & root, std::string const & name ) {
  std::error_code error;  // what cannot be removed now is left to the next
  fs::remove_all( fs::path( root.path() ) / name, error );
}

}  // namespace Quill
