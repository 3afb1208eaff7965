#include <wirex/PacketSocket.h>

#include <algorithm>
#include <bit>
#include <cerrno>
#include <cstring>
#include <system_error>

#include <arpa/inet.h>
#include <linux/if_ether.h>
#include <net/if.h>
#include <sys/ioctl.h>

#include <wirex/EthDevPam.h>

namespace Wirex {
namespace {

/// What the system may keep for us while we do something else.
constexpr int receiveRoom = 8 << 20;
/// No frame is longer, however the system put it together.
constexpr std::size_t frameMostEver = 1 << 17;

template< class T >
void optionIs( int socket, int option, T const & value ) {
  if( setsockopt( socket, SOL_PACKET, option, &value, sizeof value ) != 0 )
    throw std::system_error( errno, std::generic_category(), "setsockopt" );
}

/// The 802.1Q header that the system has split off, if it did.
void readTag( msghdr & message, Pkt & pkt ) {
  for( auto * at = CMSG_FIRSTHDR( &message ); at; at = CMSG_NXTHDR( &message, at ) ) {
    if( at->cmsg_level != SOL_PACKET || at->cmsg_type != PACKET_AUXDATA )
      continue;
    tpacket_auxdata said;
    std::memcpy( &said, CMSG_DATA( at ), sizeof said );
    if( said.tp_status & TP_STATUS_VLAN_VALID )
      pkt.separateVlanTagIs(
          { said.tp_status & TP_STATUS_VLAN_TPID_VALID ? said.tp_vlan_tpid : VlanTag::dot1Q,
            said.tp_vlan_tci } );
  }
}

}  // namespace

DeviceException::~DeviceException() = default;

void PacketSocket::refuse( int error ) const {
  throw DeviceException( "cannot open device '" + std::string( deviceName_.view() ) +
                         "': " + std::generic_category().message( error ) );
}

PacketSocket::PacketSocket( Koi::String8 const & deviceName )
    : deviceName_( deviceName ),
      // Of no protocol: nothing comes before it is bound to the one device, and to one never.
      in_( socket( AF_PACKET, SOCK_RAW | SOCK_NONBLOCK | SOCK_CLOEXEC, 0 ) ),
      out_( in_.isOpen() ? socket( AF_PACKET, SOCK_RAW | SOCK_NONBLOCK | SOCK_CLOEXEC, 0 ) : -1 ) {
  if( !out_.isOpen() )
    refuse( errno );
  try {
    optionIs( receiving(), PACKET_AUXDATA, 1 );
    optionIs( receiving(), PACKET_IGNORE_OUTGOING, 1 );
    // The first one is for the privileged; without either it does with what there is.
    if( setsockopt( receiving(), SOL_SOCKET, SO_RCVBUFFORCE, &receiveRoom, sizeof receiveRoom ) )
      setsockopt( receiving(), SOL_SOCKET, SO_RCVBUF, &receiveRoom, sizeof receiveRoom );
    bindTo( deviceIndex() );
  } catch( std::system_error const & e ) {  // of a call above; whoever asked gets the device's name
    refuse( e.code().value() );
  }
  for( unsigned slot = 0; slot < batchMost; ++slot ) {
    auto & header = rxMessages_[slot].msg_hdr;
    header.msg_iov = &incoming_[slot].piece;
    header.msg_iovlen = 1;
    header.msg_control = incoming_[slot].control;
    header.msg_controllen = sizeof incoming_[slot].control;
  }
}

int PacketSocket::deviceIndex() const {
  ifreq request{};
  if( deviceName_.empty() || deviceName_.size() >= sizeof request.ifr_name )
    refuse( ENODEV );
  std::memcpy( request.ifr_name, deviceName_.data(), deviceName_.size() );
  if( ioctl( receiving(), SIOCGIFINDEX, &request ) != 0 )
    refuse( errno );
  return request.ifr_ifindex;
}

void PacketSocket::bindTo( int index ) {
  sockaddr_ll address{};
  address.sll_family = AF_PACKET;
  address.sll_ifindex = index;
  auto const bound = [&]( int socket, int protocol ) {
    address.sll_protocol = htons( static_cast< Koi::U16 >( protocol ) );
    if( bind( socket, reinterpret_cast< sockaddr const * >( &address ), sizeof address ) != 0 )
      throw std::system_error( errno, std::generic_category(), "bind" );
  };
  bound( sending(), 0 );
  bound( receiving(), ETH_P_ALL );
  packet_mreq all{};
  all.mr_ifindex = index;
  all.mr_type = PACKET_MR_PROMISC;
  optionIs( receiving(), PACKET_ADD_MEMBERSHIP, all );
  index_ = index;
  readMtu();
}

void PacketSocket::readMtu() {
  ifreq request{};
  std::memcpy( request.ifr_name, deviceName_.data(), deviceName_.size() );
  std::size_t mtu = 1500;
  if( ioctl( receiving(), SIOCGIFMTU, &request ) == 0 )
    mtu = static_cast< std::size_t >( request.ifr_mtu );
  // A second tag may stand among the bytes.
  frameMostIs( mtu + Pkt::headerBytes + VlanTag::bytes );
}

void PacketSocket::frameMostIs( std::size_t most ) {
  if( std::min( most, frameMostEver ) <= frameMost_ )
    return;
  frameMost_ = std::min( most, frameMostEver );
  pool_ = new PktBufferPool( Pkt::headRoomDefault + frameMost_ );
  for( unsigned slot = 0; slot < batchMost; ++slot )
    bufferIs( slot );
}

void PacketSocket::bufferIs( unsigned slot ) {
  auto & incoming = incoming_[slot];
  incoming.buffer = pool_->buffer();
  incoming.piece = { incoming.buffer->bytes() + Pkt::headRoomDefault, frameMost_ };
}

PacketSocket::Outcome PacketSocket::receive( std::vector< Koi::Ptr< Pkt > > & pkts ) {
  // With MSG_TRUNC the length is that of the frame, also where the buffer was shorter.
  int const got =
      recvmmsg( receiving(), rxMessages_.data(), batchMost, MSG_DONTWAIT | MSG_TRUNC, nullptr );
  if( got < 0 )
    return { 0, errno };
  auto const numPkts = static_cast< unsigned >( got );
  std::size_t longest = 0;
  for( unsigned slot = 0; slot < numPkts; ++slot ) {
    auto & [header, length] = rxMessages_[slot];
    auto & incoming = incoming_[slot];
    header.msg_controllen = sizeof incoming.control;
    longest = std::max( longest, std::size_t{ length } );
    if( length > incoming.piece.iov_len ) {
      ++numTooLong_;
      continue;
    }
    Koi::Ptr< Pkt > const pkt(
        new Pkt( std::move( incoming.buffer ), Pkt::headRoomDefault, length ) );
    readTag( header, *pkt );
    pkts.push_back( pkt );
    bufferIs( slot );
  }
  if( longest > frameMost_ )
    frameMostIs( std::bit_ceil( longest ) );
  return { numPkts, 0 };
}

PacketSocket::Outcome PacketSocket::send( std::deque< Koi::Ptr< Pkt > > const & pkts ) {
  auto const numPkts = static_cast< unsigned >( std::min( pkts.size(), std::size_t{ batchMost } ) );
  for( unsigned i = 0; i < numPkts; ++i ) {
    outgoing_[i].pktIs( *pkts[i] );
    txMessages_[i].msg_hdr.msg_iov = outgoing_[i].first();
    txMessages_[i].msg_hdr.msg_iovlen = outgoing_[i].count();
  }
  int const sent = sendmmsg( sending(), txMessages_.data(), numPkts, MSG_DONTWAIT );
  if( sent < 0 )
    return { 0, errno };
  return { static_cast< unsigned >( sent ), 0 };
}

bool PacketSocket::isDeviceUp() {
  try {
    if( int const index = deviceIndex(); index != index_ )
      bindTo( index );
  } catch( DeviceException const & ) {  // it is away
    return false;
  } catch( std::system_error const & ) {  // it went again
    return false;
  }
  ifreq request{};
  std::memcpy( request.ifr_name, deviceName_.data(), deviceName_.size() );
  return ioctl( receiving(), SIOCGIFFLAGS, &request ) == 0 && ( request.ifr_flags & IFF_UP ) != 0;
}

Koi::U64 PacketSocket::numLost() const {
  tpacket_stats since{};
  socklen_t size = sizeof since;
  if( getsockopt( receiving(), SOL_PACKET, PACKET_STATISTICS, &since, &size ) == 0 )
    numNoRoom_ += since.tp_drops;  // asking sets them to 0
  return numNoRoom_ + numTooLong_;
}

}  // namespace Wirex
