#include "Pace.h"

#include <algorithm>

namespace Frames {

namespace {

constexpr Koi::Seconds longestWait = 0.1;

}  // namespace

bool Pace::isDue( CaptureTime const & time ) {
  constexpr unsigned framesBetweenLooks = 256;  // a look costs more than a frame
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

bool Pace::isReady( MergedCaptures const & captures ) {
  int const awaited = captures.awaited();
  if( awaited < 0 )
    return true;
  Koi::DescriptorWatch const watch( &activity_, awaited, Koi::DescriptorWatch::readable,
                                    [this] { activity_.stop(); } );
  activity_.runFor( longestWait );
  return captures.awaited() < 0;
}

}  // namespace Frames
