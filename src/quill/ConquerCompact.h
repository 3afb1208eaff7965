// ConquerCompact.h: how the live notifications go to the other file when one is full: the bodies of
// ConquerWriter for it, which includes this. The ledger is there.
#pragma once

#include <quill/ConquerWriter.h>

namespace Quill {

/// Finds from which sequence on readers still need what was said of slots that are free now.
template< class M >
void ConquerWriter< M >::prune() {
  if( !prunes_ )
    return;
  if( followers_ && followers_->areAwaited() ) {
    trace_.trace( 5, "ConquerWriter::prune() cannot prune, waiting for readers" );
    return;
  }
  U64 const lowest = followers_ ? followers_->lowestSequence( sequence_ ) : Mem::Followers::nobody;
  if( lowest <= minSeq_ ) {
    trace_.trace( 5, "ConquerWriter::prune() cannot prune, minSeq:", minSeq_,
                  " lowestSequence:", lowest );
    return;
  }
  U64 const now = lowest == Mem::Followers::nobody ? sequence_ : lowest;
  trace_.trace( 5, "ConquerWriter::prune() pruning up to minSeq:", now, " (old minSeq:", minSeq_,
                ") current sequence: ", sequence_ );
  minSeq_ = now;
  M::store( pair( current_, ConquerTable::minSeqAt ), minSeq_ );
}

/// Whether the entry goes along to the other file.
template< class M >
bool ConquerWriter< M >::isKept( Entry const & entry, U32 pos ) const {
  if( pos + 1 == pos_ )
    return true;  // I6
  if( entry.slot == noIndex )
    return false;
  U32 const live = entry.slot < positions_.size() ? positions_[entry.slot] : noIndex;
  if( live != noIndex && ( live & ~freeBit ) == pos )
    return !( live & freeBit ) || entry.sequence > minSeq_;
  return isMoving() && isInCorral( entry.sequence );
}

/// Takes the live notifications to the other file, which gets room for them, for a quarter more,
/// and for `extra`.
template< class M >
void ConquerWriter< M >::compact( U32 extra ) {
  auto const to = static_cast< ConquerTableId >( 1 - current_ );
  if( !isMoving() )
    adjustCorral();
  U32 count = 0;
  for( U32 pos = 0; pos < pos_; ++pos )
    count += isKept( entry( current_, pos ), pos );
  U64 const wanted = count + U64{ count } / 4 + 64 + extra;
  auto const old = Mem::unpacked( M::load( pair( to, ConquerTable::notificationsAt ) ) );
  U32 const capacity = static_cast< U32 >( std::max< U64 >( old.ref, wanted ) );
  if( capacity > old.ref ) {
    trace_.trace( 3, "ConquerWriter::resize() resizing active conquer" );
    files_[to]->reserve( ConquerTable::fileSize( capacity ) );
  }
  // 1. Who still reads that file starts over.
  M::store( pair( to, ConquerTable::notificationsAt ),
            Mem::packed( { old.counter + 1, old.ref } ) );
  if( M::lacks( SeededFault::switchNewFirst ) )
    M::store( word( current_, ConquerTable::currentTableAt ), to );
  // 2. The entries, in order.
  U32 next = 0;
  for( U32 pos = 0; pos < pos_; ++pos ) {
    auto const one = entry( current_, pos );
    if( !isKept( one, pos ) ) {
      if( one.slot < positions_.size() && position( one.slot ) == pos )
        positions_[one.slot] = noIndex;
      continue;
    }
    U32 * const at = entryAt( to, next );
    M::store( at, static_cast< U32 >( one.sequence ) );
    M::store( at + 1, static_cast< U32 >( one.sequence >> 32 ) );
    M::store( at + 2, one.slot );
    // An entry's new place is never behind its old one, so none is taken for another.
    if( one.slot < positions_.size() && position( one.slot ) == pos )
      positions_[one.slot] = next | ( positions_[one.slot] & freeBit );
    ++next;
  }
  // 3. The rest of its header, and then it is current.
  M::store( pair( to, ConquerTable::minSeqAt ), minSeq_ );
  M::store( word( to, ConquerTable::numReadersAt ), followers_ ? followers_->numReaders() : 0 );
  M::store( pair( to, ConquerTable::corralStartAt ), corralStart_ );
  M::store( pair( to, ConquerTable::corralEndAt ), corralEnd_ );
  M::store( word( to, ConquerTable::currentPosAt ), next );
  M::store( pair( to, ConquerTable::notificationsAt ),
            Mem::packed( { old.counter + 2, capacity } ) );  // O9: the queue is whole.
  M::store( word( to, ConquerTable::currentTableAt ), to );
  M::store( word( current_, ConquerTable::currentTableAt ), to );
  current_ = to;
  pos_ = next;
  capacity_ = capacity;
  trace_.trace( 5, "ConquerWriter::compact() entries:", next, " of capacity:", capacity );
}
/// A corral that is closed ends with the compaction that drops what it kept.
template< class M >
void ConquerWriter< M >::adjustCorral() {
  if( corralStart_ == 0 )
    return;
  trace_.trace( 5, "ConquerWriter::adjustCorral() cleared corralStart:", corralStart_ );
  corralIs( 0, 0 );
}

}  // namespace Quill
