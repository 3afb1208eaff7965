#include <sstream>

#include <gtest/gtest.h>

#include <koi/Exception.h>
#include <koi/String8.h>

using Koi::Name;
using Koi::String8;

namespace {

TEST( String8, holdsAnyByteAndANulBehindThem ) {
  std::string bytes( "a\0\xff'", 4 );
  String8 const text( bytes );
  EXPECT_EQ( text.size(), 4u );
  EXPECT_EQ( text.view(), bytes );
  EXPECT_EQ( text.data()[4], '\0' );
  EXPECT_EQ( std::string( text.begin(), text.end() ), bytes );
  bytes[0] = 'b';
  EXPECT_EQ( text.data()[0], 'a' );
}

TEST( String8, anEmptyOneIsAStringToo ) {
  String8 const none, empty( "" );
  EXPECT_TRUE( none.empty() && empty.empty() );
  EXPECT_EQ( none, empty );
  EXPECT_STREQ( none.data(), "" );
  EXPECT_EQ( none.hash(), 0u );
  EXPECT_LT( none, String8( "a" ) );
}

TEST( String8, copiesShareTheirBytesAndOutliveTheFirst ) {
  String8 first( "shared" ), copy( first );
  EXPECT_EQ( first.data(), copy.data() );
  String8 moved( std::move( copy ) );
  EXPECT_EQ( moved.data(), first.data() );
  first = moved = String8( "other" );
  EXPECT_EQ( first, "other" );
  moved = *&moved;
  EXPECT_EQ( moved, std::string( "other" ) );
}

TEST( String8, sortsByUnsignedBytesAPrefixFirst ) {
  EXPECT_LT( String8( "z" ), String8( "\x80" ) );
  EXPECT_LT( String8( "eth1" ), String8( "eth10" ) );
  EXPECT_LT( String8( "eth10" ), String8( "eth2" ) );
  EXPECT_NE( String8( "a" ), String8( std::string_view( "a\0", 2 ) ) );
}

TEST( String8, isWrittenAsItIs ) {
  std::ostringstream out;
  out << String8( "it's" ) << Name( "\n" );
  EXPECT_EQ( out.str(), "it's\n" );
  EXPECT_EQ( Koi::format( "%s:%u/%05.1f", "Vni", 7u, 2.25 ), "Vni:7/002.2" );
  EXPECT_EQ( Koi::format( "%0*d", 3000, 1 ).size(), 3000u );
}

#if SIZE_MAX > 0xffffffff  // elsewhere there can be no such string
TEST( String8, whatIsTooLongIsRefusedBeforeItIsTouched ) {
  char const few[] = "few";
  try {
    String8 const text( std::string_view( few, std::size_t{ 4294967287u } ) );
    FAIL();
  } catch( Koi::RangeException const & e ) {
    EXPECT_STREQ( e.what(), "String8::bytes > 4294967286 not allowed" );
  }
}
#endif

TEST( Name, convertsOnPurposeOnly ) {
  static_assert( !std::is_convertible_v< String8, Name > );
  static_assert( !std::is_convertible_v< Name, String8 > );
  Name const name( String8( "Ethernet" ) );
  EXPECT_EQ( String8( name ), "Ethernet" );
  EXPECT_EQ( name.hash(), String8( "Ethernet" ).hash() );
  EXPECT_LT( Name( "a" ), name.empty() ? Name() : Name( "b" ) );
}

}  // namespace
