// ServeException.h: why a tree cannot be served. Any thread may raise and catch it.
#pragma once

#include <koi/Exception.h>

namespace Coredb {

/// The text names the path and what the system said of it.
class KOI_PUBLIC ServeException : public Koi::Exception {
 public:
  using Exception::Exception;
  ~ServeException() override;
};

}  // namespace Coredb
