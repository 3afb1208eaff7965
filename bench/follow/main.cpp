// main.cpp: followBench: how soon and how fast a process learns what another one changes. Ours
// beside what one would take instead, in turns in one run; who has nothing to say of something, or
// is not installed, is left out of it.
//
//   followBench [--entries N] [--rounds N]                      default 1,000,000 and 300
//   followBench [--entries N] --stopped-reader SECONDS          default 100,000
//   followBench [--entries N] --dying-readers SECONDS
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>

#include <sys/epoll.h>
#include <sys/eventfd.h>

#include <quill/QuillShadow.h>

#include "../Setting.h"
#include "Keeper.h"
#include "OvsdbChannel.h"
#include "Quill.h"
#include "Shared.h"
#include "StoppedReader.h"
#include "Timing.h"

#ifdef LUMO_BENCH_REDIS
#include "RedisChannel.h"
#endif

namespace Bench {
namespace {

using Writer = ::Quill::QuillWriter< Record >;
using Shadow = ::Quill::QuillShadow< Record, ::Quill::Keeps::values >;

struct Board {
  std::atomic< std::int64_t > sent = 0;
  std::atomic< std::int64_t > took = 0;  ///< of what arrived last; 0: nothing yet
  std::atomic< std::uint64_t > numArrived = 0;
  std::atomic< bool > isReady = false;
};

void arrived( Shared< Board > const & board ) {
  std::int64_t const when = now();
  board->took = std::max< std::int64_t >( 1, when - board->sent );
  ++board->numArrived;
}
void waitFor( std::atomic< bool > const & isSo ) {
  while( !isSo )
    usleep( 1000 );
}
/// Who waits lets others run, or is busy all the while, as who has much to change is.
enum class Waits { asleep, busily };
void wait( Waits how, int microseconds ) {
  if( how == Waits::asleep )
    usleep( static_cast< useconds_t >( microseconds ) );
  else
    for( auto const start = now(); now() - start < 1000 * microseconds; ) {
    }
}
/// Sends once and waits until it has arrived; nanoseconds.
template< class Send >
double onceSent( Shared< Board > const & board, Waits how, Send send ) {
  board->took = 0;
  board->sent = now();
  send();
  while( board->took == 0 )
    wait( how, how == Waits::asleep ? 50 : 1 );
  return static_cast< double >( board->took );
}

/// An eventfd and epoll, without anything to say.
class RawKick {
 public:
  RawKick()
      : event_( eventfd( 0, EFD_CLOEXEC ) ), reader_( [this] {
          int const epoll = epoll_create1( EPOLL_CLOEXEC );
          epoll_event event{ EPOLLIN, {} };
          epoll_ctl( epoll, EPOLL_CTL_ADD, event_, &event );
          board->isReady = true;
          for( eventfd_t count;; arrived( board ) ) {
            epoll_wait( epoll, &event, 1, -1 );
            eventfd_read( event_, &count );
          }
        } ) {
    waitFor( board->isReady );
  }
  ~RawKick() { close( event_ ); }

  double sent() {
    return onceSent( board, Waits::asleep, [&] { eventfd_write( event_, 1 ); } );
  }

 private:
  Shared< Board > board;
  int const event_;
  Child const reader_;
};

/// One word that who is awake looks at all the time: nothing is sooner.
class RawWord {
 public:
  RawWord()
      : reader_( [this] {
          for( std::uint64_t known = 0;; ) {
            std::uint64_t const now = *word_.operator->();
            if( std::exchange( known, now ) != now )
              arrived( board_ );
          }
        } ) {}

  double sent( Waits how ) {
    return onceSent( board_, how, [&] { ++*word_.operator->(); } );
  }

 private:
  Shared< Board > board_;
  Shared< std::atomic< std::uint64_t > > word_;
  Child const reader_;
};

/// A table of ours, and a process with a copy of it: asleep between two changes, or awake.
class Table {
 public:
  Table( Mem::RootPath const & root, char const * name, std::size_t numEntries, bool isAwake )
      : activity_( Koi::activityFactory() ),
        writer_( root, name, parameters( numEntries ) ),
        reader_( [this, root, name, isAwake] { follow( root, name, isAwake ); } ) {
    std::vector< Record > records;
    for( std::size_t i = 0; i < numEntries; ++i )
      records.push_back( recordOf( keyOf( i ), 0 ) );
    writer_.write( std::span< Record const >( records ) );
    while( !board_->isReady || writer_.kicks()->numReaders() == 0 )
      activity_->runFor( 0.001 );
    settle();
  }

  double sent( Waits how ) {
    return onceSent( board_, how, [&] { writer_.write( recordOf( keyOf( 0 ), ++version_ ) ); } );
  }
  struct Burst {
    double millionsASecond, kicksAChange;
  };
  /// Changes every entry once, and waits until all have arrived.
  Burst burst( std::size_t numEntries ) {
    std::vector< Record > records;
    ++version_;
    for( std::size_t i = 0; i < numEntries; ++i )
      records.push_back( recordOf( keyOf( i ), version_ ) );
    auto const kicks = writer_.kicks()->numKicks();
    auto const all = static_cast< double >( numEntries );
    std::uint64_t const before = board_->numArrived;
    std::int64_t const start = now();
    for( std::size_t i = 0; i < numEntries; i += 32 )
      writer_.write( std::span< Record const >( records ).subspan(
          i, std::min< std::size_t >( 32, numEntries - i ) ) );
    while( board_->numArrived - before < numEntries )
      usleep( 100 );
    double const spent = static_cast< double >( now() - start );
    return { all / spent * 1e3,
             static_cast< double >( writer_.kicks()->numKicks() - kicks ) / all };
  }
  std::uint64_t numKicks() const { return writer_.kicks()->numKicks(); }
  /// The reader has nothing left to do.
  void settle() const {
    for( std::uint64_t before = ~0ull; before != board_->numArrived; usleep( 20000 ) )
      before = board_->numArrived;
  }

 private:
  ::Quill::TableParameters parameters( std::size_t numEntries ) const {
    ::Quill::TableParameters p;
    p.classType = "Bench::Table";
    p.maxSlots = static_cast< Koi::U32 >( numEntries );
    p.initialSlots = p.maxSlots;
    p.activity = activity_.ptr();
    return p;
  }
  static Key keyOf( std::size_t i ) { return mixed( i + 1 ); }

  void follow( Mem::RootPath const & root, char const * name, bool isAwake ) const {
    auto const activity = Koi::activityFactory();
    Shadow shadow( activity.ptr(), root, name,
                   { [this] { board_->isReady = true; }, [this]( Key ) { arrived( board_ ); },
                     []( bool ) {} } );
    shadow.staysAwakeIs( isAwake );
    activity->run();
  }

  Shared< Board > board_;
  Koi::Ptr< Koi::Activity > const activity_;
  Writer writer_;
  std::uint32_t version_ = 0;
  Child const reader_;
};

/// The table's slots as bytes, and a copy that can be looked up.
struct Cold {
  double copied, shadowed;
};
Cold cold( Mem::RootPath const & root, char const * name ) {
  using Engine = Shadow::Engine;
  Ntrace::Handler const quiet( -1, {} );
  Mem::TableDir const dir( root, name, Mem::MappedFile::readOnly );
  auto reader = ::Quill::attachedReader< ::Quill::Record< Record > >( dir, quiet );
  auto const & file = reader->slots().file();
  auto const bytes = static_cast< std::size_t >( file.size() );
  for( std::size_t i = 0; i < bytes; i += 4096 )
    keep( file.base()[i] );
  std::int64_t const start = now();
  {
    std::unique_ptr< unsigned char[] > const fresh( new unsigned char[bytes] );
    std::memcpy( fresh.get(), file.base(), bytes );
    keep( *fresh.get() );
  }
  std::int64_t const middle = now();
  auto queue = ::Quill::attachedQueue( dir, file, quiet );
  Engine engine( std::move( reader ), std::move( queue ), quiet );
  engine.goOn( Engine::Clock::time_point::max(), 0, []( auto const & ) {} );
  return { static_cast< double >( middle - start ), static_cast< double >( now() - middle ) };
}

void printed( char const * what, double ours, char const * unit, char const * peer, double theirs,
              double goal, bool isMore ) {
  double const ratio = ours / theirs;
  std::printf( "%-28s %10.2f %-4s %8.2f of %-22s %s %6.3f  %s\n", what, ours, unit, ratio, peer,
               isMore ? ">=" : "<=", goal,
               ( isMore ? ratio >= goal : ratio <= goal ) ? "reached" : "not reached" );
}

int run( std::filesystem::path const & folder, std::size_t numEntries, int rounds ) {
  for( auto const & [what, value] : setting() )
    std::printf( "%-9s %s\n", what.c_str(), value.c_str() );
  std::printf( "%zu entries of 32 bytes, %d rounds, medians\n\n", numEntries, rounds );
  Mem::RootPath const root( folder.string() );
  std::optional< OvsdbChannel > ovsdb;
  try {
    ovsdb.emplace( folder );
  } catch( Unavailable const & why ) {
    std::printf( "left out: %s\n", why.what() );
  }
  std::vector< double > kicked, raw, seen, published, monitored;
  {
    Table asleep( root, "asleep", 1000, false );
    RawKick kick;
#ifdef LUMO_BENCH_REDIS
    RedisServer const server( folder );
    RedisChannel channel( server.socket() );
#endif
    for( int round = 0; round < rounds; ++round ) {
      usleep( 2000 );
      kicked.push_back( asleep.sent( Waits::asleep ) );
      usleep( 2000 );
      raw.push_back( kick.sent() );
#ifdef LUMO_BENCH_REDIS
      usleep( 2000 );
      published.push_back( channel.sent() );
#endif
      if( ovsdb ) {
        usleep( 2000 );
        monitored.push_back( ovsdb->sent() );
      }
    }
  }
  double const kick = medianOf( kicked ) / 1e3;
  printed( "kick, one way", kick, "us", "an eventfd and epoll", medianOf( raw ) / 1e3, 1.3, false );
  if( !published.empty() )
    printed( "kick, one way", kick, "us", "redis pub/sub", medianOf( published ) / 1e3, 0.5,
             false );
  if( ovsdb )
    printed( "kick, one way", kick, "us", "an OVSDB monitor", medianOf( monitored ) / 1e3, 0.15,
             false );
  {
    std::vector< double > polled;
    auto const measure = [&]( auto & one, std::vector< double > & all ) {
      for( int round = 0; round < rounds; ++round ) {
        wait( Waits::busily, 20 + round % 64 );
        all.push_back( one.sent( Waits::busily ) );
      }
    };
    // In turns, not at once: both readers keep a core busy.
    constexpr char const * names[] = { "awake1", "awake2", "awake3" };
    std::uint64_t numKicks = 0;
    for( char const * const name : names ) {
      Table awake( root, name, 1000, true );
      auto const before = awake.numKicks();
      measure( awake, seen );
      numKicks += awake.numKicks() - before;
      RawWord word;
      measure( word, polled );
    }
    double const us = medianOf( seen ) / 1e3, bare = medianOf( polled ) / 1e3;
    printed( "seen by who is awake", us, "us", "a microsecond", 1, 1, false );
    std::printf( "%-28s %10.2f us   %8.2f of a word that is polled\n", "seen by who is awake", us,
                 us / bare );
    printed( "kicks for that", static_cast< double >( numKicks ), "", "none", 1, 0, false );
  }
  Table large( root, "large", numEntries, false );
  std::vector< double > rates, kicks, channelRates, monitorRates, ratios;
  for( int round = 0; round < 5; ++round ) {
    large.settle();
    auto const burst = large.burst( numEntries );
    rates.push_back( burst.millionsASecond );
    kicks.push_back( burst.kicksAChange );
    auto const one = cold( root, "large" );
    ratios.push_back( one.shadowed / one.copied );
#ifdef LUMO_BENCH_REDIS
    RedisServer const server( folder );
    RedisChannel channel( server.socket() );
    channelRates.push_back( channel.burst( numEntries ) );
#endif
    if( ovsdb )
      monitorRates.push_back( ovsdb->burst( 19'200 ) );
  }
  double const rate = medianOf( rates );
  printed( "burst, million changes", rate, "/s", "a million a second", 1, 2.5, true );
  if( !channelRates.empty() )
    printed( "burst, million changes", rate, "/s", "redis pub/sub", medianOf( channelRates ), 4,
             true );
  if( ovsdb )
    printed( "burst, million changes", rate, "/s", "an OVSDB monitor", medianOf( monitorRates ), 60,
             true );
  printed( "kicks for a change", medianOf( kicks ), "", "one", 1, 0.02, false );
  printed( "a copy of all", medianOf( ratios ), "", "memcpy to fresh pages", 1, 1.6, false );
  return 0;
}

}  // namespace
}  // namespace Bench

int main( int argc, char ** argv ) {
  std::size_t numEntries = 0;
  int rounds = 300;
  double seconds = 0;
  auto * ofReaders = &Bench::stoppedReader;
  for( int i = 1; i < argc; ++i ) {
    std::string const option = argv[i];
    char const * const value = i + 1 < argc ? argv[++i] : "";
    long const number = std::strtol( value, nullptr, 10 );
    if( option == "--entries" && number > 0 ) {
      numEntries = static_cast< std::size_t >( number );
    } else if( option == "--rounds" && number > 0 ) {
      rounds = static_cast< int >( number );
    } else if( ( option == "--stopped-reader" || option == "--dying-readers" ) && number > 0 ) {
      ofReaders = option == "--dying-readers" ? &Bench::dyingReaders : &Bench::stoppedReader;
      seconds = static_cast< double >( number );
    } else {
      std::fprintf(
          stderr,
          "followBench: --entries N, --rounds N, --stopped-reader SECONDS and --dying-readers "
          "SECONDS, not %s %s\n",
          option.c_str(), value );
      return 2;
    }
  }
  try {
    return Bench::kept( "/dev/shm", [&]( std::filesystem::path const & folder ) {
      if( seconds > 0 )
        return ofReaders( folder, numEntries > 0 ? numEntries : 100'000, seconds );
      return Bench::run( folder, numEntries > 0 ? numEntries : 1'000'000, rounds );
    } );
  } catch( std::exception const & failure ) {
    std::fprintf( stderr, "followBench: %s\n", failure.what() );
    return 2;
  }
}
