#include <wirex/PktBuffer.h>

#include <new>
#include <utility>

#include <koi/AllocTrack.h>

namespace Wirex {

Koi::Ptr< PktBuffer > PktBuffer::ofSize( std::size_t size ) {
  void * const memory = koiMemAlloc( sizeof( PktBuffer ) + size, Koi::allocTrack< PktBuffer >() );
  return new( memory ) PktBuffer( size );
}

void PktBuffer::handleZeroRef() const {
  auto * const self = const_cast< PktBuffer * >( this );
  Koi::Ptr< PktBufferPool > const pool = std::move( self->pool_ );
  if( pool && pool->kept_.size() < PktBufferPool::keptMost )
    pool->kept_.push_back( self );
  else
    self->destroy();
}

void PktBuffer::destroy() {
  std::size_t const whole = sizeof( PktBuffer ) + size_;
  this->~PktBuffer();
  koiMemFree( this, whole, Koi::allocTrack< PktBuffer >() );
}

Koi::Ptr< PktBuffer > PktBufferPool::buffer() {
  Koi::Ptr< PktBuffer > buffer;
  if( kept_.empty() ) {
    kept_.reserve( keptMost );  // giving one back never fails
    buffer = PktBuffer::ofSize( size_ );
  } else {
    buffer = kept_.back();
    kept_.pop_back();
  }
  buffer->pool_ = this;
  return buffer;
}

PktBufferPool::~PktBufferPool() {
  for( auto * buffer : kept_ )
    buffer->destroy();
}

}  // namespace Wirex
