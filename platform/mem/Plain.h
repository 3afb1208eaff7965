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
  /// Inlined, and to be called from what is: GCC takes a function that does nothing else for one
  /// that does nothing.
  [[gnu::always_inline]] static void prefetch( void const * at ) { __builtin_prefetch( at ); }
};

}  // namespace Mem
