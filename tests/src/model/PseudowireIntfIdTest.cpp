// PseudowireIntfIdTest.cpp: pseudowires: how they are built, the packed number, their text.

#include <Lumo/LumoIntfId.h>
#include <Lumo/PseudowireIntfId.h>
#include <gtest/gtest.h>

namespace {

using Bridging::VlanIdOrAny;
using Wirex::IntfId;
using Wirex::PseudowireIntfId;

IntfId pseudowire( char const * attachment, Koi::U32 vlan ) {
  return PseudowireIntfId::intfIdFromIntfIdVlan( IntfId( attachment ), VlanIdOrAny( vlan ) );
}

TEST( PseudowireIntfId, isBuiltWordByWord ) {
  struct Row {
    char const * attachment;
    Koi::U32 vlan;
    Koi::U64 value;
    char const * parent;
    Koi::U64 packed;
  } const rows[] = {
      { "eth1", 10, 0x00000a0076000020, "eth1", 0x0200a000 },
      { "eth3/1/2", 4095, 0x000fff0076018022, "eth3/1/2", 0x1802fff000 },
      { "lag7", 1, 0x0000010776000007, "lag7", 0x0701007 },
      { "ecmp9", 100, 0x0000640776020009, "ecmp9", 0x2000964007 },
      // A sub-interface's number has no place in a pseudowire: it stands on the port.
      { "eth1.100", 10, 0x00000a0076000020, "eth1", 0x0200a000 },
      { "lag7.20", 1, 0x0000010776000007, "lag7", 0x0701007 },
  };
  for( Row const & row : rows ) {
    IntfId const made = pseudowire( row.attachment, row.vlan );
    EXPECT_EQ( made.value(), row.value ) << row.attachment;
    EXPECT_TRUE( PseudowireIntfId::isPseudowireIntfId( made ) );
    EXPECT_EQ( PseudowireIntfId::vlanId( made ), VlanIdOrAny( row.vlan ) );
    EXPECT_EQ( PseudowireIntfId::isPortPseudowireIntfId( made ), row.vlan == 4095 );
    EXPECT_EQ( PseudowireIntfId::parentIntfId( made ), IntfId( row.parent ) );
    EXPECT_EQ( PseudowireIntfId::pseudowireIntfId( made ), row.packed ) << row.attachment;
  }
  EXPECT_EQ( PseudowireIntfId::connectorType( pseudowire( "lag7", 1 ) ), 7 );
  EXPECT_EQ( PseudowireIntfId::connectorId( pseudowire( "ecmp9", 1 ) ), 0x20009u );
}

TEST( PseudowireIntfId, vlanAndConnectorOverlapInThePackedNumber ) {
  // Connector 0x1ffffff, VLAN 0x0f0: the bits that both hold are ORed.
  IntfId const made( 0x0000f00077ffffff );
  EXPECT_EQ( PseudowireIntfId::pseudowireIntfId( made ),
             ( Koi::U64{ 0x1ffffff } << 20 | 0x0f0u << 12 ) );
  // Bits of the VLAN show through where the connector's low four bits are clear.
  EXPECT_EQ( PseudowireIntfId::pseudowireIntfId( pseudowire( "lag16", 0xf00 ) ), 0x1f00007u );
}

TEST( PseudowireIntfId, standsForAPortWithoutAVlan ) {
  IntfId const port = PseudowireIntfId::portIntfIdFromIntfId( IntfId( "eth1" ) );
  EXPECT_TRUE( PseudowireIntfId::isPortPseudowireIntfId( port ) );
  EXPECT_EQ( port, pseudowire( "eth1", 4095 ) );
}

TEST( PseudowireIntfId, isRefusedWhereNothingCanBeAttached ) {
  for( char const * name : { "cpu", "vlan10", "mgmt0", "peer-eth1", "peer-lag7", "eth1:10" } )
    try {
      pseudowire( name, 10 );
      ADD_FAILURE() << name;
    } catch( Koi::RangeException const & refusal ) {
      EXPECT_EQ( refusal.what(), "Unsupported IntfId <" + std::string( name ) + ">" );
    }
}

TEST( PseudowireIntfId, vlanZeroIsRefusedWhenItIsAskedFor ) {
  IntfId const made( 0x0000000076000020 );
  try {
    PseudowireIntfId::vlanId( made );
    FAIL() << "VLAN 0 came back";
  } catch( Koi::RangeException const & refusal ) {
    EXPECT_STREQ( refusal.what(), "VlanIdOrAny::value < 1 or > 4095 not allowed" );
  }
}

TEST( PseudowireIntfId, printsAttachmentAndVlan ) {
  EXPECT_EQ( Koi::valueToStrep( PseudowireIntfId( pseudowire( "eth1", 10 ) ) ), "eth1:10" );
  EXPECT_EQ( pseudowire( "eth3/1/2", 4095 ).stringValue(), "eth3/1/2:4095" );
  EXPECT_EQ( PseudowireIntfId::localIntfIdFromString( "lag7:10" ), pseudowire( "lag7", 10 ) );
  for( char const * text : { "eth1", "", "eth1.5:10", "cpu:10" } )
    EXPECT_THROW( PseudowireIntfId::localIntfIdFromString( text ), Koi::ParseException ) << text;
}

TEST( PseudowireIntfId, wrongUseStopsTheProcess ) {
  IntfId const eth( "eth1" );
  EXPECT_DEATH( PseudowireIntfId::connectorType( eth ), "isPseudowireIntfId\\( intfId \\)" );
  EXPECT_DEATH( PseudowireIntfId::vlanId( eth ), "isPseudowireIntfId\\( intfId \\)" );
  EXPECT_DEATH( PseudowireIntfId::parentIntfId( eth ), "isPseudowireIntfId\\( intfId \\)" );
  EXPECT_DEATH( PseudowireIntfId::pseudowireIntfId( eth ), "isPseudowireIntfId\\( intfId \\)" );
  Koi::String8 const text( "eth1:10" );
  EXPECT_DEATH(
      {
        Koi::String8::IteratorConst it = text.begin();
        PseudowireIntfId( it, text.end() );
      },
      "PseudowireIntfId is not parsed" );
}

}  // namespace
