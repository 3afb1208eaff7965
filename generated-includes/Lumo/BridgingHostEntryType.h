// BridgingHostEntryType.h: written by koigen from BridgingHostEntryType.koi. Change that file, not
// this one.
#pragma once

#include <koi/Value.h>

namespace Bridging {

/// How an entry of the MAC address table came about. "Remote" entries are reached through a tunnel,
/// "peer" ones were told by the other half of a pair of switches.
enum EntryType : Koi::U32 {
  learnedDynamicMac,        ///< learned here from a frame
  learnedSecureMac,         ///< learned on a secured port
  configuredDynamicMac,     ///< configured, ages
  configuredSecureMac,      ///< configured on a secured port
  configuredStaticMac,      ///< configured here
  peerDynamicMac,           ///< learned by the peer
  peerStaticMac,            ///< configured at the peer
  peerSecureMac,            ///< secured at the peer
  learnedRemoteMac,         ///< learned from a tunnel
  configuredRemoteMac,      ///< configured behind a tunnel
  receivedRemoteMac,        ///< told by a controller, behind a tunnel
  peerLearnedRemoteMac,     ///< learned by the peer from a tunnel
  peerConfiguredRemoteMac,  ///< configured at the peer behind a tunnel
  peerReceivedRemoteMac,    ///< told to the peer by a controller
  evpnDynamicRemoteMac,     ///< told by EVPN: learned elsewhere
  evpnConfiguredRemoteMac,  ///< told by EVPN: configured elsewhere
  peerEvpnRemoteMac,        ///< told to the peer by EVPN
  configuredRouterMac,      ///< a router's address, configured here
  peerRouterMac,            ///< a router's address of the peer
  evpnIntfDynamicMac,       ///< told by EVPN, reached through a local interface: learned
  evpnIntfStaticMac         ///< told by EVPN, reached through a local interface: configured
};
KOI_ENUM( EntryType );

/// The text for people. "unknown entry type" for a number that is no kind.
KOI_PUBLIC Koi::String8 entryTypeStr( EntryType entryType );

/// Does this switch own the entry?
KOI_PUBLIC bool isEntryTypeSelf( EntryType entryType );

/// Was it told by the peer?
KOI_PUBLIC bool isEntryTypePeer( EntryType entryType );

/// Is it reached without a tunnel?
KOI_PUBLIC bool isEntryTypeLocal( EntryType entryType );

/// Is it reached through a tunnel?
KOI_PUBLIC bool isEntryTypeRemote( EntryType entryType );

/// Was it configured, here or elsewhere?
KOI_PUBLIC bool isEntryTypeConfigured( EntryType entryType );

/// Was it learned from frames?
KOI_PUBLIC bool isEntryTypeDynamic( EntryType entryType );

/// Was it told by a controller or by EVPN?
KOI_PUBLIC bool isEntryTypeController( EntryType entryType );

/// Was it told to this switch by EVPN?
KOI_PUBLIC bool isEntryTypeEvpn( EntryType entryType );

/// Is it a kind that this table does not hold?
KOI_PUBLIC bool isEntryTypeInvalid( EntryType entryType );

/// Does it stay until somebody removes it: configured, from the peer, or from a controller?
KOI_PUBLIC bool isEntryTypeNonAging( EntryType entryType );

}  // namespace Bridging

// Reflection wrappers: each holds one copy of a value.
namespace _koi_Bridging_EntryType { using GenericIf_ = Koi::GenericValue< Bridging::EntryType >; }
