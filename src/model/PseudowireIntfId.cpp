// PseudowireIntfId.cpp: the parts of a pseudowire's identifier, and how it is built from an
// attachment.
//
//     63-56  0
//     55-40  VLAN              4095 stands for the whole attachment interface
//     39-32  connector type    the attachment's type number
//     31-25  59
//     24-0   connector         the low bits of the attachment's identifier
//
// The number of an attachment's sub-interface has no place here: such a pseudowire stands on the
// port.

#include <Lumo/LumoIntfId.h>
#include <Lumo/PseudowireIntfId.h>
#include <koi/Assert.h>
#include <wirex/EthIntfId.h>
#include <wirex/GenericIntfId.h>

namespace Wirex {

namespace {

constexpr Koi::U32 anyVlan = 4095;
constexpr Koi::U32 connectorMask = 0x1ffffff;
constexpr unsigned vlanShift = 8;

Koi::U32 part( IntfId const & intfId, unsigned index ) {
  return GenericIntfId( intfId ).part( index );
}

}  // namespace

PseudowireIntfId::PseudowireIntfId( IntfId const & intfId ) : Wrapped( intfId.value() ) {}

bool PseudowireIntfId::isPseudowireIntfId( IntfId const & intfId ) {
  return GenericIntfId( intfId ).typeId() == GenericIntfId::pseudowireType;
}

bool PseudowireIntfId::isIntfIdSupported( IntfId const & intfId ) {
  return EthIntfId::isEthIntfId( intfId ) || SubIntfId::isSubIntfId( intfId ) ||
         PortChannelIntfId::isPortChannelIntfId( intfId );
}

Koi::U8 PseudowireIntfId::connectorType( IntfId const & intfId ) {
  KOI_ASSERT( isPseudowireIntfId( intfId ) );
  return static_cast< Koi::U8 >( part( intfId, 0 ) );
}

Koi::U32 PseudowireIntfId::connectorId( IntfId const & intfId ) {
  KOI_ASSERT( isPseudowireIntfId( intfId ) );
  return part( intfId, 1 );
}

Bridging::VlanIdOrAny PseudowireIntfId::vlanId( IntfId const & intfId ) {
  KOI_ASSERT( isPseudowireIntfId( intfId ) );
  return Bridging::VlanIdOrAny( part( intfId, 0 ) >> vlanShift );
}

bool PseudowireIntfId::isPortPseudowireIntfId( IntfId const & intfId ) {
  return vlanId( intfId ).value() == anyVlan;
}

Koi::U64 PseudowireIntfId::pseudowireIntfId( IntfId const & intfId ) {
  KOI_ASSERT( isPseudowireIntfId( intfId ) );
  Koi::U64 const part0 = part( intfId, 0 ), connector = part( intfId, 1 );
  // Deliberate: the VLAN lies over the low bits of the connector; users keep such numbers.
  return connector << 20 | part0 >> vlanShift << 12 | ( part0 & 0xff );
}

IntfId PseudowireIntfId::intfIdFromIntfIdVlan( IntfId const & intfId,
                                               Bridging::VlanIdOrAny const & vlanId ) {
  if( !isIntfIdSupported( intfId ) )
    Koi::throwRangeException(
        Koi::format( "Unsupported IntfId <%s>", intfId.stringValue().data() ) );
  GenericIntfId made{ IntfId() };
  made.typeIdIs( GenericIntfId::pseudowireType );
  made.partIs( 1, static_cast< Koi::U32 >( intfId.value() ) & connectorMask );
  made.partIs( 0, Koi::U32{ vlanId.value() } << vlanShift | GenericIntfId( intfId ).typeId() );
  return made.intfId();
}

IntfId PseudowireIntfId::portIntfIdFromIntfId( IntfId const & intfId ) {
  return intfIdFromIntfIdVlan( intfId, Bridging::VlanIdOrAny( anyVlan ) );
}

IntfId PseudowireIntfId::parentIntfId( IntfId const & intfId ) {
  KOI_ASSERT( isPseudowireIntfId( intfId ) );
  // Built word by word: a connector holds the sub-type of a port-channel too, and a type number
  // from a log may be any.
  Koi::U64 const type = connectorType( intfId ) & GenericIntfId::typeIdMax;
  return IntfId( type << 25 | connectorId( intfId ) );
}

IntfId PseudowireIntfId::localIntfIdFromString( Koi::String8 const & text ) {
  IntfId const intfId( text );
  if( !isPseudowireIntfId( intfId ) )
    Koi::throwParseException( Koi::format( "'%s' is not a pseudowire", text.data() ) );
  return intfId;
}

// The platform's grammar has the pseudowires: the attachment's name, a colon and the VLAN.
Koi::String8 PseudowireIntfId::koiText() const { return IntfId( value() ).stringValue(); }

PseudowireIntfId PseudowireIntfId::koiParsed( Koi::String8::IteratorConst &,
                                              Koi::String8::IteratorConst const & ) {
  KOI_ASSERT( !"PseudowireIntfId is not parsed: use localIntfIdFromString()" );
  return {};
}

}  // namespace Wirex
