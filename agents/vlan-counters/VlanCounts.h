// VlanCounts.h: what came in on each VLAN, frame by frame, and how it gets into a table.
//
// Used by one thread. A frame costs some additions; the table is written when refresh() is called,
// and only where something has changed since.
#pragma once

#include <Lumo/VlanCounters.h>
#include <frames/Capture.h>
#include <frames/Frame.h>

#include <array>
#include <vector>

namespace VlanCounters {

class VlanCounts {
 public:
  /// Goes on from what the table holds.
  explicit VlanCounts( Koi::Ptr< Quill::Bridging::VlanCounterDir > table );

  /// Counts a frame of at least six captured bytes that came in on that VLAN, 1 to 4094.
  void frameIs( Koi::U16 vlan, Frames::CapturedFrame const & frame ) {
    Counts & counts = counts_[vlan];
    counts.octets += frame.wireSize;
    ++counts.packets[Frames::audienceOf( frame.bytes )];
    ++numFrames_;
    if( !counts.hasChanged ) [[unlikely]] {
      counts.hasChanged = true;
      changed_.push_back( vlan );
    }
  }

  /// The table has what was counted until now, at that time in seconds since 1970. Raises
  /// Rova::MemoryResourceException; what was not written is at the next call.
  void refresh( Koi::Seconds now );

  /// How many frames were counted here, and on how many VLANs there are counts.
  Koi::U64 numFrames() const { return numFrames_; }
  std::size_t numVlans() const { return table_->vlanCounter().size(); }

 private:
  struct Counts {
    Koi::U64 octets = 0;
    std::array< Koi::U64, 3 > packets{};  // by audience
    bool hasChanged = false;
  };

  Koi::Ptr< Quill::Bridging::VlanCounterDir > const table_;
  std::array< Counts, 4095 > counts_{};  // by VLAN
  std::vector< Koi::U16 > changed_;
  Koi::U64 numFrames_ = 0;
};

}  // namespace VlanCounters
