// MemberMemory.h: where the collections of an entity get their memory: chunks of members, bucket
// arrays, the tree of an order, the list for the logs. All of it comes and goes through these two
// functions and is counted under MemberMemory: a row for each type of member would say little, for
// a member is not allocated alone.
#pragma once

#include <cstddef>

#include <koi/AllocTrack.h>

namespace Koi {

/// What the memory of all collections is counted under.
struct MemberMemory {};

/// Memory of that many bytes, from the runtime's allocator. Raises std::bad_alloc.
inline void * memberAlloc( std::size_t size ) {
  return PtrInterface::koiMemAlloc( size, allocTrack< MemberMemory >() );
}

/// Gives back what memberAlloc( size ) gave.
inline void memberFree( void * memory, std::size_t size ) noexcept {
  PtrInterface::koiMemFree( memory, size, allocTrack< MemberMemory >() );
}

/// The same for a container of the standard library.
template< class T >
struct MemberAllocator {
  using value_type = T;

  MemberAllocator() = default;
  template< class U >
  MemberAllocator( MemberAllocator< U > const & ) {}
  T * allocate( std::size_t count ) {
    return static_cast< T * >( memberAlloc( count * sizeof( T ) ) );
  }
  void deallocate( T * memory, std::size_t count ) { memberFree( memory, count * sizeof( T ) ); }
  friend bool operator==( MemberAllocator const &, MemberAllocator const & ) { return true; }
};

}  // namespace Koi
