// BridgingTest.cpp: defaults of the bridging model, and what it computes.
#include <gtest/gtest.h>

#include <Lumo/Bridging.h>
#include <support/Refusal.h>

using namespace Bridging;
using Koi::Name;
using Wirex::EthAddr;
using Wirex::IntfId;

namespace {

std::string text( auto const & v ) {
  using Koi::valueToStrep;
  return std::string( valueToStrep( v ) );
}

VlanId const ten( 10 );
IntfId const eth1( "eth1" );

}  // namespace

TEST( BridgingConfig, beginsWithItsDefaults ) {
  auto const config = configFactory( Name( "config" ) );
  EXPECT_EQ( config->hostAgingTime(), 300 );
  EXPECT_EQ( config->internalVlanRange(), InternalVlanRange( VlanId( 1006 ), VlanId( 4094 ) ) );
  EXPECT_EQ( config->internalVlanAllocationPolicy(), ascending );
  EXPECT_EQ( config->defaultSwitchportMode(), Bridging::access );
  EXPECT_TRUE( config->bridgeMacAddr().isZero() );

  auto const port =
      config->switchIntfConfigIs( eth1, SwitchportModeAndNativeVlan( trunk, VlanIdOrNone( 7 ) ) );
  EXPECT_EQ( port->switchportMode(), trunk );
  EXPECT_EQ( port->nativeVlan().value(), 7 );
  EXPECT_EQ( port->vlanTpid().value(), 0x8100 );
  EXPECT_EQ( port->sourceportFilterMode(), sourceportFilterEnabled );
  EXPECT_TRUE( port->macLearningEnabled() );

  auto const vlan = config->vlanConfigIs( ten, false );
  EXPECT_EQ( vlan->configSource(), Koi::String8( "default" ) );
  EXPECT_EQ( vlan->primaryVlan().value(), 0 );
  EXPECT_TRUE( vlan->macLearning() );

  auto const cli = Input::cliConfigFactory( Name( "cli" ) );
  EXPECT_EQ( cli->hostAgingTime(), 300 );
  EXPECT_EQ( cli->internalVlanRange(), config->internalVlanRange() );
  EXPECT_EQ( cli->defaultSwitchportMode(), Bridging::access );
  EXPECT_EQ( cli->vlanConfigPriority(), 0u );
}

TEST( BridgingConfig, aModeThatIsGivenAgainDoesNotChangeThePort ) {
  auto const config = configFactory( Name( "config" ) );
  auto const port =
      config->switchIntfConfigIs( eth1, SwitchportModeAndNativeVlan( trunk, VlanIdOrNone( 7 ) ) );
  SwitchportModeAndNativeVlan const other( Bridging::access, VlanIdOrNone( 8 ) );
  EXPECT_EQ( config->switchIntfConfigIs( eth1, other ), port );
  EXPECT_EQ( port->switchportMode(), trunk );
  port->switchportModeAndNativeVlanIs( other );
  EXPECT_EQ( port->switchportMode(), Bridging::access );
}

TEST( BridgingConfig, aPrimaryVlanMayBeNoneAndNothingElseOutOfRange ) {
  auto const vlan = configFactory( Name( "config" ) )->vlanConfigIs( ten, false );
  vlan->vlanTypeAndPrimaryVlanIs( VlanTypeAndPrimaryVlan( isolated, VlanId( 5 ) ) );
  EXPECT_FALSE( vlan->eligibleToBePrimary() );
  vlan->vlanTypeAndPrimaryVlanIs( VlanTypeAndPrimaryVlan( normal, VlanId() ) );
  EXPECT_TRUE( vlan->eligibleToBePrimary() );
  auto const beyond = VlanId::koiUnchecked( 4095 );
  EXPECT_EQ( refusal( [&] {
               vlan->vlanTypeAndPrimaryVlanIs( VlanTypeAndPrimaryVlan( normal, beyond ) );
             } ),
             "VlanId::value < 1 or > 4094 not allowed" );
  EXPECT_FALSE(
      configFactory( Name( "other" ) )->vlanConfigIs( ten, true )->eligibleToBePrimary() );
}

TEST( BridgingInput, vlansAreMadeOnceAndHaveDefaultNames ) {
  auto const source = Input::configFactory( Name( "cli" ) );
  for( auto const & [number, name] : { std::pair( 1, "default" ),
                                       { 2, "VLAN0002" },
                                       { 999, "VLAN0999" },
                                       { 4094, "VLAN4094" } } ) {
    VlanId const vlan( static_cast< unsigned >( number ) );
    source->doCreateVlan( vlan );
    EXPECT_EQ( source->vlanConfig( vlan )->defaultName(), Koi::String8( name ) );
  }
  auto const two = source->vlanConfig( VlanId( 2 ) );
  two->macLearningIs( false );
  source->doCreateVlan( VlanId( 2 ) );
  EXPECT_EQ( source->vlanConfig( VlanId( 2 ) ), two );
  EXPECT_FALSE( two->macLearning() );
  for( Koi::U16 number : { 0, 4095 } ) {
    EXPECT_EQ( refusal( [&] { source->doCreateVlan( VlanId::koiUnchecked( number ) ); } ),
               "VlanId::value < 1 or > 4094 not allowed" );
  }
  EXPECT_EQ( source->vlanConfig().size(), 4u );
}

TEST( BridgingInput, requestsAreEqualWhateverTheirSource ) {
  auto const a =
      switchIntfConfigDirFactory( Name( "a" ) )->switchIntfConfigIs( eth1, Input::trunk );
  auto const b =
      switchIntfConfigDirFactory( Name( "b" ) )->switchIntfConfigIs( eth1, Input::trunk );
  a->sourceIs( "cli" );
  a->versionIs( 3 );
  a->trunkGroupIs( "x", true );
  a->trunkGroupIs( "y", false );
  EXPECT_FALSE( a->isEqual( *b ) );
  b->trunkGroupIs( "y", false );
  b->trunkGroupIs( "x", true );
  EXPECT_TRUE( a->isEqual( *b ) );
  b->trunkGroupIs( "x", false );
  EXPECT_FALSE( a->isEqual( *b ) );
  b->trunkGroupIs( "x", true );
  b->switchportModeIs( Input::access );
  EXPECT_FALSE( a->isEqual( *b ) );
}

TEST( BridgingInput, aTruncationSizeIsStoredBeforeItIsRefused ) {
  auto const port = Input::configFactory( Name( "cli" ) )->switchIntfConfigIs( eth1, Input::tap );
  struct Watcher : Input::SwitchIntfConfig::NotifieeConst {
    void onTapTruncationSize() override { ++numCalls; }
    int numCalls = 0;
  } watcher;
  watcher.notifierIs( port );
  port->tapTruncationSizeIs( 9236 );
  EXPECT_EQ( refusal( [&] { port->tapTruncationSizeIs( 9237 ); } ),
             "SwitchIntfConfig::tapTruncationSize > SwitchIntfConfig::tapTruncationSizeMax not "
             "allowed" );
  EXPECT_EQ( port->tapTruncationSize(), 9237 );
  EXPECT_EQ( watcher.numCalls, 1 );
  EXPECT_EQ( refusal( [&] { port->toolTruncationSizeIs( 9237 ); } ),
             "SwitchIntfConfig::toolTruncationSize > SwitchIntfConfig::toolTruncationSizeMax not "
             "allowed" );
}

TEST( BridgingInput, aConfiguredHostIsMadeOfItsParts ) {
  auto const fdb = fdbConfigDirFactory( Name( "fdb" ) )->fdbConfigIs( ten );
  EthAddr const address( "00:00:5e:00:53:01" );
  fdb->doCreateConfiguredHost( address, eth1, configuredStaticMac, "printer" );
  EXPECT_EQ( fdb->configuredHost( address ),
             ConfiguredHost( address, eth1, configuredStaticMac, "printer" ) );
}

TEST( BridgingHardware, framesAreSmallerWithoutTheirEncapsulation ) {
  auto const hardware = hwCapabilitiesFactory( Name( "hw" ) );
  EXPECT_EQ( hardware->maxFrameSize(), 9236u );
  EXPECT_EQ( hardware->maxFrameSizeWithoutL2Encapsulation(), 9214u );
  hardware->maxFrameSizeIs( HwCapabilities::maxFrameSizeTapAgg() );
  EXPECT_EQ( hardware->maxFrameSizeWithoutL2Encapsulation(), 10218u );
  hardware->maxFrameSizeIs( 21 );
  EXPECT_EQ( hardware->maxFrameSizeWithoutL2Encapsulation(), 0xffffffffu );
  EXPECT_EQ( hardware->internalVlanNeeded(), intVlanNeeded );
  EXPECT_TRUE( HwCapabilities::ieeeReservedMacForwardAddrAll().isZero() );
  // Logs and reflection number the attributes in this order.
  auto const fields = HwCapabilities::_koiType.fields;
  EXPECT_EQ( fields.size(), 62u );
  EXPECT_STREQ( fields[3].name, "maxFrameSizeWithoutL2Encapsulation" );
  EXPECT_STREQ( fields[33].name, "internalVlanNeeded" );
  EXPECT_STREQ( fields[61].name, "ieeeReservedMacForwardGroup" );
}

TEST( BridgingHardware, aGroupHoldsAsManyAddressesAsItHasNumbers ) {
  auto const group = ieeeReservedMacForwardGroupFactory( Name( "group" ) );
  EthAddr const address( "01:80:c2:00:00:0e" );
  for( int i = 0; i < 256; ++i )
    group->groupAddrEnq( address );
  EXPECT_EQ( refusal( [&] { group->groupAddrEnq( address ); } ), "linkqueue index space full" );
  EXPECT_EQ( group->groupAddr().size(), 256u );
  group->groupAddrDeq();
  EXPECT_EQ( group->groupAddrEnq( address ), 0 );
}

TEST( BridgingHardware, aPortThatRequiresTagsDropsWhatNamesNoVlan ) {
  VlanTagRequired const required = VlanTagRequired::handleInitialized();
  EXPECT_TRUE( required.drops( untagged ) && required.drops( priority ) );
  EXPECT_FALSE( required.drops( singleTagged ) || required.drops( doubleTagged ) );
  EXPECT_FALSE( required.drops( static_cast< VlanTagFormat >( 40 ) ) );
}

TEST( RemoteMac, theTunnelsAddressIsAsOnTheWire ) {
  auto const table = remoteMacTableFactory( Name( "evpn" ) );
  MacVlanPair const key( EthAddr( "00:00:5e:00:53:01" ), 10 );
  RemoteMacEntry const entry( key, IntfId( "vxlan1" ), learnedRemoteMac,
                              Wirex::Ip4Addr( 192, 0, 2, 1 ), 2, 1.5, EntryPreference( 200 ) );
  table->remoteMacEntryIs( entry );
  EXPECT_EQ( table->remoteMacEntry( key ), entry );
  EXPECT_EQ( text( entry.tunnelIpAddr() ), "3221225985" );
  Koi::Ptr< Koi::NboAttrLog::Out > const log( new Koi::NboAttrLog::Out );
  log << entry;
  // Address and VLAN, interface, type; then the tunnel.
  EXPECT_EQ( std::vector< int >( log->data() + 22, log->data() + 26 ),
             ( std::vector< int >{ 192, 0, 2, 1 } ) );
  EXPECT_EQ( log->data()[log->size() - 1], 200 );
  EXPECT_EQ( refusal( [] { EntryPreference( 300 ); } ), "300 > 255 not allowed" );
  EXPECT_LT( key, MacVlanPair( EthAddr( "00:00:5e:00:53:01" ), 11 ) );
  EXPECT_LT( key, MacVlanPair( EthAddr( "00:00:5e:00:53:02" ), 9 ) );
}
