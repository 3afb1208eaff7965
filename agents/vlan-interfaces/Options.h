// Options.h: the command line of vlan-interfaces.
#pragma once

#include <frames/PortCaptures.h>

#include <koi/Types.h>

#include <optional>
#include <string>
#include <vector>

namespace VlanInterfaces {

struct Options {
  std::string sysname = "switch";
  std::vector< Frames::PortCapture > captures;  // as named; no port twice
  std::string configPath;                       // the file of --config; empty: none
  std::string root;                             // --root; empty: that of the environment
  Koi::Seconds interval = 1;
  double pace = 0;  // --pace: how many times faster than they came; 0: at once
};

/// Reads the command line into options. The exit status when the program ends here: 0 after the
/// help on standard output, 2 after one line on standard error that says what is wrong with which
/// argument.
std::optional< int > readCommandLine( int argc, char ** argv, Options & options );

}  // namespace VlanInterfaces
