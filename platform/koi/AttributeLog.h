// AttributeLog.h: how each kind of attribute is written to a log and applied from one. Included
// only where entity types are registered.
//
// What is applied goes through the mutators of the attribute's row. Where both ends changed the
// same thing, the proxy's change holds: a proxy leaves what of its own the source has not
// acknowledged (FlowIn::isOurs).
#pragma once

#include <algorithm>
#include <limits>
#include <optional>
#include <set>
#include <span>

#include <koi/Entity.h>
#include <koi/FlowIn.h>
#include <koi/Mirror.h>

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
  template< std::size_t skip >
  static bool areEqual( Child const & child, All const & arguments ) {
    bool equal = true;
    forEach< skip >( [&]( auto const & parameter, auto index ) {
      std::tuple_element_t< index, All > const v = ( child.*parameter.get )();
      equal = equal && same( v, std::get< index >( arguments ) );
    } );
    return equal;
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

/// A constructor parameter: nothing is told of it, for it never changes.
template< auto const & rows, std::size_t index >
class ParameterAccess final : public Row< rows, index > {};

/// A value or a reference.
template< auto const & rows, std::size_t index >
class ScalarAccess final : public Row< rows, index > {
  using Of = Row< rows, index >;
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
    if constexpr( isReference< Given > ) {
      bool const isSet = !!CellOf< typename Of::Cell >::given( this->cell( entity ) );
      if( flow.isRetry && isSet )
        return;
      flow.waitEnds( "" );
    }
    if( flow.isOurs() )
      return;
    auto const set = [&] { ( this->me( entity ).*this->row.set )( v ); };
    if( arrival == FlowIn::notYet ) {
      flow.wait( "", start );
      flow.changeIfAdmitted( set );
    } else if( arrival == FlowIn::refused || !flow.change( set ) ) {
      flow.answer( "" );
    }
  }
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
        arrival_( Arguments::template read< skip >( flow, arguments_ ) ) {}

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
      if( isAlike && !isAnew )
        flow.mirror().peerHas( *child, number_, incarnation_, KoiNboAttrLogSa::fullResync );
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
    return flow.mirror().role() == Mirror::proxy;
  }

 private:
  U64 const number_;
  U64 const incarnation_;
  typename Arguments::All arguments_{};
  FlowIn::Arrival const arrival_;
};

/// The only child of its attribute.
template< auto const & rows, std::size_t index >
class ChildAccess final : public Row< rows, index > {
  using Child = typename CellOf< typename Row< rows, index >::Cell >::Child;

 public:
  KoiType const * childType() const override { return &Child::_koiType; }
  void eachChild( Entity const & entity,
                  std::function< void( Entity & ) > const & f ) const override {
    if( Ptr< Child > const child = this->cell( entity ).ptr() )
      f( *child );
  }
  Entity * childOf( Entity const & entity, String8 const & ) const override {
    return this->cell( entity ).ptr().ptr();
  }

  void write( Entity const & entity, FlowOut & flow ) const override {
    Ptr< Child > const child = this->cell( entity ).ptr();
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
    auto const del = [&] { ( this->me( entity ).*this->row.del )(); };
    bool const isLate = flow.waitEnds( "" );
    if( op == LogOp::absent ) {
      if( !flow.isOurs() && !flow.change( del ) )
        flow.answer( "" );
      return;
    }
    Birth< Child, 0 > const birth( flow );
    if( birth.arrival() == FlowIn::notYet ) {
      if( flow.isOurs() || birth.isKnown( flow, this->cell( entity ).ptr() ) )
        return;
      flow.wait( "", start );
      flow.change( del );
      return;
    }
    if( isLate )  // what the peer told of it since was lost
      return flow.mirror().restartIsDue();
    auto const make = [&] {
      return std::apply(
          [&]( auto const &... args ) { return ( this->me( entity ).*this->row.set )( args... ); },
          birth.arguments() );
    };
    if( birth.arrival() == FlowIn::refused ||
        !birth.apply( flow, this->cell( entity ).ptr(), flow.isOurs(), op == LogOp::present,
                      op == LogOp::anew, make, del ) )
      flow.answer( "" );
  }
};

/// What all keyed collections and queues do alike. Derived says memberWrite( flow, value ),
/// memberApply() and the two ends of a first flow.
template< class Derived, auto const & rows, std::size_t index >
class CollectionAccess : public Row< rows, index > {
  using Of = Row< rows, index >;

 protected:
  using C = typename Of::Cell;
  using Key = typename C::Key;
  using Given = typename C::Given;

  ~CollectionAccess() = default;
  Derived const & self() const { return static_cast< Derived const & >( *this ); }

  bool del( Entity & entity, FlowIn & flow, Key const & k ) const {
    return flow.change( [&] { ( this->me( entity ).*this->row.del )( k ); } );
  }

 public:
  bool writeWhole( Entity & entity, Place & place, bool begins, FlowOut & flow ) const override {
    if( begins )
      flow.op( LogOp::beginWhole );
    C & members = this->cell( entity );
    bool const isTold = members.koiWhole(
        place, entity.koiChanges(),
        [&]( auto const & k, auto const & v ) { return writeOne( flow, LogOp::present, k, &v ); } );
    if( isTold ) {
      self().writeTail( members, flow );
      flow.op( LogOp::endWhole );
    }
    return isTold;
  }

  bool writePending( Entity & entity, Place & place, FlowOut & flow ) const override {
    C & members = this->cell( entity );
    bool const isTold = members.koiPending(
        place, entity.koiChanges(), [&]( auto const & k, auto const * v, MemberState state ) {
          return writeOne( flow,
                           state == MemberState::absent    ? LogOp::absent
                           : state == MemberState::present ? LogOp::present
                                                           : LogOp::anew,
                           k, v );
        } );
    self().writeTail( members, flow );  // which may be all that changed
    return isTold;
  }

  void writeMember( Entity const & entity, NboAttrLog::In & key, FlowOut & flow ) const override {
    C const & members = this->cell( entity );
    Key const k = logRead< Key >( key );
    Given const v = members.value( k );
    bool const isThere = members.contains( k );
    writeOne( flow, isThere ? LogOp::present : LogOp::absent, k, isThere ? &v : nullptr );
    self().writeTail( members, flow );
  }

  void apply( Entity & entity, FlowIn & flow ) const override {
    while( flow.in.left() != 0 ) {
      NboAttrLog::In const start = flow.in;
      switch( LogOp const op = flow.op() ) {
        case LogOp::beginWhole:
          flow.adapter.resyncState( flow.attribute ) = self().beginWhole( this->cell( entity ) );
          break;
        case LogOp::endWhole:
          if( auto const state = std::move( flow.adapter.resyncState( flow.attribute ) ) )
            self().endWhole( entity, flow, *state );
          flow.adapter.freeResyncState( flow.attribute );
          break;
        case LogOp::tail:
          self().applyTail( entity, flow );
          break;
        default:
          self().applyMember( entity, flow, start, op );
      }
    }
    self().applied( flow );
  }

  void placeIs( Entity & entity, Place & place ) const override {
    this->cell( entity ).koiPlaceIs( place );
  }
  void placeDel( Entity & entity, Place & place ) const override {
    this->cell( entity ).koiPlaceDel( place );
  }
  void placeIsKnown( Entity & entity, Place & place ) const override {
    C & members = this->cell( entity );
    auto const known = []( auto const &... ) { return true; };
    members.koiWhole( place, entity.koiChanges(), known );
    members.koiPending( place, entity.koiChanges(), known );
    members.koiAck( place );
  }
  void ack( Entity & entity, Place & place ) const override {
    this->cell( entity ).koiAck( place );
  }
  void unsend( Entity & entity, Place & place ) const override {
    this->cell( entity ).koiUnsend( place );
  }

 private:
  bool writeOne( FlowOut & flow, LogOp op, Key const & k, Given const * v ) const {
    if( flow.isFull() )
      return false;
    flow.whole( [&] {
      flow.op( op );
      flow.keyBegins();
      flowWrite( flow, k );
      flow.keyEnds();
      if( v )
        self().writeGiven( flow, *v );
    } );
    return true;
  }
};

/// The key of a member, and its bytes as they came.
template< class Key >
class ToldKey {
 public:
  explicit ToldKey( FlowIn & flow ) : begin_( flow.in ) {
    sound = flow.read( key ) == FlowIn::here;
    end_ = flow.in;
  }
  std::string bytes() const { return FlowIn::bytesBetween( begin_, end_ ); }

  Key key{};
  bool sound = false;

 private:
  NboAttrLog::In const begin_;
  NboAttrLog::In end_ = begin_;
};

/// Which members of a collection were named in a first flow, by slot.
template< class C >
class NamedMembers final : public ResyncState {
 public:
  explicit NamedMembers( C const & members )
      : layout_( members.koiMembers().layout() ), wasEmpty_( members.empty() ) {}

  void name( C const & members, typename C::Key const & k ) {
    if( wasEmpty_ )
      return;
    U32 const slot = members.koiMembers().find( k );
    if( slot == noSlot )
      return;
    if( slot >= named_.size() )
      named_.resize( members.koiMembers().end() );
    named_[slot] = true;
  }

  /// The keys of the members that were not; nothing when that cannot be told any more.
  std::optional< std::vector< typename C::Key > > unnamed( C const & members ) const {
    std::vector< typename C::Key > keys;
    auto const & store = members.koiMembers();
    if( wasEmpty_ )
      return keys;
    if( layout_ != store.layout() )
      return std::nullopt;
    for( auto const & member : members ) {
      U32 const slot = store.find( member.key() );
      if( slot >= named_.size() || !named_[slot] )
        keys.push_back( member.key() );
    }
    return keys;
  }

 private:
  U32 const layout_;
  bool const wasEmpty_;
  std::vector< bool > named_;
};

/// A hashed or key-ordered collection of values or references.
template< class Derived, auto const & rows, std::size_t index >
class KeyedAccess : public CollectionAccess< Derived, rows, index > {
  using Base = CollectionAccess< Derived, rows, index >;

 public:
  using typename Base::C;
  using typename Base::Key;
  using Named = NamedMembers< C >;

  /// How a member was told of.
  struct Told {
    NboAttrLog::In start;  ///< where its operation begins
    bool isAnew;
    bool ours;    ///< changed here, and not acknowledged
    bool isLate;  ///< it has waited for what it refers to since an earlier flush
  };

  void applied( FlowIn & ) const {}
  void writeTail( C const &, FlowOut & ) const {}
  void applyTail( Entity &, FlowIn & ) const { throwParseException( "attribute log: no queue" ); }

  std::unique_ptr< ResyncState > beginWhole( C const & members ) const {
    return std::make_unique< Named >( members );
  }
  void endWhole( Entity & entity, FlowIn & flow, ResyncState & state ) const {
    C const & members = this->cell( entity );
    auto const keys = static_cast< Named & >( state ).unnamed( members );
    if( !keys )
      return flow.mirror().restartIsDue();
    for( Key const & k : *keys )
      if( !flow.isOurs( members, k ) )
        this->del( entity, flow, k );
  }

  void applyMember( Entity & entity, FlowIn & flow, NboAttrLog::In const & start, LogOp op ) const {
    C const & members = this->cell( entity );
    ToldKey< Key > const told( flow );
    bool const ours = flow.isOurs( members, told.key );
    bool const isLate = flow.adapter.hasUnresolved() && flow.waitEnds( told.bytes() );
    if( flow.isRetry && members.contains( told.key ) ) {  // somebody put it there meanwhile
      flow.in.take( flow.in.left() );
      return;
    }
    Told const how{ start, op == LogOp::anew, ours, isLate };
    bool const isDone = op == LogOp::absent
                            ? ours || !told.sound || this->del( entity, flow, told.key )
                            : this->self().applyPresent( entity, flow, told, how );
    if( !isDone && told.sound )
      flow.answer( told.bytes() );
    if( auto const & state = flow.adapter.resyncState( flow.attribute ) )
      static_cast< Named & >( *state ).name( members, told.key );
  }

 protected:
  ~KeyedAccess() = default;
};

/// A collection of values or references.
template< auto const & rows, std::size_t index >
class MembersAccess final : public KeyedAccess< MembersAccess< rows, index >, rows, index > {
  using Base = KeyedAccess< MembersAccess< rows, index >, rows, index >;
  using typename Base::Key;
  using Given = typename Base::C::Given;

 public:
  void writeGiven( FlowOut & flow, Given const & v ) const { flowWrite( flow, v ); }

  bool applyPresent( Entity & entity, FlowIn & flow, ToldKey< Key > const & told,
                     typename Base::Told const & how ) const {
    Given v{};
    auto const arrival = flow.read( v );
    if( how.ours || !told.sound )
      return true;
    if( arrival == FlowIn::notYet )
      flow.wait( told.bytes(), how.start );
    // What cannot be there yet must not be there as it was.
    bool const mayGo = how.isAnew || arrival == FlowIn::notYet;
    if( arrival == FlowIn::refused || ( mayGo && !this->del( entity, flow, told.key ) ) )
      return false;
    return arrival == FlowIn::notYet ||
           flow.change( [&] { set( this->me( entity ), told.key, v ); } );
  }

 private:
  using E = typename Base::E;
  static void set( E & entity, Key const & k, Given const & v ) {
    if constexpr( requires { ( entity.*Base::row.set )( k, v ); } )
      ( entity.*Base::row.set )( k, v );
    else
      ( entity.*Base::row.set )( v );  // the key is one of its fields
  }
};

/// A collection of children.
template< auto const & rows, std::size_t index >
class ChildrenAccess final : public KeyedAccess< ChildrenAccess< rows, index >, rows, index > {
  using Base = KeyedAccess< ChildrenAccess< rows, index >, rows, index >;
  using typename Base::Key;
  using Child = typename CellOf< typename Base::C::Cell >::Child;
  using BirthOf = Birth< Child, 1 >;

 public:
  KoiType const * childType() const override { return &Child::_koiType; }
  void eachChild( Entity const & entity,
                  std::function< void( Entity & ) > const & f ) const override {
    for( auto const & member : this->cell( entity ) )
      f( *member.value() );
  }
  Entity * childOf( Entity const & entity, String8 const & name ) const override {
    auto const & children = this->cell( entity );
    if( std::optional< Key > const key = keyOf( name ) )
      if( Ptr< Child > const child = children.value( *key ) )
        if( String8( child->name() ) == name )
          return child;
    for( auto const & member : children )
      if( String8( member.value()->name() ) == name )
        return member.value();
    return nullptr;
  }

  void writeGiven( FlowOut & flow, Ptr< Child > const & child ) const {
    BirthOf::write( *child, flow );
  }

  bool applyPresent( Entity & entity, FlowIn & flow, ToldKey< Key > const & told,
                     typename Base::Told const & how ) const {
    BirthOf const birth( flow );
    if( !told.sound )
      return true;
    Ptr< Child > const child = this->cell( entity ).value( told.key );
    if( birth.arrival() == FlowIn::notYet ) {
      if( how.ours || birth.isKnown( flow, child ) )
        return true;
      flow.wait( told.bytes(), how.start );
      return this->del( entity, flow, told.key );
    }
    if( how.isLate ) {  // what the peer told of it since was lost
      flow.mirror().restartIsDue();
      return true;
    }
    auto const make = [&] {
      return [&]< std::size_t... i >( std::index_sequence< i... > ) {
        return ( this->me( entity ).*this->row.set )( told.key,
                                                      std::get< i + 1 >( birth.arguments() )... );
      }
      ( std::make_index_sequence< ChildArguments< Child >::count - 1 >() );
    };
    return birth.arrival() == FlowIn::here &&
           birth.apply( flow, child, how.ours, !!flow.adapter.resyncState( flow.attribute ),
                        how.isAnew, make,
                        [&] { ( this->me( entity ).*this->row.del )( told.key ); } );
  }

 private:
  /// The key that a child of that name has, unless it has a name of its own.
  static std::optional< Key > keyOf( String8 const & name ) {
    if constexpr( std::same_as< Key, Name > ) {
      return Name( name );
    } else {
      try {
        String8::IteratorConst at = name.begin();
        return valueFromText< Key >( at, name.end() );
      } catch( Exception const & ) {
        return std::nullopt;
      }
    }
  }
};

/// A queue of values or references.
template< auto const & rows, std::size_t index >
class QueueAccess final : public CollectionAccess< QueueAccess< rows, index >, rows, index > {
  using Base = CollectionAccess< QueueAccess< rows, index >, rows, index >;
  using typename Base::C;
  using typename Base::Key;
  using Given = typename C::Given;
  using Numbered = std::vector< std::pair< Key, Given > >;

  struct Whole final : ResyncState {
    Numbered members;
    Key tail{};
  };

 public:
  void writeTail( C const & queue, FlowOut & flow ) const {
    flow.op( LogOp::tail );
    flowWrite( flow, queue.metadata().tail );
  }
  void applyTail( Entity & entity, FlowIn & flow ) const {
    Key tail{};
    flow.read( tail );
    if( auto const & state = flow.adapter.resyncState( flow.attribute ) )
      static_cast< Whole & >( *state ).tail = tail;
    else if( !flow.isOurs() && !isStale( this->cell( entity ), flow, tail ) )
      this->cell( entity ).koiTailIs( tail );
  }
  void applied( FlowIn & flow ) const {
    // Both ends may have changed it: where members stand is not in their numbers, so the proxy gets
    // it whole.
    if( flow.mirror().role() == Mirror::source &&
        ( flow.adapter.isUnsettled( flow.attribute ) || flow.mirror().isFirstFlush() ) )
      flow.adapter.tellWhole( flow.attribute );
  }
  void writeGiven( FlowOut & flow, Given const & v ) const { flowWrite( flow, v ); }

  void applyMember( Entity & entity, FlowIn & flow, NboAttrLog::In const & start, LogOp op ) const {
    C const & queue = this->cell( entity );
    ToldKey< Key > const told( flow );
    Given v{};
    auto const arrival = op == LogOp::absent ? FlowIn::here : flow.read( v );
    if( flow.isOurs( queue, told.key ) )
      return;
    auto const & state = flow.adapter.resyncState( flow.attribute );
    if( !state && isStale( queue, flow, told.key ) ) {
      if( flow.mirror().role() == Mirror::proxy )
        flow.mirror().restartIsDue();  // the source gets along without; we need to know its order
      return;
    }
    flow.waitEnds( told.bytes() );
    bool isDone = arrival != FlowIn::refused;
    if( arrival == FlowIn::notYet )
      flow.wait( told.bytes(), start );
    else if( state && isDone )
      static_cast< Whole & >( *state ).members.emplace_back( told.key, v );
    else if( op == LogOp::absent )
      isDone = this->del( entity, flow, told.key );
    else
      isDone = isDone && set( entity, flow, told.key, v );
    if( !isDone )
      flow.answer( told.bytes() );
  }

  std::unique_ptr< ResyncState > beginWhole( C const & ) const {
    return std::make_unique< Whole >();
  }
  void endWhole( Entity & entity, FlowIn & flow, ResyncState & state ) const {
    auto & named = static_cast< Whole & >( state ).members;
    Key const tail = static_cast< Whole & >( state ).tail;
    C & queue = this->cell( entity );
    // 1. From the head on, however they came.
    std::ranges::sort( named, std::greater(), [last = tail - 1]( auto const & member ) {
      return static_cast< Key >( last - member.first );
    } );
    // 2. Only at the tail can members be added: what is here must be how the others begin.
    Numbered here, ours;
    std::set< Key > keys;
    for( auto const & member : named )
      keys.insert( member.first );
    for( auto const & member : queue )
      ( flow.isOurs( queue, member.key() ) ? ours : here )
          .emplace_back( member.key(), member.value() );
    std::erase_if( here, [&]( auto const & member ) {
      return !keys.contains( member.first ) && this->del( entity, flow, member.first );
    } );
    bool const begins =
        ours.empty() && here.size() <= named.size() &&
        std::ranges::equal( here, std::span( named ).first( here.size() ), {},
                            &Numbered::value_type::first, &Numbered::value_type::first );
    if( !begins )
      for( auto const * some : { &here, &ours } )
        for( auto const & member : *some )
          this->del( entity, flow, member.first );
    // 3. The rest, and then again what the source has not acknowledged.
    for( auto const & [number, v] : named )
      set( entity, flow, number, v );
    if( !flow.isOurs() )
      queue.koiTailIs( tail );
    for( auto const & [number, v] : ours )
      ( this->me( entity ).*this->row.set )( number, v );
  }

 private:
  bool set( Entity & entity, FlowIn & flow, Key number, Given const & v ) const {
    return flow.change( [&] { ( this->me( entity ).*this->row.set )( number, v ); } );
  }
  /// The peer speaks of a number that the head has passed here; or it has come too late for that.
  static bool isStale( C const & queue, FlowIn const & flow, Key number ) {
    constexpr Key half = std::numeric_limits< Key >::max() / 2;
    bool const isPast = static_cast< Key >( number - queue.metadata().tail ) > half;
    return !queue.empty() && !isInside( queue, number ) && ( flow.isRetry || isPast );
  }
  static bool isInside( C const & queue, Key number ) {
    auto const [head, tail] = queue.metadata();
    return static_cast< Key >( number - head ) < static_cast< Key >( tail - head );
  }
};

/// What serves a row.
template< auto const & rows, std::size_t index,
          AttributeKind kind = std::remove_cvref_t< decltype( std::get< index >( rows ) ) >::kind >
struct AccessFor {
  using Type = ParameterAccess< rows, index >;
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
