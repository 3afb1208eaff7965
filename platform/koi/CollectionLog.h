// CollectionLog.h: what all keyed collections and queues do alike when they are written to a log
// and applied from one. Included only where entity types are registered.
#pragma once

#include <koi/AttributeReflection.h>

namespace Koi {

/// What all keyed collections and queues do alike. Derived says how a member and the tail are
/// written and applied (writeGiven(), applyMember(), writeTail(), applyTail(), applied()), and the
/// two ends of a first flow (beginWhole(), endWhole()).
template< class Derived, auto const & rows, std::size_t index >
class CollectionAccess : public ReflectedRow< rows, index > {
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

}  // namespace Koi
