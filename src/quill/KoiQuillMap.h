// KoiQuillMap.h: a table in shared memory as a keyed collection of an entity. It reads like any
// other, and observers of the entity are told of it by key.
//
// A process says by init() how it takes part in the table, under the table's name: as its writer,
// or as a reader. One that writes without having said so gets a private table, which goes with the
// entity. One thread, that of the entity, which is the table's activity.
//
// The bodies of the templates are in KoiQuillMapBody.h, and compiled once: in the source of the
// module that declares the table's values.
#pragma once

#include <memory>
#include <optional>

#include <koi/Entity.h>
#include <koi/TableCollection.h>
#include <quill/QuillMapState.h>

namespace Quill {
template< class V >
class QuillMap;
}

namespace KoiQuill {

using Koi::U32;

/// What it is whatever its entries are.
class KOI_PUBLIC KoiQuillMapBase : public Koi::TableCollection {
 public:
  /// Takes part in the table called `quillName`, by default what the collection is called in its
  /// entity, as Quill::QuillMapState::init() says and refuses. Copies tell changes by key from then
  /// on; a direct reader does when it is told to: map().notifying( true ).
  void init( Quill::QuillType type, bool synchronous, U32 size,
             Quill::QuillParameters parameters = {}, std::string const & quillName = {} );
  bool initialized() const { return map_ != nullptr; }
  /// It is initialized, and there was a table: what is there can be looked up.
  bool isReady() const { return map_ && map_->isCollectionReady(); }
  /// Nobody said how to take part, and it was written: the table is this process's own.
  bool isPrivate() const { return isPrivate_; }
  /// The table, of which all can be asked. Asserts that it is initialized.
  Quill::QuillMapState & map() const;
  /// As Quill::QuillMapState says; nothing as long as it is not initialized.
  void corruptionDetected( std::string const & message );

  std::size_t size() const { return map_ ? map_->members() : 0; }
  bool empty() const { return size() == 0; }
  /// What it is called in its entity.
  char const * name() const { return name_; }

  /// "none" before init(), then "writer", "private writer", "shadow", "reader" or "keyshadow".
  Koi::String8 koiControl() const override;

 protected:
  KoiQuillMapBase( Koi::Entity & owner, char const * name,
                   Koi::AttributeCallback<> const & onCollection );
  ~KoiQuillMapBase() override;

  virtual std::unique_ptr< Quill::QuillMapState > made( std::string const & quillName ) = 0;
  /// The table to be written; a private one when there is none yet. Raises ReadOnlyException "<full
  /// name>.<name> is written by another process", and Rova::InvalidInitializeException
  /// "QuillMap::createDefaultLocalWriter(): unable to initialize local QuillTemporary: <why>".
  Quill::QuillMapState & written();
  void collectionIsReady() { owner_.koiNotify( onCollection_ ); }

  Koi::Entity & owner_;
  std::unique_ptr< Quill::QuillMapState > map_;

 private:
  void createDefaultLocalWriter();

  char const * const name_;
  Koi::AttributeCallback<> const & onCollection_;  // a constant
  bool isPrivate_ = false;
};

/// K is the type of the key, V that of the entries.
template< class K, class V >
class KOI_PUBLIC KoiQuillMap final : public KoiQuillMapBase {
 public:
  using Key = K;
  using TableValue = V;

  /// A walk over the entries: `for( auto const & i : status->quillFdbStatus() ) ... i.key() ...
  /// i.value()`. What comes or goes meanwhile may be met or not. Beginning it and going on raise
  /// Rova::CorruptionDetectedException and Quill::ReaderStarvedException.
  class KOI_PUBLIC Iterator {
   public:
    using value_type = Iterator;
    using difference_type = std::ptrdiff_t;

    /// At the end.
    Iterator();
    explicit Iterator( KoiQuillMap const & table );
    ~Iterator();
    Iterator( Iterator const & );
    Iterator & operator=( Iterator const & );

    /// At an entry, even if it went since.
    explicit operator bool() const { return walk_ != nullptr; }
    K const & key() const;
    /// The entry as it was when the walk came to it.
    V const & value() const;
    Iterator & operator++();
    Iterator const & operator*() const { return *this; }
    friend bool operator==( Iterator const & a, Iterator const & b ) { return a.isAt( b ); }

   private:
    struct Walk;
    bool isAt( Iterator const & other ) const;
    std::unique_ptr< Walk > walk_;
  };
  using IteratorConst = Iterator;

  KoiQuillMap( Koi::Entity & owner, char const * name,
               Koi::AttributeCallback< Koi::Argument< K > > const & onKey,
               Koi::AttributeCallback<> const & onCollection );
  ~KoiQuillMap() override;

  bool contains( K const & k ) const { return lookup( k ).has_value(); }
  /// The entry of that key; nothing when there is none, or no table. Raises
  /// Rova::CorruptionDetectedException and Quill::ReaderStarvedException.
  std::optional< V > lookup( K const & k ) const;
  /// The same; the default when there is none. Corrupt files are reported, and then there is none.
  V value( K const & k ) const;
  Iterator begin() const { return Iterator( *this ); }
  Iterator end() const { return Iterator(); }

  // ---- for the entity's mutators

  /// Writes an entry; what is there already is no change. Raises RangeException for what is outside
  /// its type's range, Quill::TableFullException, Rova::MemoryResourceException, and as written()
  /// does.
  void koiIs( V const & v );
  /// Removes it: what was there, or the default.
  V koiDel( K const & k );
  /// The keys that are there now, one by one.
  void koiDelAll();
  /// Opens the value's entry for writing in place; readers have it as it was until koiCommit(),
  /// which gives it that value.
  void koiOpen( V const & v );
  void koiCommit( V const & v );
  void koiNotifyKey( Koi::Argument< K > k ) { owner_.koiNotify( onKey_, k ); }
  void koiNotifyCollection() { collectionIsReady(); }

  Koi::GenericIfPtr koiEntry( std::string const & what, Koi::CtorArgs const & args ) const override;
  Koi::Ptr< Koi::GenericIfIterator > koiEntries( Koi::Entity & owner ) override;

 private:
  class EntryWalk;

  std::unique_ptr< Quill::QuillMapState > made( std::string const & quillName ) override;
  Quill::QuillMap< V > & typed( Quill::QuillMapState & map ) const;

  Koi::AttributeCallback< Koi::Argument< K > > const & onKey_;  // a constant
};

}  // namespace KoiQuill
