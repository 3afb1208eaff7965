// Packets.h: packets of given bytes, and somebody who receives them.
#pragma once

#include <string>
#include <vector>

#include <wirex/Pam.h>

namespace TestSupport {

inline Koi::Ptr< Wirex::Pkt > pktOf( std::string const & bytes,
                                     std::size_t headRoom = Wirex::Pkt::headRoomDefault ) {
  return Wirex::pktFactory( { reinterpret_cast< Koi::U8 const * >( bytes.data() ), bytes.size() },
                            headRoom );
}

inline std::string bytesOf( Wirex::Pkt const & pkt ) {
  return { reinterpret_cast< char const * >( pkt.data() ), pkt.dataBytes() };
}

/// Keeps what it receives.
struct Receiver : Wirex::Pam::Notifiee {
  explicit Receiver( Wirex::Pam * pam = nullptr ) { notifierIs( pam ); }

  void onPkt( Koi::Ptr< Wirex::Pkt > const & pkt ) override { pkts.push_back( pkt ); }
  void onWritable() override { ++numWritable; }
  void onUp() override { ++numUp; }

  std::vector< std::string > frames() const {
    std::vector< std::string > frames;
    for( auto const & pkt : pkts )
      frames.push_back( bytesOf( *pkt ) );
    return frames;
  }

  std::vector< Koi::Ptr< Wirex::Pkt > > pkts;
  int numWritable = 0;
  int numUp = 0;
};

}  // namespace TestSupport
