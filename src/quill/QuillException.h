// QuillException.h: what a table refuses besides what memory refuses (mem/Rova.h).
#pragma once

#include <koi/Exception.h>

namespace Quill {

/// A table that may not grow has no free slot. Nothing was changed.
class KOI_PUBLIC TableFullException : public Koi::Exception {
 public:
  using Exception::Exception;
  ~TableFullException() override;
};

/// An operation at the wrong time: unpaired direct writes. Nothing was changed.
class KOI_PUBLIC DirectWriteException : public Koi::Exception {
 public:
  using Exception::Exception;
  ~DirectWriteException() override;
};

/// A reader met a change at each of very many attempts in a row; it may ask again.
class KOI_PUBLIC ReaderStarvedException : public Koi::Exception {
 public:
  using Exception::Exception;
  ~ReaderStarvedException() override;
};

}  // namespace Quill
