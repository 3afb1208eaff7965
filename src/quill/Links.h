// Links.h: how slots hang together. Pure functions; any thread.
//
// The entries of a table are one list in the order of their reversed hashes, those of one hash in
// the order of their keys. A bucket is a way into it: with 2^k buckets, bucket b begins where the
// first entry whose hash ends in the k bits of b would stand. So a bucket that splits only gains an
// entrance in the middle of its chain, and the bucket behind b is the one that reversed counting
// names.
#pragma once

#include <koi/Types.h>

namespace Quill {

using Koi::U32;
using Koi::U64;

/// No slot, no bucket. Also the end of the free list. To be looked for before the end of a chain.
inline constexpr U32 noIndex = 0xffffffff;
/// Slots and buckets are numbered below this.
inline constexpr U32 endBit = 0x80000000;
/// What a change of a link adds to its counter.
inline constexpr U32 linkStep = 4;

/// The bits in reversed order.
constexpr U32 reversed( U32 x ) {
  x = ( x >> 1 & 0x55555555 ) | ( x & 0x55555555 ) << 1;
  x = ( x >> 2 & 0x33333333 ) | ( x & 0x33333333 ) << 2;
  x = ( x >> 4 & 0x0f0f0f0f ) | ( x & 0x0f0f0f0f ) << 4;
  return __builtin_bswap32( x );
}

/// A link that ends a bucket's chain: it names the bucket at which a walk goes on, 0 at the very
/// end.
constexpr U32 endMarker( U32 bucket ) { return endBit | bucket; }
constexpr bool isEnd( U32 link ) { return link & endBit; }

/// The bucket behind bucket b of numBuckets, a power of two; 0 behind the last one.
constexpr U32 nextBucket( U32 b, U32 numBuckets ) {
  return numBuckets == 1 ? 0 : reversed( reversed( b ) + reversed( numBuckets >> 1 ) );
}

constexpr bool isPowerOfTwo( U32 n ) { return n != 0 && ( n & ( n - 1 ) ) == 0; }

}  // namespace Quill
