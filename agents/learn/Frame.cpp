#include "Frame.h"

namespace Learn {

namespace {

//     0  destination  6
//     6  source       6
//    12  type         2  tagType, or the type of an untagged frame
//    14  TCI          2  only behind tagType: priority, drop bit, VLAN
//    16  type         2  only behind tagType
constexpr std::size_t sourceOffset = 6;
constexpr std::size_t typeOffset = 12;
constexpr std::size_t untaggedSize = 14;
constexpr std::size_t taggedSize = 18;

constexpr unsigned tagType = 0x8100;
constexpr unsigned vlanMask = 0xfff;
constexpr unsigned noVlan = 0;  // a tag that carries a priority only
constexpr unsigned reservedVlan = 4095;

unsigned number16( Koi::U8 const * at ) { return at[0] << 8 | at[1]; }

}  // namespace

std::variant< FrameSource, NotLearned > sourceOf( std::span< Koi::U8 const > frame,
                                                  Bridging::VlanId nativeVlan ) {
  if( frame.size() < untaggedSize )
    return NotLearned::tooShort;

  Bridging::VlanId vlan = nativeVlan;
  if( number16( &frame[typeOffset] ) == tagType ) {
    if( frame.size() < taggedSize )
      return NotLearned::tooShort;
    unsigned const vid = number16( &frame[untaggedSize] ) & vlanMask;
    if( vid == reservedVlan )
      return NotLearned::reservedVlan;
    if( vid != noVlan )
      vlan = Bridging::VlanId( static_cast< Koi::U16 >( vid ) );
  }

  auto const source = Wirex::EthAddr::ofBytes( &frame[sourceOffset] );
  if( source.isMulticast() )
    return NotLearned::groupSource;
  if( source.isZero() )
    return NotLearned::zeroSource;
  return FrameSource{ vlan, source };
}

}  // namespace Learn
