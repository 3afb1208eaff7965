#include <koi/KoiNboAttrLogSa.h>

#include <algorithm>

#include <koi/AdapterTable.h>
#include <koi/FlowIn.h>
#include <koi/Mirror.h>

namespace Koi {
namespace {

AttributeAccess const & accessOf( Entity const & entity, unsigned attribute ) {
  return *entity.koiType()->fields[attribute].access;
}

/// Puts the adapter at the end of the list, unless it is there.
template< class Of >
void enlist( AdapterList< Of > & list, KoiNboAttrLogSa & adapter ) {
  if( !static_cast< AdapterHook< Of > & >( adapter ).is_linked() )
    list.push_back( adapter );
}

}  // namespace

ResyncState::~ResyncState() = default;

// ---- the logs of an entity

EntityLogs::~EntityLogs() = default;

KoiNboAttrLogSa * EntityLogs::adapter( Mirror const & mirror ) const {
  for( auto const & adapter : adapters_ )
    if( &adapter->mirror() == &mirror )
      return adapter.get();
  return nullptr;
}

void EntityLogs::add( std::unique_ptr< KoiNboAttrLogSa > adapter ) {
  adapters_.push_back( std::move( adapter ) );
}

void EntityLogs::remove( Mirror const & mirror ) {
  std::erase_if( adapters_, [&]( auto const & adapter ) { return &adapter->mirror() == &mirror; } );
}

U16 EntityLogs::takeOrigin() {
  auto const * const remote = std::exchange( remote_, nullptr );
  return remote ? remote->mirror().origin() : U16{ 0 };
}

bool EntityLogs::isRefusing() const {
  for( auto const & adapter : adapters_ )
    if( adapter->isReadOnlyProxy() && adapter.get() != remote_ )
      return true;
  return false;
}

void EntityLogs::entityLeaves() {
  for( auto const & adapter : adapters_ )
    adapter->tellReferrers();
}

void EntityLogs::mark( unsigned attribute, U16 origin ) {
  for( auto const & adapter : adapters_ )
    adapter->changedBy( attribute, adapter->mirror().origin() == origin );
}

// ---- one adapter

KoiNboAttrLogSa::KoiNboAttrLogSa( Mirror & mirror, Entity & entity, SyncMode mode )
    : mirror_( mirror ), entity_( entity ), marks_( entity.koiType()->fields.size() ) {
  mirror_.adapters().all.push_back( *this );
  places_.resize( marks_.size() );
  for( unsigned i = 0; i < marks_.size(); ++i )
    if( accessOf( entity_, i ).isCollection() ) {
      places_[i] = std::make_unique< Place >( mirror_.origin() );
      accessOf( entity_, i ).placeIs( entity_, *places_[i] );
    }
  syncModeIs( mode );
}

KoiNboAttrLogSa::~KoiNboAttrLogSa() {
  for( unsigned i = 0; i < marks_.size(); ++i )
    if( places_[i] )
      accessOf( entity_, i ).placeDel( entity_, *places_[i] );
  mirror_.adapters().forget( *this );
  mirror_.adapterGoes( *this );
}

KoiNboAttrLogSa & KoiNboAttrLogSa::cloneSa( Mirror & out ) const {
  return entity_.koiNboAttrLogSaIs( out );
}

void KoiNboAttrLogSa::syncModeIs( SyncMode mode ) {
  for( unsigned i = 0; i < marks_.size(); ++i )
    if( mode == fullResync ) {
      tellWhole( i );
    } else {
      marks_[i] = 0;
      if( places_[i] )
        accessOf( entity_, i ).placeIsKnown( entity_, *places_[i] );
    }
}

void KoiNboAttrLogSa::tellWhole( unsigned attribute ) {
  AttributeAccess const & access = accessOf( entity_, attribute );
  if( !access.isState() )
    return;
  marks_[attribute] = dirty | fresh;
  if( access.isCollection() ) {
    marks_[attribute] |= whole;
    access.placeDel( entity_, *places_[attribute] );
    places_[attribute] = std::make_unique< Place >( mirror_.origin() );  // a place begins once
    access.placeIs( entity_, *places_[attribute] );
  }
  mirror_.dirtyIs( *this );
}

// ---- marks

void KoiNboAttrLogSa::changedBy( unsigned attribute, bool byPeer ) {
  marks_[attribute] &= static_cast< U8 >( ~insisted );
  // A key's marks are in its collection, whose adapter need not know which ones.
  if( !byPeer )
    koiIsAttrDirtyIs( attribute, true );
  else if( !places_[attribute] )
    koiIsAttrDirtyIs( attribute, false );
}

void KoiNboAttrLogSa::insist( unsigned attribute ) {
  if( is( attribute, insisted ) )
    return;
  marks_[attribute] |= insisted;
  koiIsAttrDirtyIs( attribute, true );
}

void KoiNboAttrLogSa::koiIsAttrDirtyIs( unsigned attribute, bool isDirty ) {
  if( !isDirty ) {
    marks_[attribute] &= static_cast< U8 >( ~dirty );
    return;
  }
  marks_[attribute] |= dirty;
  mirror_.dirtyIs( *this );
}

bool KoiNboAttrLogSa::hasDirt() const {
  if( !answers_.empty() )
    return true;
  for( U8 const marks : marks_ )
    if( ( marks & dirty ) != 0 )
      return true;
  return false;
}

void KoiNboAttrLogSa::answer( unsigned attribute, std::string key ) {
  if( !places_[attribute] ) {
    koiIsAttrDirtyIs( attribute, true );
    return;
  }
  answers_.emplace( attribute, std::move( key ) );
  mirror_.dirtyIs( *this );
}

// ---- out

bool KoiNboAttrLogSa::handleAttrFlowOut( unsigned attribute, FlowOut & flow ) {
  AttributeAccess const & access = accessOf( entity_, attribute );
  flow.begin( *this, attribute, is( attribute, fresh ) );
  if( !access.isCollection() ) {
    access.write( entity_, flow );
    return true;
  }
  Place & at = place( attribute );
  if( is( attribute, whole ) ) {
    bool const begins = !is( attribute, begun );
    marks_[attribute] |= begun;
    if( !access.writeWhole( entity_, at, begins, flow ) )
      return false;
    marks_[attribute] &= static_cast< U8 >( ~( whole | begun ) );
  }
  if( is( attribute, crossed ) )
    flow.op( LogOp::crossed );
  marks_[attribute] &= static_cast< U8 >( ~crossed );
  return access.writePending( entity_, at, flow );
}

bool KoiNboAttrLogSa::flowOut( FlowOut & flow ) {
  for( unsigned i = 0; i < marks_.size(); ++i )
    while( is( i, dirty ) ) {
      if( !mirror_.hasRoom( is( i, begun ) ) )
        return false;
      if( places_[i] && accessOf( entity_, i ).isToBeWhole( entity_, *places_[i] ) )
        tellWhole( i );
      marks_[i] |= sent;
      enlist( mirror_.adapters().sent, *this );
      if( handleAttrFlowOut( i, flow ) )
        marks_[i] &= static_cast< U8 >( ~dirty );
      mirror_.sendAttribute( *this, i );
    }
  while( !answers_.empty() ) {
    if( !mirror_.hasRoom( false ) )
      return false;
    auto const answer = answers_.extract( answers_.begin() );
    auto const & [attribute, key] = answer.value();
    NboAttrLog::In in( key.data(), key.size() );
    flow.begin( *this, attribute, false );
    accessOf( entity_, attribute ).writeMember( entity_, in, flow );
    mirror_.sendAttribute( *this, attribute );
  }
  return true;
}

void KoiNboAttrLogSa::ack() {
  for( unsigned i = 0; i < marks_.size(); ++i ) {
    if( !is( i, sent ) )
      continue;
    marks_[i] &= static_cast< U8 >( ~sent );
    if( places_[i] )
      accessOf( entity_, i ).ack( entity_, *places_[i] );
    if( !is( i, whole ) )
      marks_[i] &= static_cast< U8 >( ~fresh );
  }
}

void KoiNboAttrLogSa::unsend() {
  number = 0;
  isKnown = false;
  for( unsigned i = 0; i < marks_.size(); ++i ) {
    marks_[i] &= static_cast< U8 >( ~( crossed | insisted ) );
    if( !is( i, sent ) )
      continue;
    marks_[i] &= static_cast< U8 >( ~( sent | begun ) );
    marks_[i] |= dirty;
    if( !places_[i] )
      continue;
    accessOf( entity_, i ).unsend( entity_, *places_[i] );
    if( is( i, fresh ) )
      marks_[i] |= whole;
  }
  resync_.clear();
  unresolved_.clear();  // its numbers are of the connection, too
  referrers_.clear();
}

// ---- in

void KoiNboAttrLogSa::handleAttrDeserialization( FlowIn & flow ) {
  accessOf( entity_, flow.attribute ).apply( entity_, flow );
}

void KoiNboAttrLogSa::settle( unsigned attribute ) {
  if( places_[attribute] && !isUnsettled( attribute ) )
    accessOf( entity_, attribute ).placeIsKnown( entity_, place( attribute ) );
}

bool KoiNboAttrLogSa::readOnlyRemoteOk() const { return mirror_.acceptsWrites(); }
bool KoiNboAttrLogSa::isReadOnlyProxy() const { return mirror_.isReadOnlyProxy(); }

// ---- what refers to something that is not here yet

void KoiNboAttrLogSa::unresolvedIs( unsigned attribute, std::string const & key,
                                    WaitingOperation operation ) {
  unresolved_[{ attribute, key }] = std::move( operation );
  enlist( mirror_.adapters().waiting, *this );
  mirror_.waits();
}

bool KoiNboAttrLogSa::unresolvedDel( unsigned attribute, std::string const & key ) {
  auto const at = unresolved_.find( { attribute, key } );
  if( at == unresolved_.end() )
    return false;
  bool const isLate = at->second.since != mirror_.numApplied();
  unresolved_.erase( at );
  return isLate;
}

void KoiNboAttrLogSa::retryUnresolved( bool isLast ) {
  auto const operations = std::exchange( unresolved_, {} );
  for( auto const & [at, operation] : operations ) {
    FlowIn flow( *this, at.first, operation, isLast ? FlowIn::last : FlowIn::again );
    try {
      handleAttrDeserialization( flow );
    } catch( ParseException const & malformed ) {  // in what was not looked at when it came
      mirror_.refused( *this, at.first, malformed.what() );
    }
    settle( at.first );
  }
}

// ---- what refers to the entity

void KoiNboAttrLogSa::referrerIs( KoiNboAttrLogSa & adapter, unsigned attribute, std::string key ) {
  referrers_.emplace_back( mirror_.adapters().numberOf( adapter ), attribute, std::move( key ) );
  if( referrers_.size() < sweepAt_ )
    return;
  std::ranges::sort( referrers_ );
  referrers_.erase( std::unique( referrers_.begin(), referrers_.end() ), referrers_.end() );
  sweepAt_ = 2 * referrers_.size() + 16;
}

void KoiNboAttrLogSa::tellReferrers() {
  auto told = std::exchange( referrers_, {} );
  for( auto & [by, attribute, key] : told )
    if( KoiNboAttrLogSa * const adapter = mirror_.adapters().find( by ) )
      adapter->answer( attribute, std::move( key ) );
}

// ---- the table

void AdapterTable::detachAll() {
  while( !all.empty() ) {
    KoiNboAttrLogSa & adapter = all.front();
    adapter.entity().koiLogs()->remove( adapter.mirror() );
  }
}

}  // namespace Koi
