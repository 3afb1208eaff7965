// PcapFile.h: writes captures for tests, byte by byte: pcap and pcapng, both byte orders, micro-
// and nanoseconds.
//
// It knows the two formats on its own and shares no code with the reader under test.
#pragma once

#include <bit>
#include <cstdint>
#include <string>
#include <string_view>

namespace TestSupport {

/// How a capture is written.
struct PcapStyle {
  bool pcapng = false;
  std::endian order = std::endian::little;
  bool nano = false;
};

/// A capture in the making.
class PcapFile {
 public:
  explicit PcapFile( PcapStyle style = {}, std::uint32_t linkType = 1 ) : style_( style ) {
    if( !style_.pcapng ) {
      u32( style_.nano ? 0xa1b23c4d : 0xa1b2c3d4 );
      u16( 2 ), u16( 4 );  // version
      u32( 0 ), u32( 0 );  // time zone, accuracy: always 0
      u32( snapLength ), u32( linkType );
      return;
    }
    u32( 0x0a0d0d0a ), u32( 28 );  // section header
    u32( 0x1a2b3c4d ), u16( 1 ), u16( 0 );
    u32( 0xffffffff ), u32( 0xffffffff );  // section length: not said
    u32( 28 );
    interfaceIs( linkType );
  }

  /// Adds an interface (pcapng only; the first one is there from the start).
  PcapFile & interfaceIs( std::uint32_t linkType ) {
    u32( 1 ), u32( 32 );
    u16( static_cast< std::uint16_t >( linkType ) ), u16( 0 ), u32( snapLength );
    u16( 9 ), u16( 1 );  // option if_tsresol, one byte and three of padding
    bytes_ += static_cast< char >( style_.nano ? 9 : 6 );
    bytes_.append( 3, '\0' );
    u16( 0 ), u16( 0 );  // end of options
    u32( 32 );
    return *this;
  }

  /// Adds a frame at seconds + fraction (in units of the style); wireLength 0 means as captured.
  PcapFile & frame( std::int64_t seconds, std::uint32_t fraction, std::string_view data,
                    std::uint32_t wireLength = 0 ) {
    auto const size = static_cast< std::uint32_t >( data.size() );
    std::uint32_t const onWire = wireLength ? wireLength : size;
    if( !style_.pcapng ) {
      u32( static_cast< std::uint32_t >( seconds ) ), u32( fraction ), u32( size ), u32( onWire );
      bytes_ += data;
      return *this;
    }
    std::uint32_t const padding = ( 4 - size % 4 ) % 4;
    auto const ticks =
        static_cast< std::uint64_t >( seconds ) * ( style_.nano ? 1'000'000'000 : 1'000'000 ) +
        fraction;
    u32( 6 ), u32( 32 + size + padding ), u32( 0 );
    u32( static_cast< std::uint32_t >( ticks >> 32 ) ),
        u32( static_cast< std::uint32_t >( ticks ) );
    u32( size ), u32( onWire );
    bytes_ += data;
    bytes_.append( padding, '\0' );
    u32( 32 + size + padding );
    return *this;
  }

  std::string const & bytes() const { return bytes_; }

 private:
  static constexpr std::uint32_t snapLength = 65535;

  void u16( std::uint16_t v ) { number( v, 2 ); }
  void u32( std::uint32_t v ) { number( v, 4 ); }
  void number( std::uint32_t v, int size ) {
    for( int i = 0; i < size; ++i ) {
      int const place = style_.order == std::endian::little ? i : size - 1 - i;
      bytes_ += static_cast< char >( v >> ( 8 * place ) );
    }
  }

  PcapStyle const style_;
  std::string bytes_;
};

}  // namespace TestSupport
