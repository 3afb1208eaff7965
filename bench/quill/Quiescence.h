// Quiescence.h: lets a writer wait until the reader holds nothing that was replaced before. For one
// reader and one writer in two threads: the cheapest form of what tables without locks ask of their
// users.
#pragma once

#include <atomic>
#include <cstdint>
#include <thread>

namespace Bench {

class Quiescence {
 public:
  /// The reader may hold something from here on.
  void begin() { count_.fetch_add( 1 ); }
  /// The reader holds nothing right now. A full barrier, lest a look-up that comes next reads a
  /// pointer before the writer can see this.
  void quiet() { count_.fetch_add( 2 ); }
  /// The reader holds nothing until it begins again.
  void end() { count_.fetch_add( 1 ); }

  /// The writer: returns when the reader has held nothing for a moment since this was called.
  void wait() const {
    std::uint64_t const seen = count_.load();
    while( seen % 2 == 1 && count_.load() == seen )
      std::this_thread::yield();
  }

 private:
  alignas( 64 ) std::atomic< std::uint64_t > count_{ 0 };  // odd: a reader is there
};

}  // namespace Bench
