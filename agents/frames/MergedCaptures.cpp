#include "MergedCaptures.h"

#include <utility>

namespace Frames {

MergedCaptures::MergedCaptures( std::vector< std::string > const & paths, OnStopped onStopped )
    : onStopped_( std::move( onStopped ) ), heads_( paths.size() ), taken_( paths.size() ) {
  for( std::size_t i = 0; i < paths.size(); ++i ) {
    try {
      heads_[i].capture = std::make_unique< Capture >( paths[i] );
    } catch( CaptureException const & e ) {
      // This capture alone is lost: what the others hold is still worth a table.
      onStopped_( i, e.what(), 0 );
      continue;
    }
    advance( i );
  }
}

MergedCaptures::Taken MergedCaptures::next() {
  if( taken_ < heads_.size() )
    advance( taken_ );
  taken_ = heads_.size();

  // Ports are a few dozen at most, so looking at every head is as fast as keeping them in a heap.
  // The first of equal heads wins.
  for( std::size_t i = 0; i < heads_.size(); ++i ) {
    if( heads_[i].frame &&
        ( taken_ == heads_.size() || heads_[i].frame->time < heads_[taken_].frame->time ) )
      taken_ = i;
  }
  return taken_ == heads_.size() ? Taken{} : Taken{ taken_, heads_[taken_].frame };
}

void MergedCaptures::advance( std::size_t index ) {
  Head & head = heads_[index];
  head.frame = nullptr;
  try {
    head.frame = head.capture->next();
  } catch( CaptureException const & e ) {
    // As above: the frames before the damage stay counted and learned from.
    onStopped_( index, e.what(), head.capture->numFrames() );
  }
}

}  // namespace Frames
