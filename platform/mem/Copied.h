// Copied.h: a memory for a table engine that works on copies: who opens a file gets one in memory
// of its own, and whatever is changed is changed there. For who wants to know what a writer would
// make of files that belong to another one. One thread uses an object.
#pragma once

#include <map>
#include <memory>
#include <span>
#include <string>

#include <mem/TableDir.h>

namespace Mem {

/// A copy of one file. Those that are opened by one name share their bytes.
class KOI_PUBLIC CopiedFile {
 public:
  using Access = MappedFile::Access;
  static constexpr Access readOnly = MappedFile::readOnly;
  static constexpr Access writable = MappedFile::writable;

  struct Bytes {
    std::unique_ptr< U64[] > words;
    U64 size = 0;

    unsigned char * base() const { return reinterpret_cast< unsigned char * >( words.get() ); }
    /// Makes it that long; what is behind its old end is zero.
    void sizeIs( U64 newSize );
  };

  explicit CopiedFile( std::shared_ptr< Bytes > bytes ) : bytes_( std::move( bytes ) ) {}

  unsigned char * base() const { return bytes_->base(); }
  U64 size() const { return bytes_->size; }
  void reserve( U64 size ) {
    if( size > bytes_->size )
      bytes_->sizeIs( size );
  }

 private:
  std::shared_ptr< Bytes > bytes_;
};

/// A table's directory, of which some files are copied.
class KOI_PUBLIC CopiedDir {
 public:
  using File = CopiedFile;

  explicit CopiedDir( TableDir const & from ) : from_( from ), kindle_( from.kindle() ) {}

  /// Copies the files of those names as they are at one moment, whoever changes them; one that is
  /// not there is not there in the copy either. The word of the first file at `counterAt` is one
  /// that a writer moves when it begins a change and when it ends it.
  ///
  /// False when there was no such moment: each of `passes` copies differed from the one before it.
  /// Raises Rova::MemoryResourceException.
  bool tryCopy( std::span< char const * const > names, U64 counterAt, int passes );

  /// The copy of that file; null when there is none.
  std::unique_ptr< File > open( std::string const & file, File::Access ) const;
  U32 kindle() const { return kindle_; }

 private:
  struct Copy {
    std::unique_ptr< MappedFile > from;
    std::shared_ptr< CopiedFile::Bytes > bytes;
  };

  bool areStillThere() const;
  U64 counter( std::string const & file, U64 at ) const;
  static bool differed( Copy & copy );

  TableDir const & from_;
  U32 const kindle_;
  std::map< std::string, Copy > copies_;
};

/// The policy, as Mem::Plain is one.
struct Copied : Words {
  using Dir = CopiedDir;
  using File = CopiedFile;

  template< class Fault >
  static constexpr bool lacks( Fault ) {
    return false;
  }
  static void prefetch( void const * ) {}
};

}  // namespace Mem
