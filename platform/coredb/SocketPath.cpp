#include "SocketPath.h"

#include <cerrno>
#include <system_error>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace Coredb {
namespace {

using Mem::Descriptor;

std::string directoryOf( std::string const & path ) {
  auto const slash = path.rfind( '/' );
  return slash == std::string::npos ? "." : path.substr( 0, slash + 1 );
}
std::string fileOf( std::string const & path ) { return path.substr( path.rfind( '/' ) + 1 ); }

Descriptor openedDirectory( std::string const & path ) {
  return Descriptor( open( directoryOf( path ).c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC ) );
}

/// Does with a socket and the short address of a file what bind() or connect() do.
template< class Call >
int atAddress( Call call, int socket, int directory, std::string const & file ) {
  // However long the path is, that of an open directory is short.
  std::string const path = "/proc/self/fd/" + std::to_string( directory ) + "/" + file;
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if( file.empty() || path.size() >= sizeof address.sun_path ) {
    errno = file.empty() ? EINVAL : ENAMETOOLONG;
    return -1;
  }
  path.copy( address.sun_path, path.size() );
  return call( socket, reinterpret_cast< sockaddr const * >( &address ), sizeof address );
}

Descriptor newSocket() {
  return Descriptor( socket( AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0 ) );
}

Descriptor connected( int directory, std::string const & file ) {
  Descriptor made = newSocket();
  if( made.isOpen() && atAddress( ::connect, made.number(), directory, file ) != 0 ) {
    int const why = errno;
    made.reset();
    errno = why;
  }
  return made;
}

}  // namespace

ServeException::~ServeException() = default;

SocketPath::~SocketPath() {
  struct stat now {};
  if( directory_.isOpen() &&
      fstatat( directory_.number(), fileOf( path_ ).c_str(), &now, AT_SYMLINK_NOFOLLOW ) == 0 &&
      now.st_dev == device_ && now.st_ino == inode_ )
    unlinkat( directory_.number(), fileOf( path_ ).c_str(), 0 );
}

Descriptor SocketPath::connect() const {
  Descriptor const directory = openedDirectory( path_ );
  return directory.isOpen() ? connected( directory.number(), fileOf( path_ ) ) : Descriptor();
}

bool SocketPath::isFree( int directory ) const {
  std::string const file = fileOf( path_ );
  struct stat there {};
  if( fstatat( directory, file.c_str(), &there, AT_SYMLINK_NOFOLLOW ) != 0 )
    return errno == ENOENT;
  if( !S_ISSOCK( there.st_mode ) )
    throw ServeException( "cannot listen at " + path_ + ": it is no socket" );
  if( connected( directory, file ).isOpen() )
    throw ServeException( "cannot listen at " + path_ + ": another process does" );
  return errno == ECONNREFUSED;
}

Descriptor SocketPath::listen( unsigned mode ) {
  std::string const file = fileOf( path_ ), made = ".new-" + file;
  auto const done = [&]( bool isDone ) {
    if( !isDone )
      throw ServeException( "cannot listen at " + path_ + ": " +
                            std::generic_category().message( errno ) );
  };
  // 1. Nobody else looks at the path and puts a socket there meanwhile.
  Descriptor directory = openedDirectory( path_ );
  done( directory.isOpen() );
  Descriptor const lock( openat( directory.number(), ( file + ".lock" ).c_str(),
                                 O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600 ) );
  done( lock.isOpen() && flock( lock.number(), LOCK_EX ) == 0 );
  done( isFree( directory.number() ) );
  // 2. The file has its mode, and somebody listens, before it has its name.
  unlinkat( directory.number(), made.c_str(), 0 );
  Descriptor listening = newSocket();
  done( listening.isOpen() &&
        atAddress( bind, listening.number(), directory.number(), made ) == 0 );
  struct stat file_ {};
  done( fchmodat( directory.number(), made.c_str(), mode, 0 ) == 0 &&
        ::listen( listening.number(), SOMAXCONN ) == 0 &&
        fstatat( directory.number(), made.c_str(), &file_, AT_SYMLINK_NOFOLLOW ) == 0 &&
        renameat( directory.number(), made.c_str(), directory.number(), file.c_str() ) == 0 );
  device_ = file_.st_dev;
  inode_ = file_.st_ino;
  directory_ = std::move( directory );
  return listening;
}

}  // namespace Coredb
