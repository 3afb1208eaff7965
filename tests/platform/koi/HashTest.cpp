// HashTest.cpp: the hash is MurmurHash3 x86_32, as others compute it too. Where Debian's
// libmurmurhash is there, it is asked as well (LUMO_HAVE_MURMURHASH).

#include <random>
#include <string>

#include <gtest/gtest.h>

#include <koi/Hash.h>

#include "support/Murmur3.h"

#ifdef LUMO_HAVE_MURMURHASH
#include <murmurhash.h>
#endif

namespace {

using namespace std::string_literals;

TEST( Hash, knownVectors ) {
  struct Vector {
    std::string bytes;
    Koi::U32 hash;
  };
  for( auto const & [bytes, hash] :
       { Vector{ "", 0 },
         { "\x21", 0x72661cf4 },
         { "\x21\x43", 0xa0f7b07a },
         { "\x21\x43\x65", 0x7e4a8634 },
         { "\x21\x43\x65\x87", 0xf55b516b },
         { "\0\0\0\0"s, 0x2362f9de },
         { "\xff\xff\xff\xff", 0x76293b50 },
         { "test", 0xba6bd213 },
         { "Hello, world!", 0xc0363e43 },
         { "The quick brown fox jumps over the lazy dog", 0x2e4ff723 } } )
    EXPECT_EQ( Koi::hashOfBytes( bytes.data(), bytes.size() ), hash ) << bytes;
}

TEST( Hash, everyoneComputesTheSame ) {
  std::mt19937 random( 1 );
  for( std::size_t size = 0; size < 300; ++size ) {
    std::string bytes( size, '\0' );
    for( char & byte : bytes )
      byte = static_cast< char >( random() );
    Koi::U32 const hash = Koi::hashOfBytes( bytes.data(), size );
    EXPECT_EQ( hash, Tests::murmur3( bytes ) ) << size;
#ifdef LUMO_HAVE_MURMURHASH
    std::uint32_t theirs = 0;
    lmmh_x86_32( bytes.data(), static_cast< unsigned >( size ), 0, &theirs );
    EXPECT_EQ( hash, theirs ) << size;
#endif
  }
}

TEST( Hash, narrowFieldsGatherBehindTheBlocks ) {
  Koi::HashStream stream;
  stream.narrow( 0x01, 1 );
  stream.narrow( 0x0302, 2 );
  EXPECT_EQ( stream.finish(), Tests::murmur3( "\1\2\3" ) );
  stream.narrow( 0x0504, 2 );
  EXPECT_EQ( stream.finish(), Tests::murmur3( "\1\2\3\4\5" ) );
  constexpr auto wide = [] {
    Koi::HashStream s;
    s.block( 0x04030201 );
    s.narrow( 0xff05, 1 );
    return s.finish();
  }();
  EXPECT_EQ( wide, Tests::murmur3( "\1\2\3\4\5" ) ) << "a narrow field gives its own bytes only";
}

}  // namespace
