// CounterAgent.h: the agent: counts frames, keeps the tables, serves requests. On its activity's
// thread.
#pragma once

#include <VlanCounterClearing.h>
#include <coredb/TreeServer.h>
#include <frames/Port.h>
#include <mem/TableDir.h>

#include <map>

#include "VlanCounts.h"

namespace VlanCounters {

class CounterAgent {
 public:
  /// Becomes the writer of both tables, and serves requests. Raises Rova::MemoryResourceException
  /// when there is another writer, or no room; Coredb::ServeException.
  CounterAgent( Koi::Activity * activity, Mem::RootPath const & root, Koi::Seconds interval,
                Koi::Ptr< Bridging::Config const > config );
  ~CounterAgent();
  CounterAgent( CounterAgent const & ) = delete;
  CounterAgent & operator=( CounterAgent const & ) = delete;

  /// The port of that interface, which frames come in on.
  Frames::Port & port( Wirex::IntfId intf );

  /// Counts a frame, or drops it as its port does.
  void frameIs( Frames::Port & port, Frames::CapturedFrame const & frame ) {
    Koi::U16 const vlan = port.vlanOf( frame.bytes );
    if( vlan == 0 )
      ++numDropped_;
    else
      counts_->frameIs( vlan, frame );
  }

  /// The table has all that was counted. False, after a line on standard error, when there is no
  /// room for it.
  bool refresh();

  VlanCounts const & counts() const { return *counts_; }
  Koi::U64 numDropped() const { return numDropped_; }

 private:
  Koi::Ptr< Bridging::Config const > const config_;
  Koi::Ptr< Bridging::Topology::Config const > const topology_;
  std::map< Wirex::IntfId, Frames::Port > ports_;
  Koi::U64 numDropped_ = 0;

  Koi::Ptr< Quill::Bridging::VlanCounterDir > const counters_;
  Koi::Ptr< Quill::Bridging::VlanCounterSnapshotDir > const snapshots_;
  Koi::Ptr< Bridging::VlanCountersCliReq > const requests_;
  std::unique_ptr< VlanCounts > counts_;
  Koi::Ptr< Bridging::VlanCounterClearSm > clearing_;
  std::unique_ptr< Coredb::TreeServer > server_;
  Koi::Seconds const interval_;
  Koi::Timer timer_;
};

}  // namespace VlanCounters
