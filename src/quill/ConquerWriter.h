// ConquerWriter.h: the writer's side of the notification queue: one live notification for each slot
// that changed, in the order of the changes. Used by the table's writer, on one thread.
//
// I5  Sequences in a queue grow. An entry is live when the slot it names has it as its position;
// each
//     occupied slot has exactly one, a free slot at most one.
// I6  Exactly one of the two files names itself as current. It holds the last sequence, unless
//     minSeq is that.
//
// The queue is as long as there are slots that ever changed: what a new notification replaces
// becomes a tombstone, and when the file is full the live ones go to the other file.
//
// Ordering
// --------
// O8  an entry's words before currentPos            notify()  -> whoever follows the queue
//     Entries are 12 bytes, so every second sequence cannot be stored in one piece: an entry at or
//     beyond currentPos is never read.
// O9  the new queue whole before it is current      compact() -> whoever follows the queue
//     The file's notifications counter moves before it is rewritten and after, so who still reads
//     it from an earlier turn notices.
#pragma once

#include <array>
#include <memory>
#include <vector>

#include <koi/Assert.h>
#include <mem/Rova.h>
#include <quill/ConquerTable.h>
#include <quill/Followers.h>
#include <quill/Record.h>
#include <quill/SeededFault.h>

namespace Quill {

template< class M >
class ConquerWriter {
 public:
  using File = typename M::File;
  using Files = std::array< std::unique_ptr< File >, 2 >;

  /// What the two files' headers agree on, as formatted or as repaired.
  ConquerWriter( Files files, bool prunes, Followers * followers, Ntrace::Handler const & trace )
      : files_( std::move( files ) ), prunes_( prunes ), followers_( followers ), trace_( trace ) {
    auto const first = header( conquer1 );
    current_ = first.currentTable == conquer1 ? conquer1 : conquer2;
    auto const now = header( current_ );
    pos_ = now.currentPos;
    capacity_ = now.notifications.ref;
    minSeq_ = now.minSeq;
    corralStart_ = now.corralStart;
    corralEnd_ = now.corralEnd;
    sequence_ = minSeq_;
    if( pos_ > 0 )
      sequence_ = std::max( sequence_, entry( current_, pos_ - 1 ).sequence );
  }

  struct Entry {
    U64 sequence = 0;
    U32 slot = noIndex;
  };

  U64 sequence() const { return sequence_; }
  U64 minSeq() const { return minSeq_; }
  U32 currentPos() const { return pos_; }
  U32 capacity() const { return capacity_; }
  ConquerTableId current() const { return current_; }
  ConquerTable::Header header( ConquerTableId id ) const {
    return loadedHeader< M, ConquerTable::Header >( files_[id]->base(), files_[id]->size() );
  }
  Entry entry( ConquerTableId id, U32 pos ) const {
    U32 const * const at = entryAt( id, pos );
    U32 const low = M::load( at ), high = M::load( at + 1 );
    return { U64{ high } << 32 | low, M::load( at + 2 ) };
  }

  /// The place of a slot's live notification; noIndex when it has none.
  U32 position( U32 slot ) const {
    U32 const at = slot < positions_.size() ? positions_[slot] : noIndex;
    return at == noIndex ? noIndex : at & ~freeBit;
  }
  /// Of a writer that attaches to an existing queue: the entry at `pos` is the slot's live one.
  void positionIs( U32 slot, U32 pos, bool isFree ) {
    positionOf( slot ) = pos | ( isFree ? freeBit : 0 );
  }
  /// Makes room for the positions of that many slots at once.
  void reservePositions( U32 numSlots ) { positions_.reserve( numSlots ); }

  /// What a notification of that slot will touch, and then what it takes back.
  void prefetch( U32 slot ) const {
    if( slot < positions_.size() )
      M::prefetch( &positions_[slot] );
  }
  void prefetchEntry( U32 slot ) const {
    if( U32 const pos = position( slot ); pos < pos_ )
      M::prefetch( entryAt( current_, pos ) );
  }

  /// Makes room for that many notifications, so that as many notify() cannot fail. Raises
  /// Rova::MemoryResourceException; nothing is changed then.
  void reserve( U32 count ) {
    if( pos_ + U64{ count } > capacity_ ) {
      prune();
      compact( count );
    }
  }

  /// Says that a slot changed, to who follows the queue. Needs room.
  void notify( U32 slot, bool isFree ) {
    tombstone( slot );
    KOI_ASSERT( pos_ < capacity_ );
    U32 * const at = entryAt( current_, pos_ );
    if( M::lacks( SeededFault::entryBeforePos ) )
      M::store( word( current_, ConquerTable::currentPosAt ), pos_ + 1 );
    ++sequence_;
    M::store( at, static_cast< U32 >( sequence_ ) );
    M::store( at + 1, static_cast< U32 >( sequence_ >> 32 ) );
    M::store( at + 2, slot );
    positionOf( slot ) = pos_ | ( isFree ? freeBit : 0 );
    ++pos_;
    M::store( word( current_, ConquerTable::currentPosAt ), pos_ );  // O8: the entry is written.
    ++numNotifications_;
    if( followers_ )
      followers_->wake();
  }
  /// Takes back a slot's notification; false when it has none, or when it stands in the corral and
  /// stays there. Raises Rova::CorruptionDetectedException "ConquerWriter::tombstone() conquer slot
  /// mismatch, slot:<slot>" and "ConquerWriter::notify() conquer index out-of-range, pos:<p>
  /// max:<m>".
  bool tombstone( U32 slot ) {
    U32 const pos = position( slot );
    if( pos == noIndex )
      return false;
    if( pos >= pos_ )
      corrupt( "ConquerWriter::notify() conquer index out-of-range, pos:" + std::to_string( pos ) +
               " max:" + std::to_string( pos_ ) );
    auto const old = entry( current_, pos );
    if( old.slot != slot )
      corrupt( "ConquerWriter::tombstone() conquer slot mismatch, slot:" + std::to_string( slot ) );
    positions_[slot] = noIndex;
    if( isInCorral( old.sequence ) ) {
      trace_.trace( 8, "ConquerWriter::tombstone() ignoring tomb.seq:", old.sequence );
      return false;
    }
    if( !M::lacks( SeededFault::tombstone ) )
      M::store( entryAt( current_, pos ) + 2, noIndex );
    ++numTombstones_;
    return true;
  }

  // ---- entries that move: the corral

  /// Entries begin to move: what is notified from now on stays until markShrinkEnd() is past.
  void markShrinkStart() { corralIs( sequence_ + 1, 0 ); }
  void markShrinkEnd() {
    if( corralStart_ > sequence_ )
      corralIs( 0, 0 );  // nothing moved
    else
      corralIs( corralStart_, sequence_ );
  }
  bool isMoving() const { return corralStart_ != 0 && corralEnd_ == 0; }
  U64 corralEnd() const { return corralEnd_; }
  /// Every attached reader has seen all that moved.
  bool isCorralPassed() const {
    U64 const lowest = followers_ ? followers_->lowestSequence() : Followers::nobody;
    return corralStart_ == 0 || ( corralEnd_ != 0 && lowest >= corralEnd_ );
  }
  void clearCorral() {
    if( corralStart_ != 0 )
      corralIs( 0, 0 );
  }

  U64 numNotifications() const { return numNotifications_; }
  U64 numTombstones() const { return numTombstones_; }
  /// Bytes of memory besides the files.
  std::size_t bytes() const { return positions_.capacity() * sizeof( U32 ); }
  U64 fileBytes() const { return files_[0]->size() + files_[1]->size(); }

  [[noreturn]] void corrupt( std::string const & text ) const {
    trace_.trace( 0, text );
    throw Rova::CorruptionDetectedException( text );
  }

 private:
  static constexpr U32 freeBit = 0x80000000;

  U32 * word( ConquerTableId id, U32 at ) const {
    return reinterpret_cast< U32 * >( files_[id]->base() + at );
  }
  U64 * pair( ConquerTableId id, U32 at ) const {
    return reinterpret_cast< U64 * >( files_[id]->base() + at );
  }
  U32 * entryAt( ConquerTableId id, U32 pos ) const {
    return reinterpret_cast< U32 * >( files_[id]->base() + ConquerTable::notificationAt( pos ) );
  }
  U32 & positionOf( U32 slot ) {
    if( slot >= positions_.size() )
      positions_.resize( slot + 1, noIndex );
    return positions_[slot];
  }

  bool isInCorral( U64 sequence ) const {
    return corralStart_ != 0 && sequence >= corralStart_ &&
           ( corralEnd_ == 0 || sequence <= corralEnd_ );
  }
  void corralIs( U64 start, U64 end ) {
    corralStart_ = start;
    corralEnd_ = end;
    M::store( pair( current_, ConquerTable::corralStartAt ), start );
    M::store( pair( current_, ConquerTable::corralEndAt ), end );
  }

  /// Finds from which sequence on readers still need what was said of slots that are free now.
  void prune() {
    if( !prunes_ )
      return;
    if( followers_ && followers_->areAwaited() ) {
      trace_.trace( 5, "ConquerWriter::prune() cannot prune, waiting for readers" );
      return;
    }
    U64 const lowest = followers_ ? followers_->lowestSequence() : Followers::nobody;
    if( lowest <= minSeq_ ) {
      trace_.trace( 5, "ConquerWriter::prune() cannot prune, minSeq:", minSeq_,
                    " lowestSequence:", lowest );
      return;
    }
    U64 const now = lowest == Followers::nobody ? sequence_ : lowest;
    trace_.trace( 5, "ConquerWriter::prune() pruning up to minSeq:", now, " (old minSeq:", minSeq_,
                  ") current sequence: ", sequence_ );
    minSeq_ = now;
    M::store( pair( current_, ConquerTable::minSeqAt ), minSeq_ );
  }

  /// Whether the entry goes along to the other file.
  bool isKept( Entry const & entry, U32 pos ) const {
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
  void compact( U32 extra ) {
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
  void adjustCorral() {
    if( corralStart_ == 0 )
      return;
    trace_.trace( 5, "ConquerWriter::adjustCorral() cleared corralStart:", corralStart_ );
    corralIs( 0, 0 );
  }

  Files files_;
  bool const prunes_;
  Followers * const followers_;
  Ntrace::Handler const & trace_;
  ConquerTableId current_ = conquer1;
  U32 pos_ = 0;
  U32 capacity_ = 0;
  U64 minSeq_ = 0;
  U64 sequence_ = 0;
  U64 corralStart_ = 0;
  U64 corralEnd_ = 0;
  U64 numNotifications_ = 0;
  U64 numTombstones_ = 0;
  std::vector< U32 > positions_;
};

}  // namespace Quill
