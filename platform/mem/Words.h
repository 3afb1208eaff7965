// Words.h: loads and stores of words that other processes see, the only file that names a memory
// order for them. One process stores to a word, any number load it; readers map it read-only.
//
// Every load acquires and every store releases, plain moves on x86, but for the pair that decides
// who is awake. There are no fences, and none of the words' verbs reads and modifies at once: the
// race detector does not follow the first, a read-only mapping refuses the second.
#pragma once

#include <atomic>

#include <koi/Types.h>

namespace Mem {

using Koi::U32;
using Koi::U64;

static_assert( std::atomic_ref< U32 >::is_always_lock_free );
static_assert( std::atomic_ref< U64 >::is_always_lock_free, "Hardware does not support Atomics" );

/// A change counter and what changes: a link, a bucket's head, a count. Always loaded and stored
/// as one, at an address that is a multiple of 8. The counter is the first word in memory.
struct VersionedRef {
  U32 counter = 0;
  U32 ref = 0;

  friend bool operator==( VersionedRef const &, VersionedRef const & ) = default;
};

/// The same two words as one number.
constexpr U64 packed( VersionedRef pair ) { return U64{ pair.ref } << 32 | pair.counter; }
constexpr VersionedRef unpacked( U64 word ) {
  return { static_cast< U32 >( word ), static_cast< U32 >( word >> 32 ) };
}

/// The verbs. Addresses are multiples of the word's size.
struct Words {
  static U32 load( U32 const * at ) {
    return std::atomic_ref< U32 >( const_cast< U32 & >( *at ) ).load( std::memory_order_acquire );
  }
  static U64 load( U64 const * at ) {
    return std::atomic_ref< U64 >( const_cast< U64 & >( *at ) ).load( std::memory_order_acquire );
  }
  static void store( U32 * at, U32 v ) {
    std::atomic_ref< U32 >( *at ).store( v, std::memory_order_release );
  }
  static void store( U64 * at, U64 v ) {
    std::atomic_ref< U64 >( *at ).store( v, std::memory_order_release );
  }

  /// For two who each publish a word of their own and then look at the other's: at least one of
  /// them sees what the other published. Publishing costs a locked instruction.
  static void publish( U32 * at, U32 v ) {
    std::atomic_ref< U32 >( *at ).store( v, std::memory_order_seq_cst );
  }
  static U32 observe( U32 const * at ) {
    return std::atomic_ref< U32 >( const_cast< U32 & >( *at ) ).load( std::memory_order_seq_cst );
  }
};

/// Of one process: set by a signal handler or a thread, looked at by everybody.
class Flag {
 public:
  /// Sets it; false when it was set already.
  bool trySet() { return !set_.exchange( true, std::memory_order_acq_rel ); }
  bool isSet() const { return set_.load( std::memory_order_acquire ); }
  void set() { set_.store( true, std::memory_order_release ); }
  void clear() { set_.store( false, std::memory_order_release ); }

 private:
  std::atomic< bool > set_{ false };
  static_assert( std::atomic< bool >::is_always_lock_free );
};

}  // namespace Mem
