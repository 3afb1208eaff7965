// Options.h: what quillBench is asked for.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "Contender.h"

namespace Bench {

struct WorkloadKind {
  Workload workload;
  char const * name;
  char const * line;  ///< what is done and what its figures are
};

/// All workloads, in the order they run in.
extern std::vector< WorkloadKind > const workloadKinds;

struct Options {
  std::vector< std::size_t > sizes{ 1'000'000 };
  std::vector< std::string > peers;      ///< empty: all
  std::vector< std::string > workloads;  ///< empty: all
  double seconds = 0.1;
  unsigned rounds = 5;
  bool json = false;
  std::string against;
  std::filesystem::path folder;
};

/// What the arguments say; `peerNames` are those they may name. Exits with 0 after printing the
/// help that was asked for, and with 2 after saying on stderr what it does not understand.
Options parsed( int argc, char ** argv, std::vector< std::string > const & peerNames );

}  // namespace Bench
