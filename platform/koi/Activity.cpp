#include <koi/Activity.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

#include <poll.h>
#include <sys/stat.h>

#include <koi/Exception.h>

namespace Koi {
namespace {

thread_local Ptr< Activity > ownActivity;
thread_local Activity * currentActivity = nullptr;

/// While a handler runs, its activity is the default one.
class Current {
 public:
  explicit Current( Activity * activity ) : before_( std::exchange( currentActivity, activity ) ) {}
  ~Current() { currentActivity = before_; }

 private:
  Activity * const before_;
};

short const troubles = POLLERR | POLLHUP;

}  // namespace

Activity * defaultActivity() {
  if( currentActivity )
    return currentActivity;
  if( !ownActivity )
    ownActivity = activityFactory();
  return ownActivity;
}

void defaultActivityIs( Ptr< Activity > const & activity ) { ownActivity = activity; }

// Activity

Activity::~Activity() {
  for( auto * handle : handles_ )
    handle->activity_ = nullptr;
}

void Activity::handleZeroRef() const { delete this; }

void Activity::deferIs( Task task ) {
  if( !task )
    throwRangeException( "null task for Activity::defer not allowed" );
  deferred_.push_back( { std::move( task ), nullptr } );
}

void Activity::post( Task task ) {
  if( !task )
    throwRangeException( "null task for Activity::post not allowed" );
  {
    std::lock_guard const locked( postLock_ );
    posted_.push_back( { std::move( task ), nullptr } );
    // Under the lock: once it is free the activity may run the task and go.
    wake();
  }
}

Activity::Run::Run( Activity & activity )
    : activity_( &activity ), alive_( activity.koiRefCount() != 0 ? &activity : nullptr ) {
  KOI_ASSERT( !activity.running_ );
  activity.running_ = true;
}

Seconds Activity::nextTime() const {
  return timers_.empty() ? std::numeric_limits< Seconds >::infinity()
                         : timers_.begin()->first.first;
}

std::map< int, short > Activity::interests() const {
  std::map< int, short > all;
  for( auto const & [descriptor, watch] : watches_ )
    all[descriptor] |= watch->events_;
  return all;
}

short Activity::interest( int descriptor ) const {
  short events = 0;
  auto const [first, last] = watches_.equal_range( descriptor );
  for( auto at = first; at != last; ++at )
    events |= at->second->events_;
  return events;
}

void Activity::watchIs( DescriptorWatch * watch, bool on ) {
  int const descriptor = watch->descriptor_;
  short const before = interest( descriptor );
  auto const [first, last] = watches_.equal_range( descriptor );
  auto at = std::find_if( first, last, [&]( auto const & one ) { return one.second == watch; } );
  if( on )
    at = watches_.emplace( descriptor, watch );
  else
    watches_.erase( at );
  short const after = interest( descriptor );
  if( after != before )
    try {
      interestIs( descriptor, after );
    } catch( std::exception const & ) {  // the system's refusal: the watch is as it was
      if( on )
        watches_.erase( at );
      throw;
    }
}

std::size_t Activity::drawn( std::size_t ) { return 0; }

std::vector< Timer * > Activity::dueTimers() {
  std::vector< Timer * > due;
  Seconds const at = now();
  for( auto const & [time, timer] : timers_ ) {
    if( time.first > at )
      break;
    due.push_back( timer );
  }
  // Those of one time go as drawn.
  for( auto first = due.begin(); first != due.end(); ++first ) {
    auto const last = std::find_if(
        first, due.end(), [&]( auto * timer ) { return timer->time_ != ( *first )->time_; } );
    auto const numChoices = static_cast< std::size_t >( last - first );
    std::swap( *first, first[static_cast< std::ptrdiff_t >( drawn( numChoices ) )] );
  }
  return due;
}

std::vector< DescriptorWatch * > Activity::readyWatches() {
  std::vector< std::pair< int, short > > descriptors;
  if( !watches_.empty() )
    addReady( descriptors );
  std::vector< DescriptorWatch * > ready;
  for( auto const & [descriptor, events] : descriptors ) {
    auto const [first, last] = watches_.equal_range( descriptor );
    for( auto at = first; at != last; ++at )
      if( events & ( at->second->events_ | troubles ) )
        ready.push_back( at->second );
  }
  // Descriptors have the numbers that happened to be free: watches go in the order of their making.
  std::sort( ready.begin(), ready.end(), []( auto * a, auto * b ) { return a->id_ < b->id_; } );
  return ready;
}

bool Activity::gather() {
  if( !turn_.empty() )
    return true;

  // 1. What is due and what is ready; each ready descriptor anywhere among the timers, as drawn.
  auto const timers = dueTimers();
  std::vector< ActivityHandle * > order;
  for( auto * timer : timers )
    order.push_back( timer );
  for( auto * watch : readyWatches() )
    order.insert( order.end() - static_cast< std::ptrdiff_t >( drawn( order.size() + 1 ) ), watch );
  Turn called;
  for( auto * handle : order )
    called.push_back( { nullptr, handle } );

  // 2. Nothing fails from here on. Deferred work goes first.
  turn_.splice( turn_.end(), deferred_ );
  {
    std::lock_guard const locked( postLock_ );
    turn_.splice( turn_.end(), posted_ );
  }

  // 3. Timers leave their queue, and each handle knows its place.
  for( auto * timer : timers ) {
    timers_.erase( { timer->time_, timer->order_ } );
    timer->armed_ = false;
  }
  for( auto event = called.begin(); event != called.end(); ++event ) {
    event->handle->queued_ = event;
    event->handle->isQueued_ = true;
  }
  turn_.splice( turn_.end(), called );
  return !turn_.empty();
}

bool Activity::dispatch() {
  Event const event = std::move( turn_.front() );
  turn_.pop_front();
  Current const current( this );
  if( !event.handle ) {
    event.task();
    return true;
  }
  event.handle->isQueued_ = false;
  if( !event.handle->begin() )
    return false;
  auto const handler = event.handle->handler_;
  ( *handler )();
  return true;
}

// The handles

ActivityHandle::ActivityHandle( Activity * activity, Task handler )
    : activity_( activity ? activity : defaultActivity() ),
      handler_( std::make_shared< Task const >( std::move( handler ) ) ) {
  if( !*handler_ )
    throwRangeException( "null handler not allowed" );
  place_ = activity_->handles_.insert( activity_->handles_.end(), this );
  id_ = activity_->numHandles_++;
}

ActivityHandle::~ActivityHandle() {
  unqueue();
  if( activity_ )
    activity_->handles_.erase( place_ );
}

void ActivityHandle::unqueue() {
  if( activity_ && isQueued_ )
    activity_->turn_.erase( queued_ );
  isQueued_ = false;
}

void Timer::timeIs( Seconds at ) {
  if( !std::isfinite( at ) )
    throwRangeException( "Timer::time NaN or infinite not allowed" );
  if( !activity_ )
    return;
  timeDel();
  time_ = at;
  order_ = activity_->numArmed_++;
  activity_->timers_.emplace( std::pair( time_, order_ ), this );
  armed_ = true;
}

void Timer::delayIs( Seconds delay ) { timeIs( activity_ ? activity_->now() + delay : delay ); }

void Timer::timeDel() {
  unqueue();
  if( activity_ && armed_ )
    activity_->timers_.erase( { time_, order_ } );
  armed_ = false;
}

DescriptorWatch::DescriptorWatch( Activity * activity, int descriptor, Direction direction,
                                  Task handler )
    : ActivityHandle( activity, std::move( handler ) ),
      descriptor_( descriptor ),
      events_( direction == readable ? POLLIN : POLLOUT ) {
  struct stat kind;
  if( fstat( descriptor, &kind ) != 0 )
    throwRangeException( "descriptor " + std::to_string( descriptor ) + " is not open" );
  if( S_ISREG( kind.st_mode ) || S_ISDIR( kind.st_mode ) )
    throwRangeException( "descriptor " + std::to_string( descriptor ) + " never waits" );
  isWatchingIs( true );
}

void DescriptorWatch::isWatchingIs( bool on ) {
  if( on == isWatching_ || !activity_ )
    return;
  if( !on )
    unqueue();
  activity_->watchIs( this, on );
  isWatching_ = on;
}

bool DescriptorWatch::begin() {
  // Another handler may have read what was there, and reading again would wait.
  pollfd ask{ descriptor_, events_, 0 };
  return poll( &ask, 1, 0 ) == 1 && !( ask.revents & POLLNVAL );
}

}  // namespace Koi
