// PktTest.cpp: packets: their bytes, the room around them, who shares a buffer, and the pieces in
// which they go out.

#include <algorithm>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <wirex/PktIoVecs.h>

namespace {

using Bytes = std::vector< Koi::U8 >;
using Wirex::Pkt;
using Wirex::PktBuffer;
using Wirex::PktIoVecs;
using Wirex::VlanTag;

Bytes numbered( std::size_t size ) {
  Bytes bytes( size );
  for( std::size_t i = 0; i < size; ++i )
    bytes[i] = static_cast< Koi::U8 >( i );
  return bytes;
}

Bytes bytesOf( Pkt const & pkt ) { return { pkt.bytes().begin(), pkt.bytes().end() }; }

TEST( Pkt, hasRoomBeforeAndBehindItsBytes ) {
  Koi::Ptr< Pkt > const pkt( new Pkt( PktBuffer::ofSize( 100 ), 10, 60 ) );
  EXPECT_EQ( pkt->headRoom(), 10u );
  EXPECT_EQ( pkt->dataBytes(), 60u );
  EXPECT_EQ( pkt->tailRoom(), 30u );
  Koi::U8 const * const start = pkt->data();
  pkt->frontIs( 10 );
  EXPECT_EQ( pkt->data(), start - 10 );
  EXPECT_EQ( pkt->headRoom(), 0u );
  pkt->dataBytesIs( 100 );
  EXPECT_EQ( pkt->tailRoom(), 0u );
  pkt->frontDel( 100 );
  EXPECT_EQ( pkt->dataBytes(), 0u );
  EXPECT_EQ( pkt->headRoom(), 100u );
}

TEST( Pkt, movesToALargerBufferWithoutHeadRoom ) {
  auto const pkt = Wirex::pktFactory( numbered( 60 ), 3 );
  pkt->frontIs( 4 );
  EXPECT_EQ( pkt->dataBytes(), 64u );
  EXPECT_EQ( pkt->headRoom() + pkt->tailRoom(), 0u );
  pkt->frontDel( 4 );
  EXPECT_EQ( bytesOf( *pkt ), numbered( 60 ) );
}

TEST( Pkt, editsOfOneAreNotSeenByAnotherOfTheSameBuffer ) {
  auto const edits =
      std::vector< void ( * )( Pkt & ) >{ []( Pkt & pkt ) { pkt.ownData()[0] = 0xff; },
                                          []( Pkt & pkt ) { pkt.number16Is( 12, 0xffff ); },
                                          []( Pkt & pkt ) { pkt.tagDel(); },
                                          []( Pkt & pkt ) {
                                            pkt.tagIs( { VlanTag::dot1Q, 0xffff } );
                                          },
                                          []( Pkt & pkt ) {
                                            pkt.frontDel( 4 );
                                            pkt.ownData()[0] = 0xff;
                                          },
                                          []( Pkt & pkt ) {
                                            pkt.frontIs( 4 );
                                            std::fill_n( pkt.ownData(), 4, Koi::U8{ 0xff } );
                                          },
                                          []( Pkt & pkt ) { pkt.dataBytesIs( 20 ); } };
  for( auto const edit : edits )
    for( bool const editsTheClone : { false, true } ) {
      auto const pkt = Wirex::pktFactory( numbered( 60 ) );
      pkt->separateVlanTagIs( { 0x88a8, 7 } );
      auto const clone = pkt->clone();
      EXPECT_EQ( clone->data(), pkt->data() );
      EXPECT_TRUE( pkt->isShared() && clone->isShared() );
      edit( editsTheClone ? *clone : *pkt );
      auto const & other = editsTheClone ? *pkt : *clone;
      EXPECT_EQ( bytesOf( other ), numbered( 60 ) );
      EXPECT_EQ( other.separateVlanTag(), ( VlanTag{ 0x88a8, 7 } ) );
      EXPECT_NE( bytesOf( editsTheClone ? *clone : *pkt ), numbered( 60 ) );
    }
}

TEST( Pkt, isEditedInPlaceWhenNobodySharesItAnyMore ) {
  auto const pkt = Wirex::pktFactory( numbered( 60 ) );
  Koi::U8 const * const start = pkt->data();
  pkt->clone();
  EXPECT_FALSE( pkt->isShared() );
  EXPECT_EQ( pkt->ownData(), start );
  pkt->tagIs( { VlanTag::dot1Q, 5 } );
  pkt->tagDel();
  EXPECT_EQ( pkt->data(), start );
}

TEST( Pkt, putsATagBeforeTheEtherTypeAndTakesItAway ) {
  for( std::size_t const headRoom : { 0u, 3u, 4u, 64u } ) {
    auto const pkt = Wirex::pktFactory( numbered( 60 ), headRoom );
    pkt->tagIs( { 0x88a8, 0x6123 } );
    Bytes expected = numbered( 60 );
    expected.insert( expected.begin() + 12, { 0x88, 0xa8, 0x61, 0x23 } );
    EXPECT_EQ( bytesOf( *pkt ), expected );
    EXPECT_EQ( pkt->ethType(), 0x88a8 );
    pkt->tagDel();
    EXPECT_EQ( bytesOf( *pkt ), numbered( 60 ) );
  }
}

TEST( Pkt, hasNoEtherTypeWhenItEndsBefore ) {
  EXPECT_EQ( Wirex::pktFactory( numbered( 13 ) )->ethType(), 0 );
  EXPECT_EQ( Wirex::pktFactory( numbered( 14 ) )->ethType(), 0x0c0d );
  EXPECT_EQ( Koi::Ptr< Pkt >( new Pkt )->ethType(), 0 );
}

TEST( Pkt, goesOutInOnePieceOrWithItsSeparateHeaderInItsPlace ) {
  auto const whole = []( Pkt const & pkt ) {
    PktIoVecs pieces;
    pieces.pktIs( pkt );
    Bytes bytes;
    for( unsigned i = 0; i < pieces.count(); ++i ) {
      auto const * const piece = static_cast< Koi::U8 const * >( pieces.first()[i].iov_base );
      bytes.insert( bytes.end(), piece, piece + pieces.first()[i].iov_len );
    }
    EXPECT_EQ( bytes.size(), pkt.wireBytes() );
    return bytes;
  };
  auto const pkt = Wirex::pktFactory( numbered( 60 ) );
  EXPECT_EQ( whole( *pkt ), numbered( 60 ) );
  pkt->separateVlanTagIs( { 0x8100, 0xe00a } );
  auto const twin = pkt->clone();
  twin->delSeparateVlanTag();
  twin->tagIs( { 0x8100, 0xe00a } );
  EXPECT_EQ( whole( *pkt ), bytesOf( *twin ) );
}

TEST( PktDeath, endsTheProcessWhenItsBytesLeaveTheBuffer ) {
  EXPECT_DEATH( new Pkt( PktBuffer::ofSize( 8 ), 9, 0 ),
                "assertion failed: ptrWithinRegion\\( data_, buffer_, size_ \\) \\(" );
  EXPECT_DEATH(
      new Pkt( PktBuffer::ofSize( 8 ), 4, 5 ),
      "assertion failed: ptrWithinRegion\\( data_ \\+ dataBytes_, buffer_, size_ \\) \\(" );
  auto const pkt = Wirex::pktFactory( numbered( 8 ) );
  EXPECT_DEATH( pkt->dataBytesIs( 9 ),
                "ptrWithinRegion\\( data_ \\+ dataBytes_, buffer_, size_ \\)" );
  EXPECT_DEATH( pkt->frontDel( 9 ), "numBytes <= dataBytes_" );
  EXPECT_DEATH( Koi::Ptr< Pkt >( new Pkt )->ownData(), "assertion failed: sharedBuffer_ != 0 \\(" );
  EXPECT_DEATH( Koi::Ptr< Pkt >( new Pkt )->frontIs( 1 ), "sharedBuffer_ != 0" );
  EXPECT_DEATH( PktIoVecs().first(), "assertion failed: firstIoVec_ != maxIovecs_ \\(" );
}

}  // namespace
