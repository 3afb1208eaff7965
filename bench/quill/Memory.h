// Memory.h: how much memory this process takes.
#pragma once

namespace Bench {

/// Bytes of the process's proportional set: its own pages, and its share of those it maps with
/// others. What the heap does not need is given back first.
double bytesOfProcess();

}  // namespace Bench
