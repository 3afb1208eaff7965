// BrTopology.h: written by koigen from BrTopology.koi. Change that file, not this one.
#pragma once

#include <koi/Value.h>
#include <koi/Entity.h>
#include <Lumo/VlanId.h>
#include <wirex/IntfId.h>

namespace Bridging::Topology {

/// What a port does with frames in a topology.
enum PortState : Koi::U32 {
  portStateUnknown,  ///< nobody has said yet
  discarding,        ///< drops them all, and learns nothing
  learning,          ///< learns from them, and drops them
  forwarding         ///< learns from them, and passes them on
};
KOI_ENUM( PortState );

/// How lively a port is.
class KOI_PUBLIC TopoPortChangeInfo : public Koi::Structure< TopoPortChangeInfo > {
 public:
  TopoPortChangeInfo() = default;
  TopoPortChangeInfo( Koi::Seconds lastChangeTime, Koi::U32 changeCount )
      : _lastChangeTime( lastChangeTime ), _changeCount( changeCount ) {}
  TopoPortChangeInfo( Koi::String8::IteratorConst & it, Koi::String8::IteratorConst const & end ) {
    koiParse( it, end );
  }
  TopoPortChangeInfo( Koi::NboAttrLog::In * in, Koi::StreamBogon ) { koiRead( in ); }

  /// when its state last changed, in seconds
  Koi::Seconds lastChangeTime() const { return _lastChangeTime; }

  /// how often it has
  Koi::U32 changeCount() const { return _changeCount; }

  static constexpr char koiName[] = "Bridging::Topology::TopoPortChangeInfo";
  static constexpr auto koiFields() {
    return std::tuple{
      Koi::field( "lastChangeTime", &TopoPortChangeInfo::_lastChangeTime ),
      Koi::field( "changeCount", &TopoPortChangeInfo::_changeCount )
    };
  }
  static Koi::KoiType const _koiType;

 private:
  Koi::Seconds _lastChangeTime{};
  Koi::U32 _changeCount{};
};

/// What is asked of a port in a topology.
class KOI_PUBLIC TopoPortConfig : public Koi::EntityOf< TopoPortConfig > {
 public:
  TopoPortConfig( Wirex::IntfId const & intfId, Koi::U32 creationNonce, PortState state );

  /// the port
  Wirex::IntfId intfId() const { return _intfId; }

  /// tells this one from an earlier one of the same port
  Koi::U32 creationNonce() const { return _creationNonce; }

  /// what it is to do
  PortState state() const { return state_; }
  void stateIs( PortState v ) { koiIs( state_, v, NotifieeConst::koiOnState ); }

  /// counts the requests to forget what was learned on it
  Koi::U32 fdbFlush() const { return fdbFlush_; }
  void fdbFlushIs( Koi::U32 v ) { koiIs( fdbFlush_, v, NotifieeConst::koiOnFdbFlush ); }

  /// a shorter aging time for what was learned on it; 0 for none
  Koi::Seconds lowerAgingTime() const { return lowerAgingTime_; }
  void lowerAgingTimeIs( Koi::Seconds v ) {
    koiIs( lowerAgingTime_, v, NotifieeConst::koiOnLowerAgingTime );
  }

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< TopoPortConfig > {
   public:
    virtual void onState() {}
    virtual void onStateKoiImmediate() { koiPass( koiOnState ); onState(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnState{
      koiFirst + 2, &NotifieeConst::onState, &NotifieeConst::onStateKoiImmediate };

    virtual void onFdbFlush() {}
    virtual void onFdbFlushKoiImmediate() { koiPass( koiOnFdbFlush ); onFdbFlush(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnFdbFlush{
      koiFirst + 3, &NotifieeConst::onFdbFlush, &NotifieeConst::onFdbFlushKoiImmediate };

    virtual void onLowerAgingTime() {}
    virtual void onLowerAgingTimeKoiImmediate() {
      koiPass( koiOnLowerAgingTime ); onLowerAgingTime();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnLowerAgingTime{
      koiFirst + 4, &NotifieeConst::onLowerAgingTime,
          &NotifieeConst::onLowerAgingTimeKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, TopoPortConfig >;

  static constexpr char koiName[] = "Bridging::Topology::TopoPortConfig";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_intfId", &TopoPortConfig::intfId ),
      Koi::parameter( "_creationNonce", &TopoPortConfig::creationNonce ),
      Koi::initial( "_state", &TopoPortConfig::state )
    };
  }
  template< class Self = TopoPortConfig >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "intfId", &Self::_intfId ),
      Koi::attribute( "creationNonce", &Self::_creationNonce ),
      Koi::attribute( "state", &Self::state_, &Self::stateIs ),
      Koi::attribute( "fdbFlush", &Self::fdbFlush_, &Self::fdbFlushIs ),
      Koi::attribute( "lowerAgingTime", &Self::lowerAgingTime_, &Self::lowerAgingTimeIs )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 5;
  static Koi::KoiType const _koiType;

 private:
  Wirex::IntfId const _intfId;
  Koi::U32 const _creationNonce;
  PortState state_{};
  Koi::U32 fdbFlush_{};
  Koi::Seconds lowerAgingTime_{};
};

/// A new TopoPortConfig without a parent.
KOI_PUBLIC Koi::Ptr< TopoPortConfig > topoPortConfigFactory( Wirex::IntfId const & intfId,
    Koi::U32 creationNonce, PortState state );

/// What is asked of one topology, an instance of spanning tree.
class KOI_PUBLIC TopoConfig : public Koi::EntityOf< TopoConfig > {
 public:
  TopoConfig( Koi::Name const & name, Koi::U32 creationNonce, PortState defaultPortState,
              bool standalone );

  /// tells this one from an earlier one of the same name
  Koi::U32 creationNonce() const { return _creationNonce; }

  /// what a port does of which nothing is asked
  PortState defaultPortState() const { return _defaultPortState; }

  /// it runs without spanning tree
  bool standalone() const { return _standalone; }

  class KoiTopoPortConfig;
  /// its ports
  Koi::Ptr< TopoPortConfig > topoPortConfig( Wirex::IntfId const & k ) const;
  Koi::HashMap< KoiTopoPortConfig, Wirex::IntfId,
      Koi::Owned< TopoPortConfig > > const & topoPortConfig() const {
    return topoPortConfig_;
  }
  using TopoPortConfigIterator = Koi::HashMap< KoiTopoPortConfig, Wirex::IntfId,
      Koi::Owned< TopoPortConfig > >::Iterator;
  TopoPortConfigIterator topoPortConfigIterator();
  /// The one of that key, made when there is none.
  Koi::Ptr< TopoPortConfig > topoPortConfigIs( Wirex::IntfId const & k, Koi::U32 creationNonce,
                                               PortState state );
  Koi::Ptr< TopoPortConfig > topoPortConfigDel( Wirex::IntfId const & k );
  Koi::Ptr< TopoPortConfig > topoPortConfigDel( TopoPortConfigIterator const & i );
  void topoPortConfigDelAll();
  void topoPortConfigNotify( Wirex::IntfId const & k );

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< TopoConfig > {
   public:
    virtual void onTopoPortConfig() {}
    virtual void onTopoPortConfig( Wirex::IntfId const & ) {}
    virtual void onTopoPortConfigKoiImmediate( Wirex::IntfId const & k ) {
      koiPass( koiOnTopoPortConfig ); onTopoPortConfig( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Wirex::IntfId const & > koiOnTopoPortConfig{
      koiFirst + 3, &NotifieeConst::onTopoPortConfig,
          &NotifieeConst::onTopoPortConfigKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, TopoConfig >;

  static constexpr char koiName[] = "Bridging::Topology::TopoConfig";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &TopoConfig::name ),
      Koi::parameter( "_creationNonce", &TopoConfig::creationNonce ),
      Koi::parameter( "_defaultPortState", &TopoConfig::defaultPortState ),
      Koi::parameter( "_standalone", &TopoConfig::standalone )
    };
  }
  template< class Self = TopoConfig >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "creationNonce", &Self::_creationNonce ),
      Koi::attribute( "defaultPortState", &Self::_defaultPortState ),
      Koi::attribute( "standalone", &Self::_standalone ),
      Koi::attribute( "topoPortConfig", &Self::topoPortConfig_, &Self::topoPortConfigIs,
                      &Self::topoPortConfigDel )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 4;
  static Koi::KoiType const _koiType;

 private:
  Koi::U32 const _creationNonce;
  PortState const _defaultPortState;
  bool const _standalone;
  Koi::HashMap< KoiTopoPortConfig, Wirex::IntfId, Koi::Owned< TopoPortConfig > > topoPortConfig_;
};

/// A new TopoConfig without a parent.
KOI_PUBLIC Koi::Ptr< TopoConfig > topoConfigFactory( Koi::Name const & name, Koi::U32 creationNonce,
                                                     PortState defaultPortState, bool standalone );

/// What spanning tree asks for. It writes this; the forwarding plane reads it.
class KOI_PUBLIC Config : public Koi::EntityOf< Config > {
 public:
  explicit Config( Koi::Name const & name );

  /// a shorter aging time; 0 for none
  Koi::Seconds agingTime() const { return agingTime_; }
  void agingTimeIs( Koi::Seconds v ) { koiIs( agingTime_, v, NotifieeConst::koiOnAgingTime ); }

  class KoiTopoConfig;
  /// the topologies
  Koi::Ptr< TopoConfig > topoConfig( Koi::Name const & k ) const;
  Koi::HashMap< KoiTopoConfig, Koi::Name, Koi::Owned< TopoConfig > > const & topoConfig() const {
    return topoConfig_;
  }
  using TopoConfigIterator = Koi::HashMap< KoiTopoConfig, Koi::Name,
      Koi::Owned< TopoConfig > >::Iterator;
  TopoConfigIterator topoConfigIterator();
  /// The one of that key, made when there is none.
  Koi::Ptr< TopoConfig > topoConfigIs( Koi::Name const & k, Koi::U32 creationNonce,
                                       PortState defaultPortState, bool standalone );
  Koi::Ptr< TopoConfig > topoConfigDel( Koi::Name const & k );
  Koi::Ptr< TopoConfig > topoConfigDel( TopoConfigIterator const & i );
  void topoConfigDelAll();
  void topoConfigNotify( Koi::Name const & k );

  class KoiVidToTopoMap;
  /// that of each VLAN; leaves with the topology
  Koi::Ptr< TopoConfig > vidToTopoMap( VlanId const & k ) const;
  Koi::HashMap< KoiVidToTopoMap, VlanId, Koi::WeakPtr< TopoConfig > > const & vidToTopoMap() const {
    return vidToTopoMap_;
  }
  using VidToTopoMapIterator = Koi::HashMap< KoiVidToTopoMap, VlanId,
      Koi::WeakPtr< TopoConfig > >::Iterator;
  VidToTopoMapIterator vidToTopoMapIterator();
  void vidToTopoMapIs( VlanId const & k, Koi::Ptr< TopoConfig > const & v );
  Koi::Ptr< TopoConfig > vidToTopoMapDel( VlanId const & k );
  Koi::Ptr< TopoConfig > vidToTopoMapDel( VidToTopoMapIterator const & i );
  void vidToTopoMapDelAll();
  void vidToTopoMapNotify( VlanId const & k );

  /// hand STP BPDUs to the processor
  bool trapStpBpdus() const { return trapStpBpdus_; }
  void trapStpBpdusIs( bool v ) { koiIs( trapStpBpdus_, v, NotifieeConst::koiOnTrapStpBpdus ); }

  /// hand the BPDUs of spanning tree per VLAN to it
  bool trapPvstBpdus() const { return trapPvstBpdus_; }
  void trapPvstBpdusIs( bool v ) { koiIs( trapPvstBpdus_, v, NotifieeConst::koiOnTrapPvstBpdus ); }

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< Config > {
   public:
    virtual void onAgingTime() {}
    virtual void onAgingTimeKoiImmediate() { koiPass( koiOnAgingTime ); onAgingTime(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnAgingTime{
      koiFirst + 0, &NotifieeConst::onAgingTime, &NotifieeConst::onAgingTimeKoiImmediate };

    virtual void onTopoConfig() {}
    virtual void onTopoConfig( Koi::Name const & ) {}
    virtual void onTopoConfigKoiImmediate( Koi::Name const & k ) {
      koiPass( koiOnTopoConfig ); onTopoConfig( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Koi::Name const & > koiOnTopoConfig{
      koiFirst + 1, &NotifieeConst::onTopoConfig, &NotifieeConst::onTopoConfigKoiImmediate };

    virtual void onVidToTopoMap() {}
    virtual void onVidToTopoMap( VlanId const & ) {}
    virtual void onVidToTopoMapKoiImmediate( VlanId const & k ) {
      koiPass( koiOnVidToTopoMap ); onVidToTopoMap( k );
    }
    static constexpr Koi::Callback< NotifieeConst, VlanId const & > koiOnVidToTopoMap{
      koiFirst + 2, &NotifieeConst::onVidToTopoMap, &NotifieeConst::onVidToTopoMapKoiImmediate };

    virtual void onTrapStpBpdus() {}
    virtual void onTrapStpBpdusKoiImmediate() { koiPass( koiOnTrapStpBpdus ); onTrapStpBpdus(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnTrapStpBpdus{
      koiFirst + 3, &NotifieeConst::onTrapStpBpdus, &NotifieeConst::onTrapStpBpdusKoiImmediate };

    virtual void onTrapPvstBpdus() {}
    virtual void onTrapPvstBpdusKoiImmediate() { koiPass( koiOnTrapPvstBpdus ); onTrapPvstBpdus(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnTrapPvstBpdus{
      koiFirst + 4, &NotifieeConst::onTrapPvstBpdus, &NotifieeConst::onTrapPvstBpdusKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, Config >;

  static constexpr char koiName[] = "Bridging::Topology::Config";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &Config::name )
    };
  }
  template< class Self = Config >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "agingTime", &Self::agingTime_, &Self::agingTimeIs ),
      Koi::attribute( "topoConfig", &Self::topoConfig_, &Self::topoConfigIs, &Self::topoConfigDel ),
      Koi::attribute( "vidToTopoMap", &Self::vidToTopoMap_, &Self::vidToTopoMapIs,
                      &Self::vidToTopoMapDel ),
      Koi::attribute( "trapStpBpdus", &Self::trapStpBpdus_, &Self::trapStpBpdusIs ),
      Koi::attribute( "trapPvstBpdus", &Self::trapPvstBpdus_, &Self::trapPvstBpdusIs )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 5;
  static Koi::KoiType const _koiType;

 private:
  Koi::Seconds agingTime_{};
  Koi::HashMap< KoiTopoConfig, Koi::Name, Koi::Owned< TopoConfig > > topoConfig_;
  Koi::HashMap< KoiVidToTopoMap, VlanId, Koi::WeakPtr< TopoConfig > > vidToTopoMap_;
  bool trapStpBpdus_{};
  bool trapPvstBpdus_{};
};

/// A new Config without a parent.
KOI_PUBLIC Koi::Ptr< Config > configFactory( Koi::Name const & name );

/// What a port does in a topology.
class KOI_PUBLIC TopoPortStatus : public Koi::EntityOf< TopoPortStatus > {
 public:
  TopoPortStatus( Wirex::IntfId const & intfId, Koi::U32 creationNonce );

  /// the port
  Wirex::IntfId intfId() const { return _intfId; }

  /// that of the request
  Koi::U32 creationNonce() const { return _creationNonce; }

  /// what it does
  PortState state() const { return state_; }
  void stateIs( PortState v ) { koiIs( state_, v, NotifieeConst::koiOnState ); }

  /// how lively it is
  TopoPortChangeInfo changeInfo() const { return changeInfo_; }
  void changeInfoIs( TopoPortChangeInfo const & v ) {
    koiIs( changeInfo_, v, NotifieeConst::koiOnChangeInfo );
  }

  /// the fdbFlush that was served last
  Koi::U32 fdbFlushReport() const { return fdbFlushReport_; }
  void fdbFlushReportIs( Koi::U32 v ) {
    koiIs( fdbFlushReport_, v, NotifieeConst::koiOnFdbFlushReport );
  }

  /// the lowerAgingTime that was applied last
  Koi::Seconds lowerAgingTimeReport() const { return lowerAgingTimeReport_; }
  void lowerAgingTimeReportIs( Koi::Seconds v ) {
    koiIs( lowerAgingTimeReport_, v, NotifieeConst::koiOnLowerAgingTimeReport );
  }

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< TopoPortStatus > {
   public:
    virtual void onState() {}
    virtual void onStateKoiImmediate() { koiPass( koiOnState ); onState(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnState{
      koiFirst + 2, &NotifieeConst::onState, &NotifieeConst::onStateKoiImmediate };

    virtual void onChangeInfo() {}
    virtual void onChangeInfoKoiImmediate() { koiPass( koiOnChangeInfo ); onChangeInfo(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnChangeInfo{
      koiFirst + 3, &NotifieeConst::onChangeInfo, &NotifieeConst::onChangeInfoKoiImmediate };

    virtual void onFdbFlushReport() {}
    virtual void onFdbFlushReportKoiImmediate() {
      koiPass( koiOnFdbFlushReport ); onFdbFlushReport();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnFdbFlushReport{
      koiFirst + 4, &NotifieeConst::onFdbFlushReport,
          &NotifieeConst::onFdbFlushReportKoiImmediate };

    virtual void onLowerAgingTimeReport() {}
    virtual void onLowerAgingTimeReportKoiImmediate() {
      koiPass( koiOnLowerAgingTimeReport ); onLowerAgingTimeReport();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnLowerAgingTimeReport{
      koiFirst + 5, &NotifieeConst::onLowerAgingTimeReport,
          &NotifieeConst::onLowerAgingTimeReportKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, TopoPortStatus >;

  static constexpr char koiName[] = "Bridging::Topology::TopoPortStatus";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_intfId", &TopoPortStatus::intfId ),
      Koi::parameter( "_creationNonce", &TopoPortStatus::creationNonce )
    };
  }
  template< class Self = TopoPortStatus >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "intfId", &Self::_intfId ),
      Koi::attribute( "creationNonce", &Self::_creationNonce ),
      Koi::attribute( "state", &Self::state_, &Self::stateIs ),
      Koi::attribute( "changeInfo", &Self::changeInfo_, &Self::changeInfoIs ),
      Koi::attribute( "fdbFlushReport", &Self::fdbFlushReport_, &Self::fdbFlushReportIs ),
      Koi::attribute( "lowerAgingTimeReport", &Self::lowerAgingTimeReport_,
                      &Self::lowerAgingTimeReportIs )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 6;
  static Koi::KoiType const _koiType;

 private:
  Wirex::IntfId const _intfId;
  Koi::U32 const _creationNonce;
  PortState state_{};
  TopoPortChangeInfo changeInfo_{};
  Koi::U32 fdbFlushReport_{};
  Koi::Seconds lowerAgingTimeReport_{};
};

/// A new TopoPortStatus without a parent.
KOI_PUBLIC Koi::Ptr< TopoPortStatus > topoPortStatusFactory( Wirex::IntfId const & intfId,
    Koi::U32 creationNonce );

/// What became of one topology.
class KOI_PUBLIC TopoStatus : public Koi::EntityOf< TopoStatus > {
 public:
  TopoStatus( Koi::Name const & name, Koi::U32 creationNonce );

  /// that of the request
  Koi::U32 creationNonce() const { return _creationNonce; }

  class KoiTopoPortStatus;
  /// its ports
  Koi::Ptr< TopoPortStatus > topoPortStatus( Wirex::IntfId const & k ) const;
  Koi::HashMap< KoiTopoPortStatus, Wirex::IntfId,
      Koi::Owned< TopoPortStatus > > const & topoPortStatus() const {
    return topoPortStatus_;
  }
  using TopoPortStatusIterator = Koi::HashMap< KoiTopoPortStatus, Wirex::IntfId,
      Koi::Owned< TopoPortStatus > >::Iterator;
  TopoPortStatusIterator topoPortStatusIterator();
  /// The one of that key, made when there is none.
  Koi::Ptr< TopoPortStatus > topoPortStatusIs( Wirex::IntfId const & k, Koi::U32 creationNonce );
  Koi::Ptr< TopoPortStatus > topoPortStatusDel( Wirex::IntfId const & k );
  Koi::Ptr< TopoPortStatus > topoPortStatusDel( TopoPortStatusIterator const & i );
  void topoPortStatusDelAll();
  void topoPortStatusNotify( Wirex::IntfId const & k );

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< TopoStatus > {
   public:
    virtual void onTopoPortStatus() {}
    virtual void onTopoPortStatus( Wirex::IntfId const & ) {}
    virtual void onTopoPortStatusKoiImmediate( Wirex::IntfId const & k ) {
      koiPass( koiOnTopoPortStatus ); onTopoPortStatus( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Wirex::IntfId const & > koiOnTopoPortStatus{
      koiFirst + 1, &NotifieeConst::onTopoPortStatus,
          &NotifieeConst::onTopoPortStatusKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, TopoStatus >;

  static constexpr char koiName[] = "Bridging::Topology::TopoStatus";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &TopoStatus::name ),
      Koi::parameter( "_creationNonce", &TopoStatus::creationNonce )
    };
  }
  template< class Self = TopoStatus >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "creationNonce", &Self::_creationNonce ),
      Koi::attribute( "topoPortStatus", &Self::topoPortStatus_, &Self::topoPortStatusIs,
                      &Self::topoPortStatusDel )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 2;
  static Koi::KoiType const _koiType;

 private:
  Koi::U32 const _creationNonce;
  Koi::HashMap< KoiTopoPortStatus, Wirex::IntfId, Koi::Owned< TopoPortStatus > > topoPortStatus_;
};

/// A new TopoStatus without a parent.
KOI_PUBLIC Koi::Ptr< TopoStatus > topoStatusFactory( Koi::Name const & name,
                                                     Koi::U32 creationNonce );

/// What the forwarding plane has applied. It writes this; spanning tree reads it.
class KOI_PUBLIC Status : public Koi::EntityOf< Status > {
 public:
  explicit Status( Koi::Name const & name );

  class KoiTopoStatus;
  /// the topologies
  Koi::Ptr< TopoStatus > topoStatus( Koi::Name const & k ) const;
  Koi::HashMap< KoiTopoStatus, Koi::Name, Koi::Owned< TopoStatus > > const & topoStatus() const {
    return topoStatus_;
  }
  using TopoStatusIterator = Koi::HashMap< KoiTopoStatus, Koi::Name,
      Koi::Owned< TopoStatus > >::Iterator;
  TopoStatusIterator topoStatusIterator();
  /// The one of that key, made when there is none.
  Koi::Ptr< TopoStatus > topoStatusIs( Koi::Name const & k, Koi::U32 creationNonce );
  Koi::Ptr< TopoStatus > topoStatusDel( Koi::Name const & k );
  Koi::Ptr< TopoStatus > topoStatusDel( TopoStatusIterator const & i );
  void topoStatusDelAll();
  void topoStatusNotify( Koi::Name const & k );

  /// how many instances of MSTP there may be
  Koi::U32 maximumMstpInstances() const { return maximumMstpInstances_; }
  void maximumMstpInstancesIs( Koi::U32 v ) {
    koiIs( maximumMstpInstances_, v, NotifieeConst::koiOnMaximumMstpInstances );
  }

  /// how many topologies the hardware has
  Koi::U32 maximumTopologiesSupported() const { return maximumTopologiesSupported_; }
  void maximumTopologiesSupportedIs( Koi::U32 v ) {
    koiIs( maximumTopologiesSupported_, v, NotifieeConst::koiOnMaximumTopologiesSupported );
  }

  /// the hardware does what was asked
  bool hardwareConfigured() const { return hardwareConfigured_; }
  void hardwareConfiguredIs( bool v ) {
    koiIs( hardwareConfigured_, v, NotifieeConst::koiOnHardwareConfigured );
  }

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< Status > {
   public:
    virtual void onTopoStatus() {}
    virtual void onTopoStatus( Koi::Name const & ) {}
    virtual void onTopoStatusKoiImmediate( Koi::Name const & k ) {
      koiPass( koiOnTopoStatus ); onTopoStatus( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Koi::Name const & > koiOnTopoStatus{
      koiFirst + 0, &NotifieeConst::onTopoStatus, &NotifieeConst::onTopoStatusKoiImmediate };

    virtual void onMaximumMstpInstances() {}
    virtual void onMaximumMstpInstancesKoiImmediate() {
      koiPass( koiOnMaximumMstpInstances ); onMaximumMstpInstances();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnMaximumMstpInstances{
      koiFirst + 1, &NotifieeConst::onMaximumMstpInstances,
          &NotifieeConst::onMaximumMstpInstancesKoiImmediate };

    virtual void onMaximumTopologiesSupported() {}
    virtual void onMaximumTopologiesSupportedKoiImmediate() {
      koiPass( koiOnMaximumTopologiesSupported ); onMaximumTopologiesSupported();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnMaximumTopologiesSupported{
      koiFirst + 2, &NotifieeConst::onMaximumTopologiesSupported,
          &NotifieeConst::onMaximumTopologiesSupportedKoiImmediate };

    virtual void onHardwareConfigured() {}
    virtual void onHardwareConfiguredKoiImmediate() {
      koiPass( koiOnHardwareConfigured ); onHardwareConfigured();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnHardwareConfigured{
      koiFirst + 3, &NotifieeConst::onHardwareConfigured,
          &NotifieeConst::onHardwareConfiguredKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, Status >;

  static constexpr char koiName[] = "Bridging::Topology::Status";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &Status::name )
    };
  }
  template< class Self = Status >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "topoStatus", &Self::topoStatus_, &Self::topoStatusIs, &Self::topoStatusDel ),
      Koi::attribute( "maximumMstpInstances", &Self::maximumMstpInstances_,
                      &Self::maximumMstpInstancesIs ),
      Koi::attribute( "maximumTopologiesSupported", &Self::maximumTopologiesSupported_,
                      &Self::maximumTopologiesSupportedIs ),
      Koi::attribute( "hardwareConfigured", &Self::hardwareConfigured_,
                      &Self::hardwareConfiguredIs )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 4;
  static Koi::KoiType const _koiType;

 private:
  Koi::HashMap< KoiTopoStatus, Koi::Name, Koi::Owned< TopoStatus > > topoStatus_;
  Koi::U32 maximumMstpInstances_ = 65;
  Koi::U32 maximumTopologiesSupported_{};
  bool hardwareConfigured_{};
};

/// A new Status without a parent.
KOI_PUBLIC Koi::Ptr< Status > statusFactory( Koi::Name const & name );

}  // namespace Bridging::Topology

namespace Bridging::Topology::Inst {

/// What became of one instance.
class KOI_PUBLIC TopoStatus : public Koi::EntityOf< TopoStatus > {
 public:
  TopoStatus( Koi::Name const & name, Koi::U32 creationNonce );

  /// that of the request
  Koi::U32 creationNonce() const { return _creationNonce; }

  class KoiTopoPortStatus;
  /// its ports
  Koi::Ptr< TopoPortStatus > topoPortStatus( Wirex::IntfId const & k ) const;
  Koi::HashMap< KoiTopoPortStatus, Wirex::IntfId,
      Koi::Owned< TopoPortStatus > > const & topoPortStatus() const {
    return topoPortStatus_;
  }
  using TopoPortStatusIterator = Koi::HashMap< KoiTopoPortStatus, Wirex::IntfId,
      Koi::Owned< TopoPortStatus > >::Iterator;
  TopoPortStatusIterator topoPortStatusIterator();
  /// The one of that key, made when there is none.
  Koi::Ptr< TopoPortStatus > topoPortStatusIs( Wirex::IntfId const & k, Koi::U32 creationNonce );
  Koi::Ptr< TopoPortStatus > topoPortStatusDel( Wirex::IntfId const & k );
  Koi::Ptr< TopoPortStatus > topoPortStatusDel( TopoPortStatusIterator const & i );
  void topoPortStatusDelAll();
  void topoPortStatusNotify( Wirex::IntfId const & k );

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< TopoStatus > {
   public:
    virtual void onTopoPortStatus() {}
    virtual void onTopoPortStatus( Wirex::IntfId const & ) {}
    virtual void onTopoPortStatusKoiImmediate( Wirex::IntfId const & k ) {
      koiPass( koiOnTopoPortStatus ); onTopoPortStatus( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Wirex::IntfId const & > koiOnTopoPortStatus{
      koiFirst + 1, &NotifieeConst::onTopoPortStatus,
          &NotifieeConst::onTopoPortStatusKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, TopoStatus >;

  static constexpr char koiName[] = "Bridging::Topology::Inst::TopoStatus";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &TopoStatus::name ),
      Koi::parameter( "_creationNonce", &TopoStatus::creationNonce )
    };
  }
  template< class Self = TopoStatus >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "creationNonce", &Self::_creationNonce ),
      Koi::attribute( "topoPortStatus", &Self::topoPortStatus_, &Self::topoPortStatusIs,
                      &Self::topoPortStatusDel )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 2;
  static Koi::KoiType const _koiType;

 private:
  Koi::U32 const _creationNonce;
  Koi::HashMap< KoiTopoPortStatus, Wirex::IntfId, Koi::Owned< TopoPortStatus > > topoPortStatus_;
};

/// A new TopoStatus without a parent.
KOI_PUBLIC Koi::Ptr< TopoStatus > topoStatusFactory( Koi::Name const & name,
                                                     Koi::U32 creationNonce );

/// What the forwarding plane has applied, by instance.
class KOI_PUBLIC Status : public Koi::EntityOf< Status > {
 public:
  explicit Status( Koi::Name const & name );

  class KoiTopoStatus;
  /// the instances
  Koi::Ptr< TopoStatus > topoStatus( Koi::Name const & k ) const;
  Koi::HashMap< KoiTopoStatus, Koi::Name, Koi::Owned< TopoStatus > > const & topoStatus() const {
    return topoStatus_;
  }
  using TopoStatusIterator = Koi::HashMap< KoiTopoStatus, Koi::Name,
      Koi::Owned< TopoStatus > >::Iterator;
  TopoStatusIterator topoStatusIterator();
  /// The one of that key, made when there is none.
  Koi::Ptr< TopoStatus > topoStatusIs( Koi::Name const & k, Koi::U32 creationNonce );
  Koi::Ptr< TopoStatus > topoStatusDel( Koi::Name const & k );
  Koi::Ptr< TopoStatus > topoStatusDel( TopoStatusIterator const & i );
  void topoStatusDelAll();
  void topoStatusNotify( Koi::Name const & k );

  /// how many instances of MSTP there may be
  Koi::U32 maximumMstpInstances() const { return maximumMstpInstances_; }
  void maximumMstpInstancesIs( Koi::U32 v ) {
    koiIs( maximumMstpInstances_, v, NotifieeConst::koiOnMaximumMstpInstances );
  }

  /// how many topologies the hardware has
  Koi::U32 maximumTopologiesSupported() const { return maximumTopologiesSupported_; }
  void maximumTopologiesSupportedIs( Koi::U32 v ) {
    koiIs( maximumTopologiesSupported_, v, NotifieeConst::koiOnMaximumTopologiesSupported );
  }

  /// the hardware does what was asked
  bool hardwareConfigured() const { return hardwareConfigured_; }
  void hardwareConfiguredIs( bool v ) {
    koiIs( hardwareConfigured_, v, NotifieeConst::koiOnHardwareConfigured );
  }

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< Status > {
   public:
    virtual void onTopoStatus() {}
    virtual void onTopoStatus( Koi::Name const & ) {}
    virtual void onTopoStatusKoiImmediate( Koi::Name const & k ) {
      koiPass( koiOnTopoStatus ); onTopoStatus( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Koi::Name const & > koiOnTopoStatus{
      koiFirst + 0, &NotifieeConst::onTopoStatus, &NotifieeConst::onTopoStatusKoiImmediate };

    virtual void onMaximumMstpInstances() {}
    virtual void onMaximumMstpInstancesKoiImmediate() {
      koiPass( koiOnMaximumMstpInstances ); onMaximumMstpInstances();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnMaximumMstpInstances{
      koiFirst + 1, &NotifieeConst::onMaximumMstpInstances,
          &NotifieeConst::onMaximumMstpInstancesKoiImmediate };

    virtual void onMaximumTopologiesSupported() {}
    virtual void onMaximumTopologiesSupportedKoiImmediate() {
      koiPass( koiOnMaximumTopologiesSupported ); onMaximumTopologiesSupported();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnMaximumTopologiesSupported{
      koiFirst + 2, &NotifieeConst::onMaximumTopologiesSupported,
          &NotifieeConst::onMaximumTopologiesSupportedKoiImmediate };

    virtual void onHardwareConfigured() {}
    virtual void onHardwareConfiguredKoiImmediate() {
      koiPass( koiOnHardwareConfigured ); onHardwareConfigured();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnHardwareConfigured{
      koiFirst + 3, &NotifieeConst::onHardwareConfigured,
          &NotifieeConst::onHardwareConfiguredKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, Status >;

  static constexpr char koiName[] = "Bridging::Topology::Inst::Status";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &Status::name )
    };
  }
  template< class Self = Status >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "topoStatus", &Self::topoStatus_, &Self::topoStatusIs, &Self::topoStatusDel ),
      Koi::attribute( "maximumMstpInstances", &Self::maximumMstpInstances_,
                      &Self::maximumMstpInstancesIs ),
      Koi::attribute( "maximumTopologiesSupported", &Self::maximumTopologiesSupported_,
                      &Self::maximumTopologiesSupportedIs ),
      Koi::attribute( "hardwareConfigured", &Self::hardwareConfigured_,
                      &Self::hardwareConfiguredIs )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 4;
  static Koi::KoiType const _koiType;

 private:
  Koi::HashMap< KoiTopoStatus, Koi::Name, Koi::Owned< TopoStatus > > topoStatus_;
  Koi::U32 maximumMstpInstances_ = 65;
  Koi::U32 maximumTopologiesSupported_{};
  bool hardwareConfigured_{};
};

/// A new Status without a parent.
KOI_PUBLIC Koi::Ptr< Status > statusFactory( Koi::Name const & name );

}  // namespace Bridging::Topology::Inst

// Reflection wrappers: each holds one copy of a value.
namespace _koi_Bridging_Topology_PortState {
  using GenericIf_ = Koi::GenericValue< Bridging::Topology::PortState >;
}
namespace _koi_Bridging_Topology_TopoPortChangeInfo {
  using GenericIf_ = Koi::GenericValue< Bridging::Topology::TopoPortChangeInfo >;
}
