// NumberedIntfId.h: the kinds of interface that are known by one number: vlan100, vxlan1, ue3. Any
// program may use it, on any thread.
#pragma once

#include <wirex/GenericIntfId.h>

namespace Wirex {

/// What the kinds share: the number is part 1, and all else but the type is 0.
template< Koi::U32 typeId >
class NumberedIntfId {
 public:
  NumberedIntfId() = delete;

 protected:
  static constexpr bool isOfKind( IntfId const & intfId ) {
    return GenericIntfId( intfId ).typeId() == typeId;
  }
  static constexpr IntfId ofNumber( Koi::U32 number ) {
    GenericIntfId made{ IntfId() };
    made.typeIdIs( typeId );
    made.partIs( 1, number );
    return made.intfId();
  }
  static constexpr Koi::U32 numberOf( IntfId const & intfId ) {
    return GenericIntfId( intfId ).part( 1 );
  }
};

/// The routed interface of a VLAN.
class VlanIntfId : public NumberedIntfId< GenericIntfId::vlanType > {
 public:
  static constexpr bool isVlanIntfId( IntfId const & intfId ) { return isOfKind( intfId ); }

  /// Refuses with a RangeException "VlanIntfId::vlanId < 1 or > 4094 not allowed".
  static constexpr IntfId intfId( Koi::U32 vlanId ) {
    if( vlanId < 1 || vlanId > 4094 )
      Koi::throwRangeException( "VlanIntfId::vlanId < 1 or > 4094 not allowed" );
    return ofNumber( vlanId );
  }

  /// The VLAN; needs a VLAN interface.
  static constexpr Koi::U32 vlanId( IntfId const & intfId ) {
    KOI_ASSERT( isVlanIntfId( intfId ) );
    return numberOf( intfId );
  }
};

/// The interface behind which the tunnels of VXLAN lie.
class VxlanIntfId : public NumberedIntfId< GenericIntfId::vxlanType > {
 public:
  static constexpr bool isVxlanIntfId( IntfId const & intfId ) { return isOfKind( intfId ); }

  /// Refuses with a RangeException "VxlanIntfId::tunnelId < 1 or > 65535 not allowed".
  static constexpr IntfId intfId( Koi::U32 tunnelId ) {
    if( tunnelId < 1 || tunnelId > 65535 )
      Koi::throwRangeException( "VxlanIntfId::tunnelId < 1 or > 65535 not allowed" );
    return ofNumber( tunnelId );
  }

  /// The tunnel interface's number; needs a VXLAN interface.
  static constexpr Koi::U32 tunnelId( IntfId const & intfId ) {
    KOI_ASSERT( isVxlanIntfId( intfId ) );
    return numberOf( intfId );
  }
};

/// A port of the switching chip that leads to no socket of the front panel.
class UnconnectedEthIntfId : public NumberedIntfId< GenericIntfId::unconnectedEthernetType > {
 public:
  static constexpr bool isUnconnectedEthIntfId( IntfId const & intfId ) {
    return isOfKind( intfId );
  }

  /// Refuses with a RangeException "UnconnectedEthIntfId::port < 1 or > 65535 not allowed".
  static constexpr IntfId intfId( Koi::U32 port ) {
    if( port < 1 || port > 65535 )
      Koi::throwRangeException( "UnconnectedEthIntfId::port < 1 or > 65535 not allowed" );
    return ofNumber( port );
  }

  /// The port's number; needs an unconnected port.
  static constexpr Koi::U32 port( IntfId const & intfId ) {
    KOI_ASSERT( isUnconnectedEthIntfId( intfId ) );
    return numberOf( intfId );
  }
};

}  // namespace Wirex
