// VlanBench.cpp: VLANs and their member ports configured, with an observer on every VLAN that is
// told of each member, beside the same written into hash maps of Boost. Time a member says whether
// the whole is linear.

#include <boost/unordered_map.hpp>
#include <optional>
#include <string>
#include <vector>

#include <Lumo/Bridging.h>

#include "Pairs.h"

namespace {

using Bench::Heap;
using Bridging::VlanConfig;
using Bridging::VlanId;
using Bridging::VlanPortConfig;
using Wirex::IntfId;

constexpr unsigned numPorts = 64;

VlanPortConfig const carried( Bridging::tagOnEgressEnabled, false, Bridging::ingressAndEgress );

/// Hears of the members of one VLAN, and reads them as a hardware agent does.
struct VlanListener final : VlanConfig::NotifieeConst {
  explicit VlanListener( std::uint64_t & tagged ) : numTagged( tagged ) {}
  using NotifieeConst::onIntf;
  void onIntf( IntfId const & intf ) override {
    numTagged += notifier()->intf( intf ).tagOnEgress() == Bridging::tagOnEgressEnabled;
  }
  std::uint64_t & numTagged;
};

/// Hears of VLANs, and watches each from then on.
struct Listener final : Bridging::Config::NotifieeConst {
  using NotifieeConst::onVlanConfig;
  void onVlanConfig( VlanId const & vlan ) override {
    vlans.push_back( std::make_unique< VlanListener >( numTagged ) );
    vlans.back()->notifierIs( notifier()->vlanConfig( vlan ).ptr() );
  }
  std::vector< std::unique_ptr< VlanListener > > vlans;
  std::uint64_t numTagged = 0;
};

struct HashOfKey {
  template< class Key >
  std::size_t operator()( Key const & key ) const {
    return key.hash();
  }
};
using PlainVlan = boost::unordered_map< IntfId, VlanPortConfig, HashOfKey >;
using Plain = boost::unordered_map< VlanId, PlainVlan, HashOfKey >;

std::vector< IntfId > const & ports() {
  static std::vector< IntfId > const all = [] {
    std::vector< IntfId > made;
    for( unsigned i = 1; i <= numPorts; ++i )
      made.emplace_back( "eth" + std::to_string( i ) );
    return made;
  }();
  return all;
}

/// What a pass builds; it is put away untimed.
struct Built {
  std::optional< Listener > listener;
  Koi::Ptr< Bridging::Config > config;
  std::optional< Plain > plain;

  void clear() {
    listener.reset();
    config = nullptr;
    plain.reset();
  }
};

std::uint64_t configure( Built & built, unsigned numVlans ) {
  built.config = Bridging::configFactory( Koi::Name( "config" ) );
  built.listener.emplace();
  built.listener->notifierIs( built.config.ptr() );
  for( unsigned vlan = 1; vlan <= numVlans; ++vlan ) {
    Koi::Ptr< VlanConfig > const config = built.config->vlanConfigIs( VlanId( vlan ), false );
    for( IntfId const & port : ports() )
      config->intfIs( port, carried );
  }
  return built.listener->numTagged;
}

std::uint64_t configurePlain( Built & built, unsigned numVlans ) {
  built.plain.emplace();
  std::uint64_t numTagged = 0;
  for( unsigned vlan = 1; vlan <= numVlans; ++vlan ) {
    PlainVlan & config = ( *built.plain )[VlanId( vlan )];
    for( IntfId const & port : ports() ) {
      auto const at = config.emplace( port, carried ).first;
      numTagged += at->second.tagOnEgress() == Bridging::tagOnEgressEnabled;
    }
  }
  return numTagged;
}

}  // namespace

int main( int argc, char ** argv ) {
  Built built;
  for( unsigned const numVlans : { 64u, 512u, 4094u } )
    Bench::addPair(
        "members/" + std::to_string( numVlans ) + " VLANs x 64 ports", numVlans * numPorts,
        Heap::used, [&built, numVlans] { return configure( built, numVlans ); },
        [&built, numVlans] { return configurePlain( built, numVlans ); },
        [&built] { built.clear(); } );
  return Bench::runPairs( argc, argv );
}
