// DynVlan.cpp: how what agents ask for goes back to what it was.

#include <Lumo/DynVlan.h>

namespace Bridging::Input {

void VlanIdSet::reset() {
  vlansIs( "" );
  trunkGroupDelAll();
  configPriorityIs( configPriorityMedium() );
  mlagSyncIs( true );
}

void AllowedVlans::reset() {
  vlansDelAll();
  trunkGroupDelAll();
}

}  // namespace Bridging::Input
