// main.cpp: muxBench: frames a second that come in on a device and are sent back, by a bare loop of
// recvmmsg() and sendmmsg() and by the multiplexer, over a wire between two devices. Root only.
//
//   muxBench [--rounds N] [--bursts N]       default 9 and 200
//
// A burst of frames is put on the wire; the time is that from then until all were sent back, on one
// thread, the system's own work for both directions included. Contenders take turns in one run;
// each figure is the median of its rounds, a round's that of its bursts. All use batches of the
// same size.
//
//   bare        tagged frames of one VLAN; the tag that the system splits off is put in again
//   mux         tagged frames of eight VLANs, through VlanMuxDemux and eight endpoints
//   untagged    frames without tags in the bare loop: what tags cost the system shows beside it
#include <reactors/VlanMuxDemux.h>
#include <support/VethPair.h>

#include <arpa/inet.h>
#include <linux/if_ether.h>
#include <linux/if_packet.h>
#include <net/if.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "../Setting.h"

namespace Bench {
namespace {

constexpr unsigned batch = 64, burst = 4 * batch, numVlans = 8;
constexpr std::size_t addressBytes = 12, tagBytes = 4, frameMost = 2048;
constexpr int skipStatus = 77;
constexpr double goal = 0.8;

/// A device as a program without a library opens it.
class BareDevice {
 public:
  explicit BareDevice( char const * name )
      : socket_( socket( AF_PACKET, SOCK_RAW | SOCK_NONBLOCK, 0 ) ) {
    int const one = 1, room = 8 << 20;
    setsockopt( socket_, SOL_PACKET, PACKET_IGNORE_OUTGOING, &one, sizeof one );
    setsockopt( socket_, SOL_SOCKET, SO_RCVBUFFORCE, &room, sizeof room );
    sockaddr_ll address{};
    address.sll_family = AF_PACKET;
    address.sll_protocol = htons( ETH_P_ALL );
    address.sll_ifindex = static_cast< int >( if_nametoindex( name ) );
    if( bind( socket_, reinterpret_cast< sockaddr * >( &address ), sizeof address ) != 0 )
      throw std::runtime_error( "cannot open a device" );
    for( unsigned i = 0; i < batch; ++i ) {
      rx_[i].msg_hdr.msg_iov = &rxPiece_[i];
      rx_[i].msg_hdr.msg_iovlen = 1;
    }
  }
  ~BareDevice() { close( socket_ ); }

  /// How many came, at most a batch.
  unsigned receive() {
    for( unsigned i = 0; i < batch; ++i )
      rxPiece_[i] = { bytes_[i].data(), frameMost };
    return std::max( 0, recvmmsg( socket_, rx_.data(), batch, MSG_DONTWAIT, nullptr ) );
  }
  /// Sends so many of them back, with a tag of VLAN 1 or as they came.
  unsigned sendBack( unsigned numFrames, bool isTagged ) {
    static char tag[] = "\x81\x00\x00\x01";
    for( unsigned i = 0; i < numFrames; ++i ) {
      auto & message = rx_[i];
      char * const at = bytes_[i].data();
      if( isTagged ) {
        txPieces_[i] = { iovec{ at, addressBytes }, iovec{ tag, tagBytes },
                         iovec{ at + addressBytes, message.msg_len - addressBytes } };
        tx_[i].msg_hdr.msg_iovlen = 3;
      } else {
        txPieces_[i][0] = { at, message.msg_len };
        tx_[i].msg_hdr.msg_iovlen = 1;
      }
      tx_[i].msg_hdr.msg_iov = txPieces_[i].data();
    }
    return std::max( 0, sendmmsg( socket_, tx_.data(), numFrames, MSG_DONTWAIT ) );
  }
  /// Puts a burst on the wire.
  void send( std::vector< std::string > & frames ) {
    for( unsigned i = 0; i < frames.size(); i += batch ) {
      for( unsigned j = 0; j < batch; ++j ) {
        txPieces_[j][0] = { frames[i + j].data(), frames[i + j].size() };
        tx_[j].msg_hdr.msg_iov = txPieces_[j].data();
        tx_[j].msg_hdr.msg_iovlen = 1;
      }
      if( sendmmsg( socket_, tx_.data(), batch, 0 ) != static_cast< int >( batch ) )
        throw std::runtime_error( "a burst was refused" );
    }
  }

 private:
  int const socket_;
  std::array< std::array< char, frameMost >, batch > bytes_;
  std::array< iovec, batch > rxPiece_;
  std::array< mmsghdr, batch > rx_{};
  std::array< std::array< iovec, 3 >, batch > txPieces_;
  std::array< mmsghdr, batch > tx_{};
};

struct Echo : Wirex::Pam::Notifiee {
  void onPkt( Koi::Ptr< Wirex::Pkt > const & pkt ) override { notifier()->send( pkt ); }
};

std::vector< std::string > frames( std::size_t size, unsigned vlans ) {
  std::vector< std::string > all;
  for( unsigned i = 0; i < burst; ++i ) {
    std::string frame( "\x00\x00\x5e\x00\x53\x01\x00\x00\x5e\x00\x53\x02", addressBytes );
    if( vlans != 0 )
      frame += { '\x81', 0, 0, static_cast< char >( 1 + i % vlans ) };
    frame += { '\x88', '\xb5' };
    frame.resize( size + ( vlans != 0 ? tagBytes : 0 ), '.' );
    all.push_back( frame );
  }
  return all;
}

struct Contender {
  char const * name;
  unsigned vlans;
  /// One burst through it, which lies ready; how many frames were sent back.
  std::function< unsigned() > echo;
  std::vector< double > rates{};
};

double median( std::vector< double > values ) {
  std::ranges::sort( values );
  return values[values.size() / 2];
}

/// Frames a second.
double measured( Contender & one, BareDevice & far, std::size_t size, long numBursts ) {
  auto burstFrames = frames( size, one.vlans );
  std::vector< double > seconds;
  for( long i = 0; i < numBursts; ++i ) {
    far.send( burstFrames );
    auto const start = std::chrono::steady_clock::now();
    unsigned const numSent = one.echo();
    seconds.push_back(
        std::chrono::duration< double >( std::chrono::steady_clock::now() - start ).count() );
    unsigned numBack = 0;
    while( unsigned const got = far.receive() )
      numBack += got;
    if( numSent != burst || numBack != burst )
      throw std::runtime_error( std::string( one.name ) + " lost frames" );
  }
  return burst / median( seconds );
}

int run( int rounds, long numBursts ) {
  for( auto const & [name, value] : setting() )
    std::printf( "%s: %s\n", name.c_str(), value.c_str() );
  TestSupport::VethPair const veth;
  if( !veth.isThere() ) {
    std::fprintf( stderr, "muxBench: %s\n", TestSupport::VethPair::skipped );
    return skipStatus;
  }
  auto const bareEcho = []( BareDevice & near, bool isTagged ) {
    unsigned numSent = 0;
    while( unsigned const got = near.receive() )
      numSent += near.sendBack( got, isTagged );
    return numSent;
  };
  BareDevice far( "far0" );
  bool isReached = true;
  std::printf( "\n%-8s  %-8s  %12s  %7s\n", "bytes", "who", "frames/s", "of bare" );
  for( std::size_t const size : { 60u, 1500u } ) {
    Contender all[] = {
        { "bare", 1, nullptr }, { "mux", numVlans, nullptr }, { "untagged", 0, nullptr } };
    for( int round = 0; round < rounds; ++round )
      for( auto & one : all ) {
        // One socket at a time hears the device.
        if( one.vlans != numVlans ) {
          BareDevice near( "near0" );
          one.echo = [&] { return bareEcho( near, one.vlans != 0 ); };
          one.rates.push_back( measured( one, far, size, numBursts ) );
          continue;
        }
        auto const mux =
            Lumo::vlanMuxDemuxFactory( nullptr, "near0", Bridging::VlanIdOrNone(), false );
        std::array< Echo, numVlans + 1 > echoes;
        for( unsigned vlan = 1; vlan <= numVlans; ++vlan )
          echoes[vlan].notifierIs( mux->manyPamIs( vlan ) );
        one.echo = [&] {
          Koi::U64 const before = mux->ethPam()->counters().txPkts;
          Koi::defaultActivity()->runFor( 0 );
          return static_cast< unsigned >( mux->ethPam()->counters().txPkts - before );
        };
        one.rates.push_back( measured( one, far, size, numBursts ) );
      }
    for( auto & one : all )
      std::printf( "%-8zu  %-8s  %12.0f  %7.2f\n", size, one.name, median( one.rates ),
                   median( one.rates ) / median( all[0].rates ) );
    isReached = isReached && median( all[1].rates ) >= goal * median( all[0].rates );
  }
  std::printf( "\ngoal: mux at least %.1f of bare: %s\n", goal, isReached ? "reached" : "missed" );
  return 0;
}

}  // namespace
}  // namespace Bench

int main( int argc, char ** argv ) {
  int rounds = 9;
  long numBursts = 200;
  for( int i = 1; i + 1 < argc; i += 2 )
    if( std::string( argv[i] ) == "--rounds" )
      rounds = std::atoi( argv[i + 1] );
    else if( std::string( argv[i] ) == "--bursts" )
      numBursts = std::atol( argv[i + 1] );
  try {
    return Bench::run( rounds, numBursts );
  } catch( std::runtime_error const & e ) {
    std::fprintf( stderr, "muxBench: %s\n", e.what() );
    return 1;
  }
}
