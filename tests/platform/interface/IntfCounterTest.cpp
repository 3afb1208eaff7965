// IntfCounterTest.cpp: rates of two samples, and how a name is looked for among those above.
#include <gtest/gtest.h>

#include <coredb/Tree.h>
#include <interface/IntfCounterSearch.h>

#include <limits>

#include "support/Traced.h"

using namespace Interface;
using Tests::traced;

namespace {

constexpr Koi::U64 most = ~Koi::U64{ 0 };

/// Octets and unicast packets received, octets, multicast and broadcast packets sent, and the time.
IntfStatistics sample( Koi::U64 inOctets, Koi::U64 inUcast, Koi::U64 outOctets, Koi::U64 outMulti,
                       Koi::U64 outBroad, Koi::Seconds time ) {
  return IntfStatistics( inOctets, inUcast, 0, 0, 0, 0, outOctets, 0, outMulti, outBroad, 0, 0,
                         time );
}

TEST( IntfCounterRates, areTheMeanOfTwoSamples ) {
  struct Row {
    IntfStatistics before, now;
    IntfCounterRates rates;
  } const rows[] = {
      { sample( 100, 10, 0, 1, 2, 5 ), sample( 1100, 30, 50, 5, 12, 7 ),
        IntfCounterRates( 4000, 10, 200, 7, 7 ) },
      // Rounded, not cut off: 8/3, 2/3 and 1/3 in a second.
      { sample( 0, 0, 0, 0, 0, 0 ), sample( 1, 2, 0, 1, 0, 3 ), IntfCounterRates( 3, 1, 0, 0, 3 ) },
      // What went back counts as nothing, and takes nothing from what did not.
      { sample( 900, 5, 8, 7, 1, 0 ), sample( 100, 4, 16, 6, 5, 1 ),
        IntfCounterRates( 0, 0, 64, 4, 1 ) },
      // No time, time that went back, a time that is no number.
      { sample( 0, 0, 0, 0, 0, 5 ), sample( 9, 9, 9, 9, 9, 5 ), IntfCounterRates( 0, 0, 0, 0, 5 ) },
      { sample( 0, 0, 0, 0, 0, 6 ), sample( 9, 9, 9, 9, 9, 5 ), IntfCounterRates( 0, 0, 0, 0, 5 ) },
      { sample( 0, 0, 0, 0, 0, std::numeric_limits< double >::quiet_NaN() ),
        sample( 9, 9, 9, 9, 9, 5 ), IntfCounterRates( 0, 0, 0, 0, 5 ) },
      // More than fits.
      { sample( 0, 0, 0, 0, 0, 0 ), sample( most, most, 1, most, most, 1e-3 ),
        IntfCounterRates( most, most, 8000, most, 1e-3 ) },
  };
  for( auto const & row : rows )
    EXPECT_EQ( intfCounterRates( row.before, row.now ), row.rates )
        << Koi::valueToStrep( intfCounterRates( row.before, row.now ) );
}

TEST( ParentEntityByName, isTheNearestOneUpTo64Levels ) {
  auto const top = Coredb::dirFactory( Koi::Name( "top" ) );
  auto const middle = Coredb::directoryIs( top, "Coredb/x" );
  auto const low = Coredb::directoryIs( middle, "Coredb/low" );
  EXPECT_EQ( getParentEntityByName( *low, "low" ), low.ptr() );
  EXPECT_EQ( getParentEntityByName( *low, "Coredb" ), low->parent() );
  EXPECT_EQ( getParentEntityByName( *low, "top" ), top.ptr() );
  EXPECT_EQ( traced( [&] { EXPECT_EQ( getParentEntityByName( *low, "y" ), nullptr ); } ),
             "top/Coredb/x/Coredb/low: ->parent() at level 4 is null\n" );
  EXPECT_EQ( traced( [&] { EXPECT_EQ( getParentEntityByName( *low, "" ), nullptr ); } ), "" );

  std::string path = "1";
  for( int level = 2; level <= 64; ++level )
    path += "/" + std::to_string( level );
  auto const deep = Coredb::directoryIs( top, path );
  EXPECT_EQ( getParentEntityByName( *deep, "1" )->name(), Koi::Name( "1" ) );
  EXPECT_EQ( traced( [&] { EXPECT_EQ( getParentEntityByName( *deep, "top" ), nullptr ); } ),
             "top/" + path + ": no top in 64 levels\n" );
}

}  // namespace
