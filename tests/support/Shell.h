// Shell.h: runs a program as a user does, and tells what came of it.
#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

#include "SavedFile.h"

namespace TestSupport {

/// What a command left behind: its exit status, and what it said on either stream.
struct Outcome {
  int status = -1;
  std::string out, err;
};

inline std::string contents( SavedFile const & saved ) {
  std::ifstream file( saved.path(), std::ios::binary );
  return std::string( std::istreambuf_iterator< char >( file ), {} );
}

/// Runs a command of the shell, in which "$program" is that program.
inline Outcome shell( std::string const & program, std::string const & command ) {
  SavedFile const out( "" ), err( "" );
  std::string const whole =
      "program='" + program + "'; { " + command + "; } >" + out.path() + " 2>" + err.path();
  int const status = std::system( whole.c_str() );
  EXPECT_TRUE( WIFEXITED( status ) ) << command;
  return { WEXITSTATUS( status ), contents( out ), contents( err ) };
}

}  // namespace TestSupport
