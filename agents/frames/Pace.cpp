#include "Pace.h"

#include <algorithm>

namespace Frames {

bool Pace::isDue( CaptureTime const & time ) {
  constexpr unsigned framesBetweenLooks = 256;  // a look costs more than a frame
  constexpr Koi::Seconds longestWait = 0.1;
  double const at = time.asSeconds();
  if( !hasBegun_ ) {
    hasBegun_ = true;
    first_ = at;
    began_ = activity_.now();
  }
  Koi::Seconds const wait =
      speed_ > 0 ? began_ + ( at - first_ ) / speed_ - activity_.now() : Koi::Seconds( 0 );
  if( wait > 0 )
    activity_.runFor( std::min( wait, longestWait ) );
  else if( ++numUnwatched_ % framesBetweenLooks == 0 )
    activity_.runFor( 0 );
  return wait <= longestWait;
}

}  // namespace Frames
