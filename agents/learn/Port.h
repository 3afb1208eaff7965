// Port.h: where frames come in.
#pragma once

#include <Lumo/VlanId.h>
#include <wirex/IntfId.h>

namespace Learn {

/// A port of the switch: a trunk that takes every VLAN.
struct Port {
  Wirex::IntfId intf;
  Bridging::VlanId nativeVlan{ 1 };  // of frames whose tag names none
};

}  // namespace Learn
