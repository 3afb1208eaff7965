#include <wirex/EthDevPam.h>

#include <cerrno>

#include <ntrace/Ntrace.h>
#include <wirex/PacketSocket.h>

namespace Wirex {
namespace {

/// Batches that one turn of the activity receives at most: others want their turns, too.
constexpr unsigned batchesATurn = 4;
/// A device without room does not say when it has some.
constexpr Koi::Seconds retryDelay = 0.001;
/// Nor does one that is away.
constexpr Koi::Seconds probeDelay = 0.1;

bool isDeviceGone( int error ) { return error == ENETDOWN || error == ENXIO || error == ENODEV; }

}  // namespace

EthDevPam::EthDevPam( Koi::String8 const & deviceName, Koi::Activity * activity )
    : deviceName_( deviceName ),
      socket_( std::make_unique< PacketSocket >( deviceName ) ),
      isUp_( socket_->isDeviceUp() ),
      readable_( activity, socket_->receiving(), Koi::DescriptorWatch::readable,
                 [this] { read(); } ),
      writable_( activity, socket_->sending(), Koi::DescriptorWatch::writable,
                 [this] { resumeSending(); } ),
      sending_( activity, [this] { resumeSending(); } ),
      probing_( activity, [this] { probe(); } ) {
  writable_.isWatchingIs( false );
  if( !isUp_ )
    probing_.delayIs( probeDelay );
}

EthDevPam::~EthDevPam() = default;

Pam::Counters EthDevPam::counters() const {
  Counters all = Pam::counters();
  all.rxDropped += socket_->numLost();
  return all;
}

// ---- receiving

void EthDevPam::doIsReading() { readable_.isWatchingIs( isReading() ); }

void EthDevPam::read() {
  Koi::Ptr< EthDevPam > const held( this );
  /// What an exception keeps from the observer is dropped.
  struct Rest {
    explicit Rest( EthDevPam & pam ) : pam_( pam ) {}
    ~Rest() {
      pam_.rxDroppedIs( pam_.batch_.size() - numHandedOver );
      pam_.batch_.clear();
    }
    std::size_t numHandedOver = 0;
    EthDevPam & pam_;
  };
  for( unsigned i = 0; i < batchesATurn && isReading(); ++i ) {
    auto const [numPkts, error] = socket_->receive( batch_ );
    if( isDeviceGone( error ) )
      wentDown();
    Rest rest( *this );
    while( rest.numHandedOver < batch_.size() )
      received( batch_[rest.numHandedOver++] );
    if( numPkts < PacketSocket::batchMost )
      break;
  }
  // Answers to what came go out at once.
  if( sending_.isArmed() && !isBlocked_ )
    resumeSending();
}

// ---- sending

bool EthDevPam::doSend( Koi::Ptr< Pkt > const & pkt ) {
  if( !isWritable() )
    return false;
  queue_.push_back( pkt );
  if( !isBlocked_ && queue_.size() >= PacketSocket::batchMost )
    sendQueue();
  else if( !isBlocked_ && !sending_.isArmed() )
    sending_.delayIs( 0 );
  isFull_ = queue_.size() >= queueMost;
  return true;
}

void EthDevPam::resumeSending() {
  Koi::Ptr< EthDevPam > const held( this );
  writable_.isWatchingIs( false );
  sending_.timeDel();
  isBlocked_ = false;
  sendQueue();
  if( isFull_ && queue_.size() <= queueMost / 2 ) {
    isFull_ = false;
    if( isUp_ )
      toldWritable();
  }
}

void EthDevPam::sendQueue() {
  while( !queue_.empty() && !isBlocked_ ) {
    auto const [numPkts, error] = socket_->send( queue_ );
    queue_.erase( queue_.begin(), queue_.begin() + static_cast< std::ptrdiff_t >( numPkts ) );
    if( error == 0 )
      continue;
    if( isDeviceGone( error ) )
      return wentDown();
    if( error == EAGAIN ) {
      isBlocked_ = true;
      writable_.isWatchingIs( true );
    } else if( error == ENOBUFS || error == ENOMEM ) {
      isBlocked_ = true;
      sending_.delayIs( retryDelay );
    } else {  // this one it will never send: it is too long
      txLostIs( *queue_.front() );
      queue_.pop_front();
    }
  }
}

// ---- the device comes and goes

void EthDevPam::wentDown() {
  for( auto const & pkt : queue_ )
    txLostIs( *pkt );
  queue_.clear();
  isFull_ = isBlocked_ = false;
  writable_.isWatchingIs( false );
  sending_.timeDel();
  if( !isUp_ )
    return;
  isUp_ = false;
  ++numDown_;
  Ntrace::standard().trace( 3, "EthDevPam::wentDown() ", deviceName_.view() );
  probing_.delayIs( probeDelay );
  toldUp();
}

void EthDevPam::probe() {
  Koi::Ptr< EthDevPam > const held( this );
  if( !socket_->isDeviceUp() )
    return probing_.delayIs( probeDelay );
  isUp_ = true;
  Ntrace::standard().trace( 3, "EthDevPam::probe() is up ", deviceName_.view() );
  toldUp();
  if( isWritable() )
    toldWritable();
}

}  // namespace Wirex
