// TypesTest.cpp: `lumo types` as a user runs it, against the registry of this process.
#include <gtest/gtest.h>

#include <sstream>

#include <Lumo/Bridging.h>
#include <support/Shell.h>
#include <nlohmann/json.hpp>

namespace {

using TestSupport::Outcome;

/// Runs a command of the shell, in which $program is ours.
Outcome shell( std::string const & command ) { return TestSupport::shell( LUMO_PROGRAM, command ); }

Outcome lumo( std::string const & arguments ) { return shell( "$program " + arguments ); }

std::vector< std::string > lines( std::string const & text ) {
  std::vector< std::string > all;
  std::istringstream in( text );
  for( std::string line; std::getline( in, line ); )
    all.push_back( line );
  return all;
}

}  // namespace

TEST( LumoTypes, theTableHasEveryTypeByNameAndItsColumnsAlign ) {
  Outcome const run = lumo( "types" );
  EXPECT_EQ( run.status, 0 ) << run.err;
  auto const all = lines( run.out );
  auto const nodes = Koi::typeNodes();
  ASSERT_EQ( all.size(), nodes.size() + 2 );
  EXPECT_TRUE( all[0].starts_with( "type " ) );
  for( std::size_t i = 0; i < nodes.size(); ++i ) {
    std::string const & line = all[i + 1];
    EXPECT_TRUE( line.starts_with( std::string( nodes[i]->name ) + " " ) ) << line;
    EXPECT_EQ( line.size(), all[0].size() ) << line;
    EXPECT_NE( line.find( " " + std::to_string( nodes[i]->size ) + " " ), line.npos ) << line;
  }
  EXPECT_EQ( all.back(), std::to_string( nodes.size() ) + " types" );
}

TEST( LumoTypes, aTypeIsShownInFull ) {
  Outcome const run = lumo( "types Bridging::VlanConfig Bridging::VlanType Bridging::LearnedHost" );
  EXPECT_EQ( run.status, 0 ) << run.err;
  auto const size = []( std::size_t bytes ) { return std::to_string( bytes ) + " bytes"; };
  EXPECT_EQ( run.out, "Bridging::VlanConfig: entity, " + size( sizeof( Bridging::VlanConfig ) ) +
                          R"(
  built from ( vlanId : Bridging::VlanId, internal : Koi::Bool )
  vlanId                      Bridging::VlanId                  parameter
  internal                    Koi::Bool                         parameter
  configuredName              Koi::String8                      attribute
  intf[ Wirex::IntfId ]       Bridging::VlanPortConfig          hashed collection
  adminState                  Bridging::VlanAdminState          attribute
  macLearning                 Koi::Bool                         attribute
  vlanTypeAndPrimaryVlan      Bridging::VlanTypeAndPrimaryVlan  attribute
  vlanType                    Bridging::VlanType                computed
  primaryVlan                 Bridging::VlanId                  computed
  defaultSource               Koi::String8                      constant
  configSource                Koi::String8                      attribute
  trunkGroup[ Koi::String8 ]  Koi::Bool                         hashed collection

Bridging::VlanType: enumeration, 4 bytes
  normal     0
  isolated   1
  community  2

Bridging::LearnedHost: value, )" +
                          size( sizeof( Bridging::LearnedHost ) ) +
                          R"(, hashable
  address       Wirex::EthAddr       field
  intf          Wirex::IntfId        field
  moves         Koi::U32             field
  lastMoveTime  Koi::Seconds         field
  entryType     Bridging::EntryType  field
)" );
  std::string const config = lumo( "types Bridging::SwitchIntfConfig Bridging::FdbStatus" ).out;
  EXPECT_NE( config.find( "Bridging::SwitchportModeAndNativeVlan  settable parameter\n" ),
             std::string::npos );
  EXPECT_NE(
      config.find( "learnedHost[ Wirex::EthAddr ]  Bridging::LearnedHost  hashed collection, "
                   "members hold their key\n" ),
      std::string::npos );
  EXPECT_NE( lumo( "types Bridging::Status" ).out.find( "ordered collection of children\n" ),
             std::string::npos );
  EXPECT_NE( lumo( "types Bridging::Topology::Config" ).out.find( "of weak references\n" ),
             std::string::npos );
  EXPECT_NE( lumo( "types Bridging::VlanTypeAndPrimaryVlan" ).out.find( "field, or 0\n" ),
             std::string::npos );
}

TEST( LumoTypes, aNamespaceIsListedOrShownInFull ) {
  auto const listed = lines( lumo( "types LumoExt::" ).out );
  ASSERT_EQ( listed.size(), 4u );
  EXPECT_TRUE( listed[1].starts_with( "LumoExt::RequestReservedVlanId " ) );
  EXPECT_EQ( listed.back(), "2 types" );
  EXPECT_EQ( lumo( "types LumoExt:: --attributes" ).out,
             lumo( "types LumoExt::RequestReservedVlanId LumoExt::ResponseReservedVlanId" ).out );
  // Every type in full: an entity that refers to another has no type there, but a target.
  Outcome const all = lumo( "types --attributes" );
  EXPECT_EQ( all.status, 0 );
  EXPECT_NE( all.out.find( "Wirex::IntfId: foreign value, 8 bytes" ), std::string::npos );
}

TEST( LumoTypes, jsonSaysAllOfEveryType ) {
  auto const json = nlohmann::json::parse( lumo( "types --json" ).out );
  EXPECT_EQ( json["schema"], "lumo.types/1" );
  auto const nodes = Koi::typeNodes();
  ASSERT_EQ( json["types"].size(), nodes.size() );
  for( std::size_t i = 0; i < nodes.size(); ++i ) {
    auto const & type = json["types"][i];
    EXPECT_EQ( type["name"], nodes[i]->name );
    EXPECT_EQ( type["size"], nodes[i]->size );
    EXPECT_EQ( type["hashable"], nodes[i]->hashable );
    if( nodes[i]->kind == Koi::KoiType::enumeration )
      EXPECT_FALSE( type["enumerators"].empty() ) << nodes[i]->name;
    else
      EXPECT_EQ( type["attributes"].size(), nodes[i]->fields.size() ) << nodes[i]->name;
  }
  auto const some = nlohmann::json::parse(
      lumo( "types --json Bridging::FdbStatus Bridging::FdbStatus Bridging::FdbStatus" ).out );
  EXPECT_EQ( some["types"], nlohmann::json::parse( R"( [ {
    "name": "Bridging::FdbStatus", "kind": "entity", "ordered": false, "hashable": false,
    "size": )" + std::to_string( sizeof( Bridging::FdbStatus ) ) +
                                                   R"(,
    "parameters": [ { "name": "fid", "type": "Bridging::Fid" } ],
    "attributes": [
      { "name": "fid", "kind": "parameter", "type": "Bridging::Fid" },
      { "name": "learnedHost", "kind": "hashed collection", "type": "Bridging::LearnedHost",
        "key": "Wirex::EthAddr", "keyInValue": true } ] } ] )" ) );
}

TEST( LumoTypes, whatIsRefusedIsNamedOnOneLine ) {
  struct {
    char const *arguments, *line;
    int status = 1;
  } const cases[] = {
      { "", "a command is required; lumo --help names them" },
      { "tpyes", "The following argument was not expected: tpyes" },
      { "types --jsno", "The following argument was not expected: --jsno" },
      { "types Bridging::Confg",
        "there is no type 'Bridging::Confg'; did you mean Bridging::Config?" },
      { "types LearnedHost",
        "there is no type 'LearnedHost'; did you mean Bridging::LearnedHost?" },
      { "types Bridging::VlanId Unheard", "there is no type 'Unheard'" },
      { "types Bridge::", "there is no type in the namespace 'Bridge::'" },
      { "types >/dev/full", "standard output: No space left on device", 2 },
  };
  for( auto const & c : cases ) {
    Outcome const run = lumo( c.arguments );
    EXPECT_EQ( run.status, c.status ) << c.arguments;
    EXPECT_EQ( run.out, "" ) << c.arguments;
    EXPECT_EQ( run.err, std::string( "lumo: " ) + c.line + "\n" );
  }
}

TEST( LumoTypes, helpSaysTheExitStatusAndWhoLeavesEarlyIsNoFault ) {
  for( char const * arguments : { "--help", "types --help" } ) {
    Outcome const help = lumo( arguments );
    EXPECT_EQ( help.status, 0 );
    EXPECT_NE( help.out.find( "Exit status: 0; 1 for " ), std::string::npos ) << help.out;
  }
  Outcome const early = shell( "{ $program types --json; echo $? >&2; } | head -n 1" );
  EXPECT_EQ( early.out, "{\n" );
  EXPECT_EQ( early.err, "0\n" );
}
