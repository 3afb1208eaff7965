#include <coredb/TreeMount.h>

#include <algorithm>
#include <cerrno>
#include <system_error>

#include "Connection.h"
#include "SocketPath.h"

namespace Coredb {
namespace {

constexpr Koi::Seconds firstPause = 0.1, longestPause = 5;

}  // namespace

/// What outlives a connection, and the connection that there is.
class TreeMount::Wire {
 public:
  Wire( TreeMount & owner, Koi::Ptr< Koi::Entity > root, std::string const & socket, Access access )
      : path( socket ),
        log( std::move( root ), Koi::Mirror::proxy, access == Access::writable ),
        again( owner.activity_, [&owner] { owner.connect(); } ) {}

  SocketPath const path;
  Koi::Mirror log;
  Koi::Timer again;
  Koi::Seconds pause = firstPause;
  bool wasConnected = false;
  std::shared_ptr< Connection > connection;
};

TreeMount::TreeMount( Koi::Ptr< Koi::Entity > root, std::string const & path, Access access,
                      OnSynchronised onSynchronised, Koi::Activity * activity,
                      Ntrace::Handler const & trace )
    : activity_( activity ? activity : Koi::defaultActivity() ),
      onSynchronised_( std::move( onSynchronised ) ),
      trace_( trace ),
      wire_( std::make_unique< Wire >( *this, std::move( root ), path, access ) ) {
  connect();
}

TreeMount::~TreeMount() = default;

bool TreeMount::isConnected() const { return wire_->connection != nullptr; }

bool TreeMount::isAcknowledged() const {
  Koi::Mirror & log = wire_->log;
  if( !isSynchronised_ || !log.isSynchronised() )
    return false;
  // What a flush carried is among the sent until the server has acknowledged that flush.
  return log.isReadOnlyProxy() || ( log.adapters().dirty.empty() && log.adapters().sent.empty() );
}

void TreeMount::connect() {
  Mem::Descriptor socket = wire_->path.connect();
  if( !socket.isOpen() )
    return ended( std::generic_category().message( errno ) );
  if( std::exchange( wire_->wasConnected, true ) )
    wire_->log.restart();
  wire_->connection = std::make_shared< Connection >(
      activity_, wire_->log, std::move( socket ),
      Connection::Handlers{ [this] { received(); },
                            [this]( auto const & why ) { ended( why ); } } );
  trace_.trace( 3, "TreeMount: connected to ", wire_->path.path() );
}

void TreeMount::received() {
  if( wire_->log.isSynchronised() == isSynchronised_ )
    return;
  isSynchronised_ = !isSynchronised_;
  wire_->pause = firstPause;
  trace_.trace( 2, "TreeMount: ", wire_->path.path(),
                isSynchronised_ ? " is mounted" : " begins anew" );
  if( onSynchronised_ )
    onSynchronised_( isSynchronised_ );
}

void TreeMount::ended( std::string const & why ) {
  trouble_ = wire_->path.path() + ": " + why;
  trace_.trace( 3, "TreeMount: not connected: ", trouble_ );
  // Its handler may be under way: it goes when that has ended.
  if( wire_->connection )
    activity_->deferIs( [gone = std::move( wire_->connection )] {} );
  wire_->connection.reset();
  wire_->again.delayIs( wire_->pause );
  wire_->pause = std::min( wire_->pause * 2, longestPause );
  if( std::exchange( isSynchronised_, false ) && onSynchronised_ )
    onSynchronised_( false );
}

}  // namespace Coredb
