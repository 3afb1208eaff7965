// RedisChannel.h: a channel of redis with one subscriber in a process of its own.
#pragma once

#include "RedisServer.h"
#include "Shared.h"

namespace Bench {

class RedisChannel {
 public:
  explicit RedisChannel( std::filesystem::path const & socket )
      : publisher_( socket ), subscriber_( [this, socket] { subscribe( socket ); } ) {
    while( board_->took == 0 )
      usleep( 1000 );
  }

  /// Publishes once and waits until it has arrived; nanoseconds.
  double sent() {
    board_->took = 0;
    board_->sent = now();
    publish();
    answered();
    while( board_->took == 0 )
      usleep( 50 );
    return static_cast< double >( board_->took );
  }
  /// Publishes so many, with as many in the pipe as it takes well; million a second until all have
  /// arrived.
  double burst( std::size_t count ) {
    std::uint64_t const before = board_->numArrived;
    std::int64_t const start = now();
    constexpr std::size_t atOnce = 64;
    for( std::size_t i = 0; i < count; i += atOnce ) {
      for( std::size_t k = 0; k < std::min( atOnce, count - i ); ++k )
        publish();
      for( std::size_t k = 0; k < std::min( atOnce, count - i ); ++k )
        answered();
    }
    while( board_->numArrived - before < count )
      usleep( 100 );
    return static_cast< double >( count ) / static_cast< double >( now() - start ) * 1e3;
  }

 private:
  struct Board {
    std::atomic< std::int64_t > sent = 0, took = 0;
    std::atomic< std::uint64_t > numArrived = 0;
  };

  void publish() {
    static char const key[8] = {};
    redisAppendCommand( publisher_.context, "PUBLISH changes %b", key, sizeof key );
  }
  void answered() {
    void * reply = nullptr;
    if( redisGetReply( publisher_.context, &reply ) != REDIS_OK )
      throw Unavailable( "redis: no answer" );
    freeReplyObject( reply );
  }
  void subscribe( std::filesystem::path const & socket ) {
    RedisConnection const connection( socket );
    freeReplyObject( redisCommand( connection.context, "SUBSCRIBE changes" ) );
    board_->took = 1;
    for( void * reply; redisGetReply( connection.context, &reply ) == REDIS_OK; ) {
      freeReplyObject( reply );
      board_->took = std::max< std::int64_t >( 1, now() - board_->sent );
      ++board_->numArrived;
    }
  }

  Shared< Board > board_;
  RedisConnection publisher_;
  Child const subscriber_;
};

}  // namespace Bench
