// LinkQueue.h: an insertion-ordered queue whose members are named by a sequence number. Used on the
// entity's thread; it tells nobody anything, its entity's mutators change it and notify.
//
// Numbers run from the head to the tail and begin anew after the highest. The queue spans at most
// all numbers there are; a member removed from the middle leaves a gap that still counts until the
// head passes it. Inside, a member's key is its place, which counts on where numbers begin anew.
//
//   next_ - head_ <= the count of numbers; the live members' places are in [head_, next_), and one
//   is at head_ when there is any. Tombstones may be anywhere below next_.
#pragma once

#include <algorithm>
#include <limits>

#include <koi/Collections.h>

namespace Koi {

/// The numbers of the oldest member and of the next one.
template< class Index >
struct LinkQueueMetadata {
  Index head, tail;
  friend bool operator==( LinkQueueMetadata const &, LinkQueueMetadata const & ) = default;
};

template< class Tag, class Index, class V >
class LinkQueue : public Logged< LinkQueue< Tag, Index, V > > {
  using Store = Members< U64, V, OrderIndex >;

 public:
  using Key = Index;
  using Cell = V;
  using Given = typename Store::Given;

  /// A walk from the head to the tail.
  template< class Self >
  class Numbered : public WalkOf< Self, Store > {
   public:
    using WalkOf< Self, Store >::WalkOf;
    Index key() const { return static_cast< Index >( WalkOf< Self, Store >::key() ); }
  };
  class IteratorConst : public Numbered< IteratorConst > {
   public:
    using Numbered< IteratorConst >::Numbered;
  };
  /// The same, of who may change the collection: attrDel( iterator ) removes the member.
  class Iterator : public Numbered< Iterator > {
   public:
    using Numbered< Iterator >::Numbered;
  };

  std::size_t size() const { return members_.numLive(); }
  bool empty() const { return members_.numLive() == 0; }
  IteratorConst begin() const { return { members_, members_.order().first() }; }
  IteratorConst end() const { return {}; }
  Iterator koiIterator() { return { members_, members_.order().first() }; }
  bool contains( Index index ) const { return members_.find( placeOf( index ) ) != noSlot; }

  /// The member of that number; the end when there is none.
  IteratorConst iteratorAt( Index index ) const {
    U32 const slot = members_.find( placeOf( index ) );
    return slot == noSlot ? end() : IteratorConst( members_, members_.order().cursorAt( slot ) );
  }

  /// Head and tail; they are the same number when the queue is empty, and when all numbers are
  /// taken.
  LinkQueueMetadata< Index > metadata() const {
    return { static_cast< Index >( head_ ), static_cast< Index >( next_ ) };
  }

  /// The member of that number; the default when there is none.
  Given value( Index index ) const { return members_.given( members_.find( placeOf( index ) ) ); }

  /// Appends; what comes back is its number. Raises RangeException "linkqueue index space full", or
  /// the text of a value outside its type's range.
  Index koiEnq( Given const & v, Stamp stamp ) {
    checkRange( v );
    if( next_ - head_ > std::numeric_limits< Index >::max() )
      throwRangeException( "linkqueue index space full" );
    U64 const place = next_;
    members_.set( place, v, stamp );
    next_ = place + 1;
    return static_cast< Index >( place );
  }

  /// Stores under that number; an equal value is no change. A number outside the queue makes it
  /// longer at the tail. Raises RangeException for a value outside its type's range.
  Change koiSet( Index index, Given const & v, Stamp stamp ) {
    U64 const place = placeOf( index );
    Change const change = members_.set( place, v, stamp );
    if( change == Change::created ) {
      if( size() == 1 )
        head_ = place;
      else if( place < next_ )
        filled_ = stamp;
      next_ = std::max( next_, place + 1 );
    } else if( change == Change::changed ) {
      rewritten_ = std::max( rewritten_, members_.created( members_.find( place ) ) );
    }
    return change;
  }

  /// Removes, and says what was there; false when there was no such member.
  bool koiTake( Index index, Given & old, Stamp stamp ) {
    if( !members_.take( placeOf( index ), old, stamp ) )
      return false;
    headIs();
    return true;
  }

  /// The number that the next one gets, as a log has it from the peer. A number before that of a
  /// member changes nothing.
  void koiTailIs( Index tail ) {
    U64 const place = placeOf( tail );
    if( empty() )
      head_ = next_ = place;
    else if( auto const & order = members_.order(); order.behind( place - 1, 0, 0 ) == order.end() )
      next_ = place;
  }

  /// Removes all. Needs that no log is attached.
  void koiClear() {
    members_.clear();
    headIs();
  }

  /// Whether the peer may not have the last change of that number, which somebody else made.
  bool koiIsUnacked( Place const & place, Index index ) const {
    constexpr U64 span = U64{ std::numeric_limits< Index >::max() } + 1;
    // Tombstones of earlier members of that number have earlier places.
    U32 const oldest = members_.order().firstDead( 0 );
    U64 const least = oldest == noSlot ? head_ : members_.node( oldest ).key;
    for( U64 at = placeOf( index );; at -= span ) {
      if( members_.isUnacked( place, at ) )
        return true;
      if( at < least + span )
        return false;
    }
  }

  /// Whether since the last whole flush somebody else than the peer put a member into a gap, or
  /// anybody changed one that came since: such are told behind members that stand behind them. Once
  /// the members before it are gone its number does not say that it comes first.
  bool koiIsFilledSince( Place const & place ) const {
    return ( filled_.change > place.flushed && filled_.origin != place.origin ) ||
           rewritten_ > place.flushed;
  }

  /// As other collections have it: a queue is rare, and keeps its tag.
  LinkQueue & koiHeld() { return *this; }

  Store & koiMembers() { return members_; }
  Store const & koiMembers() const { return members_; }
  static Index koiKey( U64 place ) { return static_cast< Index >( place ); }

 private:
  U64 placeOf( Index index ) const {
    return head_ + static_cast< Index >( index - metadata().head );
  }
  void headIs() {
    auto const first = members_.order().first();
    head_ = empty() ? next_ : members_.node( members_.order().slotAt( first ) ).key;
  }

  Store members_;
  U64 head_ = 0;
  U64 next_ = 0;
  Stamp filled_;       // the last member that was put into a gap
  U64 rewritten_ = 0;  // when the newest of those came that were changed since
};

}  // namespace Koi
