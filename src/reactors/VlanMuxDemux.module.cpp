// VlanMuxDemux.module.cpp: makes the reactor known to the runtime. It is by hand, as the reactor
// is.

#include <koi/EntityRegistration.h>
#include <koi/Registration.h>
#include <reactors/VlanMuxDemux.h>

KOI_REACTOR( Lumo::VlanMuxDemux )
KOI_MODULE( VlanMuxDemux, "Lumo::VlanMuxDemux", &Lumo::VlanMuxDemux::_koiType )
