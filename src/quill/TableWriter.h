// TableWriter.h: everything that changes a table, over words. QuillWriter puts values on top; tests
// put another memory below. One process, one thread.
//
// Each operation names the slot that it changes (the intent) until that slot's notification stands,
// so that a writer that is stopped anywhere leaves a table that the next attach repairs: the key
// that was being changed is as before or as after, everything else is untouched, and the slot is
// notified.
//
// Ordering
// --------
// O10 an entry linked before it is notified         write()       -> ExistingTable::repair()
// O11 a removed entry unlinked before it is cleared  remove()      -> TableReader::attempt()
//     A reader in a cleared slot finds the link that led there moved.
// O12 a moved entry relinked before its old slot is cleared  moveOne()  -> TableReader::attempt()
// O13 a smaller numSlots, then numBuckets' counter  endShrink()   -> TableReader::attempt()
//     A slot number that is used again after a shrink begins with the link counter that a new file
//     gives; a look-up that is under way over both begins again because of the bucket count.
// O14 a cleared slot's link before it is filled again  remove(), moveOne()  ->
// TableReader::loadSlot()
//     Who goes by slots and meets words of two entries finds the link moved, or the flags gone.
#pragma once

#include <optional>
#include <span>

#include <quill/ConquerWriter.h>
#include <quill/WriterHashMap.h>

namespace Quill {

template< class R, class M >
class TableWriter {
 public:
  using SlotsOf = SlotWriterTable< R, M >;
  using View = typename SlotsOf::View;
  using Buckets = WriterHashMap< R, M >;
  using Queue = ConquerWriter< M >;
  using Key = KeyWords< R >;

  static constexpr U32 numWords = numWordsOf< R >;
  using Value = ValueWords< R >;

  /// Takes files that validate.
  TableWriter( std::unique_ptr< SlotsOf > slots, std::unique_ptr< typename M::File > buckets,
               typename Queue::Files queues, U32 seed, bool prunes, Mem::Followers * followers,
               Ntrace::Handler const & trace )
      : slots_( std::move( slots ) ),
        buckets_( std::move( buckets ), *slots_, seed, trace ),
        queue_( std::move( queues ), prunes, followers, trace ),
        trace_( trace ) {}

  SlotsOf & slots() { return *slots_; }
  SlotsOf const & slots() const { return *slots_; }
  Buckets & buckets() { return buckets_; }
  Buckets const & buckets() const { return buckets_; }
  Queue & queue() { return queue_; }
  Queue const & queue() const { return queue_; }

  /// Inserts or replaces the entry whose key the value carries; what comes back is the value's
  /// words in its slot, until the next operation. With `notifies` false, who follows the queue is
  /// not told of a replaced value, only of a new entry. Raises DirectWriteException
  /// "QuillWriter::write() unbalanced directSlot:<slot>", TableFullException,
  /// Rova::MemoryResourceException; nothing is changed then. Raises
  /// Rova::CorruptionDetectedException.
  U32 const * write( Value const & value, bool notifies = true ) {
    return write( value, buckets_.hash( value.key() ), notifies );
  }
  /// As many writes in order, faster. What an operation raises leaves those before it done.
  void write( std::span< Value const > values, bool notifies = true ) {
    constexpr std::size_t most = 32;
    U32 hash[most];
    for( ; !values.empty(); values = values.subspan( std::min( most, values.size() ) ) ) {
      auto const some = values.first( std::min( most, values.size() ) );
      for( std::size_t i = 0; i < some.size(); ++i )
        buckets_.prefetchBucket( hash[i] = buckets_.hash( some[i].key() ) );
      for( std::size_t i = 0; i < some.size(); ++i )
        queue_.prefetch( buckets_.prefetchSlot( hash[i] ) );
      for( std::size_t i = 0; i < some.size(); ++i )
        queue_.prefetchEntry( buckets_.prefetchSlot( hash[i] ) );
      for( std::size_t i = 0; i < some.size(); ++i )
        write( some[i], hash[i], notifies );
    }
  }

  /// Deletes the entry, and says what it was; false when there is none. Raises as write() does,
  /// with "QuillWriter::remove() unbalanced directSlot:<slot>".
  bool remove( Key const & key, Value * valueOut = nullptr ) {
    refuseUnbalanced( "remove" );
    goOnShrinking();  // which notifies, too
    queue_.reserve( 1 );
    auto const found = buckets_.find( key, buckets_.hash( key ) );
    if( found.slot == noIndex )
      return false;
    U32 const slot = found.slot;
    // 1. Unlink, copy out, clear, free.
    if( !M::lacks( SeededFault::intentOfRemove ) )
      slots_->intentIs( slot );
    if( M::lacks( SeededFault::unlinkBeforeClear ) )
      slots_->clear( slot );
    buckets_.unlink( slot, found.before );  // O11: no chain has it.
    if( valueOut )
      loadWords< M, numWords >( valueOut->word, View::value( slots_->view().at( slot ) ) );
    slots_->clear( slot );
    // O14: its link moves before it is filled again.
    if( isMoving() && slot >= shrinkTarget_ )
      slots_->linkIs( slot, noIndex );  // it goes with the file's end
    else
      slots_->release( slot );
    slots_->occupiedIs( slots_->occupiedSlots() - 1 );
    // 2. Readers are to see it empty.
    queue_.notify( slot, true );
    slots_->intentIs( noIndex );
    // 3., 4. Fewer slots, fewer buckets.
    shrink();
    if( slots_->occupiedSlots() < buckets_.numBuckets() / 4 )
      buckets_.shrinkBuckets();
    return true;
  }

  /// Opens an entry for writing in place, a new one with nothing but its key; what comes back is
  /// its value's words, whose key is not to be touched, until directCommit(). Readers have the
  /// value as it was until then. Raises as write() does, with "QuillWriter::directWrite()
  /// unbalanced directSlot:<slot>".
  U32 * directWrite( Key const & key ) {
    refuseUnbalanced( "directWrite" );
    goOnShrinking();  // which notifies, too
    queue_.reserve( 1 );
    auto found = buckets_.find( key, buckets_.hash( key ) );
    directIsNew_ = found.slot == noIndex;
    if( directIsNew_ ) {
      found.slot = allocated();
      slots_->intentIs( found.slot );
      // Not OCCUPIED before it is whole: who goes by slots takes it for free.
      storeWords< M, numWords >( View::value( slots_->view().at( found.slot ) ),
                                 valueOf( key ).word );
    } else {
      slots_->beginRewrite( found.slot );
    }
    directSlot_ = found.slot;
    return View::value( slots_->view().at( found.slot ) );
  }
  /// Publishes what was written in place. Raises DirectWriteException "QuillWriter::directCommit()
  /// not in direct mode! Make sure the DirectIs/Commit are properly paired!".
  void directCommit( bool notifies = true ) {
    if( directSlot_ == noIndex )
      throw DirectWriteException(
          "QuillWriter::directCommit() not in direct mode! "
          "Make sure the DirectIs/Commit are properly paired!" );
    U32 const slot = directSlot_;
    directSlot_ = noIndex;
    if( directIsNew_ ) {
      Key const key = slots_->view().keyOf( slot );
      M::store( View::flags( slots_->view().at( slot ) ), SlotTable::occupied );
      link( slot, buckets_.find( key, buckets_.hash( key ) ).before );
    } else {
      slots_->endRewrite( slot );
    }
    if( notifies || directIsNew_ )
      queue_.notify( slot, false );
    slots_->intentIs( noIndex );
  }
  U32 directSlot() const { return directSlot_; }

  /// Moves entries to a shorter file when half of it would do. Much work is done in slices: the
  /// rest follows with the next operations.
  void shrink() {
    U32 const threshold = slots_->shrinkThreshold();
    if( slots_->occupiedSlots() < threshold / 2 )
      doMaybeShrinkSlots( threshold );
  }
  /// Entries are being moved.
  bool isMoving() const { return queue_.isMoving(); }

 private:
  U32 const * write( Value const & value, U32 hash, bool notifies ) {
    refuseUnbalanced( "write" );
    goOnShrinking();  // which notifies, too
    queue_.reserve( 1 );
    // The slot and its notification are far from each other and from the bucket: fetched at once.
    queue_.prefetch( buckets_.prefetchSlot( hash ) );
    auto const found = buckets_.find( value.key(), hash );
    U32 slot = found.slot;
    queue_.prefetchEntry( slot );
    if( slot == noIndex ) {
      // 1. A new slot: fill it, link it, count it. A bucket is a bucket after a move of the file,
      // too.
      slot = allocated();
      if( !M::lacks( SeededFault::intentOfInsert ) )
        slots_->intentIs( slot );
      if( M::lacks( SeededFault::linkBeforeNotify ) )
        queue_.notify( slot, false );
      fill( slot, value );
      link( slot, found.before );
      if( M::lacks( SeededFault::fillBeforeLink ) )
        fill( slot, value, true );
    } else {
      // 3. Rewrite in place.
      slots_->beginRewrite( slot, !M::lacks( SeededFault::intentOfOverwrite ) );
      storeWords< M, numWords >( View::value( slots_->view().at( slot ) ), value.word );
      slots_->endRewrite( slot );
    }
    // 4. Say so. A new entry has its notification (I5).
    bool const isNew = found.slot == noIndex;
    if( isNew ? !M::lacks( SeededFault::linkBeforeNotify ) : notifies )
      queue_.notify( slot, false );  // O10: the entry is what it is to be.
    slots_->intentIs( noIndex );
    return View::value( slots_->view().at( slot ) );
  }

  void refuseUnbalanced( char const * operation ) const {
    if( directSlot_ != noIndex )
      throw DirectWriteException( std::string( "QuillWriter::" ) + operation +
                                  "() unbalanced directSlot:" + std::to_string( directSlot_ ) );
  }
  static Value valueOf( Key const & key ) {
    Value value{};
    std::copy_n( key.word, Key::count, value.word );
    return value;
  }

  U32 allocated() {
    if( slots_->freeSlots() == noIndex && isMoving() )
      endShrink( slots_->numSlots() );
    U32 const slot = slots_->alloc();
    queue_.reservePositions( slots_->numSlots() );
    return slot;
  }
  void fill( U32 slot, Value const & value, bool isLate = false ) {
    if( M::lacks( SeededFault::fillBeforeLink ) && !isLate ) {
      Value const keyOnly = valueOf( value.key() );
      fill( slot, keyOnly, true );
      return;
    }
    unsigned char * const at = slots_->view().at( slot );
    storeWords< M, numWords >( View::value( at ), value.word );
    M::store( View::flags( at ), SlotTable::occupied );
  }
  void link( U32 slot, typename Buckets::Place const & before ) {
    buckets_.linkIn( slot, before );
    slots_->occupiedIs( slots_->occupiedSlots() + 1 );
    // 2. More buckets. An index that is too small is slow, not wrong.
    if( slots_->occupiedSlots() > buckets_.numBuckets() &&
        slots_->occupiedSlots() >= growBucketsAt_ ) {
      try {
        buckets_.growBuckets();
        growBucketsAt_ = 0;
      } catch( Rova::MemoryResourceException const & e ) {
        trace_.trace( 0, "WriterHashMap::growBuckets() put off: ", e.what() );
        growBucketsAt_ = slots_->occupiedSlots() + slots_->occupiedSlots() / 16 + 1;
      }
    }
  }

  // ---- shrinking

  // TableShrink.h says how
  void doMaybeShrinkSlots( U32 threshold );
  void goOnShrinking();
  bool moveOne( U32 from );
  void endShrink( U32 numSlots );
  void settleShrink();

  std::unique_ptr< SlotsOf > slots_;
  Buckets buckets_;
  Queue queue_;
  Ntrace::Handler const & trace_;
  U32 directSlot_ = noIndex;
  bool directIsNew_ = false;
  U32 shrinkTarget_ = noIndex;
  U32 shrinkNext_ = 0;
  U32 growBucketsAt_ = 0;
};

}  // namespace Quill

#include <quill/TableShrink.h>
