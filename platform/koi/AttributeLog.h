// AttributeLog.h: how each kind of attribute is written to a log and applied from one. Included
// only where entity types are registered.
//
// What is applied goes through the mutators of the attribute's row. Where both ends changed the
// same thing, the proxy's change holds: a proxy leaves what of its own the source has not
// acknowledged (FlowIn::isOurs).
#pragma once

#include <koi/KeyedLog.h>
#include <koi/QueueLog.h>

namespace Koi {

/// A constructor parameter, a constant, what is computed: a mirror has it by itself.
template< auto const & rows, std::size_t index >
class ReadAccess final : public ReflectedRow< rows, index > {};

/// A value or a reference.
template< auto const & rows, std::size_t index >
class ScalarAccess final : public ReflectedRow< rows, index > {
  using Of = ReflectedRow< rows, index >;
  using Given = typename CellOf< typename Of::Cell >::Given;

 public:
  void write( Entity const & entity, FlowOut & flow ) const override {
    Given const & v = CellOf< typename Of::Cell >::given( this->cell( entity ) );
    if constexpr( !std::is_null_pointer_v< decltype( this->row.most ) > )
      if( v > this->row.most() )  // stored and refused: the mirror's mutator would refuse it, too
        return;
    flow.whole( [&] { flowWrite( flow, v ); } );
  }

  void apply( Entity & entity, FlowIn & flow ) const override {
    NboAttrLog::In const start = flow.in;
    Given v{};
    auto const arrival = flow.read( v );
    Given const now = CellOf< typename Of::Cell >::given( this->cell( entity ) );
    if constexpr( isReference< Given > ) {
      if( flow.pass != FlowIn::first && flow.isLate() && now )  // somebody set it meanwhile
        return;
      flow.waitEnds( "" );
    }
    if( flow.isOurs() )
      return;
    auto const set = [&] { ( this->me( entity ).*this->row.set )( v ); };
    if( arrival == FlowIn::notYet ) {
      flow.wait( "", start );
      if( flow.pass == FlowIn::last )
        flow.changeIfAdmitted( set );
    } else if( arrival == FlowIn::refused || !( same( now, v ) || flow.change( set ) ) ) {
      flow.answer( "" );
    }
  }
};

/// What serves a row.
template< auto const & rows, std::size_t index,
          AttributeKind kind = std::remove_cvref_t< decltype( std::get< index >( rows ) ) >::kind >
struct AccessFor {
  using Type = ReadAccess< rows, index >;
};
template< auto const & rows, std::size_t index >
struct AccessFor< rows, index, AttributeKind::scalar > {
  using Type = ScalarAccess< rows, index >;
};
template< auto const & rows, std::size_t index >
struct AccessFor< rows, index, AttributeKind::child > {
  using Type = ChildAccess< rows, index >;
};
template< auto const & rows, std::size_t index >
struct AccessFor< rows, index, AttributeKind::members > {
  using Type = MembersAccess< rows, index >;
};
template< auto const & rows, std::size_t index >
struct AccessFor< rows, index, AttributeKind::children > {
  using Type = ChildrenAccess< rows, index >;
};
template< auto const & rows, std::size_t index >
struct AccessFor< rows, index, AttributeKind::queue > {
  using Type = QueueAccess< rows, index >;
};
template< auto const & rows, std::size_t index >
constexpr typename AccessFor< rows, index >::Type attributeAccess{};

}  // namespace Koi
