// Contender.h: a peer as main() sees it: filled, judged, and measured one pass at a time.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "Peer.h"

namespace Bench {

enum class Workload {
  hit,
  hitBatch,
  miss,
  missBatch,
  beside,
  besideLatency,
  overwrite,
  overwriteBatch,
  churn,
  grow,
  growLatency,
  memory
};

/// One pass of a workload. All peers get the same passes in turns.
struct Pass {
  double seconds;     ///< how long it lasts at least
  std::size_t start;  ///< the key it starts with, a multiple of stride
};

/// What a pass found out: names of columns, and nanoseconds or bytes.
using Figures = std::vector< std::pair< char const *, double > >;

class Contender {
 public:
  virtual ~Contender() = default;

  /// The figures of one pass; none when the peer has no such operation.
  virtual Figures measured( Workload workload, Pass const & pass ) = 0;

  /// Looks up what is there and what is not, alone and beside a writer, and returns in words the
  /// first thing that is wrong; nothing when all is right.
  virtual std::string fault() = 0;
};

struct PeerKind {
  char const * name;
  /// A peer that holds all present keys. `keys` must outlive it. Throws Unavailable.
  std::unique_ptr< Contender > ( *filled )( Room const & room, Keys const & keys );
};

}  // namespace Bench
