// PlatformContractTest.cpp: docs/platform-contract.md tells the truth: every row of its tables is
// checked, and it has rows of each kind.

#include <fstream>
#include <map>

#include <gtest/gtest.h>

#include <koi/Value.h>

#include "contract/Expected.h"

using namespace Tests;

namespace {

using Cells = std::vector< std::string >;

/// The rows of all tables with that head line, without the marks of code.
std::vector< Cells > rowsOf( std::string const & head ) {
  std::ifstream page( LUMO_PLATFORM_CONTRACT );
  std::vector< Cells > rows;
  bool inside = false;
  for( std::string line; std::getline( page, line ); ) {
    if( !line.starts_with( "|" ) || line == head ) {
      inside = line == head;
      continue;
    }
    if( !inside || line.starts_with( "|---" ) )
      continue;
    Cells cells;
    for( std::size_t at = 2, bar; ( bar = line.find( " |", at ) ) != std::string::npos;
         at = bar + 3 ) {
      std::string cell = line.substr( at, bar - at );
      if( cell.size() > 1 && cell.front() == '`' )
        cell = cell.substr( 1, cell.size() - 2 );
      cells.push_back( cell );
    }
    rows.push_back( cells );
  }
  return rows;
}

TEST( PlatformContract, textsLogsAndHashes ) {
  auto const rows = rowsOf( "| type | text | log | hash |" );
  EXPECT_GT( rows.size(), 20u );
  for( auto const & row : rows ) {
    SCOPED_TRACE( row[0] + " " + row[1] );
    KoiType const * type = Koi::typeNode( row[0] );
    auto const v = type->genericIfFromStrRep( type, row[1], nullptr );
    EXPECT_EQ( textOf( *v ), row[1] );
    EXPECT_EQ( hexOf( logOf( *v ) ), row[2] );
    EXPECT_EQ( expectedHashable( type ) ? hexOf( v->hash() ) : "none", row[3] );
    EXPECT_EQ( textOf( *ofLog( type, ofHex( row[2] ) ) ), row[1] );
  }
}

TEST( PlatformContract, logsThatHaveNoText ) {
  auto const rows = rowsOf( "| type | log | hash |" );
  EXPECT_GT( rows.size(), 2u );
  for( auto const & row : rows )
    EXPECT_EQ( hexOf( ofLog( Koi::typeNode( row[0] ), ofHex( row[1] ) )->hash() ), row[2] )
        << row[1];
}

TEST( PlatformContract, hashesOfSeveralFields ) {
  using namespace Koi;
  std::map< std::string, U32 > const computed = {
      { "u8 1, u16 770, bool True, u32 219025168, u8 5",
        hashOfFields( U8{ 1 }, U16{ 770 }, true, U32{ 219025168 }, U8{ 5 } ) },
      { "u8 1, u8 2, u8 3", hashOfFields( U8{ 1 }, U8{ 2 }, U8{ 3 } ) },
      { "u16 1, u32 2", hashOfFields( U16{ 1 }, U32{ 2 } ) },
      { "u32 2, u16 1", hashOfFields( U32{ 2 }, U16{ 1 } ) },
      { "bool True, u16 513, u8 3", hashOfFields( true, U16{ 513 }, U8{ 3 } ) },
      { "i32 -1, u64 4294967298, seconds 0.5",
        hashOfFields( I32{ -1 }, U64{ 4294967298 }, Seconds{ 0.5 } ) },
      { "string 'a', bool False", hashOfFields( String8( "a" ), false ) } };
  auto const rows = rowsOf( "| fields | hash |" );
  EXPECT_EQ( rows.size(), computed.size() );
  for( auto const & row : rows )
    EXPECT_EQ( hexOf( computed.at( row[0] ) ), row[1] ) << row[0];
}

/// Checks a table of refusals; read makes a value of a cell.
template< class Read >
void expectRefused( std::string const & head, Read && read ) {
  auto const rows = rowsOf( head );
  EXPECT_GT( rows.size(), 3u );
  for( auto const & row : rows ) {
    SCOPED_TRACE( row[0] + " " + row[1] );
    try {
      read( Koi::typeNode( row[0] ), row[1] );
      ADD_FAILURE();
    } catch( Koi::RangeException const & e ) {
      EXPECT_EQ( "RangeException", row[2] );
      EXPECT_EQ( e.what(), row[3] );
    } catch( Koi::ParseException const & e ) {
      EXPECT_EQ( "ParseException", row[2] );
      EXPECT_EQ( e.what(), row[3] );
    }
  }
}

TEST( PlatformContract, refusals ) {
  expectRefused( "| type | refused text | exception | says |",
                 []( KoiType const * type, std::string const & text ) {
                   type->genericIfFromStrRep( type, text, nullptr );
                 } );
  expectRefused(
      "| type | refused log | exception | says |",
      []( KoiType const * type, std::string const & log ) { ofLog( type, ofHex( log ) ); } );
}

}  // namespace
