// main.cpp: a reactor that derives one entity from another, and its handlers, which are all that is
// written by hand.
#include <algorithm>
#include <cstdlib>
#include <iostream>

#include "HostCount.h"

// One path for every event: look at what is there now. The event is only the occasion.
void Example::HostCountSm::handleFdbStatus() {
  auto const now =
      fdbStatus() ? static_cast< Koi::U32 >( fdbStatus()->learnedHost().size() ) : Koi::U32{ 0 };
  hostCount()->numHostsIs( now );
  hostCount()->highestIs( std::max( hostCount()->highest(), now ) );
}
void Example::HostCountSm::handleLearnedHost( Wirex::EthAddr const & ) { handleFdbStatus(); }

namespace {

Bridging::LearnedHost host( char const * address ) {
  return Bridging::LearnedHost( Wirex::EthAddr( address ), Wirex::IntfId( "eth1" ), 0, 0,
                                Bridging::learnedDynamicMac );
}

}  // namespace

int main() {
  auto const count = Example::hostCountFactory( Koi::Name( "count" ) );
  auto const show = [&]( char const * when ) {
    std::cout << when << ": " << count->numHosts() << " of at most " << count->highest() << '\n';
    return count->numHosts();
  };

  // It may begin with nothing to watch.
  auto const reactor = Example::hostCountSmFactory( nullptr, count );
  bool right = show( "no database" ) == 0;

  auto const ten = Bridging::fdbStatusFactory( Bridging::Fid( 10 ) );
  ten->learnedHostIs( host( "00:00:5e:00:53:01" ) );
  reactor->fdbStatusIs( ten );
  right &= show( "database 10" ) == 1;

  ten->learnedHostIs( host( "00:00:5e:00:53:02" ) );
  right &= show( "one more" ) == 2;
  ten->learnedHostDelAll();
  right &= show( "aged out" ) == 0;

  // Torn down: it hears nothing any more, whoever still holds it.
  reactor->koiDoZombieReactors( true );
  ten->learnedHostIs( host( "00:00:5e:00:53:03" ) );
  right &= show( "ended" ) == 0 && count->highest() == 2;
  return right ? EXIT_SUCCESS : EXIT_FAILURE;
}
