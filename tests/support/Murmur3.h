// Murmur3.h: MurmurHash3 x86_32 over plain bytes, as its author published it: what the library's
// own stream of words is held against. Tests only.
#pragma once

#include <cstdint>
#include <string_view>

namespace Tests {

inline std::uint32_t murmur3( std::string_view bytes, std::uint32_t seed = 0 ) {
  auto rotl = []( std::uint32_t x, int r ) { return ( x << r ) | ( x >> ( 32 - r ) ); };
  auto byteAt = [&]( std::size_t i ) {
    return std::uint32_t{ static_cast< unsigned char >( bytes[i] ) };
  };
  std::uint32_t h = seed;
  std::size_t const inBlocks = bytes.size() / 4 * 4;
  for( std::size_t i = 0; i < bytes.size(); i += 4 ) {
    std::uint32_t k = 0;
    for( std::size_t j = i; j < bytes.size() && j < i + 4; ++j )
      k |= byteAt( j ) << ( 8 * ( j - i ) );
    k *= 0xcc9e2d51;
    k = rotl( k, 15 );
    k *= 0x1b873593;
    h ^= k;
    if( i < inBlocks ) {
      h = rotl( h, 13 );
      h = h * 5 + 0xe6546b64;
    }
  }
  h ^= static_cast< std::uint32_t >( bytes.size() );
  h ^= h >> 16;
  h *= 0x85ebca6b;
  h ^= h >> 13;
  h *= 0xc2b2ae35;
  h ^= h >> 16;
  return h;
}

}  // namespace Tests
