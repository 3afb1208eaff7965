// LinkQueue.h: an insertion-ordered queue whose members are named by a sequence number. Used on the
// entity's thread; it tells nobody anything, its entity's mutators change it and notify.
//
// Numbers run from the head to the tail and begin anew after the highest. The queue spans at most
// all numbers there are; a member removed from the middle leaves a gap that still counts until the
// head passes it.
//
//   next_ - head_ <= the count of numbers; members_ has head_ and nothing outside [head_, next_).
#pragma once

#include <algorithm>
#include <limits>
#include <map>

#include <koi/Collections.h>

namespace Koi {

/// The numbers of the oldest member and of the next one.
template< class Index >
struct LinkQueueMetadata {
  Index head, tail;
  friend bool operator==( LinkQueueMetadata const &, LinkQueueMetadata const & ) = default;
};

template< class Tag, class Index, class V >
class LinkQueue {
  using Store = std::map< U64, V >;

 public:
  using Key = Index;
  using Given = typename CellOf< V >::Given;

  /// A walk from the head to the tail.
  class IteratorConst {
   public:
    using value_type = IteratorConst;
    using difference_type = std::ptrdiff_t;

    IteratorConst() = default;
    explicit IteratorConst( typename Store::const_iterator at ) : at_( at ) {}
    Index key() const { return static_cast< Index >( at_->first ); }
    decltype( auto ) value() const { return CellOf< V >::given( at_->second ); }
    IteratorConst const & operator*() const { return *this; }
    IteratorConst & operator++() {
      ++at_;
      return *this;
    }
    friend bool operator==( IteratorConst const &, IteratorConst const & ) = default;

   private:
    typename Store::const_iterator at_;
  };

  std::size_t size() const { return members_.size(); }
  bool empty() const { return members_.empty(); }
  IteratorConst begin() const { return IteratorConst( members_.begin() ); }
  IteratorConst end() const { return IteratorConst( members_.end() ); }

  /// Head and tail; they are the same number when the queue is empty, and when all numbers are
  /// taken.
  LinkQueueMetadata< Index > metadata() const {
    return { static_cast< Index >( head_ ), static_cast< Index >( next_ ) };
  }

  /// The member of that number; the default when there is none.
  Given value( Index index ) const {
    auto const at = members_.find( placeOf( index ) );
    return at == members_.end() ? Given{} : Given( CellOf< V >::given( at->second ) );
  }

  /// Appends; what comes back is its number. Raises RangeException "linkqueue index space full", or
  /// the text of a value outside its type's range.
  Index koiEnq( Given const & v ) {
    checkRange( v );
    if( next_ - head_ > std::numeric_limits< Index >::max() )
      throwRangeException( "linkqueue index space full" );
    members_.emplace( next_, V( v ) );
    return static_cast< Index >( next_++ );
  }

  /// Stores under that number; false when the member was the same before. A number outside the
  /// queue makes it longer at the tail. Raises RangeException for a value outside its type's range.
  bool koiSet( Index index, Given const & v ) {
    U64 const place = placeOf( index );
    auto const at = members_.find( place );
    if( at != members_.end() && same( Given( CellOf< V >::given( at->second ) ), v ) )
      return false;
    checkRange( v );
    members_.insert_or_assign( place, V( v ) );
    head_ = members_.begin()->first;
    next_ = std::max( next_, place + 1 );
    return true;
  }

  /// Removes; false when there was no such member.
  bool koiTake( Index index, Given & old ) {
    auto const at = members_.find( placeOf( index ) );
    if( at == members_.end() )
      return false;
    old = CellOf< V >::given( at->second );
    members_.erase( at );
    head_ = members_.empty() ? next_ : members_.begin()->first;
    return true;
  }

 private:
  // Places count on where numbers begin anew.
  U64 placeOf( Index index ) const {
    return head_ + static_cast< Index >( index - metadata().head );
  }

  Store members_;
  U64 head_ = 0;
  U64 next_ = 0;
};

}  // namespace Koi
