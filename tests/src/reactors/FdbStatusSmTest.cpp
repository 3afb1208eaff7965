// FdbStatusSmTest.cpp: learned hosts travel from one process's status to another's, whatever was in
// the table, and whoever comes, goes and dies meanwhile.
#include <gtest/gtest.h>

#include <map>
#include <random>
#include <set>

#include <Lumo/FdbStatusSm.h>
#include <koi/KeysOf.h>
#include <mem/Rova.h>
#include <quill/QuillMap.h>

#include "support/Refusal.h"
#include "support/TableFixture.h"

using namespace Tests;
using namespace Bridging;
using Quill::QuillType;

namespace {

using Koi::U32;
using Hosts = std::map< std::pair< unsigned, std::string >, std::string >;

Wirex::EthAddr address( U32 n ) {
  return Wirex::EthAddr( 0, 0, 0x5e, 0, 0x53, static_cast< Koi::U8 >( n ) );
}
LearnedHost host( U32 n, U32 moves = 0 ) {
  return LearnedHost( address( n ), Wirex::IntfId( Koi::String8( "eth1" ) ), moves, 0.5 * n,
                      EntryType::learnedDynamicMac );
}

Hosts hostsOf( Status const & status ) {
  Hosts all;
  for( auto const & fdb : status.fdbStatus() )
    for( auto const & h : fdb.value()->learnedHost() )
      all[{ fdb.key().value(), std::string( h.key().stringValue() ) }] =
          std::string( Koi::valueToStrep( h.value() ) );
  return all;
}

/// How often each key was told.
struct Told : Quill::Bridging::Status::NotifieeConst {
  using NotifieeConst::onQuillFdbStatus;
  void onQuillFdbStatus( HostKey const & k ) override { keys.push_back( k ); }
  std::vector< HostKey > keys;
};

/// Counts the hosts that were reported gone.
struct Gone : FdbStatus::NotifieeConst {
  void onLearnedHost( Wirex::EthAddr const & a ) override {
    if( !notifier()->learnedHost().contains( a ) )
      ++count;
  }
  int count = 0;
};

struct Mirrors : testing::TestWithParam< QuillType >, TableFixture {
  Koi::Ptr< Quill::Bridging::Status > table( QuillType mode, U32 size = 1000,
                                             bool synchronous = false ) const {
    auto const status = Quill::Bridging::statusFactory( Koi::Name( "table" ) );
    status->quillFdbStatusControl().init( mode, synchronous, size, parameters() );
    return status;
  }
  bool runUntilEqual( Status const & a, Status const & b ) {
    return runUntil( [&] { return hostsOf( a ) == hostsOf( b ); } );
  }

  Koi::Ptr< Status > const source = statusFactory( Koi::Name( "source" ) );
  Koi::Ptr< Status > const target = statusFactory( Koi::Name( "target" ) );
};

TEST_P( Mirrors, keepTwoStatusesEqual ) {
  auto const written = table( QuillType::writer ), read = table( GetParam() );
  auto const writer = writerFdbStatusSmFactory( source, written );
  auto const reader = readerFdbStatusSmFactory( read, target );
  source->fdbStatusIs( Fid( 1 ) )->learnedHostIs( host( 1 ) );  // before the table is there
  EXPECT_FALSE( writer->initialized() );
  ASSERT_TRUE( runUntilEqual( *source, *target ) );
  EXPECT_TRUE( writer->initialized() );
  unsigned const seed = std::random_device()();
  SCOPED_TRACE( "seed " + std::to_string( seed ) );
  std::mt19937 random( seed );
  for( int round = 0; round < 40; ++round ) {
    for( int i = 0; i < 50; ++i ) {
      auto const fdb = source->fdbStatusIs( Fid( static_cast< Koi::U16 >( random() % 3 + 1 ) ) );
      U32 const n = random() % 60;
      switch( random() % 8 ) {
        case 0:
          source->fdbStatusDel( fdb->fid() );
          break;
        case 1:
        case 2:
          fdb->learnedHostDel( address( n ) );
          break;
        default:
          fdb->learnedHostIs( host( n, random() % 3 ) );
      }
    }
    for( auto const fid : Koi::keysOf( source->fdbStatus() ) )  // an empty one has no entries
      if( source->fdbStatus( fid )->learnedHost().empty() )
        source->fdbStatusDel( fid );
    ASSERT_TRUE( runUntilEqual( *source, *target ) ) << "round " << round;
    ASSERT_EQ( target->fdbStatus().size(), source->fdbStatus().size() );
  }
  EXPECT_EQ( written->quillFdbStatus().size(), hostsOf( *source ).size() );
  source->fdbStatusDelAll();
  ASSERT_TRUE( runUntil( [&] { return target->fdbStatus().empty(); } ) );
}

TEST_P( Mirrors, tellNobodyOfWhatWasRight ) {
  // 1. A table is left by an earlier run, with a host that is right, one that is not, a stranger.
  {
    auto const left = table( QuillType::writer );
    ASSERT_TRUE( runUntil( [&] { return left->quillFdbStatusControl().isReady(); } ) );
    for( U32 n : { 1, 2, 3 } ) {
      auto const h = host( n );
      left->quillFdbStatusIs(
          { { Fid( 1 ), h.address() }, h.intf(), h.moves(), h.lastMoveTime(), h.entryType() } );
    }
  }
  auto const read = table( GetParam() );
  auto const reader = readerFdbStatusSmFactory( read, target );
  ASSERT_TRUE( runUntil( [&] { return hostsOf( *target ).size() == 3; } ) );
  Gone gone;
  gone.notifierIs( target->fdbStatus( Fid( 1 ) ).ptr() );
  auto const fdb = source->fdbStatusIs( Fid( 1 ) );
  fdb->learnedHostIs( host( 1 ) );
  fdb->learnedHostIs( host( 2, 9 ) );
  source->fdbStatusIs( Fid( 2 ) )->learnedHostIs( host( 4 ) );
  // 2. The new writer's table is made equal.
  auto const written = table( QuillType::writer );
  Told told;
  told.notifierIs( written.ptr() );
  auto const writer = writerFdbStatusSmFactory( source, written );
  ASSERT_TRUE( runUntilEqual( *source, *target ) );
  EXPECT_EQ( gone.count, 1 );  // the stranger
  EXPECT_EQ( std::set< std::string >( [&] {
               std::set< std::string > keys;
               for( auto const & k : told.keys )
                 keys.insert( std::string( Koi::valueToStrep( k ) ) );
               return keys;
             }() )
                 .size(),
             3u );
  EXPECT_EQ( told.keys.size(), 3u );
  for( auto const & k : told.keys )
    EXPECT_NE( k.addr(), address( 1 ) );
}

TEST_P( Mirrors, followAnotherTableAndAnotherSource ) {
  auto const written = table( QuillType::writer ), read = table( GetParam() );
  auto const writer = writerFdbStatusSmFactory( nullptr, written );
  auto const reader = readerFdbStatusSmFactory( nullptr, target );
  target->fdbStatusIs( Fid( 7 ) )->learnedHostIs( host( 7 ) );  // a stranger
  EXPECT_EQ( refusal( [&] { writer->fdbStatusIs( Fid( 1 ), nullptr ); } ),
             "null _fdbStatus parameter to mutator for Bridging::WriterFdbStatusSm::fdbStatus not "
             "allowed" );
  source->fdbStatusIs( Fid( 1 ) )->learnedHostIs( host( 1 ) );
  writer->statusIs( source );
  ASSERT_TRUE( runUntil( [&] { return read->quillFdbStatusControl().isReady(); } ) );
  reader->quillStatusIs( read );
  ASSERT_TRUE( runUntilEqual( *source, *target ) );
  writer->statusDel();
  source->fdbStatus( Fid( 1 ) )->learnedHostIs( host( 2 ) );
  activity->runFor( 0.05 );
  EXPECT_EQ( hostsOf( *target ).size(), 1u );
  writer->statusIs( source );
  ASSERT_TRUE( runUntilEqual( *source, *target ) );
  EXPECT_EQ( hostsOf( *target ).size(), 2u );
}

INSTANTIATE_TEST_SUITE_P( ByMode, Mirrors,
                          testing::Values( QuillType::shadow, QuillType::reader,
                                           QuillType::keyshadow ),
                          []( auto const & mode ) { return Quill::quillTypeName( mode.param ); } );

using Writers = Mirrors;

TEST_P( Writers, findRoomLater ) {
  auto const written = table( QuillType::writer, 8 );
  auto const writer = writerFdbStatusSmFactory( source, written );
  ASSERT_TRUE( runUntil( [&] { return writer->initialized(); } ) );
  auto const fdb = source->fdbStatusIs( Fid( 1 ) );
  for( U32 n = 0; n < 20; ++n )
    fdb->learnedHostIs( host( n ) );
  EXPECT_EQ( written->quillFdbStatus().size(), 8u );
  EXPECT_EQ( writer->pendingHost().size(), 12u );
  EXPECT_EQ( writer->numRefused(), 12u );
  for( auto const & a : Koi::keysOf( fdb->learnedHost() ) ) {
    fdb->learnedHostDel( a );
    EXPECT_EQ( written->quillFdbStatus().size() + writer->pendingHost().size(),
               fdb->learnedHost().size() );
    EXPECT_EQ( written->quillFdbStatus().size(),
               std::min< std::size_t >( 8, fdb->learnedHost().size() ) );
    for( auto const & entry : written->quillFdbStatus() )
      EXPECT_TRUE( fdb->learnedHost().contains( entry.key().addr() ) );
  }
}

TEST_P( Writers, makeATableThatIsThereEqualOnce ) {
  auto const written = table( QuillType::writer, 8, true );
  auto const fdb = source->fdbStatusIs( Fid( 1 ) );
  for( U32 n = 0; n < 20; ++n )
    fdb->learnedHostIs( host( n ) );
  EXPECT_EQ( writerFdbStatusSmFactory( source, written )->numRefused(), 12u );
  // What changes while it is made equal is not missed.
  struct Learning : Told {
    void onQuillFdbStatus( HostKey const & k ) override {
      Told::onQuillFdbStatus( k );
      if( keys.size() == 1 )
        change();
    }
    std::function< void() > change;
  } learning;
  written->quillFdbStatusDelAll();
  learning.change = [&] {
    for( U32 n = 1; n < 20; ++n )
      fdb->learnedHostDel( address( n ) );
    source->fdbStatusIs( Fid( 2 ) )->learnedHostIs( host( 30 ) );
  };
  learning.notifierIs( written.ptr() );
  auto const writer = writerFdbStatusSmFactory( source, written );
  EXPECT_EQ( written->quillFdbStatus().size(), 2u );
  EXPECT_TRUE( written->quillFdbStatus().contains( HostKey( Fid( 1 ), address( 0 ) ) ) );
  EXPECT_TRUE( written->quillFdbStatus().contains( HostKey( Fid( 2 ), address( 30 ) ) ) );
  EXPECT_TRUE( writer->pendingHost().empty() );
}

TEST_P( Writers, mendACorruptTable ) {
  auto const written = table( QuillType::writer ), read = table( QuillType::shadow );
  auto const writer = writerFdbStatusSmFactory( source, written );
  auto const reader = readerFdbStatusSmFactory( read, target );
  auto const fdb = source->fdbStatusIs( Fid( 1 ) );
  for( U32 n = 0; n < 100; ++n )
    fdb->learnedHostIs( host( n ) );
  ASSERT_TRUE( runUntilEqual( *source, *target ) );
  Gone gone;
  gone.notifierIs( target->fdbStatus( Fid( 1 ) ).ptr() );
  // The writer is told of damage, lets go, and makes the table equal again; meanwhile the source
  // goes on.
  written->quillFdbStatusControl().corruptionDetected( "seen by a test" );
  EXPECT_FALSE( written->quillFdbStatusControl().isReady() );
  fdb->learnedHostDel( address( 5 ) );
  fdb->learnedHostIs( host( 200 ) );
  ASSERT_TRUE( runUntilEqual( *source, *target ) );
  EXPECT_EQ( gone.count, 1 );
  EXPECT_EQ( written->quillFdbStatusControl().map().validate(), "" );
}

INSTANTIATE_TEST_SUITE_P( OfTables, Writers, testing::Values( QuillType::writer ) );

}  // namespace
