// Station.h: a station with one IPv4 address, at a packet endpoint whose frames are untagged. It
// answers who asks for its address (ARP), and echo requests (ICMP), in the packet that asked.
//
// Nothing of a frame is believed: what is cut, or says that it is longer than it is, is ignored.
#pragma once

#include <wirex/EthAddr.h>
#include <wirex/Ip4Addr.h>
#include <wirex/Pam.h>

namespace VlanEndpoints {

class Station : public Wirex::Pam::Notifiee {
 public:
  Station( Koi::Ptr< Wirex::Pam > pam, Wirex::EthAddr const & eth, Wirex::Ip4Addr const & ip );

  Koi::Ptr< Wirex::Pam > pam() const { return pam_; }
  Koi::U64 numAnswered() const { return numAnswered_; }

  void onPkt( Koi::Ptr< Wirex::Pkt > const & pkt ) override;

 private:
  bool isArpRequest( Wirex::Pkt const & pkt ) const;
  bool isEchoRequest( Wirex::Pkt const & pkt ) const;
  void answerArp( Koi::U8 * frame ) const;
  void answerEcho( Koi::U8 * frame ) const;

  Koi::Ptr< Wirex::Pam > const pam_;
  Wirex::EthAddr const eth_;
  Wirex::Ip4Addr const ip_;
  Koi::U64 numAnswered_ = 0;
};

}  // namespace VlanEndpoints
