// AsioActivity.cpp: the activity of a real process; Boost.Asio does its waiting.
//
// Order and fairness are the Activity's: Asio only says that it is time to look again.
//
// Watched descriptors stand in an epoll set of ours, and Asio watches that set alone: it makes what
// it watches non-blocking, and a caller's descriptor may be shared with another process.

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cmath>
#include <limits>
#include <optional>
#include <system_error>

#include <sys/epoll.h>
#include <unistd.h>

#include <boost/asio/io_context.hpp>
#include <boost/asio/posix/stream_descriptor.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/steady_timer.hpp>

#include <koi/Activity.h>

namespace Koi {
namespace {

namespace asio = boost::asio;
using Clock = std::chrono::steady_clock;

static_assert( EPOLLIN == 1 && EPOLLOUT == 4 && EPOLLERR == 8 && EPOLLHUP == 16,
               "the same bits as poll()'s" );

int newSet() {
  int const set = epoll_create1( EPOLL_CLOEXEC );
  if( set < 0 )
    throw std::system_error( errno, std::generic_category(), "epoll_create1" );
  return set;
}

class AsioActivity final : public Activity {
 public:
  AsioActivity() : io_( 1 ), timer_( io_ ), set_( io_, newSet() ) {}

  Seconds now() const override {
    return std::chrono::duration< Seconds >( Clock::now().time_since_epoch() ).count();
  }
  void run() override { runUntil( std::numeric_limits< Seconds >::infinity(), true ); }
  void runFor( Seconds duration ) override { runUntil( now() + duration, false ); }
  bool runOnce() override {
    Run const run( *this );
    for( ;; )
      if( gather() ) {
        if( dispatch() )
          return true;
      } else if( waits() ) {
        wait( nextTime() );
      } else {
        return false;
      }
  }

 protected:
  void wake() override {
    asio::post( io_, [] {} );
  }
  void interestIs( int descriptor, short events ) override;
  void addReady( std::vector< std::pair< int, short > > & ready ) override;

 private:
  void runUntil( Seconds end, bool endsWithoutWork );
  void wait( Seconds until );

  asio::io_context io_;
  asio::steady_timer timer_;
  asio::posix::stream_descriptor set_;
  std::map< int, short > inSet_;
  bool setIsAwaited_ = false;
};

void AsioActivity::runUntil( Seconds end, bool endsWithoutWork ) {
  Run const run( *this );
  isStoppedIs( false );
  for( bool first = true; !isStopped(); first = false ) {
    // Between turns: what defers itself again and again does not keep the loop beyond its end.
    if( !first && !hasTurn() && now() >= end )
      return;
    if( gather() )
      dispatch();
    else if( now() >= end || ( endsWithoutWork && !waits() ) )
      return;
    else
      wait( std::min( end, nextTime() ) );
  }
}

void AsioActivity::wait( Seconds until ) {
  if( watches() && !setIsAwaited_ ) {
    set_.async_wait( asio::posix::descriptor_base::wait_read,
                     [this]( boost::system::error_code ) { setIsAwaited_ = false; } );
    setIsAwaited_ = true;
  }
  // Far times are reached in several steps; rounding goes up, or the last of them would be a spin.
  Seconds const most = 3600;
  std::chrono::duration< Seconds > const delay( std::clamp( until - now(), 0.0, most ) );
  timer_.expires_after( std::chrono::ceil< Clock::duration >( delay ) );
  timer_.async_wait( []( boost::system::error_code ) {} );
  io_.restart();
  io_.run_one();
  timer_.cancel();
}

void AsioActivity::interestIs( int descriptor, short events ) {
  epoll_event wanted{};
  wanted.events = static_cast< uint32_t >( events );
  wanted.data.fd = descriptor;
  int const set = set_.native_handle();
  if( events == 0 ) {
    // Closed before its watch went: then the system has taken it out.
    epoll_ctl( set, EPOLL_CTL_DEL, descriptor, &wanted );
    inSet_.erase( descriptor );
    return;
  }
  bool const there = inSet_.count( descriptor ) != 0;
  if( epoll_ctl( set, there ? EPOLL_CTL_MOD : EPOLL_CTL_ADD, descriptor, &wanted ) != 0 )
    throw std::system_error( errno, std::generic_category(), "epoll_ctl" );
  inSet_[descriptor] = events;
}

void AsioActivity::addReady( std::vector< std::pair< int, short > > & ready ) {
  std::vector< epoll_event > events( inSet_.size() );
  int const most = static_cast< int >( events.size() );
  int const numReady = epoll_wait( set_.native_handle(), events.data(), most, 0 );
  for( int i = 0; i < numReady; ++i )
    ready.emplace_back( int( events[i].data.fd ), static_cast< short >( events[i].events ) );
}

}  // namespace

Ptr< Activity > activityFactory() { return new AsioActivity; }

}  // namespace Koi
