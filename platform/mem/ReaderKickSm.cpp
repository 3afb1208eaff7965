#include <mem/ReaderKickSm.h>

#include <fcntl.h>
#include <sys/eventfd.h>
#include <sys/mman.h>
#include <unistd.h>

#include <new>

namespace Mem {

ReaderKickSm::ReaderKickSm( Koi::Activity * activity, Handlers handlers,
                            Ntrace::Handler const & trace )
    : activity_( activity ), handlers_( std::move( handlers ) ), trace_( trace ) {}

ReaderKickSm::~ReaderKickSm() { detach(); }

void ReaderKickSm::attach( TableDir const & dir ) {
  if( socket_.isOpen() )
    return;
  Descriptor socket( dir.connect( KickMessage::socketName ) );
  if( !socket.isOpen() )
    return;
  Descriptor const memory( memfd_create( "reader's words", MFD_CLOEXEC | MFD_ALLOW_SEALING ) );
  if( !memory.isOpen() || ftruncate( memory.number(), sizeof( KickWords ) ) != 0 ||
      fcntl( memory.number(), F_ADD_SEALS, F_SEAL_SHRINK | F_SEAL_GROW | F_SEAL_SEAL ) != 0 )
    return trace_.trace( 0, "ReaderKickSm::attach() no memory for the reader's words" );
  void * const at =
      mmap( nullptr, sizeof( KickWords ), PROT_READ | PROT_WRITE, MAP_SHARED, memory.number(), 0 );
  if( at == MAP_FAILED )
    return trace_.trace( 0, "ReaderKickSm::attach() cannot map the reader's words" );
  words_ = new( at ) KickWords;
  socket_ = std::move( socket );
  if( !KickMessage{ KickMessage::attach, KickMessage::currentVersion, {}, memory.number() }.send(
          socket_.number() ) )
    return detach();
  answers_ = std::make_shared< Koi::DescriptorWatch >(
      activity_, socket_.number(), Koi::DescriptorWatch::readable, [this] { heard(); } );
}

void ReaderKickSm::detach() {
  // A handler of these may be under way; the watches come off before the descriptors are closed.
  for( auto * const watch : { &answers_, &events_ } )
    if( *watch ) {
      ( *watch )->isWatchingIs( false );
      activity_->deferIs( [gone = std::move( *watch )] {} );
      watch->reset();
    }
  socket_.reset();
  event_.reset();
  if( words_ )
    munmap( words_, sizeof( KickWords ) );
  words_ = nullptr;
}

void ReaderKickSm::heard() {
  KickMessage message;
  auto const what = message.receive( socket_.number() );
  if( what == KickMessage::Received::nothing )
    return;
  Descriptor carried( message.descriptor );
  if( what == KickMessage::Received::end )
    return end( "the writer has gone" );
  if( message.kind == KickMessage::refused )
    return end( message.text.c_str() );
  if( message.kind != KickMessage::attached || isAttached() || !carried.isOpen() )
    return end( "the writer answered nonsense" );
  event_ = std::move( carried );
  events_ = std::make_shared< Koi::DescriptorWatch >( activity_, event_.number(),
                                                      Koi::DescriptorWatch::readable, [this] {
                                                        eventfd_t count = 0;
                                                        eventfd_read( event_.number(), &count );
                                                        awaken();
                                                        handlers_.onKick();
                                                      } );
  trace_.trace( 3, "ReaderKickSm::attach() attached" );
  handlers_.onAttached();
}

void ReaderKickSm::end( char const * why ) {
  trace_.trace( 3, "ReaderKickSm: not attached: ", why );
  detach();
  handlers_.onAttached();
}

void ReaderKickSm::acknowledgedIs( U64 sequence ) {
  if( words_ )
    Words::store( &words_->acknowledged, sequence );
}
void ReaderKickSm::sleep() {
  if( words_ && !isAsleep() )
    Words::publish( &words_->asleep, words_->asleep + 1 );
}
void ReaderKickSm::awaken() {
  if( isAsleep() )
    Words::publish( &words_->asleep, words_->asleep + 1 );
}

void ReaderKickSm::reportCorruption( std::string const & text ) const {
  if( isAttached() )
    KickMessage{ KickMessage::corruption, KickMessage::currentVersion, text }.send(
        socket_.number() );
}

}  // namespace Mem
