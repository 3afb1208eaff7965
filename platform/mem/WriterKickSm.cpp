#include <mem/WriterKickSm.h>

#include <algorithm>
#include <cerrno>
#include <system_error>

#include <fcntl.h>
#include <sys/eventfd.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <mem/Rova.h>

namespace Mem {
namespace {

/// A reader's words as the writer sees them: mapped to be read, sealed so that they stay.
class MappedWords {
 public:
  MappedWords() = default;
  MappedWords( MappedWords const & ) = delete;
  MappedWords & operator=( MappedWords const & ) = delete;
  ~MappedWords() {
    if( at_ )
      munmap( const_cast< KickWords * >( at_ ), sizeof( KickWords ) );
  }

  /// Empty, or why not.
  std::string map( int descriptor ) {
    struct stat about {};
    int const seals = fcntl( descriptor, F_GET_SEALS );
    if( seals < 0 || !( seals & F_SEAL_SHRINK ) )
      return "the words are not sealed against shrinking";
    if( fstat( descriptor, &about ) != 0 ||
        about.st_size < static_cast< off_t >( sizeof( KickWords ) ) )
      return "the words are too short";
    void * const at = mmap( nullptr, sizeof( KickWords ), PROT_READ, MAP_SHARED, descriptor, 0 );
    if( at == MAP_FAILED )
      return "cannot map the words: " + std::generic_category().message( errno );
    at_ = static_cast< KickWords const * >( at );
    return {};
  }
  KickWords const * operator->() const { return at_; }
  bool areMapped() const { return at_; }

 private:
  KickWords const * at_ = nullptr;
};

uid_t peerOf( int socket ) {
  ucred peer{ 0, static_cast< uid_t >( -1 ), 0 };
  socklen_t size = sizeof peer;
  getsockopt( socket, SOL_SOCKET, SO_PEERCRED, &peer, &size );
  return peer.uid;
}

}  // namespace

class WriterKickSm::Reader {
 public:
  Reader( WriterKickSm & owner, int socket )
      : owner_( owner ),
        socket_( socket ),
        user_( peerOf( socket ) ),
        watch_( owner.activity_, socket, Koi::DescriptorWatch::readable, [this] { heard(); } ),
        since_( owner.activity_->now() ) {}

  /// It is not heard any more.
  void end() { watch_.isWatchingIs( false ); }
  uid_t user() const { return user_; }
  bool isAttached() const { return words_.areMapped(); }
  /// It has not said yet where it stands, and is new.
  bool isAwaited( Koi::Seconds now ) const {
    return now - since_ < patience && ( !isAttached() || acknowledged() == KickWords::nothingYet );
  }
  U64 acknowledged() const { return Words::load( &words_->acknowledged ); }

  /// Whether the writer waits for it, up to what it has acknowledged.
  bool isWaitedFor( U64 sequence, Koi::Seconds now ) {
    U64 const now_ = acknowledged();
    if( now_ == KickWords::nothingYet )
      return false;
    if( now_ >= sequence || now_ != last_ ) {
      last_ = now_;
      since_ = now;
    }
    return now - since_ < patience;
  }
  bool wake() {
    U32 const asleep = Words::observe( &words_->asleep );
    if( ( asleep & 1 ) == 0 || asleep == woken_ )
      return false;
    woken_ = asleep;
    return eventfd_write( event_.number(), 1 ) == 0;
  }

 private:
  void heard() {
    KickMessage message;
    switch( message.receive( socket_.number() ) ) {
      case KickMessage::Received::nothing:
        return;
      case KickMessage::Received::end:
        return owner_.forget( this );
      case KickMessage::Received::message:
        break;
    }
    Descriptor const carried( message.descriptor );
    if( message.kind == KickMessage::corruption && isAttached() )
      return owner_.handlers_.onCorruption( message.text );
    if( message.kind != KickMessage::attach || isAttached() )
      return owner_.forget( this );
    if( auto const why = attached( message, carried.number() ); !why.empty() ) {
      owner_.trace_.trace( 2, "WriterKickSm::attach() refused: ", why );
      KickMessage{ KickMessage::refused, KickMessage::currentVersion, why }.send(
          socket_.number() );
      return owner_.forget( this );
    }
    since_ = owner_.activity_->now();
    ++owner_.numReaders_;
    owner_.trace_.trace( 3, "WriterKickSm::attach() readers:", owner_.numReaders_ );
    owner_.handlers_.onReaders();
    if( !KickMessage{ KickMessage::attached, KickMessage::currentVersion, {}, event_.number() }
             .send( socket_.number() ) )
      owner_.forget( this );
  }
  std::string attached( KickMessage const & message, int descriptor ) {
    if( message.version != KickMessage::currentVersion )
      return "version " + std::to_string( message.version ) + ", not " +
             std::to_string( KickMessage::currentVersion );
    event_.reset( eventfd( 0, EFD_CLOEXEC | EFD_NONBLOCK ) );
    if( !event_.isOpen() )
      return "no eventfd: " + std::generic_category().message( errno );
    return words_.map( descriptor );
  }

  WriterKickSm & owner_;
  Descriptor const socket_;
  uid_t const user_;
  Koi::DescriptorWatch watch_;
  Descriptor event_;
  MappedWords words_;
  U32 woken_ = 0;
  U64 last_ = KickWords::nothingYet;
  Koi::Seconds since_;  // it attached, moved, or had all
};

WriterKickSm::WriterKickSm( Koi::Activity * activity, TableDir const & dir, Handlers handlers,
                            Ntrace::Handler const & trace, U32 mostReaders )
    : activity_( activity ),
      dir_( dir ),
      handlers_( std::move( handlers ) ),
      trace_( trace ),
      mostReaders_( mostReaders ) {
  try {
    listening_.reset( dir.listen( KickMessage::socketName ) );
    watch_ = std::make_unique< Koi::DescriptorWatch >(
        activity, listening_.number(), Koi::DescriptorWatch::readable, [this] { accept(); } );
  } catch( Rova::MemoryResourceException const & e ) {
    trace_.trace( 0, "WriterKickSm: nobody can attach: ", e.what() );
  }
}

WriterKickSm::~WriterKickSm() {
  // A later writer's socket of that name is not ours to remove: the table's lock is still held.
  if( listening_.isOpen() )
    try {
      dir_.remove( KickMessage::socketName );
    } catch( Rova::MemoryResourceException const & e ) {
      trace_.trace( 0, "WriterKickSm: ", e.what() );
    }
}

void WriterKickSm::accept() {
  int const socket = accept4( listening_.number(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK );
  if( socket < 0 )
    return;
  uid_t const user = peerOf( socket );
  auto const same =
      std::ranges::count_if( readers_, [&]( auto const & one ) { return one->user() == user; } );
  if( same >= static_cast< std::ptrdiff_t >( mostReaders_ ) ) {
    Descriptor const refused( socket );
    KickMessage{ KickMessage::refused, KickMessage::currentVersion,
                 "user " + std::to_string( user ) + " has " + std::to_string( same ) +
                     " readers of the table already" }
        .send( socket );
    return;
  }
  readers_.push_back( std::make_unique< Reader >( *this, socket ) );
}

void WriterKickSm::forget( Reader const * reader ) {
  auto const place =
      std::ranges::find_if( readers_, [&]( auto const & one ) { return one.get() == reader; } );
  bool const wasAttached = reader->isAttached();
  // Its handler is under way: it goes when that has ended.
  ( *place )->end();
  activity_->deferIs( [gone = std::shared_ptr< Reader >( std::move( *place ) )] {} );
  readers_.erase( place );
  if( !wasAttached )
    return;
  --numReaders_;
  trace_.trace( 3, "WriterKickSm::detach() readers:", numReaders_ );
  handlers_.onReaders();
}

U64 WriterKickSm::lowestSequence( U64 sequence ) {
  Koi::Seconds const now = activity_->now();
  U64 lowest = nobody;
  for( auto const & one : readers_ )
    if( one->isAttached() && one->isWaitedFor( sequence, now ) )
      lowest = std::min( lowest, one->acknowledged() );
  return lowest;
}

bool WriterKickSm::areAwaited() {
  Koi::Seconds const now = activity_->now();
  return std::ranges::any_of( readers_, [&]( auto const & one ) { return one->isAwaited( now ); } );
}

void WriterKickSm::wake() {
  for( auto const & one : readers_ )
    if( one->isAttached() )
      numKicks_ += one->wake();
}

}  // namespace Mem
