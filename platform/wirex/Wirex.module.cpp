// Wirex.module.cpp: makes the room's values known to the runtime. It is by hand, as the values are.

#include <koi/Registration.h>
#include <wirex/EthAddr.h>
#include <wirex/IntfId.h>

KOI_VALUE( Wirex::EthAddr )
KOI_VALUE( Wirex::IntfId )
KOI_MODULE( Wirex, "Wirex::EthAddr\0Wirex::IntfId", &Wirex::EthAddr::_koiType,
            &Wirex::IntfId::_koiType )
