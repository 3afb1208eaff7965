// IntfName.cpp: interface names, both ways, from one table of kinds.

#include "IntfName.h"

#include <charconv>

#include <wirex/GenericIntfId.h>
#include <wirex/PortPlace.h>

namespace Wirex {

namespace {

/// What follows the word that a name begins with.
enum Form {
  nothing,  // cpu
  number,   // vlan100
  place     // eth1, eth3/1, eth3/1/2
};

struct Kind {
  std::string_view word;
  Koi::U32 typeId;
  Koi::U32 subType;
  Form form;
  Koi::U32 low, high;  // the range of the number, or of the port
  bool lanes;
  bool subIntfs;
};

constexpr Koi::U32 portMax = PortPlace::portMax;

constexpr Kind kinds[] = {
    { "eth", GenericIntfId::ethernetType, 0, place, 1, portMax, true, true },
    { "mgmt", GenericIntfId::managementType, 0, place, 0, portMax, false, false },
    { "vlan", GenericIntfId::vlanType, 0, number, 1, 4094, false, false },
    { "vxlan", GenericIntfId::vxlanType, 0, number, 1, 65535, false, false },
    { "ue", GenericIntfId::unconnectedEthernetType, 0, number, 1, 65535, false, false },
    { "cpu", GenericIntfId::cpuType, 0, nothing, 0, 0, false, false },
    { "lag", GenericIntfId::portChannelType, 0, number, 1, 65535, false, true },
    { "recirc", GenericIntfId::portChannelType, GenericIntfId::recircSubType, number, 1, 65535,
      false, true },
    { "ecmp", GenericIntfId::portChannelType, GenericIntfId::ecmpSubType, number, 1, 65535, false,
      true },
    { "peer-eth", GenericIntfId::peerEthernetType, 0, place, 1, portMax, true, true },
    { "peer-lag", GenericIntfId::peerPortChannelType, 0, number, 1, 65535, false, true },
    { "peer-recirc", GenericIntfId::peerPortChannelType, GenericIntfId::recircSubType, number, 1,
      65535, false, true },
    { "peer-ecmp", GenericIntfId::peerPortChannelType, GenericIntfId::ecmpSubType, number, 1, 65535,
      false, true },
};

constexpr std::string_view rawWord = "intf-0x";
constexpr std::size_t rawDigits = 16;
constexpr std::size_t nameSizeMax = 64;
constexpr Koi::U32 pseudowireVlanMax = 4095;

bool canBeAttached( Koi::U32 typeId ) {
  return typeId == GenericIntfId::ethernetType || typeId == GenericIntfId::portChannelType;
}

// ---- identifier to name ----

std::string rawName( IntfId const & intfId ) {
  constexpr char digits[] = "0123456789abcdef";
  std::string name( rawWord );
  for( int shift = 60; shift >= 0; shift -= 4 )
    name += digits[intfId.value() >> shift & 15];
  return name;
}

/// The name by the table of kinds; empty when no kind has one for it.
std::string nameByKind( GenericIntfId const & intf ) {
  for( Kind const & kind : kinds ) {
    if( kind.typeId != intf.typeId() || kind.subType != intf.subType() )
      continue;
    Koi::U32 const subIntf = intf.part( 0 ), part1 = intf.part( 1 );
    auto const at = kind.form == place ? PortPlace::ofPart( part1 ) : PortPlace{ 0, part1, 0 };
    bool const laneFits = at.lane == 0 || ( kind.lanes && at.module != 0 );
    if( at.port < kind.low || at.port > kind.high || !laneFits ||
        ( subIntf != 0 && !kind.subIntfs ) )
      return {};
    std::string name( kind.word );
    if( at.module != 0 )
      name += std::to_string( at.module ) + '/';
    if( kind.form != nothing )
      name += std::to_string( at.port );
    if( at.lane != 0 )
      name += '/' + std::to_string( at.lane );
    if( subIntf != 0 )
      name += '.' + std::to_string( subIntf );
    return name;
  }
  return {};
}

/// The attachment's name, a colon and the VLAN; empty when there is no such attachment or VLAN.
std::string nameOfPseudowire( GenericIntfId const & intf ) {
  Koi::U32 const connectorType = intf.part( 0 ) & 0xff, vlan = intf.part( 0 ) >> 8;
  if( !canBeAttached( connectorType ) || vlan < 1 || vlan > pseudowireVlanMax )
    return {};
  IntfId const attachment( Koi::U64{ connectorType } << 25 | intf.part( 1 ) );
  return std::string( nameOfIntf( attachment ).view() ) + ':' + std::to_string( vlan );
}

// ---- name to identifier ----

/// In quotes, with every odd byte escaped: a refusal shows what it refuses.
std::string quoted( std::string_view text ) {
  std::string shown;
  Koi::appendText( shown, Koi::String8( text ) );
  return shown;
}

/// One pass over a name, from the left.
class NameReader {
 public:
  explicit NameReader( std::string_view name, std::size_t start = 0 )
      : name_( name ), rest_( name.substr( start ) ) {}

  [[noreturn]] void refuse( std::string const & why ) const {
    Koi::throwParseException( "Interface name " + quoted( name_ ) + why );
  }

  bool atEnd() const { return rest_.empty(); }

  bool skipped( char c ) {
    if( rest_.empty() || rest_.front() != c )
      return false;
    rest_.remove_prefix( 1 );
    return true;
  }

  /// The letters and hyphens that come next.
  std::string_view word() {
    std::size_t size = 0;
    while( size < rest_.size() &&
           ( rest_[size] == '-' || ( rest_[size] >= 'a' && rest_[size] <= 'z' ) ) )
      ++size;
    std::string_view found = rest_.substr( 0, size );
    rest_.remove_prefix( size );
    return found;
  }

  /// Does a number come next, and that sign behind it?
  bool numberThen( char sign ) const {
    std::size_t const size = digits();
    return size > 0 && size < rest_.size() && rest_[size] == sign;
  }

  /// The decimal number that comes next; what names it in a refusal.
  Koi::U32 number( char const * what, Koi::U32 low, Koi::U32 high ) {
    std::size_t const size = digits();
    if( size == 0 )
      refuse( ": a number was expected " +
              ( rest_.empty() ? "at the end" : "before " + quoted( rest_ ) ) );
    if( size > 1 && rest_.front() == '0' )
      refuse( ": a number does not begin with 0" );
    Koi::U32 value = 0;
    auto const read = std::from_chars( rest_.data(), rest_.data() + size, value );
    if( read.ec != std::errc() || value < low || value > high )
      outOfRange( what, low, high );
    rest_.remove_prefix( size );
    return value;
  }

 private:
  /// How many digits come next.
  std::size_t digits() const {
    std::size_t size = 0;
    while( size < rest_.size() && rest_[size] >= '0' && rest_[size] <= '9' )
      ++size;
    return size;
  }

  [[noreturn]] void outOfRange( char const * what, Koi::U32 low, Koi::U32 high ) const {
    std::string text = "Interface name " + quoted( name_ ) + ": " + what;
    if( low > 0 )
      text += " < " + std::to_string( low ) + " or";
    Koi::throwRangeException( text + " > " + std::to_string( high ) + " not allowed" );
  }

  std::string_view name_, rest_;
};

Koi::U32 placeRead( NameReader & reader, Kind const & kind ) {
  PortPlace at;
  if( reader.numberThen( '/' ) ) {
    at.module = reader.number( "module", 1, PortPlace::moduleMax );
    reader.skipped( '/' );
  }
  at.port = reader.number( "port", kind.low, kind.high );
  if( at.module != 0 && kind.lanes && reader.skipped( '/' ) )
    at.lane = reader.number( "lane", 1, PortPlace::laneMax );
  return at.part();
}

IntfId namedByKind( std::string_view name ) {
  NameReader reader( name );
  std::string_view const word = reader.word();
  for( Kind const & kind : kinds ) {
    if( kind.word != word )
      continue;
    GenericIntfId intf{ IntfId() };
    intf.typeIdIs( kind.typeId );
    intf.subTypeIs( kind.subType );
    if( kind.form == place )
      intf.partIs( 1, placeRead( reader, kind ) );
    else if( kind.form == number )
      intf.partIs( 1, reader.number( "number", kind.low, kind.high ) );
    if( kind.subIntfs && reader.skipped( '.' ) )
      intf.partIs( 0, reader.number( "sub-interface", 1, 0xffffffff ) );
    if( !reader.atEnd() )
      reader.refuse( ": characters are left behind the name" );
    return intf.intfId();
  }
  reader.refuse( " is of no known kind" );
}

IntfId namedRaw( std::string_view name ) {
  std::string_view const digits = name.substr( rawWord.size() );
  Koi::U64 value = 0;
  auto const read = std::from_chars( digits.data(), digits.data() + digits.size(), value, 16 );
  IntfId const intfId( value );
  if( digits.size() != rawDigits || read.ec != std::errc() || rawName( intfId ) != name )
    NameReader( name ).refuse( ": 16 lower-case hexadecimal digits were expected behind intf-0x" );
  if( Koi::String8 const proper = nameOfIntf( intfId ); proper != Koi::String8( name ) )
    NameReader( name ).refuse( " is spelled " + quoted( proper ) );
  return intfId;
}

IntfId named( std::string_view name ) {
  if( name.empty() )
    return IntfId();
  return name.starts_with( rawWord ) ? namedRaw( name ) : namedByKind( name );
}

IntfId namedPseudowire( std::string_view name, std::size_t colon ) {
  GenericIntfId const attachment( named( name.substr( 0, colon ) ) );
  NameReader reader( name, colon + 1 );
  if( !canBeAttached( attachment.typeId() ) || attachment.part( 0 ) != 0 )
    reader.refuse( ": a pseudowire stands on an Ethernet port or a port-channel" );
  Koi::U32 const vlan = reader.number( "VLAN", 1, pseudowireVlanMax );
  if( !reader.atEnd() )
    reader.refuse( ": characters are left behind the name" );
  GenericIntfId intf( attachment );
  intf.typeIdIs( GenericIntfId::pseudowireType );
  intf.partIs( 0, vlan << 8 | attachment.typeId() );
  return intf.intfId();
}

}  // namespace

Koi::String8 nameOfIntf( IntfId const & intfId ) {
  if( intfId == IntfId() )
    return {};
  GenericIntfId const intf( intfId );
  std::string name = intf.typeId() == GenericIntfId::pseudowireType ? nameOfPseudowire( intf )
                                                                    : nameByKind( intf );
  return name.empty() ? rawName( intfId ) : name;
}

IntfId intfOfName( Koi::String8 const & name ) {
  if( name.size() > nameSizeMax )
    Koi::throwParseException( "Interface name of " + std::to_string( name.size() ) +
                              " bytes is too long" );
  std::size_t const colon = name.view().find( ':' );
  return colon == std::string_view::npos ? named( name ) : namedPseudowire( name, colon );
}

}  // namespace Wirex
