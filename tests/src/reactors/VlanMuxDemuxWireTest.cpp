// VlanMuxDemuxWireTest.cpp: the multiplexer on a real device, against another program's frames.

#include <reactors/VlanMuxDemux.h>
#include <sys/wait.h>

#include <array>
#include <cstdio>

#include <gtest/gtest.h>
#include <support/VethPair.h>

namespace {

using Lumo::VlanMuxDemux;
using TestSupport::VethPair;

constexpr int skipStatus = 77;

/// Sends back what it receives.
struct Echo : Wirex::Pam::Notifiee {
  void onPkt( Koi::Ptr< Wirex::Pkt > const & pkt ) override { notifier()->send( pkt ); }
};

class VlanMuxDemuxWire : public testing::TestWithParam< bool > {};

TEST_P( VlanMuxDemuxWire, sendsFramesBackAsAnotherProgramExpectsThem ) {
  VethPair const veth;
  if( !veth.isThere() ||
      !VethPair::did( "ip link set near0 mtu 9000 && ip link set far0 mtu 9000" ) )
    GTEST_SKIP() << VethPair::skipped;
  bool const leaveVlanHdr = GetParam();
  auto const mux =
      Lumo::vlanMuxDemuxFactory( nullptr, "near0", Bridging::VlanIdOrNone( 7 ), leaveVlanHdr );
  std::array< Echo, 4096 > echoes;
  for( Koi::U32 vlan = 0; vlan < echoes.size(); ++vlan )
    echoes[vlan].notifierIs( mux->manyPamIs( vlan ) );

  std::string const command = std::string( "timeout 60 /usr/bin/python3 " LUMO_FRAMES " far0 " ) +
                              ( leaveVlanHdr ? "leave" : "strip" ) + " 2>&1";
  FILE * const program = popen( command.c_str(), "r" );
  ASSERT_NE( program, nullptr );
  std::string said;
  Koi::DescriptorWatch const output(
      nullptr, fileno( program ), Koi::DescriptorWatch::readable, [&] {
        char some[4096];
        ssize_t const got = read( fileno( program ), some, sizeof some );
        if( got <= 0 )
          return Koi::defaultActivity()->stop();
        said.append( some, static_cast< std::size_t >( got ) );
      } );
  Koi::defaultActivity()->run();
  int const status = pclose( program );
  if( WIFEXITED( status ) && WEXITSTATUS( status ) == skipStatus )
    GTEST_SKIP() << "no scapy here";
  EXPECT_EQ( status, 0 );
  EXPECT_EQ( said, "440 frames, 0 wrong\n" );
  EXPECT_EQ( mux->counters().unknownPkts, 0u );
  EXPECT_EQ( mux->ethPam()->counters().rxPkts, 440u );
}

INSTANTIATE_TEST_SUITE_P( Tags, VlanMuxDemuxWire, testing::Values( false, true ),
                          []( auto const & given ) { return given.param ? "left" : "stripped"; } );

}  // namespace
