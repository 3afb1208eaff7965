// EntityManager.h: mounts entities whose tables lie in shared memory, by path and type name. The
// tables of the entity at "counters/vlanIntf/all" are called "counters/vlanIntf/all/<collection>".
// One thread, that of its activity.
#pragma once

#include <map>
#include <string>
#include <vector>

#include <quill/KoiQuillMap.h>

namespace KoiQuill {

/// How large a table is to be, of who writes it.
struct CollectionInfo {
  std::string name;  ///< what the collection is called in its entity
  U32 size;          ///< the most entries it may hold
  bool fixedCapacity = false;
};

/// How an entity is mounted: all its tables alike.
struct MountInfo {
  Quill::QuillType mode = Quill::QuillType::shadow;
  std::vector< CollectionInfo > collections;  ///< of a writer, each of its tables
  bool synchronous = false;  ///< a table that is there is attached when doMount() returns

  void newCollectionInfo( std::string const & name, U32 size, bool fixedCapacity = false ) {
    collections.push_back( { name, size, fixedCapacity } );
  }
};

class KOI_PUBLIC EntityManager final : public Koi::PtrInterface {
 public:
  /// All that it mounts works on that activity, null for the default one, and lies below that root.
  explicit EntityManager( Koi::Activity * activity = nullptr, Mem::RootPath root = {} );

  /// Makes the entity, called by the last part of its path, and takes part in its tables, which are
  /// ready by and by, or, where that was asked for, at once if they can be. Raises
  /// ArgumentException "<path> is mounted already", "<path>: <type> is no entity", "<path>: <type>
  /// has no table in shared memory", "<path>: <type> has no table <name>" and "<path>: no size is
  /// given for the table <name>"; what Koi::typeNode() raises, and the type's constructor for a
  /// name alone; and as Quill::QuillMapState::init() does. Nothing is mounted then.
  Koi::Ptr< Koi::Entity > doMount( std::string const & path, std::string const & typeName,
                                   MountInfo const & info );
  /// What is mounted there; null when nothing is, or it is of another type.
  Koi::Ptr< Koi::Entity > getEntity( std::string const & path ) const;
  template< class E >
  Koi::Ptr< E > getEntity( std::string const & path ) const {
    return dynamic_cast< E * >( getEntity( path ).ptr() );
  }
  /// Lets it go: who holds the entity keeps it as it is.
  void unmount( std::string const & path );

 private:
  void handleZeroRef() const override { delete this; }
  void init( Koi::Entity & entity, std::string const & path, MountInfo const & info ) const;

  Koi::Activity * const activity_;
  Mem::RootPath const root_;
  std::map< std::string, Koi::Ptr< Koi::Entity > > mounted_;
};

}  // namespace KoiQuill
