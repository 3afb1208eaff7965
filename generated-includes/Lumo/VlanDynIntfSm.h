// VlanDynIntfSm.h: written by koigen from VlanDynIntfSm.koi. Change that file, not this one.
#pragma once

#include <koi/Value.h>
#include <koi/Entity.h>
#include <koi/Reactor.h>
#include <Coredb/Dir.h>
#include <wirex/IntfId.h>
#include <Lumo/VlanIntf.h>

namespace Lumo { class DynVlanIntfReactor; }

namespace Lumo {

/// Who asks for a VLAN interface, and how strongly. In order the one that prevails comes first: the
/// higher priority, and of one priority the source whose name is smaller by its bytes.
class KOI_PUBLIC SourcePriorityPair : public Koi::Structure< SourcePriorityPair > {
 public:
  SourcePriorityPair() = default;
  SourcePriorityPair( Koi::String8 const & source, Koi::I32 priority )
      : _source( source ), _priority( priority ) {}
  SourcePriorityPair( Koi::String8::IteratorConst & it, Koi::String8::IteratorConst const & end ) {
    koiParse( it, end );
  }
  SourcePriorityPair( Koi::NboAttrLog::In * in, Koi::StreamBogon ) { koiRead( in ); }

  /// what its configuration is called in the directory of sources; empty: nobody
  Koi::String8 source() const { return _source; }

  /// the number of its Interface::VlanIntfConfigPriority
  Koi::I32 priority() const { return _priority; }

  /// Whether the other one prevails.
  bool isLowerPriority( SourcePriorityPair const & other ) const;

  static constexpr char koiName[] = "Lumo::SourcePriorityPair";
  static constexpr auto koiFields() {
    return std::tuple{
      Koi::field( "source", &SourcePriorityPair::_source ),
      Koi::field( "priority", &SourcePriorityPair::_priority )
    };
  }
  static Koi::KoiType const _koiType;

  /// Whether it comes before the other one in the order, by hand.
  bool koiIsBefore( SourcePriorityPair const & other ) const;
  friend bool operator<( SourcePriorityPair const & a, SourcePriorityPair const & b ) {
    return a.koiIsBefore( b );
  }
  friend bool operator>( SourcePriorityPair const & a, SourcePriorityPair const & b ) {
    return b.koiIsBefore( a );
  }
  friend bool operator<=( SourcePriorityPair const & a, SourcePriorityPair const & b ) {
    return !b.koiIsBefore( a );
  }
  friend bool operator>=( SourcePriorityPair const & a, SourcePriorityPair const & b ) {
    return !a.koiIsBefore( b );
  }

 private:
  Koi::String8 _source{};
  Koi::I32 _priority{};
};

/// The VLAN interfaces that sources ask for, as they are to be. Who applies them watches it, and
/// may
/// set intfConfigError of an interface that has a sourcePriority, never of another one.
class KOI_PUBLIC DynVlanIntfList : public Koi::EntityOf< DynVlanIntfList > {
 public:
  explicit DynVlanIntfList( Koi::Name const & name );

  class KoiIntfConfig;
  /// of the source that prevails, when it is dynamic and not of the "cli"
  Koi::Ptr< Interface::VlanIntfConfig > intfConfig( Wirex::IntfId const & k ) const;
  Koi::HashMap< KoiIntfConfig, Wirex::IntfId,
      Koi::Ptr< Interface::VlanIntfConfig > > const & intfConfig() const {
    return intfConfig_;
  }
  using IntfConfigIterator = Koi::HashMap< KoiIntfConfig, Wirex::IntfId,
      Koi::Ptr< Interface::VlanIntfConfig > >::Iterator;
  IntfConfigIterator intfConfigIterator();
  void intfConfigIs( Wirex::IntfId const & k, Koi::Ptr< Interface::VlanIntfConfig > const & v );
  Koi::Ptr< Interface::VlanIntfConfig > intfConfigDel( Wirex::IntfId const & k );
  Koi::Ptr< Interface::VlanIntfConfig > intfConfigDel( IntfConfigIterator const & i );
  void intfConfigDelAll();
  void intfConfigNotify( Wirex::IntfId const & k );

  class KoiSourcePriority;
  /// the source that prevails, of each interface that one asks for
  SourcePriorityPair sourcePriority( Wirex::IntfId const & k ) const;
  Koi::HashMap< KoiSourcePriority, Wirex::IntfId,
      SourcePriorityPair > const & sourcePriority() const {
    return sourcePriority_;
  }
  using SourcePriorityIterator = Koi::HashMap< KoiSourcePriority, Wirex::IntfId,
      SourcePriorityPair >::Iterator;
  SourcePriorityIterator sourcePriorityIterator();
  void sourcePriorityIs( Wirex::IntfId const & k, SourcePriorityPair const & v );
  SourcePriorityPair sourcePriorityDel( Wirex::IntfId const & k );
  SourcePriorityPair sourcePriorityDel( SourcePriorityIterator const & i );
  void sourcePriorityDelAll();
  void sourcePriorityNotify( Wirex::IntfId const & k );

  class KoiIntfConfigError;
  /// the configuration could not be applied
  bool intfConfigError( Wirex::IntfId const & k ) const;
  Koi::HashMap< KoiIntfConfigError, Wirex::IntfId, bool > const & intfConfigError() const {
    return intfConfigError_;
  }
  using IntfConfigErrorIterator = Koi::HashMap< KoiIntfConfigError, Wirex::IntfId, bool >::Iterator;
  IntfConfigErrorIterator intfConfigErrorIterator();
  void intfConfigErrorIs( Wirex::IntfId const & k, bool v );
  bool intfConfigErrorDel( Wirex::IntfId const & k );
  bool intfConfigErrorDel( IntfConfigErrorIterator const & i );
  void intfConfigErrorDelAll();
  void intfConfigErrorNotify( Wirex::IntfId const & k );

  /// Override what you watch; every callback starts out doing nothing.
  class NotifieeConst : public Koi::NotifieeOf< DynVlanIntfList > {
   public:
    virtual void onIntfConfig() {}
    virtual void onIntfConfig( Wirex::IntfId const & ) {}
    virtual void onIntfConfigKoiImmediate( Wirex::IntfId const & k ) {
      koiPass( koiOnIntfConfig ); onIntfConfig( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Wirex::IntfId const & > koiOnIntfConfig{
      koiFirst + 0, &NotifieeConst::onIntfConfig, &NotifieeConst::onIntfConfigKoiImmediate };

    virtual void onSourcePriority() {}
    virtual void onSourcePriority( Wirex::IntfId const & ) {}
    virtual void onSourcePriorityKoiImmediate( Wirex::IntfId const & k ) {
      koiPass( koiOnSourcePriority ); onSourcePriority( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Wirex::IntfId const & > koiOnSourcePriority{
      koiFirst + 1, &NotifieeConst::onSourcePriority,
          &NotifieeConst::onSourcePriorityKoiImmediate };

    virtual void onIntfConfigError() {}
    virtual void onIntfConfigError( Wirex::IntfId const & ) {}
    virtual void onIntfConfigErrorKoiImmediate( Wirex::IntfId const & k ) {
      koiPass( koiOnIntfConfigError ); onIntfConfigError( k );
    }
    static constexpr Koi::Callback< NotifieeConst, Wirex::IntfId const & > koiOnIntfConfigError{
      koiFirst + 2, &NotifieeConst::onIntfConfigError,
          &NotifieeConst::onIntfConfigErrorKoiImmediate };
  };
  using Notifiee = Koi::ChangingNotifiee< NotifieeConst, DynVlanIntfList >;

  static constexpr char koiName[] = "Lumo::DynVlanIntfList";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_name", &DynVlanIntfList::name )
    };
  }
  template< class Self = DynVlanIntfList >
  static constexpr auto koiAttributes() {
    return std::tuple{
      Koi::attribute( "intfConfig", &Self::intfConfig_, &Self::intfConfigIs, &Self::intfConfigDel ),
      Koi::attribute( "sourcePriority", &Self::sourcePriority_, &Self::sourcePriorityIs,
                      &Self::sourcePriorityDel ),
      Koi::attribute( "intfConfigError", &Self::intfConfigError_, &Self::intfConfigErrorIs,
                      &Self::intfConfigErrorDel )
    };
  }
  static constexpr unsigned koiEnd = koiFirst + 3;
  static Koi::KoiType const _koiType;

 private:
  Koi::HashMap< KoiIntfConfig, Wirex::IntfId, Koi::Ptr< Interface::VlanIntfConfig > > intfConfig_;
  Koi::HashMap< KoiSourcePriority, Wirex::IntfId, SourcePriorityPair > sourcePriority_;
  Koi::HashMap< KoiIntfConfigError, Wirex::IntfId, bool > intfConfigError_;
};

/// A new DynVlanIntfList without a parent.
KOI_PUBLIC Koi::Ptr< DynVlanIntfList > dynVlanIntfListFactory( Koi::Name const & name );

/// Decides, for the interfaces that one source asks for, whether it prevails.
class KOI_PUBLIC DynVlanIntfConfigSm : public Koi::ReactorOf< DynVlanIntfConfigSm > {
 public:
  DynVlanIntfConfigSm( SourcePriorityPair const & sourcePriority,
                       Koi::Ptr< Interface::VlanIntfConfigDir > const & vlanIntfConfigDir,
      Koi::Ptr< DynVlanIntfReactor > const & parent );

  /// the source
  SourcePriorityPair sourcePriority() const { return _sourcePriority; }

  /// what it asks for
  Koi::Ptr< Interface::VlanIntfConfigDir > vlanIntfConfigDir() const {
    return vlanIntfConfigDir_.ptr();
  }
  /// Watches that one from now on, and starts over; null watches nothing.
  void vlanIntfConfigDirIs( Koi::Ptr< Interface::VlanIntfConfigDir > const & entity );
  /// Watches nothing from now on.
  void vlanIntfConfigDirDel();

  /// whom it works for
  Koi::Ptr< DynVlanIntfReactor > parent() const { return _parent.ptr(); }

  /// it decides; not yet, or no more, otherwise
  bool initialized() const { return initialized_; }
  void initializedIs( bool v ) { koiIs( initialized_, v ); }

  static constexpr char koiName[] = "Lumo::DynVlanIntfConfigSm";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_sourcePriority", &DynVlanIntfConfigSm::sourcePriority ),
      Koi::parameter( "_vlanIntfConfigDir", &DynVlanIntfConfigSm::vlanIntfConfigDir ),
      Koi::parameter( "_parent", &DynVlanIntfConfigSm::parent )
    };
  }
  static Koi::KoiType const _koiType;

 private:
  // Handlers: their bodies are written by hand.
  void handleIntfConfig( Wirex::IntfId const & key );
  void handleInitialized();
  void handleCleanup();

  class KoiVlanIntfConfigDir : public Interface::VlanIntfConfigDir::NotifieeConst {
   public:
    explicit KoiVlanIntfConfigDir( DynVlanIntfConfigSm * reactor ) : reactor_( reactor ) {}
    using NotifieeConst::onIntfConfig;
    void onIntfConfig( Wirex::IntfId const & key ) override {
      Koi::Ptr< DynVlanIntfConfigSm >( reactor_ )->handleIntfConfig( key );
    }

   private:
    DynVlanIntfConfigSm * reactor_;
  };

  void koiStart() override { handleInitialized(); }
  void koiCleanup() override { handleCleanup(); }

  SourcePriorityPair const _sourcePriority;
  Koi::Watched< KoiVlanIntfConfigDir, Interface::VlanIntfConfigDir > vlanIntfConfigDir_;
  Koi::WeakPtr< DynVlanIntfReactor > const _parent;
  bool initialized_{};
};

/// A new DynVlanIntfConfigSm that listens.
KOI_PUBLIC Koi::Ptr< DynVlanIntfConfigSm > DynVlanIntfConfigSmIs(
    SourcePriorityPair const & sourcePriority,
    Koi::Ptr< Interface::VlanIntfConfigDir > const & vlanIntfConfigDir,
    Koi::Ptr< DynVlanIntfReactor > const & parent );
KOI_PUBLIC Koi::Ptr< DynVlanIntfConfigSm > dynVlanIntfConfigSmFactory(
    SourcePriorityPair const & sourcePriority,
    Koi::Ptr< Interface::VlanIntfConfigDir > const & vlanIntfConfigDir,
    Koi::Ptr< DynVlanIntfReactor > const & parent );

/// Gives one source another place in the order when its priority changes.
class KOI_PUBLIC DynVlanIntfConfigPrioritySm
    : public Koi::ReactorOf< DynVlanIntfConfigPrioritySm > {
 public:
  DynVlanIntfConfigPrioritySm( Koi::String8 const & source,
                               Koi::Ptr< Interface::VlanIntfConfigDir > const & vlanIntfConfigDir,
      Koi::Ptr< DynVlanIntfReactor > const & parent );

  /// the source
  Koi::String8 source() const { return _source; }

  /// what it asks for
  Koi::Ptr< Interface::VlanIntfConfigDir > vlanIntfConfigDir() const {
    return vlanIntfConfigDir_.ptr();
  }
  /// Watches that one from now on, and starts over; null watches nothing.
  void vlanIntfConfigDirIs( Koi::Ptr< Interface::VlanIntfConfigDir > const & entity );
  /// Watches nothing from now on.
  void vlanIntfConfigDirDel();

  /// whom it works for
  Koi::Ptr< DynVlanIntfReactor > parent() const { return _parent.ptr(); }

  static constexpr char koiName[] = "Lumo::DynVlanIntfConfigPrioritySm";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_source", &DynVlanIntfConfigPrioritySm::source ),
      Koi::parameter( "_vlanIntfConfigDir", &DynVlanIntfConfigPrioritySm::vlanIntfConfigDir ),
      Koi::parameter( "_parent", &DynVlanIntfConfigPrioritySm::parent )
    };
  }
  static Koi::KoiType const _koiType;

 private:
  // Handlers: their bodies are written by hand.
  void handleConfigPriority();

  class KoiVlanIntfConfigDir : public Interface::VlanIntfConfigDir::NotifieeConst {
   public:
    explicit KoiVlanIntfConfigDir( DynVlanIntfConfigPrioritySm * reactor ) : reactor_( reactor ) {}
    void onConfigPriority() override {
      Koi::Ptr< DynVlanIntfConfigPrioritySm >( reactor_ )->handleConfigPriority();
    }

   private:
    DynVlanIntfConfigPrioritySm * reactor_;
  };

  void koiStart() override { handleConfigPriority(); }

  Koi::String8 const _source;
  Koi::Watched< KoiVlanIntfConfigDir, Interface::VlanIntfConfigDir > vlanIntfConfigDir_;
  Koi::WeakPtr< DynVlanIntfReactor > const _parent;
};

/// A new DynVlanIntfConfigPrioritySm that listens.
KOI_PUBLIC Koi::Ptr< DynVlanIntfConfigPrioritySm > DynVlanIntfConfigPrioritySmIs(
    Koi::String8 const & source, Koi::Ptr< Interface::VlanIntfConfigDir > const & vlanIntfConfigDir,
    Koi::Ptr< DynVlanIntfReactor > const & parent );
KOI_PUBLIC Koi::Ptr< DynVlanIntfConfigPrioritySm > dynVlanIntfConfigPrioritySmFactory(
    Koi::String8 const & source, Koi::Ptr< Interface::VlanIntfConfigDir > const & vlanIntfConfigDir,
    Koi::Ptr< DynVlanIntfReactor > const & parent );

/// Makes one list of the VLAN interfaces that several sources ask for, each in a directory of its
/// own.
/// Of each interface one source prevails; the others find "Rejected: Higher priority config found"
/// in
/// the error directory that is called like them.
class KOI_PUBLIC DynVlanIntfReactor : public Koi::ReactorOf< DynVlanIntfReactor > {
 public:
  DynVlanIntfReactor( Koi::Ptr< Coredb::Dir > const & dynVlanIntfDir,
                      Koi::Ptr< Coredb::Dir > const & dynVlanIntfErrorDir,
      Koi::Ptr< DynVlanIntfList > const & dynVlanIntfList, bool launchedByLumo );

  /// the sources: an Interface::VlanIntfConfigDir each, by name
  Koi::Ptr< Coredb::Dir > dynVlanIntfDir() const { return dynVlanIntfDir_.ptr(); }
  /// Watches that one from now on, and starts over; null watches nothing.
  void dynVlanIntfDirIs( Koi::Ptr< Coredb::Dir > const & entity );
  /// Watches nothing from now on.
  void dynVlanIntfDirDel();

  /// their Interface::VlanIntfConfigErrorDirs, made when needed; null: nobody is told
  Koi::Ptr< Coredb::Dir > dynVlanIntfErrorDir() const { return _dynVlanIntfErrorDir; }

  /// the list; nobody else writes it but its intfConfigError
  Koi::Ptr< DynVlanIntfList > dynVlanIntfList() const { return dynVlanIntfList_.ptr(); }
  /// Watches that one from now on, and starts over; null watches nothing.
  void dynVlanIntfListIs( Koi::Ptr< DynVlanIntfList > const & entity );
  /// Watches nothing from now on.
  void dynVlanIntfListDel();

  /// it runs inside the bridging agent itself
  bool launchedByLumo() const { return launchedByLumo_; }
  void launchedByLumoIs( bool v ) { koiIs( launchedByLumo_, v ); }

  /// no errors are written or taken back; in the bridging agent what was left is done when that
  /// ends
  bool standbyMode() const { return standbyMode_; }
  /// Does what follows from it, unless it is that already.
  void standbyModeIs( bool v ) {
    if( Koi::same( standbyMode_, v ) )
      return;
    koiIs( standbyMode_, v );
    handleStandbyMode();
  }

  class KoiDynVlanIntfConfigSm;
  /// the sources, in order
  Koi::Ptr< DynVlanIntfConfigSm > dynVlanIntfConfigSm( SourcePriorityPair const & k ) const;
  Koi::RbTreeMap< KoiDynVlanIntfConfigSm, SourcePriorityPair,
      Koi::Owned< DynVlanIntfConfigSm > > const & dynVlanIntfConfigSm() const {
    return dynVlanIntfConfigSm_;
  }
  using DynVlanIntfConfigSmIterator = Koi::RbTreeMap< KoiDynVlanIntfConfigSm, SourcePriorityPair,
      Koi::Owned< DynVlanIntfConfigSm > >::Iterator;
  DynVlanIntfConfigSmIterator dynVlanIntfConfigSmIterator();
  /// The one of that key, made when there is none.
  Koi::Ptr< DynVlanIntfConfigSm > dynVlanIntfConfigSmIs( SourcePriorityPair const & k,
                                                         Koi::Ptr< Interface::VlanIntfConfigDir > const & vlanIntfConfigDir, Koi::Ptr< DynVlanIntfReactor > const & parent );
  Koi::Ptr< DynVlanIntfConfigSm > dynVlanIntfConfigSmDel( SourcePriorityPair const & k );
  Koi::Ptr< DynVlanIntfConfigSm > dynVlanIntfConfigSmDel( DynVlanIntfConfigSmIterator const & i );
  void dynVlanIntfConfigSmDelAll();

  class KoiDynVlanIntfConfigPrioritySm;
  /// by source
  Koi::Ptr< DynVlanIntfConfigPrioritySm > dynVlanIntfConfigPrioritySm(
      Koi::String8 const & k ) const;
  Koi::HashMap< KoiDynVlanIntfConfigPrioritySm, Koi::String8,
      Koi::Owned< DynVlanIntfConfigPrioritySm > > const & dynVlanIntfConfigPrioritySm() const {
    return dynVlanIntfConfigPrioritySm_;
  }
  using DynVlanIntfConfigPrioritySmIterator = Koi::HashMap< KoiDynVlanIntfConfigPrioritySm,
      Koi::String8, Koi::Owned< DynVlanIntfConfigPrioritySm > >::Iterator;
  DynVlanIntfConfigPrioritySmIterator dynVlanIntfConfigPrioritySmIterator();
  /// The one of that key, made when there is none.
  Koi::Ptr< DynVlanIntfConfigPrioritySm > dynVlanIntfConfigPrioritySmIs( Koi::String8 const & k,
      Koi::Ptr< Interface::VlanIntfConfigDir > const & vlanIntfConfigDir,
      Koi::Ptr< DynVlanIntfReactor > const & parent );
  Koi::Ptr< DynVlanIntfConfigPrioritySm > dynVlanIntfConfigPrioritySmDel( Koi::String8 const & k );
  Koi::Ptr< DynVlanIntfConfigPrioritySm > dynVlanIntfConfigPrioritySmDel(
      DynVlanIntfConfigPrioritySmIterator const & i );
  void dynVlanIntfConfigPrioritySmDelAll();

  class KoiPreIntfList;
  /// the configuration of the source that prevails, dynamic or not
  Koi::Ptr< Interface::VlanIntfConfig > preIntfList( Wirex::IntfId const & k ) const;
  Koi::HashMap< KoiPreIntfList, Wirex::IntfId,
      Koi::Ptr< Interface::VlanIntfConfig > > const & preIntfList() const {
    return preIntfList_;
  }
  using PreIntfListIterator = Koi::HashMap< KoiPreIntfList, Wirex::IntfId,
      Koi::Ptr< Interface::VlanIntfConfig > >::Iterator;
  PreIntfListIterator preIntfListIterator();
  void preIntfListIs( Wirex::IntfId const & k, Koi::Ptr< Interface::VlanIntfConfig > const & v );
  Koi::Ptr< Interface::VlanIntfConfig > preIntfListDel( Wirex::IntfId const & k );
  Koi::Ptr< Interface::VlanIntfConfig > preIntfListDel( PreIntfListIterator const & i );
  void preIntfListDelAll();

  /// the same, observed
  Koi::Ptr< Interface::VlanIntfConfig > preIntfListSm( Wirex::IntfId const & k ) const;
  std::vector< Wirex::IntfId > preIntfListSmKeys() const;
  /// Watches that one under that key from now on; null is refused.
  void preIntfListSmIs( Wirex::IntfId const & k,
                        Koi::Ptr< Interface::VlanIntfConfig > const & entity );
  void preIntfListSmDel( Wirex::IntfId const & k );
  void preIntfListSmDelAll();

  /// it works
  bool initialized() const { return initialized_; }
  void initializedIs( bool v ) { koiIs( initialized_, v ); }

  static constexpr char koiName[] = "Lumo::DynVlanIntfReactor";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_dynVlanIntfDir", &DynVlanIntfReactor::dynVlanIntfDir ),
      Koi::parameter( "_dynVlanIntfErrorDir", &DynVlanIntfReactor::dynVlanIntfErrorDir ),
      Koi::parameter( "_dynVlanIntfList", &DynVlanIntfReactor::dynVlanIntfList ),
      Koi::initial( "_launchedByLumo", &DynVlanIntfReactor::launchedByLumo )
    };
  }
  static Koi::KoiType const _koiType;

 private:
  // Handlers: their bodies are written by hand.
  void handleEntity( Koi::Name const & key );
  void handleIntfConfigError( Wirex::IntfId const & key );
  void handleStandbyMode();
  void handleDynamic( Wirex::IntfId const & watched );
  void handleSource( Wirex::IntfId const & watched );
  void handleInitialized();
  void handleCleanup();

  class KoiDynVlanIntfDir : public Coredb::Dir::NotifieeConst {
   public:
    explicit KoiDynVlanIntfDir( DynVlanIntfReactor * reactor ) : reactor_( reactor ) {}
    using NotifieeConst::onEntity;
    void onEntity( Koi::Name const & key ) override {
      Koi::Ptr< DynVlanIntfReactor >( reactor_ )->handleEntity( key );
    }

   private:
    DynVlanIntfReactor * reactor_;
  };

  class KoiDynVlanIntfList : public DynVlanIntfList::NotifieeConst {
   public:
    explicit KoiDynVlanIntfList( DynVlanIntfReactor * reactor ) : reactor_( reactor ) {}
    using NotifieeConst::onIntfConfigError;
    void onIntfConfigError( Wirex::IntfId const & key ) override {
      Koi::Ptr< DynVlanIntfReactor >( reactor_ )->handleIntfConfigError( key );
    }

   private:
    DynVlanIntfReactor * reactor_;
  };

  class KoiPreIntfListSm : public Interface::VlanIntfConfig::NotifieeConst {
   public:
    KoiPreIntfListSm( DynVlanIntfReactor * reactor, Wirex::IntfId const & key )
        : reactor_( reactor ), key_( key ) {}
    Wirex::IntfId fwkKey() const { return key_; }
    void onDynamic() override {
      Koi::Ptr< DynVlanIntfReactor >( reactor_ )->handleDynamic( Koi::copyOf( key_ ) );
    }
    void onSource() override {
      Koi::Ptr< DynVlanIntfReactor >( reactor_ )->handleSource( Koi::copyOf( key_ ) );
    }

   private:
    DynVlanIntfReactor * reactor_;
    Wirex::IntfId const key_;
  };

  void koiStart() override { handleInitialized(); }
  void koiCleanup() override { handleCleanup(); }

  Koi::Watched< KoiDynVlanIntfDir, Coredb::Dir > dynVlanIntfDir_;
  Koi::Ptr< Coredb::Dir > const _dynVlanIntfErrorDir;
  Koi::Watched< KoiDynVlanIntfList, DynVlanIntfList > dynVlanIntfList_;
  bool launchedByLumo_{};
  bool standbyMode_{};
  Koi::InnerReactors< Koi::RbTreeMap< KoiDynVlanIntfConfigSm, SourcePriorityPair,
      Koi::Owned< DynVlanIntfConfigSm > > > dynVlanIntfConfigSm_{ this };
  Koi::InnerReactors< Koi::HashMap< KoiDynVlanIntfConfigPrioritySm, Koi::String8,
      Koi::Owned< DynVlanIntfConfigPrioritySm > > > dynVlanIntfConfigPrioritySm_{ this };
  Koi::HashMap< KoiPreIntfList, Wirex::IntfId, Koi::Ptr< Interface::VlanIntfConfig > > preIntfList_;
  Koi::WatchedEach< KoiPreIntfListSm, Wirex::IntfId, Interface::VlanIntfConfig > preIntfListSm_;
  bool initialized_{};
};

/// A new DynVlanIntfReactor that listens.
KOI_PUBLIC Koi::Ptr< DynVlanIntfReactor > DynVlanIntfReactorIs(
    Koi::Ptr< Coredb::Dir > const & dynVlanIntfDir,
    Koi::Ptr< Coredb::Dir > const & dynVlanIntfErrorDir,
    Koi::Ptr< DynVlanIntfList > const & dynVlanIntfList, bool launchedByLumo );
KOI_PUBLIC Koi::Ptr< DynVlanIntfReactor > dynVlanIntfReactorFactory(
    Koi::Ptr< Coredb::Dir > const & dynVlanIntfDir,
    Koi::Ptr< Coredb::Dir > const & dynVlanIntfErrorDir,
    Koi::Ptr< DynVlanIntfList > const & dynVlanIntfList, bool launchedByLumo );

}  // namespace Lumo

// Reflection wrappers: each holds one copy of a value.
namespace _koi_Lumo_SourcePriorityPair {
  using GenericIf_ = Koi::GenericValue< Lumo::SourcePriorityPair >;
}
