// ShadowStore.h: a process's own copy of a table: what each slot holds, and where each key is.
// Plain memory, one thread.
//
// Slots have the table's numbers and stand in chunks, so that neither growing nor shrinking moves
// any. The index is a chain of slots for each bucket; buckets split and join one at a time, as
// entries come and go, so that no call takes longer with the size of the table. While entries move,
// a key may be in two slots: the one that was put last is found.
#pragma once

#include <algorithm>
#include <bit>
#include <memory>
#include <vector>

#include <koi/Assert.h>
#include <ntrace/Ntrace.h>
#include <quill/Record.h>

namespace Quill {

/// Which slots are occupied, by chunks, and the largest one.
class SlotCounters {
 public:
  explicit SlotCounters( U32 chunkSize ) : chunkSize_( chunkSize ) {}

  void numChunksIs( std::size_t count ) { occupied_.resize( count ); }
  void isOccupiedIs( U32 slot, bool is ) {
    occupied_[slot / chunkSize_] += is ? 1 : ~U32{ 0 };
    total_ += is ? 1 : ~U32{ 0 };
  }
  U32 numOccupied() const { return total_; }
  /// How many chunks cover the largest occupied slot.
  U32 chunksOccupied() const {
    std::size_t count = occupied_.size();
    while( count > 0 && occupied_[count - 1] == 0 )
      --count;
    return static_cast< U32 >( count );
  }

 private:
  U32 const chunkSize_;
  std::vector< U32 > occupied_;
  U32 total_ = 0;
};

/// Keeps the first `numWords` words of each value: all, or the key's alone.
template< class R, U32 numWords >
class ShadowStore {
 public:
  static constexpr U32 chunkSize = 4096;
  using Key = KeyWords< R >;
  struct Words {
    U32 word[numWords];

    friend bool operator==( Words const &, Words const & ) = default;
    Key key() const {
      Key k;
      std::copy_n( word, Key::count, k.word );
      return k;
    }
  };

  /// The seed is the table's; room for so many entries is made at once.
  ShadowStore( U32 seed, U32 numEntries, Ntrace::Handler const & trace )
      : seed_( seed ), trace_( trace ), counters_( chunkSize ) {
    heads_.assign( std::max( 16u, numEntries ), chainEnd );
  }

  U32 numSlots() const { return static_cast< U32 >( chunks_.size() ) * chunkSize; }
  U32 numEntries() const { return counters_.numOccupied(); }
  bool isOccupied( U32 slot ) const { return slot < numSlots() && next( slot ) != isFree; }
  Words const & at( U32 slot ) const { return chunks_[slot / chunkSize]->words[slot % chunkSize]; }

  /// The slot of a key; noIndex when there is none.
  U32 find( Key const & key ) const {
    U32 slot = heads_[bucketOf( hash( key.word ) )];
    while( slot != chainEnd && at( slot ).key() != key )
      slot = next( slot );
    return slot == chainEnd ? noIndex : slot;
  }

  /// Fills a free slot.
  void insert( U32 slot, U32 const * words ) { insert( slot, words, hash( words ) ); }
  /// The same in two steps: what is hashed first is fetched meanwhile.
  [[gnu::always_inline]] U32 fetched( U32 const * words ) const {
    U32 const h = hash( words );
    __builtin_prefetch( &heads_[bucketOf( h )], 1 );
    return h;
  }
  void insert( U32 slot, U32 const * words, U32 hashed ) {
    while( slot >= numSlots() )
      grow( slot );
    std::copy_n( words, numWords, chunks_[slot / chunkSize]->words[slot % chunkSize].word );
    counters_.isOccupiedIs( slot, true );
    U32 & head = heads_[bucketOf( hashed )];
    next( slot ) = head;
    head = slot;
    trace_.trace( 9, "ShadowHashMap::write() value inserted, slotIndex:", slot );
    if( numEntries() > heads_.size() )
      split();
  }
  /// Changes the value of an occupied slot, whose key stays; false when it was that already.
  bool update( U32 slot, U32 const * words ) {
    Words & now = chunks_[slot / chunkSize]->words[slot % chunkSize];
    if( std::equal( words, words + numWords, now.word ) )
      return false;
    std::copy_n( words, numWords, now.word );
    trace_.trace( 9, "ShadowHashMap::write() value updated, slotIndex:", slot );
    return true;
  }
  void remove( U32 slot ) {
    trace_.trace( 9, "ShadowHashMap::remove() dead slot ", slot );
    U32 * link = &heads_[bucketOf( hash( at( slot ).word ) )];
    while( *link != slot ) {
      KOI_ASSERT( *link != chainEnd );
      link = &next( *link );
    }
    *link = next( slot );
    next( slot ) = isFree;
    counters_.isOccupiedIs( slot, false );
    if( heads_.size() > smallest && numEntries() < heads_.size() / 4 )
      join();
  }

  /// Gives chunks back when at most a quarter of the slots are occupied and the last ones are free;
  /// never below `numShared`, the table's own number.
  void tryShrink( U32 numShared ) {
    if( numEntries() > numSlots() / 4 || counters_.chunksOccupied() == chunks_.size() )
      return;
    U32 const target = counters_.chunksOccupied() * chunkSize;
    trace_.trace( 3, "ShadowStore::tryShrink() shadow slot occupancy <= 25% and can shrink to ",
                  target, " slots." );
    if( numShared > target ) {
      trace_.trace( 3, "ShadowStore::tryShrink() skip shrinking of shadow table to ", target,
                    " slots because shared memory has grown to ", numShared );
      return;
    }
    chunks_.resize( target / chunkSize );
    counters_.numChunksIs( chunks_.size() );
  }

  /// What it takes, in bytes.
  std::size_t bytes() const {
    return chunks_.size() * sizeof( Chunk ) + heads_.capacity() * sizeof( U32 );
  }

 private:
  static constexpr U32 isFree = noIndex, chainEnd = noIndex - 1, smallest = 16;
  struct Chunk {
    U32 next[chunkSize];
    Words words[chunkSize];
  };

  U32 hash( U32 const * words ) const { return R::hash( words, seed_ ); }
  U32 next( U32 slot ) const { return chunks_[slot / chunkSize]->next[slot % chunkSize]; }
  U32 & next( U32 slot ) { return chunks_[slot / chunkSize]->next[slot % chunkSize]; }

  void grow( U32 slot ) {
    trace_.trace( 3, "ShadowStore::grow() for slotIndex:", slot );
    // Values are written before they are read: a chunk's pages come when they are needed.
    auto chunk = std::make_unique_for_overwrite< Chunk >();
    std::fill_n( chunk->next, chunkSize, isFree );
    chunks_.push_back( std::move( chunk ) );
    counters_.numChunksIs( chunks_.size() );
  }

  // ---- buckets: b splits into itself and b + the power of two at or below what they are then

  static U32 splitFrom( U32 bucket ) { return bucket - std::bit_floor( bucket ); }
  U32 bucketOf( U32 hash ) const {
    auto const size = static_cast< U32 >( heads_.size() );
    U32 const bucket = hash & ( 2 * std::bit_floor( size ) - 1 );
    return bucket < size ? bucket : splitFrom( bucket );
  }
  void split() {
    auto const added = static_cast< U32 >( heads_.size() );
    U32 const old = splitFrom( added );
    if( old == 0 )
      trace_.trace( 5, "ShadowHashMap::grow() buckets growing from:", added );
    trace_.trace( 9, "ShadowHashMap::grow() splitting bucket ", old );
    heads_.push_back( chainEnd );
    U32 * kept = &heads_[old];
    U32 * gone = &heads_[added];
    for( U32 slot = *kept; slot != chainEnd; slot = next( slot ) ) {
      U32 *& end = bucketOf( hash( at( slot ).word ) ) == old ? kept : gone;
      *end = slot;
      end = &next( slot );
    }
    *kept = *gone = chainEnd;
  }
  void join() {
    auto const last = static_cast< U32 >( heads_.size() ) - 1;
    if( splitFrom( last ) == 0 )
      trace_.trace( 5, "ShadowHashMap::shrink() shrunk to numBuckets_:", last );
    U32 * end = &heads_[splitFrom( last )];
    while( *end != chainEnd )
      end = &next( *end );
    *end = heads_[last];
    heads_.pop_back();
  }

  U32 const seed_;
  Ntrace::Handler const & trace_;
  std::vector< std::unique_ptr< Chunk > > chunks_;
  SlotCounters counters_;
  std::vector< U32 > heads_;
};

}  // namespace Quill
