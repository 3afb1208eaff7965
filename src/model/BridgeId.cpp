// BridgeId.cpp: the parts and the text of a bridge identifier.

#include <Lumo/BridgeId.h>

#include <algorithm>

#include <koi/Assert.h>

namespace Bridging {

namespace {

constexpr unsigned kindShift = 24;
constexpr Koi::U32 identifierMax = 0xffffff;
constexpr Koi::U32 parsedKinds = 0x3000000;

/// What a text begins with, before the colon; null for a number that is no kind.
char const * prefixOf( BrType kind ) {
  switch( kind ) {
    case brTypeUnknown:
      return "Invalid";
    case brTypeVlan:
      return "VlanId";
    case brTypeVni:
      return "Vni";
  }
  return nullptr;
}

/// The kind that is printed with that prefix, or whose enumerator it is.
BrType kindOf( Koi::String8 const & prefix ) {
  for( BrType kind : { brTypeUnknown, brTypeVlan, brTypeVni } )
    if( prefix == prefixOf( kind ) )
      return kind;
  BrType kind = brTypeUnknown;
  Koi::String8::IteratorConst it = prefix.begin();
  sequenceToValue( it, prefix.end(), &kind );
  Koi::strepToValueEnd( prefix, it );
  return kind;
}

bool standsInAnIdentifier( char c ) {
  return ( c >= '0' && c <= '9' ) || ( c >= 'A' && c <= 'Z' ) || ( c >= 'a' && c <= 'z' ) ||
         c == '_';
}

Koi::U32 packed( BrType brType, Koi::U32 identifier ) {
  if( brType > brTypeVni )
    Koi::throwRangeException( "BridgeId::brType > 2 not allowed" );
  if( identifier > identifierMax )
    Koi::throwRangeException( "BridgeId::identifier > 16777215 not allowed" );
  return static_cast< Koi::U32 >( brType ) << kindShift | identifier;
}

}  // namespace

BridgeId::BridgeId( BrType brType, Koi::U32 identifier )
    : BridgeId( packed( brType, identifier ) ) {}

BrType BridgeId::brTypeUnknown() { return Bridging::brTypeUnknown; }
BrType BridgeId::brTypeVlan() { return Bridging::brTypeVlan; }
BrType BridgeId::brTypeVni() { return Bridging::brTypeVni; }

BrType BridgeId::brType() const { return static_cast< BrType >( value() >> kindShift ); }

bool BridgeId::isInvalid() const { return brType() != brTypeVlan() && brType() != brTypeVni(); }

VlanId BridgeId::vlanId() const {
  KOI_ASSERT( brType() == brTypeVlan() );
  return VlanId( value() & identifierMax );
}

Koi::U32 BridgeId::vni() const {
  KOI_ASSERT( brType() == brTypeVni() );
  return value() & identifierMax;
}

BridgeId BridgeId::constMe() const { return *this; }

Koi::String8 BridgeId::toStrep() const {
  char const * prefix = prefixOf( brType() );
  return prefix ? Koi::format( "%s:%u", prefix, value() & identifierMax ) : Koi::String8();
}

Koi::String8 BridgeId::koiText() const { return toStrep(); }

BridgeId BridgeId::koiParsed( Koi::String8::IteratorConst & it,
                              Koi::String8::IteratorConst const & end ) {
  // The colon is sought among the characters of an identifier only: one that stands further on in
  // an enclosing text is not ours.
  auto const colon = std::find_if_not( it, end, standsInAnIdentifier );
  if( colon == end || *colon != ':' )
    Koi::throwRangeException( "Invalid BridgeId" );
  Koi::U32 const kind = kindOf( std::string_view( it, static_cast< std::size_t >( colon - it ) ) );
  it = colon + 1;
  Koi::U32 const number = Koi::deserializeAttr< Koi::U32 >( it, end, "storage" );
  return BridgeId( ( number & identifierMax ) | ( kind << kindShift & parsedKinds ) );
}

}  // namespace Bridging
