#include <Lumo/SubIntf.h>

namespace Interface {

bool SubIntfConfigDir::setVlanEncap( Wirex::IntfId const & intfId, Koi::U16 vlanId ) {
  Bridging::VlanIdOrNone const vlan( vlanId );
  Koi::Ptr< SubIntfConfig > const config = intfConfig( intfId );
  if( !config )
    return false;
  // The tags first: who is told of the type finds them.
  config->dot1qEncapIs( Bridging::Dot1qEncap( vlan.value(), 0 ) );
  config->encapTypeIs( vlan.value() == 0 ? encapTypeNone : encapTypeDot1q );
  return true;
}

}  // namespace Interface
