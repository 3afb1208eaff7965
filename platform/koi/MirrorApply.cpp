// MirrorApply.cpp: what a flush of the peer does to the tree, and what entities and references look
// like on the way.
#include <algorithm>

#include <koi/ChildLog.h>
#include <koi/EntityPath.h>
#include <koi/FlowIn.h>
#include <koi/Mirror.h>
#include <koi/Transaction.h>

namespace Koi {
namespace {

/// The mirrors of this thread that wait for the target of some reference.
constinit thread_local std::vector< Mirror * > waitingMirrors;

/// The registered entity type of that name; null when there is none.
KoiType const * entityType( String8 const & name ) {
  auto const nodes = typeNodes();
  auto const at =
      std::ranges::find_if( nodes, [&]( auto * node ) { return name.view() == node->name; } );
  return at != nodes.end() && ( *at )->kind == KoiType::entity ? *at : nullptr;
}

/// Counts how deep in one another the orphans of one reference are.
class OrphanNesting {
 public:
  explicit OrphanNesting( unsigned & depth ) : depth_( ++depth ) {}
  ~OrphanNesting() { --depth_; }
  OrphanNesting( OrphanNesting const & ) = delete;
  OrphanNesting & operator=( OrphanNesting const & ) = delete;

  bool isTooDeep() const { return depth_ > 100; }

 private:
  unsigned & depth_;
};

}  // namespace

// ---- a flush

void Mirror::applyFlush( std::vector< U8 > const & bytes ) {
  std::exception_ptr malformed;
  ++numApplied_;
  apply( [&] {
    try {
      std::size_t at = 0;
      while( auto const frame = frameAt( bytes, at ) ) {
        at = frame->next;
        applyFrame( frame->kind, frame->body );
      }
      claim();
    } catch( ParseException const & ) {
      malformed = std::current_exception();
    }
    settleTouched();
    unclaimed_.clear();
    unclaimedNumbers_.clear();
  } );
  if( malformed )
    std::rethrow_exception( malformed );
}

void Mirror::claimOrKeep( NboAttrLog::In in ) {
  // What is said of one entity is applied in its order.
  U64 const number = NboAttrLog::In( in ).nextU64();
  if( !unclaimedNumbers_.contains( number ) && applyAttribute( in ) )
    return;
  unclaimed_.push_back( in );
  unclaimedNumbers_.insert( number );
}

void Mirror::claim() {
  // What a child is made from may stand behind it in the flush, and what is said of the child, too.
  std::size_t left = 0;
  do {
    resolve();
    left = unclaimed_.size();
    std::erase_if( unclaimed_,
                   [this]( NboAttrLog::In const & in ) { return applyAttribute( in ); } );
  } while( unclaimed_.size() != left );
  resolve( true );
  counts_.forgotten += left;
}

void Mirror::apply( std::function< void() > const & work ) {
  bool isDone = false;
  try {
    transaction( [&] {
      work();
      isDone = true;
    } );
  } catch( std::exception const & exception ) {
    if( !isDone )
      throw;
    onNotificationException( exception.what() );
  } catch( ... ) {  // observers may throw anything
    if( !isDone )
      throw;
    onNotificationException( "something that is no exception" );
  }
}

void Mirror::onNotificationException( std::string const & what ) {
  ++counts_.exceptions;
  lastException_ = what;
}

void Mirror::applyFrame( Frame kind, NboAttrLog::In in ) {
  switch( kind ) {
    case Frame::type:
      applyType( in );
      break;
    case Frame::attribute:
      claimOrKeep( in );
      break;
    case Frame::ack:
      acknowledged( in );
      break;
    case Frame::orphanGone:
      orphanGone( in.nextU64() );
      break;
    case Frame::end:
      if( in.nextU64() != ++numIn_ )
        throwParseException( "attribute log: a flush that is not the next one" );
      if( numIn_ == 1 )
        knownInstance_ = peerInstance_;
      isAckDue_ = true;
      ++counts_.flushesIn;
      break;
    case Frame::hello:
    case Frame::begin:
      break;
  }
}

void Mirror::applyType( NboAttrLog::In & in ) {
  auto const isNamed = []( KoiType const * node, String8 const & name ) {
    return name.view() == ( node ? node->name : "" );
  };
  String8 const name = in.nextString();
  KoiType const * const node = entityType( name );
  std::vector< int > ours;
  for( unsigned left = in.nextU16(); left != 0; --left ) {
    String8 const attribute = in.nextString();
    U8 const kind = in.nextU8();
    String8 const key = in.nextString(), member = in.nextString();
    ours.push_back( -1 );
    if( !node )
      continue;
    auto const fields = node->fields;
    for( std::size_t i = 0; i < fields.size(); ++i )
      if( attribute.view() == fields[i].name &&
          fields[i].access->kind == static_cast< AttributeKind >( kind ) &&
          fields[i].access->isState() && isNamed( fields[i].key, key ) &&
          isNamed( fields[i].type, member ) )
        ours.back() = static_cast< int >( i );
  }
  if( node )
    typesIn_[node] = std::move( ours );
}

bool Mirror::applyAttribute( NboAttrLog::In in ) {
  U64 const number = in.nextU64();
  U16 const theirs = in.nextU16();
  KoiNboAttrLogSa * const adapter = adapters_.find( number );
  if( !adapter )
    return false;
  auto const type = typesIn_.find( adapter->entity().koiType() );
  if( type == typesIn_.end() || theirs >= type->second.size() )
    throwParseException( "attribute log: attribute " + std::to_string( theirs ) + " of " +
                         adapter->entity().koiType()->name + ", which was not named" );
  int const index = type->second[theirs];
  if( index < 0 ) {
    ++counts_.unknown;
    return true;
  }
  auto const ours = static_cast< unsigned >( index );
  if( touched_.empty() || touched_.back() != std::pair{ number, ours } )
    touched_.emplace_back( number, ours );
  FlowIn flow( *adapter, ours, in );
  adapter->handleAttrDeserialization( flow );
  return true;
}

void Mirror::settleTouched() {
  for( auto const & [number, attribute] : touched_ )
    if( KoiNboAttrLogSa * const adapter = adapters_.find( number ) )
      adapter->settle( attribute );
  touched_.clear();
}

void Mirror::refused( KoiNboAttrLogSa const & adapter, unsigned attribute,
                      std::string const & why ) {
  ++counts_.refused;
  lastRefusal_ = std::string( adapter.entity().fullName().view() ) + "." +
                 adapter.entity().koiType()->fields[attribute].name + ": " + why;
}

// ---- entities

KoiNboAttrLogSa & Mirror::attached( Entity & entity, KoiNboAttrLogSa::SyncMode mode ) {
  if( KoiNboAttrLogSa * const there = entity.koiNboAttrLogSa( *this ) )
    return *there;
  return entity.koiNboAttrLogSaIs( *this, mode == KoiNboAttrLogSa::fullResync );
}

void Mirror::peerHas( Entity & entity, U64 number, U64 incarnation,
                      KoiNboAttrLogSa::SyncMode mode ) {
  KoiNboAttrLogSa & adapter = attached( entity, mode );
  adapter.peerIncarnation = incarnation;
  if( adapter.number != 0 && adapter.number != number )
    adapter.tellReferrers();  // the peer may not know it by the number that they were told with
  adapters_.peerNumberIs( adapter, number );
  knownIs( adapter );
}

void Mirror::peerHasToo( Entity & entity, U64 number, U64 incarnation ) {
  KoiNboAttrLogSa & adapter = attached( entity, KoiNboAttrLogSa::fullResync );
  adapter.peerIncarnation = incarnation;
  adapters_.otherNumberIs( adapter, number );
}

void Mirror::peerLacks( Entity & entity ) {
  if( KoiNboAttrLogSa * const adapter = entity.koiNboAttrLogSa( *this ) )
    adapter->tellReferrers();
  entity.koiNboAttrLogSaDel( *this );
}

void FlowOut::child( Entity & child ) {
  KoiNboAttrLogSa & adapter = mirror_.attached( child, KoiNboAttrLogSa::fullResync );
  U64 const number = mirror_.adapters().numberOf( adapter );
  U8 * const at = frame_->room( 2 * sizeof( U64 ) );
  storeBig( storeBig( at, number ), child.koiIncarnation() );
  mirror_.knownIs( adapter );
}

void FlowOut::unwritable( RangeException const & refusal ) { mirror_.leftOut( refusal.what() ); }

// ---- references

void FlowOut::reference( Entity * target ) {
  auto const write = [&]( LogReference kind ) { *frame_->room( 1 ) = static_cast< U8 >( kind ); };
  // When the target leaves the log the reference is written again.
  auto const isReferredTo = [&]( KoiNboAttrLogSa & known ) {
    if( adapter_ && mirror_.role() == Mirror::source )
      known.referrerIs(
          *adapter_, attribute_,
          std::string( reinterpret_cast< char const * >( frame_->data() ) + keyBegin_, keySize_ ) );
  };
  if( !target )
    return write( LogReference::null );
  if( pathBelow( mirror_.root(), *target ) ) {
    KoiNboAttrLogSa & known = mirror_.attached( *target, KoiNboAttrLogSa::fullResync );
    write( LogReference::below );
    logAppend( *frame_, mirror_.adapters().numberOf( known ) );
    isReferredTo( known );
    return;
  }
  if( auto const path = pathBelow( topOf( mirror_.root() ), *target ) ) {
    write( LogReference::absolute );
    frame_->string( *path );
    return;
  }
  if( target->parent() )
    return write( LogReference::null );
  write( LogReference::orphan );
  KoiNboAttrLogSa & orphan = mirror_.attached( *target, KoiNboAttrLogSa::fullResync );
  orphan.doSerializeOrphan( *this );
  isReferredTo( orphan );
}

void KoiNboAttrLogSa::doSerializeOrphan( FlowOut & flow ) {
  OrphanNesting const nesting( mirror_.orphanDepth );
  if( nesting.isTooDeep() )
    throwRangeException( "attribute log: orphans more than 100 deep" );
  bool const isNew = !isKnown;
  isOrphan = isOrphan || isNew;
  NboAttrLog::Out & frame = flow.frame();
  logAppend( frame, mirror_.adapters().numberOf( *this ) );
  logAppend( frame, isNew );
  if( !isNew )
    return;
  ChildArguments< Entity >::write< 0 >( entity_, flow );
  mirror_.knownIs( *this );
}

void ChildArguments< Entity >::writeAny( Entity const & entity, FlowOut & flow ) {
  KoiType const & node = *entity.koiType();
  FlowOut arguments( flow.mirror() );
  node.writeCtorArgs( entity, arguments );
  NboAttrLog::Out const & written = arguments.frame();
  flow.frame().string( node.name );
  flow.frame().string( entity.name().view() );
  flow.frame().string( { reinterpret_cast< char const * >( written.data() ), written.size() } );
}

FlowIn::Arrival ChildArguments< Entity >::readAny( FlowIn & flow, Ptr< Entity > & entity ) {
  String8 const type = flow.in.nextString(), name = flow.in.nextString(),
                arguments = flow.in.nextString();
  KoiType const * const node = entityType( type );
  if( !node ) {
    flow.refuse( "type '" + std::string( type ) + "' is not registered" );
    return FlowIn::refused;
  }
  FlowIn made( flow.adapter, flow.attribute,
               NboAttrLog::In( arguments.view().data(), arguments.size() ) );
  auto const built = node->newEntityForAttrLog( Name( name ), made );
  if( !built )
    return FlowIn::notYet;
  entity = *built;
  return entity ? FlowIn::here : FlowIn::refused;
}

void ChildArguments< Entity >::takeOrphan( FlowIn const & flow, U64 number, All & arguments ) {
  auto & entity = std::get< Ptr< Entity > >( arguments );
  auto const * const known = flow.mirror().adapters().find( number );
  if( entity && known && !known->entity().parent() && &known->entity() != &flow.mirror().root() &&
      known->entity().koiType() == entity->koiType() )
    entity = &known->entity();
}

bool FlowIn::reference( Ptr< Entity > & target ) {
  isGone_ = false;
  switch( static_cast< LogReference >( in.nextU8() ) ) {
    case LogReference::null:
      target = nullptr;
      return true;
    case LogReference::below: {
      auto const * const known = mirror().adapters().find( in.nextU64() );
      target = known ? &known->entity() : nullptr;
      isGone_ = !target && pass == last && isFromProxy();
      return !!target;
    }
    case LogReference::absolute:
      target = entityAt( topOf( mirror().root() ), in.nextString().view() );
      return !!target;
    case LogReference::orphan:
      if( mirror().orphan( *this, target ) )
        return true;
      isGone_ = isFromProxy();  // a proxy is told again
      return false;
  }
  throwParseException( "attribute log: a reference of no kind" );
}

void FlowIn::refersTo( Entity const * target, std::string key ) const {
  if( target )
    if( KoiNboAttrLogSa * const known = target->koiNboAttrLogSa( mirror() ) )
      known->referrerIs( adapter, attribute, std::move( key ) );
}

bool Mirror::orphan( FlowIn & flow, Ptr< Entity > & target ) {
  OrphanNesting const nesting( orphanDepth );
  if( nesting.isTooDeep() )
    throwParseException( "attribute log: orphans more than 100 deep" );
  U64 const number = flow.in.nextU64();
  bool const isNew = flow.in.nextbool();
  if( isNew ) {
    ChildArguments< Entity >::All made;
    if( ChildArguments< Entity >::read< 0 >( flow, made ) == FlowIn::here &&
        !adapters_.find( number ) ) {
      Ptr< Entity > const & entity = std::get< Ptr< Entity > >( made );
      orphans_[number] = entity;
      peerHas( *entity, number, 0, KoiNboAttrLogSa::incremental );
    }
  }
  KoiNboAttrLogSa * const adapter = adapters_.find( number );
  target = adapter ? &adapter->entity() : nullptr;
  return target || isNew;
}

void Mirror::orphanGone( U64 number ) {
  auto const held = orphans_.extract( number );
  KoiNboAttrLogSa * const adapter = held ? adapters_.find( number ) : nullptr;
  if( !adapter || &adapter->entity() != held.mapped() || held.mapped()->parent() )
    return;
  // Where something refers to it here it is one of this end from now on.
  adapter->tellReferrers();
  adapter->entity().koiLogs()->remove( *this );
}

void FlowIn::remotely( Call call, void const * change ) {
  admit();
  struct Remote {
    ~Remote() { logs.remoteIs( nullptr ); }
    EntityLogs & logs;
  } const remote{ *adapter.entity().koiLogs() };
  remote.logs.remoteIs( &adapter );
  call( change );
}

bool FlowIn::changed( Call call, void const * change ) {
  try {
    remotely( call, change );
    return true;
  } catch( RangeException const & refusal ) {
    refuse( refusal.what() );
  } catch( NameInUseException const & refusal ) {
    refuse( refusal.what() );
  } catch( ReadOnlyException const & refusal ) {
    refuse( refusal.what() );
  }
  return false;
}

void FlowIn::changedIfAdmitted( Call call, void const * change ) {
  try {
    remotely( call, change );
  } catch( Exception const & ) {  // a reference that is not null must stay what it is
  }
}

void FlowIn::changed() const { adapter.entity().koiLogs()->mark( attribute, mirror().origin() ); }

void FlowIn::refuse( std::string const & why ) { mirror().refused( adapter, attribute, why ); }

LogOp FlowIn::op() {
  U8 const op = in.nextU8();
  if( op > static_cast< U8 >( LogOp::crossed ) )
    throwParseException( "attribute log: operation " + std::to_string( op ) );
  return static_cast< LogOp >( op );
}

void FlowIn::admit() const {
  if( !adapter.readOnlyRemoteOk() )
    throw ReadOnlyException( "write-update from readonly proxy: " +
                             std::string( adapter.entity().fullName() ) );
}

bool FlowIn::isAnother( Entity const & child, U64 incarnation ) const {
  KoiNboAttrLogSa const * const known = child.koiNboAttrLogSa( mirror() );
  return known && known->peerIncarnation != 0 && known->peerIncarnation != incarnation &&
         mirror().isSameInstance();
}

// ---- what waits for something to appear

void Mirror::waits() {
  if( std::ranges::find( waitingMirrors, this ) == waitingMirrors.end() )
    waitingMirrors.push_back( this );
}

void Mirror::appeared() {
  for( Mirror * const mirror : waitingMirrors ) {
    mirror->hasAppeared_ = true;
    mirror->wantOutput();
  }
}

void Mirror::resolve( bool isLast ) {
  hasAppeared_ = false;
  AdapterList< WaitingAdapters > waiting;  // which those that go meanwhile leave
  waiting.swap( adapters_.waiting );
  while( !waiting.empty() ) {
    KoiNboAttrLogSa & adapter = waiting.front();
    waiting.pop_front();
    adapter.retryUnresolved( isLast );
  }
  if( adapters_.waiting.empty() )
    std::erase( waitingMirrors, this );
}

}  // namespace Koi
