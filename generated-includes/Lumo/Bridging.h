// Bridging.h: written by koigen from Bridging.koi. Change that file, not this one.
#pragma once

#include <koi/Value.h>
#include <koi/Entity.h>
#include <Lumo/BridgingHostEntryType.h>
#include <wirex/EthAddr.h>
#include <wirex/IntfId.h>

namespace Bridging {

/// The number of a filtering database. Every 16-bit number is one.
class KOI_PUBLIC Fid : public Koi::Wrapped< Fid, Koi::U16 > {
 public:
  using Wrapped::Wrapped;

  static constexpr char koiName[] = "Bridging::Fid";
  static constexpr char koiField[] = "value";
  static Koi::KoiType const _koiType;
};

/// One learned MAC address: the key within its filtering database, and where it lives.
class KOI_PUBLIC LearnedHost : public Koi::Structure< LearnedHost > {
 public:
  LearnedHost() = default;
  LearnedHost( Wirex::EthAddr const & address, Wirex::IntfId const & intf, Koi::U32 moves,
               Koi::Seconds lastMoveTime, EntryType entryType )
      : _address( address ), intf_( intf ), moves_( moves ), lastMoveTime_( lastMoveTime ),
        entryType_( entryType ) {}
  explicit LearnedHost( Wirex::EthAddr const & address ) : _address( address ) {}
  LearnedHost( Koi::String8::IteratorConst & it, Koi::String8::IteratorConst const & end ) {
    koiParse( it, end );
  }
  LearnedHost( Koi::NboAttrLog::In * in, Koi::StreamBogon ) { koiRead( in ); }

  /// the MAC address
  Wirex::EthAddr address() const { return _address; }

  /// the interface it was learned on
  Wirex::IntfId intf() const { return intf_; }
  void intfIs( Wirex::IntfId const & v ) { intf_ = v; }

  /// how many times it has moved between interfaces
  Koi::U32 moves() const { return moves_; }
  void movesIs( Koi::U32 v ) { moves_ = v; }

  /// when it last moved, in seconds
  Koi::Seconds lastMoveTime() const { return lastMoveTime_; }
  void lastMoveTimeIs( Koi::Seconds v ) { lastMoveTime_ = v; }

  /// how the entry came to be
  EntryType entryType() const { return entryType_; }
  void entryTypeIs( EntryType v ) { entryType_ = v; }

  static constexpr char koiName[] = "Bridging::LearnedHost";
  static constexpr auto koiFields() {
    return std::tuple{
      Koi::field( "address", &LearnedHost::_address ),
      Koi::field( "intf", &LearnedHost::intf_ ),
      Koi::field( "moves", &LearnedHost::moves_ ),
      Koi::field( "lastMoveTime", &LearnedHost::lastMoveTime_ ),
      Koi::field( "entryType", &LearnedHost::entryType_ )
    };
  }
  static Koi::KoiType const _koiType;

 private:
  Wirex::EthAddr _address{};
  Wirex::IntfId intf_{};
  Koi::U32 moves_{};
  Koi::Seconds lastMoveTime_{};
  EntryType entryType_{};
};

/// What is known of one filtering database. The agent that learns writes it; anybody may observe.
class KOI_PUBLIC FdbStatus : public Koi::EntityOf< FdbStatus > {
 public:
  explicit FdbStatus( Fid const & fid ) : EntityOf( Koi::nameOf( fid ) ), _fid( fid ) {}

  /// the filtering database
  Fid fid() const { return _fid; }

  class KoiLearnedHost;
  /// its learned MAC addresses
  LearnedHost learnedHost( Wirex::EthAddr const & k ) const { return learnedHost_.value( k ); }
  Koi::HashMap< KoiLearnedHost, Wirex::EthAddr, LearnedHost > const & learnedHost() const {
    return learnedHost_;
  }
  using LearnedHostIterator = Koi::HashMap< KoiLearnedHost, Wirex::EthAddr, LearnedHost >::Iterator;
  LearnedHostIterator learnedHostIterator() { return learnedHost_.koiIterator(); }
  void learnedHostIs( LearnedHost const & v ) {
    koiIs( learnedHost_, v.address(), v, NotifieeConst::koiOnLearnedHost );
  }
  LearnedHost learnedHostDel( Wirex::EthAddr const & k ) {
    return koiDel( learnedHost_, k, NotifieeConst::koiOnLearnedHost );
  }
  LearnedHost learnedHostDel( LearnedHostIterator const & i ) {
    return koiDel( learnedHost_, i, NotifieeConst::koiOnLearnedHost );
  }
  void learnedHostDelAll() { koiDelAll( learnedHost_, NotifieeConst::koiOnLearnedHost ); }
  void learnedHostNotify( Wirex::EthAddr const & k ) {
    koiNotify( NotifieeConst::koiOnLearnedHost, k );
  }

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< FdbStatus > {
   public:
    virtual void onLearnedHost() {}
    virtual void onLearnedHost( Wirex::EthAddr const & ) {}
    virtual void onLearnedHostKoiImmediate( Wirex::EthAddr const & k ) {
      koiPass( koiOnLearnedHost ); onLearnedHost( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Wirex::EthAddr const & > koiOnLearnedHost{
      koiFirst + 1, &NotifieeConst::onLearnedHost, &NotifieeConst::onLearnedHostKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, FdbStatus >;

  static constexpr char koiName[] = "Bridging::FdbStatus";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_fid", &FdbStatus::fid )
    };
  }
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "fid", &FdbStatus::_fid ),
      Koi::attribute( "learnedHost", &FdbStatus::learnedHost_, &FdbStatus::learnedHostIs,
                      &FdbStatus::learnedHostDel )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 2;
  static Koi::KoiType const _koiType;

 private:
  Fid const _fid;
  Koi::HashMap< KoiLearnedHost, Wirex::EthAddr, LearnedHost > learnedHost_;
};

/// A new FdbStatus without a parent.
inline Koi::Ptr< FdbStatus > fdbStatusFactory( Fid const & fid ) { return new FdbStatus( fid ); }

}  // namespace Bridging

// Reflection wrappers: each holds one copy of a value.
namespace _koi_Bridging_Fid { using GenericIf_ = Koi::GenericValue< Bridging::Fid >; }
namespace _koi_Bridging_LearnedHost {
  using GenericIf_ = Koi::GenericValue< Bridging::LearnedHost >;
}
