#include "NumberRange.h"

#include <algorithm>
#include <charconv>
#include <string>

#include <koi/Exception.h>

namespace Lumo {

std::optional< unsigned > numberOf( std::string_view text ) {
  unsigned number = 0;
  auto const end = text.data() + text.size();
  auto const read = std::from_chars( text.data(), end, number );
  return read.ec == std::errc() && read.ptr == end ? std::optional( number ) : std::nullopt;
}

NumberRange numberRangeOf( std::string_view text, unsigned low, unsigned high ) {
  auto const dash = std::min( text.find( '-' ), text.size() );
  auto const first = numberOf( text.substr( 0, dash ) );
  auto const last = dash == text.size() ? first : numberOf( text.substr( dash + 1 ) );
  if( !first || !last || *first > *last || *first < low || *last > high )
    Koi::throwRangeException( "a number from " + std::to_string( low ) + " to " +
                              std::to_string( high ) + " was expected, or a range as 20-29" );
  return { *first, *last };
}

}  // namespace Lumo
