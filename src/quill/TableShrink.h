// TableShrink.h: how entries move to a shorter slot file: the bodies of TableWriter for it, which
// includes this. The ledger is there.
//
// While entries move, the free slots above the target are on no list, and the corral in the queue
// is open. A stop in between leaves all entries where a reader finds them; the next writer closes
// the corral, frees what is free, and shrinks again when it is due.
#pragma once

#include <quill/TableWriter.h>

namespace Quill {

template< class R, class M >
void TableWriter< R, M >::doMaybeShrinkSlots( U32 threshold ) {
  // 1. Is there anything to do?
  if( threshold == 0 )
    return;
  if( isMoving() || queue_.corralEnd() != 0 ) {
    trace_.trace( 5, "QuillWriter::doMaybeShrinkSlots() shrink started, ignoring shrinkThreshold:",
                  threshold );
    return;
  }
  // 2. Room for two to four times the entries.
  U32 const occupied = slots_->occupiedSlots();
  U32 const ample = occupied == 0 ? 0 : 4u << ( 31 - __builtin_clz( occupied ) );
  U32 const target = std::max( slots_->limits().minSlots, ample );
  if( target >= slots_->numSlots() )
    return;
  trace_.trace( 2, "QuillWriter::doMaybeShrinkSlots() target:", target,
                " numSlots:", slots_->numSlots(), target < threshold ? " SUPER SHRINK!" : "" );
  // 3. Nothing new goes behind the target.
  slots_->purgeFreeSlots( target );
  // 4., 5. Move what is there.
  queue_.markShrinkStart();
  shrinkTarget_ = shrinkNext_ = target;
  goOnShrinking();
}
template< class R, class M >
void TableWriter< R, M >::goOnShrinking() {
  if( !isMoving() ) {
    if( queue_.corralEnd() != 0 && queue_.isCorralPassed() )
      settleShrink();
    return;
  }
  U32 moves = 0;
  for( U32 looked = 0; shrinkNext_ < slots_->numSlots(); ++shrinkNext_, ++looked ) {
    if( moves >= slots_->limits().movesASlice || looked >= slots_->limits().looksASlice )
      return;
    if( M::load( View::flags( slots_->view().at( shrinkNext_ ) ) ) & SlotTable::occupied ) {
      if( !moveOne( shrinkNext_ ) )
        return;
      ++moves;
    }
  }
  endShrink( shrinkTarget_ );
}
template< class R, class M >
bool TableWriter< R, M >::moveOne( U32 from ) {
  try {
    queue_.reserve( 2 );
  } catch( Rova::MemoryResourceException const & e ) {
    // A table that stays long is right, too; whoever removed an entry has removed it.
    trace_.trace( 0, "SlotWriter::shrink() put off: ", e.what() );
    endShrink( slots_->numSlots() );
    return false;
  }
  Key const key = slots_->view().keyOf( from );
  auto const found = buckets_.find( key, buckets_.hash( key ) );
  U32 const to = slots_->freeSlots();
  if( to == noIndex || found.slot != from )
    slots_->corrupt( "SlotWriter::move() not valid toSlotId:" + std::to_string( to ) );
  if( to >= from )
    slots_->corrupt( "SlotWriter::move() should always move entries to lower section fromSlotId:" +
                     std::to_string( from ) + " toSlotId:" + std::to_string( to ) );
  slots_->alloc();
  if( !M::lacks( SeededFault::intentOfMove ) ) {
    slots_->leavingIs( from );
    slots_->intentIs( to );
  }
  Value value;
  loadWords< M, numWords >( value.word, View::value( slots_->view().at( from ) ) );
  fill( to, value );
  buckets_.replace( from, to, found.before );  // O12: no chain has the old slot.
  if( !M::lacks( SeededFault::notifyMoveTo ) )
    queue_.notify( to, false );
  slots_->clear( from );
  slots_->linkIs( from, noIndex );  // O14
  if( !M::lacks( SeededFault::notifyMoveFrom ) )
    queue_.notify( from, true );
  slots_->intentIs( noIndex );
  slots_->leavingIs( noIndex );
  return true;
}
/// 6. The slots end at `numSlots`; the same number as before gives the shrink up.
template< class R, class M >
void TableWriter< R, M >::endShrink( U32 numSlots ) {
  if( numSlots == slots_->numSlots() ) {
    slots_->reclaim( shrinkTarget_ );
  } else {
    trace_.trace( 2, "SlotWriter::shrink() newNumSlots:", numSlots );
    slots_->numSlotsIs( numSlots );
    buckets_.numBucketsIs( buckets_.numBuckets() );  // O13: the smaller count is there.
  }
  queue_.markShrinkEnd();
  shrinkTarget_ = noIndex;
  if( queue_.isCorralPassed() )
    settleShrink();
}
/// Nobody needs what was moved any more.
template< class R, class M >
void TableWriter< R, M >::settleShrink() {
  queue_.clearCorral();
  slots_->cutFile();
}

}  // namespace Quill
