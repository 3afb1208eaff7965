// ChildLog.h: how children are written to a log and applied from one: what they are made from, and
// which child of the one end is which of the other. Included only where entity types are
// registered.
#pragma once

#include <algorithm>
#include <tuple>

#include <koi/AttributeRow.h>

namespace Koi {

/// The arguments of a constructor, as the log carries them: those behind the first `skip`.
template< class Child >
struct ChildArguments {
  template< class... Of, class... Given >
  static std::tuple< std::remove_cvref_t< Given >... > types(
      std::tuple< ConstructorParameter< Of, Given >... > );
  using All = decltype( types( Child::koiParameters() ) );
  static constexpr std::size_t count = std::tuple_size_v< All >;

  template< std::size_t skip >
  static void write( Child const & child, FlowOut & flow ) {
    forEach< skip >( [&]( auto const & parameter, auto ) {
      std::remove_cvref_t< decltype( ( child.*parameter.get )() ) > const v =
          ( child.*parameter.get )();
      flowWrite( flow, v );
    } );
  }
  /// The worst that happened to one of them.
  template< std::size_t skip >
  static FlowIn::Arrival read( FlowIn & flow, All & arguments ) {
    FlowIn::Arrival arrival = FlowIn::here;
    forEach< skip >( [&]( auto const &, auto index ) {
      arrival = std::max( arrival, flow.read( std::get< index >( arguments ) ) );
    } );
    return arrival;
  }
  /// The wrapped arguments. Raises ArgumentException, and RangeException for a value outside its
  /// type's range.
  static All of( std::string const & what, CtorArgs const & args ) {
    requireCount( what, args, count );
    All arguments{};
    forEach< 0 >( [&]( auto const &, auto index ) {
      auto & argument = std::get< index >( arguments );
      argument =
          ArgumentOf< std::remove_cvref_t< decltype( argument ) > >::from( what, args, index );
      checkRange( argument );
    } );
    return arguments;
  }
  template< std::size_t skip >
  static bool areEqual( Child const & child, All const & arguments ) {
    bool equal = true;
    forEach< skip >( [&]( auto const & parameter, auto index ) {
      std::tuple_element_t< index, All > const v = ( child.*parameter.get )();
      equal = equal && ( parameter.isInitial || same( v, std::get< index >( arguments ) ) );
    } );
    return equal;
  }
  template< std::size_t skip >
  static bool areAlike( Child const & a, Child const & b ) {
    All arguments{};
    forEach< skip >( [&]( auto const & parameter, auto index ) {
      std::get< index >( arguments ) = ( b.*parameter.get )();
    } );
    return areEqual< skip >( a, arguments );
  }

 private:
  template< std::size_t skip, class F >
  static void forEach( F const & f ) {
    constexpr auto parameters = Child::koiParameters();
    [&]< std::size_t... i >( std::index_sequence< i... > ) {
      ( f( std::get< i + skip >( parameters ), std::integral_constant< std::size_t, i + skip >() ),
        ... );
    }
    ( std::make_index_sequence< count - skip >() );
  }
};

/// The same of a child that may be of any type: its name, and itself as the log brought it.
template<>
struct KOI_PUBLIC ChildArguments< Entity > {
  using All = std::tuple< Name, Ptr< Entity > >;

  /// The type, the name, and what the constructor takes.
  template< std::size_t skip >
  static void write( Entity const & child, FlowOut & flow ) {
    writeAny( child, flow );
  }
  template< std::size_t skip >
  static FlowIn::Arrival read( FlowIn & flow, All & arguments ) {
    return readAny( flow, std::get< Ptr< Entity > >( arguments ) );
  }
  /// What was here without a place until now, under that number, is the child itself.
  static void takeOrphan( FlowIn const & flow, U64 number, All & arguments );
  /// The wrapped name and entity. Raises ArgumentException.
  static All of( std::string const & what, CtorArgs const & args ) {
    requireCount( what, args, 2 );
    return { ArgumentOf< Name >::from( what, args, 0 ),
             ArgumentOf< Ptr< Entity > >::from( what, args, 1 ) };
  }
  template< std::size_t skip >
  static bool areEqual( Entity const & child, All const & arguments ) {
    Entity const & other = *std::get< Ptr< Entity > >( arguments );
    KoiType const * const type = child.koiType();
    return type == other.koiType() && type->areBuiltAlike( child, other );
  }

 private:
  static void writeAny( Entity const & child, FlowOut & flow );
  static FlowIn::Arrival readAny( FlowIn & flow, Ptr< Entity > & child );
};

/// What the log says of one child: its number, its incarnation, what it is made from. Two mirrors
/// know the same child by its number, and on a new connection by its incarnation, or by its
/// arguments.
template< class Child, std::size_t skip >
class Birth {
  using Arguments = ChildArguments< Child >;

 public:
  explicit Birth( FlowIn & flow )
      : number_( flow.in.nextU64() ),
        incarnation_( flow.in.nextU64() ),
        arrival_( Arguments::template read< skip >( flow, arguments_ ) ) {
    if constexpr( std::same_as< Child, Entity > )
      Arguments::takeOrphan( flow, number_, arguments_ );
  }

  static void write( Child & child, FlowOut & flow ) {
    flow.child( child );
    Arguments::template write< skip >( child, flow );
  }

  FlowIn::Arrival arrival() const { return arrival_; }
  auto const & arguments() const { return arguments_; }

  /// The child is the one of which the peer speaks.
  bool isKnown( FlowIn & flow, Ptr< Child > const & child ) const {
    auto const * const known = flow.mirror().adapters().find( number_ );
    return known && child && &known->entity() == child;
  }

  /// False when what the peer has in the place of this end's child, or of none, cannot be made
  /// here.
  bool isMakeable( FlowIn & flow, Ptr< Child > const & child ) const {
    if( arrival_ == FlowIn::refused && child && flow.isFromProxy() )
      flow.mirror().peerLacks( *child );
    return arrival_ == FlowIn::here;
  }

  /// Sees to it that the child is there. `ours`: the proxy's own child holds, or that there is
  /// none. `isFirst`: the peer tells what there is, not what changed. `make` and `del` are the
  /// mutators. False when it is refused.
  template< class Make, class Del >
  bool apply( FlowIn & flow, Ptr< Child > child, bool ours, bool isFirst, bool isAnew, Make make,
              Del del ) const {
    if( isKnown( flow, child ) )
      return true;
    bool const isAlike = child && Arguments::template areEqual< skip >( *child, arguments_ );
    if( ours ) {
      // By a number of ours the peer means one that stood here before.
      if( isAlike && !isAnew && !flow.mirror().adapters().isOurs( number_ ) )
        flow.mirror().peerHasToo( *child, number_, incarnation_ );
      return true;
    }
    bool const isOther =
        isAnew || !isAlike || ( isFirst && flow.isAnother( *child, incarnation_ ) );
    if( child && isOther ) {
      if( !flow.change( del ) )
        return false;
      child = nullptr;
    }
    if( !child && !flow.change( [&] { child = make(); } ) )
      return false;
    flow.mirror().peerHas( *child, number_, incarnation_, KoiNboAttrLogSa::incremental );
    return !flow.isFromProxy();
  }

 private:
  U64 const number_;
  U64 const incarnation_;
  typename Arguments::All arguments_{};
  FlowIn::Arrival const arrival_;
};

/// The only child of its attribute.
template< class Child >
class ChildAccess final : public AttributeAccess {
  using Arguments = ChildArguments< Child >;

 public:
  template< class Row >
  constexpr explicit ChildAccess( Row )
      : AttributeAccess( Row::name ),
        cell_( Row::find ),
        make_( Row::template make< typename Arguments::All > ),
        del_( Row::delChild ) {}

  KoiType const * childType() const override { return &Child::_koiType; }
  void eachChild( Entity const & entity,
                  std::function< void( Entity & ) > const & f ) const override {
    if( Ptr< Child > const child = childIn( entity ) )
      f( *child );
  }
  Entity * childOf( Entity const & entity, String8 const & ) const override {
    return childIn( entity ).ptr();
  }

  void write( Entity const & entity, FlowOut & flow ) const override {
    Ptr< Child > const child = childIn( entity );
    flow.whole( [&] {
      // The peer's may be another one than it knows by that number; on a first flow it may be this.
      flow.op( !child ? LogOp::absent : flow.isFirst() ? LogOp::present : LogOp::anew );
      if( child )
        Birth< Child, 0 >::write( *child, flow );
    } );
  }

  void apply( Entity & entity, FlowIn & flow ) const override {
    NboAttrLog::In const start = flow.in;
    LogOp const op = flow.op();
    auto const del = [&] { del_( entity ); };
    bool const isLate = flow.waitEnds( "" );
    if( op == LogOp::absent ) {
      if( !flow.isOurs() && !flow.change( del ) )
        flow.answer( "" );
      return;
    }
    Birth< Child, 0 > const birth( flow );
    if( birth.arrival() == FlowIn::notYet ) {
      if( flow.isOurs() || birth.isKnown( flow, childIn( entity ) ) )
        return;
      flow.wait( "", start );
      if( flow.pass == FlowIn::last )
        flow.change( del );
      return;
    }
    if( isLate )  // what the peer told of it since was lost
      return flow.mirror().restartIsDue();
    auto const make = [&] { return make_( entity, birth.arguments() ); };
    if( !birth.isMakeable( flow, childIn( entity ) ) ||
        !birth.apply( flow, childIn( entity ), flow.isOurs(), op == LogOp::present,
                      op == LogOp::anew, make, del ) )
      flow.answer( "" );
  }

 private:
  Ptr< Child > childIn( Entity const & entity ) const {
    return cell_( const_cast< Entity & >( entity ) ).ptr();
  }
  GenericIfPtr read( Entity & entity, CtorArgs const & ) const override {
    return genericIf( childIn( entity ) );
  }
  GenericIfPtr set( Entity & entity, CtorArgs const & args ) const override {
    return genericIf( make_( entity, Arguments::of( this->what(), args ) ) );
  }
  GenericIfPtr del( Entity & entity, CtorArgs const & ) const override {
    return genericIf( del_( entity ) );
  }

  Owned< Child > & ( *const cell_ )( Entity & );
  Ptr< Child > ( *const make_ )( Entity &, typename Arguments::All const & );
  Ptr< Child > ( *const del_ )( Entity & );
};

}  // namespace Koi
