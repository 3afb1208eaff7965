// VlanTpid.h: written by koigen from VlanTpid.koi. Change that file, not this one.
#pragma once

#include <koi/Value.h>

namespace Bridging {

/// The tag protocol identifier of a VLAN tag.
class KOI_PUBLIC VlanTpid : public Koi::Wrapped< VlanTpid, Koi::U16 > {
 public:
  using Wrapped::Wrapped;

  static constexpr char koiName[] = "Bridging::VlanTpid";
  static constexpr char koiField[] = "value";
  static constexpr Koi::Range< Koi::U16 > koiRange{ 1, 65535, "VlanTpid::value <= 0 not allowed" };
  static constexpr bool koiUnhashed = true;
  static Koi::KoiType const _koiType;
};

/// The tag protocol identifier of a VLAN tag, or 0 for none.
class KOI_PUBLIC VlanTpidOrNone : public Koi::Wrapped< VlanTpidOrNone, Koi::U16 > {
 public:
  using Wrapped::Wrapped;

  static constexpr char koiName[] = "Bridging::VlanTpidOrNone";
  static constexpr char koiField[] = "value";
  static constexpr bool koiUnhashed = true;
  static Koi::KoiType const _koiType;
};

/// The tags that a sub-interface puts on its frames: plain numbers, not checked.
class KOI_PUBLIC Dot1qEncap : public Koi::Structure< Dot1qEncap > {
 public:
  Dot1qEncap() = default;
  Dot1qEncap( Koi::U16 outerTag, Koi::U16 innerTag )
      : _outerTag( outerTag ), _innerTag( innerTag ) {}
  Dot1qEncap( Koi::String8::IteratorConst & it, Koi::String8::IteratorConst const & end ) {
    koiParse( it, end );
  }
  Dot1qEncap( Koi::NboAttrLog::In * in, Koi::StreamBogon ) { koiRead( in ); }

  /// the outer tag, 0 for none
  Koi::U16 outerTag() const { return _outerTag; }

  /// the inner tag, 0 for none
  Koi::U16 innerTag() const { return _innerTag; }

  static constexpr char koiName[] = "Bridging::Dot1qEncap";
  static constexpr auto koiFields() {
    return std::tuple{
      Koi::field( "outerTag", &Dot1qEncap::_outerTag ),
      Koi::field( "innerTag", &Dot1qEncap::_innerTag )
    };
  }
  static constexpr bool koiUnhashed = true;
  static Koi::KoiType const _koiType;

 private:
  Koi::U16 _outerTag{};
  Koi::U16 _innerTag{};
};

}  // namespace Bridging

// Reflection wrappers: each holds one copy of a value.
namespace _koi_Bridging_VlanTpid { using GenericIf_ = Koi::GenericValue< Bridging::VlanTpid >; }
namespace _koi_Bridging_VlanTpidOrNone {
  using GenericIf_ = Koi::GenericValue< Bridging::VlanTpidOrNone >;
}
namespace _koi_Bridging_Dot1qEncap { using GenericIf_ = Koi::GenericValue< Bridging::Dot1qEncap >; }
