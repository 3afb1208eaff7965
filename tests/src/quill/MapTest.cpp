// MapTest.cpp: the ways to take part in a table, and what each refuses.
#include <gtest/gtest.h>

#include <quill/QuillMap.h>

#include "ProofValue.h"
#include "support/Refusal.h"
#include "support/TableFixture.h"

using namespace Tests;
using namespace Quill;

#define EXPECT_REFUSED( act, Type, text ) EXPECT_EQ( refusal< Type >( [&] { act; } ), text )

namespace {

Ntrace::Handler const quiet( -1, {} );
using Map = QuillMap< ProofValue >;

struct Maps : testing::TestWithParam< QuillType >, TableFixture {
  static std::set< U32 > keysOf( Map & map ) {
    std::set< U32 > all;
    ProofValue v;
    Map::Hint hint;
    for( bool is = map.first( v, hint ); is; is = map.next( { v.number }, v, hint ) )
      EXPECT_TRUE( all.insert( v.number ).second );
    return all;
  }
};

TEST_P( Maps, aReaderFindsWhatTheWriterWrites ) {
  // 1. The reader comes first, and finds nothing until there is something.
  std::vector< U32 > told;
  int numReady = 0;
  Map reader( "a/table", { [&] { ++numReady; }, [&]( ProofKey k ) { told.push_back( k.number ); } },
              quiet );
  reader.init( GetParam(), false, 1, parameters() );
  reader.notifying( true );
  EXPECT_EQ( reader.mode(), GetParam() );
  ProofValue v;
  bool found = true;
  reader.safeLookup( { 1 }, found, v );
  EXPECT_FALSE( found );
  activity->runFor( 0.02 );
  EXPECT_EQ( numReady, 0 );
  // 2. The writer comes.
  Map writer( "a/table", {}, quiet );
  writer.init( QuillType::writer, true, 1 << 16, parameters() );
  for( U32 i = 0; i < 500; ++i )
    writer.safeWrite( ProofValue::of( i, 1 ) );
  ASSERT_TRUE( runUntil( [&] { return reader.members() == 500; } ) );
  EXPECT_EQ( numReady, 1 );
  EXPECT_EQ( keysOf( reader ), keysOf( writer ) );
  EXPECT_EQ( reader.kindleId(), writer.kindleId() );
  EXPECT_EQ( reader.capacity(), writer.capacity() );
  EXPECT_EQ( reader.maxSize(), 1u << 16 );
  ASSERT_TRUE( runUntil( [&] { return writer.writerCounters().numReaders == 1; } ) );
  // 3. Changes come by key.
  ASSERT_TRUE( runUntil( [&] { return reader.sequence() == writer.sequence(); } ) );
  activity->runFor( 0.01 );
  told.clear();
  writer.safeWrite( ProofValue::of( 7, 2 ) );
  EXPECT_TRUE( writer.safeRemove( { 8 } ) );
  EXPECT_FALSE( writer.safeRemove( { 8 } ) );
  ASSERT_TRUE( runUntil( [&] { return told.size() == 2; } ) );
  EXPECT_EQ( told, ( std::vector< U32 >{ 7, 8 } ) );
  reader.lookup( { 7 }, found, v );
  EXPECT_TRUE( found && v.version == 2 );
  reader.lookup( { 8 }, found, v );
  EXPECT_FALSE( found );
  EXPECT_EQ( reader.validate(), "" );
  EXPECT_EQ( reader.validateFiles(), "" );
  // 4. The writer removes the table and makes another.
  writer.cleanup();
  EXPECT_FALSE( writer.initialized() );
  writer.init( QuillType::writer, true, 1 << 16, parameters() );
  writer.safeWrite( ProofValue::of( 3, 3 ) );
  ASSERT_TRUE( runUntil( [&] { return reader.members() == 1; } ) );
  EXPECT_EQ( keysOf( reader ), ( std::set< U32 >{ 3 } ) );
}

TEST_P( Maps, synchronousReadersHaveEverythingAtOnce ) {
  Map writer( "table", {}, quiet ), reader( "table", {}, quiet );
  writer.init( QuillType::writer, true, 1000, parameters() );
  for( U32 i = 0; i < 100; ++i )
    writer.write( ProofValue::of( i, 1 ) );
  reader.init( GetParam(), true, 1, parameters() );
  EXPECT_EQ( keysOf( reader ).size(), 100u );
  EXPECT_EQ( reader.sequence(), writer.sequence() );
  reader.corruptionDetected( "as if" );
  EXPECT_FALSE( reader.isAttached() );
  ASSERT_TRUE( runUntil( [&] { return reader.isAttached(); } ) );
  EXPECT_EQ( keysOf( reader ).size(), 100u );
}

INSTANTIATE_TEST_SUITE_P( Of, Maps,
                          testing::Values( QuillType::reader, QuillType::keyshadow,
                                           QuillType::shadow ),
                          []( auto const & mode ) { return quillTypeName( mode.param ); } );

TEST_F( Maps, initRefusesWhatItCannotBeginWith ) {
  using Refused = Rova::InvalidInitializeException;
  Map map( "table", {}, quiet );
  auto withReady = parameters();
  withReady.onReadyFn = [] {};
  EXPECT_REFUSED( map.notifying( true ), Refused,
                  "QuillMap::notifying() not allowed at this time, initialized:False" );
  EXPECT_REFUSED( map.init( QuillType::writer, true, 0, parameters() ), Refused,
                  "QuillMap::init() 0 is not a valid initialization size" );
  EXPECT_REFUSED( map.init( QuillType::shadow, true, 1, withReady ), Refused,
                  "QuillMap::init() onReadyFn specified in synchronous mode" );
  EXPECT_REFUSED( map.init( static_cast< QuillType >( 4 ), true, 1, parameters() ), Refused,
                  "QuillMap::init() not a valid reader type:4" );
  EXPECT_FALSE( map.initialized() );
  map.init( QuillType::writer, true, 8, parameters() );
  EXPECT_REFUSED( map.init( QuillType::reader, true, 8, parameters() ), Refused,
                  "QuillMap::init() name:table already initialized with mode:writer for collection "
                  "table in writer mode" );
  EXPECT_REFUSED( map.advertiseCollectionReady(), Refused,
                  "QuillMap::advertiseCollectionReady() in synchronous mode" );
  // A full table is the caller's matter, not corruption.
  for( U32 i = 0; i < 8; ++i )
    map.safeWrite( ProofValue::of( i, 1 ) );
  EXPECT_REFUSED( map.safeWrite( ProofValue::of( 8, 1 ) ), TableFullException,
                  "SlotWriter::alloc() Quill table full (occupancy:8 of 8)" );
}

TEST_F( Maps, aReaderIsReadyOnceAlsoWhenItBeginsToKeepKeys ) {
  Map writer( "table", {}, quiet );
  writer.init( QuillType::writer, true, 100, parameters() );
  writer.write( ProofValue::of( 1, 1 ) );
  int numReady = 0, numTold = 0;
  Map reader( "table", { {}, [&]( ProofKey ) { ++numTold; } }, quiet );
  auto p = parameters();
  p.onReadyFn = [&] { ++numReady; };
  p.notifyFlush = true;
  reader.init( QuillType::reader, false, 1, p );
  ASSERT_TRUE( runUntil( [&] { return numReady == 1; } ) );
  reader.notifying( true );
  ASSERT_TRUE( runUntil( [&] { return numTold == 1; } ) );
  EXPECT_EQ( numReady, 1 );
}

TEST_F( Maps, aWriterWaitsForAnotherToEnd ) {
  auto first = std::make_unique< Map >( "table", Map::Handlers{}, quiet );
  first->init( QuillType::writer, true, 100, parameters() );
  first->write( ProofValue::of( 1, 1 ) );
  int numReady = 0, numCollection = 0;
  Map second( "table", { [&] { ++numCollection; }, {} }, quiet );
  auto p = parameters();
  p.onReadyFn = [&] { ++numReady; };
  second.init( QuillType::writer, false, 100, p );
  activity->runFor( 0.1 );
  EXPECT_FALSE( second.isAttached() );
  first.reset();
  ASSERT_TRUE( runUntil( [&] { return second.isAttached(); } ) );
  EXPECT_EQ( keysOf( second ).size(), 1u );
  EXPECT_EQ( numReady, 1 );
  EXPECT_EQ( numCollection, 0 );
  second.advertiseCollectionReady();
  EXPECT_EQ( numCollection, 1 );
  EXPECT_REFUSED( second.advertiseCollectionReady(), Rova::InvalidInitializeException,
                  "QuillMap::advertiseCollectionReady() collection already advertised" );
}

}  // namespace
