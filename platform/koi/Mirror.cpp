// Mirror.cpp: the connection: greeting, flushes out, bytes in. MirrorApply.cpp has what a flush
// does to the tree.
#include <koi/Mirror.h>

#include <algorithm>
#include <cstring>
#include <mutex>
#include <random>

namespace Koi {
namespace {

constexpr U32 magic = 0x4c4f4731;  // "LOG1"
constexpr std::size_t headerSize = 5;
/// A flush that grows beyond this, in bytes, because the state changes faster than it is read, ends
/// in the middle: the rest comes with the next.
constexpr std::size_t flushSizeMost = 64 * 1024 * 1024;

/// Tells one run of a program from another, whose counts begin anew.
U64 thisInstance() {
  static U64 const instance = [] {
    std::random_device random;
    return ( U64{ random() } << 32 | random() ) | 1;
  }();
  return instance;
}

/// The numbers by which collections know who made a change. 0 is the program itself.
class Origins {
 public:
  U16 take() {
    std::lock_guard const guard( mutex_ );
    auto const at = std::find( taken_.begin(), taken_.end(), false );
    std::size_t const origin = static_cast< std::size_t >( at - taken_.begin() );
    KOI_ASSERT( origin < 0xffff );
    if( at == taken_.end() )
      taken_.push_back( true );
    taken_[origin] = true;
    return static_cast< U16 >( origin + 1 );
  }
  void give( U16 origin ) {
    std::lock_guard const guard( mutex_ );
    taken_[origin - 1u] = false;
  }

 private:
  std::mutex mutex_;
  std::vector< bool > taken_;
};
Origins & origins() {
  static Origins & theOnes = *new Origins;  // never destroyed: mirrors may go last
  return theOnes;
}

}  // namespace

Mirror::Mirror( Ptr< Entity > root, Role role, bool writable )
    : root_( std::move( root ) ),
      role_( role ),
      writable_( writable ),
      origin_( origins().take() ),
      adapters_( role == source ? 2 : 3 ) {
  if( role_ == proxy )
    attached( *root_, KoiNboAttrLogSa::incremental );
}

Mirror::~Mirror() {
  adapters_.detachAll();
  resolve();  // with nothing that waits
  origins().give( origin_ );
}

// ---- the connection

void Mirror::restart() {
  in_.clear();
  doneIs( 0 );
  beginAnew();
}

void Mirror::beginAnew() {
  ++counts_.restarts;
  ++session_;
  peerSession_ = 0;
  doneIs( scanned_ );  // what is left is how a frame begins, whose end is still to come
  forgetConnection();
  isHelloDue_ = true;
  wantOutput();
}

void Mirror::forgetConnection() {
  isEstablished_ = false;
  isOpen_ = isAwaiting_ = isFirstDue_ = isAckDue_ = isRestartDue_ = false;
  numOut_ = numIn_ = 0;
  typesOut_.clear();
  typesIn_.clear();
  orphans_.clear();
  touched_.clear();
  if( role_ == source ) {
    adapters_.detachAll();
  } else {
    adapters_.dirty.clear();
    adapters_.sent.clear();
    adapters_.waiting.clear();
    for( auto & adapter : adapters_.all )
      adapter.unsend();
  }
  adapters_.forgetNumbers();
  orphansGone_.clear();  // those of the connection, which their adapters named when they went
}

void Mirror::greeted( NboAttrLog::In in ) {
  if( in.nextU32() != magic )
    throwParseException( "attribute log: a greeting of another protocol or version" );
  U64 const session = in.nextU64(), answered = in.nextU64(), instance = in.nextU64();
  bool const isSource = in.nextbool(), writable = in.nextbool();
  String8 const rootType = in.nextString();
  if( isSource == ( role_ == source ) )
    throwParseException( isSource ? "attribute log: both ends are sources"
                                  : "attribute log: both ends are proxies" );
  if( rootType.view() != root_->koiType()->name )
    throwParseException( "attribute log: the peer's tree is a " + std::string( rootType.view() ) +
                         ", not a " + root_->koiType()->name );
  if( session != peerSession_ ) {
    forgetConnection();
    peerSession_ = session;
    isHelloDue_ = true;
  }
  isEstablished_ = answered == session_;
  peerInstance_ = instance;
  peerIsWritable_ = writable;
  if( isEstablished_ ) {
    auto & root = attached( *root_, KoiNboAttrLogSa::fullResync );
    adapters_.peerNumberIs( root, AdapterTable::rootNumber );
    knownIs( root );
    isFirstDue_ = role_ == source;
  }
  wantOutput();
}

// ---- out

bool Mirror::hasOutput() const {
  if( isHelloDue_ || !isEstablished_ )
    return isHelloDue_;
  if( isAckDue_ || isRestartDue_ || ( hasAppeared_ && !adapters_.waiting.empty() ) )
    return true;
  if( isAwaiting_ || isReadOnlyProxy() || !isSynchronised() )
    return false;
  return isOpen_ || isFirstDue_ || !adapters_.dirty.empty() || !orphansGone_.empty();
}

void Mirror::wantOutput() {
  if( isWanted_ || !onOutput_ || !hasOutput() )
    return;
  isWanted_ = true;
  onOutput_();
}

void Mirror::dirtyIs( KoiNboAttrLogSa & adapter ) {
  if( !adapter.isKnown || !adapter.hasDirt() ||
      static_cast< AdapterHook< DirtyAdapters > & >( adapter ).is_linked() )
    return;
  adapters_.dirty.push_back( adapter );
  wantOutput();
}

void Mirror::knownIs( KoiNboAttrLogSa & adapter ) {
  adapter.isKnown = true;
  dirtyIs( adapter );
}

void Mirror::flush( NboAttrLog::Out & out, std::size_t most ) {
  if( hasAppeared_ )
    apply( [this] { resolve(); } );
  if( isRestartDue_ )
    beginAnew();
  out_ = &out;
  outMost_ = out.size() + most;
  if( isHelloDue_ )
    writeHello();
  if( isAckDue_ )
    writeAck();
  if( hasOutput() && !isOpen_ )
    beginFlush();
  bool isTold = isOpen_;
  while( isTold && !adapters_.dirty.empty() ) {
    KoiNboAttrLogSa & adapter = adapters_.dirty.front();
    isTold = adapter.flowOut( flow_ );
    if( isTold )
      adapters_.dirty.pop_front();
  }
  if( isTold || ( isOpen_ && flushSize_ >= flushSizeMost && !isInsideWhole_ ) )
    endFlush();
  out_ = nullptr;
  isWanted_ = hasOutput();
}

bool Mirror::hasRoom( bool insideWhole ) {
  isInsideWhole_ = insideWhole;
  return out_->size() < outMost_ && ( insideWhole || flushSize_ < flushSizeMost );
}

void Mirror::beginFlush() {
  flushSize_ = 0;
  isFirstDue_ = false;
  isOpen_ = true;
  writeFrame( Frame::begin );
}

void Mirror::endFlush() {
  for( U64 const number : orphansGone_ ) {
    control_ << number;
    writeFrame( Frame::orphanGone );
  }
  orphansGone_.clear();
  control_ << ++numOut_;
  writeFrame( Frame::end );
  isOpen_ = false;
  isAwaiting_ = true;
  ++counts_.flushesOut;
}

void Mirror::writeHello() {
  control_ << magic << session_ << peerSession_ << thisInstance() << ( role_ == source )
           << writable_ << String8( root_->koiType()->name );
  writeFrame( Frame::hello );
  isHelloDue_ = false;
}

void Mirror::writeAck() {
  control_ << numIn_;
  writeFrame( Frame::ack );
  isAckDue_ = false;
}

void Mirror::writeType( KoiType const & node ) {
  auto const nameOfType = []( KoiType const * t ) { return String8( t ? t->name : "" ); };
  control_ << String8( node.name ) << static_cast< U16 >( node.fields.size() );
  for( KoiAttribute const & field : node.fields )
    control_ << String8( field.name ) << static_cast< U8 >( field.access->kind )
             << nameOfType( field.key ) << nameOfType( field.type );
  writeFrame( Frame::type );
}

void Mirror::writeFrame( Frame kind ) {
  std::size_t const size = 1 + control_->size();
  U8 * const at = startFrame( kind, size );
  if( size > 1 )
    std::memcpy( at, control_->data(), control_->size() );
  control_->cut( 0 );
}

U8 * Mirror::startFrame( Frame kind, std::size_t size ) {
  U8 * const at = out_->room( sizeof( U32 ) + size );
  flushSize_ += size;
  return storeBig( storeBig( at, static_cast< U32 >( size ) ), static_cast< U8 >( kind ) );
}

void Mirror::sendAttribute( KoiNboAttrLogSa & adapter, unsigned attribute ) {
  NboAttrLog::Out & content = flow_.frame();
  if( content.size() == 0 )
    return;
  if( typesOut_.insert( adapter.entity().koiType() ).second )
    writeType( *adapter.entity().koiType() );
  std::size_t const size = 1 + sizeof( U64 ) + sizeof( U16 ) + content.size();
  U8 * at = storeBig( startFrame( Frame::attribute, size ), adapters_.numberOf( adapter ) );
  at = storeBig( at, static_cast< U16 >( attribute ) );
  std::memcpy( at, content.data(), content.size() );
  content.cut( 0 );
}

void Mirror::adapterGoes( KoiNboAttrLogSa const & adapter ) {
  if( adapter.isOrphan && adapter.isKnown )
    orphansGone_.push_back( adapter.number );
}

// ---- in

std::optional< Mirror::Incoming > Mirror::frameAt( std::vector< U8 > const & bytes,
                                                   std::size_t at ) {
  if( bytes.size() - at < headerSize )
    return std::nullopt;
  U32 const size = loadBig< U32 >( &bytes[at] );
  U8 const kind = bytes[at + sizeof( U32 )];
  if( size == 0 || size > FlowOut::frameSizeMost )
    throwParseException( "attribute log: a frame of " + std::to_string( size ) + " bytes" );
  if( kind < static_cast< U8 >( Frame::hello ) || kind > static_cast< U8 >( Frame::orphanGone ) )
    throwParseException( "attribute log: a frame of kind " + std::to_string( kind ) );
  std::size_t const next = at + sizeof( U32 ) + size;
  if( next > bytes.size() )
    return std::nullopt;
  return Incoming{ static_cast< Frame >( kind ),
                   NboAttrLog::In( bytes.data() + at + headerSize, size - 1 ), next };
}

void Mirror::received( void const * bytes, std::size_t size ) {
  auto const * const first = static_cast< U8 const * >( bytes );
  in_.insert( in_.end(), first, first + size );
  while( auto const frame = frameAt( in_, scanned_ ) ) {
    if( frame->kind == Frame::hello ) {
      greeted( frame->body );
      doneIs( frame->next );
    } else if( !isEstablished_ ) {
      doneIs( frame->next );  // of a connection that has ended
    } else if( frame->kind == Frame::begin && !isFlushIncoming_ ) {
      isFlushIncoming_ = true;
      scanned_ = frame->next;
    } else if( frame->kind == Frame::end && isFlushIncoming_ ) {
      auto const begin = in_.begin();
      std::vector< U8 > const flush( begin + static_cast< std::ptrdiff_t >( done_ ),
                                     begin + static_cast< std::ptrdiff_t >( frame->next ) );
      doneIs( frame->next );
      applyFlush( flush );
    } else if( isFlushIncoming_ && frame->kind != Frame::begin ) {
      scanned_ = frame->next;  // an acknowledgement too: it is true of what stands behind it
    } else if( frame->kind == Frame::ack ) {
      acknowledged( frame->body );
      doneIs( frame->next );
    } else {
      throwParseException( isFlushIncoming_
                               ? "attribute log: a flush begins inside another one"
                               : "attribute log: a frame of kind " +
                                     std::to_string( static_cast< U8 >( frame->kind ) ) +
                                     " outside a flush" );
    }
  }
  in_.erase( in_.begin(), in_.begin() + static_cast< std::ptrdiff_t >( done_ ) );
  scanned_ -= done_;
  done_ = 0;
  wantOutput();
}

void Mirror::doneIs( std::size_t done ) {
  done_ = scanned_ = done;
  isFlushIncoming_ = false;
}

void Mirror::acknowledged( NboAttrLog::In in ) {
  U64 const number = in.nextU64();
  if( !isAwaiting_ || number != numOut_ )
    throwParseException( "attribute log: an acknowledgement of flush " + std::to_string( number ) +
                         ", which was not sent" );
  isAwaiting_ = false;
  while( !adapters_.sent.empty() ) {
    KoiNboAttrLogSa & adapter = adapters_.sent.front();
    adapters_.sent.pop_front();
    adapter.ack();
  }
}

}  // namespace Koi
