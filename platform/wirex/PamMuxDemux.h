// PamMuxDemux.h: one endpoint, that of a device, shared by many, each of which has a number. What
// comes from the one goes to that of the many which decapsulate() names; what one of the many sends
// goes through doEncapsulate() to the device.
//
// A reactor without a kind of number of its own: a derived class says how numbers stand in frames.
// The constructor of the most derived class ends with koiBegin(), which runs doInitMux().
//
// I1  Nothing passes before it is initialised, nor in a direction that its mode has not.
// I2  A frame that is not passed on is counted, once, by whoever did not.
// I3  The many are writable when the device is, and are told in turns: each once before any twice.
#pragma once

#include <map>
#include <vector>

#include <koi/Reactor.h>
#include <wirex/Pam.h>

namespace Wirex {

class KOI_PUBLIC PamMuxDemux : public Koi::Reactor {
 public:
  /// What passes: a bit for each direction.
  enum Mode : Koi::U32 {
    nothing = 0,
    demux = 1,  ///< from the device to the many
    mux = 2,    ///< from the many to the device
    muxAndDemux = 3,
  };

  /// Frames that came from the device and went nowhere.
  struct Counters {
    Koi::U64 closedPkts = 0;   ///< it was not initialised, or its mode is not to demux
    Koi::U64 unknownPkts = 0;  ///< nobody has their number
    Koi::U64 unknownBytes = 0;
  };

  /// The device's endpoint; null: none. The many are refused what they send then.
  Koi::Ptr< Pam > onePam() const { return onePam_.ptr(); }
  /// Refuses one that has an observer, as Pam::Notifiee::notifierIs() does.
  void onePamIs( Koi::Ptr< Pam > const & pam );

  /// The endpoint of that number; null when there is none.
  Koi::Ptr< Pam > manyPam( Koi::U32 number ) const;
  /// The endpoint of that number, a new one when there is none.
  Koi::Ptr< Pam > manyPamIs( Koi::U32 number );
  /// Lets it go: nothing comes to it any more, and what it sends is refused.
  void manyPamDel( Koi::U32 number );
  /// The numbers that have one, ascending.
  std::vector< Koi::U32 > manyPamKeys() const;

  Mode mode() const { return mode_; }
  void modeIs( Mode mode );
  bool initialized() const { return initialized_; }
  void initializedIs( bool initialized );

  Counters const & counters() const { return counters_; }

  /// The number of a frame that came from the device, which it may make another frame of.
  virtual Koi::U32 decapsulate( Koi::Ptr< Pkt > const & pkt ) = 0;
  /// Makes the frame one of that number, for the device.
  virtual void doEncapsulate( Koi::Ptr< Pkt > const & pkt, Koi::U32 number ) = 0;

  /// Sets it up: at the end of construction, once.
  virtual void doInitMux() = 0;
  /// It goes: lets the device's endpoint and the many go. A derived class lets its own go, then
  /// calls this.
  virtual void doPrepareToDie();

 protected:
  /// With that endpoint, which may be null, for its device.
  explicit PamMuxDemux( Koi::Ptr< Pam > const & pam );
  ~PamMuxDemux();

  void koiStart() override { doInitMux(); }
  void koiCleanup() override { doPrepareToDie(); }

 private:
  class ManyPam;

  class KoiOnePam : public Pam::Notifiee {
   public:
    explicit KoiOnePam( PamMuxDemux * reactor ) : reactor_( reactor ) {}
    void onPkt( Koi::Ptr< Pkt > const & pkt ) override {
      Koi::Ptr< PamMuxDemux >( reactor_ )->handlePkt( pkt );
    }
    void onWritable() override { Koi::Ptr< PamMuxDemux >( reactor_ )->handleWritable(); }
    void onUp() override { Koi::Ptr< PamMuxDemux >( reactor_ )->handleUp(); }

   private:
    PamMuxDemux * reactor_;
  };

  bool passes( Mode direction ) const { return initialized_ && ( mode_ & direction ) != 0; }
  bool isWritable() const { return passes( mux ) && onePam() && onePam()->isWritable(); }
  bool sendAs( Koi::U32 number, Koi::Ptr< Pkt > const & pkt );
  void handlePkt( Koi::Ptr< Pkt > const & pkt );
  void handleWritable();
  void handleUp();

  Koi::Watched< KoiOnePam, Pam > onePam_;
  std::map< Koi::U32, Koi::Ptr< ManyPam > > manyPam_;
  Koi::U32 nextTold_ = 0;  // who is told first that there is room
  Mode mode_ = nothing;
  bool initialized_ = false;
  Counters counters_;
};

}  // namespace Wirex
