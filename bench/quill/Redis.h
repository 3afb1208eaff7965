// Redis.h: redis over a unix socket: one command and its answer at a time; in a batch, all commands
// are sent before the first answer is read.
#pragma once

#include <array>
#include <cstdlib>
#include <cstring>

#include "RedisServer.h"

namespace Bench {

struct Redis {
  static constexpr char const * name = "redis";
  static constexpr bool grows = false;  // it does, but a million inserts one by one take minutes
  static constexpr Beside beside = Beside::thread;  // the process is the server's

  explicit Redis( Room const & room ) : server( room.folder ), before( usedMemory() ) {}

  double bytes() { return usedMemory() - before; }

  /// Owns an answer.
  struct Reply {
    explicit Reply( void * of ) : reply( static_cast< redisReply * >( of ) ) {
      if( !reply || reply->type == REDIS_REPLY_ERROR )
        throw std::runtime_error( "redis: no answer" );
    }
    ~Reply() { freeReplyObject( reply ); }
    Reply( Reply const & ) = delete;

    redisReply * reply;
  };

  /// A connection, and commands whose arguments are a key and perhaps a value.
  struct Session : RedisConnection {
    explicit Session( Redis & peer ) : RedisConnection( peer.server.socket() ) {
      if( !works() )
        throw std::runtime_error( "redis: no connection" );
    }

    redisReply * answered( char const * command, Key const & key, Value const * value = nullptr ) {
      append( command, key, value );
      return nextAnswer();
    }
    void append( char const * command, Key const & key, Value const * value = nullptr ) {
      std::array< char const *, 3 > arguments{ command, reinterpret_cast< char const * >( &key ),
                                               reinterpret_cast< char const * >( value ) };
      std::array< std::size_t, 3 > const sizes{ std::strlen( command ), sizeof key, sizeof *value };
      redisAppendCommandArgv( context, value ? 3 : 2, arguments.data(), sizes.data() );
    }
    redisReply * nextAnswer() {
      void * reply = nullptr;
      redisGetReply( context, &reply );
      return static_cast< redisReply * >( reply );
    }
  };

  struct Reader : Session {
    using Session::Session;

    bool lookup( Key key, Value & value ) {
      return copied( Reply( answered( "GET", key ) ), value );
    }
    std::uint64_t lookupBatch( Key const * keys, unsigned n, Value * values ) {
      for( unsigned i = 0; i < n; ++i )
        append( "GET", keys[i] );
      std::uint64_t all = 0;
      for( unsigned i = 0; i < n; ++i )
        all |= std::uint64_t{ copied( Reply( nextAnswer() ), values[i] ) } << i;
      return all;
    }

   private:
    static bool copied( Reply const & answer, Value & value ) {
      if( answer.reply->type != REDIS_REPLY_STRING || answer.reply->len != sizeof value )
        return false;
      std::memcpy( &value, answer.reply->str, sizeof value );
      return true;
    }
  };

  struct Writer : Session {
    using Session::Session;

    void insert( Record const & record ) { overwrite( record ); }
    void overwrite( Record const & record ) {
      Reply( answered( "SET", record.key, &record.value ) );
    }
    void insertBatch( Record const * records, unsigned n ) { overwriteBatch( records, n ); }
    void overwriteBatch( Record const * records, unsigned n ) {
      for( unsigned i = 0; i < n; ++i )
        append( "SET", records[i].key, &records[i].value );
      for( unsigned i = 0; i < n; ++i )
        Reply const answer( nextAnswer() );
    }
    bool remove( Key key ) { return Reply( answered( "DEL", key ) ).reply->integer == 1; }
  };

  double usedMemory() {
    RedisConnection const connection( server.socket() );
    Reply const info( redisCommand( connection.context, "INFO memory" ) );
    char const * const at = std::strstr( info.reply->str, "used_memory:" );
    return at ? std::atof( at + std::strlen( "used_memory:" ) ) : 0;
  }

  RedisServer server;
  double before;
};

}  // namespace Bench
