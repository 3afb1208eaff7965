// MemoryPam.h: the two ends of a wire in memory: what one sends the other receives, in a later turn
// of the activity. For agents without a device, for captures that are to be received, for tests.
//
// Packets are handed over as they are, with their separate 802.1Q headers; nothing is copied. On
// the activity's thread.
#pragma once

#include <utility>

#include <koi/Activity.h>
#include <wirex/Pam.h>

namespace Wirex {

class KOI_PUBLIC MemoryPam final : public Koi::Tracked< MemoryPam, Pam > {
 public:
  static constexpr std::size_t capacityDefault = 1024;

  /// False when the other end has gone, or has as many packets to receive as the wire holds.
  bool isWritable() const override { return peer_ && peer_->arriving_.size() < capacity_; }
  /// The other end is there.
  bool isUp() const override { return peer_ != nullptr; }

 private:
  friend KOI_PUBLIC std::pair< Koi::Ptr< MemoryPam >, Koi::Ptr< MemoryPam > > memoryPamFactory(
      Koi::Activity * activity, std::size_t capacity );

  MemoryPam( Koi::Activity * activity, std::size_t capacity );
  ~MemoryPam();
  bool doSend( Koi::Ptr< Pkt > const & pkt ) override;
  void doIsReading() override;
  void deliver();

  std::size_t const capacity_;
  MemoryPam * peer_ = nullptr;
  std::deque< Koi::Ptr< Pkt > > arriving_;
  bool isFull_ = false;  // and the observer is to be told when it is not
  Koi::Timer delivery_;
};

/// A wire that holds so many packets in either direction. With a null activity, the default one.
KOI_PUBLIC std::pair< Koi::Ptr< MemoryPam >, Koi::Ptr< MemoryPam > > memoryPamFactory(
    Koi::Activity * activity = nullptr, std::size_t capacity = MemoryPam::capacityDefault );

}  // namespace Wirex
