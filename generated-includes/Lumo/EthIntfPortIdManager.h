// EthIntfPortIdManager.h: written by koigen from EthIntfPortIdManager.koi. Change that file, not
// this one.
#pragma once

#include <koi/Value.h>
#include <koi/Reactor.h>
#include <Interface/EthIntf.h>
#include <Interface/EthIntfPortId.h>
#include <wirex/IntfId.h>

namespace Interface {

/// Whether the interface gets a port id: Ethernet interfaces and port-channels of both switches of
/// a
/// pair, management interfaces but mgmt0, VXLAN tunnels, and unconnected ports of a switch without
/// modules; no sub-interface.
KOI_PUBLIC bool isPortIdNeeded( Wirex::IntfId const & intfId );

/// Where the search for its port id begins, modulo 65536; for an interface that gets one.
/// docs/port-id.md has the table.
KOI_PUBLIC Koi::U16 getBaseId( Wirex::IntfId const & intfId );

/// Gives each interface that needs one a port id: from 1 to 4094, no two the same. The id of an
/// interface that goes is kept for its return, and is given to another one only when no other id is
/// left; then that of the interface that went first. Nobody else writes the ids.
class KOI_PUBLIC PortIdManager : public Koi::ReactorOf< PortIdManager > {
 public:
  PortIdManager( Koi::Ptr< EthIntfPortIdDir > const & ethIntfPortIdDir,
                 Koi::Ptr< EthIntfStatusDir > const & allEthIntfStatusDir );

  /// the ids
  Koi::Ptr< EthIntfPortIdDir > ethIntfPortIdDir() const { return _ethIntfPortIdDir; }

  /// the interfaces that there are
  Koi::Ptr< EthIntfStatusDir > allEthIntfStatusDir() const { return allEthIntfStatusDir_.ptr(); }
  /// Watches that one from now on, and starts over; null watches nothing.
  void allEthIntfStatusDirIs( Koi::Ptr< EthIntfStatusDir > const & entity );
  /// Watches nothing from now on.
  void allEthIntfStatusDirDel();

  class KoiReversePortIdMap;
  /// which interface has an id, be it there or not
  Wirex::IntfId reversePortIdMap( EthPortId const & k ) const;
  Koi::HashMap< KoiReversePortIdMap, EthPortId, Wirex::IntfId > const & reversePortIdMap() const {
    return reversePortIdMap_;
  }
  using ReversePortIdMapIterator = Koi::HashMap< KoiReversePortIdMap, EthPortId,
      Wirex::IntfId >::Iterator;
  ReversePortIdMapIterator reversePortIdMapIterator();
  void reversePortIdMapIs( EthPortId const & k, Wirex::IntfId const & v );
  Wirex::IntfId reversePortIdMapDel( EthPortId const & k );
  Wirex::IntfId reversePortIdMapDel( ReversePortIdMapIterator const & i );
  void reversePortIdMapDelAll();

  class KoiVanished;
  /// those that have one and are not there, in the order in which they went
  Wirex::IntfId vanished( Koi::U64 k ) const;
  Koi::RbTreeMap< KoiVanished, Koi::U64, Wirex::IntfId > const & vanished() const {
    return vanished_;
  }
  using VanishedIterator = Koi::RbTreeMap< KoiVanished, Koi::U64, Wirex::IntfId >::Iterator;
  VanishedIterator vanishedIterator();
  void vanishedIs( Koi::U64 k, Wirex::IntfId const & v );
  Wirex::IntfId vanishedDel( Koi::U64 k );
  Wirex::IntfId vanishedDel( VanishedIterator const & i );
  void vanishedDelAll();

  class KoiVanishedAs;
  /// their place in that order
  Koi::U64 vanishedAs( Wirex::IntfId const & k ) const;
  Koi::HashMap< KoiVanishedAs, Wirex::IntfId, Koi::U64 > const & vanishedAs() const {
    return vanishedAs_;
  }
  using VanishedAsIterator = Koi::HashMap< KoiVanishedAs, Wirex::IntfId, Koi::U64 >::Iterator;
  VanishedAsIterator vanishedAsIterator();
  void vanishedAsIs( Wirex::IntfId const & k, Koi::U64 v );
  Koi::U64 vanishedAsDel( Wirex::IntfId const & k );
  Koi::U64 vanishedAsDel( VanishedAsIterator const & i );
  void vanishedAsDelAll();

  /// how many ever went
  Koi::U64 numVanished() const { return numVanished_; }
  void numVanishedIs( Koi::U64 v ) { koiIs( numVanished_, v ); }

  class KoiWaiting;
  /// those that found no id
  bool waiting( Wirex::IntfId const & k ) const;
  Koi::RbTreeMap< KoiWaiting, Wirex::IntfId, bool > const & waiting() const { return waiting_; }
  using WaitingIterator = Koi::RbTreeMap< KoiWaiting, Wirex::IntfId, bool >::Iterator;
  WaitingIterator waitingIterator();
  void waitingIs( Wirex::IntfId const & k, bool v );
  bool waitingDel( Wirex::IntfId const & k );
  bool waitingDel( WaitingIterator const & i );
  void waitingDelAll();

  /// the ids that there were are known
  bool initialized() const { return initialized_; }
  void initializedIs( bool v ) { koiIs( initialized_, v ); }

  static constexpr char koiName[] = "Interface::PortIdManager";
  static constexpr auto koiParameters() {
    return std::tuple{
      Koi::parameter( "_ethIntfPortIdDir", &PortIdManager::ethIntfPortIdDir ),
      Koi::parameter( "_allEthIntfStatusDir", &PortIdManager::allEthIntfStatusDir )
    };
  }
  static Koi::KoiType const _koiType;

 private:
  // Handlers: their bodies are written by hand.
  void handleIntfStatus( Wirex::IntfId const & key );
  void handleInitialized();

  class KoiAllEthIntfStatusDir : public EthIntfStatusDir::NotifieeConst {
   public:
    explicit KoiAllEthIntfStatusDir( PortIdManager * reactor ) : reactor_( reactor ) {}
    using NotifieeConst::onIntfStatus;
    void onIntfStatus( Wirex::IntfId const & key ) override {
      Koi::Ptr< PortIdManager >( reactor_ )->handleIntfStatus( key );
    }

   private:
    PortIdManager * reactor_;
  };

  void koiStart() override { handleInitialized(); }

  Koi::Ptr< EthIntfPortIdDir > const _ethIntfPortIdDir;
  Koi::Watched< KoiAllEthIntfStatusDir, EthIntfStatusDir > allEthIntfStatusDir_;
  Koi::HashMap< KoiReversePortIdMap, EthPortId, Wirex::IntfId > reversePortIdMap_;
  Koi::RbTreeMap< KoiVanished, Koi::U64, Wirex::IntfId > vanished_;
  Koi::HashMap< KoiVanishedAs, Wirex::IntfId, Koi::U64 > vanishedAs_;
  Koi::U64 numVanished_{};
  Koi::RbTreeMap< KoiWaiting, Wirex::IntfId, bool > waiting_;
  bool initialized_{};
};

/// A new PortIdManager that listens.
KOI_PUBLIC Koi::Ptr< PortIdManager > PortIdManagerIs(
    Koi::Ptr< EthIntfPortIdDir > const & ethIntfPortIdDir,
    Koi::Ptr< EthIntfStatusDir > const & allEthIntfStatusDir );
KOI_PUBLIC Koi::Ptr< PortIdManager > portIdManagerFactory(
    Koi::Ptr< EthIntfPortIdDir > const & ethIntfPortIdDir,
    Koi::Ptr< EthIntfStatusDir > const & allEthIntfStatusDir );

}  // namespace Interface
