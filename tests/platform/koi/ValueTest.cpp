// ValueTest.cpp: what C++ code sees of a value, which the contract suite, walking type nodes,
// cannot.

#include <limits>
#include <sstream>

#include <gtest/gtest.h>

#include <koi/Value.h>

#include "contract/Shapes.h"
#include "support/Murmur3.h"

using namespace Shapes;
using Koi::RangeException;

namespace {

template< class Made, class Number >
std::string refusal( Number number ) {
  try {
    Made( std::move( number ) );
    return "none";
  } catch( RangeException const & e ) {
    return e.what();
  }
}

TEST( Value, aNumericConstructorLooksAtTheWholeNumber ) {
  EXPECT_EQ( refusal< PortNumber >( 15 ),
             "PortNumber::number < PortNumber::min or > PortNumber::max not allowed" );
  EXPECT_EQ( refusal< PortNumber >( 65536 + 16 ), refusal< PortNumber >( 15 ) );
  EXPECT_EQ( refusal< PortNumber >( -1 ), refusal< PortNumber >( 15 ) );
  EXPECT_EQ( refusal< PortNumber >( 16 ), "none" );
  EXPECT_EQ( refusal< Octet >( 0 ), "Octet::value <= 0 not allowed" );
  EXPECT_EQ( refusal< Octet >( 256 ), "256 > 255 not allowed" );
  EXPECT_EQ( refusal< Tag >( 65536 ), "65536 > 65535 not allowed" );
  EXPECT_EQ( refusal< Level >( -11 ), "Level::value < -10 or > 10 not allowed" );
  EXPECT_EQ( refusal< Level >( 1ll << 32 ), "Level::value < -10 or > 10 not allowed" );
  EXPECT_EQ( refusal< Offset >( -2147483649ll ),
             "-2147483649 < -2147483648 or > 2147483647 not allowed" );
  EXPECT_EQ( refusal< Label >( "0123456789a" ), "Label::bytes > 10 not allowed" );
  EXPECT_EQ( refusal< Label >( "0123456789" ), "none" );
  EXPECT_EQ( Delay( 0.25 ).value(), 0.25 );
}

TEST( Value, aWideNumberInATextIsNamedAsItStands ) {
  auto refused = []( Koi::KoiType const & type, char const * text ) -> std::string {
    try {
      type.genericIfFromStrRep( &type, text, nullptr );
      return "none";
    } catch( RangeException const & e ) {
      return e.what();
    }
  };
  EXPECT_EQ( refused( Octet::_koiType, "70000" ), "70000 > 255 not allowed" );
  EXPECT_EQ( refused( Tag::_koiType, "70000" ), "attribute 'value': 70000 > 65535 not allowed" );
  EXPECT_EQ( refused( PortNumber::_koiType, "99999999999999999999" ),
             "PortNumber::number < PortNumber::min or > PortNumber::max not allowed" );
  std::string const orZero =
      "Value('Shapes::OrZero', ** {'first': 16, 'orZero': 99999, 'last': 1})";
  EXPECT_EQ( refused( OrZero::_koiType, orZero.c_str() ),
             "attribute 'orZero': PortNumber::number < PortNumber::min or > PortNumber::max not "
             "allowed" );
  EXPECT_EQ( refused( Deep::_koiType,
                      "Value('Shapes::Deep', ** {'label': '', 'level': 0, 'text': '', 'narrow': "
                      "Value('Shapes::Narrow', ** {'a': 1, 'b': 65536" ),
             "attribute 'narrow': attribute 'b': 65536 > 65535 not allowed" );
}

TEST( Value, theDefaultIsZeroWhateverTheBounds ) {
  EXPECT_EQ( PortNumber().value(), 0 );
  EXPECT_EQ( Label().value(), "" );
  EXPECT_FALSE( Wide().when() );
  EXPECT_TRUE( !Wide() );
  EXPECT_FALSE( !Wide( 1 ) );
  EXPECT_THROW( Koi::check( PortNumber() ), RangeException );
  EXPECT_THROW( Koi::check( OrZero() ), RangeException );
  EXPECT_NO_THROW( Koi::check( Narrow() ) );
}

TEST( Value, isNoLargerThanWhatItHolds ) {
  static_assert( sizeof( PortNumber ) == 2 && sizeof( Octet ) == 1 && sizeof( Level ) == 4 );
  static_assert( sizeof( Colour ) == 4 && sizeof( Plain ) == 2 );
  static_assert( std::is_trivially_copyable_v< Narrow > );
}

TEST( Value, whetherItIsHashedOrOrderedIsKnownAtCompileTime ) {
  static_assert( Koi::hasHash< PortNumber > && Koi::hasHash< Deep > && Koi::hasHash< Wide > );
  static_assert( !Koi::hasHash< Tag > && !Koi::hasHash< Plain > && !Koi::hasHash< HoldsPlain > );
  static_assert( Koi::hasOrder< Deep > && !Koi::hasOrder< Wide > && Koi::hasOrder< Tag > );
  static_assert( Koi::hashOfFields( Koi::U16{ 0 } ) != 0 && PortNumber( 16 ).hash() != 0 );
}

TEST( Value, blocksAreHashedBeforeNarrowFields ) {
  EXPECT_EQ( Narrow( 1, 0x302, true, 0x0d0c0b0a, 5 ).hash(),
             Tests::murmur3( "\x0a\x0b\x0c\x0d\1\2\3\1\5" ) );
}

TEST( Value, readsFromTextAndLogByConstructor ) {
  Koi::String8 const text(
      "Value('Shapes::Narrow', ** {'a': 1, 'b': 2, 'c': True, 'd': 3, 'e': 4})," );
  auto it = text.begin();
  Narrow const narrow( it, text.end() );
  EXPECT_EQ( std::string( it, text.end() ), "," );
  EXPECT_EQ( narrow, Narrow( 1, 2, true, 3, 4 ) );
  std::ostringstream out;
  out << narrow << "," << PortNumber( 16 ) << Label( "it's" );
  EXPECT_EQ( out.str(), std::string( text.view() ) + "16'it\\'s'" );

  Koi::U8 const log[] = { 1, 0, 2, 1, 0, 0, 0, 3, 4, 0, 1 };
  Koi::NboAttrLog::In in( log, sizeof log );
  EXPECT_EQ( Narrow( &in, Koi::StreamBogon() ), narrow );
  PortNumber const unchecked( &in, Koi::StreamBogon() );
  EXPECT_EQ( unchecked.value(), 1 ) << "a bare value is stored as read";
}

TEST( Value, theFirstFieldThatDiffersDecides ) {
  Narrow const a( 1, 9, true, 9, 9 ), b( 2, 0, false, 0, 0 ), c( 1, 9, true, 9, 10 );
  EXPECT_TRUE( a < b && a <= b && b > a && b >= a && a != b );
  EXPECT_TRUE( a < c && c < b && !( c < a ) );
  EXPECT_TRUE( a <= a && a >= a && !( a < a ) && !( a > a ) );
}

TEST( Value, aNaNIsNotEqualToItselfButIsNoChangeEither ) {
  Koi::Seconds const nan = std::numeric_limits< Koi::Seconds >::quiet_NaN();
  Wide a( 1 ), b( 1 );
  a.whenIs( nan );
  b.whenIs( -nan );
  EXPECT_NE( a, a );
  EXPECT_TRUE( Koi::same( a, a ) && Koi::same( a, b ) );
  EXPECT_EQ( a.hash(), b.hash() );
  b.whenIs( 0.0 );
  EXPECT_FALSE( Koi::same( a, b ) );
  a.whenIs( -0.0 );
  EXPECT_TRUE( a == b && Koi::same( a, b ) );
  EXPECT_EQ( a.hash(), b.hash() );
  EXPECT_EQ( a.octet(), 1 );
}

}  // namespace
