// Bridges.h: configurations of a bridge for tests, in a line each.
#pragma once

#include <Lumo/BrTopology.h>
#include <Lumo/Bridging.h>

#include <span>
#include <string>

namespace Frames {

inline Wirex::IntfId intf( char const * name ) { return Wirex::IntfId( Koi::String8( name ) ); }

inline std::span< Koi::U8 const > bytesOf( std::string const & frame ) {
  return { reinterpret_cast< Koi::U8 const * >( frame.data() ), frame.size() };
}

/// What a learner obeys, before it is built.
struct TestBridge {
  Koi::Ptr< Bridging::Config > config = Bridging::configFactory( Koi::Name( "config" ) );
  Koi::Ptr< Bridging::Topology::Config > topology =
      Bridging::Topology::configFactory( Koi::Name( "topology" ) );

  Koi::Ptr< Bridging::SwitchIntfConfig > port( char const * name,
                                               Bridging::SwitchportMode mode = Bridging::trunk,
                                               unsigned nativeVlan = 1 ) const {
    Bridging::SwitchportModeAndNativeVlan const both( mode, Bridging::VlanIdOrNone( nativeVlan ) );
    auto const config_ = config->switchIntfConfigIs( intf( name ), both );
    config_->switchportModeAndNativeVlanIs( both );
    return config_;
  }

  Koi::Ptr< Bridging::VlanConfig > vlan( unsigned vlan ) const {
    return config->vlanConfigIs( Bridging::VlanId( vlan ), false );
  }
  /// A VLAN with that member.
  Koi::Ptr< Bridging::VlanConfig > member(
      unsigned vlan_, char const * name,
      Bridging::AllowedTrafficDirection direction = Bridging::ingressAndEgress ) const {
    auto const config_ = vlan( vlan_ );
    config_->intfIs( intf( name ),
                     Bridging::VlanPortConfig( Bridging::tagOnEgressEnabled, false, direction ) );
    return config_;
  }

  /// The VLAN belongs to a topology whose ports are in that state, but for those that say another.
  Koi::Ptr< Bridging::Topology::TopoConfig > topologyOf(
      unsigned vlan_, Bridging::Topology::PortState state ) const {
    auto const topo = topology->topoConfigIs( Koi::Name( "topo" ), 1, state, false );
    topology->vidToTopoMapIs( Bridging::VlanId( vlan_ ), topo );
    return topo;
  }
};

}  // namespace Frames
