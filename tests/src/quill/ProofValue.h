// ProofValue.h: a value that proves itself, in tables of real files: it carries its key, a version
// and a checksum of both, so that any reader can judge it alone.
#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <quill/QuillReader.h>
#include <quill/QuillWriter.h>

#include "support/ShmRoot.h"

namespace Tests {

using Koi::U32;
using Koi::U64;

struct ProofKey {
  U32 number = 0;
  friend auto operator<=>( ProofKey const &, ProofKey const & ) = default;
};
struct ProofValue {
  U32 number = 0;
  U64 version = 0;
  U64 sum[2]{};

  static ProofValue of( U32 number, U64 version ) {
    return { number, version, { checked( number, version, 1 ), checked( number, version, 2 ) } };
  }
  bool isSound() const {
    return sum[0] == checked( number, version, 1 ) && sum[1] == checked( number, version, 2 );
  }

 private:
  static U64 checked( U32 number, U64 version, U64 salt ) {
    U64 x = ( number * 0x9e3779b97f4a7c15 ) ^ ( version * 0xc2b2ae3d27d4eb4f ) ^ salt;
    x ^= x >> 29;
    return x * 0xbf58476d1ce4e5b9;
  }
};

}  // namespace Tests

template<>
struct Quill::Record< Tests::ProofValue > {
  using Value = Tests::ProofValue;
  using Key = Tests::ProofKey;
  static constexpr char valueType[] = "Tests::ProofValue";
  static constexpr U32 keySize = 8, valueSize = 32;

  static void putKey( Key const & key, U32 * words ) {
    words[0] = key.number;
    words[1] = 0;
  }
  static void put( Value const & v, U32 * words ) {
    putKey( { v.number }, words );
    std::memcpy( words + 2, &v.version, 24 );
  }
  static Key key( U32 const * words ) { return { words[0] }; }
  static Value value( U32 const * words ) {
    Value v;
    v.number = words[0];
    std::memcpy( &v.version, words + 2, 24 );
    return v;
  }
  static U32 hash( U32 const * words, U32 seed ) {
    Koi::HashStream stream( seed );
    stream.block( words[0] );
    return stream.finish();
  }
};

namespace Tests {

using ProofWriter = Quill::QuillWriter< ProofValue >;
using ProofReader = Quill::QuillReader< ProofValue >;

/// Zeros that the processes of a test share.
template< class T >
class Shared {
 public:
  explicit Shared( std::size_t size = sizeof( T ) )
      : size_( size ),
        at_( static_cast< T * >(
            mmap( nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0 ) ) ) {}
  ~Shared() { munmap( const_cast< std::remove_cv_t< T > * >( at_ ), size_ ); }
  Shared( Shared const & ) = delete;
  Shared & operator=( Shared const & ) = delete;
  T & operator*() const { return *at_; }
  T * operator->() const { return at_; }

 private:
  std::size_t const size_;
  T * const at_;
};

inline Quill::TableParameters proofParameters( U32 maxSlots = 1 << 20 ) {
  Quill::TableParameters p;
  p.classType = "Tests::Table";
  p.maxSlots = maxSlots;
  return p;
}

}  // namespace Tests
