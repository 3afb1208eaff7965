// MemberMemory.h: where the collections of an entity get their memory: chunks of members, bucket
// arrays, the tree of an order. All of it comes and goes through these two functions.
#pragma once

#include <cstddef>
#include <new>

namespace Koi {

constexpr std::size_t cacheLine = 64;

/// Whether memory of that size begins with a cache line: a member of 64 bytes is then in one.
constexpr bool isAligned( std::size_t size ) { return size >= 16 * cacheLine; }

/// Memory for anything that needs no more than the usual alignment. Raises std::bad_alloc.
inline void * memberAlloc( std::size_t size ) {
  return isAligned( size ) ? ::operator new( size, std::align_val_t( cacheLine ) )
                           : ::operator new( size );
}

/// Gives back what memberAlloc( size ) gave.
inline void memberFree( void * memory, std::size_t size ) {
  if( isAligned( size ) )
    ::operator delete( memory, std::align_val_t( cacheLine ) );
  else
    ::operator delete( memory );
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
