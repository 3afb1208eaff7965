#include <cmath>
#include <stdexcept>
#include <string>
#include <thread>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

#include <koi/Activity.h>
#include <koi/Exception.h>
#include <koi/SimulatedActivity.h>

using Koi::Activity;
using Koi::DescriptorWatch;
using Koi::Ptr;
using Koi::SimulatedActivity;
using Koi::SimulatedWorld;
using Koi::Timer;

namespace {

/// A pipe that is closed at the end.
struct Pipe {
  Pipe() { EXPECT_EQ( pipe2( ends, O_CLOEXEC ), 0 ); }
  ~Pipe() {
    close( ends[0] );
    close( ends[1] );
  }
  void write() const { EXPECT_EQ( ::write( ends[1], "x", 1 ), 1 ); }
  void read() const {
    char byte;
    EXPECT_EQ( ::read( ends[0], &byte, 1 ), 1 );
  }
  int ends[2];
};

/// What both kinds of activity keep.
class EveryActivity : public testing::TestWithParam< bool > {
 protected:
  EveryActivity()
      : activity( GetParam() ? Ptr< Activity >( new SimulatedActivity( 1 ) )
                             : Koi::activityFactory() ),
        deadline( activity, [] { FAIL() << "what was waited for never came"; } ) {}

  /// Runs to the end; what comes later than in 30 s counts as lost.
  void run() {
    deadline.delayIs( 30 );
    activity->run();
  }
  Koi::Task says( char const * what ) {
    return [this, what] { said += what; };
  }

  Ptr< Activity > activity;
  Timer deadline;
  std::string said;
};
INSTANTIATE_TEST_SUITE_P( Koi, EveryActivity, testing::Bool(),
                          []( auto const & kind ) { return kind.param ? "simulated" : "real"; } );

TEST_P( EveryActivity, deferredWorkRunsInOrderAndNeverInsideTheCall ) {
  activity->deferIs( [this] {
    activity->deferIs( says( "3" ) );
    said += "1";
  } );
  activity->deferIs( says( "2" ) );
  EXPECT_EQ( said, "" );
  activity->run();
  EXPECT_EQ( said, "123" );
  activity->run();
  EXPECT_EQ( said, "123" );
}

TEST_P( EveryActivity, timersRunByTimeAndNeverEarly ) {
  Koi::Seconds const start = activity->now();
  Timer late( activity, [&] {
    EXPECT_GE( activity->now(), start + 0.02 );
    said += "late ";
  } );
  int rounds = 0;
  Timer * again = nullptr;
  Timer early( activity, [&] {
    EXPECT_FALSE( again->isArmed() );
    said += "early ";
    if( ++rounds < 3 )
      again->delayIs( 0.001 );
  } );
  again = &early;
  late.delayIs( 0.02 );
  early.timeIs( start - 5 );
  EXPECT_TRUE( early.isArmed() );
  EXPECT_EQ( said, "" ) << "a time that is past is not within the call";
  activity->run();
  EXPECT_EQ( said.substr( 0, 6 ), "early " );
  EXPECT_EQ( rounds, 3 );
  EXPECT_NE( said.find( "late" ), std::string::npos );
  EXPECT_THROW( late.timeIs( NAN ), Koi::RangeException );
  EXPECT_FALSE( late.isArmed() );
}

TEST_P( EveryActivity, armingAnewMovesATimerAndDisarmingEndsTheWait ) {
  Timer timer( activity, says( "once" ) );
  Timer other( activity, says( "never" ) );
  timer.delayIs( 10000 );
  timer.delayIs( 0 );
  other.delayIs( 10000 );
  other.timeDel();
  activity->run();
  EXPECT_EQ( said, "once" );
}

TEST_P( EveryActivity, aHandlerMayEndAnyOtherAndItself ) {
  Pipe pipe;
  pipe.write();
  auto const now = activity->now();
  std::unique_ptr< Timer > timers[3];
  std::unique_ptr< DescriptorWatch > watch;
  int numCalled = 0;
  auto const endAll = [&] {
    ++numCalled;
    for( auto & timer : timers )
      timer = nullptr;
    watch = nullptr;
  };
  for( auto & timer : timers ) {
    timer = std::make_unique< Timer >( activity, endAll );
    timer->timeIs( now );
  }
  watch = std::make_unique< DescriptorWatch >( activity, pipe.ends[0], DescriptorWatch::readable,
                                               endAll );
  activity->run();
  EXPECT_EQ( numCalled, 1 );
}

TEST_P( EveryActivity, descriptorsAreWatchedWhileTheyAreReady ) {
  Pipe pipe;
  int numRead = 0;
  auto const read = [&] {
    pipe.read();
    ++numRead;
  };
  // Two on the same end: each byte is found by one of them, and the other one does not wait for it.
  DescriptorWatch first( activity, pipe.ends[0], DescriptorWatch::readable, read );
  DescriptorWatch second( activity, pipe.ends[0], DescriptorWatch::readable, read );
  DescriptorWatch writer( activity, pipe.ends[1], DescriptorWatch::writable, [&] {
    for( int i = 0; i < 3; ++i )
      pipe.write();
    writer.isWatchingIs( false );
  } );
  deadline.delayIs( 30 );
  while( numRead < 3 && activity->runOnce() ) {
  }
  EXPECT_EQ( numRead, 3 );
  EXPECT_EQ( fcntl( pipe.ends[0], F_GETFL ) & O_NONBLOCK, 0 ) << "the descriptor is the caller's";
}

TEST_P( EveryActivity, theOtherEndsGoingIsTold ) {
  Pipe pipe;
  close( std::exchange( pipe.ends[1], -1 ) );
  DescriptorWatch reader( activity, pipe.ends[0], DescriptorWatch::readable, [&] {
    said += "end";
    reader.isWatchingIs( false );
    deadline.timeDel();
  } );
  run();
  EXPECT_EQ( said, "end" );
}

TEST_P( EveryActivity, whatNeverWaitsIsRefused ) {
  int const file = open( "/proc/self/exe", O_RDONLY | O_CLOEXEC );
  auto const refusal = [&]( int descriptor ) -> std::string {
    try {
      DescriptorWatch watch( activity, descriptor, DescriptorWatch::readable, [] {} );
    } catch( Koi::RangeException const & refused ) {
      return refused.what();
    }
    return "none";
  };
  EXPECT_EQ( refusal( file ), "descriptor " + std::to_string( file ) + " never waits" );
  close( file );
  EXPECT_EQ( refusal( file ), "descriptor " + std::to_string( file ) + " is not open" );
  EXPECT_THROW( activity->deferIs( nullptr ), Koi::RangeException );
  EXPECT_THROW( Timer( activity, nullptr ), Koi::RangeException );
}

TEST_P( EveryActivity, anExceptionLeavesRunAndLosesNothing ) {
  Timer timer( activity, says( "timer " ) );
  timer.delayIs( 0 );
  activity->deferIs( says( "before " ) );
  activity->deferIs( [] { throw std::runtime_error( "handler" ); } );
  activity->deferIs( says( "after " ) );
  EXPECT_THROW( activity->run(), std::runtime_error );
  EXPECT_EQ( said, "before " );
  activity->run();
  EXPECT_EQ( said, "before after timer " );
}

TEST_P( EveryActivity, stopEndsARunAndTheNextOneGoesOn ) {
  activity->stop();  // no run is under way
  Timer timer( activity, says( "timer" ) );
  timer.delayIs( 0.001 );
  activity->deferIs( [this] { activity->stop(); } );
  activity->deferIs( says( "next " ) );
  activity->run();
  EXPECT_EQ( said, "" );
  activity->run();
  EXPECT_EQ( said, "next timer" );
}

TEST_P( EveryActivity, runForKeepsItsTimeWhateverThereIsToDo ) {
  Timer inTime( activity, says( "in time" ) );
  Timer late( activity, says( "late" ) );
  auto const start = activity->now();
  inTime.delayIs( 0.01 );
  late.delayIs( 10000 );
  activity->runFor( 0.02 );
  EXPECT_GE( activity->now(), start + 0.02 );
  EXPECT_EQ( said, "in time" );
  if( GetParam() ) {
    EXPECT_EQ( activity->now(), start + 0.02 ) << "a virtual clock stands where it was sent";
  }
}

TEST_P( EveryActivity, handlesOutliveTheirActivity ) {
  auto timer = std::make_unique< Timer >( activity, says( "never" ) );
  timer->delayIs( 1 );
  // Work that never runs goes with the activity, and takes along what it holds.
  auto held = std::make_shared< Timer >( activity, says( "never" ) );
  activity->deferIs( [held] {} );
  std::weak_ptr< Timer > const watched = held;
  held = nullptr;
  activity = nullptr;
  EXPECT_TRUE( watched.expired() );
  timer->delayIs( 1 );
  EXPECT_FALSE( timer->isArmed() );
}

TEST_P( EveryActivity, theDefaultIsTheOneThatRunsOrElseTheThreadsOwn ) {
  Koi::defaultActivityIs( nullptr );
  Ptr< Activity > const own = Koi::defaultActivity();
  EXPECT_EQ( Koi::defaultActivity(), own );
  activity->deferIs( [this] { EXPECT_EQ( Koi::defaultActivity(), activity ); } );
  activity->run();
  EXPECT_EQ( Koi::defaultActivity(), own );
  std::thread( [&] { EXPECT_NE( Koi::defaultActivity(), own ); } ).join();
  Koi::defaultActivityIs( activity );
  Timer timer( nullptr, says( "here" ) );
  timer.delayIs( 0 );
  activity->run();
  EXPECT_EQ( said, "here" );
  Koi::defaultActivityIs( nullptr );
}

TEST( RealActivity, timersOfOneTimeRunInTheOrderOfArming ) {
  Ptr< Activity > const activity = Koi::activityFactory();
  std::string said;
  Timer a( activity, [&] { said += 'a'; } ), b( activity, [&] { said += 'b'; } );
  auto const at = activity->now() + 0.001;
  a.timeIs( at );
  b.timeIs( at );
  a.timeIs( at );
  activity->run();
  EXPECT_EQ( said, "ba" );
}

TEST( RealActivity, anotherThreadsPostsWakeItInOrder ) {
  Ptr< Activity > const activity = Koi::activityFactory();
  Activity & loop = *activity;
  Timer deadline( activity, [] { FAIL() << "a post was lost"; } );
  deadline.delayIs( 30 );
  int next[2] = {};
  std::vector< std::thread > threads;
  for( int & mine : next )
    threads.emplace_back( [&loop, &deadline, &next, &mine] {
      for( int i = 0; i < 500; ++i )
        loop.post( [&deadline, &next, &mine, i] {
          EXPECT_EQ( mine++, i );
          if( next[0] == 500 && next[1] == 500 )
            deadline.timeDel();
        } );
    } );
  activity->run();
  for( auto & thread : threads )
    thread.join();
  EXPECT_EQ( next[0] + next[1], 1000 );
}

/// Three agents that pass a token through pipes while their timers of one time fire.
std::string traceOf( Koi::U64 seed ) {
  Ptr< SimulatedWorld > const world = new SimulatedWorld( seed );
  std::string trace;
  int numPassed = 0;
  Pipe pipes[3];
  std::vector< Ptr< Activity > > agents;
  std::vector< std::unique_ptr< Timer > > timers;
  std::vector< std::unique_ptr< DescriptorWatch > > watches;
  for( int agent = 0; agent < 3; ++agent ) {
    Ptr< Activity > const activity = new SimulatedActivity( world );
    agents.push_back( activity );
    watches.push_back( std::make_unique< DescriptorWatch >(
        activity, pipes[agent].ends[0], DescriptorWatch::readable, [&, agent] {
          trace += "token " + std::to_string( agent ) + "\n";
          pipes[agent].read();
          if( ++numPassed < 30 )
            pipes[( agent + 1 ) % 3].write();
          else
            world->stop();
        } ) );
    for( int i = 0; i < 4; ++i ) {
      timers.push_back( nullptr );
      timers.back() = std::make_unique< Timer >( activity, [&, agent, i] {
        trace += "timer " + std::to_string( agent ) + std::to_string( i ) + " at " +
                 std::to_string( world->now() ) + "\n";
        if( i == 0 )
          pipes[agent].write();
      } );
      timers.back()->timeIs( 3600 );
    }
  }
  world->run();
  return trace;
}

TEST( SimulatedActivity, aSeedIsATrace ) {
  bool differs = false;
  for( Koi::U64 seed = 0; seed < 20; ++seed ) {
    std::string const trace = traceOf( seed );
    EXPECT_EQ( trace, traceOf( seed ) ) << "seed " << seed;
    EXPECT_NE( trace.find( "token" ), std::string::npos );
    differs = differs || trace != traceOf( seed + 1 );
  }
  EXPECT_TRUE( differs ) << "the order is drawn";
}

TEST( SimulatedActivity, anAgentThatStopsRestsWhileTheOthersGoOn ) {
  Ptr< SimulatedWorld > const world = new SimulatedWorld( 7 );
  Ptr< Activity > const one = new SimulatedActivity( world ), two = new SimulatedActivity( world );
  std::string said;
  Timer first( one, [&] { one->stop(); } ), later( one, [&] { said += "one "; } );
  Timer other( two, [&] { said += "two "; } );
  first.timeIs( 1 );
  later.timeIs( 2 );
  other.timeIs( 3 );
  world->run();
  EXPECT_EQ( said, "two " );
  EXPECT_EQ( world->now(), 3 );
  one->run();
  EXPECT_EQ( said, "two one " );
  EXPECT_EQ( world->now(), 3 ) << "time does not go back";
}

TEST( SimulatedActivity, whatNobodyWillMakeReadyIsNotWaitedFor ) {
  Ptr< Activity > const activity = new SimulatedActivity( 1 );
  Pipe pipe;
  DescriptorWatch reader( activity, pipe.ends[0], DescriptorWatch::readable, [] { FAIL(); } );
  activity->run();
  EXPECT_FALSE( activity->runOnce() );
}

}  // namespace
