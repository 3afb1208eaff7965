// TableType.h: tables whose values' type is known only at run time, by its name in their header.
// For programs that look at any table; what a value's words mean is told by its type node
// (koi/RecordOps.h).
//
// Table types are registered while libraries load, and then only read; any thread may look one up
// after that.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include <koi/Activity.h>
#include <koi/KoiType.h>
#include <mem/Copied.h>

namespace Quill {

using Koi::U32;

/// A reader of one table, over words: RecordOps::keySize and valueSize say how many. One thread
/// uses an object. Raises as QuillReader does.
class KOI_PUBLIC AnyReader {
 public:
  virtual ~AnyReader();

  /// The entry of a key; false when there is none.
  virtual bool lookup( U32 const * key, U32 * value ) = 0;
  /// The first entry of the table, and the one behind a key, which need not be there any more;
  /// false at the end.
  virtual bool first( U32 * value ) = 0;
  virtual bool next( U32 const * key, U32 * value ) = 0;
};

/// A copy of one table that follows it, over words. On its activity's thread.
class KOI_PUBLIC AnyFollower {
 public:
  /// As those of QuillShadow are. The key's words are valid during the call.
  struct Handlers {
    std::function< void() > onReady;
    std::function< void( U32 const * key ) > onKey;
    std::function< void( bool isAttached ) > onAttached;
  };

  virtual ~AnyFollower();

  /// The entry of a key, as the copy has it; false when there is none.
  virtual bool lookup( U32 const * key, U32 * value ) = 0;
  /// Walks the copy from place 0 on; false at the end.
  virtual bool next( U32 & place, U32 * value ) = 0;
};

/// What a writer that attached to a table would say of its files.
struct TableVerdict {
  std::string fault;      ///< the first promise that is not kept; empty: it would go on with them
  bool isMended = false;  ///< an operation was under way, which the writer would finish
};

/// One type of values that lie in tables.
class KOI_PUBLIC TableType {
 public:
  virtual ~TableType();

  Koi::KoiType const & valueType() const { return valueType_; }

  /// Opens a table. Raises as the constructor of QuillReader does.
  virtual std::unique_ptr< AnyReader > reader( Mem::RootPath const & root,
                                               std::string_view name ) const = 0;
  /// Follows a table, also one that is not there yet.
  virtual std::unique_ptr< AnyFollower > follower( Koi::Activity * activity,
                                                   Mem::RootPath const & root,
                                                   std::string const & name,
                                                   AnyFollower::Handlers handlers ) const = 0;
  /// Judges a copy of a table's files, and repairs it. Raises Rova::MemoryResourceException.
  virtual TableVerdict verdict( Mem::CopiedDir & copy ) const = 0;

 protected:
  /// Registers it, for good.
  explicit TableType( Koi::KoiType const & valueType );

 private:
  Koi::KoiType const & valueType_;
};

/// The table type whose values are of that type; null when there is none.
KOI_PUBLIC TableType const * tableType( std::string_view valueType );

}  // namespace Quill
