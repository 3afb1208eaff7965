// Shared.h: memory that the bench's processes share, and how long something took to arrive.
#pragma once

#include <algorithm>
#include <atomic>
#include <chrono>
#include <new>
#include <system_error>
#include <vector>

#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace Bench {

/// Nanoseconds of the clock that all processes have.
inline std::int64_t now() { return std::chrono::steady_clock::now().time_since_epoch().count(); }

/// One T that this process and those it forks have in common.
template< class T >
class Shared {
 public:
  Shared()
      : at_( mmap( nullptr, sizeof( T ), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1,
                   0 ) ) {
    if( at_ == MAP_FAILED )
      throw std::system_error( errno, std::generic_category(), "shared memory" );
    new( at_ ) T;
  }
  ~Shared() { munmap( at_, sizeof( T ) ); }
  Shared( Shared const & ) = delete;
  Shared & operator=( Shared const & ) = delete;

  T * operator->() const { return static_cast< T * >( at_ ); }

 private:
  void * const at_;
};

/// A process that does that until this object goes.
class Child {
 public:
  template< class Work >
  explicit Child( Work work ) {
    pid_t const parent = getpid();
    process_ = fork();
    if( process_ != 0 )
      return;
    prctl( PR_SET_PDEATHSIG, SIGKILL );
    if( getppid() == parent )
      work();
    _exit( 0 );
  }
  ~Child() {
    kill( process_, SIGKILL );
    waitpid( process_, nullptr, 0 );
  }
  Child( Child const & ) = delete;
  Child & operator=( Child const & ) = delete;

  void stop() const { kill( process_, SIGSTOP ); }
  void goOn() const { kill( process_, SIGCONT ); }

 private:
  pid_t process_;
};

/// Of what was measured one by one.
inline double medianOf( std::vector< double > all ) {
  auto const middle = all.begin() + static_cast< std::ptrdiff_t >( all.size() / 2 );
  std::ranges::nth_element( all, middle );
  return *middle;
}

}  // namespace Bench
