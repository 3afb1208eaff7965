// BridgeIdTest.cpp: the word that names a VLAN or a VXLAN network: its parts and both its texts.

#include <sstream>

#include <Lumo/BridgeId.h>
#include <gtest/gtest.h>

namespace {

using namespace Bridging;

BridgeId parsed( Koi::String8 const & text ) {
  Koi::String8::IteratorConst it = text.begin();
  BridgeId const v( it, text.end() );
  Koi::strepToValueEnd( text, it );
  return v;
}

TEST( BridgeId, packsKindAndNumber ) {
  BridgeId const vlan( brTypeVlan, 10 ), vni( brTypeVni, 16777215 );
  EXPECT_EQ( vlan.value(), 0x0100000au );
  EXPECT_EQ( vni.value(), 0x02ffffffu );
  EXPECT_EQ( vlan.brType(), brTypeVlan );
  EXPECT_EQ( vlan.vlanId(), VlanId( 10 ) );
  EXPECT_EQ( vni.vni(), 16777215u );
  EXPECT_FALSE( vlan.isInvalid() || vni.isInvalid() );
  EXPECT_TRUE( BridgeId().isInvalid() );
  EXPECT_TRUE( BridgeId( 0x03000001 ).isInvalid() );
  EXPECT_LT( BridgeId( brTypeVlan, 0xffffff ), BridgeId( brTypeVni, 0 ) );
  EXPECT_EQ( vlan.hash(), 0x5cd6345au );
  EXPECT_EQ( vni.hash(), 0xd97482f6u );
}

TEST( BridgeId, refusesWhatDoesNotFit ) {
  EXPECT_THROW( BridgeId( brTypeVni, 0x1000000 ), Koi::RangeException );
  EXPECT_THROW( BridgeId( BrType( 3 ), 1 ), Koi::RangeException );
  EXPECT_THROW( BridgeId( brTypeVlan, 4095 ).vlanId(), Koi::RangeException );
}

TEST( BridgeId, anAccessorOfTheOtherKindStopsTheProcess ) {
  BridgeId const vlan( brTypeVlan, 10 ), vni( brTypeVni, 10 );
  EXPECT_DEATH( vni.vlanId(), "brType\\(\\) == brTypeVlan\\(\\)" );
  EXPECT_DEATH( vlan.vni(), "brType\\(\\) == brTypeVni\\(\\)" );
}

TEST( BridgeId, printsItsKindAndNumber ) {
  EXPECT_EQ( BridgeId( brTypeVlan, 10 ).toStrep(), "VlanId:10" );
  EXPECT_EQ( Koi::valueToStrep( BridgeId( brTypeVni, 16777215 ) ), "Vni:16777215" );
  EXPECT_EQ( BridgeId().toStrep(), "Invalid:0" );
  EXPECT_EQ( BridgeId( 0x03000001 ).toStrep(), "" );
  std::ostringstream out;
  out << std::hex << BridgeId( brTypeVlan, 10 ) << ' ' << 255;
  EXPECT_EQ( out.str(), "VlanId:10 ff" ) << "the stream's own format is neither used nor changed";
}

TEST( BridgeId, readsPrintedPrefixesAndEnumerators ) {
  struct Row {
    char const * text;
    Koi::U32 value;
  } const rows[] = {
      { "VlanId:10", 0x0100000a },     { "Vni:16777215", 0x02ffffff },   { "Invalid:0", 0 },
      { "brTypeVlan:10", 0x0100000a }, { "brTypeVni:1", 0x02000001 },    { "brTypeUnknown:7", 7 },
      { "Vni:16777216", 0x02000000 },  { "Vni:4294967295", 0x02ffffff }, { "7:10", 0x0300000a },
  };
  for( Row const & row : rows )
    EXPECT_EQ( parsed( row.text ).value(), row.value ) << row.text;
}

TEST( BridgeId, aTextWithoutItsOwnColonIsInvalid ) {
  for( char const * text : { "10", "", "VlanId", "Vlan Id:10", "VlanId, 'other': 10" } )
    try {
      parsed( text );
      ADD_FAILURE() << text;
    } catch( Koi::RangeException const & refusal ) {
      EXPECT_STREQ( refusal.what(), "Invalid BridgeId" ) << text;
    }
  for( char const * text : { "Vlan:10", "3x:10", ":10", "VlanId:", "VlanId:x", "VlanId:010",
                             "VlanId: 10", "VlanId:10 " } )
    EXPECT_THROW( parsed( text ), Koi::ParseException ) << text;
  EXPECT_THROW( parsed( "VlanId:4294967296" ), Koi::RangeException );
}

}  // namespace
