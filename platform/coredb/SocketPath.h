// SocketPath.h: a stream socket by the path of its file. One thread uses an object.
//
// The path may be longer than the system's addresses are. Whoever listens has the path alone: a
// file that a dead process left is taken over, that of a living one is not.
//
//   <path>       the socket
//   <path>.lock  held locked while the socket is put in its place; mode 0600, never removed
#pragma once

#include <string>

#include <coredb/ServeException.h>
#include <mem/Kick.h>

namespace Coredb {

class SocketPath {
 public:
  /// Looks at nothing yet.
  explicit SocketPath( std::string path ) : path_( std::move( path ) ) {}
  /// Removes the file if it is still the one that listen() made.
  ~SocketPath();
  SocketPath( SocketPath const & ) = delete;
  SocketPath & operator=( SocketPath const & ) = delete;

  std::string const & path() const { return path_; }

  /// A socket that listens under the path, which those may connect to who may write a file of that
  /// mode. Needs a directory that is there. Raises ServeException "cannot listen at <path>: <why>".
  Mem::Descriptor listen( unsigned mode );
  /// A socket that is connected to whoever listens; else none, and errno says why.
  Mem::Descriptor connect() const;

 private:
  /// What the path names now is in nobody's use, or nothing.
  bool isFree( int directory ) const;

  std::string const path_;
  Mem::Descriptor directory_;  // of the file that listen() made
  unsigned long long device_ = 0, inode_ = 0;
};

}  // namespace Coredb
