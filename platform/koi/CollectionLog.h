// CollectionLog.h: what all keyed collections and queues do alike when they are written to a log
// and applied from one. Included only where entity types are registered.
#pragma once

#include <koi/AttributeRow.h>

namespace Koi {

/// A walk over the members of one collection, of who does not know the types.
template< class C >
class MembersIterator final : public GenericIfIterator {
 public:
  using Del = typename C::Given ( * )( Entity &, typename C::Key const & );

  MembersIterator( Entity & entity, C & members, Del del )
      : entity_( &entity ), at_( members.koiIterator() ), del_( del ) {}
  bool iterNonnull() const override { return static_cast< bool >( at_ ); }
  GenericIfPtr iterKey() const override { return genericIf( at_.key() ); }
  GenericIfPtr iterObj() const override { return genericIf( typename C::Given( at_.value() ) ); }
  void iterInc() override { at_.advance(); }
  void iterDel() override { del_( *entity_, at_.key() ); }

 private:
  Ptr< Entity > const entity_;
  typename C::Iterator at_;
  Del const del_;
};

/// What all keyed collections and queues do alike. Derived says how a member and the tail are
/// written: writeGiven(), writeTail().
template< class Derived, class C_ >
class CollectionAccessOf : public CollectionAccess {
 protected:
  using C = C_;
  using Key = typename C::Key;
  using Given = typename C::Given;

  template< class Row >
  constexpr explicit CollectionAccessOf( Row )
      : CollectionAccess( Row::name ), cell_( Row::find ), del_( Row::template delMember< Key > ) {}
  ~CollectionAccessOf() = default;

  C & cell( Entity const & entity ) const {
    return cell_( const_cast< Entity & >( entity ) );  // who has a constant one only looks
  }
  void remove( Entity & entity, Key const & k ) const { del_( entity, k ); }
  bool del( Entity & entity, FlowIn & flow, Key const & k ) const {
    return flow.change( [&] { remove( entity, k ); } );
  }
  Key const & keyIn( CtorArgs const & args ) const {
    return ArgumentOf< Key >::from( this->what(), args, 0 );
  }

 public:
  bool writeWhole( Entity & entity, Place & place, bool begins, FlowOut & flow ) const override {
    if( begins )
      flow.op( LogOp::beginWhole );
    C & members = cell( entity );
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
    C & members = cell( entity );
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
    C const & members = cell( entity );
    Key const k = logRead< Key >( key );
    Given const v = members.value( k );
    bool const isThere = members.contains( k );
    writeOne( flow, isThere ? LogOp::present : LogOp::absent, k, isThere ? &v : nullptr );
    self().writeTail( members, flow );
  }

  void placeIs( Entity & entity, Place & place ) const override {
    cell( entity ).koiPlaceIs( place );
  }
  void placeDel( Entity & entity, Place & place ) const override {
    cell( entity ).koiPlaceDel( place );
  }
  void placeIsKnown( Entity & entity, Place & place ) const override {
    C & members = cell( entity );
    auto const known = []( auto const &... ) { return true; };
    members.koiWhole( place, entity.koiChanges(), known );
    members.koiPending( place, entity.koiChanges(), known );
    members.koiAck( place );
  }
  void ack( Entity & entity, Place & place ) const override { cell( entity ).koiAck( place ); }
  void unsend( Entity & entity, Place & place ) const override {
    cell( entity ).koiUnsend( place );
  }

  Ptr< GenericIfIterator > iterator( Entity & entity ) const override {
    return new MembersIterator< C >( entity, cell( entity ), del_ );
  }

 private:
  Derived const & self() const { return static_cast< Derived const & >( *this ); }

  GenericIfPtr read( Entity & entity, CtorArgs const & args ) const override {
    C const & members = cell( entity );
    Key const & k = keyIn( args );
    return members.contains( k ) ? genericIf( Given( members.value( k ) ) ) : GenericIfPtr();
  }
  GenericIfPtr del( Entity & entity, CtorArgs const & args ) const override {
    return genericIf( del_( entity, keyIn( args ) ) );
  }

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

  C & ( *const cell_ )( Entity & );
  Given ( *const del_ )( Entity &, Key const & );
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

}  // namespace Koi
