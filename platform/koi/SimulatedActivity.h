// SimulatedActivity.h: activities whose clock is virtual and whose order is drawn from a seed, so
// that a whole system of agents runs in one process, in no time, and again the same way.
//
// For tests, on one thread. The same seed and the same program give the same trace, as long as
// every descriptor's other end is in this process and nothing is posted by other threads.
//
// Time stands still while anything is ready, then jumps to the next timer: what defers itself again
// and again keeps the clock where it is. Deferred work of one activity runs first in, first out;
// timers of one time, ready descriptors and the activities themselves go in the order that is
// drawn.
#pragma once

#include <random>

#include <koi/Activity.h>

namespace Koi {

class SimulatedActivity;

/// The clock and the order that several activities share. Lives as long as one of them.
class KOI_PUBLIC SimulatedWorld final : public PtrInterface {
 public:
  explicit SimulatedWorld( U64 seed ) : random_( seed ) {}

  /// Seconds since the world began.
  Seconds now() const { return now_; }

  /// Runs all activities until stop() or until nothing is ready and no timer is armed: a descriptor
  /// that nobody in this world makes ready is not waited for. An activity that stops itself rests,
  /// the others go on.
  void run();
  /// The same up to that much later, where the clock then stands unless it was stopped.
  void runFor( Seconds duration );
  /// Runs one handler of one activity, moving the clock to it; false when there is none.
  bool runOnce();
  void stop() { stopped_ = true; }

 private:
  friend class SimulatedActivity;

  void handleZeroRef() const override { delete this; }
  ~SimulatedWorld() = default;

  class Run;

  void nobodyRests();
  /// Runs until that time, or until `one` stops.
  void runUntil( Seconds end, SimulatedActivity * one );
  bool step( Seconds end );
  std::size_t drawn( std::size_t numChoices );

  std::mt19937_64 random_;
  Seconds now_ = 0;
  bool stopped_ = false;
  bool running_ = false;
  std::vector< SimulatedActivity * > activities_;
};

/// One agent's activity. Running it runs the world that it is in, until it stops.
class KOI_PUBLIC SimulatedActivity final : public Activity {
 public:
  /// Alone in a world.
  explicit SimulatedActivity( U64 seed ) : SimulatedActivity( new SimulatedWorld( seed ) ) {}
  explicit SimulatedActivity( Ptr< SimulatedWorld > world );

  Seconds now() const override { return world_->now(); }
  void run() override;
  void runFor( Seconds duration ) override;
  bool runOnce() override { return world_->runOnce(); }

 protected:
  ~SimulatedActivity();
  void interestIs( int, short ) override {}
  void addReady( std::vector< std::pair< int, short > > & ready ) override;
  void wake() override {}
  std::size_t drawn( std::size_t numChoices ) override;

 private:
  friend class SimulatedWorld;

  Ptr< SimulatedWorld > const world_;
};

}  // namespace Koi
