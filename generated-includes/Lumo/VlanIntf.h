// VlanIntf.h: written by koigen from VlanIntf.koi. Change that file, not this one.
#pragma once

#include <koi/Value.h>
#include <koi/RecordBytes.h>
#include <koi/Entity.h>
#include <quill/KoiQuillMap.h>
#include <koi/Reactor.h>
#include <wirex/EthAddr.h>
#include <Interface/EthIntf.h>
#include <Interface/IntfCounter.h>
#include <wirex/IntfId.h>
#include <quill/Record.h>

namespace Interface {

/// How much went through a VLAN interface, by whom it was for.
class KOI_PUBLIC VlanIntfStatistics : public Koi::Structure< VlanIntfStatistics > {
 public:
  VlanIntfStatistics() = default;
  VlanIntfStatistics( Koi::U64 inUcastOctets, Koi::U64 inMulticastOctets, Koi::U64 outUcastOctets,
                      Koi::U64 outMulticastOctets )
      : _inUcastOctets( inUcastOctets ), _inMulticastOctets( inMulticastOctets ),
        _outUcastOctets( outUcastOctets ), _outMulticastOctets( outMulticastOctets ) {}
  VlanIntfStatistics( Koi::String8::IteratorConst & it, Koi::String8::IteratorConst const & end ) {
    koiParse( it, end );
  }
  VlanIntfStatistics( Koi::NboAttrLog::In * in, Koi::StreamBogon ) { koiRead( in ); }

  /// octets received that were for one station
  Koi::U64 inUcastOctets() const { return _inUcastOctets; }

  /// for a group
  Koi::U64 inMulticastOctets() const { return _inMulticastOctets; }

  /// octets sent to one station
  Koi::U64 outUcastOctets() const { return _outUcastOctets; }

  /// to a group
  Koi::U64 outMulticastOctets() const { return _outMulticastOctets; }

  static constexpr char koiName[] = "Interface::VlanIntfStatistics";
  static constexpr auto koiFields() {
    return std::tuple{
      Koi::field( "inUcastOctets", &VlanIntfStatistics::_inUcastOctets ),
      Koi::field( "inMulticastOctets", &VlanIntfStatistics::_inMulticastOctets ),
      Koi::field( "outUcastOctets", &VlanIntfStatistics::_outUcastOctets ),
      Koi::field( "outMulticastOctets", &VlanIntfStatistics::_outMulticastOctets )
    };
  }
  static Koi::KoiType const _koiType;

 private:
  Koi::U64 _inUcastOctets{};
  Koi::U64 _inMulticastOctets{};
  Koi::U64 _outUcastOctets{};
  Koi::U64 _outMulticastOctets{};
};

/// Where the counters of a VLAN interface are. Empty: nowhere.
class KOI_PUBLIC VlanIntfCounterArgs : public Koi::Structure< VlanIntfCounterArgs > {
 public:
  VlanIntfCounterArgs() = default;
  VlanIntfCounterArgs( Koi::String8 const & sysname, bool cohabiting )
      : _sysname( sysname ), _cohabiting( cohabiting ) {}
  VlanIntfCounterArgs( Koi::String8::IteratorConst & it, Koi::String8::IteratorConst const & end ) {
    koiParse( it, end );
  }
  VlanIntfCounterArgs( Koi::NboAttrLog::In * in, Koi::StreamBogon ) { koiRead( in ); }

  /// the system that is counted: its table is counters/vlanIntf/<sysname>
  Koi::String8 sysname() const { return _sysname; }

  /// no agent of this process mounts that table, so who reads it does
  bool cohabiting() const { return _cohabiting; }

  static constexpr char koiName[] = "Interface::VlanIntfCounterArgs";
  static constexpr auto koiFields() {
    return std::tuple{
      Koi::field( "sysname", &VlanIntfCounterArgs::_sysname ),
      Koi::field( "cohabiting", &VlanIntfCounterArgs::_cohabiting )
    };
  }
  static Koi::KoiType const _koiType;

 private:
  Koi::String8 _sysname{};
  bool _cohabiting{};
};

/// The counters of a VLAN interface as they lie in a table.
class KOI_PUBLIC VlanIntfCounterQuill : public Koi::Structure< VlanIntfCounterQuill > {
 public:
  VlanIntfCounterQuill() = default;
  VlanIntfCounterQuill( Wirex::IntfId const & intfId, VlanIntfStatistics const & vlanStatistics,
                        Koi::Seconds vlanStatsUpdateTime, IntfStatistics const & statistics,
      IntfCounterRates const & rates, Koi::U32 linkStatusChanges, Koi::U32 genId )
      : _intfId( intfId ), _vlanStatistics( vlanStatistics ),
        _vlanStatsUpdateTime( vlanStatsUpdateTime ), _statistics( statistics ), _rates( rates ),
      _linkStatusChanges( linkStatusChanges ), _genId( genId ) {}
  explicit VlanIntfCounterQuill( Wirex::IntfId const & intfId ) : _intfId( intfId ) {}
  VlanIntfCounterQuill( Koi::String8::IteratorConst & it,
                        Koi::String8::IteratorConst const & end ) {
    koiParse( it, end );
  }
  VlanIntfCounterQuill( Koi::NboAttrLog::In * in, Koi::StreamBogon ) { koiRead( in ); }

  /// the VLAN interface
  Wirex::IntfId intfId() const { return _intfId; }

  /// octets, by whom they were for
  VlanIntfStatistics vlanStatistics() const { return _vlanStatistics; }

  /// when those were taken, in seconds since 1970
  Koi::Seconds vlanStatsUpdateTime() const { return _vlanStatsUpdateTime; }

  /// as of any interface
  IntfStatistics statistics() const { return _statistics; }

  /// as of any interface
  IntfCounterRates rates() const { return _rates; }

  /// how often the link came or went
  Koi::U32 linkStatusChanges() const { return _linkStatusChanges; }

  /// the generation of the interface that was counted
  Koi::U32 genId() const { return _genId; }

  static constexpr char koiName[] = "Interface::VlanIntfCounterQuill";
  static constexpr auto koiFields() {
    return std::tuple{
      Koi::field( "intfId", &VlanIntfCounterQuill::_intfId ),
      Koi::field( "vlanStatistics", &VlanIntfCounterQuill::_vlanStatistics ),
      Koi::field( "vlanStatsUpdateTime", &VlanIntfCounterQuill::_vlanStatsUpdateTime ),
      Koi::field( "statistics", &VlanIntfCounterQuill::_statistics ),
      Koi::field( "rates", &VlanIntfCounterQuill::_rates ),
      Koi::field( "linkStatusChanges", &VlanIntfCounterQuill::_linkStatusChanges ),
      Koi::field( "genId", &VlanIntfCounterQuill::_genId )
    };
  }
  static Koi::KoiType const _koiType;

 private:
  Wirex::IntfId _intfId{};
  VlanIntfStatistics _vlanStatistics{};
  Koi::Seconds _vlanStatsUpdateTime{};
  IntfStatistics _statistics{};
  IntfCounterRates _rates{};
  Koi::U32 _linkStatusChanges{};
  Koi::U32 _genId{};
};

/// How strongly a source of VLAN interfaces asks for them, lowest first.
enum VlanIntfConfigPriority : Koi::U32 {
  configPriorityLow,     ///< below the others
  configPriorityMedium,  ///< usual
  configPriorityHigh     ///< above the others
};
KOI_ENUM( VlanIntfConfigPriority );

/// What a VLAN interface should be.
class KOI_PUBLIC VlanIntfConfig : public Koi::EntityOf< VlanIntfConfig, EthIntfConfig > {
 public:
  explicit VlanIntfConfig( Wirex::IntfId const & intfId );

  /// it is up only while a port of its VLAN is
  bool autoState() const { return autoState_; }
  void autoStateIs( bool v ) { koiIs( autoState_, v, NotifieeConst::koiOnAutoState ); }

  /// an agent asks for it, not an operator
  bool dynamic() const { return dynamic_; }
  void dynamicIs( bool v ) { koiIs( dynamic_, v, NotifieeConst::koiOnDynamic ); }

  /// which one
  Koi::String8 source() const { return source_; }
  void sourceIs( Koi::String8 const & v ) { koiIs( source_, v, NotifieeConst::koiOnSource ); }

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< VlanIntfConfig, EthIntfConfig::NotifieeConst > {
   public:
    virtual void onAutoState() {}
    virtual void onAutoStateKoiImmediate() { koiPass( koiOnAutoState ); onAutoState(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnAutoState{
      koiFirst + 0, &NotifieeConst::onAutoState, &NotifieeConst::onAutoStateKoiImmediate };

    virtual void onDynamic() {}
    virtual void onDynamicKoiImmediate() { koiPass( koiOnDynamic ); onDynamic(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnDynamic{
      koiFirst + 1, &NotifieeConst::onDynamic, &NotifieeConst::onDynamicKoiImmediate };

    virtual void onSource() {}
    virtual void onSourceKoiImmediate() { koiPass( koiOnSource ); onSource(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnSource{
      koiFirst + 2, &NotifieeConst::onSource, &NotifieeConst::onSourceKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, VlanIntfConfig >;

  static constexpr char koiName[] = "Interface::VlanIntfConfig";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_intfId", &VlanIntfConfig::intfId )
    };
  }
  template< class Self = VlanIntfConfig >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "autoState", &Self::autoState_, &Self::autoStateIs ),
      Koi::attribute( "dynamic", &Self::dynamic_, &Self::dynamicIs ),
      Koi::attribute( "source", &Self::source_, &Self::sourceIs )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 3;
  static Koi::KoiType const _koiType;

 private:
  bool autoState_{};
  bool dynamic_{};
  Koi::String8 source_{};
};

/// A new VlanIntfConfig without a parent.
KOI_PUBLIC Koi::Ptr< VlanIntfConfig > vlanIntfConfigFactory( Wirex::IntfId const & intfId );

/// What all VLAN interfaces should be, as one source has it.
class KOI_PUBLIC VlanIntfConfigDir : public Koi::EntityOf< VlanIntfConfigDir > {
 public:
  explicit VlanIntfConfigDir( Koi::Name const & name );

  class KoiIntfConfig;
  /// by interface
  Koi::Ptr< VlanIntfConfig > intfConfig( Wirex::IntfId const & k ) const;
  Koi::HashMap< KoiIntfConfig, Wirex::IntfId,
      Koi::Owned< VlanIntfConfig > > const & intfConfig() const {
    return intfConfig_;
  }
  using IntfConfigIterator = Koi::HashMap< KoiIntfConfig, Wirex::IntfId,
      Koi::Owned< VlanIntfConfig > >::Iterator;
  IntfConfigIterator intfConfigIterator();
  /// The one of that key, made when there is none.
  Koi::Ptr< VlanIntfConfig > intfConfigIs( Wirex::IntfId const & k );
  Koi::Ptr< VlanIntfConfig > intfConfigDel( Wirex::IntfId const & k );
  Koi::Ptr< VlanIntfConfig > intfConfigDel( IntfConfigIterator const & i );
  void intfConfigDelAll();
  void intfConfigNotify( Wirex::IntfId const & k );

  /// of this source against others
  VlanIntfConfigPriority configPriority() const { return configPriority_; }
  void configPriorityIs( VlanIntfConfigPriority v ) {
    koiIs( configPriority_, v, NotifieeConst::koiOnConfigPriority );
  }

  /// That of an interface, made when there is none: as intfConfigIs().
  Koi::Ptr< VlanIntfConfig > newIntfConfig( Wirex::IntfId const & intfId );

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< VlanIntfConfigDir > {
   public:
    virtual void onIntfConfig() {}
    virtual void onIntfConfig( Wirex::IntfId const & ) {}
    virtual void onIntfConfigKoiImmediate( Wirex::IntfId const & k ) {
      koiPass( koiOnIntfConfig ); onIntfConfig( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Wirex::IntfId const & > koiOnIntfConfig{
      koiFirst + 0, &NotifieeConst::onIntfConfig, &NotifieeConst::onIntfConfigKoiImmediate };

    virtual void onConfigPriority() {}
    virtual void onConfigPriorityKoiImmediate() {
      koiPass( koiOnConfigPriority ); onConfigPriority();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnConfigPriority{
      koiFirst + 1, &NotifieeConst::onConfigPriority,
          &NotifieeConst::onConfigPriorityKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, VlanIntfConfigDir >;

  static constexpr char koiName[] = "Interface::VlanIntfConfigDir";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &VlanIntfConfigDir::name )
    };
  }
  template< class Self = VlanIntfConfigDir >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "intfConfig", &Self::intfConfig_, &Self::intfConfigIs, &Self::intfConfigDel ),
      Koi::attribute( "configPriority", &Self::configPriority_, &Self::configPriorityIs )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 2;
  static Koi::KoiType const _koiType;

 private:
  Koi::HashMap< KoiIntfConfig, Wirex::IntfId, Koi::Owned< VlanIntfConfig > > intfConfig_;
  VlanIntfConfigPriority configPriority_ = VlanIntfConfigPriority::configPriorityLow;
};

/// A new VlanIntfConfigDir without a parent.
KOI_PUBLIC Koi::Ptr< VlanIntfConfigDir > vlanIntfConfigDirFactory( Koi::Name const & name );

/// Why configurations were rejected.
class KOI_PUBLIC VlanIntfConfigErrorDir : public Koi::EntityOf< VlanIntfConfigErrorDir > {
 public:
  explicit VlanIntfConfigErrorDir( Koi::Name const & name );

  class KoiVlanIntfConfigError;
  /// by interface
  Koi::String8 vlanIntfConfigError( Wirex::IntfId const & k ) const;
  Koi::HashMap< KoiVlanIntfConfigError, Wirex::IntfId,
      Koi::String8 > const & vlanIntfConfigError() const {
    return vlanIntfConfigError_;
  }
  using VlanIntfConfigErrorIterator = Koi::HashMap< KoiVlanIntfConfigError, Wirex::IntfId,
      Koi::String8 >::Iterator;
  VlanIntfConfigErrorIterator vlanIntfConfigErrorIterator();
  void vlanIntfConfigErrorIs( Wirex::IntfId const & k, Koi::String8 const & v );
  Koi::String8 vlanIntfConfigErrorDel( Wirex::IntfId const & k );
  Koi::String8 vlanIntfConfigErrorDel( VlanIntfConfigErrorIterator const & i );
  void vlanIntfConfigErrorDelAll();
  void vlanIntfConfigErrorNotify( Wirex::IntfId const & k );

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< VlanIntfConfigErrorDir > {
   public:
    virtual void onVlanIntfConfigError() {}
    virtual void onVlanIntfConfigError( Wirex::IntfId const & ) {}
    virtual void onVlanIntfConfigErrorKoiImmediate( Wirex::IntfId const & k ) {
      koiPass( koiOnVlanIntfConfigError ); onVlanIntfConfigError( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Wirex::IntfId const & > koiOnVlanIntfConfigError{
      koiFirst + 0, &NotifieeConst::onVlanIntfConfigError,
          &NotifieeConst::onVlanIntfConfigErrorKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, VlanIntfConfigErrorDir >;

  static constexpr char koiName[] = "Interface::VlanIntfConfigErrorDir";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &VlanIntfConfigErrorDir::name )
    };
  }
  template< class Self = VlanIntfConfigErrorDir >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "vlanIntfConfigError", &Self::vlanIntfConfigError_,
                      &Self::vlanIntfConfigErrorIs, &Self::vlanIntfConfigErrorDel )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 1;
  static Koi::KoiType const _koiType;

 private:
  Koi::HashMap< KoiVlanIntfConfigError, Wirex::IntfId, Koi::String8 > vlanIntfConfigError_;
};

/// A new VlanIntfConfigErrorDir without a parent.
KOI_PUBLIC Koi::Ptr< VlanIntfConfigErrorDir > vlanIntfConfigErrorDirFactory(
    Koi::Name const & name );

/// The counters of all VLAN interfaces, for all processes: who counts writes them. It is a
/// directory
/// of counters only in that a directory of interfaces may refer to it; look into the table.
class KOI_PUBLIC AllVlanIntfCounterQuill
    : public Koi::EntityOf< AllVlanIntfCounterQuill, IntfCounterDirDirBase > {
 public:
  explicit AllVlanIntfCounterQuill( Koi::Name const & name );

  /// by interface
  VlanIntfCounterQuill counter( Wirex::IntfId const & k ) const;
  KoiQuill::KoiQuillMap< Wirex::IntfId, VlanIntfCounterQuill > const & counter() const {
    return counter_;
  }
  using CounterIterator = KoiQuill::KoiQuillMap< Wirex::IntfId, VlanIntfCounterQuill >::Iterator;
  CounterIterator counterIterator();
  /// In the process that writes the table: an entry that is there already is no change. Raises
  /// Quill::TableFullException.
  void counterIs( VlanIntfCounterQuill const & v );
  VlanIntfCounterQuill counterDel( Wirex::IntfId const & k );
  VlanIntfCounterQuill counterDel( CounterIterator const & i );
  void counterDelAll();
  /// Opens the value's entry for writing in place: until it is completed readers have it as it was.
  void newCounter( VlanIntfCounterQuill const & v );
  void counterCommit( VlanIntfCounterQuill const & v );
  void counterNotify( Wirex::IntfId const & k );
  void counterNotifyCollection();
  /// How this process takes part in the table.
  KoiQuill::KoiQuillMapBase & counterControl() { return counter_; }

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst
      : public Koi::NotifieeOf< AllVlanIntfCounterQuill, IntfCounterDirDirBase::NotifieeConst > {
   public:
    /// The table is there, and what is in it can be looked up.
    virtual void onCounter() {}
    virtual void onCounter( Wirex::IntfId const & ) {}
    virtual void onCounterKoiImmediate() { koiPass( koiOnCounterControl ); onCounter(); }
    virtual void onCounterKoiImmediate( Wirex::IntfId const & k ) {
      koiPass( koiOnCounter ); onCounter( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Wirex::IntfId const & > koiOnCounter{
      koiFirst + 0, &NotifieeConst::onCounter, &NotifieeConst::onCounterKoiImmediate };
    static constexpr Koi::Callback< NotifieeConst > koiOnCounterControl{
      koiFirst + 1, &NotifieeConst::onCounter, &NotifieeConst::onCounterKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, AllVlanIntfCounterQuill >;

  static constexpr char koiName[] = "Interface::AllVlanIntfCounterQuill";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &AllVlanIntfCounterQuill::name )
    };
  }
  template< class Self = AllVlanIntfCounterQuill >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::table( "counter", &Self::counter_ ),
      Koi::tableControl( "counterControl", &Self::counter_ )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 2;
  static Koi::KoiType const _koiType;

 private:
  KoiQuill::KoiQuillMap< Wirex::IntfId, VlanIntfCounterQuill > counter_{
      *this, "counter", NotifieeConst::koiOnCounter, NotifieeConst::koiOnCounterControl };
};

/// A new AllVlanIntfCounterQuill without a parent.
KOI_PUBLIC Koi::Ptr< AllVlanIntfCounterQuill > allVlanIntfCounterQuillFactory(
    Koi::Name const & name );

/// One VLAN interface's counters as they stand in the table at this moment. Nobody is told when
/// they
/// change: watch the table for that.
class KOI_PUBLIC VlanIntfStatusCounter
    : public Koi::EntityOf< VlanIntfStatusCounter, IntfCounter > {
 public:
  VlanIntfStatusCounter( Koi::Name const & name, Wirex::IntfId const & intfId,
                         VlanIntfCounterArgs const & counterArgs );

  /// the VLAN interface
  Wirex::IntfId intfId() const { return _intfId; }

  /// where its counters are
  VlanIntfCounterArgs counterArgs() const { return _counterArgs; }

  /// octets, by whom they were for; zeros when there is no entry
  VlanIntfStatistics vlanStatistics() const;

  /// all of the entry; zeros when there is none
  VlanIntfCounterQuill record() const;

  /// whether the table is there, and has an entry
  bool exists() const override;

  /// those of the entry
  IntfStatistics statistics() const override;

  /// those of the entry
  IntfCounterRates rates() const override;

  /// that of the entry
  Koi::U32 linkStatusChanges() const override;

  /// that of the entry
  Koi::U32 genId() const override;

  /// Reads that table from now on, whatever the arguments say; null: what they say.
  void tableIs( Koi::Ptr< AllVlanIntfCounterQuill > const & table );

  /// There is nothing to watch but what it extends.
  class NotifieeConst
      : public Koi::NotifieeOf< VlanIntfStatusCounter, IntfCounter::NotifieeConst > {};
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, VlanIntfStatusCounter >;

  static constexpr char koiName[] = "Interface::VlanIntfStatusCounter";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &VlanIntfStatusCounter::name ),
      Koi::parameter( "_intfId", &VlanIntfStatusCounter::intfId ),
      Koi::parameter( "_counterArgs", &VlanIntfStatusCounter::counterArgs )
    };
  }
  template< class Self = VlanIntfStatusCounter >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "intfId", &Self::_intfId ),
      Koi::attribute( "counterArgs", &Self::_counterArgs )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 2;
  static Koi::KoiType const _koiType;

 private:
  Wirex::IntfId const _intfId;
  VlanIntfCounterArgs const _counterArgs;
  /// the table that was given; null: none was
  Koi::Ptr< AllVlanIntfCounterQuill > table_;
};

/// A new VlanIntfStatusCounter without a parent.
KOI_PUBLIC Koi::Ptr< VlanIntfStatusCounter > vlanIntfStatusCounterFactory( Koi::Name const & name,
    Wirex::IntfId const & intfId, VlanIntfCounterArgs const & counterArgs );

/// What a VLAN interface is.
class KOI_PUBLIC VlanIntfStatus : public Koi::EntityOf< VlanIntfStatus, EthIntfStatus > {
 public:
  VlanIntfStatus( Wirex::IntfId const & intfId, Koi::U32 genId, Koi::String8 const & deviceName );

  /// what its kernel device is called; empty: it has none
  Koi::String8 deviceName() const { return _deviceName; }

  /// Its current counters, looked for anew each time; null when there are none, which is traced.
  /// From the table in shared memory when the directory's counterDirPath contains "Quill".
  Koi::Ptr< IntfCounter > counter() const override;

  /// Where its counters are in shared memory, by its place in the tree; empty when it is not
  /// below a system.
  VlanIntfCounterArgs counterArgs() const;

  /// Its counters in shared memory; null as long as the table has none. What is found once is
  /// kept, and then says itself whether it exists(). Works on a read-only proxy, too.
  Koi::Ptr< VlanIntfStatusCounter > vlanCounter();

  /// There is nothing to watch but what it extends.
  class NotifieeConst : public Koi::NotifieeOf< VlanIntfStatus, EthIntfStatus::NotifieeConst > {};
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, VlanIntfStatus >;

  static constexpr char koiName[] = "Interface::VlanIntfStatus";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_intfId", &VlanIntfStatus::intfId ),
      Koi::parameter( "_genId", &VlanIntfStatus::genId ),
      Koi::parameter( "_deviceName", &VlanIntfStatus::deviceName )
    };
  }
  template< class Self = VlanIntfStatus >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "deviceName", &Self::_deviceName )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 1;
  static Koi::KoiType const _koiType;

 private:
  Koi::String8 const _deviceName;
  /// what was found
  Koi::Ptr< VlanIntfStatusCounter > vlanCounterView_;
};

/// A new VlanIntfStatus without a parent.
KOI_PUBLIC Koi::Ptr< VlanIntfStatus > vlanIntfStatusFactory( Wirex::IntfId const & intfId,
    Koi::U32 genId, Koi::String8 const & deviceName );

/// What all VLAN interfaces are.
class KOI_PUBLIC VlanIntfStatusDir : public Koi::EntityOf< VlanIntfStatusDir, IntfStatusDirBase > {
 public:
  explicit VlanIntfStatusDir( Koi::Name const & name );

  class KoiIntfStatus;
  /// by interface
  Koi::Ptr< VlanIntfStatus > intfStatus( Wirex::IntfId const & k ) const;
  Koi::HashMap< KoiIntfStatus, Wirex::IntfId,
      Koi::Owned< VlanIntfStatus > > const & intfStatus() const {
    return intfStatus_;
  }
  using IntfStatusIterator = Koi::HashMap< KoiIntfStatus, Wirex::IntfId,
      Koi::Owned< VlanIntfStatus > >::Iterator;
  IntfStatusIterator intfStatusIterator();
  /// The one of that key, made when there is none.
  Koi::Ptr< VlanIntfStatus > intfStatusIs( Wirex::IntfId const & k, Koi::U32 genId,
                                           Koi::String8 const & deviceName );
  Koi::Ptr< VlanIntfStatus > intfStatusDel( Wirex::IntfId const & k );
  Koi::Ptr< VlanIntfStatus > intfStatusDel( IntfStatusIterator const & i );
  void intfStatusDelAll();
  void intfStatusNotify( Wirex::IntfId const & k );

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst
      : public Koi::NotifieeOf< VlanIntfStatusDir, IntfStatusDirBase::NotifieeConst > {
   public:
    virtual void onIntfStatus() {}
    virtual void onIntfStatus( Wirex::IntfId const & ) {}
    virtual void onIntfStatusKoiImmediate( Wirex::IntfId const & k ) {
      koiPass( koiOnIntfStatus ); onIntfStatus( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Wirex::IntfId const & > koiOnIntfStatus{
      koiFirst + 0, &NotifieeConst::onIntfStatus, &NotifieeConst::onIntfStatusKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, VlanIntfStatusDir >;

  static constexpr char koiName[] = "Interface::VlanIntfStatusDir";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &VlanIntfStatusDir::name )
    };
  }
  template< class Self = VlanIntfStatusDir >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "intfStatus", &Self::intfStatus_, &Self::intfStatusIs, &Self::intfStatusDel )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 1;
  static Koi::KoiType const _koiType;

 private:
  Koi::HashMap< KoiIntfStatus, Wirex::IntfId, Koi::Owned< VlanIntfStatus > > intfStatus_;
};

/// A new VlanIntfStatusDir without a parent.
KOI_PUBLIC Koi::Ptr< VlanIntfStatusDir > vlanIntfStatusDirFactory( Koi::Name const & name );

/// What is known of a VLAN interface on this supervisor alone.
class KOI_PUBLIC VlanIntfStatusLocal
    : public Koi::EntityOf< VlanIntfStatusLocal, EthIntfStatusLocal > {
 public:
  VlanIntfStatusLocal( Wirex::IntfId const & intfId, Koi::String8 const & deviceName );

  /// what its kernel device is called; empty: it has none
  Koi::String8 deviceName() const { return _deviceName; }

  /// There is nothing to watch but what it extends.
  class NotifieeConst
      : public Koi::NotifieeOf< VlanIntfStatusLocal, EthIntfStatusLocal::NotifieeConst > {};
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, VlanIntfStatusLocal >;

  static constexpr char koiName[] = "Interface::VlanIntfStatusLocal";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_intfId", &VlanIntfStatusLocal::intfId ),
      Koi::parameter( "_deviceName", &VlanIntfStatusLocal::deviceName )
    };
  }
  template< class Self = VlanIntfStatusLocal >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "deviceName", &Self::_deviceName )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 1;
  static Koi::KoiType const _koiType;

 private:
  Koi::String8 const _deviceName;
};

/// A new VlanIntfStatusLocal without a parent.
KOI_PUBLIC Koi::Ptr< VlanIntfStatusLocal > vlanIntfStatusLocalFactory( Wirex::IntfId const & intfId,
    Koi::String8 const & deviceName );

/// What is known of all of them on this supervisor alone.
class KOI_PUBLIC VlanIntfStatusLocalDir
    : public Koi::EntityOf< VlanIntfStatusLocalDir, IntfStatusLocalDirBase > {
 public:
  explicit VlanIntfStatusLocalDir( Koi::Name const & name );

  class KoiIntfStatusLocal;
  /// by interface
  Koi::Ptr< VlanIntfStatusLocal > intfStatusLocal( Wirex::IntfId const & k ) const;
  Koi::HashMap< KoiIntfStatusLocal, Wirex::IntfId,
      Koi::Owned< VlanIntfStatusLocal > > const & intfStatusLocal() const {
    return intfStatusLocal_;
  }
  using IntfStatusLocalIterator = Koi::HashMap< KoiIntfStatusLocal, Wirex::IntfId,
      Koi::Owned< VlanIntfStatusLocal > >::Iterator;
  IntfStatusLocalIterator intfStatusLocalIterator();
  /// The one of that key, made when there is none.
  Koi::Ptr< VlanIntfStatusLocal > intfStatusLocalIs( Wirex::IntfId const & k,
                                                     Koi::String8 const & deviceName );
  Koi::Ptr< VlanIntfStatusLocal > intfStatusLocalDel( Wirex::IntfId const & k );
  Koi::Ptr< VlanIntfStatusLocal > intfStatusLocalDel( IntfStatusLocalIterator const & i );
  void intfStatusLocalDelAll();
  void intfStatusLocalNotify( Wirex::IntfId const & k );

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst
      : public Koi::NotifieeOf< VlanIntfStatusLocalDir, IntfStatusLocalDirBase::NotifieeConst > {
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
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, VlanIntfStatusLocalDir >;

  static constexpr char koiName[] = "Interface::VlanIntfStatusLocalDir";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &VlanIntfStatusLocalDir::name )
    };
  }
  template< class Self = VlanIntfStatusLocalDir >
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
      Koi::Owned< VlanIntfStatusLocal > > intfStatusLocal_;
};

/// A new VlanIntfStatusLocalDir without a parent.
KOI_PUBLIC Koi::Ptr< VlanIntfStatusLocalDir > vlanIntfStatusLocalDirFactory(
    Koi::Name const & name );

/// A set of counters of a VLAN interface that was taken down here.
class KOI_PUBLIC VlanIntfCounter : public Koi::EntityOf< VlanIntfCounter, IntfCounter > {
 public:
  explicit VlanIntfCounter( Koi::Name const & name );

  /// octets, by whom they were for
  VlanIntfStatistics vlanStatistics() const { return vlanStatistics_; }
  void vlanStatisticsIs( VlanIntfStatistics const & v ) {
    koiIs( vlanStatistics_, v, NotifieeConst::koiOnVlanStatistics );
  }

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< VlanIntfCounter, IntfCounter::NotifieeConst > {
   public:
    virtual void onVlanStatistics() {}
    virtual void onVlanStatisticsKoiImmediate() {
      koiPass( koiOnVlanStatistics ); onVlanStatistics();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnVlanStatistics{
      koiFirst + 0, &NotifieeConst::onVlanStatistics,
          &NotifieeConst::onVlanStatisticsKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, VlanIntfCounter >;

  static constexpr char koiName[] = "Interface::VlanIntfCounter";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &VlanIntfCounter::name )
    };
  }
  template< class Self = VlanIntfCounter >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "vlanStatistics", &Self::vlanStatistics_, &Self::vlanStatisticsIs )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 1;
  static Koi::KoiType const _koiType;

 private:
  VlanIntfStatistics vlanStatistics_{};
};

/// A new VlanIntfCounter without a parent.
KOI_PUBLIC Koi::Ptr< VlanIntfCounter > vlanIntfCounterFactory( Koi::Name const & name );

/// The sets of counters of one VLAN interface.
class KOI_PUBLIC VlanIntfCounterDir
    : public Koi::EntityOf< VlanIntfCounterDir, IntfCounterDirBase > {
 public:
  explicit VlanIntfCounterDir( Wirex::IntfId const & intfId );

  class KoiIntfCounter;
  /// by name
  Koi::Ptr< VlanIntfCounter > intfCounter( Koi::Name const & k ) const;
  Koi::HashMap< KoiIntfCounter, Koi::Name,
      Koi::Owned< VlanIntfCounter > > const & intfCounter() const {
    return intfCounter_;
  }
  using IntfCounterIterator = Koi::HashMap< KoiIntfCounter, Koi::Name,
      Koi::Owned< VlanIntfCounter > >::Iterator;
  IntfCounterIterator intfCounterIterator();
  /// The one of that key, made when there is none.
  Koi::Ptr< VlanIntfCounter > intfCounterIs( Koi::Name const & k );
  Koi::Ptr< VlanIntfCounter > intfCounterDel( Koi::Name const & k );
  Koi::Ptr< VlanIntfCounter > intfCounterDel( IntfCounterIterator const & i );
  void intfCounterDelAll();
  void intfCounterNotify( Koi::Name const & k );

  /// who counts
  Koi::String8 source() const { return source_; }
  void sourceIs( Koi::String8 const & v ) { koiIs( source_, v, NotifieeConst::koiOnSource ); }

  /// The set of that name; null when there is none.
  Koi::Ptr< IntfCounter > doGetIntfCounter( Koi::Name const & name ) const override;

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst
      : public Koi::NotifieeOf< VlanIntfCounterDir, IntfCounterDirBase::NotifieeConst > {
   public:
    virtual void onIntfCounter() {}
    virtual void onIntfCounter( Koi::Name const & ) {}
    virtual void onIntfCounterKoiImmediate( Koi::Name const & k ) {
      koiPass( koiOnIntfCounter ); onIntfCounter( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Koi::Name const & > koiOnIntfCounter{
      koiFirst + 0, &NotifieeConst::onIntfCounter, &NotifieeConst::onIntfCounterKoiImmediate };

    virtual void onSource() {}
    virtual void onSourceKoiImmediate() { koiPass( koiOnSource ); onSource(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnSource{
      koiFirst + 1, &NotifieeConst::onSource, &NotifieeConst::onSourceKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, VlanIntfCounterDir >;

  static constexpr char koiName[] = "Interface::VlanIntfCounterDir";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_intfId", &VlanIntfCounterDir::intfId )
    };
  }
  template< class Self = VlanIntfCounterDir >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "intfCounter", &Self::intfCounter_, &Self::intfCounterIs,
                      &Self::intfCounterDel ),
      Koi::attribute( "source", &Self::source_, &Self::sourceIs )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 2;
  static Koi::KoiType const _koiType;

 private:
  Koi::HashMap< KoiIntfCounter, Koi::Name, Koi::Owned< VlanIntfCounter > > intfCounter_;
  Koi::String8 source_{};
};

/// A new VlanIntfCounterDir without a parent.
KOI_PUBLIC Koi::Ptr< VlanIntfCounterDir > vlanIntfCounterDirFactory( Wirex::IntfId const & intfId );

/// The sets of counters of all VLAN interfaces.
class KOI_PUBLIC AllVlanIntfCounterDir
    : public Koi::EntityOf< AllVlanIntfCounterDir, IntfCounterDirDirBase > {
 public:
  explicit AllVlanIntfCounterDir( Koi::Name const & name );

  class KoiIntfCounterDir;
  /// by interface
  Koi::Ptr< VlanIntfCounterDir > intfCounterDir( Wirex::IntfId const & k ) const;
  Koi::HashMap< KoiIntfCounterDir, Wirex::IntfId,
      Koi::Owned< VlanIntfCounterDir > > const & intfCounterDir() const {
    return intfCounterDir_;
  }
  using IntfCounterDirIterator = Koi::HashMap< KoiIntfCounterDir, Wirex::IntfId,
      Koi::Owned< VlanIntfCounterDir > >::Iterator;
  IntfCounterDirIterator intfCounterDirIterator();
  /// The one of that key, made when there is none.
  Koi::Ptr< VlanIntfCounterDir > intfCounterDirIs( Wirex::IntfId const & k );
  Koi::Ptr< VlanIntfCounterDir > intfCounterDirDel( Wirex::IntfId const & k );
  Koi::Ptr< VlanIntfCounterDir > intfCounterDirDel( IntfCounterDirIterator const & i );
  void intfCounterDirDelAll();
  void intfCounterDirNotify( Wirex::IntfId const & k );

  /// Those of one interface; null when there are none.
  Koi::Ptr< IntfCounterDirBase > doGetIntfCounterDir( Wirex::IntfId const & intfId ) const override;

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst
      : public Koi::NotifieeOf< AllVlanIntfCounterDir, IntfCounterDirDirBase::NotifieeConst > {
   public:
    virtual void onIntfCounterDir() {}
    virtual void onIntfCounterDir( Wirex::IntfId const & ) {}
    virtual void onIntfCounterDirKoiImmediate( Wirex::IntfId const & k ) {
      koiPass( koiOnIntfCounterDir ); onIntfCounterDir( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Wirex::IntfId const & > koiOnIntfCounterDir{
      koiFirst + 0, &NotifieeConst::onIntfCounterDir,
          &NotifieeConst::onIntfCounterDirKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, AllVlanIntfCounterDir >;

  static constexpr char koiName[] = "Interface::AllVlanIntfCounterDir";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &AllVlanIntfCounterDir::name )
    };
  }
  template< class Self = AllVlanIntfCounterDir >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "intfCounterDir", &Self::intfCounterDir_, &Self::intfCounterDirIs,
                      &Self::intfCounterDirDel )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 1;
  static Koi::KoiType const _koiType;

 private:
  Koi::HashMap< KoiIntfCounterDir, Wirex::IntfId,
      Koi::Owned< VlanIntfCounterDir > > intfCounterDir_;
};

/// A new AllVlanIntfCounterDir without a parent.
KOI_PUBLIC Koi::Ptr< AllVlanIntfCounterDir > allVlanIntfCounterDirFactory( Koi::Name const & name );

/// Which VLAN interfaces a writer of counters serves.
class KOI_PUBLIC VlanIntfCounterWriterStatus : public Koi::EntityOf< VlanIntfCounterWriterStatus > {
 public:
  explicit VlanIntfCounterWriterStatus( Koi::Name const & name );

  class KoiIntf;
  /// an entry each
  bool intf( Wirex::IntfId const & k ) const;
  Koi::HashMap< KoiIntf, Wirex::IntfId, bool > const & intf() const { return intf_; }
  using IntfIterator = Koi::HashMap< KoiIntf, Wirex::IntfId, bool >::Iterator;
  IntfIterator intfIterator();
  void intfIs( Wirex::IntfId const & k, bool v );
  bool intfDel( Wirex::IntfId const & k );
  bool intfDel( IntfIterator const & i );
  void intfDelAll();
  void intfNotify( Wirex::IntfId const & k );

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< VlanIntfCounterWriterStatus > {
   public:
    virtual void onIntf() {}
    virtual void onIntf( Wirex::IntfId const & ) {}
    virtual void onIntfKoiImmediate( Wirex::IntfId const & k ) {
      koiPass( koiOnIntf ); onIntf( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Wirex::IntfId const & > koiOnIntf{
      koiFirst + 0, &NotifieeConst::onIntf, &NotifieeConst::onIntfKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, VlanIntfCounterWriterStatus >;

  static constexpr char koiName[] = "Interface::VlanIntfCounterWriterStatus";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &VlanIntfCounterWriterStatus::name )
    };
  }
  template< class Self = VlanIntfCounterWriterStatus >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "intf", &Self::intf_, &Self::intfIs, &Self::intfDel )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 1;
  static Koi::KoiType const _koiType;

 private:
  Koi::HashMap< KoiIntf, Wirex::IntfId, bool > intf_;
};

/// A new VlanIntfCounterWriterStatus without a parent.
KOI_PUBLIC Koi::Ptr< VlanIntfCounterWriterStatus > vlanIntfCounterWriterStatusFactory(
    Koi::Name const & name );

/// Whether VLAN interfaces follow the ports of their VLANs.
class KOI_PUBLIC AllVlanIntfAutoState : public Koi::EntityOf< AllVlanIntfAutoState > {
 public:
  explicit AllVlanIntfAutoState( Koi::Name const & name );

  /// those do that do not say themselves
  bool autoState() const { return autoState_; }
  void autoStateIs( bool v ) { koiIs( autoState_, v, NotifieeConst::koiOnAutoState ); }

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< AllVlanIntfAutoState > {
   public:
    virtual void onAutoState() {}
    virtual void onAutoStateKoiImmediate() { koiPass( koiOnAutoState ); onAutoState(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnAutoState{
      koiFirst + 0, &NotifieeConst::onAutoState, &NotifieeConst::onAutoStateKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, AllVlanIntfAutoState >;

  static constexpr char koiName[] = "Interface::AllVlanIntfAutoState";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &AllVlanIntfAutoState::name )
    };
  }
  template< class Self = AllVlanIntfAutoState >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "autoState", &Self::autoState_, &Self::autoStateIs )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 1;
  static Koi::KoiType const _koiType;

 private:
  bool autoState_{};
};

/// A new AllVlanIntfAutoState without a parent.
KOI_PUBLIC Koi::Ptr< AllVlanIntfAutoState > allVlanIntfAutoStateFactory( Koi::Name const & name );

/// What VLAN interfaces should be, when all sources were heard.
class KOI_PUBLIC VlanIntfConfigAfterCodef : public Koi::ReactorOf< VlanIntfConfigAfterCodef > {
 public:
  VlanIntfConfigAfterCodef();

  class KoiIntfConfig;
  /// by interface, the configuration that prevailed
  Koi::Ptr< VlanIntfConfig > intfConfig( Wirex::IntfId const & k ) const;
  Koi::HashMap< KoiIntfConfig, Wirex::IntfId,
      Koi::Ptr< VlanIntfConfig > > const & intfConfig() const {
    return intfConfig_;
  }
  using IntfConfigIterator = Koi::HashMap< KoiIntfConfig, Wirex::IntfId,
      Koi::Ptr< VlanIntfConfig > >::Iterator;
  IntfConfigIterator intfConfigIterator();
  void intfConfigIs( Wirex::IntfId const & k, Koi::Ptr< VlanIntfConfig > const & v );
  Koi::Ptr< VlanIntfConfig > intfConfigDel( Wirex::IntfId const & k );
  Koi::Ptr< VlanIntfConfig > intfConfigDel( IntfConfigIterator const & i );
  void intfConfigDelAll();

  static constexpr char koiName[] = "Interface::VlanIntfConfigAfterCodef";
  static constexpr auto koiParameters() {
    return std::tuple{
    };
  }
  static Koi::KoiType const _koiType;

 private:

  Koi::HashMap< KoiIntfConfig, Wirex::IntfId, Koi::Ptr< VlanIntfConfig > > intfConfig_;
};

/// A new VlanIntfConfigAfterCodef that listens.
KOI_PUBLIC Koi::Ptr< VlanIntfConfigAfterCodef > VlanIntfConfigAfterCodefIs();
KOI_PUBLIC Koi::Ptr< VlanIntfConfigAfterCodef > vlanIntfConfigAfterCodefFactory();

/// The name of the system whose tree the entity stands in: what the parent is called of the nearest
/// "Coredb" above it. Empty, and traced, when there is none.
KOI_PUBLIC Koi::String8 getSysnameFromEntity( Koi::Entity const & entity );

/// Whether nobody in this process but who reads counters mounts them: there is no "AgentEnv" in the
/// global directory.
KOI_PUBLIC bool getCohabiting();

/// Keeps, for each VLAN interface that a writer of counters lists, a set of counters "lastClear":
/// what
/// they were when the interface was listed. What is counted since the last clearing is what there
/// is
/// now, less that. A set that is there is never touched; it goes with the interface.
class KOI_PUBLIC VlanIntfCounterCheckpointSm
    : public Koi::ReactorOf< VlanIntfCounterCheckpointSm > {
 public:
  VlanIntfCounterCheckpointSm(
      Koi::Ptr< VlanIntfCounterWriterStatus > const & vlanIntfCounterWriterStatus,
      Koi::Ptr< AllVlanIntfCounterDir > const & allVlanIntfCounterDir );

  /// the interfaces that are listed
  Koi::Ptr< VlanIntfCounterWriterStatus > vlanIntfCounterWriterStatus() const {
    return vlanIntfCounterWriterStatus_.ptr();
  }
  /// Watches that one from now on, and starts over; null watches nothing.
  void vlanIntfCounterWriterStatusIs( Koi::Ptr< VlanIntfCounterWriterStatus > const & entity );
  /// Watches nothing from now on.
  void vlanIntfCounterWriterStatusDel();

  /// where the sets are kept
  Koi::Ptr< AllVlanIntfCounterDir > allVlanIntfCounterDir() const { return _allVlanIntfCounterDir; }

  /// nothing is done before it is true
  bool initialized() const { return initialized_; }
  /// Does what follows from it, unless it is that already.
  void initializedIs( bool v ) {
    if( Koi::same( initialized_, v ) )
      return;
    koiIs( initialized_, v );
    koiRunStart();
  }

  static constexpr char koiName[] = "Interface::VlanIntfCounterCheckpointSm";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_vlanIntfCounterWriterStatus",
                      &VlanIntfCounterCheckpointSm::vlanIntfCounterWriterStatus ),
      Koi::parameter( "_allVlanIntfCounterDir",
                      &VlanIntfCounterCheckpointSm::allVlanIntfCounterDir )
    };
  }
  static Koi::KoiType const _koiType;

 private:
  // Handlers: their bodies are written by hand.
  void handleIntf( Wirex::IntfId const & key );
  void handleInitialized();

  class KoiVlanIntfCounterWriterStatus : public VlanIntfCounterWriterStatus::NotifieeConst {
   public:
    explicit KoiVlanIntfCounterWriterStatus( VlanIntfCounterCheckpointSm * reactor )
        : reactor_( reactor ) {}
    using NotifieeConst::onIntf;
    void onIntf( Wirex::IntfId const & key ) override {
      Koi::Ptr< VlanIntfCounterCheckpointSm >( reactor_ )->handleIntf( key );
    }

   private:
    VlanIntfCounterCheckpointSm * reactor_;
  };

  void koiStart() override { handleInitialized(); }

  Koi::Watched< KoiVlanIntfCounterWriterStatus,
      VlanIntfCounterWriterStatus > vlanIntfCounterWriterStatus_;
  Koi::Ptr< AllVlanIntfCounterDir > const _allVlanIntfCounterDir;
  bool initialized_{};
};

/// A new VlanIntfCounterCheckpointSm that listens.
KOI_PUBLIC Koi::Ptr< VlanIntfCounterCheckpointSm > VlanIntfCounterCheckpointSmIs(
    Koi::Ptr< VlanIntfCounterWriterStatus > const & vlanIntfCounterWriterStatus,
    Koi::Ptr< AllVlanIntfCounterDir > const & allVlanIntfCounterDir );
KOI_PUBLIC Koi::Ptr< VlanIntfCounterCheckpointSm > vlanIntfCounterCheckpointSmFactory(
    Koi::Ptr< VlanIntfCounterWriterStatus > const & vlanIntfCounterWriterStatus,
    Koi::Ptr< AllVlanIntfCounterDir > const & allVlanIntfCounterDir );

}  // namespace Interface

namespace Interface::Input {

/// The MAC address that VLAN interfaces should have.
class KOI_PUBLIC VlanIntfAddr : public Koi::EntityOf< VlanIntfAddr > {
 public:
  explicit VlanIntfAddr( Koi::Name const & name );

  /// the address
  Wirex::EthAddr macAddr() const { return macAddr_; }
  void macAddrIs( Wirex::EthAddr const & v ) { koiIs( macAddr_, v, NotifieeConst::koiOnMacAddr ); }

  class KoiVlanIntf;
  /// the interfaces that should have it
  bool vlanIntf( Wirex::IntfId const & k ) const;
  Koi::HashMap< KoiVlanIntf, Wirex::IntfId, bool > const & vlanIntf() const { return vlanIntf_; }
  using VlanIntfIterator = Koi::HashMap< KoiVlanIntf, Wirex::IntfId, bool >::Iterator;
  VlanIntfIterator vlanIntfIterator();
  void vlanIntfIs( Wirex::IntfId const & k, bool v );
  bool vlanIntfDel( Wirex::IntfId const & k );
  bool vlanIntfDel( VlanIntfIterator const & i );
  void vlanIntfDelAll();
  void vlanIntfNotify( Wirex::IntfId const & k );

  /// Sets one of them: as vlanIntfIs().
  void newVlanIntf( Wirex::IntfId const & intfId, bool on );

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< VlanIntfAddr > {
   public:
    virtual void onMacAddr() {}
    virtual void onMacAddrKoiImmediate() { koiPass( koiOnMacAddr ); onMacAddr(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnMacAddr{
      koiFirst + 0, &NotifieeConst::onMacAddr, &NotifieeConst::onMacAddrKoiImmediate };

    virtual void onVlanIntf() {}
    virtual void onVlanIntf( Wirex::IntfId const & ) {}
    virtual void onVlanIntfKoiImmediate( Wirex::IntfId const & k ) {
      koiPass( koiOnVlanIntf ); onVlanIntf( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Wirex::IntfId const & > koiOnVlanIntf{
      koiFirst + 1, &NotifieeConst::onVlanIntf, &NotifieeConst::onVlanIntfKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, VlanIntfAddr >;

  static constexpr char koiName[] = "Interface::Input::VlanIntfAddr";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &VlanIntfAddr::name )
    };
  }
  template< class Self = VlanIntfAddr >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "macAddr", &Self::macAddr_, &Self::macAddrIs ),
      Koi::attribute( "vlanIntf", &Self::vlanIntf_, &Self::vlanIntfIs, &Self::vlanIntfDel )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 2;
  static Koi::KoiType const _koiType;

 private:
  Wirex::EthAddr macAddr_{};
  Koi::HashMap< KoiVlanIntf, Wirex::IntfId, bool > vlanIntf_;
};

/// A new VlanIntfAddr without a parent.
KOI_PUBLIC Koi::Ptr< VlanIntfAddr > vlanIntfAddrFactory( Koi::Name const & name );

}  // namespace Interface::Input

// Reflection wrappers: each holds one copy of a value.
namespace _koi_Interface_VlanIntfStatistics {
  using GenericIf_ = Koi::GenericValue< Interface::VlanIntfStatistics >;
}
namespace _koi_Interface_VlanIntfCounterArgs {
  using GenericIf_ = Koi::GenericValue< Interface::VlanIntfCounterArgs >;
}
namespace _koi_Interface_VlanIntfCounterQuill {
  using GenericIf_ = Koi::GenericValue< Interface::VlanIntfCounterQuill >;
}
namespace _koi_Interface_VlanIntfConfigPriority {
  using GenericIf_ = Koi::GenericValue< Interface::VlanIntfConfigPriority >;
}

/// How a VlanIntfCounterQuill lies in a slot: 200 bytes, of which the key takes the first 8.
///
///        0  intfId                               8
///        8  vlanStatistics.inUcastOctets         8
///       16  vlanStatistics.inMulticastOctets     8
///       24  vlanStatistics.outUcastOctets        8
///       32  vlanStatistics.outMulticastOctets    8
///       40  vlanStatsUpdateTime                  8
///       48  statistics.inOctets                  8
///       56  statistics.inUcastPkts               8
///       64  statistics.inMulticastPkts           8
///       72  statistics.inBroadcastPkts           8
///       80  statistics.inDiscards                8
///       88  statistics.inErrors                  8
///       96  statistics.outOctets                 8
///      104  statistics.outUcastPkts              8
///      112  statistics.outMulticastPkts          8
///      120  statistics.outBroadcastPkts          8
///      128  statistics.outDiscards               8
///      136  statistics.outErrors                 8
///      144  statistics.statsUpdateTime           8
///      152  rates.inBitsRate                     8
///      160  rates.inPktsRate                     8
///      168  rates.outBitsRate                    8
///      176  rates.outPktsRate                    8
///      184  rates.statsUpdateTime                8
///      192  linkStatusChanges                    4
///      196  genId                                4
///
/// What is read is what lies there, in its range or not: a slot that was never used has a key of
/// zeros.
template<>
struct Quill::Record< Interface::VlanIntfCounterQuill > {
  using Value = ::Interface::VlanIntfCounterQuill;
  using Key = ::Wirex::IntfId;

  static constexpr char valueType[] = "Interface::VlanIntfCounterQuill";
  static constexpr Koi::U32 keySize = 8;
  static constexpr Koi::U32 valueSize = 200;

  /// Fills the words of a key.
  static void putKey( Key const & key, Koi::U32 * words ) {
    Koi::recordPut< 0, 8 >( words, key );
  }
  /// Fills the words of a slot.
  static void put( Value const & value, Koi::U32 * words ) {
    putKey( value.intfId(), words );
    Koi::recordPut< 8, 8 >( words, value.vlanStatistics().inUcastOctets() );
    Koi::recordPut< 16, 8 >( words, value.vlanStatistics().inMulticastOctets() );
    Koi::recordPut< 24, 8 >( words, value.vlanStatistics().outUcastOctets() );
    Koi::recordPut< 32, 8 >( words, value.vlanStatistics().outMulticastOctets() );
    Koi::recordPut< 40, 8 >( words, value.vlanStatsUpdateTime() );
    Koi::recordPut< 48, 8 >( words, value.statistics().inOctets() );
    Koi::recordPut< 56, 8 >( words, value.statistics().inUcastPkts() );
    Koi::recordPut< 64, 8 >( words, value.statistics().inMulticastPkts() );
    Koi::recordPut< 72, 8 >( words, value.statistics().inBroadcastPkts() );
    Koi::recordPut< 80, 8 >( words, value.statistics().inDiscards() );
    Koi::recordPut< 88, 8 >( words, value.statistics().inErrors() );
    Koi::recordPut< 96, 8 >( words, value.statistics().outOctets() );
    Koi::recordPut< 104, 8 >( words, value.statistics().outUcastPkts() );
    Koi::recordPut< 112, 8 >( words, value.statistics().outMulticastPkts() );
    Koi::recordPut< 120, 8 >( words, value.statistics().outBroadcastPkts() );
    Koi::recordPut< 128, 8 >( words, value.statistics().outDiscards() );
    Koi::recordPut< 136, 8 >( words, value.statistics().outErrors() );
    Koi::recordPut< 144, 8 >( words, value.statistics().statsUpdateTime() );
    Koi::recordPut< 152, 8 >( words, value.rates().inBitsRate() );
    Koi::recordPut< 160, 8 >( words, value.rates().inPktsRate() );
    Koi::recordPut< 168, 8 >( words, value.rates().outBitsRate() );
    Koi::recordPut< 176, 8 >( words, value.rates().outPktsRate() );
    Koi::recordPut< 184, 8 >( words, value.rates().statsUpdateTime() );
    Koi::recordPut< 192, 4 >( words, value.linkStatusChanges() );
    Koi::recordPut< 196, 4 >( words, value.genId() );
  }
  /// Out of the words of a slot.
  static Key key( Koi::U32 const * words ) {
    return Koi::recordGet< ::Wirex::IntfId, 0, 8 >( words );
  }
  static Value value( Koi::U32 const * words ) {
    return Value(
        key( words ),
        ::Interface::VlanIntfStatistics(
            Koi::recordGet< Koi::U64, 8, 8 >( words ),
            Koi::recordGet< Koi::U64, 16, 8 >( words ),
            Koi::recordGet< Koi::U64, 24, 8 >( words ),
            Koi::recordGet< Koi::U64, 32, 8 >( words ) ),
        Koi::recordGet< Koi::Seconds, 40, 8 >( words ),
        ::Interface::IntfStatistics(
            Koi::recordGet< Koi::U64, 48, 8 >( words ),
            Koi::recordGet< Koi::U64, 56, 8 >( words ),
            Koi::recordGet< Koi::U64, 64, 8 >( words ),
            Koi::recordGet< Koi::U64, 72, 8 >( words ),
            Koi::recordGet< Koi::U64, 80, 8 >( words ),
            Koi::recordGet< Koi::U64, 88, 8 >( words ),
            Koi::recordGet< Koi::U64, 96, 8 >( words ),
            Koi::recordGet< Koi::U64, 104, 8 >( words ),
            Koi::recordGet< Koi::U64, 112, 8 >( words ),
            Koi::recordGet< Koi::U64, 120, 8 >( words ),
            Koi::recordGet< Koi::U64, 128, 8 >( words ),
            Koi::recordGet< Koi::U64, 136, 8 >( words ),
            Koi::recordGet< Koi::Seconds, 144, 8 >( words ) ),
        ::Interface::IntfCounterRates(
            Koi::recordGet< Koi::U64, 152, 8 >( words ),
            Koi::recordGet< Koi::U64, 160, 8 >( words ),
            Koi::recordGet< Koi::U64, 168, 8 >( words ),
            Koi::recordGet< Koi::U64, 176, 8 >( words ),
            Koi::recordGet< Koi::Seconds, 184, 8 >( words ) ),
        Koi::recordGet< Koi::U32, 192, 4 >( words ),
        Koi::recordGet< Koi::U32, 196, 4 >( words ) );
  }
  /// Of the key in these words.
  static Koi::U32 hash( Koi::U32 const * words, Koi::U32 seed ) {
    return BucketHash< Key >::of( key( words ), seed );
  }
};
