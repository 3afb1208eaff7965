// Traced.h: what the library traces while a test does something. A program that includes it is
// traced at every level.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

namespace Tests {

/// Before the library first looks, which it does once.
inline int const traceLevel = setenv( "LUMO_TRACE", "9", 1 );

/// The lines that it wrote meanwhile, each with its end.
std::string traced( auto act ) {
  testing::internal::CaptureStderr();
  act();
  return testing::internal::GetCapturedStderr();
}

}  // namespace Tests
