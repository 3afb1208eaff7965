// MacTest.cpp: `lumo show mac` and `lumo watch mac` as a user runs them.
#include <algorithm>
#include <filesystem>
#include <sstream>

#include <nlohmann/json.hpp>

#include "HostTables.h"

namespace {

using namespace Tests;
using Json = nlohmann::ordered_json;

constexpr char table[] = "quillFdbStatus";

struct LumoMac : HostTables {
  /// 250 in each database; every tenth is configured, every 500th is on no interface.
  void fillMany() const {
    auto w = writer( table );
    for( U32 n = 2000; n-- > 0; ) {
      auto const one = host( n + n / 250 * 6, n % 3, typeOf( n ) );
      w.write( n % 500 == 0 ? Host( one.key(), Wirex::IntfId(), 0, 0, typeOf( n ) ) : one );
    }
  }
  static Bridging::EntryType typeOf( U32 n ) {
    return n % 10 == 0 ? Bridging::configuredStaticMac : Bridging::learnedDynamicMac;
  }
  Json shown( std::string const & options ) const {
    auto const outcome = run( "show mac --json " + options );
    EXPECT_EQ( outcome.status, 0 ) << options << outcome.err;
    return Json::parse( outcome.out );
  }
};

TEST_F( LumoMac, isShownByVlanThenByAddress ) {
  fillMany();
  auto const text = run( "show mac" );
  EXPECT_EQ( text.err, "" );
  EXPECT_TRUE( text.out.starts_with(
      "VLAN  MAC address        type             port  moves  last move\n"
      "   1  00:00:5e:00:53:00  configured       -         0  -\n"
      "   1  00:00:5e:00:53:01  learned dynamic  eth3      1  1970-01-01T00:00:00.500000Z\n" ) )
      << text.out.substr( 0, 300 );
  EXPECT_TRUE( text.out.ends_with( "\n2000 entries\n" ) );

  auto const json = shown( "" );
  EXPECT_EQ( json["schema"], "lumo.mac-table/1" );
  EXPECT_EQ( json["table"], table );
  // The same as the table's own form, but in order.
  std::map< std::pair< int, std::string >, Json > all;
  auto const dump = Json::parse( run( std::string( "table dump --json " ) + table ).out );
  for( auto const & entry : dump["entries"] ) {
    Json flat{ { "fid", entry["key"]["fid"] }, { "address", entry["key"]["addr"] } };
    std::pair const at( flat["fid"].get< int >(), flat["address"].get< std::string >() );
    for( char const * name : { "intf", "entryType", "moves", "lastMoveTime" } )
      flat[name] = entry[name];
    all[at] = flat;
  }
  ASSERT_EQ( json["entries"].size(), 2000u );
  ASSERT_EQ( all.size(), 2000u );
  std::size_t i = 0;
  for( auto const & [at, entry] : all )
    EXPECT_EQ( json["entries"][i++].dump(), entry.dump() );

  EXPECT_EQ( run( "show mac --count" ).out,
             "type             entries\n"
             "learned dynamic     1800\n"
             "configured           200\n"
             "total               2000\n" );
  EXPECT_EQ( shown( "--count --vlan 2" ).dump(),
             R"({"schema":"lumo.mac-count/1","table":"quillFdbStatus",)"
             R"("types":{"learnedDynamicMac":225,"configuredStaticMac":25},"total":250})" );
  fill( "none", 0 );
  EXPECT_EQ( run( "show mac --table none" ).out,
             "VLAN  MAC address  type  port  moves  last move\n0 entries\n" );
  EXPECT_EQ( shown( "--table none" )["entries"], Json::array() );
}

TEST_F( LumoMac, filtersAreCombined ) {
  fillMany();
  struct {
    char const * options;
    std::size_t count;
  } const cases[] = {
      { "--vlan 2", 250 },
      { "--vlan 2,4-6,5 --vlan 8", 1250 },
      { "--vlan 9-4094", 0 },
      { "--fid 0-3", 750 },
      { "--type static", 200 },
      { "--type dynamic,configuredStaticMac", 2000 },
      { "--type peer", 0 },
      { "--port eth9", 0 },
      { "--port eth1,eth2,eth3,eth4,eth5,eth6,eth7 --port eth8", 1996 },
      { "--port ''", 4 },
      { "--address 00:00:5e:00:53:07", 8 },
      { "--address 00-00-5E-00-53-07,0000.5e00.5308", 16 },
      { "--address 00005e005309 --address 00:00:5e:00:53:07", 16 },
      { "--address 00:00:5e:00:53:07/44", 128 },
      { "--address 0000.0000.0003/00:00:00:00:00:03", 8 * 62 },
      { "--address 02:00:00:00:00:00/8", 0 },
      { "--vlan 3 --type static --address 00:00:5e:00:53:00/45", 1 },
  };
  for( auto const & c : cases )
    EXPECT_EQ( shown( c.options )["entries"].size(), c.count ) << c.options;
}

TEST_F( LumoMac, whatIsRefusedIsNamed ) {
  EXPECT_EQ( refused( "show mac", 3 ), "lumo: there is no table 'quillFdbStatus'\n" );
  { ProofWriter const w( shm.root(), "proof", proofParameters(), quietTrace ); }
  fill( table, 3 );
  for( char const * const command : { "show", "watch" } ) {
    auto const refusal = [&]( std::string const & options, int status ) {
      return refused( std::string( command ) + " mac " + options, status );
    };
    EXPECT_EQ( refusal( "--table proof", 2 ),
               "lumo: table proof holds Tests::ProofValue, no MAC addresses\n" );
    EXPECT_EQ( refusal( "--vlan 10-5", 1 ),
               "lumo: --vlan 10-5: a number from 1 to 4094 was expected, or a range as 20-29\n" );
    for( char const * const vlan : { "0", "4095", "x", "1-", "-1", "1-2-3", "99999999999" } )
      EXPECT_TRUE( refusal( std::string( "--vlan=" ) + vlan, 1 ).starts_with( "lumo: --vlan" ) );
    EXPECT_EQ( refusal( "--port eth1,eth0", 1 ),
               "lumo: --port eth0: Interface name 'eth0': port < 1 or > 1023 not allowed\n" );
    for( char const * const address : { "00:00:5e:00:53", "00:00:5e:00:53:1", "00:00-5e:00:53:01",
                                        "00:00:5e:00:53:01:02", "0000.5e005301", "00005e00530g" } )
      EXPECT_EQ( refusal( std::string( "--address " ) + address, 1 ),
                 std::string( "lumo: --address " ) + address +
                     ": a MAC address was expected, as 00:00:5e:00:53:01, 00-00-5e-00-53-01, "
                     "0000.5e00.5301 or 00005e005301\n" );
    EXPECT_EQ( refusal( "--address 00:00:5e:00:53:01/49", 1 ),
               "lumo: --address 00:00:5e:00:53:01/49: a prefix length from 0 to 48 or a mask was "
               "expected behind /\n" );
    EXPECT_TRUE( refusal( "--type statc", 1 )
                     .starts_with( "lumo: --type statc: one of these was expected: dynamic, " ) );
  }
  EXPECT_EQ( refused( "show mac >/dev/full", 2 ),
             "lumo: standard output: No space left on device\n" );
  std::ofstream( shm.path() + "/" + table + "/slots", std::ios::in | std::ios::out ) << "X";
  for( char const * const command : { "show mac", "watch mac" } )
    EXPECT_TRUE( refused( command, 4 ).starts_with( "lumo: quillFdbStatus: corrupt: SlotTable" ) );
}

TEST_F( LumoMac, changesAreShownWithWhatWas ) {
  Started json( shm.path(), "watch mac --json --port eth1" );
  json.shows( "yet\n" );
  auto w = writer( table );
  Started lines( shm.path(), "watch mac --vlan 1" );
  lines.shows( "moves  last move\n" );
  w.write( host( 0 ) );
  lines.shows(
      "Z  added       1  00:00:5e:00:53:00  learned dynamic  eth1                0  "
      "1970-01-01T00:00:00.000000Z\n" );
  // Who began later is not told of what was there.
  Started late( shm.path(), "watch mac --count 1" );
  late.shows( "moves  last move\n" );
  json.shows( "added" );
  w.write( host( 300 ) );
  w.write( host( 0, 1 ) );
  lines.shows(
      "Z  moved       1  00:00:5e:00:53:00  learned dynamic  eth1 -> eth2        1  1970" );
  json.shows( "moved" );
  w.write( host( 0, 1, Bridging::learnedSecureMac ) );
  lines.shows( "Z  changed     1  00:00:5e:00:53:00  learned dynamic -> learned secure  eth2   " );
  w.remove( host( 0 ).key() );
  lines.shows(
      "Z  gone        1  00:00:5e:00:53:00  learned secure   eth2                1  1970" );
  EXPECT_EQ( lines.interrupted(), 0 );
  EXPECT_EQ( json.interrupted(), 0 );
  late.interrupted();
  EXPECT_EQ( lines.err(), "" );
  EXPECT_EQ( std::ranges::count( lines.out(), '\n' ), 5 ) << lines.out();
  EXPECT_EQ( std::ranges::count( late.out(), '\n' ), 2 ) << late.out();

  // What is asked for may be as it was or as it is.
  std::istringstream in( json.out() );
  std::vector< Json > changes;
  for( std::string line; std::getline( in, line ); )
    changes.push_back( Json::parse( line ) );
  ASSERT_EQ( changes.size(), 2u ) << json.out();
  EXPECT_EQ( changes[0]["schema"], "lumo.mac-change/1" );
  EXPECT_GT( changes[0]["time"], 1e9 );
  EXPECT_FALSE( changes[0].contains( "was" ) );
  EXPECT_EQ( changes[1]["change"], "moved" );
  EXPECT_EQ( changes[1]["was"], changes[0]["entry"] );
  EXPECT_EQ( changes[1]["entry"]["intf"], "eth2" );
  EXPECT_EQ( run( "watch mac --json --for 0.1" ).out, "" );
}

TEST_F( LumoMac, aTableMayComeAndGoAndComeAgain ) {
  Started json( shm.path() + "/later", "watch mac --json" );
  json.shows( "quillFdbStatus: there is no such table below " + shm.path() + "/later yet\n" );
  std::filesystem::create_directory( shm.path() + "/later" );
  auto const fillLater = [&]( U32 count ) {
    HostWriter w( Mem::RootPath( shm.path() + "/later" ), table, proofParameters( 16 ),
                  quietTrace );
    for( U32 n = 0; n < count; ++n )
      w.write( host( n ) );
  };
  fillLater( 2 );
  json.shows( "\"address\": \"00:00:5e:00:53:01\"" );
  json.shows( "yet\nlumo: quillFdbStatus: the table is there now\n" );
  fillLater( 3 );  // by another writer
  json.shows( "\"address\": \"00:00:5e:00:53:02\"" );
  std::filesystem::remove_all( shm.path() + "/later/" + table );
  json.shows( "now\nlumo: quillFdbStatus: the table is gone\n" );
  fillLater( 2 );
  json.shows( "\"gone\", \"was\": {\"fid\": 1, \"address\": \"00:00:5e:00:53:02\"" );
  json.shows( "gone\nlumo: quillFdbStatus: the table is there now\n" );
  EXPECT_EQ( json.interrupted(), 0 );
  EXPECT_EQ( std::ranges::count( json.out(), '\n' ), 4 ) << json.out();
}

}  // namespace
