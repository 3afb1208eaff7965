// The agent, sources and the command line as a user runs them, each a process.

#include <gtest/gtest.h>

#include <Lumo/VlanDynIntfSm.h>
#include <coredb/TreeMount.h>
#include <interface/TreePlaces.h>
#include <koi/EntityPath.h>
#include <wirex/GenericIntfId.h>

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

struct VlanInterfaces : testing::Test {
  ~VlanInterfaces() override { run( "kill -9 $( cat $LUMO_SHM_ROOT/*.pid ) 2>/dev/null" ); }

  /// Runs a command of the shell. Besides the programs it has
  ///   begin NAME PROGRAM ARGUMENT...   in the background, with a pipe as input and $NAME.out
  ///   say NAME LINE...                 writes to the pipe
  ///   until COMMAND...                 waits until it succeeds; status 9 when it does not
  ///   heard NAME TEXT                  the program has printed that line
  ///   killed NAME                      it is dead when this returns
  Outcome run( std::string const & command ) const {
    return TestSupport::shell(
        LUMO_PROGRAM,
        "agent='" VLAN_INTERFACES_PROGRAM "' source='" VLAN_SOURCE_PROGRAM
        "'; export LUMO_SHM_ROOT='" +
            shm.path() +
            "'; cd $LUMO_SHM_ROOT; "
            // Whoever holds the pipe, both ends, does so before the program reads: else it may end.
            "begin() { local n=$1; shift; [ -p $n.in ] || mkfifo $n.in; "
            "sleep 60 3<>$n.in >/dev/null 2>&1 & echo $! > $n.holds.pid; "
            "( exec \"$@\" <$n.in >>$n.out 2>>$n.err ) & echo $! > $n.pid; }; "
            "say() { local n=$1; shift; for l; do echo \"$l\" > $n.in; done; }; "
            "until_() { for i in $( seq 500 ); do \"$@\" && return 0; sleep 0.02; done; return 9; "
            "}; "
            "killed() { kill -9 $( cat $1.pid ); while grep -qs '^State:.[^Z]' /proc/$( cat $1.pid "
            ")/status; "
            "do sleep 0.01; done; }; "
            "heard() { grep -qxF -- \"$2\" $1.out; }; " +
            command );
  }
  void agentIs() const {
    EXPECT_EQ(
        run( "begin agent $agent --interval 0.05 && until_ grep -q serving agent.out" ).status, 0 );
  }
  void sourceIs( std::string const & name ) const { run( "begin " + name + " $source " + name ); }
  /// The source has printed that of an interface.
  void expectHeard( std::string const & name, std::string const & what ) const {
    std::string const line =
        name + std::string( 10 - std::min< std::size_t >( 10, name.size() ), ' ' ) + " " + what;
    EXPECT_EQ( run( "until_ heard " + name + " '" + line + "'" ).status, 0 )
        << line << "\nbut\n"
        << run( "cat " + name + ".out " + name + ".err" ).out;
  }
  /// Rows of `lumo show vlan-interface` with one blank between words.
  std::string rows() const {
    return run( "$program show vlan-interface | tail -n +2 | tr -s ' '" ).out;
  }

  Tests::ShmRoot const shm;
};

TEST_F( VlanInterfaces, goToTheSourceThatPrevails ) {
  agentIs();
  sourceIs( "b" );
  sourceIs( "a" );
  run( "say b 'announce vlan10 description to the peer'" );
  expectHeard( "b", "vlan10: published" );
  run( "say a 'announce vlan10 mtu 9000' 'announce vlan20 cli' 'announce vlan30 mtu 67'" );
  expectHeard( "a", "vlan10: published" );
  expectHeard( "b", "vlan10: Rejected: Higher priority config found" );
  expectHeard( "a", "vlan20: claimed, not published" );
  expectHeard( "a", "vlan30: Rejected: Higher priority config found" );
  EXPECT_EQ( rows(),
             "vlan10 up up 9000 - - a low yes b: Rejected: Higher priority config found\n"
             "vlan20 - - - - - a low no -\n"
             "vlan30 - - - - - a low failed a: Rejected: Higher priority config found\n" );
  run( "say b 'priority high'; say a 'announce vlan30 mtu 68'" );
  expectHeard( "a", "vlan10: Rejected: Higher priority config found" );
  expectHeard( "a", "vlan30: published" );
  EXPECT_EQ( run( "$program show interface vlan10 | tail -n +2" ).out.find( "to the peer" ) !=
                 std::string::npos,
             true );
  run( "say b 'withdraw vlan10'" );
  expectHeard( "b", "vlan10: withdrawn" );
  EXPECT_EQ(
      run( "until_ sh -c \"$program show vlan-interface | grep -q '^vlan10 .* a *low *yes'\"" )
          .status,
      0 );
}

TEST_F( VlanInterfaces, areAskedForAgainWhenTheAgentIsStartedAgain ) {
  agentIs();
  sourceIs( "a" );
  run( "say a 'priority medium' 'announce vlan10'" );
  expectHeard( "a", "vlan10: published" );
  run( "killed agent; rm -f agent.out a.out; : > a.out" );
  agentIs();
  EXPECT_EQ(
      run( "until_ sh -c \"$program show vlan-interface | grep -q '^vlan10 .* a *medium *yes'\"" )
          .status,
      0 );
  // A source that is killed leaves what it asked for, for the next one of its name.
  run( "killed a" );
  EXPECT_EQ( rows(), "vlan10 up up 1500 - - a medium yes -\n" );
  EXPECT_EQ( run( "echo withdraw vlan10 | $source a" ).status, 0 );
  EXPECT_EQ( rows(), "" );
}

TEST_F( VlanInterfaces, areCountedFromWhenTheyAreThere ) {
  std::string const frames = PcapFile()
                                 .frame( 1, 0, frameFrom( mac( 1 ), tag( 0x8100, 10 ) ), 1000 )
                                 .frame( 2, 0, frameFrom( mac( 2 ), tag( 0x8100, 10 ) ), 500 )
                                 .frame( 3, 0, frameFrom( mac( 3 ), tag( 0x8100, 11 ) ), 64 )
                                 .bytes();
  SavedFile const capture( frames );
  EXPECT_EQ( run( "mkfifo frames; begin agent $agent --interval 0.05 --capture eth1=frames; "
                  "exec 5>frames; until_ grep -q serving agent.out; begin a $source a; "
                  "say a 'announce vlan10'; until_ heard a 'a          vlan10: published'; cat " +
                  capture.path() +
                  " >&5; until_ sh -c \"$program show counters interface | "
                  "grep -q '^vlan10 *1500 '\" && $program clear counters interface all" )
                 .out,
             "cleared: vlan10\n" );
  EXPECT_EQ( run( "$program show port-id | awk 'NR > 1 { print $1, $2 }'" ).out, "1 eth1\n" );
}

TEST_F( VlanInterfaces, areOfVlansWhateverASourceAsksFor ) {
  agentIs();
  auto const activity = Koi::activityFactory();
  auto const tree = Coredb::dirFactory( Koi::Name( "Coredb" ) );
  Coredb::TreeMount const mount( tree, shm.path() + "/coredb/switch", Coredb::Access::writable, {},
                                 activity.ptr() );
  auto const until = [&]( auto isSo ) {
    for( int i = 0; i < 1000 && !isSo(); ++i )
      activity->runFor( 0.01 );
    return isSo();
  };
  ASSERT_TRUE( until( [&] { return mount.isSynchronised(); } ) );
  auto const at = [&]( char const * place ) { return Koi::entityNamed( *tree, place ); };
  auto & sources = dynamic_cast< Coredb::Dir & >( *at( Interface::vlanSourcePlace ) );
  auto & list = dynamic_cast< Lumo::DynVlanIntfList & >( *at( Interface::dynVlanIntfListPlace ) );
  auto & counted = dynamic_cast< Interface::VlanIntfCounterWriterStatus & >(
      *at( Interface::vlanCounterWriterPlace ) );
  Wirex::GenericIntfId beyond( Wirex::IntfId( "vlan1" ) );
  beyond.partIs( 1, 20480 );
  auto const stranger = Interface::vlanIntfConfigDirFactory( Koi::Name( "stranger" ) );
  sources.entityIs( Koi::Name( "stranger" ), stranger );
  for( auto const & intfId : { Wirex::IntfId( "eth1" ), beyond.intfId() } ) {
    counted.intfIs( intfId, true );
    stranger->newIntfConfig( intfId )->dynamicIs( true );
  }
  EXPECT_TRUE( until( [&] {
    return list.intfConfigError( Wirex::IntfId( "eth1" ) ) &&
           list.intfConfigError( beyond.intfId() );
  } ) );
  sourceIs( "a" );  // the agent goes on
  run( "say a 'announce vlan10'" );
  expectHeard( "a", "vlan10: published" );
}

TEST_F( VlanInterfaces, sayWhatIsWrong ) {
  Outcome const alone = run( "$source a < /dev/null" );
  EXPECT_EQ( alone.status, 2 );
  EXPECT_EQ( alone.err, "vlan-source: nobody serves switch: " + shm.path() +
                            "/coredb/switch: No such file or directory\n" );
  agentIs();
  Outcome const second = run( "$agent" );
  EXPECT_EQ( second.status, 2 );
  EXPECT_EQ( second.err.substr( 0, 17 ), "vlan-interfaces: " );
  Outcome const wrong =
      run( "printf 'announce\\nannounce eth1\\nannounce vlan4095\\nannounce vlan1 mtu 1.5\\n"
           "announce vlan1 colour red\\npriority top\\nwithdraw vlan1 now\\nfly away\\n\\n# no\\n' "
           "| $source a" );
  EXPECT_EQ( wrong.status, 1 );
  EXPECT_EQ( wrong.err,
             "vlan-source: 'announce': something is missing behind it\n"
             "vlan-source: 'eth1' is no VLAN interface\n"
             "vlan-source: Interface name 'vlan4095': number < 1 or > 4094 not allowed\n"
             "vlan-source: mtu '1.5' is no number\n"
             "vlan-source: 'colour': mtu N, description TEXT or cli was expected\n"
             "vlan-source: priority 'top': low, medium or high was expected\n"
             "vlan-source: 'now' is left over\n"
             "vlan-source: 'fly': announce, withdraw, priority or wait was expected\n" );
  for( char const * arguments : { "--sysname ''", "--interval 0", "--capture eth1" } )
    EXPECT_EQ( run( std::string( "$agent " ) + arguments ).status, 2 ) << arguments;
  EXPECT_EQ( run( "$source ''" ).status, 2 );
}

}  // namespace
