#include "IntfTexts.h"

#include <cctype>

#include <koi/UtcText.h>

namespace Lumo {
namespace {

constexpr Koi::U64 million = 1000000, billion = 1000 * million;

/// "up" of "operUp": the enumerator without the word that all of them begin with.
std::string withoutWord( std::string_view word, Koi::String8 const & enumerator ) {
  std::string text( enumerator.view() );
  if( text.starts_with( word ) && text.size() > word.size() ) {
    text.erase( 0, word.size() );
    text[0] = static_cast< char >( std::tolower( static_cast< unsigned char >( text[0] ) ) );
  }
  return text;
}

}  // namespace

std::string printable( std::string_view text ) {
  constexpr char digits[] = "0123456789abcdef";
  std::string line;
  for( char const c : text ) {
    auto const byte = static_cast< unsigned char >( c );
    if( byte >= ' ' && byte != 0x7f )
      line += c;
    else
      ( ( line += "\\x" ) += digits[byte >> 4] ) += digits[byte & 15];
  }
  return line.empty() ? "-" : line;
}

std::string operStatusText( Interface::IntfOperStatus status ) {
  return withoutWord( "oper", stringValue( status ) );
}
std::string linkStatusText( Interface::LinkStatus status ) {
  return withoutWord( "link", stringValue( status ) );
}

std::string speedText( Koi::U64 speed ) {
  if( speed == 0 )
    return "-";
  for( auto const & [unit, letter] : { std::pair( billion, "G" ), std::pair( million, "M" ) } )
    if( speed >= unit && speed % ( unit / 10 ) == 0 ) {
      Koi::U64 const tenths = speed % unit / ( unit / 10 );
      return std::to_string( speed / unit ) +
             ( tenths == 0 ? "" : "." + std::to_string( tenths ) ) + letter;
    }
  return std::to_string( speed );
}

std::string addressText( Wirex::EthAddr const & address ) {
  return address == Wirex::EthAddr() ? "-" : std::string( address.stringValue().view() );
}

std::string momentText( Koi::Seconds time ) { return time == 0 ? "-" : Koi::utcText( time ); }

nlohmann::ordered_json statusJson( Interface::EthIntfStatus const & status ) {
  return { { "intf", status.intfId().stringValue().view() },
           { "genId", status.genId() },
           { "active", status.active() },
           { "description", status.description().view() },
           { "operStatus", stringValue( status.operStatus() ).view() },
           { "linkStatus", stringValue( status.linkStatus() ).view() },
           { "lastLinkStatusChange", status.lastLinkStatusChange() },
           { "linkStatusChanges", status.linkStatusChanges() },
           { "speed", status.speed() },
           { "addr", status.addr().stringValue().view() },
           { "mtu", status.mtu() } };
}

}  // namespace Lumo
