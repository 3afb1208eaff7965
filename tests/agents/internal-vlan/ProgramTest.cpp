// ProgramTest.cpp: `internal-vlan` as a user runs it.
#include <gtest/gtest.h>
#include <support/Shell.h>

namespace {

using TestSupport::Outcome;
using TestSupport::SavedFile;

Outcome internalVlan( std::string const & arguments ) {
  return TestSupport::shell( INTERNAL_VLAN_PROGRAM, "$program " + arguments );
}

/// With these files; JSON after the others.
Outcome served( std::string const & config, std::string const & requests,
                std::string const & arguments = {} ) {
  SavedFile const configFile( config ), requestsFile( requests );
  return internalVlan( "--config " + configFile.path() + " --requests " + requestsFile.path() +
                       " " + arguments );
}

}  // namespace

TEST( InternalVlanProgram, saysWhoGetsWhatAndWhyNot ) {
  std::string const requests = R"( {
    "config": [
      { "key": { "key": "a", "source": "s" }, "value": true },
      { "key": { "key": "b", "source": "s" }, "value": true },
      { "key": { "key": "c", "source": "s" }, "value": true },
      { "key": { "key": "d", "source": "s" }, "value": true },
      { "key": { "key": "e", "source": "s" }, "value": false } ],
    "preferred": [
      { "key": { "key": "a", "source": "s" }, "value": 102 },
      { "key": { "key": "b", "source": "s" }, "value": 103 },
      { "key": { "key": "c", "source": "s" }, "value": 99 },
      { "key": { "key": "d", "source": "s" }, "value": 104 } ],
    "blacklist": { "103": false, "106": true },
    "whitelist": { "100": true, "101": true, "102": true, "103": true, "105": true, "106": true },
    "useWhitelist": true } )";
  // Who is answered first is the reactor's: nobody prefers what somebody else may take here.
  Outcome const enough = served( R"( { "internalVlanRange": { "vlanBegin": 100, "vlanEnd": 106 },
                                       "vlanConfig": { "105": {} } } )",
                                 requests, "--json" );
  EXPECT_EQ( enough.status, 1 ) << "three VLANs are free, four are wanted";
  EXPECT_NE( enough.out.find( "\"schema\": \"lumo.internal-vlans/1\"" ), std::string::npos );
  EXPECT_NE( enough.out.find( "\"served\": 3,\n  \"refused\": 1,\n  \"left\": 0" ),
             std::string::npos )
      << enough.out;

  Outcome const run = served( R"( { "internalVlanRange": { "vlanBegin": 100, "vlanEnd": 102 } } )",
                              R"( {
    "config": [ { "key": { "key": "a", "source": "s" }, "value": true },
                { "key": { "key": "b", "source": "other" }, "value": false } ],
    "preferred": [ { "key": { "key": "a", "source": "s" }, "value": 101 } ] } )" );
  EXPECT_EQ( run.status, 0 ) << run.err;
  EXPECT_EQ( run.out,
             "Key         Source    Preferred  VLAN\n"
             "a           s               101   101\n"
             "b           other           any  none  (its entry says that it needs none)\n"
             "\n"
             "1 served, 0 refused; 2 of VLANs 100-102 left\n" );

  struct {
    char const *config, *lists, *note;
  } const cases[] = {
      { R"("internalVlanRange": { "vlanBegin": 102, "vlanEnd": 102 })", R"("useWhitelist": false)",
        "101   102  (101 is outside the range)" },
      { R"("hostAgingTime": 1)", R"("useWhitelist": false)",
        "101  1006  (101 is outside the range)" },
      { R"("internalVlanRange": { "vlanBegin": 100 })", R"("blacklist": { "101": false })",
        "101   100  (101 is on the blacklist)" },
      { R"("internalVlanRange": { "vlanBegin": 100 })",
        R"("useWhitelist": true, "whitelist": { "101": false, "200": true })",
        "101   200  (101 is not on the whitelist)" },
      { R"("internalVlanRange": { "vlanBegin": 100 }, "vlanConfig": { "101": {} })",
        R"("useWhitelist": false)", "101   100  (101 is configured by a user)" },
      { R"("internalVlanRange": { "vlanBegin": 200, "vlanEnd": 100 })", R"("useWhitelist": false)",
        "101  none  (no VLAN is left)" },
  };
  for( auto const & c : cases ) {
    Outcome const one = served( "{ " + std::string( c.config ) + " }", std::string( R"( {
      "config": [ { "key": { "key": "a", "source": "s" }, "value": true } ],
      "preferred": [ { "key": { "key": "a", "source": "s" }, "value": 101 } ], )" ) +
                                                                           c.lists + " }" );
    EXPECT_NE( one.out.find( c.note ), std::string::npos ) << one.out << one.err;
  }
}

TEST( InternalVlanProgram, whatIsRefusedIsNamedOnOneLine ) {
  SavedFile const bad( R"( { "blacklist": { "0": true } } )" );
  std::string const file = bad.path();
  std::pair< std::string, std::string > const cases[] = {
      { "", "--requests is required" },
      { "--requests /nonexistent", "/nonexistent: No such file or directory" },
      { "--requests " + file, file + ": /blacklist/0: VlanId::value < 1 or > 4094 not allowed" },
      { "--requests " + file + " --config " + file,
        file + R"(: /blacklist: Bridging::Config has no attribute "blacklist")" },
  };
  for( auto const & [arguments, line] : cases ) {
    Outcome const run = internalVlan( arguments );
    EXPECT_EQ( run.status, 2 ) << arguments;
    EXPECT_EQ( run.out, "" ) << arguments;
    EXPECT_EQ( run.err, "internal-vlan: " + line + "\n" );
  }
}
