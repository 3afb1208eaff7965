// PktBuffer.h: the memory that the bytes of frames lie in. Several packets may have one buffer in
// common; the count of its references says whether they do. On one thread, as its packets are.
#pragma once

#include <cstddef>
#include <vector>

#include <koi/Ptr.h>
#include <koi/Types.h>

namespace Wirex {

class PktBufferPool;

class KOI_PUBLIC PktBuffer final : public Koi::PtrInterface {
 public:
  /// A buffer of that many bytes, whose contents are anything. Raises std::bad_alloc.
  static Koi::Ptr< PktBuffer > ofSize( std::size_t size );

  Koi::U8 * bytes() { return reinterpret_cast< Koi::U8 * >( this + 1 ); }
  std::size_t size() const { return size_; }

 private:
  friend class PktBufferPool;

  explicit PktBuffer( std::size_t size ) : size_( size ) {}
  ~PktBuffer() = default;
  void handleZeroRef() const override;
  void destroy();

  std::size_t const size_;          // the bytes lie behind it
  Koi::Ptr< PktBufferPool > pool_;  // where it goes when nobody has it; null: away
};

/// Buffers of one size, for who needs them over and over: those that nobody has any more are kept,
/// up to a number, and handed out again.
class KOI_PUBLIC PktBufferPool final : public Koi::PtrInterface {
 public:
  static constexpr std::size_t keptMost = 1024;

  explicit PktBufferPool( std::size_t size ) : size_( size ) {}

  std::size_t size() const { return size_; }
  /// A buffer whose contents are anything. Raises std::bad_alloc.
  Koi::Ptr< PktBuffer > buffer();

 private:
  friend class PktBuffer;

  ~PktBufferPool();
  void handleZeroRef() const override { delete this; }

  std::size_t const size_;
  std::vector< PktBuffer * > kept_;  // of no references
};

}  // namespace Wirex
