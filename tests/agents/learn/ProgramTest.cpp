// The program as a user runs it: arguments, exit status, what goes to which stream.

#include <Lumo/QuillBridging.h>
#include <gtest/gtest.h>
#include <koi/Activity.h>
#include <support/PcapFile.h>
#include <support/Shell.h>
#include <support/ShmRoot.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <fstream>

#include "../frames/Frames.h"

namespace Learn {
namespace {

using namespace Frames;
using TestSupport::Outcome;
using TestSupport::PcapFile;
using TestSupport::SavedFile;

/// Runs a command of the shell, in which $program is ours.
Outcome shell( std::string const & command ) {
  return TestSupport::shell( LEARN_PROGRAM, command );
}

Outcome learn( std::string const & arguments ) { return shell( "$program " + arguments ); }

std::string twoFrames() {
  return PcapFile()
      .frame( 1, 5, frameFrom( mac( 1 ) ) )
      .frame( 2, 0, frameFrom( mac( 2 ) ) )
      .bytes();
}

TEST( Program, wrongArgumentsAreNamedOnOneLine ) {
  SavedFile const capture( twoFrames() );
  std::string const sound = "--capture eth1=" + capture.path() + " ";
  struct {
    std::string arguments, line;
  } const cases[] = {
      { "", "--capture PORT=FILE is required" },
      { "--bogus", "The following argument was not expected: --bogus" },
      { sound + "--jsno", "The following argument was not expected: --jsno" },
      { "--capture eth1", "--capture 'eth1': PORT=FILE was expected" },
      { "--capture =a", "--capture '=a': PORT=FILE was expected" },
      { "--capture eth1=", "--capture 'eth1=': PORT=FILE was expected" },
      { "--capture eth1=/nonexistent", "--capture 'eth1=/nonexistent': no such file" },
      { sound + sound, "--capture 'eth1=" + capture.path() + "': the port has a capture already" },
      { "--capture eth1=- --capture eth2=-",
        "--capture 'eth2=-': standard input is another port's capture" },
      { sound + "--native eth1=0", "--native 'eth1=0': the VLAN is a number from 1 to 4094" },
      { sound + "--native eth1=4095", "--native 'eth1=4095': the VLAN is a number from 1 to 4094" },
      { sound + "--native eth1=1x", "--native 'eth1=1x': the VLAN is a number from 1 to 4094" },
      { sound + "--native eth2=5", "--native 'eth2=5': no --capture names the port" },
      { sound + "--aging -1",
        "--aging '-1': a number of seconds was expected, or 0 for no ageing" },
      { sound + "--aging 5m",
        "--aging '5m': a number of seconds was expected, or 0 for no ageing" },
      { sound + "--config /nonexistent.json", "/nonexistent.json: No such file or directory" },
      { sound + "--native eth1=5 --native eth1=6",
        "--native 'eth1=6': the port has a native VLAN already" },
  };
  for( auto const & c : cases ) {
    Outcome const run = learn( c.arguments );
    EXPECT_EQ( run.status, 2 ) << c.arguments;
    EXPECT_EQ( run.out, "" ) << c.arguments;
    EXPECT_EQ( run.err, "learn: " + c.line + "\n" );
  }
  Outcome const badPort = learn( "--capture ethernet=" + capture.path() );
  EXPECT_EQ( badPort.status, 2 );
  EXPECT_NE( badPort.err.find( "--capture 'ethernet=" ), std::string::npos ) << badPort.err;
}

TEST( Program, readsPortsByTimeWithTheirNativeVlans ) {
  SavedFile const first( twoFrames() );
  SavedFile const second(
      PcapFile( { .pcapng = true } ).frame( 1, 6, frameFrom( mac( 1 ) ) ).bytes() );
  std::string const captures =
      "--capture eth1=" + first.path() + " --capture=eth3/1=" + second.path();
  Outcome const run = learn( captures + " --native eth1=9 --native eth3/1=9 --json" );
  EXPECT_EQ( run.status, 0 );
  EXPECT_EQ( run.err, "" );
  EXPECT_EQ( run.out, R"({
  "schema": "lumo.mac-table/1",
  "entries": [
    {
      "fid": 9,
      "address": "02:00:00:00:00:01",
      "intf": "eth3/1",
      "entryType": "learnedDynamicMac",
      "moves": 1,
      "lastMoveTime": 1.000006
    },
    {
      "fid": 9,
      "address": "02:00:00:00:00:02",
      "intf": "eth1",
      "entryType": "learnedDynamicMac",
      "moves": 0,
      "lastMoveTime": 2.0
    }
  ]
}
)" );
}

TEST( Program, theCommandLinePrevailsOverTheConfiguration ) {
  SavedFile const capture( PcapFile()
                               .frame( 1, 0, frameFrom( mac( 1 ) ) )
                               .frame( 8, 0, frameFrom( mac( 2 ) ) )
                               .bytes() );
  SavedFile const config( R"({ "hostAgingTime": 5, "switchIntfConfig": { "eth1": {
      "switchportModeAndNativeVlan": { "switchportMode": "access", "nativeVlan": 10 } } } })" );
  std::string const both = "--capture eth1=" + capture.path() + " --config " + config.path() +
                           " | grep '^ ' | cut -c -23";
  EXPECT_EQ( learn( both ).out, "  10  02:00:00:00:00:02\n" );
  EXPECT_EQ( learn( "--aging 7 --native eth1=9 " + both ).out,
             "   9  02:00:00:00:00:01\n   9  02:00:00:00:00:02\n" );
  SavedFile const wrong( R"({ "hostAgingTime": "long" })" );
  Outcome const run = learn( "--capture eth1=" + capture.path() + " --config " + wrong.path() );
  EXPECT_EQ( run.status, 2 );
  EXPECT_EQ( run.out, "" );
  EXPECT_EQ( run.err.rfind( "learn: " + wrong.path() + ": /hostAgingTime: ", 0 ), 0u ) << run.err;
}

TEST( Program, aDamagedCaptureStopsOnlyItself ) {
  SavedFile const cut( twoFrames().substr( 0, twoFrames().size() - 3 ) );
  SavedFile const sound( PcapFile().frame( 5, 0, frameFrom( mac( 5 ) ) ).bytes() );
  SavedFile const garbage( "this is no capture, whatever its name says" );
  Outcome const run = learn( "--capture eth1=" + cut.path() + " --capture eth2=" + sound.path() +
                             " --capture eth3=" + garbage.path() );
  EXPECT_EQ( run.status, 2 );
  EXPECT_NE( run.out.find( "Hosts: 2" ), std::string::npos ) << run.out;
  EXPECT_EQ( run.err, "learn: " + garbage.path() +
                          ": cannot be read as a capture: unknown file format (after 0 frames)\n"
                          "learn: " +
                          cut.path() +
                          ": truncated dump file; tried to read 60 captured bytes, only got 57 "
                          "(after 1 frames)\n" );
}

TEST( Program, aFileThatMayNotBeReadStopsOnlyItself ) {
  if( geteuid() == 0 )
    GTEST_SKIP() << "root may read every file";
  SavedFile const hidden( twoFrames() );
  ASSERT_EQ( chmod( hidden.path().c_str(), 0 ), 0 );
  Outcome const run = learn( "--capture eth1=" + hidden.path() );
  EXPECT_EQ( run.status, 2 );
  EXPECT_EQ( run.err, "learn: " + hidden.path() +
                          ": cannot be opened: Permission denied (after 0 frames)\n" );
  EXPECT_NE( run.out.find( "Hosts: 0" ), std::string::npos );
}

TEST( Program, readsStandardInput ) {
  SavedFile const capture( twoFrames() );
  Outcome const run = learn( "--capture eth1=- <" + capture.path() );
  EXPECT_EQ( run.status, 0 );
  EXPECT_NE( run.out.find( "Hosts: 2" ), std::string::npos );
}

TEST( Program, aReaderThatLeavesIsNoFaultButAFullDiskIs ) {
  PcapFile manyHosts;  // more than a pipe holds
  for( unsigned n = 0; n < 2000; ++n )
    manyHosts.frame( n, 0, frameFrom( mac( n % 250 ), tag( 0x8100, 1 + n / 250 ) ) );
  SavedFile const capture( manyHosts.bytes() );
  std::string const program = "$program --capture eth1=" + capture.path();
  EXPECT_EQ( shell( "{ " + program + "; echo $? >&2; } | head -n 1" ).err, "0\n" );
  Outcome const full = shell( program + " >/dev/full" );
  EXPECT_EQ( full.status, 2 );
  EXPECT_EQ( full.err, "learn: the table could not be written: No space left on device\n" );
}

TEST( Program, anInterruptEndsTheReadingWithTheTableSoFar ) {
  SavedFile const capture( twoFrames() );
  // The pipe stays open behind the frames: the program waits for more when the interrupt comes. A
  // busy machine may not have started it by then, so the time it gets grows.
  Outcome run;
  for( int seconds = 1; seconds <= 16 && run.out.find( "Hosts: 2" ) == std::string::npos;
       seconds *= 2 ) {
    std::string const wait = std::to_string( seconds );
    run = shell( "( cat " + capture.path() + "; exec sleep " + wait +
                 ".5 ) | timeout --preserve-status -s INT " + wait + " $program --capture eth1=-" );
  }
  EXPECT_EQ( run.status, 130 );
  EXPECT_EQ( run.err, "" );
  EXPECT_NE( run.out.find( "Hosts: 2" ), std::string::npos ) << run.out;
}

TEST( Program, publishesItsHostsAndGoesOnWithThoseThatWereLeft ) {
  SavedFile const capture( twoFrames() ), nothing( PcapFile().bytes() );
  Tests::ShmRoot const shm;
  std::string const table = " --root " + shm.path() + " --table fdb/mac";
  Outcome const first = learn( "--aging 0 --capture eth1=" + capture.path() + table );
  EXPECT_EQ( first.status, 0 );
  Outcome const next = learn( "--aging 0 --json --capture eth1=" + nothing.path() + table );
  EXPECT_EQ( next.status, 0 );
  EXPECT_EQ( next.out, learn( "--aging 0 --json --capture eth1=" + capture.path() ).out );
  // One that is damaged is not believed, and made anew.
  std::ofstream( shm.path() + "/fdb/mac/slots", std::ios::in ).write( "spoiled!", 8 );
  Outcome const anew = learn( "--capture eth1=" + nothing.path() + table );
  EXPECT_EQ( anew.status, 0 );
  EXPECT_NE( anew.out.find( "Hosts: 0" ), std::string::npos ) << anew.out;
  // Not while another process writes it.
  auto const other = Quill::Bridging::statusFactory( Koi::Name( "other" ) );
  Quill::QuillParameters parameters;
  auto const activity = Koi::activityFactory();
  parameters.activity = activity.ptr();
  parameters.root = shm.root();
  other->quillFdbStatusControl().init( Quill::QuillType::writer, true, 100, parameters, "fdb/mac" );
  Outcome const second = learn( "--capture eth1=" + capture.path() + table );
  EXPECT_EQ( second.status, 2 );
  EXPECT_EQ( second.err, "learn: --table: " + shm.path() + "/fdb/mac has a writer already\n" );
  EXPECT_EQ( learn( "--capture eth1=" + capture.path() + " --root /tmp" ).err,
             "learn: --root '/tmp': no --table says what lies there\n" );
  EXPECT_EQ( learn( "--capture eth1=" + capture.path() + " --table ../x" ).err,
             "learn: --table: ../x is no name of a table\n" );
  EXPECT_EQ( learn( "--capture eth1=" + capture.path() + " --pace 0" ).err,
             "learn: --pace '0': a number was expected, 1 for as they came\n" );
}

TEST( Program, keepsThePaceOfItsCapture ) {
  PcapFile frames;
  for( unsigned n = 0; n < 3; ++n )
    frames.frame( 10 * n, 0, frameFrom( mac( n ), tag( 0x8100, 1 ) ) );
  SavedFile const capture( frames.bytes() );
  auto const began = std::chrono::steady_clock::now();
  Outcome const run = learn( "--pace 100 --capture eth1=" + capture.path() );
  EXPECT_GE( std::chrono::steady_clock::now() - began, std::chrono::milliseconds( 200 ) );
  EXPECT_NE( run.out.find( "Hosts: 3" ), std::string::npos );
}

}  // namespace
}  // namespace Learn
