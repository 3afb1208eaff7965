// Assert.h: what the library alone can break. An assertion is active in every build.
//
// Input from outside never reaches an assertion: it is checked at the border, by an exception.
#pragma once

#include <koi/Export.h>

namespace Koi {

/// Prints "assertion failed: <text> (<file>:<line>)" to standard error and aborts the process.
[[noreturn]] KOI_PUBLIC void assertionFailed( char const * text, char const * file, int line );

}  // namespace Koi

/// Ends the process unless the expression holds. The text is the expression exactly as typed.
#define KOI_ASSERT( ... ) \
  ( ( __VA_ARGS__ ) ? void() : ::Koi::assertionFailed( #__VA_ARGS__, __FILE__, __LINE__ ) )
