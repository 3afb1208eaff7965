#include "Progress.h"

#include <fmt/format.h>
#include <unistd.h>

namespace Learn {

namespace {

constexpr std::chrono::milliseconds pause( 250 );
constexpr char toLineStart[] = "\r\x1b[K";  // and what stood on the line is gone

}  // namespace

Progress::Progress() : terminal_( isatty( STDERR_FILENO ) == 1 ) {}

void Progress::totalsAre( Learner const & learner ) {
  if( !terminal_ )
    return;
  auto const now = Clock::now();
  if( now - shownAt_ < pause )
    return;
  Totals const totals = learner.totals();
  fmt::print( stderr, "{}{} frames, {} hosts, {} moves", toLineStart, totals.numFrames,
              totals.numHosts, totals.numMoves );
  shown_ = true;
  shownAt_ = now;
}

void Progress::erase() {
  if( shown_ )
    fmt::print( stderr, "{}", toLineStart );
  shown_ = false;
}

}  // namespace Learn
