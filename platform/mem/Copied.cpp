#include <mem/Copied.h>

#include <chrono>
#include <cstring>
#include <new>
#include <thread>

#include <mem/Rova.h>

namespace Mem {

void CopiedFile::Bytes::sizeIs( U64 newSize ) {
  auto const numWords = static_cast< std::size_t >( ( newSize + 7 ) / 8 );
  std::unique_ptr< U64[] > more( numWords < newSize / 8 ? nullptr
                                                        : new( std::nothrow ) U64[numWords] );
  if( !more )
    throw Rova::MemoryResourceException( "no memory for a copy of " + std::to_string( newSize ) +
                                         " bytes" );
  auto const kept = static_cast< std::size_t >( std::min( size, newSize ) );
  if( kept != 0 )
    std::memcpy( more.get(), words.get(), kept );
  std::memset( reinterpret_cast< unsigned char * >( more.get() ) + kept, 0, numWords * 8 - kept );
  words = std::move( more );
  size = newSize;
}

/// Copies again. Whether anything was not as it is in the copy.
bool CopiedDir::differed( Copy & copy ) {
  if( !copy.from )
    return false;
  copy.from->remap();
  U64 const size = copy.from->size();
  bool differs = size != copy.bytes->size;
  if( differs )
    copy.bytes->sizeIs( size );
  auto const * const from = reinterpret_cast< U64 const * >( copy.from->base() );
  U64 * const to = copy.bytes->words.get();
  auto const numWords = static_cast< std::size_t >( size / 8 );
  U64 changed = 0;
  for( std::size_t i = 0; i < numWords; ++i ) {
    U64 const now = Words::load( from + i );
    changed |= now ^ to[i];
    to[i] = now;
  }
  // A notification's last word may be the file's.
  U32 const * const rest = reinterpret_cast< U32 const * >( from + numWords );
  if( size % 8 >= 4 ) {
    U32 const now = Words::load( rest );
    U32 * const last = reinterpret_cast< U32 * >( to + numWords );
    changed |= now ^ *last;
    *last = now;
  }
  // Who would be read behind the end of a file that was cut is zero.
  return differs || changed != 0 || copy.from->isLost();
}

bool CopiedDir::areStillThere() const {
  for( auto const & [name, copy] : copies_ ) {
    auto const now = from_.open( name, MappedFile::readOnly );
    if( !now != !copy.from || ( now && !now->isSameFile( *copy.from ) ) )
      return false;
  }
  return true;
}

U64 CopiedDir::counter( std::string const & file, U64 at ) const {
  auto const & from = copies_.at( file ).from;
  return from && from->size() >= at + 8
             ? Words::load( reinterpret_cast< U64 const * >( from->base() + at ) )
             : 0;
}

bool CopiedDir::tryCopy( std::span< char const * const > names, U64 counterAt, int passes ) {
  // Between two changes of the counter no word goes back to what it was: links, counts and
  // sequences have counters of their own, and the rest changes once in a change. So a copy that a
  // second one finds as it was, with the counter as it was before the first, is the state of the
  // moment between the two.
  U64 before = 0;
  bool isAgain = false;
  for( int pass = 0; pass < passes; ++pass ) {
    if( pass == 0 || !areStillThere() ) {
      isAgain = false;
      for( char const * const name : names )
        copies_[name] = { from_.open( name, MappedFile::readOnly ),
                          std::make_shared< CopiedFile::Bytes >() };
    }
    U64 const now = counter( names[0], counterAt );
    bool differs = false;
    for( char const * const name : names )
      differs |= differed( copies_[name] );
    if( isAgain && !differs && counter( names[0], counterAt ) == before && areStillThere() )
      return true;
    if( isAgain && differs )  // whoever was at work may be done soon
      std::this_thread::sleep_for( std::chrono::milliseconds( pass ) );
    isAgain = true;
    before = now;
  }
  return false;
}

std::unique_ptr< CopiedFile > CopiedDir::open( std::string const & file, File::Access ) const {
  auto const at = copies_.find( file );
  return at == copies_.end() || !at->second.from ? nullptr
                                                 : std::make_unique< File >( at->second.bytes );
}

}  // namespace Mem
