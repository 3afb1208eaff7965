// EthDevPam.h: the packet endpoint of an Ethernet device of this machine: all frames that come in
// on it, whomever they are for, and none that go out.
//
// On the thread of its activity. An 802.1Q header that the system has split off is the packet's
// separate header; one that a packet has goes out in its place.
//
// I1  What is sent goes out in order, in batches. At most queueMost packets wait for the device.
// I2  A device that goes down or away loses what waits; the endpoint goes on when it, or another of
//     its name, comes up.
#pragma once

#include <deque>
#include <memory>
#include <vector>

#include <koi/Activity.h>
#include <koi/String8.h>
#include <wirex/Pam.h>

namespace Wirex {

class PacketSocket;

/// A device that cannot be opened.
class KOI_PUBLIC DeviceException : public Koi::Exception {
 public:
  using Exception::Exception;
  ~DeviceException() override;
};

class KOI_PUBLIC EthDevPam final : public Koi::Tracked< EthDevPam, Pam > {
 public:
  /// So many packets may wait to be sent.
  static constexpr std::size_t queueMost = 1024;

  /// On the device of that name, which may be down; with a null activity, the default one. Raises
  /// DeviceException "cannot open device '<name>': <reason>" when there is none, or when the
  /// process may not open it (it needs CAP_NET_RAW).
  explicit EthDevPam( Koi::String8 const & deviceName, Koi::Activity * activity = nullptr );

  Koi::String8 const & deviceName() const { return deviceName_; }

  /// False while the device is down or away, or too much waits for it. The observer is told of room
  /// when the queue is down to half.
  bool isWritable() const override { return isUp_ && !isFull_; }
  /// Whether the device is up; a cable that is out does not count.
  bool isUp() const override { return isUp_; }
  /// How often it went down or away.
  Koi::U64 numDown() const { return numDown_; }
  /// So many packets wait to be sent.
  std::size_t numQueued() const { return queue_.size(); }

  /// rxDropped counts also what the system lost before it got here; txDropped what it would not
  /// send: what is too long for the device, and what waited for one that went down.
  Counters counters() const override;

 private:
  ~EthDevPam();
  bool doSend( Koi::Ptr< Pkt > const & pkt ) override;
  void doIsReading() override;

  void read();
  void resumeSending();
  void sendQueue();
  void wentDown();
  void probe();

  Koi::String8 const deviceName_;
  std::unique_ptr< PacketSocket > const socket_;
  std::vector< Koi::Ptr< Pkt > > batch_;
  std::deque< Koi::Ptr< Pkt > > queue_;
  bool isUp_ = true;
  bool isFull_ = false;     // until the queue is down to half
  bool isBlocked_ = false;  // the system takes nothing; a watch or a timer says when to try again
  Koi::U64 numDown_ = 0;

  Koi::DescriptorWatch readable_;
  Koi::DescriptorWatch writable_;
  Koi::Timer sending_;
  Koi::Timer probing_;
};

}  // namespace Wirex
