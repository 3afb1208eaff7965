// The agent and the command line as a user runs them, each a process.

#include <gtest/gtest.h>

#include <future>

#include <nlohmann/json.hpp>

#include <Lumo/VlanCounters.h>
#include <coredb/TreeServer.h>
#include <support/PcapFile.h>
#include <support/Shell.h>
#include <support/ShmRoot.h>

#include "../frames/Frames.h"

using Frames::frameFrom;
using Frames::mac;
using Frames::tag;
using TestSupport::Outcome;
using TestSupport::PcapFile;
using TestSupport::SavedFile;

namespace {

struct Programs : testing::Test {
  ~Programs() override {
    if( !agent.empty() )
      run( "kill -9 " + agent );
  }

  /// Runs a command of the shell, in which $agent and $program, the command line, are ours.
  Outcome run( std::string const & command ) const {
    return TestSupport::shell( LUMO_PROGRAM, "agent='" VLAN_COUNTERS_PROGRAM "' capture='" +
                                                 capture.path() + "'; export LUMO_SHM_ROOT='" +
                                                 shm.path() + "'; " + command );
  }
  /// An agent that goes on serving; it has counted when this returns.
  void start( std::string const & arguments = "--capture eth1=$capture" ) {
    SavedFile const said( "" );
    Outcome const begun = run( "\"$agent\" " + arguments + " --serve >" + said.path() +
                               " & echo $!; for i in $( seq 500 ); "
                               "do grep -q counted " +
                               said.path() + " && break; sleep 0.02; done" );
    agent = begun.out.substr( 0, begun.out.find( '\n' ) );
    EXPECT_EQ( begun.err, "" );
  }
  void stop( std::string const & signal ) {
    run( "kill -" + signal + " " + agent + "; while grep -qs '^State:.[^Z]' /proc/" + agent +
         "/status; do sleep 0.01; done" );
    agent.clear();
  }
  std::string rows( std::string const & arguments = "" ) const {
    Outcome const shown = run( "$program show counters vlan " + arguments );
    EXPECT_EQ( shown.err, "" );
    return shown.out.substr( shown.out.find( '\n' ) + 1 );
  }

  Tests::ShmRoot shm;
  // Three broadcasts: one of VLAN 1, two of VLAN 20, and one that no port takes.
  SavedFile const capture{ PcapFile()
                               .frame( 1, 0, frameFrom( mac( 1 ) ), 1000 )
                               .frame( 2, 0, frameFrom( mac( 1 ), tag( 0x8100, 20 ) ) )
                               .frame( 3, 0, frameFrom( mac( 2 ), tag( 0x8100, 20 ) ) )
                               .frame( 4, 0, frameFrom( mac( 2 ), tag( 0x8100, 4095 ) ) )
                               .bytes() };
  std::string agent;
};

TEST_F( Programs, countClearAndShow ) {
  Outcome const once = run( "\"$agent\" --capture eth1=$capture" );
  EXPECT_EQ( once.out, "3 frames counted, 1 dropped by their ports; counters of 2 VLANs\n" );
  EXPECT_EQ( once.err, "" );
  EXPECT_EQ( once.status, 0 );
  EXPECT_EQ( run( "$program show counters vlan" ).out,
             "VLAN  inOctets  inUcastPkts  inMcastPkts  inBcastPkts  outOctets  outUcastPkts  "
             "outMcastPkts  outBcastPkts  cleared\n"
             "   1      1000            0            0            1          0             0"
             "             0             0  -\n"
             "  20       128            0            0            2          0             0"
             "             0             0  -\n" );
  std::string const socket = shm.path() + "/vlanCounter/requests";
  Outcome const nobody = run( "$program clear counters vlan" );
  EXPECT_EQ( nobody.status, 2 );
  EXPECT_EQ( nobody.err,
             "lumo: no agent clears counters: " + socket + ": No such file or directory\n" );

  // The next one goes on from there, and clears what it is asked to.
  start();
  EXPECT_EQ( run( "\"$agent\" --serve" ).err,
             "vlan-counters: " + shm.path() + "/vlanCounter has a writer already\n" );
  Outcome const some = run( "$program clear counters vlan 19-21" );
  EXPECT_EQ( some.status, 3 );
  EXPECT_EQ( some.out, "cleared: VLAN 20\n" );
  EXPECT_EQ( some.err, "lumo: VLANs 19,21: no counters\n" );
  EXPECT_EQ( rows().substr( 0, 15 ), "   1      2000 " );
  EXPECT_EQ( rows( "20" ).substr( 0, 15 ), "  20         0 " );
  EXPECT_EQ( rows( "20 --raw" ).substr( 0, 15 ), "  20       256 " );
  Outcome const all = run( "$program clear counters vlan" );
  EXPECT_EQ( all.status, 0 );
  EXPECT_EQ( all.out, "cleared: VLANs 1,20\n" );

  // One that was killed is succeeded, and what was cleared stays so.
  stop( "KILL" );
  EXPECT_EQ( run( "$program clear counters vlan 1" ).err,
             "lumo: no agent clears counters: " + socket + ": Connection refused\n" );
  start();
  auto const json = nlohmann::json::parse( run( "$program show counters vlan --json" ).out );
  EXPECT_EQ( json["schema"], "lumo.vlan-counters/1" );
  EXPECT_EQ( json["vlans"][0]["vlan"], 1 );
  EXPECT_EQ( json["vlans"][0]["inOctets"], 1000 );
  EXPECT_GT( json["vlans"][0]["clearedAt"], 1e9 );
  EXPECT_GE( json["vlans"][0]["statsUpdateTime"], json["vlans"][0]["clearedAt"] );
  EXPECT_EQ( run( "$program clear counters vlan all" ).status, 0 );
  stop( "TERM" );
  EXPECT_FALSE( std::filesystem::exists( socket ) );
}

TEST_F( Programs, serveWhileAPipeIsSilent ) {
  Outcome const served = run(
      "cd \"$LUMO_SHM_ROOT\"; mkfifo pipe; { cat \"$capture\"; exec sleep 60; } >pipe & "
      "\"$agent\" --capture eth1=pipe --interval 0.02 & counting=$!; for i in $( seq 500 ); do "
      "$program show counters vlan 20 >shown 2>&1 && break; sleep 0.02; done; "
      "$program clear counters vlan; kill $counting; wait $counting; echo $?; kill $( jobs -p )" );
  EXPECT_EQ( served.out, "cleared: VLANs 1,20\n130\n" );
}

TEST_F( Programs, sayWhatIsWrong ) {
  struct {
    std::string command, line;
    int status;
  } const cases[] = {
      { "$program show counters vlan", "lumo: there is no table 'vlanCounter'", 3 },
      { "\"$agent\"", "vlan-counters: --capture PORT=FILE or --serve is required", 2 },
      { "\"$agent\" --serve --interval 0",
        "vlan-counters: --interval '0': a number of seconds was expected, at least 0.001", 2 },
      { "\"$agent\" --capture eth1=/dev/null",
        "vlan-counters: /dev/null: cannot be read as a capture: truncated dump file; tried to read "
        "4 file header bytes, only got 0 (after 0 frames)",
        2 },
      { "$program show counters vlan 1-",
        "lumo: VLANS '1-': a number from 1 to 4094 was expected, or a range as 20-29", 1 },
      { "$program clear counters vlan 5-4",
        "lumo: VLANS '5-4': a number from 1 to 4094 was expected, or a range as 20-29", 1 },
      { "$program clear counters vlan 5x",
        "lumo: VLANS '5x': a number from 1 to 4094 was expected, or a range as 20-29", 1 },
  };
  for( auto const & c : cases ) {
    Outcome const said = run( c.command );
    EXPECT_EQ( said.status, c.status ) << c.command;
    EXPECT_EQ( said.err, c.line + "\n" ) << c.command;
  }
}

TEST_F( Programs, doNotWaitForEverForAnAgentThatDoesNotServe ) {
  run( "\"$agent\" --capture eth1=$capture" );
  auto const activity = Koi::activityFactory();
  auto const requests = Bridging::vlanCountersCliReqFactory( Koi::Name( "requests" ) );
  Coredb::TreeServer const server( requests, shm.path() + "/vlanCounter/requests",
                                   Coredb::Access::writable, activity.ptr() );
  auto said =
      std::async( std::launch::async, [this] { return run( "$program clear counters vlan 1" ); } );
  while( said.wait_for( std::chrono::seconds( 0 ) ) != std::future_status::ready )
    activity->runFor( 0.01 );
  Outcome const outcome = said.get();
  EXPECT_EQ( outcome.status, 2 );
  EXPECT_EQ( outcome.err, "lumo: not cleared within 5 s: VLAN 1\n" );
  EXPECT_TRUE( requests->clearCountersRequest().empty() );  // taken back
}

}  // namespace
