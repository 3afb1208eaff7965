// VethPair.h: two Ethernet devices with a wire between them, in a network namespace of their own
// that the calling thread is in as long as the pair is there. Needs root and the command ip.
#pragma once

#include <fcntl.h>
#include <sched.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

namespace TestSupport {

class VethPair {
 public:
  static constexpr char skipped[] = "this user can have no network namespace with devices";

  VethPair() : before_( open( "/proc/thread-self/ns/net", O_RDONLY | O_CLOEXEC ) ) {
    // Nothing of the system's own is to be on the wire: no neighbour or router discovery.
    isThere_ = unshare( CLONE_NEWNET ) == 0 &&
               did( "echo 1 > /proc/sys/net/ipv6/conf/default/disable_ipv6; ip link add name near0 "
                    "type veth peer name far0 && ip link set near0 up && ip link set far0 up" ) &&
               carries();
  }
  ~VethPair() {
    setns( before_, CLONE_NEWNET );
    close( before_ );
  }
  VethPair( VethPair const & ) = delete;
  VethPair & operator=( VethPair const & ) = delete;

  bool isThere() const { return isThere_; }
  /// Waits until the wire carries frames; false when it never does. Right after its ends were set
  /// up the system drops what is sent, and says that it went well.
  static bool carries() {
    return did(
        "for i in $(seq 200); do [ $(ip -br link show type veth | grep -c ' UP ') = 2 ] && exit 0; "
        "sleep 0.05; done; exit 1" );
  }
  /// Whether the commands of the shell, in the namespace, all went well.
  static bool did( std::string const & commands ) {
    return std::system( ( "{ " + commands + "; } > /dev/null 2>&1" ).c_str() ) == 0;
  }

 private:
  int const before_;
  bool isThere_ = false;
};

}  // namespace TestSupport
