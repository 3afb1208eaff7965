// Bridging.h: written by koigen from Bridging.koi. Change that file, not this one.
#pragma once

#include <koi/Value.h>
#include <koi/Entity.h>
#include <quill/KoiQuillMap.h>
#include <Lumo/BridgingHostEntryType.h>
#include <Lumo/VlanId.h>
#include <Lumo/VlanTpid.h>
#include <wirex/EthAddr.h>
#include <wirex/IntfId.h>
#include <wirex/Ip4Addr.h>

namespace Quill::Bridging { class QuillFdbStatus; }

namespace Bridging {

/// When a frame is passed on.
enum SwitchForwardingMode : Koi::U32 {
  defaultMode,      ///< as the hardware does by itself
  cutThrough,       ///< while it still comes in
  storeAndForward   ///< when all of it is there
};
KOI_ENUM( SwitchForwardingMode );

/// In which direction internal VLANs are taken from their range.
enum InternalVlanAllocationPolicy : Koi::U32 {
  ascending,   ///< the lowest first
  descending   ///< the highest first
};
KOI_ENUM( InternalVlanAllocationPolicy );

/// What a switchport does with tags.
enum SwitchportMode : Koi::U32 {
  access,       ///< carries one VLAN, untagged
  trunk,        ///< carries many, tagged
  dot1qTunnel,  ///< puts whatever comes, tagged or not, into one VLAN
  tap,          ///< takes in a copy of traffic
  tool,         ///< gives a copy of traffic to a tool
  routed        ///< does not bridge
};
KOI_ENUM( SwitchportMode );

/// Whether frames are kept from going out where they came in.
enum SourceportFilterMode : Koi::U32 {
  sourceportFilterDisabled,  ///< they are not
  sourceportFilterEnabled    ///< they are
};
KOI_ENUM( SourceportFilterMode );

/// Whether a VLAN is in use.
enum VlanAdminState : Koi::U32 {
  active,     ///< it is
  suspended   ///< it is configured, but carries nothing
};
KOI_ENUM( VlanAdminState );

/// The role of a VLAN in a private-VLAN domain.
enum VlanType : Koi::U32 {
  normal,     ///< none, or the primary
  isolated,   ///< its ports reach the primary alone
  community   ///< its ports reach one another and the primary
};
KOI_ENUM( VlanType );

/// Whether frames of a VLAN leave a port with a tag.
enum TagOnEgress : Koi::U32 {
  tagOnEgressInvalid,   ///< not known
  tagOnEgressDisabled,  ///< they leave untagged
  tagOnEgressEnabled    ///< they leave tagged
};
KOI_ENUM( TagOnEgress );

/// In which directions a port carries a VLAN.
enum AllowedTrafficDirection : Koi::U32 {
  ingressAndEgress,  ///< both
  ingress,           ///< only in
  egress             ///< only out
};
KOI_ENUM( AllowedTrafficDirection );

/// What tags a frame carries.
enum VlanTagFormat : Koi::U32 {
  untagged,      ///< none
  priority,      ///< one of VLAN 0
  singleTagged,  ///< one
  doubleTagged   ///< two
};
KOI_ENUM( VlanTagFormat );

/// A direction of VLAN translation.
enum VlanMappingDirection : Koi::U32 {
  vlanMappingIngress,  ///< of frames that come in
  vlanMappingEgress    ///< of frames that go out
};
KOI_ENUM( VlanMappingDirection );

/// Whether the hardware needs VLANs for itself.
enum InternalVlanNeeded : Koi::U32 {
  unknown,           ///< nobody has said yet
  intVlanNeeded,     ///< it does
  intVlanNotNeeded   ///< it does not
};
KOI_ENUM( InternalVlanNeeded );

/// The VLANs that are set apart for internal use. Nothing says that the first is not above the
/// last:
/// such a range is empty.
class KOI_PUBLIC InternalVlanRange : public Koi::Structure< InternalVlanRange > {
 public:
  InternalVlanRange() = default;
  InternalVlanRange( VlanId const & vlanBegin, VlanId const & vlanEnd )
      : _vlanBegin( vlanBegin ), _vlanEnd( vlanEnd ) {}
  InternalVlanRange( Koi::String8::IteratorConst & it, Koi::String8::IteratorConst const & end ) {
    koiParse( it, end );
  }
  InternalVlanRange( Koi::NboAttrLog::In * in, Koi::StreamBogon ) { koiRead( in ); }

  /// the first
  VlanId vlanBegin() const { return _vlanBegin; }

  /// the last
  VlanId vlanEnd() const { return _vlanEnd; }

  static constexpr char koiName[] = "Bridging::InternalVlanRange";
  static constexpr auto koiFields() {
    return std::tuple{
      Koi::field( "vlanBegin", &InternalVlanRange::_vlanBegin ),
      Koi::field( "vlanEnd", &InternalVlanRange::_vlanEnd )
    };
  }
  static Koi::KoiType const _koiType;

 private:
  VlanId _vlanBegin{};
  VlanId _vlanEnd{};
};

/// What a switchport does with tags, and the VLAN of frames without one: they change together.
class KOI_PUBLIC SwitchportModeAndNativeVlan
    : public Koi::Structure< SwitchportModeAndNativeVlan > {
 public:
  SwitchportModeAndNativeVlan() = default;
  SwitchportModeAndNativeVlan( SwitchportMode switchportMode, VlanIdOrNone const & nativeVlan )
      : _switchportMode( switchportMode ), _nativeVlan( nativeVlan ) {}
  SwitchportModeAndNativeVlan( Koi::String8::IteratorConst & it,
                               Koi::String8::IteratorConst const & end ) {
    koiParse( it, end );
  }
  SwitchportModeAndNativeVlan( Koi::NboAttrLog::In * in, Koi::StreamBogon ) { koiRead( in ); }

  /// what it does with tags
  SwitchportMode switchportMode() const { return _switchportMode; }

  /// the VLAN of untagged frames; none: they are dropped
  VlanIdOrNone nativeVlan() const { return _nativeVlan; }

  static constexpr char koiName[] = "Bridging::SwitchportModeAndNativeVlan";
  static constexpr auto koiFields() {
    return std::tuple{
      Koi::field( "switchportMode", &SwitchportModeAndNativeVlan::_switchportMode ),
      Koi::field( "nativeVlan", &SwitchportModeAndNativeVlan::_nativeVlan )
    };
  }
  static Koi::KoiType const _koiType;

 private:
  SwitchportMode _switchportMode{};
  VlanIdOrNone _nativeVlan{};
};

/// The private-VLAN role of a VLAN: they change together.
class KOI_PUBLIC VlanTypeAndPrimaryVlan : public Koi::Structure< VlanTypeAndPrimaryVlan > {
 public:
  VlanTypeAndPrimaryVlan() = default;
  VlanTypeAndPrimaryVlan( VlanType vlanType, VlanId const & primaryVlan )
      : _vlanType( vlanType ), _primaryVlan( primaryVlan ) {}
  VlanTypeAndPrimaryVlan( Koi::String8::IteratorConst & it,
                          Koi::String8::IteratorConst const & end ) {
    koiParse( it, end );
  }
  VlanTypeAndPrimaryVlan( Koi::NboAttrLog::In * in, Koi::StreamBogon ) { koiRead( in ); }

  /// the role
  VlanType vlanType() const { return _vlanType; }

  /// the primary of the domain, 0 for none
  VlanId primaryVlan() const { return _primaryVlan; }

  static constexpr char koiName[] = "Bridging::VlanTypeAndPrimaryVlan";
  static constexpr auto koiFields() {
    return std::tuple{
      Koi::field( "vlanType", &VlanTypeAndPrimaryVlan::_vlanType ),
      Koi::fieldOrZero( "primaryVlan", &VlanTypeAndPrimaryVlan::_primaryVlan )
    };
  }
  static Koi::KoiType const _koiType;

 private:
  VlanType _vlanType{};
  VlanId _primaryVlan{};
};

/// How a port carries a VLAN.
class KOI_PUBLIC VlanPortConfig : public Koi::Structure< VlanPortConfig > {
 public:
  VlanPortConfig() = default;
  VlanPortConfig( TagOnEgress tagOnEgress, bool promotedPort,
                  AllowedTrafficDirection allowedTrafficDirection )
      : _tagOnEgress( tagOnEgress ), _promotedPort( promotedPort ),
        _allowedTrafficDirection( allowedTrafficDirection ) {}
  VlanPortConfig( Koi::String8::IteratorConst & it, Koi::String8::IteratorConst const & end ) {
    koiParse( it, end );
  }
  VlanPortConfig( Koi::NboAttrLog::In * in, Koi::StreamBogon ) { koiRead( in ); }

  /// whether frames leave with a tag
  TagOnEgress tagOnEgress() const { return _tagOnEgress; }

  /// whether the port was made a member of the VLAN by its primary
  bool promotedPort() const { return _promotedPort; }

  /// in which directions
  AllowedTrafficDirection allowedTrafficDirection() const { return _allowedTrafficDirection; }

  static constexpr char koiName[] = "Bridging::VlanPortConfig";
  static constexpr auto koiFields() {
    return std::tuple{
      Koi::field( "tagOnEgress", &VlanPortConfig::_tagOnEgress ),
      Koi::field( "promotedPort", &VlanPortConfig::_promotedPort ),
      Koi::field( "allowedTrafficDirection", &VlanPortConfig::_allowedTrafficDirection )
    };
  }
  static Koi::KoiType const _koiType;

 private:
  TagOnEgress _tagOnEgress{};
  bool _promotedPort{};
  AllowedTrafficDirection _allowedTrafficDirection{};
};

/// How a port carries a VLAN, as the hardware does it.
class KOI_PUBLIC VlanPortStatus : public Koi::Structure< VlanPortStatus > {
 public:
  VlanPortStatus() = default;
  VlanPortStatus( TagOnEgress tagOnEgress, AllowedTrafficDirection allowedTrafficDirection )
      : _tagOnEgress( tagOnEgress ), _allowedTrafficDirection( allowedTrafficDirection ) {}
  VlanPortStatus( Koi::String8::IteratorConst & it, Koi::String8::IteratorConst const & end ) {
    koiParse( it, end );
  }
  VlanPortStatus( Koi::NboAttrLog::In * in, Koi::StreamBogon ) { koiRead( in ); }

  /// whether frames leave with a tag
  TagOnEgress tagOnEgress() const { return _tagOnEgress; }

  /// in which directions
  AllowedTrafficDirection allowedTrafficDirection() const { return _allowedTrafficDirection; }

  static constexpr char koiName[] = "Bridging::VlanPortStatus";
  static constexpr auto koiFields() {
    return std::tuple{
      Koi::field( "tagOnEgress", &VlanPortStatus::_tagOnEgress ),
      Koi::field( "allowedTrafficDirection", &VlanPortStatus::_allowedTrafficDirection )
    };
  }
  static Koi::KoiType const _koiType;

 private:
  TagOnEgress _tagOnEgress{};
  AllowedTrafficDirection _allowedTrafficDirection{};
};

/// Which tag protocol identifier an interface has in hardware.
class KOI_PUBLIC IntfTpidStatusEntry : public Koi::Structure< IntfTpidStatusEntry > {
 public:
  IntfTpidStatusEntry() = default;
  IntfTpidStatusEntry( Wirex::IntfId const & intf, VlanTpidOrNone const & tpid, bool active )
      : _intf( intf ), _tpid( tpid ), _active( active ) {}
  IntfTpidStatusEntry( Koi::String8::IteratorConst & it, Koi::String8::IteratorConst const & end ) {
    koiParse( it, end );
  }
  IntfTpidStatusEntry( Koi::NboAttrLog::In * in, Koi::StreamBogon ) { koiRead( in ); }

  /// the interface
  Wirex::IntfId intf() const { return _intf; }

  /// the identifier, 0 for none
  VlanTpidOrNone tpid() const { return _tpid; }

  /// whether it is in effect
  bool active() const { return _active; }

  static constexpr char koiName[] = "Bridging::IntfTpidStatusEntry";
  static constexpr auto koiFields() {
    return std::tuple{
      Koi::field( "intf", &IntfTpidStatusEntry::_intf ),
      Koi::field( "tpid", &IntfTpidStatusEntry::_tpid ),
      Koi::field( "active", &IntfTpidStatusEntry::_active )
    };
  }
  static Koi::KoiType const _koiType;

 private:
  Wirex::IntfId _intf{};
  VlanTpidOrNone _tpid{};
  bool _active{};
};

/// Which tag formats a port that requires VLAN tags drops: bit n stands for VlanTagFormat n.
class KOI_PUBLIC VlanTagRequired : public Koi::Structure< VlanTagRequired > {
 public:
  VlanTagRequired() = default;
  explicit VlanTagRequired( Koi::U8 vlanTagFormatDrop ) : _vlanTagFormatDrop( vlanTagFormatDrop ) {}
  VlanTagRequired( Koi::String8::IteratorConst & it, Koi::String8::IteratorConst const & end ) {
    koiParse( it, end );
  }
  VlanTagRequired( Koi::NboAttrLog::In * in, Koi::StreamBogon ) { koiRead( in ); }

  /// the tag formats to drop
  Koi::U8 vlanTagFormatDrop() const { return _vlanTagFormatDrop; }

  /// what such a port begins with: it drops what names no VLAN, untagged and priority
  static VlanTagRequired handleInitialized();

  /// whether frames of that format are dropped
  bool drops( VlanTagFormat format ) const;

  static constexpr char koiName[] = "Bridging::VlanTagRequired";
  static constexpr auto koiFields() {
    return std::tuple{
      Koi::field( "vlanTagFormatDrop", &VlanTagRequired::_vlanTagFormatDrop )
    };
  }
  static Koi::KoiType const _koiType;

 private:
  Koi::U8 _vlanTagFormatDrop{};
};

/// The number of a filtering database. Every 16-bit number is one.
class KOI_PUBLIC Fid : public Koi::Wrapped< Fid, Koi::U16 > {
 public:
  using Wrapped::Wrapped;

  static constexpr char koiName[] = "Bridging::Fid";
  static constexpr char koiField[] = "value";
  static Koi::KoiType const _koiType;
};

/// A MAC address in a filtering database.
class KOI_PUBLIC HostKey : public Koi::Structure< HostKey > {
 public:
  HostKey() = default;
  HostKey( Fid const & fid, Wirex::EthAddr const & addr ) : _fid( fid ), _addr( addr ) {}
  HostKey( Koi::String8::IteratorConst & it, Koi::String8::IteratorConst const & end ) {
    koiParse( it, end );
  }
  HostKey( Koi::NboAttrLog::In * in, Koi::StreamBogon ) { koiRead( in ); }

  /// the filtering database
  Fid fid() const { return _fid; }

  /// the MAC address
  Wirex::EthAddr addr() const { return _addr; }

  static constexpr char koiName[] = "Bridging::HostKey";
  static constexpr auto koiFields() {
    return std::tuple{
      Koi::field( "fid", &HostKey::_fid ),
      Koi::field( "addr", &HostKey::_addr )
    };
  }
  static Koi::KoiType const _koiType;

 private:
  Fid _fid{};
  Wirex::EthAddr _addr{};
};

/// One learned MAC address: the key within its filtering database, and where it lives.
class KOI_PUBLIC LearnedHost : public Koi::Structure< LearnedHost > {
 public:
  LearnedHost() = default;
  LearnedHost( Wirex::EthAddr const & address, Wirex::IntfId const & intf, Koi::U32 moves,
               Koi::Seconds lastMoveTime, EntryType entryType )
      : _address( address ), intf_( intf ), moves_( moves ), lastMoveTime_( lastMoveTime ),
        entryType_( entryType ) {}
  explicit LearnedHost( Wirex::EthAddr const & address ) : _address( address ) {}
  LearnedHost( Koi::String8::IteratorConst & it, Koi::String8::IteratorConst const & end ) {
    koiParse( it, end );
  }
  LearnedHost( Koi::NboAttrLog::In * in, Koi::StreamBogon ) { koiRead( in ); }

  /// the MAC address
  Wirex::EthAddr address() const { return _address; }

  /// the interface it was learned on
  Wirex::IntfId intf() const { return intf_; }
  void intfIs( Wirex::IntfId const & v ) { intf_ = v; }

  /// how many times it has moved between interfaces
  Koi::U32 moves() const { return moves_; }
  void movesIs( Koi::U32 v ) { moves_ = v; }

  /// when it last moved, in seconds
  Koi::Seconds lastMoveTime() const { return lastMoveTime_; }
  void lastMoveTimeIs( Koi::Seconds v ) { lastMoveTime_ = v; }

  /// how the entry came to be
  EntryType entryType() const { return entryType_; }
  void entryTypeIs( EntryType v ) { entryType_ = v; }

  static constexpr char koiName[] = "Bridging::LearnedHost";
  static constexpr auto koiFields() {
    return std::tuple{
      Koi::field( "address", &LearnedHost::_address ),
      Koi::field( "intf", &LearnedHost::intf_ ),
      Koi::field( "moves", &LearnedHost::moves_ ),
      Koi::field( "lastMoveTime", &LearnedHost::lastMoveTime_ ),
      Koi::field( "entryType", &LearnedHost::entryType_ )
    };
  }
  static Koi::KoiType const _koiType;

 private:
  Wirex::EthAddr _address{};
  Wirex::IntfId intf_{};
  Koi::U32 moves_{};
  Koi::Seconds lastMoveTime_{};
  EntryType entryType_{};
};

/// One configured MAC address: the key within its filtering database, and where it is to live.
class KOI_PUBLIC ConfiguredHost : public Koi::Structure< ConfiguredHost > {
 public:
  ConfiguredHost() = default;
  ConfiguredHost( Wirex::EthAddr const & address, Wirex::IntfId const & intf, EntryType entryType,
                  Koi::String8 const & label )
      : _address( address ), intf_( intf ), _entryType( entryType ), label_( label ) {}
  ConfiguredHost( Wirex::EthAddr const & address, EntryType entryType )
      : _address( address ), _entryType( entryType ) {}
  ConfiguredHost( Koi::String8::IteratorConst & it, Koi::String8::IteratorConst const & end ) {
    koiParse( it, end );
  }
  ConfiguredHost( Koi::NboAttrLog::In * in, Koi::StreamBogon ) { koiRead( in ); }

  /// the MAC address
  Wirex::EthAddr address() const { return _address; }

  /// the interface it points to
  Wirex::IntfId intf() const { return intf_; }
  void intfIs( Wirex::IntfId const & v ) { intf_ = v; }

  /// configuredStaticMac, configuredDynamicMac or configuredSecureMac
  EntryType entryType() const { return _entryType; }

  /// what the source that configured it calls it
  Koi::String8 label() const { return label_; }
  void labelIs( Koi::String8 const & v ) { label_ = v; }

  static constexpr char koiName[] = "Bridging::ConfiguredHost";
  static constexpr auto koiFields() {
    return std::tuple{
      Koi::field( "address", &ConfiguredHost::_address ),
      Koi::field( "intf", &ConfiguredHost::intf_ ),
      Koi::field( "entryType", &ConfiguredHost::_entryType ),
      Koi::field( "label", &ConfiguredHost::label_ )
    };
  }
  static Koi::KoiType const _koiType;

 private:
  Wirex::EthAddr _address{};
  Wirex::IntfId intf_{};
  EntryType _entryType{};
  Koi::String8 label_{};
};

/// Asks for learned MAC addresses to be forgotten: those of one VLAN, of one interface, of one VLAN
/// on
/// one interface, or all.
class KOI_PUBLIC HostTableFlushRequest : public Koi::Structure< HostTableFlushRequest > {
 public:
  HostTableFlushRequest() = default;
  HostTableFlushRequest( Koi::U16 vlanId, Wirex::IntfId const & intf )
      : _vlanId( vlanId ), _intf( intf ) {}
  HostTableFlushRequest( Koi::String8::IteratorConst & it,
                         Koi::String8::IteratorConst const & end ) {
    koiParse( it, end );
  }
  HostTableFlushRequest( Koi::NboAttrLog::In * in, Koi::StreamBogon ) { koiRead( in ); }

  /// the VLAN; 0 for all. Not checked
  Koi::U16 vlanId() const { return _vlanId; }

  /// the interface; the empty one for all
  Wirex::IntfId intf() const { return _intf; }

  static constexpr char koiName[] = "Bridging::HostTableFlushRequest";
  static constexpr auto koiFields() {
    return std::tuple{
      Koi::field( "vlanId", &HostTableFlushRequest::_vlanId ),
      Koi::field( "intf", &HostTableFlushRequest::_intf )
    };
  }
  static Koi::KoiType const _koiType;

 private:
  Koi::U16 _vlanId{};
  Wirex::IntfId _intf{};
};

/// A MAC address in a VLAN; any number goes for a VLAN.
class KOI_PUBLIC MacVlanPair : public Koi::OrderedStructure< MacVlanPair > {
 public:
  MacVlanPair() = default;
  MacVlanPair( Wirex::EthAddr const & macaddr, Koi::U32 vlanId )
      : _macaddr( macaddr ), _vlanId( vlanId ) {}
  MacVlanPair( Koi::String8::IteratorConst & it, Koi::String8::IteratorConst const & end ) {
    koiParse( it, end );
  }
  MacVlanPair( Koi::NboAttrLog::In * in, Koi::StreamBogon ) { koiRead( in ); }

  /// the MAC address
  Wirex::EthAddr macaddr() const { return _macaddr; }

  /// the number of the VLAN
  Koi::U32 vlanId() const { return _vlanId; }

  static constexpr char koiName[] = "Bridging::MacVlanPair";
  static constexpr auto koiFields() {
    return std::tuple{
      Koi::field( "macaddr", &MacVlanPair::_macaddr ),
      Koi::field( "vlanId", &MacVlanPair::_vlanId )
    };
  }
  static Koi::KoiType const _koiType;

 private:
  Wirex::EthAddr _macaddr{};
  Koi::U32 _vlanId{};
};

/// How much an entry counts against others for the same address.
class KOI_PUBLIC Preference : public Koi::Wrapped< Preference, Koi::U32 > {
 public:
  using Wrapped::Wrapped;

  static constexpr char koiName[] = "Bridging::Preference";
  static constexpr char koiField[] = "value";
  static Koi::KoiType const _koiType;
};

/// The preference of a remote entry, which carries one byte of it. Raises RangeException "300 > 255
/// not allowed" for more.
class KOI_PUBLIC EntryPreference : public Koi::Wrapped< EntryPreference, Koi::U8 > {
 public:
  using Wrapped::Wrapped;

  static constexpr char koiName[] = "Bridging::EntryPreference";
  static constexpr char koiField[] = "value";
  static Koi::KoiType const _koiType;
};

/// A MAC address that is reached through a tunnel or a peer.
class KOI_PUBLIC RemoteMacEntry : public Koi::Structure< RemoteMacEntry > {
 public:
  RemoteMacEntry() = default;
  RemoteMacEntry( MacVlanPair const & key, Wirex::IntfId const & intfName, EntryType entryType,
                  Wirex::Ip4Addr const & tunnelIpAddr, Koi::U32 moveCount,
      Koi::Seconds lastMoveTime, EntryPreference const & preference )
      : _key( key ), _intfName( intfName ), _entryType( entryType ), _tunnelIpAddr( tunnelIpAddr ),
        _moveCount( moveCount ), _lastMoveTime( lastMoveTime ), _preference( preference ) {}
  RemoteMacEntry( Koi::String8::IteratorConst & it, Koi::String8::IteratorConst const & end ) {
    koiParse( it, end );
  }
  RemoteMacEntry( Koi::NboAttrLog::In * in, Koi::StreamBogon ) { koiRead( in ); }

  /// the address and its VLAN
  MacVlanPair key() const { return _key; }

  /// the tunnel or peer link
  Wirex::IntfId intfName() const { return _intfName; }

  /// how it came to be, one of the remote kinds
  EntryType entryType() const { return _entryType; }

  /// the remote end of the tunnel
  Wirex::Ip4Addr tunnelIpAddr() const { return _tunnelIpAddr; }

  /// how many times it has moved
  Koi::U32 moveCount() const { return _moveCount; }

  /// when it last moved, in seconds
  Koi::Seconds lastMoveTime() const { return _lastMoveTime; }

  /// how much it counts
  EntryPreference preference() const { return _preference; }

  static constexpr char koiName[] = "Bridging::RemoteMacEntry";
  static constexpr auto koiFields() {
    return std::tuple{
      Koi::field( "key", &RemoteMacEntry::_key ),
      Koi::field( "intfName", &RemoteMacEntry::_intfName ),
      Koi::field( "entryType", &RemoteMacEntry::_entryType ),
      Koi::field( "tunnelIpAddr", &RemoteMacEntry::_tunnelIpAddr ),
      Koi::field( "moveCount", &RemoteMacEntry::_moveCount ),
      Koi::field( "lastMoveTime", &RemoteMacEntry::_lastMoveTime ),
      Koi::field( "preference", &RemoteMacEntry::_preference )
    };
  }
  static Koi::KoiType const _koiType;

 private:
  MacVlanPair _key{};
  Wirex::IntfId _intfName{};
  EntryType _entryType{};
  Wirex::Ip4Addr _tunnelIpAddr{};
  Koi::U32 _moveCount{};
  Koi::Seconds _lastMoveTime{};
  EntryPreference _preference{};
};

/// The interfaces that are to get a multicast group.
class KOI_PUBLIC EthGroup : public Koi::EntityOf< EthGroup > {
 public:
  explicit EthGroup( Wirex::EthAddr const & address );

  /// the address of the group
  Wirex::EthAddr address() const { return _address; }

  class KoiIntf;
  /// the interfaces, an entry each
  bool intf( Wirex::IntfId const & k ) const;
  Koi::HashMap< KoiIntf, Wirex::IntfId, bool > const & intf() const { return intf_; }
  using IntfIterator = Koi::HashMap< KoiIntf, Wirex::IntfId, bool >::Iterator;
  IntfIterator intfIterator();
  void intfIs( Wirex::IntfId const & k, bool v );
  bool intfDel( Wirex::IntfId const & k );
  bool intfDel( IntfIterator const & i );
  void intfDelAll();
  void intfNotify( Wirex::IntfId const & k );

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< EthGroup > {
   public:
    virtual void onIntf() {}
    virtual void onIntf( Wirex::IntfId const & ) {}
    virtual void onIntfKoiImmediate( Wirex::IntfId const & k ) {
      koiPass( koiOnIntf ); onIntf( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Wirex::IntfId const & > koiOnIntf{
      koiFirst + 1, &NotifieeConst::onIntf, &NotifieeConst::onIntfKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, EthGroup >;

  static constexpr char koiName[] = "Bridging::EthGroup";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_address", &EthGroup::address )
    };
  }
  template< class Self = EthGroup >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "address", &Self::_address ),
      Koi::attribute( "intf", &Self::intf_, &Self::intfIs, &Self::intfDel )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 2;
  static Koi::KoiType const _koiType;

 private:
  Wirex::EthAddr const _address;
  Koi::HashMap< KoiIntf, Wirex::IntfId, bool > intf_;
};

/// A new EthGroup without a parent.
KOI_PUBLIC Koi::Ptr< EthGroup > ethGroupFactory( Wirex::EthAddr const & address );

/// What is configured of one filtering database.
class KOI_PUBLIC FdbConfig : public Koi::EntityOf< FdbConfig > {
 public:
  explicit FdbConfig( Fid const & fid );

  /// the filtering database
  Fid fid() const { return _fid; }

  class KoiConfiguredHost;
  /// its configured MAC addresses
  ConfiguredHost configuredHost( Wirex::EthAddr const & k ) const;
  Koi::HashMap< KoiConfiguredHost, Wirex::EthAddr, ConfiguredHost > const & configuredHost() const {
    return configuredHost_;
  }
  using ConfiguredHostIterator = Koi::HashMap< KoiConfiguredHost, Wirex::EthAddr,
      ConfiguredHost >::Iterator;
  ConfiguredHostIterator configuredHostIterator();
  void configuredHostIs( ConfiguredHost const & v );
  ConfiguredHost configuredHostDel( Wirex::EthAddr const & k );
  ConfiguredHost configuredHostDel( ConfiguredHostIterator const & i );
  void configuredHostDelAll();
  void configuredHostNotify( Wirex::EthAddr const & k );

  class KoiEthGroup;
  /// its static multicast groups
  Koi::Ptr< EthGroup > ethGroup( Wirex::EthAddr const & k ) const;
  Koi::HashMap< KoiEthGroup, Wirex::EthAddr, Koi::Owned< EthGroup > > const & ethGroup() const {
    return ethGroup_;
  }
  using EthGroupIterator = Koi::HashMap< KoiEthGroup, Wirex::EthAddr,
      Koi::Owned< EthGroup > >::Iterator;
  EthGroupIterator ethGroupIterator();
  /// The one of that key, made when there is none.
  Koi::Ptr< EthGroup > ethGroupIs( Wirex::EthAddr const & k );
  Koi::Ptr< EthGroup > ethGroupDel( Wirex::EthAddr const & k );
  Koi::Ptr< EthGroup > ethGroupDel( EthGroupIterator const & i );
  void ethGroupDelAll();
  void ethGroupNotify( Wirex::EthAddr const & k );

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< FdbConfig > {
   public:
    virtual void onConfiguredHost() {}
    virtual void onConfiguredHost( Wirex::EthAddr const & ) {}
    virtual void onConfiguredHostKoiImmediate( Wirex::EthAddr const & k ) {
      koiPass( koiOnConfiguredHost ); onConfiguredHost( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Wirex::EthAddr const & > koiOnConfiguredHost{
      koiFirst + 1, &NotifieeConst::onConfiguredHost,
          &NotifieeConst::onConfiguredHostKoiImmediate };

    virtual void onEthGroup() {}
    virtual void onEthGroup( Wirex::EthAddr const & ) {}
    virtual void onEthGroupKoiImmediate( Wirex::EthAddr const & k ) {
      koiPass( koiOnEthGroup ); onEthGroup( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Wirex::EthAddr const & > koiOnEthGroup{
      koiFirst + 2, &NotifieeConst::onEthGroup, &NotifieeConst::onEthGroupKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, FdbConfig >;

  static constexpr char koiName[] = "Bridging::FdbConfig";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_fid", &FdbConfig::fid )
    };
  }
  template< class Self = FdbConfig >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "fid", &Self::_fid ),
      Koi::attribute( "configuredHost", &Self::configuredHost_, &Self::configuredHostIs,
                      &Self::configuredHostDel ),
      Koi::attribute( "ethGroup", &Self::ethGroup_, &Self::ethGroupIs, &Self::ethGroupDel )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 3;
  static Koi::KoiType const _koiType;

 private:
  Fid const _fid;
  Koi::HashMap< KoiConfiguredHost, Wirex::EthAddr, ConfiguredHost > configuredHost_;
  Koi::HashMap< KoiEthGroup, Wirex::EthAddr, Koi::Owned< EthGroup > > ethGroup_;
};

/// A new FdbConfig without a parent.
KOI_PUBLIC Koi::Ptr< FdbConfig > fdbConfigFactory( Fid const & fid );

/// What is known of one filtering database. The agent that learns writes it; anybody may observe.
class KOI_PUBLIC FdbStatus : public Koi::EntityOf< FdbStatus > {
 public:
  explicit FdbStatus( Fid const & fid );

  /// the filtering database
  Fid fid() const { return _fid; }

  class KoiLearnedHost;
  /// its learned MAC addresses
  LearnedHost learnedHost( Wirex::EthAddr const & k ) const;
  Koi::HashMap< KoiLearnedHost, Wirex::EthAddr, LearnedHost > const & learnedHost() const {
    return learnedHost_;
  }
  using LearnedHostIterator = Koi::HashMap< KoiLearnedHost, Wirex::EthAddr, LearnedHost >::Iterator;
  LearnedHostIterator learnedHostIterator();
  void learnedHostIs( LearnedHost const & v );
  LearnedHost learnedHostDel( Wirex::EthAddr const & k );
  LearnedHost learnedHostDel( LearnedHostIterator const & i );
  void learnedHostDelAll();
  void learnedHostNotify( Wirex::EthAddr const & k );

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< FdbStatus > {
   public:
    virtual void onLearnedHost() {}
    virtual void onLearnedHost( Wirex::EthAddr const & ) {}
    virtual void onLearnedHostKoiImmediate( Wirex::EthAddr const & k ) {
      koiPass( koiOnLearnedHost ); onLearnedHost( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Wirex::EthAddr const & > koiOnLearnedHost{
      koiFirst + 1, &NotifieeConst::onLearnedHost, &NotifieeConst::onLearnedHostKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, FdbStatus >;

  static constexpr char koiName[] = "Bridging::FdbStatus";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_fid", &FdbStatus::fid )
    };
  }
  template< class Self = FdbStatus >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "fid", &Self::_fid ),
      Koi::attribute( "learnedHost", &Self::learnedHost_, &Self::learnedHostIs,
                      &Self::learnedHostDel )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 2;
  static Koi::KoiType const _koiType;

 private:
  Fid const _fid;
  Koi::HashMap< KoiLearnedHost, Wirex::EthAddr, LearnedHost > learnedHost_;
};

/// A new FdbStatus without a parent.
KOI_PUBLIC Koi::Ptr< FdbStatus > fdbStatusFactory( Fid const & fid );

/// How the routed interface of a primary VLAN serves the secondary VLANs.
class KOI_PUBLIC SviMappingState : public Koi::EntityOf< SviMappingState > {
 public:
  explicit SviMappingState( VlanId const & primaryVlan );

  /// the primary VLAN
  VlanId primaryVlan() const { return _primaryVlan; }

  /// every secondary VLAN maps onto the primary's interface
  bool defaultSviMapping() const { return defaultSviMapping_; }
  void defaultSviMappingIs( bool v ) {
    koiIs( defaultSviMapping_, v, NotifieeConst::koiOnDefaultSviMapping );
  }

  class KoiSecondaryVlan;
  /// else those with an entry do
  bool secondaryVlan( VlanId const & k ) const;
  Koi::HashMap< KoiSecondaryVlan, VlanId, bool > const & secondaryVlan() const {
    return secondaryVlan_;
  }
  using SecondaryVlanIterator = Koi::HashMap< KoiSecondaryVlan, VlanId, bool >::Iterator;
  SecondaryVlanIterator secondaryVlanIterator();
  void secondaryVlanIs( VlanId const & k, bool v );
  bool secondaryVlanDel( VlanId const & k );
  bool secondaryVlanDel( SecondaryVlanIterator const & i );
  void secondaryVlanDelAll();
  void secondaryVlanNotify( VlanId const & k );

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< SviMappingState > {
   public:
    virtual void onDefaultSviMapping() {}
    virtual void onDefaultSviMappingKoiImmediate() {
      koiPass( koiOnDefaultSviMapping ); onDefaultSviMapping();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnDefaultSviMapping{
      koiFirst + 1, &NotifieeConst::onDefaultSviMapping,
          &NotifieeConst::onDefaultSviMappingKoiImmediate };

    virtual void onSecondaryVlan() {}
    virtual void onSecondaryVlan( VlanId const & ) {}
    virtual void onSecondaryVlanKoiImmediate( VlanId const & k ) {
      koiPass( koiOnSecondaryVlan ); onSecondaryVlan( k );
    }
    static constexpr Koi::Callback< NotifieeConst, VlanId const & > koiOnSecondaryVlan{
      koiFirst + 2, &NotifieeConst::onSecondaryVlan, &NotifieeConst::onSecondaryVlanKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, SviMappingState >;

  static constexpr char koiName[] = "Bridging::SviMappingState";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_primaryVlan", &SviMappingState::primaryVlan )
    };
  }
  template< class Self = SviMappingState >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "primaryVlan", &Self::_primaryVlan ),
      Koi::attribute( "defaultSviMapping", &Self::defaultSviMapping_, &Self::defaultSviMappingIs ),
      Koi::attribute( "secondaryVlan", &Self::secondaryVlan_, &Self::secondaryVlanIs,
                      &Self::secondaryVlanDel )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 3;
  static Koi::KoiType const _koiType;

 private:
  VlanId const _primaryVlan;
  bool defaultSviMapping_ = true;
  Koi::HashMap< KoiSecondaryVlan, VlanId, bool > secondaryVlan_;
};

/// A new SviMappingState without a parent.
KOI_PUBLIC Koi::Ptr< SviMappingState > sviMappingStateFactory( VlanId const & primaryVlan );

/// The resolved configuration of one switchport: what the forwarding plane needs.
class KOI_PUBLIC SwitchIntfConfig : public Koi::EntityOf< SwitchIntfConfig > {
 public:
  SwitchIntfConfig( Wirex::IntfId const & intfId,
                    SwitchportModeAndNativeVlan const & switchportModeAndNativeVlan );

  /// the interface
  Wirex::IntfId intfId() const { return _intfId; }

  /// mode and native VLAN
  SwitchportModeAndNativeVlan switchportModeAndNativeVlan() const {
    return switchportModeAndNativeVlan_;
  }
  void switchportModeAndNativeVlanIs( SwitchportModeAndNativeVlan const & v ) {
    koiIs( switchportModeAndNativeVlan_, v, NotifieeConst::koiOnSwitchportModeAndNativeVlan );
  }

  /// what it does with tags
  SwitchportMode switchportMode() const { return switchportModeAndNativeVlan().switchportMode(); }

  /// the VLAN of untagged frames
  VlanIdOrNone nativeVlan() const { return switchportModeAndNativeVlan().nativeVlan(); }

  /// do not flood unicast out of it
  bool blockUnknownUnicast() const { return blockUnknownUnicast_; }
  void blockUnknownUnicastIs( bool v ) {
    koiIs( blockUnknownUnicast_, v, NotifieeConst::koiOnBlockUnknownUnicast );
  }

  /// do not flood multicast out of it
  bool blockUnknownMulticast() const { return blockUnknownMulticast_; }
  void blockUnknownMulticastIs( bool v ) {
    koiIs( blockUnknownMulticast_, v, NotifieeConst::koiOnBlockUnknownMulticast );
  }

  /// learn source MAC addresses on it
  bool macLearningEnabled() const { return macLearningEnabled_; }
  void macLearningEnabledIs( bool v ) {
    koiIs( macLearningEnabled_, v, NotifieeConst::koiOnMacLearningEnabled );
  }

  /// flood out of it
  bool floodingEnabled() const { return floodingEnabled_; }
  void floodingEnabledIs( bool v ) {
    koiIs( floodingEnabled_, v, NotifieeConst::koiOnFloodingEnabled );
  }

  /// ingress translation of the native VLAN
  VlanIdOrNone ingressNativeVlanXlate() const { return ingressNativeVlanXlate_; }
  void ingressNativeVlanXlateIs( VlanIdOrNone const & v ) {
    koiIs( ingressNativeVlanXlate_, v, NotifieeConst::koiOnIngressNativeVlanXlate );
  }

  /// egress translation of the native VLAN
  VlanIdOrNone egressNativeVlanXlate() const { return egressNativeVlanXlate_; }
  void egressNativeVlanXlateIs( VlanIdOrNone const & v ) {
    koiIs( egressNativeVlanXlate_, v, NotifieeConst::koiOnEgressNativeVlanXlate );
  }

  class KoiIngressVlanXlate;
  /// ingress VLAN translations
  VlanXlateMapping ingressVlanXlate( VlanXlateKey const & k ) const;
  Koi::HashMap< KoiIngressVlanXlate, VlanXlateKey,
      VlanXlateMapping > const & ingressVlanXlate() const {
    return ingressVlanXlate_;
  }
  using IngressVlanXlateIterator = Koi::HashMap< KoiIngressVlanXlate, VlanXlateKey,
      VlanXlateMapping >::Iterator;
  IngressVlanXlateIterator ingressVlanXlateIterator();
  void ingressVlanXlateIs( VlanXlateKey const & k, VlanXlateMapping const & v );
  VlanXlateMapping ingressVlanXlateDel( VlanXlateKey const & k );
  VlanXlateMapping ingressVlanXlateDel( IngressVlanXlateIterator const & i );
  void ingressVlanXlateDelAll();
  void ingressVlanXlateNotify( VlanXlateKey const & k );

  class KoiEgressVlanXlate;
  /// egress VLAN translations
  VlanXlateMapping egressVlanXlate( VlanXlateKey const & k ) const;
  Koi::HashMap< KoiEgressVlanXlate, VlanXlateKey,
      VlanXlateMapping > const & egressVlanXlate() const {
    return egressVlanXlate_;
  }
  using EgressVlanXlateIterator = Koi::HashMap< KoiEgressVlanXlate, VlanXlateKey,
      VlanXlateMapping >::Iterator;
  EgressVlanXlateIterator egressVlanXlateIterator();
  void egressVlanXlateIs( VlanXlateKey const & k, VlanXlateMapping const & v );
  VlanXlateMapping egressVlanXlateDel( VlanXlateKey const & k );
  VlanXlateMapping egressVlanXlateDel( EgressVlanXlateIterator const & i );
  void egressVlanXlateDelAll();
  void egressVlanXlateNotify( VlanXlateKey const & k );

  /// announces the tags that count on it
  VlanTpidOrNone vlanTpid() const { return vlanTpid_; }
  void vlanTpidIs( VlanTpidOrNone const & v ) {
    koiIs( vlanTpid_, v, NotifieeConst::koiOnVlanTpid );
  }

  class KoiVlanTagFormatDrop;
  /// tag formats that it drops
  bool vlanTagFormatDrop( VlanTagFormat k ) const;
  Koi::HashMap< KoiVlanTagFormatDrop, VlanTagFormat, bool > const & vlanTagFormatDrop() const {
    return vlanTagFormatDrop_;
  }
  using VlanTagFormatDropIterator = Koi::HashMap< KoiVlanTagFormatDrop, VlanTagFormat,
      bool >::Iterator;
  VlanTagFormatDropIterator vlanTagFormatDropIterator();
  void vlanTagFormatDropIs( VlanTagFormat k, bool v );
  bool vlanTagFormatDropDel( VlanTagFormat k );
  bool vlanTagFormatDropDel( VlanTagFormatDropIterator const & i );
  void vlanTagFormatDropDelAll();
  void vlanTagFormatDropNotify( VlanTagFormat k );

  class KoiVlanMappingRequired;
  /// directions that require a translation
  bool vlanMappingRequired( VlanMappingDirection k ) const;
  Koi::HashMap< KoiVlanMappingRequired, VlanMappingDirection,
      bool > const & vlanMappingRequired() const {
    return vlanMappingRequired_;
  }
  using VlanMappingRequiredIterator = Koi::HashMap< KoiVlanMappingRequired, VlanMappingDirection,
      bool >::Iterator;
  VlanMappingRequiredIterator vlanMappingRequiredIterator();
  void vlanMappingRequiredIs( VlanMappingDirection k, bool v );
  bool vlanMappingRequiredDel( VlanMappingDirection k );
  bool vlanMappingRequiredDel( VlanMappingRequiredIterator const & i );
  void vlanMappingRequiredDelAll();
  void vlanMappingRequiredNotify( VlanMappingDirection k );

  /// keeps frames from going back out
  SourceportFilterMode sourceportFilterMode() const { return sourceportFilterMode_; }
  void sourceportFilterModeIs( SourceportFilterMode v ) {
    koiIs( sourceportFilterMode_, v, NotifieeConst::koiOnSourceportFilterMode );
  }

  /// VLANs of a tap port, a range list
  Koi::String8 tapAllowedVlans() const { return tapAllowedVlans_; }
  void tapAllowedVlansIs( Koi::String8 const & v ) {
    koiIs( tapAllowedVlans_, v, NotifieeConst::koiOnTapAllowedVlans );
  }

  /// VLANs of a tool port, a range list
  Koi::String8 toolAllowedVlans() const { return toolAllowedVlans_; }
  void toolAllowedVlansIs( Koi::String8 const & v ) {
    koiIs( toolAllowedVlans_, v, NotifieeConst::koiOnToolAllowedVlans );
  }

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< SwitchIntfConfig > {
   public:
    virtual void onSwitchportModeAndNativeVlan() {}
    virtual void onSwitchportModeAndNativeVlanKoiImmediate() {
      koiPass( koiOnSwitchportModeAndNativeVlan ); onSwitchportModeAndNativeVlan();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnSwitchportModeAndNativeVlan{
      koiFirst + 1, &NotifieeConst::onSwitchportModeAndNativeVlan,
          &NotifieeConst::onSwitchportModeAndNativeVlanKoiImmediate };

    virtual void onBlockUnknownUnicast() {}
    virtual void onBlockUnknownUnicastKoiImmediate() {
      koiPass( koiOnBlockUnknownUnicast ); onBlockUnknownUnicast();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnBlockUnknownUnicast{
      koiFirst + 4, &NotifieeConst::onBlockUnknownUnicast,
          &NotifieeConst::onBlockUnknownUnicastKoiImmediate };

    virtual void onBlockUnknownMulticast() {}
    virtual void onBlockUnknownMulticastKoiImmediate() {
      koiPass( koiOnBlockUnknownMulticast ); onBlockUnknownMulticast();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnBlockUnknownMulticast{
      koiFirst + 5, &NotifieeConst::onBlockUnknownMulticast,
          &NotifieeConst::onBlockUnknownMulticastKoiImmediate };

    virtual void onMacLearningEnabled() {}
    virtual void onMacLearningEnabledKoiImmediate() {
      koiPass( koiOnMacLearningEnabled ); onMacLearningEnabled();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnMacLearningEnabled{
      koiFirst + 6, &NotifieeConst::onMacLearningEnabled,
          &NotifieeConst::onMacLearningEnabledKoiImmediate };

    virtual void onFloodingEnabled() {}
    virtual void onFloodingEnabledKoiImmediate() {
      koiPass( koiOnFloodingEnabled ); onFloodingEnabled();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnFloodingEnabled{
      koiFirst + 7, &NotifieeConst::onFloodingEnabled,
          &NotifieeConst::onFloodingEnabledKoiImmediate };

    virtual void onIngressNativeVlanXlate() {}
    virtual void onIngressNativeVlanXlateKoiImmediate() {
      koiPass( koiOnIngressNativeVlanXlate ); onIngressNativeVlanXlate();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnIngressNativeVlanXlate{
      koiFirst + 8, &NotifieeConst::onIngressNativeVlanXlate,
          &NotifieeConst::onIngressNativeVlanXlateKoiImmediate };

    virtual void onEgressNativeVlanXlate() {}
    virtual void onEgressNativeVlanXlateKoiImmediate() {
      koiPass( koiOnEgressNativeVlanXlate ); onEgressNativeVlanXlate();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnEgressNativeVlanXlate{
      koiFirst + 9, &NotifieeConst::onEgressNativeVlanXlate,
          &NotifieeConst::onEgressNativeVlanXlateKoiImmediate };

    virtual void onIngressVlanXlate() {}
    virtual void onIngressVlanXlate( VlanXlateKey const & ) {}
    virtual void onIngressVlanXlateKoiImmediate( VlanXlateKey const & k ) {
      koiPass( koiOnIngressVlanXlate ); onIngressVlanXlate( k );
    }
    static constexpr Koi::Callback< NotifieeConst, VlanXlateKey const & > koiOnIngressVlanXlate{
      koiFirst + 10, &NotifieeConst::onIngressVlanXlate,
          &NotifieeConst::onIngressVlanXlateKoiImmediate };

    virtual void onEgressVlanXlate() {}
    virtual void onEgressVlanXlate( VlanXlateKey const & ) {}
    virtual void onEgressVlanXlateKoiImmediate( VlanXlateKey const & k ) {
      koiPass( koiOnEgressVlanXlate ); onEgressVlanXlate( k );
    }
    static constexpr Koi::Callback< NotifieeConst, VlanXlateKey const & > koiOnEgressVlanXlate{
      koiFirst + 11, &NotifieeConst::onEgressVlanXlate,
          &NotifieeConst::onEgressVlanXlateKoiImmediate };

    virtual void onVlanTpid() {}
    virtual void onVlanTpidKoiImmediate() { koiPass( koiOnVlanTpid ); onVlanTpid(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnVlanTpid{
      koiFirst + 12, &NotifieeConst::onVlanTpid, &NotifieeConst::onVlanTpidKoiImmediate };

    virtual void onVlanTagFormatDrop() {}
    virtual void onVlanTagFormatDrop( VlanTagFormat ) {}
    virtual void onVlanTagFormatDropKoiImmediate( VlanTagFormat k ) {
      koiPass( koiOnVlanTagFormatDrop ); onVlanTagFormatDrop( k );
    }
    static constexpr Koi::Callback< NotifieeConst, VlanTagFormat > koiOnVlanTagFormatDrop{
      koiFirst + 13, &NotifieeConst::onVlanTagFormatDrop,
          &NotifieeConst::onVlanTagFormatDropKoiImmediate };

    virtual void onVlanMappingRequired() {}
    virtual void onVlanMappingRequired( VlanMappingDirection ) {}
    virtual void onVlanMappingRequiredKoiImmediate( VlanMappingDirection k ) {
      koiPass( koiOnVlanMappingRequired ); onVlanMappingRequired( k );
    }
    static constexpr Koi::Callback< NotifieeConst, VlanMappingDirection > koiOnVlanMappingRequired{
      koiFirst + 14, &NotifieeConst::onVlanMappingRequired,
          &NotifieeConst::onVlanMappingRequiredKoiImmediate };

    virtual void onSourceportFilterMode() {}
    virtual void onSourceportFilterModeKoiImmediate() {
      koiPass( koiOnSourceportFilterMode ); onSourceportFilterMode();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnSourceportFilterMode{
      koiFirst + 15, &NotifieeConst::onSourceportFilterMode,
          &NotifieeConst::onSourceportFilterModeKoiImmediate };

    virtual void onTapAllowedVlans() {}
    virtual void onTapAllowedVlansKoiImmediate() {
      koiPass( koiOnTapAllowedVlans ); onTapAllowedVlans();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnTapAllowedVlans{
      koiFirst + 16, &NotifieeConst::onTapAllowedVlans,
          &NotifieeConst::onTapAllowedVlansKoiImmediate };

    virtual void onToolAllowedVlans() {}
    virtual void onToolAllowedVlansKoiImmediate() {
      koiPass( koiOnToolAllowedVlans ); onToolAllowedVlans();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnToolAllowedVlans{
      koiFirst + 17, &NotifieeConst::onToolAllowedVlans,
          &NotifieeConst::onToolAllowedVlansKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, SwitchIntfConfig >;

  static constexpr char koiName[] = "Bridging::SwitchIntfConfig";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_intfId", &SwitchIntfConfig::intfId ),
      Koi::initial( "_switchportModeAndNativeVlan", &SwitchIntfConfig::switchportModeAndNativeVlan )
    };
  }
  template< class Self = SwitchIntfConfig >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "intfId", &Self::_intfId ),
      Koi::attribute( "switchportModeAndNativeVlan", &Self::switchportModeAndNativeVlan_,
                      &Self::switchportModeAndNativeVlanIs ),
      Koi::computed( "switchportMode", &Self::switchportMode ),
      Koi::computed( "nativeVlan", &Self::nativeVlan ),
      Koi::attribute( "blockUnknownUnicast", &Self::blockUnknownUnicast_,
                      &Self::blockUnknownUnicastIs ),
      Koi::attribute( "blockUnknownMulticast", &Self::blockUnknownMulticast_,
                      &Self::blockUnknownMulticastIs ),
      Koi::attribute( "macLearningEnabled", &Self::macLearningEnabled_,
                      &Self::macLearningEnabledIs ),
      Koi::attribute( "floodingEnabled", &Self::floodingEnabled_, &Self::floodingEnabledIs ),
      Koi::attribute( "ingressNativeVlanXlate", &Self::ingressNativeVlanXlate_,
                      &Self::ingressNativeVlanXlateIs ),
      Koi::attribute( "egressNativeVlanXlate", &Self::egressNativeVlanXlate_,
                      &Self::egressNativeVlanXlateIs ),
      Koi::attribute( "ingressVlanXlate", &Self::ingressVlanXlate_, &Self::ingressVlanXlateIs,
                      &Self::ingressVlanXlateDel ),
      Koi::attribute( "egressVlanXlate", &Self::egressVlanXlate_, &Self::egressVlanXlateIs,
                      &Self::egressVlanXlateDel ),
      Koi::attribute( "vlanTpid", &Self::vlanTpid_, &Self::vlanTpidIs ),
      Koi::attribute( "vlanTagFormatDrop", &Self::vlanTagFormatDrop_, &Self::vlanTagFormatDropIs,
                      &Self::vlanTagFormatDropDel ),
      Koi::attribute( "vlanMappingRequired", &Self::vlanMappingRequired_,
                      &Self::vlanMappingRequiredIs, &Self::vlanMappingRequiredDel ),
      Koi::attribute( "sourceportFilterMode", &Self::sourceportFilterMode_,
                      &Self::sourceportFilterModeIs ),
      Koi::attribute( "tapAllowedVlans", &Self::tapAllowedVlans_, &Self::tapAllowedVlansIs ),
      Koi::attribute( "toolAllowedVlans", &Self::toolAllowedVlans_, &Self::toolAllowedVlansIs )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 18;
  static Koi::KoiType const _koiType;

 private:
  Wirex::IntfId const _intfId;
  SwitchportModeAndNativeVlan switchportModeAndNativeVlan_{};
  bool blockUnknownUnicast_{};
  bool blockUnknownMulticast_{};
  bool macLearningEnabled_ = true;
  bool floodingEnabled_ = true;
  VlanIdOrNone ingressNativeVlanXlate_{};
  VlanIdOrNone egressNativeVlanXlate_{};
  Koi::HashMap< KoiIngressVlanXlate, VlanXlateKey, VlanXlateMapping > ingressVlanXlate_;
  Koi::HashMap< KoiEgressVlanXlate, VlanXlateKey, VlanXlateMapping > egressVlanXlate_;
  VlanTpidOrNone vlanTpid_ = VlanTpidOrNone( 0x8100 );
  Koi::HashMap< KoiVlanTagFormatDrop, VlanTagFormat, bool > vlanTagFormatDrop_;
  Koi::HashMap< KoiVlanMappingRequired, VlanMappingDirection, bool > vlanMappingRequired_;
  SourceportFilterMode sourceportFilterMode_ = SourceportFilterMode::sourceportFilterEnabled;
  Koi::String8 tapAllowedVlans_{};
  Koi::String8 toolAllowedVlans_{};
};

/// A new SwitchIntfConfig without a parent.
KOI_PUBLIC Koi::Ptr< SwitchIntfConfig > switchIntfConfigFactory( Wirex::IntfId const & intfId,
    SwitchportModeAndNativeVlan const & switchportModeAndNativeVlan );

/// The resolved configuration of one VLAN.
class KOI_PUBLIC VlanConfig : public Koi::EntityOf< VlanConfig > {
 public:
  VlanConfig( VlanId const & vlanId, bool internal );

  /// the VLAN
  VlanId vlanId() const { return _vlanId; }

  /// allocated by the system, not configured
  bool internal() const { return _internal; }

  /// the name that configuration gave it
  Koi::String8 configuredName() const { return configuredName_; }
  void configuredNameIs( Koi::String8 const & v ) {
    koiIs( configuredName_, v, NotifieeConst::koiOnConfiguredName );
  }

  class KoiIntf;
  /// its member ports, and how each carries it
  VlanPortConfig intf( Wirex::IntfId const & k ) const;
  Koi::HashMap< KoiIntf, Wirex::IntfId, VlanPortConfig > const & intf() const { return intf_; }
  using IntfIterator = Koi::HashMap< KoiIntf, Wirex::IntfId, VlanPortConfig >::Iterator;
  IntfIterator intfIterator();
  void intfIs( Wirex::IntfId const & k, VlanPortConfig const & v );
  VlanPortConfig intfDel( Wirex::IntfId const & k );
  VlanPortConfig intfDel( IntfIterator const & i );
  void intfDelAll();
  void intfNotify( Wirex::IntfId const & k );

  /// active or suspended
  VlanAdminState adminState() const { return adminState_; }
  void adminStateIs( VlanAdminState v ) { koiIs( adminState_, v, NotifieeConst::koiOnAdminState ); }

  /// learn MAC addresses in it
  bool macLearning() const { return macLearning_; }
  void macLearningIs( bool v ) { koiIs( macLearning_, v, NotifieeConst::koiOnMacLearning ); }

  /// its private-VLAN role
  VlanTypeAndPrimaryVlan vlanTypeAndPrimaryVlan() const { return vlanTypeAndPrimaryVlan_; }
  void vlanTypeAndPrimaryVlanIs( VlanTypeAndPrimaryVlan const & v ) {
    koiIs( vlanTypeAndPrimaryVlan_, v, NotifieeConst::koiOnVlanTypeAndPrimaryVlan );
  }

  /// its role
  VlanType vlanType() const { return vlanTypeAndPrimaryVlan().vlanType(); }

  /// its primary, 0 for none
  VlanId primaryVlan() const { return vlanTypeAndPrimaryVlan().primaryVlan(); }

  /// whether it may be a primary VLAN: it is normal, has no primary itself, and is not internal
  bool eligibleToBePrimary() const;

  /// the source's name where none named one
  static Koi::String8 defaultSource() { return "default"; }

  /// the input source that it came from
  Koi::String8 configSource() const { return configSource_; }
  void configSourceIs( Koi::String8 const & v ) {
    koiIs( configSource_, v, NotifieeConst::koiOnConfigSource );
  }

  class KoiTrunkGroup;
  /// the trunk groups that it belongs to
  bool trunkGroup( Koi::String8 const & k ) const;
  Koi::HashMap< KoiTrunkGroup, Koi::String8, bool > const & trunkGroup() const {
    return trunkGroup_;
  }
  using TrunkGroupIterator = Koi::HashMap< KoiTrunkGroup, Koi::String8, bool >::Iterator;
  TrunkGroupIterator trunkGroupIterator();
  void trunkGroupIs( Koi::String8 const & k, bool v );
  bool trunkGroupDel( Koi::String8 const & k );
  bool trunkGroupDel( TrunkGroupIterator const & i );
  void trunkGroupDelAll();
  void trunkGroupNotify( Koi::String8 const & k );

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< VlanConfig > {
   public:
    virtual void onConfiguredName() {}
    virtual void onConfiguredNameKoiImmediate() {
      koiPass( koiOnConfiguredName ); onConfiguredName();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnConfiguredName{
      koiFirst + 2, &NotifieeConst::onConfiguredName,
          &NotifieeConst::onConfiguredNameKoiImmediate };

    virtual void onIntf() {}
    virtual void onIntf( Wirex::IntfId const & ) {}
    virtual void onIntfKoiImmediate( Wirex::IntfId const & k ) {
      koiPass( koiOnIntf ); onIntf( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Wirex::IntfId const & > koiOnIntf{
      koiFirst + 3, &NotifieeConst::onIntf, &NotifieeConst::onIntfKoiImmediate };

    virtual void onAdminState() {}
    virtual void onAdminStateKoiImmediate() { koiPass( koiOnAdminState ); onAdminState(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnAdminState{
      koiFirst + 4, &NotifieeConst::onAdminState, &NotifieeConst::onAdminStateKoiImmediate };

    virtual void onMacLearning() {}
    virtual void onMacLearningKoiImmediate() { koiPass( koiOnMacLearning ); onMacLearning(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnMacLearning{
      koiFirst + 5, &NotifieeConst::onMacLearning, &NotifieeConst::onMacLearningKoiImmediate };

    virtual void onVlanTypeAndPrimaryVlan() {}
    virtual void onVlanTypeAndPrimaryVlanKoiImmediate() {
      koiPass( koiOnVlanTypeAndPrimaryVlan ); onVlanTypeAndPrimaryVlan();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnVlanTypeAndPrimaryVlan{
      koiFirst + 6, &NotifieeConst::onVlanTypeAndPrimaryVlan,
          &NotifieeConst::onVlanTypeAndPrimaryVlanKoiImmediate };

    virtual void onConfigSource() {}
    virtual void onConfigSourceKoiImmediate() { koiPass( koiOnConfigSource ); onConfigSource(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnConfigSource{
      koiFirst + 10, &NotifieeConst::onConfigSource, &NotifieeConst::onConfigSourceKoiImmediate };

    virtual void onTrunkGroup() {}
    virtual void onTrunkGroup( Koi::String8 const & ) {}
    virtual void onTrunkGroupKoiImmediate( Koi::String8 const & k ) {
      koiPass( koiOnTrunkGroup ); onTrunkGroup( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Koi::String8 const & > koiOnTrunkGroup{
      koiFirst + 11, &NotifieeConst::onTrunkGroup, &NotifieeConst::onTrunkGroupKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, VlanConfig >;

  static constexpr char koiName[] = "Bridging::VlanConfig";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_vlanId", &VlanConfig::vlanId ),
      Koi::parameter( "_internal", &VlanConfig::internal )
    };
  }
  template< class Self = VlanConfig >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "vlanId", &Self::_vlanId ),
      Koi::attribute( "internal", &Self::_internal ),
      Koi::attribute( "configuredName", &Self::configuredName_, &Self::configuredNameIs ),
      Koi::attribute( "intf", &Self::intf_, &Self::intfIs, &Self::intfDel ),
      Koi::attribute( "adminState", &Self::adminState_, &Self::adminStateIs ),
      Koi::attribute( "macLearning", &Self::macLearning_, &Self::macLearningIs ),
      Koi::attribute( "vlanTypeAndPrimaryVlan", &Self::vlanTypeAndPrimaryVlan_,
                      &Self::vlanTypeAndPrimaryVlanIs ),
      Koi::computed( "vlanType", &Self::vlanType ),
      Koi::computed( "primaryVlan", &Self::primaryVlan ),
      Koi::constant< Self >( "defaultSource", &Self::defaultSource ),
      Koi::attribute( "configSource", &Self::configSource_, &Self::configSourceIs ),
      Koi::attribute( "trunkGroup", &Self::trunkGroup_, &Self::trunkGroupIs, &Self::trunkGroupDel )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 12;
  static Koi::KoiType const _koiType;

 private:
  VlanId const _vlanId;
  bool const _internal;
  Koi::String8 configuredName_{};
  Koi::HashMap< KoiIntf, Wirex::IntfId, VlanPortConfig > intf_;
  VlanAdminState adminState_{};
  bool macLearning_ = true;
  VlanTypeAndPrimaryVlan vlanTypeAndPrimaryVlan_{};
  Koi::String8 configSource_ = defaultSource();
  Koi::HashMap< KoiTrunkGroup, Koi::String8, bool > trunkGroup_;
};

/// A new VlanConfig without a parent.
KOI_PUBLIC Koi::Ptr< VlanConfig > vlanConfigFactory( VlanId const & vlanId, bool internal );

/// The resolved bridging configuration of the switch. The agent that resolves the sources writes
/// it,
/// the bridging and hardware agents read it.
class KOI_PUBLIC Config : public Koi::EntityOf< Config > {
 public:
  explicit Config( Koi::Name const & name );

  /// which source the VLANs came from
  Koi::String8 vlanConfigSourceDetail() const { return vlanConfigSourceDetail_; }
  void vlanConfigSourceDetailIs( Koi::String8 const & v ) {
    koiIs( vlanConfigSourceDetail_, v, NotifieeConst::koiOnVlanConfigSourceDetail );
  }

  /// the bridge's own MAC address
  Wirex::EthAddr bridgeMacAddr() const { return bridgeMacAddr_; }
  void bridgeMacAddrIs( Wirex::EthAddr const & v ) {
    koiIs( bridgeMacAddr_, v, NotifieeConst::koiOnBridgeMacAddr );
  }

  /// how long a learned host stays unseen; 0 is for ever
  Koi::Seconds hostAgingTime() const { return hostAgingTime_; }
  void hostAgingTimeIs( Koi::Seconds v ) {
    koiIs( hostAgingTime_, v, NotifieeConst::koiOnHostAgingTime );
  }

  /// pass Ethernet pause frames through
  bool pausePassThrough() const { return pausePassThrough_; }
  void pausePassThroughIs( bool v ) {
    koiIs( pausePassThrough_, v, NotifieeConst::koiOnPausePassThrough );
  }

  /// from which end internal VLANs are taken
  InternalVlanAllocationPolicy internalVlanAllocationPolicy() const {
    return internalVlanAllocationPolicy_;
  }
  void internalVlanAllocationPolicyIs( InternalVlanAllocationPolicy v ) {
    koiIs( internalVlanAllocationPolicy_, v, NotifieeConst::koiOnInternalVlanAllocationPolicy );
  }

  /// the VLANs that are set apart for internal use
  InternalVlanRange internalVlanRange() const { return internalVlanRange_; }
  void internalVlanRangeIs( InternalVlanRange const & v ) {
    koiIs( internalVlanRange_, v, NotifieeConst::koiOnInternalVlanRange );
  }

  /// when frames are passed on
  SwitchForwardingMode forwardingMode() const { return forwardingMode_; }
  void forwardingModeIs( SwitchForwardingMode v ) {
    koiIs( forwardingMode_, v, NotifieeConst::koiOnForwardingMode );
  }

  /// the mode of an interface that names none
  SwitchportMode defaultSwitchportMode() const { return defaultSwitchportMode_; }
  void defaultSwitchportModeIs( SwitchportMode v ) {
    koiIs( defaultSwitchportMode_, v, NotifieeConst::koiOnDefaultSwitchportMode );
  }

  class KoiSwitchIntfConfig;
  /// the switchports
  Koi::Ptr< SwitchIntfConfig > switchIntfConfig( Wirex::IntfId const & k ) const;
  Koi::HashMap< KoiSwitchIntfConfig, Wirex::IntfId,
      Koi::Owned< SwitchIntfConfig > > const & switchIntfConfig() const {
    return switchIntfConfig_;
  }
  using SwitchIntfConfigIterator = Koi::HashMap< KoiSwitchIntfConfig, Wirex::IntfId,
      Koi::Owned< SwitchIntfConfig > >::Iterator;
  SwitchIntfConfigIterator switchIntfConfigIterator();
  /// The one of that key, made when there is none.
  Koi::Ptr< SwitchIntfConfig > switchIntfConfigIs( Wirex::IntfId const & k,
                                                   SwitchportModeAndNativeVlan const & switchportModeAndNativeVlan );
  Koi::Ptr< SwitchIntfConfig > switchIntfConfigDel( Wirex::IntfId const & k );
  Koi::Ptr< SwitchIntfConfig > switchIntfConfigDel( SwitchIntfConfigIterator const & i );
  void switchIntfConfigDelAll();
  void switchIntfConfigNotify( Wirex::IntfId const & k );

  class KoiVlanConfig;
  /// the VLANs
  Koi::Ptr< VlanConfig > vlanConfig( VlanId const & k ) const;
  Koi::HashMap< KoiVlanConfig, VlanId, Koi::Owned< VlanConfig > > const & vlanConfig() const {
    return vlanConfig_;
  }
  using VlanConfigIterator = Koi::HashMap< KoiVlanConfig, VlanId,
      Koi::Owned< VlanConfig > >::Iterator;
  VlanConfigIterator vlanConfigIterator();
  /// The one of that key, made when there is none.
  Koi::Ptr< VlanConfig > vlanConfigIs( VlanId const & k, bool internal );
  Koi::Ptr< VlanConfig > vlanConfigDel( VlanId const & k );
  Koi::Ptr< VlanConfig > vlanConfigDel( VlanConfigIterator const & i );
  void vlanConfigDelAll();
  void vlanConfigNotify( VlanId const & k );

  class KoiFdbConfig;
  /// what is configured of filtering databases
  Koi::Ptr< FdbConfig > fdbConfig( Fid const & k ) const;
  Koi::HashMap< KoiFdbConfig, Fid, Koi::Owned< FdbConfig > > const & fdbConfig() const {
    return fdbConfig_;
  }
  using FdbConfigIterator = Koi::HashMap< KoiFdbConfig, Fid, Koi::Owned< FdbConfig > >::Iterator;
  FdbConfigIterator fdbConfigIterator();
  /// The one of that key, made when there is none.
  Koi::Ptr< FdbConfig > fdbConfigIs( Fid const & k );
  Koi::Ptr< FdbConfig > fdbConfigDel( Fid const & k );
  Koi::Ptr< FdbConfig > fdbConfigDel( FdbConfigIterator const & i );
  void fdbConfigDelAll();
  void fdbConfigNotify( Fid const & k );

  class KoiVidToFidMap;
  /// where VLANs learn; one that is not in it has its own
  Fid vidToFidMap( VlanId const & k ) const;
  Koi::HashMap< KoiVidToFidMap, VlanId, Fid > const & vidToFidMap() const { return vidToFidMap_; }
  using VidToFidMapIterator = Koi::HashMap< KoiVidToFidMap, VlanId, Fid >::Iterator;
  VidToFidMapIterator vidToFidMapIterator();
  void vidToFidMapIs( VlanId const & k, Fid const & v );
  Fid vidToFidMapDel( VlanId const & k );
  Fid vidToFidMapDel( VidToFidMapIterator const & i );
  void vidToFidMapDelAll();
  void vidToFidMapNotify( VlanId const & k );

  class KoiSviMapping;
  /// by primary VLAN
  Koi::Ptr< SviMappingState > sviMapping( VlanId const & k ) const;
  Koi::HashMap< KoiSviMapping, VlanId, Koi::Owned< SviMappingState > > const & sviMapping() const {
    return sviMapping_;
  }
  using SviMappingIterator = Koi::HashMap< KoiSviMapping, VlanId,
      Koi::Owned< SviMappingState > >::Iterator;
  SviMappingIterator sviMappingIterator();
  /// The one of that key, made when there is none.
  Koi::Ptr< SviMappingState > sviMappingIs( VlanId const & k );
  Koi::Ptr< SviMappingState > sviMappingDel( VlanId const & k );
  Koi::Ptr< SviMappingState > sviMappingDel( SviMappingIterator const & i );
  void sviMappingDelAll();
  void sviMappingNotify( VlanId const & k );

  class KoiIeeeReservedForwarding;
  /// reserved group addresses: forwarded or not
  bool ieeeReservedForwarding( Wirex::EthAddr const & k ) const;
  Koi::HashMap< KoiIeeeReservedForwarding, Wirex::EthAddr,
      bool > const & ieeeReservedForwarding() const {
    return ieeeReservedForwarding_;
  }
  using IeeeReservedForwardingIterator = Koi::HashMap< KoiIeeeReservedForwarding, Wirex::EthAddr,
      bool >::Iterator;
  IeeeReservedForwardingIterator ieeeReservedForwardingIterator();
  void ieeeReservedForwardingIs( Wirex::EthAddr const & k, bool v );
  bool ieeeReservedForwardingDel( Wirex::EthAddr const & k );
  bool ieeeReservedForwardingDel( IeeeReservedForwardingIterator const & i );
  void ieeeReservedForwardingDelAll();
  void ieeeReservedForwardingNotify( Wirex::EthAddr const & k );

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< Config > {
   public:
    virtual void onVlanConfigSourceDetail() {}
    virtual void onVlanConfigSourceDetailKoiImmediate() {
      koiPass( koiOnVlanConfigSourceDetail ); onVlanConfigSourceDetail();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnVlanConfigSourceDetail{
      koiFirst + 0, &NotifieeConst::onVlanConfigSourceDetail,
          &NotifieeConst::onVlanConfigSourceDetailKoiImmediate };

    virtual void onBridgeMacAddr() {}
    virtual void onBridgeMacAddrKoiImmediate() { koiPass( koiOnBridgeMacAddr ); onBridgeMacAddr(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnBridgeMacAddr{
      koiFirst + 1, &NotifieeConst::onBridgeMacAddr, &NotifieeConst::onBridgeMacAddrKoiImmediate };

    virtual void onHostAgingTime() {}
    virtual void onHostAgingTimeKoiImmediate() { koiPass( koiOnHostAgingTime ); onHostAgingTime(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnHostAgingTime{
      koiFirst + 2, &NotifieeConst::onHostAgingTime, &NotifieeConst::onHostAgingTimeKoiImmediate };

    virtual void onPausePassThrough() {}
    virtual void onPausePassThroughKoiImmediate() {
      koiPass( koiOnPausePassThrough ); onPausePassThrough();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnPausePassThrough{
      koiFirst + 3, &NotifieeConst::onPausePassThrough,
          &NotifieeConst::onPausePassThroughKoiImmediate };

    virtual void onInternalVlanAllocationPolicy() {}
    virtual void onInternalVlanAllocationPolicyKoiImmediate() {
      koiPass( koiOnInternalVlanAllocationPolicy ); onInternalVlanAllocationPolicy();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnInternalVlanAllocationPolicy{
      koiFirst + 4, &NotifieeConst::onInternalVlanAllocationPolicy,
          &NotifieeConst::onInternalVlanAllocationPolicyKoiImmediate };

    virtual void onInternalVlanRange() {}
    virtual void onInternalVlanRangeKoiImmediate() {
      koiPass( koiOnInternalVlanRange ); onInternalVlanRange();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnInternalVlanRange{
      koiFirst + 5, &NotifieeConst::onInternalVlanRange,
          &NotifieeConst::onInternalVlanRangeKoiImmediate };

    virtual void onForwardingMode() {}
    virtual void onForwardingModeKoiImmediate() {
      koiPass( koiOnForwardingMode ); onForwardingMode();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnForwardingMode{
      koiFirst + 6, &NotifieeConst::onForwardingMode,
          &NotifieeConst::onForwardingModeKoiImmediate };

    virtual void onDefaultSwitchportMode() {}
    virtual void onDefaultSwitchportModeKoiImmediate() {
      koiPass( koiOnDefaultSwitchportMode ); onDefaultSwitchportMode();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnDefaultSwitchportMode{
      koiFirst + 7, &NotifieeConst::onDefaultSwitchportMode,
          &NotifieeConst::onDefaultSwitchportModeKoiImmediate };

    virtual void onSwitchIntfConfig() {}
    virtual void onSwitchIntfConfig( Wirex::IntfId const & ) {}
    virtual void onSwitchIntfConfigKoiImmediate( Wirex::IntfId const & k ) {
      koiPass( koiOnSwitchIntfConfig ); onSwitchIntfConfig( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Wirex::IntfId const & > koiOnSwitchIntfConfig{
      koiFirst + 8, &NotifieeConst::onSwitchIntfConfig,
          &NotifieeConst::onSwitchIntfConfigKoiImmediate };

    virtual void onVlanConfig() {}
    virtual void onVlanConfig( VlanId const & ) {}
    virtual void onVlanConfigKoiImmediate( VlanId const & k ) {
      koiPass( koiOnVlanConfig ); onVlanConfig( k );
    }
    static constexpr Koi::Callback< NotifieeConst, VlanId const & > koiOnVlanConfig{
      koiFirst + 9, &NotifieeConst::onVlanConfig, &NotifieeConst::onVlanConfigKoiImmediate };

    virtual void onFdbConfig() {}
    virtual void onFdbConfig( Fid const & ) {}
    virtual void onFdbConfigKoiImmediate( Fid const & k ) {
      koiPass( koiOnFdbConfig ); onFdbConfig( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Fid const & > koiOnFdbConfig{
      koiFirst + 10, &NotifieeConst::onFdbConfig, &NotifieeConst::onFdbConfigKoiImmediate };

    virtual void onVidToFidMap() {}
    virtual void onVidToFidMap( VlanId const & ) {}
    virtual void onVidToFidMapKoiImmediate( VlanId const & k ) {
      koiPass( koiOnVidToFidMap ); onVidToFidMap( k );
    }
    static constexpr Koi::Callback< NotifieeConst, VlanId const & > koiOnVidToFidMap{
      koiFirst + 11, &NotifieeConst::onVidToFidMap, &NotifieeConst::onVidToFidMapKoiImmediate };

    virtual void onSviMapping() {}
    virtual void onSviMapping( VlanId const & ) {}
    virtual void onSviMappingKoiImmediate( VlanId const & k ) {
      koiPass( koiOnSviMapping ); onSviMapping( k );
    }
    static constexpr Koi::Callback< NotifieeConst, VlanId const & > koiOnSviMapping{
      koiFirst + 12, &NotifieeConst::onSviMapping, &NotifieeConst::onSviMappingKoiImmediate };

    virtual void onIeeeReservedForwarding() {}
    virtual void onIeeeReservedForwarding( Wirex::EthAddr const & ) {}
    virtual void onIeeeReservedForwardingKoiImmediate( Wirex::EthAddr const & k ) {
      koiPass( koiOnIeeeReservedForwarding ); onIeeeReservedForwarding( k );
    }
    static constexpr Koi::Callback< NotifieeConst,
        Wirex::EthAddr const & > koiOnIeeeReservedForwarding{
      koiFirst + 13, &NotifieeConst::onIeeeReservedForwarding,
          &NotifieeConst::onIeeeReservedForwardingKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, Config >;

  static constexpr char koiName[] = "Bridging::Config";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &Config::name )
    };
  }
  template< class Self = Config >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "vlanConfigSourceDetail", &Self::vlanConfigSourceDetail_,
                      &Self::vlanConfigSourceDetailIs ),
      Koi::attribute( "bridgeMacAddr", &Self::bridgeMacAddr_, &Self::bridgeMacAddrIs ),
      Koi::attribute( "hostAgingTime", &Self::hostAgingTime_, &Self::hostAgingTimeIs ),
      Koi::attribute( "pausePassThrough", &Self::pausePassThrough_, &Self::pausePassThroughIs ),
      Koi::attribute( "internalVlanAllocationPolicy", &Self::internalVlanAllocationPolicy_,
                      &Self::internalVlanAllocationPolicyIs ),
      Koi::attribute( "internalVlanRange", &Self::internalVlanRange_, &Self::internalVlanRangeIs ),
      Koi::attribute( "forwardingMode", &Self::forwardingMode_, &Self::forwardingModeIs ),
      Koi::attribute( "defaultSwitchportMode", &Self::defaultSwitchportMode_,
                      &Self::defaultSwitchportModeIs ),
      Koi::attribute( "switchIntfConfig", &Self::switchIntfConfig_, &Self::switchIntfConfigIs,
                      &Self::switchIntfConfigDel ),
      Koi::attribute( "vlanConfig", &Self::vlanConfig_, &Self::vlanConfigIs, &Self::vlanConfigDel ),
      Koi::attribute( "fdbConfig", &Self::fdbConfig_, &Self::fdbConfigIs, &Self::fdbConfigDel ),
      Koi::attribute( "vidToFidMap", &Self::vidToFidMap_, &Self::vidToFidMapIs,
                      &Self::vidToFidMapDel ),
      Koi::attribute( "sviMapping", &Self::sviMapping_, &Self::sviMappingIs, &Self::sviMappingDel ),
      Koi::attribute( "ieeeReservedForwarding", &Self::ieeeReservedForwarding_,
                      &Self::ieeeReservedForwardingIs, &Self::ieeeReservedForwardingDel )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 14;
  static Koi::KoiType const _koiType;

 private:
  Koi::String8 vlanConfigSourceDetail_{};
  Wirex::EthAddr bridgeMacAddr_{};
  Koi::Seconds hostAgingTime_ = 300;
  bool pausePassThrough_{};
  InternalVlanAllocationPolicy internalVlanAllocationPolicy_{};
  InternalVlanRange internalVlanRange_ = InternalVlanRange( VlanId( 1006 ), VlanId( 4094 ) );
  SwitchForwardingMode forwardingMode_{};
  SwitchportMode defaultSwitchportMode_{};
  Koi::HashMap< KoiSwitchIntfConfig, Wirex::IntfId,
      Koi::Owned< SwitchIntfConfig > > switchIntfConfig_;
  Koi::HashMap< KoiVlanConfig, VlanId, Koi::Owned< VlanConfig > > vlanConfig_;
  Koi::HashMap< KoiFdbConfig, Fid, Koi::Owned< FdbConfig > > fdbConfig_;
  Koi::HashMap< KoiVidToFidMap, VlanId, Fid > vidToFidMap_;
  Koi::HashMap< KoiSviMapping, VlanId, Koi::Owned< SviMappingState > > sviMapping_;
  Koi::HashMap< KoiIeeeReservedForwarding, Wirex::EthAddr, bool > ieeeReservedForwarding_;
};

/// A new Config without a parent.
KOI_PUBLIC Koi::Ptr< Config > configFactory( Koi::Name const & name );

/// What the bridge has learned. The bridging agent writes it; anybody may observe.
class KOI_PUBLIC Status : public Koi::EntityOf< Status > {
 public:
  explicit Status( Koi::Name const & name );

  class KoiFdbStatus;
  /// the filtering databases
  Koi::Ptr< FdbStatus > fdbStatus( Fid const & k ) const;
  Koi::RbTreeMap< KoiFdbStatus, Fid, Koi::Owned< FdbStatus > > const & fdbStatus() const {
    return fdbStatus_;
  }
  using FdbStatusIterator = Koi::RbTreeMap< KoiFdbStatus, Fid, Koi::Owned< FdbStatus > >::Iterator;
  FdbStatusIterator fdbStatusIterator();
  /// The one of that key, made when there is none.
  Koi::Ptr< FdbStatus > fdbStatusIs( Fid const & k );
  Koi::Ptr< FdbStatus > fdbStatusDel( Fid const & k );
  Koi::Ptr< FdbStatus > fdbStatusDel( FdbStatusIterator const & i );
  void fdbStatusDelAll();
  void fdbStatusNotify( Fid const & k );

  /// the same as a table, this process's own unless it says otherwise
  Quill::Bridging::QuillFdbStatus quillFdbStatus( HostKey const & k ) const;
  KoiQuill::KoiQuillMap< HostKey, Quill::Bridging::QuillFdbStatus > const & quillFdbStatus() const {
    return quillFdbStatus_;
  }
  using QuillFdbStatusIterator = KoiQuill::KoiQuillMap< HostKey,
      Quill::Bridging::QuillFdbStatus >::Iterator;
  QuillFdbStatusIterator quillFdbStatusIterator();
  /// In the process that writes the table: an entry that is there already is no change. Raises
  /// Quill::TableFullException.
  void quillFdbStatusIs( Quill::Bridging::QuillFdbStatus const & v );
  Quill::Bridging::QuillFdbStatus quillFdbStatusDel( HostKey const & k );
  Quill::Bridging::QuillFdbStatus quillFdbStatusDel( QuillFdbStatusIterator const & i );
  void quillFdbStatusDelAll();
  /// Opens the value's entry for writing in place: until it is completed readers have it as it was.
  void newQuillFdbStatus( Quill::Bridging::QuillFdbStatus const & v );
  void quillFdbStatusCommit( Quill::Bridging::QuillFdbStatus const & v );
  void quillFdbStatusNotify( HostKey const & k );
  void quillFdbStatusNotifyCollection();
  /// How this process takes part in the table.
  KoiQuill::KoiQuillMapBase & quillFdbStatusControl() { return quillFdbStatus_; }

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< Status > {
   public:
    virtual void onFdbStatus() {}
    virtual void onFdbStatus( Fid const & ) {}
    virtual void onFdbStatusKoiImmediate( Fid const & k ) {
      koiPass( koiOnFdbStatus ); onFdbStatus( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Fid const & > koiOnFdbStatus{
      koiFirst + 0, &NotifieeConst::onFdbStatus, &NotifieeConst::onFdbStatusKoiImmediate };

    /// The table is there, and what is in it can be looked up.
    virtual void onQuillFdbStatus() {}
    virtual void onQuillFdbStatus( HostKey const & ) {}
    virtual void onQuillFdbStatusKoiImmediate() {
      koiPass( koiOnQuillFdbStatusControl ); onQuillFdbStatus();
    }
    virtual void onQuillFdbStatusKoiImmediate( HostKey const & k ) {
      koiPass( koiOnQuillFdbStatus ); onQuillFdbStatus( k );
    }
    static constexpr Koi::Callback< NotifieeConst, HostKey const & > koiOnQuillFdbStatus{
      koiFirst + 1, &NotifieeConst::onQuillFdbStatus,
          &NotifieeConst::onQuillFdbStatusKoiImmediate };
    static constexpr Koi::Callback< NotifieeConst > koiOnQuillFdbStatusControl{
      koiFirst + 2, &NotifieeConst::onQuillFdbStatus,
          &NotifieeConst::onQuillFdbStatusKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, Status >;

  static constexpr char koiName[] = "Bridging::Status";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &Status::name )
    };
  }
  template< class Self = Status >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "fdbStatus", &Self::fdbStatus_, &Self::fdbStatusIs, &Self::fdbStatusDel ),
      Koi::table( "quillFdbStatus", &Self::quillFdbStatus_ ),
      Koi::tableControl( "quillFdbStatusControl", &Self::quillFdbStatus_ )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 3;
  static Koi::KoiType const _koiType;

 private:
  Koi::RbTreeMap< KoiFdbStatus, Fid, Koi::Owned< FdbStatus > > fdbStatus_;
  KoiQuill::KoiQuillMap< HostKey, Quill::Bridging::QuillFdbStatus > quillFdbStatus_{
      *this, "quillFdbStatus", NotifieeConst::koiOnQuillFdbStatus,
      NotifieeConst::koiOnQuillFdbStatusControl };
};

/// A new Status without a parent.
KOI_PUBLIC Koi::Ptr< Status > statusFactory( Koi::Name const & name );

/// The interfaces that are in tap-aggregation mode.
class KOI_PUBLIC TapAggModeIntfs : public Koi::EntityOf< TapAggModeIntfs > {
 public:
  explicit TapAggModeIntfs( Koi::Name const & name );

  class KoiEntry;
  /// the interfaces, an entry each
  bool entry( Wirex::IntfId const & k ) const;
  Koi::HashMap< KoiEntry, Wirex::IntfId, bool > const & entry() const { return entry_; }
  using EntryIterator = Koi::HashMap< KoiEntry, Wirex::IntfId, bool >::Iterator;
  EntryIterator entryIterator();
  void entryIs( Wirex::IntfId const & k, bool v );
  bool entryDel( Wirex::IntfId const & k );
  bool entryDel( EntryIterator const & i );
  void entryDelAll();
  void entryNotify( Wirex::IntfId const & k );

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< TapAggModeIntfs > {
   public:
    virtual void onEntry() {}
    virtual void onEntry( Wirex::IntfId const & ) {}
    virtual void onEntryKoiImmediate( Wirex::IntfId const & k ) {
      koiPass( koiOnEntry ); onEntry( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Wirex::IntfId const & > koiOnEntry{
      koiFirst + 0, &NotifieeConst::onEntry, &NotifieeConst::onEntryKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, TapAggModeIntfs >;

  static constexpr char koiName[] = "Bridging::TapAggModeIntfs";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &TapAggModeIntfs::name )
    };
  }
  template< class Self = TapAggModeIntfs >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "entry", &Self::entry_, &Self::entryIs, &Self::entryDel )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 1;
  static Koi::KoiType const _koiType;

 private:
  Koi::HashMap< KoiEntry, Wirex::IntfId, bool > entry_;
};

/// A new TapAggModeIntfs without a parent.
KOI_PUBLIC Koi::Ptr< TapAggModeIntfs > tapAggModeIntfsFactory( Koi::Name const & name );

/// The reserved group addresses that are forwarded together, in the order in which they were added.
class KOI_PUBLIC IeeeReservedMacForwardGroup : public Koi::EntityOf< IeeeReservedMacForwardGroup > {
 public:
  explicit IeeeReservedMacForwardGroup( Koi::Name const & name );

  class KoiGroupAddr;
  /// the addresses; at most 256
  Wirex::EthAddr groupAddr( Koi::U8 k ) const;
  Koi::LinkQueue< KoiGroupAddr, Koi::U8, Wirex::EthAddr > const & groupAddr() const {
    return groupAddr_;
  }
  using GroupAddrIterator = Koi::LinkQueue< KoiGroupAddr, Koi::U8, Wirex::EthAddr >::Iterator;
  GroupAddrIterator groupAddrIterator();
  void groupAddrIs( Koi::U8 k, Wirex::EthAddr const & v );
  Koi::LinkQueueMetadata< Koi::U8 > groupAddrMetadata() const { return groupAddr_.metadata(); }
  Koi::U8 groupAddrEnq( Wirex::EthAddr const & v );
  Wirex::EthAddr groupAddrDeq();
  Wirex::EthAddr groupAddrDel( Koi::U8 k );
  Wirex::EthAddr groupAddrDel( GroupAddrIterator const & i );
  void groupAddrDelAll();
  void groupAddrNotify( Koi::U8 k );

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< IeeeReservedMacForwardGroup > {
   public:
    virtual void onGroupAddr() {}
    virtual void onGroupAddr( Koi::U8 ) {}
    virtual void onGroupAddrKoiImmediate( Koi::U8 k ) {
      koiPass( koiOnGroupAddr ); onGroupAddr( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Koi::U8 > koiOnGroupAddr{
      koiFirst + 0, &NotifieeConst::onGroupAddr, &NotifieeConst::onGroupAddrKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, IeeeReservedMacForwardGroup >;

  static constexpr char koiName[] = "Bridging::IeeeReservedMacForwardGroup";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &IeeeReservedMacForwardGroup::name )
    };
  }
  template< class Self = IeeeReservedMacForwardGroup >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "groupAddr", &Self::groupAddr_, &Self::groupAddrIs, &Self::groupAddrDel )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 1;
  static Koi::KoiType const _koiType;

 private:
  Koi::LinkQueue< KoiGroupAddr, Koi::U8, Wirex::EthAddr > groupAddr_;
};

/// A new IeeeReservedMacForwardGroup without a parent.
KOI_PUBLIC Koi::Ptr< IeeeReservedMacForwardGroup > ieeeReservedMacForwardGroupFactory(
    Koi::Name const & name );

/// What the VLANs of one switch are in hardware.
class KOI_PUBLIC VlanStatus : public Koi::EntityOf< VlanStatus > {
 public:
  explicit VlanStatus( VlanId const & vlanId );

  /// the VLAN
  VlanId vlanId() const { return _vlanId; }

  class KoiVlanPortStatus;
  /// its member ports
  VlanPortStatus vlanPortStatus( Wirex::IntfId const & k ) const;
  Koi::HashMap< KoiVlanPortStatus, Wirex::IntfId, VlanPortStatus > const & vlanPortStatus() const {
    return vlanPortStatus_;
  }
  using VlanPortStatusIterator = Koi::HashMap< KoiVlanPortStatus, Wirex::IntfId,
      VlanPortStatus >::Iterator;
  VlanPortStatusIterator vlanPortStatusIterator();
  void vlanPortStatusIs( Wirex::IntfId const & k, VlanPortStatus const & v );
  VlanPortStatus vlanPortStatusDel( Wirex::IntfId const & k );
  VlanPortStatus vlanPortStatusDel( VlanPortStatusIterator const & i );
  void vlanPortStatusDelAll();
  void vlanPortStatusNotify( Wirex::IntfId const & k );

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< VlanStatus > {
   public:
    virtual void onVlanPortStatus() {}
    virtual void onVlanPortStatus( Wirex::IntfId const & ) {}
    virtual void onVlanPortStatusKoiImmediate( Wirex::IntfId const & k ) {
      koiPass( koiOnVlanPortStatus ); onVlanPortStatus( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Wirex::IntfId const & > koiOnVlanPortStatus{
      koiFirst + 1, &NotifieeConst::onVlanPortStatus,
          &NotifieeConst::onVlanPortStatusKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, VlanStatus >;

  static constexpr char koiName[] = "Bridging::VlanStatus";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_vlanId", &VlanStatus::vlanId )
    };
  }
  template< class Self = VlanStatus >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "vlanId", &Self::_vlanId ),
      Koi::attribute( "vlanPortStatus", &Self::vlanPortStatus_, &Self::vlanPortStatusIs,
                      &Self::vlanPortStatusDel )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 2;
  static Koi::KoiType const _koiType;

 private:
  VlanId const _vlanId;
  Koi::HashMap< KoiVlanPortStatus, Wirex::IntfId, VlanPortStatus > vlanPortStatus_;
};

/// A new VlanStatus without a parent.
KOI_PUBLIC Koi::Ptr< VlanStatus > vlanStatusFactory( VlanId const & vlanId );

/// What the VLANs are in hardware.
class KOI_PUBLIC VlanStatusDir : public Koi::EntityOf< VlanStatusDir > {
 public:
  explicit VlanStatusDir( Koi::Name const & name );

  class KoiVlanStatus;
  /// the VLANs
  Koi::Ptr< VlanStatus > vlanStatus( VlanId const & k ) const;
  Koi::HashMap< KoiVlanStatus, VlanId, Koi::Owned< VlanStatus > > const & vlanStatus() const {
    return vlanStatus_;
  }
  using VlanStatusIterator = Koi::HashMap< KoiVlanStatus, VlanId,
      Koi::Owned< VlanStatus > >::Iterator;
  VlanStatusIterator vlanStatusIterator();
  /// The one of that key, made when there is none.
  Koi::Ptr< VlanStatus > vlanStatusIs( VlanId const & k );
  Koi::Ptr< VlanStatus > vlanStatusDel( VlanId const & k );
  Koi::Ptr< VlanStatus > vlanStatusDel( VlanStatusIterator const & i );
  void vlanStatusDelAll();
  void vlanStatusNotify( VlanId const & k );

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< VlanStatusDir > {
   public:
    virtual void onVlanStatus() {}
    virtual void onVlanStatus( VlanId const & ) {}
    virtual void onVlanStatusKoiImmediate( VlanId const & k ) {
      koiPass( koiOnVlanStatus ); onVlanStatus( k );
    }
    static constexpr Koi::Callback< NotifieeConst, VlanId const & > koiOnVlanStatus{
      koiFirst + 0, &NotifieeConst::onVlanStatus, &NotifieeConst::onVlanStatusKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, VlanStatusDir >;

  static constexpr char koiName[] = "Bridging::VlanStatusDir";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &VlanStatusDir::name )
    };
  }
  template< class Self = VlanStatusDir >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "vlanStatus", &Self::vlanStatus_, &Self::vlanStatusIs, &Self::vlanStatusDel )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 1;
  static Koi::KoiType const _koiType;

 private:
  Koi::HashMap< KoiVlanStatus, VlanId, Koi::Owned< VlanStatus > > vlanStatus_;
};

/// A new VlanStatusDir without a parent.
KOI_PUBLIC Koi::Ptr< VlanStatusDir > vlanStatusDirFactory( Koi::Name const & name );

/// A translation of the native VLAN.
class KOI_PUBLIC NativeVlanXlateMapping : public Koi::EntityOf< NativeVlanXlateMapping > {
 public:
  explicit NativeVlanXlateMapping( Koi::Name const & name );

  /// the native VLAN
  VlanIdOrNone nativeVlanId() const { return nativeVlanId_; }
  void nativeVlanIdIs( VlanIdOrNone const & v ) {
    koiIs( nativeVlanId_, v, NotifieeConst::koiOnNativeVlanId );
  }

  /// what it becomes
  VlanIdOrNone mappedVlanId() const { return mappedVlanId_; }
  void mappedVlanIdIs( VlanIdOrNone const & v ) {
    koiIs( mappedVlanId_, v, NotifieeConst::koiOnMappedVlanId );
  }

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< NativeVlanXlateMapping > {
   public:
    virtual void onNativeVlanId() {}
    virtual void onNativeVlanIdKoiImmediate() { koiPass( koiOnNativeVlanId ); onNativeVlanId(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnNativeVlanId{
      koiFirst + 0, &NotifieeConst::onNativeVlanId, &NotifieeConst::onNativeVlanIdKoiImmediate };

    virtual void onMappedVlanId() {}
    virtual void onMappedVlanIdKoiImmediate() { koiPass( koiOnMappedVlanId ); onMappedVlanId(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnMappedVlanId{
      koiFirst + 1, &NotifieeConst::onMappedVlanId, &NotifieeConst::onMappedVlanIdKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, NativeVlanXlateMapping >;

  static constexpr char koiName[] = "Bridging::NativeVlanXlateMapping";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &NativeVlanXlateMapping::name )
    };
  }
  template< class Self = NativeVlanXlateMapping >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "nativeVlanId", &Self::nativeVlanId_, &Self::nativeVlanIdIs ),
      Koi::attribute( "mappedVlanId", &Self::mappedVlanId_, &Self::mappedVlanIdIs )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 2;
  static Koi::KoiType const _koiType;

 private:
  VlanIdOrNone nativeVlanId_{};
  VlanIdOrNone mappedVlanId_{};
};

/// A new NativeVlanXlateMapping without a parent.
KOI_PUBLIC Koi::Ptr< NativeVlanXlateMapping > nativeVlanXlateMappingFactory(
    Koi::Name const & name );

/// The VLAN translations that one interface has in hardware.
class KOI_PUBLIC VlanXlateStatus : public Koi::EntityOf< VlanXlateStatus > {
 public:
  explicit VlanXlateStatus( Wirex::IntfId const & intfId );

  /// the interface
  Wirex::IntfId intfId() const { return _intfId; }

  /// ingress translation of the native VLAN
  Koi::Ptr< NativeVlanXlateMapping > hwIngressNativeVlanXlate() const {
    return hwIngressNativeVlanXlate_.ptr();
  }
  /// The one that is there, or a new one.
  Koi::Ptr< NativeVlanXlateMapping > hwIngressNativeVlanXlateIs( Koi::Name const & name );
  Koi::Ptr< NativeVlanXlateMapping > hwIngressNativeVlanXlateDel();

  /// egress translation of the native VLAN
  Koi::Ptr< NativeVlanXlateMapping > hwEgressNativeVlanXlate() const {
    return hwEgressNativeVlanXlate_.ptr();
  }
  /// The one that is there, or a new one.
  Koi::Ptr< NativeVlanXlateMapping > hwEgressNativeVlanXlateIs( Koi::Name const & name );
  Koi::Ptr< NativeVlanXlateMapping > hwEgressNativeVlanXlateDel();

  class KoiHwIngressVlanXlate;
  /// ingress translations
  VlanXlateMapping hwIngressVlanXlate( VlanXlateKey const & k ) const;
  Koi::HashMap< KoiHwIngressVlanXlate, VlanXlateKey,
      VlanXlateMapping > const & hwIngressVlanXlate() const {
    return hwIngressVlanXlate_;
  }
  using HwIngressVlanXlateIterator = Koi::HashMap< KoiHwIngressVlanXlate, VlanXlateKey,
      VlanXlateMapping >::Iterator;
  HwIngressVlanXlateIterator hwIngressVlanXlateIterator();
  void hwIngressVlanXlateIs( VlanXlateKey const & k, VlanXlateMapping const & v );
  VlanXlateMapping hwIngressVlanXlateDel( VlanXlateKey const & k );
  VlanXlateMapping hwIngressVlanXlateDel( HwIngressVlanXlateIterator const & i );
  void hwIngressVlanXlateDelAll();
  void hwIngressVlanXlateNotify( VlanXlateKey const & k );

  class KoiHwEgressVlanXlate;
  /// egress translations
  VlanXlateMapping hwEgressVlanXlate( VlanXlateKey const & k ) const;
  Koi::HashMap< KoiHwEgressVlanXlate, VlanXlateKey,
      VlanXlateMapping > const & hwEgressVlanXlate() const {
    return hwEgressVlanXlate_;
  }
  using HwEgressVlanXlateIterator = Koi::HashMap< KoiHwEgressVlanXlate, VlanXlateKey,
      VlanXlateMapping >::Iterator;
  HwEgressVlanXlateIterator hwEgressVlanXlateIterator();
  void hwEgressVlanXlateIs( VlanXlateKey const & k, VlanXlateMapping const & v );
  VlanXlateMapping hwEgressVlanXlateDel( VlanXlateKey const & k );
  VlanXlateMapping hwEgressVlanXlateDel( HwEgressVlanXlateIterator const & i );
  void hwEgressVlanXlateDelAll();
  void hwEgressVlanXlateNotify( VlanXlateKey const & k );

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< VlanXlateStatus > {
   public:
    virtual void onHwIngressNativeVlanXlate() {}
    virtual void onHwIngressNativeVlanXlateKoiImmediate() {
      koiPass( koiOnHwIngressNativeVlanXlate ); onHwIngressNativeVlanXlate();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnHwIngressNativeVlanXlate{
      koiFirst + 1, &NotifieeConst::onHwIngressNativeVlanXlate,
          &NotifieeConst::onHwIngressNativeVlanXlateKoiImmediate };

    virtual void onHwEgressNativeVlanXlate() {}
    virtual void onHwEgressNativeVlanXlateKoiImmediate() {
      koiPass( koiOnHwEgressNativeVlanXlate ); onHwEgressNativeVlanXlate();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnHwEgressNativeVlanXlate{
      koiFirst + 2, &NotifieeConst::onHwEgressNativeVlanXlate,
          &NotifieeConst::onHwEgressNativeVlanXlateKoiImmediate };

    virtual void onHwIngressVlanXlate() {}
    virtual void onHwIngressVlanXlate( VlanXlateKey const & ) {}
    virtual void onHwIngressVlanXlateKoiImmediate( VlanXlateKey const & k ) {
      koiPass( koiOnHwIngressVlanXlate ); onHwIngressVlanXlate( k );
    }
    static constexpr Koi::Callback< NotifieeConst, VlanXlateKey const & > koiOnHwIngressVlanXlate{
      koiFirst + 3, &NotifieeConst::onHwIngressVlanXlate,
          &NotifieeConst::onHwIngressVlanXlateKoiImmediate };

    virtual void onHwEgressVlanXlate() {}
    virtual void onHwEgressVlanXlate( VlanXlateKey const & ) {}
    virtual void onHwEgressVlanXlateKoiImmediate( VlanXlateKey const & k ) {
      koiPass( koiOnHwEgressVlanXlate ); onHwEgressVlanXlate( k );
    }
    static constexpr Koi::Callback< NotifieeConst, VlanXlateKey const & > koiOnHwEgressVlanXlate{
      koiFirst + 4, &NotifieeConst::onHwEgressVlanXlate,
          &NotifieeConst::onHwEgressVlanXlateKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, VlanXlateStatus >;

  static constexpr char koiName[] = "Bridging::VlanXlateStatus";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_intfId", &VlanXlateStatus::intfId )
    };
  }
  template< class Self = VlanXlateStatus >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "intfId", &Self::_intfId ),
      Koi::attribute( "hwIngressNativeVlanXlate", &Self::hwIngressNativeVlanXlate_,
                      &Self::hwIngressNativeVlanXlateIs, &Self::hwIngressNativeVlanXlateDel ),
      Koi::attribute( "hwEgressNativeVlanXlate", &Self::hwEgressNativeVlanXlate_,
                      &Self::hwEgressNativeVlanXlateIs, &Self::hwEgressNativeVlanXlateDel ),
      Koi::attribute( "hwIngressVlanXlate", &Self::hwIngressVlanXlate_, &Self::hwIngressVlanXlateIs,
                      &Self::hwIngressVlanXlateDel ),
      Koi::attribute( "hwEgressVlanXlate", &Self::hwEgressVlanXlate_, &Self::hwEgressVlanXlateIs,
                      &Self::hwEgressVlanXlateDel )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 5;
  static Koi::KoiType const _koiType;

 private:
  Wirex::IntfId const _intfId;
  Koi::Owned< NativeVlanXlateMapping > hwIngressNativeVlanXlate_;
  Koi::Owned< NativeVlanXlateMapping > hwEgressNativeVlanXlate_;
  Koi::HashMap< KoiHwIngressVlanXlate, VlanXlateKey, VlanXlateMapping > hwIngressVlanXlate_;
  Koi::HashMap< KoiHwEgressVlanXlate, VlanXlateKey, VlanXlateMapping > hwEgressVlanXlate_;
};

/// A new VlanXlateStatus without a parent.
KOI_PUBLIC Koi::Ptr< VlanXlateStatus > vlanXlateStatusFactory( Wirex::IntfId const & intfId );

/// The VLAN translations in hardware.
class KOI_PUBLIC VlanXlateStatusDir : public Koi::EntityOf< VlanXlateStatusDir > {
 public:
  explicit VlanXlateStatusDir( Koi::Name const & name );

  class KoiVlanXlateStatus;
  /// by interface
  Koi::Ptr< VlanXlateStatus > vlanXlateStatus( Wirex::IntfId const & k ) const;
  Koi::HashMap< KoiVlanXlateStatus, Wirex::IntfId,
      Koi::Owned< VlanXlateStatus > > const & vlanXlateStatus() const {
    return vlanXlateStatus_;
  }
  using VlanXlateStatusIterator = Koi::HashMap< KoiVlanXlateStatus, Wirex::IntfId,
      Koi::Owned< VlanXlateStatus > >::Iterator;
  VlanXlateStatusIterator vlanXlateStatusIterator();
  /// The one of that key, made when there is none.
  Koi::Ptr< VlanXlateStatus > vlanXlateStatusIs( Wirex::IntfId const & k );
  Koi::Ptr< VlanXlateStatus > vlanXlateStatusDel( Wirex::IntfId const & k );
  Koi::Ptr< VlanXlateStatus > vlanXlateStatusDel( VlanXlateStatusIterator const & i );
  void vlanXlateStatusDelAll();
  void vlanXlateStatusNotify( Wirex::IntfId const & k );

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< VlanXlateStatusDir > {
   public:
    virtual void onVlanXlateStatus() {}
    virtual void onVlanXlateStatus( Wirex::IntfId const & ) {}
    virtual void onVlanXlateStatusKoiImmediate( Wirex::IntfId const & k ) {
      koiPass( koiOnVlanXlateStatus ); onVlanXlateStatus( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Wirex::IntfId const & > koiOnVlanXlateStatus{
      koiFirst + 0, &NotifieeConst::onVlanXlateStatus,
          &NotifieeConst::onVlanXlateStatusKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, VlanXlateStatusDir >;

  static constexpr char koiName[] = "Bridging::VlanXlateStatusDir";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &VlanXlateStatusDir::name )
    };
  }
  template< class Self = VlanXlateStatusDir >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "vlanXlateStatus", &Self::vlanXlateStatus_, &Self::vlanXlateStatusIs,
                      &Self::vlanXlateStatusDel )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 1;
  static Koi::KoiType const _koiType;

 private:
  Koi::HashMap< KoiVlanXlateStatus, Wirex::IntfId, Koi::Owned< VlanXlateStatus > > vlanXlateStatus_;
};

/// A new VlanXlateStatusDir without a parent.
KOI_PUBLIC Koi::Ptr< VlanXlateStatusDir > vlanXlateStatusDirFactory( Koi::Name const & name );

/// The tag formats that one interface drops in hardware.
class KOI_PUBLIC IntfVlanTagFormatDropStatus : public Koi::EntityOf< IntfVlanTagFormatDropStatus > {
 public:
  explicit IntfVlanTagFormatDropStatus( Wirex::IntfId const & intfId );

  /// the interface
  Wirex::IntfId intfId() const { return _intfId; }

  class KoiVlanTagFormatDrop;
  /// true where frames of that format are dropped
  bool vlanTagFormatDrop( VlanTagFormat k ) const;
  Koi::HashMap< KoiVlanTagFormatDrop, VlanTagFormat, bool > const & vlanTagFormatDrop() const {
    return vlanTagFormatDrop_;
  }
  using VlanTagFormatDropIterator = Koi::HashMap< KoiVlanTagFormatDrop, VlanTagFormat,
      bool >::Iterator;
  VlanTagFormatDropIterator vlanTagFormatDropIterator();
  void vlanTagFormatDropIs( VlanTagFormat k, bool v );
  bool vlanTagFormatDropDel( VlanTagFormat k );
  bool vlanTagFormatDropDel( VlanTagFormatDropIterator const & i );
  void vlanTagFormatDropDelAll();
  void vlanTagFormatDropNotify( VlanTagFormat k );

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< IntfVlanTagFormatDropStatus > {
   public:
    virtual void onVlanTagFormatDrop() {}
    virtual void onVlanTagFormatDrop( VlanTagFormat ) {}
    virtual void onVlanTagFormatDropKoiImmediate( VlanTagFormat k ) {
      koiPass( koiOnVlanTagFormatDrop ); onVlanTagFormatDrop( k );
    }
    static constexpr Koi::Callback< NotifieeConst, VlanTagFormat > koiOnVlanTagFormatDrop{
      koiFirst + 1, &NotifieeConst::onVlanTagFormatDrop,
          &NotifieeConst::onVlanTagFormatDropKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, IntfVlanTagFormatDropStatus >;

  static constexpr char koiName[] = "Bridging::IntfVlanTagFormatDropStatus";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_intfId", &IntfVlanTagFormatDropStatus::intfId )
    };
  }
  template< class Self = IntfVlanTagFormatDropStatus >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "intfId", &Self::_intfId ),
      Koi::attribute( "vlanTagFormatDrop", &Self::vlanTagFormatDrop_, &Self::vlanTagFormatDropIs,
                      &Self::vlanTagFormatDropDel )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 2;
  static Koi::KoiType const _koiType;

 private:
  Wirex::IntfId const _intfId;
  Koi::HashMap< KoiVlanTagFormatDrop, VlanTagFormat, bool > vlanTagFormatDrop_;
};

/// A new IntfVlanTagFormatDropStatus without a parent.
KOI_PUBLIC Koi::Ptr< IntfVlanTagFormatDropStatus > intfVlanTagFormatDropStatusFactory(
    Wirex::IntfId const & intfId );

/// The tag formats that are dropped in hardware.
class KOI_PUBLIC VlanTagFormatDropStatus : public Koi::EntityOf< VlanTagFormatDropStatus > {
 public:
  explicit VlanTagFormatDropStatus( Koi::Name const & name );

  class KoiIntfVlanTagFormatDropStatus;
  /// by interface
  Koi::Ptr< IntfVlanTagFormatDropStatus > intfVlanTagFormatDropStatus(
      Wirex::IntfId const & k ) const;
  Koi::HashMap< KoiIntfVlanTagFormatDropStatus, Wirex::IntfId,
      Koi::Owned< IntfVlanTagFormatDropStatus > > const & intfVlanTagFormatDropStatus() const {
    return intfVlanTagFormatDropStatus_;
  }
  using IntfVlanTagFormatDropStatusIterator = Koi::HashMap< KoiIntfVlanTagFormatDropStatus,
      Wirex::IntfId, Koi::Owned< IntfVlanTagFormatDropStatus > >::Iterator;
  IntfVlanTagFormatDropStatusIterator intfVlanTagFormatDropStatusIterator();
  /// The one of that key, made when there is none.
  Koi::Ptr< IntfVlanTagFormatDropStatus > intfVlanTagFormatDropStatusIs( Wirex::IntfId const & k );
  Koi::Ptr< IntfVlanTagFormatDropStatus > intfVlanTagFormatDropStatusDel( Wirex::IntfId const & k );
  Koi::Ptr< IntfVlanTagFormatDropStatus > intfVlanTagFormatDropStatusDel(
      IntfVlanTagFormatDropStatusIterator const & i );
  void intfVlanTagFormatDropStatusDelAll();
  void intfVlanTagFormatDropStatusNotify( Wirex::IntfId const & k );

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< VlanTagFormatDropStatus > {
   public:
    virtual void onIntfVlanTagFormatDropStatus() {}
    virtual void onIntfVlanTagFormatDropStatus( Wirex::IntfId const & ) {}
    virtual void onIntfVlanTagFormatDropStatusKoiImmediate( Wirex::IntfId const & k ) {
      koiPass( koiOnIntfVlanTagFormatDropStatus ); onIntfVlanTagFormatDropStatus( k );
    }
    static constexpr Koi::Callback< NotifieeConst,
        Wirex::IntfId const & > koiOnIntfVlanTagFormatDropStatus{
      koiFirst + 0, &NotifieeConst::onIntfVlanTagFormatDropStatus,
          &NotifieeConst::onIntfVlanTagFormatDropStatusKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, VlanTagFormatDropStatus >;

  static constexpr char koiName[] = "Bridging::VlanTagFormatDropStatus";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &VlanTagFormatDropStatus::name )
    };
  }
  template< class Self = VlanTagFormatDropStatus >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "intfVlanTagFormatDropStatus", &Self::intfVlanTagFormatDropStatus_,
                      &Self::intfVlanTagFormatDropStatusIs, &Self::intfVlanTagFormatDropStatusDel )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 1;
  static Koi::KoiType const _koiType;

 private:
  Koi::HashMap< KoiIntfVlanTagFormatDropStatus, Wirex::IntfId,
      Koi::Owned< IntfVlanTagFormatDropStatus > > intfVlanTagFormatDropStatus_;
};

/// A new VlanTagFormatDropStatus without a parent.
KOI_PUBLIC Koi::Ptr< VlanTagFormatDropStatus > vlanTagFormatDropStatusFactory(
    Koi::Name const & name );

/// The directions in which one interface requires a VLAN translation in hardware.
class KOI_PUBLIC IntfVlanMappingRequiredStatus
    : public Koi::EntityOf< IntfVlanMappingRequiredStatus > {
 public:
  explicit IntfVlanMappingRequiredStatus( Wirex::IntfId const & intfId );

  /// the interface
  Wirex::IntfId intfId() const { return _intfId; }

  class KoiVlanMappingRequired;
  /// true where one is required
  bool vlanMappingRequired( VlanMappingDirection k ) const;
  Koi::HashMap< KoiVlanMappingRequired, VlanMappingDirection,
      bool > const & vlanMappingRequired() const {
    return vlanMappingRequired_;
  }
  using VlanMappingRequiredIterator = Koi::HashMap< KoiVlanMappingRequired, VlanMappingDirection,
      bool >::Iterator;
  VlanMappingRequiredIterator vlanMappingRequiredIterator();
  void vlanMappingRequiredIs( VlanMappingDirection k, bool v );
  bool vlanMappingRequiredDel( VlanMappingDirection k );
  bool vlanMappingRequiredDel( VlanMappingRequiredIterator const & i );
  void vlanMappingRequiredDelAll();
  void vlanMappingRequiredNotify( VlanMappingDirection k );

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< IntfVlanMappingRequiredStatus > {
   public:
    virtual void onVlanMappingRequired() {}
    virtual void onVlanMappingRequired( VlanMappingDirection ) {}
    virtual void onVlanMappingRequiredKoiImmediate( VlanMappingDirection k ) {
      koiPass( koiOnVlanMappingRequired ); onVlanMappingRequired( k );
    }
    static constexpr Koi::Callback< NotifieeConst, VlanMappingDirection > koiOnVlanMappingRequired{
      koiFirst + 1, &NotifieeConst::onVlanMappingRequired,
          &NotifieeConst::onVlanMappingRequiredKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, IntfVlanMappingRequiredStatus >;

  static constexpr char koiName[] = "Bridging::IntfVlanMappingRequiredStatus";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_intfId", &IntfVlanMappingRequiredStatus::intfId )
    };
  }
  template< class Self = IntfVlanMappingRequiredStatus >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "intfId", &Self::_intfId ),
      Koi::attribute( "vlanMappingRequired", &Self::vlanMappingRequired_,
                      &Self::vlanMappingRequiredIs, &Self::vlanMappingRequiredDel )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 2;
  static Koi::KoiType const _koiType;

 private:
  Wirex::IntfId const _intfId;
  Koi::HashMap< KoiVlanMappingRequired, VlanMappingDirection, bool > vlanMappingRequired_;
};

/// A new IntfVlanMappingRequiredStatus without a parent.
KOI_PUBLIC Koi::Ptr< IntfVlanMappingRequiredStatus > intfVlanMappingRequiredStatusFactory(
    Wirex::IntfId const & intfId );

/// The directions in which VLAN translations are required in hardware.
class KOI_PUBLIC VlanMappingRequiredStatus : public Koi::EntityOf< VlanMappingRequiredStatus > {
 public:
  explicit VlanMappingRequiredStatus( Koi::Name const & name );

  class KoiIntfVlanMappingRequiredStatus;
  /// by interface
  Koi::Ptr< IntfVlanMappingRequiredStatus > intfVlanMappingRequiredStatus(
      Wirex::IntfId const & k ) const;
  Koi::HashMap< KoiIntfVlanMappingRequiredStatus, Wirex::IntfId,
      Koi::Owned< IntfVlanMappingRequiredStatus > > const & intfVlanMappingRequiredStatus() const {
    return intfVlanMappingRequiredStatus_;
  }
  using IntfVlanMappingRequiredStatusIterator = Koi::HashMap< KoiIntfVlanMappingRequiredStatus,
      Wirex::IntfId, Koi::Owned< IntfVlanMappingRequiredStatus > >::Iterator;
  IntfVlanMappingRequiredStatusIterator intfVlanMappingRequiredStatusIterator();
  /// The one of that key, made when there is none.
  Koi::Ptr< IntfVlanMappingRequiredStatus > intfVlanMappingRequiredStatusIs(
      Wirex::IntfId const & k );
  Koi::Ptr< IntfVlanMappingRequiredStatus > intfVlanMappingRequiredStatusDel(
      Wirex::IntfId const & k );
  Koi::Ptr< IntfVlanMappingRequiredStatus > intfVlanMappingRequiredStatusDel(
      IntfVlanMappingRequiredStatusIterator const & i );
  void intfVlanMappingRequiredStatusDelAll();
  void intfVlanMappingRequiredStatusNotify( Wirex::IntfId const & k );

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< VlanMappingRequiredStatus > {
   public:
    virtual void onIntfVlanMappingRequiredStatus() {}
    virtual void onIntfVlanMappingRequiredStatus( Wirex::IntfId const & ) {}
    virtual void onIntfVlanMappingRequiredStatusKoiImmediate( Wirex::IntfId const & k ) {
      koiPass( koiOnIntfVlanMappingRequiredStatus ); onIntfVlanMappingRequiredStatus( k );
    }
    static constexpr Koi::Callback< NotifieeConst,
        Wirex::IntfId const & > koiOnIntfVlanMappingRequiredStatus{
      koiFirst + 0, &NotifieeConst::onIntfVlanMappingRequiredStatus,
          &NotifieeConst::onIntfVlanMappingRequiredStatusKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, VlanMappingRequiredStatus >;

  static constexpr char koiName[] = "Bridging::VlanMappingRequiredStatus";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &VlanMappingRequiredStatus::name )
    };
  }
  template< class Self = VlanMappingRequiredStatus >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "intfVlanMappingRequiredStatus", &Self::intfVlanMappingRequiredStatus_,
                      &Self::intfVlanMappingRequiredStatusIs,
          &Self::intfVlanMappingRequiredStatusDel )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 1;
  static Koi::KoiType const _koiType;

 private:
  Koi::HashMap< KoiIntfVlanMappingRequiredStatus, Wirex::IntfId,
      Koi::Owned< IntfVlanMappingRequiredStatus > > intfVlanMappingRequiredStatus_;
};

/// A new VlanMappingRequiredStatus without a parent.
KOI_PUBLIC Koi::Ptr< VlanMappingRequiredStatus > vlanMappingRequiredStatusFactory(
    Koi::Name const & name );

/// The tag protocol identifiers in hardware.
class KOI_PUBLIC IntfTpidStatus : public Koi::EntityOf< IntfTpidStatus > {
 public:
  explicit IntfTpidStatus( Koi::Name const & name );

  class KoiEntry;
  /// by interface
  IntfTpidStatusEntry entry( Wirex::IntfId const & k ) const;
  Koi::HashMap< KoiEntry, Wirex::IntfId, IntfTpidStatusEntry > const & entry() const {
    return entry_;
  }
  using EntryIterator = Koi::HashMap< KoiEntry, Wirex::IntfId, IntfTpidStatusEntry >::Iterator;
  EntryIterator entryIterator();
  void entryIs( Wirex::IntfId const & k, IntfTpidStatusEntry const & v );
  IntfTpidStatusEntry entryDel( Wirex::IntfId const & k );
  IntfTpidStatusEntry entryDel( EntryIterator const & i );
  void entryDelAll();
  void entryNotify( Wirex::IntfId const & k );

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< IntfTpidStatus > {
   public:
    virtual void onEntry() {}
    virtual void onEntry( Wirex::IntfId const & ) {}
    virtual void onEntryKoiImmediate( Wirex::IntfId const & k ) {
      koiPass( koiOnEntry ); onEntry( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Wirex::IntfId const & > koiOnEntry{
      koiFirst + 0, &NotifieeConst::onEntry, &NotifieeConst::onEntryKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, IntfTpidStatus >;

  static constexpr char koiName[] = "Bridging::IntfTpidStatus";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &IntfTpidStatus::name )
    };
  }
  template< class Self = IntfTpidStatus >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "entry", &Self::entry_, &Self::entryIs, &Self::entryDel )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 1;
  static Koi::KoiType const _koiType;

 private:
  Koi::HashMap< KoiEntry, Wirex::IntfId, IntfTpidStatusEntry > entry_;
};

/// A new IntfTpidStatus without a parent.
KOI_PUBLIC Koi::Ptr< IntfTpidStatus > intfTpidStatusFactory( Koi::Name const & name );

/// What the switching chip can do, and within which limits. The hardware agent writes it; the
/// defaults
/// are what holds before it has.
class KOI_PUBLIC HwCapabilities : public Koi::EntityOf< HwCapabilities > {
 public:
  explicit HwCapabilities( Koi::Name const & name );

  /// the usual largest frame, in bytes
  static constexpr Koi::U32 maxFrameSizeDefault() { return 9236; }

  /// the largest frame in tap-aggregation mode, in bytes
  static constexpr Koi::U32 maxFrameSizeTapAgg() { return 10240; }

  /// the largest frame that is forwarded, in bytes
  Koi::U32 maxFrameSize() const { return maxFrameSize_; }
  void maxFrameSizeIs( Koi::U32 v ) { koiIs( maxFrameSize_, v, NotifieeConst::koiOnMaxFrameSize ); }

  /// the same less the 22 bytes of Layer-2 encapsulation; below 22 it wraps
  Koi::U32 maxFrameSizeWithoutL2Encapsulation() const;

  /// bridging
  bool bridgingSupported() const { return bridgingSupported_; }
  void bridgingSupportedIs( bool v ) {
    koiIs( bridgingSupported_, v, NotifieeConst::koiOnBridgingSupported );
  }

  /// 802.1Q tunnels
  bool dot1qTunnelSupported() const { return dot1qTunnelSupported_; }
  void dot1qTunnelSupportedIs( bool v ) {
    koiIs( dot1qTunnelSupported_, v, NotifieeConst::koiOnDot1qTunnelSupported );
  }

  /// tags on the native VLAN
  bool taggedNativeVlanSupported() const { return taggedNativeVlanSupported_; }
  void taggedNativeVlanSupportedIs( bool v ) {
    koiIs( taggedNativeVlanSupported_, v, NotifieeConst::koiOnTaggedNativeVlanSupported );
  }

  /// spanning tree per VLAN
  bool pvstSupported() const { return pvstSupported_; }
  void pvstSupportedIs( bool v ) { koiIs( pvstSupported_, v, NotifieeConst::koiOnPvstSupported ); }

  /// backup interfaces
  bool backupInterfacesSupported() const { return backupInterfacesSupported_; }
  void backupInterfacesSupportedIs( bool v ) {
    koiIs( backupInterfacesSupported_, v, NotifieeConst::koiOnBackupInterfacesSupported );
  }

  /// static multicast groups
  bool staticMcastSupported() const { return staticMcastSupported_; }
  void staticMcastSupportedIs( bool v ) {
    koiIs( staticMcastSupported_, v, NotifieeConst::koiOnStaticMcastSupported );
  }

  /// learning switched off per port
  bool noMacLearningSupported() const { return noMacLearningSupported_; }
  void noMacLearningSupportedIs( bool v ) {
    koiIs( noMacLearningSupported_, v, NotifieeConst::koiOnNoMacLearningSupported );
  }

  /// learning switched off per VLAN
  bool vlanMacLearningSupported() const { return vlanMacLearningSupported_; }
  void vlanMacLearningSupportedIs( bool v ) {
    koiIs( vlanMacLearningSupported_, v, NotifieeConst::koiOnVlanMacLearningSupported );
  }

  /// private VLANs
  bool privateVlansSupported() const { return privateVlansSupported_; }
  void privateVlansSupportedIs( bool v ) {
    koiIs( privateVlansSupported_, v, NotifieeConst::koiOnPrivateVlansSupported );
  }

  /// VLAN translation
  bool vlanXlateSupported() const { return vlanXlateSupported_; }
  void vlanXlateSupportedIs( bool v ) {
    koiIs( vlanXlateSupported_, v, NotifieeConst::koiOnVlanXlateSupported );
  }

  /// dropping what no ingress translation matches
  bool ingressVlanMappingRequiredSupported() const { return ingressVlanMappingRequiredSupported_; }
  void ingressVlanMappingRequiredSupportedIs( bool v ) {
    koiIs( ingressVlanMappingRequiredSupported_, v,
           NotifieeConst::koiOnIngressVlanMappingRequiredSupported );
  }

  /// dropping by tag format
  bool vlanTagRequiredSupported() const { return vlanTagRequiredSupported_; }
  void vlanTagRequiredSupportedIs( bool v ) {
    koiIs( vlanTagRequiredSupported_, v, NotifieeConst::koiOnVlanTagRequiredSupported );
  }

  /// translation of two tags
  bool doubleVlanXlateSupported() const { return doubleVlanXlateSupported_; }
  void doubleVlanXlateSupportedIs( bool v ) {
    koiIs( doubleVlanXlateSupported_, v, NotifieeConst::koiOnDoubleVlanXlateSupported );
  }

  /// translation into an 802.1Q tunnel
  bool vlanXlateToDot1qTunnelSupported() const { return vlanXlateToDot1qTunnelSupported_; }
  void vlanXlateToDot1qTunnelSupportedIs( bool v ) {
    koiIs( vlanXlateToDot1qTunnelSupported_, v,
           NotifieeConst::koiOnVlanXlateToDot1qTunnelSupported );
  }

  /// tag protocol identifiers per port
  bool vlanTpidSupported() const { return vlanTpidSupported_; }
  void vlanTpidSupportedIs( bool v ) {
    koiIs( vlanTpidSupported_, v, NotifieeConst::koiOnVlanTpidSupported );
  }

  /// loop protection
  bool loopProtectSupported() const { return loopProtectSupported_; }
  void loopProtectSupportedIs( bool v ) {
    koiIs( loopProtectSupported_, v, NotifieeConst::koiOnLoopProtectSupported );
  }

  /// virtual forwarding instances
  bool vfiForwarding() const { return vfiForwarding_; }
  void vfiForwardingIs( bool v ) { koiIs( vfiForwarding_, v, NotifieeConst::koiOnVfiForwarding ); }

  /// VXLAN
  bool vxlanSupported() const { return vxlanSupported_; }
  void vxlanSupportedIs( bool v ) {
    koiIs( vxlanSupported_, v, NotifieeConst::koiOnVxlanSupported );
  }

  /// VXLAN over IPv6
  bool vxlanSupportedOverIpv6() const { return vxlanSupportedOverIpv6_; }
  void vxlanSupportedOverIpv6Is( bool v ) {
    koiIs( vxlanSupportedOverIpv6_, v, NotifieeConst::koiOnVxlanSupportedOverIpv6 );
  }

  /// routing into VXLAN
  bool vxlanRoutingSupported() const { return vxlanRoutingSupported_; }
  void vxlanRoutingSupportedIs( bool v ) {
    koiIs( vxlanRoutingSupported_, v, NotifieeConst::koiOnVxlanRoutingSupported );
  }

  /// VRFs in the overlay
  bool vxlanOverlayVrfsSupported() const { return vxlanOverlayVrfsSupported_; }
  void vxlanOverlayVrfsSupportedIs( bool v ) {
    koiIs( vxlanOverlayVrfsSupported_, v, NotifieeConst::koiOnVxlanOverlayVrfsSupported );
  }

  /// multicast groups as flood lists
  bool vxlanMcastGroupSupported() const { return vxlanMcastGroupSupported_; }
  void vxlanMcastGroupSupportedIs( bool v ) {
    koiIs( vxlanMcastGroupSupported_, v, NotifieeConst::koiOnVxlanMcastGroupSupported );
  }

  /// taking multicast out of VXLAN, but not putting it in
  bool vxlanMcastDecapOnlySupported() const { return vxlanMcastDecapOnlySupported_; }
  void vxlanMcastDecapOnlySupportedIs( bool v ) {
    koiIs( vxlanMcastDecapOnlySupported_, v, NotifieeConst::koiOnVxlanMcastDecapOnlySupported );
  }

  /// sending ready-made VXLAN frames
  bool vxlanTxRawSupported() const { return vxlanTxRawSupported_; }
  void vxlanTxRawSupportedIs( bool v ) {
    koiIs( vxlanTxRawSupported_, v, NotifieeConst::koiOnVxlanTxRawSupported );
  }

  /// counters per tunnel endpoint
  bool vxlanVtepCtrSupported() const { return vxlanVtepCtrSupported_; }
  void vxlanVtepCtrSupportedIs( bool v ) {
    koiIs( vxlanVtepCtrSupported_, v, NotifieeConst::koiOnVxlanVtepCtrSupported );
  }

  /// a client of a VXLAN controller
  bool vxlanControllerClientSupported() const { return vxlanControllerClientSupported_; }
  void vxlanControllerClientSupportedIs( bool v ) {
    koiIs( vxlanControllerClientSupported_, v, NotifieeConst::koiOnVxlanControllerClientSupported );
  }

  /// counters per VXLAN network
  bool vxlanVniCtrSupported() const { return vxlanVniCtrSupported_; }
  void vxlanVniCtrSupportedIs( bool v ) {
    koiIs( vxlanVniCtrSupported_, v, NotifieeConst::koiOnVxlanVniCtrSupported );
  }

  /// VXLAN across a hitless upgrade
  bool vxlanHitless2Supported() const { return vxlanHitless2Supported_; }
  void vxlanHitless2SupportedIs( bool v ) {
    koiIs( vxlanHitless2Supported_, v, NotifieeConst::koiOnVxlanHitless2Supported );
  }

  /// several paths in the overlay
  bool overlayEcmpSupported() const { return overlayEcmpSupported_; }
  void overlayEcmpSupportedIs( bool v ) {
    koiIs( overlayEcmpSupported_, v, NotifieeConst::koiOnOverlayEcmpSupported );
  }

  /// whether it needs VLANs for itself
  InternalVlanNeeded internalVlanNeeded() const { return internalVlanNeeded_; }
  void internalVlanNeededIs( InternalVlanNeeded v ) {
    koiIs( internalVlanNeeded_, v, NotifieeConst::koiOnInternalVlanNeeded );
  }

  /// switching the source-port filter
  bool sourceportFilterSupported() const { return sourceportFilterSupported_; }
  void sourceportFilterSupportedIs( bool v ) {
    koiIs( sourceportFilterSupported_, v, NotifieeConst::koiOnSourceportFilterSupported );
  }

  /// link aggregation
  bool lagSupported() const { return lagSupported_; }
  void lagSupportedIs( bool v ) { koiIs( lagSupported_, v, NotifieeConst::koiOnLagSupported ); }

  /// policies of load balancing
  bool lagLoadBalancePoliciesSupported() const { return lagLoadBalancePoliciesSupported_; }
  void lagLoadBalancePoliciesSupportedIs( bool v ) {
    koiIs( lagLoadBalancePoliciesSupported_, v,
           NotifieeConst::koiOnLagLoadBalancePoliciesSupported );
  }

  /// tracing of virtual machines
  bool vmTracerSupported() const { return vmTracerSupported_; }
  void vmTracerSupportedIs( bool v ) {
    koiIs( vmTracerSupported_, v, NotifieeConst::koiOnVmTracerSupported );
  }

  /// BFD between tunnel endpoints
  bool vxlanBfdSupported() const { return vxlanBfdSupported_; }
  void vxlanBfdSupportedIs( bool v ) {
    koiIs( vxlanBfdSupported_, v, NotifieeConst::koiOnVxlanBfdSupported );
  }

  /// BFD on the members of an aggregation (RFC 7130)
  bool rfc7130Supported() const { return rfc7130Supported_; }
  void rfc7130SupportedIs( bool v ) {
    koiIs( rfc7130Supported_, v, NotifieeConst::koiOnRfc7130Supported );
  }

  /// a logical router in the overlay
  bool vxlanLogicalRouterSupported() const { return vxlanLogicalRouterSupported_; }
  void vxlanLogicalRouterSupportedIs( bool v ) {
    koiIs( vxlanLogicalRouterSupported_, v, NotifieeConst::koiOnVxlanLogicalRouterSupported );
  }

  /// routing by EVPN
  bool vxlanL3EvpnSupported() const { return vxlanL3EvpnSupported_; }
  void vxlanL3EvpnSupportedIs( bool v ) {
    koiIs( vxlanL3EvpnSupported_, v, NotifieeConst::koiOnVxlanL3EvpnSupported );
  }

  /// a Layer-2 MTU
  bool l2MtuSupported() const { return l2MtuSupported_; }
  void l2MtuSupportedIs( bool v ) {
    koiIs( l2MtuSupported_, v, NotifieeConst::koiOnL2MtuSupported );
  }

  /// the largest one, in bytes
  Koi::U32 l2MtuMax() const { return l2MtuMax_; }
  void l2MtuMaxIs( Koi::U32 v ) { koiIs( l2MtuMax_, v, NotifieeConst::koiOnL2MtuMax ); }

  /// the smallest one, in bytes
  Koi::U32 l2MtuMin() const { return l2MtuMin_; }
  void l2MtuMinIs( Koi::U32 v ) { koiIs( l2MtuMin_, v, NotifieeConst::koiOnL2MtuMin ); }

  /// telling which member a frame would take
  bool lagShowOutputIntfSupported() const { return lagShowOutputIntfSupported_; }
  void lagShowOutputIntfSupportedIs( bool v ) {
    koiIs( lagShowOutputIntfSupported_, v, NotifieeConst::koiOnLagShowOutputIntfSupported );
  }

  /// passing pause frames through
  bool pausePassThroughSupported() const { return pausePassThroughSupported_; }
  void pausePassThroughSupportedIs( bool v ) {
    koiIs( pausePassThroughSupported_, v, NotifieeConst::koiOnPausePassThroughSupported );
  }

  class KoiSupportedForwardingMode;
  /// the forwarding modes, an ordered list
  SwitchForwardingMode supportedForwardingMode( Koi::U32 k ) const;
  Koi::RbTreeMap< KoiSupportedForwardingMode, Koi::U32,
      SwitchForwardingMode > const & supportedForwardingMode() const {
    return supportedForwardingMode_;
  }
  using SupportedForwardingModeIterator = Koi::RbTreeMap< KoiSupportedForwardingMode, Koi::U32,
      SwitchForwardingMode >::Iterator;
  SupportedForwardingModeIterator supportedForwardingModeIterator();
  void supportedForwardingModeIs( Koi::U32 k, SwitchForwardingMode v );
  SwitchForwardingMode supportedForwardingModeDel( Koi::U32 k );
  SwitchForwardingMode supportedForwardingModeDel( SupportedForwardingModeIterator const & i );
  void supportedForwardingModeDelAll();
  void supportedForwardingModeNotify( Koi::U32 k );

  /// packets into a VLAN interface
  bool vlanIntfInPktCountersSupported() const { return vlanIntfInPktCountersSupported_; }
  void vlanIntfInPktCountersSupportedIs( bool v ) {
    koiIs( vlanIntfInPktCountersSupported_, v, NotifieeConst::koiOnVlanIntfInPktCountersSupported );
  }

  /// packets out of it
  bool vlanIntfOutPktCountersSupported() const { return vlanIntfOutPktCountersSupported_; }
  void vlanIntfOutPktCountersSupportedIs( bool v ) {
    koiIs( vlanIntfOutPktCountersSupported_, v,
           NotifieeConst::koiOnVlanIntfOutPktCountersSupported );
  }

  /// unicast packets into it
  bool vlanIntfInUcastPktCountersSupported() const { return vlanIntfInUcastPktCountersSupported_; }
  void vlanIntfInUcastPktCountersSupportedIs( bool v ) {
    koiIs( vlanIntfInUcastPktCountersSupported_, v,
           NotifieeConst::koiOnVlanIntfInUcastPktCountersSupported );
  }

  /// unicast packets out of it
  bool vlanIntfOutUcastPktCountersSupported() const {
    return vlanIntfOutUcastPktCountersSupported_;
  }
  void vlanIntfOutUcastPktCountersSupportedIs( bool v ) {
    koiIs( vlanIntfOutUcastPktCountersSupported_, v,
           NotifieeConst::koiOnVlanIntfOutUcastPktCountersSupported );
  }

  /// multicast packets into it
  bool vlanIntfInMcastPktCountersSupported() const { return vlanIntfInMcastPktCountersSupported_; }
  void vlanIntfInMcastPktCountersSupportedIs( bool v ) {
    koiIs( vlanIntfInMcastPktCountersSupported_, v,
           NotifieeConst::koiOnVlanIntfInMcastPktCountersSupported );
  }

  /// multicast packets out of it
  bool vlanIntfOutMcastPktCountersSupported() const {
    return vlanIntfOutMcastPktCountersSupported_;
  }
  void vlanIntfOutMcastPktCountersSupportedIs( bool v ) {
    koiIs( vlanIntfOutMcastPktCountersSupported_, v,
           NotifieeConst::koiOnVlanIntfOutMcastPktCountersSupported );
  }

  /// bytes into it
  bool vlanIntfInOctetCountersSupported() const { return vlanIntfInOctetCountersSupported_; }
  void vlanIntfInOctetCountersSupportedIs( bool v ) {
    koiIs( vlanIntfInOctetCountersSupported_, v,
           NotifieeConst::koiOnVlanIntfInOctetCountersSupported );
  }

  /// bytes out of it
  bool vlanIntfOutOctetCountersSupported() const { return vlanIntfOutOctetCountersSupported_; }
  void vlanIntfOutOctetCountersSupportedIs( bool v ) {
    koiIs( vlanIntfOutOctetCountersSupported_, v,
           NotifieeConst::koiOnVlanIntfOutOctetCountersSupported );
  }

  /// unicast bytes
  bool vlanIntfUcastOctetCountersSupported() const { return vlanIntfUcastOctetCountersSupported_; }
  void vlanIntfUcastOctetCountersSupportedIs( bool v ) {
    koiIs( vlanIntfUcastOctetCountersSupported_, v,
           NotifieeConst::koiOnVlanIntfUcastOctetCountersSupported );
  }

  /// multicast bytes
  bool vlanIntfMcastOctetCountersSupported() const { return vlanIntfMcastOctetCountersSupported_; }
  void vlanIntfMcastOctetCountersSupportedIs( bool v ) {
    koiIs( vlanIntfMcastOctetCountersSupported_, v,
           NotifieeConst::koiOnVlanIntfMcastOctetCountersSupported );
  }

  /// routed packets alone
  bool vlanIntfL3CountersSupported() const { return vlanIntfL3CountersSupported_; }
  void vlanIntfL3CountersSupportedIs( bool v ) {
    koiIs( vlanIntfL3CountersSupported_, v, NotifieeConst::koiOnVlanIntfL3CountersSupported );
  }

  /// forwarding of reserved group addresses
  bool ieeeReservedMacForwardAddrSupported() const { return ieeeReservedMacForwardAddrSupported_; }
  void ieeeReservedMacForwardAddrSupportedIs( bool v ) {
    koiIs( ieeeReservedMacForwardAddrSupported_, v,
           NotifieeConst::koiOnIeeeReservedMacForwardAddrSupported );
  }

  /// stands for all of them: the address of zeros
  static Wirex::EthAddr ieeeReservedMacForwardAddrAll() { return {}; }

  /// those that are forwarded together
  Koi::Ptr< IeeeReservedMacForwardGroup > ieeeReservedMacForwardGroup() const {
    return ieeeReservedMacForwardGroup_.ptr();
  }
  /// The one that is there, or a new one.
  Koi::Ptr< IeeeReservedMacForwardGroup > ieeeReservedMacForwardGroupIs( Koi::Name const & name );
  Koi::Ptr< IeeeReservedMacForwardGroup > ieeeReservedMacForwardGroupDel();

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< HwCapabilities > {
   public:
    virtual void onMaxFrameSize() {}
    virtual void onMaxFrameSizeKoiImmediate() { koiPass( koiOnMaxFrameSize ); onMaxFrameSize(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnMaxFrameSize{
      koiFirst + 2, &NotifieeConst::onMaxFrameSize, &NotifieeConst::onMaxFrameSizeKoiImmediate };

    virtual void onBridgingSupported() {}
    virtual void onBridgingSupportedKoiImmediate() {
      koiPass( koiOnBridgingSupported ); onBridgingSupported();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnBridgingSupported{
      koiFirst + 4, &NotifieeConst::onBridgingSupported,
          &NotifieeConst::onBridgingSupportedKoiImmediate };

    virtual void onDot1qTunnelSupported() {}
    virtual void onDot1qTunnelSupportedKoiImmediate() {
      koiPass( koiOnDot1qTunnelSupported ); onDot1qTunnelSupported();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnDot1qTunnelSupported{
      koiFirst + 5, &NotifieeConst::onDot1qTunnelSupported,
          &NotifieeConst::onDot1qTunnelSupportedKoiImmediate };

    virtual void onTaggedNativeVlanSupported() {}
    virtual void onTaggedNativeVlanSupportedKoiImmediate() {
      koiPass( koiOnTaggedNativeVlanSupported ); onTaggedNativeVlanSupported();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnTaggedNativeVlanSupported{
      koiFirst + 6, &NotifieeConst::onTaggedNativeVlanSupported,
          &NotifieeConst::onTaggedNativeVlanSupportedKoiImmediate };

    virtual void onPvstSupported() {}
    virtual void onPvstSupportedKoiImmediate() { koiPass( koiOnPvstSupported ); onPvstSupported(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnPvstSupported{
      koiFirst + 7, &NotifieeConst::onPvstSupported, &NotifieeConst::onPvstSupportedKoiImmediate };

    virtual void onBackupInterfacesSupported() {}
    virtual void onBackupInterfacesSupportedKoiImmediate() {
      koiPass( koiOnBackupInterfacesSupported ); onBackupInterfacesSupported();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnBackupInterfacesSupported{
      koiFirst + 8, &NotifieeConst::onBackupInterfacesSupported,
          &NotifieeConst::onBackupInterfacesSupportedKoiImmediate };

    virtual void onStaticMcastSupported() {}
    virtual void onStaticMcastSupportedKoiImmediate() {
      koiPass( koiOnStaticMcastSupported ); onStaticMcastSupported();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnStaticMcastSupported{
      koiFirst + 9, &NotifieeConst::onStaticMcastSupported,
          &NotifieeConst::onStaticMcastSupportedKoiImmediate };

    virtual void onNoMacLearningSupported() {}
    virtual void onNoMacLearningSupportedKoiImmediate() {
      koiPass( koiOnNoMacLearningSupported ); onNoMacLearningSupported();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnNoMacLearningSupported{
      koiFirst + 10, &NotifieeConst::onNoMacLearningSupported,
          &NotifieeConst::onNoMacLearningSupportedKoiImmediate };

    virtual void onVlanMacLearningSupported() {}
    virtual void onVlanMacLearningSupportedKoiImmediate() {
      koiPass( koiOnVlanMacLearningSupported ); onVlanMacLearningSupported();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnVlanMacLearningSupported{
      koiFirst + 11, &NotifieeConst::onVlanMacLearningSupported,
          &NotifieeConst::onVlanMacLearningSupportedKoiImmediate };

    virtual void onPrivateVlansSupported() {}
    virtual void onPrivateVlansSupportedKoiImmediate() {
      koiPass( koiOnPrivateVlansSupported ); onPrivateVlansSupported();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnPrivateVlansSupported{
      koiFirst + 12, &NotifieeConst::onPrivateVlansSupported,
          &NotifieeConst::onPrivateVlansSupportedKoiImmediate };

    virtual void onVlanXlateSupported() {}
    virtual void onVlanXlateSupportedKoiImmediate() {
      koiPass( koiOnVlanXlateSupported ); onVlanXlateSupported();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnVlanXlateSupported{
      koiFirst + 13, &NotifieeConst::onVlanXlateSupported,
          &NotifieeConst::onVlanXlateSupportedKoiImmediate };

    virtual void onIngressVlanMappingRequiredSupported() {}
    virtual void onIngressVlanMappingRequiredSupportedKoiImmediate() {
      koiPass( koiOnIngressVlanMappingRequiredSupported ); onIngressVlanMappingRequiredSupported();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnIngressVlanMappingRequiredSupported{
      koiFirst + 14, &NotifieeConst::onIngressVlanMappingRequiredSupported,
          &NotifieeConst::onIngressVlanMappingRequiredSupportedKoiImmediate };

    virtual void onVlanTagRequiredSupported() {}
    virtual void onVlanTagRequiredSupportedKoiImmediate() {
      koiPass( koiOnVlanTagRequiredSupported ); onVlanTagRequiredSupported();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnVlanTagRequiredSupported{
      koiFirst + 15, &NotifieeConst::onVlanTagRequiredSupported,
          &NotifieeConst::onVlanTagRequiredSupportedKoiImmediate };

    virtual void onDoubleVlanXlateSupported() {}
    virtual void onDoubleVlanXlateSupportedKoiImmediate() {
      koiPass( koiOnDoubleVlanXlateSupported ); onDoubleVlanXlateSupported();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnDoubleVlanXlateSupported{
      koiFirst + 16, &NotifieeConst::onDoubleVlanXlateSupported,
          &NotifieeConst::onDoubleVlanXlateSupportedKoiImmediate };

    virtual void onVlanXlateToDot1qTunnelSupported() {}
    virtual void onVlanXlateToDot1qTunnelSupportedKoiImmediate() {
      koiPass( koiOnVlanXlateToDot1qTunnelSupported ); onVlanXlateToDot1qTunnelSupported();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnVlanXlateToDot1qTunnelSupported{
      koiFirst + 17, &NotifieeConst::onVlanXlateToDot1qTunnelSupported,
          &NotifieeConst::onVlanXlateToDot1qTunnelSupportedKoiImmediate };

    virtual void onVlanTpidSupported() {}
    virtual void onVlanTpidSupportedKoiImmediate() {
      koiPass( koiOnVlanTpidSupported ); onVlanTpidSupported();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnVlanTpidSupported{
      koiFirst + 18, &NotifieeConst::onVlanTpidSupported,
          &NotifieeConst::onVlanTpidSupportedKoiImmediate };

    virtual void onLoopProtectSupported() {}
    virtual void onLoopProtectSupportedKoiImmediate() {
      koiPass( koiOnLoopProtectSupported ); onLoopProtectSupported();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnLoopProtectSupported{
      koiFirst + 19, &NotifieeConst::onLoopProtectSupported,
          &NotifieeConst::onLoopProtectSupportedKoiImmediate };

    virtual void onVfiForwarding() {}
    virtual void onVfiForwardingKoiImmediate() { koiPass( koiOnVfiForwarding ); onVfiForwarding(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnVfiForwarding{
      koiFirst + 20, &NotifieeConst::onVfiForwarding, &NotifieeConst::onVfiForwardingKoiImmediate };

    virtual void onVxlanSupported() {}
    virtual void onVxlanSupportedKoiImmediate() {
      koiPass( koiOnVxlanSupported ); onVxlanSupported();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnVxlanSupported{
      koiFirst + 21, &NotifieeConst::onVxlanSupported,
          &NotifieeConst::onVxlanSupportedKoiImmediate };

    virtual void onVxlanSupportedOverIpv6() {}
    virtual void onVxlanSupportedOverIpv6KoiImmediate() {
      koiPass( koiOnVxlanSupportedOverIpv6 ); onVxlanSupportedOverIpv6();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnVxlanSupportedOverIpv6{
      koiFirst + 22, &NotifieeConst::onVxlanSupportedOverIpv6,
          &NotifieeConst::onVxlanSupportedOverIpv6KoiImmediate };

    virtual void onVxlanRoutingSupported() {}
    virtual void onVxlanRoutingSupportedKoiImmediate() {
      koiPass( koiOnVxlanRoutingSupported ); onVxlanRoutingSupported();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnVxlanRoutingSupported{
      koiFirst + 23, &NotifieeConst::onVxlanRoutingSupported,
          &NotifieeConst::onVxlanRoutingSupportedKoiImmediate };

    virtual void onVxlanOverlayVrfsSupported() {}
    virtual void onVxlanOverlayVrfsSupportedKoiImmediate() {
      koiPass( koiOnVxlanOverlayVrfsSupported ); onVxlanOverlayVrfsSupported();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnVxlanOverlayVrfsSupported{
      koiFirst + 24, &NotifieeConst::onVxlanOverlayVrfsSupported,
          &NotifieeConst::onVxlanOverlayVrfsSupportedKoiImmediate };

    virtual void onVxlanMcastGroupSupported() {}
    virtual void onVxlanMcastGroupSupportedKoiImmediate() {
      koiPass( koiOnVxlanMcastGroupSupported ); onVxlanMcastGroupSupported();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnVxlanMcastGroupSupported{
      koiFirst + 25, &NotifieeConst::onVxlanMcastGroupSupported,
          &NotifieeConst::onVxlanMcastGroupSupportedKoiImmediate };

    virtual void onVxlanMcastDecapOnlySupported() {}
    virtual void onVxlanMcastDecapOnlySupportedKoiImmediate() {
      koiPass( koiOnVxlanMcastDecapOnlySupported ); onVxlanMcastDecapOnlySupported();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnVxlanMcastDecapOnlySupported{
      koiFirst + 26, &NotifieeConst::onVxlanMcastDecapOnlySupported,
          &NotifieeConst::onVxlanMcastDecapOnlySupportedKoiImmediate };

    virtual void onVxlanTxRawSupported() {}
    virtual void onVxlanTxRawSupportedKoiImmediate() {
      koiPass( koiOnVxlanTxRawSupported ); onVxlanTxRawSupported();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnVxlanTxRawSupported{
      koiFirst + 27, &NotifieeConst::onVxlanTxRawSupported,
          &NotifieeConst::onVxlanTxRawSupportedKoiImmediate };

    virtual void onVxlanVtepCtrSupported() {}
    virtual void onVxlanVtepCtrSupportedKoiImmediate() {
      koiPass( koiOnVxlanVtepCtrSupported ); onVxlanVtepCtrSupported();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnVxlanVtepCtrSupported{
      koiFirst + 28, &NotifieeConst::onVxlanVtepCtrSupported,
          &NotifieeConst::onVxlanVtepCtrSupportedKoiImmediate };

    virtual void onVxlanControllerClientSupported() {}
    virtual void onVxlanControllerClientSupportedKoiImmediate() {
      koiPass( koiOnVxlanControllerClientSupported ); onVxlanControllerClientSupported();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnVxlanControllerClientSupported{
      koiFirst + 29, &NotifieeConst::onVxlanControllerClientSupported,
          &NotifieeConst::onVxlanControllerClientSupportedKoiImmediate };

    virtual void onVxlanVniCtrSupported() {}
    virtual void onVxlanVniCtrSupportedKoiImmediate() {
      koiPass( koiOnVxlanVniCtrSupported ); onVxlanVniCtrSupported();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnVxlanVniCtrSupported{
      koiFirst + 30, &NotifieeConst::onVxlanVniCtrSupported,
          &NotifieeConst::onVxlanVniCtrSupportedKoiImmediate };

    virtual void onVxlanHitless2Supported() {}
    virtual void onVxlanHitless2SupportedKoiImmediate() {
      koiPass( koiOnVxlanHitless2Supported ); onVxlanHitless2Supported();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnVxlanHitless2Supported{
      koiFirst + 31, &NotifieeConst::onVxlanHitless2Supported,
          &NotifieeConst::onVxlanHitless2SupportedKoiImmediate };

    virtual void onOverlayEcmpSupported() {}
    virtual void onOverlayEcmpSupportedKoiImmediate() {
      koiPass( koiOnOverlayEcmpSupported ); onOverlayEcmpSupported();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnOverlayEcmpSupported{
      koiFirst + 32, &NotifieeConst::onOverlayEcmpSupported,
          &NotifieeConst::onOverlayEcmpSupportedKoiImmediate };

    virtual void onInternalVlanNeeded() {}
    virtual void onInternalVlanNeededKoiImmediate() {
      koiPass( koiOnInternalVlanNeeded ); onInternalVlanNeeded();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnInternalVlanNeeded{
      koiFirst + 33, &NotifieeConst::onInternalVlanNeeded,
          &NotifieeConst::onInternalVlanNeededKoiImmediate };

    virtual void onSourceportFilterSupported() {}
    virtual void onSourceportFilterSupportedKoiImmediate() {
      koiPass( koiOnSourceportFilterSupported ); onSourceportFilterSupported();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnSourceportFilterSupported{
      koiFirst + 34, &NotifieeConst::onSourceportFilterSupported,
          &NotifieeConst::onSourceportFilterSupportedKoiImmediate };

    virtual void onLagSupported() {}
    virtual void onLagSupportedKoiImmediate() { koiPass( koiOnLagSupported ); onLagSupported(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnLagSupported{
      koiFirst + 35, &NotifieeConst::onLagSupported, &NotifieeConst::onLagSupportedKoiImmediate };

    virtual void onLagLoadBalancePoliciesSupported() {}
    virtual void onLagLoadBalancePoliciesSupportedKoiImmediate() {
      koiPass( koiOnLagLoadBalancePoliciesSupported ); onLagLoadBalancePoliciesSupported();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnLagLoadBalancePoliciesSupported{
      koiFirst + 36, &NotifieeConst::onLagLoadBalancePoliciesSupported,
          &NotifieeConst::onLagLoadBalancePoliciesSupportedKoiImmediate };

    virtual void onVmTracerSupported() {}
    virtual void onVmTracerSupportedKoiImmediate() {
      koiPass( koiOnVmTracerSupported ); onVmTracerSupported();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnVmTracerSupported{
      koiFirst + 37, &NotifieeConst::onVmTracerSupported,
          &NotifieeConst::onVmTracerSupportedKoiImmediate };

    virtual void onVxlanBfdSupported() {}
    virtual void onVxlanBfdSupportedKoiImmediate() {
      koiPass( koiOnVxlanBfdSupported ); onVxlanBfdSupported();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnVxlanBfdSupported{
      koiFirst + 38, &NotifieeConst::onVxlanBfdSupported,
          &NotifieeConst::onVxlanBfdSupportedKoiImmediate };

    virtual void onRfc7130Supported() {}
    virtual void onRfc7130SupportedKoiImmediate() {
      koiPass( koiOnRfc7130Supported ); onRfc7130Supported();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnRfc7130Supported{
      koiFirst + 39, &NotifieeConst::onRfc7130Supported,
          &NotifieeConst::onRfc7130SupportedKoiImmediate };

    virtual void onVxlanLogicalRouterSupported() {}
    virtual void onVxlanLogicalRouterSupportedKoiImmediate() {
      koiPass( koiOnVxlanLogicalRouterSupported ); onVxlanLogicalRouterSupported();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnVxlanLogicalRouterSupported{
      koiFirst + 40, &NotifieeConst::onVxlanLogicalRouterSupported,
          &NotifieeConst::onVxlanLogicalRouterSupportedKoiImmediate };

    virtual void onVxlanL3EvpnSupported() {}
    virtual void onVxlanL3EvpnSupportedKoiImmediate() {
      koiPass( koiOnVxlanL3EvpnSupported ); onVxlanL3EvpnSupported();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnVxlanL3EvpnSupported{
      koiFirst + 41, &NotifieeConst::onVxlanL3EvpnSupported,
          &NotifieeConst::onVxlanL3EvpnSupportedKoiImmediate };

    virtual void onL2MtuSupported() {}
    virtual void onL2MtuSupportedKoiImmediate() {
      koiPass( koiOnL2MtuSupported ); onL2MtuSupported();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnL2MtuSupported{
      koiFirst + 42, &NotifieeConst::onL2MtuSupported,
          &NotifieeConst::onL2MtuSupportedKoiImmediate };

    virtual void onL2MtuMax() {}
    virtual void onL2MtuMaxKoiImmediate() { koiPass( koiOnL2MtuMax ); onL2MtuMax(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnL2MtuMax{
      koiFirst + 43, &NotifieeConst::onL2MtuMax, &NotifieeConst::onL2MtuMaxKoiImmediate };

    virtual void onL2MtuMin() {}
    virtual void onL2MtuMinKoiImmediate() { koiPass( koiOnL2MtuMin ); onL2MtuMin(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnL2MtuMin{
      koiFirst + 44, &NotifieeConst::onL2MtuMin, &NotifieeConst::onL2MtuMinKoiImmediate };

    virtual void onLagShowOutputIntfSupported() {}
    virtual void onLagShowOutputIntfSupportedKoiImmediate() {
      koiPass( koiOnLagShowOutputIntfSupported ); onLagShowOutputIntfSupported();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnLagShowOutputIntfSupported{
      koiFirst + 45, &NotifieeConst::onLagShowOutputIntfSupported,
          &NotifieeConst::onLagShowOutputIntfSupportedKoiImmediate };

    virtual void onPausePassThroughSupported() {}
    virtual void onPausePassThroughSupportedKoiImmediate() {
      koiPass( koiOnPausePassThroughSupported ); onPausePassThroughSupported();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnPausePassThroughSupported{
      koiFirst + 46, &NotifieeConst::onPausePassThroughSupported,
          &NotifieeConst::onPausePassThroughSupportedKoiImmediate };

    virtual void onSupportedForwardingMode() {}
    virtual void onSupportedForwardingMode( Koi::U32 ) {}
    virtual void onSupportedForwardingModeKoiImmediate( Koi::U32 k ) {
      koiPass( koiOnSupportedForwardingMode ); onSupportedForwardingMode( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Koi::U32 > koiOnSupportedForwardingMode{
      koiFirst + 47, &NotifieeConst::onSupportedForwardingMode,
          &NotifieeConst::onSupportedForwardingModeKoiImmediate };

    virtual void onVlanIntfInPktCountersSupported() {}
    virtual void onVlanIntfInPktCountersSupportedKoiImmediate() {
      koiPass( koiOnVlanIntfInPktCountersSupported ); onVlanIntfInPktCountersSupported();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnVlanIntfInPktCountersSupported{
      koiFirst + 48, &NotifieeConst::onVlanIntfInPktCountersSupported,
          &NotifieeConst::onVlanIntfInPktCountersSupportedKoiImmediate };

    virtual void onVlanIntfOutPktCountersSupported() {}
    virtual void onVlanIntfOutPktCountersSupportedKoiImmediate() {
      koiPass( koiOnVlanIntfOutPktCountersSupported ); onVlanIntfOutPktCountersSupported();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnVlanIntfOutPktCountersSupported{
      koiFirst + 49, &NotifieeConst::onVlanIntfOutPktCountersSupported,
          &NotifieeConst::onVlanIntfOutPktCountersSupportedKoiImmediate };

    virtual void onVlanIntfInUcastPktCountersSupported() {}
    virtual void onVlanIntfInUcastPktCountersSupportedKoiImmediate() {
      koiPass( koiOnVlanIntfInUcastPktCountersSupported ); onVlanIntfInUcastPktCountersSupported();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnVlanIntfInUcastPktCountersSupported{
      koiFirst + 50, &NotifieeConst::onVlanIntfInUcastPktCountersSupported,
          &NotifieeConst::onVlanIntfInUcastPktCountersSupportedKoiImmediate };

    virtual void onVlanIntfOutUcastPktCountersSupported() {}
    virtual void onVlanIntfOutUcastPktCountersSupportedKoiImmediate() {
      koiPass(
          koiOnVlanIntfOutUcastPktCountersSupported ); onVlanIntfOutUcastPktCountersSupported();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnVlanIntfOutUcastPktCountersSupported{
      koiFirst + 51, &NotifieeConst::onVlanIntfOutUcastPktCountersSupported,
          &NotifieeConst::onVlanIntfOutUcastPktCountersSupportedKoiImmediate };

    virtual void onVlanIntfInMcastPktCountersSupported() {}
    virtual void onVlanIntfInMcastPktCountersSupportedKoiImmediate() {
      koiPass( koiOnVlanIntfInMcastPktCountersSupported ); onVlanIntfInMcastPktCountersSupported();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnVlanIntfInMcastPktCountersSupported{
      koiFirst + 52, &NotifieeConst::onVlanIntfInMcastPktCountersSupported,
          &NotifieeConst::onVlanIntfInMcastPktCountersSupportedKoiImmediate };

    virtual void onVlanIntfOutMcastPktCountersSupported() {}
    virtual void onVlanIntfOutMcastPktCountersSupportedKoiImmediate() {
      koiPass(
          koiOnVlanIntfOutMcastPktCountersSupported ); onVlanIntfOutMcastPktCountersSupported();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnVlanIntfOutMcastPktCountersSupported{
      koiFirst + 53, &NotifieeConst::onVlanIntfOutMcastPktCountersSupported,
          &NotifieeConst::onVlanIntfOutMcastPktCountersSupportedKoiImmediate };

    virtual void onVlanIntfInOctetCountersSupported() {}
    virtual void onVlanIntfInOctetCountersSupportedKoiImmediate() {
      koiPass( koiOnVlanIntfInOctetCountersSupported ); onVlanIntfInOctetCountersSupported();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnVlanIntfInOctetCountersSupported{
      koiFirst + 54, &NotifieeConst::onVlanIntfInOctetCountersSupported,
          &NotifieeConst::onVlanIntfInOctetCountersSupportedKoiImmediate };

    virtual void onVlanIntfOutOctetCountersSupported() {}
    virtual void onVlanIntfOutOctetCountersSupportedKoiImmediate() {
      koiPass( koiOnVlanIntfOutOctetCountersSupported ); onVlanIntfOutOctetCountersSupported();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnVlanIntfOutOctetCountersSupported{
      koiFirst + 55, &NotifieeConst::onVlanIntfOutOctetCountersSupported,
          &NotifieeConst::onVlanIntfOutOctetCountersSupportedKoiImmediate };

    virtual void onVlanIntfUcastOctetCountersSupported() {}
    virtual void onVlanIntfUcastOctetCountersSupportedKoiImmediate() {
      koiPass( koiOnVlanIntfUcastOctetCountersSupported ); onVlanIntfUcastOctetCountersSupported();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnVlanIntfUcastOctetCountersSupported{
      koiFirst + 56, &NotifieeConst::onVlanIntfUcastOctetCountersSupported,
          &NotifieeConst::onVlanIntfUcastOctetCountersSupportedKoiImmediate };

    virtual void onVlanIntfMcastOctetCountersSupported() {}
    virtual void onVlanIntfMcastOctetCountersSupportedKoiImmediate() {
      koiPass( koiOnVlanIntfMcastOctetCountersSupported ); onVlanIntfMcastOctetCountersSupported();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnVlanIntfMcastOctetCountersSupported{
      koiFirst + 57, &NotifieeConst::onVlanIntfMcastOctetCountersSupported,
          &NotifieeConst::onVlanIntfMcastOctetCountersSupportedKoiImmediate };

    virtual void onVlanIntfL3CountersSupported() {}
    virtual void onVlanIntfL3CountersSupportedKoiImmediate() {
      koiPass( koiOnVlanIntfL3CountersSupported ); onVlanIntfL3CountersSupported();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnVlanIntfL3CountersSupported{
      koiFirst + 58, &NotifieeConst::onVlanIntfL3CountersSupported,
          &NotifieeConst::onVlanIntfL3CountersSupportedKoiImmediate };

    virtual void onIeeeReservedMacForwardAddrSupported() {}
    virtual void onIeeeReservedMacForwardAddrSupportedKoiImmediate() {
      koiPass( koiOnIeeeReservedMacForwardAddrSupported ); onIeeeReservedMacForwardAddrSupported();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnIeeeReservedMacForwardAddrSupported{
      koiFirst + 59, &NotifieeConst::onIeeeReservedMacForwardAddrSupported,
          &NotifieeConst::onIeeeReservedMacForwardAddrSupportedKoiImmediate };

    virtual void onIeeeReservedMacForwardGroup() {}
    virtual void onIeeeReservedMacForwardGroupKoiImmediate() {
      koiPass( koiOnIeeeReservedMacForwardGroup ); onIeeeReservedMacForwardGroup();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnIeeeReservedMacForwardGroup{
      koiFirst + 61, &NotifieeConst::onIeeeReservedMacForwardGroup,
          &NotifieeConst::onIeeeReservedMacForwardGroupKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, HwCapabilities >;

  static constexpr char koiName[] = "Bridging::HwCapabilities";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &HwCapabilities::name )
    };
  }
  template< class Self = HwCapabilities >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::constant< Self >( "maxFrameSizeDefault", &Self::maxFrameSizeDefault ),
      Koi::constant< Self >( "maxFrameSizeTapAgg", &Self::maxFrameSizeTapAgg ),
      Koi::attribute( "maxFrameSize", &Self::maxFrameSize_, &Self::maxFrameSizeIs ),
      Koi::computed( "maxFrameSizeWithoutL2Encapsulation",
                     &Self::maxFrameSizeWithoutL2Encapsulation ),
      Koi::attribute( "bridgingSupported", &Self::bridgingSupported_, &Self::bridgingSupportedIs ),
      Koi::attribute( "dot1qTunnelSupported", &Self::dot1qTunnelSupported_,
                      &Self::dot1qTunnelSupportedIs ),
      Koi::attribute( "taggedNativeVlanSupported", &Self::taggedNativeVlanSupported_,
                      &Self::taggedNativeVlanSupportedIs ),
      Koi::attribute( "pvstSupported", &Self::pvstSupported_, &Self::pvstSupportedIs ),
      Koi::attribute( "backupInterfacesSupported", &Self::backupInterfacesSupported_,
                      &Self::backupInterfacesSupportedIs ),
      Koi::attribute( "staticMcastSupported", &Self::staticMcastSupported_,
                      &Self::staticMcastSupportedIs ),
      Koi::attribute( "noMacLearningSupported", &Self::noMacLearningSupported_,
                      &Self::noMacLearningSupportedIs ),
      Koi::attribute( "vlanMacLearningSupported", &Self::vlanMacLearningSupported_,
                      &Self::vlanMacLearningSupportedIs ),
      Koi::attribute( "privateVlansSupported", &Self::privateVlansSupported_,
                      &Self::privateVlansSupportedIs ),
      Koi::attribute( "vlanXlateSupported", &Self::vlanXlateSupported_,
                      &Self::vlanXlateSupportedIs ),
      Koi::attribute( "ingressVlanMappingRequiredSupported",
                      &Self::ingressVlanMappingRequiredSupported_,
          &Self::ingressVlanMappingRequiredSupportedIs ),
      Koi::attribute( "vlanTagRequiredSupported", &Self::vlanTagRequiredSupported_,
                      &Self::vlanTagRequiredSupportedIs ),
      Koi::attribute( "doubleVlanXlateSupported", &Self::doubleVlanXlateSupported_,
                      &Self::doubleVlanXlateSupportedIs ),
      Koi::attribute( "vlanXlateToDot1qTunnelSupported", &Self::vlanXlateToDot1qTunnelSupported_,
                      &Self::vlanXlateToDot1qTunnelSupportedIs ),
      Koi::attribute( "vlanTpidSupported", &Self::vlanTpidSupported_, &Self::vlanTpidSupportedIs ),
      Koi::attribute( "loopProtectSupported", &Self::loopProtectSupported_,
                      &Self::loopProtectSupportedIs ),
      Koi::attribute( "vfiForwarding", &Self::vfiForwarding_, &Self::vfiForwardingIs ),
      Koi::attribute( "vxlanSupported", &Self::vxlanSupported_, &Self::vxlanSupportedIs ),
      Koi::attribute( "vxlanSupportedOverIpv6", &Self::vxlanSupportedOverIpv6_,
                      &Self::vxlanSupportedOverIpv6Is ),
      Koi::attribute( "vxlanRoutingSupported", &Self::vxlanRoutingSupported_,
                      &Self::vxlanRoutingSupportedIs ),
      Koi::attribute( "vxlanOverlayVrfsSupported", &Self::vxlanOverlayVrfsSupported_,
                      &Self::vxlanOverlayVrfsSupportedIs ),
      Koi::attribute( "vxlanMcastGroupSupported", &Self::vxlanMcastGroupSupported_,
                      &Self::vxlanMcastGroupSupportedIs ),
      Koi::attribute( "vxlanMcastDecapOnlySupported", &Self::vxlanMcastDecapOnlySupported_,
                      &Self::vxlanMcastDecapOnlySupportedIs ),
      Koi::attribute( "vxlanTxRawSupported", &Self::vxlanTxRawSupported_,
                      &Self::vxlanTxRawSupportedIs ),
      Koi::attribute( "vxlanVtepCtrSupported", &Self::vxlanVtepCtrSupported_,
                      &Self::vxlanVtepCtrSupportedIs ),
      Koi::attribute( "vxlanControllerClientSupported", &Self::vxlanControllerClientSupported_,
                      &Self::vxlanControllerClientSupportedIs ),
      Koi::attribute( "vxlanVniCtrSupported", &Self::vxlanVniCtrSupported_,
                      &Self::vxlanVniCtrSupportedIs ),
      Koi::attribute( "vxlanHitless2Supported", &Self::vxlanHitless2Supported_,
                      &Self::vxlanHitless2SupportedIs ),
      Koi::attribute( "overlayEcmpSupported", &Self::overlayEcmpSupported_,
                      &Self::overlayEcmpSupportedIs ),
      Koi::attribute( "internalVlanNeeded", &Self::internalVlanNeeded_,
                      &Self::internalVlanNeededIs ),
      Koi::attribute( "sourceportFilterSupported", &Self::sourceportFilterSupported_,
                      &Self::sourceportFilterSupportedIs ),
      Koi::attribute( "lagSupported", &Self::lagSupported_, &Self::lagSupportedIs ),
      Koi::attribute( "lagLoadBalancePoliciesSupported", &Self::lagLoadBalancePoliciesSupported_,
                      &Self::lagLoadBalancePoliciesSupportedIs ),
      Koi::attribute( "vmTracerSupported", &Self::vmTracerSupported_, &Self::vmTracerSupportedIs ),
      Koi::attribute( "vxlanBfdSupported", &Self::vxlanBfdSupported_, &Self::vxlanBfdSupportedIs ),
      Koi::attribute( "rfc7130Supported", &Self::rfc7130Supported_, &Self::rfc7130SupportedIs ),
      Koi::attribute( "vxlanLogicalRouterSupported", &Self::vxlanLogicalRouterSupported_,
                      &Self::vxlanLogicalRouterSupportedIs ),
      Koi::attribute( "vxlanL3EvpnSupported", &Self::vxlanL3EvpnSupported_,
                      &Self::vxlanL3EvpnSupportedIs ),
      Koi::attribute( "l2MtuSupported", &Self::l2MtuSupported_, &Self::l2MtuSupportedIs ),
      Koi::attribute( "l2MtuMax", &Self::l2MtuMax_, &Self::l2MtuMaxIs ),
      Koi::attribute( "l2MtuMin", &Self::l2MtuMin_, &Self::l2MtuMinIs ),
      Koi::attribute( "lagShowOutputIntfSupported", &Self::lagShowOutputIntfSupported_,
                      &Self::lagShowOutputIntfSupportedIs ),
      Koi::attribute( "pausePassThroughSupported", &Self::pausePassThroughSupported_,
                      &Self::pausePassThroughSupportedIs ),
      Koi::attribute( "supportedForwardingMode", &Self::supportedForwardingMode_,
                      &Self::supportedForwardingModeIs, &Self::supportedForwardingModeDel ),
      Koi::attribute( "vlanIntfInPktCountersSupported", &Self::vlanIntfInPktCountersSupported_,
                      &Self::vlanIntfInPktCountersSupportedIs ),
      Koi::attribute( "vlanIntfOutPktCountersSupported", &Self::vlanIntfOutPktCountersSupported_,
                      &Self::vlanIntfOutPktCountersSupportedIs ),
      Koi::attribute( "vlanIntfInUcastPktCountersSupported",
                      &Self::vlanIntfInUcastPktCountersSupported_,
          &Self::vlanIntfInUcastPktCountersSupportedIs ),
      Koi::attribute( "vlanIntfOutUcastPktCountersSupported",
                      &Self::vlanIntfOutUcastPktCountersSupported_,
          &Self::vlanIntfOutUcastPktCountersSupportedIs ),
      Koi::attribute( "vlanIntfInMcastPktCountersSupported",
                      &Self::vlanIntfInMcastPktCountersSupported_,
          &Self::vlanIntfInMcastPktCountersSupportedIs ),
      Koi::attribute( "vlanIntfOutMcastPktCountersSupported",
                      &Self::vlanIntfOutMcastPktCountersSupported_,
          &Self::vlanIntfOutMcastPktCountersSupportedIs ),
      Koi::attribute( "vlanIntfInOctetCountersSupported", &Self::vlanIntfInOctetCountersSupported_,
                      &Self::vlanIntfInOctetCountersSupportedIs ),
      Koi::attribute( "vlanIntfOutOctetCountersSupported",
                      &Self::vlanIntfOutOctetCountersSupported_,
          &Self::vlanIntfOutOctetCountersSupportedIs ),
      Koi::attribute( "vlanIntfUcastOctetCountersSupported",
                      &Self::vlanIntfUcastOctetCountersSupported_,
          &Self::vlanIntfUcastOctetCountersSupportedIs ),
      Koi::attribute( "vlanIntfMcastOctetCountersSupported",
                      &Self::vlanIntfMcastOctetCountersSupported_,
          &Self::vlanIntfMcastOctetCountersSupportedIs ),
      Koi::attribute( "vlanIntfL3CountersSupported", &Self::vlanIntfL3CountersSupported_,
                      &Self::vlanIntfL3CountersSupportedIs ),
      Koi::attribute( "ieeeReservedMacForwardAddrSupported",
                      &Self::ieeeReservedMacForwardAddrSupported_,
          &Self::ieeeReservedMacForwardAddrSupportedIs ),
      Koi::constant< Self >( "ieeeReservedMacForwardAddrAll",
                             &Self::ieeeReservedMacForwardAddrAll ),
      Koi::attribute( "ieeeReservedMacForwardGroup", &Self::ieeeReservedMacForwardGroup_,
                      &Self::ieeeReservedMacForwardGroupIs, &Self::ieeeReservedMacForwardGroupDel )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 62;
  static Koi::KoiType const _koiType;

 private:
  Koi::U32 maxFrameSize_ = maxFrameSizeDefault();
  bool bridgingSupported_ = true;
  bool dot1qTunnelSupported_{};
  bool taggedNativeVlanSupported_{};
  bool pvstSupported_{};
  bool backupInterfacesSupported_{};
  bool staticMcastSupported_{};
  bool noMacLearningSupported_{};
  bool vlanMacLearningSupported_{};
  bool privateVlansSupported_{};
  bool vlanXlateSupported_{};
  bool ingressVlanMappingRequiredSupported_{};
  bool vlanTagRequiredSupported_{};
  bool doubleVlanXlateSupported_{};
  bool vlanXlateToDot1qTunnelSupported_{};
  bool vlanTpidSupported_{};
  bool loopProtectSupported_{};
  bool vfiForwarding_{};
  bool vxlanSupported_{};
  bool vxlanSupportedOverIpv6_{};
  bool vxlanRoutingSupported_{};
  bool vxlanOverlayVrfsSupported_ = true;
  bool vxlanMcastGroupSupported_ = true;
  bool vxlanMcastDecapOnlySupported_{};
  bool vxlanTxRawSupported_ = true;
  bool vxlanVtepCtrSupported_{};
  bool vxlanControllerClientSupported_ = true;
  bool vxlanVniCtrSupported_{};
  bool vxlanHitless2Supported_{};
  bool overlayEcmpSupported_{};
  InternalVlanNeeded internalVlanNeeded_ = InternalVlanNeeded::intVlanNeeded;
  bool sourceportFilterSupported_{};
  bool lagSupported_ = true;
  bool lagLoadBalancePoliciesSupported_{};
  bool vmTracerSupported_ = true;
  bool vxlanBfdSupported_{};
  bool rfc7130Supported_{};
  bool vxlanLogicalRouterSupported_{};
  bool vxlanL3EvpnSupported_ = true;
  bool l2MtuSupported_{};
  Koi::U32 l2MtuMax_ = 65535;
  Koi::U32 l2MtuMin_ = 64;
  bool lagShowOutputIntfSupported_{};
  bool pausePassThroughSupported_{};
  Koi::RbTreeMap< KoiSupportedForwardingMode, Koi::U32,
      SwitchForwardingMode > supportedForwardingMode_;
  bool vlanIntfInPktCountersSupported_{};
  bool vlanIntfOutPktCountersSupported_{};
  bool vlanIntfInUcastPktCountersSupported_{};
  bool vlanIntfOutUcastPktCountersSupported_{};
  bool vlanIntfInMcastPktCountersSupported_{};
  bool vlanIntfOutMcastPktCountersSupported_{};
  bool vlanIntfInOctetCountersSupported_{};
  bool vlanIntfOutOctetCountersSupported_{};
  bool vlanIntfUcastOctetCountersSupported_{};
  bool vlanIntfMcastOctetCountersSupported_{};
  bool vlanIntfL3CountersSupported_{};
  bool ieeeReservedMacForwardAddrSupported_{};
  Koi::Owned< IeeeReservedMacForwardGroup > ieeeReservedMacForwardGroup_;
};

/// A new HwCapabilities without a parent.
KOI_PUBLIC Koi::Ptr< HwCapabilities > hwCapabilitiesFactory( Koi::Name const & name );

/// Which sets of counters are switched on.
class KOI_PUBLIC HwEnabled : public Koi::EntityOf< HwEnabled > {
 public:
  explicit HwEnabled( Koi::Name const & name );

  /// VLANs, ingress
  bool vlanIngressCountersEnabled() const { return vlanIngressCountersEnabled_; }
  void vlanIngressCountersEnabledIs( bool v ) {
    koiIs( vlanIngressCountersEnabled_, v, NotifieeConst::koiOnVlanIngressCountersEnabled );
  }

  /// VLANs, egress
  bool vlanEgressCountersEnabled() const { return vlanEgressCountersEnabled_; }
  void vlanEgressCountersEnabledIs( bool v ) {
    koiIs( vlanEgressCountersEnabled_, v, NotifieeConst::koiOnVlanEgressCountersEnabled );
  }

  /// VLANs, broadcast, unknown unicast and multicast
  bool vlanBumCountersEnabled() const { return vlanBumCountersEnabled_; }
  void vlanBumCountersEnabledIs( bool v ) {
    koiIs( vlanBumCountersEnabled_, v, NotifieeConst::koiOnVlanBumCountersEnabled );
  }

  /// sub-interfaces, ingress
  bool subintfIngressCountersEnabled() const { return subintfIngressCountersEnabled_; }
  void subintfIngressCountersEnabledIs( bool v ) {
    koiIs( subintfIngressCountersEnabled_, v, NotifieeConst::koiOnSubintfIngressCountersEnabled );
  }

  /// sub-interfaces, egress
  bool subintfEgressCountersEnabled() const { return subintfEgressCountersEnabled_; }
  void subintfEgressCountersEnabledIs( bool v ) {
    koiIs( subintfEgressCountersEnabled_, v, NotifieeConst::koiOnSubintfEgressCountersEnabled );
  }

  /// sub-interfaces, broadcast, unknown unicast and multicast
  bool subintfBumCountersEnabled() const { return subintfBumCountersEnabled_; }
  void subintfBumCountersEnabledIs( bool v ) {
    koiIs( subintfBumCountersEnabled_, v, NotifieeConst::koiOnSubintfBumCountersEnabled );
  }

  /// sub-interfaces, unicast and multicast
  bool subintfUMCountersEnabled() const { return subintfUMCountersEnabled_; }
  void subintfUMCountersEnabledIs( bool v ) {
    koiIs( subintfUMCountersEnabled_, v, NotifieeConst::koiOnSubintfUMCountersEnabled );
  }

  /// sub-interfaces, routed packets
  bool subintfL3CountersEnabled() const { return subintfL3CountersEnabled_; }
  void subintfL3CountersEnabledIs( bool v ) {
    koiIs( subintfL3CountersEnabled_, v, NotifieeConst::koiOnSubintfL3CountersEnabled );
  }

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< HwEnabled > {
   public:
    virtual void onVlanIngressCountersEnabled() {}
    virtual void onVlanIngressCountersEnabledKoiImmediate() {
      koiPass( koiOnVlanIngressCountersEnabled ); onVlanIngressCountersEnabled();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnVlanIngressCountersEnabled{
      koiFirst + 0, &NotifieeConst::onVlanIngressCountersEnabled,
          &NotifieeConst::onVlanIngressCountersEnabledKoiImmediate };

    virtual void onVlanEgressCountersEnabled() {}
    virtual void onVlanEgressCountersEnabledKoiImmediate() {
      koiPass( koiOnVlanEgressCountersEnabled ); onVlanEgressCountersEnabled();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnVlanEgressCountersEnabled{
      koiFirst + 1, &NotifieeConst::onVlanEgressCountersEnabled,
          &NotifieeConst::onVlanEgressCountersEnabledKoiImmediate };

    virtual void onVlanBumCountersEnabled() {}
    virtual void onVlanBumCountersEnabledKoiImmediate() {
      koiPass( koiOnVlanBumCountersEnabled ); onVlanBumCountersEnabled();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnVlanBumCountersEnabled{
      koiFirst + 2, &NotifieeConst::onVlanBumCountersEnabled,
          &NotifieeConst::onVlanBumCountersEnabledKoiImmediate };

    virtual void onSubintfIngressCountersEnabled() {}
    virtual void onSubintfIngressCountersEnabledKoiImmediate() {
      koiPass( koiOnSubintfIngressCountersEnabled ); onSubintfIngressCountersEnabled();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnSubintfIngressCountersEnabled{
      koiFirst + 3, &NotifieeConst::onSubintfIngressCountersEnabled,
          &NotifieeConst::onSubintfIngressCountersEnabledKoiImmediate };

    virtual void onSubintfEgressCountersEnabled() {}
    virtual void onSubintfEgressCountersEnabledKoiImmediate() {
      koiPass( koiOnSubintfEgressCountersEnabled ); onSubintfEgressCountersEnabled();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnSubintfEgressCountersEnabled{
      koiFirst + 4, &NotifieeConst::onSubintfEgressCountersEnabled,
          &NotifieeConst::onSubintfEgressCountersEnabledKoiImmediate };

    virtual void onSubintfBumCountersEnabled() {}
    virtual void onSubintfBumCountersEnabledKoiImmediate() {
      koiPass( koiOnSubintfBumCountersEnabled ); onSubintfBumCountersEnabled();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnSubintfBumCountersEnabled{
      koiFirst + 5, &NotifieeConst::onSubintfBumCountersEnabled,
          &NotifieeConst::onSubintfBumCountersEnabledKoiImmediate };

    virtual void onSubintfUMCountersEnabled() {}
    virtual void onSubintfUMCountersEnabledKoiImmediate() {
      koiPass( koiOnSubintfUMCountersEnabled ); onSubintfUMCountersEnabled();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnSubintfUMCountersEnabled{
      koiFirst + 6, &NotifieeConst::onSubintfUMCountersEnabled,
          &NotifieeConst::onSubintfUMCountersEnabledKoiImmediate };

    virtual void onSubintfL3CountersEnabled() {}
    virtual void onSubintfL3CountersEnabledKoiImmediate() {
      koiPass( koiOnSubintfL3CountersEnabled ); onSubintfL3CountersEnabled();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnSubintfL3CountersEnabled{
      koiFirst + 7, &NotifieeConst::onSubintfL3CountersEnabled,
          &NotifieeConst::onSubintfL3CountersEnabledKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, HwEnabled >;

  static constexpr char koiName[] = "Bridging::HwEnabled";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &HwEnabled::name )
    };
  }
  template< class Self = HwEnabled >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "vlanIngressCountersEnabled", &Self::vlanIngressCountersEnabled_,
                      &Self::vlanIngressCountersEnabledIs ),
      Koi::attribute( "vlanEgressCountersEnabled", &Self::vlanEgressCountersEnabled_,
                      &Self::vlanEgressCountersEnabledIs ),
      Koi::attribute( "vlanBumCountersEnabled", &Self::vlanBumCountersEnabled_,
                      &Self::vlanBumCountersEnabledIs ),
      Koi::attribute( "subintfIngressCountersEnabled", &Self::subintfIngressCountersEnabled_,
                      &Self::subintfIngressCountersEnabledIs ),
      Koi::attribute( "subintfEgressCountersEnabled", &Self::subintfEgressCountersEnabled_,
                      &Self::subintfEgressCountersEnabledIs ),
      Koi::attribute( "subintfBumCountersEnabled", &Self::subintfBumCountersEnabled_,
                      &Self::subintfBumCountersEnabledIs ),
      Koi::attribute( "subintfUMCountersEnabled", &Self::subintfUMCountersEnabled_,
                      &Self::subintfUMCountersEnabledIs ),
      Koi::attribute( "subintfL3CountersEnabled", &Self::subintfL3CountersEnabled_,
                      &Self::subintfL3CountersEnabledIs )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 8;
  static Koi::KoiType const _koiType;

 private:
  bool vlanIngressCountersEnabled_{};
  bool vlanEgressCountersEnabled_{};
  bool vlanBumCountersEnabled_{};
  bool subintfIngressCountersEnabled_{};
  bool subintfEgressCountersEnabled_{};
  bool subintfBumCountersEnabled_{};
  bool subintfUMCountersEnabled_{};
  bool subintfL3CountersEnabled_{};
};

/// A new HwEnabled without a parent.
KOI_PUBLIC Koi::Ptr< HwEnabled > hwEnabledFactory( Koi::Name const & name );

/// Requests to flush learned MAC addresses. Who asks writes one under a key of its own, and takes
/// it
/// away when it has the answer.
class KOI_PUBLIC HostTableFlushRequestDir : public Koi::EntityOf< HostTableFlushRequestDir > {
 public:
  explicit HostTableFlushRequestDir( Koi::Name const & name );

  class KoiHostTableFlushRequest;
  /// the requests
  HostTableFlushRequest hostTableFlushRequest( Koi::String8 const & k ) const;
  Koi::HashMap< KoiHostTableFlushRequest, Koi::String8,
      HostTableFlushRequest > const & hostTableFlushRequest() const {
    return hostTableFlushRequest_;
  }
  using HostTableFlushRequestIterator = Koi::HashMap< KoiHostTableFlushRequest, Koi::String8,
      HostTableFlushRequest >::Iterator;
  HostTableFlushRequestIterator hostTableFlushRequestIterator();
  void hostTableFlushRequestIs( Koi::String8 const & k, HostTableFlushRequest const & v );
  HostTableFlushRequest hostTableFlushRequestDel( Koi::String8 const & k );
  HostTableFlushRequest hostTableFlushRequestDel( HostTableFlushRequestIterator const & i );
  void hostTableFlushRequestDelAll();
  void hostTableFlushRequestNotify( Koi::String8 const & k );

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< HostTableFlushRequestDir > {
   public:
    virtual void onHostTableFlushRequest() {}
    virtual void onHostTableFlushRequest( Koi::String8 const & ) {}
    virtual void onHostTableFlushRequestKoiImmediate( Koi::String8 const & k ) {
      koiPass( koiOnHostTableFlushRequest ); onHostTableFlushRequest( k );
    }
    static constexpr Koi::Callback< NotifieeConst,
        Koi::String8 const & > koiOnHostTableFlushRequest{
      koiFirst + 0, &NotifieeConst::onHostTableFlushRequest,
          &NotifieeConst::onHostTableFlushRequestKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, HostTableFlushRequestDir >;

  static constexpr char koiName[] = "Bridging::HostTableFlushRequestDir";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &HostTableFlushRequestDir::name )
    };
  }
  template< class Self = HostTableFlushRequestDir >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "hostTableFlushRequest", &Self::hostTableFlushRequest_,
                      &Self::hostTableFlushRequestIs, &Self::hostTableFlushRequestDel )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 1;
  static Koi::KoiType const _koiType;

 private:
  Koi::HashMap< KoiHostTableFlushRequest, Koi::String8,
      HostTableFlushRequest > hostTableFlushRequest_;
};

/// A new HostTableFlushRequestDir without a parent.
KOI_PUBLIC Koi::Ptr< HostTableFlushRequestDir > hostTableFlushRequestDirFactory(
    Koi::Name const & name );

/// The answers. Who owns the learned addresses flushes them, and answers under the key of the
/// request.
class KOI_PUBLIC HostTableFlushReplyDir : public Koi::EntityOf< HostTableFlushReplyDir > {
 public:
  explicit HostTableFlushReplyDir( Koi::Name const & name );

  class KoiHostTableFlushReply;
  /// true: flushed; false: there is no such VLAN
  bool hostTableFlushReply( Koi::String8 const & k ) const;
  Koi::HashMap< KoiHostTableFlushReply, Koi::String8, bool > const & hostTableFlushReply() const {
    return hostTableFlushReply_;
  }
  using HostTableFlushReplyIterator = Koi::HashMap< KoiHostTableFlushReply, Koi::String8,
      bool >::Iterator;
  HostTableFlushReplyIterator hostTableFlushReplyIterator();
  void hostTableFlushReplyIs( Koi::String8 const & k, bool v );
  bool hostTableFlushReplyDel( Koi::String8 const & k );
  bool hostTableFlushReplyDel( HostTableFlushReplyIterator const & i );
  void hostTableFlushReplyDelAll();
  void hostTableFlushReplyNotify( Koi::String8 const & k );

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< HostTableFlushReplyDir > {
   public:
    virtual void onHostTableFlushReply() {}
    virtual void onHostTableFlushReply( Koi::String8 const & ) {}
    virtual void onHostTableFlushReplyKoiImmediate( Koi::String8 const & k ) {
      koiPass( koiOnHostTableFlushReply ); onHostTableFlushReply( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Koi::String8 const & > koiOnHostTableFlushReply{
      koiFirst + 0, &NotifieeConst::onHostTableFlushReply,
          &NotifieeConst::onHostTableFlushReplyKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, HostTableFlushReplyDir >;

  static constexpr char koiName[] = "Bridging::HostTableFlushReplyDir";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &HostTableFlushReplyDir::name )
    };
  }
  template< class Self = HostTableFlushReplyDir >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "hostTableFlushReply", &Self::hostTableFlushReply_,
                      &Self::hostTableFlushReplyIs, &Self::hostTableFlushReplyDel )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 1;
  static Koi::KoiType const _koiType;

 private:
  Koi::HashMap< KoiHostTableFlushReply, Koi::String8, bool > hostTableFlushReply_;
};

/// A new HostTableFlushReplyDir without a parent.
KOI_PUBLIC Koi::Ptr< HostTableFlushReplyDir > hostTableFlushReplyDirFactory(
    Koi::Name const & name );

/// The MAC addresses that one writer knows to be reached through tunnels and peers.
class KOI_PUBLIC RemoteMacTable : public Koi::EntityOf< RemoteMacTable > {
 public:
  explicit RemoteMacTable( Koi::Name const & name );

  class KoiRemoteMacEntry;
  /// the entries
  RemoteMacEntry remoteMacEntry( MacVlanPair const & k ) const;
  Koi::HashMap< KoiRemoteMacEntry, MacVlanPair, RemoteMacEntry > const & remoteMacEntry() const {
    return remoteMacEntry_;
  }
  using RemoteMacEntryIterator = Koi::HashMap< KoiRemoteMacEntry, MacVlanPair,
      RemoteMacEntry >::Iterator;
  RemoteMacEntryIterator remoteMacEntryIterator();
  void remoteMacEntryIs( RemoteMacEntry const & v );
  RemoteMacEntry remoteMacEntryDel( MacVlanPair const & k );
  RemoteMacEntry remoteMacEntryDel( RemoteMacEntryIterator const & i );
  void remoteMacEntryDelAll();
  void remoteMacEntryNotify( MacVlanPair const & k );

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< RemoteMacTable > {
   public:
    virtual void onRemoteMacEntry() {}
    virtual void onRemoteMacEntry( MacVlanPair const & ) {}
    virtual void onRemoteMacEntryKoiImmediate( MacVlanPair const & k ) {
      koiPass( koiOnRemoteMacEntry ); onRemoteMacEntry( k );
    }
    static constexpr Koi::Callback< NotifieeConst, MacVlanPair const & > koiOnRemoteMacEntry{
      koiFirst + 0, &NotifieeConst::onRemoteMacEntry,
          &NotifieeConst::onRemoteMacEntryKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, RemoteMacTable >;

  static constexpr char koiName[] = "Bridging::RemoteMacTable";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &RemoteMacTable::name )
    };
  }
  template< class Self = RemoteMacTable >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "remoteMacEntry", &Self::remoteMacEntry_, &Self::remoteMacEntryIs,
                      &Self::remoteMacEntryDel )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 1;
  static Koi::KoiType const _koiType;

 private:
  Koi::HashMap< KoiRemoteMacEntry, MacVlanPair, RemoteMacEntry > remoteMacEntry_;
};

/// A new RemoteMacTable without a parent.
KOI_PUBLIC Koi::Ptr< RemoteMacTable > remoteMacTableFactory( Koi::Name const & name );

}  // namespace Bridging

namespace Bridging::Input {

/// What a source may ask of a switchport: all but routed.
enum SwitchportMode : Koi::U32 {
  access,       ///< carries one VLAN, untagged
  trunk,        ///< carries many, tagged
  dot1qTunnel,  ///< puts whatever comes, tagged or not, into one VLAN
  tap,          ///< takes in a copy of traffic
  tool          ///< gives a copy of traffic to a tool
};
KOI_ENUM( SwitchportMode );

/// How a tool port marks where traffic came from.
enum ToolIdentityMode : Koi::U32 {
  none,   ///< not at all
  dot1q,  ///< by one tag
  qinq    ///< by two
};
KOI_ENUM( ToolIdentityMode );

/// What one source configures of the filtering database of one VLAN.
class KOI_PUBLIC FdbConfig : public Koi::EntityOf< FdbConfig > {
 public:
  explicit FdbConfig( VlanId const & vlanId );

  /// the VLAN
  VlanId vlanId() const { return _vlanId; }

  class KoiConfiguredHost;
  /// configured MAC addresses
  ConfiguredHost configuredHost( Wirex::EthAddr const & k ) const;
  Koi::HashMap< KoiConfiguredHost, Wirex::EthAddr, ConfiguredHost > const & configuredHost() const {
    return configuredHost_;
  }
  using ConfiguredHostIterator = Koi::HashMap< KoiConfiguredHost, Wirex::EthAddr,
      ConfiguredHost >::Iterator;
  ConfiguredHostIterator configuredHostIterator();
  void configuredHostIs( ConfiguredHost const & v );
  ConfiguredHost configuredHostDel( Wirex::EthAddr const & k );
  ConfiguredHost configuredHostDel( ConfiguredHostIterator const & i );
  void configuredHostDelAll();
  void configuredHostNotify( Wirex::EthAddr const & k );

  class KoiEthGroup;
  /// static multicast groups
  Koi::Ptr< EthGroup > ethGroup( Wirex::EthAddr const & k ) const;
  Koi::HashMap< KoiEthGroup, Wirex::EthAddr, Koi::Owned< EthGroup > > const & ethGroup() const {
    return ethGroup_;
  }
  using EthGroupIterator = Koi::HashMap< KoiEthGroup, Wirex::EthAddr,
      Koi::Owned< EthGroup > >::Iterator;
  EthGroupIterator ethGroupIterator();
  /// The one of that key, made when there is none.
  Koi::Ptr< EthGroup > ethGroupIs( Wirex::EthAddr const & k );
  Koi::Ptr< EthGroup > ethGroupDel( Wirex::EthAddr const & k );
  Koi::Ptr< EthGroup > ethGroupDel( EthGroupIterator const & i );
  void ethGroupDelAll();
  void ethGroupNotify( Wirex::EthAddr const & k );

  /// Stores a ConfiguredHost made of these, in place of the one of that address.
  void doCreateConfiguredHost( Wirex::EthAddr const & address, Wirex::IntfId const & intf,
                               EntryType entryType, Koi::String8 const & label );

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< FdbConfig > {
   public:
    virtual void onConfiguredHost() {}
    virtual void onConfiguredHost( Wirex::EthAddr const & ) {}
    virtual void onConfiguredHostKoiImmediate( Wirex::EthAddr const & k ) {
      koiPass( koiOnConfiguredHost ); onConfiguredHost( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Wirex::EthAddr const & > koiOnConfiguredHost{
      koiFirst + 1, &NotifieeConst::onConfiguredHost,
          &NotifieeConst::onConfiguredHostKoiImmediate };

    virtual void onEthGroup() {}
    virtual void onEthGroup( Wirex::EthAddr const & ) {}
    virtual void onEthGroupKoiImmediate( Wirex::EthAddr const & k ) {
      koiPass( koiOnEthGroup ); onEthGroup( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Wirex::EthAddr const & > koiOnEthGroup{
      koiFirst + 2, &NotifieeConst::onEthGroup, &NotifieeConst::onEthGroupKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, FdbConfig >;

  static constexpr char koiName[] = "Bridging::Input::FdbConfig";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_vlanId", &FdbConfig::vlanId )
    };
  }
  template< class Self = FdbConfig >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "vlanId", &Self::_vlanId ),
      Koi::attribute( "configuredHost", &Self::configuredHost_, &Self::configuredHostIs,
                      &Self::configuredHostDel ),
      Koi::attribute( "ethGroup", &Self::ethGroup_, &Self::ethGroupIs, &Self::ethGroupDel )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 3;
  static Koi::KoiType const _koiType;

 private:
  VlanId const _vlanId;
  Koi::HashMap< KoiConfiguredHost, Wirex::EthAddr, ConfiguredHost > configuredHost_;
  Koi::HashMap< KoiEthGroup, Wirex::EthAddr, Koi::Owned< EthGroup > > ethGroup_;
};

/// A new FdbConfig without a parent.
KOI_PUBLIC Koi::Ptr< FdbConfig > fdbConfigFactory( VlanId const & vlanId );

/// What one source asks of one switchport.
class KOI_PUBLIC SwitchIntfConfig : public Koi::EntityOf< SwitchIntfConfig > {
 public:
  SwitchIntfConfig( Wirex::IntfId const & intfId, SwitchportMode switchportMode );

  /// the interface
  Wirex::IntfId intfId() const { return _intfId; }

  /// whether it is a switchport
  bool enabled() const { return enabled_; }
  void enabledIs( bool v ) { koiIs( enabled_, v, NotifieeConst::koiOnEnabled ); }

  /// the mode
  SwitchportMode switchportMode() const { return switchportMode_; }
  void switchportModeIs( SwitchportMode v ) {
    koiIs( switchportMode_, v, NotifieeConst::koiOnSwitchportMode );
  }

  /// the VLAN of an access port
  VlanId accessVlan() const { return accessVlan_; }
  void accessVlanIs( VlanId const & v ) { koiIs( accessVlan_, v, NotifieeConst::koiOnAccessVlan ); }

  /// the native VLAN of a trunk port
  VlanIdOrNone trunkNativeVlan() const { return trunkNativeVlan_; }
  void trunkNativeVlanIs( VlanIdOrNone const & v ) {
    koiIs( trunkNativeVlan_, v, NotifieeConst::koiOnTrunkNativeVlan );
  }

  /// the native VLAN of a tap port
  VlanIdOrNone tapNativeVlan() const { return tapNativeVlan_; }
  void tapNativeVlanIs( VlanIdOrNone const & v ) {
    koiIs( tapNativeVlan_, v, NotifieeConst::koiOnTapNativeVlan );
  }

  /// the tags that identify a tap port
  VlanIdTuple tapIdentificationVlan() const { return tapIdentificationVlan_; }
  void tapIdentificationVlanIs( VlanIdTuple const & v ) {
    koiIs( tapIdentificationVlan_, v, NotifieeConst::koiOnTapIdentificationVlan );
  }

  /// take VXLAN headers off
  bool tapVxlanStrip() const { return tapVxlanStrip_; }
  void tapVxlanStripIs( bool v ) { koiIs( tapVxlanStrip_, v, NotifieeConst::koiOnTapVxlanStrip ); }

  /// take MPLS labels off
  bool tapMplsPop() const { return tapMplsPop_; }
  void tapMplsPopIs( bool v ) { koiIs( tapMplsPop_, v, NotifieeConst::koiOnTapMplsPop ); }

  /// VLANs of a trunk port, a range list
  Koi::String8 trunkAllowedVlans() const { return trunkAllowedVlans_; }
  void trunkAllowedVlansIs( Koi::String8 const & v ) {
    koiIs( trunkAllowedVlans_, v, NotifieeConst::koiOnTrunkAllowedVlans );
  }

  /// VLANs of a tap port, a range list
  Koi::String8 tapAllowedVlans() const { return tapAllowedVlans_; }
  void tapAllowedVlansIs( Koi::String8 const & v ) {
    koiIs( tapAllowedVlans_, v, NotifieeConst::koiOnTapAllowedVlans );
  }

  /// VLANs of a tool port, a range list
  Koi::String8 toolAllowedVlans() const { return toolAllowedVlans_; }
  void toolAllowedVlansIs( Koi::String8 const & v ) {
    koiIs( toolAllowedVlans_, v, NotifieeConst::koiOnToolAllowedVlans );
  }

  class KoiTrunkGroup;
  /// the trunk groups that it belongs to
  bool trunkGroup( Koi::String8 const & k ) const;
  Koi::HashMap< KoiTrunkGroup, Koi::String8, bool > const & trunkGroup() const {
    return trunkGroup_;
  }
  using TrunkGroupIterator = Koi::HashMap< KoiTrunkGroup, Koi::String8, bool >::Iterator;
  TrunkGroupIterator trunkGroupIterator();
  void trunkGroupIs( Koi::String8 const & k, bool v );
  bool trunkGroupDel( Koi::String8 const & k );
  bool trunkGroupDel( TrunkGroupIterator const & i );
  void trunkGroupDelAll();
  void trunkGroupNotify( Koi::String8 const & k );

  /// do not flood unicast out of it
  bool blockUnknownUnicast() const { return blockUnknownUnicast_; }
  void blockUnknownUnicastIs( bool v ) {
    koiIs( blockUnknownUnicast_, v, NotifieeConst::koiOnBlockUnknownUnicast );
  }

  /// do not flood multicast out of it
  bool blockUnknownMulticast() const { return blockUnknownMulticast_; }
  void blockUnknownMulticastIs( bool v ) {
    koiIs( blockUnknownMulticast_, v, NotifieeConst::koiOnBlockUnknownMulticast );
  }

  /// learn source MAC addresses on it
  bool macLearningEnabled() const { return macLearningEnabled_; }
  void macLearningEnabledIs( bool v ) {
    koiIs( macLearningEnabled_, v, NotifieeConst::koiOnMacLearningEnabled );
  }

  /// flood out of it
  bool floodingEnabled() const { return floodingEnabled_; }
  void floodingEnabledIs( bool v ) {
    koiIs( floodingEnabled_, v, NotifieeConst::koiOnFloodingEnabled );
  }

  /// map all secondary VLANs of the port's primary
  bool defaultPrivateVlanMapping() const { return defaultPrivateVlanMapping_; }
  void defaultPrivateVlanMappingIs( bool v ) {
    koiIs( defaultPrivateVlanMapping_, v, NotifieeConst::koiOnDefaultPrivateVlanMapping );
  }

  class KoiPrivateVlanMapping;
  /// else those with an entry
  bool privateVlanMapping( VlanId const & k ) const;
  Koi::HashMap< KoiPrivateVlanMapping, VlanId, bool > const & privateVlanMapping() const {
    return privateVlanMapping_;
  }
  using PrivateVlanMappingIterator = Koi::HashMap< KoiPrivateVlanMapping, VlanId, bool >::Iterator;
  PrivateVlanMappingIterator privateVlanMappingIterator();
  void privateVlanMappingIs( VlanId const & k, bool v );
  bool privateVlanMappingDel( VlanId const & k );
  bool privateVlanMappingDel( PrivateVlanMappingIterator const & i );
  void privateVlanMappingDelAll();
  void privateVlanMappingNotify( VlanId const & k );

  /// how a tool port marks where traffic came from
  ToolIdentityMode toolIdentityTagging() const { return toolIdentityTagging_; }
  void toolIdentityTaggingIs( ToolIdentityMode v ) {
    koiIs( toolIdentityTagging_, v, NotifieeConst::koiOnToolIdentityTagging );
  }

  /// tags taken off towards a tool, a range list
  Koi::String8 toolDot1qRemoveVlans() const { return toolDot1qRemoveVlans_; }
  void toolDot1qRemoveVlansIs( Koi::String8 const & v ) {
    koiIs( toolDot1qRemoveVlans_, v, NotifieeConst::koiOnToolDot1qRemoveVlans );
  }

  /// to how many bytes tap traffic is cut; 0 not at all, 1 as the switch says
  Koi::U16 tapTruncationSize() const { return tapTruncationSize_; }
  /// Keeps what it refuses.
  void tapTruncationSizeIs( Koi::U16 v );

  /// the tapTruncationSize that means: as the switch says
  static constexpr Koi::U16 tapTruncationUseGlobalSize() { return 1; }

  /// the largest tapTruncationSize
  static constexpr Koi::U16 tapTruncationSizeMax() { return 9236; }

  /// to how many bytes tool traffic is cut; 0 not at all, 1 as the switch says
  Koi::U16 toolTruncationSize() const { return toolTruncationSize_; }
  /// Keeps what it refuses.
  void toolTruncationSizeIs( Koi::U16 v );

  /// the toolTruncationSize that means: as the switch says
  static constexpr Koi::U16 toolTruncationUseGlobalSize() { return 1; }

  /// the largest toolTruncationSize
  static constexpr Koi::U16 toolTruncationSizeMax() { return 9236; }

  /// the tap group of a port that names none
  static Koi::String8 tapGroupDefault() { return "default.null.group"; }

  class KoiTapGroup;
  /// its tap groups
  bool tapGroup( Koi::String8 const & k ) const;
  Koi::HashMap< KoiTapGroup, Koi::String8, bool > const & tapGroup() const { return tapGroup_; }
  using TapGroupIterator = Koi::HashMap< KoiTapGroup, Koi::String8, bool >::Iterator;
  TapGroupIterator tapGroupIterator();
  void tapGroupIs( Koi::String8 const & k, bool v );
  bool tapGroupDel( Koi::String8 const & k );
  bool tapGroupDel( TapGroupIterator const & i );
  void tapGroupDelAll();
  void tapGroupNotify( Koi::String8 const & k );

  class KoiTapRawIntf;
  /// the raw interfaces of a tap port
  bool tapRawIntf( Wirex::IntfId const & k ) const;
  Koi::HashMap< KoiTapRawIntf, Wirex::IntfId, bool > const & tapRawIntf() const {
    return tapRawIntf_;
  }
  using TapRawIntfIterator = Koi::HashMap< KoiTapRawIntf, Wirex::IntfId, bool >::Iterator;
  TapRawIntfIterator tapRawIntfIterator();
  void tapRawIntfIs( Wirex::IntfId const & k, bool v );
  bool tapRawIntfDel( Wirex::IntfId const & k );
  bool tapRawIntfDel( TapRawIntfIterator const & i );
  void tapRawIntfDelAll();
  void tapRawIntfNotify( Wirex::IntfId const & k );

  class KoiToolGroup;
  /// its tool groups
  bool toolGroup( Koi::String8 const & k ) const;
  Koi::HashMap< KoiToolGroup, Koi::String8, bool > const & toolGroup() const { return toolGroup_; }
  using ToolGroupIterator = Koi::HashMap< KoiToolGroup, Koi::String8, bool >::Iterator;
  ToolGroupIterator toolGroupIterator();
  void toolGroupIs( Koi::String8 const & k, bool v );
  bool toolGroupDel( Koi::String8 const & k );
  bool toolGroupDel( ToolGroupIterator const & i );
  void toolGroupDelAll();
  void toolGroupNotify( Koi::String8 const & k );

  /// ingress translation of the native VLAN
  VlanIdOrNone ingressNativeVlanXlate() const { return ingressNativeVlanXlate_; }
  void ingressNativeVlanXlateIs( VlanIdOrNone const & v ) {
    koiIs( ingressNativeVlanXlate_, v, NotifieeConst::koiOnIngressNativeVlanXlate );
  }

  /// egress translation of the native VLAN
  VlanIdOrNone egressNativeVlanXlate() const { return egressNativeVlanXlate_; }
  void egressNativeVlanXlateIs( VlanIdOrNone const & v ) {
    koiIs( egressNativeVlanXlate_, v, NotifieeConst::koiOnEgressNativeVlanXlate );
  }

  class KoiIngressVlanXlate;
  /// ingress VLAN translations
  VlanXlateMapping ingressVlanXlate( VlanXlateKey const & k ) const;
  Koi::HashMap< KoiIngressVlanXlate, VlanXlateKey,
      VlanXlateMapping > const & ingressVlanXlate() const {
    return ingressVlanXlate_;
  }
  using IngressVlanXlateIterator = Koi::HashMap< KoiIngressVlanXlate, VlanXlateKey,
      VlanXlateMapping >::Iterator;
  IngressVlanXlateIterator ingressVlanXlateIterator();
  void ingressVlanXlateIs( VlanXlateKey const & k, VlanXlateMapping const & v );
  VlanXlateMapping ingressVlanXlateDel( VlanXlateKey const & k );
  VlanXlateMapping ingressVlanXlateDel( IngressVlanXlateIterator const & i );
  void ingressVlanXlateDelAll();
  void ingressVlanXlateNotify( VlanXlateKey const & k );

  class KoiEgressVlanXlate;
  /// egress VLAN translations
  VlanXlateMapping egressVlanXlate( VlanXlateKey const & k ) const;
  Koi::HashMap< KoiEgressVlanXlate, VlanXlateKey,
      VlanXlateMapping > const & egressVlanXlate() const {
    return egressVlanXlate_;
  }
  using EgressVlanXlateIterator = Koi::HashMap< KoiEgressVlanXlate, VlanXlateKey,
      VlanXlateMapping >::Iterator;
  EgressVlanXlateIterator egressVlanXlateIterator();
  void egressVlanXlateIs( VlanXlateKey const & k, VlanXlateMapping const & v );
  VlanXlateMapping egressVlanXlateDel( VlanXlateKey const & k );
  VlanXlateMapping egressVlanXlateDel( EgressVlanXlateIterator const & i );
  void egressVlanXlateDelAll();
  void egressVlanXlateNotify( VlanXlateKey const & k );

  /// private-VLAN mapping on a trunk
  bool trunkPrivateVlanMapping() const { return trunkPrivateVlanMapping_; }
  void trunkPrivateVlanMappingIs( bool v ) {
    koiIs( trunkPrivateVlanMapping_, v, NotifieeConst::koiOnTrunkPrivateVlanMapping );
  }

  /// announces the tags that count on it
  VlanTpidOrNone vlanTpid() const { return vlanTpid_; }
  void vlanTpidIs( VlanTpidOrNone const & v ) {
    koiIs( vlanTpid_, v, NotifieeConst::koiOnVlanTpid );
  }

  class KoiVlanTagFormatDrop;
  /// tag formats that it drops
  bool vlanTagFormatDrop( VlanTagFormat k ) const;
  Koi::HashMap< KoiVlanTagFormatDrop, VlanTagFormat, bool > const & vlanTagFormatDrop() const {
    return vlanTagFormatDrop_;
  }
  using VlanTagFormatDropIterator = Koi::HashMap< KoiVlanTagFormatDrop, VlanTagFormat,
      bool >::Iterator;
  VlanTagFormatDropIterator vlanTagFormatDropIterator();
  void vlanTagFormatDropIs( VlanTagFormat k, bool v );
  bool vlanTagFormatDropDel( VlanTagFormat k );
  bool vlanTagFormatDropDel( VlanTagFormatDropIterator const & i );
  void vlanTagFormatDropDelAll();
  void vlanTagFormatDropNotify( VlanTagFormat k );

  class KoiVlanMappingRequired;
  /// directions that require a translation
  bool vlanMappingRequired( VlanMappingDirection k ) const;
  Koi::HashMap< KoiVlanMappingRequired, VlanMappingDirection,
      bool > const & vlanMappingRequired() const {
    return vlanMappingRequired_;
  }
  using VlanMappingRequiredIterator = Koi::HashMap< KoiVlanMappingRequired, VlanMappingDirection,
      bool >::Iterator;
  VlanMappingRequiredIterator vlanMappingRequiredIterator();
  void vlanMappingRequiredIs( VlanMappingDirection k, bool v );
  bool vlanMappingRequiredDel( VlanMappingDirection k );
  bool vlanMappingRequiredDel( VlanMappingRequiredIterator const & i );
  void vlanMappingRequiredDelAll();
  void vlanMappingRequiredNotify( VlanMappingDirection k );

  /// keeps frames from going back out
  SourceportFilterMode sourceportFilterMode() const { return sourceportFilterMode_; }
  void sourceportFilterModeIs( SourceportFilterMode v ) {
    koiIs( sourceportFilterMode_, v, NotifieeConst::koiOnSourceportFilterMode );
  }

  /// who wrote this
  Koi::String8 source() const { return source_; }
  void sourceIs( Koi::String8 const & v ) { koiIs( source_, v, NotifieeConst::koiOnSource ); }

  /// counts what its writer wrote
  Koi::U32 version() const { return version_; }
  void versionIs( Koi::U32 v ) { koiIs( version_, v, NotifieeConst::koiOnVersion ); }

  /// the VLAN of a Layer-2 sub-interface
  VlanNameOrId l2SubIntfVlan() const { return l2SubIntfVlan_; }
  void l2SubIntfVlanIs( VlanNameOrId const & v ) {
    koiIs( l2SubIntfVlan_, v, NotifieeConst::koiOnL2SubIntfVlan );
  }

  /// the same request: all but the interface, who wrote it, and its version
  bool isEqual( SwitchIntfConfig const & other ) const;

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< SwitchIntfConfig > {
   public:
    virtual void onEnabled() {}
    virtual void onEnabledKoiImmediate() { koiPass( koiOnEnabled ); onEnabled(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnEnabled{
      koiFirst + 1, &NotifieeConst::onEnabled, &NotifieeConst::onEnabledKoiImmediate };

    virtual void onSwitchportMode() {}
    virtual void onSwitchportModeKoiImmediate() {
      koiPass( koiOnSwitchportMode ); onSwitchportMode();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnSwitchportMode{
      koiFirst + 2, &NotifieeConst::onSwitchportMode,
          &NotifieeConst::onSwitchportModeKoiImmediate };

    virtual void onAccessVlan() {}
    virtual void onAccessVlanKoiImmediate() { koiPass( koiOnAccessVlan ); onAccessVlan(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnAccessVlan{
      koiFirst + 3, &NotifieeConst::onAccessVlan, &NotifieeConst::onAccessVlanKoiImmediate };

    virtual void onTrunkNativeVlan() {}
    virtual void onTrunkNativeVlanKoiImmediate() {
      koiPass( koiOnTrunkNativeVlan ); onTrunkNativeVlan();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnTrunkNativeVlan{
      koiFirst + 4, &NotifieeConst::onTrunkNativeVlan,
          &NotifieeConst::onTrunkNativeVlanKoiImmediate };

    virtual void onTapNativeVlan() {}
    virtual void onTapNativeVlanKoiImmediate() { koiPass( koiOnTapNativeVlan ); onTapNativeVlan(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnTapNativeVlan{
      koiFirst + 5, &NotifieeConst::onTapNativeVlan, &NotifieeConst::onTapNativeVlanKoiImmediate };

    virtual void onTapIdentificationVlan() {}
    virtual void onTapIdentificationVlanKoiImmediate() {
      koiPass( koiOnTapIdentificationVlan ); onTapIdentificationVlan();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnTapIdentificationVlan{
      koiFirst + 6, &NotifieeConst::onTapIdentificationVlan,
          &NotifieeConst::onTapIdentificationVlanKoiImmediate };

    virtual void onTapVxlanStrip() {}
    virtual void onTapVxlanStripKoiImmediate() { koiPass( koiOnTapVxlanStrip ); onTapVxlanStrip(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnTapVxlanStrip{
      koiFirst + 7, &NotifieeConst::onTapVxlanStrip, &NotifieeConst::onTapVxlanStripKoiImmediate };

    virtual void onTapMplsPop() {}
    virtual void onTapMplsPopKoiImmediate() { koiPass( koiOnTapMplsPop ); onTapMplsPop(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnTapMplsPop{
      koiFirst + 8, &NotifieeConst::onTapMplsPop, &NotifieeConst::onTapMplsPopKoiImmediate };

    virtual void onTrunkAllowedVlans() {}
    virtual void onTrunkAllowedVlansKoiImmediate() {
      koiPass( koiOnTrunkAllowedVlans ); onTrunkAllowedVlans();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnTrunkAllowedVlans{
      koiFirst + 9, &NotifieeConst::onTrunkAllowedVlans,
          &NotifieeConst::onTrunkAllowedVlansKoiImmediate };

    virtual void onTapAllowedVlans() {}
    virtual void onTapAllowedVlansKoiImmediate() {
      koiPass( koiOnTapAllowedVlans ); onTapAllowedVlans();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnTapAllowedVlans{
      koiFirst + 10, &NotifieeConst::onTapAllowedVlans,
          &NotifieeConst::onTapAllowedVlansKoiImmediate };

    virtual void onToolAllowedVlans() {}
    virtual void onToolAllowedVlansKoiImmediate() {
      koiPass( koiOnToolAllowedVlans ); onToolAllowedVlans();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnToolAllowedVlans{
      koiFirst + 11, &NotifieeConst::onToolAllowedVlans,
          &NotifieeConst::onToolAllowedVlansKoiImmediate };

    virtual void onTrunkGroup() {}
    virtual void onTrunkGroup( Koi::String8 const & ) {}
    virtual void onTrunkGroupKoiImmediate( Koi::String8 const & k ) {
      koiPass( koiOnTrunkGroup ); onTrunkGroup( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Koi::String8 const & > koiOnTrunkGroup{
      koiFirst + 12, &NotifieeConst::onTrunkGroup, &NotifieeConst::onTrunkGroupKoiImmediate };

    virtual void onBlockUnknownUnicast() {}
    virtual void onBlockUnknownUnicastKoiImmediate() {
      koiPass( koiOnBlockUnknownUnicast ); onBlockUnknownUnicast();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnBlockUnknownUnicast{
      koiFirst + 13, &NotifieeConst::onBlockUnknownUnicast,
          &NotifieeConst::onBlockUnknownUnicastKoiImmediate };

    virtual void onBlockUnknownMulticast() {}
    virtual void onBlockUnknownMulticastKoiImmediate() {
      koiPass( koiOnBlockUnknownMulticast ); onBlockUnknownMulticast();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnBlockUnknownMulticast{
      koiFirst + 14, &NotifieeConst::onBlockUnknownMulticast,
          &NotifieeConst::onBlockUnknownMulticastKoiImmediate };

    virtual void onMacLearningEnabled() {}
    virtual void onMacLearningEnabledKoiImmediate() {
      koiPass( koiOnMacLearningEnabled ); onMacLearningEnabled();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnMacLearningEnabled{
      koiFirst + 15, &NotifieeConst::onMacLearningEnabled,
          &NotifieeConst::onMacLearningEnabledKoiImmediate };

    virtual void onFloodingEnabled() {}
    virtual void onFloodingEnabledKoiImmediate() {
      koiPass( koiOnFloodingEnabled ); onFloodingEnabled();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnFloodingEnabled{
      koiFirst + 16, &NotifieeConst::onFloodingEnabled,
          &NotifieeConst::onFloodingEnabledKoiImmediate };

    virtual void onDefaultPrivateVlanMapping() {}
    virtual void onDefaultPrivateVlanMappingKoiImmediate() {
      koiPass( koiOnDefaultPrivateVlanMapping ); onDefaultPrivateVlanMapping();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnDefaultPrivateVlanMapping{
      koiFirst + 17, &NotifieeConst::onDefaultPrivateVlanMapping,
          &NotifieeConst::onDefaultPrivateVlanMappingKoiImmediate };

    virtual void onPrivateVlanMapping() {}
    virtual void onPrivateVlanMapping( VlanId const & ) {}
    virtual void onPrivateVlanMappingKoiImmediate( VlanId const & k ) {
      koiPass( koiOnPrivateVlanMapping ); onPrivateVlanMapping( k );
    }
    static constexpr Koi::Callback< NotifieeConst, VlanId const & > koiOnPrivateVlanMapping{
      koiFirst + 18, &NotifieeConst::onPrivateVlanMapping,
          &NotifieeConst::onPrivateVlanMappingKoiImmediate };

    virtual void onToolIdentityTagging() {}
    virtual void onToolIdentityTaggingKoiImmediate() {
      koiPass( koiOnToolIdentityTagging ); onToolIdentityTagging();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnToolIdentityTagging{
      koiFirst + 19, &NotifieeConst::onToolIdentityTagging,
          &NotifieeConst::onToolIdentityTaggingKoiImmediate };

    virtual void onToolDot1qRemoveVlans() {}
    virtual void onToolDot1qRemoveVlansKoiImmediate() {
      koiPass( koiOnToolDot1qRemoveVlans ); onToolDot1qRemoveVlans();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnToolDot1qRemoveVlans{
      koiFirst + 20, &NotifieeConst::onToolDot1qRemoveVlans,
          &NotifieeConst::onToolDot1qRemoveVlansKoiImmediate };

    virtual void onTapTruncationSize() {}
    virtual void onTapTruncationSizeKoiImmediate() {
      koiPass( koiOnTapTruncationSize ); onTapTruncationSize();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnTapTruncationSize{
      koiFirst + 21, &NotifieeConst::onTapTruncationSize,
          &NotifieeConst::onTapTruncationSizeKoiImmediate };

    virtual void onToolTruncationSize() {}
    virtual void onToolTruncationSizeKoiImmediate() {
      koiPass( koiOnToolTruncationSize ); onToolTruncationSize();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnToolTruncationSize{
      koiFirst + 24, &NotifieeConst::onToolTruncationSize,
          &NotifieeConst::onToolTruncationSizeKoiImmediate };

    virtual void onTapGroup() {}
    virtual void onTapGroup( Koi::String8 const & ) {}
    virtual void onTapGroupKoiImmediate( Koi::String8 const & k ) {
      koiPass( koiOnTapGroup ); onTapGroup( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Koi::String8 const & > koiOnTapGroup{
      koiFirst + 28, &NotifieeConst::onTapGroup, &NotifieeConst::onTapGroupKoiImmediate };

    virtual void onTapRawIntf() {}
    virtual void onTapRawIntf( Wirex::IntfId const & ) {}
    virtual void onTapRawIntfKoiImmediate( Wirex::IntfId const & k ) {
      koiPass( koiOnTapRawIntf ); onTapRawIntf( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Wirex::IntfId const & > koiOnTapRawIntf{
      koiFirst + 29, &NotifieeConst::onTapRawIntf, &NotifieeConst::onTapRawIntfKoiImmediate };

    virtual void onToolGroup() {}
    virtual void onToolGroup( Koi::String8 const & ) {}
    virtual void onToolGroupKoiImmediate( Koi::String8 const & k ) {
      koiPass( koiOnToolGroup ); onToolGroup( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Koi::String8 const & > koiOnToolGroup{
      koiFirst + 30, &NotifieeConst::onToolGroup, &NotifieeConst::onToolGroupKoiImmediate };

    virtual void onIngressNativeVlanXlate() {}
    virtual void onIngressNativeVlanXlateKoiImmediate() {
      koiPass( koiOnIngressNativeVlanXlate ); onIngressNativeVlanXlate();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnIngressNativeVlanXlate{
      koiFirst + 31, &NotifieeConst::onIngressNativeVlanXlate,
          &NotifieeConst::onIngressNativeVlanXlateKoiImmediate };

    virtual void onEgressNativeVlanXlate() {}
    virtual void onEgressNativeVlanXlateKoiImmediate() {
      koiPass( koiOnEgressNativeVlanXlate ); onEgressNativeVlanXlate();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnEgressNativeVlanXlate{
      koiFirst + 32, &NotifieeConst::onEgressNativeVlanXlate,
          &NotifieeConst::onEgressNativeVlanXlateKoiImmediate };

    virtual void onIngressVlanXlate() {}
    virtual void onIngressVlanXlate( VlanXlateKey const & ) {}
    virtual void onIngressVlanXlateKoiImmediate( VlanXlateKey const & k ) {
      koiPass( koiOnIngressVlanXlate ); onIngressVlanXlate( k );
    }
    static constexpr Koi::Callback< NotifieeConst, VlanXlateKey const & > koiOnIngressVlanXlate{
      koiFirst + 33, &NotifieeConst::onIngressVlanXlate,
          &NotifieeConst::onIngressVlanXlateKoiImmediate };

    virtual void onEgressVlanXlate() {}
    virtual void onEgressVlanXlate( VlanXlateKey const & ) {}
    virtual void onEgressVlanXlateKoiImmediate( VlanXlateKey const & k ) {
      koiPass( koiOnEgressVlanXlate ); onEgressVlanXlate( k );
    }
    static constexpr Koi::Callback< NotifieeConst, VlanXlateKey const & > koiOnEgressVlanXlate{
      koiFirst + 34, &NotifieeConst::onEgressVlanXlate,
          &NotifieeConst::onEgressVlanXlateKoiImmediate };

    virtual void onTrunkPrivateVlanMapping() {}
    virtual void onTrunkPrivateVlanMappingKoiImmediate() {
      koiPass( koiOnTrunkPrivateVlanMapping ); onTrunkPrivateVlanMapping();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnTrunkPrivateVlanMapping{
      koiFirst + 35, &NotifieeConst::onTrunkPrivateVlanMapping,
          &NotifieeConst::onTrunkPrivateVlanMappingKoiImmediate };

    virtual void onVlanTpid() {}
    virtual void onVlanTpidKoiImmediate() { koiPass( koiOnVlanTpid ); onVlanTpid(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnVlanTpid{
      koiFirst + 36, &NotifieeConst::onVlanTpid, &NotifieeConst::onVlanTpidKoiImmediate };

    virtual void onVlanTagFormatDrop() {}
    virtual void onVlanTagFormatDrop( VlanTagFormat ) {}
    virtual void onVlanTagFormatDropKoiImmediate( VlanTagFormat k ) {
      koiPass( koiOnVlanTagFormatDrop ); onVlanTagFormatDrop( k );
    }
    static constexpr Koi::Callback< NotifieeConst, VlanTagFormat > koiOnVlanTagFormatDrop{
      koiFirst + 37, &NotifieeConst::onVlanTagFormatDrop,
          &NotifieeConst::onVlanTagFormatDropKoiImmediate };

    virtual void onVlanMappingRequired() {}
    virtual void onVlanMappingRequired( VlanMappingDirection ) {}
    virtual void onVlanMappingRequiredKoiImmediate( VlanMappingDirection k ) {
      koiPass( koiOnVlanMappingRequired ); onVlanMappingRequired( k );
    }
    static constexpr Koi::Callback< NotifieeConst, VlanMappingDirection > koiOnVlanMappingRequired{
      koiFirst + 38, &NotifieeConst::onVlanMappingRequired,
          &NotifieeConst::onVlanMappingRequiredKoiImmediate };

    virtual void onSourceportFilterMode() {}
    virtual void onSourceportFilterModeKoiImmediate() {
      koiPass( koiOnSourceportFilterMode ); onSourceportFilterMode();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnSourceportFilterMode{
      koiFirst + 39, &NotifieeConst::onSourceportFilterMode,
          &NotifieeConst::onSourceportFilterModeKoiImmediate };

    virtual void onSource() {}
    virtual void onSourceKoiImmediate() { koiPass( koiOnSource ); onSource(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnSource{
      koiFirst + 40, &NotifieeConst::onSource, &NotifieeConst::onSourceKoiImmediate };

    virtual void onVersion() {}
    virtual void onVersionKoiImmediate() { koiPass( koiOnVersion ); onVersion(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnVersion{
      koiFirst + 41, &NotifieeConst::onVersion, &NotifieeConst::onVersionKoiImmediate };

    virtual void onL2SubIntfVlan() {}
    virtual void onL2SubIntfVlanKoiImmediate() { koiPass( koiOnL2SubIntfVlan ); onL2SubIntfVlan(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnL2SubIntfVlan{
      koiFirst + 42, &NotifieeConst::onL2SubIntfVlan, &NotifieeConst::onL2SubIntfVlanKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, SwitchIntfConfig >;

  static constexpr char koiName[] = "Bridging::Input::SwitchIntfConfig";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_intfId", &SwitchIntfConfig::intfId ),
      Koi::initial( "_switchportMode", &SwitchIntfConfig::switchportMode )
    };
  }
  template< class Self = SwitchIntfConfig >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "intfId", &Self::_intfId ),
      Koi::attribute( "enabled", &Self::enabled_, &Self::enabledIs ),
      Koi::attribute( "switchportMode", &Self::switchportMode_, &Self::switchportModeIs ),
      Koi::attribute( "accessVlan", &Self::accessVlan_, &Self::accessVlanIs ),
      Koi::attribute( "trunkNativeVlan", &Self::trunkNativeVlan_, &Self::trunkNativeVlanIs ),
      Koi::attribute( "tapNativeVlan", &Self::tapNativeVlan_, &Self::tapNativeVlanIs ),
      Koi::attribute( "tapIdentificationVlan", &Self::tapIdentificationVlan_,
                      &Self::tapIdentificationVlanIs ),
      Koi::attribute( "tapVxlanStrip", &Self::tapVxlanStrip_, &Self::tapVxlanStripIs ),
      Koi::attribute( "tapMplsPop", &Self::tapMplsPop_, &Self::tapMplsPopIs ),
      Koi::attribute( "trunkAllowedVlans", &Self::trunkAllowedVlans_, &Self::trunkAllowedVlansIs ),
      Koi::attribute( "tapAllowedVlans", &Self::tapAllowedVlans_, &Self::tapAllowedVlansIs ),
      Koi::attribute( "toolAllowedVlans", &Self::toolAllowedVlans_, &Self::toolAllowedVlansIs ),
      Koi::attribute( "trunkGroup", &Self::trunkGroup_, &Self::trunkGroupIs, &Self::trunkGroupDel ),
      Koi::attribute( "blockUnknownUnicast", &Self::blockUnknownUnicast_,
                      &Self::blockUnknownUnicastIs ),
      Koi::attribute( "blockUnknownMulticast", &Self::blockUnknownMulticast_,
                      &Self::blockUnknownMulticastIs ),
      Koi::attribute( "macLearningEnabled", &Self::macLearningEnabled_,
                      &Self::macLearningEnabledIs ),
      Koi::attribute( "floodingEnabled", &Self::floodingEnabled_, &Self::floodingEnabledIs ),
      Koi::attribute( "defaultPrivateVlanMapping", &Self::defaultPrivateVlanMapping_,
                      &Self::defaultPrivateVlanMappingIs ),
      Koi::attribute( "privateVlanMapping", &Self::privateVlanMapping_, &Self::privateVlanMappingIs,
                      &Self::privateVlanMappingDel ),
      Koi::attribute( "toolIdentityTagging", &Self::toolIdentityTagging_,
                      &Self::toolIdentityTaggingIs ),
      Koi::attribute( "toolDot1qRemoveVlans", &Self::toolDot1qRemoveVlans_,
                      &Self::toolDot1qRemoveVlansIs ),
      Koi::attribute( "tapTruncationSize", &Self::tapTruncationSize_, &Self::tapTruncationSizeIs,
                      &Self::tapTruncationSizeMax ),
      Koi::constant< Self >( "tapTruncationUseGlobalSize", &Self::tapTruncationUseGlobalSize ),
      Koi::constant< Self >( "tapTruncationSizeMax", &Self::tapTruncationSizeMax ),
      Koi::attribute( "toolTruncationSize", &Self::toolTruncationSize_, &Self::toolTruncationSizeIs,
                      &Self::toolTruncationSizeMax ),
      Koi::constant< Self >( "toolTruncationUseGlobalSize", &Self::toolTruncationUseGlobalSize ),
      Koi::constant< Self >( "toolTruncationSizeMax", &Self::toolTruncationSizeMax ),
      Koi::constant< Self >( "tapGroupDefault", &Self::tapGroupDefault ),
      Koi::attribute( "tapGroup", &Self::tapGroup_, &Self::tapGroupIs, &Self::tapGroupDel ),
      Koi::attribute( "tapRawIntf", &Self::tapRawIntf_, &Self::tapRawIntfIs, &Self::tapRawIntfDel ),
      Koi::attribute( "toolGroup", &Self::toolGroup_, &Self::toolGroupIs, &Self::toolGroupDel ),
      Koi::attribute( "ingressNativeVlanXlate", &Self::ingressNativeVlanXlate_,
                      &Self::ingressNativeVlanXlateIs ),
      Koi::attribute( "egressNativeVlanXlate", &Self::egressNativeVlanXlate_,
                      &Self::egressNativeVlanXlateIs ),
      Koi::attribute( "ingressVlanXlate", &Self::ingressVlanXlate_, &Self::ingressVlanXlateIs,
                      &Self::ingressVlanXlateDel ),
      Koi::attribute( "egressVlanXlate", &Self::egressVlanXlate_, &Self::egressVlanXlateIs,
                      &Self::egressVlanXlateDel ),
      Koi::attribute( "trunkPrivateVlanMapping", &Self::trunkPrivateVlanMapping_,
                      &Self::trunkPrivateVlanMappingIs ),
      Koi::attribute( "vlanTpid", &Self::vlanTpid_, &Self::vlanTpidIs ),
      Koi::attribute( "vlanTagFormatDrop", &Self::vlanTagFormatDrop_, &Self::vlanTagFormatDropIs,
                      &Self::vlanTagFormatDropDel ),
      Koi::attribute( "vlanMappingRequired", &Self::vlanMappingRequired_,
                      &Self::vlanMappingRequiredIs, &Self::vlanMappingRequiredDel ),
      Koi::attribute( "sourceportFilterMode", &Self::sourceportFilterMode_,
                      &Self::sourceportFilterModeIs ),
      Koi::attribute( "source", &Self::source_, &Self::sourceIs ),
      Koi::attribute( "version", &Self::version_, &Self::versionIs ),
      Koi::attribute( "l2SubIntfVlan", &Self::l2SubIntfVlan_, &Self::l2SubIntfVlanIs )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 43;
  static Koi::KoiType const _koiType;

 private:
  Wirex::IntfId const _intfId;
  bool enabled_ = true;
  SwitchportMode switchportMode_{};
  VlanId accessVlan_ = VlanId( 1 );
  VlanIdOrNone trunkNativeVlan_ = VlanIdOrNone( 1 );
  VlanIdOrNone tapNativeVlan_ = VlanIdOrNone( 1 );
  VlanIdTuple tapIdentificationVlan_{};
  bool tapVxlanStrip_{};
  bool tapMplsPop_{};
  Koi::String8 trunkAllowedVlans_ = "1-4094";
  Koi::String8 tapAllowedVlans_ = "1-4094";
  Koi::String8 toolAllowedVlans_ = "1-4094";
  Koi::HashMap< KoiTrunkGroup, Koi::String8, bool > trunkGroup_;
  bool blockUnknownUnicast_{};
  bool blockUnknownMulticast_{};
  bool macLearningEnabled_ = true;
  bool floodingEnabled_ = true;
  bool defaultPrivateVlanMapping_ = true;
  Koi::HashMap< KoiPrivateVlanMapping, VlanId, bool > privateVlanMapping_;
  ToolIdentityMode toolIdentityTagging_{};
  Koi::String8 toolDot1qRemoveVlans_{};
  Koi::U16 tapTruncationSize_{};
  Koi::U16 toolTruncationSize_{};
  Koi::HashMap< KoiTapGroup, Koi::String8, bool > tapGroup_;
  Koi::HashMap< KoiTapRawIntf, Wirex::IntfId, bool > tapRawIntf_;
  Koi::HashMap< KoiToolGroup, Koi::String8, bool > toolGroup_;
  VlanIdOrNone ingressNativeVlanXlate_{};
  VlanIdOrNone egressNativeVlanXlate_{};
  Koi::HashMap< KoiIngressVlanXlate, VlanXlateKey, VlanXlateMapping > ingressVlanXlate_;
  Koi::HashMap< KoiEgressVlanXlate, VlanXlateKey, VlanXlateMapping > egressVlanXlate_;
  bool trunkPrivateVlanMapping_{};
  VlanTpidOrNone vlanTpid_ = VlanTpidOrNone( 0x8100 );
  Koi::HashMap< KoiVlanTagFormatDrop, VlanTagFormat, bool > vlanTagFormatDrop_;
  Koi::HashMap< KoiVlanMappingRequired, VlanMappingDirection, bool > vlanMappingRequired_;
  SourceportFilterMode sourceportFilterMode_ = SourceportFilterMode::sourceportFilterEnabled;
  Koi::String8 source_{};
  Koi::U32 version_{};
  VlanNameOrId l2SubIntfVlan_{};
};

/// A new SwitchIntfConfig without a parent.
KOI_PUBLIC Koi::Ptr< SwitchIntfConfig > switchIntfConfigFactory( Wirex::IntfId const & intfId,
    SwitchportMode switchportMode );

/// What one source asks of one VLAN.
class KOI_PUBLIC VlanConfig : public Koi::EntityOf< VlanConfig > {
 public:
  explicit VlanConfig( VlanId const & vlanId );

  /// the VLAN
  VlanId vlanId() const { return _vlanId; }

  /// the name; empty for the default
  Koi::String8 configuredName() const { return configuredName_; }
  void configuredNameIs( Koi::String8 const & v ) {
    koiIs( configuredName_, v, NotifieeConst::koiOnConfiguredName );
  }

  /// "default" for VLAN 1, else "VLAN" and four digits
  Koi::String8 defaultName() const;

  /// active or suspended
  VlanAdminState adminState() const { return adminState_; }
  void adminStateIs( VlanAdminState v ) { koiIs( adminState_, v, NotifieeConst::koiOnAdminState ); }

  /// learn MAC addresses in it
  bool macLearning() const { return macLearning_; }
  void macLearningIs( bool v ) { koiIs( macLearning_, v, NotifieeConst::koiOnMacLearning ); }

  class KoiTrunkGroup;
  /// the trunk groups that it belongs to
  bool trunkGroup( Koi::String8 const & k ) const;
  Koi::HashMap< KoiTrunkGroup, Koi::String8, bool > const & trunkGroup() const {
    return trunkGroup_;
  }
  using TrunkGroupIterator = Koi::HashMap< KoiTrunkGroup, Koi::String8, bool >::Iterator;
  TrunkGroupIterator trunkGroupIterator();
  void trunkGroupIs( Koi::String8 const & k, bool v );
  bool trunkGroupDel( Koi::String8 const & k );
  bool trunkGroupDel( TrunkGroupIterator const & i );
  void trunkGroupDelAll();
  void trunkGroupNotify( Koi::String8 const & k );

  /// its private-VLAN role
  VlanTypeAndPrimaryVlan vlanTypeAndPrimaryVlan() const { return vlanTypeAndPrimaryVlan_; }
  void vlanTypeAndPrimaryVlanIs( VlanTypeAndPrimaryVlan const & v ) {
    koiIs( vlanTypeAndPrimaryVlan_, v, NotifieeConst::koiOnVlanTypeAndPrimaryVlan );
  }

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< VlanConfig > {
   public:
    virtual void onConfiguredName() {}
    virtual void onConfiguredNameKoiImmediate() {
      koiPass( koiOnConfiguredName ); onConfiguredName();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnConfiguredName{
      koiFirst + 1, &NotifieeConst::onConfiguredName,
          &NotifieeConst::onConfiguredNameKoiImmediate };

    virtual void onAdminState() {}
    virtual void onAdminStateKoiImmediate() { koiPass( koiOnAdminState ); onAdminState(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnAdminState{
      koiFirst + 3, &NotifieeConst::onAdminState, &NotifieeConst::onAdminStateKoiImmediate };

    virtual void onMacLearning() {}
    virtual void onMacLearningKoiImmediate() { koiPass( koiOnMacLearning ); onMacLearning(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnMacLearning{
      koiFirst + 4, &NotifieeConst::onMacLearning, &NotifieeConst::onMacLearningKoiImmediate };

    virtual void onTrunkGroup() {}
    virtual void onTrunkGroup( Koi::String8 const & ) {}
    virtual void onTrunkGroupKoiImmediate( Koi::String8 const & k ) {
      koiPass( koiOnTrunkGroup ); onTrunkGroup( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Koi::String8 const & > koiOnTrunkGroup{
      koiFirst + 5, &NotifieeConst::onTrunkGroup, &NotifieeConst::onTrunkGroupKoiImmediate };

    virtual void onVlanTypeAndPrimaryVlan() {}
    virtual void onVlanTypeAndPrimaryVlanKoiImmediate() {
      koiPass( koiOnVlanTypeAndPrimaryVlan ); onVlanTypeAndPrimaryVlan();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnVlanTypeAndPrimaryVlan{
      koiFirst + 6, &NotifieeConst::onVlanTypeAndPrimaryVlan,
          &NotifieeConst::onVlanTypeAndPrimaryVlanKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, VlanConfig >;

  static constexpr char koiName[] = "Bridging::Input::VlanConfig";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_vlanId", &VlanConfig::vlanId )
    };
  }
  template< class Self = VlanConfig >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "vlanId", &Self::_vlanId ),
      Koi::attribute( "configuredName", &Self::configuredName_, &Self::configuredNameIs ),
      Koi::computed( "defaultName", &Self::defaultName ),
      Koi::attribute( "adminState", &Self::adminState_, &Self::adminStateIs ),
      Koi::attribute( "macLearning", &Self::macLearning_, &Self::macLearningIs ),
      Koi::attribute( "trunkGroup", &Self::trunkGroup_, &Self::trunkGroupIs, &Self::trunkGroupDel ),
      Koi::attribute( "vlanTypeAndPrimaryVlan", &Self::vlanTypeAndPrimaryVlan_,
                      &Self::vlanTypeAndPrimaryVlanIs )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 7;
  static Koi::KoiType const _koiType;

 private:
  VlanId const _vlanId;
  Koi::String8 configuredName_{};
  VlanAdminState adminState_{};
  bool macLearning_ = true;
  Koi::HashMap< KoiTrunkGroup, Koi::String8, bool > trunkGroup_;
  VlanTypeAndPrimaryVlan vlanTypeAndPrimaryVlan_{};
};

/// A new VlanConfig without a parent.
KOI_PUBLIC Koi::Ptr< VlanConfig > vlanConfigFactory( VlanId const & vlanId );

/// What one source configures. Of each kind of configuration, that of the highest priority
/// prevails.
class KOI_PUBLIC Config : public Koi::EntityOf< Config > {
 public:
  explicit Config( Koi::Name const & name );

  /// of its VLANs
  Koi::U32 vlanConfigPriority() const { return vlanConfigPriority_; }
  void vlanConfigPriorityIs( Koi::U32 v ) {
    koiIs( vlanConfigPriority_, v, NotifieeConst::koiOnVlanConfigPriority );
  }

  /// of its switchports
  Koi::U32 switchIntfConfigPriority() const { return switchIntfConfigPriority_; }
  void switchIntfConfigPriorityIs( Koi::U32 v ) {
    koiIs( switchIntfConfigPriority_, v, NotifieeConst::koiOnSwitchIntfConfigPriority );
  }

  /// of its MAC addresses
  Koi::U32 fdbConfigPriority() const { return fdbConfigPriority_; }
  void fdbConfigPriorityIs( Koi::U32 v ) {
    koiIs( fdbConfigPriority_, v, NotifieeConst::koiOnFdbConfigPriority );
  }

  class KoiVlanConfig;
  /// VLANs
  Koi::Ptr< VlanConfig > vlanConfig( VlanId const & k ) const;
  Koi::HashMap< KoiVlanConfig, VlanId, Koi::Owned< VlanConfig > > const & vlanConfig() const {
    return vlanConfig_;
  }
  using VlanConfigIterator = Koi::HashMap< KoiVlanConfig, VlanId,
      Koi::Owned< VlanConfig > >::Iterator;
  VlanConfigIterator vlanConfigIterator();
  /// The one of that key, made when there is none.
  Koi::Ptr< VlanConfig > vlanConfigIs( VlanId const & k );
  Koi::Ptr< VlanConfig > vlanConfigDel( VlanId const & k );
  Koi::Ptr< VlanConfig > vlanConfigDel( VlanConfigIterator const & i );
  void vlanConfigDelAll();
  void vlanConfigNotify( VlanId const & k );

  class KoiSwitchIntfConfig;
  /// switchports
  Koi::Ptr< SwitchIntfConfig > switchIntfConfig( Wirex::IntfId const & k ) const;
  Koi::HashMap< KoiSwitchIntfConfig, Wirex::IntfId,
      Koi::Owned< SwitchIntfConfig > > const & switchIntfConfig() const {
    return switchIntfConfig_;
  }
  using SwitchIntfConfigIterator = Koi::HashMap< KoiSwitchIntfConfig, Wirex::IntfId,
      Koi::Owned< SwitchIntfConfig > >::Iterator;
  SwitchIntfConfigIterator switchIntfConfigIterator();
  /// The one of that key, made when there is none.
  Koi::Ptr< SwitchIntfConfig > switchIntfConfigIs( Wirex::IntfId const & k,
                                                   SwitchportMode switchportMode );
  Koi::Ptr< SwitchIntfConfig > switchIntfConfigDel( Wirex::IntfId const & k );
  Koi::Ptr< SwitchIntfConfig > switchIntfConfigDel( SwitchIntfConfigIterator const & i );
  void switchIntfConfigDelAll();
  void switchIntfConfigNotify( Wirex::IntfId const & k );

  class KoiFdbConfig;
  /// MAC addresses, per VLAN
  Koi::Ptr< FdbConfig > fdbConfig( VlanId const & k ) const;
  Koi::HashMap< KoiFdbConfig, VlanId, Koi::Owned< FdbConfig > > const & fdbConfig() const {
    return fdbConfig_;
  }
  using FdbConfigIterator = Koi::HashMap< KoiFdbConfig, VlanId, Koi::Owned< FdbConfig > >::Iterator;
  FdbConfigIterator fdbConfigIterator();
  /// The one of that key, made when there is none.
  Koi::Ptr< FdbConfig > fdbConfigIs( VlanId const & k );
  Koi::Ptr< FdbConfig > fdbConfigDel( VlanId const & k );
  Koi::Ptr< FdbConfig > fdbConfigDel( FdbConfigIterator const & i );
  void fdbConfigDelAll();
  void fdbConfigNotify( VlanId const & k );

  /// Sees to it that there is that VLAN. One that is there stays as it is. Raises RangeException
  /// "VlanId::value < 1 or > 4094 not allowed".
  void doCreateVlan( VlanId const & vlanId );

  /// what people call the source
  Koi::String8 sourceDetail() const { return sourceDetail_; }
  void sourceDetailIs( Koi::String8 const & v ) {
    koiIs( sourceDetail_, v, NotifieeConst::koiOnSourceDetail );
  }

  /// it holds more than defaults
  bool nonDefaultVal() const { return nonDefaultVal_; }
  void nonDefaultValIs( bool v ) { koiIs( nonDefaultVal_, v, NotifieeConst::koiOnNonDefaultVal ); }

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< Config > {
   public:
    virtual void onVlanConfigPriority() {}
    virtual void onVlanConfigPriorityKoiImmediate() {
      koiPass( koiOnVlanConfigPriority ); onVlanConfigPriority();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnVlanConfigPriority{
      koiFirst + 0, &NotifieeConst::onVlanConfigPriority,
          &NotifieeConst::onVlanConfigPriorityKoiImmediate };

    virtual void onSwitchIntfConfigPriority() {}
    virtual void onSwitchIntfConfigPriorityKoiImmediate() {
      koiPass( koiOnSwitchIntfConfigPriority ); onSwitchIntfConfigPriority();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnSwitchIntfConfigPriority{
      koiFirst + 1, &NotifieeConst::onSwitchIntfConfigPriority,
          &NotifieeConst::onSwitchIntfConfigPriorityKoiImmediate };

    virtual void onFdbConfigPriority() {}
    virtual void onFdbConfigPriorityKoiImmediate() {
      koiPass( koiOnFdbConfigPriority ); onFdbConfigPriority();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnFdbConfigPriority{
      koiFirst + 2, &NotifieeConst::onFdbConfigPriority,
          &NotifieeConst::onFdbConfigPriorityKoiImmediate };

    virtual void onVlanConfig() {}
    virtual void onVlanConfig( VlanId const & ) {}
    virtual void onVlanConfigKoiImmediate( VlanId const & k ) {
      koiPass( koiOnVlanConfig ); onVlanConfig( k );
    }
    static constexpr Koi::Callback< NotifieeConst, VlanId const & > koiOnVlanConfig{
      koiFirst + 3, &NotifieeConst::onVlanConfig, &NotifieeConst::onVlanConfigKoiImmediate };

    virtual void onSwitchIntfConfig() {}
    virtual void onSwitchIntfConfig( Wirex::IntfId const & ) {}
    virtual void onSwitchIntfConfigKoiImmediate( Wirex::IntfId const & k ) {
      koiPass( koiOnSwitchIntfConfig ); onSwitchIntfConfig( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Wirex::IntfId const & > koiOnSwitchIntfConfig{
      koiFirst + 4, &NotifieeConst::onSwitchIntfConfig,
          &NotifieeConst::onSwitchIntfConfigKoiImmediate };

    virtual void onFdbConfig() {}
    virtual void onFdbConfig( VlanId const & ) {}
    virtual void onFdbConfigKoiImmediate( VlanId const & k ) {
      koiPass( koiOnFdbConfig ); onFdbConfig( k );
    }
    static constexpr Koi::Callback< NotifieeConst, VlanId const & > koiOnFdbConfig{
      koiFirst + 5, &NotifieeConst::onFdbConfig, &NotifieeConst::onFdbConfigKoiImmediate };

    virtual void onSourceDetail() {}
    virtual void onSourceDetailKoiImmediate() { koiPass( koiOnSourceDetail ); onSourceDetail(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnSourceDetail{
      koiFirst + 6, &NotifieeConst::onSourceDetail, &NotifieeConst::onSourceDetailKoiImmediate };

    virtual void onNonDefaultVal() {}
    virtual void onNonDefaultValKoiImmediate() { koiPass( koiOnNonDefaultVal ); onNonDefaultVal(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnNonDefaultVal{
      koiFirst + 7, &NotifieeConst::onNonDefaultVal, &NotifieeConst::onNonDefaultValKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, Config >;

  static constexpr char koiName[] = "Bridging::Input::Config";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &Config::name )
    };
  }
  template< class Self = Config >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "vlanConfigPriority", &Self::vlanConfigPriority_,
                      &Self::vlanConfigPriorityIs ),
      Koi::attribute( "switchIntfConfigPriority", &Self::switchIntfConfigPriority_,
                      &Self::switchIntfConfigPriorityIs ),
      Koi::attribute( "fdbConfigPriority", &Self::fdbConfigPriority_, &Self::fdbConfigPriorityIs ),
      Koi::attribute( "vlanConfig", &Self::vlanConfig_, &Self::vlanConfigIs, &Self::vlanConfigDel ),
      Koi::attribute( "switchIntfConfig", &Self::switchIntfConfig_, &Self::switchIntfConfigIs,
                      &Self::switchIntfConfigDel ),
      Koi::attribute( "fdbConfig", &Self::fdbConfig_, &Self::fdbConfigIs, &Self::fdbConfigDel ),
      Koi::attribute( "sourceDetail", &Self::sourceDetail_, &Self::sourceDetailIs ),
      Koi::attribute( "nonDefaultVal", &Self::nonDefaultVal_, &Self::nonDefaultValIs )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 8;
  static Koi::KoiType const _koiType;

 private:
  Koi::U32 vlanConfigPriority_{};
  Koi::U32 switchIntfConfigPriority_{};
  Koi::U32 fdbConfigPriority_{};
  Koi::HashMap< KoiVlanConfig, VlanId, Koi::Owned< VlanConfig > > vlanConfig_;
  Koi::HashMap< KoiSwitchIntfConfig, Wirex::IntfId,
      Koi::Owned< SwitchIntfConfig > > switchIntfConfig_;
  Koi::HashMap< KoiFdbConfig, VlanId, Koi::Owned< FdbConfig > > fdbConfig_;
  Koi::String8 sourceDetail_{};
  bool nonDefaultVal_{};
};

/// A new Config without a parent.
KOI_PUBLIC Koi::Ptr< Config > configFactory( Koi::Name const & name );

/// What the command line configures.
class KOI_PUBLIC CliConfig : public Koi::EntityOf< CliConfig, Config > {
 public:
  explicit CliConfig( Koi::Name const & name );

  /// how long a learned host stays unseen; 0 is for ever
  Koi::Seconds hostAgingTime() const { return hostAgingTime_; }
  void hostAgingTimeIs( Koi::Seconds v ) {
    koiIs( hostAgingTime_, v, NotifieeConst::koiOnHostAgingTime );
  }

  /// from which end internal VLANs are taken
  InternalVlanAllocationPolicy internalVlanAllocationPolicy() const {
    return internalVlanAllocationPolicy_;
  }
  void internalVlanAllocationPolicyIs( InternalVlanAllocationPolicy v ) {
    koiIs( internalVlanAllocationPolicy_, v, NotifieeConst::koiOnInternalVlanAllocationPolicy );
  }

  /// the VLANs that are set apart for internal use
  InternalVlanRange internalVlanRange() const { return internalVlanRange_; }
  void internalVlanRangeIs( InternalVlanRange const & v ) {
    koiIs( internalVlanRange_, v, NotifieeConst::koiOnInternalVlanRange );
  }

  class KoiSviMapping;
  /// by primary VLAN
  Koi::Ptr< SviMappingState > sviMapping( VlanId const & k ) const;
  Koi::HashMap< KoiSviMapping, VlanId, Koi::Owned< SviMappingState > > const & sviMapping() const {
    return sviMapping_;
  }
  using SviMappingIterator = Koi::HashMap< KoiSviMapping, VlanId,
      Koi::Owned< SviMappingState > >::Iterator;
  SviMappingIterator sviMappingIterator();
  /// The one of that key, made when there is none.
  Koi::Ptr< SviMappingState > sviMappingIs( VlanId const & k );
  Koi::Ptr< SviMappingState > sviMappingDel( VlanId const & k );
  Koi::Ptr< SviMappingState > sviMappingDel( SviMappingIterator const & i );
  void sviMappingDelAll();
  void sviMappingNotify( VlanId const & k );

  /// when frames are passed on
  SwitchForwardingMode forwardingMode() const { return forwardingMode_; }
  void forwardingModeIs( SwitchForwardingMode v ) {
    koiIs( forwardingMode_, v, NotifieeConst::koiOnForwardingMode );
  }

  /// the mode of an interface that names none
  Bridging::SwitchportMode defaultSwitchportMode() const { return defaultSwitchportMode_; }
  void defaultSwitchportModeIs( Bridging::SwitchportMode v ) {
    koiIs( defaultSwitchportMode_, v, NotifieeConst::koiOnDefaultSwitchportMode );
  }

  /// pass Ethernet pause frames through
  bool pausePassThrough() const { return pausePassThrough_; }
  void pausePassThroughIs( bool v ) {
    koiIs( pausePassThrough_, v, NotifieeConst::koiOnPausePassThrough );
  }

  class KoiIeeeReservedForwarding;
  /// reserved group addresses: forwarded or not
  bool ieeeReservedForwarding( Wirex::EthAddr const & k ) const;
  Koi::HashMap< KoiIeeeReservedForwarding, Wirex::EthAddr,
      bool > const & ieeeReservedForwarding() const {
    return ieeeReservedForwarding_;
  }
  using IeeeReservedForwardingIterator = Koi::HashMap< KoiIeeeReservedForwarding, Wirex::EthAddr,
      bool >::Iterator;
  IeeeReservedForwardingIterator ieeeReservedForwardingIterator();
  void ieeeReservedForwardingIs( Wirex::EthAddr const & k, bool v );
  bool ieeeReservedForwardingDel( Wirex::EthAddr const & k );
  bool ieeeReservedForwardingDel( IeeeReservedForwardingIterator const & i );
  void ieeeReservedForwardingDelAll();
  void ieeeReservedForwardingNotify( Wirex::EthAddr const & k );

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< CliConfig, Config::NotifieeConst > {
   public:
    virtual void onHostAgingTime() {}
    virtual void onHostAgingTimeKoiImmediate() { koiPass( koiOnHostAgingTime ); onHostAgingTime(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnHostAgingTime{
      koiFirst + 0, &NotifieeConst::onHostAgingTime, &NotifieeConst::onHostAgingTimeKoiImmediate };

    virtual void onInternalVlanAllocationPolicy() {}
    virtual void onInternalVlanAllocationPolicyKoiImmediate() {
      koiPass( koiOnInternalVlanAllocationPolicy ); onInternalVlanAllocationPolicy();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnInternalVlanAllocationPolicy{
      koiFirst + 1, &NotifieeConst::onInternalVlanAllocationPolicy,
          &NotifieeConst::onInternalVlanAllocationPolicyKoiImmediate };

    virtual void onInternalVlanRange() {}
    virtual void onInternalVlanRangeKoiImmediate() {
      koiPass( koiOnInternalVlanRange ); onInternalVlanRange();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnInternalVlanRange{
      koiFirst + 2, &NotifieeConst::onInternalVlanRange,
          &NotifieeConst::onInternalVlanRangeKoiImmediate };

    virtual void onSviMapping() {}
    virtual void onSviMapping( VlanId const & ) {}
    virtual void onSviMappingKoiImmediate( VlanId const & k ) {
      koiPass( koiOnSviMapping ); onSviMapping( k );
    }
    static constexpr Koi::Callback< NotifieeConst, VlanId const & > koiOnSviMapping{
      koiFirst + 3, &NotifieeConst::onSviMapping, &NotifieeConst::onSviMappingKoiImmediate };

    virtual void onForwardingMode() {}
    virtual void onForwardingModeKoiImmediate() {
      koiPass( koiOnForwardingMode ); onForwardingMode();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnForwardingMode{
      koiFirst + 4, &NotifieeConst::onForwardingMode,
          &NotifieeConst::onForwardingModeKoiImmediate };

    virtual void onDefaultSwitchportMode() {}
    virtual void onDefaultSwitchportModeKoiImmediate() {
      koiPass( koiOnDefaultSwitchportMode ); onDefaultSwitchportMode();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnDefaultSwitchportMode{
      koiFirst + 5, &NotifieeConst::onDefaultSwitchportMode,
          &NotifieeConst::onDefaultSwitchportModeKoiImmediate };

    virtual void onPausePassThrough() {}
    virtual void onPausePassThroughKoiImmediate() {
      koiPass( koiOnPausePassThrough ); onPausePassThrough();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnPausePassThrough{
      koiFirst + 6, &NotifieeConst::onPausePassThrough,
          &NotifieeConst::onPausePassThroughKoiImmediate };

    virtual void onIeeeReservedForwarding() {}
    virtual void onIeeeReservedForwarding( Wirex::EthAddr const & ) {}
    virtual void onIeeeReservedForwardingKoiImmediate( Wirex::EthAddr const & k ) {
      koiPass( koiOnIeeeReservedForwarding ); onIeeeReservedForwarding( k );
    }
    static constexpr Koi::Callback< NotifieeConst,
        Wirex::EthAddr const & > koiOnIeeeReservedForwarding{
      koiFirst + 7, &NotifieeConst::onIeeeReservedForwarding,
          &NotifieeConst::onIeeeReservedForwardingKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, CliConfig >;

  static constexpr char koiName[] = "Bridging::Input::CliConfig";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &CliConfig::name )
    };
  }
  template< class Self = CliConfig >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "hostAgingTime", &Self::hostAgingTime_, &Self::hostAgingTimeIs ),
      Koi::attribute( "internalVlanAllocationPolicy", &Self::internalVlanAllocationPolicy_,
                      &Self::internalVlanAllocationPolicyIs ),
      Koi::attribute( "internalVlanRange", &Self::internalVlanRange_, &Self::internalVlanRangeIs ),
      Koi::attribute( "sviMapping", &Self::sviMapping_, &Self::sviMappingIs, &Self::sviMappingDel ),
      Koi::attribute( "forwardingMode", &Self::forwardingMode_, &Self::forwardingModeIs ),
      Koi::attribute( "defaultSwitchportMode", &Self::defaultSwitchportMode_,
                      &Self::defaultSwitchportModeIs ),
      Koi::attribute( "pausePassThrough", &Self::pausePassThrough_, &Self::pausePassThroughIs ),
      Koi::attribute( "ieeeReservedForwarding", &Self::ieeeReservedForwarding_,
                      &Self::ieeeReservedForwardingIs, &Self::ieeeReservedForwardingDel )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 8;
  static Koi::KoiType const _koiType;

 private:
  Koi::Seconds hostAgingTime_ = 300;
  InternalVlanAllocationPolicy internalVlanAllocationPolicy_{};
  InternalVlanRange internalVlanRange_ = InternalVlanRange( VlanId( 1006 ), VlanId( 4094 ) );
  Koi::HashMap< KoiSviMapping, VlanId, Koi::Owned< SviMappingState > > sviMapping_;
  SwitchForwardingMode forwardingMode_{};
  Bridging::SwitchportMode defaultSwitchportMode_{};
  bool pausePassThrough_{};
  Koi::HashMap< KoiIeeeReservedForwarding, Wirex::EthAddr, bool > ieeeReservedForwarding_;
};

/// A new CliConfig without a parent.
KOI_PUBLIC Koi::Ptr< CliConfig > cliConfigFactory( Koi::Name const & name );

/// What the system configures for itself.
class KOI_PUBLIC PrivateConfig : public Koi::EntityOf< PrivateConfig, Config > {
 public:
  explicit PrivateConfig( Koi::Name const & name );

  /// whether it counts
  bool privateModeEnabled() const { return privateModeEnabled_; }
  void privateModeEnabledIs( bool v ) {
    koiIs( privateModeEnabled_, v, NotifieeConst::koiOnPrivateModeEnabled );
  }

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< PrivateConfig, Config::NotifieeConst > {
   public:
    virtual void onPrivateModeEnabled() {}
    virtual void onPrivateModeEnabledKoiImmediate() {
      koiPass( koiOnPrivateModeEnabled ); onPrivateModeEnabled();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnPrivateModeEnabled{
      koiFirst + 0, &NotifieeConst::onPrivateModeEnabled,
          &NotifieeConst::onPrivateModeEnabledKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, PrivateConfig >;

  static constexpr char koiName[] = "Bridging::Input::PrivateConfig";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &PrivateConfig::name )
    };
  }
  template< class Self = PrivateConfig >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "privateModeEnabled", &Self::privateModeEnabled_,
                      &Self::privateModeEnabledIs )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 1;
  static Koi::KoiType const _koiType;

 private:
  bool privateModeEnabled_{};
};

/// A new PrivateConfig without a parent.
KOI_PUBLIC Koi::Ptr< PrivateConfig > privateConfigFactory( Koi::Name const & name );

}  // namespace Bridging::Input

namespace Bridging {

/// What one source asks of switchports.
class KOI_PUBLIC SwitchIntfConfigDir : public Koi::EntityOf< SwitchIntfConfigDir > {
 public:
  explicit SwitchIntfConfigDir( Koi::Name const & name );

  class KoiSwitchIntfConfig;
  /// by interface
  Koi::Ptr< Input::SwitchIntfConfig > switchIntfConfig( Wirex::IntfId const & k ) const;
  Koi::HashMap< KoiSwitchIntfConfig, Wirex::IntfId,
      Koi::Owned< Input::SwitchIntfConfig > > const & switchIntfConfig() const {
    return switchIntfConfig_;
  }
  using SwitchIntfConfigIterator = Koi::HashMap< KoiSwitchIntfConfig, Wirex::IntfId,
      Koi::Owned< Input::SwitchIntfConfig > >::Iterator;
  SwitchIntfConfigIterator switchIntfConfigIterator();
  /// The one of that key, made when there is none.
  Koi::Ptr< Input::SwitchIntfConfig > switchIntfConfigIs( Wirex::IntfId const & k,
                                                          Bridging::Input::SwitchportMode switchportMode );
  Koi::Ptr< Input::SwitchIntfConfig > switchIntfConfigDel( Wirex::IntfId const & k );
  Koi::Ptr< Input::SwitchIntfConfig > switchIntfConfigDel( SwitchIntfConfigIterator const & i );
  void switchIntfConfigDelAll();
  void switchIntfConfigNotify( Wirex::IntfId const & k );

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< SwitchIntfConfigDir > {
   public:
    virtual void onSwitchIntfConfig() {}
    virtual void onSwitchIntfConfig( Wirex::IntfId const & ) {}
    virtual void onSwitchIntfConfigKoiImmediate( Wirex::IntfId const & k ) {
      koiPass( koiOnSwitchIntfConfig ); onSwitchIntfConfig( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Wirex::IntfId const & > koiOnSwitchIntfConfig{
      koiFirst + 0, &NotifieeConst::onSwitchIntfConfig,
          &NotifieeConst::onSwitchIntfConfigKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, SwitchIntfConfigDir >;

  static constexpr char koiName[] = "Bridging::SwitchIntfConfigDir";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &SwitchIntfConfigDir::name )
    };
  }
  template< class Self = SwitchIntfConfigDir >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "switchIntfConfig", &Self::switchIntfConfig_, &Self::switchIntfConfigIs,
                      &Self::switchIntfConfigDel )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 1;
  static Koi::KoiType const _koiType;

 private:
  Koi::HashMap< KoiSwitchIntfConfig, Wirex::IntfId,
      Koi::Owned< Input::SwitchIntfConfig > > switchIntfConfig_;
};

/// A new SwitchIntfConfigDir without a parent.
KOI_PUBLIC Koi::Ptr< SwitchIntfConfigDir > switchIntfConfigDirFactory( Koi::Name const & name );

/// What one source configures of filtering databases.
class KOI_PUBLIC FdbConfigDir : public Koi::EntityOf< FdbConfigDir > {
 public:
  explicit FdbConfigDir( Koi::Name const & name );

  class KoiFdbConfig;
  /// by VLAN
  Koi::Ptr< Input::FdbConfig > fdbConfig( VlanId const & k ) const;
  Koi::HashMap< KoiFdbConfig, VlanId, Koi::Owned< Input::FdbConfig > > const & fdbConfig() const {
    return fdbConfig_;
  }
  using FdbConfigIterator = Koi::HashMap< KoiFdbConfig, VlanId,
      Koi::Owned< Input::FdbConfig > >::Iterator;
  FdbConfigIterator fdbConfigIterator();
  /// The one of that key, made when there is none.
  Koi::Ptr< Input::FdbConfig > fdbConfigIs( VlanId const & k );
  Koi::Ptr< Input::FdbConfig > fdbConfigDel( VlanId const & k );
  Koi::Ptr< Input::FdbConfig > fdbConfigDel( FdbConfigIterator const & i );
  void fdbConfigDelAll();
  void fdbConfigNotify( VlanId const & k );

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< FdbConfigDir > {
   public:
    virtual void onFdbConfig() {}
    virtual void onFdbConfig( VlanId const & ) {}
    virtual void onFdbConfigKoiImmediate( VlanId const & k ) {
      koiPass( koiOnFdbConfig ); onFdbConfig( k );
    }
    static constexpr Koi::Callback< NotifieeConst, VlanId const & > koiOnFdbConfig{
      koiFirst + 0, &NotifieeConst::onFdbConfig, &NotifieeConst::onFdbConfigKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, FdbConfigDir >;

  static constexpr char koiName[] = "Bridging::FdbConfigDir";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &FdbConfigDir::name )
    };
  }
  template< class Self = FdbConfigDir >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "fdbConfig", &Self::fdbConfig_, &Self::fdbConfigIs, &Self::fdbConfigDel )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 1;
  static Koi::KoiType const _koiType;

 private:
  Koi::HashMap< KoiFdbConfig, VlanId, Koi::Owned< Input::FdbConfig > > fdbConfig_;
};

/// A new FdbConfigDir without a parent.
KOI_PUBLIC Koi::Ptr< FdbConfigDir > fdbConfigDirFactory( Koi::Name const & name );

}  // namespace Bridging

// Reflection wrappers: each holds one copy of a value.
namespace _koi_Bridging_SwitchForwardingMode {
  using GenericIf_ = Koi::GenericValue< Bridging::SwitchForwardingMode >;
}
namespace _koi_Bridging_InternalVlanAllocationPolicy {
  using GenericIf_ = Koi::GenericValue< Bridging::InternalVlanAllocationPolicy >;
}
namespace _koi_Bridging_SwitchportMode {
  using GenericIf_ = Koi::GenericValue< Bridging::SwitchportMode >;
}
namespace _koi_Bridging_SourceportFilterMode {
  using GenericIf_ = Koi::GenericValue< Bridging::SourceportFilterMode >;
}
namespace _koi_Bridging_VlanAdminState {
  using GenericIf_ = Koi::GenericValue< Bridging::VlanAdminState >;
}
namespace _koi_Bridging_VlanType { using GenericIf_ = Koi::GenericValue< Bridging::VlanType >; }
namespace _koi_Bridging_TagOnEgress {
  using GenericIf_ = Koi::GenericValue< Bridging::TagOnEgress >;
}
namespace _koi_Bridging_AllowedTrafficDirection {
  using GenericIf_ = Koi::GenericValue< Bridging::AllowedTrafficDirection >;
}
namespace _koi_Bridging_VlanTagFormat {
  using GenericIf_ = Koi::GenericValue< Bridging::VlanTagFormat >;
}
namespace _koi_Bridging_VlanMappingDirection {
  using GenericIf_ = Koi::GenericValue< Bridging::VlanMappingDirection >;
}
namespace _koi_Bridging_InternalVlanNeeded {
  using GenericIf_ = Koi::GenericValue< Bridging::InternalVlanNeeded >;
}
namespace _koi_Bridging_InternalVlanRange {
  using GenericIf_ = Koi::GenericValue< Bridging::InternalVlanRange >;
}
namespace _koi_Bridging_SwitchportModeAndNativeVlan {
  using GenericIf_ = Koi::GenericValue< Bridging::SwitchportModeAndNativeVlan >;
}
namespace _koi_Bridging_VlanTypeAndPrimaryVlan {
  using GenericIf_ = Koi::GenericValue< Bridging::VlanTypeAndPrimaryVlan >;
}
namespace _koi_Bridging_VlanPortConfig {
  using GenericIf_ = Koi::GenericValue< Bridging::VlanPortConfig >;
}
namespace _koi_Bridging_VlanPortStatus {
  using GenericIf_ = Koi::GenericValue< Bridging::VlanPortStatus >;
}
namespace _koi_Bridging_IntfTpidStatusEntry {
  using GenericIf_ = Koi::GenericValue< Bridging::IntfTpidStatusEntry >;
}
namespace _koi_Bridging_VlanTagRequired {
  using GenericIf_ = Koi::GenericValue< Bridging::VlanTagRequired >;
}
namespace _koi_Bridging_Fid { using GenericIf_ = Koi::GenericValue< Bridging::Fid >; }
namespace _koi_Bridging_HostKey { using GenericIf_ = Koi::GenericValue< Bridging::HostKey >; }
namespace _koi_Bridging_LearnedHost {
  using GenericIf_ = Koi::GenericValue< Bridging::LearnedHost >;
}
namespace _koi_Bridging_ConfiguredHost {
  using GenericIf_ = Koi::GenericValue< Bridging::ConfiguredHost >;
}
namespace _koi_Bridging_HostTableFlushRequest {
  using GenericIf_ = Koi::GenericValue< Bridging::HostTableFlushRequest >;
}
namespace _koi_Bridging_MacVlanPair {
  using GenericIf_ = Koi::GenericValue< Bridging::MacVlanPair >;
}
namespace _koi_Bridging_Preference { using GenericIf_ = Koi::GenericValue< Bridging::Preference >; }
namespace _koi_Bridging_EntryPreference {
  using GenericIf_ = Koi::GenericValue< Bridging::EntryPreference >;
}
namespace _koi_Bridging_RemoteMacEntry {
  using GenericIf_ = Koi::GenericValue< Bridging::RemoteMacEntry >;
}
namespace _koi_Bridging_Input_SwitchportMode {
  using GenericIf_ = Koi::GenericValue< Bridging::Input::SwitchportMode >;
}
namespace _koi_Bridging_Input_ToolIdentityMode {
  using GenericIf_ = Koi::GenericValue< Bridging::Input::ToolIdentityMode >;
}

// What was only pointed to.
#include <Lumo/QuillBridging.h>
