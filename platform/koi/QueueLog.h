// QueueLog.h: how queues are written to a log and applied from one. Included only where entity
// types are registered.
//
// A number says which member is meant, not where it stands: numbers begin anew. So where a gap was
// filled the whole queue is told, and where both ends changed a queue, the source's order holds,
// and it tells the proxy the whole of it.
#pragma once

#include <algorithm>
#include <limits>
#include <set>
#include <span>

#include <koi/CollectionLog.h>

namespace Koi {

/// A queue of values.
template< class C >
class QueueAccess final : public CollectionAccessOf< QueueAccess< C >, C > {
  using Base = CollectionAccessOf< QueueAccess< C >, C >;
  using Key = typename C::Key;
  using Given = typename C::Given;
  using Numbered = std::vector< std::pair< Key, Given > >;

  struct Whole final : ResyncState {
    Numbered members;
    Key tail{};
  };

 public:
  template< class Row >
  constexpr explicit QueueAccess( Row row )
      : Base( row ), set_( Row::template setMember< Key, Given > ) {}

  bool isToBeWhole( Entity const & entity, Place const & place ) const override {
    return this->cell( entity ).koiIsFilledSince( place );
  }
  void writeTail( C const & queue, FlowOut & flow ) const {
    flow.op( LogOp::tail );
    flowWrite( flow, queue.metadata().tail );
  }
  void writeGiven( FlowOut & flow, Given const & v ) const { flowWrite( flow, v ); }

 private:
  void applyTail( Entity & entity, FlowIn & flow ) const override {
    Key tail{};
    flow.read( tail );
    if( auto const & state = flow.adapter.resyncState( flow.attribute ) )
      static_cast< Whole & >( *state ).tail = tail;
    else if( !flow.isOurs() && !isStale( this->cell( entity ), tail ) )
      tailIs( entity, flow, tail );
  }
  /// Nobody but the other logs is told of that.
  void tailIs( Entity & entity, FlowIn & flow, Key tail ) const {
    C & queue = this->cell( entity );
    auto const before = queue.metadata();
    flow.change( [&] { queue.koiTailIs( tail ); } );
    if( queue.metadata() != before )
      flow.changed();
  }
  void applied( FlowIn & flow ) const override {
    // Both ends may have changed it: where members stand is not in their numbers, so the proxy gets
    // it whole.
    if( flow.isOurs() )
      flow.adapter.isCrossedIs( flow.attribute );
    else if( flow.isFromProxy() && ( flow.isCrossed || flow.adapter.isUnsettled( flow.attribute ) ||
                                     flow.mirror().isFirstFlush() ) )
      flow.adapter.tellWhole( flow.attribute );
  }
  void applyMember( Entity & entity, FlowIn & flow, NboAttrLog::In const &,
                    LogOp op ) const override {
    C const & queue = this->cell( entity );
    ToldKey< Key > const told( flow );
    Given v{};
    auto const arrival = op == LogOp::absent ? FlowIn::here : flow.read( v );
    auto const & state = flow.adapter.resyncState( flow.attribute );
    bool const isElsewhere = isStale( queue, told.key );
    if( !state && ( flow.isOurs( queue, told.key ) || isElsewhere ||
                    ( flow.isOurs() && op != LogOp::absent ) ) ) {
      if( isElsewhere && flow.isFromProxy() )
        flow.isCrossed = true;
      else if( isElsewhere && !flow.isOurs() )
        flow.mirror().restartIsDue();
      return;  // the proxy gets the whole queue
    }
    bool isDone = arrival == FlowIn::here;
    if( state && isDone )
      static_cast< Whole & >( *state ).members.emplace_back( told.key, v );
    else if( op == LogOp::absent )
      isDone = this->del( entity, flow, told.key );
    else
      isDone = isDone && set( entity, flow, told.key, v );
    if( !isDone )
      flow.answer( told.bytes() );
  }

  std::unique_ptr< ResyncState > beginWhole( Entity & ) const override {
    return std::make_unique< Whole >();
  }
  void endWhole( Entity & entity, FlowIn & flow, ResyncState & state ) const override {
    auto & named = static_cast< Whole & >( state ).members;
    Key const tail = static_cast< Whole & >( state ).tail;
    C & queue = this->cell( entity );
    // 1. From the head on, however they came.
    std::ranges::sort( named, std::greater(), [last = tail - 1]( auto const & member ) {
      return static_cast< Key >( last - member.first );
    } );
    // 2. Only at the tail can members be added: what is here must be how the others begin.
    Numbered here, ours;
    std::erase_if( named,
                   [&]( auto const & member ) { return flow.isOurs( queue, member.first ); } );
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
      tailIs( entity, flow, tail );
    for( auto const & [number, v] : ours )
      if( !isStale( queue, number ) )
        set_( entity, number, v );
  }

  GenericIfPtr set( Entity & entity, CtorArgs const & args ) const override {
    requireCount( this->what(), args, 2 );
    set_( entity, this->keyIn( args ), ArgumentOf< Given >::from( this->what(), args, 1 ) );
    return nullptr;
  }
  bool set( Entity & entity, FlowIn & flow, Key number, Given const & v ) const {
    return flow.change( [&] { set_( entity, number, v ); } );
  }
  /// The peer speaks of a number that the head has passed here.
  static bool isStale( C const & queue, Key number ) {
    constexpr Key half = std::numeric_limits< Key >::max() / 2;
    bool const isPast = static_cast< Key >( number - queue.metadata().tail ) > half;
    return !queue.empty() && !isInside( queue, number ) && isPast;
  }
  static bool isInside( C const & queue, Key number ) {
    auto const [head, tail] = queue.metadata();
    return static_cast< Key >( number - head ) < static_cast< Key >( tail - head );
  }

  void ( *const set_ )( Entity &, Key const &, Given const & );
};

}  // namespace Koi
