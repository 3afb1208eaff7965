// RecordContractTest.cpp: what holds for every value that lies in the slots of a table, and the
// bytes of one of them.

#include <gtest/gtest.h>

#include <Lumo/QuillBridging.h>
#include <Lumo/VlanCounters.h>
#include <koi/RecordOps.h>

#include "contract/Expected.h"

using namespace Tests;
using Quill::Bridging::QuillFdbStatus;
using Words = std::vector< Koi::U32 >;

static_assert( Quill::Record< Quill::Bridging::VlanCounter >::keySize == 4 );
static_assert( Quill::Record< Quill::Bridging::VlanCounter >::valueSize == 76, "on any machine" );

namespace {

std::vector< KoiType const * > tableTypes() {
  auto types = valueTypes();
  std::erase_if( types, []( KoiType const * type ) { return !type->record; } );
  return types;
}

/// Words that are not all zeros, for what is to be filled.
Words wordsOf( Koi::U32 size ) {
  EXPECT_EQ( size % 4, 0u );
  return Words( size / 4, 0xa5a5a5a5 );
}

std::string hexOf( Words const & words ) {
  return Tests::hexOf( std::string( reinterpret_cast< char const * >( words.data() ),
                                    words.size() * sizeof( Koi::U32 ) ) );
}

TEST( RecordContract, whatIsPutIntoASlotIsReadOutOfIt ) {
  EXPECT_FALSE( tableTypes().empty() );
  for( KoiType const * type : tableTypes() )
    for( auto const & v : samplesOf( type ) ) {
      SCOPED_TRACE( std::string( type->name ) + " " + textOf( *v ) );
      auto const & record = *type->record;
      Words words = wordsOf( record.valueSize ), key = wordsOf( record.keySize );
      record.put( *v, words.data() );
      EXPECT_EQ( logOf( *record.value( words.data() ) ), logOf( *v ) );

      auto const first = fieldOf( *v, 0 );
      EXPECT_EQ( logOf( *record.key( words.data() ) ), logOf( *first ) );
      record.putKey( *first, key.data() );
      EXPECT_TRUE( std::equal( key.begin(), key.end(), words.begin() ) );
      for( Koi::U32 seed : { 0u, 1u, ~0u } )
        EXPECT_EQ( record.hash( words.data(), seed ), record.hash( key.data(), seed ) );

      // What no field takes is zero: the same value is the same bytes.
      Words again( words.size() );
      record.put( *v, again.data() );
      EXPECT_EQ( again, words );
    }
}

TEST( RecordContract, anyBytesAreRead ) {
  for( KoiType const * type : tableTypes() )
    for( Koi::U32 word : { 0u, ~0u, 0x80402010u } ) {
      SCOPED_TRACE( type->name );
      Words const words( type->record->valueSize / 4, word );
      EXPECT_EQ( type->record->value( words.data() )->type(), type );
      EXPECT_EQ( type->record->key( words.data() )->type(), type->fields[0].type );
    }
}

TEST( RecordContract, whatIsOfAnotherTypeIsRefused ) {
  auto const & record = *QuillFdbStatus::_koiType.record;
  Words words = wordsOf( record.valueSize );
  Words const before = words;
  auto const key = Koi::genericIf( Bridging::HostKey() );
  try {
    record.put( *key, words.data() );
    FAIL();
  } catch( Koi::ArgumentException const & e ) {
    EXPECT_STREQ( e.what(),
                  "Quill::Bridging::QuillFdbStatus: argument 1 must be a "
                  "Quill::Bridging::QuillFdbStatus, not Bridging::HostKey" );
  }
  EXPECT_EQ( words, before );
}

TEST( RecordContract, theBytesOfAHostAreTheSameOnEveryMachine ) {
  using Record = Quill::Record< QuillFdbStatus >;
  Bridging::HostKey const key( Bridging::Fid( 0x0102 ),
                               Wirex::EthAddr( 0x00, 0x00, 0x5e, 0x00, 0x53, 0x0a ) );
  QuillFdbStatus const host( key, Wirex::IntfId( "eth1.100" ), 0x01020304, 0.1,
                             Bridging::configuredStaticMac );
  Words words = wordsOf( Record::valueSize ), keyWords = wordsOf( Record::keySize );
  Record::put( host, words.data() );
  EXPECT_EQ( hexOf( words ),
             "0201"              // fid
             "00005e00530a"      // addr
             "2000000064000000"  // intf
             "04030201"          // moves
             "9a9999999999b93f"  // lastMoveTime
             "04000000" );       // entryType
  Record::putKey( key, keyWords.data() );
  EXPECT_EQ( hexOf( keyWords ), "020100005e00530a" );
  EXPECT_EQ( QuillFdbStatus( key ), QuillFdbStatus( key, {}, 0, 0, Bridging::learnedDynamicMac ) );
}

}  // namespace
