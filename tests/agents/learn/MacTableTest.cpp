// How the table shows what was learned.

#include <gtest/gtest.h>
#include <learn/Learner.h>
#include <learn/TotalsText.h>
#include <mac-table/MacTable.h>

#include <nlohmann/json.hpp>

#include "../frames/Bridges.h"
#include "../frames/Frames.h"

namespace Learn {
namespace {

struct MacTableTest : testing::Test {
  void frameIs( char const * name, std::int64_t seconds, std::string const & bytes ) {
    learner.frameIs( learner.port( intf( name ) ), { { seconds, 250'000'000 }, bytesOf( bytes ) } );
  }
  nlohmann::ordered_json entries() {
    return nlohmann::ordered_json::parse( MacTable::json( *learner.bridge().status ) )["entries"];
  }
  std::string shown() const {
    return MacTable::text( *learner.bridge().status ) + "\n" + totalsText( learner );
  }
  Learner learner;
};

TEST_F( MacTableTest, entriesComeByDatabaseThenByAddress ) {
  for( unsigned n : { 200u, 3u, 100u } )
    for( unsigned vlan : { 4094u, 2u, 1000u } )
      frameIs( "lag7", 1, frameFrom( mac( n ), tag( 0x8100, vlan ) ) );
  std::string order;
  for( auto const & entry : entries() )
    order += std::to_string( entry["fid"].get< int >() ) + "-" +
             entry["address"].get< std::string >().substr( 15 ) + " ";
  EXPECT_EQ( order, "2-03 2-64 2-c8 1000-03 1000-64 1000-c8 4094-03 4094-64 4094-c8 " );
  EXPECT_EQ( entries()[0].dump(), R"({"fid":2,"address":"02:00:00:00:00:03","intf":"lag7",)"
                                  R"("entryType":"learnedDynamicMac","moves":0,)"
                                  R"("lastMoveTime":1.25})" );
}

TEST_F( MacTableTest, theTextAlignsWhateverTheWidths ) {
  EXPECT_EQ( shown(),
             "VLAN  MAC address  Type  Port  Moves  Last move\n"
             "----  -----------  ----  ----  -----  ---------\n"
             "\n"
             "Hosts: 0, VLANs: 0, moves: 0, aged out: 0\n"
             "Frames read: 0\n"
             "Frames not learned from: 0\n" );
  learner.bridge()
      .config->fdbConfigIs( Bridging::Fid( 7 ) )
      ->configuredHostIs( Bridging::ConfiguredHost( Wirex::EthAddr( 2, 0, 0, 0, 0, 7 ),
                                                    intf( "eth2" ), Bridging::configuredStaticMac,
                                                    "printer" ) );
  frameIs( "eth1", 0, frameFrom( mac( 9 ) ) );
  frameIs( "eth1", 1353690039, frameFrom( mac( 1 ) ) );
  frameIs( "eth10/32/4", 0, frameFrom( mac( 255 ), tag( 0x8100, 4094 ) ) );
  frameIs( "eth1", 1, frameFrom( mac( 255 ), tag( 0x8100, 4094 ) ) );
  frameIs( "eth10/32/4", 0, frameFrom( mac( 255 ), tag( 0x8100, 4094 ) ) );
  frameIs( "eth1", 1, "short" );
  frameIs( "eth1", 1, frameFrom( mac( 1, 1 ) ) );
  frameIs( "eth1", 1, frameFrom( mac( 1, 1 ) ) );
  EXPECT_EQ( shown(),
             "VLAN  MAC address        Type             Port        Moves  Last move\n"
             "----  -----------------  ---------------  ----------  -----  "
             "---------------------------\n"
             "   1  02:00:00:00:00:01  learned dynamic  eth1            0  "
             "2012-11-23T17:00:39.250000Z\n"
             "   7  02:00:00:00:00:07  configured       eth2            0  -\n"
             "4094  02:00:00:00:00:ff  learned dynamic  eth10/32/4      2  "
             "1970-01-01T00:00:00.250000Z\n"
             "\n"
             "Hosts: 3, VLANs: 3, moves: 2, aged out: 1\n"
             "Frames read: 8\n"
             "Frames not learned from: 3\n"
             "  too short: 1\n"
             "  group source: 2\n" );
}

TEST( MacTableJson, theJsonIsOneObjectWithItsSchema ) {
  EXPECT_EQ( MacTable::json( *Learner().bridge().status ),
             "{\n  \"schema\": \"lumo.mac-table/1\",\n  \"entries\": []\n}\n" );
}

}  // namespace
}  // namespace Learn
