// ChainSurvey.h: walks every chain of a table and says who is in them. It changes nothing. Used by
// the writer process, at attach and by the validator.
//
// Chains are the truth of a table. What a stop in the middle of a split or a merge leaves, a chain
// that runs on into the next bucket's, is no damage; it is listed, to be cut.
#pragma once

#include <string>
#include <vector>

#include <quill/Slots.h>

namespace Quill {

template< class R, class M >
class ChainSurvey {
 public:
  using View = Slots< R, M >;
  /// Bucket b's chain is to end behind slot `last`, or at its head.
  struct Uncut {
    U32 bucket, last;
  };

  ChainSurvey( View const & slots, Buckets< M > const & buckets, U32 numSlots, U32 numBuckets,
               U32 seed )
      : slots_( slots ),
        buckets_( buckets ),
        numSlots_( numSlots ),
        numBuckets_( numBuckets ),
        seed_( seed ),
        isIn_( numSlots ) {}

  /// Walks all chains; what comes back is empty, or what cannot have been left by a writer.
  std::string walk() {
    U32 bucket = 0;
    for( U32 i = 0; i < numBuckets_; ++i ) {
      if( auto fault = walkBucket( bucket ); !fault.empty() )
        return fault;
      bucket = nextBucket( bucket, numBuckets_ );
    }
    return {};
  }

  bool isIn( U32 slot ) const { return isIn_[slot]; }
  U32 numIn() const { return numIn_; }
  std::vector< Uncut > const & uncut() const { return uncut_; }

 private:
  std::string walkBucket( U32 bucket ) {
    U32 last = noIndex;
    U32 link = buckets_.headOf( bucket ).ref;
    KeyWords< R > before{};
    U32 hashBefore = 0;
    for( ; !isEnd( link ); link = slots_.linkOf( link ).ref ) {
      if( link >= numSlots_ )
        return "bad link " + std::to_string( link ) + " in bucket " + std::to_string( bucket );
      auto const key = slots_.keyOf( link );
      U32 const hash = R::hash( key.word, seed_ );
      if( ( hash & ( numBuckets_ - 1 ) ) != bucket )
        break;
      if( isIn_[link] )
        return "slot " + std::to_string( link ) + " is in two places";
      U32 const flags = M::load( View::flags( slots_.at( link ) ) );
      if( flags & SlotTable::lookaside )
        return "stuck LOOKASIDE bit, slot:" + std::to_string( link );
      if( flags != SlotTable::occupied )
        return "slot " + std::to_string( link ) + " is in a chain and not OCCUPIED";
      if( last != noIndex && !isBehind( hash, key, hashBefore, before ) )
        return "slot " + std::to_string( link ) + " is out of order in bucket " +
               std::to_string( bucket );
      isIn_[link] = true;
      ++numIn_;
      last = link;
      before = key;
      hashBefore = hash;
    }
    if( link == endMarker( nextBucket( bucket, numBuckets_ ) ) )
      return {};
    U32 const half = numBuckets_ / 2;
    if( bucket >= half || link != buckets_.headOf( bucket + half ).ref )
      return "corrupt rhash detected: bucket " + std::to_string( bucket ) + " ends with " +
             std::to_string( link );
    uncut_.push_back( { bucket, last } );
    return {};
  }

  View const & slots_;
  Buckets< M > const & buckets_;
  U32 const numSlots_;
  U32 const numBuckets_;
  U32 const seed_;
  std::vector< bool > isIn_;
  U32 numIn_ = 0;
  std::vector< Uncut > uncut_;
};

}  // namespace Quill
