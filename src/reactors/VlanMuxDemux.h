// VlanMuxDemux.h: lets one Ethernet device carry the packets of many VLANs, for software that sends
// and receives frames itself: an endpoint for each VLAN, whose frames are untagged.
//
// By hand, for it extends a class of the platform. On the thread of the agent's default activity.
#pragma once

#include <Lumo/VlanId.h>
#include <wirex/EthDevPam.h>
#include <wirex/PamMuxDemux.h>

namespace Lumo {

class KOI_PUBLIC VlanMuxDemux final : public Koi::Tracked< VlanMuxDemux, Wirex::PamMuxDemux > {
 public:
  /// On the device of that name; without a name, on `pam`, which is the device's endpoint until
  /// there is another one. Frames without a tag, or with one whose TPID is not 0x8100, are those of
  /// the default VLAN. With leaveVlanHdr, frames keep the tags that they have, in both directions.
  /// Raises Wirex::DeviceException.
  VlanMuxDemux( Koi::Ptr< Wirex::Pam > const & pam, Koi::String8 const & deviceName,
                Bridging::VlanIdOrNone const & defaultVlan, bool leaveVlanHdr );

  Koi::String8 const & deviceName() const { return deviceName_; }
  Bridging::VlanIdOrNone const & defaultVlan() const { return defaultVlan_; }
  bool leaveVlanHdr() const { return leaveVlanHdr_; }

  /// The endpoint on the device; null when the device's endpoint is of another kind, or none.
  Koi::Ptr< Wirex::EthDevPam > ethPam() const { return ethPam_; }
  /// It is the device's endpoint from now on, in the place of the one there was.
  void ethPamIs( Koi::Ptr< Wirex::EthDevPam > const & ethPam );

  /// The VLAN of a frame from the device, which loses its tag unless tags are left. One that is too
  /// short for a header or for its tag is the default VLAN's as it is. Any VLAN may come back, 0
  /// and 4095 among them.
  Koi::U32 decapsulate( Koi::Ptr< Wirex::Pkt > const & pkt ) override;
  /// Puts the tag of that VLAN, of its low 12 bits, outermost into the frame unless tags are left.
  /// Priority and drop eligibility are 0. A frame too short for a header stays as it is.
  void doEncapsulate( Koi::Ptr< Wirex::Pkt > const & pkt, Koi::U32 vlan ) override;

  void doInitMux() override;
  void doPrepareToDie() override;

  Koi::KoiType const * fwkType() const override { return &_koiType; }
  static constexpr char koiName[] = "Lumo::VlanMuxDemux";
  static Koi::KoiType const _koiType;

 private:
  Koi::String8 const deviceName_;
  Bridging::VlanIdOrNone const defaultVlan_;
  bool const leaveVlanHdr_;
  Koi::Ptr< Wirex::EthDevPam > ethPam_;
};

/// A new VlanMuxDemux that listens.
KOI_PUBLIC Koi::Ptr< VlanMuxDemux > VlanMuxDemuxIs( Koi::Ptr< Wirex::Pam > const & pam,
                                                    Koi::String8 const & deviceName,
                                                    Bridging::VlanIdOrNone const & defaultVlan,
                                                    bool leaveVlanHdr );
KOI_PUBLIC Koi::Ptr< VlanMuxDemux > vlanMuxDemuxFactory( Koi::Ptr< Wirex::Pam > const & pam,
                                                         Koi::String8 const & deviceName,
                                                         Bridging::VlanIdOrNone const & defaultVlan,
                                                         bool leaveVlanHdr );

}  // namespace Lumo
