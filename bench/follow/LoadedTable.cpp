#include "LoadedTable.h"

#include <ctime>

namespace Bench {
namespace {

::Quill::TableParameters parameters( Koi::Activity * activity, std::size_t numEntries ) {
  ::Quill::TableParameters p;
  p.classType = "Bench::Table";
  p.maxSlots = static_cast< Koi::U32 >( numEntries );
  p.fixedCapacity = true;
  p.activity = activity;
  return p;
}

/// Nanoseconds that this thread had a processor: neighbours take others.
std::int64_t ownTime() {
  timespec time{};
  clock_gettime( CLOCK_THREAD_CPUTIME_ID, &time );
  return std::int64_t{ time.tv_sec } * 1'000'000'000 + time.tv_nsec;
}

}  // namespace

FollowingProcess::FollowingProcess( Mem::RootPath const & root, std::string const & table,
                                    std::function< bool( Key ) > const & stays )
    : child_( [&] {
        using Shadow = ::Quill::QuillShadow< Record, ::Quill::Keeps::values >;
        auto const activity = Koi::activityFactory();
        Knowledge known;
        std::unique_ptr< Shadow > shadow;
        auto const ready = [&] {
          Koi::U32 place = 0;
          while( auto const record = shadow->next( place ) )
            known.generationIs( record->key, record->value.generation );
          board_->sum = known.sum();
          board_->isReady = true;
        };
        auto const told = [&]( Key key ) {
          auto const record = shadow->lookup( key );
          if( record ? !proves( key, record->value ) ||
                           record->value.generation < known.generation( key )
                     : stays( key ) )
            board_->wasWrong = true;
          // Behind a removal generations go on.
          known.generationIs( key, record ? record->value.generation : 0 );
          board_->sum = known.sum();
        };
        shadow = std::make_unique< Shadow >( activity.ptr(), root, table,
                                             Shadow::Handlers{ ready, told, []( bool ) {} } );
        activity->run();
      } ) {}

LoadedTable::LoadedTable( Koi::Activity * activity, Mem::RootPath const & root, std::string name,
                          std::size_t numEntries )
    : root_( root ),
      name_( std::move( name ) ),
      numEntries_( numEntries ),
      writer_( root_, name_, parameters( activity, numEntries ) ) {
  for( std::size_t i = 0; i < numEntries; ++i ) {
    writer_.write( recordOf( mixed( i + 1 ), 1 ) );
    knowledge_.generationIs( mixed( i + 1 ), 1 );
  }
}

std::unique_ptr< FollowingProcess > LoadedTable::follower() const {
  return std::make_unique< FollowingProcess >( root_, name_, stays );
}

double LoadedTable::work( double seconds ) {
  constexpr std::size_t atOnce = 512;
  std::size_t numChanges = 0;
  std::int64_t const start = now();
  std::int64_t spent = 0;
  do {
    // What is known follows behind, outside of what is measured.
    std::array< Record, atOnce > changes;
    std::int64_t const begin = ownTime();
    for( auto & change : changes ) {
      change = recordOf( mixed( 1 + random_() % numEntries_ ), ++generation_ );
      if( generation_ % 8 == 0 && !stays( change.key ) ) {
        writer_.remove( change.key );
        change.value.generation = 0;
      } else {
        writer_.write( change );
      }
    }
    spent += ownTime() - begin;
    numChanges += atOnce;
    for( auto const & change : changes )
      knowledge_.generationIs( change.key, change.value.generation );
  } while( static_cast< double >( now() - start ) < seconds * 1e9 );
  return static_cast< double >( numChanges ) / static_cast< double >( spent ) * 1e9;
}

bool LoadedTable::isQueueBounded() const {
  auto const & engine = writer_.engine();
  double const numSlots = engine.slots().numSlots();
  return engine.queue().capacity() <= 1.25 * numSlots + 128;
}

}  // namespace Bench
