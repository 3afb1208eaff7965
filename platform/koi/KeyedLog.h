// KeyedLog.h: how hashed and key-ordered collections are written to a log and applied from one.
// Included only where entity types are registered.
#pragma once

#include <optional>

#include <koi/ChildLog.h>
#include <koi/CollectionLog.h>

namespace Koi {

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
    bool const isLate =
        flow.adapter.hasUnresolved() ? flow.waitEnds( told.bytes() ) : flow.isLate();
    if( flow.isLate() && members.contains( told.key ) ) {  // somebody put it there meanwhile
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
    if( arrival == FlowIn::refused )
      return false;
    if( arrival == FlowIn::notYet ) {
      flow.wait( told.bytes(), how.start );
      // What cannot be there yet must not be there as it was.
      return flow.pass != FlowIn::last || this->del( entity, flow, told.key );
    }
    return ( !how.isAnew || this->del( entity, flow, told.key ) ) &&
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
      return flow.pass != FlowIn::last || this->del( entity, flow, told.key );
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

}  // namespace Koi
