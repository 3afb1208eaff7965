// ShadowEngine.h: keeps a copy of a table that another process writes, and says which keys changed.
// QuillShadow puts values and an event loop on top; tests put another memory below. One thread.
//
// It begins, and begins again when it is out of step, by looking at every slot; from then on the
// queue says which slots to look at. A slot says what it holds now, not which key left it: that is
// what the copy is for.
//
// I1  A key that stays in the table is never reported as gone: a key that left its slot is looked
// up
//     in the table first, for it may have moved, or come again. Where it is, is put into the copy
//     at once; what the queue says of it later changes nothing.
// I2  After a change, of whatever kind, the key is reported, once or more often, at the latest when
//     the queue is read to its end.
// I3  While the table is looked at anew the copy stays as it was; then only differences are
//     reported. The first time nothing is: all that is there is new.
#pragma once

#include <chrono>
#include <utility>

#include <quill/ConquerReader.h>
#include <quill/ShadowStore.h>
#include <quill/TableReader.h>

namespace Quill {

/// Keeps the first `numWords` words of each value: all, or the key's alone.
template< class R, class M, U32 numWords >
class ShadowEngine {
 public:
  using Reader = TableReader< R, M >;
  using Queue = ConquerReader< M >;
  using Store = ShadowStore< R, numWords >;
  using Key = KeyWords< R >;
  using Value = ValueWords< R >;
  using Clock = std::chrono::steady_clock;

  ShadowEngine( std::unique_ptr< Reader > reader, std::unique_ptr< Queue > queue,
                Ntrace::Handler const & trace )
      : reader_( std::move( reader ) ),
        queue_( std::move( queue ) ),
        trace_( trace ),
        store_( emptyStore() ),
        into_( store_.get() ) {}

  /// Goes on with other files, which may be another table's: what is different there will be
  /// reported.
  void moved( std::unique_ptr< Reader > reader, std::unique_ptr< Queue > queue ) {
    if( state_ == comparing )
      moving_.emplace( std::move( reader ), std::move( queue ) );  // what was begun is said first
    else
      moveTo( std::move( reader ), std::move( queue ) );
  }

  /// Reports all that is there, once more. Needs to be synchronized.
  void tellAll();

  Store const & store() const { return *store_; }
  Reader & reader() { return *reader_; }
  Reader const & reader() const { return *reader_; }
  Queue & queue() { return *queue_; }
  Queue const & queue() const { return *queue_; }
  /// How often it had to look at the whole table again.
  U64 numResyncs() const { return numResyncs_; }
  /// Whether the copy is what the table was at some moment.
  bool isSynchronized() const { return !isFirst_; }
  /// Everything that is different has been reported once; from now on it is what the queue says.
  bool isFollowing() const { return state_ == following; }
  /// Everything up to this has been handed on.
  U64 sequence() const { return queue_->sequence(); }

  /// Goes on until `end`: with looking at the table, with reporting what is different there, then
  /// with what the queue says, of which it takes at most `sample` entries. Reports the keys that
  /// changed, onKey( key ), which may look at the copy and raises nothing. True when there is no
  /// more to do. Raises as TableReader::lookup() and ConquerReader::conquer() do; nothing is
  /// forgotten by that.
  template< class OnKey >
  bool goOn( Clock::time_point end, U32 sample, OnKey onKey ) {
    if( state_ == beginning )
      begin();
    if( state_ == copying && !copied( end ) )
      return false;
    if( state_ == catchingUp && !caughtUp( end ) )
      return false;
    if( state_ == comparing && !compared( end, onKey ) )
      return false;
    settle( onKey );
    for( U32 left = sample; left > 0; left -= std::min( left, Queue::mostAtOnce ) ) {
      auto const outcome = conquered( left, onKey );
      if( outcome == Outcome::caughtUp ) {
        store_->tryShrink( numShared() );
        return true;
      }
      if( outcome == Outcome::outOfStep || Clock::now() >= end )
        return false;
    }
    return false;
  }

 private:
  static constexpr bool keepsValues = numWords == numWordsOf< R >;
  static constexpr U32 slotsBetweenLooks = 1024;  // at the clock
  using Outcome = typename Queue::Outcome;
  enum State { beginning, copying, catchingUp, comparing, following };
  struct Lost {
    Key key;
    typename Store::Words was;
  };

  std::unique_ptr< Store > emptyStore() const {
    auto const header = reader_->slots().loaded();
    return std::make_unique< Store >(
        reader_->seed(), std::min( header.occupiedSlots, reader_->slots().numMapped() ), trace_ );
  }
  U32 numShared() const { return Mem::unpacked( M::load( reader_->slots().numSlots() ) ).ref; }

  // ---- looking at the whole table: ShadowSync.h says how
  void moveTo( std::unique_ptr< Reader > reader, std::unique_ptr< Queue > queue );
  void resync();
  void begin();
  bool copied( Clock::time_point end );
  void traceSynced( U32 first ) const;
  bool caughtUp( Clock::time_point end );
  template< class OnKey >
  bool compared( Clock::time_point end, OnKey & onKey );
  void compareOld( U32 slot );
  template< class OnKey >
  void compareNew( U32 slot, OnKey & onKey );

  // ---- what the queue says

  template< class OnKey >
  Outcome conquered( U32 sample, OnKey & onKey ) {
    auto const outcome = queue_->conquer( sample, [&]( U32 slot ) {
      doSlot( slot, onKey );
      settle( onKey );
    } );
    if( outcome == Outcome::outOfStep ) {
      trace_.trace( 2, "QuillShadow::resync() Out-of-sync, re-synchronizing local shadow" );
      resync();
    }
    return outcome;
  }
  template< class OnKey >
  void doSlot( U32 slot, OnKey & onKey ) {
    Value value;
    if( reader_->loadSlot( slot, value ) )
      put( slot, value, onKey );
    else if( into_->isOccupied( slot ) )
      lose( slot );
    else if( slot >= into_->numSlots() )
      trace_.trace(
          9, "ShadowStore::doSlot() skip growing of shadow table to accomodate slotIndex:", slot );
    else
      trace_.trace( 9, "ShadowStore::doSlot() discarding notification for slotIndex:", slot );
  }
  template< class OnKey >
  void put( U32 slot, Value const & value, OnKey & onKey ) {
    Key const key = value.key();
    U32 const other = into_->find( key );
    if( other == slot ) {
      if( into_->update( slot, value.word ) || !keepsValues )
        onKey( key );
      return;
    }
    // While entries move a key may be in two slots: this one is to be found.
    if( into_->isOccupied( slot ) ) {
      if( into_->at( slot ).key() == key )
        into_->remove( slot );
      else
        lose( slot );
    }
    bool const isSame = other != noIndex && isAs( value, into_->at( other ) );
    into_->insert( slot, value.word );
    if( !isSame )
      onKey( key );
  }
  void lose( U32 slot ) {
    auto const was = into_->at( slot );
    into_->remove( slot );
    lost_.push_back( { was.key(), was } );
  }
  /// What left its slot is somewhere else, or it is gone.
  template< class OnKey >
  void settle( OnKey & onKey ) {
    while( !lost_.empty() ) {
      auto const one = lost_.back();
      Value value;
      U32 slot = into_->find( one.key );
      bool const isInCopy = slot != noIndex;
      bool const isThere =
          isInCopy ? reader_->loadSlot( slot, value ) && value.key() == one.key
                   : !M::lacks( SeededFault::lookElsewhere ) && reader_->lookup( one.key, value );
      lost_.pop_back();  // nothing below raises
      if( isInCopy && !isThere ) {
        lose( slot );
        lost_.back().was = one.was;
        continue;
      }
      if( isInCopy ) {
        into_->update( slot, value.word );
      } else if( isThere ) {
        slot = reader_->foundSlot();
        if( into_->isOccupied( slot ) )
          lose( slot );
        into_->insert( slot, value.word );
      }
      if( !isThere || !isAs( value, one.was ) )
        onKey( one.key );
    }
  }
  /// Known to be the same.
  static bool isAs( Value const & value, typename Store::Words const & kept ) {
    return keepsValues && std::equal( kept.word, kept.word + numWords, value.word );
  }

  std::unique_ptr< Reader > reader_;
  std::unique_ptr< Queue > queue_;
  Ntrace::Handler const & trace_;
  State state_ = beginning;
  bool isFirst_ = true;
  bool isAllToTell_ = false;
  std::unique_ptr< Store > store_;
  std::unique_ptr< Store > next_;  // what is to be; when it is compared: what was
  Store * into_;                   // which of them changes
  U32 syncSlot_ = 0;
  U64 numResyncs_ = 0;
  U64 catchUpTo_ = 0;
  Clock::time_point began_;
  std::vector< Lost > lost_;   // left their slots
  std::vector< Key > unsaid_;  // did when the table was to be looked at anew
  std::optional< std::pair< std::unique_ptr< Reader >, std::unique_ptr< Queue > > > moving_;
};

}  // namespace Quill

#include <quill/ShadowSync.h>
