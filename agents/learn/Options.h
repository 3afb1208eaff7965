// Options.h: the command line of the program.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Port.h"

namespace Learn {

/// One --capture: the frames of a file come in on a port.
struct PortCapture {
  Port port;
  std::string path;  // "-" is standard input
};

struct Options {
  std::vector< PortCapture > captures;  // as named; no port twice
  bool json = false;
};

/// Reads the command line into options. The exit status when the program ends here: 0 after the
/// help on standard output, 2 after one line on standard error that says what is wrong with which
/// argument.
std::optional< int > readCommandLine( int argc, char ** argv, Options & options );

}  // namespace Learn
