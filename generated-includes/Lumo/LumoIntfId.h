// LumoIntfId.h: written by koigen from LumoIntfId.koi. Change that file, not this one.
#pragma once

#include <koi/Value.h>
#include <wirex/IntfId.h>

namespace Wirex {

/// The interface that leads to the switch's own processor.
class KOI_PUBLIC CpuIntfId : public Koi::Wrapped< CpuIntfId, Koi::U64 > {
 public:
  using Wrapped::Wrapped;
  CpuIntfId() = default;

  /// The interface of that name, of whatever kind; refuses what IntfId refuses.
  explicit CpuIntfId( Koi::String8 const & name );

  /// The same interface, of whatever kind.
  explicit CpuIntfId( Wirex::IntfId const & intfId );

  /// Is it of this kind?
  static bool isCpuIntfId( Wirex::IntfId const & intfId );

  static constexpr char koiName[] = "Wirex::CpuIntfId";
  static constexpr char koiField[] = "intfId";
  static Koi::KoiType const _koiType;
};

/// A port-channel, or a sub-interface of one.
class KOI_PUBLIC PortChannelIntfId : public Koi::Wrapped< PortChannelIntfId, Koi::U64 > {
 public:
  using Wrapped::Wrapped;
  PortChannelIntfId() = default;

  /// The interface of that name, of whatever kind; refuses what IntfId refuses.
  explicit PortChannelIntfId( Koi::String8 const & name );

  /// The same interface, of whatever kind.
  explicit PortChannelIntfId( Wirex::IntfId const & intfId );

  /// Is it of this kind?
  static bool isPortChannelIntfId( Wirex::IntfId const & intfId );

  /// Is it a recirculation channel?
  static bool isRecirc( Wirex::IntfId const & intfId );

  /// Is it an ECMP group?
  static bool isEcmp( Wirex::IntfId const & intfId );

  /// the channel's number; needs a port-channel
  static Koi::U16 portChannel( Wirex::IntfId const & intfId );

  /// the sub-interface's number, 0 for the channel itself; needs a port-channel
  static Koi::U32 subIntf( Wirex::IntfId const & intfId );

  /// the channel that a sub-interface belongs to; needs a sub-interface of a port-channel
  static Wirex::IntfId parentIntfIdFromSubIntf( Wirex::IntfId const & subIntfId );

  static constexpr char koiName[] = "Wirex::PortChannelIntfId";
  static constexpr char koiField[] = "intfId";
  static Koi::KoiType const _koiType;
};

/// An Ethernet interface of the other half of a pair of switches.
class KOI_PUBLIC PeerEthIntfId : public Koi::Wrapped< PeerEthIntfId, Koi::U64 > {
 public:
  using Wrapped::Wrapped;
  PeerEthIntfId() = default;

  /// The interface of that name, of whatever kind; refuses what IntfId refuses.
  explicit PeerEthIntfId( Koi::String8 const & name );

  /// The same interface, of whatever kind.
  explicit PeerEthIntfId( Wirex::IntfId const & intfId );

  /// Is it of this kind?
  static bool isPeerEthIntfId( Wirex::IntfId const & intfId );

  /// the peer's interface of the same place; needs an Ethernet interface
  static Wirex::IntfId toPeerEthIntfId( Wirex::IntfId const & intfId );

  /// this switch's interface of the same place; needs a peer Ethernet interface
  static Wirex::IntfId fromPeerEthIntfId( Wirex::IntfId const & intfId );

  static constexpr char koiName[] = "Wirex::PeerEthIntfId";
  static constexpr char koiField[] = "intfId";
  static Koi::KoiType const _koiType;
};

/// A port-channel of the other half of a pair of switches.
class KOI_PUBLIC PeerPortChannelIntfId : public Koi::Wrapped< PeerPortChannelIntfId, Koi::U64 > {
 public:
  using Wrapped::Wrapped;
  PeerPortChannelIntfId() = default;

  /// The interface of that name, of whatever kind; refuses what IntfId refuses.
  explicit PeerPortChannelIntfId( Koi::String8 const & name );

  /// The same interface, of whatever kind.
  explicit PeerPortChannelIntfId( Wirex::IntfId const & intfId );

  /// Is it of this kind?
  static bool isPeerPortChannelIntfId( Wirex::IntfId const & intfId );

  /// the peer's channel of the same number; needs a port-channel
  static Wirex::IntfId toPeerPortChannelIntfId( Wirex::IntfId const & intfId );

  /// this switch's channel of the same number; needs a peer port-channel
  static Wirex::IntfId fromPeerPortChannelIntfId( Wirex::IntfId const & intfId );

  static constexpr char koiName[] = "Wirex::PeerPortChannelIntfId";
  static constexpr char koiField[] = "intfId";
  static Koi::KoiType const _koiType;
};

/// A sub-interface of an Ethernet interface or of a port-channel.
class KOI_PUBLIC SubIntfId : public Koi::Wrapped< SubIntfId, Koi::U64 > {
 public:
  using Wrapped::Wrapped;
  SubIntfId() = default;

  /// The interface of that name, of whatever kind; refuses what IntfId refuses.
  explicit SubIntfId( Koi::String8 const & name );

  /// The same interface, of whatever kind.
  explicit SubIntfId( Wirex::IntfId const & intfId );

  /// Is it of this kind?
  static bool isSubIntfId( Wirex::IntfId const & intfId );

  /// the interface that it belongs to; needs a sub-interface
  static Wirex::IntfId parentIntfId( Wirex::IntfId const & intfId );

  static constexpr char koiName[] = "Wirex::SubIntfId";
  static constexpr char koiField[] = "intfId";
  static Koi::KoiType const _koiType;
};

}  // namespace Wirex

// Reflection wrappers: each holds one copy of a value.
namespace _koi_Wirex_CpuIntfId { using GenericIf_ = Koi::GenericValue< Wirex::CpuIntfId >; }
namespace _koi_Wirex_PortChannelIntfId {
  using GenericIf_ = Koi::GenericValue< Wirex::PortChannelIntfId >;
}
namespace _koi_Wirex_PeerEthIntfId { using GenericIf_ = Koi::GenericValue< Wirex::PeerEthIntfId >; }
namespace _koi_Wirex_PeerPortChannelIntfId {
  using GenericIf_ = Koi::GenericValue< Wirex::PeerPortChannelIntfId >;
}
namespace _koi_Wirex_SubIntfId { using GenericIf_ = Koi::GenericValue< Wirex::SubIntfId >; }
