// main.cpp: an uplink is watched while its VLAN and its health change.

#include <Uplink.h>

#include <iostream>

namespace {

/// Says what happens to one uplink.
class Watcher : public Rack::Uplink::NotifieeConst {
 public:
  void onVlan() override { std::cout << "VLAN " << notifier()->vlan() << "\n"; }
  void onHealth() override { std::cout << "health " << notifier()->health() << "\n"; }
};

}  // namespace

int main() {
  auto const uplink = Rack::uplinkFactory( Rack::UplinkNumber( 3 ) );
  Watcher watcher;
  watcher.notifierIs( uplink );

  uplink->vlanIs( Bridging::VlanId( 4094 ) );
  uplink->vlanIs( Bridging::VlanId( 4094 ) );  // equal: nobody is told
  uplink->healthIs( Rack::up );
  try {
    uplink->vlanIs( Bridging::VlanId( 4095 ) );
  } catch( Koi::RangeException const & refusal ) {
    std::cout << "refused: " << refusal.what() << "\n";
  }
  return uplink->vlan() == Bridging::VlanId( 4094 ) ? 0 : 1;
}
