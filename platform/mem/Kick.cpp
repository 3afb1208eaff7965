#include <mem/Kick.h>

#include <array>
#include <cerrno>
#include <cstring>

#include <sys/socket.h>
#include <sys/uio.h>
#include <unistd.h>

namespace Mem {
namespace {

struct Head {
  U32 kind, version;
};

/// Room for one descriptor beside a message.
union Ancillary {
  cmsghdr header;
  char bytes[CMSG_SPACE( sizeof( int ) )];
};

}  // namespace

void Descriptor::reset( int number ) {
  if( number_ >= 0 )
    close( number_ );
  number_ = number;
}

bool KickMessage::send( int socket ) const {
  Head head{ kind, version };
  std::string bytes = text.substr( 0, mostText );
  iovec parts[] = { { &head, sizeof head }, { bytes.data(), bytes.size() } };
  Ancillary ancillary{};
  msghdr message{};
  message.msg_iov = parts;
  message.msg_iovlen = bytes.empty() ? 1 : 2;
  if( descriptor >= 0 ) {
    message.msg_control = ancillary.bytes;
    message.msg_controllen = sizeof ancillary.bytes;
    cmsghdr * const one = CMSG_FIRSTHDR( &message );
    one->cmsg_level = SOL_SOCKET;
    one->cmsg_type = SCM_RIGHTS;
    one->cmsg_len = CMSG_LEN( sizeof descriptor );
    std::memcpy( CMSG_DATA( one ), &descriptor, sizeof descriptor );
  }
  return sendmsg( socket, &message, MSG_NOSIGNAL | MSG_DONTWAIT ) >= 0;
}

KickMessage::Received KickMessage::receive( int socket ) {
  Head head{};
  std::array< char, mostText > bytes;
  iovec parts[] = { { &head, sizeof head }, { bytes.data(), bytes.size() } };
  Ancillary ancillary{};
  msghdr message{};
  message.msg_iov = parts;
  message.msg_iovlen = 2;
  message.msg_control = ancillary.bytes;
  message.msg_controllen = sizeof ancillary.bytes;
  auto const count = recvmsg( socket, &message, MSG_DONTWAIT | MSG_CMSG_CLOEXEC );
  if( count < 0 )
    return errno == EAGAIN || errno == EINTR ? Received::nothing : Received::end;
  descriptor = -1;
  if( cmsghdr const * const one = CMSG_FIRSTHDR( &message );
      one && one->cmsg_level == SOL_SOCKET && one->cmsg_type == SCM_RIGHTS &&
      one->cmsg_len == CMSG_LEN( sizeof descriptor ) )
    std::memcpy( &descriptor, CMSG_DATA( one ), sizeof descriptor );
  if( static_cast< std::size_t >( count ) < sizeof head ) {
    Descriptor const carried( std::exchange( descriptor, -1 ) );
    return Received::end;
  }
  kind = static_cast< Kind >( head.kind );
  version = head.version;
  text.assign( bytes.data(), static_cast< std::size_t >( count ) - sizeof head );
  return Received::message;
}

}  // namespace Mem
