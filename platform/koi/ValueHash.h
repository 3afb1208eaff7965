// ValueHash.h: the hash and the sameness of every value. Pure functions; any thread.
#pragma once

#include <bit>

#include <koi/Hash.h>
#include <koi/ValueTraits.h>

namespace Koi {

/// The bits of a number of seconds, -0 as +0 and every NaN as one: what is hashed, and what an
/// attribute compares.
constexpr U64 normalBits( Seconds v ) {
  if( v != v )
    return 0x7ff8000000000000;
  return v == 0 ? 0 : std::bit_cast< U64 >( v );
}

/// The hash of a value as a field of another: its hash(), or its number where it has none.
template< ClassValue T >
constexpr U32 nestedHash( T const & v ) {
  if constexpr( SingleValue< T > && !hasHash< T > )
    return static_cast< U32 >( v.value() );
  else
    return v.hash();
}

/// What one field gives to the blocks of a hash: everything but numbers of 8 and 16 bits.
template< Value T >
constexpr void hashBlocks( HashStream & stream, T const & v ) {
  if constexpr( StringValue< T > )
    stream.block( v.hash() );
  else if constexpr( ClassValue< T > )
    stream.block( nestedHash( v ) );
  else if constexpr( std::same_as< T, U64 > || std::same_as< T, Seconds > ) {
    U64 bits;
    if constexpr( std::same_as< T, Seconds > )
      bits = normalBits( v );
    else
      bits = v;
    stream.block( static_cast< U32 >( bits ) );
    stream.block( static_cast< U32 >( bits >> 32 ) );
  } else if constexpr( EnumValue< T > || sizeof( T ) == 4 )
    stream.block( static_cast< U32 >( v ) );
}

/// What one field gives to the narrow bytes that follow the blocks.
template< Value T >
constexpr void hashNarrow( HashStream & stream, T const & v ) {
  if constexpr( PrimitiveValue< T > && sizeof( T ) < 4 )
    stream.narrow( v, sizeof( T ) );
}

/// The hash of fields, given in declaration order.
template< Value... T >
constexpr U32 hashOfFields( T const &... v ) {
  HashStream stream;
  ( hashBlocks( stream, v ), ... );
  ( hashNarrow( stream, v ), ... );
  return stream.finish();
}

/// Whether an attribute that holds `a` would change if it were set to `b`: equality, but a NaN is
/// the same as a NaN, so that setting it twice is no change.
template< Value T >
constexpr bool same( T const & a, T const & b ) {
  if constexpr( std::same_as< T, Seconds > )
    return normalBits( a ) == normalBits( b );
  else if constexpr( StructureValue< T > )
    return std::apply(
        [&]( auto... field ) { return ( same( a.*field.member, b.*field.member ) && ... ); },
        T::koiFields() );
  else
    return a == b;
}

}  // namespace Koi
