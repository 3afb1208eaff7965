// EthIntf.h: written by koigen from EthIntf.koi. Change that file, not this one.
#pragma once

#include <koi/Value.h>
#include <koi/Entity.h>
#include <wirex/EthAddr.h>
#include <Interface/IntfCounter.h>
#include <wirex/IntfId.h>

namespace Interface {

/// Whether packets pass.
enum IntfOperStatus : Koi::U32 {
  operUnknown,         ///< nobody has said
  operUp,              ///< they pass
  operDown,            ///< they do not
  operTesting,         ///< only those of a test do
  operDormant,         ///< it waits for something from outside
  operNotPresent,      ///< a part of it is missing
  operLowerLayerDown   ///< something below it is down
};
KOI_ENUM( IntfOperStatus );

/// What the hardware sees at the other end of the cable.
enum LinkStatus : Koi::U32 {
  linkUnknown,  ///< nobody has said
  linkUp,       ///< somebody
  linkDown      ///< nobody
};
KOI_ENUM( LinkStatus );

/// What an interface should be.
class KOI_PUBLIC EthIntfConfig : public Koi::EntityOf< EthIntfConfig > {
 public:
  explicit EthIntfConfig( Wirex::IntfId const & intfId );

  /// the interface
  Wirex::IntfId intfId() const { return _intfId; }

  /// it is to carry packets
  bool enabled() const { return enabled_; }
  void enabledIs( bool v ) { koiIs( enabled_, v, NotifieeConst::koiOnEnabled ); }

  /// what an operator calls it
  Koi::String8 description() const { return description_; }
  void descriptionIs( Koi::String8 const & v ) {
    koiIs( description_, v, NotifieeConst::koiOnDescription );
  }

  /// the octets of the longest packet
  Koi::U32 mtu() const { return mtu_; }
  void mtuIs( Koi::U32 v ) { koiIs( mtu_, v, NotifieeConst::koiOnMtu ); }

  /// its MAC address; zero: the one that it has by itself
  Wirex::EthAddr addr() const { return addr_; }
  void addrIs( Wirex::EthAddr const & v ) { koiIs( addr_, v, NotifieeConst::koiOnAddr ); }

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< EthIntfConfig > {
   public:
    virtual void onEnabled() {}
    virtual void onEnabledKoiImmediate() { koiPass( koiOnEnabled ); onEnabled(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnEnabled{
      koiFirst + 1, &NotifieeConst::onEnabled, &NotifieeConst::onEnabledKoiImmediate };

    virtual void onDescription() {}
    virtual void onDescriptionKoiImmediate() { koiPass( koiOnDescription ); onDescription(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnDescription{
      koiFirst + 2, &NotifieeConst::onDescription, &NotifieeConst::onDescriptionKoiImmediate };

    virtual void onMtu() {}
    virtual void onMtuKoiImmediate() { koiPass( koiOnMtu ); onMtu(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnMtu{
      koiFirst + 3, &NotifieeConst::onMtu, &NotifieeConst::onMtuKoiImmediate };

    virtual void onAddr() {}
    virtual void onAddrKoiImmediate() { koiPass( koiOnAddr ); onAddr(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnAddr{
      koiFirst + 4, &NotifieeConst::onAddr, &NotifieeConst::onAddrKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, EthIntfConfig >;

  static constexpr char koiName[] = "Interface::EthIntfConfig";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_intfId", &EthIntfConfig::intfId )
    };
  }
  template< class Self = EthIntfConfig >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "intfId", &Self::_intfId ),
      Koi::attribute( "enabled", &Self::enabled_, &Self::enabledIs ),
      Koi::attribute( "description", &Self::description_, &Self::descriptionIs ),
      Koi::attribute( "mtu", &Self::mtu_, &Self::mtuIs ),
      Koi::attribute( "addr", &Self::addr_, &Self::addrIs )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 5;
  static Koi::KoiType const _koiType;

 private:
  Wirex::IntfId const _intfId;
  bool enabled_ = true;
  Koi::String8 description_{};
  Koi::U32 mtu_ = 1500;
  Wirex::EthAddr addr_{};
};

/// A new EthIntfConfig without a parent.
KOI_PUBLIC Koi::Ptr< EthIntfConfig > ethIntfConfigFactory( Wirex::IntfId const & intfId );

/// What an interface is.
class KOI_PUBLIC EthIntfStatus : public Koi::EntityOf< EthIntfStatus > {
 public:
  EthIntfStatus( Wirex::IntfId const & intfId, Koi::U32 genId );

  /// the interface
  Wirex::IntfId intfId() const { return _intfId; }

  /// its generation: one that is deleted and created again has another
  Koi::U32 genId() const { return _genId; }

  /// it is configured, and whatever it needs is there
  bool active() const { return active_; }
  void activeIs( bool v ) { koiIs( active_, v, NotifieeConst::koiOnActive ); }

  /// what an operator calls it
  Koi::String8 description() const { return description_; }
  void descriptionIs( Koi::String8 const & v ) {
    koiIs( description_, v, NotifieeConst::koiOnDescription );
  }

  /// whether packets pass
  IntfOperStatus operStatus() const { return operStatus_; }
  void operStatusIs( IntfOperStatus v ) { koiIs( operStatus_, v, NotifieeConst::koiOnOperStatus ); }

  /// what the hardware sees
  LinkStatus linkStatus() const { return linkStatus_; }
  void linkStatusIs( LinkStatus v ) { koiIs( linkStatus_, v, NotifieeConst::koiOnLinkStatus ); }

  /// when that changed last, in seconds since 1970; 0: never
  Koi::Seconds lastLinkStatusChange() const { return lastLinkStatusChange_; }
  void lastLinkStatusChangeIs( Koi::Seconds v ) {
    koiIs( lastLinkStatusChange_, v, NotifieeConst::koiOnLastLinkStatusChange );
  }

  /// how often it did
  Koi::U32 linkStatusChanges() const { return linkStatusChanges_; }
  void linkStatusChangesIs( Koi::U32 v ) {
    koiIs( linkStatusChanges_, v, NotifieeConst::koiOnLinkStatusChanges );
  }

  /// bits in a second; 0: unknown, or it has none of its own
  Koi::U64 speed() const { return speed_; }
  void speedIs( Koi::U64 v ) { koiIs( speed_, v, NotifieeConst::koiOnSpeed ); }

  /// the MAC address that it uses
  Wirex::EthAddr addr() const { return addr_; }
  void addrIs( Wirex::EthAddr const & v ) { koiIs( addr_, v, NotifieeConst::koiOnAddr ); }

  /// the octets of the longest packet
  Koi::U32 mtu() const { return mtu_; }
  void mtuIs( Koi::U32 v ) { koiIs( mtu_, v, NotifieeConst::koiOnMtu ); }

  /// Its current counters, looked for anew each time; null when there are none, which is traced.
  virtual Koi::Ptr< IntfCounter > counter() const;

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< EthIntfStatus > {
   public:
    virtual void onActive() {}
    virtual void onActiveKoiImmediate() { koiPass( koiOnActive ); onActive(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnActive{
      koiFirst + 2, &NotifieeConst::onActive, &NotifieeConst::onActiveKoiImmediate };

    virtual void onDescription() {}
    virtual void onDescriptionKoiImmediate() { koiPass( koiOnDescription ); onDescription(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnDescription{
      koiFirst + 3, &NotifieeConst::onDescription, &NotifieeConst::onDescriptionKoiImmediate };

    virtual void onOperStatus() {}
    virtual void onOperStatusKoiImmediate() { koiPass( koiOnOperStatus ); onOperStatus(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnOperStatus{
      koiFirst + 4, &NotifieeConst::onOperStatus, &NotifieeConst::onOperStatusKoiImmediate };

    virtual void onLinkStatus() {}
    virtual void onLinkStatusKoiImmediate() { koiPass( koiOnLinkStatus ); onLinkStatus(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnLinkStatus{
      koiFirst + 5, &NotifieeConst::onLinkStatus, &NotifieeConst::onLinkStatusKoiImmediate };

    virtual void onLastLinkStatusChange() {}
    virtual void onLastLinkStatusChangeKoiImmediate() {
      koiPass( koiOnLastLinkStatusChange ); onLastLinkStatusChange();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnLastLinkStatusChange{
      koiFirst + 6, &NotifieeConst::onLastLinkStatusChange,
          &NotifieeConst::onLastLinkStatusChangeKoiImmediate };

    virtual void onLinkStatusChanges() {}
    virtual void onLinkStatusChangesKoiImmediate() {
      koiPass( koiOnLinkStatusChanges ); onLinkStatusChanges();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnLinkStatusChanges{
      koiFirst + 7, &NotifieeConst::onLinkStatusChanges,
          &NotifieeConst::onLinkStatusChangesKoiImmediate };

    virtual void onSpeed() {}
    virtual void onSpeedKoiImmediate() { koiPass( koiOnSpeed ); onSpeed(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnSpeed{
      koiFirst + 8, &NotifieeConst::onSpeed, &NotifieeConst::onSpeedKoiImmediate };

    virtual void onAddr() {}
    virtual void onAddrKoiImmediate() { koiPass( koiOnAddr ); onAddr(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnAddr{
      koiFirst + 9, &NotifieeConst::onAddr, &NotifieeConst::onAddrKoiImmediate };

    virtual void onMtu() {}
    virtual void onMtuKoiImmediate() { koiPass( koiOnMtu ); onMtu(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnMtu{
      koiFirst + 10, &NotifieeConst::onMtu, &NotifieeConst::onMtuKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, EthIntfStatus >;

  static constexpr char koiName[] = "Interface::EthIntfStatus";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_intfId", &EthIntfStatus::intfId ),
      Koi::parameter( "_genId", &EthIntfStatus::genId )
    };
  }
  template< class Self = EthIntfStatus >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "intfId", &Self::_intfId ),
      Koi::attribute( "genId", &Self::_genId ),
      Koi::attribute( "active", &Self::active_, &Self::activeIs ),
      Koi::attribute( "description", &Self::description_, &Self::descriptionIs ),
      Koi::attribute( "operStatus", &Self::operStatus_, &Self::operStatusIs ),
      Koi::attribute( "linkStatus", &Self::linkStatus_, &Self::linkStatusIs ),
      Koi::attribute( "lastLinkStatusChange", &Self::lastLinkStatusChange_,
                      &Self::lastLinkStatusChangeIs ),
      Koi::attribute( "linkStatusChanges", &Self::linkStatusChanges_, &Self::linkStatusChangesIs ),
      Koi::attribute( "speed", &Self::speed_, &Self::speedIs ),
      Koi::attribute( "addr", &Self::addr_, &Self::addrIs ),
      Koi::attribute( "mtu", &Self::mtu_, &Self::mtuIs )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 11;
  static Koi::KoiType const _koiType;

 private:
  Wirex::IntfId const _intfId;
  Koi::U32 const _genId;
  bool active_{};
  Koi::String8 description_{};
  IntfOperStatus operStatus_{};
  LinkStatus linkStatus_{};
  Koi::Seconds lastLinkStatusChange_{};
  Koi::U32 linkStatusChanges_{};
  Koi::U64 speed_{};
  Wirex::EthAddr addr_{};
  Koi::U32 mtu_{};
};

/// A new EthIntfStatus without a parent.
KOI_PUBLIC Koi::Ptr< EthIntfStatus > ethIntfStatusFactory( Wirex::IntfId const & intfId,
                                                           Koi::U32 genId );

/// What is known of an interface on this supervisor alone.
class KOI_PUBLIC EthIntfStatusLocal : public Koi::EntityOf< EthIntfStatusLocal > {
 public:
  explicit EthIntfStatusLocal( Wirex::IntfId const & intfId );

  /// the interface
  Wirex::IntfId intfId() const { return _intfId; }

  /// the kernel's number of its device; 0: it has none
  Koi::U32 deviceIndex() const { return deviceIndex_; }
  void deviceIndexIs( Koi::U32 v ) { koiIs( deviceIndex_, v, NotifieeConst::koiOnDeviceIndex ); }

  /// the kernel takes packets for it
  bool deviceUp() const { return deviceUp_; }
  void deviceUpIs( bool v ) { koiIs( deviceUp_, v, NotifieeConst::koiOnDeviceUp ); }

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< EthIntfStatusLocal > {
   public:
    virtual void onDeviceIndex() {}
    virtual void onDeviceIndexKoiImmediate() { koiPass( koiOnDeviceIndex ); onDeviceIndex(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnDeviceIndex{
      koiFirst + 1, &NotifieeConst::onDeviceIndex, &NotifieeConst::onDeviceIndexKoiImmediate };

    virtual void onDeviceUp() {}
    virtual void onDeviceUpKoiImmediate() { koiPass( koiOnDeviceUp ); onDeviceUp(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnDeviceUp{
      koiFirst + 2, &NotifieeConst::onDeviceUp, &NotifieeConst::onDeviceUpKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, EthIntfStatusLocal >;

  static constexpr char koiName[] = "Interface::EthIntfStatusLocal";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_intfId", &EthIntfStatusLocal::intfId )
    };
  }
  template< class Self = EthIntfStatusLocal >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "intfId", &Self::_intfId ),
      Koi::attribute( "deviceIndex", &Self::deviceIndex_, &Self::deviceIndexIs ),
      Koi::attribute( "deviceUp", &Self::deviceUp_, &Self::deviceUpIs )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 3;
  static Koi::KoiType const _koiType;

 private:
  Wirex::IntfId const _intfId;
  Koi::U32 deviceIndex_{};
  bool deviceUp_{};
};

/// A new EthIntfStatusLocal without a parent.
KOI_PUBLIC Koi::Ptr< EthIntfStatusLocal > ethIntfStatusLocalFactory( Wirex::IntfId const & intfId );

/// The status of all Ethernet ports.
class KOI_PUBLIC EthIntfStatusDir : public Koi::EntityOf< EthIntfStatusDir, IntfStatusDirBase > {
 public:
  explicit EthIntfStatusDir( Koi::Name const & name );

  class KoiIntfStatus;
  /// by interface
  Koi::Ptr< EthIntfStatus > intfStatus( Wirex::IntfId const & k ) const;
  Koi::HashMap< KoiIntfStatus, Wirex::IntfId,
      Koi::Owned< EthIntfStatus > > const & intfStatus() const {
    return intfStatus_;
  }
  using IntfStatusIterator = Koi::HashMap< KoiIntfStatus, Wirex::IntfId,
      Koi::Owned< EthIntfStatus > >::Iterator;
  IntfStatusIterator intfStatusIterator();
  /// The one of that key, made when there is none.
  Koi::Ptr< EthIntfStatus > intfStatusIs( Wirex::IntfId const & k, Koi::U32 genId );
  Koi::Ptr< EthIntfStatus > intfStatusDel( Wirex::IntfId const & k );
  Koi::Ptr< EthIntfStatus > intfStatusDel( IntfStatusIterator const & i );
  void intfStatusDelAll();
  void intfStatusNotify( Wirex::IntfId const & k );

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst
      : public Koi::NotifieeOf< EthIntfStatusDir, IntfStatusDirBase::NotifieeConst > {
   public:
    virtual void onIntfStatus() {}
    virtual void onIntfStatus( Wirex::IntfId const & ) {}
    virtual void onIntfStatusKoiImmediate( Wirex::IntfId const & k ) {
      koiPass( koiOnIntfStatus ); onIntfStatus( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Wirex::IntfId const & > koiOnIntfStatus{
      koiFirst + 0, &NotifieeConst::onIntfStatus, &NotifieeConst::onIntfStatusKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, EthIntfStatusDir >;

  static constexpr char koiName[] = "Interface::EthIntfStatusDir";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &EthIntfStatusDir::name )
    };
  }
  template< class Self = EthIntfStatusDir >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "intfStatus", &Self::intfStatus_, &Self::intfStatusIs, &Self::intfStatusDel )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 1;
  static Koi::KoiType const _koiType;

 private:
  Koi::HashMap< KoiIntfStatus, Wirex::IntfId, Koi::Owned< EthIntfStatus > > intfStatus_;
};

/// A new EthIntfStatusDir without a parent.
KOI_PUBLIC Koi::Ptr< EthIntfStatusDir > ethIntfStatusDirFactory( Koi::Name const & name );

}  // namespace Interface

// Reflection wrappers: each holds one copy of a value.
namespace _koi_Interface_IntfOperStatus {
  using GenericIf_ = Koi::GenericValue< Interface::IntfOperStatus >;
}
namespace _koi_Interface_LinkStatus {
  using GenericIf_ = Koi::GenericValue< Interface::LinkStatus >;
}
