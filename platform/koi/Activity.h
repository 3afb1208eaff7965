// Activity.h: the event loop of an agent: deferred work, timers and descriptors, on one thread.
//
// Everything is called on the activity's thread but post(). No handler runs inside another one.
//
// The loop takes turns: what was deferred before the turn began, then the timers that are due, then
// the descriptors that are ready; so neither of them can keep the others waiting for ever.
//
// I1  What has been deferred or posted runs once, first in, first out.
// I2  A timer is armed until just before its handler runs; a handler never runs before its time.
// I3  A handle that is gone, or was switched off, is not called any more, not even later in the
// turn. I4  An exception of a handler leaves run(); what had not run yet runs when the loop is run
// again.
#pragma once

#include <functional>
#include <list>
#include <map>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

#include <koi/Ptr.h>
#include <koi/Types.h>

namespace Koi {

class ActivityHandle;
class Timer;
class DescriptorWatch;

/// What a handler is.
using Task = std::function< void() >;

class KOI_PUBLIC Activity : public PtrInterface {
 public:
  /// A time in seconds that never goes back and has no fixed beginning.
  virtual Seconds now() const = 0;

  /// Runs the task once, after whatever runs now. Refuses a null task: RangeException "null task
  /// for Activity::defer not allowed".
  void deferIs( Task task );

  /// The same from any thread, whose earlier posts run earlier. Whoever posts sees to it that the
  /// activity is still there; posts to come are nothing that run() waits for.
  void post( Task task );

  /// Runs handlers, waiting for them, until stop() or until nothing is deferred, armed or watched.
  virtual void run() = 0;
  /// Runs handlers for that long, or until stop(). It waits to the end even for nothing; with 0 it
  /// runs what is ready.
  virtual void runFor( Seconds duration ) = 0;
  /// Runs one handler, waiting for it; false when there is nothing to wait for.
  virtual bool runOnce() = 0;
  /// The run() or runFor() that is under way ends when the current handler does; without one,
  /// nothing changes.
  void stop() { stopped_ = true; }

 protected:
  Activity() = default;
  virtual ~Activity();
  void handleZeroRef() const override;

  /// Something to run in this turn: a task, or what a handle stands for.
  struct Event {
    Task task;
    ActivityHandle * handle;
  };
  using Turn = std::list< Event >;

  /// One thing after another, none inside another: needs that no run is under way.
  class Run {
   public:
    explicit Run( Activity & activity );
    ~Run() { activity_->running_ = false; }

   private:
    Activity * const activity_;
    Ptr< Activity > const alive_;  // a handler may drop the last reference
  };

  /// Begins a turn if the last one is at its end; false when nothing is ready.
  bool gather();
  /// Runs the next event of the turn; false when it had become void.
  bool dispatch();
  bool hasTurn() const { return !turn_.empty(); }
  bool isStopped() const { return stopped_; }
  void isStoppedIs( bool stopped ) { stopped_ = stopped; }

  /// Anything armed or watched, beside what is ready?
  bool waits() const { return !timers_.empty() || !watches_.empty(); }
  bool watches() const { return !watches_.empty(); }
  /// When the earliest timer is due; infinity when none is armed.
  Seconds nextTime() const;
  /// What the watches of each descriptor want together, as bits of poll().
  std::map< int, short > interests() const;

  /// The watches of that descriptor now want that; 0 when there is none any more.
  virtual void interestIs( int descriptor, short events ) = 0;
  /// Adds the descriptors that are ready, and how, without waiting.
  virtual void addReady( std::vector< std::pair< int, short > > & ready ) = 0;
  /// Something was posted, by any thread.
  virtual void wake() = 0;
  /// Which of so many that may all go first does: the first, unless order is to be drawn.
  virtual std::size_t drawn( std::size_t numChoices );

 private:
  friend class ActivityHandle;
  friend class Timer;
  friend class DescriptorWatch;

  /// The timers that are due, by ascending time, and the descriptors that are ready.
  std::vector< Timer * > dueTimers();
  std::vector< DescriptorWatch * > readyWatches();
  void watchIs( DescriptorWatch * watch, bool on );
  short interest( int descriptor ) const;

  std::list< ActivityHandle * > handles_;
  std::map< std::pair< Seconds, U64 >, Timer * > timers_;  // of one time: in the order of arming
  std::multimap< int, DescriptorWatch * > watches_;
  U64 numArmed_ = 0;
  U64 numHandles_ = 0;

  Turn deferred_;
  Turn turn_;
  bool running_ = false;
  bool stopped_ = false;

  std::mutex postLock_;
  Turn posted_;
};

/// The activity of an agent in a real process. Raises std::system_error when the system gives no
/// descriptor for it.
KOI_PUBLIC Ptr< Activity > activityFactory();

/// The activity whose handler runs now on this thread, or else this thread's own, which is made
/// when it is first asked for.
KOI_PUBLIC Activity * defaultActivity();
/// Makes that one this thread's own; with null the next one who asks gets a fresh one.
KOI_PUBLIC void defaultActivityIs( Ptr< Activity > const & activity );

/// What a timer and a watch have in common. When the activity goes first, the handle stays and is
/// never called; what is set on it then changes nothing.
class KOI_PUBLIC ActivityHandle {
 public:
  ActivityHandle( ActivityHandle const & ) = delete;
  ActivityHandle & operator=( ActivityHandle const & ) = delete;

 protected:
  /// Null means the default activity. Refuses a null handler: RangeException "null handler not
  /// allowed".
  ActivityHandle( Activity * activity, Task handler );
  virtual ~ActivityHandle();

  /// About to be called; false when there is no reason for it any more.
  virtual bool begin() = 0;
  void unqueue();

  Activity * activity_;

 private:
  friend class Activity;

  std::shared_ptr< Task const > const handler_;  // shared: it may end its own handle
  std::list< ActivityHandle * >::iterator place_;
  Activity::Turn::iterator queued_;
  bool isQueued_ = false;

 protected:
  U64 id_ = 0;  // ascending within the activity
  bool isQueued() const { return isQueued_; }
};

/// Calls its handler once at a time. Going away disarms it. Timers of one time run in the order in
/// which they were armed, on a real activity.
class KOI_PUBLIC Timer final : private ActivityHandle {
 public:
  Timer( Activity * activity, Task handler ) : ActivityHandle( activity, std::move( handler ) ) {}
  ~Timer() { timeDel(); }

  /// Arms it, anew if it is armed; a time that is past is due at once, but never within this call.
  /// Refuses what is no time: RangeException "Timer::time NaN or infinite not allowed".
  void timeIs( Seconds at );
  /// The same for so long after now.
  void delayIs( Seconds delay );
  /// Disarms it.
  void timeDel();

  bool isArmed() const { return activity_ && ( armed_ || isQueued() ); }
  /// When it is due, or was when it is not armed.
  Seconds time() const { return time_; }

 private:
  friend class Activity;
  bool begin() override { return true; }

  Seconds time_ = 0;
  U64 order_ = 0;
  bool armed_ = false;
};

/// Calls its handler as long as a descriptor is ready, once a turn; also when its other end has
/// gone or it has failed, so that reading or writing tells. The descriptor stays the caller's: it
/// is neither closed nor changed, and it outlives the watch. Several may watch one descriptor.
class KOI_PUBLIC DescriptorWatch final : private ActivityHandle {
 public:
  enum Direction { readable, writable };

  /// Watches at once. Refuses, as RangeException, what is not open ("descriptor <n> is not open")
  /// and a file or directory, which is always ready ("descriptor <n> never waits").
  DescriptorWatch( Activity * activity, int descriptor, Direction direction, Task handler );
  ~DescriptorWatch() { isWatchingIs( false ); }

  bool isWatching() const { return isWatching_; }
  void isWatchingIs( bool on );

 private:
  friend class Activity;
  bool begin() override;

  int const descriptor_;
  short const events_;
  bool isWatching_ = false;
};

}  // namespace Koi
