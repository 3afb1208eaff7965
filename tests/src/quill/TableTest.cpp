// TableTest.cpp: a table over real files: against a plain map, at its limits, damaged.
#include <fstream>
#include <map>
#include <random>

#include <gtest/gtest.h>

#include "ProofValue.h"
#include "support/Refusal.h"

using namespace Tests;
using namespace Quill;

namespace {

Ntrace::Handler const quiet( -1, {} );

/// A table in a root of its own.
struct Table {
  explicit Table( TableParameters const & p = proofParameters() ) : parameters( p ) { attach(); }

  void attach() {
    writer.reset();
    writer.emplace( shm.root(), "table", parameters, quiet );
  }
  ProofReader reader() const { return ProofReader( shm.root(), "table", quiet ); }
  void fill( U32 count ) {
    for( U32 i = 0; i < count; ++i )
      writer->write( ProofValue::of( i, 1 ) );
  }

  ShmRoot shm;
  TableParameters const parameters;
  std::optional< ProofWriter > writer;
};

std::map< U32, U64 > walked( ProofReader & reader ) {
  std::map< U32, U64 > all;
  for( auto v = reader.first(); v; v = reader.next( { v->number } ) ) {
    EXPECT_TRUE( v->isSound() );
    EXPECT_TRUE( all.emplace( v->number, v->version ).second );
  }
  return all;
}

TEST( Table, isWhatAPlainMapIs ) {
  unsigned const seed = std::random_device()();
  SCOPED_TRACE( "seed " + std::to_string( seed ) );
  std::mt19937 random( seed );
  Table table;
  std::map< U32, U64 > plain;
  U64 version = 0;
  auto reader = table.reader();
  for( int phase = 0; phase < 40; ++phase ) {
    U32 const keys = 1u << random() % 12;
    bool const grows = random() % 2;
    for( int i = 0; i < 400; ++i ) {
      U32 const k = random() % keys;
      switch( random() % ( grows ? 5 : 8 ) ) {
        case 0: {
          auto const was = table.writer->remove( { k } );
          ASSERT_EQ( was.has_value(), plain.erase( k ) == 1 );
          break;
        }
        case 1:
          table.writer->directWrite( { k } );
          table.writer->directValueIs( ProofValue::of( k, plain[k] = ++version ) );
          table.writer->directCommit();
          break;
        case 2: {
          std::vector< ProofValue > some;
          for( U32 j = 0; j < 1 + random() % 70; ++j ) {
            U32 const one = random() % keys;
            some.push_back( ProofValue::of( one, plain[one] = ++version ) );
          }
          table.writer->write( std::span< ProofValue const >( some ) );
          break;
        }
        case 3:
        case 4:
          table.writer->write( ProofValue::of( k, plain[k] = ++version ) );
          break;
        default: {
          auto const was = table.writer->remove( { k } );
          ASSERT_EQ( was.has_value(), plain.erase( k ) == 1 );
        }
      }
    }
    ASSERT_EQ( table.writer->validate(), "" );
    ASSERT_EQ( table.writer->numEntries(), plain.size() );
    ASSERT_EQ( walked( reader ), plain );
    std::vector< ProofKey > all;
    for( U32 k = 0; k < keys; ++k )
      all.push_back( { k } );
    reader.lookup( std::span< ProofKey const >( all ), [&]( std::size_t i, ProofValue const * v ) {
      auto const at = plain.find( static_cast< U32 >( i ) );
      ASSERT_EQ( v != nullptr, at != plain.end() );
      if( v ) {
        ASSERT_TRUE( v->isSound() && v->version == at->second );
      }
    } );
    if( random() % 4 == 0 ) {
      U64 const sequence = table.writer->sequence();
      table.attach();
      ASSERT_EQ( table.writer->attached(), Attached::toExisting );
      ASSERT_EQ( table.writer->sequence(), sequence ) << "nothing is told again";
    }
  }
}

TEST( Table, growsToItsLimitAndNotBeyond ) {
  auto parameters = proofParameters( 10 );
  parameters.initialSlots = parameters.minSlots = 6;
  Table table( parameters );
  table.fill( 6 );
  EXPECT_EQ( table.writer->capacity(), 6u );
  table.writer->write( ProofValue::of( 6, 1 ) );
  EXPECT_EQ( table.writer->capacity(), 10u );
  table.fill( 10 );
  EXPECT_EQ(
      refusal< TableFullException >( [&] { table.writer->write( ProofValue::of( 10, 1 ) ); } ),
      "SlotWriter::alloc() Quill table full (occupancy:10 of 10)" );
  EXPECT_EQ( table.writer->validate(), "" );
  EXPECT_EQ( table.writer->numEntries(), 10u );
  table.writer->write( ProofValue::of( 3, 9 ) );  // what is there has room
}

struct Shrunk {
  U32 left, slots;
};
class Shrinks : public testing::TestWithParam< Shrunk > {};

TEST_P( Shrinks, toRoomForTwoToFourTimesTheEntriesInOneStep ) {
  auto parameters = proofParameters();
  parameters.minSlots = 2;
  parameters.initialSlots = 1024;
  Table table( parameters );
  table.fill( GetParam().left + 1 );
  EXPECT_EQ( table.writer->capacity(), 1024u );
  table.writer->remove( { GetParam().left } );
  EXPECT_EQ( table.writer->capacity(), GetParam().slots );
  EXPECT_EQ( table.writer->validate(), "" );
}
INSTANTIATE_TEST_SUITE_P( Table, Shrinks,
                          testing::Values( Shrunk{ 5, 16 }, Shrunk{ 4, 16 }, Shrunk{ 3, 8 },
                                           Shrunk{ 0, 2 } ) );

TEST( Table, movesManyEntriesInSlices ) {
  constexpr U32 most = 1 << 16;
  Table table( proofParameters( most ) );
  // The queue is as full as it may be when a slice ends: each round begins with one more entry in
  // it.
  for( U32 round = 0; round < 8; ++round ) {
    table.fill( most );
    for( U32 i = 0; i < round; ++i )
      table.writer->write( ProofValue::of( 0, 1 ) );
    U32 left = most;
    for( U32 k = 0; left > 16000; ++k )
      if( k % 5 != 0 ) {
        table.writer->remove( { k % most } );
        left = table.writer->numEntries();
        if( table.writer->engine().isMoving() )
          break;
      }
    ASSERT_TRUE( table.writer->engine().isMoving() || left <= 16384 );
    auto reader = table.reader();
    std::size_t const count = walked( reader ).size();
    EXPECT_EQ( count, table.writer->numEntries() ) << "in the middle of it";
    while( table.writer->engine().isMoving() )
      table.writer->write( ProofValue::of( 5, 2 ) );
    EXPECT_EQ( table.writer->capacity(), most / 2 );
    EXPECT_EQ( table.writer->validate(), "" );
    EXPECT_EQ( walked( reader ).size(), count );
  }
}

TEST( Table, tellsASlotOnce ) {
  Table table;
  table.writer->write( ProofValue::of( 1, 1 ) );
  table.writer->write( ProofValue::of( 1, 2 ) );
  EXPECT_EQ( table.writer->engine().queue().numNotifications(), 2u );
  EXPECT_EQ( table.writer->engine().queue().numTombstones(), 1u );
}

TEST( Table, refusesWhatBreaksIntoADirectWrite ) {
  Table table;
  table.fill( 3 );
  auto reader = table.reader();
  EXPECT_EQ( refusal< DirectWriteException >( [&] { table.writer->directCommit(); } ),
             "QuillWriter::directCommit() not in direct mode! "
             "Make sure the DirectIs/Commit are properly paired!" );
  table.writer->directWrite( { 1 } );
  table.writer->directValueIs( ProofValue::of( 1, 7 ) );
  EXPECT_EQ( reader.lookup( { 1 } )->version, 1u ) << "as it was, until the commit";
  EXPECT_TRUE( refusal< DirectWriteException >( [&] {
                 table.writer->write( ProofValue::of( 2, 2 ) );
               } ).starts_with( "QuillWriter::write() unbalanced directSlot:" ) );
  EXPECT_TRUE( refusal< DirectWriteException >( [&] {
                 table.writer->remove( { 2 } );
               } ).starts_with( "QuillWriter::remove() unbalanced directSlot:" ) );
  EXPECT_TRUE( refusal< DirectWriteException >( [&] {
                 table.writer->directWrite( { 2 } );
               } ).starts_with( "QuillWriter::directWrite() unbalanced directSlot:" ) );
  table.writer->directCommit();
  EXPECT_EQ( reader.lookup( { 1 } )->version, 7u );
}

TEST( Table, hasOneWriter ) {
  Table table;
  EXPECT_EQ( refusal< Rova::MemoryResourceException >(
                 [&] { ProofWriter( table.shm.root(), "table", table.parameters, quiet ); } ),
             table.shm.path() + "/table has a writer already" );
  ProofWriter const other( table.shm.root(), "other/table", table.parameters, quiet );
  EXPECT_EQ( other.attached(), Attached::toNew );
}

TEST( Table, isFormattedAnewWhenItCannotBeBelieved ) {
  auto const spoiled = []( auto spoil, TableParameters const & then = proofParameters() ) {
    Table table;
    table.fill( 20 );
    auto reader = table.reader();
    table.writer.reset();
    spoil( table.shm.path() + "/table/" );
    ProofWriter const writer( table.shm.root(), "table", then, quiet );
    EXPECT_TRUE( reader.isReplaced() == ( writer.attached() == Attached::reformatted ) );
    EXPECT_EQ( walked( reader ).size(), 20u ) << "who maps the old files keeps them";
    EXPECT_EQ( writer.validate(), "" );
    return writer.attached();
  };
  auto const overwritten = []( std::string const & path, int at, char byte ) {
    std::fstream file( path, std::ios::in | std::ios::out | std::ios::binary );
    file.seekp( at );
    file.put( byte );
  };
  EXPECT_EQ( spoiled( []( std::string const & ) {} ), Attached::toExisting );
  EXPECT_EQ( spoiled( []( std::string const & ) {}, proofParameters( 100 ) ),
             Attached::reformatted );
  EXPECT_EQ( spoiled( []( std::string const & d ) { std::filesystem::remove( d + "conquer.2" ); } ),
             Attached::reformatted );
  auto const copy = []( std::string const & path ) {  // so that a reader's mapping stays
    std::filesystem::copy_file( path, path + ".x" );
    std::filesystem::rename( path + ".x", path );
  };
  EXPECT_EQ( spoiled( [&]( std::string const & d ) {
               copy( d + "buckets" );
               overwritten( d + "buckets", 8, 3 );
             } ),
             Attached::reformatted );
  EXPECT_EQ( spoiled( [&]( std::string const & d ) {
               copy( d + "buckets" );
               overwritten( d + "buckets", 36, 77 );  // the head of bucket 0
             } ),
             Attached::reformatted );
}

TEST( Table, isFoundByNamesAndNotByLinks ) {
  Table table;
  auto const opened = [&]( char const * name ) {
    return refusal< Koi::Exception >( [&] { ProofReader( table.shm.root(), name, quiet ); } );
  };
  EXPECT_EQ( opened( "../table" ), "../table is no name of a table" );
  EXPECT_EQ( opened( "a//b" ), "a//b is no name of a table" );
  EXPECT_EQ( opened( "other" ),
             "cannot open " + table.shm.path() + "/other: No such file or directory" );
  std::filesystem::create_directory_symlink( table.shm.path() + "/table",
                                             table.shm.path() + "/link" );
  EXPECT_TRUE( opened( "link" ).starts_with( "cannot open " ) );
  std::filesystem::remove( table.shm.path() + "/table/buckets" );
  EXPECT_EQ( opened( "table" ), "BucketReader::attach() no shared memory region: " +
                                    table.shm.path() + "/table/buckets" );
}

TEST( Table, aFileThatIsCutUnderAReaderDoesNotEndIt ) {
  Table table;
  table.fill( 5000 );
  auto reader = table.reader();
  ASSERT_TRUE( reader.lookup( { 4999 } ) );
  std::filesystem::resize_file( table.shm.path() + "/table/slots", 4096 );
  int numRefused = 0;
  for( U32 k = 0; k < 5000; ++k )
    try {
      auto const v = reader.lookup( { k } );
      EXPECT_TRUE( !v || v->isSound() );
    } catch( Rova::CorruptionDetectedException const & ) {
      ++numRefused;
    }
  EXPECT_GT( numRefused, 0 );
  table.writer->engine().slots().cutFile();
}

TEST( Table, aDamagedBitIsRefusedOrRead ) {
  Table table;
  table.fill( 6 );
  table.writer->remove( { 2 } );
  table.writer.reset();
  std::string const directory = table.shm.path() + "/table/";
  for( std::string const file : { "slots", "buckets" } ) {
    std::string whole;
    {
      std::ifstream in( directory + file, std::ios::binary );
      whole.assign( std::istreambuf_iterator< char >( in ), {} );
    }
    for( std::size_t bit = 0; bit < whole.size() * 8; ++bit ) {
      std::string damaged = whole;
      damaged[bit / 8] = static_cast< char >( damaged[bit / 8] ^ 1 << bit % 8 );
      {
        std::ofstream out( directory + file, std::ios::binary );
        out.write( damaged.data(), static_cast< std::streamsize >( damaged.size() ) );
      }
      try {
        auto reader = table.reader();
        std::size_t count = 0;
        for( U32 k = 0; k < 6; ++k )
          if( auto const v = reader.lookup( { k } ) ) {
            EXPECT_EQ( v->number, k );
          }
        for( auto v = reader.first(); v && count <= 100; v = reader.next( { v->number } ) )
          ++count;
        EXPECT_LE( count, 6u ) << file << " bit " << bit;
      } catch( Koi::Exception const & ) {
        continue;  // refused by name
      }
    }
    std::ofstream out( directory + file, std::ios::binary );
    out.write( whole.data(), static_cast< std::streamsize >( whole.size() ) );
  }
}

}  // namespace
