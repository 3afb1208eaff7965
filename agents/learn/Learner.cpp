#include "Learner.h"

namespace Learn {

/// Keeps the totals by watching the databases, so they count what was changed and not what was
/// attempted.
class Learner::Tally : public Bridging::FdbStatus::NotifieeConst {
 public:
  explicit Tally( Totals & totals ) : totals_( totals ) {}

  void onLearnedHost( Wirex::EthAddr const & address ) override {
    bool const fresh = notifier()->learnedHost( address ).moves() == 0;
    ++( fresh ? totals_.numHosts : totals_.numMoves );
  }

 private:
  Totals & totals_;
};

Learner::Learner() = default;
Learner::~Learner() = default;

void Learner::frameIs( Port const & port, CapturedFrame const & frame ) {
  ++totals_.numFrames;
  auto const found = sourceOf( frame.bytes, port.nativeVlan );
  if( auto const * why = std::get_if< NotLearned >( &found ) ) {
    ++totals_.numNotLearned[static_cast< std::size_t >( *why )];
    return;
  }

  auto const & source = std::get< FrameSource >( found );
  Bridging::FdbStatus & status = statusOf( source.vlan );
  Bridging::LearnedHost host = status.learnedHost( source.address );
  if( !host ) {
    status.learnedHostIs( Bridging::LearnedHost(
        source.address, port.intf, 0, frame.time.asSeconds(), Bridging::learnedDynamicMac ) );
  } else if( host.intf() != port.intf ) {
    host.intfIs( port.intf );
    host.movesIs( host.moves() + 1 );
    host.lastMoveTimeIs( frame.time.asSeconds() );
    status.learnedHostIs( host );
  }
}

Bridging::FdbStatus & Learner::statusOf( Bridging::VlanId vlan ) {
  Database & database = databases_[vlan.value()];
  if( !database.status ) {
    database.status = new Bridging::FdbStatus( Bridging::Fid( vlan.value() ) );
    database.tally = std::make_unique< Tally >( totals_ );
    database.tally->notifierIs( database.status );
  }
  return *database.status;
}

}  // namespace Learn
