// EntityStream.cpp: fuzz target: whatever bytes come to an end of an attribute log, it takes them
// or raises ParseException; and once both ends begin anew, their rooms become equal.
//
// An input is a script. Its first byte says which of two plays it is: two ends between which bytes
// are held back, cut, harmed, repeated and exchanged; or one end that is told frames out of the
// script by a stranger and then meets an honest peer. Frames are harmed as frames, so that what
// they hold is reached: a wrong length only says that the rest of the stream is lost.

#include <cstdint>
#include <deque>

#include <koi/Mirror.h>
#include <platform/koi/RoomChanges.h>

#include "Require.h"

namespace {

using Everything::Room;
using Koi::Mirror;
using Koi::U8;
using TestSupport::RoomChange;

/// The bytes of an input, one after another; behind them it gives zeros.
class Script {
 public:
  Script( std::uint8_t const * data, std::size_t size ) : data_( data ), left_( size ) {}

  bool hasEnded() const { return left_ == 0; }
  U8 byte() {
    if( left_ == 0 )
      return 0;
    --left_;
    return *data_++;
  }
  std::size_t number() {
    unsigned const high = byte();
    return high << 8 | byte();
  }
  /// A byte that says how many there are, and so many.
  std::string someBytes( unsigned most ) {
    std::size_t const size = byte() % most;
    return bytes( size );
  }
  /// At most so many bytes.
  std::string bytes( std::size_t most ) {
    std::size_t const size = std::min( most, left_ );
    std::string const taken( reinterpret_cast< char const * >( data_ ), size );
    data_ += size;
    left_ -= size;
    return taken;
  }
  RoomChange change() {
    unsigned const kind = byte(), what = byte();
    return { static_cast< RoomChange::Kind >( kind % RoomChange::numKinds ), what % 5,
             what / 5 % 4 };
  }

 private:
  std::uint8_t const * data_;
  std::size_t left_;
};

std::string bigEndian( std::uint64_t number, unsigned size ) {
  std::string bytes( size, '\0' );
  for( unsigned i = size; i != 0; number >>= 8 )
    bytes[--i] = static_cast< char >( number );
  return bytes;
}

std::string frame( std::string const & kindAndBody ) {
  return bigEndian( kindAndBody.size(), 4 ) + kindAndBody;
}

/// All of a room, what the random changes leave alone too. Where both ends changed theirs, the
/// lights of the shelves may differ.
std::string text( Room const & room, bool bothChanged ) {
  std::string all =
      bothChanged ? TestSupport::withoutLights( room ) : TestSupport::wholeText( room );
  for( auto const & i : room.shelf() ) {
    std::map< std::string, std::string > books;
    for( auto const & j : i.value()->book() )
      books[std::string( j.key() )] = std::string( valueToStrep( j.value() ) );
    for( auto const & [title, book] : books )
      all += "book " + book + "\n";
  }
  std::map< std::string, std::string > lamps;
  for( auto const & i : room.lamp() )
    lamps[std::string( Koi::String8( i.key() ) )] =
        std::string( Koi::valueToStrep( i.value()->glow() ) );
  for( auto const & [name, glow] : lamps )
    all += name + " glows " + glow + "\n";
  return all;
}

/// A room, its mirror, and the frames that are on the way to it.
struct End {
  End( Mirror::Role role, bool writable ) : mirror( room, role, writable ) {
    // One that was set does not become null again, whatever the source says.
    if( role == Mirror::source )
      room->mainLampIs( Everything::lampFactory( Koi::Name( "main" ) ) );
  }

  void change( RoomChange const & change ) {
    try {
      change.apply( *room );
    } catch( Koi::ParseException const & ) {
      throw;
    } catch( Koi::Exception const & ) {  // refused, as what an enemy put there may lead to
    }
  }
  /// The frames of what it has to say.
  std::deque< std::string > says( std::size_t most ) {
    Koi::Ptr< Koi::NboAttrLog::Out > const bytes( new Koi::NboAttrLog::Out );
    mirror.flush( *bytes, most );
    std::deque< std::string > frames;
    for( std::size_t at = 0; at < bytes->size(); at += frames.back().size() )
      frames.emplace_back( reinterpret_cast< char const * >( bytes->data() ) + at,
                           4 + Koi::loadBig< Koi::U32 >( bytes->data() + at ) );
    return frames;
  }
  /// They are on the way to the peer.
  void speaks( End & peer, std::size_t most ) {
    for( std::string & one : says( most ) )
      peer.coming.push_back( std::move( one ) );
  }
  /// The next bytes come, all of a frame or its beginning.
  void hears( std::size_t most ) {
    if( coming.empty() )
      return;
    std::string const piece = coming.front().substr( 0, most );
    coming.front().erase( 0, most );
    if( coming.front().empty() )
      coming.pop_front();
    mirror.received( piece.data(), piece.size() );
  }
  void hearsAll() {
    while( !coming.empty() )
      hears( std::string::npos );
  }

  Koi::Ptr< Room > room = Everything::roomFactory( Koi::Name( "room" ) );
  std::deque< std::string > coming;
  Mirror mirror;
};

/// Nothing harms the bytes from now on: neither end refuses any, and the rooms become equal.
void requireRest( End & source, End & proxy, bool bothChanged ) {
  try {
    source.hearsAll();
    proxy.hearsAll();
    for( int i = 0; source.mirror.hasOutput() || proxy.mirror.hasOutput(); ++i ) {
      Fuzz::require( i < 1000, "two ends come to rest", "" );
      source.speaks( proxy, 1 << 20 );
      proxy.hearsAll();
      proxy.speaks( source, 1 << 20 );
      source.hearsAll();
    }
  } catch( Koi::ParseException const & refusal ) {
    Fuzz::require( false, "an end takes what the other one says", refusal.what() );
  }
  Fuzz::require( source.mirror.isSynchronised() && proxy.mirror.isSynchronised(),
                 "two ends at rest are synchronised", "" );
  std::string const sources = text( *source.room, bothChanged ),
                    proxys = text( *proxy.room, bothChanged );
  Fuzz::require( sources == proxys, "the rooms of two ends at rest are equal",
                 "the source:\n" + sources + "the proxy:\n" + proxys );
}

// ---- two ends

class TwoEnds {
 public:
  TwoEnds( Script & script, unsigned flags )
      : script_( script ),
        source_( Mirror::source, ( flags & 2 ) == 0 ),
        proxy_( Mirror::proxy, ( flags & 4 ) == 0 ),
        mayBothChange_( ( flags & 6 ) == 0 ) {}

  void play() {
    while( !script_.hasEnded() )
      try {
        step();
      } catch( Koi::ParseException const & refusal ) {
        Fuzz::require( isHarmed_, "an end takes what the other one says", refusal.what() );
        beginAnew();
      }
    if( isHarmed_ )
      beginAnew();
    requireRest( source_, proxy_, mayBothChange_ );
  }

 private:
  void beginAnew() {
    for( End * const end : { &source_, &proxy_ } ) {
      end->coming.clear();
      end->mirror.restart();
    }
    isHarmed_ = false;
  }

  void step() {
    U8 const what = script_.byte();
    End & end = what % 2 ? proxy_ : source_;
    End & peer = what % 2 ? source_ : proxy_;
    switch( what / 2 % 16 ) {
      case 0:
      case 1:
      case 2:
        end.change( script_.change() );
        break;
      case 3:
        for( unsigned left = script_.byte() % 32; left != 0; --left )
          end.change( script_.change() );
        break;
      case 4:
        end.speaks( peer, 1 + script_.byte() * 4u );
        break;
      case 5:
        end.speaks( peer, 1 << 20 );
        break;
      case 6:
        for( unsigned left = script_.byte() % 16; left != 0; --left )
          end.hears( std::string::npos );
        break;
      case 7:
        end.hears( 1 + script_.byte() );
        break;
      case 8:
        source_.speaks( proxy_, 1 << 20 );
        proxy_.hearsAll();
        proxy_.speaks( source_, 1 << 20 );
        source_.hearsAll();
        break;
      case 9:
        beginAnew();
        break;
      case 10:  // on the connection that there is
        end.mirror.beginAnew();
        if( script_.byte() % 2 != 0 )
          peer.mirror.beginAnew();
        break;
      default:
        if( !end.coming.empty() )
          harm( end.coming );
    }
  }

  void harm( std::deque< std::string > & coming ) {
    isHarmed_ = true;
    U8 const how = script_.byte();
    std::size_t const which = how / 8 % coming.size();
    std::string & one = coming[which];
    auto const at = coming.begin() + static_cast< std::ptrdiff_t >( which );
    switch( how % 8 ) {
      case 0:  // any byte
        one[script_.number() % one.size()] ^= static_cast< char >( script_.byte() );
        break;
      case 1:
        coming.erase( at );
        break;
      case 2:
        coming.insert( at, std::string( one ) );
        break;
      case 3:
        one.swap( coming[script_.byte() % coming.size()] );
        break;
      case 4:  // what stands behind goes
        if( one.size() > 5 )
          one = frame( one.substr( 4, 1 + script_.number() % ( one.size() - 5 ) ) );
        break;
      case 5:  // something comes in between
        if( one.size() > 5 ) {
          std::size_t const place = 5 + script_.number() % ( one.size() - 4 );
          one = frame( one.substr( 4, place - 4 ) + script_.someBytes( 64 ) + one.substr( place ) );
        }
        break;
      case 6: {  // a number, of an entity, of a flush, of whatever has eight bytes or less
        std::size_t const size = std::size_t{ 1 } << script_.byte() % 4;
        std::size_t const place = 5 + script_.number() % one.size();
        if( place + size <= one.size() )
          one.replace( place, size, bigEndian( script_.byte(), static_cast< unsigned >( size ) ) );
        break;
      }
      default:
        one = static_cast< char >( 1 + script_.byte() % 7 );
        one += script_.someBytes( 256 );
        one = frame( one );
    }
  }

  Script & script_;
  End source_, proxy_;
  bool const mayBothChange_;
  bool isHarmed_ = false;
};

// ---- one end

/// A greeting that the end, which begins anew, takes: of a peer in the other role, and an answer to
/// its own.
std::string greeting( End & end, U8 session ) {
  end.mirror.restart();
  std::string answer = end.says( 0 ).front();
  std::string const itsSession = answer.substr( 9, 8 );
  answer.replace( 9, 8, bigEndian( session + 1u, 8 ) ).replace( 17, 8, itsSession );
  answer[33] = static_cast< char >( end.mirror.role() == Mirror::proxy );
  return answer;
}

void playStranger( Script & script, unsigned flags ) {
  End end( ( flags & 2 ) == 0 ? Mirror::source : Mirror::proxy, ( flags & 4 ) == 0 );
  U8 sessions = 0;
  while( !script.hasEnded() ) {
    U8 const kind = script.byte() % 16;
    if( kind == 0 || kind > 13 ) {
      end.coming.push_back( greeting( end, sessions++ ) );
    } else if( kind < 8 ) {
      end.coming.push_back( frame( static_cast< char >( kind ) + script.someBytes( 256 ) ) );
    } else if( kind < 10 ) {
      end.coming.push_back( script.someBytes( 256 ) );
    } else if( kind < 12 ) {
      end.change( script.change() );
    } else {
      end.says( 1 << 20 );
    }
    try {
      end.hearsAll();
    } catch( Koi::ParseException const & ) {
      end.coming.clear();
      end.mirror.restart();
    }
  }
  End peer( end.mirror.role() == Mirror::source ? Mirror::proxy : Mirror::source, true );
  end.mirror.restart();
  if( end.mirror.role() == Mirror::source )
    requireRest( end, peer, false );
  else
    requireRest( peer, end, false );
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput( std::uint8_t const * data, std::size_t size ) {
  Script script( data, size );
  U8 const flags = script.byte();
  if( flags % 2 == 0 )
    TwoEnds( script, flags ).play();
  else
    playStranger( script, flags );
  return 0;
}
