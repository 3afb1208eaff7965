#include <wirex/MemoryPam.h>

namespace Wirex {

MemoryPam::MemoryPam( Koi::Activity * activity, std::size_t capacity )
    : capacity_( capacity ), delivery_( activity, [this] { deliver(); } ) {}

MemoryPam::~MemoryPam() {
  if( !peer_ )
    return;
  Koi::Ptr< MemoryPam > const peer( peer_ );
  peer->peer_ = nullptr;
  peer->toldUp();
}

bool MemoryPam::doSend( Koi::Ptr< Pkt > const & pkt ) {
  if( !isWritable() )
    return false;
  peer_->arriving_.push_back( pkt );
  isFull_ = !isWritable();
  peer_->doIsReading();
  return true;
}

void MemoryPam::doIsReading() {
  if( isReading() && !arriving_.empty() && !delivery_.isArmed() )
    delivery_.delayIs( 0 );
}

void MemoryPam::deliver() {
  Koi::Ptr< MemoryPam > const held( this );
  // Not what comes meanwhile: two ends that answer each other leave the activity its turns.
  for( auto left = arriving_.size(); left != 0 && isReading(); --left ) {
    Koi::Ptr< Pkt > const pkt = arriving_.front();
    arriving_.pop_front();
    received( pkt );
  }
  doIsReading();
  if( peer_ && peer_->isFull_ && peer_->isWritable() ) {
    Koi::Ptr< MemoryPam > const sender( peer_ );
    sender->isFull_ = false;
    sender->toldWritable();
  }
}

std::pair< Koi::Ptr< MemoryPam >, Koi::Ptr< MemoryPam > > memoryPamFactory(
    Koi::Activity * activity, std::size_t capacity ) {
  Koi::Ptr< MemoryPam > const one( new MemoryPam( activity, capacity ) );
  Koi::Ptr< MemoryPam > const other( new MemoryPam( activity, capacity ) );
  one->peer_ = other;
  other->peer_ = one;
  return { one, other };
}

}  // namespace Wirex
