// VlanList.h: VLANs as a command line names them.
#pragma once

#include <Lumo/VlanId.h>

#include <set>
#include <string>

namespace Lumo {

using VlanSet = std::set< Bridging::VlanId >;

/// Those of "1,10-20". Raises Failure (wrong use) "VLANS '<text>': <why>".
VlanSet vlansOf( std::string const & text );

/// "VLAN 7", "VLANs 1,10-20".
std::string vlansText( VlanSet const & vlans );

}  // namespace Lumo
