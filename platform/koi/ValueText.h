// ValueText.h: the bodies of the canonical text and its strict parser. Included only where types
// are registered, so that they are compiled once for each type.
#pragma once

#include <string>

#include <koi/Text.h>
#include <koi/Value.h>

namespace Koi {

template< class T >
constexpr bool textIsByHand = HandWrittenValue< T > || requires {
  T::koiTextByHand;
};

/// Appends the canonical text of any value.
template< Value T >
void appendValueText( std::string & out, T const & v ) {
  if constexpr( PrimitiveValue< T > )
    appendText( out, v );
  else if constexpr( EnumValue< T > )
    out += valueToStrep( v ).view();
  else if constexpr( textIsByHand< T > )
    out += v.koiText().view();
  else if constexpr( SingleValue< T > )
    appendText( out, v.value() );
  else {
    out.append( "Value('" ).append( T::koiName ).append( "', ** {" );
    char const * before = "'";
    forEachField< T >( [&]( auto f ) {
      out.append( before ).append( f.name ).append( "': " );
      appendValueText( out, v.*f.member );
      before = ", '";
    } );
    out += "})";
  }
}

template< ClassValue T >
String8 valueToStrep( T const & v ) {
  std::string text;
  appendValueText( text, v );
  return String8( text );
}

template< PrimitiveValue T >
T primitiveFromText( String8::IteratorConst & it, String8::IteratorConst const & end ) {
  if constexpr( StringValue< T > )
    return T( stringFromText( it, end ) );
  else if constexpr( std::same_as< T, bool > )
    return boolFromText( it, end );
  else if constexpr( std::same_as< T, Seconds > )
    return secondsFromText( it, end );
  else if constexpr( std::same_as< T, I32 > )
    return signedFromText( it, end );
  else
    return static_cast< T >( numberFromText( it, end, std::numeric_limits< T >::max() ) );
}

/// Whether the type's own text refuses a number that is too wide for the primitive.
template< SingleValue T >
constexpr bool boundedAbove() {
  using Primitive = typename T::KoiPrimitive;
  constexpr bool ranged = requires { T::koiRange; };
  if constexpr( ranged && std::unsigned_integral< Primitive > && sizeof( Primitive ) < 8 )
    return T::koiRange.high < std::numeric_limits< Primitive >::max();
  else
    return false;
}

/// A single-field type. One that has an upper bound refuses any larger number in its own words.
template< SingleValue T >
T singleFromText( String8::IteratorConst & it, String8::IteratorConst const & end ) {
  using Primitive = typename T::KoiPrimitive;
  constexpr bool ranged = requires { T::koiRange; };
  if constexpr( boundedAbove< T >() )
    return T( numberFromText( it, end, std::numeric_limits< Primitive >::max(), true ) );
  else if constexpr( ranged )
    return T( valueFromText< Primitive >( it, end ) );
  else
    return T( deserializeAttr< Primitive >( it, end, T::koiField ) );
}

/// One field of a structure, with the zero that this field may admit.
template< class F >
typename F::Type fieldFromText( F field, String8::IteratorConst & it,
                                String8::IteratorConst const & end ) {
  using T = typename F::Type;
  if constexpr( F::zeroAdmitted )
    if( it != end && *it == '0' )
      return valueFromText< typename T::KoiPrimitive >( it, end ), T();
  return deserializeAttr< T >( it, end, field.name );
}

template< Value T >
T valueFromText( String8::IteratorConst & it, String8::IteratorConst const & end ) {
  if constexpr( PrimitiveValue< T > )
    return primitiveFromText< T >( it, end );
  else if constexpr( EnumValue< T > )
    return static_cast< T >( typeNodeOf< T >()->enumType->sequenceToValue( it, end ) );
  else if constexpr( textIsByHand< T > )
    return T::koiParsed( it, end );
  else if constexpr( SingleValue< T > )
    return singleFromText< T >( it, end );
  else {
    T v;
    needString( it, end, "Value('" );
    needString( it, end, T::koiName );
    needString( it, end, "', ** {" );
    char const * before = "'";
    forEachField< T >( [&]( auto f ) {
      needString( it, end, before );
      needString( it, end, f.name );
      needString( it, end, "': " );
      v.*f.member = fieldFromText( f, it, end );
      before = ", '";
    } );
    needString( it, end, "})" );
    return v;
  }
}

}  // namespace Koi
