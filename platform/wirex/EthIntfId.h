// EthIntfId.h: the identifiers of Ethernet interfaces: eth1, eth3/1, eth3/1/2, eth1.100. Any
// program may use it, on any thread.
//
// An Ethernet interface is known by its type number alone, so the zero identifier (no interface)
// counts as one; whoever must tell them apart compares with IntfId().
#pragma once

#include <wirex/GenericIntfId.h>
#include <wirex/PortPlace.h>

namespace Wirex {

class EthIntfId {
 public:
  EthIntfId() = delete;

  static constexpr bool isEthIntfId( IntfId const & intfId ) {
    return GenericIntfId( intfId ).typeId() == GenericIntfId::ethernetType;
  }

  /// The identifier of that place. A module of 0 is a switch without modules, a lane of 0 the whole
  /// port, a sub-interface of 0 the interface itself. Refuses with a RangeException
  /// "EthIntfId::module > 1023 not allowed", "EthIntfId::port < 1 or > 1023 not allowed",
  /// "EthIntfId::lane > 31 not allowed", or "EthIntfId::lane > 0 without a module not allowed".
  static constexpr IntfId intfId( Koi::U32 module, Koi::U32 port, Koi::U32 lane = 0,
                                  Koi::U32 subIntf = 0 ) {
    if( module > PortPlace::moduleMax )
      Koi::throwRangeException( "EthIntfId::module > 1023 not allowed" );
    if( port < 1 || port > PortPlace::portMax )
      Koi::throwRangeException( "EthIntfId::port < 1 or > 1023 not allowed" );
    if( lane > PortPlace::laneMax )
      Koi::throwRangeException( "EthIntfId::lane > 31 not allowed" );
    if( lane > 0 && module == 0 )
      Koi::throwRangeException( "EthIntfId::lane > 0 without a module not allowed" );
    GenericIntfId made{ IntfId() };
    made.partIs( 0, subIntf );
    made.partIs( 1, PortPlace{ module, port, lane }.part() );
    return made.intfId();
  }

  // Each of these needs an Ethernet interface; ask a peer's through
  // PeerEthIntfId::fromPeerEthIntfId.

  /// 0 on a switch without modules.
  static constexpr Koi::U32 module( IntfId const & intfId ) { return place( intfId ).module; }

  static constexpr Koi::U32 port( IntfId const & intfId ) { return place( intfId ).port; }

  /// 0 for the whole port.
  static constexpr Koi::U32 lane( IntfId const & intfId ) { return place( intfId ).lane; }

  /// 0 for the interface itself.
  static constexpr Koi::U32 subIntf( IntfId const & intfId ) {
    KOI_ASSERT( isEthIntfId( intfId ) );
    return GenericIntfId( intfId ).part( 0 );
  }

  /// The interface that a sub-interface belongs to; needs a sub-interface.
  static constexpr IntfId parentIntfIdFromSubIntf( IntfId const & subIntfId ) {
    KOI_ASSERT( isEthIntfId( subIntfId ) );
    KOI_ASSERT( subIntf( subIntfId ) );
    GenericIntfId parent( subIntfId );
    parent.partIs( 0, 0 );
    return parent.intfId();
  }

 private:
  static constexpr PortPlace place( IntfId const & intfId ) {
    KOI_ASSERT( isEthIntfId( intfId ) );
    return PortPlace::ofPart( GenericIntfId( intfId ).part( 1 ) );
  }
};

}  // namespace Wirex
