#include <koi/UtcText.h>

#include <charconv>
#include <chrono>
#include <cmath>

namespace Koi {
namespace {

/// Writes the number over the last digits of the text that ends there.
void fill( char * end, unsigned number ) {
  for( ; number != 0; number /= 10 )
    *--end = static_cast< char >( '0' + number % 10 );
}

}  // namespace

Seconds secondsSince1970() {
  return std::chrono::duration< Seconds >( std::chrono::system_clock::now().time_since_epoch() )
      .count();
}

void appendUtcText( std::string & out, Seconds time ) {
  using namespace std::chrono;
  constexpr Seconds year0 = -62167219200, year10000 = 253402300800;
  if( !( year0 <= time && time < year10000 - 1 ) ) {
    char digits[400];
    auto const done =
        std::to_chars( digits, digits + sizeof digits, time, std::chars_format::fixed, 6 );
    out.append( digits, done.ptr );
    return;
  }
  sys_time< microseconds > const instant( microseconds( std::llround( time * 1e6 ) ) );
  auto const day = floor< days >( instant );
  year_month_day const date( day );
  hh_mm_ss const clock( instant - day );
  char text[] = "0000-00-00T00:00:00.000000Z";
  fill( text + 4, static_cast< unsigned >( static_cast< int >( date.year() ) ) );
  fill( text + 7, static_cast< unsigned >( date.month() ) );
  fill( text + 10, static_cast< unsigned >( date.day() ) );
  fill( text + 13, static_cast< unsigned >( clock.hours().count() ) );
  fill( text + 16, static_cast< unsigned >( clock.minutes().count() ) );
  fill( text + 19, static_cast< unsigned >( clock.seconds().count() ) );
  fill( text + 26, static_cast< unsigned >( clock.subseconds().count() ) );
  out.append( text, sizeof text - 1 );
}

std::string utcText( Seconds time ) {
  std::string text;
  appendUtcText( text, time );
  return text;
}

}  // namespace Koi
