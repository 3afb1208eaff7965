// NboAttrLog.h: the attribute log's bytes, in network byte order. One thread at a time.
//
// Out is one flat buffer that whoever sends it sees whole; In reads one and believes nothing: a
// number that is cut off, a bool that is neither 0 nor 1, a string longer than what is left are
// refused before anything is allocated.
#pragma once

#include <bit>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string_view>

#include <koi/Export.h>
#include <koi/Ptr.h>
#include <koi/String8.h>
#include <koi/Types.h>

namespace Koi {

/// Tells the constructor that reads a value from a log from all others.
struct StreamBogon {};

/// The number with its bytes turned round, or as it is where the machine is big-endian.
template< class Number >
constexpr Number networkOrder( Number n ) {
  if constexpr( std::endian::native == std::endian::big || sizeof n == 1 )
    return n;
  else if constexpr( sizeof n == 2 )
    return __builtin_bswap16( n );
  else if constexpr( sizeof n == 4 )
    return __builtin_bswap32( n );
  else
    return __builtin_bswap64( n );
}

/// Stores a number at `at`, most significant byte first; returns the place behind it.
template< class Number >
U8 * storeBig( U8 * at, Number n ) {
  n = networkOrder( n );
  std::memcpy( at, &n, sizeof n );
  return at + sizeof n;
}

/// The number that stands at `at`, most significant byte first.
template< class Number >
Number loadBig( U8 const * at ) {
  Number n;
  std::memcpy( &n, at, sizeof n );
  return networkOrder( n );
}

class NboAttrLog {
 public:
  /// No string in a log is longer, in bytes.
  static constexpr std::size_t maxStringSize = 16 * 1024 * 1024;

  class Out;
  class In;
};

/// What is written. Values append themselves: `*out << value` through a Ptr< NboAttrLog::Out >.
class KOI_PUBLIC NboAttrLog::Out final : public PtrInterface {
 public:
  Out() = default;

  U8 const * data() const { return data_.get(); }
  /// In bytes.
  std::size_t size() const { return size_; }
  /// Forgets all bytes behind the first `size` and keeps the room.
  void cut( std::size_t size ) {
    KOI_ASSERT( size <= size_ );
    size_ = size;
  }
  /// Makes room for that many bytes in all.
  void reserve( std::size_t capacity ) {
    if( capacity > capacity_ )
      grow( capacity );
  }

  /// Room for n bytes, which the caller fills; they count as written.
  U8 * room( std::size_t n ) {
    if( n > capacity_ - size_ )
      grow( size_ + n );
    U8 * at = data_.get() + size_;
    size_ += n;
    return at;
  }
  /// The string encoding: its length in 32 bits, then its bytes. Raises RangeException
  /// "attribute log: a string of more than 16777216 bytes" and writes nothing.
  void string( std::string_view bytes );

 private:
  struct Free {
    void operator()( U8 * bytes ) const { std::free( bytes ); }
  };
  ~Out() = default;
  void handleZeroRef() const override { delete this; }
  void grow( std::size_t capacity );

  std::unique_ptr< U8, Free > data_;
  std::size_t size_ = 0;
  std::size_t capacity_ = 0;
};

/// What is read: bytes that stay the caller's. Everything refused is a ParseException that begins
/// "attribute log: " and says where; the position then stays at the start of what was refused.
class KOI_PUBLIC NboAttrLog::In final {
 public:
  In( void const * data, std::size_t size )
      : begin_( static_cast< U8 const * >( data ) ), at_( begin_ ), end_( begin_ + size ) {}

  /// How many bytes are left.
  std::size_t left() const { return static_cast< std::size_t >( end_ - at_ ); }

  U8 nextU8() { return *take( 1 ); }
  U16 nextU16() { return loadBig< U16 >( take( 2 ) ); }
  U32 nextU32() { return loadBig< U32 >( take( 4 ) ); }
  U64 nextU64() { return loadBig< U64 >( take( 8 ) ); }
  Seconds nextSeconds() { return std::bit_cast< Seconds >( nextU64() ); }
  bool nextbool();
  String8 nextString();

  /// The next n bytes; steps over them.
  U8 const * take( std::size_t n ) {
    if( n > left() )
      refuseShort( n );
    U8 const * at = at_;
    at_ += n;
    return at;
  }

 private:
  [[noreturn]] void refuse( std::string const & what ) const;
  [[noreturn]] void refuseShort( std::size_t wanted ) const;

  U8 const * begin_;
  U8 const * at_;
  U8 const * end_;
};

/// The reading end as connections call it.
namespace ByteConnection {
using In = NboAttrLog::In;
}

}  // namespace Koi
