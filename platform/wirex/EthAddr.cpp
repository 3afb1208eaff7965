// EthAddr.cpp: the text of a MAC address.

#include <wirex/EthAddr.h>

namespace Wirex {

namespace {

constexpr std::ptrdiff_t textSize = 17;

/// The number that a lower-case hexadecimal digit stands for, or -1.
int digitValue( char c ) {
  if( c >= '0' && c <= '9' )
    return c - '0';
  if( c >= 'a' && c <= 'f' )
    return c - 'a' + 10;
  return -1;
}

}  // namespace

EthAddr EthAddr::koiParsed( Koi::String8::IteratorConst & it,
                            Koi::String8::IteratorConst const & end ) {
  EthAddr parsed;
  bool fits = end - it >= textSize;
  for( std::size_t i = 0; fits && i < parsed.bytes_.size(); ++i ) {
    char const * at = it + 3 * i;
    int const high = digitValue( at[0] ), low = digitValue( at[1] );
    fits = high >= 0 && low >= 0 && ( i == 0 || at[-1] == ':' );
    parsed.bytes_[i] = static_cast< Koi::U8 >( high << 4 | low );
  }
  if( !fits )
    Koi::throwParseException( "a MAC address was expected at '" + Koi::restForMessage( it, end ) +
                              "'" );
  it += textSize;
  return parsed;
}

EthAddr::EthAddr( Koi::String8 const & text ) {
  Koi::String8::IteratorConst it = text.begin();
  *this = koiParsed( it, text.end() );
  Koi::strepToValueEnd( text, it );
}

Koi::String8 EthAddr::stringValue() const {
  constexpr char digits[] = "0123456789abcdef";
  char text[textSize];
  for( std::size_t i = 0; i < bytes_.size(); ++i ) {
    text[3 * i] = digits[bytes_[i] >> 4];
    text[3 * i + 1] = digits[bytes_[i] & 15];
    if( i > 0 )
      text[3 * i - 1] = ':';
  }
  return std::string_view( text, textSize );
}

}  // namespace Wirex
