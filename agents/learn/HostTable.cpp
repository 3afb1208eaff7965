#include "HostTable.h"

#include <cmath>

#include <koi/KeysOf.h>

namespace Learn {

using namespace Bridging;

namespace {

/// What no clock can have said is the beginning.
CaptureTime captureTime( Koi::Seconds time ) {
  constexpr Koi::Seconds farthest = 1e12;
  if( !( time >= -farthest && time <= farthest ) )
    return {};
  Koi::Seconds const seconds = std::floor( time );
  return { static_cast< std::int64_t >( seconds ),
           static_cast< std::uint32_t >( ( time - seconds ) * 1e9 ) };
}

}  // namespace

HostTable::HostTable( Koi::Ptr< Status > status, StandOf const & standOf )
    : status_( std::move( status ) ) {
  for( auto const & fdb : status_->fdbStatus() )
    for( auto const & host : fdb.value()->learnedHost() )
      now_ = std::max( now_, nanosecondsOf( captureTime( host.value().lastMoveTime() ) ) );
  for( Fid const fid : Koi::keysOf( status_->fdbStatus() ) ) {
    takeOver( *status_->fdbStatus( fid ), standOf );
    if( status_->fdbStatus( fid )->learnedHost().empty() )
      status_->fdbStatusDel( fid );
  }
}

void HostTable::takeOver( FdbStatus & fdb, StandOf const & standOf ) {
  for( Wirex::EthAddr const & address : Koi::keysOf( fdb.learnedHost() ) ) {
    LearnedHost const host = fdb.learnedHost( address );
    Stand const stand =
        isEntryTypeConfigured( host.entryType() ) ? Stand() : standOf( fdb.fid(), host );
    if( !stand.port ) {
      fdb.learnedHostDel( address );
      continue;
    }
    Koi::U16 const fid = fdb.fid().value();
    hosts_[keyOf( fid, numberOf( address ) )] = { stand.port, now_, forEver, fid, stand.vlan };
    ++numInVlan_[stand.vlan];
  }
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
  byDue_.clear();
  for( auto & [key, host] : hosts_ )
    if( host.port )
      listed( host, key );
  firstDueIs();
  age();
}

void HostTable::firstDueIs() { firstDueAt_ = byDue_.empty() ? forEver : byDue_.begin()->first; }

void HostTable::listed( Host & host, Koi::U64 key ) {
  host.dueAt = agingTime_ == forEver ? forEver : host.seenAt + agingTime_;
  if( host.dueAt == forEver )
    return;
  byDue_.emplace_hint( byDue_.end(), host.dueAt, key );  // mostly the last one
  firstDueIs();
}

void HostTable::unlisted( Host & host, Koi::U64 key ) {
  if( host.dueAt == forEver )
    return;
  byDue_.erase( { host.dueAt, key } );
  firstDueIs();
}

void HostTable::age() {
  while( now_ > firstDueAt_ ) {
    Koi::U64 const key = byDue_.begin()->second;
    auto const at = hosts_.find( key );
    if( isAged( at->second ) ) {
      ++numbers_.numAged;
      forget( at );
    } else {
      unlisted( at->second, key );
      listed( at->second, key );
    }
  }
}

bool HostTable::learn( Host & host, Koi::U64 key, Port & port, Koi::U16 vlan,
                       CaptureTime const & time ) {
  auto const number = static_cast< Koi::U16 >( key >> 48 );
  Fid const fid( number );
  Koi::Ptr< FdbStatus > const fdb = status_->fdbStatus( fid );
  if( !fdb ) {  // whoever is told of a new database may change this table: that comes first
    hosts_.erase( key );
    status_->fdbStatusIs( fid );
    return sightIs( number, key & addressMask, port, vlan, time );
  }
  host = { &port, now_, forEver, number, vlan };
  ++numInVlan_[vlan];
  listed( host, key );
  fdb->learnedHostIs(
      LearnedHost( addressOf( key ), port.intf(), 0, time.asSeconds(), learnedDynamicMac ) );
  return true;
}

bool HostTable::move( Host & host, Koi::U64 key, Port & port, Koi::U16 vlan,
                      CaptureTime const & time ) {
  host.port = &port;
  vlanIs( host, vlan );
  host.seenAt = now_;
  ++numbers_.numMoves;
  Wirex::EthAddr const address = addressOf( key );
  Koi::Ptr< FdbStatus > const fdb = status_->fdbStatus( Fid( host.fid ) );
  fdb->learnedHostIs( LearnedHost( address, port.intf(), fdb->learnedHost( address ).moves() + 1,
                                   time.asSeconds(), learnedDynamicMac ) );
  return true;
}

void HostTable::leavePort( Host & host, Koi::U64 key ) {
  if( !host.port )
    return;
  unlisted( host, key );
  --numInVlan_[host.vlan];
  host.port = nullptr;
}

void HostTable::forget( Hosts::iterator at ) {
  Koi::U64 const key = at->first;
  Fid const fid( at->second.fid );
  leavePort( at->second, key );
  hosts_.erase( at );
  status_->fdbStatus( fid )->learnedHostDel( addressOf( key ) );
}

void HostTable::configuredHostIs( Fid fid, ConfiguredHost const & configured ) {
  Koi::Ptr< FdbStatus > const fdb = status_->fdbStatusIs( fid );
  Koi::U64 const key = keyOf( fid.value(), numberOf( configured.address() ) );
  Host & host = hosts_[key];
  leavePort( host, key );
  host.fid = fid.value();
  fdb->learnedHostIs(
      LearnedHost( configured.address(), configured.intf(), 0, 0, configured.entryType() ) );
}

void HostTable::configuredHostDel( Fid fid, Wirex::EthAddr const & address ) {
  auto const at = hosts_.find( keyOf( fid.value(), numberOf( address ) ) );
  if( at != hosts_.end() && !at->second.port )
    forget( at );
}

std::vector< Wirex::EthAddr > HostTable::configuredHosts( Fid fid ) const {
  std::vector< Wirex::EthAddr > addresses;
  for( auto const & [key, host] : hosts_ )
    if( !host.port && host.fid == fid.value() )
      addresses.push_back( addressOf( key ) );
  return addresses;
}

}  // namespace Learn
