// PktIoVecs.h: the pieces in which a frame is handed to the system, the first to go out first. They
// are put together from the last one on, as headers are.
//
// The pieces point into the packet, which has to outlive them unchanged. Private to the room.
#pragma once

#include <sys/uio.h>
#include <array>

#include <wirex/Pkt.h>

namespace Wirex {

class PktIoVecs {
 public:
  PktIoVecs() = default;
  PktIoVecs( PktIoVecs const & ) = delete;
  PktIoVecs & operator=( PktIoVecs const & ) = delete;

  /// The whole frame, with a separate 802.1Q header put where it belongs. Needs both addresses to
  /// be there when it has one.
  void pktIs( Pkt const & pkt ) {
    firstIoVec_ = maxIovecs_;
    if( pkt.hasSeparateVlanTag() ) {
      auto const tag = pkt.separateVlanTag();
      tag_ = { static_cast< Koi::U8 >( tag.tpid >> 8 ), static_cast< Koi::U8 >( tag.tpid ),
               static_cast< Koi::U8 >( tag.tci >> 8 ), static_cast< Koi::U8 >( tag.tci ) };
      prepend( pkt.bytes().subspan( Pkt::addressBytes ) );
      prepend( tag_ );
      prepend( pkt.bytes().first( Pkt::addressBytes ) );
    } else {
      prepend( pkt.bytes() );
    }
  }

  /// The first piece; the others follow it. Needs that there is one.
  iovec * first() {
    KOI_ASSERT( firstIoVec_ != maxIovecs_ );
    return &ioVecs_[firstIoVec_];
  }
  unsigned count() const { return maxIovecs_ - firstIoVec_; }

 private:
  void prepend( std::span< Koi::U8 const > piece ) {
    // The system reads them only, whatever the type says.
    ioVecs_[--firstIoVec_] = { const_cast< Koi::U8 * >( piece.data() ), piece.size() };
  }

  static constexpr unsigned maxIovecs_ = 3;

  std::array< iovec, maxIovecs_ > ioVecs_;
  unsigned firstIoVec_ = maxIovecs_;
  std::array< Koi::U8, VlanTag::bytes > tag_;
};

}  // namespace Wirex
