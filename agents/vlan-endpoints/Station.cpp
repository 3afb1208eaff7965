#include <vlan-endpoints/Station.h>

#include <algorithm>

namespace VlanEndpoints {
namespace {

using Wirex::Pkt;

constexpr Koi::U16 typeIp = 0x0800;
constexpr Koi::U16 typeArp = 0x0806;
constexpr std::size_t ethBytes = 6, ipBytes = 4;

// Where things stand in a frame.
constexpr std::size_t source = 6;
constexpr std::size_t arpOperation = Pkt::headerBytes + 6;
constexpr std::size_t arpSender = Pkt::headerBytes + 8;  // address and IP address
constexpr std::size_t arpTarget = arpSender + ethBytes + ipBytes;
constexpr std::size_t arpEnd = arpTarget + ethBytes + ipBytes;
constexpr std::size_t ipTotal = Pkt::headerBytes + 2;
constexpr std::size_t ipFragment = Pkt::headerBytes + 6;
constexpr std::size_t ipProtocol = Pkt::headerBytes + 9;
constexpr std::size_t ipSource = Pkt::headerBytes + 12;
constexpr std::size_t ipTarget = Pkt::headerBytes + 16;
constexpr std::size_t ipHeaderLeast = 20, icmpHeader = 8;

constexpr Koi::U8 protocolIcmp = 1;
constexpr Koi::U8 echoRequest = 8, echoReply = 0;

std::size_t ipHeaderBytes( Pkt const & pkt ) { return 4 * ( pkt.data()[Pkt::headerBytes] & 0xf ); }

}  // namespace

Station::Station( Koi::Ptr< Wirex::Pam > pam, Wirex::EthAddr const & eth,
                  Wirex::Ip4Addr const & ip )
    : pam_( std::move( pam ) ), eth_( eth ), ip_( ip ) {
  notifierIs( pam_ );
}

void Station::onPkt( Koi::Ptr< Pkt > const & pkt ) {
  if( isArpRequest( *pkt ) )
    answerArp( pkt->ownData() );
  else if( isEchoRequest( *pkt ) )
    answerEcho( pkt->ownData() );
  else
    return;
  numAnswered_ += pam_->send( pkt );
}

bool Station::isArpRequest( Pkt const & pkt ) const {
  return pkt.ethType() == typeArp && pkt.dataBytes() >= arpEnd &&
         pkt.number16( Pkt::headerBytes ) == 1 && pkt.number16( Pkt::headerBytes + 2 ) == typeIp &&
         pkt.number16( Pkt::headerBytes + 4 ) == ( ethBytes << 8 | ipBytes ) &&
         pkt.number16( arpOperation ) == 1 &&
         std::ranges::equal( pkt.bytes().subspan( arpTarget + ethBytes, ipBytes ), ip_.bytes() );
}

bool Station::isEchoRequest( Pkt const & pkt ) const {
  if( pkt.ethType() != typeIp || pkt.dataBytes() < Pkt::headerBytes + ipHeaderLeast ||
      Wirex::EthAddr::ofBytes( pkt.data() ) != eth_ )
    return false;
  std::size_t const header = ipHeaderBytes( pkt ), total = pkt.number16( ipTotal );
  bool const isWhole = ( pkt.number16( ipFragment ) & 0x3fff ) == 0;  // the last one of one
  return pkt.data()[Pkt::headerBytes] >> 4 == 4 && header >= ipHeaderLeast &&
         total >= header + icmpHeader && pkt.dataBytes() >= Pkt::headerBytes + total && isWhole &&
         pkt.data()[ipProtocol] == protocolIcmp &&
         std::ranges::equal( pkt.bytes().subspan( ipTarget, ipBytes ), ip_.bytes() ) &&
         pkt.data()[Pkt::headerBytes + header] == echoRequest;
}

void Station::answerArp( Koi::U8 * frame ) const {
  std::copy_n( frame + arpSender, ethBytes + ipBytes, frame + arpTarget );
  std::ranges::copy( ip_.bytes(), std::ranges::copy( eth_.bytes(), frame + arpSender ).out );
  frame[arpOperation + 1] = 2;
  std::copy_n( frame + source, ethBytes, frame );
  std::ranges::copy( eth_.bytes(), frame + source );
}

void Station::answerEcho( Koi::U8 * frame ) const {
  std::swap_ranges( frame, frame + ethBytes, frame + source );
  // The checksum of the header is the same whichever way the addresses stand.
  std::swap_ranges( frame + ipSource, frame + ipTarget, frame + ipTarget );
  Koi::U8 * const icmp = frame + Pkt::headerBytes + 4 * ( frame[Pkt::headerBytes] & 0xf );
  icmp[0] = echoReply;
  // In ones' complement, what the type has lost its checksum gains.
  unsigned sum = ( icmp[2] << 8 | icmp[3] ) + ( ( echoRequest - echoReply ) << 8 );
  sum = ( sum & 0xffff ) + ( sum >> 16 );
  icmp[2] = static_cast< Koi::U8 >( sum >> 8 );
  icmp[3] = static_cast< Koi::U8 >( sum );
}

}  // namespace VlanEndpoints
