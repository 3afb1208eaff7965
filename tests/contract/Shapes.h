// Shapes.h: one value of every shape that a model can declare, written as generated code would be,
// so that the suites meet all of them whatever the library's own models hold today. Tests only.
#pragma once

#include <koi/Value.h>
#include <wirex/EthAddr.h>
#include <wirex/IntfId.h>

namespace Shapes {

/// Every signed number.
class Offset : public Koi::Wrapped< Offset, Koi::I32 > {
 public:
  using Wrapped::Wrapped;
  static constexpr char koiName[] = "Shapes::Offset";
  static constexpr char koiField[] = "value";
  static Koi::KoiType const _koiType;
};

/// A range that reaches below zero.
class Level : public Koi::Wrapped< Level, Koi::I32 > {
 public:
  using Wrapped::Wrapped;
  static constexpr char koiName[] = "Shapes::Level";
  static constexpr char koiField[] = "value";
  static constexpr Koi::Range< Koi::I32 > koiRange{ -10, 10,
                                                    "Level::value < -10 or > 10 not allowed" };
  static Koi::KoiType const _koiType;
};

/// Two blocks of a hash.
class Serial : public Koi::Wrapped< Serial, Koi::U64 > {
 public:
  using Wrapped::Wrapped;
  static constexpr char koiName[] = "Shapes::Serial";
  static constexpr char koiField[] = "value";
  static Koi::KoiType const _koiType;
};

/// A range as wide as its primitive but for 0.
class Octet : public Koi::Wrapped< Octet, Koi::U8 > {
 public:
  using Wrapped::Wrapped;
  static constexpr char koiName[] = "Shapes::Octet";
  static constexpr char koiField[] = "value";
  static constexpr Koi::Range< Koi::U8 > koiRange{ 1, 255, "Octet::value <= 0 not allowed" };
  static Koi::KoiType const _koiType;
};

/// Bounds that are named constants.
class PortNumber : public Koi::Wrapped< PortNumber, Koi::U16 > {
 public:
  using Wrapped::Wrapped;
  static constexpr Koi::U16 min = 16;
  static constexpr Koi::U16 max = 4094;
  static constexpr char koiName[] = "Shapes::PortNumber";
  static constexpr char koiField[] = "number";
  static constexpr Koi::Range< Koi::U16 > koiRange{
      min, max, "PortNumber::number < PortNumber::min or > PortNumber::max not allowed" };
  static Koi::KoiType const _koiType;
};

/// A single-field type without hash().
class Tag : public Koi::Wrapped< Tag, Koi::U16 > {
 public:
  using Wrapped::Wrapped;
  static constexpr char koiName[] = "Shapes::Tag";
  static constexpr char koiField[] = "value";
  static constexpr bool koiUnhashed = true;
  static Koi::KoiType const _koiType;
};

/// A string of limited length.
class Label : public Koi::Wrapped< Label, Koi::String8 > {
 public:
  using Wrapped::Wrapped;
  static constexpr char koiName[] = "Shapes::Label";
  static constexpr char koiField[] = "bytes";
  static constexpr Koi::StringLimit koiRange{ 10, "Label::bytes > 10 not allowed" };
  static Koi::KoiType const _koiType;
};

/// A time, which has fractions.
class Delay : public Koi::Wrapped< Delay, Koi::Seconds > {
 public:
  using Wrapped::Wrapped;
  static constexpr char koiName[] = "Shapes::Delay";
  static constexpr char koiField[] = "value";
  static Koi::KoiType const _koiType;
};

/// Numbers that do not count from 0.
enum Colour : Koi::U32 { red = 5, green, blue = 9 };
KOI_ENUM( Colour );

/// Narrow fields round a wide one: five bytes of them behind the block.
class Narrow : public Koi::OrderedStructure< Narrow > {
 public:
  Narrow() = default;
  Narrow( Koi::U8 a, Koi::U16 b, bool c, Koi::U32 d, Koi::U8 e )
      : _a( a ), _b( b ), _c( c ), _d( d ), _e( e ) {}
  Narrow( Koi::String8::IteratorConst & it, Koi::String8::IteratorConst const & end ) {
    koiParse( it, end );
  }
  Narrow( Koi::NboAttrLog::In * in, Koi::StreamBogon ) { koiRead( in ); }
  static constexpr char koiName[] = "Shapes::Narrow";
  static constexpr auto koiFields() {
    return std::tuple{ Koi::field( "a", &Narrow::_a ), Koi::field( "b", &Narrow::_b ),
                       Koi::field( "c", &Narrow::_c ), Koi::field( "d", &Narrow::_d ),
                       Koi::field( "e", &Narrow::_e ) };
  }
  static Koi::KoiType const _koiType;

 private:
  Koi::U8 _a{};
  Koi::U16 _b{};
  bool _c{};
  Koi::U32 _d{};
  Koi::U8 _e{};
};

/// Nested values of each kind, and strings, in order.
class Deep : public Koi::OrderedStructure< Deep > {
 public:
  Deep() = default;
  static constexpr char koiName[] = "Shapes::Deep";
  static constexpr auto koiFields() {
    return std::tuple{ Koi::field( "label", &Deep::_label ), Koi::field( "level", &Deep::_level ),
                       Koi::field( "text", &Deep::_text ),   Koi::field( "narrow", &Deep::_narrow ),
                       Koi::field( "addr", &Deep::_addr ),   Koi::field( "intf", &Deep::_intf ) };
  }
  static Koi::KoiType const _koiType;

 private:
  Label _label{};
  Level _level{};
  Koi::String8 _text{};
  Narrow _narrow{};
  Wirex::EthAddr _addr{};
  Wirex::IntfId _intf{};
};

/// More fields than a constructor's argument list holds in line, of every primitive; no order.
class Wide : public Koi::Structure< Wide > {
 public:
  Wide() = default;
  explicit Wide( Koi::U8 octet ) : _octet( octet ) {}
  Koi::U8 octet() const { return _octet; }
  Koi::Seconds when() const { return when_; }
  void whenIs( Koi::Seconds v ) { when_ = v; }
  void nameIs( Koi::Name const & v ) { name_ = v; }
  static constexpr char koiName[] = "Shapes::Wide";
  static constexpr auto koiFields() {
    return std::tuple{
        Koi::field( "octet", &Wide::_octet ),   Koi::field( "serial", &Wide::_serial ),
        Koi::field( "offset", &Wide::_offset ), Koi::field( "flag", &Wide::_flag ),
        Koi::field( "when", &Wide::when_ ),     Koi::field( "name", &Wide::name_ ),
        Koi::field( "colour", &Wide::_colour ), Koi::field( "delay", &Wide::_delay ),
        Koi::field( "tag", &Wide::_tag ),       Koi::field( "port", &Wide::_port ) };
  }
  static Koi::KoiType const _koiType;

 private:
  Koi::U8 _octet{};
  Koi::U64 _serial{};
  Koi::I32 _offset{};
  bool _flag{};
  Koi::Seconds when_{};
  Koi::Name name_{};
  Colour _colour{};
  Delay _delay{};
  Tag _tag{};
  PortNumber _port{};
};

/// A field whose zero is admitted although its type refuses it, and two that have the type's range.
class OrZero : public Koi::OrderedStructure< OrZero > {
 public:
  OrZero() = default;
  static constexpr char koiName[] = "Shapes::OrZero";
  static constexpr auto koiFields() {
    return std::tuple{ Koi::field( "first", &OrZero::_first ),
                       Koi::fieldOrZero( "orZero", &OrZero::_orZero ),
                       Koi::field( "last", &OrZero::_last ) };
  }
  static Koi::KoiType const _koiType;

 private:
  PortNumber _first{};
  PortNumber _orZero{};
  Octet _last{};
};

/// A structure without hash(), and one that has none because of it.
class Plain : public Koi::Structure< Plain > {
 public:
  Plain() = default;
  static constexpr char koiName[] = "Shapes::Plain";
  static constexpr bool koiUnhashed = true;
  static constexpr auto koiFields() { return std::tuple{ Koi::field( "tag", &Plain::_tag ) }; }
  static Koi::KoiType const _koiType;

 private:
  Tag _tag{};
};

class HoldsPlain : public Koi::Structure< HoldsPlain > {
 public:
  HoldsPlain() = default;
  static constexpr char koiName[] = "Shapes::HoldsPlain";
  static constexpr auto koiFields() {
    return std::tuple{ Koi::field( "number", &HoldsPlain::_number ),
                       Koi::field( "plain", &HoldsPlain::_plain ) };
  }
  static Koi::KoiType const _koiType;

 private:
  Koi::U8 _number{};
  Plain _plain{};
};

}  // namespace Shapes
