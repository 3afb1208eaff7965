// WriterHashMap.h: the writer's bucket index: where an entry stands in its chain, and how the
// buckets split and merge while readers walk them. Used by the table's writer, on one thread.
//
// I4  With 2^k buckets, bucket b's chain holds the entries whose hash ends in the k bits of b, in
// the
//     order of Links.h, and ends with a marker that names the next bucket.
//
// A stop in the middle of a split or a merge leaves chains that run on into the next bucket's; the
// repair at the next attach cuts them.
//
// Ordering
// --------
// O4  a slot's words before the link to it          linkIn()       -> TableReader::attempt()
//     A reader that follows the link, and finds it unmoved after it read the slot, has the slot as
//     it was linked: a slot is filled only while no link leads to it, and every change of a link
//     moves its counter.
// O5  new heads before numBuckets doubles           growBuckets()  -> TableReader::attempt()
// O6  numBuckets doubled before chains are cut      growBuckets()  -> TableReader::attempt()
//     A reader with the old count that meets a cut, and so the end of a chain too early, looks at
//     the count again before it says "not found".
// O7  chains merged before numBuckets halves        shrinkBuckets() -> TableReader::attempt()
#pragma once

#include <vector>

#include <quill/SlotWriterTable.h>

namespace Quill {

template< class R, class M >
class WriterHashMap {
 public:
  using File = typename M::File;
  using SlotTableOf = SlotWriterTable< R, M >;
  using Key = KeyWords< R >;

  /// Where a link stands: in a slot, or at a bucket's head.
  struct Place {
    bool isBucket = true;
    U32 index = 0;
  };
  /// Where a key is or would be: behind `before`.
  struct Found {
    U32 slot = noIndex;
    Place before;
  };

  WriterHashMap( std::unique_ptr< File > file, SlotTableOf & slots, U32 seed,
                 Ntrace::Handler const & trace )
      : file_( std::move( file ) ),
        view_( *file_ ),
        slots_( slots ),
        seed_( seed ),
        trace_( trace ) {
    numBuckets_ = Mem::unpacked( M::load( view_.numBuckets() ) ).ref;
  }

  U32 seed() const { return seed_; }
  U32 numBuckets() const { return numBuckets_; }
  Buckets< M > const & view() const { return view_; }
  U32 hash( Key const & key ) const { return R::hash( key.word, seed_ ); }

  /// Raises Rova::CorruptionDetectedException "WriterHashMap::find() hash chain cycle detected,
  /// bucket:<b>", "WriterHashMap::find() corrupt key detected, slot:<slot>".
  Found find( Key const & key, U32 hash ) const {
    U32 const bucket = hash & ( numBuckets_ - 1 );
    Found found;
    found.before = { true, bucket };
    U32 link = view_.headOf( bucket ).ref;
    for( U32 steps = 0; !isEnd( link ); ++steps ) {
      if( steps > slots_.numSlots() )
        slots_.corrupt( "WriterHashMap::find() hash chain cycle detected, bucket:" +
                        std::to_string( bucket ) );
      Key const there = link < slots_.numSlots() ? slots_.view().keyOf( link ) : Key{};
      U32 const hashThere = this->hash( there );
      if( link >= slots_.numSlots() || ( ( hashThere ^ hash ) & ( numBuckets_ - 1 ) ) != 0 )
        slots_.corrupt( "WriterHashMap::find() corrupt key detected, slot:" +
                        std::to_string( link ) );
      if( there == key ) {
        found.slot = link;
        return found;
      }
      if( isBehind( hashThere, there, hash, key ) )
        return found;
      found.before = { false, link };
      link = slots_.view().linkOf( link ).ref;
    }
    if( link == noIndex )
      slots_.corrupt( "WriterHashMap::find() corrupt key detected, slot:" +
                      std::to_string( link ) );
    return found;
  }

  /// Links a filled slot behind a place.
  void linkIn( U32 slot, Place const & before ) {
    Place const place =
        M::lacks( SeededFault::keyOrder )
            ? Place{ true, hash( slots_.view().keyOf( slot ) ) & ( numBuckets_ - 1 ) }
            : before;
    slots_.linkIs( slot, Mem::unpacked( M::load( at( place ) ) ).ref );
    slots_.linkIs( at( place ), slot );  // O4: the slot is filled, and its link set.
  }
  /// Takes a slot out of its chain. It keeps its own link, so that who stands on it walks on.
  void unlink( U32 slot, Place const & before ) {
    slots_.linkIs( at( before ), slots_.view().linkOf( slot ).ref );
  }
  /// Puts a filled slot into another one's place in its chain, by one store.
  void replace( U32 from, U32 to, Place const & before ) {
    if( M::lacks( SeededFault::moveBeforeUnlink ) ) {
      unlink( from, before );
      linkIn( to, before );
      return;
    }
    slots_.linkIs( to, slots_.view().linkOf( from ).ref );
    slots_.linkIs( at( before ), to );  // O4: the new slot is filled, and its link set.
  }

  /// Doubles the buckets. Raises Rova::MemoryResourceException and changes nothing.
  void growBuckets() {
    U32 const before = numBuckets_, after = 2 * before;
    if( after >= endBit )
      return;
    trace_.trace( 2, "WriterHashMap::growBuckets() growing from: ", before, " to: ", after );
    if( !M::lacks( SeededFault::resizeBeforeSplit ) )
      file_->reserve( BucketTable::fileSize( after ) );
    // 1. Where each chain splits, the new bucket begins.
    std::vector< U32 > lastStaying( before, noIndex );
    for( U32 b = 0; b < before; ++b ) {
      prefetchHead( b, before );
      U32 link = view_.headOf( b ).ref;
      for( ; !isEnd( link ) && bucketOf( link, after ) == b;
           link = slots_.view().linkOf( link ).ref )
        lastStaying[b] = link;
      if( !M::lacks( SeededFault::splitHeads ) )
        slots_.linkIs( view_.at( b + before ), link );
    }
    // 2. Count them.
    numBucketsIs( after );  // O5: their heads are there. O6: the chains are still whole.
    // 3. Cut the chains where they split.
    if( !M::lacks( SeededFault::cutChains ) )
      for( U32 b = 0; b < before; ++b )
        cut( b, lastStaying[b], b + before );  // O6
  }
  /// Halves the buckets.
  void shrinkBuckets() {
    U32 const after = numBuckets_ / 2;
    if( after == 0 )
      return;
    for( U32 b = 0; b < after; ++b ) {
      prefetchHead( b, after );
      U64 * end = view_.at( b );
      for( U32 link = view_.headOf( b ).ref; !isEnd( link );
           link = Mem::unpacked( M::load( end ) ).ref )
        end = SlotTableOf::View::link( slots_.view().at( link ) );
      if( !M::lacks( SeededFault::mergeChains ) )
        slots_.linkIs( end, view_.headOf( b + after ).ref );
    }
    numBucketsIs( after );  // O7: every entry is in a chain that remains.
    trace_.trace( 2, "WriterHashMap::shrinkBuckets() shrunk to numBuckets: ", after );
  }
  /// Ends bucket b's chain behind `last`, or at its head, with the marker of bucket `next`.
  void cut( U32 b, U32 last, U32 next ) {
    U64 * const end =
        last == noIndex ? view_.at( b ) : SlotTableOf::View::link( slots_.view().at( last ) );
    slots_.linkIs( end, endMarker( next ) );
  }
  /// Publishes the number of buckets; the same number again makes look-ups under way begin again.
  void numBucketsIs( U32 count ) {
    numBuckets_ = count;
    auto const before = Mem::unpacked( M::load( view_.numBuckets() ) );
    M::store( view_.numBuckets(), Mem::packed( { before.counter + 1, count } ) );
  }

  /// What a write to that key will touch.
  [[gnu::always_inline]] void prefetchBucket( U32 hash ) const {
    M::prefetch( view_.at( hash & ( numBuckets_ - 1 ) ) );
  }
  [[gnu::always_inline]] U32 prefetchSlot( U32 hash ) const {
    U32 const link = view_.headOf( hash & ( numBuckets_ - 1 ) ).ref;
    if( link < slots_.numSlots() ) {
      M::prefetch( slots_.view().at( link ) );
      M::prefetch( slots_.view().at( link ) + SlotTableOf::View::slotSize - 1 );
    }
    return link;
  }

 private:
  U64 * at( Place const & place ) const {
    return place.isBucket ? view_.at( place.index )
                          : SlotTableOf::View::link( slots_.view().at( place.index ) );
  }
  U32 bucketOf( U32 slot, U32 count ) const {
    return hash( slots_.view().keyOf( slot ) ) & ( count - 1 );
  }
  [[gnu::always_inline]] void prefetchHead( U32 b, U32 count ) const {
    constexpr U32 ahead = 16;
    if( b + ahead < count )
      if( U32 const link = view_.headOf( b + ahead ).ref; link < slots_.numSlots() )
        M::prefetch( slots_.view().at( link ) );
  }

  std::unique_ptr< File > file_;
  Buckets< M > view_;
  SlotTableOf & slots_;
  U32 const seed_;
  Ntrace::Handler const & trace_;
  U32 numBuckets_ = 0;
};

}  // namespace Quill
