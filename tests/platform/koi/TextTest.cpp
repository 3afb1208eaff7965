#include <chrono>
#include <clocale>
#include <limits>
#include <locale>

#include <gtest/gtest.h>

#include <koi/Text.h>
#include <koi/UtcText.h>

using namespace Koi;
using It = String8::IteratorConst;

namespace {

/// What reading a text gave, and what it left: "7|,rest".
template< class Read >
std::string outcome( std::string_view text, Read && read ) {
  It it = text.data();
  It const end = it + text.size();
  try {
    auto const v = read( it, end );
    return std::string( valueToStrep( v ).view() ) + "|" + std::string( it, end );
  } catch( Exception const & e ) {
    return e.what();
  }
}

struct Row {
  std::string text, outcome;
};

TEST( Text, unsignedNumbers ) {
  for( auto const & [text, expected] : std::vector< Row >{
           { "0", "0|" },
           { "4094", "4094|" },
           { "65535,", "65535|," },
           { "7 ", "7| " },
           { "65536", "65536 > 65535 not allowed" },
           { "4294967297", "4294967297 > 65535 not allowed" },
           { "18446744073709551617", "18446744073709551617 > 65535 not allowed" },
           { "00", "a number was expected at '00'" },
           { "01", "a number was expected at '01'" },
           { "+1", "a number was expected at '+1'" },
           { "-1", "a number was expected at '-1'" },
           { " 1", "a number was expected at ' 1'" },
           { "", "a number was expected at ''" },
           { std::string( "\n\0\xff\\'", 5 ), "a number was expected at '\\n\\x00\\xff\\''" },
           { "x" + std::string( 40, 'y' ),
             "a number was expected at 'x" + std::string( 39, 'y' ) + "...'" } } )
    EXPECT_EQ( outcome( text, []( It & it, It e ) { return numberFromText( it, e, 65535 ); } ),
               expected );
  auto widest = []( It & it, It e ) { return numberFromText( it, e, ~U64{} ); };
  EXPECT_EQ( outcome( "18446744073709551615", widest ), "18446744073709551615|" );
  EXPECT_EQ( outcome( "18446744073709551616", widest ),
             "18446744073709551616 > 18446744073709551615 not allowed" );
  EXPECT_EQ( outcome( "99", []( It & it, It e ) { return numberFromText( it, e, 9, true ); } ),
             "10|" );
}

TEST( Text, signedNumbers ) {
  for( auto const & [text, expected] : std::vector< Row >{
           { "0", "0|" },
           { "-1", "-1|" },
           { "2147483647", "2147483647|" },
           { "-2147483648}", "-2147483648|}" },
           { "2147483648", "2147483648 < -2147483648 or > 2147483647 not allowed" },
           { "-2147483649", "-2147483649 < -2147483648 or > 2147483647 not allowed" },
           { "-0", "a number was expected at '-0'" },
           { "-01", "a number was expected at '01'" },
           { "--1", "a number was expected at '-1'" },
           { "-", "a number was expected at ''" },
           { "+1", "a number was expected at '+1'" } } )
    EXPECT_EQ( outcome( text, signedFromText ), expected ) << text;
}

TEST( Text, booleans ) {
  for( auto const & [text, expected] :
       std::vector< Row >{ { "True", "True|" },
                           { "False}", "False|}" },
                           { "true", "True or False was expected at 'true'" },
                           { "Truely", "True or False was expected at 'Truely'" },
                           { "1", "True or False was expected at '1'" },
                           { "", "True or False was expected at ''" } } )
    EXPECT_EQ( outcome( text, boolFromText ), expected );
}

TEST( Text, secondsPrintShortestAndOnlySoAreRead ) {
  for( auto const & [text, expected] :
       std::vector< Row >{ { "0", "0|" },
                           { "-0", "-0|" },
                           { "0.1", "0.1|" },
                           { "0.30000000000000004", "0.30000000000000004|" },
                           { "1445512345.678901,", "1445512345.678901|," },
                           { "1e+22", "1e+22|" },
                           { "1e-07", "1e-07|" },
                           { "1.7976931348623157e+308", "1.7976931348623157e+308|" },
                           { "5e-324", "5e-324|" },
                           { "1e22", "a number of seconds was expected at '1e22'" },
                           { "0.10", "a number of seconds was expected at '0.10'" },
                           { "1.", "a number of seconds was expected at '1.'" },
                           { ".5", "a number of seconds was expected at '.5'" },
                           { "01", "a number of seconds was expected at '01'" },
                           { "+1", "a number of seconds was expected at '+1'" },
                           { "0.1000000000000000055",
                             "a number of seconds was expected at '0.1000000000000000055'" },
                           { "1e+309", "a number of seconds was expected at '1e+309'" },
                           { "inf", "a number of seconds was expected at 'inf'" },
                           { "nan", "a number of seconds was expected at 'nan'" },
                           { "-nan", "a number of seconds was expected at '-nan'" },
                           { "0x1p3", "0|x1p3" },
                           { "", "a number of seconds was expected at ''" } } )
    EXPECT_EQ( outcome( text, secondsFromText ), expected );
}

TEST( Text, theLocaleHasNoSay ) {
  struct Comma : std::numpunct< char > {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
  };
  auto const before = std::locale::global( std::locale( std::locale::classic(), new Comma ) );
  std::setlocale( LC_NUMERIC, "de_DE.UTF-8" );
  EXPECT_EQ( valueToStrep( 1234.5 ), "1234.5" );
  EXPECT_EQ( valueToStrep( U32{ 1234567 } ), "1234567" );
  EXPECT_EQ( outcome( "1234.5", secondsFromText ), "1234.5|" );
  std::locale::global( before );
}

TEST( Text, aNarrowNumberPrintsAsANumber ) {
  EXPECT_EQ( valueToStrep( U8{ 65 } ), "65" );
  EXPECT_EQ( valueToStrep( I32{ -7 } ), "-7" );
  EXPECT_EQ( valueToStrep( ~U64{} ), "18446744073709551615" );
  EXPECT_EQ( valueToStrep( true ), "True" );
}

TEST( Text, stringsHaveOneSpelling ) {
  std::string every, text = "'";
  for( int byte = 0; byte < 256; ++byte ) {
    every += static_cast< char >( byte );
    char hex[8];
    std::snprintf( hex, sizeof hex, "\\x%02x", byte );
    if( byte == '\n' )
      text += "\\n";
    else if( byte == '\'' || byte == '\\' )
      ( text += '\\' ) += static_cast< char >( byte );
    else if( byte < 32 || byte > 126 )
      text += hex;
    else
      text += static_cast< char >( byte );
  }
  text += '\'';
  EXPECT_EQ( valueToStrep( String8( every ) ), text );
  It it = text.data();
  EXPECT_EQ( stringFromText( it, it + text.size() ), every );

  for( auto const & [given, expected] :
       std::vector< Row >{ { "''rest", "''|rest" },
                           { "eth1", "''' was expected at 'eth1'" },
                           { "\"a\"", "''' was expected at '\"a\"'" },
                           { "'", "the end of a string was expected at ''" },
                           { "'a\tb'", "the end of a string was expected at '\\x09b''" },
                           { "'\\", "an escape was expected at ''" },
                           { "'\\t'", "an escape was expected at 't''" },
                           { "'\\x0'", "an escape was expected at 'x0''" },
                           { "'\\x0A'", "an escape was expected at 'x0A''" },
                           { "'\\x0a'", "an escape was expected at 'x0a''" },
                           { "'\\x41'", "an escape was expected at 'x41''" },
                           { "'\\\"'", "an escape was expected at '\"''" },
                           { "'\\'", "the end of a string was expected at ''" } } )
    EXPECT_EQ( outcome( given, stringFromText ), expected ) << given;
}

TEST( Text, aLongStringTakesTimeInProportion ) {
  auto seconds = []( std::size_t size ) {
    std::string bytes( size, 'a' );
    for( std::size_t i = 0; i < size; i += 3 )
      bytes[i] = '\x80';
    auto const start = std::chrono::steady_clock::now();
    String8 const text = valueToStrep( String8( bytes ) );
    It it = text.begin();
    EXPECT_EQ( stringFromText( it, text.end() ), bytes );
    strepToValueEnd( text, it );
    return std::chrono::duration< double >( std::chrono::steady_clock::now() - start ).count();
  };
  // A quadratic reader would need a hundred times as long for ten times as much, and hours.
  double const tenth = seconds( 1024 * 1024 );
  EXPECT_LT( seconds( 10 * 1024 * 1024 ), 40 * tenth + 1 );
}

TEST( Text, literalsAndTheEnd ) {
  String8 const text( "Value('" );
  It it = text.begin();
  needString( it, text.end(), "Value" );
  EXPECT_EQ( outcome( "('",
                      []( It & at, It e ) {
                        needString( at, e, "('Bridging" );
                        return U8{};
                      } ),
             "'('Bridging' was expected at '('"
             "'" );
  try {
    strepToValueEnd( text, it );
    FAIL();
  } catch( ParseException const & e ) {
    EXPECT_STREQ( e.what(), "'('' is left over" );
  }
  strepToValueEnd( text, text.end() );
}

TEST( UtcText, isInMicroseconds ) {
  EXPECT_EQ( utcText( 1353690039.425111 ), "2012-11-23T17:00:39.425111Z" );
  EXPECT_EQ( utcText( 1709251199.9999999 ),
             "2024-03-01T00:00:00.000000Z" );  // the 29th of February ends
  EXPECT_EQ( utcText( -0.5 ), "1969-12-31T23:59:59.500000Z" );
  EXPECT_EQ( utcText( -62167219200 ), "0000-01-01T00:00:00.000000Z" );
  EXPECT_EQ( utcText( 253402300800 ), "253402300800.000000" );
}

}  // namespace
