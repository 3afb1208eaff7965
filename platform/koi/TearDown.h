// TearDown.h: how the reactors of entities end when a tree, or a part of one, is taken down.
//
// Used by type nodes, on the entity's thread; included only where entity types are registered. A
// reactor holds what it watches; where an entity owns a reactor that holds it or something above
// it, this is what opens the circle.
#pragma once

#include <tuple>
#include <type_traits>

#include <koi/Entity.h>
#include <koi/EntityReactor.h>

namespace Koi {

/// What a cell or the members of a collection own; void when nothing.
template< class Cell >
struct OwnedIn {
  using Type = void;
};
template< class Child >
struct OwnedIn< Owned< Child > > {
  using Type = Child;
};
template< class C >
requires requires { typename CellOf< typename C::Cell >::Child; }
struct OwnedIn< C > {
  using Type = typename CellOf< typename C::Cell >::Child;
};

/// Of an entry of koiAttributes().
template< class Entry >
using OwnedByAttribute = typename OwnedIn< typename Entry::Cell >::Type;

/// Whether entities of that type, or what they own, may have reactors.
template< class E >
constexpr bool mayHaveReactors() {
  if constexpr( std::same_as< E, Entity > )
    return true;  // it is of any type
  bool may = requires { E::koiReactors(); };
  if constexpr( requires { E::koiAttributes(); } )
    std::apply(
        [&]< class... Entry >( Entry const &... ) {
          ( ( may |= mayHaveReactors< OwnedByAttribute< Entry > >() ), ... );
        },
        E::koiAttributes() );
  if constexpr( requires { typename E::KoiBase; } )
    may |= mayHaveReactors< typename E::KoiBase >();
  return may;
}

/// Ends those of what one attribute owns.
template< class E, class Entry >
void endReactorsIn( E & entity, Entry const & entry ) {
  using Child = OwnedByAttribute< Entry >;
  if constexpr( mayHaveReactors< Child >() ) {
    auto & cell = entity.*entry.cell;
    if constexpr( requires { cell.ptr(); } ) {
      if( Ptr< Child > const child = cell.ptr() )
        child->koiEndReactors();
    } else {
      for( auto const & member : cell )
        if( Ptr< Child > const child = member.value() )
          child->koiEndReactors();
    }
  }
}

/// Ends the entity's own reactors, then those of what it owns.
template< class E >
void endReactors( Entity & of ) {
  E & entity = static_cast< E & >( of );
  if constexpr( requires { E::koiReactors(); } )
    std::apply( [&]( auto... reactor ) { ( endReactor( entity.*reactor ), ... ); },
                E::koiReactors() );
  if constexpr( requires { E::koiAttributes(); } )
    std::apply( [&]( auto const &... entry ) { ( endReactorsIn( entity, entry ), ... ); },
                E::koiAttributes() );
  if constexpr( requires { typename E::KoiBase::KoiBase; } )
    endReactors< typename E::KoiBase >( entity );
}

}  // namespace Koi
