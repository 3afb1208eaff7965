#include "Learner.h"

#include <algorithm>

#include "Watch.h"

namespace Learn {

using namespace Bridging;

namespace {

template< class T >
void make( Koi::Ptr< T > & entity, char const * name ) {
  if( !entity )
    entity = new T( Koi::Name( name ) );
}

Bridge whole( Bridge bridge ) {
  make( bridge.config, "config" );
  make( bridge.topology, "topology" );
  make( bridge.flushRequests, "flushRequests" );
  make( bridge.status, "status" );
  make( bridge.topologyStatus, "topologyStatus" );
  make( bridge.flushReplies, "flushReplies" );
  return bridge;
}

/// Where that VLAN learns.
Koi::U16 fidOf( Config const & config, VlanId vlan ) {
  auto const & map = config.vidToFidMap();
  return map.contains( vlan ) ? map.value( vlan ).value() : vlan.value();
}
std::array< Koi::U16, 4096 > fidsOf( Config const & config ) {
  std::array< Koi::U16, 4096 > fids{};
  for( Koi::U16 vlan = VlanId::koiRange.low; vlan <= VlanId::koiRange.high; ++vlan )
    fids[vlan] = fidOf( config, VlanId( vlan ) );
  return fids;
}

/// The number of the flush that was served last on that port.
Koi::U32 flushReported( Topology::Status const & status, Topology::TopoConfig const & topology,
                        Topology::TopoPortConfig const & port ) {
  Koi::Ptr< Topology::TopoStatus > const there = status.topoStatus( topology.name() );
  if( !there || there->creationNonce() != topology.creationNonce() )
    return 0;
  Koi::Ptr< Topology::TopoPortStatus > const report = there->topoPortStatus( port.intfId() );
  return report && report->creationNonce() == port.creationNonce() ? report->fdbFlushReport() : 0;
}

/// Of a topology or port that is gone, under the same name, nothing stays.
void reportFlush( Topology::Status & status, Topology::TopoConfig const & topology,
                  Topology::TopoPortConfig const & port, Koi::U32 number ) {
  Koi::Ptr< Topology::TopoStatus > there = status.topoStatus( topology.name() );
  if( there && there->creationNonce() != topology.creationNonce() )
    status.topoStatusDel( topology.name() );
  there = status.topoStatusIs( topology.name(), topology.creationNonce() );
  Koi::Ptr< Topology::TopoPortStatus > const old = there->topoPortStatus( port.intfId() );
  if( old && old->creationNonce() != port.creationNonce() )
    there->topoPortStatusDel( port.intfId() );
  there->topoPortStatusIs( port.intfId(), port.creationNonce() )->fdbFlushReportIs( number );
}

}  // namespace

Learner::Learner( Bridge bridge )
    : bridge_( whole( std::move( bridge ) ) ),
      fids_( fidsOf( *bridge_.config ) ),
      hosts_( bridge_.status,
              [this]( Fid fid, LearnedHost const & host ) { return standOf( fid, host ); } ),
      counts_( hostCountsFactory( Koi::Name( "hostCounts" ) ) ),
      counter_( hostCounterFactory( bridge_.status, counts_ ) ) {
  watch_ = std::make_unique< Watch >( *this );
  agingTimeChanged();
}

Learner::~Learner() {
  watch_.reset();
  counter_->koiDoZombieReactors( true );
}

/// On its port, in the VLAN of the database's number, or else the first that learns there.
HostTable::Stand Learner::standOf( Fid fid, LearnedHost const & host ) {
  Koi::U16 const number = fid.value();
  bool const isItsOwn = number < fids_.size() && number != 0 && fids_[number] == number;
  auto const at = isItsOwn ? fids_.begin() + number
                           : std::find( fids_.begin() + VlanId::koiRange.low, fids_.end(), number );
  auto const vlan = static_cast< Koi::U16 >( at - fids_.begin() );
  if( vlan > VlanId::koiRange.high || host.intf() == Wirex::IntfId() )
    return {};
  Port & its = port( host.intf() );
  return its.carries( vlan ) ? HostTable::Stand{ &its, vlan } : HostTable::Stand{};
}

Port & Learner::port( Wirex::IntfId intf ) {
  return ports_.try_emplace( intf, intf, bridge_.config, bridge_.topology ).first->second;
}

Totals Learner::totals() const {
  return { numFrames_, counts_->total(), hosts_.numbers().numMoves, hosts_.numbers().numAged,
           numNotLearned_ };
}

bool Learner::hasVlan( Koi::U16 number ) const {
  if( number < VlanId::koiRange.low || number > VlanId::koiRange.high )
    return false;
  VlanId const vlan( number );
  return bridge_.config->vlanConfig( vlan ) || bridge_.status->fdbStatus( Fid( fids_[number] ) );
}

bool Learner::flush( Koi::U16 vlan, Wirex::IntfId intf ) {
  if( vlan != 0 && !hasVlan( vlan ) )
    return false;
  bool const isAny = intf == Wirex::IntfId();
  hosts_.forgetIf( [&]( HostTable::Host const & host ) {
    return ( vlan == 0 || host.fid == fids_[vlan] ) && ( isAny || host.port->intf() == intf );
  } );
  return true;
}

void Learner::agingTimeChanged() {
  Koi::Seconds const own = bridge_.config->hostAgingTime();
  Koi::Seconds const shorter = bridge_.topology->agingTime();
  hosts_.agingTimeIs( shorter > 0 && !( own > 0 && own < shorter ) ? shorter : own );
}

void Learner::portChanged( Wirex::IntfId intf ) {
  auto const at = ports_.find( intf );
  if( at == ports_.end() )
    return;
  Port & port = at->second;
  port.forgetRules();
  bool const isThere = !!bridge_.config->switchIntfConfig( intf );
  hosts_.forgetIf( [&]( HostTable::Host const & host ) {
    return host.port == &port && !( isThere && port.carries( host.vlan ) );
  } );
}

void Learner::vlanChanged( VlanId vlan ) {
  topologyChanged( vlan );
  if( !hosts_.hasHostsIn( vlan.value() ) )
    return;
  bool const isThere = !!bridge_.config->vlanConfig( vlan );
  hosts_.forgetIf( [&]( HostTable::Host const & host ) {
    return host.vlan == vlan.value() && !( isThere && host.port->carries( host.vlan ) );
  } );
}

void Learner::fidChanged( VlanId vlan ) {
  Koi::U16 const number = vlan.value();
  Koi::U16 const fid = fidOf( *bridge_.config, vlan );
  fids_[number] = fid;
  if( hosts_.hasHostsIn( number ) )
    hosts_.forgetIf(
        [&]( HostTable::Host const & host ) { return host.vlan == number && host.fid != fid; } );
}

void Learner::fdbConfigChanged( Fid fid ) {
  Koi::Ptr< FdbConfig > const fdb = bridge_.config->fdbConfig( fid );
  for( Wirex::EthAddr const & address : hosts_.configuredHosts( fid ) )
    configuredHostChanged( fid, address );
  if( fdb )
    for( auto const & host : fdb->configuredHost() )
      configuredHostChanged( fid, host.key() );
}

void Learner::configuredHostChanged( Fid fid, Wirex::EthAddr address ) {
  Koi::Ptr< FdbConfig > const fdb = bridge_.config->fdbConfig( fid );
  if( fdb && fdb->configuredHost().contains( address ) )
    hosts_.configuredHostIs( fid, fdb->configuredHost( address ) );
  else
    hosts_.configuredHostDel( fid, address );
}

void Learner::topologyChanged() {
  for( auto & [intf, port] : ports_ )
    port.forgetRules();
}

void Learner::topologyChanged( VlanId vlan ) {
  for( auto & [intf, port] : ports_ )
    port.forgetRulesOf( vlan.value() );
}

void Learner::flushTopology( Topology::TopoConfig const & topology, Wirex::IntfId intf ) {
  Koi::Ptr< Topology::TopoPortConfig > const port = topology.topoPortConfig( intf );
  if( !port )
    return;
  Koi::U32 const number = port->fdbFlush();
  if( number == flushReported( *bridge_.topologyStatus, topology, *port ) )
    return;
  hosts_.forgetIf( [&]( HostTable::Host const & host ) {
    return host.port->intf() == intf &&
           bridge_.topology->vidToTopoMap( VlanId( host.vlan ) ).ptr() == &topology;
  } );
  reportFlush( *bridge_.topologyStatus, topology, *port, number );
}

}  // namespace Learn
