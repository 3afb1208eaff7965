// Frame.h: what an Ethernet frame says to a learner: the VLAN it belongs to and who sent it.
//
// Pure functions of the bytes; any thread. The port is a trunk: a tag of type 0x8100 names the
// VLAN. Untagged and priority-tagged frames, and those whose outermost tag is of another type,
// belong to the port's native VLAN.
#pragma once

#include <Lumo/VlanId.h>
#include <wirex/EthAddr.h>

#include <array>
#include <span>
#include <string_view>
#include <variant>

namespace Learn {

/// Who sent a frame, and in which VLAN.
struct FrameSource {
  Bridging::VlanId vlan;
  Wirex::EthAddr address;

  friend bool operator==( FrameSource const &, FrameSource const & ) = default;
};

/// Why nothing is learned from a frame. One that gives several reasons counts for the first of this
/// list.
enum class NotLearned {
  tooShort,      // it ends before its Ethernet header and tag do
  reservedVlan,  // its tag says VLAN 4095, which no port takes
  groupSource,   // multicast and broadcast addresses receive, they never send
  zeroSource     // an address nobody has
};

/// The reasons in words, in the order of the enumeration.
inline constexpr std::array< std::string_view, 4 > notLearnedTexts{
    "too short", "VLAN 4095", "group source", "all-zero source" };

/// What is to be learned from a frame of these captured bytes, or why nothing is.
std::variant< FrameSource, NotLearned > sourceOf( std::span< Koi::U8 const > frame,
                                                  Bridging::VlanId nativeVlan );

}  // namespace Learn
