// Cell.h: what an attribute or a member of a collection stores, what it gives to a reader, and what
// it refuses. Used by the mutators of entities and reactors, on their thread.
#pragma once

#include <type_traits>

#include <koi/Value.h>
#include <koi/WeakPtr.h>

namespace Koi {

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

/// Whether what is held so leaves when its target goes.
template< class Cell >
constexpr bool isWeak = false;
template< class T >
constexpr bool isWeak< WeakPtr< T > > = true;

/// When the target of a weak scalar goes, that reads null for good, and `tell` is called; others
/// have no target.
template< class Cell, class Tell >
void leaveWithTarget( Cell & cell, Tell const & tell ) {
  if constexpr( isWeak< Cell > )
    cell.koiWhenGone( [&cell, tell] {
      cell = Cell();
      tell();
    } );
}

/// When the target of that weak member goes, `remove( key )` is called.
template< class C, class Remove >
void leaveWithTarget( C & members, typename C::Key const & key, Remove const & remove ) {
  if constexpr( isWeak< typename C::Cell > )
    members.koiCell( key ).koiWhenGone( [remove, key] { remove( key ); } );
}

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

}  // namespace Koi
