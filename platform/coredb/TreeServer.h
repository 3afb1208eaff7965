// TreeServer.h: serves a tree of entities to other processes, at a socket. On its activity's
// thread, the tree's.
//
// Whoever mounts the tree (TreeMount.h) sees it as it is here. docs/state-store.md has the rules.
// An observer that is told of what a client changed does not end the server: let it defer that.
#pragma once

#include <list>
#include <memory>

#include <coredb/ServeException.h>
#include <koi/Activity.h>
#include <koi/Entity.h>
#include <koi/Export.h>
#include <ntrace/Ntrace.h>

namespace Coredb {

/// Whether those at the other ends may change the tree.
enum class Access { readOnly, writable };

class KOI_PUBLIC TreeServer {
 public:
  /// Serves the tree below `root` at that path, whose directory is there. A tree that clients may
  /// change has a socket of mode 0660, for its owner and group, another one of mode 0666. A null
  /// activity is the default one. Raises ServeException "cannot listen at <path>: <why>".
  TreeServer( Koi::Ptr< Koi::Entity > root, std::string const & path, Access access,
              Koi::Activity * activity = nullptr,
              Ntrace::Handler const & trace = Ntrace::Handler() );
  /// Ends all connections and removes the socket.
  ~TreeServer();
  TreeServer( TreeServer const & ) = delete;
  TreeServer & operator=( TreeServer const & ) = delete;

  std::string const & path() const;
  /// How many connections there are.
  std::size_t numClients() const { return clients_.size(); }

 private:
  class Client;

  void accept();
  void forget( Client const * client, std::string const & why );

  Koi::Ptr< Koi::Entity > const root_;
  Access const access_;
  Koi::Activity * const activity_;
  Ntrace::Handler const trace_;
  class Listening;
  std::unique_ptr< Listening > listening_;
  std::list< std::unique_ptr< Client > > clients_;
};

}  // namespace Coredb
