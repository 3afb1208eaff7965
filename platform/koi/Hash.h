// Hash.h: the one hash of the system, MurmurHash3 for 32-bit words (x86 variant, seed 0), as its
// author Austin Appleby published it. Pure functions; any thread.
//
// The same value hashes alike on every machine: table files and mirrors rely on it.
#pragma once

#include <cstddef>
#include <cstring>

#include <koi/Types.h>

namespace Koi {

/// The stream that every hash() runs. All blocks come first, then the narrow fields: these gather
/// in the tail, lowest byte first, and four of their bytes make one more block.
class HashStream {
 public:
  constexpr HashStream() = default;
  /// Begun with another seed: a hash that only who knows it can foresee.
  constexpr explicit HashStream( U32 seed ) : state_( seed ) {}

  /// Four bytes as one word.
  constexpr void block( U32 word ) {
    state_ ^= stirred( word );
    state_ = rotated( state_, 13 ) * 5 + 0xe6546b64;
    length_ += 4;
  }
  /// A field of one or two bytes.
  constexpr void narrow( U32 value, unsigned numBytes ) {
    for( unsigned i = 0; i < numBytes; ++i ) {
      tail_ |= ( ( value >> ( 8 * i ) ) & 0xff ) << ( 8 * tailSize_ );
      if( ++tailSize_ == 4 ) {
        block( tail_ );
        tail_ = tailSize_ = 0;
      }
    }
  }
  constexpr U32 finish() const {
    U32 h = state_;
    if( tailSize_ != 0 )
      h ^= stirred( tail_ );
    h ^= length_ + tailSize_;
    h = ( h ^ ( h >> 16 ) ) * 0x85ebca6b;
    h = ( h ^ ( h >> 13 ) ) * 0xc2b2ae35;
    return h ^ ( h >> 16 );
  }

 private:
  static constexpr U32 rotated( U32 x, int by ) { return ( x << by ) | ( x >> ( 32 - by ) ); }
  static constexpr U32 stirred( U32 k ) { return rotated( k * 0xcc9e2d51, 15 ) * 0x1b873593; }

  U32 state_ = 0;
  U32 length_ = 0;
  U32 tail_ = 0;
  U32 tailSize_ = 0;
};

/// The hash of plain bytes: of a string's, of an address's.
inline U32 hashOfBytes( void const * bytes, std::size_t size ) {
  HashStream stream;
  auto const * at = static_cast< U8 const * >( bytes );
  for( ; size >= 4; size -= 4, at += 4 )
    stream.block( at[0] | at[1] << 8 | at[2] << 16 | static_cast< U32 >( at[3] ) << 24 );
  for( ; size != 0; --size, ++at )
    stream.narrow( *at, 1 );
  return stream.finish();
}

}  // namespace Koi
