#include "Connection.h"

#include <array>
#include <cerrno>
#include <system_error>

#include <sys/socket.h>

namespace Coredb {
namespace {

bool isToBeRetried( int error ) { return error == EAGAIN || error == EINTR; }
std::string textOf( int error ) { return std::generic_category().message( error ); }

}  // namespace

Connection::Connection( Koi::Activity * activity, Koi::Mirror & log, Mem::Descriptor socket,
                        Handlers handlers )
    : log_( log ),
      socket_( std::move( socket ) ),
      handlers_( std::move( handlers ) ),
      readable_( activity, socket_.number(), Koi::DescriptorWatch::readable, [this] { read(); } ),
      writable_( activity, socket_.number(), Koi::DescriptorWatch::writable, [this] { write(); } ) {
  log_.onOutput( [this] { writable_.isWatchingIs( true ); } );
}

Connection::~Connection() {
  if( readable_.isWatching() )
    log_.onOutput( {} );
}

void Connection::end( std::string const & why ) {
  readable_.isWatchingIs( false );
  writable_.isWatchingIs( false );
  log_.onOutput( {} );
  handlers_.onEnd( why );
}

void Connection::write() {
  if( numSent_ == out_->size() ) {
    out_->cut( 0 );
    numSent_ = 0;
    log_.flush( *out_ );
    // Only a flush that finds nothing makes the log call again when there is something.
    if( out_->size() == 0 )
      return writable_.isWatchingIs( false );
  }
  auto const sent = send( socket_.number(), out_->data() + numSent_, out_->size() - numSent_,
                          MSG_NOSIGNAL | MSG_DONTWAIT );
  if( sent >= 0 )
    numSent_ += static_cast< std::size_t >( sent );
  else if( !isToBeRetried( errno ) )
    end( textOf( errno ) );
}

void Connection::read() {
  std::array< char, 64 * 1024 > bytes;
  auto const count = recv( socket_.number(), bytes.data(), bytes.size(), MSG_DONTWAIT );
  if( count == 0 )
    return end( "the other end has gone" );
  if( count < 0 ) {
    if( !isToBeRetried( errno ) )
      end( textOf( errno ) );
    return;
  }
  try {
    log_.received( bytes.data(), static_cast< std::size_t >( count ) );
  } catch( Koi::ParseException const & e ) {
    // What such a peer says next cannot be understood either.
    return end( e.what() );
  }
  handlers_.onReceived();
}

}  // namespace Coredb
