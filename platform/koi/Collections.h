// Collections.h: the keyed collections of an entity. Used on the entity's thread.
//
// Tag names the attribute, so that two collections of the same types are not taken for one another.
// A collection alone tells nobody anything: its entity's mutators change it, stamp the change with
// the entity's count of changes, and notify. The stamps of a collection never go down.
//
// A HashMap is walked by ascending bit-reversed hash of the key, keys of one hash in the order in
// which they came; an RbTreeMap by ascending key. Anything may be added and removed while a walk is
// under way.
#pragma once

#include <koi/HashIndex.h>
#include <koi/OrderIndex.h>
#include <koi/Walk.h>

namespace Koi {

/// What all collections have for the attribute logs. Derived says koiMembers() and koiKey(), which
/// makes the key as logs know it of the one that is stored.
template< class Derived >
class Logged {
 public:
  /// Attaches a log. The place stays where it is until koiPlaceDel().
  void koiPlaceIs( Place & place ) { self().koiMembers().placeIs( place ); }
  /// Detaches it. When the last one goes, nothing is tracked any more.
  void koiPlaceDel( Place & place ) { self().koiMembers().placeDel( place ); }

  /// The first flow: calls tell( key, value ) for the members until it returns false, which says
  /// that there was no room for that one, or until there is none left. True when all are told.
  /// `now` is the entity's count of changes. tell() does not change the collection.
  template< class Tell >
  bool koiWhole( Place & place, U64 now, Tell tell ) {
    return self().koiMembers().tellWhole( place, now, [&]( auto const & k, auto const & v ) {
      return tell( self().koiKey( k ), v );
    } );
  }

  /// What changed since, in the order of the changes, but for what the log itself brought: calls
  /// tell( key, value or null, MemberState ) until it returns false, as above. True when all is
  /// told. Needs a first flow that is done.
  template< class Tell >
  bool koiPending( Place & place, U64 now, Tell tell ) {
    return self().koiMembers().tellPending(
        place, now, [&]( auto const & k, auto const * v, MemberState state ) {
          return tell( self().koiKey( k ), v, state );
        } );
  }

  /// The peer has all that it was sent.
  void koiAck( Place & place ) { self().koiMembers().ack( place ); }
  /// The peer may have lost what it did not acknowledge: it is sent again. Where it did not
  /// acknowledge the first flow, that begins again.
  void koiUnsend( Place & place ) { self().koiMembers().unsend( place ); }

  /// All memory it holds, besides what values hold and itself.
  std::size_t koiBytes() const { return self().koiMembers().bytes(); }
  /// Asserts what always holds. For tests: it takes its time.
  void koiCheck() const { self().koiMembers().check(); }

 private:
  Derived & self() { return static_cast< Derived & >( *this ); }
  Derived const & self() const { return static_cast< Derived const & >( *this ); }
};

/// What a hashed and a key-ordered collection can do.
template< class K, class V, template< class, class > class Index >
class Collection : public Logged< Collection< K, V, Index > > {
  using Store = Members< K, V, Index >;

 public:
  using Key = K;
  using Cell = V;
  using Given = typename Store::Given;

  /// A walk over the members: `for( auto const & i : status->learnedHost() ) ... i.key() ...
  /// i.value()`.
  class IteratorConst : public WalkOf< IteratorConst, Store > {
   public:
    using WalkOf< IteratorConst, Store >::WalkOf;
  };
  /// The same, of who may change the collection: attrDel( iterator ) removes the member.
  class Iterator : public WalkOf< Iterator, Store > {
   public:
    using WalkOf< Iterator, Store >::WalkOf;
  };

  std::size_t size() const { return members_.numLive(); }
  bool empty() const { return members_.numLive() == 0; }
  IteratorConst begin() const { return { members_, members_.order().first() }; }
  IteratorConst end() const { return {}; }
  Iterator koiIterator() { return { members_, members_.order().first() }; }
  bool contains( K const & k ) const { return members_.find( k ) != noSlot; }

  /// The member of that key; the end when there is none.
  IteratorConst iteratorAt( K const & k ) const {
    U32 const slot = members_.find( k );
    return slot == noSlot ? end() : IteratorConst( members_, members_.order().cursorAt( slot ) );
  }

  /// The member of that key; the default, or null, when there is none.
  Given value( K const & k ) const { return members_.given( members_.find( k ) ); }

  /// Stores; an equal value is no change. Raises RangeException for a key or a value outside its
  /// type's range.
  Change koiSet( K const & k, Given const & v, Stamp stamp ) { return members_.set( k, v, stamp ); }

  /// Removes, and says what was there; false when there was no such member.
  bool koiTake( K const & k, Given & old, Stamp stamp ) { return members_.take( k, old, stamp ); }

  /// What the member of that key, which is there, stores.
  V & koiCell( K const & k ) { return members_.cell( members_.find( k ) ); }

  /// Removes all. Needs that no log is attached.
  void koiClear() { members_.clear(); }

  /// Whether the peer may not have the last change of that key, which somebody else made.
  bool koiIsUnacked( Place const & place, K const & k ) const {
    return members_.isUnacked( place, k );
  }

  /// The peer has a member of that key, too, though its own is not heeded here: it is to hear when
  /// the one that is here goes.
  void koiSharedIs( Place const & place, K const & k ) { members_.sharedIs( place, k ); }

  /// The collection without its tag.
  Collection & koiHeld() { return *this; }

  Store & koiMembers() { return members_; }
  Store const & koiMembers() const { return members_; }
  static K const & koiKey( K const & k ) { return k; }

 private:
  Store members_;
};

/// A hashed collection.
template< class Tag, class K, class V >
class HashMap : public Collection< K, V, HashIndex > {};

/// A key-ordered collection.
template< class Tag, class K, class V >
class RbTreeMap : public Collection< K, V, OrderIndex > {};

}  // namespace Koi
