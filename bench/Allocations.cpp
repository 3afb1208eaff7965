// Allocations.cpp: the C library's own allocator behind counters. The program's definitions stand
// before those of every library that it loads.

#include "Allocations.h"

#include <cstddef>

extern "C" {
void * __libc_malloc( std::size_t size );
void * __libc_calloc( std::size_t count, std::size_t size );
void * __libc_realloc( void * block, std::size_t size );
}

namespace {

std::uint64_t count = 0;

void counted() { __atomic_add_fetch( &count, 1, __ATOMIC_RELAXED ); }

}  // namespace

std::uint64_t Bench::numAllocations() { return __atomic_load_n( &count, __ATOMIC_RELAXED ); }

extern "C" void * malloc( std::size_t size ) {
  counted();
  return __libc_malloc( size );
}
extern "C" void * calloc( std::size_t number, std::size_t size ) {
  counted();
  return __libc_calloc( number, size );
}
extern "C" void * realloc( void * block, std::size_t size ) {
  counted();
  return __libc_realloc( block, size );
}
