// VlanCounters.h: written by koigen from VlanCounters.koi. Change that file, not this one.
#pragma once

#include <koi/Value.h>
#include <koi/RecordBytes.h>
#include <koi/Entity.h>
#include <quill/KoiQuillMap.h>
#include <Lumo/VlanId.h>
#include <quill/Record.h>

namespace Quill::Bridging {

/// How much went through a VLAN.
class KOI_PUBLIC VlanStats : public Koi::Structure< VlanStats > {
 public:
  VlanStats() = default;
  VlanStats( Koi::U64 inOctets, Koi::U64 inUcastPkts, Koi::U64 inMcastPkts, Koi::U64 inBcastPkts,
             Koi::U64 outOctets, Koi::U64 outUcastPkts, Koi::U64 outMcastPkts,
      Koi::U64 outBcastPkts )
      : _inOctets( inOctets ), _inUcastPkts( inUcastPkts ), _inMcastPkts( inMcastPkts ),
        _inBcastPkts( inBcastPkts ), _outOctets( outOctets ), _outUcastPkts( outUcastPkts ),
      _outMcastPkts( outMcastPkts ), _outBcastPkts( outBcastPkts ) {}
  VlanStats( Koi::String8::IteratorConst & it, Koi::String8::IteratorConst const & end ) {
    koiParse( it, end );
  }
  VlanStats( Koi::NboAttrLog::In * in, Koi::StreamBogon ) { koiRead( in ); }

  /// octets received
  Koi::U64 inOctets() const { return _inOctets; }

  /// packets received that were for one station
  Koi::U64 inUcastPkts() const { return _inUcastPkts; }

  /// packets received that were for a group
  Koi::U64 inMcastPkts() const { return _inMcastPkts; }

  /// packets received that were for all stations
  Koi::U64 inBcastPkts() const { return _inBcastPkts; }

  /// octets sent
  Koi::U64 outOctets() const { return _outOctets; }

  /// packets sent to one station
  Koi::U64 outUcastPkts() const { return _outUcastPkts; }

  /// packets sent to a group
  Koi::U64 outMcastPkts() const { return _outMcastPkts; }

  /// packets sent to all stations
  Koi::U64 outBcastPkts() const { return _outBcastPkts; }

  static constexpr char koiName[] = "Quill::Bridging::VlanStats";
  static constexpr auto koiFields() {
    return std::tuple{
      Koi::field( "inOctets", &VlanStats::_inOctets ),
      Koi::field( "inUcastPkts", &VlanStats::_inUcastPkts ),
      Koi::field( "inMcastPkts", &VlanStats::_inMcastPkts ),
      Koi::field( "inBcastPkts", &VlanStats::_inBcastPkts ),
      Koi::field( "outOctets", &VlanStats::_outOctets ),
      Koi::field( "outUcastPkts", &VlanStats::_outUcastPkts ),
      Koi::field( "outMcastPkts", &VlanStats::_outMcastPkts ),
      Koi::field( "outBcastPkts", &VlanStats::_outBcastPkts )
    };
  }
  static Koi::KoiType const _koiType;

 private:
  Koi::U64 _inOctets{};
  Koi::U64 _inUcastPkts{};
  Koi::U64 _inMcastPkts{};
  Koi::U64 _inBcastPkts{};
  Koi::U64 _outOctets{};
  Koi::U64 _outUcastPkts{};
  Koi::U64 _outMcastPkts{};
  Koi::U64 _outBcastPkts{};
};

/// The counts of a VLAN as they lie in a table.
class KOI_PUBLIC VlanCounter : public Koi::Structure< VlanCounter > {
 public:
  VlanCounter() = default;
  VlanCounter( ::Bridging::VlanId const & key, VlanStats const & vlanStats,
               Koi::Seconds statsUpdateTime )
      : _key( key ), _vlanStats( vlanStats ), _statsUpdateTime( statsUpdateTime ) {}
  explicit VlanCounter( ::Bridging::VlanId const & key ) : _key( key ) {}
  VlanCounter( Koi::String8::IteratorConst & it, Koi::String8::IteratorConst const & end ) {
    koiParse( it, end );
  }
  VlanCounter( Koi::NboAttrLog::In * in, Koi::StreamBogon ) { koiRead( in ); }

  /// the VLAN
  ::Bridging::VlanId key() const { return _key; }

  /// the counts
  VlanStats vlanStats() const { return _vlanStats; }

  /// when they were taken
  Koi::Seconds statsUpdateTime() const { return _statsUpdateTime; }

  static constexpr char koiName[] = "Quill::Bridging::VlanCounter";
  static constexpr auto koiFields() {
    return std::tuple{
      Koi::field( "key", &VlanCounter::_key ),
      Koi::field( "vlanStats", &VlanCounter::_vlanStats ),
      Koi::field( "statsUpdateTime", &VlanCounter::_statsUpdateTime )
    };
  }
  static Koi::KoiType const _koiType;

 private:
  ::Bridging::VlanId _key{};
  VlanStats _vlanStats{};
  Koi::Seconds _statsUpdateTime{};
};

/// The counts of all VLANs. The agent that counts writes them.
class KOI_PUBLIC VlanCounterDir : public Koi::EntityOf< VlanCounterDir > {
 public:
  explicit VlanCounterDir( Koi::Name const & name );

  /// what there is now, never less
  VlanCounter vlanCounter( ::Bridging::VlanId const & k ) const;
  KoiQuill::KoiQuillMap< ::Bridging::VlanId, VlanCounter > const & vlanCounter() const {
    return vlanCounter_;
  }
  using VlanCounterIterator = KoiQuill::KoiQuillMap< ::Bridging::VlanId, VlanCounter >::Iterator;
  VlanCounterIterator vlanCounterIterator();
  /// In the process that writes the table: an entry that is there already is no change. Raises
  /// Quill::TableFullException.
  void vlanCounterIs( VlanCounter const & v );
  VlanCounter vlanCounterDel( ::Bridging::VlanId const & k );
  VlanCounter vlanCounterDel( VlanCounterIterator const & i );
  void vlanCounterDelAll();
  /// Opens the value's entry for writing in place: until it is completed readers have it as it was.
  void newVlanCounter( VlanCounter const & v );
  void vlanCounterCommit( VlanCounter const & v );
  void vlanCounterNotify( ::Bridging::VlanId const & k );
  void vlanCounterNotifyCollection();
  /// How this process takes part in the table.
  KoiQuill::KoiQuillMapBase & vlanCounterControl() { return vlanCounter_; }

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< VlanCounterDir > {
   public:
    /// The table is there, and what is in it can be looked up.
    virtual void onVlanCounter() {}
    virtual void onVlanCounter( ::Bridging::VlanId const & ) {}
    virtual void onVlanCounterKoiImmediate() {
      koiPass( koiOnVlanCounterControl ); onVlanCounter();
    }
    virtual void onVlanCounterKoiImmediate( ::Bridging::VlanId const & k ) {
      koiPass( koiOnVlanCounter ); onVlanCounter( k );
    }
    static constexpr Koi::Callback< NotifieeConst, ::Bridging::VlanId const & > koiOnVlanCounter{
      koiFirst + 0, &NotifieeConst::onVlanCounter, &NotifieeConst::onVlanCounterKoiImmediate };
    static constexpr Koi::Callback< NotifieeConst > koiOnVlanCounterControl{
      koiFirst + 1, &NotifieeConst::onVlanCounter, &NotifieeConst::onVlanCounterKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, VlanCounterDir >;

  static constexpr char koiName[] = "Quill::Bridging::VlanCounterDir";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &VlanCounterDir::name )
    };
  }
  template< class Self = VlanCounterDir >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::table( "vlanCounter", &Self::vlanCounter_ ),
      Koi::tableControl( "vlanCounterControl", &Self::vlanCounter_ )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 2;
  static Koi::KoiType const _koiType;

 private:
  KoiQuill::KoiQuillMap< ::Bridging::VlanId, VlanCounter > vlanCounter_{
      *this, "vlanCounter", NotifieeConst::koiOnVlanCounter,
      NotifieeConst::koiOnVlanCounterControl };
};

/// A new VlanCounterDir without a parent.
KOI_PUBLIC Koi::Ptr< VlanCounterDir > vlanCounterDirFactory( Koi::Name const & name );

/// What the counts were when a user cleared them last. The agent that counts writes them.
class KOI_PUBLIC VlanCounterSnapshotDir : public Koi::EntityOf< VlanCounterSnapshotDir > {
 public:
  explicit VlanCounterSnapshotDir( Koi::Name const & name );

  /// of the VLANs that were cleared
  VlanCounter vlanCounterSnapshot( ::Bridging::VlanId const & k ) const;
  KoiQuill::KoiQuillMap< ::Bridging::VlanId, VlanCounter > const & vlanCounterSnapshot() const {
    return vlanCounterSnapshot_;
  }
  using VlanCounterSnapshotIterator = KoiQuill::KoiQuillMap< ::Bridging::VlanId,
      VlanCounter >::Iterator;
  VlanCounterSnapshotIterator vlanCounterSnapshotIterator();
  /// In the process that writes the table: an entry that is there already is no change. Raises
  /// Quill::TableFullException.
  void vlanCounterSnapshotIs( VlanCounter const & v );
  VlanCounter vlanCounterSnapshotDel( ::Bridging::VlanId const & k );
  VlanCounter vlanCounterSnapshotDel( VlanCounterSnapshotIterator const & i );
  void vlanCounterSnapshotDelAll();
  /// Opens the value's entry for writing in place: until it is completed readers have it as it was.
  void newVlanCounterSnapshot( VlanCounter const & v );
  void vlanCounterSnapshotCommit( VlanCounter const & v );
  void vlanCounterSnapshotNotify( ::Bridging::VlanId const & k );
  void vlanCounterSnapshotNotifyCollection();
  /// How this process takes part in the table.
  KoiQuill::KoiQuillMapBase & vlanCounterSnapshotControl() { return vlanCounterSnapshot_; }

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< VlanCounterSnapshotDir > {
   public:
    /// The table is there, and what is in it can be looked up.
    virtual void onVlanCounterSnapshot() {}
    virtual void onVlanCounterSnapshot( ::Bridging::VlanId const & ) {}
    virtual void onVlanCounterSnapshotKoiImmediate() {
      koiPass( koiOnVlanCounterSnapshotControl ); onVlanCounterSnapshot();
    }
    virtual void onVlanCounterSnapshotKoiImmediate( ::Bridging::VlanId const & k ) {
      koiPass( koiOnVlanCounterSnapshot ); onVlanCounterSnapshot( k );
    }
    static constexpr Koi::Callback< NotifieeConst,
        ::Bridging::VlanId const & > koiOnVlanCounterSnapshot{
      koiFirst + 0, &NotifieeConst::onVlanCounterSnapshot,
          &NotifieeConst::onVlanCounterSnapshotKoiImmediate };
    static constexpr Koi::Callback< NotifieeConst > koiOnVlanCounterSnapshotControl{
      koiFirst + 1, &NotifieeConst::onVlanCounterSnapshot,
          &NotifieeConst::onVlanCounterSnapshotKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, VlanCounterSnapshotDir >;

  static constexpr char koiName[] = "Quill::Bridging::VlanCounterSnapshotDir";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &VlanCounterSnapshotDir::name )
    };
  }
  template< class Self = VlanCounterSnapshotDir >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::table( "vlanCounterSnapshot", &Self::vlanCounterSnapshot_ ),
      Koi::tableControl( "vlanCounterSnapshotControl", &Self::vlanCounterSnapshot_ )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 2;
  static Koi::KoiType const _koiType;

 private:
  KoiQuill::KoiQuillMap< ::Bridging::VlanId, VlanCounter > vlanCounterSnapshot_{
      *this, "vlanCounterSnapshot", NotifieeConst::koiOnVlanCounterSnapshot,
      NotifieeConst::koiOnVlanCounterSnapshotControl };
};

/// A new VlanCounterSnapshotDir without a parent.
KOI_PUBLIC Koi::Ptr< VlanCounterSnapshotDir > vlanCounterSnapshotDirFactory(
    Koi::Name const & name );

}  // namespace Quill::Bridging

namespace Bridging {

/// Which counters are to be cleared. Who asks adds an entry, and it is done when the entry is gone.
class KOI_PUBLIC VlanCountersCliReq : public Koi::EntityOf< VlanCountersCliReq > {
 public:
  explicit VlanCountersCliReq( Koi::Name const & name );

  class KoiClearCountersRequest;
  /// the VLANs whose counters a user asked to clear
  bool clearCountersRequest( VlanId const & k ) const;
  Koi::HashMap< KoiClearCountersRequest, VlanId, bool > const & clearCountersRequest() const {
    return clearCountersRequest_;
  }
  using ClearCountersRequestIterator = Koi::HashMap< KoiClearCountersRequest, VlanId,
      bool >::Iterator;
  ClearCountersRequestIterator clearCountersRequestIterator();
  void clearCountersRequestIs( VlanId const & k, bool v );
  bool clearCountersRequestDel( VlanId const & k );
  bool clearCountersRequestDel( ClearCountersRequestIterator const & i );
  void clearCountersRequestDelAll();
  void clearCountersRequestNotify( VlanId const & k );

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< VlanCountersCliReq > {
   public:
    virtual void onClearCountersRequest() {}
    virtual void onClearCountersRequest( VlanId const & ) {}
    virtual void onClearCountersRequestKoiImmediate( VlanId const & k ) {
      koiPass( koiOnClearCountersRequest ); onClearCountersRequest( k );
    }
    static constexpr Koi::Callback< NotifieeConst, VlanId const & > koiOnClearCountersRequest{
      koiFirst + 0, &NotifieeConst::onClearCountersRequest,
          &NotifieeConst::onClearCountersRequestKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, VlanCountersCliReq >;

  static constexpr char koiName[] = "Bridging::VlanCountersCliReq";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &VlanCountersCliReq::name )
    };
  }
  template< class Self = VlanCountersCliReq >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "clearCountersRequest", &Self::clearCountersRequest_,
                      &Self::clearCountersRequestIs, &Self::clearCountersRequestDel )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 1;
  static Koi::KoiType const _koiType;

 private:
  Koi::HashMap< KoiClearCountersRequest, VlanId, bool > clearCountersRequest_;
};

/// A new VlanCountersCliReq without a parent.
KOI_PUBLIC Koi::Ptr< VlanCountersCliReq > vlanCountersCliReqFactory( Koi::Name const & name );

}  // namespace Bridging

// Reflection wrappers: each holds one copy of a value.
namespace _koi_Quill_Bridging_VlanStats {
  using GenericIf_ = Koi::GenericValue< Quill::Bridging::VlanStats >;
}
namespace _koi_Quill_Bridging_VlanCounter {
  using GenericIf_ = Koi::GenericValue< Quill::Bridging::VlanCounter >;
}

/// How a VlanCounter lies in a slot: 76 bytes, of which the key takes the first 4.
///
///        0  key                       2
///        4  vlanStats.inOctets        8
///       12  vlanStats.inUcastPkts     8
///       20  vlanStats.inMcastPkts     8
///       28  vlanStats.inBcastPkts     8
///       36  vlanStats.outOctets       8
///       44  vlanStats.outUcastPkts    8
///       52  vlanStats.outMcastPkts    8
///       60  vlanStats.outBcastPkts    8
///       68  statsUpdateTime           8
///
/// What is read is what lies there, in its range or not: a slot that was never used has a key of
/// zeros.
template<>
struct Quill::Record< Quill::Bridging::VlanCounter > {
  using Value = ::Quill::Bridging::VlanCounter;
  using Key = ::Bridging::VlanId;

  static constexpr char valueType[] = "Quill::Bridging::VlanCounter";
  static constexpr Koi::U32 keySize = 4;
  static constexpr Koi::U32 valueSize = 76;

  /// Fills the words of a key.
  static void putKey( Key const & key, Koi::U32 * words ) {
    std::memset( words, 0, keySize );
    Koi::recordPut< 0, 2 >( words, key );
  }
  /// Fills the words of a slot.
  static void put( Value const & value, Koi::U32 * words ) {
    putKey( value.key(), words );
    Koi::recordPut< 4, 8 >( words, value.vlanStats().inOctets() );
    Koi::recordPut< 12, 8 >( words, value.vlanStats().inUcastPkts() );
    Koi::recordPut< 20, 8 >( words, value.vlanStats().inMcastPkts() );
    Koi::recordPut< 28, 8 >( words, value.vlanStats().inBcastPkts() );
    Koi::recordPut< 36, 8 >( words, value.vlanStats().outOctets() );
    Koi::recordPut< 44, 8 >( words, value.vlanStats().outUcastPkts() );
    Koi::recordPut< 52, 8 >( words, value.vlanStats().outMcastPkts() );
    Koi::recordPut< 60, 8 >( words, value.vlanStats().outBcastPkts() );
    Koi::recordPut< 68, 8 >( words, value.statsUpdateTime() );
  }
  /// Out of the words of a slot.
  static Key key( Koi::U32 const * words ) {
    return Koi::recordGet< ::Bridging::VlanId, 0, 2 >( words );
  }
  static Value value( Koi::U32 const * words ) {
    return Value(
        key( words ),
        ::Quill::Bridging::VlanStats(
            Koi::recordGet< Koi::U64, 4, 8 >( words ),
            Koi::recordGet< Koi::U64, 12, 8 >( words ),
            Koi::recordGet< Koi::U64, 20, 8 >( words ),
            Koi::recordGet< Koi::U64, 28, 8 >( words ),
            Koi::recordGet< Koi::U64, 36, 8 >( words ),
            Koi::recordGet< Koi::U64, 44, 8 >( words ),
            Koi::recordGet< Koi::U64, 52, 8 >( words ),
            Koi::recordGet< Koi::U64, 60, 8 >( words ) ),
        Koi::recordGet< Koi::Seconds, 68, 8 >( words ) );
  }
  /// Of the key in these words.
  static Koi::U32 hash( Koi::U32 const * words, Koi::U32 seed ) {
    return BucketHash< Key >::of( key( words ), seed );
  }
};
