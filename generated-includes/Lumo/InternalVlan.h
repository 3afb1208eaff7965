// InternalVlan.h: written by koigen from InternalVlan.koi. Change that file, not this one.
#pragma once

#include <koi/Value.h>
#include <koi/Entity.h>
#include <Lumo/VlanId.h>

namespace Bridging {

/// Tells the requests of one component apart: at most 10 bytes.
class KOI_PUBLIC InternalVlanKey : public Koi::Wrapped< InternalVlanKey, Koi::String8 > {
 public:
  using Wrapped::Wrapped;

  static constexpr char koiName[] = "Bridging::InternalVlanKey";
  static constexpr char koiField[] = "bytes";
  static constexpr Koi::StringLimit koiRange{ 10, "InternalVlanKey::bytes > 10 not allowed" };
  static Koi::KoiType const _koiType;
};

/// The component that asks: at most 8 bytes.
class KOI_PUBLIC InternalVlanSource : public Koi::Wrapped< InternalVlanSource, Koi::String8 > {
 public:
  using Wrapped::Wrapped;

  static constexpr char koiName[] = "Bridging::InternalVlanSource";
  static constexpr char koiField[] = "bytes";
  static constexpr Koi::StringLimit koiRange{ 8, "InternalVlanSource::bytes > 8 not allowed" };
  static Koi::KoiType const _koiType;
};

/// Names one request, and its answer. Sorted by the key, then by the source.
class KOI_PUBLIC InternalVlanKeySourcePair
    : public Koi::OrderedStructure< InternalVlanKeySourcePair > {
 public:
  InternalVlanKeySourcePair() = default;
  InternalVlanKeySourcePair( InternalVlanKey const & key, InternalVlanSource const & source )
      : _key( key ), _source( source ) {}
  InternalVlanKeySourcePair( Koi::String8::IteratorConst & it,
                             Koi::String8::IteratorConst const & end ) {
    koiParse( it, end );
  }
  InternalVlanKeySourcePair( Koi::NboAttrLog::In * in, Koi::StreamBogon ) { koiRead( in ); }

  /// which of the component's requests
  InternalVlanKey key() const { return _key; }

  /// the component
  InternalVlanSource source() const { return _source; }

  static constexpr char koiName[] = "Bridging::InternalVlanKeySourcePair";
  static constexpr auto koiFields() {
    return std::tuple{
      Koi::field( "key", &InternalVlanKeySourcePair::_key ),
      Koi::field( "source", &InternalVlanKeySourcePair::_source )
    };
  }
  static Koi::KoiType const _koiType;

 private:
  InternalVlanKey _key{};
  InternalVlanSource _source{};
};

/// The requests, and what the administrator allows. Components write config and preferred, the
/// administrator's side writes the lists.
class KOI_PUBLIC InternalVlanConfigDir : public Koi::EntityOf< InternalVlanConfigDir > {
 public:
  explicit InternalVlanConfigDir( Koi::Name const & name );

  class KoiConfig;
  /// the requests: whether a VLAN is needed
  bool config( InternalVlanKeySourcePair const & k ) const;
  Koi::HashMap< KoiConfig, InternalVlanKeySourcePair, bool > const & config() const {
    return config_;
  }
  using ConfigIterator = Koi::HashMap< KoiConfig, InternalVlanKeySourcePair, bool >::Iterator;
  ConfigIterator configIterator();
  void configIs( InternalVlanKeySourcePair const & k, bool v );
  bool configDel( InternalVlanKeySourcePair const & k );
  bool configDel( ConfigIterator const & i );
  void configDelAll();
  void configNotify( InternalVlanKeySourcePair const & k );

  class KoiPreferred;
  /// which VLAN each would like; none for any
  VlanIdOrNone preferred( InternalVlanKeySourcePair const & k ) const;
  Koi::HashMap< KoiPreferred, InternalVlanKeySourcePair, VlanIdOrNone > const & preferred() const {
    return preferred_;
  }
  using PreferredIterator = Koi::HashMap< KoiPreferred, InternalVlanKeySourcePair,
      VlanIdOrNone >::Iterator;
  PreferredIterator preferredIterator();
  void preferredIs( InternalVlanKeySourcePair const & k, VlanIdOrNone const & v );
  VlanIdOrNone preferredDel( InternalVlanKeySourcePair const & k );
  VlanIdOrNone preferredDel( PreferredIterator const & i );
  void preferredDelAll();
  void preferredNotify( InternalVlanKeySourcePair const & k );

  class KoiWhitelist;
  /// what may be handed out, when useWhitelist says so
  bool whitelist( VlanId const & k ) const;
  Koi::RbTreeMap< KoiWhitelist, VlanId, bool > const & whitelist() const { return whitelist_; }
  using WhitelistIterator = Koi::RbTreeMap< KoiWhitelist, VlanId, bool >::Iterator;
  WhitelistIterator whitelistIterator();
  void whitelistIs( VlanId const & k, bool v );
  bool whitelistDel( VlanId const & k );
  bool whitelistDel( WhitelistIterator const & i );
  void whitelistDelAll();
  void whitelistNotify( VlanId const & k );

  class KoiBlacklist;
  /// what may never be handed out
  bool blacklist( VlanId const & k ) const;
  Koi::HashMap< KoiBlacklist, VlanId, bool > const & blacklist() const { return blacklist_; }
  using BlacklistIterator = Koi::HashMap< KoiBlacklist, VlanId, bool >::Iterator;
  BlacklistIterator blacklistIterator();
  void blacklistIs( VlanId const & k, bool v );
  bool blacklistDel( VlanId const & k );
  bool blacklistDel( BlacklistIterator const & i );
  void blacklistDelAll();
  void blacklistNotify( VlanId const & k );

  /// nothing but the whitelist may be handed out
  bool useWhitelist() const { return useWhitelist_; }
  void useWhitelistIs( bool v ) { koiIs( useWhitelist_, v, NotifieeConst::koiOnUseWhitelist ); }

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< InternalVlanConfigDir > {
   public:
    virtual void onConfig() {}
    virtual void onConfig( InternalVlanKeySourcePair const & ) {}
    virtual void onConfigKoiImmediate( InternalVlanKeySourcePair const & k ) {
      koiPass( koiOnConfig ); onConfig( k );
    }
    static constexpr Koi::Callback< NotifieeConst, InternalVlanKeySourcePair const & > koiOnConfig{
      koiFirst + 0, &NotifieeConst::onConfig, &NotifieeConst::onConfigKoiImmediate };

    virtual void onPreferred() {}
    virtual void onPreferred( InternalVlanKeySourcePair const & ) {}
    virtual void onPreferredKoiImmediate( InternalVlanKeySourcePair const & k ) {
      koiPass( koiOnPreferred ); onPreferred( k );
    }
    static constexpr Koi::Callback< NotifieeConst,
        InternalVlanKeySourcePair const & > koiOnPreferred{
      koiFirst + 1, &NotifieeConst::onPreferred, &NotifieeConst::onPreferredKoiImmediate };

    virtual void onWhitelist() {}
    virtual void onWhitelist( VlanId const & ) {}
    virtual void onWhitelistKoiImmediate( VlanId const & k ) {
      koiPass( koiOnWhitelist ); onWhitelist( k );
    }
    static constexpr Koi::Callback< NotifieeConst, VlanId const & > koiOnWhitelist{
      koiFirst + 2, &NotifieeConst::onWhitelist, &NotifieeConst::onWhitelistKoiImmediate };

    virtual void onBlacklist() {}
    virtual void onBlacklist( VlanId const & ) {}
    virtual void onBlacklistKoiImmediate( VlanId const & k ) {
      koiPass( koiOnBlacklist ); onBlacklist( k );
    }
    static constexpr Koi::Callback< NotifieeConst, VlanId const & > koiOnBlacklist{
      koiFirst + 3, &NotifieeConst::onBlacklist, &NotifieeConst::onBlacklistKoiImmediate };

    virtual void onUseWhitelist() {}
    virtual void onUseWhitelistKoiImmediate() { koiPass( koiOnUseWhitelist ); onUseWhitelist(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnUseWhitelist{
      koiFirst + 4, &NotifieeConst::onUseWhitelist, &NotifieeConst::onUseWhitelistKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, InternalVlanConfigDir >;

  static constexpr char koiName[] = "Bridging::InternalVlanConfigDir";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &InternalVlanConfigDir::name )
    };
  }
  template< class Self = InternalVlanConfigDir >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "config", &Self::config_, &Self::configIs, &Self::configDel ),
      Koi::attribute( "preferred", &Self::preferred_, &Self::preferredIs, &Self::preferredDel ),
      Koi::attribute( "whitelist", &Self::whitelist_, &Self::whitelistIs, &Self::whitelistDel ),
      Koi::attribute( "blacklist", &Self::blacklist_, &Self::blacklistIs, &Self::blacklistDel ),
      Koi::attribute( "useWhitelist", &Self::useWhitelist_, &Self::useWhitelistIs )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 5;
  static Koi::KoiType const _koiType;

 private:
  Koi::HashMap< KoiConfig, InternalVlanKeySourcePair, bool > config_;
  Koi::HashMap< KoiPreferred, InternalVlanKeySourcePair, VlanIdOrNone > preferred_;
  Koi::RbTreeMap< KoiWhitelist, VlanId, bool > whitelist_;
  Koi::HashMap< KoiBlacklist, VlanId, bool > blacklist_;
  bool useWhitelist_{};
};

/// A new InternalVlanConfigDir without a parent.
KOI_PUBLIC Koi::Ptr< InternalVlanConfigDir > internalVlanConfigDirFactory( Koi::Name const & name );

/// The answers. The agent that allocates writes them, nobody else.
class KOI_PUBLIC InternalVlanStatusDir : public Koi::EntityOf< InternalVlanStatusDir > {
 public:
  explicit InternalVlanStatusDir( Koi::Name const & name );

  class KoiStatus;
  /// the VLAN of each request; none when there was none left
  VlanIdOrNone status( InternalVlanKeySourcePair const & k ) const;
  Koi::HashMap< KoiStatus, InternalVlanKeySourcePair, VlanIdOrNone > const & status() const {
    return status_;
  }
  using StatusIterator = Koi::HashMap< KoiStatus, InternalVlanKeySourcePair,
      VlanIdOrNone >::Iterator;
  StatusIterator statusIterator();
  void statusIs( InternalVlanKeySourcePair const & k, VlanIdOrNone const & v );
  VlanIdOrNone statusDel( InternalVlanKeySourcePair const & k );
  VlanIdOrNone statusDel( StatusIterator const & i );
  void statusDelAll();
  void statusNotify( InternalVlanKeySourcePair const & k );

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< InternalVlanStatusDir > {
   public:
    virtual void onStatus() {}
    virtual void onStatus( InternalVlanKeySourcePair const & ) {}
    virtual void onStatusKoiImmediate( InternalVlanKeySourcePair const & k ) {
      koiPass( koiOnStatus ); onStatus( k );
    }
    static constexpr Koi::Callback< NotifieeConst, InternalVlanKeySourcePair const & > koiOnStatus{
      koiFirst + 0, &NotifieeConst::onStatus, &NotifieeConst::onStatusKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, InternalVlanStatusDir >;

  static constexpr char koiName[] = "Bridging::InternalVlanStatusDir";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &InternalVlanStatusDir::name )
    };
  }
  template< class Self = InternalVlanStatusDir >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "status", &Self::status_, &Self::statusIs, &Self::statusDel )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 1;
  static Koi::KoiType const _koiType;

 private:
  Koi::HashMap< KoiStatus, InternalVlanKeySourcePair, VlanIdOrNone > status_;
};

/// A new InternalVlanStatusDir without a parent.
KOI_PUBLIC Koi::Ptr< InternalVlanStatusDir > internalVlanStatusDirFactory( Koi::Name const & name );

}  // namespace Bridging

// Reflection wrappers: each holds one copy of a value.
namespace _koi_Bridging_InternalVlanKey {
  using GenericIf_ = Koi::GenericValue< Bridging::InternalVlanKey >;
}
namespace _koi_Bridging_InternalVlanSource {
  using GenericIf_ = Koi::GenericValue< Bridging::InternalVlanSource >;
}
namespace _koi_Bridging_InternalVlanKeySourcePair {
  using GenericIf_ = Koi::GenericValue< Bridging::InternalVlanKeySourcePair >;
}
