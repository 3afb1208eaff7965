// ConfigFileTest.cpp: the configuration out of a file that says everything it has, and files that
// are refused.

#include "learn/ConfigFile.h"

#include <gtest/gtest.h>
#include <support/SavedFile.h>

#include <nlohmann/json.hpp>

namespace Learn {
namespace {

using namespace Bridging;
using TestSupport::SavedFile;
using Wirex::EthAddr;
using Wirex::IntfId;

constexpr char everything[] = R"json( {
  "vlanConfigSourceDetail": "a file",
  "bridgeMacAddr": "00:00:5e:00:53:01",
  "hostAgingTime": 12.5,
  "pausePassThrough": true,
  "internalVlanAllocationPolicy": "descending",
  "internalVlanRange": { "vlanBegin": 2000 },
  "forwardingMode": "cutThrough",
  "defaultSwitchportMode": "trunk",
  "switchIntfConfig": {
    "eth3/1": {
      "switchportModeAndNativeVlan": { "switchportMode": "trunk", "nativeVlan": 10 },
      "macLearningEnabled": false,
      "ingressVlanXlate": {
        "Value('Bridging::VlanXlateKey', ** {'outerVid': 7, 'innerVid': 0})": { "vlanId": 8 }
      },
      "vlanTpid": 37120,
      "vlanTagFormatDrop": { "untagged": true },
      "sourceportFilterMode": "sourceportFilterDisabled",
      "tapAllowedVlans": "1-10"
    },
    "lag7": {}
  },
  "vlanConfig": {
    "10": {
      "vlanId": 10,
      "internal": true,
      "configuredName": "ten",
      "intf": { "eth1": { "tagOnEgress": "tagOnEgressEnabled", "promotedPort": true } },
      "adminState": "suspended",
      "macLearning": false,
      "vlanTypeAndPrimaryVlan": { "vlanType": "isolated", "primaryVlan": 20 },
      "configSource": "cli",
      "trunkGroup": { "a group": true }
    },
    "20": { "vlanTypeAndPrimaryVlan": { "primaryVlan": 0 } }
  },
  "fdbConfig": {
    "10": {
      "configuredHost": {
        "00:00:5e:00:53:02": { "intf": "eth1", "entryType": "configuredStaticMac", "label": "l" }
      },
      "ethGroup": { "01:00:5e:00:00:05": { "intf": { "eth1": true, "eth2": false } } }
    }
  },
  "vidToFidMap": { "10": 65535 },
  "sviMapping": { "20": { "defaultSviMapping": false, "secondaryVlan": { "10": true } } },
  "ieeeReservedForwarding": { "01:80:c2:00:00:02": true }
} )json";

struct ConfigFile : testing::Test {
  Koi::Ptr< Config > const config = configFactory( Koi::Name( "config" ) );

  /// Why that text is refused, behind the name of its file.
  std::string refusal( std::string_view text ) {
    SavedFile const file( text );
    try {
      readConfigFile( file.path(), *config );
    } catch( std::runtime_error const & e ) {
      std::string const what = e.what();
      EXPECT_TRUE( what.starts_with( file.path() + ": " ) ) << what;
      return what.substr( std::min( what.size(), file.path().size() + 2 ) );
    }
    return {};
  }
};

TEST_F( ConfigFile, everythingThatAConfigurationHasComesOutOfAFile ) {
  auto const json = nlohmann::json::parse( everything );
  for( auto const & attribute : config->koiType()->fields )
    EXPECT_TRUE( json.contains( attribute.name ) ) << attribute.name;
  EXPECT_EQ( refusal( everything ), "" );

  EXPECT_EQ( config->vlanConfigSourceDetail(), "a file" );
  EXPECT_EQ( config->bridgeMacAddr().stringValue(), "00:00:5e:00:53:01" );
  EXPECT_EQ( config->hostAgingTime(), 12.5 );
  EXPECT_TRUE( config->pausePassThrough() );
  EXPECT_EQ( config->internalVlanAllocationPolicy(), descending );
  EXPECT_EQ( config->internalVlanRange(), InternalVlanRange( VlanId( 2000 ), VlanId( 4094 ) ) );
  EXPECT_EQ( config->forwardingMode(), cutThrough );
  EXPECT_EQ( config->defaultSwitchportMode(), SwitchportMode::trunk );

  ASSERT_EQ( config->switchIntfConfig().size(), 2u );
  SwitchIntfConfig const & port = *config->switchIntfConfig( IntfId( "eth3/1" ) );
  EXPECT_EQ( port.switchportMode(), SwitchportMode::trunk );
  EXPECT_EQ( port.nativeVlan(), VlanIdOrNone( 10 ) );
  EXPECT_FALSE( port.macLearningEnabled() );
  EXPECT_TRUE( port.ingressVlanXlate().contains( VlanXlateKey( VlanId( 7 ), VlanIdOrNone( 0 ) ) ) );
  EXPECT_EQ( port.vlanTpid(), VlanTpidOrNone( 0x9100 ) );
  EXPECT_TRUE( port.vlanTagFormatDrop( untagged ) );
  EXPECT_EQ( port.sourceportFilterMode(), sourceportFilterDisabled );
  EXPECT_EQ( port.tapAllowedVlans(), "1-10" );
  SwitchIntfConfig const & lag = *config->switchIntfConfig( IntfId( "lag7" ) );
  EXPECT_EQ( lag.switchportMode(), SwitchportMode::access );
  EXPECT_EQ( lag.vlanTpid(), VlanTpidOrNone( 0x8100 ) );

  VlanConfig const & ten = *config->vlanConfig( VlanId( 10 ) );
  EXPECT_TRUE( ten.internal() );
  EXPECT_EQ( ten.configuredName(), "ten" );
  EXPECT_EQ( ten.intf( IntfId( "eth1" ) ),
             VlanPortConfig( tagOnEgressEnabled, true, ingressAndEgress ) );
  EXPECT_EQ( ten.adminState(), suspended );
  EXPECT_FALSE( ten.macLearning() );
  EXPECT_EQ( ten.vlanType(), isolated );
  EXPECT_EQ( ten.primaryVlan(), VlanId( 20 ) );
  EXPECT_EQ( ten.configSource(), "cli" );
  EXPECT_TRUE( ten.trunkGroup( "a group" ) );
  EXPECT_FALSE( config->vlanConfig( VlanId( 20 ) )->internal() );

  FdbConfig const & fdb = *config->fdbConfig( Fid( 10 ) );
  EthAddr const address( "00:00:5e:00:53:02" ), group( "01:00:5e:00:00:05" );
  EXPECT_EQ( fdb.configuredHost( address ),
             ConfiguredHost( address, IntfId( "eth1" ), configuredStaticMac, "l" ) );
  EXPECT_EQ( fdb.ethGroup( group )->intf().size(), 2u );
  EXPECT_FALSE( fdb.ethGroup( group )->intf( IntfId( "eth2" ) ) );
  EXPECT_EQ( config->vidToFidMap( VlanId( 10 ) ), Fid( 65535 ) );
  EXPECT_FALSE( config->sviMapping( VlanId( 20 ) )->defaultSviMapping() );
  EXPECT_TRUE( config->sviMapping( VlanId( 20 ) )->secondaryVlan( VlanId( 10 ) ) );
  EXPECT_TRUE( config->ieeeReservedForwarding( EthAddr( "01:80:c2:00:00:02" ) ) );
}

TEST_F( ConfigFile, whatIsRefusedNamesFileAndPlaceAndChangesNothing ) {
  EXPECT_EQ( refusal( everything ), "" );
  Koi::U64 const changes = config->koiChanges();
  struct {
    char const *text, *why;
  } const cases[] = {
      { R"({ "vlanConfig": { "10": { "adminState": "activ" } } })",
        R"(/vlanConfig/10/adminState: there is no "activ" in Bridging::VlanAdminState )"
        "(active, suspended)" },
      { R"({ "vlanConfig": { "10": { "configuredName": "x" }, "5000": {} } })",
        "/vlanConfig/5000: VlanId::value < 1 or > 4094 not allowed" },
      { R"({ "hostAgeingTime": 1 })", R"(/hostAgeingTime: Bridging::Config has no attribute )"
                                      R"("hostAgeingTime"; did you mean "hostAgingTime"?)" },
      { R"({ "vlanConfig": { "10": { "internal": false } } })",
        "/vlanConfig/10/internal: Bridging::VlanConfig::internal is True here for good, not "
        "False" },
      { R"({ "vlanConfig": { "10": { "vlanType": "normal" } } })",
        "/vlanConfig/10/vlanType: Bridging::VlanConfig::vlanType cannot be set: it is a constant, "
        "or "
        "made of other attributes" },
      { R"({ "switchIntfConfig": { "ethernet1": {} } })",
        "/switchIntfConfig/ethernet1: Interface name 'ethernet1' is of no known kind" },
      { R"({ "switchIntfConfig": { "eth0": {} } })",
        "/switchIntfConfig/eth0: Interface name 'eth0': port < 1 or > 1023 not allowed" },
      { R"({ "internalVlanRange": { "vlanBegin": 70000 } })",
        "/internalVlanRange/vlanBegin: VlanId::value < 1 or > 4094 not allowed" },
      { R"({ "fdbConfig": { "1": { "configuredHost": { "0:0:5e:0:53:2": {} } } } })",
        "/fdbConfig/1/configuredHost/0:0:5e:0:53:2: a MAC address was expected at "
        "'0:0:5e:0:53:2'" },
  };
  for( auto const & c : cases )
    EXPECT_EQ( refusal( c.text ), c.why );
  EXPECT_EQ( config->koiChanges(), changes );
  EXPECT_EQ( config->vlanConfig( VlanId( 10 ) )->configuredName(), "ten" );
  EXPECT_TRUE(
      refusal( "{\n  \"vlanConfig\": {,\n" ).starts_with( "parse error at line 2, column 18: " ) );

  for( auto const & [path, why] :
       { std::pair( "/nonexistent", "No such file or directory" ), { "/", "Is a directory" } } )
    try {
      readConfigFile( path, *config );
      ADD_FAILURE() << path;
    } catch( std::runtime_error const & e ) {
      EXPECT_EQ( e.what(), std::string( path ) + ": " + why );
    }
}

}  // namespace
}  // namespace Learn
