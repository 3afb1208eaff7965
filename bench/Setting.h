// Setting.h: what the figures of a benchmark depend on, so that they can be told from others.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace Bench {

/// CPU, cores, compiler, build type and commit, each with its value, in this order; "unknown" where
/// the machine does not say.
std::vector< std::pair< std::string, std::string > > setting();

}  // namespace Bench
