// GenericIntfId.h: an interface identifier taken apart into its numbers, whatever its kind. Any
// program may use it, on any thread.
//
// A GenericIntfId is a copy: read and change its parts, then take intfId().
#pragma once

#include <koi/Assert.h>
#include <wirex/IntfId.h>

namespace Wirex {

class GenericIntfId {
 public:
  // The type numbers in use; the others are free for the platform's next kinds.
  static constexpr Koi::U32 ethernetType = 0;
  static constexpr Koi::U32 managementType = 1;
  static constexpr Koi::U32 vlanType = 2;
  static constexpr Koi::U32 vxlanType = 3;
  static constexpr Koi::U32 unconnectedEthernetType = 4;
  static constexpr Koi::U32 cpuType = 6;
  static constexpr Koi::U32 portChannelType = 7;
  static constexpr Koi::U32 peerEthernetType = 8;
  static constexpr Koi::U32 peerPortChannelType = 9;
  static constexpr Koi::U32 pseudowireType = 59;
  static constexpr Koi::U32 typeIdMax = 127;

  // The sub-types of a port-channel; an ordinary one is 0.
  static constexpr Koi::U32 recircSubType = 1;
  static constexpr Koi::U32 ecmpSubType = 2;
  static constexpr Koi::U32 subTypeMax = 511;

  constexpr explicit GenericIntfId( IntfId const & intfId ) : word_( intfId.value() ) {}

  constexpr IntfId intfId() const { return IntfId( word_ ); }

  constexpr Koi::U32 typeId() const { return static_cast< Koi::U32 >( word_ >> 25 ) & typeIdMax; }

  /// All other bits stay as they are. Refuses a RangeException "GenericIntfId::typeId > 127 not
  /// allowed".
  constexpr void typeIdIs( Koi::U32 typeId ) {
    if( typeId > typeIdMax )
      Koi::throwRangeException( "GenericIntfId::typeId > 127 not allowed" );
    bitsAre( 25, typeIdMax, typeId );
  }

  /// 0 for a type that has no sub-types: only port-channels, here and at the peer, have them.
  constexpr Koi::U32 subType() const {
    return hasSubTypes() ? static_cast< Koi::U32 >( word_ >> 16 ) & subTypeMax : 0;
  }

  /// Refuses, with a RangeException "GenericIntfId::subType > 511 not allowed" or
  /// "GenericIntfId::subType > 0 not allowed" where the type has no sub-types.
  constexpr void subTypeIs( Koi::U32 subType ) {
    if( subType > subTypeMax )
      Koi::throwRangeException( "GenericIntfId::subType > 511 not allowed" );
    if( hasSubTypes() )
      bitsAre( 16, subTypeMax, subType );
    else if( subType > 0 )
      Koi::throwRangeException( "GenericIntfId::subType > 0 not allowed" );
  }

  /// How many parts an identifier has, whatever its type.
  static constexpr unsigned parts() { return 2; }

  /// The part of that index, which must be below parts().
  constexpr Koi::U32 part( unsigned index ) const {
    KOI_ASSERT( index < parts() );
    return index == 0 ? static_cast< Koi::U32 >( word_ >> 32 )
                      : static_cast< Koi::U32 >( word_ ) & part1Max();
  }

  /// Refuses a part 1 that does not fit with a RangeException "GenericIntfId::part > 65535 not
  /// allowed" where the type has sub-types, else "GenericIntfId::part > 33554431 not allowed".
  constexpr void partIs( unsigned index, Koi::U32 part ) {
    KOI_ASSERT( index < parts() );
    if( index == 0 )
      return bitsAre( 32, 0xffffffff, part );
    if( part > part1Max() )
      Koi::throwRangeException( hasSubTypes() ? "GenericIntfId::part > 65535 not allowed"
                                              : "GenericIntfId::part > 33554431 not allowed" );
    bitsAre( 0, part1Max(), part );
  }

 private:
  constexpr bool hasSubTypes() const {
    return typeId() == portChannelType || typeId() == peerPortChannelType;
  }
  constexpr Koi::U32 part1Max() const { return hasSubTypes() ? 0xffff : 0x1ffffff; }
  constexpr void bitsAre( unsigned lowest, Koi::U64 mask, Koi::U64 bits ) {
    word_ = ( word_ & ~( mask << lowest ) ) | bits << lowest;
  }

  Koi::U64 word_;
};

}  // namespace Wirex
