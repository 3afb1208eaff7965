// Choice.h: which VLANs may be handed out for internal use, and which one is next.
//
// Looks at the requests, the configuration and who owns what; changes nothing.
#pragma once

#include <InternalVlanAllocator.h>

namespace Bridging {

class InternalVlanChoice {
 public:
  explicit InternalVlanChoice( InternalVlanAllocator const & allocator );

  /// In the range; not on the blacklist, whatever its entry says; on the whitelist, with an entry
  /// that says true, where that counts; and no VLAN of a user.
  bool isAllowed( VlanId const & vlan ) const;

  /// The preferred VLAN of that request when it is allowed and nobody's; else none.
  VlanIdOrNone preferred( InternalVlanKeySourcePair const & pair ) const;

  /// The first VLAN that is allowed and nobody's, in the direction of the policy; else none.
  VlanIdOrNone next() const;

 private:
  bool isFree( VlanId const & vlan ) const;

  InternalVlanAllocator const & allocator_;
  InternalVlanConfigDir const & requests_;
  Config const & config_;
};

}  // namespace Bridging
