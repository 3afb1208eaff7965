// Record.h: how a value lies in a slot, and how its key chooses a bucket. Pure functions; any
// thread.
//
// koigen writes a specialisation of Record for each value of a table. The engine sees only words:
// the key's first, then the rest, at offsets that are the same for 32- and 64-bit processes.
#pragma once

#include <algorithm>
#include <compare>
#include <tuple>

#include <koi/ValueHash.h>
#include <mem/Words.h>
#include <quill/Links.h>

namespace Quill {

/// What a specialisation has: the types Value and Key; valueType, the value's type name; keySize
/// and valueSize in bytes, multiples of 4; putKey( key, words ), put( value, words ), key( words )
/// and value( words ), which check no range, for a formatted slot's key is all zeros; and hash(
/// words, seed ), of the key's words.
template< class Value >
struct Record;

/// The hash that chooses a key's bucket: that of the key's type, begun with the table's seed, so
/// that whoever chooses keys does not choose their buckets. Table files depend on it.
template< class Key >
struct BucketHash {
  static U32 of( Key const & key, U32 seed ) {
    Koi::HashStream stream( seed );
    if constexpr( requires { key.value(); } )
      fields( stream, key.value() );
    else
      std::apply( [&]( auto... field ) { fields( stream, key.*field.member... ); },
                  Key::koiFields() );
    return stream.finish();
  }

 private:
  template< class... Field >
  static void fields( Koi::HashStream & stream, Field const &... field ) {
    ( Koi::hashBlocks( stream, field ), ... );
    ( Koi::hashNarrow( stream, field ), ... );
  }
};

/// The words of a key, as all parts of the engine hand it on.
template< class R >
struct KeyWords {
  static constexpr U32 count = R::keySize / 4;

  U32 word[count];

  friend bool operator==( KeyWords const &, KeyWords const & ) = default;
  friend auto operator<=>( KeyWords const &, KeyWords const & ) = default;
};

/// A value as it lies in a slot.
template< class R >
struct ValueWords {
  U32 word[R::valueSize / 4];

  KeyWords< R > key() const {
    KeyWords< R > k;
    std::copy_n( word, KeyWords< R >::count, k.word );
    return k;
  }
};

/// The key of a value.
template< class V >
typename Record< V >::Key keyOf( V const & value ) {
  U32 words[Record< V >::valueSize / 4]{};
  Record< V >::put( value, words );
  return Record< V >::key( words );
}

/// Whether an entry stands behind another one in the table's order.
template< class Key >
bool isBehind( U32 hash, Key const & key, U32 otherHash, Key const & otherKey ) {
  if( hash == otherHash )
    return key > otherKey;
  return reversed( hash ) > reversed( otherHash );
}

/// The size of a slot, and its value's words.
template< class R >
inline constexpr U32 slotSizeOf = ( 16 + R::valueSize + 7 ) & ~7u;
template< class R >
inline constexpr U32 numWordsOf = R::valueSize / 4;

/// Copies the words of one value, or of a part, out of shared memory and into it: whole machine
/// words where there are some. `from` and `to` in shared memory are multiples of 8 where count > 1.
template< class M, U32 count >
void loadWords( U32 * to, U32 const * from ) {
  U32 i = 0;
  if constexpr( sizeof( void * ) == 8 )
    for( ; i + 2 <= count; i += 2 ) {
      U64 const two = M::load( reinterpret_cast< U64 const * >( from + i ) );
      to[i] = static_cast< U32 >( two );
      to[i + 1] = static_cast< U32 >( two >> 32 );
    }
  for( ; i < count; ++i )
    to[i] = M::load( from + i );
}
template< class M, U32 count >
void storeWords( U32 * to, U32 const * from ) {
  U32 i = 0;
  if constexpr( sizeof( void * ) == 8 )
    for( ; i + 2 <= count; i += 2 )
      M::store( reinterpret_cast< U64 * >( to + i ), U64{ from[i + 1] } << 32 | from[i] );
  for( ; i < count; ++i )
    M::store( to + i, from[i] );
}

/// A header as it stands in a file.
template< class M, class Header >
Header loadedHeader( unsigned char const * base, U64 fileSize ) {
  Header header;
  auto const * from = reinterpret_cast< U32 const * >( base );
  auto * const to = reinterpret_cast< U32 * >( &header );
  if( fileSize >= sizeof header )
    for( std::size_t i = 0; i < sizeof header / 4; ++i )
      to[i] = M::load( from + i );
  return header;
}
template< class M, class Header >
void storeHeader( unsigned char * base, Header const & header ) {
  auto const * const from = reinterpret_cast< U32 const * >( &header );
  for( std::size_t i = 0; i < sizeof header / 4; ++i )
    M::store( reinterpret_cast< U32 * >( base ) + i, from[i] );
}

}  // namespace Quill
