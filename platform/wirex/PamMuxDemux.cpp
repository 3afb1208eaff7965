#include <wirex/PamMuxDemux.h>

namespace Wirex {

/// One of the many. It may outlive the multiplexer, and is of no use then.
class PamMuxDemux::ManyPam final : public Koi::Tracked< ManyPam, Pam > {
 public:
  ManyPam( PamMuxDemux * mux, Koi::U32 number ) : mux_( mux ), number_( number ) {}

  bool isWritable() const override { return mux_ && mux_->isWritable(); }
  bool isUp() const override { return mux_ && mux_->onePam() && mux_->onePam()->isUp(); }

  void muxDel() {
    mux_ = nullptr;
    toldUp();
  }

  using Pam::received;
  using Pam::toldUp;
  using Pam::toldWritable;

 private:
  bool doSend( Koi::Ptr< Pkt > const & pkt ) override {
    return mux_ && mux_->sendAs( number_, pkt );
  }

  PamMuxDemux * mux_;
  Koi::U32 const number_;
};

PamMuxDemux::PamMuxDemux( Koi::Ptr< Pam > const & pam ) : onePam_( this, pam ) {}

PamMuxDemux::~PamMuxDemux() {
  // What has not been set up whole was never prepared to die.
  for( auto const & [number, pam] : manyPam_ )
    pam->muxDel();
}

void PamMuxDemux::onePamIs( Koi::Ptr< Pam > const & pam ) {
  if( pam == onePam() )
    return;
  Koi::Ptr< Pam > const old = onePam();
  try {
    onePam_.bind( pam );
  } catch( Koi::RangeException const & ) {  // it has an observer: nothing has changed
    onePam_.bind( old );
    throw;
  }
  handleUp();
  handleWritable();
}

Koi::Ptr< Pam > PamMuxDemux::manyPam( Koi::U32 number ) const {
  auto const at = manyPam_.find( number );
  return at == manyPam_.end() ? nullptr : Koi::Ptr< Pam >( at->second );
}

Koi::Ptr< Pam > PamMuxDemux::manyPamIs( Koi::U32 number ) {
  auto & pam = manyPam_[number];
  if( !pam )
    pam = new ManyPam( this, number );
  return pam;
}

void PamMuxDemux::manyPamDel( Koi::U32 number ) {
  auto const gone = manyPam_.extract( number );
  if( gone )
    gone.mapped()->muxDel();
}

std::vector< Koi::U32 > PamMuxDemux::manyPamKeys() const {
  std::vector< Koi::U32 > keys;
  for( auto const & [number, pam] : manyPam_ )
    keys.push_back( number );
  return keys;
}

void PamMuxDemux::modeIs( Mode mode ) {
  mode_ = mode;
  handleWritable();
}

void PamMuxDemux::initializedIs( bool initialized ) {
  initialized_ = initialized;
  handleWritable();
}

void PamMuxDemux::doPrepareToDie() {
  initialized_ = false;
  onePam_.bind( nullptr );
  auto const many = std::exchange( manyPam_, {} );
  for( auto const & [number, pam] : many )
    pam->muxDel();
}

bool PamMuxDemux::sendAs( Koi::U32 number, Koi::Ptr< Pkt > const & pkt ) {
  if( !isWritable() )
    return false;
  doEncapsulate( pkt, number );
  return onePam()->send( pkt );
}

void PamMuxDemux::handlePkt( Koi::Ptr< Pkt > const & pkt ) {
  if( !passes( demux ) ) {
    ++counters_.closedPkts;
    return;
  }
  std::size_t const bytes = pkt->wireBytes();
  auto const at = manyPam_.find( decapsulate( pkt ) );
  if( at == manyPam_.end() ) {
    ++counters_.unknownPkts;
    counters_.unknownBytes += bytes;
    return;
  }
  Koi::Ptr< ManyPam > const pam = at->second;
  pam->received( pkt );
}

void PamMuxDemux::handleWritable() {
  // From where it ended the last time, and once around; any of them may go meanwhile.
  Koi::Ptr< PamMuxDemux > const held( koiRefCount() != 0 ? this : nullptr );
  for( auto left = manyPam_.size(); left != 0 && isWritable(); --left ) {
    auto at = manyPam_.lower_bound( nextTold_ );
    if( at == manyPam_.end() )
      at = manyPam_.begin();
    if( at == manyPam_.end() )
      return;
    nextTold_ = at->first + 1;
    Koi::Ptr< ManyPam > const pam = at->second;
    pam->toldWritable();
  }
}

void PamMuxDemux::handleUp() {
  Koi::Ptr< PamMuxDemux > const held( koiRefCount() != 0 ? this : nullptr );
  auto const many = manyPam_;
  for( auto const & [number, pam] : many )
    pam->toldUp();
}

}  // namespace Wirex
