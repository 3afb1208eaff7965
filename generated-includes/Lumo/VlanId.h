// VlanId.h: written by koigen from VlanId.koi. Change that file, not this one.
#pragma once

#include <koi/Value.h>

namespace Bridging {

/// A real VLAN number.
class KOI_PUBLIC VlanId : public Koi::Wrapped< VlanId, Koi::U16 > {
 public:
  using Wrapped::Wrapped;

  static constexpr char koiName[] = "Bridging::VlanId";
  static constexpr char koiField[] = "value";
  static constexpr Koi::Range< Koi::U16 > koiRange{
      1, 4094, "VlanId::value < 1 or > 4094 not allowed" };
  static Koi::KoiType const _koiType;
};

/// A VLAN number, or 0 for no VLAN.
class KOI_PUBLIC VlanIdOrNone : public Koi::Wrapped< VlanIdOrNone, Koi::U16 > {
 public:
  using Wrapped::Wrapped;

  static constexpr char koiName[] = "Bridging::VlanIdOrNone";
  static constexpr char koiField[] = "value";
  static constexpr Koi::Range< Koi::U16 > koiRange{
      0, 4094, "VlanIdOrNone::value > 4094 not allowed" };
  static Koi::KoiType const _koiType;
};

/// A VLAN number, or 4095 for any VLAN.
class KOI_PUBLIC VlanIdOrAny : public Koi::Wrapped< VlanIdOrAny, Koi::U16 > {
 public:
  using Wrapped::Wrapped;

  static constexpr char koiName[] = "Bridging::VlanIdOrAny";
  static constexpr char koiField[] = "value";
  static constexpr Koi::Range< Koi::U16 > koiRange{
      1, 4095, "VlanIdOrAny::value < 1 or > 4095 not allowed" };
  static Koi::KoiType const _koiType;
};

/// A VLAN number, 0 for no VLAN, or 4095 for any VLAN.
class KOI_PUBLIC VlanIdOrAnyOrNone : public Koi::Wrapped< VlanIdOrAnyOrNone, Koi::U16 > {
 public:
  using Wrapped::Wrapped;

  static constexpr char koiName[] = "Bridging::VlanIdOrAnyOrNone";
  static constexpr char koiField[] = "value";
  static constexpr Koi::Range< Koi::U16 > koiRange{
      0, 4095, "VlanIdOrAnyOrNone::value > 4095 not allowed" };
  static Koi::KoiType const _koiType;
};

/// The two tags of a frame, either of which may be absent.
class KOI_PUBLIC VlanIdTuple : public Koi::Structure< VlanIdTuple > {
 public:
  VlanIdTuple() = default;
  VlanIdTuple( VlanIdOrNone const & outerVid, VlanIdOrNone const & innerVid )
      : _outerVid( outerVid ), _innerVid( innerVid ) {}
  VlanIdTuple( Koi::String8::IteratorConst & it, Koi::String8::IteratorConst const & end ) {
    koiParse( it, end );
  }
  VlanIdTuple( Koi::NboAttrLog::In * in, Koi::StreamBogon ) { koiRead( in ); }

  /// the outer tag, none when untagged
  VlanIdOrNone outerVid() const { return _outerVid; }

  /// the inner tag, none when single-tagged
  VlanIdOrNone innerVid() const { return _innerVid; }

  static constexpr char koiName[] = "Bridging::VlanIdTuple";
  static constexpr auto koiFields() {
    return std::tuple{
      Koi::field( "outerVid", &VlanIdTuple::_outerVid ),
      Koi::field( "innerVid", &VlanIdTuple::_innerVid )
    };
  }
  static Koi::KoiType const _koiType;

 private:
  VlanIdOrNone _outerVid{};
  VlanIdOrNone _innerVid{};
};

/// The match side of a VLAN translation.
class KOI_PUBLIC VlanXlateKey : public Koi::OrderedStructure< VlanXlateKey > {
 public:
  VlanXlateKey() = default;
  VlanXlateKey( VlanId const & outerVid, VlanIdOrNone const & innerVid )
      : _outerVid( outerVid ), _innerVid( innerVid ) {}
  VlanXlateKey( Koi::String8::IteratorConst & it, Koi::String8::IteratorConst const & end ) {
    koiParse( it, end );
  }
  VlanXlateKey( Koi::NboAttrLog::In * in, Koi::StreamBogon ) { koiRead( in ); }

  /// the outer tag: a real VLAN
  VlanId outerVid() const { return _outerVid; }

  /// the inner tag, none when single-tagged
  VlanIdOrNone innerVid() const { return _innerVid; }

  static constexpr char koiName[] = "Bridging::VlanXlateKey";
  static constexpr auto koiFields() {
    return std::tuple{
      Koi::field( "outerVid", &VlanXlateKey::_outerVid ),
      Koi::field( "innerVid", &VlanXlateKey::_innerVid )
    };
  }
  static Koi::KoiType const _koiType;

 private:
  VlanId _outerVid{};
  VlanIdOrNone _innerVid{};
};

/// The result side of a VLAN translation.
class KOI_PUBLIC VlanXlateMapping : public Koi::Structure< VlanXlateMapping > {
 public:
  VlanXlateMapping() = default;
  VlanXlateMapping( VlanIdOrNone const & vlanId, VlanIdOrNone const & innerVid, bool tunnel )
      : _vlanId( vlanId ), _innerVid( innerVid ), _tunnel( tunnel ) {}
  VlanXlateMapping( Koi::String8::IteratorConst & it, Koi::String8::IteratorConst const & end ) {
    koiParse( it, end );
  }
  VlanXlateMapping( Koi::NboAttrLog::In * in, Koi::StreamBogon ) { koiRead( in ); }

  /// the VLAN to use
  VlanIdOrNone vlanId() const { return _vlanId; }

  /// the inner VLAN
  VlanIdOrNone innerVid() const { return _innerVid; }

  /// whether the translation is a tunnel
  bool tunnel() const { return _tunnel; }

  static constexpr char koiName[] = "Bridging::VlanXlateMapping";
  static constexpr auto koiFields() {
    return std::tuple{
      Koi::field( "vlanId", &VlanXlateMapping::_vlanId ),
      Koi::field( "innerVid", &VlanXlateMapping::_innerVid ),
      Koi::field( "tunnel", &VlanXlateMapping::_tunnel )
    };
  }
  static Koi::KoiType const _koiType;

 private:
  VlanIdOrNone _vlanId{};
  VlanIdOrNone _innerVid{};
  bool _tunnel{};
};

/// How a VLAN is named where a name or a number will do.
enum NameOrId : Koi::U32 {
  none,  ///< neither is given
  name,  ///< by its name
  id     ///< by its number
};
KOI_ENUM( NameOrId );

/// A VLAN named by its name or by its number.
class KOI_PUBLIC VlanNameOrId : public Koi::Structure< VlanNameOrId > {
 public:
  VlanNameOrId() = default;
  VlanNameOrId( NameOrId nameOrId, Koi::String8 const & vlanName, VlanIdOrNone const & vlanId )
      : _nameOrId( nameOrId ), _vlanName( vlanName ), _vlanId( vlanId ) {}
  VlanNameOrId( Koi::String8::IteratorConst & it, Koi::String8::IteratorConst const & end ) {
    koiParse( it, end );
  }
  VlanNameOrId( Koi::NboAttrLog::In * in, Koi::StreamBogon ) { koiRead( in ); }

  /// which of the two counts
  NameOrId nameOrId() const { return _nameOrId; }

  /// the name
  Koi::String8 vlanName() const { return _vlanName; }

  /// the number
  VlanIdOrNone vlanId() const { return _vlanId; }

  static constexpr char koiName[] = "Bridging::VlanNameOrId";
  static constexpr auto koiFields() {
    return std::tuple{
      Koi::field( "nameOrId", &VlanNameOrId::_nameOrId ),
      Koi::field( "vlanName", &VlanNameOrId::_vlanName ),
      Koi::field( "vlanId", &VlanNameOrId::_vlanId )
    };
  }
  static Koi::KoiType const _koiType;

 private:
  NameOrId _nameOrId{};
  Koi::String8 _vlanName{};
  VlanIdOrNone _vlanId{};
};

}  // namespace Bridging

// Reflection wrappers: each holds one copy of a value.
namespace _koi_Bridging_VlanId { using GenericIf_ = Koi::GenericValue< Bridging::VlanId >; }
namespace _koi_Bridging_VlanIdOrNone {
  using GenericIf_ = Koi::GenericValue< Bridging::VlanIdOrNone >;
}
namespace _koi_Bridging_VlanIdOrAny {
  using GenericIf_ = Koi::GenericValue< Bridging::VlanIdOrAny >;
}
namespace _koi_Bridging_VlanIdOrAnyOrNone {
  using GenericIf_ = Koi::GenericValue< Bridging::VlanIdOrAnyOrNone >;
}
namespace _koi_Bridging_VlanIdTuple {
  using GenericIf_ = Koi::GenericValue< Bridging::VlanIdTuple >;
}
namespace _koi_Bridging_VlanXlateKey {
  using GenericIf_ = Koi::GenericValue< Bridging::VlanXlateKey >;
}
namespace _koi_Bridging_VlanXlateMapping {
  using GenericIf_ = Koi::GenericValue< Bridging::VlanXlateMapping >;
}
namespace _koi_Bridging_NameOrId { using GenericIf_ = Koi::GenericValue< Bridging::NameOrId >; }
namespace _koi_Bridging_VlanNameOrId {
  using GenericIf_ = Koi::GenericValue< Bridging::VlanNameOrId >;
}
