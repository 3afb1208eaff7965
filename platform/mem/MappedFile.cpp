#include <mem/MappedFile.h>

#include <cerrno>
#include <cstdint>
#include <limits>
#include <system_error>
#include <vector>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <koi/Assert.h>
#include <mem/Rova.h>

#include "BusGuard.h"

namespace Mem {
namespace {

U64 sizeOf( int descriptor ) {
  struct stat about {};
  fstat( descriptor, &about );
  return static_cast< U64 >( about.st_size );
}

/// Room for [0, to), of which what is from `from` on is zeros. False with errno set when there is
/// none. Who was stopped in here has left a file without room for its end, so all is asked for.
bool hasRoom( int descriptor, U64 from, U64 to ) {
  for( ;; ) {
    if( fallocate( descriptor, 0, 0, static_cast< off_t >( to ) ) == 0 )
      return true;
    if( errno == EOPNOTSUPP )
      break;
    if( errno != EINTR )
      return false;
  }
  // Writing is what reserves where the file system cannot do it otherwise.
  std::vector< char > const zeros( 1 << 16 );
  for( U64 done = from; done < to; ) {
    auto const part = std::min< U64 >( zeros.size(), to - done );
    auto const count = pwrite( descriptor, zeros.data(), part, static_cast< off_t >( done ) );
    if( count < 0 && errno != EINTR )
      return false;
    done += count > 0 ? static_cast< U64 >( count ) : 0;
  }
  return true;
}

// Tables are read at random: with large pages most of what a look-up would spend on translating
// addresses goes away.
constexpr U64 largePage = 2 << 20;

/// Addresses of a mapping to come, which begins where large pages may; nothing else gets them.
/// MAP_FAILED when there are none.
void * placeFor( std::size_t size ) {
  auto const pageSize = static_cast< std::size_t >( sysconf( _SC_PAGESIZE ) );
  size = ( size + pageSize - 1 ) & ~( pageSize - 1 );
  std::size_t const extra = size < largePage ? 0 : largePage;
  void * const all =
      mmap( nullptr, size + extra, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0 );
  if( all == MAP_FAILED || extra == 0 )
    return all;
  auto * const begin = static_cast< unsigned char * >( all );
  std::size_t const before = -reinterpret_cast< std::uintptr_t >( begin ) & ( largePage - 1 );
  if( before != 0 )
    munmap( begin, before );
  munmap( begin + before + size, extra - before );
  return begin + before;
}

/// Maps [0, size) of the file there, or takes the mapping of `oldSize` bytes to there. MAP_FAILED
/// when it cannot.
void * mappedAt( void * place, void * old, U64 oldSize, U64 size, int protection, int descriptor ) {
  if( place == MAP_FAILED )
    return place;
  auto const count = static_cast< std::size_t >( size );
  void * const at = old ? mremap( old, static_cast< std::size_t >( oldSize ), count,
                                  MREMAP_MAYMOVE | MREMAP_FIXED, place )
                        : mmap( place, count, protection, MAP_SHARED | MAP_FIXED, descriptor, 0 );
  if( at == MAP_FAILED ) {
    int const why = errno;
    munmap( place, count );
    errno = why;
  }
  return at;
}

/// Puts what is added to a mapped file into large pages, where the system does that (MADV_COLLAPSE,
/// Linux 6.1). They take no more room than small ones would; a part that gets none has those later.
void gather( int descriptor, unsigned char * base, U64 from, U64 to ) {
  constexpr int collapse = 25;
  // An empty stretch is not gathered: it gets its first page before.
  for( U64 at = from & ~( largePage - 1 ); at + largePage <= to; at += largePage )
    if( fallocate( descriptor, 0, static_cast< off_t >( at ), 1 ) != 0 ||
        madvise( base + at, static_cast< std::size_t >( largePage ), collapse ) != 0 )
      return;
}

}  // namespace

MappedFile::MappedFile( int descriptor, std::string path, Access access )
    : descriptor_( descriptor ), path_( std::move( path ) ), access_( access ) {
  try {
    map( sizeOf( descriptor_ ) );
  } catch( ... ) {
    close( descriptor_ );
    throw;
  }
}

MappedFile::~MappedFile() {
  unmap();
  close( descriptor_ );
}

void MappedFile::map( U64 size ) {
  if( size > std::numeric_limits< std::size_t >::max() / 2 ) {
    errno = ENOMEM;
    refuse( "cannot map " );
  }
  unmap();
  if( size == 0 )
    return;
  int const protection = access_ == writable ? PROT_READ | PROT_WRITE : PROT_READ;
  void * const at = mappedAt( placeFor( static_cast< std::size_t >( size ) ), nullptr, 0, size,
                              protection, descriptor_ );
  if( at == MAP_FAILED )
    refuse( "cannot map " );
  base_ = static_cast< unsigned char * >( at );
  size_ = size;
  if( access_ == readOnly )
    guard_ = busGuard( base_, static_cast< std::size_t >( size_ ), lost_ );
}

void MappedFile::unmap() {
  busUnguard( guard_ );
  guard_ = 0;
  if( base_ )
    munmap( base_, static_cast< std::size_t >( size_ ) );
  base_ = nullptr;
  size_ = 0;
}

void MappedFile::refuse( char const * what ) const {
  throw Rova::MemoryResourceException( what + path_ + ": " +
                                       std::generic_category().message( errno ) );
}

void MappedFile::reserve( U64 size ) {
  KOI_ASSERT( access_ == writable );
  U64 const length = sizeOf( descriptor_ ), mapped = size_;
  bool isDone = size <= length || ftruncate( descriptor_, static_cast< off_t >( size ) ) == 0;
  if( isDone && size > mapped ) {
    void * const at = mappedAt( placeFor( static_cast< std::size_t >( size ) ), base_, size_, size,
                                PROT_READ | PROT_WRITE, descriptor_ );
    isDone = at != MAP_FAILED;
    if( isDone ) {
      base_ = static_cast< unsigned char * >( at );
      size_ = size;
    }
  }
  if( isDone && size > length )
    gather( descriptor_, base_, length, size );
  if( isDone && hasRoom( descriptor_, length, size ) )
    return;
  // What was added is nobody's yet.
  int const why = errno;
  unmapFrom( mapped );
  if( size > length ) [[maybe_unused]]
    int const cutBack = ftruncate( descriptor_, static_cast< off_t >( length ) );
  errno = why;
  refuse( ( "cannot reserve " + std::to_string( size ) + " bytes for " ).c_str() );
}

void MappedFile::unmapFrom( U64 size ) {
  if( size >= size_ )
    return;
  if( size == 0 )
    return unmap();
  void * const at =
      mremap( base_, static_cast< std::size_t >( size_ ), static_cast< std::size_t >( size ), 0 );
  KOI_ASSERT( at == base_ );
  size_ = size;
}

void MappedFile::cut( U64 size ) {
  KOI_ASSERT( access_ == writable );
  if( size < sizeOf( descriptor_ ) && ftruncate( descriptor_, static_cast< off_t >( size ) ) != 0 )
    return;  // longer than it need be is right, too
  unmapFrom( size );
}

void MappedFile::remap() {
  lost_.clear();
  map( sizeOf( descriptor_ ) );
}

bool MappedFile::isSameFile( MappedFile const & other ) const {
  struct stat mine {
  }, theirs{};
  return fstat( descriptor_, &mine ) == 0 && fstat( other.descriptor_, &theirs ) == 0 &&
         mine.st_ino == theirs.st_ino && mine.st_dev == theirs.st_dev;
}

}  // namespace Mem
