#include "Port.h"

#include <algorithm>

namespace Frames {

using namespace Bridging;

Port::Port( Wirex::IntfId intf, Koi::Ptr< Config const > config,
            Koi::Ptr< Topology::Config const > topology )
    : intf_( intf ), config_( std::move( config ) ), topology_( std::move( topology ) ) {}

void Port::readRules() {
  isStale_ = false;
  verdicts_.fill( unread );
  Koi::Ptr< SwitchIntfConfig > const port = config_->switchIntfConfig( intf_ );
  SwitchportMode const mode = port ? port->switchportMode() : trunk;
  bridges_ = mode == Bridging::access || mode == trunk || mode == dot1qTunnel;
  ignoresTags_ = mode == dot1qTunnel;
  hasOneVlan_ = mode != trunk;
  isLearning_ = !port || port->macLearningEnabled();
  tagType_ = port ? port->vlanTpid().value() : customerTagType;
  nativeVlan_ = port ? port->nativeVlan().value() : Koi::U16{ 1 };
  dropped_ = 0;
  for( VlanTagFormat const format : { untagged, priority, singleTagged, doubleTagged } )
    if( port && port->vlanTagFormatDrop( format ) )
      dropped_ |= 1u << format;
}

bool Port::carries( Koi::U16 vlan ) {
  if( isStale_ )
    readRules();
  Koi::U8 const verdict = verdictIn( vlan );
  return bridges_ &&
         ( verdict == learns || isPause( static_cast< NotLearned >( verdict - firstReason ) ) );
}

bool Port::isBlockedIn( VlanId vlan ) const {
  Koi::Ptr< Topology::TopoConfig > const topology = topology_->vidToTopoMap( vlan );
  if( !topology )
    return false;
  Koi::Ptr< Topology::TopoPortConfig > const port = topology->topoPortConfig( intf_ );
  Topology::PortState const state = port ? port->state() : topology->defaultPortState();
  return state != Topology::learning && state != Topology::forwarding;
}

Koi::U8 Port::judge( VlanId vlan ) const {
  auto const no = []( NotLearned why ) {
    return static_cast< Koi::U8 >( static_cast< Koi::U8 >( why ) + firstReason );
  };
  if( hasOneVlan_ && vlan.value() != nativeVlan_ )
    return no( NotLearned::otherVlan );
  Koi::Ptr< VlanConfig > const config = config_->vlanConfig( vlan );
  if( config ) {
    if( config->adminState() != active )
      return no( NotLearned::suspended );
    auto const direction = config->intf( intf_ ).allowedTrafficDirection();
    if( !config->intf().contains( intf_ ) ||
        ( direction != ingressAndEgress && direction != ingress ) )
      return no( NotLearned::notMember );
  }
  if( isBlockedIn( vlan ) )
    return no( NotLearned::blocked );
  if( !isLearning_ )
    return no( NotLearned::portLearnsNot );
  if( config && !config->macLearning() )
    return no( NotLearned::vlanLearnsNot );
  return learns;
}

}  // namespace Frames
