#include <mem/MappedFile.h>

#include <cerrno>
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

/// Room for [from, to), zeros. False with errno set when there is none.
bool hasRoom( int descriptor, U64 from, U64 to ) {
  auto const at = static_cast< off_t >( from ), size = static_cast< off_t >( to - from );
  for( ;; ) {
    if( fallocate( descriptor, 0, at, size ) == 0 )
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
  void * const at =
      mmap( nullptr, static_cast< std::size_t >( size ), protection, MAP_SHARED, descriptor_, 0 );
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
  U64 const before = sizeOf( descriptor_ );
  if( size > before && !hasRoom( descriptor_, before, size ) ) {
    int const why = errno;
    // What was added is nobody's yet.
    [[maybe_unused]] int const cutBack = ftruncate( descriptor_, static_cast< off_t >( before ) );
    errno = why;
    refuse( ( "cannot reserve " + std::to_string( size ) + " bytes for " ).c_str() );
  }
  if( size <= size_ )
    return;
  void * const at = base_ ? mremap( base_, static_cast< std::size_t >( size_ ),
                                    static_cast< std::size_t >( size ), MREMAP_MAYMOVE )
                          : mmap( nullptr, static_cast< std::size_t >( size ),
                                  PROT_READ | PROT_WRITE, MAP_SHARED, descriptor_, 0 );
  if( at == MAP_FAILED )
    refuse( "cannot map " );
  base_ = static_cast< unsigned char * >( at );
  size_ = size;
}

void MappedFile::cut( U64 size ) {
  KOI_ASSERT( access_ == writable );
  if( size < sizeOf( descriptor_ ) && ftruncate( descriptor_, static_cast< off_t >( size ) ) != 0 )
    return;  // longer than it need be is right, too
  if( size >= size_ )
    return;
  if( size == 0 ) {
    unmap();
    return;
  }
  void * const at =
      mremap( base_, static_cast< std::size_t >( size_ ), static_cast< std::size_t >( size ), 0 );
  KOI_ASSERT( at == base_ );
  size_ = size;
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
