// RecordBytes.h: numbers, enumerators and values without fields as bytes of a table's slot. For
// generated headers; any thread.
//
// A slot is words of 4 bytes; a number lies in it as the machine has it. Nothing but bytes is ever
// pointed to there: 8 bytes may lie on a multiple of 4.
#pragma once

#include <array>
#include <bit>
#include <cstring>
#include <limits>

#include <koi/ValueTraits.h>

namespace Koi {

/// How many bytes it takes.
template< Value T >
constexpr std::size_t recordSize() {
  if constexpr( std::same_as< T, bool > )
    return 1;
  else if constexpr( SingleValue< T > )
    return recordSize< typename T::KoiPrimitive >();
  else {
    static_assert( std::is_trivially_copyable_v< T > && !StructureValue< T > );
    return sizeof( T );
  }
}

/// Lays the value at that byte of the words.
template< std::size_t offset, std::size_t size, Value T >
void recordPut( U32 * words, T const & v ) {
  static_assert( size == recordSize< T >() );
  auto * const at = reinterpret_cast< U8 * >( words ) + offset;
  if constexpr( SingleValue< T > )
    recordPut< offset, size >( words, v.value() );
  else if constexpr( std::same_as< T, bool > )
    *at = v;
  else if constexpr( std::same_as< T, Seconds > ) {
    // Every NaN alike, so that the same value is the same bytes.
    Seconds const number = v == v ? v : std::numeric_limits< Seconds >::quiet_NaN();
    std::memcpy( at, &number, size );
  } else
    std::memcpy( at, &v, size );
}

/// The value that lies at that byte. It may be one that its type refuses; what is no bool is true.
template< Value T, std::size_t offset, std::size_t size >
T recordGet( U32 const * words ) {
  static_assert( size == recordSize< T >() );
  auto const * const at = reinterpret_cast< U8 const * >( words ) + offset;
  if constexpr( SingleValue< T > )
    return T::koiUnchecked( recordGet< typename T::KoiPrimitive, offset, size >( words ) );
  else if constexpr( std::same_as< T, bool > )
    return *at != 0;
  else {
    std::array< U8, size > bytes;
    std::memcpy( bytes.data(), at, size );
    return std::bit_cast< T >( bytes );
  }
}

}  // namespace Koi
