// Goals.h: what our table is to be beside its peers, as ratios of one run.
#pragma once

#include <vector>

namespace Bench {

struct Goal {
  char const * figure;       ///< of ours
  char const * peer;         ///< ours too, where it is to be better than itself; null: none
  char const * peersFigure;  ///< null where there is no peer
  double most;               ///< ours over theirs; ours alone where there is no peer
};

inline std::vector< Goal > const goals{
    { "hit", "rte_hash", "hit", 0.65 },
    { "hit", "shared+lock", "hit", 0.65 },
    { "hit", "lmdb", "hit", 0.15 },
    { "hit", "flat_map", "hit", 2.6 },
    { "hit", "raw_walk", "hit", 1.5 },
    { "hit 64", "flat_map", "hit", 0.75 },
    { "hit 64", "rte_hash", "hit 64", 0.55 },
    { "hit 64", "quill", "hit", 1 / 3.0 },
    { "miss", "lfht", "miss", 0.6 },
    { "miss", "ck_ht", "miss", 0.85 },
    { "miss 64", "quill", "miss", 0.5 },
    { "beside", "quill", "hit", 1.15 },
    { "beside", "shared+lock", "beside", 0.01 },
    { "overwrite", "rte_hash", "overwrite", 1 / 0.85 },
    { "overwrite", "lfht", "overwrite", 1 / 2.0 },
    { "overwrite", "lmdb", "overwrite", 1 / 12.0 },
    { "overwrite", "redis", "overwrite", 1 / 15.0 },
    { "overwr 32", "quill", "overwrite", 1 / 1.8 },
    { "grow", "absl", "grow", 1 / 0.45 },
    { "grow", "flat_map", "grow", 1 / 0.45 },
    { "grow max", "absl", "grow max", 1.5 },
    { "grow max", "flat_map", "grow max", 1.5 },
    { "B/entry", nullptr, nullptr, 92 },
};

}  // namespace Bench
