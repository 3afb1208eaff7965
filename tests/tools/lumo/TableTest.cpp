// TableTest.cpp: `lumo table` as a user runs it, on tables that writers have, have left, and were
// killed at.
#include <fstream>
#include <random>

#include <quill/TableType.h>
#include <sys/stat.h>
#include <nlohmann/json.hpp>

#include "HostTables.h"

namespace {

using namespace Tests;

struct LumoTable : HostTables {
  TestSupport::Outcome lumo( std::string const & arguments,
                             std::string const & before = {} ) const {
    return run( "table " + arguments, before );
  }
  std::string refusal( std::string const & arguments, int status ) const {
    return refused( "table " + arguments, status );
  }
  std::string contents( std::string const & file ) const {
    std::ifstream in( shm.path() + "/mac/" + file, std::ios::binary );
    return std::string( std::istreambuf_iterator< char >( in ), {} );
  }
};

/// What a busy agent does.
struct Churn {
  U32 numHosts, i = 0;

  void operator()( HostWriter & w ) {
    ++i;
    w.write( host( i * 31 % numHosts, i ) );
    if( i % 3 == 0 )
      w.remove( host( i * 17 % numHosts ).key() );
  }
};

TEST_F( LumoTable, isListedWithItsWriter ) {
  fill( "vlan/hosts", 2 );
  fill( "mac", 0 );
  { ProofWriter const w( shm.root(), "proof", proofParameters(), quietTrace ); }
  auto const run = lumo( "ls" );
  EXPECT_EQ( run.err, "" );
  EXPECT_EQ( run.out,
             "table       value type                       entries  capacity  bytes  writer\n"
             "mac         Quill::Bridging::QuillFdbStatus        0         8   2632       -\n"
             "proof       Tests::ProofValue                      0         8   2632       -\n"
             "vlan/hosts  Quill::Bridging::QuillFdbStatus        2         8   2632       -\n" );
  auto const w = writer();
  std::string const pid = std::to_string( getpid() );
  EXPECT_NE( lumo( "ls" ).out.find( " " + pid + "\nproof " ), std::string::npos );
  EXPECT_NE( lumo( "stat mac" ).out.find( "writer              " + pid + "\n" ),
             std::string::npos );
  auto const json = nlohmann::json::parse( lumo( "ls --json" ).out );
  EXPECT_EQ( json["schema"], "lumo.table.ls/1" );
  EXPECT_EQ( json["tables"][0]["writer"], getpid() );
  EXPECT_EQ( json["tables"][2], nlohmann::json::parse( R"( { "name": "vlan/hosts",
      "valueType": "Quill::Bridging::QuillFdbStatus", "entries": 2, "capacity": 8, "bytes": 2632,
      "writer": null } )" ) );

  auto const statJson = nlohmann::json::parse( lumo( "stat mac --json" ).out );
  EXPECT_EQ( statJson["schema"], "lumo.table.stat/1" );
  EXPECT_EQ( statJson["writer"], getpid() );
  EXPECT_EQ( statJson["bytes"]["conquer.2"], 960 );

  std::string const stat = lumo( "stat proof" ).out;
  for( char const * line :
       { "value type          Tests::ProofValue\n", "class               Tests::Table\n",
         "value size          32\n", "slot size           48\n", "first free slot     0\n",
         "sequences           0 to 0\n", "current queue       conquer.1\n",
         "bytes of conquer.2  960\n" } )
    EXPECT_NE( stat.find( line ), stat.npos ) << line << stat;
  for( char const * command : { "dump proof", "verify proof" } )
    EXPECT_EQ( refusal( command, 2 ),
               "lumo: table proof holds Tests::ProofValue, which this build does not know\n" );
}

TEST_F( LumoTable, isDumpedInColumnsOrAsJson ) {
  fill( "mac", 3 );
  EXPECT_EQ( lumo( "dump mac --key 1,00:00:5e:00:53:02 --key \"Value('Bridging::HostKey', ** "
                   "{'fid': 1, 'addr': 00:00:5e:00:53:00})\"" )
                 .out,
             "key.fid  key.addr           intf  moves  lastMoveTime  entryType\n"
             "      1  00:00:5e:00:53:02  eth3      0             1  learnedDynamicMac\n"
             "      1  00:00:5e:00:53:00  eth1      0             0  learnedDynamicMac\n" );
  auto const json = nlohmann::json::parse( lumo( "dump mac --json" ).out );
  EXPECT_EQ( json["schema"], "lumo.table.dump/1" );
  EXPECT_EQ( json["table"], "mac" );
  ASSERT_EQ( json["entries"].size(), 3u );
  std::set< double > times;
  for( auto const & entry : json["entries"] ) {
    EXPECT_EQ( entry["entryType"], "learnedDynamicMac" );
    EXPECT_EQ( entry["key"]["fid"], 1 );
    EXPECT_EQ( entry["key"]["addr"].get< std::string >().substr( 0, 15 ), "00:00:5e:00:53:" );
    times.insert( entry["lastMoveTime"].get< double >() );
  }
  EXPECT_EQ( times, ( std::set< double >{ 0, 0.5, 1 } ) );
  EXPECT_EQ( nlohmann::json::parse( lumo( "dump mac --json --count 0" ).out )["entries"],
             nlohmann::json::array() );

  fill( "mac", 3000 );  // more than the columns are fitted to
  EXPECT_EQ( lumo( "dump mac | wc -l" ).out, "3001\n" );
  EXPECT_EQ( lumo( "dump mac --count 2000 | wc -l" ).out, "2001\n" );
  auto const early =
      TestSupport::shell( LUMO_PROGRAM, "{ $program table dump mac --root " + shm.path() +
                                            "; echo $? >&2; } | head -n 1" );
  EXPECT_EQ( early.err, "0\n" );
}

TEST_F( LumoTable, whatIsRefusedIsNamed ) {
  fill( "hosts", 1 );
  EXPECT_EQ( refusal( "stat hots", 3 ), "lumo: there is no table 'hots'; did you mean hosts?\n" );
  EXPECT_EQ( refusal( "dump hosts --key 9,00:00:5e:00:53:00", 3 ),
             "lumo: hosts: there is no entry 9,00:00:5e:00:53:00\n" );
  EXPECT_EQ( refusal( "dump hosts --key 1,00", 1 ),
             "lumo: --key 1,00: a MAC address was expected at '00'\n" );
  EXPECT_EQ( refusal( "verify", 1 ), "lumo: a table is required, or --all\n" );
  EXPECT_EQ( refusal( "dump hosts >/dev/full", 2 ),
             "lumo: standard output: No space left on device\n" );
  EXPECT_EQ( refusal( "ls --root " + shm.path() + "/none", 2 ),
             "lumo: cannot open " + shm.path() + "/none: No such file or directory\n" );
  // Root may read everything.
  std::string const nobody =
      geteuid() == 0 ? "setpriv --reuid 65534 --regid 65534 --clear-groups" : "";
  ASSERT_EQ( chmod( shm.path().c_str(), 0755 ), 0 );
  ASSERT_EQ( chmod( ( shm.path() + "/hosts" ).c_str(), 0 ), 0 );
  for( char const * command : { "ls", "stat hosts", "verify hosts hosts" } ) {
    auto const run = lumo( command, nobody );
    EXPECT_EQ( run.status, 2 );
    EXPECT_TRUE(
        run.err.starts_with( "lumo: cannot open " + shm.path() + "/hosts: Permission denied\n" ) )
        << run.err;
  }
  ASSERT_EQ( chmod( ( shm.path() + "/hosts" ).c_str(), 0755 ), 0 );
}

TEST_F( LumoTable, isSeenBesideABusyWriter ) {
  fill( "mac", 20000 );
  pid_t const child = process( Churn{ 20000 } );
  EXPECT_NE( lumo( "ls" ).out.find( " " + std::to_string( child ) + "\n" ), std::string::npos );
  auto const json = nlohmann::json::parse( lumo( "dump mac --json" ).out );
  EXPECT_GT( json["entries"].size(), 10000u );
  // Now and then the writer may have to wait for its turn long enough for a copy.
  bool isWalked = false;
  for( int i = 0; i < 50 && !isWalked; ++i ) {
    auto const verdict = lumo( "verify mac" );
    EXPECT_EQ( verdict.status, 0 ) << verdict.err;
    isWalked = verdict.out ==
               "mac: ok; checked while it is written: chains and values; free list, counts and "
               "queue not judged\n";
  }
  EXPECT_TRUE( isWalked );
  end( child );
}

TEST_F( LumoTable, aCopyIsTheStateOfOneMoment ) {
  fill( "mac", 100 );
  pid_t const child = process( [churn = Churn{ 300 }]( HostWriter & w ) mutable {
    churn( w );
    if( churn.i % 64 == 0 )
      usleep( 100 );
  } );
  auto const & type = *Quill::tableType( "Quill::Bridging::QuillFdbStatus" );
  char const * const files[] = { "slots", "buckets", "conquer.1", "conquer.2" };
  int numCopies = 0;
  for( int i = 0; i < 300; ++i ) {
    Mem::TableDir const dir( shm.root(), "mac", Mem::MappedFile::readOnly );
    Mem::CopiedDir copy( dir );
    if( copy.tryCopy( files, Quill::SlotTable::lookasideAt, 4 ) ) {
      EXPECT_EQ( type.verdict( copy ).fault, "" );
      ++numCopies;
    }
  }
  EXPECT_GT( numCopies, 20 );
  end( child );
}

TEST_F( LumoTable, whatAKilledWriterLeftIsRight ) {
  std::mt19937 random( 5 );
  for( int i = 0; i < 15; ++i ) {
    pid_t const killed = process( Churn{ 500, static_cast< U32 >( random() ) } );
    usleep( random() % 3000 );
    end( killed );
    auto const run = lumo( "verify mac" );
    EXPECT_EQ( run.status, 0 ) << run.err;
    EXPECT_TRUE( run.out.starts_with( "mac: ok" ) );
  }
  pid_t const child = process( []( HostWriter & w ) {
    w.write( host( 1 ) );
    w.directWrite( host( 1 ).key() );
    w.directValueIs( host( 1, 9 ) );
    kill( getpid(), SIGKILL );
  } );
  EXPECT_EQ( waitpid( child, nullptr, 0 ), child );
  std::string const before = contents( "slots" ) + contents( "buckets" ) + contents( "conquer.1" );
  EXPECT_EQ( lumo( "verify --all" ).out,
             "mac: ok; the stopped writer's last operation will be finished by the next one\n" );
  auto const json = nlohmann::json::parse( lumo( "verify mac --json" ).out );
  EXPECT_EQ( json["tables"], nlohmann::json::parse( R"( [ { "name": "mac", "status": 0,
      "whole": true,
      "note": "the stopped writer's last operation will be finished by the next one" } ] )" ) );
  EXPECT_EQ( contents( "slots" ) + contents( "buckets" ) + contents( "conquer.1" ), before );
}

TEST_F( LumoTable, whatIsDamagedIsNamed ) {
  fill( "mac", 20 );
  fill( "other", 20 );
  struct {
    char const * file;
    std::size_t at;
    char byte;
    char const * why;
  } const cases[] = {
      { "slots", 0, 'X', "SlotTable::Header::validate() bad magic: 544c534c4c495558" },
      { "slots", 20, 'X', "SlotTable::Header::validate() checksum fail: " },
      { "slots", 12, 0, "SlotTable::validate() bad kindle:" },
      { "slots", 232 + 8, 3, "stuck LOOKASIDE bit, slot:0" },
      { "slots", 232 + 12, 1, "odd sequence, slot:0" },
      { "slots", 232 + 23, 'X', "corrupt rhash detected: bucket " },
      { "buckets", 8, 3, "BucketTable::validate() bad version: 3" },
      { "buckets", 37, 1, "bad link " },
      { "conquer.1", 67, 1, "bad currentPos:" },
      { "conquer.1", 72 + 12, 0, "bad notification at 1" },
      { "conquer.1", 72 + 8, 9, "I5 Validator::walkOccupiedSlots() unique notifications mismatch" },
      { "conquer.2", 0, 'X', "ConquerTable::validate() bad magic: " },
  };
  for( auto const & c : cases ) {
    std::string const path = shm.path() + "/mac/" + c.file, whole = contents( c.file );
    std::string damaged = whole;
    damaged[c.at] = c.byte;
    std::ofstream( path, std::ios::binary ) << damaged;
    auto const run = lumo( "verify --all" );
    EXPECT_EQ( run.status, 4 ) << c.why;
    EXPECT_EQ( run.out, "other: ok\n" );
    EXPECT_TRUE( run.err.starts_with( std::string( "lumo: mac: corrupt: " ) + c.why ) )
        << c.why << "\n"
        << run.err;
    std::ofstream( path, std::ios::binary ) << whole;
  }
  std::filesystem::remove( shm.path() + "/mac/buckets" );
  EXPECT_EQ( refusal( "stat mac", 4 ), "lumo: mac: corrupt: there is no file buckets\n" );
  EXPECT_NE( lumo( "ls" ).out.find( "mac    ?  " ), std::string::npos );
}

TEST_F( LumoTable, changesAreFollowedAsTheyCome ) {
  fill( "mac", 3 );
  pid_t const child = process( []( HostWriter & w ) {
    // Slower than a reader looks that nobody kicks.
    static U32 n = 3;
    w.write( host( n ) );
    usleep( 150000 );
    w.remove( host( n++ ).key() );
    usleep( 150000 );
  } );
  auto const text = lumo( "follow mac --all --count 8" );
  EXPECT_EQ( text.status, 0 ) << text.err;
  EXPECT_EQ( text.out.substr( 0, text.out.find( '\n' ) ),
             "change  key.fid  key.addr           intf  moves  lastMoveTime  entryType" );
  EXPECT_NE( text.out.find( "\nset           1  00:00:5e:00:53:01  eth2      0           0.5  "
                            "learnedDynamicMac\n" ),
             std::string::npos )
      << text.out;
  EXPECT_NE( text.out.find( "\ngone          1  00:00:5e:00:53:" ), std::string::npos ) << text.out;
  auto const json = lumo( "follow mac --json --count 2" );
  std::istringstream lines( json.out );
  int count = 0;
  for( std::string line; std::getline( lines, line ); ++count ) {
    auto const change = nlohmann::json::parse( line );
    EXPECT_EQ( change["schema"], "lumo.table.follow/1" );
    EXPECT_EQ( change["change"] == "set", change.contains( "entry" ) );
  }
  EXPECT_EQ( count, 2 );
  end( child );
  // It ends by an interrupt, with what it has shown; and it refuses what is not there.
  Started follow( shm.path(), "table follow mac --all" );
  follow.shows( "set" );
  EXPECT_EQ( follow.interrupted(), 0 );
  EXPECT_EQ( refusal( "follow macs", 3 ), "lumo: there is no table 'macs'; did you mean mac?\n" );
}

}  // namespace
