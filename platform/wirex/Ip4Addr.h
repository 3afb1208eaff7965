// Ip4Addr.h: an IPv4 address, its bytes as they stand on the wire. Any program may use it, on any
// thread.
//
// Its text is the decimal number that the bytes make, the first one the most significant (192.0.2.1
// is 3221225985); its log form is the four bytes.
#pragma once

#include <algorithm>
#include <array>
#include <compare>

#include <koi/Value.h>

namespace Wirex {

class KOI_PUBLIC Ip4Addr : public Koi::HandWritten< Ip4Addr > {
 public:
  /// 0.0.0.0, which no station has.
  constexpr Ip4Addr() = default;

  constexpr Ip4Addr( Koi::U8 a, Koi::U8 b, Koi::U8 c, Koi::U8 d ) : bytes_{ a, b, c, d } {}

  Ip4Addr( Koi::String8::IteratorConst & it, Koi::String8::IteratorConst const & end )
      : Ip4Addr( koiParsed( it, end ) ) {}
  Ip4Addr( Koi::NboAttrLog::In * in, Koi::StreamBogon ) { koiRead( in ); }

  constexpr std::array< Koi::U8, 4 > const & bytes() const { return bytes_; }

  /// The number that the bytes make, the first one the most significant.
  constexpr Koi::U32 number() const {
    return Koi::U32{ bytes_[0] } << 24 | Koi::U32{ bytes_[1] } << 16 | Koi::U32{ bytes_[2] } << 8 |
           bytes_[3];
  }
  /// The address of that number.
  static constexpr Ip4Addr ofNumber( Koi::U32 number ) {
    return { static_cast< Koi::U8 >( number >> 24 ), static_cast< Koi::U8 >( number >> 16 ),
             static_cast< Koi::U8 >( number >> 8 ), static_cast< Koi::U8 >( number ) };
  }

  /// MurmurHash3 of the four bytes.
  Koi::U32 hash() const { return Koi::hashOfBytes( bytes_.data(), bytes_.size() ); }

  friend constexpr bool operator==( Ip4Addr const & a, Ip4Addr const & b ) {
    return a.bytes_ == b.bytes_;
  }
  /// By the bytes, as unsigned numbers, the first byte first.
  friend constexpr std::strong_ordering operator<=>( Ip4Addr const & a, Ip4Addr const & b ) {
    return a.number() <=> b.number();
  }

  static constexpr char koiName[] = "Wirex::Ip4Addr";
  static constexpr std::size_t koiLogSize = 4;
  Koi::U8 * koiStore( Koi::U8 * at ) const { return std::copy( bytes_.begin(), bytes_.end(), at ); }
  static Ip4Addr koiLoad( Koi::U8 const * at ) { return { at[0], at[1], at[2], at[3] }; }
  Koi::String8 koiText() const { return Koi::valueToStrep( number() ); }
  /// Raises ParseException, and RangeException for more than 32 bits.
  static Ip4Addr koiParsed( Koi::String8::IteratorConst & it,
                            Koi::String8::IteratorConst const & end ) {
    return ofNumber( Koi::valueFromText< Koi::U32 >( it, end ) );
  }
  static Koi::KoiType const _koiType;

 private:
  std::array< Koi::U8, 4 > bytes_{};
};

}  // namespace Wirex

namespace _koi_Wirex_Ip4Addr {
using GenericIf_ = Koi::GenericValue< Wirex::Ip4Addr >;
}
