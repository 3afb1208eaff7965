// TreeMount.h: a tree of entities of another process, as its own. On its activity's thread, the
// tree's.
//
// The tree is equal to the one that a TreeServer serves while it is synchronised. Before and after
// that it stays as it is; the mount connects again, sooner at first, then every five seconds. The
// server may start later and end earlier. docs/state-store.md has the rules.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include <coredb/TreeServer.h>

namespace Coredb {

class KOI_PUBLIC TreeMount {
 public:
  /// The tree is equal to the server's from now on; or no more.
  using OnSynchronised = std::function< void( bool isSynchronised ) >;

  /// Mounts at `root` what is served at that path. Of a mount that is not writable, and of one
  /// whose server serves it read-only, this process cannot change the tree: Koi::ReadOnlyException.
  /// A null activity is the default one. The handler may be null; let it not end the mount.
  TreeMount( Koi::Ptr< Koi::Entity > root, std::string const & path, Access access,
             OnSynchronised onSynchronised = {}, Koi::Activity * activity = nullptr,
             Ntrace::Handler const & trace = Ntrace::Handler() );
  ~TreeMount();
  TreeMount( TreeMount const & ) = delete;
  TreeMount & operator=( TreeMount const & ) = delete;

  bool isSynchronised() const { return isSynchronised_; }
  /// The server has taken in all that was changed here so far, and its observers were told. The
  /// next change makes it false, and so does the end of the connection, until the tree is
  /// synchronised and what was under way was taken in, too. What the server refused counts as taken
  /// in: it is undone here a little later. A mount that cannot change the tree has nothing under
  /// way: true while it is synchronised. Who waits for it runs the activity, and looks again.
  bool isAcknowledged() const;
  /// Somebody listens at the path, though there may be nothing of the tree yet.
  bool isConnected() const;
  /// Why it was not, or is not, connected; empty when it never failed.
  std::string const & trouble() const { return trouble_; }

 private:
  class Wire;

  void connect();
  void received();
  void ended( std::string const & why );

  Koi::Activity * const activity_;
  OnSynchronised const onSynchronised_;
  Ntrace::Handler const trace_;
  std::string trouble_;
  bool isSynchronised_ = false;
  std::unique_ptr< Wire > wire_;
};

}  // namespace Coredb
