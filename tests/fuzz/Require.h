// Require.h: how a fuzz target says that a law is broken: in words, and by ending the process.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>

namespace Fuzz {

/// Ends the process unless the law holds; the details say of what it was broken.
inline void require( bool holds, char const * law, std::string const & details ) {
  if( holds )
    return;
  std::fprintf( stderr, "broken: %s\n%s\n", law, details.c_str() );
  std::abort();
}

}  // namespace Fuzz
