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
template< class Derived, class C_ >
class KeyedAccess : public CollectionAccessOf< Derived, C_ > {
 public:
  using C = C_;
  using Key = typename C::Key;
  using Named = NamedMembers< C >;

  /// How a member was told of.
  struct Told {
    NboAttrLog::In start;  ///< where its operation begins
    bool isAnew;
    bool ours;    ///< changed here, and not acknowledged
    bool isLate;  ///< it has waited for what it refers to since an earlier flush
  };

  void writeTail( C const &, FlowOut & ) const {}

 private:
  std::unique_ptr< ResyncState > beginWhole( Entity & entity ) const override {
    return std::make_unique< Named >( this->cell( entity ) );
  }
  void endWhole( Entity & entity, FlowIn & flow, ResyncState & state ) const override {
    C const & members = this->cell( entity );
    auto const keys = static_cast< Named & >( state ).unnamed( members );
    if( !keys )
      return flow.mirror().restartIsDue();
    for( Key const & k : *keys )
      if( !flow.isOurs( members, k ) )
        this->del( entity, flow, k );
  }

  void applyMember( Entity & entity, FlowIn & flow, NboAttrLog::In const & start,
                    LogOp op ) const override {
    C & members = this->cell( entity );
    ToldKey< Key > const told( flow );
    bool const ours = flow.isOurs( members, told.key );
    if( op != LogOp::absent && ( ours || this->hasChildren() ) )
      members.koiSharedIs( flow.adapter.place( flow.attribute ), told.key );
    bool const isLate =
        flow.adapter.hasUnresolved() ? flow.waitEnds( told.bytes() ) : flow.isLate();
    if( flow.isLate() && members.contains( told.key ) ) {  // somebody put it there meanwhile
      flow.in.take( flow.in.left() );
      return;
    }
    Told const how{ start, op == LogOp::anew, ours, isLate };
    bool const isDone = op == LogOp::absent
                            ? ours || !told.sound || this->del( entity, flow, told.key )
                            : applyPresent( entity, flow, told, how );
    if( !isDone && told.sound )
      flow.answer( told.bytes() );
    if( auto const & state = flow.adapter.resyncState( flow.attribute ) )
      static_cast< Named & >( *state ).name( members, told.key );
  }

  virtual bool applyPresent( Entity & entity, FlowIn & flow, ToldKey< Key > const & told,
                             Told const & how ) const = 0;

 protected:
  using CollectionAccessOf< Derived, C_ >::CollectionAccessOf;
  ~KeyedAccess() = default;
};

/// A collection of values or references.
template< class C >
class MembersAccess final : public KeyedAccess< MembersAccess< C >, C > {
  using Base = KeyedAccess< MembersAccess< C >, C >;
  using Key = typename C::Key;
  using Given = typename C::Given;

 public:
  template< class Row >
  constexpr explicit MembersAccess( Row row )
      : Base( row ),
        set_( Row::template setMember< Key, Given > ),
        isKeyInValue_( Row::isKeyInValue() ) {}

  void writeGiven( FlowOut & flow, Given const & v ) const { flowWrite( flow, v ); }

 private:
  bool applyPresent( Entity & entity, FlowIn & flow, ToldKey< Key > const & told,
                     typename Base::Told const & how ) const override {
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
    if constexpr( isReference< Given > )
      if( flow.isFromProxy() )
        flow.refersTo( v, told.bytes() );
    return ( !how.isAnew || this->del( entity, flow, told.key ) ) &&
           flow.change( [&] { set_( entity, told.key, v ); } );
  }

  GenericIfPtr set( Entity & entity, CtorArgs const & args ) const override {
    std::size_t const given = isKeyInValue_ ? 0 : 1;  // where the value stands
    requireCount( this->what(), args, given + 1 );
    Key const key = isKeyInValue_ ? Key{} : this->keyIn( args );
    set_( entity, key, ArgumentOf< Given >::from( this->what(), args, given ) );
    return nullptr;
  }

  void ( *const set_ )( Entity &, Key const &, Given const & );
  bool const isKeyInValue_;
};

/// A collection of children.
template< class C >
class ChildrenAccess final : public KeyedAccess< ChildrenAccess< C >, C > {
  using Base = KeyedAccess< ChildrenAccess< C >, C >;
  using Key = typename C::Key;
  using Child = typename CellOf< typename C::Cell >::Child;
  using Arguments = ChildArguments< Child >;
  using BirthOf = Birth< Child, 1 >;

 public:
  template< class Row >
  constexpr explicit ChildrenAccess( Row row )
      : Base( row ), make_( Row::template make< typename Arguments::All > ) {}

  KoiType const * childType() const override {
    if constexpr( std::same_as< Child, Entity > )
      return nullptr;
    else
      return &Child::_koiType;
  }
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

 private:
  bool applyPresent( Entity & entity, FlowIn & flow, ToldKey< Key > const & told,
                     typename Base::Told const & how ) const override {
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
      auto arguments = birth.arguments();
      std::get< 0 >( arguments ) = told.key;
      return make_( entity, arguments );
    };
    bool const isFirst = !!flow.adapter.resyncState( flow.attribute );
    return birth.isMakeable( flow, child ) &&
           birth.apply( flow, child, how.ours, isFirst, how.isAnew, make,
                        [&] { this->remove( entity, told.key ); } );
  }

  GenericIfPtr set( Entity & entity, CtorArgs const & args ) const override {
    return genericIf( make_( entity, Arguments::of( this->what(), args ) ) );
  }

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

  Ptr< Child > ( *const make_ )( Entity &, typename Arguments::All const & );
};

}  // namespace Koi
