// BridgingHostEntryTypeTest.cpp: the kinds of MAC table entries: their texts and their classes.

#include <set>

#include <Lumo/BridgingHostEntryType.h>
#include <gtest/gtest.h>

namespace {

using namespace Bridging;

constexpr Koi::U32 numTypes = 21;

using Numbers = std::set< Koi::U32 >;

Numbers thoseOf( bool ( *predicate )( EntryType ) ) {
  Numbers found;
  for( Koi::U32 number = 0; number < numTypes; ++number )
    if( predicate( EntryType( number ) ) )
      found.insert( number );
  for( Koi::U32 number : { numTypes, 31u, 32u, 36u, 0xffffffffu } )
    EXPECT_FALSE( predicate( EntryType( number ) ) ) << number << " is no entry type";
  return found;
}

TEST( EntryType, namesAndTextsAreFixed ) {
  struct Row {
    char const * name;
    char const * text;
  } const rows[numTypes] = {
      { "learnedDynamicMac", "learned dynamic" },
      { "learnedSecureMac", "learned secure" },
      { "configuredDynamicMac", "configured dynamic" },
      { "configuredSecureMac", "configured secure" },
      { "configuredStaticMac", "configured" },
      { "peerDynamicMac", "peer dynamic" },
      { "peerStaticMac", "peer static" },
      { "peerSecureMac", "peer secure" },
      { "learnedRemoteMac", "learned remote" },
      { "configuredRemoteMac", "configured remote" },
      { "receivedRemoteMac", "received remote " },
      { "peerLearnedRemoteMac", "peer dynamic remote" },
      { "peerConfiguredRemoteMac", "peer configured remote" },
      { "peerReceivedRemoteMac", "peer received remote" },
      { "evpnDynamicRemoteMac", "EVPN dynamic remote" },
      { "evpnConfiguredRemoteMac", "EVPN configured remote" },
      { "peerEvpnRemoteMac", "EVPN peer remote" },
      { "configuredRouterMac", "configured router mac" },
      { "peerRouterMac", "peer router mac" },
      { "evpnIntfDynamicMac", "EVPN intf dynamic mac" },
      { "evpnIntfStaticMac", "EVPN intf static mac" },
  };
  for( Koi::U32 number = 0; number < numTypes; ++number ) {
    EXPECT_EQ( stringValue( EntryType( number ) ), rows[number].name );
    EXPECT_EQ( entryTypeStr( EntryType( number ) ), rows[number].text );
  }
  EXPECT_EQ( entryTypeStr( EntryType( 21 ) ), "unknown entry type" );
}

TEST( EntryType, classesHoldTheirNumbers ) {
  EXPECT_EQ( thoseOf( isEntryTypeSelf ), ( Numbers{ 0, 4, 8, 9, 10, 14, 15, 17, 19, 20 } ) );
  EXPECT_EQ( thoseOf( isEntryTypeLocal ), ( Numbers{ 0, 4, 5, 6, 17, 18, 19, 20 } ) );
  EXPECT_EQ( thoseOf( isEntryTypeConfigured ), ( Numbers{ 4, 6, 9, 12, 15, 17, 18, 20 } ) );
  EXPECT_EQ( thoseOf( isEntryTypeDynamic ), ( Numbers{ 0, 5, 8, 11, 19 } ) );
  EXPECT_EQ( thoseOf( isEntryTypeController ), ( Numbers{ 10, 13, 14, 15, 16, 19, 20 } ) );
  EXPECT_EQ( thoseOf( isEntryTypeEvpn ), ( Numbers{ 14, 15, 19, 20 } ) );
  EXPECT_EQ( thoseOf( isEntryTypeInvalid ), ( Numbers{ 1, 2, 3, 7 } ) );
}

TEST( EntryType, classesDivideTheKindsAmongThem ) {
  for( Koi::U32 number = 0; number < numTypes; ++number ) {
    EntryType const type = EntryType( number );
    EXPECT_EQ( isEntryTypeSelf( type ) + isEntryTypePeer( type ) + isEntryTypeInvalid( type ), 1 )
        << number;
    EXPECT_EQ( isEntryTypeLocal( type ) + isEntryTypeRemote( type ) + isEntryTypeInvalid( type ),
               1 )
        << number;
  }
  Numbers ageing;
  for( Koi::U32 number = 0; number < numTypes; ++number )
    if( !isEntryTypeNonAging( EntryType( number ) ) )
      ageing.insert( number );
  EXPECT_EQ( ageing, ( Numbers{ 0, 1, 2, 3, 7, 8 } ) );
  EXPECT_FALSE( isEntryTypeNonAging( EntryType( 21 ) ) );
}

}  // namespace
