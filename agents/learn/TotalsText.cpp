#include "TotalsText.h"

#include <fmt/format.h>

namespace Learn {

std::string totalsText( Learner const & learner ) {
  Totals const totals = learner.totals();
  std::size_t numVlans = 0;
  for( auto const & database : learner.counts().numHosts() )
    numVlans += database.value() != 0;
  Koi::U64 numNotLearned = 0;
  std::string reasons;
  for( std::size_t i = 0; i < notLearnedTexts.size(); ++i ) {
    if( totals.numNotLearned[i] == 0 )
      continue;
    numNotLearned += totals.numNotLearned[i];
    reasons += fmt::format( "  {}: {}\n", notLearnedTexts[i], totals.numNotLearned[i] );
  }
  return fmt::format(
      "Hosts: {}, VLANs: {}, moves: {}, aged out: {}\nFrames read: {}\n"
      "Frames not learned from: {}\n{}",
      totals.numHosts, numVlans, totals.numMoves, totals.numAged, totals.numFrames, numNotLearned,
      reasons );
}

}  // namespace Learn
