// Plain.h: how the product reaches shared memory and the system. A table engine is a template over
// such a policy; a test puts another in its place, which records every store, stops after one,
// fails a call, or leaves a step out.
#pragma once

#include <mem/TableDir.h>

namespace Mem {

struct Plain : Words {
  using Dir = TableDir;
  using File = MappedFile;

  /// Whether a step is left out on purpose. Here none is, and nothing is compiled for it.
  template< class Fault >
  static constexpr bool lacks( Fault ) {
    return false;
  }
  static void prefetch( void const * at ) { __builtin_prefetch( at ); }
};

}  // namespace Mem
