// Frame.h: what the first bytes of an Ethernet frame say: how it is tagged, and who sent it.
//
// Pure functions of the bytes; any thread.
//
//     0  destination  6
//     6  source       6
//    12  type         2  the tags' type, or that of an untagged frame
//    14  TCI          2  only behind the tags' type: priority, drop bit, VLAN
//    16  type         2  only behind a tag; may be that of another tag
#pragma once

#include <Lumo/Bridging.h>

#include <optional>
#include <span>

namespace Frames {

/// The address that a frame comes from, as a number: its first byte is the highest of six.
using AddressNumber = Koi::U64;

constexpr unsigned customerTagType = 0x8100;
constexpr unsigned serviceTagType = 0x88a8;

/// The outermost tag of a frame.
struct FrameTag {
  Bridging::VlanTagFormat format;
  Koi::U16 vid;  // 0 to 4095; 0 without a tag, and with one that carries a priority only
};

constexpr unsigned number16( Koi::U8 const * at ) { return at[0] << 8 | at[1]; }

/// How a frame of these captured bytes is tagged on a port whose tags have that type; 0: it knows
/// none. None when the bytes end before the header and the tag do. A second tag may have the
/// port's type, 0x8100 or 0x88a8.
inline std::optional< FrameTag > tagOf( std::span< Koi::U8 const > frame, unsigned tagType ) {
  constexpr std::size_t typeOffset = 12, untaggedSize = 14, innerOffset = 16, taggedSize = 18;
  if( frame.size() < untaggedSize )
    return std::nullopt;
  if( tagType == 0 || number16( &frame[typeOffset] ) != tagType )
    return FrameTag{ Bridging::untagged, 0 };
  if( frame.size() < taggedSize )
    return std::nullopt;
  auto const vid = static_cast< Koi::U16 >( number16( &frame[untaggedSize] ) & 0xfff );
  unsigned const inner = number16( &frame[innerOffset] );
  bool const isDouble = inner == tagType || inner == customerTagType || inner == serviceTagType;
  return FrameTag{ vid == 0   ? Bridging::priority
                   : isDouble ? Bridging::doubleTagged
                              : Bridging::singleTagged,
                   vid };
}

/// Who sent a frame of at least 12 bytes.
inline AddressNumber sourceOf( std::span< Koi::U8 const > frame ) {
  Koi::U8 const * const at = &frame[6];
  return Koi::U64{ number16( at ) } << 32 | Koi::U64{ number16( at + 2 ) } << 16 |
         number16( at + 4 );
}

/// Whether it is that of a group.
constexpr bool isGroup( AddressNumber address ) { return ( address >> 40 & 1 ) != 0; }

/// For whom a frame is.
enum Audience : unsigned { unicast, multicast, broadcast };

/// For whom a frame of at least 6 bytes is.
inline Audience audienceOf( std::span< Koi::U8 const > frame ) {
  if( ( frame[0] & 1 ) == 0 )
    return unicast;
  for( Koi::U8 const byte : frame.first( 6 ) )
    if( byte != 0xff )
      return multicast;
  return broadcast;
}

constexpr AddressNumber numberOf( Wirex::EthAddr const & address ) {
  AddressNumber number = 0;
  for( Koi::U8 const byte : address.bytes() )
    number = number << 8 | byte;
  return number;
}

constexpr Wirex::EthAddr addressOf( AddressNumber number ) {
  auto const byte = [&]( int shift ) { return static_cast< Koi::U8 >( number >> shift ); };
  return { byte( 40 ), byte( 32 ), byte( 24 ), byte( 16 ), byte( 8 ), byte( 0 ) };
}

}  // namespace Frames
