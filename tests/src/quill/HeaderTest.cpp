// HeaderTest.cpp: what the headers of a table's files say, byte by byte, and when they are
// believed.
#include <functional>

#include <gtest/gtest.h>

#include <koi/Hash.h>
#include <mem/Rova.h>
#include <quill/BucketTable.h>
#include <quill/ConquerTable.h>
#include <quill/SlotTable.h>

using namespace Quill;

namespace {

constexpr U32 kindle = 0xc0ffee;
SlotTable::Layout const layout{ "Quill::Bridging::QuillFdbStatus", "Quill::Bridging::Status", 32,
                                100, 7 };

/// The lines a handler got, with their levels.
struct Traced {
  std::vector< std::string > lines;
  Ntrace::Handler handler{ 9, [this]( int level, std::string const & line ) {
                            lines.push_back( std::to_string( level ) + " " + line );
                          } };
};

template< class Header >
std::string verdict( Header const & header, U64 fileSize, U32 expected = kindle ) {
  Traced traced;
  std::string message;
  bool const isValid = header.validate( traced.handler, fileSize, expected, message );
  EXPECT_EQ( isValid, message.empty() );
  EXPECT_EQ( traced.lines, isValid ? std::vector< std::string >{}
                                   : std::vector< std::string >{ "0 " + message } );
  return message;
}

template< class Header >
Header changed( Header header, std::function< void( Header & ) > change ) {
  change( header );
  return header;
}

TEST( SlotHeader, isBelievedInThisOrder ) {
  using H = SlotTable::Header;
  H const good( kindle, layout, 6 );
  EXPECT_EQ( verdict( H( kindle, layout, 0 ), 232 ), "" );
  EXPECT_EQ( verdict( good, 231 ), "SlotTable::Header::validate() bad header file size: 231" );
  EXPECT_EQ( verdict( good, 232 + 6 * 48 ), "" );
  EXPECT_EQ( verdict( good, 231 + 6 * 48 ), "SlotTable::Header::validate() bad shmem size:519" );
  EXPECT_EQ( verdict( changed< H >( good, []( H & h ) { h.magic[0] ^= 1; } ), 1000 ),
             "SlotTable::Header::validate() bad magic: 544c534c4c495550" );
  EXPECT_EQ( verdict( changed< H >( good, []( H & h ) { h.version = 9; } ), 1000 ),
             "SlotTable::Header::validate() bad version: 9" );
  EXPECT_EQ( verdict( good, 1000, kindle + 1 ), "SlotTable::validate() bad kindle:c0ffee" );
  EXPECT_EQ( verdict( good, 1000, 0 ), "" );
  auto const torn = changed< H >( good, []( H & h ) { h.valueSize = 33; } );
  EXPECT_TRUE(
      verdict( torn, 1000 ).starts_with( "SlotTable::Header::validate() checksum fail: " ) );
  EXPECT_EQ( verdict( changed< H >( good, []( H & h ) { h.occupiedSlots = 7; } ), 1000 ),
             "SlotTable::Header::validate() bad occupiedSlots: 7" );
  EXPECT_EQ( verdict( changed< H >( good, []( H & h ) { h.occupiedSlots = 6; } ), 1000 ), "" );
  EXPECT_EQ( verdict( changed< H >( good, []( H & h ) { h.freeSlots = 6; } ), 1000 ),
             "SlotTable::Header::validate() bad freeSlots: 6" );
  // A count whose bytes do not fit into 32 bits.
  EXPECT_EQ( verdict( changed< H >( good, []( H & h ) { h.numSlots.ref = 0x10000000; } ), 1000 ),
             "SlotTable::Header::validate() bad shmem size:1000" );
}

TEST( SlotHeader, namesOf63CharactersFit ) {
  auto longest = layout;
  longest.valueType = std::string( 63, 'v' );
  EXPECT_EQ( SlotTable::Header( kindle, longest, 1 ).valueTypeName(), longest.valueType );
  auto const refusal = [&]( std::string const & v, std::string const & c ) -> std::string {
    try {
      SlotTable::Header( kindle, { v, c, 32, 100, 7 }, 1 );
    } catch( Rova::InvalidInitializeException const & e ) {
      return e.what();
    }
    return "";
  };
  std::string const name( 64, 'v' );
  EXPECT_EQ( refusal( name, "c" ),
             "SlotTable::Header() value typename " + name + " exceeds 64 characters" );
  EXPECT_EQ( refusal( "v", name ),
             "SlotTable::Header() class typename: " + name + " exceeds 64 characters" );
}

TEST( SlotHeader, theHashIsOfTheLayoutAlone ) {
  SlotTable::Header const six( kindle, layout, 6 );
  EXPECT_EQ( six.hash, SlotTable::Header( 1, layout, 60 ).hash );
  char name[64]{};
  std::snprintf( name, sizeof name, "%s", layout.valueType.c_str() );
  U32 sum = Koi::hashOfBytes( name, 64 );
  std::fill_n( name, 64, '\0' );
  std::snprintf( name, sizeof name, "%s", layout.classType.c_str() );
  sum += Koi::hashOfBytes( name, 64 );
  for( U32 const number : { 32u, 48u, 100u, 7u } )
    sum += Koi::hashOfBytes( &number, 4 );
  EXPECT_EQ( six.hash, sum );
  std::string message;
  auto other = layout;
  other.valueType = "Bridging::VlanCounter";
  EXPECT_FALSE( six.isOf( other, message ) );
  EXPECT_EQ(
      message,
      "the file's value type is Quill::Bridging::QuillFdbStatus, not Bridging::VlanCounter" );
}

TEST( BucketHeader, isBelievedInThisOrder ) {
  using H = BucketTable::Header;
  H const good( kindle, 8 );
  EXPECT_EQ( verdict( good, 32 + 64 ), "" );
  EXPECT_EQ( verdict( good, 31 ), "BucketTable::validate() bad header file size: 31" );
  EXPECT_EQ( verdict( H(), 100 ), "BucketTable::validate() bad magic: 0" );
  EXPECT_EQ( verdict( changed< H >( good, []( H & h ) { h.version = 3; } ), 100 ),
             "BucketTable::validate() bad version: 3" );
  EXPECT_EQ( verdict( good, 100, 5 ), "BucketTable::validate() bad kindle:c0ffee" );
  EXPECT_EQ( verdict( good, 95 ), "BucketTable::validate() bad shmem size:95" );
  auto const many = changed< H >( good, []( H & h ) { h.numBuckets.ref = 0x80000000; } );
  EXPECT_EQ( verdict( many, U64{ 0x80000000 } * 8 + 32 ), "" );
  EXPECT_EQ( verdict( changed< H >( good, []( H & h ) { h.numBuckets.ref = 0x80000001; } ), 100 ),
             "BucketTable::validate() bad numBuckets:2147483649" );
}

TEST( ConquerHeader, isBelievedInThisOrder ) {
  using H = ConquerTable::Header;
  H const good( kindle, 10 );
  EXPECT_EQ( verdict( good, 72 + 120 ), "" );
  EXPECT_EQ( verdict( good, 71 ), "ConquerTable::validate() bad header file size: 71" );
  EXPECT_EQ( verdict( H(), 100 ), "ConquerTable::validate() bad magic: 0" );
  EXPECT_EQ( verdict( changed< H >( good, []( H & h ) { h.version = 8; } ), 200 ),
             "ConquerTable::validate() bad version: 8" );
  EXPECT_EQ( verdict( good, 200, 5 ), "ConquerTable::validate() bad kindle:c0ffee" );
  EXPECT_EQ( verdict( good, 191 ), "ConquerTable::validate() bad shmem size:191" );
  EXPECT_EQ( verdict( changed< H >( good, []( H & h ) { h.currentTable = 2; } ), 200 ),
             "ConquerTable::validate() bad tableId:2" );
}

TEST( Headers, areTracedInALineEach ) {
  Traced traced;
  SlotTable::Header const slots( kindle, layout, 6 );
  slots.trace( traced.handler );
  BucketTable::Header( kindle, 8 ).trace( traced.handler );
  ConquerTable::Header( kindle, 10 ).trace( traced.handler );
  ASSERT_EQ( traced.lines.size(), 3u );
  char hash[9];
  std::snprintf( hash, sizeof hash, "%x", slots.hash );
  EXPECT_EQ( traced.lines[0],
             std::string( "3 SlotTable::Header()  magic:544c534c4c495551 version:10 kindle:c0ffee"
                          " valueSize:32 valueType:Quill::Bridging::QuillFdbStatus"
                          " classType:Quill::Bridging::Status maxSlots:100 hash:" ) +
                 hash + " slotSize: 48 occupiedSlots:0 freeSlots: 4294967295 numSlots:6" );
  EXPECT_EQ(
      traced.lines[1],
      "3 BucketTable::Header()  magic:544b424c4c495551 version:2 kindle:c0ffee numBuckets:8" );
  EXPECT_EQ( traced.lines[2],
             "3 ConquerTable::Header() magic:5251434c4c495551 version:7 kindle:c0ffee numReaders:0"
             " currentTable:0 notifications:10 currentPos:0 corralStart:0 corralEnd:0" );
}

TEST( Links, bucketsFollowInReversedCounting ) {
  std::vector< U32 > order;
  for( U32 b = 0;; ) {
    order.push_back( b );
    b = nextBucket( b, 8 );
    if( b == 0 )
      break;
  }
  EXPECT_EQ( order, ( std::vector< U32 >{ 0, 4, 2, 6, 1, 5, 3, 7 } ) );
  EXPECT_EQ( nextBucket( 0, 1 ), 0u );
  EXPECT_EQ( reversed( 1 ), 0x80000000u );
}

}  // namespace
