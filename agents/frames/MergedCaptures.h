// MergedCaptures.h: the frames of several captures as one stream, in the order of their times.
//
// Used by one thread. A capture that cannot be opened, or turns out damaged, ends where it is and
// is told of; the others go on. Within a capture the order of the file holds even where its times
// run backwards. Frames of equal times come in the order in which their captures were named.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "Capture.h"

namespace Frames {

/// Several captures, read together.
class MergedCaptures {
 public:
  /// Told once of a capture that stopped before its end: its place in the list, what was wrong and
  /// how many frames it gave.
  using OnStopped = std::function< void( std::size_t capture, std::string const & why,
                                         std::uint64_t numFrames ) >;

  /// Opens all the files.
  MergedCaptures( std::vector< std::string > const & paths, OnStopped onStopped,
                  Capture::Opening opening = Capture::plain );

  /// A frame and the place of its capture in the list.
  struct Taken {
    std::size_t capture = 0;
    CapturedFrame const * frame = nullptr;  // null when all captures have ended
  };

  /// The earliest frame that was not taken yet. Its bytes hold until the next call.
  Taken next();

  /// What next() may have to wait for now; -1 when it need not. Of captures opened to be watched.
  int awaited() const;

 private:
  struct Head {
    std::unique_ptr< Capture > capture;     // null when it could not be opened
    CapturedFrame const * frame = nullptr;  // the next one; null when the capture has ended
  };

  void advance( std::size_t index );

  OnStopped const onStopped_;
  std::vector< Head > heads_;
  /// Whose next frame is read when one is asked for: all of them at first, then the one that was
  /// taken last.
  std::vector< std::size_t > toAdvance_;
};

}  // namespace Frames
