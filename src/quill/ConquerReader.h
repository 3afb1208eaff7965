// ConquerReader.h: follows a table's notification queue: which slots changed since it looked last.
// One thread uses an object; any number of objects, in any processes, follow one queue. It writes
// nothing to the files and waits for nobody.
//
// The queue says which slots changed, not what became of them: the owner looks at each slot it is
// handed. A slot that changed again later may be handed once.
//
// Who comes so late that deletions were dropped from the queue meanwhile is told that it is out of
// step, and looks at the whole table once more.
#pragma once

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <string>

#include <mem/Rova.h>
#include <quill/ConquerTable.h>
#include <quill/Record.h>
#include <quill/SeededFault.h>

namespace Quill {

template< class M >
class ConquerReader {
 public:
  using File = typename M::File;
  using Files = std::array< std::unique_ptr< File >, 2 >;
  enum class Outcome {
    caughtUp,  ///< there was no more
    more,      ///< call again
    outOfStep  ///< what was asked for is not there any more: synchronise, then startAt()
  };

  static constexpr U32 mostAtOnce = 256;

  /// Takes files that validate.
  ConquerReader( Files files, Ntrace::Handler const & trace )
      : files_( std::move( files ) ), trace_( trace ) {}

  /// The table's sequence now: of what has been notified last. Raises as conquer() does.
  U64 tableSequence() {
    for( U32 i = 0; i < mostAttempts; ++i ) {
      auto const now = turn();
      U64 const last = now.end == 0 ? 0 : entry( now.id, now.end - 1 ).sequence;
      if( isStill( now ) )
        return std::max( now.minSeq, last );
    }
    corrupt( "ConquerReader::initialize() failed validation, reason: the queue never rests" );
  }

  /// Everything up to that sequence is known.
  void startAt( U64 sequence ) {
    sequence_ = sequence;
    at_.reset();
  }
  /// Everything up to this one has been handed on.
  U64 sequence() const { return sequence_; }

  /// Hands each slot that changed to onSlot( slot ), oldest first, at most `sample` entries of the
  /// queue and never more than mostAtOnce. What onSlot raises leaves what it was handed as done.
  /// Raises Rova::CorruptionDetectedException "ConquerReader::doConquer() unexpected position in
  /// <file>:<pos>", "ConquerReader::doConquer() unexpected sequence in <file>:<sequence>" and
  /// "ConquerReader::initialize() failed validation, reason:<why>".
  template< class OnSlot >
  Outcome conquer( U32 sample, OnSlot onSlot ) {
    auto const now = turn();
    if( !at_ || !at_->isSameTurn( now ) ) {
      at_ = now;
      if( !findPosition( now ) )
        return Outcome::more;
      // Deletions up to minSeq were dropped when the queue went over to this file.
      if( sequence_ < now.minSeq )
        return Outcome::outOfStep;
    }
    if( pos_ > now.end )
      corrupt( "ConquerReader::doConquer() unexpected position in " + name( now.id ) + ":" +
               std::to_string( pos_ ) );
    std::array< Entry, mostAtOnce > some;  // as many as there are, and no more, are filled
    U32 const count = std::min( { sample, now.end - pos_, mostAtOnce } );
    for( U32 i = 0; i < count; ++i )
      some[i] = entry( now.id, pos_ + i );
    // O9: none of them was read while the file was written anew.
    if( !isStill( now ) && !M::lacks( SeededFault::recheckQueue ) )
      return Outcome::more;
    for( U32 i = 0; i < count; ++i ) {
      auto const & one = some[i];
      if( one.sequence <= sequence_ )
        corrupt( "ConquerReader::doConquer() unexpected sequence in " + name( now.id ) + ":" +
                 std::to_string( one.sequence ) );
      sequence_ = one.sequence;
      ++pos_;
      if( one.slot == noIndex )
        continue;
      trace_.trace( 9, "ConquerReader::doConquer() notifying slot:", one.slot );
      ++numNotifications_;
      onSlot( one.slot );
    }
    trace_.trace( 8, "ConquerReader::conquer() Consumed ", count );
    return pos_ < now.end ? Outcome::more : Outcome::caughtUp;
  }

  /// O15: whether there is more, asked after saying that one goes to sleep.
  bool isBehind() {
    if( !at_ || M::load( word( at_->id, ConquerTable::currentTableAt ) ) != at_->id ||
        !isStill( *at_ ) )
      return true;
    return M::observe( word( at_->id, ConquerTable::currentPosAt ) ) != pos_;
  }

  U64 numNotifications() const { return numNotifications_; }

 private:
  static constexpr U32 mostAttempts = 1000000;

  struct Entry {
    U64 sequence;
    U32 slot;
  };
  /// One file while it is current: from one rewriting to the next.
  struct Turn {
    ConquerTableId id = conquer1;
    U32 counter = 0;
    U64 minSeq = 0;
    U32 end = 0;

    bool isSameTurn( Turn const & other ) const {
      return id == other.id && counter == other.counter;
    }
  };

  static std::string name( ConquerTableId id ) { return ConquerTable::fileName[id]; }
  U32 const * word( ConquerTableId id, U32 at ) const {
    return reinterpret_cast< U32 const * >( files_[id]->base() + at );
  }
  U64 const * pair( ConquerTableId id, U32 at ) const {
    return reinterpret_cast< U64 const * >( files_[id]->base() + at );
  }
  U32 counter( ConquerTableId id ) const {
    return Mem::unpacked( M::load( pair( id, ConquerTable::notificationsAt ) ) ).counter;
  }
  bool isStill( Turn const & turn ) const { return counter( turn.id ) == turn.counter; }
  Entry entry( ConquerTableId id, U32 pos ) const {
    auto const * const at =
        reinterpret_cast< U32 const * >( files_[id]->base() + ConquerTable::notificationAt( pos ) );
    U32 const low = M::load( at ), high = M::load( at + 1 );
    return { U64{ high } << 32 | low, M::load( at + 2 ) };
  }

  /// The current file as it is now, mapped as far as it is filled.
  Turn turn() {
    std::string why;
    for( U32 i = 0; i < mostAttempts; ++i )
      for( auto const id : { conquer1, conquer2 } ) {
        Turn now{ id, counter( id ), 0, 0 };
        // O9: who names itself is whole. Both do while the queue goes over, and either will do.
        if( M::load( word( id, ConquerTable::currentTableAt ) ) != id )
          continue;
        now.minSeq = M::load( pair( id, ConquerTable::minSeqAt ) );
        now.end = M::load( word( id, ConquerTable::currentPosAt ) );  // O8
        if( files_[id]->size() < ConquerTable::fileSize( now.end ) ) {
          files_[id]->remap();
          if( files_[id]->size() < ConquerTable::fileSize( now.end ) ) {
            why = "file size";
            continue;
          }
        }
        if( isStill( now ) )
          return now;
      }
    corrupt( "ConquerReader::initialize() failed validation, reason: " +
             ( why.empty() ? "no queue is current" : why ) );
  }

  /// The first entry whose sequence is above the last one that was handed on; false when the queue
  /// went over meanwhile.
  bool findPosition( Turn const & now ) {
    U32 low = 0, high = now.end;
    while( low < high ) {
      U32 const mid = low + ( high - low ) / 2;
      trace_.trace( 9, "ConquerReader::findPosition() low pos:", low, " mid pos:", mid );
      if( entry( now.id, mid ).sequence <= sequence_ )
        low = mid + 1;
      else
        high = mid;
    }
    pos_ = low;
    if( isStill( now ) )
      return true;
    trace_.trace( 8, "ConquerReader::findPosition() conquerSwapped again" );
    at_.reset();
    return false;
  }

  [[noreturn]] void corrupt( std::string const & text ) const {
    trace_.trace( 0, text );
    throw Rova::CorruptionDetectedException( text );
  }

  Files files_;
  Ntrace::Handler const & trace_;
  std::optional< Turn > at_;
  U32 pos_ = 0;
  U64 sequence_ = 0;
  U64 numNotifications_ = 0;
};

}  // namespace Quill
