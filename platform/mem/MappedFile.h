// MappedFile.h: one file of shared memory and its mapping. One thread of one process uses an
// object; the writer process maps a file writable and alone changes its size, others map it
// read-only.
//
// M1  Whatever the mapping covers had room reserved before: a write to it cannot fail.
// M2  A file is never truncated in place while somebody may map it, but by cut(), whose caller
// knows
//     that nobody looks behind the new end. Who looks all the same is told by isLost().
#pragma once

#include <memory>
#include <string>

#include <koi/Export.h>
#include <mem/Words.h>

namespace Mem {

class KOI_PUBLIC MappedFile {
 public:
  enum Access { readOnly, writable };

  /// Maps the file as it is; `path` is for messages. Takes the descriptor, also when it raises.
  /// Raises Rova::MemoryResourceException "cannot map <path>: <what the system says>".
  MappedFile( int descriptor, std::string path, Access access );
  ~MappedFile();
  MappedFile( MappedFile const & ) = delete;
  MappedFile & operator=( MappedFile const & ) = delete;

  /// Where the file begins in memory. Moves when the mapping grows.
  unsigned char * base() const { return base_; }
  /// The bytes that are mapped.
  U64 size() const { return size_; }
  std::string const & path() const { return path_; }

  /// Makes the file at least that long, its new bytes zero and their room reserved, and maps it; a
  /// long file in large pages where the system has them.
  /// Raises Rova::MemoryResourceException "cannot reserve <n> bytes for <path>: <why>"; the file
  /// then is as it was.
  void reserve( U64 size );
  /// Makes the file at most that long.
  void cut( U64 size );
  /// Maps as much as the file has now. Raises as the constructor does.
  void remap();
  /// The file was cut under a mapping: what is read from it since then are zeros.
  bool isLost() const { return lost_.isSet(); }
  /// The same file as the other's, not one of its name that came later.
  bool isSameFile( MappedFile const & other ) const;

 private:
  void map( U64 size );
  void unmap();
  void unmapFrom( U64 size );
  [[noreturn]] void refuse( char const * what ) const;

  int const descriptor_;
  std::string const path_;
  Access const access_;
  unsigned char * base_ = nullptr;
  U64 size_ = 0;
  Flag lost_;
  unsigned guard_ = 0;
};

}  // namespace Mem
