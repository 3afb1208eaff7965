// Value.h: the value contract. A generated value only says its name, its fields and its bounds;
// hash, equality, order, text, parser, log and reflection come from here. Any thread.
//
// A value is copied, never shared, and never half built: whatever refuses, raises before a value
// exists. Hashing, comparing and encoding are inline and allocate nothing; the bodies of text,
// parser and reflection are compiled once, by the library that registers the type.
#pragma once

#include <iosfwd>

#include <koi/EnumType.h>
#include <koi/GenericIf.h>
#include <koi/ValueHash.h>
#include <koi/ValueLog.h>
#include <koi/ValueTraits.h>

namespace Koi {

/// The canonical text of a value.
template< ClassValue T >
KOI_PUBLIC String8 valueToStrep( T const & v );

/// Reads the canonical text of a value, and nothing else, from `it` on. Raises ParseException for a
/// text that is not of the type and RangeException for a number outside its range.
template< Value T >
KOI_PUBLIC T valueFromText( String8::IteratorConst & it, String8::IteratorConst const & end );

/// Reads one field. A range exception of its type is raised again, naming the field.
template< Value T >
T deserializeAttr( String8::IteratorConst & it, String8::IteratorConst const & end,
                   std::string_view fieldName ) {
  try {
    return valueFromText< T >( it, end );
  } catch( RangeException const & refusal ) {
    rethrowFromDeserializeAttr( refusal, fieldName );
  }
}

/// Writes exactly valueToStrep( v ).
template< ClassValue T >
std::ostream & operator<<( std::ostream & out, T const & v ) {
  return out << valueToStrep( v );
}

/// A value wrapped for reflection.
template< Value T >
GenericIfPtr genericIf( T const & v ) {
  return new GenericValue< T >( v );
}

/// The value inside a wrapper, or null when it holds another type.
template< Value T >
T const * valueIn( GenericIf const & wrapper ) {
  return static_cast< T const * >( wrapper.voidPtrIs( typeNodeOf< T >() ) );
}

/// A range-checked wrapper round one primitive. Derived says koiName, koiField and, when it has
/// bounds, koiRange. The default value is zero or empty, whatever the bounds.
template< class Derived, PrimitiveValue Primitive >
class Wrapped {
 public:
  using KoiPrimitive = Primitive;
  /// Wide enough that no caller's number is cut before it is looked at.
  using KoiArgument = std::conditional_t<
      !std::integral< Primitive >, Primitive,
      std::conditional_t< std::is_signed_v< Primitive >, long long, unsigned long long > >;

  constexpr Wrapped() = default;
  /// Raises RangeException with the type's text, or "<value> > <most> not allowed" ("<value> <
  /// <least> or > <most> not allowed" when signed) for a number that does not fit the primitive.
  constexpr explicit Wrapped( KoiArgument value ) : value_( admitted( std::move( value ) ) ) {}
  /// From text. Raises ParseException or RangeException.
  Wrapped( String8::IteratorConst & it, String8::IteratorConst const & end )
      : value_( valueFromText< Derived >( it, end ).value() ) {}
  /// From a log: the number as read, in range or not. Raises ParseException.
  Wrapped( NboAttrLog::In * in, StreamBogon ) : value_( logRead< Primitive >( *in ) ) {}

  constexpr Primitive const & value() const { return value_; }
  constexpr U32 hash() const requires( hasHash< Derived > ) { return hashOfFields( value_ ); }
  friend constexpr bool operator==( Wrapped const & a, Wrapped const & b ) {
    return a.value_ == b.value_;
  }
  friend constexpr auto operator<=>( Wrapped const & a, Wrapped const & b ) {
    return a.value_ <=> b.value_;
  }

  /// The value as it stands, in range or not.
  static constexpr Derived koiUnchecked( Primitive value ) {
    Derived v;
    static_cast< Wrapped & >( v ).value_ = std::move( value );
    return v;
  }
  /// Raises RangeException unless the value is in its range.
  constexpr void koiCheck() const { admitted( KoiArgument( value_ ) ); }

 private:
  static constexpr bool ranged = requires { Derived::koiRange; };

  static constexpr bool inRange( KoiArgument const & value ) {
    constexpr auto & range = Derived::koiRange;
    if constexpr( StringValue< Primitive > )
      return value.view().size() <= range.high;
    else if constexpr( std::integral< Primitive > )
      return value >= range.low &&
             ( value <= range.high || range.high == std::numeric_limits< Primitive >::max() );
    else
      return value >= range.low && value <= range.high;
  }

  static constexpr Primitive admitted( KoiArgument value ) {
    if constexpr( ranged )
      if( !inRange( value ) )
        throwRangeException( Derived::koiRange.text );
    if constexpr( std::integral< Primitive > ) {
      constexpr KoiArgument least = std::numeric_limits< Primitive >::min();
      constexpr KoiArgument most = std::numeric_limits< Primitive >::max();
      if( value < least || value > most )
        throwWidthException( value, least, most );
    }
    return static_cast< Primitive >( value );
  }

  Primitive value_{};
};

/// A plain structure of named fields. Derived says koiName and koiFields().
template< class Derived >
class Structure {
 public:
  constexpr U32 hash() const requires( hasHash< Derived > ) {
    auto const & self = static_cast< Derived const & >( *this );
    return std::apply( [&]( auto... f ) { return hashOfFields( self.*f.member... ); },
                       Derived::koiFields() );
  }
  /// True when the value equals a default-constructed one: the test for an empty entry.
  bool operator!() const { return static_cast< Derived const & >( *this ) == Derived(); }
  friend constexpr bool operator==( Derived const & a, Derived const & b ) {
    return std::apply( [&]( auto... f ) { return ( ( a.*f.member == b.*f.member ) && ... ); },
                       Derived::koiFields() );
  }

 protected:
  void koiParse( String8::IteratorConst & it, String8::IteratorConst const & end ) {
    static_cast< Derived & >( *this ) = valueFromText< Derived >( it, end );
  }
  /// Only for a constructor: what is refused half way is then no value at all.
  void koiRead( NboAttrLog::In * in ) { logReadFields( *in, static_cast< Derived & >( *this ) ); }
};

/// Adds the order of an ordered structure: the first field that differs decides.
template< class Derived >
class OrderedStructure : public Structure< Derived > {
  friend constexpr bool operator<( Derived const & a, Derived const & b ) {
    bool less = false, decided = false;
    auto look = [&]( auto f ) {
      less = a.*f.member < b.*f.member;
      decided = less || b.*f.member < a.*f.member;
    };
    forEachField< Derived >( [&]( auto f ) { decided ? void() : look( f ); } );
    return less;
  }
  friend constexpr bool operator>( Derived const & a, Derived const & b ) { return !( a <= b ); }
  friend constexpr bool operator<=( Derived const & a, Derived const & b ) { return !( b < a ); }
  friend constexpr bool operator>=( Derived const & a, Derived const & b ) { return !( a < b ); }
};

/// A value whose bits mean more than fields can say, of a fixed encoded size. Derived says koiName,
/// koiLogSize, koiStore(), koiLoad(), koiText(), koiParsed(), hash() and its comparisons.
template< class Derived >
class HandWritten {
 protected:
  void koiParse( String8::IteratorConst & it, String8::IteratorConst const & end ) {
    static_cast< Derived & >( *this ) = Derived::koiParsed( it, end );
  }
  void koiRead( NboAttrLog::In * in ) {
    static_cast< Derived & >( *this ) = logRead< Derived >( *in );
  }
};

}  // namespace Koi

/// Declares what belongs to an enumeration; stands behind it, in its namespace. Numbers without an
/// enumerator are kept and print as numbers. The functions' bodies come with KOI_ENUM_TYPE.
///   EInstance( number ), EInstance( enumerator ): wrapped for reflection; ParseException
///   stringValue( e ): the enumerator's name       sequenceToValue( it, end, &e ): ParseException
#define KOI_ENUM( E )                                                                   \
  extern KOI_PUBLIC Koi::KoiType const _koiType_##E;                                    \
  constexpr Koi::KoiType const * koiTypeNode( E const * ) { return &_koiType_##E; }     \
  KOI_PUBLIC Koi::Ptr< Koi::GenericIf const > E##Instance( unsigned value );            \
  KOI_PUBLIC Koi::Ptr< Koi::GenericIf const > E##Instance( Koi::String8 const & name ); \
  KOI_PUBLIC Koi::String8 stringValue( E v );                                           \
  KOI_PUBLIC Koi::String8 valueToStrep( E const & v );                                  \
  KOI_PUBLIC std::ostream & operator<<( std::ostream & out, E const & v );              \
  KOI_PUBLIC void sequenceToValue( Koi::String8::IteratorConst & it,                    \
                                   Koi::String8::IteratorConst const & end, E * v )
