// SubIntf.h: written by koigen from SubIntf.koi. Change that file, not this one.
#pragma once

#include <koi/Value.h>
#include <koi/Entity.h>
#include <Interface/EthIntf.h>
#include <Interface/IntfCounter.h>
#include <wirex/IntfId.h>
#include <Lumo/VlanId.h>
#include <Lumo/VlanTpid.h>

namespace Interface {

/// Which tags the frames of a sub-interface carry.
enum SubIntfEncapType : Koi::U32 {
  encapTypeNone,          ///< none is configured: no frame is its own
  encapTypeDot1q,         ///< one
  encapTypeDot1qInDot1q   ///< an outer and an inner one
};
KOI_ENUM( SubIntfEncapType );

/// What a sub-interface should be.
class KOI_PUBLIC SubIntfConfig : public Koi::EntityOf< SubIntfConfig, EthIntfConfig > {
 public:
  explicit SubIntfConfig( Wirex::IntfId const & intfId );

  /// which tags
  SubIntfEncapType encapType() const { return encapType_; }
  void encapTypeIs( SubIntfEncapType v ) { koiIs( encapType_, v, NotifieeConst::koiOnEncapType ); }

  /// their VLAN numbers
  Bridging::Dot1qEncap dot1qEncap() const { return dot1qEncap_; }
  void dot1qEncapIs( Bridging::Dot1qEncap const & v ) {
    koiIs( dot1qEncap_, v, NotifieeConst::koiOnDot1qEncap );
  }

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< SubIntfConfig, EthIntfConfig::NotifieeConst > {
   public:
    virtual void onEncapType() {}
    virtual void onEncapTypeKoiImmediate() { koiPass( koiOnEncapType ); onEncapType(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnEncapType{
      koiFirst + 0, &NotifieeConst::onEncapType, &NotifieeConst::onEncapTypeKoiImmediate };

    virtual void onDot1qEncap() {}
    virtual void onDot1qEncapKoiImmediate() { koiPass( koiOnDot1qEncap ); onDot1qEncap(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnDot1qEncap{
      koiFirst + 1, &NotifieeConst::onDot1qEncap, &NotifieeConst::onDot1qEncapKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, SubIntfConfig >;

  static constexpr char koiName[] = "Interface::SubIntfConfig";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_intfId", &SubIntfConfig::intfId )
    };
  }
  template< class Self = SubIntfConfig >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "encapType", &Self::encapType_, &Self::encapTypeIs ),
      Koi::attribute( "dot1qEncap", &Self::dot1qEncap_, &Self::dot1qEncapIs )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 2;
  static Koi::KoiType const _koiType;

 private:
  SubIntfEncapType encapType_{};
  Bridging::Dot1qEncap dot1qEncap_{};
};

/// A new SubIntfConfig without a parent.
KOI_PUBLIC Koi::Ptr< SubIntfConfig > subIntfConfigFactory( Wirex::IntfId const & intfId );

/// What all sub-interfaces should be.
class KOI_PUBLIC SubIntfConfigDir : public Koi::EntityOf< SubIntfConfigDir > {
 public:
  explicit SubIntfConfigDir( Koi::Name const & name );

  class KoiIntfConfig;
  /// by interface
  Koi::Ptr< SubIntfConfig > intfConfig( Wirex::IntfId const & k ) const;
  Koi::HashMap< KoiIntfConfig, Wirex::IntfId,
      Koi::Owned< SubIntfConfig > > const & intfConfig() const {
    return intfConfig_;
  }
  using IntfConfigIterator = Koi::HashMap< KoiIntfConfig, Wirex::IntfId,
      Koi::Owned< SubIntfConfig > >::Iterator;
  IntfConfigIterator intfConfigIterator();
  /// The one of that key, made when there is none.
  Koi::Ptr< SubIntfConfig > intfConfigIs( Wirex::IntfId const & k );
  Koi::Ptr< SubIntfConfig > intfConfigDel( Wirex::IntfId const & k );
  Koi::Ptr< SubIntfConfig > intfConfigDel( IntfConfigIterator const & i );
  void intfConfigDelAll();
  void intfConfigNotify( Wirex::IntfId const & k );

  /// That sub-interface's frames carry one tag of that VLAN from now on, or, for VLAN 0, none is
  /// configured any more. False, and nothing happens, when there is no configuration of that
  /// interface. Raises RangeException "VlanIdOrNone::value > 4094 not allowed".
  bool setVlanEncap( Wirex::IntfId const & intfId, Koi::U16 vlanId );

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< SubIntfConfigDir > {
   public:
    virtual void onIntfConfig() {}
    virtual void onIntfConfig( Wirex::IntfId const & ) {}
    virtual void onIntfConfigKoiImmediate( Wirex::IntfId const & k ) {
      koiPass( koiOnIntfConfig ); onIntfConfig( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Wirex::IntfId const & > koiOnIntfConfig{
      koiFirst + 0, &NotifieeConst::onIntfConfig, &NotifieeConst::onIntfConfigKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, SubIntfConfigDir >;

  static constexpr char koiName[] = "Interface::SubIntfConfigDir";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &SubIntfConfigDir::name )
    };
  }
  template< class Self = SubIntfConfigDir >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "intfConfig", &Self::intfConfig_, &Self::intfConfigIs, &Self::intfConfigDel )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 1;
  static Koi::KoiType const _koiType;

 private:
  Koi::HashMap< KoiIntfConfig, Wirex::IntfId, Koi::Owned< SubIntfConfig > > intfConfig_;
};

/// A new SubIntfConfigDir without a parent.
KOI_PUBLIC Koi::Ptr< SubIntfConfigDir > subIntfConfigDirFactory( Koi::Name const & name );

/// What a sub-interface is.
class KOI_PUBLIC SubIntfStatus : public Koi::EntityOf< SubIntfStatus, EthIntfStatus > {
 public:
  SubIntfStatus( Wirex::IntfId const & intfId, Koi::U32 genId );

  /// the VLAN that its packets are forwarded in, 0 for none
  Bridging::VlanIdOrNone forwardingVlanId() const { return forwardingVlanId_; }
  void forwardingVlanIdIs( Bridging::VlanIdOrNone const & v ) {
    koiIs( forwardingVlanId_, v, NotifieeConst::koiOnForwardingVlanId );
  }

  /// the hardware is to know it
  bool programInHw() const { return programInHw_; }
  void programInHwIs( bool v ) { koiIs( programInHw_, v, NotifieeConst::koiOnProgramInHw ); }

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< SubIntfStatus, EthIntfStatus::NotifieeConst > {
   public:
    virtual void onForwardingVlanId() {}
    virtual void onForwardingVlanIdKoiImmediate() {
      koiPass( koiOnForwardingVlanId ); onForwardingVlanId();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnForwardingVlanId{
      koiFirst + 0, &NotifieeConst::onForwardingVlanId,
          &NotifieeConst::onForwardingVlanIdKoiImmediate };

    virtual void onProgramInHw() {}
    virtual void onProgramInHwKoiImmediate() { koiPass( koiOnProgramInHw ); onProgramInHw(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnProgramInHw{
      koiFirst + 1, &NotifieeConst::onProgramInHw, &NotifieeConst::onProgramInHwKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, SubIntfStatus >;

  static constexpr char koiName[] = "Interface::SubIntfStatus";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_intfId", &SubIntfStatus::intfId ),
      Koi::parameter( "_genId", &SubIntfStatus::genId )
    };
  }
  template< class Self = SubIntfStatus >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "forwardingVlanId", &Self::forwardingVlanId_, &Self::forwardingVlanIdIs ),
      Koi::attribute( "programInHw", &Self::programInHw_, &Self::programInHwIs )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 2;
  static Koi::KoiType const _koiType;

 private:
  Bridging::VlanIdOrNone forwardingVlanId_{};
  bool programInHw_{};
};

/// A new SubIntfStatus without a parent.
KOI_PUBLIC Koi::Ptr< SubIntfStatus > subIntfStatusFactory( Wirex::IntfId const & intfId,
                                                           Koi::U32 genId );

/// What all sub-interfaces are.
class KOI_PUBLIC SubIntfStatusDir : public Koi::EntityOf< SubIntfStatusDir, IntfStatusDirBase > {
 public:
  explicit SubIntfStatusDir( Koi::Name const & name );

  class KoiIntfStatus;
  /// by interface
  Koi::Ptr< SubIntfStatus > intfStatus( Wirex::IntfId const & k ) const;
  Koi::HashMap< KoiIntfStatus, Wirex::IntfId,
      Koi::Owned< SubIntfStatus > > const & intfStatus() const {
    return intfStatus_;
  }
  using IntfStatusIterator = Koi::HashMap< KoiIntfStatus, Wirex::IntfId,
      Koi::Owned< SubIntfStatus > >::Iterator;
  IntfStatusIterator intfStatusIterator();
  /// The one of that key, made when there is none.
  Koi::Ptr< SubIntfStatus > intfStatusIs( Wirex::IntfId const & k, Koi::U32 genId );
  Koi::Ptr< SubIntfStatus > intfStatusDel( Wirex::IntfId const & k );
  Koi::Ptr< SubIntfStatus > intfStatusDel( IntfStatusIterator const & i );
  void intfStatusDelAll();
  void intfStatusNotify( Wirex::IntfId const & k );

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst
      : public Koi::NotifieeOf< SubIntfStatusDir, IntfStatusDirBase::NotifieeConst > {
   public:
    virtual void onIntfStatus() {}
    virtual void onIntfStatus( Wirex::IntfId const & ) {}
    virtual void onIntfStatusKoiImmediate( Wirex::IntfId const & k ) {
      koiPass( koiOnIntfStatus ); onIntfStatus( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Wirex::IntfId const & > koiOnIntfStatus{
      koiFirst + 0, &NotifieeConst::onIntfStatus, &NotifieeConst::onIntfStatusKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, SubIntfStatusDir >;

  static constexpr char koiName[] = "Interface::SubIntfStatusDir";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &SubIntfStatusDir::name )
    };
  }
  template< class Self = SubIntfStatusDir >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "intfStatus", &Self::intfStatus_, &Self::intfStatusIs, &Self::intfStatusDel )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 1;
  static Koi::KoiType const _koiType;

 private:
  Koi::HashMap< KoiIntfStatus, Wirex::IntfId, Koi::Owned< SubIntfStatus > > intfStatus_;
};

/// A new SubIntfStatusDir without a parent.
KOI_PUBLIC Koi::Ptr< SubIntfStatusDir > subIntfStatusDirFactory( Koi::Name const & name );

/// What is known of a sub-interface on this supervisor alone.
class KOI_PUBLIC SubIntfStatusLocal
    : public Koi::EntityOf< SubIntfStatusLocal, EthIntfStatusLocal > {
 public:
  explicit SubIntfStatusLocal( Wirex::IntfId const & intfId );

  /// There is nothing to watch but what it extends.
  class NotifieeConst
      : public Koi::NotifieeOf< SubIntfStatusLocal, EthIntfStatusLocal::NotifieeConst > {};
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, SubIntfStatusLocal >;

  static constexpr char koiName[] = "Interface::SubIntfStatusLocal";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_intfId", &SubIntfStatusLocal::intfId )
    };
  }
  template< class Self = SubIntfStatusLocal >
  static constexpr auto koiAttributes() {
    return std::tuple{
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 0;
  static Koi::KoiType const _koiType;

 private:
};

/// A new SubIntfStatusLocal without a parent.
KOI_PUBLIC Koi::Ptr< SubIntfStatusLocal > subIntfStatusLocalFactory( Wirex::IntfId const & intfId );

/// What is known of all of them on this supervisor alone.
class KOI_PUBLIC SubIntfStatusLocalDir
    : public Koi::EntityOf< SubIntfStatusLocalDir, IntfStatusLocalDirBase > {
 public:
  explicit SubIntfStatusLocalDir( Koi::Name const & name );

  class KoiIntfStatusLocal;
  /// by interface
  Koi::Ptr< SubIntfStatusLocal > intfStatusLocal( Wirex::IntfId const & k ) const;
  Koi::HashMap< KoiIntfStatusLocal, Wirex::IntfId,
      Koi::Owned< SubIntfStatusLocal > > const & intfStatusLocal() const {
    return intfStatusLocal_;
  }
  using IntfStatusLocalIterator = Koi::HashMap< KoiIntfStatusLocal, Wirex::IntfId,
      Koi::Owned< SubIntfStatusLocal > >::Iterator;
  IntfStatusLocalIterator intfStatusLocalIterator();
  /// The one of that key, made when there is none.
  Koi::Ptr< SubIntfStatusLocal > intfStatusLocalIs( Wirex::IntfId const & k );
  Koi::Ptr< SubIntfStatusLocal > intfStatusLocalDel( Wirex::IntfId const & k );
  Koi::Ptr< SubIntfStatusLocal > intfStatusLocalDel( IntfStatusLocalIterator const & i );
  void intfStatusLocalDelAll();
  void intfStatusLocalNotify( Wirex::IntfId const & k );

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst
      : public Koi::NotifieeOf< SubIntfStatusLocalDir, IntfStatusLocalDirBase::NotifieeConst > {
   public:
    virtual void onIntfStatusLocal() {}
    virtual void onIntfStatusLocal( Wirex::IntfId const & ) {}
    virtual void onIntfStatusLocalKoiImmediate( Wirex::IntfId const & k ) {
      koiPass( koiOnIntfStatusLocal ); onIntfStatusLocal( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Wirex::IntfId const & > koiOnIntfStatusLocal{
      koiFirst + 0, &NotifieeConst::onIntfStatusLocal,
          &NotifieeConst::onIntfStatusLocalKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, SubIntfStatusLocalDir >;

  static constexpr char koiName[] = "Interface::SubIntfStatusLocalDir";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &SubIntfStatusLocalDir::name )
    };
  }
  template< class Self = SubIntfStatusLocalDir >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "intfStatusLocal", &Self::intfStatusLocal_, &Self::intfStatusLocalIs,
                      &Self::intfStatusLocalDel )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 1;
  static Koi::KoiType const _koiType;

 private:
  Koi::HashMap< KoiIntfStatusLocal, Wirex::IntfId,
      Koi::Owned< SubIntfStatusLocal > > intfStatusLocal_;
};

/// A new SubIntfStatusLocalDir without a parent.
KOI_PUBLIC Koi::Ptr< SubIntfStatusLocalDir > subIntfStatusLocalDirFactory( Koi::Name const & name );

}  // namespace Interface

namespace Interface::Hardware {

/// What became of a sub-interface in the hardware.
class KOI_PUBLIC SubIntfStatus : public Koi::EntityOf< SubIntfStatus > {
 public:
  explicit SubIntfStatus( Wirex::IntfId const & intfId );

  /// the sub-interface
  Wirex::IntfId intfId() const { return _intfId; }

  /// the hardware accepted it
  bool hardwareSuccess() const { return hardwareSuccess_; }
  void hardwareSuccessIs( bool v ) {
    koiIs( hardwareSuccess_, v, NotifieeConst::koiOnHardwareSuccess );
  }

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< SubIntfStatus > {
   public:
    virtual void onHardwareSuccess() {}
    virtual void onHardwareSuccessKoiImmediate() {
      koiPass( koiOnHardwareSuccess ); onHardwareSuccess();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnHardwareSuccess{
      koiFirst + 1, &NotifieeConst::onHardwareSuccess,
          &NotifieeConst::onHardwareSuccessKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, SubIntfStatus >;

  static constexpr char koiName[] = "Interface::Hardware::SubIntfStatus";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_intfId", &SubIntfStatus::intfId )
    };
  }
  template< class Self = SubIntfStatus >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "intfId", &Self::_intfId ),
      Koi::attribute( "hardwareSuccess", &Self::hardwareSuccess_, &Self::hardwareSuccessIs )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 2;
  static Koi::KoiType const _koiType;

 private:
  Wirex::IntfId const _intfId;
  bool hardwareSuccess_{};
};

/// A new SubIntfStatus without a parent.
KOI_PUBLIC Koi::Ptr< SubIntfStatus > subIntfStatusFactory( Wirex::IntfId const & intfId );

/// What became of all of them.
class KOI_PUBLIC SubIntfStatusDir : public Koi::EntityOf< SubIntfStatusDir > {
 public:
  explicit SubIntfStatusDir( Koi::Name const & name );

  class KoiHardwareStatus;
  /// by interface
  Koi::Ptr< SubIntfStatus > hardwareStatus( Wirex::IntfId const & k ) const;
  Koi::HashMap< KoiHardwareStatus, Wirex::IntfId,
      Koi::Owned< SubIntfStatus > > const & hardwareStatus() const {
    return hardwareStatus_;
  }
  using HardwareStatusIterator = Koi::HashMap< KoiHardwareStatus, Wirex::IntfId,
      Koi::Owned< SubIntfStatus > >::Iterator;
  HardwareStatusIterator hardwareStatusIterator();
  /// The one of that key, made when there is none.
  Koi::Ptr< SubIntfStatus > hardwareStatusIs( Wirex::IntfId const & k );
  Koi::Ptr< SubIntfStatus > hardwareStatusDel( Wirex::IntfId const & k );
  Koi::Ptr< SubIntfStatus > hardwareStatusDel( HardwareStatusIterator const & i );
  void hardwareStatusDelAll();
  void hardwareStatusNotify( Wirex::IntfId const & k );

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< SubIntfStatusDir > {
   public:
    virtual void onHardwareStatus() {}
    virtual void onHardwareStatus( Wirex::IntfId const & ) {}
    virtual void onHardwareStatusKoiImmediate( Wirex::IntfId const & k ) {
      koiPass( koiOnHardwareStatus ); onHardwareStatus( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Wirex::IntfId const & > koiOnHardwareStatus{
      koiFirst + 0, &NotifieeConst::onHardwareStatus,
          &NotifieeConst::onHardwareStatusKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, SubIntfStatusDir >;

  static constexpr char koiName[] = "Interface::Hardware::SubIntfStatusDir";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &SubIntfStatusDir::name )
    };
  }
  template< class Self = SubIntfStatusDir >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "hardwareStatus", &Self::hardwareStatus_, &Self::hardwareStatusIs,
                      &Self::hardwareStatusDel )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 1;
  static Koi::KoiType const _koiType;

 private:
  Koi::HashMap< KoiHardwareStatus, Wirex::IntfId, Koi::Owned< SubIntfStatus > > hardwareStatus_;
};

/// A new SubIntfStatusDir without a parent.
KOI_PUBLIC Koi::Ptr< SubIntfStatusDir > subIntfStatusDirFactory( Koi::Name const & name );

/// Which sub-interfaces the hardware can do.
class KOI_PUBLIC Capability : public Koi::EntityOf< Capability > {
 public:
  explicit Capability( Koi::Name const & name );

  /// routed ones
  bool l3SubintfSupported() const { return l3SubintfSupported_; }
  void l3SubintfSupportedIs( bool v ) {
    koiIs( l3SubintfSupported_, v, NotifieeConst::koiOnL3SubintfSupported );
  }

  /// bridged ones
  bool l2SubintfSupported() const { return l2SubintfSupported_; }
  void l2SubintfSupportedIs( bool v ) {
    koiIs( l2SubintfSupported_, v, NotifieeConst::koiOnL2SubintfSupported );
  }

  /// those of two tags
  bool subintfInnerTagSupported() const { return subintfInnerTagSupported_; }
  void subintfInnerTagSupportedIs( bool v ) {
    koiIs( subintfInnerTagSupported_, v, NotifieeConst::koiOnSubintfInnerTagSupported );
  }

  /// how many buckets the table of their counters has
  Koi::U32 subintfCountersQuillBucketSize() const { return subintfCountersQuillBucketSize_; }
  void subintfCountersQuillBucketSizeIs( Koi::U32 v ) {
    koiIs( subintfCountersQuillBucketSize_, v, NotifieeConst::koiOnSubintfCountersQuillBucketSize );
  }

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< Capability > {
   public:
    virtual void onL3SubintfSupported() {}
    virtual void onL3SubintfSupportedKoiImmediate() {
      koiPass( koiOnL3SubintfSupported ); onL3SubintfSupported();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnL3SubintfSupported{
      koiFirst + 0, &NotifieeConst::onL3SubintfSupported,
          &NotifieeConst::onL3SubintfSupportedKoiImmediate };

    virtual void onL2SubintfSupported() {}
    virtual void onL2SubintfSupportedKoiImmediate() {
      koiPass( koiOnL2SubintfSupported ); onL2SubintfSupported();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnL2SubintfSupported{
      koiFirst + 1, &NotifieeConst::onL2SubintfSupported,
          &NotifieeConst::onL2SubintfSupportedKoiImmediate };

    virtual void onSubintfInnerTagSupported() {}
    virtual void onSubintfInnerTagSupportedKoiImmediate() {
      koiPass( koiOnSubintfInnerTagSupported ); onSubintfInnerTagSupported();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnSubintfInnerTagSupported{
      koiFirst + 2, &NotifieeConst::onSubintfInnerTagSupported,
          &NotifieeConst::onSubintfInnerTagSupportedKoiImmediate };

    virtual void onSubintfCountersQuillBucketSize() {}
    virtual void onSubintfCountersQuillBucketSizeKoiImmediate() {
      koiPass( koiOnSubintfCountersQuillBucketSize ); onSubintfCountersQuillBucketSize();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnSubintfCountersQuillBucketSize{
      koiFirst + 3, &NotifieeConst::onSubintfCountersQuillBucketSize,
          &NotifieeConst::onSubintfCountersQuillBucketSizeKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, Capability >;

  static constexpr char koiName[] = "Interface::Hardware::Capability";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &Capability::name )
    };
  }
  template< class Self = Capability >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "l3SubintfSupported", &Self::l3SubintfSupported_,
                      &Self::l3SubintfSupportedIs ),
      Koi::attribute( "l2SubintfSupported", &Self::l2SubintfSupported_,
                      &Self::l2SubintfSupportedIs ),
      Koi::attribute( "subintfInnerTagSupported", &Self::subintfInnerTagSupported_,
                      &Self::subintfInnerTagSupportedIs ),
      Koi::attribute( "subintfCountersQuillBucketSize", &Self::subintfCountersQuillBucketSize_,
                      &Self::subintfCountersQuillBucketSizeIs )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 4;
  static Koi::KoiType const _koiType;

 private:
  bool l3SubintfSupported_{};
  bool l2SubintfSupported_{};
  bool subintfInnerTagSupported_{};
  Koi::U32 subintfCountersQuillBucketSize_{};
};

/// A new Capability without a parent.
KOI_PUBLIC Koi::Ptr< Capability > capabilityFactory( Koi::Name const & name );

}  // namespace Interface::Hardware

// Reflection wrappers: each holds one copy of a value.
namespace _koi_Interface_SubIntfEncapType {
  using GenericIf_ = Koi::GenericValue< Interface::SubIntfEncapType >;
}
