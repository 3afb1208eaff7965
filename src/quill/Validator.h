// Validator.h: whether a table keeps what it promises, I1 to I6, and which it does not. It changes
// nothing. Used by the writer process, or on files that no writer has.
#pragma once

#include <string>
#include <vector>

#include <quill/ChainSurvey.h>
#include <quill/TableWriter.h>

namespace Quill {

template< class R, class M >
class Validator {
 public:
  using Writer = TableWriter< R, M >;
  using View = Slots< R, M >;

  explicit Validator( Writer const & writer )
      : writer_( writer ), slots_( writer.slots().view() ) {}

  /// Empty, or the first promise that is not kept.
  std::string fault() {
    auto const & table = writer_.slots();
    isFree_.assign( table.numSlots(), false );
    if( auto text = walkFreeSlots(); !text.empty() )
      return text;
    if( auto text = walkOccupiedSlots(); !text.empty() )
      return text;
    return doValidate();
  }

 private:
  std::string walkFreeSlots() {
    auto const header =
        loadedHeader< M, SlotTable::Header >( slots_.file().base(), slots_.file().size() );
    for( U32 slot = header.freeSlots; slot != noIndex; slot = slots_.linkOf( slot ).ref ) {
      if( slot >= writer_.slots().numSlots() )
        return "I1 Validator::walkFreeSlots() bad index:" + std::to_string( slot );
      if( isFree_[slot] )
        return "I1 Validator::walkFreeSlots() duplicate slot:" + std::to_string( slot );
      if( M::load( View::flags( slots_.at( slot ) ) ) != 0 )
        return "I1 Validator::walkFreeSlots() not empty, slot:" + std::to_string( slot );
      isFree_[slot] = true;
      ++numFree_;
    }
    return {};
  }
  std::string walkOccupiedSlots() {
    auto const & table = writer_.slots();
    ChainSurvey< R, M > survey( slots_, writer_.buckets().view(), table.numSlots(),
                                writer_.buckets().numBuckets(), writer_.buckets().seed() );
    if( auto text = survey.walk(); !text.empty() )
      return "I4 Validator::walkOccupiedSlots() " + text;
    if( !survey.uncut().empty() )
      return "I4 Validator::walkOccupiedSlots() chain of bucket " +
             std::to_string( survey.uncut().front().bucket ) + " is not cut";
    for( U32 slot = 0; slot < table.numSlots(); ++slot ) {
      if( !survey.isIn( slot ) )
        continue;
      if( isFree_[slot] )
        return "I1 Validator::walkOccupiedSlots() free slot in a chain:" + std::to_string( slot );
      if( slot != writer_.directSlot() &&
          ( M::load( View::sequence( slots_.at( slot ) ) ) & 1 ) != 0 )
        return "I3 Validator::walkOccupiedSlots() odd sequence, slot:" + std::to_string( slot );
      U32 const pos = writer_.queue().position( slot );
      if( pos >= writer_.queue().currentPos() ||
          writer_.queue().entry( writer_.queue().current(), pos ).slot != slot )
        return "I5 Validator::walkOccupiedSlots() unique notifications mismatch, slot:" +
               std::to_string( slot );
    }
    auto const header =
        loadedHeader< M, SlotTable::Header >( slots_.file().base(), slots_.file().size() );
    if( header.occupiedSlots != survey.numIn() )
      return "I2 Validator::walkOccupiedSlots() mismatch header->occupiedSlots:" +
             std::to_string( header.occupiedSlots ) + " chains:" + std::to_string( survey.numIn() );
    numOccupied_ = survey.numIn();
    return {};
  }
  std::string doValidate() {
    // While entries move, what is above their target is neither; so is a slot that is being filled.
    U32 const slotCount = numFree_ + numOccupied_;
    bool const isWhole = slotCount == writer_.slots().numSlots();
    if( !isWhole && !writer_.isMoving() && writer_.directSlot() == noIndex )
      return "I1 Validator::doValidate() bad slotCount:" + std::to_string( slotCount ) +
             " numSlots:" + std::to_string( writer_.slots().numSlots() );
    auto const & queue = writer_.queue();
    U64 before = 0;
    for( U32 pos = 0; pos < queue.currentPos(); ++pos ) {
      auto const entry = queue.entry( queue.current(), pos );
      if( entry.sequence <= before )
        return "I5 Validator::doValidate() sequence does not grow, pos:" + std::to_string( pos );
      before = entry.sequence;
    }
    if( std::max( before, queue.minSeq() ) != queue.sequence() )
      return "I6 Validator::doValidate() last sequence:" + std::to_string( before );
    auto const one = queue.header( conquer1 ), two = queue.header( conquer2 );
    if( one.currentTable != two.currentTable )
      return "I6 Validator::doValidate() both queues are current";
    auto const & now = queue.current() == conquer1 ? one : two;
    if( now.currentPos > now.notifications.ref ||
        ( now.corralEnd != 0 && now.corralEnd < now.corralStart ) ||
        now.corralEnd > queue.sequence() )
      return "I5 Validator::doValidate() corral or position out of range";
    return {};
  }

  Writer const & writer_;
  View const & slots_;
  std::vector< bool > isFree_;
  U32 numFree_ = 0;
  U32 numOccupied_ = 0;
};

}  // namespace Quill
