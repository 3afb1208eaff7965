// TableProofTest.cpp: every operation in every state that matters, stopped after every store and
// met by readers between any two; and that a step which is left out is noticed.
#include <span>

#include <gtest/gtest.h>

#include "TableProofs.h"

using namespace Tests;
using Quill::SeededFault;

namespace {

class OfEveryOperation : public testing::TestWithParam< Scenario > {};

TEST_P( OfEveryOperation, aStopAfterAnyStoreLosesNothing ) {
  Story const story( GetParam() );
  Tried tried;
  EXPECT_EQ( crashFault( story, tried ), "" );
  std::printf( "%s: %zu stores, %llu stops\n", GetParam().name.c_str(), story.events.size(),
               static_cast< unsigned long long >( tried.crashes ) );
}

TEST_P( OfEveryOperation, noReaderMeetsWhatNeverWas ) {
  Story const story( GetParam() );
  Tried tried;
  EXPECT_EQ( raceFault( story, tried ), "" );
  std::printf( "%s: %llu schedules\n", GetParam().name.c_str(),
               static_cast< unsigned long long >( tried.schedules ) );
}

TEST_P( OfEveryOperation, aCopyFollowsAndNeverReportsWhatIsNot ) {
  Story const story( GetParam() );
  Tried tried;
  EXPECT_EQ( followFault( story, tried ), "" );
  std::printf( "%s: %llu schedules\n", GetParam().name.c_str(),
               static_cast< unsigned long long >( tried.schedules ) );
}

TEST_P( OfEveryOperation, aCopyIsToldWhatADeadWriterDidNotSay ) {
  Story const story( GetParam() );
  Tried tried;
  EXPECT_EQ( followRepairFault( story, tried ), "" );
  std::printf( "%s: %llu schedules\n", GetParam().name.c_str(),
               static_cast< unsigned long long >( tried.schedules ) );
}

TEST_P( OfEveryOperation, countersThatBeginAnewChangeNothing ) {
  Story const story( GetParam(), true );
  if( story.events.size() > 100 )
    return;  // the short operations of this kind show it
  Tried tried;
  EXPECT_EQ( crashFault( story, tried ), "" );
  EXPECT_EQ( raceFault( story, tried ), "" );
}

TEST_P( OfEveryOperation, whatFindsNoRoomChangesNothing ) {
  for( U32 failing = 0;; ++failing ) {
    ProbeTable table( GetParam().shape );
    GetParam().prepare( table );
    table.disk.failingReserve = table.disk.numReserves + failing;
    try {
      GetParam().act( table );
    } catch( Rova::MemoryResourceException const & ) {
    }
    bool const failed = table.disk.numReserves > table.disk.failingReserve;
    if( table.writer->directSlot() == Quill::noIndex ) {
      EXPECT_EQ( walked( *ProbeTable::readerOn( table.disk ) ), table.content );
    }
    EXPECT_EQ( ( Quill::Validator< ProbeRecord, RecordedMemory >( *table.writer ).fault() ), "" );
    if( !failed )
      break;
  }
}

INSTANTIATE_TEST_SUITE_P( Table, OfEveryOperation, testing::ValuesIn( scenarios() ),
                          []( auto const & scenario ) {
                            std::string name = scenario.param.name;
                            for( char & c : name )
                              c = std::isalnum( static_cast< unsigned char >( c ) ) ? c : '_';
                            return name;
                          } );

// ---- does it notice?

/// Whether the proof fails for that operation.
bool isShownBy( std::string ( &proof )( Story const &, Tried & ), Scenario const & scenario ) {
  Tried tried;
  std::string fault;
  try {
    fault = proof( Story( scenario ), tried );
  } catch( Koi::Exception const & e ) {
    fault = e.what();
  }
  if( !fault.empty() )
    std::printf( "%s: %s\n", scenario.name.c_str(), fault.c_str() );
  return !fault.empty();
}

/// Raises the fault that the engine is to have, for one scope.
struct Lacking {
  explicit Lacking( SeededFault fault ) { RecordedMemory::lacking = fault; }
  ~Lacking() { RecordedMemory::lacking = SeededFault::none; }
};

class OfEveryFault : public testing::TestWithParam< int > {};

TEST_P( OfEveryFault, someOperationShowsIt ) {
  Lacking const lacking( static_cast< SeededFault >( GetParam() ) );
  std::span const all = scenarios();
  bool const isFollowers = GetParam() >= static_cast< int >( SeededFault::recheckQueue );
  bool const isReaders = GetParam() >= static_cast< int >( SeededFault::recheckLink );
  // A follower's shows in the two turns of the queue, or behind the first section.
  std::size_t const first = GetParam() == static_cast< int >( SeededFault::recheckQueue ) ? 6 : 25;
  for( std::size_t i = first; i < all.size() && isFollowers; ++i )
    if( isShownBy( followFault, all[i] ) )
      return;
  // Most faults show in the smallest table already, the rest soonest where entries move.
  for( auto const & scenario : all.first( 6 ) )
    if( isShownBy( crashFault, scenario ) || isShownBy( raceFault, scenario ) ||
        isShownBy( followFault, scenario ) )
      return;
  for( auto at = all.rbegin(); at != all.rend() && !isReaders; ++at )
    if( isShownBy( crashFault, *at ) )
      return;
  for( auto at = all.rbegin(); at != all.rend(); ++at )
    if( isShownBy( raceFault, *at ) )
      return;
  FAIL() << "nothing noticed";
}

INSTANTIATE_TEST_SUITE_P( Table, OfEveryFault,
                          testing::Range( 1, static_cast< int >( SeededFault::count ) ) );

}  // namespace
