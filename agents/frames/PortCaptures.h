// PortCaptures.h: the arguments of a program that say which captures come in on which ports, and
// how fast.
#pragma once

#include <Lumo/Bridging.h>

#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace Frames {

/// A wrong argument; the text names the argument.
class UsageException : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// One --capture: the frames of a file come in on a port.
struct PortCapture {
  Wirex::IntfId intf;
  std::string path;                              // "-" is standard input
  std::optional< Bridging::VlanId > nativeVlan;  // --native
};

/// The arguments as they were given.
struct CaptureArguments {
  std::vector< std::string > captures, natives;
  std::optional< std::string > pace;
};

/// Parses the command line; then `taken` takes over what was given, and may raise UsageException.
/// The exit status when the program ends here: 0 after the help on standard output, 2 after one
/// line on standard error that says what is wrong with which argument.
std::optional< int > parsed( CLI::App & app, int argc, char ** argv,
                             std::function< void() > const & taken );

/// Adds --capture, --native and --pace.
void addCaptureOptions( CLI::App & app, CaptureArguments & given );

/// What they say, in their order; no port twice. Raises UsageException.
std::vector< PortCapture > portCapturesOf( CaptureArguments const & given );

/// How many times faster than they came the frames come; 0: at once. Raises UsageException.
double paceOf( CaptureArguments const & given );

/// A number of an argument, below a thousand million; nothing when it is none.
std::optional< double > numberOf( std::string const & given );

/// The ports have the native VLANs that the command line says.
void applyNativeVlans( std::vector< PortCapture > const & captures, Bridging::Config & config );

}  // namespace Frames
