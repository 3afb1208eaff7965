#include "Watch.h"

#include <koi/KeysOf.h>

namespace Learn {

using namespace Bridging;
using Koi::keysOf;

Learner::Watch::Watch( Learner & learner )
    : config_( learner ), topologies_( learner ), flushRequests_( learner ) {}

Learner::Watch::OfConfig::OfConfig( Learner & learner ) : learner_( learner ) {
  Config & config = *learner.bridge_.config;
  notifierIs( &config );
  for( auto const & intf : keysOf( config.switchIntfConfig() ) )
    onSwitchIntfConfig( intf );
  for( auto const & vlan : keysOf( config.vlanConfig() ) )
    onVlanConfig( vlan );
  for( auto const & fid : keysOf( config.fdbConfig() ) )
    onFdbConfig( fid );
}

void Learner::Watch::OfConfig::onSwitchIntfConfig( Wirex::IntfId const & intf ) {
  ports_.follow( intf, learner_.bridge_.config->switchIntfConfig( intf ), learner_ );
  learner_.portChanged( intf );
}

void Learner::Watch::OfConfig::onVlanConfig( VlanId const & vlan ) {
  vlans_.follow( vlan, learner_.bridge_.config->vlanConfig( vlan ), learner_ );
  learner_.vlanChanged( vlan );
}

void Learner::Watch::OfConfig::onFdbConfig( Fid const & fid ) {
  fdbs_.follow( fid, learner_.bridge_.config->fdbConfig( fid ), learner_ );
  learner_.fdbConfigChanged( fid );
}

Learner::Watch::OfTopologies::OfTopologies( Learner & learner ) : learner_( learner ) {
  Topology::Config & config = *learner.bridge_.topology;
  notifierIs( &config );
  for( auto const & name : keysOf( config.topoConfig() ) )
    onTopoConfig( name );
}

void Learner::Watch::OfTopologies::onTopoConfig( Koi::Name const & name ) {
  topologies_.follow( name, learner_.bridge_.topology->topoConfig( name ), learner_ );
  learner_.topologyChanged();
}

Learner::Watch::OfTopology::OfTopology( Koi::Name const &, Topology::TopoConfig const & topology,
                                        Learner & learner )
    : learner_( learner ) {
  notifierIs( &topology );
  for( auto const & intf : keysOf( topology.topoPortConfig() ) )
    onTopoPortConfig( intf );
}

void Learner::Watch::OfTopology::onTopoPortConfig( Wirex::IntfId const & intf ) {
  Koi::Ptr< Topology::TopoConfig const > const topology( notifier() );
  ports_.follow( intf, topology->topoPortConfig( intf ), topology, learner_ );
  learner_.topologyChanged();
  learner_.flushTopology( *topology, intf );
}

Learner::Watch::OfFlushRequests::OfFlushRequests( Learner & learner ) : learner_( learner ) {
  HostTableFlushRequestDir & requests = *learner.bridge_.flushRequests;
  notifierIs( &requests );
  // An answer that an earlier learner gave and nobody waits for any more is taken back.
  for( auto const & key : keysOf( learner.bridge_.flushReplies->hostTableFlushReply() ) )
    onHostTableFlushRequest( key );
  for( auto const & key : keysOf( requests.hostTableFlushRequest() ) )
    onHostTableFlushRequest( key );
}

void Learner::Watch::OfFlushRequests::onHostTableFlushRequest( Koi::String8 const & key ) {
  HostTableFlushReplyDir & replies = *learner_.bridge_.flushReplies;
  replies.hostTableFlushReplyDel( key );  // also where another request had that key
  auto const & requests = learner_.bridge_.flushRequests->hostTableFlushRequest();
  if( !requests.contains( key ) )
    return;
  HostTableFlushRequest const request = requests.value( key );
  bool const isDone = learner_.flush( request.vlanId(), request.intf() );
  if( requests.contains( key ) && requests.value( key ) == request )  // still: who is told may ask
    replies.hostTableFlushReplyIs( key, isDone );
}

}  // namespace Learn
