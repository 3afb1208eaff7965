// Wirex.module.cpp: makes the room's values known to the runtime. It is by hand, as the values are.

#include <koi/Registration.h>
#include <wirex/EthAddr.h>
#include <wirex/IntfId.h>
#include <wirex/Ip4Addr.h>

KOI_VALUE( Wirex::EthAddr )
KOI_VALUE( Wirex::IntfId )
KOI_VALUE( Wirex::Ip4Addr )
KOI_MODULE( Wirex, "Wirex::EthAddr\0Wirex::IntfId\0Wirex::Ip4Addr", &Wirex::EthAddr::_koiType,
            &Wirex::IntfId::_koiType, &Wirex::Ip4Addr::_koiType )
