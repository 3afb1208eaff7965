// VlanDynIntfSm.cpp: which source of VLAN interfaces prevails.
//
// An interface is claimed by one source: the list's sourcePriority says which. What is claimed is
// in preIntfList; of that, what is dynamic and not the operator's is in the list. A contest is
// about what is published: a claim that is not gives way to whoever comes.
//
// Whoever is told of a change may change the sources at once. So every handler holds what it works
// with, publishes last, and goes on only while its source is initialized.

#include <Lumo/VlanDynIntfSm.h>

#include <set>

#include <coredb/Tree.h>
#include <koi/KeysOf.h>
#include <ntrace/Ntrace.h>

namespace Lumo {

using Interface::VlanIntfConfig;
using Interface::VlanIntfConfigDir;
using Interface::VlanIntfConfigErrorDir;
using Wirex::IntfId;

bool SourcePriorityPair::koiIsBefore( SourcePriorityPair const & other ) const {
  return _priority != other._priority ? _priority > other._priority : _source < other._source;
}

bool SourcePriorityPair::isLowerPriority( SourcePriorityPair const & other ) const {
  return other < *this;
}

namespace {

/// What one decision works with; it stays alive meanwhile.
struct Source {
  explicit Source( DynVlanIntfConfigSm & of ) : sm( &of ), parent( of.parent() ) {
    if( parent )
      list = parent->dynVlanIntfList();
  }

  bool isDeciding() const { return sm->initialized() && parent && list; }
  SourcePriorityPair my() const { return sm->sourcePriority(); }
  Koi::Ptr< VlanIntfConfig > configOf( IntfId const & intfId ) const {
    auto const dir = sm->vlanIntfConfigDir();
    return dir ? dir->intfConfig( intfId ) : nullptr;
  }

  Koi::Ptr< DynVlanIntfConfigSm > const sm;
  Koi::Ptr< DynVlanIntfReactor > const parent;
  Koi::Ptr< DynVlanIntfList > list;
};

Koi::Ptr< VlanIntfConfigDir > configDirOf( DynVlanIntfReactor const & reactor,
                                           Koi::Name const & source ) {
  if( !reactor.dynVlanIntfDir() )
    return nullptr;
  return dynamic_cast< VlanIntfConfigDir * >( reactor.dynVlanIntfDir()->entity( source ).ptr() );
}

Koi::Ptr< DynVlanIntfConfigSm > configSmOf( DynVlanIntfReactor const & reactor,
                                            Koi::String8 const & source ) {
  for( auto const & i : reactor.dynVlanIntfConfigSm() )
    if( i.key().source() == source )
      return i.value();
  return nullptr;
}

// ---- what is claimed, and what of that is published

bool isToBePublished( VlanIntfConfig const & config ) {
  return config.dynamic() && config.source() != Koi::String8( "cli" );
}

/// One interface that is claimed.
class ClaimedIntf {
 public:
  ClaimedIntf( DynVlanIntfReactor & reactor, IntfId const & intfId )
      : reactor_( &reactor ), intfId_( intfId ) {}

  /// Its configuration is observed from now on, and published if it may be.
  void configIs( Koi::Ptr< VlanIntfConfig > const & config ) const {
    reactor_->preIntfListIs( intfId_, config );
    reactor_->preIntfListSmIs( intfId_, config );
    KOI_ASSERT( !!dynVlanIntfReactor()->dynVlanIntfList()->sourcePriority( intfId() ) );
    publish();
  }

  void publish() const {
    Koi::Ptr< VlanIntfConfig > const config = reactor_->preIntfList( intfId_ );
    if( !reactor_->initialized() || !reactor_->dynVlanIntfList() || !config )
      return;
    if( !isToBePublished( *config ) )
      return;
    KOI_ASSERT( !!dynVlanIntfReactor()->dynVlanIntfList()->sourcePriority( intfId() ) );
    Ntrace::standard().trace( 5, "DynVlanIntfReactor: publishing ", intfId_.stringValue() );
    reactor_->dynVlanIntfList()->intfConfigIs( intfId_, config );
  }

 private:
  Koi::Ptr< DynVlanIntfReactor > const & dynVlanIntfReactor() const { return reactor_; }
  IntfId const & intfId() const { return intfId_; }

  Koi::Ptr< DynVlanIntfReactor > const reactor_;
  IntfId const intfId_;
};

/// Out of the list of claimed configurations, and so out of the published ones.
void unpublish( DynVlanIntfReactor & sm, IntfId const & intfId ) {
  sm.preIntfListSmDel( intfId );
  sm.preIntfListDel( intfId );
  if( sm.dynVlanIntfList() )
    sm.dynVlanIntfList()->intfConfigDel( intfId );
}

/// Publishes, if it may be; the last thing that a decision does.
void claim( DynVlanIntfReactor & sm, IntfId const & intfId, SourcePriorityPair const & pair,
            Koi::Ptr< VlanIntfConfig > const & config ) {
  sm.dynVlanIntfList()->sourcePriorityIs( intfId, pair );
  ClaimedIntf( sm, intfId ).configIs( config );
}

// ---- errors

/// Writes "Rejected: Higher priority config found" for a source, or takes it back.
void addOrDeleteIntfConfigError( Source const & by, Koi::String8 const & source,
                                 IntfId const & intfId, bool add ) {
  if( !by.sm->initialized() || by.parent->standbyMode() || !by.parent->dynVlanIntfErrorDir() )
    return;
  try {
    auto const entry = Coredb::newEntity( *by.parent->dynVlanIntfErrorDir(), Koi::Name( source ),
                                          VlanIntfConfigErrorDir::koiName );
    auto & errors = static_cast< VlanIntfConfigErrorDir & >( *entry );
    if( add )
      errors.vlanIntfConfigErrorIs( intfId, "Rejected: Higher priority config found" );
    else
      errors.vlanIntfConfigErrorDel( intfId );
  } catch( Koi::NameInUseException const & e ) {
    Ntrace::standard().trace( 0, "DynVlanIntfReactor: no errors for ", source, ": ", e.what() );
  }
}

// ---- decisions

/// The source that prevails of those that ask for the interface, but for one.
Koi::Ptr< DynVlanIntfConfigSm > alternateInput( DynVlanIntfReactor const & sm,
                                                SourcePriorityPair const & skip,
                                                IntfId const & intfId ) {
  for( auto const & i : sm.dynVlanIntfConfigSm() )
    if( i.key() != skip && Source( *i.value() ).configOf( intfId ) )
      return i.value();
  return nullptr;
}

/// What the source had claimed goes to the best of the others, or to nobody.
void setAlternateInput( Source const & from, IntfId const & intfId ) {
  bool const hasError = from.list->intfConfigError( intfId );
  unpublish( *from.parent, intfId );
  auto const next = alternateInput( *from.parent, from.my(), intfId );
  if( !next ) {
    from.list->intfConfigErrorDel( intfId );  // first: a flag is of a source
    from.list->sourcePriorityDel( intfId );
    return;
  }
  Ntrace::standard().trace( 5, "DynVlanIntfReactor: ", intfId.stringValue(), " goes to ",
                            next->sourcePriority().source() );
  addOrDeleteIntfConfigError( from, next->sourcePriority().source(), intfId, hasError );
  claim( *from.parent, intfId, next->sourcePriority(), Source( *next ).configOf( intfId ) );
}

/// The source asks for an interface, or asks once more.
void handleRequest( Source const & my, IntfId const & intfId,
                    Koi::Ptr< VlanIntfConfig > const & config ) {
  if( my.list->intfConfig( intfId ) ) {
    SourcePriorityPair const prevPri = my.list->sourcePriority( intfId );
    KOI_ASSERT( !!prevPri );
    if( my.my().isLowerPriority( prevPri ) )
      return addOrDeleteIntfConfigError( my, my.my().source(), intfId, true );
    bool const isOwn = prevPri.source() == my.my().source();
    // What stays published as it is need not go and come.
    if( !isOwn || my.parent->preIntfList( intfId ) != config || !isToBePublished( *config ) )
      unpublish( *my.parent, intfId );
    addOrDeleteIntfConfigError( my, my.my().source(), intfId, my.list->intfConfigError( intfId ) );
    if( !isOwn )
      addOrDeleteIntfConfigError( my, prevPri.source(), intfId, true );
  }
  claim( *my.parent, intfId, my.my(), config );
}

/// Looks at one interface of a source: it asks for it, or does not.
void handleDynVlanConfig( Source const & my, IntfId const & intfId ) {
  if( !my.isDeciding() )
    return;
  if( auto const config = my.configOf( intfId ) )
    return handleRequest( my, intfId, config );
  if( my.list->sourcePriority( intfId ) == my.my() )
    setAlternateInput( my, intfId );
  addOrDeleteIntfConfigError( my, my.my().source(), intfId, false );
}

/// Looks at all of them.
void handleDynVlanConfig( Source const & my ) {
  if( !my.isDeciding() )
    return;
  Koi::Name const name( my.my().source() );
  if( auto const & errorDir = my.parent->dynVlanIntfErrorDir() )
    if( Koi::Ptr< VlanIntfConfigErrorDir > const errors =
            dynamic_cast< VlanIntfConfigErrorDir * >( errorDir->entity( name ).ptr() ) )
      for( IntfId const & intfId : Koi::keysOf( errors->vlanIntfConfigError() ) )
        if( !my.configOf( intfId ) )
          addOrDeleteIntfConfigError( my, my.my().source(), intfId, false );
  if( auto const dir = my.sm->vlanIntfConfigDir() )
    for( IntfId const & intfId : Koi::keysOf( dir->intfConfig() ) )
      handleDynVlanConfig( my, intfId );
}

// ---- sources that come and go

/// A source begins to decide: its reactor is found under its pair before it publishes anything, for
/// whoever is told may flag an error at once.
void addSource( DynVlanIntfReactor & sm, Koi::String8 const & source,
                Koi::Ptr< VlanIntfConfigDir > const & dir ) {
  SourcePriorityPair const pair( source, static_cast< Koi::I32 >( dir->configPriority() ) );
  Koi::Ptr< DynVlanIntfConfigSm > const there = sm.dynVlanIntfConfigSm( pair );
  handleDynVlanConfig( Source( there ? *there : *sm.dynVlanIntfConfigSmIs( pair, dir, &sm ) ) );
}

void removeSource( DynVlanIntfReactor & sm, Koi::Ptr< DynVlanIntfConfigSm > const & source ) {
  // What it asked for in the same transaction was not looked at yet.
  if( sm.dynVlanIntfList() && source->vlanIntfConfigDir() )
    for( IntfId const & intfId : Koi::keysOf( source->vlanIntfConfigDir()->intfConfig() ) )
      if( !sm.dynVlanIntfList()->sourcePriority( intfId ) )
        handleDynVlanConfig( Source( *source ), intfId );
  source->koiDoZombieReactors( true );
  if( sm.dynVlanIntfConfigSm( source->sourcePriority() ) == source )
    sm.dynVlanIntfConfigSmDel( source->sourcePriority() );
}

/// Makes the reactors of one source what the directory has of it.
void handleDynVlanIntfDir( DynVlanIntfReactor & sm, Koi::Name const & name ) {
  if( !sm.initialized() || !sm.dynVlanIntfList() )
    return;
  Koi::String8 const source( name );
  auto const dir = configDirOf( sm, name );
  auto const there = configSmOf( sm, source );
  if( there && there->vlanIntfConfigDir() != dir ) {
    Ntrace::standard().trace( 3, "DynVlanIntfReactor: source ", source, " goes" );
    sm.dynVlanIntfConfigPrioritySmDel( source );
    removeSource( sm, there );
  }
  if( !dir || configDirOf( sm, name ) != dir )
    return;
  Ntrace::standard().trace( 3, "DynVlanIntfReactor: source ", source );
  addSource( sm, source, dir );
  if( configDirOf( sm, name ) == dir )
    sm.dynVlanIntfConfigPrioritySmIs( source, dir, &sm );
}

/// The interfaces whose configuration could not be applied.
std::set< IntfId > flaggedIn( DynVlanIntfList const & list ) {
  std::set< IntfId > flagged;
  for( auto const & i : list.intfConfigError() )
    if( i.value() )
      flagged.insert( i.key() );
  return flagged;
}

}  // namespace

void DynVlanIntfConfigSm::handleInitialized() {
  KOI_ASSERT( parent() );
  initializedIs( true );
  if( parent()->dynVlanIntfConfigSm( sourcePriority() ) == this )  // else whoever adds it goes on
    handleDynVlanConfig( Source( *this ) );
}

void DynVlanIntfConfigSm::handleIntfConfig( IntfId const & intfId ) {
  handleDynVlanConfig( Source( *this ), intfId );
}

void DynVlanIntfConfigSm::handleCleanup() {
  Source const my( *this );
  if( my.isDeciding() && vlanIntfConfigDir() )
    for( auto const & i : vlanIntfConfigDir()->intfConfig() ) {
      KOI_ASSERT( !!parent()->dynVlanIntfList()->sourcePriority( i.key() ) );
      if( my.list->sourcePriority( i.key() ) == my.my() )
        setAlternateInput( my, i.key() );
    }
  initializedIs( false );
}

void DynVlanIntfConfigPrioritySm::handleConfigPriority() {
  Koi::Ptr< DynVlanIntfReactor > const reactor = parent();
  auto const dir = vlanIntfConfigDir();
  auto const old = reactor ? configSmOf( *reactor, source() ) : nullptr;
  if( !old || !dir )
    return;
  if( old->sourcePriority().priority() == static_cast< Koi::I32 >( dir->configPriority() ) )
    return Ntrace::standard().trace( 5, "DynVlanIntfConfigPrioritySm: ", source(),
                                     " no change from previous priority " );
  addSource( *reactor, source(), dir );
  removeSource( *reactor, old );
}

void DynVlanIntfReactor::handleInitialized() {
  KOI_ASSERT( dynVlanIntfList() );
  Koi::Ptr< DynVlanIntfList > const list = dynVlanIntfList();
  auto flagged = flaggedIn( *list );
  initializedIs( true );
  for( auto const & pair : Koi::keysOf( dynVlanIntfConfigSm() ) )  // of another directory
    if( !configDirOf( *this, Koi::Name( pair.source() ) ) )
      handleDynVlanIntfDir( *this, Koi::Name( pair.source() ) );
  for( IntfId const & intfId : Koi::keysOf( preIntfList() ) )
    unpublish( *this, intfId );
  list->intfConfigDelAll();
  if( Koi::Ptr< Coredb::Dir > const dir = dynVlanIntfDir() )
    for( auto const & entry : dir->entity() )
      handleDynVlanIntfDir( *this, entry.key() );
  if( dynVlanIntfList() != list )
    return;
  // What was written to the list here is no change that was missed, or all would go and come once
  // more. Of the list only the flags are watched: those that are or were set are forwarded now.
  dynVlanIntfList_.mark();
  flagged.merge( flaggedIn( *list ) );
  for( IntfId const & intfId : flagged )
    if( dynVlanIntfConfigSm( list->sourcePriority( intfId ) ) )
      handleIntfConfigError( intfId );
}

void DynVlanIntfReactor::handleEntity( Koi::Name const & name ) {
  handleDynVlanIntfDir( *this, name );
}

void DynVlanIntfReactor::handleIntfConfigError( IntfId const & intfId ) {
  SourcePriorityPair const sourcePri = dynVlanIntfList()->sourcePriority( intfId );
  KOI_ASSERT( !!sourcePri );
  KOI_ASSERT( dynVlanIntfConfigSm( sourcePri ) );
  addOrDeleteIntfConfigError( Source( *dynVlanIntfConfigSm( sourcePri ) ), sourcePri.source(),
                              intfId, dynVlanIntfList()->intfConfigError( intfId ) );
}

void DynVlanIntfReactor::handleStandbyMode() {
  if( !initialized() || standbyMode() || !launchedByLumo() )
    return;
  for( auto const & i : dynVlanIntfConfigSm() )
    handleDynVlanConfig( Source( *i.value() ) );
}

void DynVlanIntfReactor::handleDynamic( IntfId const & intfId ) {
  ClaimedIntf( *this, intfId ).publish();
}
void DynVlanIntfReactor::handleSource( IntfId const & intfId ) {
  ClaimedIntf( *this, intfId ).publish();
}

void DynVlanIntfReactor::handleCleanup() {
  dynVlanIntfConfigPrioritySmDelAll();
  for( auto const & pair : Koi::keysOf( dynVlanIntfConfigSm() ) )
    if( Koi::Ptr< DynVlanIntfConfigSm > const source = dynVlanIntfConfigSm( pair ) ) {
      source->koiDoZombieReactors( true );
      dynVlanIntfConfigSmDel( pair );
    }
  for( IntfId const & intfId : Koi::keysOf( preIntfList() ) )
    unpublish( *this, intfId );
  if( dynVlanIntfList() )
    dynVlanIntfList()->intfConfigDelAll();
  initializedIs( false );
}

}  // namespace Lumo
