// TableDir.h: where the files of a table stand: a directory below the root of shared memory. One
// thread of one process uses an object.
//
//   <root>/kindle          the generation that files are trusted in: 4 bytes, little-endian, never
//   0 <root>/<table>/lock    whom the table's writer holds locked as long as it lives; never
//   removed <root>/<table>/...     what the table consists of
//
// The root is LUMO_SHM_ROOT of the environment, else /dev/shm/lumo. Whoever writes first makes it
// with mode 0755; a writer refuses one that another user owns. Directories have mode 0755 and files
// 0644. Nothing on the way to a file may be a symbolic link.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include <mem/MappedFile.h>

namespace Mem {

/// The root of shared memory.
class KOI_PUBLIC RootPath {
 public:
  /// What the environment names.
  RootPath();
  explicit RootPath( std::string path ) : path_( std::move( path ) ) {}
  std::string const & path() const { return path_; }

 private:
  std::string path_;
};

/// One table's directory.
class KOI_PUBLIC TableDir {
 public:
  using File = MappedFile;

  /// `name` may have several parts: "counters/vlanIntf". A writer makes what is missing. Raises
  /// Rova::MemoryResourceException "cannot open <path>: <why>", and for a writer "<root> belongs to
  /// another user"; ArgumentException "<name> is no name of a table" where a part is empty or
  /// begins with a dot.
  TableDir( RootPath const & root, std::string_view name, File::Access access );
  ~TableDir();
  TableDir( TableDir const & ) = delete;
  TableDir & operator=( TableDir const & ) = delete;

  std::string const & path() const { return path_; }

  /// Becomes the table's only writer; false when another process is. It ends with the process or
  /// with this object; a child that a fork makes does not have it.
  bool tryLock();

  /// The file of that name; null when there is none. Raises Rova::MemoryResourceException.
  std::unique_ptr< File > open( std::string const & file, File::Access access ) const;
  /// A new, empty one that has no name yet.
  std::unique_ptr< File > create( std::string const & file ) const;
  /// Gives what create() made its name, in place of whatever had it.
  void put( std::string const & file ) const;
  /// Takes the name away; who maps the file keeps it.
  void remove( std::string const & file ) const;

  /// Puts a file of that text under that name. Raises Rova::MemoryResourceException.
  void putText( std::string const & file, std::string_view text ) const;

  /// A socket (SOCK_SEQPACKET) that anybody may connect to under that name, which it takes from
  /// whatever had it. Raises Rova::MemoryResourceException "cannot listen at <path>: <why>".
  int listen( std::string const & file ) const;
  /// A socket that is connected to it; -1 when nobody listens.
  int connect( std::string const & file ) const;
  /// How the system finds the directory, however long its path is, as long as this object lives.
  std::string shortPath() const;

  /// The generation. A writer makes one when there is none; others get 0 then.
  U32 kindle() const;

 private:
  int openAt( int directory, std::string const & file, int flags ) const;

  std::string const root_;
  std::string const path_;
  File::Access const access_;
  int rootDescriptor_ = -1;
  int descriptor_ = -1;
  int lock_ = -1;
};

}  // namespace Mem
