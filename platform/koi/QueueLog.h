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
      flow.change( [&] { this->cell( entity ).koiTailIs( tail ); } );
  }
  void applied( FlowIn & flow ) const override {
    // Both ends may have changed it: where members stand is not in their numbers, so the proxy gets
    // it whole.
    if( flow.mirror().role() == Mirror::source &&
        ( flow.adapter.isUnsettled( flow.attribute ) || flow.mirror().isFirstFlush() ) )
      flow.adapter.tellWhole( flow.attribute );
  }
  void applyMember( Entity & entity, FlowIn & flow, NboAttrLog::In const &,
                    LogOp op ) const override {
    C const & queue = this->cell( entity );
    ToldKey< Key > const told( flow );
    Given v{};
    auto const arrival = op == LogOp::absent ? FlowIn::here : flow.read( v );
    if( flow.isOurs( queue, told.key ) )
      return;
    auto const & state = flow.adapter.resyncState( flow.attribute );
    if( !state && isStale( queue, told.key ) ) {
      if( flow.mirror().role() == Mirror::proxy )
        flow.mirror().restartIsDue();  // the source gets along without; we need to know its order
      else if( op != LogOp::absent )
        flow.answer( told.bytes() );  // the proxy has it, at an end that is none here
      return;
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
      flow.change( [&] { queue.koiTailIs( tail ); } );
    for( auto const & [number, v] : ours )
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
