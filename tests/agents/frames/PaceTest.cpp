// Captures beside other work: at the pace of their times, and out of a pipe into which nobody
// writes.

#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

#include <frames/Pace.h>
#include <support/PcapFile.h>
#include <support/SavedFile.h>

#include "Frames.h"

namespace Frames {
namespace {

using TestSupport::PcapFile;
using TestSupport::SavedFile;

struct Paced : testing::Test {
  /// Reads all that there is, at most for ten seconds.
  void read( std::string const & path, double speed ) {
    MergedCaptures captures(
        { path }, []( auto, auto const & why, auto ) { ADD_FAILURE() << why; }, Capture::watched );
    Pace pace( *activity, speed );
    for( Koi::Seconds const end = activity->now() + 10; activity->now() < end; ) {
      if( !pace.isReady( captures ) )
        continue;
      CapturedFrame const * const frame = captures.next().frame;
      if( !frame )
        return;
      while( !pace.isDue( frame->time ) ) {
      }
      sizes.push_back( frame->wireSize );
      times.push_back( activity->now() );
    }
    FAIL() << "it has not ended";
  }

  Koi::Ptr< Koi::Activity > const activity = Koi::activityFactory();
  std::vector< unsigned > sizes;
  std::vector< Koi::Seconds > times;
};

TEST_F( Paced, framesComeAsTheyCame ) {
  std::string const frame = frameFrom( mac( 1 ) );
  SavedFile const capture( PcapFile()
                               .frame( 100, 0, frame, 61 )
                               .frame( 100, 0, frame, 62 )
                               .frame( 103, 0, frame, 63 )
                               .frame( 101, 0, frame, 64 )  // behind its time
                               .bytes() );
  read( capture.path(), 10 );
  EXPECT_EQ( sizes, ( std::vector< unsigned >{ 61, 62, 63, 64 } ) );
  EXPECT_GE( times[2] - times[0], 0.29 );
}

TEST_F( Paced, othersWorkWhileNobodyWritesIntoAPipe ) {
  int ends[2];
  ASSERT_EQ( pipe2( ends, O_CLOEXEC ), 0 );
  std::string const all =
      PcapFile().frame( 1, 0, frameFrom( mac( 1 ) ) ).frame( 2, 0, frameFrom( mac( 2 ) ) ).bytes();
  std::size_t const first = 24 + 16 + 60;  // the file's header, and a frame with its own
  ASSERT_EQ( write( ends[1], all.data(), first ), static_cast< ssize_t >( first ) );
  std::vector< std::size_t > seen;
  Koi::Timer later( activity.ptr(), [&] {
    seen.push_back( sizes.size() );
    EXPECT_GT( write( ends[1], all.data() + first, all.size() - first ), 0 );
    close( ends[1] );
  } );
  later.delayIs( 0.15 );
  read( "/dev/fd/" + std::to_string( ends[0] ), 0 );
  close( ends[0] );
  EXPECT_EQ( seen, std::vector< std::size_t >{ 1 } );
  EXPECT_EQ( sizes.size(), 2u );
}

}  // namespace
}  // namespace Frames
