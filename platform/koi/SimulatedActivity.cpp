#include <koi/SimulatedActivity.h>

#include <algorithm>
#include <limits>

#include <poll.h>

namespace Koi {

namespace {

Seconds const endOfTime = std::numeric_limits< Seconds >::infinity();

}  // namespace

// The world

std::size_t SimulatedWorld::drawn( std::size_t numChoices ) {
  // Not a distribution of the library: those differ from one to the next.
  return numChoices < 2 ? 0 : static_cast< std::size_t >( random_() % numChoices );
}

bool SimulatedWorld::step( Seconds end ) {
  for( ;; ) {
    std::vector< SimulatedActivity * > ready;
    Seconds next = endOfTime;
    for( auto * activity : activities_ )
      if( !activity->isStopped() ) {
        if( activity->gather() )
          ready.push_back( activity );
        next = std::min( next, activity->nextTime() );
      }
    if( !ready.empty() ) {
      // A handler may drop the last reference to its own activity, or to another one.
      SimulatedActivity * const one = ready[drawn( ready.size() )];
      Ptr< SimulatedActivity > const alive( one->koiRefCount() != 0 ? one : nullptr );
      if( one->dispatch() )
        return true;
    } else if( next <= end && next != endOfTime ) {
      now_ = std::max( now_, next );
    } else {
      return false;
    }
  }
}

class SimulatedWorld::Run {
 public:
  explicit Run( SimulatedWorld & world )
      : world_( &world ), alive_( world.koiRefCount() != 0 ? &world : nullptr ) {
    KOI_ASSERT( !world.running_ );
    world.running_ = true;
    world.stopped_ = false;
  }
  ~Run() { world_->running_ = false; }

 private:
  SimulatedWorld * const world_;
  Ptr< SimulatedWorld > const alive_;  // a handler may drop the last reference
};

void SimulatedWorld::runUntil( Seconds end, SimulatedActivity * one ) {
  Run const run( *this );
  while( !stopped_ && !( one && one->isStopped() ) )
    if( !step( end ) ) {
      if( end != endOfTime )
        now_ = std::max( now_, end );
      return;
    }
}

void SimulatedWorld::nobodyRests() {
  for( auto * activity : activities_ )
    activity->isStoppedIs( false );
}

void SimulatedWorld::run() {
  nobodyRests();
  runUntil( endOfTime, nullptr );
}

void SimulatedWorld::runFor( Seconds duration ) {
  nobodyRests();
  runUntil( now_ + duration, nullptr );
}

bool SimulatedWorld::runOnce() {
  nobodyRests();
  Run const run( *this );
  return step( endOfTime );
}

// An activity in it

SimulatedActivity::SimulatedActivity( Ptr< SimulatedWorld > world ) : world_( std::move( world ) ) {
  world_->activities_.push_back( this );
}

SimulatedActivity::~SimulatedActivity() { std::erase( world_->activities_, this ); }

void SimulatedActivity::run() {
  Run const run( *this );
  isStoppedIs( false );
  world_->runUntil( endOfTime, this );
}

void SimulatedActivity::runFor( Seconds duration ) {
  Run const run( *this );
  isStoppedIs( false );
  world_->runUntil( now() + duration, this );
}

std::size_t SimulatedActivity::drawn( std::size_t numChoices ) {
  return world_->drawn( numChoices );
}

void SimulatedActivity::addReady( std::vector< std::pair< int, short > > & ready ) {
  std::vector< pollfd > ask;
  for( auto const & [descriptor, events] : interests() )
    ask.push_back( { descriptor, events, 0 } );
  poll( ask.data(), ask.size(), 0 );
  for( auto const & one : ask )
    if( one.revents & ~POLLNVAL )
      ready.emplace_back( one.fd, one.revents );
}

}  // namespace Koi
