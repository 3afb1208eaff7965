// Rova.h: what memory that is shared refuses. Any thread may raise and catch these.
#pragma once

#include <koi/Exception.h>

namespace Rova {

/// What is in a file cannot be what a writer left there. The text says what and where.
class KOI_PUBLIC CorruptionDetectedException : public Koi::Exception {
 public:
  using Exception::Exception;
  ~CorruptionDetectedException() override;
};

/// Something was asked to begin with what it cannot begin with.
class KOI_PUBLIC InvalidInitializeException : public Koi::Exception {
 public:
  using Exception::Exception;
  ~InvalidInitializeException() override;
};

/// No room, no mapping, no permission. The text names the file and what the system said.
class KOI_PUBLIC MemoryResourceException : public Koi::Exception {
 public:
  using Exception::Exception;
  ~MemoryResourceException() override;
};

}  // namespace Rova
