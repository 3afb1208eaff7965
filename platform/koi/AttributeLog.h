// AttributeLog.h: how each kind of attribute is written to a log and applied from one, and what
// reflection does with it. Included only where entity types are registered.
//
// What is applied goes through the mutators of the attribute's row. Where both ends changed the
// same thing, the proxy's change holds: a proxy leaves what of its own the source has not
// acknowledged (FlowIn::isOurs).
#pragma once

#include <koi/KeyedLog.h>
#include <koi/QueueLog.h>

namespace Koi {

/// A value or a reference.
template< class Cell >
class ScalarAccess final : public AttributeAccess {
  using Given = typename CellOf< Cell >::Given;

 public:
  template< class Row >
  constexpr explicit ScalarAccess( Row )
      : AttributeAccess( Row::name ), cell_( Row::find ), set_( Row::set ) {
    if constexpr( Row::mayRefuse )
      admits_ = Row::admits;
  }

  void write( Entity const & entity, FlowOut & flow ) const override {
    Cell const & cell = cell_( const_cast< Entity & >( entity ) );  // which is not changed
    if constexpr( std::is_arithmetic_v< Cell > )
      if( admits_ && !admits_( cell ) )  // the mirror's mutator would refuse it, too
        return;
    flow.whole( [&] { flowWrite( flow, Given( CellOf< Cell >::given( cell ) ) ); } );
  }

  void apply( Entity & entity, FlowIn & flow ) const override {
    NboAttrLog::In const start = flow.in;
    Given v{};
    auto const arrival = flow.read( v );
    Given const now = CellOf< Cell >::given( cell_( entity ) );
    if constexpr( isReference< Given > ) {
      if( flow.pass != FlowIn::first && flow.isLate() && now )  // somebody set it meanwhile
        return;
      flow.waitEnds( "" );
    }
    if( flow.isOurs() )
      return;
    if constexpr( isReference< Given > )
      if( flow.isFromProxy() )
        flow.refersTo( v, "" );
    auto const change = [&] { set_( entity, v ); };
    if( arrival == FlowIn::notYet ) {
      flow.wait( "", start );
      if( flow.pass == FlowIn::last )
        flow.changeIfAdmitted( change );
    } else if( arrival == FlowIn::refused ) {
      flow.answer( "" );
    } else if( !( same( now, v ) || flow.change( change ) ) ) {
      flow.answer( "" );
      if constexpr( isReference< Given > )
        flow.insist();
    }
  }

 private:
  GenericIfPtr read( Entity & entity, CtorArgs const & ) const override {
    return genericIf( Given( CellOf< Cell >::given( cell_( entity ) ) ) );
  }
  GenericIfPtr set( Entity & entity, CtorArgs const & args ) const override {
    requireCount( this->what(), args, 1 );
    set_( entity, ArgumentOf< Given >::from( this->what(), args, 0 ) );
    return nullptr;
  }

  Cell & ( *const cell_ )( Entity & );
  void ( *const set_ )( Entity &, Given const & );
  bool ( *admits_ )( Cell const & ) = nullptr;
};

/// What serves a row.
template< auto const & rows, std::size_t index >
constexpr auto accessFor() {
  using R = Row< rows, index >;
  using Held = typename R::Held;
  if constexpr( R::kind <= AttributeKind::computed )
    return ReadAccess( R::name, R::get );
  else if constexpr( R::kind == AttributeKind::table )
    return TableAccess( R::name, R::table );
  else if constexpr( R::kind == AttributeKind::scalar )
    return ScalarAccess< Held >( R() );
  else if constexpr( R::kind == AttributeKind::child )
    return ChildAccess< typename CellOf< Held >::Child >( R() );
  else if constexpr( R::kind == AttributeKind::members )
    return MembersAccess< Held >( R() );
  else if constexpr( R::kind == AttributeKind::children )
    return ChildrenAccess< Held >( R() );
  else
    return QueueAccess< Held >( R() );
}
template< auto const & rows, std::size_t index >
constexpr auto attributeAccess = accessFor< rows, index >();

}  // namespace Koi
