#include "HostTable.h"

#include <cmath>

#include "Port.h"

namespace Learn {

using namespace Bridging;

HostTable::HostTable( Koi::Ptr< Status > status ) : status_( std::move( status ) ) {
  status_->fdbStatusDelAll();
}

std::int64_t HostTable::nanosecondsOf( CaptureTime const & time ) {
  constexpr std::int64_t second = 1'000'000'000;
  if( time.seconds >= latest / second )
    return latest;
  if( time.seconds <= -latest / second )
    return -latest;
  return time.seconds * second + time.nanoseconds;
}

void HostTable::agingTimeIs( Koi::Seconds time ) {
  Koi::Seconds const nanoseconds = std::ceil( time * 1e9 );
  agingTime_ = nanoseconds > 0 && nanoseconds < static_cast< Koi::Seconds >( latest )
                   ? static_cast< std::int64_t >( nanoseconds )
                   : forEver;
  age();
}

void HostTable::age() {
  while( !bySight_.empty() && isAged( bySight_.front() ) ) {
    ++numbers_.numAged;
    forget( bySight_.front() );
  }
}

bool HostTable::learn( Host & host, Koi::U64 key, Port & port, Koi::U16 vlan,
                       CaptureTime const & time ) {
  Fid const fid( fidOf( key ) );
  Koi::Ptr< FdbStatus > const fdb = status_->fdbStatus( fid );
  if( !fdb ) {  // whoever is told of a new database may change this table: that comes first
    hosts_.erase( key );
    status_->fdbStatusIs( fid );
    return sightIs( fid.value(), key & addressMask, port, vlan, time );
  }
  host.key = key;
  host.port = &port;
  host.vlan = vlan;
  ++numInVlan_[vlan];
  host.seenAt = now_;
  bySight_.push_back( host );
  fdb->learnedHostIs(
      LearnedHost( addressOf( key ), port.intf(), 0, time.asSeconds(), learnedDynamicMac ) );
  return true;
}

bool HostTable::move( Host & host, Port & port, Koi::U16 vlan, CaptureTime const & time ) {
  host.port = &port;
  vlanIs( host, vlan );
  seen( host );
  ++numbers_.numMoves;
  Wirex::EthAddr const address = addressOf( host.key );
  Koi::Ptr< FdbStatus > const fdb = status_->fdbStatus( Fid( fidOf( host ) ) );
  fdb->learnedHostIs( LearnedHost( address, port.intf(), fdb->learnedHost( address ).moves() + 1,
                                   time.asSeconds(), learnedDynamicMac ) );
  return true;
}

void HostTable::unlist( Host & host ) {
  if( !host.port )
    return;
  bySight_.erase( List::s_iterator_to( host ) );
  --numInVlan_[host.vlan];
  host.port = nullptr;
}

void HostTable::forget( Host & host ) {
  Koi::U64 const key = host.key;
  unlist( host );
  hosts_.erase( key );
  status_->fdbStatus( Fid( fidOf( key ) ) )->learnedHostDel( addressOf( key ) );
}

void HostTable::configuredHostIs( Fid fid, ConfiguredHost const & configured ) {
  Koi::Ptr< FdbStatus > const fdb = status_->fdbStatusIs( fid );
  Koi::U64 const key = keyOf( fid.value(), numberOf( configured.address() ) );
  Host & host = hosts_[key];
  unlist( host );
  host.key = key;
  fdb->learnedHostIs(
      LearnedHost( configured.address(), configured.intf(), 0, 0, configured.entryType() ) );
}

void HostTable::configuredHostDel( Fid fid, Wirex::EthAddr const & address ) {
  auto const at = hosts_.find( keyOf( fid.value(), numberOf( address ) ) );
  if( at != hosts_.end() && !at->second.port )
    forget( at->second );
}

std::vector< Wirex::EthAddr > HostTable::configuredHosts( Fid fid ) const {
  std::vector< Wirex::EthAddr > addresses;
  for( auto const & [key, host] : hosts_ )
    if( !host.port && fidOf( host ) == fid.value() )
      addresses.push_back( addressOf( key ) );
  return addresses;
}

}  // namespace Learn
