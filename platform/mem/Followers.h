// Followers.h: whom a table's writer tells that there is something new, and what they say they
// have. Used by the table's writer, on one thread.
#pragma once

#include <mem/Words.h>

namespace Mem {

class Followers {
 public:
  virtual ~Followers() = default;

  /// The lowest sequence that all attached readers have acknowledged, where `sequence` is the
  /// table's; all ones when none is attached. Who has not moved for a second although there is
  /// something new is not waited for.
  virtual U64 lowestSequence( U64 sequence ) = 0;
  /// Some reader is attaching and has not said yet where it stands.
  virtual bool areAwaited() = 0;
  virtual U32 numReaders() const = 0;
  /// Wakes who sleeps. What is to be found was published before.
  virtual void wake() = 0;

  static constexpr U64 nobody = ~U64{ 0 };
};

}  // namespace Mem
