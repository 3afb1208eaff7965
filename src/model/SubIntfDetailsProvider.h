// SubIntfDetailsProvider.h: what an interface table says of sub-interfaces. One thread, that of the
// agent.
//
// The index of a sub-interface, before the base is added:
//
//     31-18  the sub-interface's number
//     17-13  the module of an Ethernet port; all ones for a port-channel
//     12-0   the port, or for a lane ( port - 1 ) * 40 + lane; the number of a port-channel
//
// A port-channel's number is not cut off: above 8191 it reaches into the bits of the module, where
// they are ones anyway, and two port-channels have the same index. That is traced.
#pragma once

#include <interface/EthIntfDetailsProvider.h>

namespace Interface {

/// Registered when the library is loaded, with the base index 0.
class KOI_PUBLIC SubIntfDetailsProvider : public EthIntf::EthIntfDetailsProvider {
 public:
  explicit SubIntfDetailsProvider( Koi::I32 baseIndex = 0 ) : EthIntfDetailsProvider( baseIndex ) {}
  Koi::String8 statusTypeName() const override;
  Koi::U32 intfType( EthIntfStatus const & ) const override { return 136; }  // l3ipvlan
  double speed( EthIntfStatus const & ) const override { return 0.0; }
  /// Deliberate: VLAN interfaces say false.
  bool connectorPresent( EthIntfStatus const & ) const override { return true; }
  /// -1 besides, and traced, where hasSubIntfNumber() is false.
  Koi::I32 intfIndex( EthIntfStatus const & status ) const override;
};

/// Whether the interface has a place in the layout: of an Ethernet port that has a number
/// (EthIntf::hasNumber()) or of a port-channel, with a sub-interface number of at most 4094.
KOI_PUBLIC bool hasSubIntfNumber( Wirex::IntfId const & intfId );
/// The index before the base is added. Asserts what hasSubIntfNumber() asks.
KOI_PUBLIC Koi::U32 subIntfNumber( Wirex::IntfId const & intfId );

}  // namespace Interface
