// Members.h: the members of a keyed collection, and what is to be told of them to attribute logs.
// What Index is, HashIndex or OrderIndex, decides how they are found and in which order they are
// walked. Used on the entity's thread, by the collections.
//
// It tells nobody anything. Without an attached log nothing is tracked: what is removed is freed.
// With one, a removed member leaves a tombstone where a peer may have it; tombstones are invisible
// to size(), look-ups and walks.
//
// No reference into a member is held where a value is released: that may run anything, this
// collection's mutators too. So the old value leaves the member, the work is finished, then it
// goes.
//
// M1  What is taken in the slab is in the index, and live or dead: numLive() + the dead ones.
// M2  Every dead one is listed, and some started place is not past it.
// M3  `version()` grows when a member leaves the walk or its slot changes its number.
#pragma once

#include <memory>

#include <koi/Cell.h>
#include <koi/PendingList.h>

namespace Koi {

template< class K, class V, template< class, class > class Index >
class Members {
 public:
  using Node = Member< K, V >;
  using Order = Index< K, V >;
  using Cursor = typename Order::Cursor;
  using Given = typename CellOf< V >::Given;

  Members() : index_( nodes_ ) {}
  Members( Members const & ) = delete;
  Members & operator=( Members const & ) = delete;

  U32 numLive() const { return numLive_; }
  U64 version() const { return version_; }
  Order const & order() const { return index_; }
  Node const & node( U32 slot ) const { return nodes_[slot]; }
  U64 created( U32 slot ) const { return nodes_.trace( slot ).created; }

  /// The slot of a live member, or noSlot.
  U32 find( K const & k ) const {
    U32 const slot = index_.find( k, Order::hash( k ) );
    return slot != noSlot && nodes_[slot].is( Node::live ) ? slot : noSlot;
  }

  /// What a live member stores.
  V & cell( U32 slot ) { return nodes_[slot].cell; }

  /// What a live member gives; the default, or null, for noSlot.
  decltype( auto ) given( U32 slot ) const {
    using Result = decltype( CellOf< V >::given( nodes_[slot].cell ) );
    return slot == noSlot ? static_cast< Result >( none() )
                          : CellOf< V >::given( nodes_[slot].cell );
  }

  /// Stores; an equal value is no change, but whoever asks for it is known to have the member.
  /// Raises RangeException for a key or a value outside its type's range.
  Change set( K const & k, Given const & v, Stamp stamp );
  /// Removes, and says what was there; false when there was no such member.
  bool take( K const & k, Given & old, Stamp stamp );
  /// Removes all, and with them what was to be told. Needs that no place is attached.
  void clear();

  /// All slots are below end(). They are what they are until layout() changes.
  U32 end() const { return nodes_.end(); }
  U32 layout() const { return layout_; }

  // ---- the logs: Collections.h says what each does, MembersTold.h how
  void placeIs( Place & place );
  void placeDel( Place & place );
  template< class Tell >
  bool tellWhole( Place & place, U64 now, Tell tell );
  template< class Tell >
  bool tellPending( Place & place, U64 now, Tell tell );
  void ack( Place & place );
  void unsend( Place & place );
  bool isUnacked( Place const & place, K const & k ) const;
  void sharedIs( Place const & place, K const & k );

  /// All memory it holds, besides what the values hold and itself.
  std::size_t bytes() const {
    return nodes_.bytes() + index_.bytes() + ( pending_ ? pending_->bytes() : 0 );
  }

  /// Asserts what always holds here and in the parts. Takes its time.
  void check() const;

 private:
  static Given const & none() {
    static Given const none{};
    return none;
  }

  // Whom the last change came from, and whether somebody else may have the member too.
  static void originIs( Node & node, U16 origin ) {
    noteSharing( node, origin );
    node.origin = origin;
  }
  static void noteSharing( Node & node, U16 origin ) {
    if( node.origin != origin )
      node.flagIs( Node::shared, true );
  }
  void touch( U32 slot, Stamp stamp ) {
    originIs( nodes_[slot], stamp.origin );
    if( pending_ )
      pending_->touch( slot, stamp.change );
    else
      nodes_.trace( slot ).changed = stamp.change;
  }
  void revive( U32 slot, V & cell, Stamp stamp );
  void insert( K && k, U32 hash, V && cell, Stamp stamp );
  void free( U32 slot );
  void trim();
  void shrink();

  Slab< Node > nodes_;
  Order index_;
  std::unique_ptr< PendingList< Node > > pending_;
  U64 version_ = 0;
  U32 numLive_ = 0;
  U32 layout_ = 0;  // counts the compactions
};

// ---- the mutators

template< class K, class V, template< class, class > class Index >
Change Members< K, V, Index >::set( K const & k, Given const & v, Stamp stamp ) {
  U32 const hash = Order::hash( k );
  U32 const slot = index_.find( k, hash );
  bool const isLive = slot != noSlot && nodes_[slot].is( Node::live );
  if( isLive && same( CellOf< V >::given( nodes_[slot].cell ), v ) ) {
    noteSharing( nodes_[slot], stamp.origin );
    return Change::unchanged;
  }
  checkRange( k );
  checkRange( v );
  V cell( v );  // v may stand in a member that moves
  if( isLive ) {
    std::swap( nodes_[slot].cell, cell );
    touch( slot, stamp );
    return Change::changed;  // the old value goes now
  }
  if( slot != noSlot )
    revive( slot, cell, stamp );
  else
    insert( K( k ), hash, std::move( cell ), stamp );
  return Change::created;
}

template< class K, class V, template< class, class > class Index >
void Members< K, V, Index >::insert( K && k, U32 hash, V && cell, Stamp stamp ) {
  index_.reserve( nodes_.numTaken() );
  U32 const slot = nodes_.take();
  Node & node = nodes_[slot];
  std::construct_at( &node.key, std::move( k ) );
  std::construct_at( &node.cell, std::move( cell ) );
  node.hash = hash;
  nodes_.trace( slot ) = { stamp.change, stamp.change, noSlot, noSlot };
  node.origin = stamp.origin;
  node.flags = Node::live;
  try {
    index_.link( slot );
  } catch( ... ) {  // no memory: as if nothing had been
    std::destroy_at( &node.key );
    std::destroy_at( &node.cell );
    nodes_.give( slot );
    throw;
  }
  ++numLive_;
  if( pending_ )
    pending_->touch( slot, stamp.change );
}

template< class K, class V, template< class, class > class Index >
void Members< K, V, Index >::revive( U32 slot, V & cell, Stamp stamp ) {
  index_.relink( slot, [&]( Node & node ) {
    std::swap( node.cell, cell );
    nodes_.trace( slot ).created = stamp.change;
    node.flagIs( Node::dead, false );
    node.flagIs( Node::live, true );
    node.flagIs( Node::revived, true );
  } );
  originIs( nodes_[slot], stamp.origin );
  pending_->moveToTail( slot, stamp.change );
  ++numLive_;
}

template< class K, class V, template< class, class > class Index >
bool Members< K, V, Index >::take( K const & k, Given & old, Stamp stamp ) {
  U32 const slot = find( k );
  if( slot == noSlot )
    return false;
  V cell( std::move( nodes_[slot].cell ) );
  --numLive_;
  ++version_;
  if( pending_ && pending_->isKnown( slot, stamp.origin ) ) {
    index_.relink( slot, []( Node & node ) {
      std::destroy_at( &node.cell );
      std::construct_at( &node.cell );
      node.flagIs( Node::live, false );
      node.flagIs( Node::dead, true );
    } );
    touch( slot, stamp );
  } else {
    free( slot );
    shrink();
  }
  old = CellOf< V >::given( cell );
  return true;
}

template< class K, class V, template< class, class > class Index >
void Members< K, V, Index >::clear() {
  KOI_ASSERT( !pending_ );
  // What goes may add members, so it goes one by one.
  while( numLive_ > 0 ) {
    Given old{};
    K const key = nodes_[Order::slotAt( index_.first() )].key;
    take( key, old, Stamp{} );
  }
}

template< class K, class V, template< class, class > class Index >
void Members< K, V, Index >::free( U32 slot ) {
  Node & node = nodes_[slot];
  if( node.is( Node::listed ) )
    pending_->remove( slot );
  index_.unlink( slot );
  std::destroy_at( &node.key );
  std::destroy_at( &node.cell );
  nodes_.give( slot );
  ++version_;
}

template< class K, class V, template< class, class > class Index >
void Members< K, V, Index >::shrink() {
  if( nodes_.numTaken() == 0 ) {
    index_.clear();
    nodes_.clear();
  } else if( nodes_.isSparse() ) {
    U32 const count = nodes_.numTaken();
    nodes_.compact();
    if( pending_ )
      pending_->renumber( count );
    index_.renumber( count );
    nodes_.cut();
  } else {
    return;
  }
  ++layout_;
  ++version_;
}

template< class K, class V, template< class, class > class Index >
void Members< K, V, Index >::check() const {
  index_.check();
  U32 numLive = 0, numListed = 0;
  for( U32 slot = 0; slot < nodes_.end(); ++slot ) {
    Node const & node = nodes_[slot];
    numLive += node.is( Node::live );
    numListed += node.is( Node::listed );
    KOI_ASSERT( !node.is( Node::dead ) || node.is( Node::listed ) );
    KOI_ASSERT( node.is( Node::live ) + node.is( Node::dead ) <= 1 );
  }
  KOI_ASSERT( numLive == numLive_ );
  KOI_ASSERT( numListed == ( pending_ ? pending_->check() : 0 ) );
  KOI_ASSERT( pending_ || numLive == nodes_.numTaken() );
}

}  // namespace Koi

#include <koi/MembersTold.h>
