// IntfCounts.h: what came in on each VLAN, and how it gets into the table of VLAN interface
// counters.
//
// Used by one thread, that of the entities. A frame costs some additions; the table is written when
// refresh() is called, and when an interface comes or goes, which begins at 0.
#pragma once

#include <Lumo/VlanIntf.h>
#include <frames/Capture.h>
#include <frames/Frame.h>

#include <array>

namespace VlanInterfaces {

class IntfCounts final : private Interface::VlanIntfCounterWriterStatus::NotifieeConst {
 public:
  /// Writes the interfaces that are listed into that table, with the generation and the link
  /// changes that their statuses say. What else is in the table goes. Raises
  /// Rova::MemoryResourceException.
  IntfCounts( Koi::Ptr< Interface::AllVlanIntfCounterQuill > table,
              Koi::Ptr< Interface::VlanIntfCounterWriterStatus const > listed,
              Koi::Ptr< Interface::VlanIntfStatusDir const > statuses );

  /// Counts a frame of at least six captured bytes that came in on that VLAN, 1 to 4094.
  void frameIs( Koi::U16 vlan, Frames::CapturedFrame const & frame ) {
    Counts & counts = counts_[vlan];
    Frames::Audience const audience = Frames::audienceOf( frame.bytes );
    counts.octets[audience] += frame.wireSize;
    ++counts.packets[audience];
    ++numFrames_;
  }

  /// The table has what was counted until now, at that time in seconds since 1970. Raises
  /// Rova::MemoryResourceException; what was not written is at the next call.
  void refresh( Koi::Seconds now );

  Koi::U64 numFrames() const { return numFrames_; }

 private:
  struct Counts {
    std::array< Koi::U64, 3 > octets{}, packets{};  // by audience
  };
  using NotifieeConst::onIntf;
  void onIntf( Wirex::IntfId const & intfId ) override;
  Interface::VlanIntfCounterQuill recordOf( Interface::VlanIntfStatus const & status,
                                            Koi::Seconds now ) const;

  Koi::Ptr< Interface::AllVlanIntfCounterQuill > const table_;
  Koi::Ptr< Interface::VlanIntfCounterWriterStatus const > const listed_;
  Koi::Ptr< Interface::VlanIntfStatusDir const > const statuses_;
  std::array< Counts, 4095 > counts_{};  // by VLAN
  Koi::U64 numFrames_ = 0;
};

}  // namespace VlanInterfaces
