// OvsdbChannel.h: a table of ovsdb-server, which tells one subscriber, in a process of its own, of
// each change of a row. It speaks the server's protocol (RFC 7047) as far as that needs.
#pragma once

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include <sys/socket.h>
#include <sys/un.h>

#include "ServerProcess.h"
#include "Shared.h"

namespace Bench {

/// Objects of JSON, one after the other, both ways.
class JsonConnection {
 public:
  explicit JsonConnection( std::filesystem::path const & path )
      : socket_( socket( AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0 ) ) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.string().copy( address.sun_path, sizeof address.sun_path - 1 );
    works_ = connect( socket_, reinterpret_cast< sockaddr * >( &address ), sizeof address ) == 0;
  }
  ~JsonConnection() { close( socket_ ); }
  JsonConnection( JsonConnection const & ) = delete;
  JsonConnection & operator=( JsonConnection const & ) = delete;

  bool works() const { return works_; }
  void send( std::string const & text ) {
    for( std::size_t at = 0; at < text.size(); ) {
      auto const count = write( socket_, text.data() + at, text.size() - at );
      if( count <= 0 )
        throw Unavailable( "ovsdb: the server has gone" );
      at += static_cast< std::size_t >( count );
    }
  }
  /// The next object. Its strings hold no quotes.
  std::string received() {
    bool isText = false;
    for( std::size_t at = 0, depth = 0;; ) {
      for( ; at < bytes_.size(); ++at ) {
        isText = isText != ( bytes_[at] == '"' );
        depth += !isText && bytes_[at] == '{';
        if( !isText && bytes_[at] == '}' && --depth == 0 ) {
          std::string const object = bytes_.substr( 0, at + 1 );
          bytes_.erase( 0, at + 1 );
          return object;
        }
      }
      char some[65536];
      auto const count = read( socket_, some, sizeof some );
      if( count <= 0 )
        throw Unavailable( "ovsdb: the server has gone" );
      bytes_.append( some, static_cast< std::size_t >( count ) );
    }
  }

 private:
  int const socket_;
  bool works_ = false;
  std::string bytes_;
};

class OvsdbChannel {
 public:
  /// Throws Unavailable where the server is not installed.
  explicit OvsdbChannel( std::filesystem::path const & folder )
      : socket_( folder / "ovsdb.sock" ),
        server_( { "ovsdb-server", "--remote=punix:" + socket_.string(),
                   "--unixctl=" + ( folder / "ovsdb.ctl" ).string(), database( folder ) },
                 [this] { return JsonConnection( socket_ ).works(); } ),
        publisher_( socket_ ),
        subscriber_( [this] { subscribe(); } ) {
    for( std::string & row : rows_ ) {
      publisher_.send( transaction( R"("op":"insert","table":"Host","row":{"generation":0})" ) );
      auto const answer = publisher_.received();
      auto const at = answer.find( R"(["uuid",")" );
      if( at == answer.npos )
        throw Unavailable( "ovsdb: " + answer );
      row = answer.substr( at + 9, 36 );
    }
    while( board_->took == 0 )
      usleep( 1000 );
  }

  /// Changes a row and waits until that has arrived; nanoseconds.
  double sent() {
    board_->took = 0;
    board_->sent = now();
    change( 0, ++generation_ );
    publisher_.received();
    while( board_->took == 0 )
      usleep( 50 );
    return static_cast< double >( board_->took );
  }
  /// Changes rows so many times, a multiple of 64, with as many in the pipe as it takes well;
  /// million a second until the last has arrived.
  double burst( std::size_t count ) {
    constexpr std::size_t atOnce = 64;
    auto const before = board_->numEnds.load();
    auto const start = now();
    for( std::size_t i = 0; i < count; i += atOnce ) {
      for( std::size_t k = 0; k < atOnce; ++k, ++generation_ )
        change( ( i + k ) % numRows, i + k + 1 == count ? -generation_ : generation_ );
      for( std::size_t k = 0; k < atOnce; ++k )
        publisher_.received();
    }
    while( board_->numEnds == before )
      usleep( 100 );
    return static_cast< double >( count ) / static_cast< double >( now() - start ) * 1e3;
  }

 private:
  struct Board {
    std::atomic< std::int64_t > sent = 0, took = 0;
    std::atomic< std::uint64_t > numEnds = 0;
  };
  static constexpr std::size_t numRows = 1000;

  static std::string database( std::filesystem::path const & folder ) {
    auto const schema = folder / "ovsdb.schema", file = folder / "ovsdb.db";
    std::ofstream( schema ) << R"({"name":"Bench","version":"1.0.0","tables":{"Host":{)"
                            << R"("columns":{"generation":{"type":"integer"}},"isRoot":true}}})";
    std::filesystem::remove( file );
    std::string const command =
        "ovsdb-tool create " + file.string() + " " + schema.string() + " 2> /dev/null";
    if( std::system( command.c_str() ) != 0 )
      throw Unavailable( "ovsdb-tool does not start" );
    return file;
  }
  static std::string transaction( std::string const & operation ) {
    return R"({"id":1,"method":"transact","params":["Bench",{)" + operation + "}]}";
  }
  void change( std::size_t row, std::int64_t generation ) {
    publisher_.send( transaction(
        R"("op":"update","table":"Host","where":[["_uuid","==",["uuid",")" + rows_[row] +
        R"("]]],"row":{"generation":)" + std::to_string( generation ) + "}" ) );
  }
  void subscribe() {
    JsonConnection connection( socket_ );
    connection.send( R"({"id":1,"method":"monitor","params":["Bench",null,)"
                     R"({"Host":{"columns":["generation"],"select":{"insert":false}}}]})" );
    connection.received();
    for( board_->took = 1;; ) {
      auto const update = connection.received();
      std::int64_t const when = now();
      board_->took = std::max< std::int64_t >( 1, when - board_->sent );
      board_->numEnds += update.find( R"("generation":-)" ) != update.npos;
    }
  }

  std::filesystem::path const socket_;
  ServerProcess const server_;
  Shared< Board > board_;
  JsonConnection publisher_;
  std::array< std::string, numRows > rows_;
  std::int64_t generation_ = 1;
  Child const subscriber_;
};

}  // namespace Bench
