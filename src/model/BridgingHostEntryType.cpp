// BridgingHostEntryType.cpp: the kinds of MAC table entries in words and in classes.

#include <Lumo/BridgingHostEntryType.h>

namespace Bridging {

namespace {

/// A set of entry types, one bit each.
template< class... Types >
constexpr Koi::U32 setOf( Types... types ) {
  return ( ( 1u << types ) | ... );
}

constexpr Koi::U32 self =
    setOf( learnedDynamicMac, configuredStaticMac, learnedRemoteMac, configuredRemoteMac,
           receivedRemoteMac, evpnDynamicRemoteMac, evpnConfiguredRemoteMac, configuredRouterMac,
           evpnIntfDynamicMac, evpnIntfStaticMac );
constexpr Koi::U32 peer =
    setOf( peerDynamicMac, peerStaticMac, peerLearnedRemoteMac, peerConfiguredRemoteMac,
           peerReceivedRemoteMac, peerEvpnRemoteMac, peerRouterMac );
constexpr Koi::U32 local =
    setOf( learnedDynamicMac, configuredStaticMac, peerDynamicMac, peerStaticMac,
           configuredRouterMac, peerRouterMac, evpnIntfDynamicMac, evpnIntfStaticMac );
constexpr Koi::U32 remote =
    setOf( learnedRemoteMac, configuredRemoteMac, receivedRemoteMac, peerLearnedRemoteMac,
           peerConfiguredRemoteMac, peerReceivedRemoteMac, evpnDynamicRemoteMac,
           evpnConfiguredRemoteMac, peerEvpnRemoteMac );
constexpr Koi::U32 configured =
    setOf( configuredStaticMac, peerStaticMac, configuredRemoteMac, peerConfiguredRemoteMac,
           evpnConfiguredRemoteMac, configuredRouterMac, peerRouterMac, evpnIntfStaticMac );
constexpr Koi::U32 dynamic = setOf( learnedDynamicMac, peerDynamicMac, learnedRemoteMac,
                                    peerLearnedRemoteMac, evpnIntfDynamicMac );
constexpr Koi::U32 controller =
    setOf( receivedRemoteMac, peerReceivedRemoteMac, evpnDynamicRemoteMac, evpnConfiguredRemoteMac,
           peerEvpnRemoteMac, evpnIntfDynamicMac, evpnIntfStaticMac );
constexpr Koi::U32 evpn =
    setOf( evpnDynamicRemoteMac, evpnConfiguredRemoteMac, evpnIntfDynamicMac, evpnIntfStaticMac );
constexpr Koi::U32 invalid =
    setOf( learnedSecureMac, configuredDynamicMac, configuredSecureMac, peerSecureMac );

/// A number that is no entry type is in no set.
bool isIn( Koi::U32 set, EntryType entryType ) {
  return entryType <= evpnIntfStaticMac && ( set >> entryType & 1 ) != 0;
}

}  // namespace

Koi::String8 entryTypeStr( EntryType entryType ) {
  switch( entryType ) {
    case learnedDynamicMac:
      return "learned dynamic";
    case learnedSecureMac:
      return "learned secure";
    case configuredDynamicMac:
      return "configured dynamic";
    case configuredSecureMac:
      return "configured secure";
    case configuredStaticMac:
      return "configured";
    case peerDynamicMac:
      return "peer dynamic";
    case peerStaticMac:
      return "peer static";
    case peerSecureMac:
      return "peer secure";
    case learnedRemoteMac:
      return "learned remote";
    case configuredRemoteMac:
      return "configured remote";
    case receivedRemoteMac:
      return "received remote ";  // Deliberate: the blank at the end is part of the text.
    case peerLearnedRemoteMac:
      return "peer dynamic remote";  // Deliberate: not "learned".
    case peerConfiguredRemoteMac:
      return "peer configured remote";
    case peerReceivedRemoteMac:
      return "peer received remote";
    case evpnDynamicRemoteMac:
      return "EVPN dynamic remote";
    case evpnConfiguredRemoteMac:
      return "EVPN configured remote";
    case peerEvpnRemoteMac:
      return "EVPN peer remote";
    case configuredRouterMac:
      return "configured router mac";
    case peerRouterMac:
      return "peer router mac";
    case evpnIntfDynamicMac:
      return "EVPN intf dynamic mac";
    case evpnIntfStaticMac:
      return "EVPN intf static mac";
  }
  return "unknown entry type";
}

bool isEntryTypeSelf( EntryType entryType ) { return isIn( self, entryType ); }
bool isEntryTypePeer( EntryType entryType ) { return isIn( peer, entryType ); }
bool isEntryTypeLocal( EntryType entryType ) { return isIn( local, entryType ); }
bool isEntryTypeRemote( EntryType entryType ) { return isIn( remote, entryType ); }
bool isEntryTypeConfigured( EntryType entryType ) { return isIn( configured, entryType ); }
bool isEntryTypeDynamic( EntryType entryType ) { return isIn( dynamic, entryType ); }
bool isEntryTypeController( EntryType entryType ) { return isIn( controller, entryType ); }
bool isEntryTypeEvpn( EntryType entryType ) { return isIn( evpn, entryType ); }
bool isEntryTypeInvalid( EntryType entryType ) { return isIn( invalid, entryType ); }
bool isEntryTypeNonAging( EntryType entryType ) {
  return isIn( configured | peer | controller, entryType );
}

}  // namespace Bridging
