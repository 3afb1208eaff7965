// firstHost.cpp: one filtering database, one observer, one learned host: in memory, as text, and
// through the attribute log.
#include <cstdlib>
#include <iostream>

#include <Lumo/Bridging.h>
#include <Lumo/VlanId.h>

namespace {

/// Says what it sees. The key tells it where to look; what is there it reads itself.
class Watcher : public Bridging::FdbStatus::NotifieeConst {
 public:
  void onLearnedHost( Wirex::EthAddr const & address ) override {
    std::cout << "changed: " << notifier()->learnedHost( address ) << '\n';
  }
};

}  // namespace

int main() {
  Koi::Ptr< Bridging::FdbStatus > const database = new Bridging::FdbStatus( Bridging::Fid( 10 ) );
  Watcher watcher;
  watcher.notifierIs( database );

  Wirex::EthAddr const address( "00:00:5e:00:53:01" );
  Bridging::LearnedHost host( address );
  host.intfIs( Wirex::IntfId( "eth3/1" ) );
  host.lastMoveTimeIs( 1.5 );
  database->learnedHostIs( host );
  database->learnedHostIs( host );  // an equal value tells nobody

  host.intfIs( Wirex::IntfId( "eth3/2" ) );
  host.movesIs( host.moves() + 1 );
  database->learnedHostIs( host );

  Koi::Ptr< Koi::NboAttrLog::Out > const log = new Koi::NboAttrLog::Out;
  log << database->learnedHost( address );
  Koi::NboAttrLog::In in( log->data(), log->size() );
  Bridging::LearnedHost const mirrored( &in, Koi::StreamBogon() );
  std::cout << log->size()
            << " bytes later: " << ( mirrored == host ? "the same host" : "another host" ) << '\n';

  try {
    Bridging::VlanId const none( 0 );
    std::cout << "VLAN " << none << '\n';
  } catch( Koi::RangeException const & refusal ) {
    std::cout << "refused: " << refusal.what() << '\n';
  }
  return mirrored == host ? EXIT_SUCCESS : EXIT_FAILURE;
}
