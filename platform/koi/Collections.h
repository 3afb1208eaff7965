// Collections.h: the keyed collections of an entity. Used on the entity's thread.
//
// Tag names the attribute, so that two collections of the same types are not taken for one another.
// A collection alone tells nobody anything: its entity's mutators change it and notify.
//
// A HashMap is walked by ascending bit-reversed hash of the key, keys of one hash in the order in
// which they came; an RbTreeMap by ascending key. Any number of members may be added while a walk
// is under way, and others removed; an iterator is good as long as its member is there.
#pragma once

#include <cstddef>
#include <map>
#include <type_traits>
#include <utility>

#include <koi/Value.h>
#include <koi/WeakPtr.h>

namespace Koi {

/// The bits in opposite order: bit 0 becomes bit 31.
constexpr U32 bitReverse( U32 word ) {
  word = ( word >> 1 & 0x55555555 ) | ( word & 0x55555555 ) << 1;
  word = ( word >> 2 & 0x33333333 ) | ( word & 0x33333333 ) << 2;
  word = ( word >> 4 & 0x0f0f0f0f ) | ( word & 0x0f0f0f0f ) << 4;
  word = ( word >> 8 & 0x00ff00ff ) | ( word & 0x00ff00ff ) << 8;
  return word >> 16 | word << 16;
}

/// The hash of a key: its hash(), or that of a single field.
template< class Key >
constexpr U32 hashOfKey( Key const & k ) {
  if constexpr( requires { k.hash(); } )
    return k.hash();
  else
    return hashOfFields( k );
}

/// Requires that what is to be stored is in the range of its type; a reference has none. Raises
/// RangeException with the type's own text. A value that was default-constructed or read from a log
/// may be outside.
template< class T >
void checkRange( T const & v ) {
  if constexpr( Value< T > )
    check( v );
}

/// The same reference?
template< class T >
bool same( Ptr< T > const & a, Ptr< T > const & b ) {
  return a.ptr() == b.ptr();
}

/// What a member, or a scalar attribute, gives to a reader: itself, or a Ptr for what refers to an
/// entity.
template< class Cell >
struct CellOf {
  using Given = Cell;
  static Given const & given( Cell const & cell ) { return cell; }
};
template< class T >
struct CellOf< Owned< T > > {
  using Child = T;
  using Given = Ptr< T >;
  static Given given( Owned< T > const & cell ) { return cell.ptr(); }
};
template< class T >
struct CellOf< WeakPtr< T > > {
  using Given = Ptr< T >;
  static Given given( WeakPtr< T > const & cell ) { return cell.ptr(); }
};

/// Stores in the cell of a scalar; false when it was the same before. Raises RangeException for a
/// value outside its type's range.
template< class Cell >
bool store( Cell & cell, typename CellOf< Cell >::Given const & v ) {
  if( same( CellOf< Cell >::given( cell ), v ) )
    return false;
  checkRange( v );
  cell = Cell( v );
  return true;
}

/// The same for a number that is kept although it is refused: more than `most` raises
/// RangeException with that text once it is stored.
template< class Number >
bool storeThenCheck( Number & cell, std::type_identity_t< Number > v,
                     std::type_identity_t< Number > most, char const * refusal ) {
  if( cell == v )
    return false;
  cell = v;  // Deliberate: the refused value stays stored.
  if( v > most )
    throwRangeException( refusal );
  return true;
}

/// Raises RangeException with that text when the number is more than `most`.
template< class Number >
void refuseMore( Number v, std::type_identity_t< Number > most, char const * refusal ) {
  if( v > most )
    throwRangeException( refusal );
}

/// Raises RangeException with that text when the pointer is null.
inline void refuseNull( void const * pointer, char const * refusal ) {
  if( !pointer )
    throwRangeException( refusal );
}

/// Raises RangeException with that text when the string is longer than that many bytes.
inline void refuseLonger( String8 const & text, std::size_t most, char const * refusal ) {
  if( text.size() > most )
    throwRangeException( refusal );
}

/// Where a hashed collection keeps its members.
template< class K, class V >
struct InHashOrder {
  struct Member {
    K key;
    V cell;
  };
  using Store = std::multimap< U32, Member >;

  static auto find( auto & store, K const & k ) {
    auto [at, end] = store.equal_range( bitReverse( hashOfKey( k ) ) );
    while( at != end && !( at->second.key == k ) )
      ++at;
    return at == end ? store.end() : at;
  }
  static void insert( Store & store, K const & k, V cell ) {
    store.emplace( bitReverse( hashOfKey( k ) ), Member{ k, std::move( cell ) } );
  }
  static K const & key( auto at ) { return at->second.key; }
  static auto & cell( auto at ) { return at->second.cell; }
};

/// Where a key-ordered collection keeps its members.
template< class K, class V >
struct InKeyOrder {
  using Store = std::map< K, V >;

  static auto find( auto & store, K const & k ) { return store.find( k ); }
  static void insert( Store & store, K const & k, V cell ) {
    store.emplace( k, std::move( cell ) );
  }
  static K const & key( auto at ) { return at->first; }
  static auto & cell( auto at ) { return at->second; }
};

/// What both collections can do.
template< class K, class V, class Order >
class Collection {
  using Place = typename Order::Store::const_iterator;

 public:
  using Key = K;
  using Cell = V;
  using Given = typename CellOf< V >::Given;

  /// A walk over the members: `for( auto const & i : status->learnedHost() ) ... i.key() ...
  /// i.value()`.
  class IteratorConst {
   public:
    using value_type = IteratorConst;
    using difference_type = std::ptrdiff_t;

    IteratorConst() = default;
    explicit IteratorConst( Place at ) : at_( at ) {}
    K const & key() const { return Order::key( at_ ); }
    decltype( auto ) value() const { return CellOf< V >::given( Order::cell( at_ ) ); }
    IteratorConst const & operator*() const { return *this; }
    IteratorConst & operator++() {
      ++at_;
      return *this;
    }
    friend bool operator==( IteratorConst const &, IteratorConst const & ) = default;

   private:
    Place at_;
  };

  std::size_t size() const { return store_.size(); }
  bool empty() const { return store_.empty(); }
  IteratorConst begin() const { return IteratorConst( store_.begin() ); }
  IteratorConst end() const { return IteratorConst( store_.end() ); }
  bool contains( K const & k ) const { return Order::find( store_, k ) != store_.end(); }

  /// The member of that key; the default, or null, when there is none.
  Given value( K const & k ) const {
    auto const at = Order::find( store_, k );
    return at == store_.end() ? Given{} : CellOf< V >::given( Order::cell( at ) );
  }

  /// Stores; false when the member was the same before. Raises RangeException for a key or a value
  /// outside its type's range.
  bool koiSet( K const & k, Given const & v ) {
    auto const at = Order::find( store_, k );
    if( at != store_.end() && same( Given( CellOf< V >::given( Order::cell( at ) ) ), v ) )
      return false;
    checkRange( k );
    checkRange( v );
    if( at != store_.end() )
      Order::cell( at ) = V( v );
    else
      Order::insert( store_, k, V( v ) );
    return true;
  }

  /// Removes; false when there was no such member.
  bool koiTake( K const & k, Given & old ) {
    auto const at = Order::find( store_, k );
    if( at == store_.end() )
      return false;
    old = CellOf< V >::given( Order::cell( at ) );
    store_.erase( at );
    return true;
  }

 private:
  typename Order::Store store_;
};

/// A hashed collection.
template< class Tag, class K, class V >
class HashMap : public Collection< K, V, InHashOrder< K, V > > {};

/// A key-ordered collection.
template< class Tag, class K, class V >
class RbTreeMap : public Collection< K, V, InKeyOrder< K, V > > {};

}  // namespace Koi
