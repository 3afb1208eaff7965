#include "BusGuard.h"

#include <csignal>
#include <cstdint>

#include <sys/mman.h>

namespace Mem {
namespace {

struct Guarded {
  std::uintptr_t begin = 0;
  std::uintptr_t end = 0;
  Flag * lost = nullptr;
  Flag isTaken;  // somebody registers or has registered here
  Flag isUsed;   // and what stands here may be believed
};

constexpr unsigned most = 1024;
Guarded guarded[most];
struct sigaction earlier;

void passedOn( int number, siginfo_t * info, void * context ) {
  if( earlier.sa_flags & SA_SIGINFO ) {
    earlier.sa_sigaction( number, info, context );
  } else if( earlier.sa_handler == SIG_DFL || earlier.sa_handler == SIG_IGN ) {
    sigaction( number, &earlier, nullptr );  // the access faults again, and this time it ends us
  } else {
    earlier.sa_handler( number );
  }
}

void onBus( int number, siginfo_t * info, void * context ) {
  auto const at = reinterpret_cast< std::uintptr_t >( info->si_addr );
  for( auto & one : guarded )
    if( one.isUsed.isSet() && one.begin <= at && at < one.end ) {
      constexpr std::uintptr_t page = 4096;
      std::uintptr_t const from = at / page * page;
      if( mmap( reinterpret_cast< void * >( from ), one.end - from, PROT_READ | PROT_WRITE,
                MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED, -1, 0 ) == MAP_FAILED )
        break;
      one.lost->set();
      return;
    }
  passedOn( number, info, context );
}

void install() {
  struct sigaction action {};
  action.sa_sigaction = onBus;
  action.sa_flags = SA_SIGINFO | SA_RESTART;
  sigemptyset( &action.sa_mask );
  sigaction( SIGBUS, &action, &earlier );
}

}  // namespace

unsigned busGuard( void * base, std::size_t size, Flag & lost ) {
  static bool const installed = ( install(), true );
  static_cast< void >( installed );
  for( unsigned i = 1; i < most; ++i )
    if( Guarded & one = guarded[i]; one.isTaken.trySet() ) {
      one.begin = reinterpret_cast< std::uintptr_t >( base );
      one.end = one.begin + size;
      one.lost = &lost;
      one.isUsed.set();
      return i;
    }
  return 0;
}

void busUnguard( unsigned guard ) {
  if( guard == 0 )
    return;
  guarded[guard].isUsed.clear();
  guarded[guard].isTaken.clear();
}

}  // namespace Mem
