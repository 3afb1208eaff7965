// EthAddr.h: a 48-bit MAC address. Any program may use it, on any thread.
//
// Its text is aa:bb:cc:dd:ee:ff, lower case, nothing shorter; its log form is the six bytes as they
// stand on the wire; addresses sort by their bytes, as unsigned numbers, the first byte first.
#pragma once

#include <array>
#include <compare>
#include <cstring>

#include <koi/Value.h>

namespace Wirex {

class KOI_PUBLIC EthAddr : public Koi::HandWritten< EthAddr > {
 public:
  /// The address of all zeros, which no station has.
  constexpr EthAddr() = default;

  constexpr EthAddr( Koi::U8 a, Koi::U8 b, Koi::U8 c, Koi::U8 d, Koi::U8 e, Koi::U8 f )
      : bytes_{ a, b, c, d, e, f } {}

  /// The address of that text. Refuses any other text with a ParseException "a MAC address was
  /// expected at '<text>'", or "'<rest>' is left over".
  explicit EthAddr( Koi::String8 const & text );

  EthAddr( Koi::String8::IteratorConst & it, Koi::String8::IteratorConst const & end )
      : EthAddr( koiParsed( it, end ) ) {}
  EthAddr( Koi::NboAttrLog::In * in, Koi::StreamBogon ) { koiRead( in ); }

  /// The address in six bytes of a frame.
  static constexpr EthAddr ofBytes( Koi::U8 const * at ) {
    return { at[0], at[1], at[2], at[3], at[4], at[5] };
  }

  constexpr std::array< Koi::U8, 6 > const & bytes() const { return bytes_; }

  constexpr bool isZero() const { return bytes_ == std::array< Koi::U8, 6 >{}; }

  /// Does it name a group of stations? Broadcast is one.
  constexpr bool isMulticast() const { return ( bytes_[0] & 1 ) != 0; }

  constexpr bool isBroadcast() const {
    return bytes_ == std::array< Koi::U8, 6 >{ 0xff, 0xff, 0xff, 0xff, 0xff, 0xff };
  }

  /// The canonical text.
  Koi::String8 stringValue() const;

  /// MurmurHash3 of the six bytes.
  Koi::U32 hash() const { return Koi::hashOfBytes( bytes_.data(), bytes_.size() ); }

  friend constexpr bool operator==( EthAddr const & a, EthAddr const & b ) {
    return a.number() == b.number();
  }
  friend constexpr std::strong_ordering operator<=>( EthAddr const & a, EthAddr const & b ) {
    return a.number() <=> b.number();
  }

  static constexpr char koiName[] = "Wirex::EthAddr";
  static constexpr std::size_t koiLogSize = 6;
  Koi::U8 * koiStore( Koi::U8 * at ) const {
    std::memcpy( at, bytes_.data(), bytes_.size() );
    return at + bytes_.size();
  }
  static EthAddr koiLoad( Koi::U8 const * at ) { return ofBytes( at ); }
  Koi::String8 koiText() const { return stringValue(); }
  static EthAddr koiParsed( Koi::String8::IteratorConst & it,
                            Koi::String8::IteratorConst const & end );
  static Koi::KoiType const _koiType;

 private:
  /// Sorts as the bytes do. In two words, which compilers load whole.
  constexpr Koi::U64 number() const {
    Koi::U32 const high = Koi::U32{ bytes_[0] } << 24 | Koi::U32{ bytes_[1] } << 16 |
                          Koi::U32{ bytes_[2] } << 8 | bytes_[3];
    Koi::U32 const low = Koi::U32{ bytes_[4] } << 8 | bytes_[5];
    return Koi::U64{ high } << 16 | low;
  }

  std::array< Koi::U8, 6 > bytes_{};
};

}  // namespace Wirex

namespace _koi_Wirex_EthAddr {
using GenericIf_ = Koi::GenericValue< Wirex::EthAddr >;
}
