// BridgeId.h: written by koigen from BridgeId.koi. Change that file, not this one.
#pragma once

#include <koi/Value.h>
#include <Lumo/VlanId.h>

namespace Bridging {

/// What a bridge identifier names.
enum BrType : Koi::U32 {
  brTypeUnknown,  ///< nothing
  brTypeVlan,     ///< a VLAN
  brTypeVni       ///< a VXLAN network
};
KOI_ENUM( BrType );

/// A VLAN or a VXLAN network in one word: the kind in bits 31 to 24, the number below. VLANs sort
/// before VXLAN networks.
class KOI_PUBLIC BridgeId : public Koi::Wrapped< BridgeId, Koi::U32 > {
 public:
  using Wrapped::Wrapped;
  BridgeId() = default;

  /// Refuses, with a RangeException, a kind that is not one of the three and an identifier of
  /// more than 24 bits.
  BridgeId( BrType brType, Koi::U32 identifier );

  /// the kind that names nothing
  static BrType brTypeUnknown();

  /// the kind that names a VLAN
  static BrType brTypeVlan();

  /// the kind that names a VXLAN network
  static BrType brTypeVni();

  /// what the identifier names; a number that is no kind is returned as it is
  BrType brType() const;

  /// whether it names nothing: the kind is brTypeUnknown or no kind at all
  bool isInvalid() const;

  /// the VLAN; needs the kind brTypeVlan, and refuses with a RangeException a number that no
  /// VLAN has
  VlanId vlanId() const;

  /// the VXLAN network identifier; needs the kind brTypeVni
  Koi::U32 vni() const;

  /// a copy
  BridgeId constMe() const;

  /// the canonical text: VlanId:10, Vni:10 or Invalid:0; empty for a number that is no kind
  Koi::String8 toStrep() const;

  static constexpr char koiName[] = "Bridging::BridgeId";
  static constexpr char koiField[] = "storage";
  static constexpr bool koiTextByHand = true;
  static Koi::KoiType const _koiType;

  // The text, by hand.
  Koi::String8 koiText() const;
  static BridgeId koiParsed( Koi::String8::IteratorConst & it,
                             Koi::String8::IteratorConst const & end );
};

}  // namespace Bridging

// Reflection wrappers: each holds one copy of a value.
namespace _koi_Bridging_BrType { using GenericIf_ = Koi::GenericValue< Bridging::BrType >; }
namespace _koi_Bridging_BridgeId { using GenericIf_ = Koi::GenericValue< Bridging::BridgeId >; }
