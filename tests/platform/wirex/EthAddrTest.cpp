// EthAddrTest.cpp: MAC addresses: text, order, log, hash, classes.

#include <algorithm>
#include <sstream>

#include <gtest/gtest.h>
#include <wirex/EthAddr.h>

namespace {

using Wirex::EthAddr;

constexpr EthAddr host( 0x02, 0x00, 0x5e, 0x00, 0x53, 0x0a );
constexpr EthAddr broadcast( 0xff, 0xff, 0xff, 0xff, 0xff, 0xff );

TEST( EthAddr, printsAndReadsLowerCasePairs ) {
  EXPECT_EQ( host.stringValue(), "02:00:5e:00:53:0a" );
  EXPECT_EQ( Koi::valueToStrep( host ), "02:00:5e:00:53:0a" );
  EXPECT_EQ( EthAddr( "02:00:5e:00:53:0a" ), host );
  EXPECT_EQ( EthAddr( "ff:ff:ff:ff:ff:ff" ), broadcast );
  std::ostringstream out;
  out << EthAddr();
  EXPECT_EQ( out.str(), "00:00:00:00:00:00" );
}

TEST( EthAddr, theParserStopsBehindTheAddress ) {
  Koi::String8 const text( "02:00:5e:00:53:0a, 'moves'" );
  Koi::String8::IteratorConst it = text.begin();
  EXPECT_EQ( EthAddr( it, text.end() ), host );
  EXPECT_EQ( it - text.begin(), 17 );
}

TEST( EthAddr, refusesEveryOtherSpelling ) {
  for( char const * text :
       { "", "0", "02:00:5e:00:53", "02:00:5e:00:53:0", "02:00:5E:00:53:0a", "02-00-5e-00-53-0a",
         "2:0:5e:0:53:a", "02:00:5e:00:53:0g", "0200.5e00.530a", " 02:00:5e:00:53:0a",
         "02:00:5e:00:53::a", "02:00:5e:00:53 0a", "+2:00:5e:00:53:0a" } )
    EXPECT_THROW( EthAddr{ text }, Koi::ParseException ) << text;
  try {
    EthAddr( "02:00:5e:00:53:0a " );
    FAIL() << "a blank behind the address was read";
  } catch( Koi::ParseException const & refusal ) {
    EXPECT_STREQ( refusal.what(), "' ' is left over" );
  }
}

TEST( EthAddr, sortsByUnsignedBytesFirstByteFirst ) {
  EXPECT_LT( EthAddr( 0x7f, 0xff, 0, 0, 0, 0 ), EthAddr( 0x80, 0, 0, 0, 0, 0 ) );
  EXPECT_LT( EthAddr( 0, 1, 0, 0, 0, 0xff ), EthAddr( 0, 2, 0, 0, 0, 0 ) );
  EXPECT_LT( host, broadcast );
}

TEST( EthAddr, isSixBytesInTheLogAsOnTheWire ) {
  Koi::Ptr< Koi::NboAttrLog::Out > out = new Koi::NboAttrLog::Out;
  out << host;
  ASSERT_EQ( out->size(), 6u );
  Koi::U8 const wire[] = { 0x02, 0x00, 0x5e, 0x00, 0x53, 0x0a };
  EXPECT_TRUE( std::equal( wire, wire + 6, out->data() ) );
  Koi::NboAttrLog::In in( wire, 6 );
  EXPECT_EQ( EthAddr( &in, Koi::StreamBogon() ), host );
  Koi::NboAttrLog::In cut( wire, 5 );
  EXPECT_THROW( EthAddr( &cut, Koi::StreamBogon() ), Koi::ParseException );
}

TEST( EthAddr, hashesItsSixBytes ) {
  EXPECT_EQ( EthAddr().hash(), 0xf256245du );
  EXPECT_EQ( host.hash(), 0xc9d960d7u );
  EXPECT_EQ( broadcast.hash(), 0x65410d52u );
}

TEST( EthAddr, tellsGroupsFromStations ) {
  EXPECT_TRUE( EthAddr().isZero() );
  EXPECT_FALSE( EthAddr().isMulticast() );
  EXPECT_FALSE( host.isZero() || host.isMulticast() || host.isBroadcast() );
  EthAddr const group( 0x01, 0x00, 0x5e, 0, 0, 1 );
  EXPECT_TRUE( group.isMulticast() );
  EXPECT_FALSE( group.isBroadcast() );
  EXPECT_TRUE( broadcast.isMulticast() && broadcast.isBroadcast() );
}

}  // namespace
