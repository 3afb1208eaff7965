// RedisServer.h: a redis server of our own: on a unix socket alone, without persistence. It ends
// with this object, and with this process however that ends.
#pragma once

#include <csignal>
#include <thread>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <hiredis/hiredis.h>

#include "Peer.h"

namespace Bench {

/// Closes the connection with itself.
struct RedisConnection {
  explicit RedisConnection( std::filesystem::path const & socket )
      : context( redisConnectUnix( socket.c_str() ) ) {}
  ~RedisConnection() { redisFree( context ); }
  RedisConnection( RedisConnection const & ) = delete;

  bool works() const { return context && !context->err; }

  redisContext * context;
};

class RedisServer {
 public:
  /// Starts it and waits until it answers. Throws Unavailable.
  explicit RedisServer( std::filesystem::path const & folder ) : socket_( folder / "redis.sock" ) {
    pid_t const parent = getpid();
    child_ = fork();
    if( child_ == 0 ) {
      prctl( PR_SET_PDEATHSIG, SIGKILL );
      if( getppid() != parent )
        _exit( 1 );
      int const nowhere = open( "/dev/null", O_RDWR );
      dup2( nowhere, 0 );
      dup2( nowhere, 1 );
      dup2( nowhere, 2 );
      execlp( "redis-server", "redis-server", "--port", "0", "--unixsocket", socket_.c_str(),
              "--dir", folder.c_str(), "--save", "", "--appendonly", "no", "--daemonize", "no",
              static_cast< char * >( nullptr ) );
      _exit( 127 );
    }
    for( int tries = 0; child_ > 0 && tries < 1000; ++tries ) {
      if( waitpid( child_, nullptr, WNOHANG ) != 0 )
        child_ = -1;
      else if( RedisConnection( socket_ ).works() )
        return;
      std::this_thread::sleep_for( std::chrono::milliseconds( 10 ) );
    }
    stop();
    throw Unavailable( "redis: redis-server does not start" );
  }
  ~RedisServer() { stop(); }
  RedisServer( RedisServer const & ) = delete;

  std::filesystem::path const & socket() const { return socket_; }

 private:
  void stop() {
    if( child_ <= 0 )
      return;
    kill( child_, SIGKILL );
    waitpid( child_, nullptr, 0 );
    std::filesystem::remove( socket_ );
  }

  std::filesystem::path socket_;
  pid_t child_;
};

}  // namespace Bench
