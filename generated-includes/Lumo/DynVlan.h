// DynVlan.h: written by koigen from DynVlan.koi. Change that file, not this one.
#pragma once

#include <koi/Value.h>
#include <koi/Entity.h>
#include <Lumo/VlanId.h>
#include <wirex/IntfId.h>

namespace Bridging::Input {

/// Who wants one VLAN to exist.
class KOI_PUBLIC DynVlanSrc : public Koi::EntityOf< DynVlanSrc > {
 public:
  explicit DynVlanSrc( VlanId const & vlanId );

  /// the VLAN
  VlanId vlanId() const { return _vlanId; }

  class KoiVlanSource;
  /// the names of those who want it
  bool vlanSource( Koi::String8 const & k ) const;
  Koi::RbTreeMap< KoiVlanSource, Koi::String8, bool > const & vlanSource() const {
    return vlanSource_;
  }
  using VlanSourceIterator = Koi::RbTreeMap< KoiVlanSource, Koi::String8, bool >::Iterator;
  VlanSourceIterator vlanSourceIterator();
  void vlanSourceIs( Koi::String8 const & k, bool v );
  bool vlanSourceDel( Koi::String8 const & k );
  bool vlanSourceDel( VlanSourceIterator const & i );
  void vlanSourceDelAll();
  void vlanSourceNotify( Koi::String8 const & k );

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< DynVlanSrc > {
   public:
    virtual void onVlanSource() {}
    virtual void onVlanSource( Koi::String8 const & ) {}
    virtual void onVlanSourceKoiImmediate( Koi::String8 const & k ) {
      koiPass( koiOnVlanSource ); onVlanSource( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Koi::String8 const & > koiOnVlanSource{
      koiFirst + 1, &NotifieeConst::onVlanSource, &NotifieeConst::onVlanSourceKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, DynVlanSrc >;

  static constexpr char koiName[] = "Bridging::Input::DynVlanSrc";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_vlanId", &DynVlanSrc::vlanId )
    };
  }
  template< class Self = DynVlanSrc >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "vlanId", &Self::_vlanId ),
      Koi::attribute( "vlanSource", &Self::vlanSource_, &Self::vlanSourceIs, &Self::vlanSourceDel )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 2;
  static Koi::KoiType const _koiType;

 private:
  VlanId const _vlanId;
  Koi::RbTreeMap< KoiVlanSource, Koi::String8, bool > vlanSource_;
};

/// A new DynVlanSrc without a parent.
KOI_PUBLIC Koi::Ptr< DynVlanSrc > dynVlanSrcFactory( VlanId const & vlanId );

/// The VLANs that agents want to exist.
class KOI_PUBLIC DynVlanSrcTable : public Koi::EntityOf< DynVlanSrcTable > {
 public:
  explicit DynVlanSrcTable( Koi::Name const & name );

  class KoiDynVlanSrc;
  /// by VLAN
  Koi::Ptr< DynVlanSrc > dynVlanSrc( VlanId const & k ) const;
  Koi::HashMap< KoiDynVlanSrc, VlanId, Koi::Owned< DynVlanSrc > > const & dynVlanSrc() const {
    return dynVlanSrc_;
  }
  using DynVlanSrcIterator = Koi::HashMap< KoiDynVlanSrc, VlanId,
      Koi::Owned< DynVlanSrc > >::Iterator;
  DynVlanSrcIterator dynVlanSrcIterator();
  /// The one of that key, made when there is none.
  Koi::Ptr< DynVlanSrc > dynVlanSrcIs( VlanId const & k );
  Koi::Ptr< DynVlanSrc > dynVlanSrcDel( VlanId const & k );
  Koi::Ptr< DynVlanSrc > dynVlanSrcDel( DynVlanSrcIterator const & i );
  void dynVlanSrcDelAll();
  void dynVlanSrcNotify( VlanId const & k );

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< DynVlanSrcTable > {
   public:
    virtual void onDynVlanSrc() {}
    virtual void onDynVlanSrc( VlanId const & ) {}
    virtual void onDynVlanSrcKoiImmediate( VlanId const & k ) {
      koiPass( koiOnDynVlanSrc ); onDynVlanSrc( k );
    }
    static constexpr Koi::Callback< NotifieeConst, VlanId const & > koiOnDynVlanSrc{
      koiFirst + 0, &NotifieeConst::onDynVlanSrc, &NotifieeConst::onDynVlanSrcKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, DynVlanSrcTable >;

  static constexpr char koiName[] = "Bridging::Input::DynVlanSrcTable";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &DynVlanSrcTable::name )
    };
  }
  template< class Self = DynVlanSrcTable >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "dynVlanSrc", &Self::dynVlanSrc_, &Self::dynVlanSrcIs, &Self::dynVlanSrcDel )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 1;
  static Koi::KoiType const _koiType;

 private:
  Koi::HashMap< KoiDynVlanSrc, VlanId, Koi::Owned< DynVlanSrc > > dynVlanSrc_;
};

/// A new DynVlanSrcTable without a parent.
KOI_PUBLIC Koi::Ptr< DynVlanSrcTable > dynVlanSrcTableFactory( Koi::Name const & name );

/// A set of VLANs that one agent wants to exist.
class KOI_PUBLIC VlanIdSet : public Koi::EntityOf< VlanIdSet > {
 public:
  explicit VlanIdSet( Koi::Name const & name );

  /// the VLANs, a range list such as "1-4094"
  Koi::String8 vlans() const { return vlans_; }
  void vlansIs( Koi::String8 const & v ) { koiIs( vlans_, v, NotifieeConst::koiOnVlans ); }

  class KoiTrunkGroup;
  /// the trunk groups that they belong to
  bool trunkGroup( Koi::String8 const & k ) const;
  Koi::HashMap< KoiTrunkGroup, Koi::String8, bool > const & trunkGroup() const {
    return trunkGroup_;
  }
  using TrunkGroupIterator = Koi::HashMap< KoiTrunkGroup, Koi::String8, bool >::Iterator;
  TrunkGroupIterator trunkGroupIterator();
  void trunkGroupIs( Koi::String8 const & k, bool v );
  bool trunkGroupDel( Koi::String8 const & k );
  bool trunkGroupDel( TrunkGroupIterator const & i );
  void trunkGroupDelAll();
  void trunkGroupNotify( Koi::String8 const & k );

  /// a low priority
  static constexpr Koi::U32 configPriorityLow() { return 1; }

  /// the usual priority
  static constexpr Koi::U32 configPriorityMedium() { return 100; }

  /// a high priority
  static constexpr Koi::U32 configPriorityHigh() { return 1000; }

  /// against other sources; the highest prevails
  Koi::U32 configPriority() const { return configPriority_; }
  void configPriorityIs( Koi::U32 v ) {
    koiIs( configPriority_, v, NotifieeConst::koiOnConfigPriority );
  }

  /// tell the peer of a pair of switches
  bool mlagSync() const { return mlagSync_; }
  void mlagSyncIs( bool v ) { koiIs( mlagSync_, v, NotifieeConst::koiOnMlagSync ); }

  /// Makes it what a new one is: vlans, then trunkGroup, configPriority and mlagSync. Observers are
  /// told of each change.
  void reset();

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< VlanIdSet > {
   public:
    virtual void onVlans() {}
    virtual void onVlansKoiImmediate() { koiPass( koiOnVlans ); onVlans(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnVlans{
      koiFirst + 0, &NotifieeConst::onVlans, &NotifieeConst::onVlansKoiImmediate };

    virtual void onTrunkGroup() {}
    virtual void onTrunkGroup( Koi::String8 const & ) {}
    virtual void onTrunkGroupKoiImmediate( Koi::String8 const & k ) {
      koiPass( koiOnTrunkGroup ); onTrunkGroup( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Koi::String8 const & > koiOnTrunkGroup{
      koiFirst + 1, &NotifieeConst::onTrunkGroup, &NotifieeConst::onTrunkGroupKoiImmediate };

    virtual void onConfigPriority() {}
    virtual void onConfigPriorityKoiImmediate() {
      koiPass( koiOnConfigPriority ); onConfigPriority();
    }
    static constexpr Koi::Callback< NotifieeConst > koiOnConfigPriority{
      koiFirst + 5, &NotifieeConst::onConfigPriority,
          &NotifieeConst::onConfigPriorityKoiImmediate };

    virtual void onMlagSync() {}
    virtual void onMlagSyncKoiImmediate() { koiPass( koiOnMlagSync ); onMlagSync(); }
    static constexpr Koi::Callback< NotifieeConst > koiOnMlagSync{
      koiFirst + 6, &NotifieeConst::onMlagSync, &NotifieeConst::onMlagSyncKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, VlanIdSet >;

  static constexpr char koiName[] = "Bridging::Input::VlanIdSet";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &VlanIdSet::name )
    };
  }
  template< class Self = VlanIdSet >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "vlans", &Self::vlans_, &Self::vlansIs ),
      Koi::attribute( "trunkGroup", &Self::trunkGroup_, &Self::trunkGroupIs, &Self::trunkGroupDel ),
      Koi::constant< Self >( "configPriorityLow", &Self::configPriorityLow ),
      Koi::constant< Self >( "configPriorityMedium", &Self::configPriorityMedium ),
      Koi::constant< Self >( "configPriorityHigh", &Self::configPriorityHigh ),
      Koi::attribute( "configPriority", &Self::configPriority_, &Self::configPriorityIs ),
      Koi::attribute( "mlagSync", &Self::mlagSync_, &Self::mlagSyncIs )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 7;
  static Koi::KoiType const _koiType;

 private:
  Koi::String8 vlans_{};
  Koi::HashMap< KoiTrunkGroup, Koi::String8, bool > trunkGroup_;
  Koi::U32 configPriority_ = configPriorityMedium();
  bool mlagSync_ = true;
};

/// A new VlanIdSet without a parent.
KOI_PUBLIC Koi::Ptr< VlanIdSet > vlanIdSetFactory( Koi::Name const & name );

/// The interfaces of one trunk group.
class KOI_PUBLIC TrunkGroup : public Koi::EntityOf< TrunkGroup > {
 public:
  explicit TrunkGroup( Koi::String8 const & trunkGroupName );

  /// what it is called
  Koi::String8 trunkGroupName() const { return _trunkGroupName; }

  class KoiIntfList;
  /// its interfaces, an entry each
  bool intfList( Wirex::IntfId const & k ) const;
  Koi::HashMap< KoiIntfList, Wirex::IntfId, bool > const & intfList() const { return intfList_; }
  using IntfListIterator = Koi::HashMap< KoiIntfList, Wirex::IntfId, bool >::Iterator;
  IntfListIterator intfListIterator();
  void intfListIs( Wirex::IntfId const & k, bool v );
  bool intfListDel( Wirex::IntfId const & k );
  bool intfListDel( IntfListIterator const & i );
  void intfListDelAll();
  void intfListNotify( Wirex::IntfId const & k );

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< TrunkGroup > {
   public:
    virtual void onIntfList() {}
    virtual void onIntfList( Wirex::IntfId const & ) {}
    virtual void onIntfListKoiImmediate( Wirex::IntfId const & k ) {
      koiPass( koiOnIntfList ); onIntfList( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Wirex::IntfId const & > koiOnIntfList{
      koiFirst + 1, &NotifieeConst::onIntfList, &NotifieeConst::onIntfListKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, TrunkGroup >;

  static constexpr char koiName[] = "Bridging::Input::TrunkGroup";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_trunkGroupName", &TrunkGroup::trunkGroupName )
    };
  }
  template< class Self = TrunkGroup >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "trunkGroupName", &Self::_trunkGroupName ),
      Koi::attribute( "intfList", &Self::intfList_, &Self::intfListIs, &Self::intfListDel )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 2;
  static Koi::KoiType const _koiType;

 private:
  Koi::String8 const _trunkGroupName;
  Koi::HashMap< KoiIntfList, Wirex::IntfId, bool > intfList_;
};

/// A new TrunkGroup without a parent.
KOI_PUBLIC Koi::Ptr< TrunkGroup > trunkGroupFactory( Koi::String8 const & trunkGroupName );

/// The VLANs that interfaces and trunk groups allow.
class KOI_PUBLIC AllowedVlans : public Koi::EntityOf< AllowedVlans > {
 public:
  explicit AllowedVlans( Koi::Name const & name );

  class KoiVlans;
  /// by interface, a range list
  Koi::String8 vlans( Wirex::IntfId const & k ) const;
  Koi::HashMap< KoiVlans, Wirex::IntfId, Koi::String8 > const & vlans() const { return vlans_; }
  using VlansIterator = Koi::HashMap< KoiVlans, Wirex::IntfId, Koi::String8 >::Iterator;
  VlansIterator vlansIterator();
  void vlansIs( Wirex::IntfId const & k, Koi::String8 const & v );
  Koi::String8 vlansDel( Wirex::IntfId const & k );
  Koi::String8 vlansDel( VlansIterator const & i );
  void vlansDelAll();
  void vlansNotify( Wirex::IntfId const & k );

  class KoiTrunkGroup;
  /// by name
  Koi::Ptr< TrunkGroup > trunkGroup( Koi::String8 const & k ) const;
  Koi::HashMap< KoiTrunkGroup, Koi::String8, Koi::Owned< TrunkGroup > > const & trunkGroup() const {
    return trunkGroup_;
  }
  using TrunkGroupIterator = Koi::HashMap< KoiTrunkGroup, Koi::String8,
      Koi::Owned< TrunkGroup > >::Iterator;
  TrunkGroupIterator trunkGroupIterator();
  /// The one of that key, made when there is none.
  Koi::Ptr< TrunkGroup > trunkGroupIs( Koi::String8 const & k );
  Koi::Ptr< TrunkGroup > trunkGroupDel( Koi::String8 const & k );
  Koi::Ptr< TrunkGroup > trunkGroupDel( TrunkGroupIterator const & i );
  void trunkGroupDelAll();
  void trunkGroupNotify( Koi::String8 const & k );

  /// Deletes all vlans, then all trunk groups.
  void reset();

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< AllowedVlans > {
   public:
    virtual void onVlans() {}
    virtual void onVlans( Wirex::IntfId const & ) {}
    virtual void onVlansKoiImmediate( Wirex::IntfId const & k ) {
      koiPass( koiOnVlans ); onVlans( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Wirex::IntfId const & > koiOnVlans{
      koiFirst + 0, &NotifieeConst::onVlans, &NotifieeConst::onVlansKoiImmediate };

    virtual void onTrunkGroup() {}
    virtual void onTrunkGroup( Koi::String8 const & ) {}
    virtual void onTrunkGroupKoiImmediate( Koi::String8 const & k ) {
      koiPass( koiOnTrunkGroup ); onTrunkGroup( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Koi::String8 const & > koiOnTrunkGroup{
      koiFirst + 1, &NotifieeConst::onTrunkGroup, &NotifieeConst::onTrunkGroupKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, AllowedVlans >;

  static constexpr char koiName[] = "Bridging::Input::AllowedVlans";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &AllowedVlans::name )
    };
  }
  template< class Self = AllowedVlans >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "vlans", &Self::vlans_, &Self::vlansIs, &Self::vlansDel ),
      Koi::attribute( "trunkGroup", &Self::trunkGroup_, &Self::trunkGroupIs, &Self::trunkGroupDel )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 2;
  static Koi::KoiType const _koiType;

 private:
  Koi::HashMap< KoiVlans, Wirex::IntfId, Koi::String8 > vlans_;
  Koi::HashMap< KoiTrunkGroup, Koi::String8, Koi::Owned< TrunkGroup > > trunkGroup_;
};

/// A new AllowedVlans without a parent.
KOI_PUBLIC Koi::Ptr< AllowedVlans > allowedVlansFactory( Koi::Name const & name );

}  // namespace Bridging::Input
