// ValueTraits.h: how the value contract tells its kinds of value apart, and what a type declares.
// Compile-time only.
#pragma once

#include <concepts>
#include <limits>
#include <tuple>
#include <type_traits>

#include <koi/Exception.h>
#include <koi/KoiType.h>
#include <koi/String8.h>
#include <koi/Types.h>

namespace Koi {

/// The bounds of a single-field type and the text that refuses what is outside.
template< class Number >
struct Range {
  Number low;
  Number high;
  char const * text;
};

/// The same for a string: its greatest length in bytes.
struct StringLimit {
  U32 high;
  char const * text;
};

/// One field of a structure: its name and where it lives. `orZero` admits 0 besides what the
/// field's type admits.
template< class Owner, class T, bool orZero >
struct Field {
  using Type = T;
  static constexpr bool zeroAdmitted = orZero;
  char const * name;
  T Owner::*member;
};
template< class Owner, class T >
constexpr Field< Owner, T, false > field( char const * name, T Owner::*member ) {
  return { name, member };
}
template< class Owner, class T >
constexpr Field< Owner, T, true > fieldOrZero( char const * name, T Owner::*member ) {
  return { name, member };
}

template< class T >
concept StringValue = std::same_as< T, String8 > || std::same_as< T, Name >;
template< class T >
concept NumberValue = std::same_as< T, U8 > || std::same_as< T, U16 > || std::same_as< T, U32 > ||
    std::same_as< T, U64 > || std::same_as< T, I32 >;
template< class T >
concept PrimitiveValue =
    NumberValue< T > || std::same_as< T, bool > || std::same_as< T, Seconds > || StringValue< T >;
template< class T >
concept EnumValue = std::is_enum_v< T >;
/// A single-field type: Koi::Wrapped round one primitive.
template< class T >
concept SingleValue = requires {
  T::koiField;
  typename T::KoiPrimitive;
};
template< class T >
concept StructureValue = requires {
  T::koiFields();
};
/// A value written by hand, of a fixed encoded size: an address, an interface identifier.
template< class T >
concept HandWrittenValue = requires {
  T::koiLogSize;
};
template< class T >
concept ClassValue = SingleValue< T > || StructureValue< T > || HandWrittenValue< T >;
template< class T >
concept Value = PrimitiveValue< T > || EnumValue< T > || ClassValue< T >;

/// Calls f with each Field of a structure, in declaration order.
template< class T, class F >
constexpr void forEachField( F && f ) {
  std::apply( [&]( auto... field ) { ( f( field ), ... ); }, T::koiFields() );
}

/// True when `all` holds for the type of every field.
template< class T, template< class > class All >
constexpr bool everyField() {
  return std::apply(
      []( auto... field ) { return ( All< typename decltype( field )::Type >::value && ... ); },
      T::koiFields() );
}

/// Whether a value can stand inside something that is hashed. A single-field type without hash()
/// can: its number is its hash there. A structure without hash() cannot.
template< class T >
struct IsHashable : std::true_type {};
template< StructureValue T >
    struct IsHashable< T > : std::bool_constant < !requires {
  T::koiUnhashed;
} && everyField< T, IsHashable >() > {};

/// Whether the type itself has hash().
template< class T >
constexpr bool hasHash = IsHashable< T >::value && !requires {
  T::koiUnhashed;
};

template< class T >
constexpr bool hasOrder = requires( T const & a ) {
  a < a;
};

KOI_PUBLIC extern KoiType const koiTypeU8, koiTypeU16, koiTypeU32, koiTypeU64, koiTypeI32,
    koiTypeBool, koiTypeSeconds, koiTypeString8, koiTypeName;
constexpr KoiType const * koiTypeNode( U8 const * ) { return &koiTypeU8; }
constexpr KoiType const * koiTypeNode( U16 const * ) { return &koiTypeU16; }
constexpr KoiType const * koiTypeNode( U32 const * ) { return &koiTypeU32; }
constexpr KoiType const * koiTypeNode( U64 const * ) { return &koiTypeU64; }
constexpr KoiType const * koiTypeNode( I32 const * ) { return &koiTypeI32; }
constexpr KoiType const * koiTypeNode( bool const * ) { return &koiTypeBool; }
constexpr KoiType const * koiTypeNode( Seconds const * ) { return &koiTypeSeconds; }
constexpr KoiType const * koiTypeNode( String8 const * ) { return &koiTypeString8; }
constexpr KoiType const * koiTypeNode( Name const * ) { return &koiTypeName; }

/// The type node of a value type, known at compile time.
template< class T >
constexpr KoiType const * typeNodeOf() {
  if constexpr( requires { T::_koiType; } )
    return &T::_koiType;
  else
    return koiTypeNode( static_cast< T const * >( nullptr ) );
}

}  // namespace Koi
