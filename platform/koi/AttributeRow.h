// AttributeRow.h: one attribute of an entity type, as those who write it to a log and apply it
// from one see it. Included only where entity types are registered.
#pragma once

#include <koi/Entity.h>
#include <koi/FlowIn.h>

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

/// The row of an attribute, and the entity as its own type.
template< auto const & rows, std::size_t index >
class Row : public AttributeAccess {
 protected:
  static constexpr auto const & row = std::get< index >( rows );
  using RowType = std::remove_cvref_t< decltype( row ) >;
  using E = typename RowType::Owner;
  using Cell = typename RowType::Cell;

  static Cell & cell( Entity & entity ) { return const_cast< Cell & >( me( entity ).*row.cell ); }
  static Cell const & cell( Entity const & entity ) {
    return static_cast< E const & >( entity ).*row.cell;
  }
  static E & me( Entity & entity ) { return static_cast< E & >( entity ); }
  ~Row() = default;

 public:
  constexpr Row() : AttributeAccess( RowType::kind ) {}
};

}  // namespace Koi
