#include <mem/TableDir.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <random>
#include <system_error>
#include <vector>

#include <fcntl.h>
#include <pthread.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <mem/Rova.h>

namespace Mem {
namespace {

constexpr char temporary[] = ".new-";

[[noreturn]] void refuse( std::string const & what ) {
  throw Rova::MemoryResourceException( what + ": " + std::generic_category().message( errno ) );
}

/// The parts of a table's name.
std::vector< std::string > partsOf( std::string_view name ) {
  std::vector< std::string > parts( 1 );
  for( char const c : name )
    if( c == '/' )
      parts.emplace_back();
    else
      parts.back() += c;
  for( auto const & part : parts )
    if( part.empty() || part[0] == '.' || part.find( '\0' ) != std::string::npos )
      throw Koi::ArgumentException( std::string( name ) + " is no name of a table" );
  return parts;
}

constexpr int directoryFlags = O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC | O_RDONLY;

int openedDirectory( int above, std::string const & name, MappedFile::Access access,
                     std::string const & path ) {
  if( access == MappedFile::writable && mkdirat( above, name.c_str(), 0755 ) != 0 &&
      errno != EEXIST )
    refuse( "cannot make " + path );
  int const descriptor = openat( above, name.c_str(), directoryFlags );
  if( descriptor < 0 )
    refuse( "cannot open " + path );
  return descriptor;
}

constexpr int socketType = SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK;

sockaddr_un addressOf( std::string const & path ) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  path.copy( address.sun_path, sizeof address.sun_path - 1 );
  return address;
}

// A lock belongs to the open file, which a forked child shares: it must close its copy at once.
std::vector< int > & locks() {
  static std::vector< int > all;
  return all;
}
void closeLocks() {
  for( int const descriptor : locks() )
    close( descriptor );
  locks().clear();
}

}  // namespace

RootPath::RootPath() {
  char const * const named = std::getenv( "LUMO_SHM_ROOT" );
  path_ = named && *named ? named : "/dev/shm/lumo";
}

TableDir::TableDir( RootPath const & root, std::string_view name, File::Access access )
    : root_( root.path() ), path_( root_ + "/" + std::string( name ) ), access_( access ) {
  auto const parts = partsOf( name );
  try {
    rootDescriptor_ = openedDirectory( AT_FDCWD, root_, access_, root_ );
    struct stat about {};
    if( access_ == File::writable && fstat( rootDescriptor_, &about ) == 0 &&
        about.st_uid != geteuid() )
      throw Rova::MemoryResourceException( root_ + " belongs to another user" );
    for( auto const & part : parts ) {
      int const above = descriptor_ < 0 ? rootDescriptor_ : descriptor_;
      int const below = openedDirectory( above, part, access_, path_ );
      if( descriptor_ >= 0 )
        close( descriptor_ );
      descriptor_ = below;
    }
  } catch( ... ) {
    if( descriptor_ >= 0 )
      close( descriptor_ );
    if( rootDescriptor_ >= 0 )
      close( rootDescriptor_ );
    throw;
  }
}

TableDir::~TableDir() {
  if( lock_ >= 0 ) {
    std::erase( locks(), lock_ );
    close( lock_ );
  }
  close( descriptor_ );
  close( rootDescriptor_ );
}

bool TableDir::tryLock() {
  if( lock_ >= 0 )
    return true;
  int const descriptor = openAt( descriptor_, "lock", O_RDWR | O_CREAT );
  if( descriptor < 0 )
    refuse( "cannot open " + path_ + "/lock" );
  if( flock( descriptor, LOCK_EX | LOCK_NB ) != 0 ) {
    close( descriptor );
    return false;
  }
  // Somebody may have removed the file after we opened it: then its lock is nobody's.
  struct stat ours {
  }, named{};
  if( fstat( descriptor, &ours ) != 0 ||
      fstatat( descriptor_, "lock", &named, AT_SYMLINK_NOFOLLOW ) != 0 ||
      ours.st_ino != named.st_ino ) {
    close( descriptor );
    return false;
  }
  static int const registered = pthread_atfork( nullptr, nullptr, closeLocks );
  static_cast< void >( registered );
  lock_ = descriptor;
  locks().push_back( descriptor );
  return true;
}

int TableDir::openAt( int directory, std::string const & file, int flags ) const {
  return openat( directory, file.c_str(), flags | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK, 0644 );
}

std::unique_ptr< MappedFile > TableDir::open( std::string const & file,
                                              File::Access access ) const {
  std::string const path = path_ + "/" + file;
  int const descriptor = openAt( descriptor_, file, access == File::writable ? O_RDWR : O_RDONLY );
  if( descriptor < 0 && errno == ENOENT )
    return nullptr;
  if( descriptor < 0 )
    refuse( "cannot open " + path );
  struct stat about {};
  if( fstat( descriptor, &about ) != 0 || !S_ISREG( about.st_mode ) ) {
    close( descriptor );
    throw Rova::MemoryResourceException( path + " is no regular file" );
  }
  return std::make_unique< File >( descriptor, path, access );
}

std::unique_ptr< MappedFile > TableDir::create( std::string const & file ) const {
  std::string const name = temporary + file;
  unlinkat( descriptor_, name.c_str(), 0 );
  int const descriptor = openAt( descriptor_, name, O_RDWR | O_CREAT | O_EXCL );
  if( descriptor < 0 )
    refuse( "cannot make " + path_ + "/" + name );
  fchmod( descriptor, 0644 );
  return std::make_unique< File >( descriptor, path_ + "/" + file, File::writable );
}

void TableDir::put( std::string const & file ) const {
  std::string const name = temporary + file;
  if( renameat( descriptor_, name.c_str(), descriptor_, file.c_str() ) != 0 )
    refuse( "cannot put " + path_ + "/" + file + " in its place" );
}

void TableDir::remove( std::string const & file ) const {
  if( unlinkat( descriptor_, file.c_str(), 0 ) != 0 && errno != ENOENT )
    refuse( "cannot remove " + path_ + "/" + file );
}

void TableDir::putText( std::string const & file, std::string_view text ) const {
  std::string const name = temporary + file;
  unlinkat( descriptor_, name.c_str(), 0 );
  int const made = openAt( descriptor_, name, O_WRONLY | O_CREAT | O_EXCL );
  bool const isWritten = made >= 0 && ::write( made, text.data(), text.size() ) ==
                                          static_cast< ssize_t >( text.size() );
  int const why = errno;
  if( made >= 0 )
    close( made );
  errno = why;
  if( !isWritten )
    refuse( "cannot write " + path_ + "/" + file );
  put( file );
}

std::string TableDir::shortPath() const { return "/proc/self/fd/" + std::to_string( descriptor_ ); }

int TableDir::listen( std::string const & file ) const {
  std::string const name = temporary + file;
  unlinkat( descriptor_, name.c_str(), 0 );
  int const made = socket( AF_UNIX, socketType, 0 );
  auto const address = addressOf( shortPath() + "/" + name );
  // Its file has the mode that others need before it has the name under which they look.
  if( made < 0 ||
      bind( made, reinterpret_cast< sockaddr const * >( &address ), sizeof address ) != 0 ||
      fchmodat( descriptor_, name.c_str(), 0666, 0 ) != 0 || ::listen( made, 64 ) != 0 ||
      renameat( descriptor_, name.c_str(), descriptor_, file.c_str() ) != 0 ) {
    int const why = errno;
    if( made >= 0 )
      close( made );
    errno = why;
    refuse( "cannot listen at " + path_ + "/" + file );
  }
  return made;
}

int TableDir::connect( std::string const & file ) const {
  int const made = socket( AF_UNIX, socketType, 0 );
  auto const address = addressOf( shortPath() + "/" + file );
  if( made >= 0 &&
      ::connect( made, reinterpret_cast< sockaddr const * >( &address ), sizeof address ) != 0 ) {
    close( made );
    return -1;
  }
  return made;
}

U32 TableDir::kindle() const {
  for( ;; ) {
    int const descriptor = openAt( rootDescriptor_, "kindle", O_RDONLY );
    if( descriptor >= 0 ) {
      std::array< unsigned char, 4 > bytes{};
      auto const count = pread( descriptor, bytes.data(), bytes.size(), 0 );
      close( descriptor );
      U32 kindle = 0;
      for( unsigned i = 0; i < bytes.size(); ++i )
        kindle |= U32{ bytes[i] } << ( 8 * i );
      if( count != 4 || kindle == 0 )
        throw Rova::MemoryResourceException( root_ + "/kindle holds no generation" );
      return kindle;
    }
    if( errno != ENOENT )
      refuse( "cannot open " + root_ + "/kindle" );
    if( access_ == File::readOnly )
      return 0;
    // Made whole under a name of our own; the link refuses when somebody was faster.
    std::string const name = temporary + std::string( "kindle-" ) + std::to_string( getpid() );
    unlinkat( rootDescriptor_, name.c_str(), 0 );
    int const made = openAt( rootDescriptor_, name, O_WRONLY | O_CREAT | O_EXCL );
    if( made < 0 )
      refuse( "cannot make " + root_ + "/" + name );
    U32 const kindle = std::random_device()() | 1;
    std::array< unsigned char, 4 > bytes{};
    for( unsigned i = 0; i < bytes.size(); ++i )
      bytes[i] = static_cast< unsigned char >( kindle >> ( 8 * i ) );
    bool const isWritten = write( made, bytes.data(), bytes.size() ) == 4;
    bool const isPut =
        isWritten && linkat( rootDescriptor_, name.c_str(), rootDescriptor_, "kindle", 0 ) == 0;
    int const why = errno;
    close( made );
    unlinkat( rootDescriptor_, name.c_str(), 0 );
    errno = why;
    if( !isPut && errno != EEXIST )
      refuse( "cannot make " + root_ + "/kindle" );
  }
}

}  // namespace Mem
