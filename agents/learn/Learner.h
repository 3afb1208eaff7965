// Learner.h: learns which port each sender is behind, from the frames that come in, as a bridge
// does.
//
// Used by one thread. What is learned stands in Bridging::Status; what the bridge is configured to
// do, what spanning tree says and who asks for a flush is obeyed from the next frame on, and what
// the table should not hold any more goes at once. docs/bridging.md has the rules.
#pragma once

#include <HostCounter.h>
#include <Lumo/BrTopology.h>
#include <Lumo/Bridging.h>

#include <array>
#include <map>
#include <memory>

#include "HostTable.h"

namespace Learn {

/// What a learner works with; it makes those that are null.
struct Bridge {
  Koi::Ptr< Bridging::Config > config{};                           // obeyed
  Koi::Ptr< Bridging::Topology::Config > topology{};               // obeyed
  Koi::Ptr< Bridging::HostTableFlushRequestDir > flushRequests{};  // served
  Koi::Ptr< Bridging::Status > status{};                           // written
  Koi::Ptr< Bridging::Topology::Status > topologyStatus{};         // written: its fdbFlushReport
  Koi::Ptr< Bridging::HostTableFlushReplyDir > flushReplies{};     // written
};

/// What a learner has seen so far.
struct Totals {
  Koi::U64 numFrames = 0;
  Koi::U64 numHosts = 0;  // that stand in the table
  Koi::U64 numMoves = 0;
  Koi::U64 numAged = 0;
  std::array< Koi::U64, notLearnedTexts.size() > numNotLearned{};  // by NotLearned
};

class Learner {
 public:
  /// Begins with the learned hosts that the status holds, as far as the bridge is configured for
  /// them, and with those that are configured.
  explicit Learner( Bridge bridge = {} );
  ~Learner();
  Learner( Learner const & ) = delete;
  Learner & operator=( Learner const & ) = delete;

  /// The port of that interface, which frames come in on. It stays as long as the learner does.
  Port & port( Wirex::IntfId intf );

  /// Learns from a frame. First its time ages the table; then its sender is learned, moves or is
  /// seen again, or the frame is counted among those that nothing is learned from.
  void frameIs( Port & port, CapturedFrame const & frame ) {
    ++numFrames_;
    hosts_.timeIs( frame.time );
    Port::Admission const admission = port.admissionOf( frame.bytes );
    if( admission.vlan == 0 )
      ++numNotLearned_[static_cast< std::size_t >( admission.why )];
    else if( !hosts_.sightIs( fids_[admission.vlan], admission.source, port, admission.vlan,
                              frame.time ) )
      ++numNotLearned_[static_cast< std::size_t >( NotLearned::configured )];
  }

  /// How many hosts each database has.
  HostCounts const & counts() const { return *counts_; }

  /// Forgets what was learned in the database of a VLAN, 0 for all, on an interface, the empty one
  /// for all. False: there is no such VLAN.
  bool flush( Koi::U16 vlan, Wirex::IntfId intf );

  Bridge const & bridge() const { return bridge_; }
  Totals totals() const;

 private:
  class Watch;

  // What the watch says has changed. Each reads what there is now.
  void agingTimeChanged();
  void portChanged( Wirex::IntfId intf );
  void vlanChanged( Bridging::VlanId vlan );
  void fidChanged( Bridging::VlanId vlan );
  void fdbConfigChanged( Bridging::Fid fid );
  void configuredHostChanged( Bridging::Fid fid, Wirex::EthAddr address );
  void topologyChanged();
  void topologyChanged( Bridging::VlanId vlan );
  void flushTopology( Bridging::Topology::TopoConfig const & topology, Wirex::IntfId intf );

  bool hasVlan( Koi::U16 vlan ) const;
  HostTable::Stand standOf( Bridging::Fid fid, Bridging::LearnedHost const & host );

  Bridge const bridge_;
  std::map< Wirex::IntfId, Port > ports_;
  std::array< Koi::U16, 4096 > fids_{};  // by VLAN
  HostTable hosts_;
  Koi::U64 numFrames_ = 0;
  std::array< Koi::U64, notLearnedTexts.size() > numNotLearned_{};  // by NotLearned
  Koi::Ptr< HostCounts > const counts_;
  Koi::Ptr< HostCounter > counter_;
  std::unique_ptr< Watch > watch_;
};

}  // namespace Learn
