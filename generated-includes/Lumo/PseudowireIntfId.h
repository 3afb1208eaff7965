// PseudowireIntfId.h: written by koigen from PseudowireIntfId.koi. Change that file, not this one.
#pragma once

#include <koi/Value.h>
#include <wirex/IntfId.h>
#include <Lumo/VlanId.h>

namespace Wirex {

/// A pseudowire of an attachment interface and a VLAN. Its text is read with
/// localIntfIdFromString() only.
class KOI_PUBLIC PseudowireIntfId : public Koi::Wrapped< PseudowireIntfId, Koi::U64 > {
 public:
  using Wrapped::Wrapped;
  PseudowireIntfId() = default;

  /// The same interface, of whatever kind.
  explicit PseudowireIntfId( Wirex::IntfId const & intfId );

  /// Is it of this kind?
  static bool isPseudowireIntfId( Wirex::IntfId const & intfId );

  /// Can a pseudowire be attached to it: an Ethernet interface, a port-channel or a
  /// sub-interface of either?
  static bool isIntfIdSupported( Wirex::IntfId const & intfId );

  /// the type number of the attachment interface; needs a pseudowire
  static Koi::U8 connectorType( Wirex::IntfId const & intfId );

  /// the attachment interface within its type; needs a pseudowire
  static Koi::U32 connectorId( Wirex::IntfId const & intfId );

  /// the VLAN, 4095 for the whole interface; needs a pseudowire, and refuses with a
  /// RangeException a number out of range
  static Bridging::VlanIdOrAny vlanId( Wirex::IntfId const & intfId );

  /// Does it stand for the whole attachment interface? Needs a pseudowire; refuses what
  /// vlanId() refuses.
  static bool isPortPseudowireIntfId( Wirex::IntfId const & intfId );

  /// the packed number, in which VLAN and connector overlap in bits 20 to 23; needs a
  /// pseudowire
  static Koi::U64 pseudowireIntfId( Wirex::IntfId const & intfId );

  /// the pseudowire of that interface and VLAN, a sub-interface standing for its port; a
  /// RangeException "Unsupported IntfId <NAME>" when nothing can be attached there
  static Wirex::IntfId intfIdFromIntfIdVlan( Wirex::IntfId const & intfId,
                                             Bridging::VlanIdOrAny const & vlanId );

  /// the pseudowire of the whole interface; refuses what intfIdFromIntfIdVlan() refuses
  static Wirex::IntfId portIntfIdFromIntfId( Wirex::IntfId const & intfId );

  /// the attachment interface, the port where a sub-interface was attached; needs a pseudowire
  static Wirex::IntfId parentIntfId( Wirex::IntfId const & intfId );

  /// the pseudowire of that text; a ParseException or RangeException that names a text which is
  /// none
  static Wirex::IntfId localIntfIdFromString( Koi::String8 const & text );

  static constexpr char koiName[] = "Wirex::PseudowireIntfId";
  static constexpr char koiField[] = "intfId";
  static constexpr bool koiTextByHand = true;
  static Koi::KoiType const _koiType;

  // The text, by hand.
  Koi::String8 koiText() const;
  static PseudowireIntfId koiParsed( Koi::String8::IteratorConst & it,
                                     Koi::String8::IteratorConst const & end );
};

}  // namespace Wirex

// Reflection wrappers: each holds one copy of a value.
namespace _koi_Wirex_PseudowireIntfId {
  using GenericIf_ = Koi::GenericValue< Wirex::PseudowireIntfId >;
}
