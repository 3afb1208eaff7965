#include "StoppedReader.h"

#include <array>
#include <cstdio>
#include <vector>

#include "LoadedTable.h"

namespace Bench {
namespace {

/// Runs the activity until `isSo`, for at most 30 seconds.
template< class Condition >
bool runUntil( Koi::Activity & activity, Condition isSo ) {
  for( int i = 0; i < 30000 && !isSo(); ++i )
    activity.runFor( 0.001 );
  return isSo();
}

/// Counts what is not as it should be, and says so.
class Verdict {
 public:
  bool shouldBe( bool isSo, char const * what ) {
    if( !isSo ) {
      std::fprintf( stderr, "followBench: wrong: %s\n", what );
      isWrong_ = true;
    }
    return isSo;
  }
  int status() const { return isWrong_ ? 1 : 0; }

 private:
  bool isWrong_ = false;
};

constexpr double slice = 0.02;

}  // namespace

int stoppedReader( std::filesystem::path const & folder, std::size_t numEntries, double seconds ) {
  enum Role : std::size_t { nobody, awake, stopped };
  constexpr std::size_t numTables = 3;
  Mem::RootPath const root( folder.string() );
  auto const activity = Koi::activityFactory();
  Verdict verdict;
  std::array< std::unique_ptr< LoadedTable >, numTables > tables;
  for( std::size_t i = 0; i < numTables; ++i )
    tables[i] = std::make_unique< LoadedTable >( activity.ptr(), root,
                                                 "table" + std::to_string( i ), numEntries );
  std::array< std::vector< double >, numTables > ratios;
  for( std::size_t part = 0; part < numTables && verdict.status() == 0; ++part ) {
    // 1. Each table in another role than before: none gains by where its memory is.
    std::array< std::unique_ptr< FollowingProcess >, numTables > followers;
    auto const roleOf = [&]( std::size_t i ) { return ( i + part ) % numTables; };
    for( std::size_t i = 0; i < numTables; ++i ) {
      if( roleOf( i ) == nobody )
        continue;
      followers[i] = tables[i]->follower();
      verdict.shouldBe( runUntil( *activity,
                                  [&] {
                                    return followers[i]->knows( tables[i]->knowledge() ) &&
                                           tables[i]->numReaders() == 1;
                                  } ),
                        "a reader does not attach" );
      if( roleOf( i ) == stopped )
        followers[i]->stop();
    }
    // 2. They change in turns, each first as often as the others.
    auto const start = now();
    for( std::size_t turn = 0; static_cast< double >( now() - start ) < seconds * 1e9; ++turn ) {
      std::array< double, numTables > rates{};
      for( std::size_t k = 0; k < numTables; ++k ) {
        std::size_t const i = ( k + turn ) % numTables;
        rates[roleOf( i )] = tables[i]->work( slice );
        activity->runFor( 0 );
      }
      for( std::size_t role = 0; role < numTables; ++role )
        ratios[role].push_back( rates[role] / ( role == nobody ? 1e6 : rates[nobody] ) );
    }
    // 3. They go on and have everything; they are killed and gone.
    for( std::size_t i = 0; i < numTables; ++i ) {
      verdict.shouldBe( tables[i]->isQueueBounded(), "the queue grows and grows" );
      if( !followers[i] )
        continue;
      followers[i]->goOn();
      auto const isRight = [&] { return followers[i]->knows( tables[i]->knowledge() ); };
      verdict.shouldBe( runUntil( *activity, isRight ), "a reader misses a change" );
      verdict.shouldBe( !followers[i]->wasWrong(), "a reader was told what never was" );
      followers[i].reset();
      auto const isGone = [&] { return tables[i]->numReaders() == 0; };
      verdict.shouldBe( runUntil( *activity, isGone ), "a killed reader is not gone" );
    }
  }
  double const of = medianOf( ratios[stopped] );
  std::printf(
      "stoppedReader: %.0f s each, %zu entries, %zu turns; million changes in a second of the "
      "writer's processor with "
      "nobody %.2f; with a reader that is awake %.3f of that, that is stopped %.3f "
      "(>= 0.95: %s)\n",
      seconds, numEntries, ratios[nobody].size(), medianOf( ratios[nobody] ),
      medianOf( ratios[awake] ), of, of >= 0.95 ? "reached" : "not reached" );
  return verdict.status();
}

int dyingReaders( std::filesystem::path const & folder, std::size_t numEntries, double seconds ) {
  Mem::RootPath const root( folder.string() );
  auto const activity = Koi::activityFactory();
  Verdict verdict;
  LoadedTable table( activity.ptr(), root, "table", numEntries );
  std::array< std::unique_ptr< FollowingProcess >, 8 > followers;
  for( auto & follower : followers )
    follower = table.follower();
  std::vector< double > rates;
  int numKilled = 0;
  double const period = std::min( 1.0, seconds / 8 );
  auto const start = now();
  for( std::size_t round = 0; static_cast< double >( now() - start ) < seconds * 1e9; ++round ) {
    for( double spent = 0; spent < period; spent += slice ) {
      rates.push_back( table.work( slice ) );
      activity->runFor( 0 );
    }
    // Each dies every other time; whoever is stopped dies, too.
    for( std::size_t i = 0; i < 4; ++i, ++numKilled ) {
      auto & follower = followers[( 4 * round + i ) % followers.size()];
      verdict.shouldBe( !follower->wasWrong(), "a reader was told what never was" );
      if( i == 0 )
        follower->stop();
      follower.reset();
    }
    auto const areGone = [&] { return table.numReaders() <= 4; };
    verdict.shouldBe( runUntil( *activity, areGone ), "a killed reader is not gone" );
    for( std::size_t i = 0; i < 4; ++i )
      followers[( 4 * round + i ) % followers.size()] = table.follower();
  }
  for( auto const & follower : followers ) {
    auto const isRight = [&] { return follower->knows( table.knowledge() ); };
    verdict.shouldBe( runUntil( *activity, isRight ), "a reader misses a change" );
    verdict.shouldBe( !follower->wasWrong(), "a reader was told what never was" );
  }
  auto const areEight = [&] { return table.numReaders() == followers.size(); };
  verdict.shouldBe( runUntil( *activity, areEight ), "the readers are not eight" );
  verdict.shouldBe( table.isQueueBounded(), "the queue grows and grows" );
  std::printf(
      "dyingReaders: %.0f s, %zu entries, %d killed; million changes in a second of the writer's "
      "processor %.2f\n",
      seconds, numEntries, numKilled, medianOf( rates ) / 1e6 );
  return verdict.status();
}

}  // namespace Bench
