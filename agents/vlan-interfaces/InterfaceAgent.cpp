#include "InterfaceAgent.h"

#include <coredb/SystemSocket.h>
#include <interface/TreePlaces.h>
#include <koi/UtcText.h>
#include <mem/Rova.h>
#include <model/VlanIntfCounterMountHelper.h>

#include <cstdio>

namespace VlanInterfaces {

using namespace Interface;
using Wirex::IntfId;

namespace {

constexpr unsigned mostVlans = Bridging::VlanId::koiRange.high;
constexpr char tablePlace[] = "Quill/counters/vlanIntf";

}  // namespace

/// Tells who prevails.
class InterfaceAgent::Winners final : public Lumo::DynVlanIntfList::NotifieeConst {
 public:
  using NotifieeConst::onSourcePriority;
  void onSourcePriority( IntfId const & intfId ) override {
    if( told )
      told( intfId, notifier()->sourcePriority( intfId ) );
  }
  std::function< void( IntfId const &, Lumo::SourcePriorityPair const & ) > told;
};

template< class E >
Koi::Ptr< E > InterfaceAgent::placed( char const * place ) {
  std::string const path = place;
  auto const cut = path.rfind( '/' );
  auto const directory =
      cut == path.npos ? tree_ : Coredb::directoryIs( tree_, path.substr( 0, cut ) );
  return static_cast< E * >(
      Coredb::newEntity( *directory, Koi::Name( path.substr( cut + 1 ) ), E::koiName ).ptr() );
}

InterfaceAgent::InterfaceAgent( Koi::Activity * activity, Options const & options )
    : tree_( Coredb::systemDirectory( options.sysname ) ),
      config_( options.config ),
      topology_( Bridging::Topology::configFactory( Koi::Name( "topology" ) ) ),
      list_( placed< Lumo::DynVlanIntfList >( dynVlanIntfListPlace ) ),
      vlanIntfs_( placed< VlanIntfStatusDir >( vlanStatusPlace ) ),
      ethIntfs_( placed< EthIntfStatusDir >( ethStatusPlace ) ),
      counted_( placed< VlanIntfCounterWriterStatus >( vlanCounterWriterPlace ) ),
      tables_( new KoiQuill::EntityManager( activity, options.root ) ),
      interval_( options.interval ),
      timer_( activity, [this] {
        refresh();
        timer_.delayIs( interval_ );
      } ) {
  auto const global = Coredb::globalDirectory();
  Coredb::newEntity( *global, Koi::Name( "AgentEnv" ), Coredb::Dir::koiName );
  auto const table =
      vlanIntfCounterMountHelperFactory( tables_ )->doMountWrite( options.sysname, mostVlans );
  auto const tableDir = Coredb::directoryIs( global, tablePlace );
  tableDir->entityIs( options.sysname, table );
  vlanIntfs_->counterDirPathIs( table->fullName() );
  counts_ = std::make_unique< IntfCounts >( table, counted_, vlanIntfs_ );

  checkpoints_ = vlanIntfCounterCheckpointSmFactory(
      counted_, placed< AllVlanIntfCounterDir >( vlanCounterPlace ) );
  checkpoints_->initializedIs( true );
  applier_ = vlanIntfApplySmFactory( list_, vlanIntfs_, counted_ );
  arbiter_ =
      Lumo::dynVlanIntfReactorFactory( placed< Coredb::Dir >( vlanSourcePlace ),
                                       placed< Coredb::Dir >( vlanSourceErrorPlace ), list_, true );
  portIds_ = portIdManagerFactory( placed< EthIntfPortIdDir >( portIdPlace ), ethIntfs_ );
  winners_ = std::make_unique< Winners >();
  winners_->notifierIs( list_ );
  server_ = std::make_unique< Coredb::TreeServer >(
      tree_, Coredb::newSystemSocket( options.root, options.sysname ), Coredb::Access::writable,
      activity );
  timer_.delayIs( interval_ );
}

InterfaceAgent::~InterfaceAgent() {
  server_.reset();
  winners_.reset();
  arbiter_->koiDoZombieReactors( true );
  applier_->koiDoZombieReactors( true );
  checkpoints_->koiDoZombieReactors( true );
  portIds_->koiDoZombieReactors( true );
}

Frames::Port & InterfaceAgent::port( IntfId intf ) {
  auto const status = ethIntfs_->intfStatusIs( intf, 1 );
  status->activeIs( true );
  status->linkStatusIs( linkUp );
  status->operStatusIs( operUp );
  return ports_.try_emplace( intf, intf, config_, topology_ ).first->second;
}

bool InterfaceAgent::refresh() {
  try {
    counts_->refresh( Koi::secondsSince1970() );
    return true;
  } catch( Rova::MemoryResourceException const & e ) {
    std::fprintf( stderr, "vlan-interfaces: %s\n", e.what() );
    return false;
  }
}

void InterfaceAgent::onWinner(
    std::function< void( IntfId const &, Lumo::SourcePriorityPair const & ) > f ) {
  winners_->told = std::move( f );
}

}  // namespace VlanInterfaces
