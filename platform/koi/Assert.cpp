#include <koi/Assert.h>

#include <cstdio>
#include <cstdlib>

namespace Koi {

void assertionFailed( char const * text, char const * file, int line ) {
  std::fprintf( stderr, "assertion failed: %s (%s:%d)\n", text, file, line );
  std::abort();
}

}  // namespace Koi
