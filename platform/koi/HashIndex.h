// HashIndex.h: finds the members of a hashed collection, and walks them by ascending bit-reversed
// hash of the key, those of one hash in the order in which they came.
//
// The low bits of the hash choose the bucket. Taken in bit-reversed order, the buckets' chains,
// each sorted, make one sorted sequence, however many buckets there are; a bucket that is split in
// two is a chain that is cut in two.
//
// H1  A power of two of buckets, at least 4 when there is a member, no fewer than members.
// H2  Each chain ascends by ( bit-reversed hash, created ).
#pragma once

#include <bit>

#include <koi/Assert.h>
#include <koi/Slab.h>
#include <koi/ValueHash.h>

namespace Koi {

/// The bits in opposite order: bit 0 becomes bit 31.
constexpr U32 bitReverse( U32 word ) {
  word = ( word >> 1 & 0x55555555 ) | ( word & 0x55555555 ) << 1;
  word = ( word >> 2 & 0x33333333 ) | ( word & 0x33333333 ) << 2;
  word = ( word >> 4 & 0x0f0f0f0f ) | ( word & 0x0f0f0f0f ) << 4;
  word = ( word >> 8 & 0x00ff00ff ) | ( word & 0x00ff00ff ) << 8;
  return word >> 16 | word << 16;
}

/// bitReverse( a ) < bitReverse( b ): the lowest bit that differs decides.
constexpr bool lessReversed( U32 a, U32 b ) {
  U32 const differ = a ^ b;
  return ( b & differ & ( 0 - differ ) ) != 0;
}

/// The hash of a key: its hash(), or that of a single field.
template< class Key >
constexpr U32 hashOfKey( Key const & k ) {
  if constexpr( requires { k.hash(); } )
    return k.hash();
  else
    return hashOfFields( k );
}

template< class K, class V >
class HashIndex {
 public:
  using Node = Member< K, V >;
  using Nodes = Slab< Node >;
  /// Where a walk is: a slot.
  using Cursor = U32;

  explicit HashIndex( Nodes & nodes ) : nodes_( nodes ) {}
  HashIndex( HashIndex const & ) = delete;
  HashIndex & operator=( HashIndex const & ) = delete;
  ~HashIndex() { clear(); }

  static U32 hash( K const & k ) { return hashOfKey( k ); }

  /// The live or dead one of that key.
  U32 find( K const & k, U32 hash ) const {
    U32 slot = buckets_[hash & mask_];
    while( slot != noSlot ) {
      Node const & node = nodes_[slot];
      if( node.hash == hash ) {
        if( node.key == k )
          return slot;
      } else if( lessReversed( hash, node.hash ) ) {
        break;  // H2: it cannot follow
      }
      slot = node.next;
    }
    return noSlot;
  }

  /// Makes room for one more of `count` members. Raises std::bad_alloc and changes nothing.
  void reserve( U32 count ) {
    if( isEmpty() )
      resize( bucketsLeast );
    else if( count > mask_ )
      split();
  }
  void link( U32 slot ) {
    Node & node = nodes_[slot];
    U32 * at = &buckets_[node.hash & mask_];
    while( *at != noSlot && !isBefore( slot, *at ) )
      at = &nodes_[*at].next;
    node.next = *at;
    *at = slot;
    if( first_ != 0 )
      first_ = std::min( first_, bitReverse( node.hash ) );
  }
  void unlink( U32 slot ) {
    Node & node = nodes_[slot];
    U32 * at = &buckets_[node.hash & mask_];
    while( *at != slot )
      at = &nodes_[*at].next;
    *at = node.next;
  }
  /// Calls change(), which may make the node another one in the order.
  template< class Change >
  void relink( U32 slot, Change change ) {
    unlink( slot );
    change( nodes_[slot] );
    link( slot );
  }
  /// The slab is compacted: the slots below `count` are taken.
  void renumber( U32 count ) {
    clear();
    resize( std::max( std::bit_ceil( count ), bucketsLeast ) );
    for( U32 slot = 0; slot < count; ++slot )
      link( slot );
  }
  void clear() {
    if( !isEmpty() )
      memberFree( buckets_, bytes() );
    buckets_ = const_cast< U32 * >( &nowhere );
    mask_ = 0;
    first_ = 0;
  }

  /// The walk over the live ones; noSlot ends it. Other members may be added meanwhile.
  Cursor first() const {
    if( isEmpty() )
      return noSlot;
    U32 const bucket = bitReverse( first_ ) & mask_;
    U32 const slot = liveFrom( buckets_[bucket], bucket );
    first_ = slot == noSlot ? ~U32{ 0 } : bitReverse( nodes_[slot].hash );
    return slot;
  }
  Cursor next( Cursor slot ) const {
    Node const & node = nodes_[slot];
    return liveFrom( node.next, node.hash & mask_ );
  }
  /// The first one behind a place in the order; the one that was there may be gone.
  Cursor behind( K const &, U32 hash, U64 created ) const {
    U32 const bucket = hash & mask_;
    U32 slot = buckets_[bucket];
    while( slot != noSlot &&
           ( lessReversed( nodes_[slot].hash, hash ) ||
             ( nodes_[slot].hash == hash && nodes_.trace( slot ).created <= created ) ) )
      slot = nodes_[slot].next;
    return liveFrom( slot, bucket );
  }
  static U32 slotAt( Cursor cursor ) { return cursor; }
  static constexpr Cursor end() { return noSlot; }
  Cursor cursorAt( U32 slot ) const { return slot; }

  std::size_t bytes() const { return isEmpty() ? 0 : ( std::size_t{ mask_ } + 1 ) * sizeof( U32 ); }

  /// Asserts H1 and H2.
  void check() const {
    KOI_ASSERT( std::has_single_bit( mask_ + 1 ) && nodes_.numTaken() <= mask_ + !isEmpty() );
    U32 count = 0;
    for( U32 bucket = 0; bucket <= mask_; ++bucket )
      for( U32 slot = buckets_[bucket]; slot != noSlot; slot = nodes_[slot].next, ++count ) {
        Node const & node = nodes_[slot];
        KOI_ASSERT( node.isTaken() && ( node.hash & mask_ ) == bucket );
        KOI_ASSERT( node.next == noSlot || isBefore( slot, node.next ) );
      }
    KOI_ASSERT( count == nodes_.numTaken() );
  }

 private:
  static constexpr U32 nowhere = noSlot;
  static constexpr U32 bucketsLeast = 4;

  bool isEmpty() const { return mask_ == 0; }

  bool isBefore( U32 a, U32 b ) const {
    U32 const hashA = nodes_[a].hash, hashB = nodes_[b].hash;
    return hashA == hashB ? nodes_.trace( a ).created < nodes_.trace( b ).created
                          : lessReversed( hashA, hashB );
  }

  U32 liveFrom( U32 slot, U32 bucket ) const {
    for( ;; ) {
      for( ; slot != noSlot; slot = nodes_[slot].next )
        if( nodes_[slot].is( Node::live ) )
          return slot;
      // The next bucket in bit-reversed order: the carry runs downwards.
      U32 bit = ( mask_ + 1 ) >> 1;
      for( ; ( bucket & bit ) != 0; bit >>= 1 )
        bucket ^= bit;
      if( bit == 0 )
        return noSlot;
      bucket |= bit;
      slot = buckets_[bucket];
    }
  }

  void resize( U32 count ) {
    buckets_ = static_cast< U32 * >( memberAlloc( count * sizeof( U32 ) ) );
    std::fill_n( buckets_, count, noSlot );
    mask_ = count - 1;
  }

  // Twice the buckets: of each chain, those with the new bit come last (H2).
  void split() {
    constexpr U32 ahead = 16;
    U32 const count = mask_ + 1;
    auto * const fresh =
        static_cast< U32 * >( memberAlloc( std::size_t{ count } * 2 * sizeof( U32 ) ) );
    for( U32 bucket = 0; bucket < count; ++bucket ) {
      if( bucket + ahead < count && buckets_[bucket + ahead] != noSlot )
        nodes_.prefetch( buckets_[bucket + ahead] );
      fresh[bucket] = buckets_[bucket];
      U32 * at = &fresh[bucket];
      while( *at != noSlot && ( nodes_[*at].hash & count ) == 0 )
        at = &nodes_[*at].next;
      fresh[bucket + count] = *at;
      *at = noSlot;
    }
    memberFree( buckets_, bytes() );
    buckets_ = fresh;
    mask_ = count * 2 - 1;
  }

  Nodes & nodes_;
  U32 * buckets_ = const_cast< U32 * >( &nowhere );  // never written while there is one bucket
  U32 mask_ = 0;
  mutable U32 first_ = 0;  // no live one's bit-reversed hash is less
};

}  // namespace Koi
