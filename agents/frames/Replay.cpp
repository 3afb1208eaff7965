#include "Replay.h"

namespace Frames {
namespace {

std::vector< std::string > pathsOf( std::vector< PortCapture > const & captures ) {
  std::vector< std::string > paths;
  for( auto const & capture : captures )
    paths.push_back( capture.path );
  return paths;
}

}  // namespace

Replay::Replay( Koi::Activity & activity, std::vector< PortCapture > const & captures, double pace,
                std::function< bool() > isInterrupted, Complain complain )
    : isInterrupted_( std::move( isInterrupted ) ),
      pace_( activity, pace ),
      captures_(
          pathsOf( captures ),
          [this, paths = pathsOf( captures ), complain = std::move( complain )](
              std::size_t capture, std::string const & why, std::uint64_t numFrames ) {
            if( isInterrupted_() )
              return;
            isSound_ = false;
            complain( ( paths[capture] == "-" ? "standard input" : paths[capture] ) + ": " + why +
                      " (after " + std::to_string( numFrames ) + " frames)" );
          },
          Capture::watched ) {}

MergedCaptures::Taken Replay::next() {
  while( !pace_.isReady( captures_ ) )
    if( isInterrupted_() )
      return {};
  if( isInterrupted_() )
    return {};
  auto const taken = captures_.next();
  while( taken.frame && !pace_.isDue( taken.frame->time ) )
    if( isInterrupted_() )
      return {};
  return taken;
}

}  // namespace Frames
