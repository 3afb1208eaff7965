// HostTable.h: the hosts of a bridge, and when each was seen last.
//
// Used by one thread. Bridging::Status is what others see of the hosts; here is what finds one by
// one look-up a frame, and what ageing needs. Whoever observes the status may call anything here
// while it is told: a function of this table that changes the status does so last.
//
// H1  Every host stands in the status, in the FdbStatus of its database, and the other way round.
// H2  The learned ones are listed by last sight, the oldest first; those configured are not listed.
// H3  The clock never goes back, so that the list is sorted by itself.
#pragma once

#include <Lumo/Bridging.h>

#include <array>
#include <boost/intrusive/list.hpp>
#include <boost/unordered/unordered_map.hpp>
#include <vector>

#include "Capture.h"
#include "Frame.h"

namespace Learn {

class Port;

/// What a table has counted.
struct HostNumbers {
  Koi::U64 numMoves = 0;
  Koi::U64 numAged = 0;
};

class HostTable {
 public:
  /// A host of the table.
  struct Host : boost::intrusive::list_base_hook<> {
    Koi::U64 key = 0;         // keyOf()
    Port * port = nullptr;    // null: configured
    std::int64_t seenAt = 0;  // nanoseconds
    Koi::U16 vlan = 0;        // where it was seen last; several VLANs may share a database
  };

  /// Writes that status from now on; what an earlier table has left in it goes.
  explicit HostTable( Koi::Ptr< Bridging::Status > status );
  HostTable( HostTable const & ) = delete;
  HostTable & operator=( HostTable const & ) = delete;
  ~HostTable() { bySight_.clear(); }

  /// How long a host stays that is not seen; 0 is for ever. Those that were not seen for longer go.
  void agingTimeIs( Koi::Seconds time );

  /// A frame came in at that time, whatever it was: hosts that were not seen for longer than the
  /// ageing time go. A time before that of an earlier frame counts as that one.
  void timeIs( CaptureTime const & time ) {
    now_ = std::max( now_, nanosecondsOf( time ) );
    if( !bySight_.empty() && isAged( bySight_.front() ) ) [[unlikely]]
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
      seen( host );
      return true;
    }
    if( isFresh )
      return learn( host, key, port, vlan, time );
    return host.port && move( host, port, vlan, time );
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
    for( Host const & host : bySight_ )
      if( wanted( host ) )
        keys.push_back( host.key );
    for( Koi::U64 const key : keys )  // an observer may have changed anything meanwhile
      if( auto const at = hosts_.find( key );
          at != hosts_.end() && at->second.port && wanted( at->second ) )
        forget( at->second );
  }

  /// Whether any host was seen last in that VLAN.
  bool hasHostsIn( Koi::U16 vlan ) const { return numInVlan_[vlan] != 0; }
  static Koi::U16 fidOf( Host const & host ) { return fidOf( host.key ); }

  HostNumbers const & numbers() const { return numbers_; }
  Koi::Ptr< Bridging::Status > const & status() const { return status_; }

 private:
  using List = boost::intrusive::list< Host, boost::intrusive::constant_time_size< false > >;

  static constexpr AddressNumber addressMask = 0xffff'ffff'ffff;

  static constexpr Koi::U64 keyOf( Koi::U16 fid, AddressNumber address ) {
    return Koi::U64{ fid } << 48 | address;
  }
  static constexpr Koi::U16 fidOf( Koi::U64 key ) { return static_cast< Koi::U16 >( key >> 48 ); }
  static Wirex::EthAddr addressOf( Koi::U64 key ) { return Learn::addressOf( key & addressMask ); }

  bool isAged( Host const & host ) const { return now_ - host.seenAt > agingTime_; }
  void seen( Host & host ) {
    if( host.seenAt == now_ )
      return;  // the order of equal times says nothing
    host.seenAt = now_;
    bySight_.splice( bySight_.end(), bySight_, List::s_iterator_to( host ) );
  }
  void vlanIs( Host & host, Koi::U16 vlan ) {
    if( host.vlan == vlan ) [[likely]]
      return;
    --numInVlan_[host.vlan];
    ++numInVlan_[vlan];
    host.vlan = vlan;
  }
  bool learn( Host & host, Koi::U64 key, Port & port, Koi::U16 vlan, CaptureTime const & time );
  bool move( Host & host, Port & port, Koi::U16 vlan, CaptureTime const & time );
  void unlist( Host & host );
  void forget( Host & host );
  void age();
  static std::int64_t nanosecondsOf( CaptureTime const & time );

  // So far from 0 that the distance of two times is a number.
  static constexpr std::int64_t latest = INT64_MAX / 2, forEver = INT64_MAX;

  Koi::Ptr< Bridging::Status > const status_;
  boost::unordered_map< Koi::U64, Host > hosts_;  // a host stays where it is until it goes
  List bySight_;
  std::array< Koi::U32, 4096 > numInVlan_{};
  std::int64_t now_ = -latest;
  std::int64_t agingTime_ = forEver;
  HostNumbers numbers_;
};

}  // namespace Learn
