// EverythingHandlers.h: how a test takes part in the handlers of Everything.koi.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include <Everything.h>

namespace Everything {

/// What a handler was called for: "initialized", "shelf 7", "book 7 Emma", "cleanup".
using Handled = std::function< void( RoomKeeper &, std::string const & ) >;

/// Keeps a list of the handlers that ran while it lives, and lets a test act inside them.
class HandlerLog {
 public:
  explicit HandlerLog( Handled act = {} );
  ~HandlerLog();
  /// The calls since it was last asked.
  std::vector< std::string > taken();

 private:
  friend void handled( RoomKeeper & keeper, std::string const & what );
  Handled act_;
  std::vector< std::string > calls_;
};

}  // namespace Everything
