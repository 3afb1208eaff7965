// VlanIdTest.cpp: VLAN numbers and translation keys: bounds and their words, hashes, order, bytes.
// What every value does is tested for all of them at once in tests/contract.

#include <algorithm>

#include <Lumo/VlanId.h>
#include <gtest/gtest.h>

namespace {

using namespace Bridging;

template< class T >
T parsed( Koi::String8 const & text ) {
  Koi::String8::IteratorConst it = text.begin();
  T const v( it, text.end() );
  Koi::strepToValueEnd( text, it );
  return v;
}

/// Admits exactly low to high, from text and by number, and refuses the rest in its own words.
template< class T >
void expectBounds( Koi::U32 low, Koi::U32 high, char const * text ) {
  for( Koi::U32 number : { 0u, 1u, 4094u, 4095u, 4096u, 65535u, 65536u, 65537u } ) {
    Koi::String8 const decimal = Koi::valueToStrep( number );
    if( number >= low && number <= high ) {
      EXPECT_EQ( parsed< T >( decimal ).value(), number );
      EXPECT_EQ( T( number ).value(), number );
      EXPECT_EQ( Koi::valueToStrep( T( number ) ), decimal );
      continue;
    }
    for( bool fromText : { false, true } )
      try {
        fromText ? parsed< T >( decimal ) : T( number );
        ADD_FAILURE() << T::koiName << " admits " << number;
      } catch( Koi::RangeException const & refusal ) {
        EXPECT_STREQ( refusal.what(), text );
      }
  }
}

TEST( VlanId, everyKindAdmitsItsOwnRange ) {
  expectBounds< VlanId >( 1, 4094, "VlanId::value < 1 or > 4094 not allowed" );
  expectBounds< VlanIdOrNone >( 0, 4094, "VlanIdOrNone::value > 4094 not allowed" );
  expectBounds< VlanIdOrAny >( 1, 4095, "VlanIdOrAny::value < 1 or > 4095 not allowed" );
  expectBounds< VlanIdOrAnyOrNone >( 0, 4095, "VlanIdOrAnyOrNone::value > 4095 not allowed" );
}

TEST( VlanId, aNumberHashesAlikeInEveryKind ) {
  EXPECT_EQ( VlanId( 1 ).hash(), 0x95b73b8au );
  EXPECT_EQ( VlanId( 10 ).hash(), 0x23721778u );
  EXPECT_EQ( VlanIdOrNone( 10 ).hash(), 0x23721778u );
  EXPECT_EQ( VlanIdOrAny( 10 ).hash(), 0x23721778u );
  EXPECT_EQ( VlanIdOrAnyOrNone( 10 ).hash(), 0x23721778u );
  EXPECT_EQ( VlanIdOrAny( 4095 ).hash(), 0xe4d93c03u );
}

TEST( VlanId, aBareNumberFromTheLogIsKeptAsRead ) {
  Koi::U8 const bytes[] = { 0xff, 0xff };
  Koi::NboAttrLog::In in( bytes, 2 );
  EXPECT_EQ( VlanId( &in, Koi::StreamBogon() ).value(), 0xffff );
}

TEST( VlanXlate, structuresHashTheirFieldsHashes ) {
  EXPECT_EQ( VlanIdTuple( VlanIdOrNone( 10 ), VlanIdOrNone( 20 ) ).hash(), 0xb3483873u );
  EXPECT_EQ( VlanXlateKey( VlanId( 10 ), VlanIdOrNone( 20 ) ).hash(), 0xb3483873u );
  VlanXlateMapping const plain( VlanIdOrNone( 10 ), VlanIdOrNone( 20 ), false );
  VlanXlateMapping const tunnel( VlanIdOrNone( 10 ), VlanIdOrNone( 20 ), true );
  EXPECT_EQ( plain.hash(), 0xc491da7u );
  EXPECT_EQ( tunnel.hash(), 0x6fb5c113u );
  EXPECT_NE( plain, tunnel );
  EXPECT_EQ( VlanNameOrId( id, "red", VlanIdOrNone( 10 ) ).hash(), 0x4ee69ec2u );
}

TEST( VlanXlate, keysSortByOuterThenInnerTag ) {
  VlanXlateKey const low( VlanId( 5 ), VlanIdOrNone( 4094 ) ), bare( VlanId( 6 ), VlanIdOrNone() ),
      high( VlanId( 6 ), VlanIdOrNone( 1 ) );
  EXPECT_TRUE( low < bare && bare < high && low < high );
  EXPECT_TRUE( high > bare && bare >= low && low <= low );
  EXPECT_FALSE( high < bare || low < low );
}

TEST( VlanXlate, theLogIsCheckedFieldByField ) {
  Koi::Ptr< Koi::NboAttrLog::Out > out = new Koi::NboAttrLog::Out;
  out << VlanNameOrId( id, "red", VlanIdOrNone( 10 ) )
      << VlanXlateMapping( VlanIdOrNone( 258 ), VlanIdOrNone( 2 ), true );
  Koi::U8 const bytes[] = { 0, 0, 0, 2, 0, 0, 0, 3, 'r', 'e', 'd', 0, 10, 1, 2, 0, 2, 1 };
  ASSERT_EQ( out->size(), sizeof bytes );
  EXPECT_TRUE( std::equal( bytes, bytes + sizeof bytes, out->data() ) );

  Koi::U8 const noOuterTag[] = { 0, 0, 0xff, 0xff };
  Koi::NboAttrLog::In in( noOuterTag, 4 );
  try {
    VlanXlateKey( &in, Koi::StreamBogon() );
    FAIL() << "VLAN 0 was read as an outer tag";
  } catch( Koi::RangeException const & refusal ) {
    EXPECT_STREQ( refusal.what(), "VlanId::value < 1 or > 4094 not allowed" );
    EXPECT_EQ( in.left(), 2u ) << "the inner tag was read";
  }
}

}  // namespace
