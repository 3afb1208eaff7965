// What a port makes of a frame: the VLAN that its sender is learned in, or the reason why not.

#include <frames/Port.h>
#include <gtest/gtest.h>

#include <variant>

#include "Bridges.h"
#include "Frames.h"

namespace Frames {
namespace {

using namespace Bridging;
using Bridging::access;  // a function of the system has that name, too

// One row a frame: how the bridge is configured, the bytes that come in on eth1, and what is
// expected.
struct Case {
  char const * name;
  void ( *configure )( TestBridge const & );
  std::string frame;
  std::variant< unsigned, NotLearned > expected;
};
void PrintTo( Case const & c, std::ostream * out ) { *out << c.name; }

class FramesOfAPort : public testing::TestWithParam< Case > {};

TEST_P( FramesOfAPort, belongToTheirVlanOrTeachNothing ) {
  TestBridge const bridge;
  GetParam().configure( bridge );
  Port port( intf( "eth1" ), bridge.config, bridge.topology );
  auto const got = port.admissionOf( bytesOf( GetParam().frame ) );
  auto const * const reason = std::get_if< NotLearned >( &GetParam().expected );
  bool const isDropped = reason && *reason != NotLearned::portLearnsNot &&
                         *reason != NotLearned::vlanLearnsNot &&
                         *reason != NotLearned::groupSource && *reason != NotLearned::zeroSource;
  EXPECT_EQ( port.vlanOf( bytesOf( GetParam().frame ) ) == 0, isDropped );
  if( reason ) {
    EXPECT_EQ( got.vlan, 0 );
    EXPECT_EQ( notLearnedTexts[static_cast< unsigned >( got.why )],
               notLearnedTexts[static_cast< unsigned >( *reason )] );
    return;
  }
  EXPECT_EQ( got.vlan, std::get< unsigned >( GetParam().expected ) )
      << notLearnedTexts[static_cast< unsigned >( got.why )];
  EXPECT_EQ( got.source, 0x020000000001u );
}

std::string tagged( unsigned tci, unsigned tpid = 0x8100 ) {
  return frameFrom( mac( 1 ), tag( tpid, tci ) );
}
std::string const untaggedFrame = frameFrom( mac( 1 ) );
std::string const doubleFrame = frameFrom( mac( 1 ), tag( 0x8100, 5 ) + tag( 0x8100, 4095 ) );
std::string const serviceFrame = frameFrom( mac( 1 ), tag( 0x88a8, 5 ) + tag( 0x8100, 6 ) );

constexpr auto asItComes = []( TestBridge const & ) {};
constexpr auto native7 = []( TestBridge const & bridge ) { bridge.port( "eth1", trunk, 7 ); };

constexpr auto nameOf = []( auto const & c ) { return c.param.name; };

INSTANTIATE_TEST_SUITE_P(
    OnATrunk, FramesOfAPort,
    testing::Values(
        Case{ "unconfigured", asItComes, untaggedFrame, 1u },
        Case{ "unconfiguredTagged", asItComes, tagged( 100 ), 100u },
        Case{ "untagged", native7, untaggedFrame, 7u },
        Case{ "priorityAndDropBitsAreNotTheVlan", native7, tagged( 0xf064 ), 100u },
        Case{ "lowestVlan", native7, tagged( 1 ), 1u },
        Case{ "highestVlan", native7, tagged( 4094 ), 4094u },
        Case{ "reservedVlan", native7, tagged( 0xefff ), NotLearned::reservedVlan },
        Case{ "priorityTagged", native7, tagged( 0xe000 ), 7u },
        Case{ "innerTagsSayNothing", native7, doubleFrame, 5u },
        Case{ "serviceTagged", native7, serviceFrame, 7u },
        Case{ "otherTag", native7, tagged( 4095, 0x9100 ), 7u },
        Case{ "lengthInsteadOfType", native7, frameFrom( mac( 1 ) ).replace( 12, 2, "\0\x26", 2 ),
              7u },
        Case{ "headerOnly", native7, frameFrom( mac( 1 ), "", 0 ), 7u },
        Case{ "oneByteShort", native7, untaggedFrame.substr( 0, 13 ), NotLearned::tooShort },
        Case{ "empty", native7, "", NotLearned::tooShort },
        Case{ "taggedHeaderOnly", native7, tagged( 9 ).substr( 0, 18 ), 9u },
        Case{ "taggedOneByteShort", native7, tagged( 9 ).substr( 0, 17 ), NotLearned::tooShort },
        Case{ "serviceTaggedHeaderOnly", native7, serviceFrame.substr( 0, 14 ), 7u },
        Case{ "jumbo", native7, frameFrom( mac( 1 ), "", 65000 ), 7u },
        Case{ "multicastSource", native7, frameFrom( mac( 1, 1 ) ), NotLearned::groupSource },
        Case{ "broadcastSource", native7, frameFrom( std::string( 6, '\xff' ) ),
              NotLearned::groupSource },
        Case{ "zeroSource", native7, frameFrom( std::string( 6, '\0' ) ), NotLearned::zeroSource },
        Case{ "theFirstReasonCounts", native7, frameFrom( mac( 1, 1 ), tag( 0x8100, 4095 ) ),
              NotLearned::reservedVlan } ),
    nameOf );

constexpr auto noNative = []( TestBridge const & bridge ) { bridge.port( "eth1", trunk, 0 ); };
constexpr auto access10 = []( TestBridge const & bridge ) { bridge.port( "eth1", access, 10 ); };
constexpr auto accessNone = []( TestBridge const & bridge ) { bridge.port( "eth1", access, 0 ); };
constexpr auto tunnel10 = []( TestBridge const & bridge ) {
  bridge.port( "eth1", dot1qTunnel, 10 );
};
constexpr auto service = []( TestBridge const & bridge ) {
  bridge.port( "eth1" )->vlanTpidIs( VlanTpidOrNone( 0x88a8 ) );
};
constexpr auto noTags = []( TestBridge const & bridge ) {
  bridge.port( "eth1" )->vlanTpidIs( VlanTpidOrNone( 0 ) );
};
template< VlanTagFormat format >
constexpr auto drops = []( TestBridge const & bridge ) {
  bridge.port( "eth1" )->vlanTagFormatDropIs( format, true );
  for( auto const other : { untagged, priority, singleTagged, doubleTagged } )
    if( other != format )  // an entry that says false drops nothing
      bridge.port( "eth1" )->vlanTagFormatDropIs( other, false );
};
template< SwitchportMode mode >
constexpr auto inMode = []( TestBridge const & bridge ) { bridge.port( "eth1", mode, 1 ); };

INSTANTIATE_TEST_SUITE_P(
    ByTheModeOfThePort, FramesOfAPort,
    testing::Values(
        Case{ "noNativeUntagged", noNative, untaggedFrame, NotLearned::noNativeVlan },
        Case{ "noNativePriority", noNative, tagged( 0xe000 ), NotLearned::noNativeVlan },
        Case{ "noNativeTagged", noNative, tagged( 5 ), 5u },
        Case{ "accessUntagged", access10, untaggedFrame, 10u },
        Case{ "accessPriority", access10, tagged( 0 ), 10u },
        Case{ "accessItsOwnTag", access10, tagged( 10 ), 10u },
        Case{ "accessAnotherTag", access10, tagged( 11 ), NotLearned::otherVlan },
        Case{ "accessWithoutVlan", accessNone, tagged( 11 ), NotLearned::otherVlan },
        Case{ "tunnelTagged", tunnel10, tagged( 11 ), 10u },
        Case{ "tunnelReserved", tunnel10, tagged( 4095 ), 10u },
        Case{ "tap", inMode< tap >, untaggedFrame, NotLearned::notBridging },
        Case{ "tool", inMode< tool >, untaggedFrame, NotLearned::notBridging },
        Case{ "routed", inMode< routed >, "", NotLearned::notBridging },
        Case{ "serviceTagCounts", service, serviceFrame, 5u },
        Case{ "serviceCustomerTagDoesNot", service, tagged( 5 ), 1u },
        Case{ "noTagCounts", noTags, tagged( 5 ), 1u },
        Case{ "noTagCountsNorIsItMissed", noTags, tagged( 5 ).substr( 0, 14 ), 1u },
        Case{ "dropUntagged", drops< untagged >, untaggedFrame, NotLearned::tagFormat },
        Case{ "dropUntaggedTagged", drops< untagged >, tagged( 5 ), 5u },
        Case{ "dropPriority", drops< priority >, tagged( 0 ), NotLearned::tagFormat },
        Case{ "dropSingle", drops< singleTagged >, tagged( 5 ), NotLearned::tagFormat },
        Case{ "dropSingleDouble", drops< singleTagged >, doubleFrame, 5u },
        Case{ "dropDouble", drops< doubleTagged >, doubleFrame, NotLearned::tagFormat } ),
    nameOf );

template< AllowedTrafficDirection direction >
constexpr auto directed =
    []( TestBridge const & bridge ) { bridge.member( 5, "eth1", direction ); };
template< Topology::PortState state >
constexpr auto inState = []( TestBridge const & bridge ) { bridge.topologyOf( 5, state ); };

INSTANTIATE_TEST_SUITE_P(
    ByTheVlan, FramesOfAPort,
    testing::Values(
        Case{ "otherVlansAreConfigured",
              []( TestBridge const & bridge ) { bridge.member( 6, "eth1" ); }, tagged( 5 ), 5u },
        Case{ "member", directed< ingressAndEgress >, tagged( 5 ), 5u },
        Case{ "memberInwards", directed< ingress >, tagged( 5 ), 5u },
        Case{ "memberOutwards", directed< egress >, tagged( 5 ), NotLearned::notMember },
        Case{ "noMember", []( TestBridge const & bridge ) { bridge.member( 5, "eth2" ); },
              tagged( 5 ), NotLearned::notMember },
        Case{ "noMemberNative", []( TestBridge const & bridge ) { bridge.vlan( 1 ); },
              untaggedFrame, NotLearned::notMember },
        Case{ "suspendedVlan",
              []( TestBridge const & bridge ) {
                bridge.member( 5, "eth1" )->adminStateIs( suspended );
              },
              tagged( 5 ), NotLearned::suspended },
        Case{
            "learningOffInTheVlan",
            []( TestBridge const & bridge ) { bridge.member( 5, "eth1" )->macLearningIs( false ); },
            tagged( 5 ), NotLearned::vlanLearnsNot },
        Case{ "learningOffOnThePort",
              []( TestBridge const & bridge ) {
                bridge.port( "eth1" )->macLearningEnabledIs( false );
              },
              tagged( 5 ), NotLearned::portLearnsNot },
        Case{ "discards", inState< Topology::discarding >, tagged( 5 ), NotLearned::blocked },
        Case{ "noStateYet", inState< Topology::portStateUnknown >, tagged( 5 ),
              NotLearned::blocked },
        Case{ "learns", inState< Topology::learning >, tagged( 5 ), 5u },
        Case{ "forwards", inState< Topology::forwarding >, tagged( 5 ), 5u },
        Case{ "anotherVlanDiscards", inState< Topology::discarding >, tagged( 6 ), 6u },
        Case{ "thePortSaysOtherwise",
              []( TestBridge const & bridge ) {
                bridge.topologyOf( 5, Topology::discarding )
                    ->topoPortConfigIs( intf( "eth1" ), 1, Topology::learning );
              },
              tagged( 5 ), 5u } ),
    nameOf );

}  // namespace
}  // namespace Frames
