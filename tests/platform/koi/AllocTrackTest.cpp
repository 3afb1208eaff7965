#include <new>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include <koi/AllocTrack.h>

using Koi::AllocTrack;
using Koi::allocTrack;
using Koi::Ptr;

namespace Fruit {

/// The shape of an entity and of one that extends it: each layer stands on its own Tracked.
struct Root : Koi::PtrInterface {
  explicit Root( int bad ) {
    if( bad )
      throw bad;
  }

 protected:
  virtual ~Root() = default;
  void handleZeroRef() const override { delete this; }
};
struct Apple : Koi::Tracked< Apple, Root > {
  using Tracked::Tracked;
};
struct Russet : Koi::Tracked< Russet, Apple > {
  using Tracked::Tracked;
  char skin[100] = {};
};
struct Crab final : Apple {
  using Apple::Apple;
  char sour[50] = {};
};
struct Seed : Koi::Tracked< Seed > {
  int number = 0;
};

}  // namespace Fruit

namespace {

std::vector< Koi::U64 > counts( AllocTrack const & track ) {
  return { track.numLive(), track.liveSize(), track.numAllocated() };
}
using Counts = std::vector< Koi::U64 >;

TEST( AllocTrack, eachObjectIsCountedOnceUnderTheNearestTrackedType ) {
  auto const & apples = allocTrack< Fruit::Apple >();
  auto const & russets = allocTrack< Fruit::Russet >();
  auto const numApples = apples.numAllocated();
  auto const numRussets = russets.numAllocated();
  {
    Ptr< Fruit::Apple > apple = new Fruit::Apple( 0 );
    Ptr< Fruit::Root > russet = new Fruit::Russet( 0 );
    EXPECT_EQ( counts( apples ), ( Counts{ 1, sizeof( Fruit::Apple ), numApples + 1 } ) );
    EXPECT_EQ( counts( russets ), ( Counts{ 1, sizeof( Fruit::Russet ), numRussets + 1 } ) );
    Ptr< Fruit::Apple > crab = new Fruit::Crab( 0 );
    EXPECT_EQ( counts( apples ),
               ( Counts{ 2, sizeof( Fruit::Apple ) + sizeof( Fruit::Crab ), numApples + 2 } ) );
    apple = nullptr;
    EXPECT_EQ( counts( apples ), ( Counts{ 1, sizeof( Fruit::Crab ), numApples + 2 } ) );
  }
  EXPECT_EQ( counts( apples ), ( Counts{ 0, 0, numApples + 2 } ) );
  EXPECT_EQ( counts( russets ), ( Counts{ 0, 0, numRussets + 1 } ) );
}

TEST( AllocTrack, failureLeavesTheCountsRight ) {
  auto & seeds = allocTrack< Fruit::Seed >();
  Counts const before = counts( seeds );
#if defined( __SANITIZE_ADDRESS__ ) || defined( __SANITIZE_THREAD__ )
  // The sanitizers end the process instead.
#else
  std::size_t const tooMuch = std::size_t( -1 ) - 4096;
  EXPECT_THROW( Koi::PtrInterface::koiMemAlloc( tooMuch, seeds ), std::bad_alloc );
  EXPECT_EQ( counts( seeds ), before );
#endif
  Koi::PtrInterface::koiMemFree( nullptr, 8, seeds );
  EXPECT_EQ( counts( seeds ), before );

  auto const & russets = allocTrack< Fruit::Russet >();
  EXPECT_THROW( new Fruit::Russet( 1 ), int );
  EXPECT_EQ( russets.numLive(), 0u );
  EXPECT_EQ( russets.liveSize(), 0u );
}

TEST( AllocTrack, theListNamesTypesInOrderAndAgreesWithCountingByTypeInformation ) {
  Koi::AllocTrackTypeInfo::trackAllocation( typeid( Fruit::Seed ), 24 );
  EXPECT_EQ( &Koi::AllocTrackTypeInfo::track( typeid( Fruit::Seed ) ),
             &allocTrack< Fruit::Seed >() );
  allocTrack< Fruit::Apple >();
  bool seen = false;
  std::string last;
  for( auto const & row : Koi::allocTracks() ) {
    EXPECT_LT( last, row.typeName );
    last = row.typeName;
    if( row.typeName == "Fruit::Seed" ) {
      seen = true;
      EXPECT_EQ( row.numLive, 1u );
      EXPECT_EQ( row.liveSize, 24u );
      EXPECT_GE( row.numAllocated, 1u );
    }
  }
  EXPECT_TRUE( seen );
  Koi::AllocTrackTypeInfo::trackDeallocation( typeid( Fruit::Seed ), 24 );
  EXPECT_EQ( allocTrack< Fruit::Seed >().numLive(), 0u );
}

TEST( AllocTrack, countsAreExactAcrossThreads ) {
  Koi::threadSafePtrIs( true );
  auto & seeds = allocTrack< Fruit::Seed >();
  auto const before = seeds.numAllocated();
  std::vector< std::thread > threads;
  for( int i = 0; i < 4; ++i )
    threads.emplace_back( [] {
      for( int turn = 0; turn < 10000; ++turn )
        delete new Fruit::Seed;
    } );
  for( auto & thread : threads )
    thread.join();
  EXPECT_EQ( seeds.numAllocated() - before, 40000u );
  EXPECT_EQ( seeds.numLive(), 0u );
  EXPECT_EQ( seeds.liveSize(), 0u );
  Koi::threadSafePtrIs( false );
}

}  // namespace
