#include "MergedCaptures.h"

#include <utility>

namespace Frames {

MergedCaptures::MergedCaptures( std::vector< std::string > const & paths, OnStopped onStopped,
                                Capture::Opening opening )
    : onStopped_( std::move( onStopped ) ), heads_( paths.size() ) {
  for( std::size_t i = 0; i < paths.size(); ++i ) {
    try {
      heads_[i].capture = std::make_unique< Capture >( paths[i], opening );
      toAdvance_.push_back( i );
    } catch( CaptureException const & e ) {
      // This capture alone is lost: what the others hold is still worth reading.
      onStopped_( i, e.what(), 0 );
    }
  }
}

MergedCaptures::Taken MergedCaptures::next() {
  for( std::size_t const i : toAdvance_ )
    advance( i );
  toAdvance_.clear();

  // Ports are a few dozen at most, so looking at every head is as fast as keeping them in a heap.
  // The first of equal heads wins.
  std::size_t taken = heads_.size();
  for( std::size_t i = 0; i < heads_.size(); ++i ) {
    if( heads_[i].frame &&
        ( taken == heads_.size() || heads_[i].frame->time < heads_[taken].frame->time ) )
      taken = i;
  }
  if( taken == heads_.size() )
    return {};
  toAdvance_.push_back( taken );
  return { taken, heads_[taken].frame };
}

int MergedCaptures::awaited() const {
  for( std::size_t const i : toAdvance_ )
    if( int const awaited = heads_[i].capture->awaited(); awaited >= 0 )
      return awaited;
  return -1;
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
