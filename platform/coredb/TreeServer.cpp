#include <coredb/TreeServer.h>

#include <algorithm>
#include <cerrno>
#include <system_error>

#include <sys/socket.h>

#include "Connection.h"
#include "SocketPath.h"

namespace Coredb {
namespace {

/// When there was no descriptor left for a client, others are asked for again after so long.
constexpr Koi::Seconds pauseOfAccepting = 1;

}  // namespace

/// A process that has mounted the tree.
class TreeServer::Client {
 public:
  Client( TreeServer & owner, Mem::Descriptor socket )
      : log_( owner.root_, Koi::Mirror::source, owner.access_ == Access::writable ),
        connection_(
            owner.activity_, log_, std::move( socket ),
            { [] {}, [this, &owner]( auto const & why ) { owner.forget( this, why ); } } ) {}

 private:
  Koi::Mirror log_;
  Connection connection_;
};

/// The socket that clients come in by.
class TreeServer::Listening {
 public:
  Listening( TreeServer & owner, std::string const & where )
      : path( where ),
        socket( path.listen( owner.access_ == Access::writable ? 0660 : 0666 ) ),
        watch( owner.activity_, socket.number(), Koi::DescriptorWatch::readable,
               [&owner] { owner.accept(); } ),
        pause( owner.activity_, [this] { watch.isWatchingIs( true ); } ) {}

  SocketPath path;
  Mem::Descriptor const socket;
  Koi::DescriptorWatch watch;
  Koi::Timer pause;
};

TreeServer::TreeServer( Koi::Ptr< Koi::Entity > root, std::string const & path, Access access,
                        Koi::Activity * activity, Ntrace::Handler const & trace )
    : root_( std::move( root ) ),
      access_( access ),
      activity_( activity ? activity : Koi::defaultActivity() ),
      trace_( trace ),
      listening_( std::make_unique< Listening >( *this, path ) ) {
  trace_.trace( 2, "TreeServer: ", root_->koiType()->name, " at ", path );
}

TreeServer::~TreeServer() = default;

std::string const & TreeServer::path() const { return listening_->path.path(); }

void TreeServer::accept() {
  Mem::Descriptor socket(
      accept4( listening_->socket.number(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK ) );
  if( socket.isOpen() ) {
    clients_.push_back( std::make_unique< Client >( *this, std::move( socket ) ) );
    trace_.trace( 3, "TreeServer: clients:", clients_.size() );
    return;
  }
  if( errno != EMFILE && errno != ENFILE && errno != ENOBUFS && errno != ENOMEM )
    return;  // whoever came has gone again
  trace_.trace( 0, "TreeServer: ", path(), ": ", std::generic_category().message( errno ) );
  listening_->watch.isWatchingIs( false );
  listening_->pause.delayIs( pauseOfAccepting );
}

void TreeServer::forget( Client const * client, std::string const & why ) {
  auto const place =
      std::ranges::find_if( clients_, [&]( auto const & one ) { return one.get() == client; } );
  // Its handler is under way: it goes when that has ended.
  activity_->deferIs( [gone = std::shared_ptr< Client >( std::move( *place ) )] {} );
  clients_.erase( place );
  trace_.trace( 3, "TreeServer: clients:", clients_.size(), ", one ended: ", why );
}

}  // namespace Coredb
