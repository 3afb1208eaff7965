// upgradeState.cpp: an agent that waits until its sub-interface and then the bridging status are
// back after an upgrade, and one that brings them back.
#include <cstdlib>
#include <iostream>

#include <Lumo/LumoHitless.h>

namespace {

/// Waits for one sub-interface, then for the status. A callback says where to look; what is there
/// it reads itself, so one path serves creation, change and deletion.
class Waiter : public Lumo::LumoHitlessState::NotifieeConst {
 public:
  explicit Waiter( Wirex::IntfId const & intf ) : intf_( intf ) {}

  void onSubIntfWaitQ( Wirex::IntfId const & intf ) override {
    if( intf != intf_ )
      return;
    bool const waits = notifier()->subIntfWaitQ().contains( intf );
    std::cout << intf << ( waits ? " waits\n" : " is back\n" );
  }
  void onLumoStatusUpdate() override {
    if( !notifier()->lumoStatusUpdate() )
      return;
    std::cout << "the status is up to date\n";
    done_ = notifier()->subIntfWaitQ().empty();
    notifierIs( nullptr );  // heard enough; allowed inside the callback
  }
  bool done() const { return done_; }

  using NotifieeConst::onSubIntfWaitQ;

 private:
  Wirex::IntfId const intf_;
  bool done_ = false;
};

}  // namespace

int main() {
  auto const state = Lumo::lumoHitlessStateFactory( Koi::Name( "hitless" ) );
  Wirex::IntfId const first( "eth1.100" ), second( "lag7.20" );
  Waiter waiter( first );
  waiter.notifierIs( state );

  state->subIntfWaitQIs( first, true );
  state->subIntfWaitQIs( first, true );  // an equal value tells nobody
  state->subIntfWaitQIs( second, true );

  // What belongs together is told together: here the waiter finds all of it done.
  Koi::transaction( [&] {
    state->subIntfWaitQDelAll();
    state->lumoSubIntfUpIs( true );
    state->lumoStatusUpdateIs( true );
  } );
  return waiter.done() && !waiter.notifier() ? EXIT_SUCCESS : EXIT_FAILURE;
}
