// ProgramTest.cpp: the program as a user starts it.

#include <gtest/gtest.h>
#include <support/Shell.h>
#include <support/VethPair.h>

namespace {

TestSupport::Outcome ran( std::string const & arguments ) {
  return TestSupport::shell( VLAN_ENDPOINTS_PROGRAM, "\"$program\" " + arguments );
}

TEST( Program, saysInOneLineWhatIsWrong ) {
  struct Case {
    char const *arguments, *said;
  };
  for( auto const & [arguments, said] :
       { Case{ "", "device is required" },
         Case{ "d", "--vlan VLAN=ADDRESS or --untagged ADDRESS is required" },
         Case{ "d --vlan 0=192.0.2.1",
               "--vlan: '0=192.0.2.1': VLAN=ADDRESS was expected, "
               "a VLAN 1 to 4094" },
         Case{ "d --vlan 4095=192.0.2.1", "a VLAN 1 to 4094" },
         Case{ "d --vlan 10", "VLAN=ADDRESS was expected" },
         Case{ "d --vlan 10=192.0.2", "--vlan: '192.0.2' is no IPv4 address" },
         Case{ "d --vlan 10=192.0.2.1 --vlan 10=192.0.2.2", "VLAN 10 is named twice" },
         Case{ "d --untagged x", "--untagged: 'x' is no IPv4 address" },
         Case{ "d --untagged 192.0.2.1 --mac 00", "--mac: a MAC address was expected at '00'" },
         Case{ "d --untagged 192.0.2.1 --for 0", "--for" },
         Case{ "no-such --untagged 192.0.2.1", "cannot open device 'no-such': " } } ) {
    auto const outcome = ran( arguments );
    EXPECT_EQ( outcome.status, 2 ) << arguments;
    EXPECT_EQ( outcome.out, "" );
    EXPECT_EQ( outcome.err.rfind( "vlan-endpoints: ", 0 ), 0u );
    EXPECT_NE( outcome.err.find( said ), std::string::npos ) << outcome.err;
    EXPECT_EQ( outcome.err.find( '\n' ), outcome.err.size() - 1 );
  }
}

TEST( Program, endsWhenItsTimeIsOver ) {
  TestSupport::VethPair const veth;
  if( !veth.isThere() )
    GTEST_SKIP() << TestSupport::VethPair::skipped;
  auto const outcome = ran( "near0 --untagged 192.0.2.1 --vlan 10=192.0.2.1 --for 0.1" );
  EXPECT_EQ( outcome.status, 0 );
  EXPECT_EQ( outcome.err, "" );
  EXPECT_EQ( outcome.out.rfind( "ready\n", 0 ), 0u );
  EXPECT_NE( outcome.out.find( "Dropped: 0 frames.\n" ), std::string::npos );
}

}  // namespace
