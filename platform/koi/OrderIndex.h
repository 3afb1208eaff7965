// OrderIndex.h: finds the members of a key-ordered collection, and walks them by ascending key.
//
// The dead are in the same tree behind the living, so that no walk meets them.
#pragma once

#include <set>

#include <koi/Assert.h>
#include <koi/Slab.h>

namespace Koi {

template< class K, class V >
class OrderIndex {
  // Compaction renumbers the slots; that does not change the order.
  struct Entry {
    mutable U32 slot;
  };
  struct Sought {
    K const & key;
    bool dead;
  };

 public:
  using Node = Member< K, V >;
  using Nodes = Slab< Node >;

 private:
  struct Less {
    using is_transparent = void;
    Nodes const * nodes;

    Sought of( Entry entry ) const {
      Node const & node = ( *nodes )[entry.slot];
      return { node.key, node.is( Node::dead ) };
    }
    Sought const & of( Sought const & sought ) const { return sought; }
    bool operator()( auto const & a, auto const & b ) const {
      Sought const & left = of( a );
      Sought const & right = of( b );
      return left.dead != right.dead ? right.dead : left.key < right.key;
    }
  };
  using Tree = std::set< Entry, Less, MemberAllocator< Entry > >;

 public:
  /// Where a walk is.
  using Cursor = typename Tree::const_iterator;

  explicit OrderIndex( Nodes & nodes ) : nodes_( nodes ), tree_( Less{ &nodes } ) {}
  OrderIndex( OrderIndex const & ) = delete;
  OrderIndex & operator=( OrderIndex const & ) = delete;

  static U32 hash( K const & ) { return 0; }

  /// The live or dead one of that key.
  U32 find( K const & k, U32 ) const {
    auto at = tree_.find( Sought{ k, false } );
    if( at == tree_.end() && hasDead() )
      at = tree_.find( Sought{ k, true } );
    return at == tree_.end() ? noSlot : at->slot;
  }

  void reserve( U32 ) {}
  /// Raises std::bad_alloc and changes nothing.
  void link( U32 slot ) { tree_.insert( Entry{ slot } ); }
  void unlink( U32 slot ) { tree_.erase( place( slot ) ); }
  /// Calls change(), which may make the node another one in the order.
  template< class Change >
  void relink( U32 slot, Change change ) {
    auto entry = tree_.extract( place( slot ) );
    change( nodes_[slot] );
    tree_.insert( std::move( entry ) );
  }
  /// The slab is compacted.
  void renumber( U32 ) {
    for( Entry const & entry : tree_ )
      entry.slot = nodes_.forward( entry.slot );
  }
  void clear() { tree_.clear(); }

  /// The walk over the live ones; end() ends it. Other members may be added meanwhile.
  Cursor first() const { return live( tree_.begin() ); }
  Cursor next( Cursor at ) const { return live( ++at ); }
  /// The first one behind a place in the order; the one that was there may be gone.
  Cursor behind( K const & k, U32, U64 ) const {
    return live( tree_.upper_bound( Sought{ k, false } ) );
  }
  static U32 slotAt( Cursor cursor ) { return cursor->slot; }
  Cursor end() const { return tree_.end(); }
  Cursor cursorAt( U32 slot ) const { return place( slot ); }

  /// The dead one of the least key, or noSlot.
  U32 firstDead( K const & least ) const {
    auto const at = tree_.lower_bound( Sought{ least, true } );
    return at == tree_.end() ? noSlot : at->slot;
  }

  std::size_t bytes() const {
    constexpr std::size_t entrySize = 5 * sizeof( void * );  // color, three links, the slot
    return tree_.size() * entrySize;
  }

  void check() const {
    KOI_ASSERT( tree_.size() == nodes_.numTaken() );
    Less const less{ &nodes_ };
    for( auto at = tree_.begin(); at != tree_.end(); ++at )
      KOI_ASSERT( at == tree_.begin() || less( *std::prev( at ), *at ) );
  }

 private:
  Cursor place( U32 slot ) const { return tree_.find( Entry{ slot } ); }
  Cursor live( Cursor at ) const {
    return at != tree_.end() && nodes_[at->slot].is( Node::dead ) ? tree_.end() : at;
  }
  bool hasDead() const { return !tree_.empty() && nodes_[tree_.rbegin()->slot].is( Node::dead ); }

  Nodes & nodes_;
  Tree tree_;
};

}  // namespace Koi
