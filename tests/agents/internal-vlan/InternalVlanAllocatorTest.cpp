// InternalVlanAllocatorTest.cpp: internal VLANs against the rules, over random requests, lists and
// configuration; then the cases that are decided once.
#include <gtest/gtest.h>

#include <map>
#include <random>
#include <set>

#include <InternalVlanAllocator.h>

using namespace Bridging;
using Koi::Name;
using Pair = InternalVlanKeySourcePair;

namespace {

Pair pairOf( unsigned i ) {
  return { InternalVlanKey( "k" + std::to_string( i / 3 ) ),
           InternalVlanSource( "s" + std::to_string( i % 3 ) ) };
}

/// The same rules by plain numbers.
struct Plain {
  unsigned begin = 1006, end = 4094;
  bool isDown = false, useWhitelist = false;
  std::map< unsigned, bool > requests;
  std::map< unsigned, unsigned > wishes;
  std::set< unsigned > white, black, users;

  bool isAllowed( unsigned vlan ) const {
    return vlan >= begin && vlan <= end && !black.count( vlan ) && !users.count( vlan ) &&
           ( !useWhitelist || white.count( vlan ) );
  }
};

struct Allocation : testing::Test {
  Koi::Ptr< InternalVlanConfigDir > requests = internalVlanConfigDirFactory( Name( "requests" ) );
  Koi::Ptr< InternalVlanStatusDir > answers = internalVlanStatusDirFactory( Name( "answers" ) );
  Koi::Ptr< Config > config = configFactory( Name( "config" ) );
  Koi::Ptr< InternalVlanAllocator > allocator =
      internalVlanAllocatorFactory( requests, config, answers );
  Plain plain;

  void rangeIs( unsigned begin, unsigned end ) {
    plain.begin = begin;
    plain.end = end;
    config->internalVlanRangeIs( InternalVlanRange( VlanId( begin ), VlanId( end ) ) );
  }
  unsigned answerOf( unsigned i ) const { return answers->status( pairOf( i ) ).value(); }
  std::set< unsigned > taken() const {
    std::set< unsigned > vlans;
    for( auto const & i : answers->status() )
      if( i.value().value() != 0 )
        vlans.insert( i.value().value() );
    return vlans;
  }
  /// The VLAN that is next, given what is taken; 0 for none.
  unsigned next( std::set< unsigned > const & taken ) const {
    for( unsigned i = 0; plain.begin + i <= plain.end; ++i ) {
      unsigned const vlan = plain.isDown ? plain.end - i : plain.begin + i;
      if( plain.isAllowed( vlan ) && !taken.count( vlan ) )
        return vlan;
    }
    return 0;
  }

  /// Does one thing at random. Returns what the request that it makes must get, if it makes one of
  /// somebody who had none.
  std::optional< std::pair< unsigned, unsigned > > step( std::mt19937 & random );
  void requireRules() const;
};

std::optional< std::pair< unsigned, unsigned > > Allocation::step( std::mt19937 & random ) {
  unsigned const i = random() % 24, vlan = 1000 + random() % 24;
  switch( random() % 12 ) {
    case 0:
    case 1:
    case 2:
    case 3: {
      bool const isWanted = random() % 8 != 0;
      bool const hadNone = answerOf( i ) == 0 && isWanted;
      auto const before = taken();
      unsigned const wish = plain.wishes.count( i ) ? plain.wishes[i] : 0;
      bool const isGranted = wish != 0 && plain.isAllowed( wish ) && !before.count( wish );
      plain.requests[i] = isWanted;
      requests->configIs( pairOf( i ), isWanted );
      if( hadNone )
        return std::pair( i, isGranted ? wish : next( before ) );
      break;
    }
    case 4:
    case 5:
      plain.requests.erase( i );
      requests->configDel( pairOf( i ) );
      break;
    case 6:
      plain.wishes[i] = random() % 5 == 0 ? 0 : vlan;
      requests->preferredIs( pairOf( i ), VlanIdOrNone( plain.wishes[i] ) );
      break;
    case 7:
      if( plain.black.erase( vlan ) ) {
        requests->blacklistDel( VlanId( vlan ) );
      } else {
        plain.black.insert( vlan );
        requests->blacklistIs( VlanId( vlan ), true );
      }
      break;
    case 8:
      if( plain.white.erase( vlan ) ) {
        requests->whitelistDel( VlanId( vlan ) );
      } else {
        plain.white.insert( vlan );
        requests->whitelistIs( VlanId( vlan ), true );
      }
      break;
    case 9:
      plain.useWhitelist = random() % 4 == 0;
      requests->useWhitelistIs( plain.useWhitelist );
      break;
    case 10:
      if( plain.users.erase( vlan ) ) {
        config->vlanConfigDel( VlanId( vlan ) );
      } else if( !config->vlanConfig( VlanId( vlan ) ) ) {
        plain.users.insert( vlan );
        config->vlanConfigIs( VlanId( vlan ), false );
      }
      break;
    default:
      plain.isDown = random() % 2 == 0;
      config->internalVlanAllocationPolicyIs( plain.isDown ? descending : ascending );
      rangeIs( 1000 + random() % 8, 1004 + random() % 20 );
  }
  return std::nullopt;
}

void Allocation::requireRules() const {
  std::set< unsigned > owned;
  ASSERT_EQ( answers->status().size(), plain.requests.size() );
  bool anyWaits = false;
  for( auto const & [i, isWanted] : plain.requests ) {
    ASSERT_TRUE( answers->status().contains( pairOf( i ) ) ) << i;
    unsigned const vlan = answerOf( i );
    anyWaits |= isWanted && vlan == 0;
    if( vlan == 0 )
      continue;
    ASSERT_TRUE( isWanted ) << i;
    ASSERT_TRUE( plain.isAllowed( vlan ) ) << vlan;
    ASSERT_TRUE( owned.insert( vlan ).second ) << vlan << " has two owners";
  }
  if( anyWaits ) {
    ASSERT_EQ( next( owned ), 0u ) << "somebody waits although there is a VLAN";
  }
}

}  // namespace

TEST_F( Allocation, keepsTheRulesOverRandomSteps ) {
  unsigned const seed = std::random_device()();
  SCOPED_TRACE( "seed " + std::to_string( seed ) );
  std::mt19937 random( seed );
  rangeIs( 1000, 1015 );
  for( int n = 0; n < 100000; ++n ) {
    auto const expected = step( random );
    if( expected ) {
      ASSERT_EQ( answerOf( expected->first ), expected->second ) << n;
    }
    requireRules();
    if( HasFatalFailure() )
      FAIL() << "step " << n;
    if( n % 1000 == 999 )  // another agent takes over
      allocator = internalVlanAllocatorFactory( requests, config, answers );
  }
}

TEST_F( Allocation, aVlanOfAUserIsGivenUpForAnother ) {
  requests->configIs( pairOf( 0 ), true );
  EXPECT_EQ( answerOf( 0 ), 1006u );
  config->vlanConfigIs( VlanId( 1006 ), true );  // the internal VLAN itself, which stays
  EXPECT_EQ( answerOf( 0 ), 1006u );
  config->vlanConfigDel( VlanId( 1006 ) );
  config->vlanConfigIs( VlanId( 1006 ), false );
  EXPECT_EQ( answerOf( 0 ), 1007u );
}

TEST_F( Allocation, whoWaitsGetsWhatBecomesFree ) {
  rangeIs( 1006, 1006 );
  for( unsigned i : { 2u, 1u, 0u } )
    requests->configIs( pairOf( i ), true );
  EXPECT_EQ( answerOf( 2 ), 1006u );
  EXPECT_EQ( answerOf( 0 ), 0u );
  requests->configDel( pairOf( 2 ) );
  EXPECT_EQ( answerOf( 0 ), 1006u ) << "the lowest key first";
  EXPECT_EQ( answerOf( 1 ), 0u );
  rangeIs( 1007, 1006 );
  EXPECT_EQ( answerOf( 0 ), 0u ) << "an empty range";
}

TEST_F( Allocation, anAgentThatBeginsKeepsWhatWasHandedOut ) {
  allocator = nullptr;
  requests->configIs( pairOf( 0 ), true );
  requests->configIs( pairOf( 1 ), true );
  answers->statusIs( pairOf( 1 ), VlanIdOrNone( 1006 ) );
  answers->statusIs( pairOf( 5 ), VlanIdOrNone( 1007 ) );  // nobody asks for it any more
  allocator = internalVlanAllocatorFactory( requests, nullptr, answers );
  EXPECT_EQ( answerOf( 0 ), 0u ) << "it does not know the range yet";
  allocator->configIs( config );
  EXPECT_EQ( answerOf( 1 ), 1006u );
  EXPECT_EQ( answerOf( 0 ), 1007u );
  EXPECT_FALSE( answers->status().contains( pairOf( 5 ) ) );
}
