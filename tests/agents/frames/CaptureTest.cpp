// Captures as files give them, sound and damaged, alone and merged by time.

#include <gtest/gtest.h>
#include <support/PcapFile.h>
#include <support/SavedFile.h>
#include <unistd.h>

#include <frames/Capture.h>
#include <frames/MergedCaptures.h>
#include "Frames.h"

namespace Frames {
namespace {

using TestSupport::PcapFile;
using TestSupport::PcapStyle;
using TestSupport::SavedFile;

struct Outcome {
  std::vector< CaptureTime > times;
  std::vector< std::string > frames;
  std::string problem;  // empty at a sound end
};

Outcome read( std::string const & path ) {
  Outcome outcome;
  try {
    Capture capture( path );
    while( CapturedFrame const * frame = capture.next() ) {
      outcome.times.push_back( frame->time );
      outcome.frames.emplace_back( frame->bytes.begin(), frame->bytes.end() );
      EXPECT_EQ( capture.numFrames(), outcome.frames.size() );
    }
    EXPECT_EQ( capture.next(), nullptr );
  } catch( CaptureException const & e ) {
    outcome.problem = e.what();
  }
  return outcome;
}

std::vector< PcapStyle > allStyles() {
  std::vector< PcapStyle > styles;
  for( bool pcapng : { false, true } )
    for( auto order : { std::endian::little, std::endian::big } )
      for( bool nano : { false, true } )
        styles.push_back( { pcapng, order, nano } );
  return styles;
}

class EveryStyle : public testing::TestWithParam< PcapStyle > {};
INSTANTIATE_TEST_SUITE_P( Capture, EveryStyle, testing::ValuesIn( allStyles() ),
                          []( auto const & style ) {
                            PcapStyle const & s = style.param;
                            return std::string( s.pcapng ? "pcapng" : "pcap" ) +
                                   ( s.order == std::endian::big ? "Big" : "Little" ) +
                                   ( s.nano ? "Nano" : "Micro" );
                          } );

TEST_P( EveryStyle, framesComeBackWithTheirTimesAndBytes ) {
  std::string const jumbo = frameFrom( mac( 2 ), {}, 9236 );
  SavedFile const file( PcapFile( GetParam() )
                            .frame( 1353690039, 425111, frameFrom( mac( 1 ) ), 1514 )
                            .frame( 1353690040, 0, jumbo )
                            .frame( 1353690041, 999999, "" )
                            .bytes() );
  Outcome const got = read( file.path() );
  std::uint32_t const unit = GetParam().nano ? 1 : 1000;
  EXPECT_EQ( got.problem, "" );
  EXPECT_EQ( got.frames, ( std::vector< std::string >{ frameFrom( mac( 1 ) ), jumbo, "" } ) );
  ASSERT_EQ( got.times.size(), 3u );
  EXPECT_EQ( got.times[0], ( CaptureTime{ 1353690039, 425111 * unit } ) );
  EXPECT_EQ( got.times[2], ( CaptureTime{ 1353690041, 999999 * unit } ) );
}

TEST_P( EveryStyle, aFileCutAnywhereInItsLastRecordGivesTheFramesBefore ) {
  PcapFile file( GetParam() );
  file.frame( 1, 0, frameFrom( mac( 1 ) ) ).frame( 2, 0, frameFrom( mac( 2 ) ) );
  std::size_t const sound = file.bytes().size();
  file.frame( 3, 0, frameFrom( mac( 3 ) ) );
  for( std::size_t size = sound; size < file.bytes().size(); ++size ) {
    Outcome const got = read( SavedFile( file.bytes().substr( 0, size ) ).path() );
    EXPECT_EQ( got.frames.size(), 2u ) << size;
    EXPECT_EQ( got.problem.empty(), size == sound ) << size << " " << got.problem;
  }
}

TEST( Capture, refusesWhatHoldsNoEthernetFrames ) {
  EXPECT_EQ( read( SavedFile( PcapFile( {}, 105 ).bytes() ).path() ).problem,
             "link type is IEEE802_11, not Ethernet" );
  EXPECT_EQ( read( "/nonexistent/a.pcap" ).problem, "cannot be opened: No such file or directory" );
  SavedFile const cut( PcapFile().bytes().substr( 0, 23 ) );
  for( char const * path : { "/", "/dev/null", cut.path().c_str() } )
    EXPECT_EQ( read( path ).problem.rfind( "cannot be read as a capture: ", 0 ), 0u ) << path;
  EXPECT_EQ( read( SavedFile( std::string( 100, 'x' ) ).path() ).problem,
             "cannot be read as a capture: unknown file format" );
}

TEST( Capture, anInterfaceOfAnotherLinkTypeStopsItWhereItIsDeclared ) {
  PcapFile file( { .pcapng = true } );
  file.frame( 1, 0, frameFrom( mac( 1 ) ) ).interfaceIs( 105 ).frame( 2, 0, frameFrom( mac( 2 ) ) );
  Outcome const got = read( SavedFile( file.bytes() ).path() );
  EXPECT_EQ( got.frames.size(), 1u );
  EXPECT_NE( got.problem.find( "different from the type of the first interface" ),
             std::string::npos )
      << got.problem;
}

TEST( CaptureTime, microsecondsAreTheNearestDouble ) {
  EXPECT_EQ( ( CaptureTime{ 1353690039, 425111000 } ).asSeconds(), 1353690039.425111 );
  EXPECT_EQ( ( CaptureTime{ 1353690039, 425111222 } ).asSeconds(), 1353690039.425111222 );
  EXPECT_EQ( ( CaptureTime{ -1, 500000000 } ).asSeconds(), -0.5 );
  // An absurd time of a damaged record is as good a number as any.
  EXPECT_LT( ( CaptureTime{ INT64_MIN, 999999999 } ).asSeconds(), -9e18 );
}

struct Merged {
  std::string order;  // the last byte of each source, as a digit
  std::vector< std::string > problems;
};

Merged merge( std::vector< std::string > const & paths ) {
  Merged merged;
  MergedCaptures captures( paths,
                           [&]( std::size_t capture, std::string const & why, auto numFrames ) {
                             merged.problems.push_back( std::to_string( capture ) + " after " +
                                                        std::to_string( numFrames ) + ": " + why );
                           } );
  for( auto taken = captures.next(); taken.frame; taken = captures.next() ) {
    auto const n = taken.frame->bytes[11];
    EXPECT_EQ( n / 10u, taken.capture );
    merged.order += std::to_string( n ) + " ";
  }
  return merged;
}

TEST( MergedCaptures, comeByTimeAndEqualTimesInTheOrderNamed ) {
  SavedFile const first( PcapFile()
                             .frame( 10, 0, frameFrom( mac( 1 ) ) )
                             .frame( 20, 5, frameFrom( mac( 2 ) ) )
                             .frame( 30, 0, frameFrom( mac( 3 ) ) )
                             .bytes() );
  SavedFile const second( PcapFile( { .pcapng = true, .nano = true } )
                              .frame( 20, 4999, frameFrom( mac( 11 ) ) )
                              .frame( 20, 5000, frameFrom( mac( 12 ) ) )
                              .frame( 20, 5001, frameFrom( mac( 13 ) ) )
                              .bytes() );
  SavedFile const third( PcapFile().frame( 20, 5, frameFrom( mac( 21 ) ) ).bytes() );
  EXPECT_EQ( merge( { first.path(), second.path(), third.path() } ).order, "1 11 2 12 21 13 3 " );
}

TEST( MergedCaptures, keepTheOrderOfAFileWhoseTimesRunBackwards ) {
  SavedFile const first( PcapFile()
                             .frame( 10, 0, frameFrom( mac( 1 ) ) )
                             .frame( 5, 0, frameFrom( mac( 2 ) ) )
                             .bytes() );
  SavedFile const second( PcapFile()
                              .frame( 7, 0, frameFrom( mac( 11 ) ) )
                              .frame( 12, 0, frameFrom( mac( 12 ) ) )
                              .bytes() );
  EXPECT_EQ( merge( { first.path(), second.path() } ).order, "11 1 2 12 " );
}

TEST( MergedCaptures, goOnWithoutACaptureThatStops ) {
  std::string const sound = PcapFile()
                                .frame( 1, 0, frameFrom( mac( 11 ) ) )
                                .frame( 2, 0, frameFrom( mac( 12 ) ) )
                                .bytes();
  SavedFile const damaged( sound.substr( 0, sound.size() - 1 ) );
  SavedFile const whole( PcapFile().frame( 3, 0, frameFrom( mac( 21 ) ) ).bytes() );
  Merged const merged = merge( { "/nonexistent", damaged.path(), whole.path() } );
  EXPECT_EQ( merged.order, "11 21 " );
  ASSERT_EQ( merged.problems.size(), 2u );
  EXPECT_EQ( merged.problems[0], "0 after 0: cannot be opened: No such file or directory" );
  EXPECT_EQ( merged.problems[1].rfind( "1 after 1: truncated", 0 ), 0u ) << merged.problems[1];
}

}  // namespace
}  // namespace Frames
