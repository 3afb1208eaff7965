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
// O8  an entry's words before currentPos            notify()  -> ExistingTable::repair()
//     Entries are 12 bytes, so every second sequence cannot be stored in one piece: an entry at or
//     beyond currentPos is never read.
// O9  the new queue whole before it is current      compact() -> ExistingTable::isOneCurrent()
//     The file's notifications counter moves before it is rewritten and after, so who still reads
//     it from an earlier turn notices: ConquerReader::conquer().
// O15 currentPos before the look who sleeps        notify()  -> ConquerReader::isBehind()
//     Who goes to sleep says so, then looks at currentPos: one of the two sees the other's word.
#pragma once

#include <array>
#include <memory>
#include <vector>

#include <koi/Assert.h>
#include <mem/Followers.h>
#include <mem/Rova.h>
#include <quill/ConquerTable.h>
#include <quill/Record.h>
#include <quill/SeededFault.h>

namespace Quill {

template< class M >
class ConquerWriter {
 public:
  using File = typename M::File;
  using Files = std::array< std::unique_ptr< File >, 2 >;

  /// What the two files' headers agree on, as formatted or as repaired.
  ConquerWriter( Files files, bool prunes, Mem::Followers * followers,
                 Ntrace::Handler const & trace )
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
  [[gnu::always_inline]] void prefetch( U32 slot ) const {
    if( slot < positions_.size() )
      M::prefetch( &positions_[slot] );
  }
  [[gnu::always_inline]] void prefetchEntry( U32 slot ) const {
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
    ++numNotifications_;
    // O8: the entry is written.
    if( !followers_ || followers_->numReaders() == 0 ) {
      M::store( word( current_, ConquerTable::currentPosAt ), pos_ );
      return;
    }
    M::publish( word( current_, ConquerTable::currentPosAt ), pos_ );  // O15: then it wakes.
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
  bool isCorralPassed() {
    if( corralStart_ == 0 )
      return true;
    return corralEnd_ != 0 &&
           ( !followers_ || followers_->lowestSequence( sequence_ ) >= corralEnd_ );
  }
  void clearCorral() {
    if( corralStart_ != 0 )
      corralIs( 0, 0 );
  }

  /// As many readers are attached.
  void numReadersIs( U32 count ) {
    M::store( word( current_, ConquerTable::numReadersAt ), count );
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

  // ---- ConquerCompact.h says how
  void prune();
  bool isKept( Entry const & entry, U32 pos ) const;
  void compact( U32 extra );
  void adjustCorral();

  Files files_;
  bool const prunes_;
  Mem::Followers * const followers_;
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

#include <quill/ConquerCompact.h>
