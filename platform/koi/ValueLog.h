// ValueLog.h: the attribute-log encoding of every value: its fields in declaration order, without
// tag, length or padding, numbers most significant byte first. One thread at a time, as the log.
//
// What a structure reads is checked field by field. A single-field value that stands alone is
// stored as read: whoever stores it into an entity checks it then (check()).
#pragma once

#include <koi/NboAttrLog.h>
#include <koi/ValueTraits.h>

namespace Koi {

/// The encoded size in bytes; 0 when it depends on the value.
template< class T >
constexpr std::size_t logSize() {
  if constexpr( StringValue< T > )
    return 0;
  else if constexpr( PrimitiveValue< T > )
    return sizeof( T );
  else if constexpr( EnumValue< T > )
    return 4;
  else if constexpr( SingleValue< T > )
    return logSize< typename T::KoiPrimitive >();
  else if constexpr( HandWrittenValue< T > )
    return T::koiLogSize;
  else
    return std::apply(
        []( auto... field ) {
          bool const fixed = ( ( logSize< typename decltype( field )::Type >() != 0 ) && ... );
          return fixed ? ( logSize< typename decltype( field )::Type >() + ... ) : 0;
        },
        T::koiFields() );
}

/// Stores a value of fixed size; returns the place behind it.
template< Value T >
U8 * logStore( U8 * at, T const & v ) {
  if constexpr( std::same_as< T, bool > )
    return storeBig( at, static_cast< U8 >( v ) );
  else if constexpr( std::same_as< T, Seconds > )
    // Which NaN it is can change on the way through a register, so every one is written alike.
    return storeBig(
        at, std::bit_cast< U64 >( v == v ? v : std::numeric_limits< Seconds >::quiet_NaN() ) );
  else if constexpr( NumberValue< T > )
    return storeBig( at, static_cast< std::make_unsigned_t< T > >( v ) );
  else if constexpr( EnumValue< T > )
    return storeBig( at, static_cast< U32 >( v ) );
  else if constexpr( SingleValue< T > )
    return logStore( at, v.value() );
  else if constexpr( HandWrittenValue< T > )
    return v.koiStore( at );
  else {
    forEachField< T >( [&]( auto f ) { at = logStore( at, v.*f.member ); } );
    return at;
  }
}

/// Appends a value. Raises RangeException when a string in it is too long for a log, and then
/// leaves what was appended of it to the caller.
template< Value T >
void logAppend( NboAttrLog::Out & out, T const & v ) {
  if constexpr( logSize< T >() != 0 )
    logStore( out.room( logSize< T >() ), v );
  else if constexpr( StringValue< T > )
    out.string( v.view() );
  else if constexpr( SingleValue< T > )
    logAppend( out, v.value() );
  else
    forEachField< T >( [&]( auto f ) { logAppend( out, v.*f.member ); } );
}

/// Appends a value whole or, on an exception, not at all.
template< Value T >
void logWrite( NboAttrLog::Out & out, T const & v ) {
  if constexpr( logSize< T >() != 0 ) {
    logAppend( out, v );
  } else {
    std::size_t const start = out.size();
    try {
      logAppend( out, v );
    } catch( ... ) {
      out.cut( start );
      throw;
    }
  }
}

/// Appends the attribute-log encoding of any value to the log.
template< Value T >
Ptr< NboAttrLog::Out > const & operator<<( Ptr< NboAttrLog::Out > const & out, T const & v ) {
  logWrite( *out, v );
  return out;
}

/// Requires that every range-checked number in a value is in its range. Raises RangeException with
/// the type's own text.
template< Value T >
constexpr void check( T const & v ) {
  if constexpr( SingleValue< T > )
    v.koiCheck();
  else if constexpr( StructureValue< T > )
    forEachField< T >( [&]( auto f ) { checkField( f, v.*f.member ); } );
}
template< class F, class T >
constexpr void checkField( F, T const & v ) {
  if constexpr( F::zeroAdmitted )
    if( v.value() == 0 )
      return;
  check( v );
}

/// Reads a structure where it stands, as logRead() does; when that raises, v is half read.
template< StructureValue T >
void logReadFields( NboAttrLog::In & in, T & v );

/// Reads one value. Raises ParseException when bytes are missing or cannot be such a value, and
/// RangeException for a field of a structure that is out of its range.
template< Value T >
T logRead( NboAttrLog::In & in ) {
  if constexpr( StringValue< T > )
    return T( in.nextString() );
  else if constexpr( std::same_as< T, bool > )
    return in.nextbool();
  else if constexpr( std::same_as< T, Seconds > )
    return in.nextSeconds();
  else if constexpr( NumberValue< T > )
    return static_cast< T >( loadBig< std::make_unsigned_t< T > >( in.take( sizeof( T ) ) ) );
  else if constexpr( EnumValue< T > )
    return static_cast< T >( in.nextU32() );
  else if constexpr( SingleValue< T > )
    return T::koiUnchecked( logRead< typename T::KoiPrimitive >( in ) );
  else if constexpr( HandWrittenValue< T > )
    return T::koiLoad( in.take( T::koiLogSize ) );
  else {
    T v;
    logReadFields( in, v );
    return v;
  }
}
template< StructureValue T >
void logReadFields( NboAttrLog::In & in, T & v ) {
  forEachField< T >( [&]( auto f ) {
    v.*f.member = logRead< typename decltype( f )::Type >( in );
    checkField( f, v.*f.member );
  } );
}

}  // namespace Koi
