// FollowProofs.cpp: who keeps a copy of a table, beside a writer that is stopped and goes on
// anywhere.
#include <cstdlib>
#include <random>
#include <sstream>

#include <quill/ShadowEngine.h>

#include "TableProofs.h"

namespace Tests {
namespace {

using Quill::ConquerTable;
using Clock = std::chrono::steady_clock;

/// A copy and what it reported.
template< U32 numWords >
class Follower {
 public:
  using Engine = Quill::ShadowEngine< ProbeRecord, RecordedMemory, numWords >;
  using Queue = typename Engine::Queue;
  static constexpr bool keepsValues = numWords > ProbeKey::count;

  /// `after` is what the table holds in the end.
  Follower( Disk & disk, Story const & story, Content const & after )
      : story_( story ),
        after_( after ),
        engine_( ProbeTable::readerOn( disk ), queueOn( disk ), trace() ) {}

  /// Looks at the whole table.
  void synchronize() {
    while( !engine_.isFollowing() )
      goOn( 0 );
    told_ = held();
  }
  /// Follows until there is no more.
  void follow() {
    for( int i = 0; !goOn( 3 ); ++i )
      if( i > 10000 )
        return faultIs( "it never came to an end" );
  }
  /// Nothing changes any more: is everything as it should be?
  void judge() {
    auto const has = held();
    for( auto const & [key, versions] : story_.states ) {
      auto const is = after_.find( key );
      auto const mine = has.find( key ), told = told_.find( key );
      if( ( is == after_.end() ) != ( mine == has.end() ) )
        return faultIs( "a key is missing, or should be gone" );
      if( ( is == after_.end() ) != ( told == told_.end() ) )
        return faultIs( "nobody was told that a key came or went" );
      if( is != after_.end() && mine->second != is->second )
        return faultIs( "the copy has another version" );
      if( is != after_.end() && told->second != is->second )
        return faultIs( "nobody was told of a version" );
    }
    if( has.size() > after_.size() )
      faultIs( "a key came from nowhere" );
  }
  std::string const & fault() const { return fault_; }

 private:
  static Ntrace::Handler const & trace() {
    static Ntrace::Handler const quiet( -1, {} );
    return quiet;
  }
  static std::unique_ptr< Queue > queueOn( Disk & disk ) {
    RecordedMemory::Dir const dir( disk );
    using File = RecordedMemory::File;
    return std::make_unique< Queue >(
        typename Queue::Files{ dir.open( ConquerTable::fileName[0], File::readOnly ),
                               dir.open( ConquerTable::fileName[1], File::readOnly ) },
        trace() );
  }

  bool goOn( U32 sample ) {
    bool const isDone = engine_.goOn( Clock::time_point::max(), sample,
                                      [&]( ProbeKey const & key ) { reported( key ); } );
    lookAtStable();
    return isDone;
  }
  void reported( ProbeKey const & key ) {
    auto const states = story_.states.find( key );
    if( states == story_.states.end() )
      return faultIs( "a key was reported that never was" );
    auto const version = versionOf( key );
    if( !states->second.contains( version ) )
      return faultIs( "a version, or a deletion, that never was" );
    if( version )
      told_[key] = *version;
    else
      told_.erase( key );
    lookAtStable();
  }
  void lookAtStable() {
    if( engine_.isSynchronized() )
      for( auto const & [key, versions] : story_.states )
        if( !versions.contains( std::nullopt ) && engine_.store().find( key ) == Quill::noIndex )
          return faultIs( "a key that is there throughout was not found" );
  }
  /// What the owner has of a key: with keys alone, what the table has of those that the copy has.
  std::optional< U32 > versionOf( ProbeKey const & key ) {
    U32 const slot = engine_.store().find( key );
    ProbeReader::Value v;
    if( slot == Quill::noIndex )
      return std::nullopt;
    if constexpr( keepsValues )
      std::copy_n( engine_.store().at( slot ).word, 8, v.word );
    else if( !engine_.reader().lookup( key, v ) )
      return std::nullopt;
    auto const version = Tests::versionOf( v );
    if( !version )
      faultIs( "a torn value" );
    return version;
  }
  Content held() {
    Content content;
    for( U32 slot = 0; slot < engine_.store().numSlots(); ++slot )
      if( engine_.store().isOccupied( slot ) ) {
        auto const key = engine_.store().at( slot ).key();
        content[key] = versionOf( key ).value_or( ~U32{ 0 } );  // gone by now
      }
    return content;
  }
  void faultIs( char const * what ) {
    if( fault_.empty() )
      fault_ = what;
  }

  Story const & story_;
  Content const & after_;
  Engine engine_;
  Content told_;
  std::string fault_;
};

/// One run: the copy is made before the operation or under it, and the writer goes as the switches
/// say.
template< U32 numWords >
std::string followed( Story const & story, Content const & after, Disk & disk, bool isEarly,
                      std::size_t start, std::vector< Disk::Switch > const & switches,
                      U64 & loads ) {
  disk.begins( isEarly ? 0 : start );
  std::string fault;
  try {
    Follower< numWords > follower( disk, story, after );
    if( isEarly )
      follower.synchronize();
    disk.begins( start, switches );
    if( !isEarly )
      follower.synchronize();
    follower.follow();
    loads = disk.numLoads;
    disk.finishes();
    follower.follow();
    follower.judge();
    fault = follower.fault();
  } catch( Koi::Exception const & e ) {
    fault = e.what();
  }
  return fault;
}

std::string ofBoth( Story const & story, Content const & after, Disk & disk, bool isEarly,
                    std::size_t start, std::vector< Disk::Switch > const & switches, U64 & loads ) {
  auto fault = followed< 8 >( story, after, disk, isEarly, start, switches, loads );
  if( fault.empty() )
    fault = followed< ProbeKey::count >( story, after, disk, isEarly, start, switches, loads );
  return fault;
}

}  // namespace

std::string followFault( Story const & story, Tried & tried ) {
  Disk disk( *story.before );
  disk.replay = &story.events;
  std::size_t const end = story.events.size();
  std::size_t const step = std::getenv( "LUMO_EVERY_SCHEDULE" ) ? 1 : 1 + end / 40;
  U64 loads = 0;
  std::string fault;
  auto const run = [&]( bool isEarly, std::size_t start,
                        std::vector< Disk::Switch > const & switches ) {
    ++tried.schedules;
    fault = ofBoth( story, story.contentAfter, disk, isEarly, start, switches, loads );
    if( fault.empty() )
      return true;
    std::ostringstream how;
    how << ( isEarly ? "an earlier copy" : "a new copy" ) << " from store " << start;
    for( auto const & one : switches )
      how << ", at load " << one.atLoad << " to store " << one.to;
    fault = how.str() + ": " + fault;
    return false;
  };
  for( bool const isEarly : { true, false } ) {
    U64 allOfFirst = 0;
    for( std::size_t start = 0; start <= end; start += step ) {
      // 1. The writer has stopped there, and goes on when the copy is at rest, or at any load.
      if( !run( isEarly, start, {} ) )
        return fault;
      U64 const all = loads;
      allOfFirst = std::max( allOfFirst, all );
      for( U64 load = 1; load <= all; load += 1 + ( end > 40 ? all / 40 : 0 ) )
        if( !run( isEarly, start, { { load, end } } ) )
          return fault;
    }
    // 2. It begins at any load, is stopped at any store, and goes on when the copy is at rest.
    for( U64 load = 1; load <= allOfFirst; load += 1 + ( end > 40 ? allOfFirst / 60 : 0 ) )
      for( std::size_t to = 1; to < end; to += step )
        if( !run( isEarly, 0, { { load, to } } ) )
          return fault;
  }
  // Of the long operations that leaves much out.
  std::mt19937 same( 1 );
  for( std::size_t i = 0; i < ( end > 200 ? 2000 : 0 ); ++i )
    if( !run( true, same() % end, { { 1 + same() % 60, end } } ) )
      return fault;
  // 3. Some schedules of many switches, others in each run.
  unsigned const seed = std::random_device()();
  std::mt19937 random( seed );
  for( int i = 0; i < 200; ++i ) {
    std::vector< Disk::Switch > switches( 3 + random() % 20 );
    std::size_t to = 0;
    U64 load = 0;
    for( auto & one : switches )
      one = { load += 1 + random() % 12, to = std::min( end, to + random() % 12 ) };
    if( !run( random() % 2, 0, switches ) )
      return "seed " + std::to_string( seed ) + ": " + fault;
  }
  disk.rewindTo( 0 );
  return {};
}

std::string followRepairFault( Story const & story, Tried & tried ) {
  std::random_device seed;
  std::size_t const step = 1 + story.events.size() / 60;
  for( std::size_t count = seed() % step; count <= story.events.size(); count += step ) {
    // 1. The writer dies there, and another one puts the table right.
    std::vector< MemoryEvent > events(
        story.events.begin(), story.events.begin() + static_cast< std::ptrdiff_t >( count ) );
    Disk dead( *story.before );
    for( auto const & event : events )
      dead.apply( event );
    dead.record = &events;
    ProbeTable::writerOn( dead, story.shape );
    dead.record = nullptr;
    auto const after = walked( *ProbeTable::readerOn( dead ) );
    if( !after )
      return "a walk met a torn value or a key twice";
    // 2. Who had all that the dead one said, and who comes then, is told; so is who looks again at
    // any load.
    Disk disk( *story.before );
    disk.replay = &events;
    for( bool const isEarly : { true, false } ) {
      U64 loads = 1;
      for( U64 load = 0; load <= loads; load += 1 + loads / 40 ) {
        std::vector< Disk::Switch > switches;
        if( load > 0 )
          switches = { { load, events.size() } };
        ++tried.schedules;
        U64 met = 0;
        auto const fault = ofBoth( story, *after, disk, isEarly, count, switches, met );
        if( !fault.empty() )
          return ( isEarly ? "an earlier copy, after store " : "a new copy, after store " ) +
                 std::to_string( count ) + ", repaired at load " + std::to_string( load ) + ": " +
                 fault;
        loads = std::max( loads, met );
      }
    }
  }
  return {};
}

}  // namespace Tests
