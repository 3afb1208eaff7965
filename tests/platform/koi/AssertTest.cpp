#include <map>

#include <gtest/gtest.h>

#include <koi/Assert.h>

namespace {

TEST( Assert, printsTheExpressionAsTypedAndEndsTheProcess ) {
  int const prevPri = 0, port = 3;
  EXPECT_DEATH( KOI_ASSERT( !!prevPri ),
                "assertion failed: !!prevPri \\(.*AssertTest.cpp:[0-9]+\\)" );
  EXPECT_DEATH( KOI_ASSERT( ( port == 1 ) || ( port == 2 ) ),
                "assertion failed: \\( port == 1 \\) \\|\\| \\( port == 2 \\) \\(" );
  EXPECT_DEATH( KOI_ASSERT( std::map< int, int >{}.size() ),
                "assertion failed: std::map< int, int >\\{\\}.size\\(\\) \\(" );
}

TEST( Assert, evaluatesOnceAndOtherwiseDoesNothing ) {
  int numCalls = 0;
  auto holds = [&] { return ++numCalls; };
  KOI_ASSERT( holds() );
  EXPECT_EQ( numCalls, 1 );
}

}  // namespace
