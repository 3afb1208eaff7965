// Replay.h: the captures of a command line, frame by frame, as a program's loop takes them.
//
// One thread, that of the activity, which runs while a frame is waited for.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "Pace.h"
#include "PortCaptures.h"

namespace Frames {

class Replay {
 public:
  using Complain = std::function< void( std::string const & why ) >;

  /// Opens all captures; so many times faster than they came, 0 for at once. `isInterrupted` is
  /// asked while a frame is waited for. Of a capture that stops before its end `complain` is told,
  /// unless it is interrupted: "<path>: <why> (after <n> frames)".
  Replay( Koi::Activity & activity, std::vector< PortCapture > const & captures, double pace,
          std::function< bool() > isInterrupted, Complain complain );

  /// The next frame, when its time has come, and which capture it is of; no frame when all have
  /// ended, or when it is interrupted. Its bytes hold until the next call.
  MergedCaptures::Taken next();

  /// All captures could be read to their ends so far.
  bool isSound() const { return isSound_; }

 private:
  std::function< bool() > const isInterrupted_;
  bool isSound_ = true;
  Pace pace_;
  MergedCaptures captures_;
};

}  // namespace Frames
