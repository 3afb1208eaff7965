// VlanOf.h: which VLAN an interface belongs to, whoever named the interface. Pure; any thread.
#pragma once

#include <wirex/NumberedIntfId.h>

namespace VlanInterfaces {

/// The VLAN, 1 to 4094; 0 for what is no VLAN interface, and for a number that no VLAN has.
constexpr Koi::U16 vlanOf( Wirex::IntfId const & intfId ) {
  if( !Wirex::VlanIntfId::isVlanIntfId( intfId ) )
    return 0;
  Koi::U32 const vlan = Wirex::VlanIntfId::vlanId( intfId );
  return vlan <= 4094 ? static_cast< Koi::U16 >( vlan ) : Koi::U16{ 0 };
}

}  // namespace VlanInterfaces
