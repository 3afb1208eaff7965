// Learner.h: learns which port each sender is behind, from the frames that come in, as a bridge
// does.
//
// Used by one thread. What is learned stands in the library's own entities, one filtering database
// for each VLAN that a sender was seen in; the database has the VLAN's number.
#pragma once

#include <Lumo/Bridging.h>

#include <array>
#include <map>
#include <memory>

#include "Capture.h"
#include "Frame.h"
#include "Port.h"

namespace Learn {

/// What a learner has seen so far.
struct Totals {
  Koi::U64 numFrames = 0;
  Koi::U64 numHosts = 0;  // in all databases
  Koi::U64 numMoves = 0;
  std::array< Koi::U64, notLearnedTexts.size() > numNotLearned{};  // by NotLearned
};

class Learner {
 public:
  Learner();
  ~Learner();

  /// Learns from a frame. A sender seen for the first time gets an entry with no moves and the time
  /// of the frame; one that was last seen on another port moves to this one. A sender that is where
  /// it was changes nothing.
  void frameIs( Port const & port, CapturedFrame const & frame );

  /// Visits the databases in the order of their VLANs.
  template< class Visit >
  void forEachDatabase( Visit visit ) const {
    for( auto const & [vlan, database] : databases_ )
      visit( *database.status );
  }

  Totals const & totals() const { return totals_; }

 private:
  class Tally;

  struct Database {
    Koi::Ptr< Bridging::FdbStatus > status;
    std::unique_ptr< Tally > tally;
  };

  Bridging::FdbStatus & statusOf( Bridging::VlanId vlan );

  std::map< Koi::U16, Database > databases_;
  Totals totals_;
};

}  // namespace Learn
