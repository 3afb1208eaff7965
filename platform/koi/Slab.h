// Slab.h: the members of one collection, side by side, each named by a number: its slot.
//
// A slot is free, or somebody has taken it; that one builds and destroys the key and the cell. A
// member stays where it is until its slot is given back or the slab is compacted, but for those of
// the first chunk, which grows from 4 members to 256 and moves when it does.
//
// S1  Slots below end() are taken or on the free list; none above was ever given out.
// S2  While there is more than one chunk, every chunk has 256 members.
#pragma once

#include <algorithm>
#include <bit>
#include <memory>
#include <utility>

#include <koi/MemberMemory.h>
#include <koi/Types.h>

namespace Koi {

/// No slot.
constexpr U32 noSlot = ~U32{ 0 };

/// One member of a collection, with what a look-up needs of it.
template< class K, class V >
struct Member {
  using Key = K;
  using Cell = V;
  enum Flag : U8 {
    live = 1,     ///< a member
    dead = 2,     ///< a tombstone: removed, and somebody is still to be told
    revived = 4,  ///< it was a tombstone, and somebody may not have been told
    shared = 8,   ///< changes of several origins met in it
    listed = 16,  ///< in the list of what is to be told
    moved = 32,   ///< while the slab is compacted: next says where to
  };

  Member() {}
  ~Member() {}
  Member( Member const & ) = delete;
  Member & operator=( Member const & ) = delete;

  bool is( unsigned flags_ ) const { return ( flags & flags_ ) != 0; }
  bool isTaken() const { return is( live | dead ); }
  void flagIs( Flag flag, bool on ) {
    flags = static_cast< U8 >( on ? flags | flag : flags & ~flag );
  }

  U32 next = noSlot;  // in its bucket, or on the free list
  U32 hash = 0;
  U16 origin = 0;  // who made the last change
  U8 flags = 0;
  union {
    K key;
  };
  union {
    V cell;
  };
};

/// What else is known of a member; it lies apart, so that look-ups meet less memory.
struct Trace {
  U64 changed = 0;  ///< its place in the list, when listed
  U64 created = 0;
  U32 before = noSlot, after = noSlot;  ///< in the list
};

template< class Node >
class Slab {
 public:
  Slab() = default;
  Slab( Slab const & ) = delete;
  Slab & operator=( Slab const & ) = delete;
  ~Slab() { clear(); }

  Node & operator[]( U32 slot ) { return chunks_[slot / chunkSize][slot % chunkSize]; }
  Node const & operator[]( U32 slot ) const { return chunks_[slot / chunkSize][slot % chunkSize]; }
  Trace & trace( U32 slot ) { return traces( slot )[slot % chunkSize]; }
  Trace const & trace( U32 slot ) const { return traces( slot )[slot % chunkSize]; }
  /// A node that is there soon, for the processor's sake.
  void prefetch( U32 slot ) const { __builtin_prefetch( &( *this )[slot] ); }

  U32 end() const { return end_; }
  U32 numTaken() const { return numTaken_; }
  /// Worth compacting: few of many slots are taken.
  bool isSparse() const { return numChunks_ > 1 && numTaken_ < capacity() / 8; }

  /// A free slot; its key and cell are yours to build. Raises std::bad_alloc and changes nothing.
  U32 take() {
    U32 slot = free_;
    if( slot != noSlot ) {
      free_ = ( *this )[slot].next;
    } else {
      if( end_ == capacity() )
        grow();
      slot = end_++;
      std::construct_at( &( *this )[slot] );
      std::construct_at( &trace( slot ) );
    }
    ++numTaken_;
    return slot;
  }

  /// Gives a slot back, once its key and cell are destroyed.
  void give( U32 slot ) {
    Node & node = ( *this )[slot];
    node.flags = 0;
    node.next = free_;
    free_ = slot;
    --numTaken_;
  }

  /// Moves members into free slots so that they fill the lowest ones. Until cut(), forward( slot )
  /// says where the one of a slot is now. Needs every taken slot to be live or dead.
  void compact() {
    U32 low = 0;
    for( U32 high = end_; low < numTaken_; ++low ) {
      if( ( *this )[low].isTaken() )
        continue;
      while( !( *this )[--high].isTaken() ) {
      }
      moveNode( ( *this )[low], ( *this )[high] );
      trace( low ) = trace( high );
      ( *this )[high].flags = Node::moved;
      ( *this )[high].next = low;
    }
  }
  U32 forward( U32 slot ) const {
    return slot != noSlot && ( *this )[slot].is( Node::moved ) ? ( *this )[slot].next : slot;
  }
  /// Ends compacting: frees the chunks above.
  void cut() {
    free_ = noSlot;
    end_ = numTaken_;
    while( numChunks_ > 1 && ( numChunks_ - 1 ) * chunkSize >= end_ )
      memberFree( chunks_[--numChunks_], chunkSize * memberSize );
    if( numChunks_ == 1 )
      resizeFirst( std::max( std::bit_ceil( end_ ), chunkLeast ) );
    resizeTable( std::bit_ceil( numChunks_ ) );
  }

  /// Destroys all members and frees all memory.
  void clear() {
    for( U32 slot = 0; slot < end_; ++slot )
      if( Node & node = ( *this )[slot]; node.isTaken() ) {
        std::destroy_at( &node.key );
        std::destroy_at( &node.cell );
      }
    while( numChunks_ > 1 )
      memberFree( chunks_[--numChunks_], chunkSize * memberSize );
    resizeTable( 1 );
    if( first_ )
      memberFree( first_, firstSize_ * memberSize );
    first_ = nullptr;
    numChunks_ = firstSize_ = end_ = numTaken_ = 0;
    free_ = noSlot;
  }

  std::size_t bytes() const {
    return capacity() * memberSize + ( tableSize_ > 1 ? tableSize_ * sizeof( Node * ) : 0 );
  }

 private:
  static constexpr U32 chunkSize = 256;
  static constexpr U32 chunkLeast = 4;
  static constexpr std::size_t memberSize = sizeof( Node ) + sizeof( Trace );
  static_assert( chunkLeast * sizeof( Node ) % alignof( Trace ) == 0 );

  // A chunk's traces follow its nodes.
  Trace * traces( U32 slot ) const {
    return reinterpret_cast< Trace * >( chunks_[slot / chunkSize] + firstSize_ );
  }

  U32 capacity() const { return numChunks_ > 1 ? numChunks_ * chunkSize : firstSize_; }

  // A taken node goes into one that is free.
  static void moveNode( Node & to, Node & from ) {
    std::construct_at( &to.key, std::move( from.key ) );
    std::construct_at( &to.cell, std::move( from.cell ) );
    std::destroy_at( &from.key );
    std::destroy_at( &from.cell );
    to.next = from.next;
    to.hash = from.hash;
    to.origin = from.origin;
    to.flags = from.flags;
  }

  void grow() {
    if( firstSize_ < chunkSize ) {
      resizeFirst( std::max( firstSize_ * 2, chunkLeast ) );
      return;
    }
    if( numChunks_ == tableSize_ )
      resizeTable( tableSize_ * 2 );
    chunks_[numChunks_] = static_cast< Node * >( memberAlloc( chunkSize * memberSize ) );
    ++numChunks_;
  }

  void resizeFirst( U32 size ) {
    if( size == firstSize_ )
      return;
    auto * const fresh = static_cast< Node * >( memberAlloc( size * memberSize ) );
    for( U32 slot = 0; slot < end_; ++slot ) {
      std::construct_at( fresh + slot );
      std::construct_at( reinterpret_cast< Trace * >( fresh + size ) + slot, trace( slot ) );
      if( first_[slot].isTaken() )
        moveNode( fresh[slot], first_[slot] );
      else
        fresh[slot].next = first_[slot].next;
    }
    if( first_ )
      memberFree( first_, firstSize_ * memberSize );
    first_ = fresh;
    chunks_[0] = fresh;
    firstSize_ = size;
    numChunks_ = 1;
  }

  // The table of one chunk is first_ itself.
  void resizeTable( U32 size ) {
    if( size == tableSize_ )
      return;
    Node ** const fresh =
        size == 1 ? &first_ : static_cast< Node ** >( memberAlloc( size * sizeof( Node * ) ) );
    first_ = chunks_[0];
    std::copy( chunks_, chunks_ + numChunks_, fresh );
    if( tableSize_ > 1 )
      memberFree( chunks_, tableSize_ * sizeof( Node * ) );
    chunks_ = fresh;
    tableSize_ = size;
  }

  Node ** chunks_ = &first_;
  Node * first_ = nullptr;
  U32 numChunks_ = 0;
  U32 tableSize_ = 1;
  U32 firstSize_ = 0;
  U32 end_ = 0;
  U32 numTaken_ = 0;
  U32 free_ = noSlot;
};

}  // namespace Koi
