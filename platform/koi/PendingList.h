// PendingList.h: the members of a collection that changed, for the logs that are still to tell of
// them. It exists while a log is attached.
//
// L1  The list ascends by `changed`; a member is in it once, if at all.
// L2  With a started place, every member that changed since any of them was past() is listed.
// L3  A dead member is listed.
#pragma once

#include <algorithm>
#include <vector>

#include <koi/Assert.h>
#include <koi/Place.h>

namespace Koi {

template< class Node >
class PendingList {
 public:
  using Nodes = Slab< Node >;

  using Places = std::vector< Place *, MemberAllocator< Place * > >;

  explicit PendingList( Nodes & nodes ) : nodes_( nodes ) {}

  static void * operator new( std::size_t size ) { return memberAlloc( size ); }
  static void operator delete( void * memory, std::size_t size ) { memberFree( memory, size ); }

  Places & places() { return places_; }
  U32 head() const { return head_; }
  std::size_t bytes() const { return sizeof *this + places_.capacity() * sizeof( Place * ); }

  bool isStarted() const {
    return std::ranges::any_of( places_, []( Place const * p ) { return p->started; } );
  }

  /// The member changed. Where no log has sent the last change yet, its place is good for this one.
  void touch( U32 slot, U64 change ) {
    Node const & node = nodes_[slot];
    Trace & trace = nodes_.trace( slot );
    if( !isStarted() ) {
      trace.changed = change;
      return;
    }
    if( node.is( Node::listed ) ) {
      if( trace.changed > sentMost() )
        return;
      remove( slot );
    }
    append( slot, change );
  }

  /// The last in the list, whatever it was before. A tombstone comes to life like this.
  void moveToTail( U32 slot, U64 change ) {
    if( nodes_[slot].is( Node::listed ) )
      remove( slot );
    append( slot, change );
  }

  void remove( U32 slot ) {
    Trace & trace = nodes_.trace( slot );
    for( Place * place : places_ )
      if( place->hint == slot )
        place->hint = trace.after;
    ( trace.before == noSlot ? head_ : nodes_.trace( trace.before ).after ) = trace.after;
    ( trace.after == noSlot ? tail_ : nodes_.trace( trace.after ).before ) = trace.before;
    trace.before = trace.after = noSlot;
    nodes_[slot].flagIs( Node::listed, false );
  }

  /// Whether a peer may have that live member, so that it is to hear when it goes.
  bool isKnown( U32 slot, U16 remover ) const {
    Node const & node = nodes_[slot];
    return std::ranges::any_of( places_, [&]( Place const * p ) {
      // The peer may have made it, or changed it, without having been told.
      bool const its =
          p->origin != remover && ( node.origin == p->origin || node.is( Node::shared ) );
      return p->started && ( p->whole || its || node.is( Node::revived ) ||
                             nodes_.trace( slot ).created <= p->told );
    } );
  }

  /// The first of which the place has not told.
  U32 firstUnsent( Place const & place ) const {
    if( place.hint != noSlot )
      return place.hint;
    U32 slot = noSlot;
    for( U32 at = tail_; at != noSlot && nodes_.trace( at ).changed > place.sent;
         at = nodes_.trace( at ).before )
      slot = at;
    return slot;
  }

  /// Every started place is past changes up to this one: what is at the head no further may leave.
  U64 pastLeast() const {
    U64 least = ~U64{ 0 };
    for( Place const * place : places_ )
      if( place->started )
        least = std::min( least, place->past() );
    return least;
  }

  /// The slab is compacted; the slots below `count` are taken.
  void renumber( U32 count ) {
    for( U32 slot = 0; slot < count; ++slot ) {
      nodes_.trace( slot ).before = nodes_.forward( nodes_.trace( slot ).before );
      nodes_.trace( slot ).after = nodes_.forward( nodes_.trace( slot ).after );
    }
    head_ = nodes_.forward( head_ );
    tail_ = nodes_.forward( tail_ );
    for( Place * place : places_ )
      place->hint = nodes_.forward( place->hint );
  }

  /// Asserts L1 and the links; returns how many are listed.
  U32 check() const {
    U32 count = 0, before = noSlot;
    for( U32 slot = head_; slot != noSlot;
         before = slot, slot = nodes_.trace( slot ).after, ++count ) {
      KOI_ASSERT( nodes_[slot].is( Node::listed ) && nodes_.trace( slot ).before == before );
      KOI_ASSERT( before == noSlot ||
                  nodes_.trace( before ).changed < nodes_.trace( slot ).changed );
    }
    KOI_ASSERT( tail_ == before );
    return count;
  }

 private:
  U64 sentMost() const {
    U64 most = 0;
    for( Place const * place : places_ )
      if( place->started )
        most = std::max( most, place->sent );
    return most;
  }

  void append( U32 slot, U64 change ) {
    nodes_.trace( slot ) = { change, nodes_.trace( slot ).created, tail_, noSlot };
    ( tail_ == noSlot ? head_ : nodes_.trace( tail_ ).after ) = slot;
    tail_ = slot;
    nodes_[slot].flagIs( Node::listed, true );
  }

  Nodes & nodes_;
  U32 head_ = noSlot;
  U32 tail_ = noSlot;
  Places places_;
};

}  // namespace Koi
