// Report.h: who gets which internal VLAN, for people and for programs.
#pragma once

#include <string>
#include <vector>

#include <InternalVlanAllocator.h>

namespace InternalVlan {

/// A request, and what became of it.
struct Answer {
  Bridging::InternalVlanKeySourcePair request;
  bool isWanted;                     // its entry says true
  Bridging::VlanIdOrNone preferred;  // none: any will do
  Bridging::VlanIdOrNone vlan;       // none: it got none
  std::string note;                  // why it did not get what it asked for; empty when it did
};

struct Report {
  std::vector< Answer > answers;  // by request
  Bridging::InternalVlanRange range;
  unsigned numServed = 0;
  unsigned numRefused = 0;  // who wanted a VLAN, and got none
  unsigned numLeft = 0;     // VLANs that could be handed out besides
};

/// What an allocator has made of its requests. It needs to have all of what it watches.
Report reportOf( Bridging::InternalVlanAllocator const & allocator );

/// A line for each request, and the counts.
std::string reportText( Report const & report );

/// {"schema": "lumo.internal-vlans/1", "answers": [...], "served": n, "refused": n, "left": n}
std::string reportJson( Report const & report );

}  // namespace InternalVlan
