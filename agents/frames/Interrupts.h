// Interrupts.h: how SIGINT and SIGTERM end a program: the activity stops, and a read that waits for
// a pipe ends.
#pragma once

#include <koi/Activity.h>

namespace Frames {

class Interrupts {
 public:
  /// From now on; the only object of its kind in the process. A second signal ends the process.
  explicit Interrupts( Koi::Activity * activity );

  bool isInterrupted() const;

 private:
  Koi::DescriptorWatch const watch_;
};

}  // namespace Frames
