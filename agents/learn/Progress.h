// Progress.h: the line that tells a waiting person how far the reading is.
#pragma once

#include <chrono>

#include "Learner.h"

namespace Learn {

/// One line on standard error, rewritten in place; silent unless that is a terminal.
class Progress {
 public:
  Progress();
  ~Progress() { erase(); }
  Progress( Progress const & ) = delete;
  Progress & operator=( Progress const & ) = delete;

  /// Shows the totals, at most four times a second; the first time a quarter of a second after the
  /// start.
  void totalsAre( Learner const & learner );

  /// Takes the line away, as any other output needs. The next totalsAre() may show it again.
  void erase();

 private:
  using Clock = std::chrono::steady_clock;

  bool const terminal_;
  bool shown_ = false;
  Clock::time_point shownAt_ = Clock::now();
};

}  // namespace Learn
