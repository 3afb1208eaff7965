// RedisServer.h: a redis server of our own: on a unix socket alone, without persistence. It ends
// with this object, and with this process however that ends.
#pragma once

#include <hiredis/hiredis.h>

#include "ServerProcess.h"

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
  explicit RedisServer( std::filesystem::path const & folder )
      : socket_( folder / "redis.sock" ),
        process_( { "redis-server", "--port", "0", "--unixsocket", socket_, "--dir", folder,
                    "--save", "", "--appendonly", "no", "--daemonize", "no" },
                  [this] { return RedisConnection( socket_ ).works(); } ) {}
  ~RedisServer() { std::filesystem::remove( socket_ ); }
  RedisServer( RedisServer const & ) = delete;

  std::filesystem::path const & socket() const { return socket_; }

 private:
  std::filesystem::path const socket_;
  ServerProcess const process_;
};

}  // namespace Bench
