// PendingKeys.h: the keys that changed and are to be told, in the order in which they came. One
// thread; telling may add keys.
#pragma once

#include <chrono>
#include <deque>

#include <quill/Record.h>

namespace Quill {

template< class R >
class PendingKeys {
 public:
  using Clock = std::chrono::steady_clock;

  void add( KeyWords< R > const & key ) { keys_.push_back( key ); }

  /// Calls tell( key ) for each; false when the time is over before all is told.
  template< class Tell >
  bool told( Clock::time_point end, Tell tell ) {
    constexpr std::size_t keysBetweenLooks = 64;  // at the clock
    while( numTold_ < keys_.size() ) {
      auto const key = R::key( keys_[numTold_++].word );
      tell( key );
      if( numTold_ % keysBetweenLooks == 0 && Clock::now() >= end )
        return false;
    }
    keys_.clear();
    numTold_ = 0;
    return true;
  }

 private:
  std::deque< KeyWords< R > > keys_;  // which never moves them: that takes as long as they are many
  std::size_t numTold_ = 0;
};

}  // namespace Quill
