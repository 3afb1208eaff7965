// PlainMurmur3.h: MurmurHash3 for 32-bit words as plain code over bytes: what our hashes are timed
// against. Benchmarks only.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace Bench {

inline std::uint32_t rotated( std::uint32_t x, int by ) {
  return ( x << by ) | ( x >> ( 32 - by ) );
}

/// The x86 variant with seed 0, for a little-endian machine.
inline std::uint32_t plainMurmur3( void const * bytes, std::size_t size ) {
  auto const * at = static_cast< std::uint8_t const * >( bytes );
  std::uint32_t h = 0, k;
  std::size_t left = size;
  for( ; left >= 4; left -= 4, at += 4 ) {
    std::memcpy( &k, at, 4 );
    h ^= rotated( k * 0xcc9e2d51, 15 ) * 0x1b873593;
    h = rotated( h, 13 ) * 5 + 0xe6546b64;
  }
  k = 0;
  switch( left ) {
    case 3:
      k ^= static_cast< std::uint32_t >( at[2] ) << 16;
      [[fallthrough]];
    case 2:
      k ^= static_cast< std::uint32_t >( at[1] ) << 8;
      [[fallthrough]];
    case 1:
      k ^= at[0];
      h ^= rotated( k * 0xcc9e2d51, 15 ) * 0x1b873593;
  }
  h ^= static_cast< std::uint32_t >( size );
  h = ( h ^ ( h >> 16 ) ) * 0x85ebca6b;
  h = ( h ^ ( h >> 13 ) ) * 0xc2b2ae35;
  return h ^ ( h >> 16 );
}

}  // namespace Bench
