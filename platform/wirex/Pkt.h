// Pkt.h: a frame: a stretch of bytes in a buffer, with room before and behind, and the 802.1Q
// header that a driver has split off. On one thread.
//
//     buffer_          data_                  data_ + dataBytes_          buffer_ + size_
//       |   head room    |         bytes             |        tail room          |
//
// I1  The bytes lie within the buffer.
// I2  Packets that have a buffer in common do not see each other's edits: who edits bytes of a
//     buffer that another packet has too gets one of its own first.
//
// What breaks I1, or edits a packet without a buffer, is a fault of the program: an assertion.
// Lengths that come off a wire are checked by who reads them.
#pragma once

#include <span>

#include <koi/AllocTrack.h>
#include <wirex/PktBuffer.h>

namespace Wirex {

/// An 802.1Q header: the type that announces it, and the tag control word (priority 3 bits, drop
/// eligible 1 bit, VLAN 12 bits), both as numbers.
struct VlanTag {
  static constexpr std::size_t bytes = 4;      ///< that it has in a frame
  static constexpr Koi::U16 dot1Q = 0x8100;    ///< the type of customers' tags
  static constexpr Koi::U16 vlanMask = 0xfff;  ///< of the VLAN in the tag control word

  Koi::U16 tpid = dot1Q;
  Koi::U16 tci = 0;

  Koi::U16 vlan() const { return tci & vlanMask; }
  friend bool operator==( VlanTag const &, VlanTag const & ) = default;
};

class KOI_PUBLIC Pkt final : public Koi::Tracked< Pkt, Koi::PtrInterface > {
 public:
  static constexpr std::size_t addressBytes = 12;  ///< destination and source
  static constexpr std::size_t headerBytes = 14;   ///< and the EtherType
  static constexpr std::size_t headRoomDefault = 64;

  /// A packet without a buffer, and so without bytes.
  Pkt() = default;
  /// Of that buffer, the bytes from headRoom on. Needs them to lie within it.
  Pkt( Koi::Ptr< PktBuffer > buffer, std::size_t headRoom, std::size_t dataBytes );

  /// Another packet of the same bytes, in the same buffer, with the same separate header.
  Koi::Ptr< Pkt > clone() const;

  Koi::U8 const * data() const { return data_; }
  std::size_t dataBytes() const { return dataBytes_; }
  std::span< Koi::U8 const > bytes() const { return { data_, dataBytes_ }; }
  /// The bytes on a wire, the separate header among them; without the checksum.
  std::size_t wireBytes() const { return dataBytes_ + ( hasTag_ ? VlanTag::bytes : 0 ); }

  std::size_t headRoom() const { return static_cast< std::size_t >( data_ - buffer_ ); }
  std::size_t tailRoom() const { return size_ - headRoom() - dataBytes_; }
  /// Another packet has the buffer, too.
  bool isShared() const { return sharedBuffer_ && sharedBuffer_->koiRefCount() > 1; }

  /// The bytes, to be edited; they are nobody else's afterwards. Needs a buffer.
  Koi::U8 * ownData();
  /// Drops the first so many bytes, which become head room. Needs that there are as many.
  void frontDel( std::size_t numBytes );
  /// Makes room for so many bytes before the first, whose contents are anything: in the head room
  /// when there is enough and the buffer is nobody else's, else in a new buffer that has no room
  /// but for them. Needs a buffer.
  void frontIs( std::size_t numBytes );
  /// Drops bytes at the end, or takes some of the tail room. Needs a buffer with as much room.
  void dataBytesIs( std::size_t numBytes );

  /// Bytes 12 and 13, or 0 where the frame ends before.
  Koi::U16 ethType() const { return dataBytes_ < headerBytes ? 0 : number16( addressBytes ); }
  /// The number in two bytes, the first the higher one. Needs that they are there.
  Koi::U16 number16( std::size_t offset ) const {
    return static_cast< Koi::U16 >( data_[offset] << 8 | data_[offset + 1] );
  }
  /// Writes it. Needs that they are there.
  void number16Is( std::size_t offset, Koi::U16 number );

  /// Puts a tag before the EtherType, among the bytes. Needs both addresses to be there.
  void tagIs( VlanTag const & tag );
  /// Takes the four bytes before the EtherType away. Needs them and both addresses.
  void tagDel();

  /// Whether an 802.1Q header belongs to the frame that is not among its bytes. It is the outermost
  /// tag.
  bool hasSeparateVlanTag() const { return hasTag_; }
  VlanTag const & separateVlanTag() const { return tag_; }
  void separateVlanTagIs( VlanTag const & tag ) {
    tag_ = tag;
    hasTag_ = true;
  }
  void delSeparateVlanTag() { hasTag_ = false; }

 private:
  ~Pkt() = default;
  void handleZeroRef() const override { delete this; }
  void moveTo( Koi::Ptr< PktBuffer > buffer, std::size_t headRoom );
  void check() const;

  Koi::Ptr< PktBuffer > sharedBuffer_;
  Koi::U8 * buffer_ = nullptr;  // its bytes
  std::size_t size_ = 0;        // and how many they are
  Koi::U8 * data_ = nullptr;
  std::size_t dataBytes_ = 0;
  VlanTag tag_;
  bool hasTag_ = false;
};

/// A packet of a copy of the bytes, with that much room before them.
KOI_PUBLIC Koi::Ptr< Pkt > pktFactory( std::span< Koi::U8 const > bytes,
                                       std::size_t headRoom = Pkt::headRoomDefault );

}  // namespace Wirex
