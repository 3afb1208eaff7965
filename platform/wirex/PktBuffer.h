// PktBuffer.h: the memory that the bytes of frames lie in. Several packets may have one buffer in
// common; the count of its references says whether they do. On one thread, as its packets are.
#pragma once

#include <cstddef>

#include <koi/Ptr.h>
#include <koi/Types.h>

namespace Wirex {

class KOI_PUBLIC PktBuffer final : public Koi::PtrInterface {
 public:
  /// A buffer of that many bytes, whose contents are anything. Raises std::bad_alloc.
  static Koi::Ptr< PktBuffer > ofSize( std::size_t size );

  Koi::U8 * bytes() { return reinterpret_cast< Koi::U8 * >( this + 1 ); }
  std::size_t size() const { return size_; }

 private:
  explicit PktBuffer( std::size_t size ) : size_( size ) {}
  ~PktBuffer() = default;
  void handleZeroRef() const override;

  std::size_t const size_;  // the bytes lie behind it
};

}  // namespace Wirex
