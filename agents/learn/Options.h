// Options.h: the command line of the program.
#pragma once

#include <frames/PortCaptures.h>

#include <optional>
#include <string>
#include <vector>

namespace Learn {

using namespace Frames;

struct Options {
  std::vector< PortCapture > captures;  // as named; no port twice
  std::string configPath;               // the file of --config; empty: none
  std::optional< Koi::Seconds > agingTime;
  std::string table;  // --table: what the hosts are published as; empty: they are not
  std::string root;   // --root: where tables lie; empty: where they do by default
  double pace = 0;    // --pace: how many times faster than they came; 0: at once
  bool json = false;

  /// Makes the configuration what the command line says of it. What that does not mention stays.
  void applyTo( Bridging::Config & config ) const;
};

/// Reads the command line into options. The exit status when the program ends here: 0 after the
/// help on standard output, 2 after one line on standard error that says what is wrong with which
/// argument.
std::optional< int > readCommandLine( int argc, char ** argv, Options & options );

}  // namespace Learn
