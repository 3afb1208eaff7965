// Signals.h: how SIGINT and SIGTERM end the programs of this folder: the activity stops.
#pragma once

#include <koi/Activity.h>

namespace VlanInterfaces {

class Signals {
 public:
  /// From now on; the only object of its kind in the process. A second signal ends the process.
  explicit Signals( Koi::Activity * activity );

  bool isInterrupted() const;

 private:
  Koi::DescriptorWatch const watch_;
};

}  // namespace VlanInterfaces
