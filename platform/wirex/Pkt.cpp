#include <wirex/Pkt.h>

#include <algorithm>
#include <cstring>
#include <functional>
#include <utility>

namespace Wirex {
namespace {

/// Whether it points to a byte of the region, or right behind it.
bool ptrWithinRegion( Koi::U8 const * at, Koi::U8 const * region, std::size_t size ) {
  std::less_equal<> const notBehind;
  return notBehind( region, at ) && notBehind( at, region + size );
}

void copyBytes( Koi::U8 * to, std::span< Koi::U8 const > bytes ) {
  if( !bytes.empty() )
    std::memcpy( to, bytes.data(), bytes.size() );
}

}  // namespace

Pkt::Pkt( Koi::Ptr< PktBuffer > buffer, std::size_t headRoom, std::size_t dataBytes )
    : sharedBuffer_( std::move( buffer ) ), dataBytes_( dataBytes ) {
  KOI_ASSERT( sharedBuffer_ != 0 );
  buffer_ = sharedBuffer_->bytes();
  size_ = sharedBuffer_->size();
  data_ = buffer_ + headRoom;
  check();
}

void Pkt::check() const {
  KOI_ASSERT( ptrWithinRegion( data_, buffer_, size_ ) );
  KOI_ASSERT( ptrWithinRegion( data_ + dataBytes_, buffer_, size_ ) );
}

Koi::Ptr< Pkt > Pkt::clone() const {
  Koi::Ptr< Pkt > const twin( sharedBuffer_ ? new Pkt( sharedBuffer_, headRoom(), dataBytes_ )
                                            : new Pkt );
  twin->tag_ = tag_;
  twin->hasTag_ = hasTag_;
  return twin;
}

void Pkt::moveTo( Koi::Ptr< PktBuffer > buffer, std::size_t headRoom ) {
  copyBytes( buffer->bytes() + headRoom, bytes() );
  sharedBuffer_ = std::move( buffer );
  buffer_ = sharedBuffer_->bytes();
  size_ = sharedBuffer_->size();
  data_ = buffer_ + headRoom;
}

Koi::U8 * Pkt::ownData() {
  KOI_ASSERT( sharedBuffer_ != 0 );
  if( isShared() )
    moveTo( PktBuffer::ofSize( size_ ), headRoom() );
  return data_;
}

void Pkt::frontDel( std::size_t numBytes ) {
  KOI_ASSERT( numBytes <= dataBytes_ );
  data_ += numBytes;
  dataBytes_ -= numBytes;
  check();
}

void Pkt::frontIs( std::size_t numBytes ) {
  KOI_ASSERT( sharedBuffer_ != 0 );
  if( isShared() || headRoom() < numBytes )
    moveTo( PktBuffer::ofSize( numBytes + dataBytes_ ), numBytes );
  data_ -= numBytes;
  dataBytes_ += numBytes;
  check();
}

void Pkt::dataBytesIs( std::size_t numBytes ) {
  KOI_ASSERT( sharedBuffer_ != 0 );
  dataBytes_ = numBytes;
  check();
}

void Pkt::number16Is( std::size_t offset, Koi::U16 number ) {
  Koi::U8 * const at = ownData() + offset;
  at[0] = static_cast< Koi::U8 >( number >> 8 );
  at[1] = static_cast< Koi::U8 >( number );
}

void Pkt::tagIs( VlanTag const & tag ) {
  frontIs( VlanTag::bytes );
  std::memmove( data_, data_ + VlanTag::bytes, addressBytes );
  number16Is( addressBytes, tag.tpid );
  number16Is( headerBytes, tag.tci );
}

void Pkt::tagDel() {
  Koi::U8 * const at = ownData();
  std::memmove( at + VlanTag::bytes, at, addressBytes );
  frontDel( VlanTag::bytes );
}

Koi::Ptr< Pkt > pktFactory( std::span< Koi::U8 const > bytes, std::size_t headRoom ) {
  Koi::Ptr< PktBuffer > const buffer = PktBuffer::ofSize( headRoom + bytes.size() );
  copyBytes( buffer->bytes() + headRoom, bytes );
  return new Pkt( buffer, headRoom, bytes.size() );
}

}  // namespace Wirex
