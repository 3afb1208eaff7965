// What is learned from frames, and how the table shows it.

#include <gtest/gtest.h>
#include <learn/Frame.h>
#include <learn/Learner.h>
#include <learn/MacTable.h>

#include <nlohmann/json.hpp>

#include "Frames.h"

namespace Learn {
namespace {

std::span< Koi::U8 const > bytesOf( std::string const & frame ) {
  return { reinterpret_cast< Koi::U8 const * >( frame.data() ), frame.size() };
}

// One row a frame: its bytes, and the VLAN that its sender is learned in or else the reason why
// not.
struct FrameCase {
  char const * name;
  std::string frame;
  std::variant< unsigned, NotLearned > expected;
};
void PrintTo( FrameCase const & c, std::ostream * out ) { *out << c.name; }

constexpr unsigned native = 7;
class Frames : public testing::TestWithParam< FrameCase > {};

TEST_P( Frames, belongToTheirVlanOrTeachNothing ) {
  auto const got = sourceOf( bytesOf( GetParam().frame ), Bridging::VlanId( native ) );
  ASSERT_EQ( got.index(), GetParam().expected.index() );
  if( auto const * why = std::get_if< NotLearned >( &got ) ) {
    EXPECT_EQ( *why, std::get< NotLearned >( GetParam().expected ) );
    return;
  }
  auto const & source = std::get< FrameSource >( got );
  EXPECT_EQ( source.vlan.value(), std::get< unsigned >( GetParam().expected ) );
  EXPECT_EQ( source.address, Wirex::EthAddr( 2, 0, 0, 0, 0, 1 ) );
}

INSTANTIATE_TEST_SUITE_P(
    OfEveryKind, Frames,
    testing::Values(
        FrameCase{ "untagged", frameFrom( mac( 1 ) ), native },
        FrameCase{ "tagged", frameFrom( mac( 1 ), tag( 0x8100, 100 ) ), 100u },
        FrameCase{ "priorityAndDropBitsAreNotTheVlan", frameFrom( mac( 1 ), tag( 0x8100, 0xf064 ) ),
                   100u },
        FrameCase{ "lowestVlan", frameFrom( mac( 1 ), tag( 0x8100, 1 ) ), 1u },
        FrameCase{ "highestVlan", frameFrom( mac( 1 ), tag( 0x8100, 4094 ) ), 4094u },
        FrameCase{ "reservedVlan", frameFrom( mac( 1 ), tag( 0x8100, 0xefff ) ),
                   NotLearned::reservedVlan },
        FrameCase{ "priorityTagged", frameFrom( mac( 1 ), tag( 0x8100, 0xe000 ) ), native },
        FrameCase{ "innerTagsSayNothing",
                   frameFrom( mac( 1 ), tag( 0x8100, 5 ) + tag( 0x8100, 4095 ) ), 5u },
        FrameCase{ "serviceTagged", frameFrom( mac( 1 ), tag( 0x88a8, 5 ) + tag( 0x8100, 6 ) ),
                   native },
        FrameCase{ "otherTag", frameFrom( mac( 1 ), tag( 0x9100, 4095 ) ), native },
        FrameCase{ "lengthInsteadOfType", frameFrom( mac( 1 ) ).replace( 12, 2, "\0\x26", 2 ),
                   native },
        FrameCase{ "headerOnly", frameFrom( mac( 1 ), "", 0 ), native },
        FrameCase{ "oneByteShort", frameFrom( mac( 1 ) ).substr( 0, 13 ), NotLearned::tooShort },
        FrameCase{ "empty", "", NotLearned::tooShort },
        FrameCase{ "taggedHeaderOnly", frameFrom( mac( 1 ), tag( 0x8100, 9 ), 0 ), 9u },
        FrameCase{ "taggedOneByteShort", frameFrom( mac( 1 ), tag( 0x8100, 9 ) ).substr( 0, 17 ),
                   NotLearned::tooShort },
        FrameCase{ "serviceTaggedHeaderOnly",
                   frameFrom( mac( 1 ), tag( 0x88a8, 9 ) ).substr( 0, 14 ), native },
        FrameCase{ "jumbo", frameFrom( mac( 1 ), "", 65000 ), native },
        FrameCase{ "multicastSource", frameFrom( mac( 1, 1 ) ), NotLearned::groupSource },
        FrameCase{ "broadcastSource", frameFrom( std::string( 6, '\xff' ) ),
                   NotLearned::groupSource },
        FrameCase{ "zeroSource", frameFrom( std::string( 6, '\0' ) ), NotLearned::zeroSource },
        FrameCase{ "theFirstReasonCounts", frameFrom( mac( 1, 1 ), tag( 0x8100, 4095 ) ),
                   NotLearned::reservedVlan } ),
    []( auto const & c ) { return c.param.name; } );

/// Counts what observers of one database hear.
struct Listener : Bridging::FdbStatus::NotifieeConst {
  void onLearnedHost( Wirex::EthAddr const & ) override { ++heard; }
  int heard = 0;
};

struct LearnerTest : testing::Test {
  void frameIs( char const * intf, std::int64_t seconds, std::string const & bytes,
                Koi::U16 nativeVlan = 1 ) {
    learner.frameIs( { Wirex::IntfId( Koi::String8( intf ) ), Bridging::VlanId( nativeVlan ) },
                     { { seconds, 250'000'000 }, bytesOf( bytes ) } );
  }
  nlohmann::ordered_json entries() {
    return nlohmann::ordered_json::parse( macTableJson( learner ) )["entries"];
  }
  Learner learner;
};

TEST_F( LearnerTest, aHostMovesBetweenPortsButNotBetweenVlans ) {
  frameIs( "eth1", 10, frameFrom( mac( 1 ) ) );
  Listener listener;
  learner.forEachDatabase( [&]( auto const & status ) { listener.notifierIs( &status ); } );

  frameIs( "eth1", 20, frameFrom( mac( 1 ) ) );
  EXPECT_EQ( listener.heard, 0 );  // where it was: nothing has changed, not even a time
  EXPECT_EQ( entries()[0]["moves"], 0 );
  EXPECT_EQ( entries()[0]["lastMoveTime"], 10.25 );

  frameIs( "eth2", 30, frameFrom( mac( 1 ) ) );
  frameIs( "eth2", 40, frameFrom( mac( 1 ) ) );
  EXPECT_EQ( listener.heard, 1 );
  frameIs( "eth1", 50, frameFrom( mac( 1 ) ) );
  frameIs( "eth3", 60, frameFrom( mac( 1 ), tag( 0x8100, 2 ) ) );
  frameIs( "eth3", 70, frameFrom( mac( 1 ) ), 3 );
  auto const got = entries();
  ASSERT_EQ( got.size(), 3u );
  EXPECT_EQ( got[0].dump(), R"({"fid":1,"address":"02:00:00:00:00:01","intf":"eth1",)"
                            R"("entryType":"learnedDynamicMac","moves":2,"lastMoveTime":50.25})" );
  EXPECT_EQ( got[1]["moves"], 0 );
  EXPECT_EQ( got[2]["fid"], 3 );
  EXPECT_EQ( learner.totals().numHosts, 3u );
  EXPECT_EQ( learner.totals().numMoves, 2u );
}

TEST_F( LearnerTest, entriesComeByVlanThenByAddress ) {
  for( unsigned n : { 200u, 3u, 100u } )
    for( unsigned vlan : { 4094u, 2u, 1000u } )
      frameIs( "lag7", 1, frameFrom( mac( n ), tag( 0x8100, vlan ) ) );
  std::string order;
  for( auto const & entry : entries() )
    order += std::to_string( entry["fid"].get< int >() ) + "-" +
             entry["address"].get< std::string >().substr( 15 ) + " ";
  EXPECT_EQ( order, "2-03 2-64 2-c8 1000-03 1000-64 1000-c8 4094-03 4094-64 4094-c8 " );
}

TEST_F( LearnerTest, theTextAlignsWhateverTheWidths ) {
  EXPECT_EQ( macTableText( learner ),
             "VLAN  MAC address  Type  Port  Moves  Last move\n"
             "----  -----------  ----  ----  -----  ---------\n"
             "\n"
             "Hosts: 0, VLANs: 0, moves: 0\n"
             "Frames read: 0\n"
             "Frames not learned from: 0 (too short: 0, VLAN 4095: 0, group source: 0, all-zero "
             "source: 0)\n" );
  frameIs( "eth1", 1353690039, frameFrom( mac( 1 ) ) );
  frameIs( "eth10/32/4", 0, frameFrom( mac( 255 ), tag( 0x8100, 4094 ) ) );
  frameIs( "eth1", 1, frameFrom( mac( 255 ), tag( 0x8100, 4094 ) ) );
  frameIs( "eth10/32/4", 0, frameFrom( mac( 255 ), tag( 0x8100, 4094 ) ) );
  frameIs( "eth1", 1, "short" );
  frameIs( "eth1", 1, frameFrom( mac( 1, 1 ) ) );
  frameIs( "eth1", 1, frameFrom( mac( 1, 1 ) ) );
  EXPECT_EQ(
      macTableText( learner ),
      "VLAN  MAC address        Type             Port        Moves  Last move\n"
      "----  -----------------  ---------------  ----------  -----  ---------------------------\n"
      "   1  02:00:00:00:00:01  learned dynamic  eth1            0  2012-11-23T17:00:39.250000Z\n"
      "4094  02:00:00:00:00:ff  learned dynamic  eth10/32/4      2  1970-01-01T00:00:00.250000Z\n"
      "\n"
      "Hosts: 2, VLANs: 2, moves: 2\n"
      "Frames read: 7\n"
      "Frames not learned from: 3 (too short: 1, VLAN 4095: 0, group source: 2, all-zero source: "
      "0)\n" );
}

TEST( MacTable, timesAreUtcInMicroseconds ) {
  EXPECT_EQ( timeText( 1353690039.425111 ), "2012-11-23T17:00:39.425111Z" );
  EXPECT_EQ( timeText( 1709251199.9999999 ),
             "2024-03-01T00:00:00.000000Z" );  // the 29th of February ends
  EXPECT_EQ( timeText( -0.5 ), "1969-12-31T23:59:59.500000Z" );
  EXPECT_EQ( timeText( -62167219200 ), "0000-01-01T00:00:00.000000Z" );
  EXPECT_EQ( timeText( 253402300800 ), "253402300800.000000" );
}

TEST( MacTable, theJsonIsOneObjectWithItsSchema ) {
  EXPECT_EQ( macTableJson( Learner() ),
             "{\n  \"schema\": \"lumo.mac-table/1\",\n  \"entries\": []\n}\n" );
}

}  // namespace
}  // namespace Learn
