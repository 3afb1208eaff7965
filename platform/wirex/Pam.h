// Pam.h: an endpoint through which packets are sent and received: a device, one end of a wire in
// memory, one of the many that a multiplexer has.
//
// On one thread, that of its activity. A packet that is given to an endpoint, or got from one, has
// changed hands: the new holder may edit it. Who wants to keep it as it is keeps a clone().
//
// I1  One observer at most receives.
// I2  Packets are received in the order in which they came. While the observer does not read, some
//     wait; what comes when too many do is dropped and counted.
// I3  A packet is sent whole and in its turn, or refused and counted.
#pragma once

#include <deque>

#include <koi/Exception.h>
#include <wirex/Pkt.h>

namespace Wirex {

class KOI_PUBLIC Pam : public Koi::PtrInterface {
 public:
  /// So many received packets wait for an observer that does not read.
  static constexpr std::size_t waitingMost = 256;

  /// Frames, and their bytes on the wire without the checksum.
  struct Counters {
    Koi::U64 rxPkts = 0, rxBytes = 0;
    Koi::U64 rxDropped = 0;  ///< came, and nobody took them
    Koi::U64 txPkts = 0, txBytes = 0;
    Koi::U64 txDropped = 0;  ///< were refused, or lost by the device
  };

  /// Receives from an endpoint. It may do in a callback what it likes, also let the endpoint or
  /// itself go.
  class KOI_PUBLIC Notifiee {
   public:
    Notifiee( Notifiee const & ) = delete;
    Notifiee & operator=( Notifiee const & ) = delete;

    virtual void onPkt( Koi::Ptr< Pkt > const & ) {}
    /// There is room again after there was none.
    virtual void onWritable() {}
    /// isUp() may have changed. It may be told while a packet is sent.
    virtual void onUp() {}

    /// What it receives from; null when from nothing, or when that is gone.
    Pam * notifier() const { return pam_; }
    /// Receives from that one from now on; null: from nothing. Refuses one that has an observer:
    /// RangeException "the packet endpoint has an observer".
    void notifierIs( Pam * pam );
    /// Whether it is told, attached or not; true unless it was switched off.
    bool isRegisteredNotifiee() const { return registered_; }
    void isRegisteredNotifieeIs( bool registered ) { registered_ = registered; }

   protected:
    Notifiee() = default;
    virtual ~Notifiee();

   private:
    friend class Pam;
    Pam * pam_ = nullptr;
    bool registered_ = true;
  };

  /// Sends a frame; false when it was refused: it has no whole Ethernet header, or the endpoint is
  /// not writable.
  bool send( Koi::Ptr< Pkt > const & pkt );
  /// Whether a frame would be taken now. Once it would not, the observer is told when it may be
  /// again.
  virtual bool isWritable() const = 0;
  /// Whether what it stands for works, as far as it can tell.
  virtual bool isUp() const { return true; }

  /// Whether the observer wants packets now; true at first. What has waited comes inside the call
  /// that says so.
  bool isReading() const { return isReading_; }
  void isReadingIs( bool reading );
  /// So many packets wait to be read.
  std::size_t numWaiting() const { return waiting_.size(); }

  virtual Counters counters() const { return counters_; }

  /// What a reactor asks whether it has missed something: packets are no state, so it has not.
  Koi::U64 koiChanges() const { return 0; }

 protected:
  Pam() = default;
  virtual ~Pam();
  void handleZeroRef() const override { delete this; }

  /// Takes a frame of 14 bytes or more, or says that there is no room.
  virtual bool doSend( Koi::Ptr< Pkt > const & pkt ) = 0;
  /// The observer wants packets, or no more.
  virtual void doIsReading() {}

  /// Hands a packet to the observer, or lets it wait. Whoever calls it holds a reference.
  void received( Koi::Ptr< Pkt > const & pkt );
  void toldWritable();
  void toldUp();
  void rxDroppedIs( Koi::U64 more ) { counters_.rxDropped += more; }
  /// Frames that were taken to be sent and have been lost.
  void txLostIs( Pkt const & pkt );

 private:
  bool isHeard() const { return notifiee_ && notifiee_->registered_; }
  void deliverWaiting();

  Notifiee * notifiee_ = nullptr;
  std::deque< Koi::Ptr< Pkt > > waiting_;
  Counters counters_;
  bool isReading_ = true;
  bool isDelivering_ = false;
};

}  // namespace Wirex
