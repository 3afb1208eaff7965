// SlotWriterTable.h: the writer's hold on the slot file: who is free, how many there are, and which
// one is being changed. Used by the table's writer, on one thread.
//
// I1  A slot is in exactly one bucket chain (OCCUPIED) or on the free list (not OCCUPIED).
// I2  occupiedSlots counts the first kind; it equals numSlots when freeSlots is 0xFFFFFFFF.
// I3  Every slot below numSlots has its room reserved and is formatted.
//
// A stop after any single store leaves I1 and I2 to the repair at the next attach: the chains are
// the truth, free list and counts are made from them.
//
// Ordering
// --------
// O1  new slots formatted before numSlots grows     grow()         -> TableReader::remapped()
//     A reader with the old count meets no new slot: none is linked before it is counted.
// O2  the old value aside before the slot is odd    beginRewrite() -> TableReader::loadValue()
//     The copy stays as long as the slot is odd: a reader that meets the same odd sequence before
//     and after it read the copy has a whole one.
// O3  a rewritten value inside its odd sequence     beginRewrite() -> TableReader::loadValue()
//     A reader that meets a new word has by that load met the odd sequence too, so that its second
//     look at the sequence differs from its first.
#pragma once

#include <string>

#include <mem/Rova.h>
#include <quill/QuillException.h>
#include <quill/SeededFault.h>
#include <quill/Slots.h>

namespace Quill {

template< class R, class M >
class SlotWriterTable {
 public:
  using File = typename M::File;
  using View = Slots< R, M >;

  struct Limits {
    U32 minSlots = 8;
    U32 maxSlots = 0;
    bool fixedCapacity = false;
    bool shrinkSlots = true;
    U32 movesASlice = 4096;        ///< of a shrink, so many entries move with one operation
    U32 looksASlice = 256 * 1024;  ///< and it looks for them in so many slots
  };

  SlotWriterTable( std::unique_ptr< File > file, Limits limits, Ntrace::Handler const & trace )
      : file_( std::move( file ) ), view_( *file_ ), limits_( limits ), trace_( trace ) {
    auto const header = loadedHeader< M, SlotTable::Header >( file_->base(), file_->size() );
    numSlots_ = header.numSlots.ref;
    occupied_ = header.occupiedSlots;
    free_ = header.freeSlots;
    shrinkThresholdIsComputed();
  }

  View const & view() const { return view_; }
  U32 numSlots() const { return numSlots_; }
  U32 occupiedSlots() const { return occupied_; }
  U32 freeSlots() const { return free_; }
  Limits const & limits() const { return limits_; }

  // ---- who is free

  /// Takes a slot off the free list, which may make the file longer and move it. Raises
  /// TableFullException "SlotWriter::alloc() Quill table full (occupancy:<n> of <m>)",
  /// Rova::MemoryResourceException; nothing is changed then.
  U32 alloc() {
    if( free_ == noIndex )
      grow();
    U32 const slot = free_;
    freeIs( view_.linkOf( slot ).ref );
    return slot;
  }

  /// Empties a slot that no chain has. It is not on the free list yet.
  void clear( U32 slot ) {
    unsigned char * const at = view_.at( slot );
    M::store( View::flags( at ), 0 );
    U32 const zeros[numWordsOf< R >]{};
    storeWords< M, numWordsOf< R > >( View::value( at ), zeros );
  }
  /// Puts an empty slot on the free list.
  void release( U32 slot ) {
    linkIs( slot, free_ );
    freeIs( slot );
  }
  void occupiedIs( U32 count ) {
    occupied_ = count;
    M::store( view_.header( SlotTable::occupiedSlotsAt ), count );
  }
  /// Replaces a link, counter and all, by one store.
  void linkIs( U32 slot, U32 link ) { linkIs( View::link( view_.at( slot ) ), link ); }
  static void linkIs( U64 * at, U32 link ) {
    U32 const step = M::lacks( SeededFault::linkCounter ) ? 0 : linkStep;
    M::store( at, Mem::packed( { Mem::unpacked( M::load( at ) ).counter + step, link } ) );
  }

  /// Puts the slots of [start, end) on the free list. Raises Rova::CorruptionDetectedException
  /// "SlotWriterTable::addFreeSlots() free-list is not empty" and "SlotWriterTable::addFreeSlots()
  /// bad index range, start:<start> end:<end>".
  void addFreeSlots( U32 start, U32 end ) {
    if( free_ != noIndex )
      corrupt( "SlotWriterTable::addFreeSlots() free-list is not empty" );
    if( start >= end || end > numSlots_ )
      corrupt( "SlotWriterTable::addFreeSlots() bad index range, start:" + std::to_string( start ) +
               " end:" + std::to_string( end ) );
    linkFree( start, end );
    freeIs( start );
  }

  /// Takes every free slot at or above `target` off the free list. Raises
  /// Rova::CorruptionDetectedException "SlotWriterTable::purgeFreeSlots() free-list is empty" and
  /// "SlotWriter::purgeFreeSlots() numSlots mismatch, length of freeList:<n>".
  void purgeFreeSlots( U32 target ) {
    if( free_ == noIndex )
      corrupt( "SlotWriterTable::purgeFreeSlots() free-list is empty" );
    U32 length = 0, last = noIndex, first = noIndex;
    for( U32 slot = free_; slot != noIndex; ++length ) {
      U32 const next = view_.linkOf( slot ).ref;
      if( slot >= numSlots_ || length >= numSlots_ - occupied_ )
        break;
      if( slot < target ) {
        if( last == noIndex )
          first = slot;
        else if( view_.linkOf( last ).ref != slot )
          linkIs( last, slot );
        last = slot;
      }
      slot = next;
    }
    if( length != numSlots_ - occupied_ )
      corrupt( "SlotWriter::purgeFreeSlots() numSlots mismatch, length of freeList:" +
               std::to_string( length ) );
    if( last != noIndex && view_.linkOf( last ).ref != noIndex )
      linkIs( last, noIndex );
    freeIs( first );
  }
  /// Nothing above the target is free or occupied any more: counts the slots down to it.
  void numSlotsIs( U32 count ) {
    numSlots_ = count;
    auto const before = Mem::unpacked( M::load( view_.numSlots() ) );
    M::store( view_.numSlots(), Mem::packed( { before.counter + 1, count } ) );
    shrinkThresholdIsComputed();
  }
  /// Puts every slot of [start, numSlots) that is not occupied on the free list.
  void reclaim( U32 start ) {
    for( U32 slot = numSlots_; slot-- > start; )
      if( !( M::load( View::flags( view_.at( slot ) ) ) & SlotTable::occupied ) )
        release( slot );
  }
  /// Makes the free list anew: of all slots but those that `isTaken` names.
  template< class IsTaken >
  void freeListIs( IsTaken isTaken ) {
    freeIs( noIndex );
    for( U32 slot = numSlots_; slot-- > 0; )
      if( !isTaken( slot ) ) {
        clear( slot );
        release( slot );
      }
  }
  void cutFile() { file_->cut( SlotTable::fileSize( View::slotSize, numSlots_ ) ); }

  /// The largest power of two below numSlots where shrinking is allowed and worth while, else 0.
  U32 shrinkThreshold() const { return shrinkThreshold_; }

  // ---- who is being changed

  /// Names the slot that is being changed until its notification stands; noIndex: none is.
  void intentIs( U32 slot ) { linkIs( View::link( view_.lookaside() ), slot ); }

  /// Names the slot that an entry leaves, beside the intent that names where it goes; noIndex:
  /// none.
  void leavingIs( U32 slot ) { M::store( View::sequence( view_.lookaside() ), slot + 1 ); }
  U32 leaving() const { return M::load( View::sequence( view_.lookaside() ) ) - 1; }

  /// Puts a slot's value aside, names the slot and makes its sequence odd. The value may be
  /// rewritten.
  void beginRewrite( U32 slot, bool isNamed = true ) {
    unsigned char * const at = view_.at( slot );
    if( !M::lacks( SeededFault::copyBeforeOverwrite ) ) {
      U32 copy[numWordsOf< R >];
      loadWords< M, numWordsOf< R > >( copy, View::value( at ) );
      storeWords< M, numWordsOf< R > >( View::value( view_.lookaside() ), copy );
    }
    if( isNamed )
      intentIs( slot );  // O2: the copy is whole
    if( !M::lacks( SeededFault::oddSequence ) )
      M::store( View::sequence( at ), M::load( View::sequence( at ) ) | 1 );  // O2, O3
  }
  void endRewrite( U32 slot ) {
    U32 * const sequence = View::sequence( view_.at( slot ) );
    if( !M::lacks( SeededFault::evenSequence ) && !M::lacks( SeededFault::oddSequence ) )
      M::store( sequence, M::load( sequence ) + 1 );  // O3: all words are new
  }

  [[noreturn]] void corrupt( std::string const & text ) const {
    trace_.trace( 0, text );
    throw Rova::CorruptionDetectedException( text );
  }

 private:
  void freeIs( U32 slot ) {
    free_ = slot;
    M::store( view_.header( SlotTable::freeSlotsAt ), slot );
  }
  void linkFree( U32 start, U32 end ) {
    for( U32 slot = start; slot < end; ++slot )
      linkIs( slot, slot + 1 < end ? slot + 1 : noIndex );
  }

  void grow() {
    if( occupied_ != numSlots_ )
      corrupt(
          "SlotWriter::grow() the slot table is full but numSlots:" + std::to_string( numSlots_ ) +
          " and occupiedSlots: " + std::to_string( occupied_ ) + " are not equal" );
    if( limits_.fixedCapacity || numSlots_ >= limits_.maxSlots )
      throw TableFullException(
          "SlotWriter::alloc() Quill table full (occupancy:" + std::to_string( occupied_ ) +
          " of " + std::to_string( limits_.fixedCapacity ? numSlots_ : limits_.maxSlots ) + ")" );
    U32 const count =
        static_cast< U32 >( std::min( 2 * U64{ numSlots_ }, U64{ limits_.maxSlots } ) );
    // 1. Room, which may move the file.
    unsigned char const * const before = file_->base();
    if( !M::lacks( SeededFault::reserveSlots ) )
      file_->reserve( SlotTable::fileSize( View::slotSize, count ) );
    if( file_->base() != before )
      trace_.trace( 3, "SlotWriter::resize() remap base address changed from ",
                    static_cast< void const * >( before ), " to ",
                    static_cast< void const * >( file_->base() ) );
    // 2. Format. Their links go on from what an earlier use left, so that nobody takes them for it.
    U32 const start = numSlots_;
    linkFree( start, count );
    // 3. Count them, then make them free.
    if( M::lacks( SeededFault::countSlots ) )
      numSlots_ = count;
    else
      numSlotsIs( count );  // O1: the slots are formatted.
    freeIs( start );
    trace_.trace( 2, "SlotWriter::grow() numSlots:", count );
  }

  void shrinkThresholdIsComputed() {
    shrinkThreshold_ = 0;
    if( limits_.shrinkSlots && !limits_.fixedCapacity && numSlots_ > limits_.minSlots ) {
      shrinkThreshold_ = 1;
      while( U64{ shrinkThreshold_ } * 2 < numSlots_ )
        shrinkThreshold_ *= 2;
    }
    trace_.trace( 5, "SlotWriter::shrinkThreshold(): shrinkThreshold_:", shrinkThreshold_ );
  }

  std::unique_ptr< File > file_;
  View view_;
  Limits limits_;
  Ntrace::Handler const & trace_;
  U32 numSlots_ = 0;
  U32 occupied_ = 0;
  U32 free_ = noIndex;
  U32 shrinkThreshold_ = 0;
};

}  // namespace Quill
