// IntfCounter.h: written by koigen from IntfCounter.koi. Change that file, not this one.
#pragma once

#include <koi/Value.h>
#include <koi/Entity.h>
#include <wirex/IntfId.h>

namespace Interface {

/// How much went through an interface. Counts never go back as long as the interface is the same
/// one.
class KOI_PUBLIC IntfStatistics : public Koi::Structure< IntfStatistics > {
 public:
  IntfStatistics() = default;
  IntfStatistics( Koi::U64 inOctets, Koi::U64 inUcastPkts, Koi::U64 inMulticastPkts,
                  Koi::U64 inBroadcastPkts, Koi::U64 inDiscards, Koi::U64 inErrors,
      Koi::U64 outOctets, Koi::U64 outUcastPkts, Koi::U64 outMulticastPkts,
      Koi::U64 outBroadcastPkts, Koi::U64 outDiscards, Koi::U64 outErrors,
      Koi::Seconds statsUpdateTime )
      : _inOctets( inOctets ), _inUcastPkts( inUcastPkts ), _inMulticastPkts( inMulticastPkts ),
        _inBroadcastPkts( inBroadcastPkts ), _inDiscards( inDiscards ), _inErrors( inErrors ),
      _outOctets( outOctets ), _outUcastPkts( outUcastPkts ), _outMulticastPkts( outMulticastPkts ),
      _outBroadcastPkts( outBroadcastPkts ), _outDiscards( outDiscards ), _outErrors( outErrors ),
      _statsUpdateTime( statsUpdateTime ) {}
  IntfStatistics( Koi::String8::IteratorConst & it, Koi::String8::IteratorConst const & end ) {
    koiParse( it, end );
  }
  IntfStatistics( Koi::NboAttrLog::In * in, Koi::StreamBogon ) { koiRead( in ); }

  /// octets received
  Koi::U64 inOctets() const { return _inOctets; }

  /// packets received that were for one station
  Koi::U64 inUcastPkts() const { return _inUcastPkts; }

  /// for a group
  Koi::U64 inMulticastPkts() const { return _inMulticastPkts; }

  /// for all
  Koi::U64 inBroadcastPkts() const { return _inBroadcastPkts; }

  /// packets received and dropped although nothing was wrong with them
  Koi::U64 inDiscards() const { return _inDiscards; }

  /// packets received that were damaged
  Koi::U64 inErrors() const { return _inErrors; }

  /// octets sent
  Koi::U64 outOctets() const { return _outOctets; }

  /// packets sent to one station
  Koi::U64 outUcastPkts() const { return _outUcastPkts; }

  /// to a group
  Koi::U64 outMulticastPkts() const { return _outMulticastPkts; }

  /// to all
  Koi::U64 outBroadcastPkts() const { return _outBroadcastPkts; }

  /// packets to be sent that were dropped although nothing was wrong with them
  Koi::U64 outDiscards() const { return _outDiscards; }

  /// packets that could not be sent
  Koi::U64 outErrors() const { return _outErrors; }

  /// when the counts were taken, in seconds since 1970
  Koi::Seconds statsUpdateTime() const { return _statsUpdateTime; }

  static constexpr char koiName[] = "Interface::IntfStatistics";
  static constexpr auto koiFields() {
    return std::tuple{
      Koi::field( "inOctets", &IntfStatistics::_inOctets ),
      Koi::field( "inUcastPkts", &IntfStatistics::_inUcastPkts ),
      Koi::field( "inMulticastPkts", &IntfStatistics::_inMulticastPkts ),
      Koi::field( "inBroadcastPkts", &IntfStatistics::_inBroadcastPkts ),
      Koi::field( "inDiscards", &IntfStatistics::_inDiscards ),
      Koi::field( "inErrors", &IntfStatistics::_inErrors ),
      Koi::field( "outOctets", &IntfStatistics::_outOctets ),
      Koi::field( "outUcastPkts", &IntfStatistics::_outUcastPkts ),
      Koi::field( "outMulticastPkts", &IntfStatistics::_outMulticastPkts ),
      Koi::field( "outBroadcastPkts", &IntfStatistics::_outBroadcastPkts ),
      Koi::field( "outDiscards", &IntfStatistics::_outDiscards ),
      Koi::field( "outErrors", &IntfStatistics::_outErrors ),
      Koi::field( "statsUpdateTime", &IntfStatistics::_statsUpdateTime )
    };
  }
  static Koi::KoiType const _koiType;

 private:
  Koi::U64 _inOctets{};
  Koi::U64 _inUcastPkts{};
  Koi::U64 _inMulticastPkts{};
  Koi::U64 _inBroadcastPkts{};
  Koi::U64 _inDiscards{};
  Koi::U64 _inErrors{};
  Koi::U64 _outOctets{};
  Koi::U64 _outUcastPkts{};
  Koi::U64 _outMulticastPkts{};
  Koi::U64 _outBroadcastPkts{};
  Koi::U64 _outDiscards{};
  Koi::U64 _outErrors{};
  Koi::Seconds _statsUpdateTime{};
};

/// How fast that is.
class KOI_PUBLIC IntfCounterRates : public Koi::Structure< IntfCounterRates > {
 public:
  IntfCounterRates() = default;
  IntfCounterRates( Koi::U64 inBitsRate, Koi::U64 inPktsRate, Koi::U64 outBitsRate,
                    Koi::U64 outPktsRate, Koi::Seconds statsUpdateTime )
      : _inBitsRate( inBitsRate ), _inPktsRate( inPktsRate ), _outBitsRate( outBitsRate ),
        _outPktsRate( outPktsRate ), _statsUpdateTime( statsUpdateTime ) {}
  IntfCounterRates( Koi::String8::IteratorConst & it, Koi::String8::IteratorConst const & end ) {
    koiParse( it, end );
  }
  IntfCounterRates( Koi::NboAttrLog::In * in, Koi::StreamBogon ) { koiRead( in ); }

  /// bits received in a second
  Koi::U64 inBitsRate() const { return _inBitsRate; }

  /// packets received in a second
  Koi::U64 inPktsRate() const { return _inPktsRate; }

  /// bits sent in a second
  Koi::U64 outBitsRate() const { return _outBitsRate; }

  /// packets sent in a second
  Koi::U64 outPktsRate() const { return _outPktsRate; }

  /// the end of the time that they were taken over, in seconds since 1970
  Koi::Seconds statsUpdateTime() const { return _statsUpdateTime; }

  static constexpr char koiName[] = "Interface::IntfCounterRates";
  static constexpr auto koiFields() {
    return std::tuple{
      Koi::field( "inBitsRate", &IntfCounterRates::_inBitsRate ),
      Koi::field( "inPktsRate", &IntfCounterRates::_inPktsRate ),
      Koi::field( "outBitsRate", &IntfCounterRates::_outBitsRate ),
      Koi::field( "outPktsRate", &IntfCounterRates::_outPktsRate ),
      Koi::field( "statsUpdateTime", &IntfCounterRates::_statsUpdateTime )
    };
  }
  static Koi::KoiType const _koiType;

 private:
  Koi::U64 _inBitsRate{};
  Koi::U64 _inPktsRate{};
  Koi::U64 _outBitsRate{};
  Koi::U64 _outPktsRate{};
  Koi::Seconds _statsUpdateTime{};
};

/// The mean rates between two samples, rounded. A count that went back has the rate 0, and so has
/// everything when no time went by between the two.
KOI_PUBLIC IntfCounterRates intfCounterRates( IntfStatistics const & before,
                                              IntfStatistics const & now );

/// One set of an interface's counters. What extends it may take them from elsewhere.
class KOI_PUBLIC IntfCounter : public Koi::EntityOf< IntfCounter > {
 public:
  explicit IntfCounter( Koi::Name const & name );

  /// the counts
  virtual IntfStatistics statistics() const { return statistics_; }
  void statisticsIs( IntfStatistics const & v ) {
    koiIs( statistics_, v, NotifieeConst::koiOnStatistics );
  }

  /// the rates
  virtual IntfCounterRates rates() const { return rates_; }
  void ratesIs( IntfCounterRates const & v ) { koiIs( rates_, v, NotifieeConst::koiOnRates ); }

  /// how often the link came or went
  virtual Koi::U32 linkStatusChanges() const { return linkStatusChanges_; }
  void linkStatusChangesIs( Koi::U32 v ) {
    koiIs( linkStatusChanges_, v, NotifieeConst::koiOnLinkStatusChanges );
  }

  /// the generation of the interface that was counted
  virtual Koi::U32 genId() const { return genId_; }
  void genIdIs( Koi::U32 v ) { koiIs( genId_, v, NotifieeConst::koiOnGenId ); }

  /// Whether there are counters behind it: those of an entity of its own always are.
  virtual bool exists() const;

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< IntfCounter > {
   public:
    virtual void onStatistics() {}
    virtual void onStatisticsKoiImmediate() { koiPass( koiOnStatistics ); onStatistics(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnStatistics{
      koiFirst + 0, &NotifieeConst::onStatistics, &NotifieeConst::onStatisticsKoiImmediate };

    virtual void onRates() {}
    virtual void onRatesKoiImmediate() { koiPass( koiOnRates ); onRates(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnRates{
      koiFirst + 1, &NotifieeConst::onRates, &NotifieeConst::onRatesKoiImmediate };

    virtual void onLinkStatusChanges() {}
    virtual void onLinkStatusChangesKoiImmediate() {
      koiPass( koiOnLinkStatusChanges ); onLinkStatusChanges();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnLinkStatusChanges{
      koiFirst + 2, &NotifieeConst::onLinkStatusChanges,
          &NotifieeConst::onLinkStatusChangesKoiImmediate };

    virtual void onGenId() {}
    virtual void onGenIdKoiImmediate() { koiPass( koiOnGenId ); onGenId(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnGenId{
      koiFirst + 3, &NotifieeConst::onGenId, &NotifieeConst::onGenIdKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, IntfCounter >;

  static constexpr char koiName[] = "Interface::IntfCounter";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &IntfCounter::name )
    };
  }
  template< class Self = IntfCounter >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "statistics", &Self::statistics_, &Self::statisticsIs ),
      Koi::attribute( "rates", &Self::rates_, &Self::ratesIs ),
      Koi::attribute( "linkStatusChanges", &Self::linkStatusChanges_, &Self::linkStatusChangesIs ),
      Koi::attribute( "genId", &Self::genId_, &Self::genIdIs )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 4;
  static Koi::KoiType const _koiType;

 private:
  IntfStatistics statistics_{};
  IntfCounterRates rates_{};
  Koi::U32 linkStatusChanges_{};
  Koi::U32 genId_{};
};

/// A new IntfCounter without a parent.
KOI_PUBLIC Koi::Ptr< IntfCounter > intfCounterFactory( Koi::Name const & name );

/// The sets of counters of one interface.
class KOI_PUBLIC IntfCounterDirBase : public Koi::EntityOf< IntfCounterDirBase > {
 public:
  explicit IntfCounterDirBase( Wirex::IntfId const & intfId );

  /// the interface
  Wirex::IntfId intfId() const { return _intfId; }

  /// The set of that name; null when there is none.
  virtual Koi::Ptr< IntfCounter > doGetIntfCounter( Koi::Name const & name ) const;

  /// There is nothing to watch but what it extends.
  class NotifieeConst : public Koi::NotifieeOf< IntfCounterDirBase > {};
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, IntfCounterDirBase >;

  static constexpr char koiName[] = "Interface::IntfCounterDirBase";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_intfId", &IntfCounterDirBase::intfId )
    };
  }
  template< class Self = IntfCounterDirBase >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "intfId", &Self::_intfId )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 1;
  static Koi::KoiType const _koiType;

 private:
  Wirex::IntfId const _intfId;
};

/// A new IntfCounterDirBase without a parent.
KOI_PUBLIC Koi::Ptr< IntfCounterDirBase > intfCounterDirBaseFactory( Wirex::IntfId const & intfId );

/// The counters of all interfaces of a kind.
class KOI_PUBLIC IntfCounterDirDirBase : public Koi::EntityOf< IntfCounterDirDirBase > {
 public:
  explicit IntfCounterDirDirBase( Koi::Name const & name );

  /// Those of one interface; null when there are none.
  virtual Koi::Ptr< IntfCounterDirBase > doGetIntfCounterDir( Wirex::IntfId const & intfId ) const;

  /// There is nothing to watch but what it extends.
  class NotifieeConst : public Koi::NotifieeOf< IntfCounterDirDirBase > {};
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, IntfCounterDirDirBase >;

  static constexpr char koiName[] = "Interface::IntfCounterDirDirBase";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &IntfCounterDirDirBase::name )
    };
  }
  template< class Self = IntfCounterDirDirBase >
  static constexpr auto koiAttributes() {
    return std::tuple{
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 0;
  static Koi::KoiType const _koiType;

 private:
};

/// A new IntfCounterDirDirBase without a parent.
KOI_PUBLIC Koi::Ptr< IntfCounterDirDirBase > intfCounterDirDirBaseFactory( Koi::Name const & name );

/// The status of all interfaces of a kind.
class KOI_PUBLIC IntfStatusDirBase : public Koi::EntityOf< IntfStatusDirBase > {
 public:
  explicit IntfStatusDirBase( Koi::Name const & name );

  /// where their counters are in the global directory; empty: not said
  Koi::String8 counterDirPath() const { return counterDirPath_; }
  void counterDirPathIs( Koi::String8 const & v ) {
    koiIs( counterDirPath_, v, NotifieeConst::koiOnCounterDirPath );
  }

  /// their counters, for who has them at hand
  Koi::Ptr< IntfCounterDirDirBase > counterDir() const { return counterDir_; }
  void counterDirIs( Koi::Ptr< IntfCounterDirDirBase > const & v ) {
    koiIs( counterDir_, v, NotifieeConst::koiOnCounterDir );
  }

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< IntfStatusDirBase > {
   public:
    virtual void onCounterDirPath() {}
    virtual void onCounterDirPathKoiImmediate() {
      koiPass( koiOnCounterDirPath ); onCounterDirPath();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnCounterDirPath{
      koiFirst + 0, &NotifieeConst::onCounterDirPath,
          &NotifieeConst::onCounterDirPathKoiImmediate };

    virtual void onCounterDir() {}
    virtual void onCounterDirKoiImmediate() { koiPass( koiOnCounterDir ); onCounterDir(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnCounterDir{
      koiFirst + 1, &NotifieeConst::onCounterDir, &NotifieeConst::onCounterDirKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, IntfStatusDirBase >;

  static constexpr char koiName[] = "Interface::IntfStatusDirBase";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &IntfStatusDirBase::name )
    };
  }
  template< class Self = IntfStatusDirBase >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "counterDirPath", &Self::counterDirPath_, &Self::counterDirPathIs ),
      Koi::attribute( "counterDir", &Self::counterDir_, &Self::counterDirIs )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 2;
  static Koi::KoiType const _koiType;

 private:
  Koi::String8 counterDirPath_{};
  Koi::Ptr< IntfCounterDirDirBase > counterDir_;
};

/// A new IntfStatusDirBase without a parent.
KOI_PUBLIC Koi::Ptr< IntfStatusDirBase > intfStatusDirBaseFactory( Koi::Name const & name );

/// What is known of all interfaces of a kind on this supervisor alone.
class KOI_PUBLIC IntfStatusLocalDirBase : public Koi::EntityOf< IntfStatusLocalDirBase > {
 public:
  explicit IntfStatusLocalDirBase( Koi::Name const & name );

  /// There is nothing to watch but what it extends.
  class NotifieeConst : public Koi::NotifieeOf< IntfStatusLocalDirBase > {};
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, IntfStatusLocalDirBase >;

  static constexpr char koiName[] = "Interface::IntfStatusLocalDirBase";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &IntfStatusLocalDirBase::name )
    };
  }
  template< class Self = IntfStatusLocalDirBase >
  static constexpr auto koiAttributes() {
    return std::tuple{
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 0;
  static Koi::KoiType const _koiType;

 private:
};

/// A new IntfStatusLocalDirBase without a parent.
KOI_PUBLIC Koi::Ptr< IntfStatusLocalDirBase > intfStatusLocalDirBaseFactory(
    Koi::Name const & name );

}  // namespace Interface

// Reflection wrappers: each holds one copy of a value.
namespace _koi_Interface_IntfStatistics {
  using GenericIf_ = Koi::GenericValue< Interface::IntfStatistics >;
}
namespace _koi_Interface_IntfCounterRates {
  using GenericIf_ = Koi::GenericValue< Interface::IntfCounterRates >;
}
