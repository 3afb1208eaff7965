// Followers.h: whom a table's writer tells that there is something new, and what they say they
// have. Used by the table's writer, on one thread.
#pragma once

#include <quill/Links.h>

namespace Quill {

class Followers {
 public:
  virtual ~Followers() = default;

  /// The lowest sequence that all attached readers have acknowledged; all ones when none is
  /// attached.
  virtual U64 lowestSequence() const = 0;
  /// Some reader is attaching and has not said yet where it stands.
  virtual bool areAwaited() const = 0;
  virtual U32 numReaders() const = 0;
  /// Wakes who sleeps.
  virtual void wake() = 0;

  static constexpr U64 nobody = ~U64{ 0 };
};

}  // namespace Quill
