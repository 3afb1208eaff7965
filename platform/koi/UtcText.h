// UtcText.h: moments, in seconds since 1970 began, and as people read them. Any thread.
#pragma once

#include <string>

#include <koi/Export.h>
#include <koi/Types.h>

namespace Koi {

/// This moment, by the machine's clock, which may be set.
KOI_PUBLIC Seconds secondsSince1970();

/// Appends the moment that many seconds after 1970 began, in UTC and rounded to microseconds:
/// 2012-11-23T17:00:39.425111Z; of one outside the years 0 to 9999 the seconds,
/// 253402300800.000000.
KOI_PUBLIC void appendUtcText( std::string & out, Seconds time );

/// The same by itself.
KOI_PUBLIC std::string utcText( Seconds time );

}  // namespace Koi
