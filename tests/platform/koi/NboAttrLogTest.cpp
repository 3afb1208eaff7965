#include <functional>

#include <gtest/gtest.h>

#include <koi/Value.h>

#include "contract/Shapes.h"

using Koi::NboAttrLog;
using Out = Koi::Ptr< NboAttrLog::Out >;

namespace {

std::string bytesOf( Out const & out ) {
  return std::string( reinterpret_cast< char const * >( out->data() ), out->size() );
}

TEST( NboAttrLog, numbersStandMostSignificantByteFirst ) {
  Out out = new NboAttrLog::Out;
  out << Koi::U8{ 1 } << Koi::U16{ 0x203 } << Koi::U32{ 0x4050607 } << Koi::U64{ 0x8090a0b0c0d0e0f }
      << true << Koi::I32{ -2 } << Koi::Seconds{ 1 } << Shapes::blue << Koi::String8( "ab" )
      << Koi::Name( "" ) << Wirex::EthAddr( 1, 2, 3, 4, 5, 6 );
  using namespace std::string_literals;
  EXPECT_EQ( bytesOf( out ),
             "\1\2\3\4\5\6\7\x08\x09\x0a\x0b\x0c\x0d\x0e\x0f\1\xff\xff\xff\xfe"
             "\x3f\xf0\0\0\0\0\0\0\0\0\0\x09\0\0\0\2ab\0\0\0\0\1\2\3\4\5\6"s );

  NboAttrLog::In in( out->data(), out->size() );
  EXPECT_EQ( in.nextU8(), 1 );
  EXPECT_EQ( in.nextU16(), 0x203 );
  EXPECT_EQ( in.nextU32(), 0x4050607u );
  EXPECT_EQ( in.nextU64(), 0x8090a0b0c0d0e0fu );
  EXPECT_TRUE( in.nextbool() );
  EXPECT_EQ( in.nextU32(), 0xfffffffeu );
  EXPECT_EQ( in.nextSeconds(), 1 );
  EXPECT_EQ( in.nextU32(), 9u );
  EXPECT_EQ( in.nextString(), "ab" );
  EXPECT_EQ( in.nextString(), "" );
  EXPECT_EQ( Wirex::EthAddr( &in, Koi::StreamBogon() ), Wirex::EthAddr( 1, 2, 3, 4, 5, 6 ) );
  EXPECT_EQ( in.left(), 0u );
}

TEST( NboAttrLog, everyNaNIsWrittenAlike ) {
  for( Koi::U64 bits : { 0x7ff8000000000000u, 0xfff8000000000000u, 0x7ff0000000000001u } ) {
    Out out = new NboAttrLog::Out;
    out << bits;
    NboAttrLog::In in( out->data(), out->size() );
    Shapes::Delay const read( &in, Koi::StreamBogon() );
    out->cut( 0 );
    out << read;
    EXPECT_EQ( bytesOf( out ), std::string( "\x7f\xf8\0\0\0\0\0\0", 8 ) );
  }
}

TEST( NboAttrLog, whatWasWrittenStaysWhereTheBufferGrowsOrIsCut ) {
  Out out = new NboAttrLog::Out;
  std::string expected;
  for( int i = 0; i < 3000; ++i ) {
    out << static_cast< Koi::U8 >( i );
    expected += static_cast< char >( i );
  }
  out->reserve( 100000 );
  EXPECT_EQ( bytesOf( out ), expected );
  Koi::U8 const * before = out->data();
  out->cut( 2 );
  out << Koi::U8{ 7 };
  EXPECT_EQ( bytesOf( out ), std::string( "\0\1\7", 3 ) );
  EXPECT_EQ( out->data(), before );
  EXPECT_DEATH( out->cut( 4 ), "assertion failed: size <= size_" );
}

struct Refused {
  char const * what;
  std::string bytes;
  std::function< void( NboAttrLog::In & ) > read;
  char const * text;
  std::size_t left;
};
void PrintTo( Refused const & row, std::ostream * out ) { *out << row.what; }
class NboAttrLogRefuses : public testing::TestWithParam< Refused > {};

TEST_P( NboAttrLogRefuses, andStaysAtTheStartOfIt ) {
  NboAttrLog::In in( GetParam().bytes.data(), GetParam().bytes.size() );
  try {
    GetParam().read( in );
    FAIL();
  } catch( Koi::ParseException const & e ) {
    EXPECT_STREQ( e.what(), GetParam().text );
  }
  EXPECT_EQ( in.left(), GetParam().left );
}

using namespace std::string_literals;
INSTANTIATE_TEST_SUITE_P(
    WhatIsCutOffOrCannotBe, NboAttrLogRefuses,
    testing::Values(
        Refused{ "byte", "", []( auto & in ) { in.nextU8(); },
                 "attribute log: at byte 0: 1 bytes were expected, 0 are left", 0 },
        Refused{ "number", "abcd", []( auto & in ) { in.nextU8(), in.nextU32(); },
                 "attribute log: at byte 1: 4 bytes were expected, 3 are left", 3 },
        Refused{ "bool", "\1\2", []( auto & in ) { in.nextbool(), in.nextbool(); },
                 "attribute log: at byte 1: a bool was expected, not the byte 2", 1 },
        Refused{ "length", "\0\0\0"s, []( auto & in ) { in.nextString(); },
                 "attribute log: at byte 0: 4 bytes were expected, 3 are left", 3 },
        Refused{ "string", "\0\0\0\3ab"s, []( auto & in ) { in.nextString(); },
                 "attribute log: at byte 0: a string of 3 bytes was announced, 2 are left", 6 },
        Refused{ "fourGigabytes", "\xff\xff\xff\xff", []( auto & in ) { in.nextString(); },
                 "attribute log: at byte 0: a string of 4294967295 bytes was announced, 0 are left",
                 4 },
        Refused{ "overTheCap", "\1\0\0\1"s + std::string( 16777217, 'a' ),
                 []( auto & in ) { in.nextString(); },
                 "attribute log: at byte 0: a string of 16777217 bytes was announced, 16777217 are "
                 "left",
                 16777221 } ),
    []( auto const & row ) { return row.param.what; } );

TEST( NboAttrLog, aValueWithAStringThatIsTooLongIsNotWrittenAtAll ) {
  Out out = new NboAttrLog::Out;
  out << Koi::String8( std::string( NboAttrLog::maxStringSize, 'a' ) );
  std::size_t const before = out->size();
  EXPECT_EQ( before, 4 + NboAttrLog::maxStringSize );
  Shapes::Wide wide( 5 );
  wide.nameIs( Koi::Name( std::string( NboAttrLog::maxStringSize + 1, 'a' ) ) );
  try {
    out << wide;
    FAIL();
  } catch( Koi::RangeException const & e ) {
    EXPECT_STREQ( e.what(), "attribute log: a string of more than 16777216 bytes" );
  }
  EXPECT_EQ( out->size(), before );
}

}  // namespace
