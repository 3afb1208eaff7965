// Options.h: the command line of the program.
#pragma once

#include <koi/Types.h>
#include <wirex/EthAddr.h>
#include <wirex/Ip4Addr.h>

#include <map>
#include <optional>
#include <string>

namespace VlanEndpoints {

struct Options {
  std::string device;
  std::map< Koi::U32, Wirex::Ip4Addr > addresses;  // by VLAN; 0: of frames without one
  Wirex::EthAddr eth{ 0x00, 0x00, 0x5e, 0x00, 0x53, 0x0a };
  std::optional< Koi::Seconds > duration;  // --for; none: until it is interrupted
};

/// Reads the command line into options. The exit status when the program ends here: 0 after the
/// help on standard output, 2 after one line on standard error that says what is wrong with which
/// argument.
std::optional< int > readCommandLine( int argc, char ** argv, Options & options );

}  // namespace VlanEndpoints
