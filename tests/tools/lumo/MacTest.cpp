// MacTest.cpp: `lumo show mac` and `lumo watch mac` as a user runs them.
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

/// Each step is seen by itself.
constexpr unsigned untilSeen = 150000;

TEST_F( LumoMac, changesAreShownWithWhatWas ) {
  auto const steps = []( HostWriter & w ) {
    for( Host const & one :
         { host( 0 ), host( 0, 1 ), host( 0, 1, Bridging::learnedSecureMac ) } ) {
      w.write( one );
      usleep( untilSeen );
    }
    w.remove( host( 0 ).key() );
    usleep( untilSeen );
  };
  fill( table, 0 );
  pid_t const child = process( steps, table );
  auto const text = run( "watch mac --count 6 --for 20" );
  EXPECT_EQ( text.err, "" );
  EXPECT_TRUE( text.out.starts_with( "time                         change   VLAN  MAC address" ) );
  for( char const * line :
       { "Z  added       1  00:00:5e:00:53:00  learned dynamic  eth1                0  "
         "1970-01-01T00:00:00.000000Z\n",
         "Z  moved       1  00:00:5e:00:53:00  learned dynamic  eth1 -> eth2        1  1970",
         "Z  changed     1  00:00:5e:00:53:00  learned dynamic -> learned secure  eth2   ",
         "Z  gone        1  00:00:5e:00:53:00  learned secure   eth2                1  1970" } )
    EXPECT_NE( text.out.find( line ), std::string::npos ) << line << text.out;

  // What is asked for may be as it was or as it is.
  auto const json = run( "watch mac --json --count 3 --for 20 --port eth1" );
  std::istringstream lines( json.out );
  std::map< std::string, Json > changes;
  for( std::string line; std::getline( lines, line ); ) {
    auto const change = Json::parse( line );
    EXPECT_EQ( change["schema"], "lumo.mac-change/1" );
    EXPECT_GT( change["time"], 1e9 );
    changes[change["change"]] = change;
  }
  EXPECT_EQ( changes.size(), 2u ) << json.out;
  EXPECT_FALSE( changes["added"].contains( "was" ) );
  EXPECT_EQ( changes["moved"]["was"], changes["added"]["entry"] );
  EXPECT_EQ( changes["moved"]["entry"]["intf"], "eth2" );
  EXPECT_EQ( run( "watch mac --json --for 0.7 --vlan 2" ).out, "" );
  end( child );
}

TEST_F( LumoMac, aTableMayComeAndGoAndComeAgain ) {
  std::string const dir = shm.path() + "/" + table;
  pid_t const child = fork();
  if( child == 0 ) {
    sleep( 1 );
    fill( table, 2 );
    sleep( 1 );
    std::filesystem::remove_all( dir );
    sleep( 1 );
    fill( table, 1 );
    _exit( 0 );
  }
  auto const outcome = run( "watch mac --json --count 3 --for 30" );
  EXPECT_EQ( waitpid( child, nullptr, 0 ), child );
  EXPECT_EQ( outcome.err, "lumo: quillFdbStatus: there is no such table below " + shm.path() +
                              " yet\n"
                              "lumo: quillFdbStatus: the table is there now\n"
                              "lumo: quillFdbStatus: the table is gone\n"
                              "lumo: quillFdbStatus: the table is there now\n" );
  std::string changes;
  std::istringstream lines( outcome.out );
  for( std::string line; std::getline( lines, line ); )
    changes += Json::parse( line )["change"].get< std::string >() + " ";
  EXPECT_EQ( changes, "added added gone " );
  // An interrupt ends it; the root may be missing, too.
  EXPECT_EQ( run( "watch mac --root /dev/shm/lumo-none & sleep 0.5; kill -INT $!; wait $!" ).status,
             0 );
}

}  // namespace
