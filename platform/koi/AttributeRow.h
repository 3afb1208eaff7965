// AttributeRow.h: one row of an attribute table as functions that take any entity: all that is
// particular of one attribute. Included only where entity types are registered.
#pragma once

#include <koi/CtorArguments.h>
#include <koi/Entity.h>
#include <koi/FlowIn.h>
#include <koi/TableCollection.h>

namespace Koi {

/// Writes what a member or a scalar gives.
template< Value T >
void flowWrite( FlowOut & flow, T const & v ) {
  logAppend( flow.frame(), v );
}
template< class T >
void flowWrite( FlowOut & flow, Ptr< T > const & v ) {
  flow.reference( v );
}

template< class T >
constexpr bool isReference = false;
template< class T >
constexpr bool isReference< Ptr< T > > = true;

/// What an attribute holds, whichever attribute it is: a collection without its tag.
template< class C >
struct HeldIn {
  using Type = C;
};
template< class Tag, class K, class V >
struct HeldIn< HashMap< Tag, K, V > > {
  using Type = Collection< K, V, HashIndex >;
};
template< class Tag, class K, class V >
struct HeldIn< RbTreeMap< Tag, K, V > > {
  using Type = Collection< K, V, OrderIndex >;
};

template< auto const & rows, std::size_t index >
class Row {
  static constexpr auto const & row = std::get< index >( rows );
  using RowType = std::remove_cvref_t< decltype( row ) >;
  using E = typename RowType::Owner;
  static E & me( Entity & entity ) { return static_cast< E & >( entity ); }

 public:
  using Cell = typename RowType::Cell;
  using Held = typename HeldIn< Cell >::Type;
  static constexpr AttributeKind kind = RowType::kind;
  static constexpr AttributeName name{ kind, E::koiName, row.name };

  static constexpr bool isConstant() {
    return requires( RowType const r ) { r.get(); };
  }

  static Held & find( Entity & entity ) { return const_cast< Cell & >( me( entity ).*row.cell ); }

  /// Of a parameter, a constant, what is computed.
  static GenericIfPtr get( Entity & entity ) {
    if constexpr( kind == AttributeKind::computed )
      return genericIf( row.of( me( entity ) ) );
    else
      return genericIf( CellOf< Held >::given( find( entity ) ) );
  }

  /// Of a table.
  static TableCollection & table( Entity & entity ) { return find( entity ); }

  /// Of a scalar.
  static void set( Entity & entity, typename CellOf< Held >::Given const & v ) {
    ( me( entity ).*row.set )( v );
  }
  /// Whether it would take the value; one that is stored and refused is there all the same.
  static bool admits( Held const & v ) { return !( v > row.most() ); }
  static constexpr bool mayRefuse = requires( RowType r ) { r.most(); };

  /// Of a collection of values or references.
  template< class Key, class Given >
  static void setMember( Entity & entity, Key const & k, Given const & v ) {
    if constexpr( isKeyInValue() )
      ( me( entity ).*row.set )( v );
    else
      ( me( entity ).*row.set )( k, v );
  }
  static constexpr bool isKeyInValue() {
    if constexpr( kind == AttributeKind::table )
      return true;
    if constexpr( kind == AttributeKind::members )
      return requires( E & e, typename Held::Given v ) { ( e.*row.set )( v ); };
    return false;
  }
  /// Of any collection.
  template< class Key >
  static auto delMember( Entity & entity, Key const & k ) {
    return ( me( entity ).*row.del )( k );
  }

  /// The child that those arguments make: the first of them is its key, unless it is the only child
  /// of its attribute.
  template< class All >
  static auto make( Entity & entity, All const & arguments ) {
    return std::apply( [&]( auto const &... args ) { return ( me( entity ).*row.set )( args... ); },
                       arguments );
  }
  static auto delChild( Entity & entity ) { return ( me( entity ).*row.del )(); }
};

}  // namespace Koi
