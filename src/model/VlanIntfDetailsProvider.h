// VlanIntfDetailsProvider.h: what an interface table says of VLAN interfaces. One thread, that of
// the agent.
#pragma once

#include <interface/EthIntfDetailsProvider.h>

namespace Interface {

/// Registered when the library is loaded, with the base index 0.
class KOI_PUBLIC VlanIntfDetailsProvider : public EthIntf::EthIntfDetailsProvider {
 public:
  explicit VlanIntfDetailsProvider( Koi::I32 baseIndex = 0 )
      : EthIntfDetailsProvider( baseIndex ) {}
  Koi::String8 statusTypeName() const override;
  Koi::U32 intfType( EthIntfStatus const & ) const override { return 136; }  // l3ipvlan
  double speed( EthIntfStatus const & ) const override { return 0.0; }
  /// Deliberate: sub-interfaces say true.
  bool connectorPresent( EthIntfStatus const & ) const override { return false; }
  /// The base, and the VLAN.
  Koi::I32 intfIndex( EthIntfStatus const & status ) const override;
};

}  // namespace Interface
