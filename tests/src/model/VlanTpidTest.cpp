// VlanTpidTest.cpp: tag protocol identifiers and tag pairs, which differ from other values in what
// they hash to.

#include <Lumo/VlanTpid.h>
#include <gtest/gtest.h>

namespace {

using namespace Bridging;

TEST( VlanTpid, isNeverZero ) {
  EXPECT_EQ( Koi::valueToStrep( VlanTpid( 0x8100 ) ), "33024" );
  try {
    VlanTpid( 0 );
    FAIL() << "0 was admitted";
  } catch( Koi::RangeException const & refusal ) {
    EXPECT_STREQ( refusal.what(), "VlanTpid::value <= 0 not allowed" );
  }
  EXPECT_EQ( Koi::valueToStrep( VlanTpidOrNone( 0 ) ), "0" );
  EXPECT_EQ( VlanTpidOrNone( 65535 ).value(), 65535 );

  Koi::U8 const zero[] = { 0, 0 };
  Koi::NboAttrLog::In in( zero, 2 );
  EXPECT_EQ( VlanTpid( &in, Koi::StreamBogon() ).value(), 0 ) << "the log is not checked";
}

TEST( VlanTpid, reflectionHashesToTheNumberItself ) {
  EXPECT_EQ( Koi::genericIf( VlanTpid( 0x8100 ) )->hash(), 0x8100u );
  EXPECT_EQ( Koi::genericIf( VlanTpidOrNone( 0x88a8 ) )->hash(), 0x88a8u );
}

TEST( Dot1qEncap, isNotHashable ) {
  Dot1qEncap const encap( 100, 4095 );
  EXPECT_EQ( Koi::valueToStrep( encap ),
             "Value('Bridging::Dot1qEncap', ** {'outerTag': 100, 'innerTag': 4095})" );
  try {
    Koi::genericIf( encap )->hash();
    FAIL() << "it has a hash";
  } catch( Koi::UnhashableException const & refusal ) {
    EXPECT_STREQ( refusal.what(), "Bridging::Dot1qEncap is not hashable" );
  }
}

}  // namespace
