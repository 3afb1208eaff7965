// NotLearned.h: why nothing is learned from a frame, in the order in which it is found out: a frame
// that gives several reasons counts for the first of them.
#pragma once

#include <koi/Types.h>

#include <array>
#include <string_view>

namespace Frames {

enum class NotLearned : Koi::U8 {
  notBridging,    // the port is a tap, a tool or routed
  tooShort,       // it ends before its Ethernet header and tag do
  tagFormat,      // the port drops frames that are tagged so
  noNativeVlan,   // its tag names no VLAN, and the port has none for it
  reservedVlan,   // its tag says VLAN 4095, which no port takes
  otherVlan,      // tagged for another VLAN than that of the access port
  suspended,      // the VLAN carries nothing
  notMember,      // the port does not carry the VLAN, or only outwards
  blocked,        // spanning tree keeps the port from learning in the VLAN
  portLearnsNot,  // learning is switched off on the port
  vlanLearnsNot,  // learning is switched off in the VLAN
  groupSource,    // multicast and broadcast addresses receive, they never send
  zeroSource,     // an address nobody has
  configured      // it was configured where the sender is
};

/// The reasons in words, in the order of the enumeration.
inline constexpr std::array< std::string_view, 14 > notLearnedTexts{
    "port does not bridge", "too short",           "tag format dropped",
    "no native VLAN",       "VLAN 4095",           "other VLAN on access port",
    "VLAN suspended",       "VLAN not on port",    "port blocked by spanning tree",
    "port does not learn",  "VLAN does not learn", "group source",
    "all-zero source",      "configured host" };

/// Whether what was learned before stays when this reason comes up: the host is still behind that
/// port, only nothing new is learned. With the other reasons the port no longer carries its frames.
constexpr bool isPause( NotLearned why ) {
  return why == NotLearned::blocked || why == NotLearned::portLearnsNot ||
         why == NotLearned::vlanLearnsNot;
}

}  // namespace Frames
