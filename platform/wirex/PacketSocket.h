// PacketSocket.h: the system's end of a device: frames in and out in batches, with the headers that
// the system has split off. Private to the room; on one thread.
//
// Nothing here waits, and nothing of a wire is believed: the system says how long each frame is.
#pragma once

#include <sys/socket.h>

#include <array>
#include <deque>
#include <vector>

#include <koi/String8.h>
#include <linux/if_packet.h>
#include <mem/Kick.h>
#include <wirex/PktIoVecs.h>

namespace Wirex {

class PacketSocket {
 public:
  static constexpr unsigned batchMost = 64;

  /// What came of a batch: so many frames went through, then that error, as errno has it; 0: none.
  struct Outcome {
    unsigned numPkts;
    int error;
  };

  /// Opens the device, promiscuous. Raises DeviceException.
  explicit PacketSocket( Koi::String8 const & deviceName );

  /// Readable when there is something to receive.
  int receiving() const { return in_.number(); }
  /// Writable when the system would take more.
  int sending() const { return out_.number(); }

  /// Receives what is there, at most a batch. One that was longer than the buffers is not in it but
  /// counted, and the buffers grow.
  Outcome receive( std::vector< Koi::Ptr< Pkt > > & pkts );
  /// Sends the first so many of the frames, at most a batch. Each has a whole Ethernet header.
  Outcome send( std::deque< Koi::Ptr< Pkt > > const & pkts );

  /// Looks whether the device is there and up, and goes on with one that has come in its place.
  bool isDeviceUp();

  /// Frames that came and did not get here: for which the system had no room, and too long ones.
  Koi::U64 numLost() const;

 private:
  struct Incoming {
    Koi::Ptr< PktBuffer > buffer;
    iovec piece;
    alignas( cmsghdr ) char control[CMSG_SPACE( sizeof( tpacket_auxdata ) )];
  };

  /// The number of the device now; raises DeviceException.
  int deviceIndex() const;
  void bindTo( int index );
  void readMtu();
  /// Buffers for so long frames from now on.
  void frameMostIs( std::size_t most );
  void bufferIs( unsigned slot );
  [[noreturn]] void refuse( int error ) const;

  Koi::String8 const deviceName_;
  // Two, for every frame that goes out wakes whoever waits for its socket, also for what comes in.
  Mem::Descriptor in_, out_;
  int index_ = 0;
  std::size_t frameMost_ = 0;  // bytes that a buffer takes
  Koi::Ptr< PktBufferPool > pool_;
  Koi::U64 numTooLong_ = 0;
  mutable Koi::U64 numNoRoom_ = 0;

  std::array< Incoming, batchMost > incoming_;
  std::array< mmsghdr, batchMost > rxMessages_{};
  std::array< PktIoVecs, batchMost > outgoing_;
  std::array< mmsghdr, batchMost > txMessages_{};
};

}  // namespace Wirex
