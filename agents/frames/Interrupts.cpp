#include "Interrupts.h"

#include <sys/eventfd.h>

#include <csignal>

namespace Frames {
namespace {

volatile std::sig_atomic_t interrupted = 0;
int interruptEvent = -1;

void onInterrupt( int ) {
  interrupted = 1;
  static_cast< void >( eventfd_write( interruptEvent, 1 ) );
}

int madeEvent() {
  std::signal( SIGPIPE, SIG_IGN );
  interruptEvent = eventfd( 0, EFD_CLOEXEC | EFD_NONBLOCK );
  // No SA_RESTART: the interrupt ends a read that waits for a pipe.
  struct sigaction action {};
  action.sa_handler = onInterrupt;
  action.sa_flags = static_cast< int >( SA_RESETHAND );
  sigaction( SIGINT, &action, nullptr );
  sigaction( SIGTERM, &action, nullptr );
  return interruptEvent;
}

}  // namespace

Interrupts::Interrupts( Koi::Activity * activity )
    : watch_( activity, madeEvent(), Koi::DescriptorWatch::readable,
              [activity] { activity->stop(); } ) {}

bool Interrupts::isInterrupted() const { return interrupted != 0; }

}  // namespace Frames
