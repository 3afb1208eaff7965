// Timing.h: the loops that take time: how long an operation takes on average, and one by one.
#pragma once

#include <algorithm>
#include <chrono>
#include <vector>

#include "Contender.h"

namespace Bench {

using Clock = std::chrono::steady_clock;

inline double nanoseconds( Clock::duration duration ) {
  return std::chrono::duration< double, std::nano >( duration ).count();
}

/// Makes the compiler believe that the value is read here.
template< typename T >
void keep( T const & value ) {
  asm volatile( "" : : "r"( &value ) : "memory" );
}

/// Nanoseconds a key of work( first key of a stride ), for pass.seconds; the first stride is not
/// timed.
template< typename Work >
double nanosecondsEach( Pass const & pass, std::vector< Key > const & keys, Work && work ) {
  std::size_t at = pass.start % keys.size(), numDone = 0;
  work( &keys[at] );
  auto const start = Clock::now();
  double spent;
  do {
    at = ( at + stride ) % keys.size();
    work( &keys[at] );
    numDone += stride;
    spent = nanoseconds( Clock::now() - start );
  } while( spent < pass.seconds * 1e9 );
  return spent / static_cast< double >( numDone );
}

/// Single operations; what reading the clock takes (some 25 ns) is part of each.
class Latencies {
 public:
  explicit Latencies( std::size_t most ) { all_.reserve( most ); }

  bool full() const { return all_.size() == all_.capacity(); }
  void start() { last_ = Clock::now(); }
  void next() {
    auto const now = Clock::now();
    all_.push_back( static_cast< float >( nanoseconds( now - last_ ) ) );
    last_ = now;
  }

  /// The part-th of all, 1 being the longest. Needs at least one.
  double at( double part ) {
    auto const nth = all_.begin() + static_cast< std::ptrdiff_t >(
                                        part * static_cast< double >( all_.size() - 1 ) );
    std::ranges::nth_element( all_, nth );
    return *nth;
  }

 private:
  std::vector< float > all_;
  Clock::time_point last_;
};

}  // namespace Bench
