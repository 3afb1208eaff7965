// HostTable.h: the hosts of a bridge, and when each was seen last.
//
// Used by one thread. Bridging::Status is what others see of the hosts; here is what finds one by
// one look-up a frame, and what ageing needs. Whoever observes the status may call anything here
// while it is told: a function of this table that changes the status does so last.
//
// H1  Every host stands in the status, in the FdbStatus of its database, and the other way round.
// H2  Where hosts age, the learned ones are listed by when they are to be looked at: when they
// would be
//     too old had they not been seen since they were looked at last. So a frame writes its host's
//     time and nothing else.
// H3  The clock never goes back.
#pragma once

#include <Lumo/Bridging.h>
#include <frames/Capture.h>
#include <frames/Port.h>

#include <array>
#include <boost/unordered/unordered_flat_map.hpp>
#include <functional>
#include <set>
#include <vector>

namespace Learn {

using namespace Frames;  // what a learner works with

/// What a table has counted.
struct HostNumbers {
  Koi::U64 numMoves = 0;
  Koi::U64 numAged = 0;
};

class HostTable {
 public:
  /// A host of the table.
  struct Host {
    Port * port = nullptr;    // null: configured
    std::int64_t seenAt = 0;  // nanoseconds
    std::int64_t dueAt = 0;   // when it is to be looked at; forEver: it is not listed
    Koi::U16 fid = 0;
    Koi::U16 vlan = 0;  // where it was seen last; several VLANs may share a database
  };

  /// Where a learned host is.
  struct Stand {
    Port * port = nullptr;  // null: nowhere any more
    Koi::U16 vlan = 0;
  };
  using StandOf = std::function< Stand( Bridging::Fid, Bridging::LearnedHost const & ) >;

  /// Writes that status from now on. Of the learned hosts that are in it those stay that stand
  /// somewhere: as if they had been seen when the last of them was learned or moved. The others go,
  /// and so do configured ones.
  HostTable( Koi::Ptr< Bridging::Status > status, StandOf const & standOf );
  HostTable( HostTable const & ) = delete;
  HostTable & operator=( HostTable const & ) = delete;

  /// How long a host stays that is not seen; 0 is for ever. Those that were not seen for longer go.
  void agingTimeIs( Koi::Seconds time );

  /// A frame came in at that time, whatever it was: hosts that were not seen for longer than the
  /// ageing time go. A time before that of an earlier frame counts as that one.
  void timeIs( CaptureTime const & time ) {
    now_ = std::max( now_, nanosecondsOf( time ) );
    if( now_ > firstDueAt_ ) [[unlikely]]
      age();
  }

  /// A frame of that source came in on a port. A host that is seen for the first time has no moves
  /// and the time of the frame; one that was last seen on another port moves to this one; one that
  /// is where it was changes nothing in the status. False: it is configured, and stays as it is.
  bool sightIs( Koi::U16 fid, AddressNumber source, Port & port, Koi::U16 vlan,
                CaptureTime const & time ) {
    Koi::U64 const key = keyOf( fid, source );
    auto const [at, isFresh] = hosts_.try_emplace( key );
    Host & host = at->second;
    if( host.port == &port ) [[likely]] {
      vlanIs( host, vlan );
      host.seenAt = now_;
      return true;
    }
    if( isFresh )
      return learn( host, key, port, vlan, time );
    return host.port && move( host, key, port, vlan, time );
  }

  /// Stands in the table as configured from now on, in place of a learned one.
  void configuredHostIs( Bridging::Fid fid, Bridging::ConfiguredHost const & configured );
  /// A configured one is configured no more: it goes. A learned one stays.
  void configuredHostDel( Bridging::Fid fid, Wirex::EthAddr const & address );
  /// The configured ones of a database.
  std::vector< Wirex::EthAddr > configuredHosts( Bridging::Fid fid ) const;

  /// Forgets the learned hosts for which wanted( host ) is true.
  template< class Wanted >
  void forgetIf( Wanted wanted ) {
    std::vector< Koi::U64 > keys;
    for( auto const & [key, host] : hosts_ )
      if( host.port && wanted( host ) )
        keys.push_back( key );
    for( Koi::U64 const key : keys )  // an observer may have changed anything meanwhile
      if( auto const at = hosts_.find( key );
          at != hosts_.end() && at->second.port && wanted( at->second ) )
        forget( at );
  }

  /// Whether any host was seen last in that VLAN.
  bool hasHostsIn( Koi::U16 vlan ) const { return numInVlan_[vlan] != 0; }

  HostNumbers const & numbers() const { return numbers_; }
  Koi::Ptr< Bridging::Status > const & status() const { return status_; }

 private:
  // One look-up is one or two lines of the cache. A host may move when another one comes.
  using Hosts = boost::unordered_flat_map< Koi::U64, Host >;

  static constexpr AddressNumber addressMask = 0xffff'ffff'ffff;

  static constexpr Koi::U64 keyOf( Koi::U16 fid, AddressNumber address ) {
    return Koi::U64{ fid } << 48 | address;
  }
  static Wirex::EthAddr addressOf( Koi::U64 key ) { return Learn::addressOf( key & addressMask ); }

  bool isAged( Host const & host ) const { return now_ - host.seenAt > agingTime_; }
  void listed( Host & host, Koi::U64 key );
  void unlisted( Host & host, Koi::U64 key );
  void vlanIs( Host & host, Koi::U16 vlan ) {
    if( host.vlan == vlan ) [[likely]]
      return;
    --numInVlan_[host.vlan];
    ++numInVlan_[vlan];
    host.vlan = vlan;
  }
  void firstDueIs();
  void takeOver( Bridging::FdbStatus & fdb, StandOf const & standOf );
  bool learn( Host & host, Koi::U64 key, Port & port, Koi::U16 vlan, CaptureTime const & time );
  bool move( Host & host, Koi::U64 key, Port & port, Koi::U16 vlan, CaptureTime const & time );
  void leavePort( Host & host, Koi::U64 key );
  void forget( Hosts::iterator at );
  void age();
  static std::int64_t nanosecondsOf( CaptureTime const & time );

  // So far from 0 that the distance of two times is a number.
  static constexpr std::int64_t latest = INT64_MAX / 2, forEver = INT64_MAX;

  Koi::Ptr< Bridging::Status > const status_;
  Hosts hosts_;
  std::set< std::pair< std::int64_t, Koi::U64 > > byDue_;  // dueAt and key
  std::int64_t firstDueAt_ = forEver;
  std::array< Koi::U32, 4096 > numInVlan_{};
  std::int64_t now_ = -latest;
  std::int64_t agingTime_ = forEver;
  HostNumbers numbers_;
};

}  // namespace Learn
