// ShadowSync.h: how a copy comes to be, and how it is made anew beside the old one: the bodies of
// ShadowEngine for it, which includes this. What holds is said there.
#pragma once

#include <quill/ShadowEngine.h>

namespace Quill {

template< class R, class M, U32 numWords >
void ShadowEngine< R, M, numWords >::moveTo( std::unique_ptr< Reader > reader,
                                             std::unique_ptr< Queue > queue ) {
  reader_ = std::move( reader );
  queue_ = std::move( queue );
  resync();
}
/// Looks at the whole table once more.
template< class R, class M, U32 numWords >
void ShadowEngine< R, M, numWords >::resync() {
  if( state_ == copying && syncSlot_ != 0 )
    trace_.trace( 3, "Syncer::sync() Interrupting and restarting synchronization" );
  if( into_ == store_.get() )
    for( auto const & one : lost_ )
      unsaid_.push_back( one.key );
  lost_.clear();
  next_.reset();
  into_ = store_.get();
  state_ = beginning;
  ++numResyncs_;
}

template< class R, class M, U32 numWords >
void ShadowEngine< R, M, numWords >::begin() {
  queue_->startAt( queue_->tableSequence() );
  next_ = emptyStore();
  syncSlot_ = 0;
  state_ = copying;
  began_ = Clock::now();
}
template< class R, class M, U32 numWords >
bool ShadowEngine< R, M, numWords >::copied( Clock::time_point end ) {
  // The index is met at random: what a few slots touch there is fetched while they are read.
  constexpr U32 atOnce = 32;
  static_assert( slotsBetweenLooks % atOnce == 0 );
  struct {
    Value value;
    U32 slot, hash;
  } some[atOnce];
  for( U32 const first = syncSlot_; syncSlot_ < numShared(); ) {
    U32 count = 0;
    for( U32 i = 0; i < atOnce; ++i, ++syncSlot_ )
      if( reader_->loadSlot( syncSlot_, some[count].value ) ) {
        some[count].slot = syncSlot_;
        some[count].hash = next_->fetched( some[count].value.word );
        ++count;
      }
    for( U32 i = 0; i < count; ++i )
      next_->insert( some[i].slot, some[i].value.word, some[i].hash );
    if( syncSlot_ % slotsBetweenLooks == 0 && Clock::now() >= end ) {
      traceSynced( first );
      return false;
    }
  }
  traceSynced( 0 );
  catchUpTo_ = queue_->tableSequence();
  into_ = next_.get();
  state_ = catchingUp;
  return true;
}
/// What moved while the slots were copied may have been missed: the copy is one when the queue
/// has been read so far.
template< class R, class M, U32 numWords >
bool ShadowEngine< R, M, numWords >::caughtUp( Clock::time_point end ) {
  auto const nobody = []( Key const & ) {};
  settle( nobody );
  while( sequence() < catchUpTo_ ) {
    auto const outcome = conquered( Queue::mostAtOnce, nobody );
    if( outcome == Outcome::caughtUp )
      break;
    if( outcome == Outcome::outOfStep || Clock::now() >= end )
      return false;
  }
  trace_.trace( 2, "QuillShadow::syncComplete() Synchronization complete, seq:", sequence() );
  std::swap( store_, next_ );
  syncSlot_ = 0;
  state_ = std::exchange( isFirst_, false ) ? following : comparing;
  return true;
}
/// What is being compared with what was, or copied to be, is told whole at its end.
template< class R, class M, U32 numWords >
void ShadowEngine< R, M, numWords >::tellAll() {
  isAllToTell_ = true;
  if( state_ == following ) {
    next_ = std::make_unique< Store >( reader_->seed(), 1, trace_ );  // nothing was there
    syncSlot_ = 0;
    state_ = comparing;
  } else if( state_ == comparing ) {
    syncSlot_ = std::min( syncSlot_, next_->numSlots() );
  }
}
template< class R, class M, U32 numWords >
void ShadowEngine< R, M, numWords >::traceSynced( U32 first ) const {
  trace_.trace( 5, "Syncer::doSync() Synced ", syncSlot_ - first, " slots in ",
                std::chrono::duration< double >( Clock::now() - began_ ).count(),
                " seconds, currentSlot:", syncSlot_ );
}
/// next_ is what was: first what is no more, then what is different or new.
template< class R, class M, U32 numWords >
template< class OnKey >
bool ShadowEngine< R, M, numWords >::compared( Clock::time_point end, OnKey & onKey ) {
  U32 const before = next_->numSlots(), all = before + store_->numSlots();
  for( ; syncSlot_ < all; ) {
    U32 const slot = syncSlot_++;
    if( slot < before )
      compareOld( slot );
    else
      compareNew( slot - before, onKey );
    settle( onKey );
    if( syncSlot_ % slotsBetweenLooks == 0 && Clock::now() >= end )
      return false;
  }
  for( ; !unsaid_.empty(); unsaid_.pop_back() )
    onKey( unsaid_.back() );
  next_.reset();
  isAllToTell_ = false;
  state_ = following;
  if( moving_ ) {
    moveTo( std::move( moving_->first ), std::move( moving_->second ) );
    moving_.reset();
    return false;
  }
  return true;
}
template< class R, class M, U32 numWords >
void ShadowEngine< R, M, numWords >::compareOld( U32 slot ) {
  if( next_->isOccupied( slot ) && next_->find( next_->at( slot ).key() ) == slot &&
      store_->find( next_->at( slot ).key() ) == noIndex )
    lost_.push_back( { next_->at( slot ).key(), next_->at( slot ) } );
}
template< class R, class M, U32 numWords >
template< class OnKey >
void ShadowEngine< R, M, numWords >::compareNew( U32 slot, OnKey & onKey ) {
  if( !store_->isOccupied( slot ) )
    return;
  auto const & now = store_->at( slot );
  U32 const was = next_->find( now.key() );
  if( isAllToTell_ || was == noIndex || next_->at( was ) != now || !keepsValues )
    onKey( Key( now.key() ) );
}

}  // namespace Quill
