// IntfNameTest.cpp: the grammar of interface names, both ways.

#include <random>

#include <gtest/gtest.h>
#include <wirex/GenericIntfId.h>

namespace {

using Wirex::IntfId;

TEST( IntfName, everyKindHasItsPlaceInTheWord ) {
  struct Row {
    char const * name;
    Koi::U64 value;
  } const rows[] = {
      { "eth1", 0x0000000000000020 },
      { "eth1023", 0x0000000000007fe0 },
      { "eth3/1", 0x0000000000018020 },
      { "eth3/1/2", 0x0000000000018022 },
      { "eth1.100", 0x0000006400000020 },
      { "eth1023/1023/31.4294967295", 0xffffffff01ffffff },
      { "mgmt0", 0x0000000002000000 },
      { "mgmt1/1", 0x0000000002008020 },
      { "mgmt1/0", 0x0000000002008000 },
      { "vlan100", 0x0000000004000064 },
      { "vlan4094", 0x0000000004000ffe },
      { "vxlan1", 0x0000000006000001 },
      { "ue3", 0x0000000008000003 },
      { "cpu", 0x000000000c000000 },
      { "lag7", 0x000000000e000007 },
      { "lag65535", 0x000000000e00ffff },
      { "lag7.20", 0x000000140e000007 },
      { "recirc7", 0x000000000e010007 },
      { "ecmp7", 0x000000000e020007 },
      { "peer-eth3/1/2.5", 0x0000000510018022 },
      { "peer-lag7", 0x0000000012000007 },
      { "peer-recirc7.1", 0x0000000112010007 },
      { "peer-ecmp7", 0x0000000012020007 },
      { "eth1:10", 0x00000a0076000020 },
      { "eth3/1/2:4095", 0x000fff0076018022 },
      { "lag7:10", 0x00000a0776000007 },
      { "ecmp7:1", 0x0000010776020007 },
      { ":10", 0x00000a0076000000 },
      { "intf-0x0000000000000003:10", 0x00000a0076000003 },
      { "intf-0x0000000000000003", 0x0000000000000003 },
      { "intf-0x000000000e000000", 0x000000000e000000 },
      { "intf-0x0000000004000fff", 0x0000000004000fff },
      { "intf-0x000000010c000000", 0x000000010c000000 },
      { "intf-0x0000000076000020", 0x0000000076000020 },
      { "intf-0x00100000760000ff", 0x00100000760000ff },
      { "intf-0xffffffffffffffff", 0xffffffffffffffff },
  };
  for( Row const & row : rows ) {
    EXPECT_EQ( IntfId( row.value ).stringValue(), row.name );
    EXPECT_EQ( IntfId( row.name ).value(), row.value ) << row.name;
  }
}

TEST( IntfName, aRefusalNamesTheTextAndTheFault ) {
  struct Row {
    char const * name;
    bool outOfRange;
    char const * text;
  } const rows[] = {
      { "eth", false, "Interface name 'eth': a number was expected at the end" },
      { "eth1/", false, "Interface name 'eth1/': a number was expected at the end" },
      { "eth1/2/x", false, "Interface name 'eth1/2/x': a number was expected before 'x'" },
      { "eth-1", false, "Interface name 'eth-1' is of no known kind" },
      { "eth+1", false, "Interface name 'eth+1': a number was expected before '+1'" },
      { "eth 1", false, "Interface name 'eth 1': a number was expected before ' 1'" },
      { "Eth1", false, "Interface name 'Eth1' is of no known kind" },
      { "eth01", false, "Interface name 'eth01': a number does not begin with 0" },
      { "eth1 ", false, "Interface name 'eth1 ': characters are left behind the name" },
      { "eth1\n", false, "Interface name 'eth1\\n': characters are left behind the name" },
      { "eth1/2/3/4", false, "Interface name 'eth1/2/3/4': characters are left behind the name" },
      { "eth1.", false, "Interface name 'eth1.': a number was expected at the end" },
      { "eth1.2.3", false, "Interface name 'eth1.2.3': characters are left behind the name" },
      { "vlan1.2", false, "Interface name 'vlan1.2': characters are left behind the name" },
      { "mgmt1/1/1", false, "Interface name 'mgmt1/1/1': characters are left behind the name" },
      { "cpu0", false, "Interface name 'cpu0': characters are left behind the name" },
      { "peer-vlan1", false, "Interface name 'peer-vlan1' is of no known kind" },
      { "eth0", true, "Interface name 'eth0': port < 1 or > 1023 not allowed" },
      { "eth1024", true, "Interface name 'eth1024': port < 1 or > 1023 not allowed" },
      { "eth99999999999999999999", true,
        "Interface name 'eth99999999999999999999': port < 1 or > 1023 not allowed" },
      { "eth0/1", true, "Interface name 'eth0/1': module < 1 or > 1023 not allowed" },
      { "eth3/1/0", true, "Interface name 'eth3/1/0': lane < 1 or > 31 not allowed" },
      { "eth3/1/32", true, "Interface name 'eth3/1/32': lane < 1 or > 31 not allowed" },
      { "eth1.0", true, "Interface name 'eth1.0': sub-interface < 1 or > 4294967295 not allowed" },
      { "eth1.4294967296", true,
        "Interface name 'eth1.4294967296': sub-interface < 1 or > 4294967295 not allowed" },
      { "mgmt1024", true, "Interface name 'mgmt1024': port > 1023 not allowed" },
      { "vlan4095", true, "Interface name 'vlan4095': number < 1 or > 4094 not allowed" },
      { "lag65536", true, "Interface name 'lag65536': number < 1 or > 65535 not allowed" },
      { "eth1:0", true, "Interface name 'eth1:0': VLAN < 1 or > 4095 not allowed" },
      { "eth1:4096", true, "Interface name 'eth1:4096': VLAN < 1 or > 4095 not allowed" },
      { "eth1:10x", false, "Interface name 'eth1:10x': characters are left behind the name" },
      { "eth1.100:10", false,
        "Interface name 'eth1.100:10': a pseudowire stands on an Ethernet port or a port-channel" },
      { "cpu:10", false,
        "Interface name 'cpu:10': a pseudowire stands on an Ethernet port or a port-channel" },
      { "eth1:10:10", false, "Interface name 'eth1:10:10': characters are left behind the name" },
      { "intf-0x20", false,
        "Interface name 'intf-0x20': 16 lower-case hexadecimal digits were expected behind "
        "intf-0x" },
      { "intf-0xFFFFFFFFFFFFFFFF", false,
        "Interface name 'intf-0xFFFFFFFFFFFFFFFF': 16 lower-case hexadecimal digits were expected "
        "behind intf-0x" },
      { "intf-0x0000000000000020", false,
        "Interface name 'intf-0x0000000000000020' is spelled 'eth1'" },
      { "intf-0x0000000000000000", false,
        "Interface name 'intf-0x0000000000000000' is spelled ''" },
  };
  for( Row const & row : rows )
    try {
      ADD_FAILURE() << row.name << " is read as " << IntfId( row.name ).value();
    } catch( Koi::RangeException const & refusal ) {
      EXPECT_TRUE( row.outOfRange ) << row.name;
      EXPECT_STREQ( refusal.what(), row.text );
    } catch( Koi::ParseException const & refusal ) {
      EXPECT_FALSE( row.outOfRange ) << row.name;
      EXPECT_STREQ( refusal.what(), row.text );
    }
}

TEST( IntfName, aVeryLongNameIsNotRepeated ) {
  try {
    IntfId( Koi::String8( std::string( 1000, '1' ) ) );
    FAIL() << "a name of 1000 digits was read";
  } catch( Koi::ParseException const & refusal ) {
    EXPECT_STREQ( refusal.what(), "Interface name of 1000 bytes is too long" );
  }
}

TEST( IntfName, everyIdentifierPrintsToANameThatReadsBack ) {
  auto const check = []( Koi::U64 value ) {
    Koi::String8 const name = IntfId( value ).stringValue();
    ASSERT_EQ( IntfId( name ).value(), value ) << name;
  };
  // Each type with every pair of bits, and with random bits of which few or many are set.
  std::mt19937_64 random( 20260101 );
  for( Koi::U64 typeId = 0; typeId < 128; ++typeId ) {
    auto const ofType = [&]( Koi::U64 bits ) {
      return ( bits & ~( Koi::U64{ 127 } << 25 ) ) | typeId << 25;
    };
    for( unsigned i = 0; i < 64; ++i )
      for( unsigned j = i; j < 64; ++j )
        check( ofType( Koi::U64{ 1 } << i | Koi::U64{ 1 } << j ) );
    for( int i = 0; i < 300; ++i ) {
      Koi::U64 const a = random(), b = random(), c = random();
      for( Koi::U64 bits : { a, a & b, a & b & c, a & 0x1ffffff, a & 0xffff, a & b & 0xffff } )
        check( ofType( bits ) );
    }
    if( HasFatalFailure() )
      return;
  }
}

TEST( IntfName, everyNameThatIsReadIsTheOneThatIsPrinted ) {
  char const * const pieces[] = { "eth",  "lag", "peer-", "vlan", "mgmt",    "cpu", "ue", "recirc",
                                  "ecmp", "/",   ".",     ":",    "0",       "1",   "31", "4095",
                                  "99",   "-",   "intf-", "0x",   "0000000", "7",   " ",  "vxlan" };
  std::mt19937 random( 20260102 );
  int numRead = 0;
  for( int i = 0; i < 50000; ++i ) {
    std::string name;
    for( unsigned n = 1 + random() % 7; n > 0; --n )
      name += pieces[random() % std::size( pieces )];
    try {
      ASSERT_EQ( IntfId( name ).stringValue(), name );
      ++numRead;
    } catch( Koi::ParseException const & ) {
    } catch( Koi::RangeException const & ) {
    }
  }
  EXPECT_GT( numRead, 300 );
}

}  // namespace
