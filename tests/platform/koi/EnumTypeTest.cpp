#include <sstream>

#include <gtest/gtest.h>

#include <koi/EnumType.h>

#include "contract/Shapes.h"

using namespace Shapes;

namespace {

Koi::U32 read( char const * text ) {
  Colour v = red;
  Koi::String8 const all( text );
  Koi::String8::IteratorConst it = all.begin();
  sequenceToValue( it, all.end(), &v );
  Koi::strepToValueEnd( all, it );
  return v;
}

std::string refusal( char const * text ) {
  try {
    read( text );
    return "none";
  } catch( Koi::ParseException const & e ) {
    return e.what();
  } catch( Koi::RangeException const & e ) {
    return e.what();
  }
}

TEST( EnumType, namesAndNumbersAreThoseOfTheTable ) {
  EXPECT_EQ( stringValue( blue ), "blue" );
  EXPECT_EQ( valueToStrep( green ), "green" );
  EXPECT_EQ( read( "green" ), 6u );
  EXPECT_EQ( ColourInstance( 5 )->strRep(), "red" );
  EXPECT_EQ( *Koi::valueIn< Colour >( *ColourInstance( "blue" ) ), blue );
  std::ostringstream out;
  out << std::hex << green;
  EXPECT_EQ( out.str(), "green" );
}

TEST( EnumType, aNumberWithoutANameIsKeptAndIsItsOwnText ) {
  auto const unknown = static_cast< Colour >( 4294967295 );
  EXPECT_EQ( stringValue( unknown ), "4294967295" );
  EXPECT_EQ( read( "4294967295" ), 4294967295u );
  EXPECT_EQ( read( "0" ), 0u );
  EXPECT_EQ( ColourInstance( 7 )->strRep(), "7" );
  EXPECT_EQ( refusal( "6" ), "an enumerator of Shapes::Colour was expected at '6'" );
}

TEST( EnumType, anythingElseIsRefused ) {
  EXPECT_EQ( refusal( "Red" ), "an enumerator of Shapes::Colour was expected at 'Red'" );
  EXPECT_EQ( refusal( "reddish" ), "an enumerator of Shapes::Colour was expected at 'reddish'" );
  EXPECT_EQ( refusal( "re" ), "an enumerator of Shapes::Colour was expected at 're'" );
  EXPECT_EQ( refusal( "" ), "an enumerator of Shapes::Colour was expected at ''" );
  EXPECT_EQ( refusal( "red " ), "' ' is left over" );
  EXPECT_EQ( refusal( "07" ), "a number was expected at '07'" );
  EXPECT_EQ( refusal( "4294967296" ), "4294967296 > 4294967295 not allowed" );
  try {
    ColourInstance( "grey" );
    FAIL();
  } catch( Koi::ParseException const & e ) {
    EXPECT_STREQ( e.what(), "Shapes::Colour has no enumerator 'grey'" );
  }
}

}  // namespace
