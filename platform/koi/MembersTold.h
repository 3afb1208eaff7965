// MembersTold.h: how the logs attached to a collection come to be told of its members: the bodies
// of Members for them, which includes this.
//
// A place tells all members by slot first, then what changed, in the order of the list. What it
// told stays listed until every started place is past it: a peer may lose what it did not
// acknowledge.
#pragma once

#include <koi/Members.h>

namespace Koi {

template< class K, class V, template< class, class > class Index >
void Members< K, V, Index >::placeIs( Place & place ) {
  KOI_ASSERT( place.origin != 0 && !place.started );
  if( !pending_ )
    pending_ = std::make_unique< PendingList< Node > >( nodes_ );
  pending_->places().push_back( &place );
}

template< class K, class V, template< class, class > class Index >
void Members< K, V, Index >::placeDel( Place & place ) {
  KOI_ASSERT( !!pending_ );
  auto const numErased = std::erase( pending_->places(), &place );
  KOI_ASSERT( numErased == 1 );
  place.started = false;
  trim();
  if( pending_->places().empty() )
    pending_.reset();
}

template< class K, class V, template< class, class > class Index >
template< class Tell >
bool Members< K, V, Index >::tellWhole( Place & place, U64 now, Tell tell ) {
  if( !place.started ) {
    place.sent = place.begun = place.flushed = place.flushedAcked = now;
    place.started = place.whole = true;
    place.bookmark = 0;
    place.layout = layout_;
  }
  if( !place.whole )
    return true;
  if( place.layout != layout_ ) {  // the slots have other numbers: from the first one on
    place.layout = layout_;
    place.bookmark = 0;
  }
  place.told = std::max( place.told, now );  // it tells of what was made since it began, too
  for( ; place.bookmark < nodes_.end(); ++place.bookmark ) {
    Node const & node = nodes_[place.bookmark];
    if( node.is( Node::live ) && !tell( node.key, CellOf< V >::given( node.cell ) ) )
      return false;
  }
  place.whole = false;
  return true;
}

template< class K, class V, template< class, class > class Index >
template< class Tell >
bool Members< K, V, Index >::tellPending( Place & place, U64 now, Tell tell ) {
  KOI_ASSERT( place.started && !place.whole );
  for( U32 slot = pending_->firstUnsent( place ); slot != noSlot;
       slot = nodes_.trace( slot ).after ) {
    Node const & node = nodes_[slot];
    place.hint = slot;
    if( node.origin != place.origin ) {
      // It may have moved in the list since it was revived; what was told at the last flush is
      // sure.
      bool const isAnew = node.is( Node::revived ) && nodes_.trace( slot ).created > place.flushed;
      bool room = false;
      if( node.is( Node::dead ) ) {
        room = tell( node.key, static_cast< Given const * >( nullptr ), MemberState::absent );
      } else {
        Given const & given = CellOf< V >::given( node.cell );
        room = tell( node.key, &given, isAnew ? MemberState::anew : MemberState::present );
      }
      if( !room )
        return false;
    }
    place.sent = nodes_.trace( slot ).changed;
    place.told = std::max( place.told, place.sent );
  }
  place.hint = noSlot;
  place.sent = place.flushed = now;
  place.told = std::max( place.told, now );
  return true;
}

template< class K, class V, template< class, class > class Index >
void Members< K, V, Index >::ack( Place & place ) {
  place.acked = place.sent;
  place.flushedAcked = place.flushed;
  place.wholeAcked = place.started && !place.whole;
  trim();
}

template< class K, class V, template< class, class > class Index >
void Members< K, V, Index >::unsend( Place & place ) {
  place.hint = noSlot;
  place.flushed = place.flushedAcked;
  if( place.wholeAcked ) {
    place.sent = place.acked;
  } else if( place.started ) {  // the peer may lack any part of the first flow
    place.sent = place.begun;
    place.acked = std::min( place.acked, place.begun );
    place.whole = true;
    place.bookmark = 0;
  }
}

template< class K, class V, template< class, class > class Index >
bool Members< K, V, Index >::isUnacked( Place const & place, K const & k ) const {
  U32 const slot = place.started ? index_.find( k, Order::hash( k ) ) : noSlot;
  return slot != noSlot && nodes_.trace( slot ).changed > place.acked &&
         nodes_[slot].origin != place.origin;
}

template< class K, class V, template< class, class > class Index >
void Members< K, V, Index >::sharedIs( Place const & place, K const & k ) {
  if( U32 const slot = find( k ); slot != noSlot )
    noteSharing( nodes_[slot], place.origin );
}

template< class K, class V, template< class, class > class Index >
void Members< K, V, Index >::trim() {
  U64 const past = pending_->pastLeast();
  bool freed = false;
  for( U32 slot = pending_->head(); slot != noSlot && nodes_.trace( slot ).changed <= past;
       slot = pending_->head() ) {
    pending_->remove( slot );
    nodes_[slot].flagIs( Node::revived, false );
    if( nodes_[slot].is( Node::dead ) ) {
      free( slot );
      freed = true;
    }
  }
  if( freed )
    shrink();
}

}  // namespace Koi
