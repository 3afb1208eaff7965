// PageTest.cpp: holes are filled or refused, and wide lines are broken where a person would.
#include <gtest/gtest.h>
#include <koigen/Fold.h>
#include <koigen/Page.h>

namespace {

using namespace Koigen;

std::string filled( std::string_view text, Fill const & fill ) {
  return Page( "p.h", text ).filled( fill );
}

std::string errorOf( std::string_view text, Fill const & fill ) {
  try {
    filled( text, fill );
  } catch( PageError const & e ) {
    return e.what();
  }
  return {};
}

TEST( Page, aBlockTakesTheIndentOfItsHole ) {
  EXPECT_EQ(
      filled( "class $T$ {\n  $body$\n};\n", { { "T", "A" }, { "body", "int a;\n\nint b;\n" } } ),
      "class A {\n  int a;\n\n  int b;\n};\n" );
}

TEST( Page, aCommentsSlashesStandOnEachLine ) {
  EXPECT_EQ( filled( "  /// $doc$\n  int a;\n", { { "doc", "one\ntwo" } } ),
             "  /// one\n  /// two\n  int a;\n" );
}

TEST( Page, anEmptyBlockTakesItsLineAlong ) {
  EXPECT_EQ( filled( "a\n\n$x$\n\nb\n", { { "x", "" } } ), "a\n\nb\n" );
  EXPECT_EQ( filled( "a\n$x$\nb\n", { { "x", "" } } ), "a\nb\n" );
  EXPECT_EQ( filled( "a $x$\n", { { "x", "" } } ), "a\n" );
}

TEST( Page, aValueMayHoldADollar ) { EXPECT_EQ( filled( "$x$\n", { { "x", "$y$" } } ), "$y$\n" ); }

TEST( Page, holesAndValuesMustMatch ) {
  EXPECT_EQ( errorOf( "a\n$x$\n", {} ), "p.h:2: nothing to fill 'x' with" );
  EXPECT_EQ( errorOf( "a\n", { { "x", "" } } ), "p.h: has no hole 'x'" );
  EXPECT_EQ( errorOf( "a\nb $x\n", { { "x", "" } } ), "p.h:2: a hole is not closed" );
  EXPECT_THROW( Page::named( "no such page" ), PageError );
}

TEST( Page, stackedBlocksLeaveNoTraceOfEmptyOnes ) {
  EXPECT_EQ( stacked( { "", "a\n", "", "b\n", "" } ), "a\n\nb\n" );
}

struct Case {
  char const * wide;
  char const * narrow;
};

class Folded : public testing::TestWithParam< Case > {};

TEST_P( Folded, toFortyColumns ) { EXPECT_EQ( folded( GetParam().wide, 40 ), GetParam().narrow ); }

// clang-format off
INSTANTIATE_TEST_SUITE_P( Lines, Folded, testing::Values(
  Case{ "int a;\n", "int a;\n" },
  Case{ "  /// one two three four five six seven eight\n",
        "  /// one two three four five six seven\n  /// eight\n" },
  Case{ "  void f( int a ) { g( a, 1, 2, 3, 4, 5 ); }\n",
        "  void f( int a ) {\n    g( a, 1, 2, 3, 4, 5 );\n  }\n" },
  Case{ "  Pair( int a, int b ) : _a( a ), _b( b ) {}\n",
        "  Pair( int a, int b )\n      : _a( a ), _b( b ) {}\n" },
  Case{ "  void function( int first, int second, int third );\n",
        "  void function( int first, int second,\n                 int third );\n" },
  Case{ "  static constexpr Range r{ 1, 2, \"a text, with commas\" };\n",
        "  static constexpr Range r{\n      1, 2, \"a text, with commas\" };\n" },
  Case{ "  call( first(), second, third, fourth, fifth );\n",
        "  call( first(), second, third, fourth,\n        fifth );\n" },
  Case{ "  x = \"a text, that is (very) long and has no other place\";\n",
        "  x =\n      \"a text, that is (very) long and has no other place\";\n" },
  Case{ "#include <a/very/long/name/that/cannot/be/broken.h>\n",
        "#include <a/very/long/name/that/cannot/be/broken.h>\n" } ) );
// clang-format on

}  // namespace
