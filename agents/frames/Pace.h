// Pace.h: lets captured frames come as they came then, or so many times faster. One thread, that of
// the activity, which runs while it waits, be it for a frame's time or for who writes into a pipe.
#pragma once

#include <koi/Activity.h>

#include "MergedCaptures.h"

namespace Frames {

class Pace {
 public:
  /// So many times faster; 0 does not wait.
  Pace( Koi::Activity & activity, double speed ) : activity_( activity ), speed_( speed ) {}

  /// Whether a frame of that time is due; when not, the activity has run for a tenth of a second,
  /// or until it is. The first is due at once; one from before another that has come is, too.
  bool isDue( CaptureTime const & time );

  /// Whether the captures, opened to be watched, can be read on without waiting; when not, the
  /// activity has run for a tenth of a second, or until they can.
  bool isReady( MergedCaptures const & captures );

 private:
  Koi::Activity & activity_;
  double const speed_;
  bool hasBegun_ = false;
  double first_ = 0;  // the time of the first frame, and when it came
  Koi::Seconds began_ = 0;
  unsigned numUnwatched_ = 0;  // frames since the activity ran
};

}  // namespace Frames
