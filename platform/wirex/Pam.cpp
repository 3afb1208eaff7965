#include <wirex/Pam.h>

namespace Wirex {

Pam::Notifiee::~Notifiee() { notifierIs( nullptr ); }

void Pam::Notifiee::notifierIs( Pam * pam ) {
  if( pam == pam_ )
    return;
  if( pam && pam->notifiee_ )
    Koi::throwRangeException( "the packet endpoint has an observer" );
  if( pam_ )
    pam_->notifiee_ = nullptr;
  pam_ = pam;
  if( pam_ )
    pam_->notifiee_ = this;
}

Pam::~Pam() {
  if( notifiee_ )
    notifiee_->pam_ = nullptr;
}

bool Pam::send( Koi::Ptr< Pkt > const & pkt ) {
  Koi::Ptr< Pam > const held( this );
  // How long it is here: whoever takes it may change it.
  std::size_t const bytes = pkt->wireBytes();
  bool const isTaken = pkt->dataBytes() >= Pkt::headerBytes && doSend( pkt );
  if( isTaken ) {
    ++counters_.txPkts;
    counters_.txBytes += bytes;
  } else {
    ++counters_.txDropped;
  }
  return isTaken;
}

void Pam::txLostIs( Pkt const & pkt ) {
  --counters_.txPkts;
  counters_.txBytes -= pkt.wireBytes();
  ++counters_.txDropped;
}

void Pam::isReadingIs( bool reading ) {
  if( reading == isReading_ )
    return;
  Koi::Ptr< Pam > const held( this );
  isReading_ = reading;
  doIsReading();
  deliverWaiting();
}

void Pam::received( Koi::Ptr< Pkt > const & pkt ) {
  bool const mustWait = !isReading_ || !waiting_.empty();
  if( !isHeard() || ( mustWait && waiting_.size() >= waitingMost ) ) {
    ++counters_.rxDropped;
    return;
  }
  ++counters_.rxPkts;
  counters_.rxBytes += pkt->wireBytes();
  if( !mustWait )
    return notifiee_->onPkt( pkt );
  waiting_.push_back( pkt );
  deliverWaiting();
}

void Pam::deliverWaiting() {
  if( isDelivering_ )
    return;  // the walk that is under way goes on
  struct Delivering {
    explicit Delivering( bool & is ) : is_( is ) { is_ = true; }
    ~Delivering() { is_ = false; }
    bool & is_;
  } const delivering( isDelivering_ );
  while( isReading_ && isHeard() && !waiting_.empty() ) {
    Koi::Ptr< Pkt > const pkt = waiting_.front();
    waiting_.pop_front();
    notifiee_->onPkt( pkt );
  }
}

void Pam::toldWritable() {
  if( isHeard() )
    notifiee_->onWritable();
}

void Pam::toldUp() {
  if( isHeard() )
    notifiee_->onUp();
}

}  // namespace Wirex
