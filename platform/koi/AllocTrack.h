// AllocTrack.h: how many objects of each type there are, how many bytes they take, and how many
// there have ever been; readable while the process runs.
//
// Any thread may count and read. Counts are exact across threads once threadSafePtrIs( true ).
//
// I1  Of one type, no more objects are freed than were allocated.
// I2  What is counted as allocated was allocated: memory that is refused counts nothing, and a
//     constructor that throws gives its object back.
#pragma once

#include <cstddef>
#include <string>
#include <typeinfo>
#include <vector>

#include <koi/Ptr.h>

namespace Koi {

/// The counts of one type. Made once for each type and never destroyed, so that what goes at the
/// very end of the process still finds it.
class KOI_PUBLIC AllocTrack {
 public:
  explicit AllocTrack( std::string typeName ) : typeName_( std::move( typeName ) ) {}
  AllocTrack( AllocTrack const & ) = delete;
  AllocTrack & operator=( AllocTrack const & ) = delete;

  /// The type as its author wrote it.
  std::string const & typeName() const { return typeName_; }

  void allocated( std::size_t size ) {
    numAllocated_.add( 1 );
    liveSize_.add( size );
  }
  void freed( std::size_t size ) {
    numFreed_.add( 1 );
    liveSize_.subtract( size );
  }

  /// Objects there are. While another thread counts, about as many.
  U64 numLive() const {
    U64 const numFreed = numFreed_.value();
    U64 const allocatedSoFar = numAllocated_.value();
    return allocatedSoFar < numFreed ? 0 : allocatedSoFar - numFreed;  // the other thread's order
  }
  /// The bytes they take.
  U64 liveSize() const { return liveSize_.value(); }
  /// Objects there have ever been.
  U64 numAllocated() const { return numAllocated_.value(); }

 private:
  std::string const typeName_;
  Tally numAllocated_;
  Tally numFreed_;
  Tally liveSize_;
};

/// One row of allocTracks(): a copy of what was counted.
struct AllocTrackRow {
  std::string typeName;
  U64 numLive;
  U64 liveSize;
  U64 numAllocated;
};

/// Counting by type information, for who has no type at hand when compiling. Each call looks the
/// type up under a lock: what is counted often keeps the AllocTrack.
class KOI_PUBLIC AllocTrackTypeInfo {
 public:
  /// The counts of that type. Types of one name, as two files may each have in an unnamed
  /// namespace, are counted together.
  static AllocTrack & track( std::type_info const & type );

  static void trackAllocation( std::type_info const & type, std::size_t size ) {
    track( type ).allocated( size );
  }
  static void trackDeallocation( std::type_info const & type, std::size_t size ) {
    track( type ).freed( size );
  }
};

/// Every type that was ever counted, sorted by name.
KOI_PUBLIC std::vector< AllocTrackRow > allocTracks();

/// The counts of T; the type is looked up by the first call only.
template< class T >
AllocTrack & allocTrack() {
  static AllocTrack & track = AllocTrackTypeInfo::track( typeid( T ) );
  return track;
}

/// What Tracked stands on when it stands on nothing.
struct Standalone {};

/// Between T and its base: `new T` and `delete` go through the runtime's allocator and are counted
/// under T, with the size of the object as it is when a class derived from T has no Tracked of its
/// own. A Tracked further down in the chain of bases takes over: each object is counted once.
template< class T, class Base = Standalone >
class Tracked : public Base {
 public:
  static void * operator new( std::size_t size ) {
    static_assert( alignof( T ) <= __STDCPP_DEFAULT_NEW_ALIGNMENT__ );
    return PtrInterface::koiMemAlloc( size, allocTrack< T >() );
  }
  static void operator delete( void * memory, std::size_t size ) noexcept {
    PtrInterface::koiMemFree( memory, size, allocTrack< T >() );
  }
  static void * operator new( std::size_t, void * place ) noexcept { return place; }
  static void operator delete( void *, void * ) noexcept {}

 protected:
  Tracked() = default;
  using Base::Base;
  ~Tracked() = default;
};

}  // namespace Koi
