// IntfId.h: the identifier of an interface: 64 bits, one to one with a name. Any program may use
// it, on any thread.
//
// The word, from the highest bit (docs/interface-names.md draws every kind):
//
//     63-32  part 0     the number of a sub-interface; VLAN and connector type of a pseudowire
//     31-25  type       GenericIntfId names the numbers
//     24-0   part 1     the place or number within the type; for port-channels bits 24-16 are the
//                       sub-type and part 1 is the 16 bits below
//
// I1  Every identifier prints to exactly one name, and that name reads as exactly this identifier.
// I2  The zero identifier is the empty name: no interface.
#pragma once

#include <compare>

#include <koi/Value.h>

namespace Wirex {

class KOI_PUBLIC IntfId : public Koi::HandWritten< IntfId > {
 public:
  /// No interface.
  constexpr IntfId() = default;

  /// The identifier of that number; every number is one.
  explicit constexpr IntfId( Koi::U64 value ) : value_( value ) {}

  /// The interface of that name; refuses what handleInitialized() refuses.
  explicit IntfId( Koi::String8 const & name ) { handleInitialized( name ); }

  IntfId( Koi::String8::IteratorConst & it, Koi::String8::IteratorConst const & end )
      : IntfId( koiParsed( it, end ) ) {}
  IntfId( Koi::NboAttrLog::In * in, Koi::StreamBogon ) { koiRead( in ); }

  constexpr Koi::U64 value() const { return value_; }

  /// The name.
  Koi::String8 stringValue() const;

  /// Becomes the interface of that name. Refuses a name that no interface has with a ParseException
  /// ("Interface name 'eth': a number was expected at the end") and a number that is too small or
  /// too large for its place with a RangeException ("Interface name 'eth0': port < 1 or > 1023 not
  /// allowed"); it is unchanged then.
  void handleInitialized( Koi::String8 const & name );

  /// Two blocks, the low word first.
  constexpr Koi::U32 hash() const {
    Koi::HashStream stream;
    stream.block( static_cast< Koi::U32 >( value_ ) );
    stream.block( static_cast< Koi::U32 >( value_ >> 32 ) );
    return stream.finish();
  }

  /// By number: sub-interfaces come after all interfaces without one.
  friend constexpr bool operator==( IntfId const & a, IntfId const & b ) {
    return a.value_ == b.value_;
  }
  friend constexpr std::strong_ordering operator<=>( IntfId const & a, IntfId const & b ) {
    return a.value_ <=> b.value_;
  }

  static constexpr char koiName[] = "Wirex::IntfId";
  static constexpr std::size_t koiLogSize = 8;
  Koi::U8 * koiStore( Koi::U8 * at ) const { return Koi::storeBig( at, value_ ); }
  static IntfId koiLoad( Koi::U8 const * at ) { return IntfId( Koi::loadBig< Koi::U64 >( at ) ); }
  /// The name as a string's text: in single quotes.
  Koi::String8 koiText() const;
  static IntfId koiParsed( Koi::String8::IteratorConst & it,
                           Koi::String8::IteratorConst const & end );
  static Koi::KoiType const _koiType;

 private:
  Koi::U64 value_ = 0;
};

}  // namespace Wirex

namespace _koi_Wirex_IntfId {
using GenericIf_ = Koi::GenericValue< Wirex::IntfId >;
}
