// InterfaceTest.cpp: `lumo show interface` and its like as a user runs them, on the tree that a
// process serves and the table that it counts in.
#include <csignal>
#include <filesystem>
#include <future>
#include <optional>

#include <sys/wait.h>

#include <nlohmann/json.hpp>

#include <Interface/EthIntfPortId.h>
#include <Lumo/SubIntf.h>
#include <Lumo/VlanDynIntfSm.h>
#include <coredb/SystemSocket.h>
#include <coredb/Tree.h>
#include <coredb/TreeServer.h>
#include <interface/TreePlaces.h>

#include "support/Shell.h"
#include "support/VlanIntfCounters.h"

namespace {

using namespace Interface;
using namespace Tests;
using Coredb::Access;
using Koi::Name;
using nlohmann::json;
using TestSupport::Outcome;
using Wirex::EthAddr;
using Wirex::IntfId;

IntfId intf( char const * name ) { return IntfId( Koi::String8( name ) ); }

/// A system's tree, which stands in no global directory.
struct System {
  explicit System( char const * name ) : sysname( name ) {}

  template< class E >
  Koi::Ptr< E > at( std::string const & place ) const {
    auto const slash = place.rfind( '/' );
    return static_cast< E * >(
        Coredb::newEntity( *Coredb::directoryIs( top, place.substr( 0, slash ) ),
                           Name( place.substr( slash + 1 ) ), E::koiName )
            .ptr() );
  }
  void serve( Access access = Access::writable ) {
    server.emplace( top, Coredb::newSystemSocket( namedRoot.root(), Name( sysname ) ), access );
  }
  Koi::Ptr< VlanIntfStatus > vlan( char const * name, Koi::U32 genId = 1 ) const {
    return at< VlanIntfStatusDir >( vlanStatusPlace )->intfStatusIs( intf( name ), genId, name );
  }

  std::string const sysname;
  Koi::Ptr< Coredb::Dir > const top = Coredb::dirFactory( Name( "Coredb" ) );
  std::optional< Coredb::TreeServer > server;
};

struct LumoInterface : testing::Test {
  ~LumoInterface() override {
    for( auto const & entry : std::filesystem::directory_iterator( namedRoot.path() ) )
      std::filesystem::remove_all( entry );
  }

  /// The program runs beside this thread, which serves.
  static Outcome run( std::string const & command ) { return shell( "$program " + command ); }
  static Outcome shell( std::string const & command ) {
    auto said = std::async( std::launch::async,
                            [&] { return TestSupport::shell( LUMO_PROGRAM, command ); } );
    while( said.wait_for( std::chrono::seconds( 0 ) ) != std::future_status::ready )
      Koi::defaultActivity()->runFor( 0.005 );
    return said.get();
  }
  static void refuses( std::string const & command, int status, std::string const & line ) {
    Outcome const outcome = run( command );
    EXPECT_EQ( outcome.status, status ) << command;
    EXPECT_EQ( outcome.err, "lumo: " + line + "\n" ) << command;
  }
  static std::string socket( char const * sysname ) {
    return Coredb::systemSocket( namedRoot.root(), Name( sysname ) );
  }
};

TEST_F( LumoInterface, allKindsAreShownInOrder ) {
  System sw1( "sw1" );
  auto const ports = sw1.at< EthIntfStatusDir >( ethStatusPlace );
  ports->intfStatusIs( intf( "eth10" ), 1 );
  auto const eth2 = ports->intfStatusIs( intf( "eth2" ), 7 );
  eth2->descriptionIs( "to\x1b[31m\nspine\xff" );
  eth2->operStatusIs( operUp );
  eth2->linkStatusIs( linkUp );
  eth2->mtuIs( 9214 );
  eth2->speedIs( 2500000000 );
  eth2->addrIs( EthAddr( 0, 0, 0x5e, 0, 0x53, 2 ) );
  eth2->lastLinkStatusChangeIs( 1353690109.25 );
  sw1.vlan( "vlan10" )->operStatusIs( operLowerLayerDown );
  auto const sub =
      sw1.at< SubIntfStatusDir >( subStatusPlace )->intfStatusIs( intf( "eth2.100" ), 1 );
  sub->forwardingVlanIdIs( Bridging::VlanIdOrNone( 1006 ) );
  sub->programInHwIs( true );
  sub->speedIs( 1234567 );
  sw1.serve();

  Outcome const text = run( "show interface" );
  EXPECT_EQ( text.err, "" );
  EXPECT_EQ( text.out,
             "interface  status          link      MTU    speed  address            last change"
             "                  description\n"
             "eth2       up              up       9214     2.5G  00:00:5e:00:53:02  "
             "2012-11-23T17:01:49.250000Z  to\\x1b[31m\\x0aspine\xff\n"
             "eth10      unknown         unknown     0        -  -                  -"
             "                            -\n"
             "vlan10     lowerLayerDown  unknown     0        -  -                  -"
             "                            -\n"
             "eth2.100   unknown         unknown     0  1234567  -                  -"
             "                            -\n" );
  auto const all = json::parse( run( "show interface --json" ).out );
  EXPECT_EQ( all["schema"], "lumo.interfaces/1" );
  EXPECT_EQ( all["sysname"], "sw1" );
  ASSERT_EQ( all["interfaces"].size(), 4u );
  auto const & first = all["interfaces"][0];
  EXPECT_EQ( first["intf"], "eth2" );
  EXPECT_EQ( first["genId"], 7 );
  EXPECT_EQ( first["operStatus"], "operUp" );
  EXPECT_EQ( first["speed"], 2500000000 );
  EXPECT_EQ( first["description"], "to\x1b[31m\nspine\xef\xbf\xbd" );

  Outcome const some = run( "show interface vlan10,eth9 eth2 | cut -d' ' -f1" );
  EXPECT_EQ( some.out, "interface\neth2\nvlan10\n" );
  refuses( "show interface eth9", 3, "eth9: no such interface" );
  refuses( "show interface eth", 1, "Interface name 'eth': a number was expected at the end" );
  EXPECT_EQ( run( "show interface >/dev/full" ).err,
             "lumo: standard output: No space left on device\n" );
  Outcome const early = shell( "{ $program show interface; echo $? >&2; } | head -n 0" );
  EXPECT_EQ( early.err, "0\n" );

  EXPECT_EQ( run( "show subinterface" ).out,
             "subinterface  parent  VLAN  hardware  status   link     MTU  address  last change  "
             "description\n"
             "eth2.100      eth2    1006  yes       unknown  unknown    0  -        -            "
             "-\n" );
  auto const subs = json::parse( run( "show subinterface --json" ).out );
  EXPECT_EQ( subs["schema"], "lumo.subinterfaces/1" );
  EXPECT_EQ( subs["subinterfaces"][0]["parent"], "eth2" );
  EXPECT_EQ( subs["subinterfaces"][0]["forwardingVlanId"], 1006 );
  EXPECT_EQ( subs["subinterfaces"][0]["programInHw"], true );
  refuses( "show subinterface eth2", 3, "eth2: no such sub-interface" );
}

TEST_F( LumoInterface, portIdsThatAreKeptAreMarked ) {
  System sw1( "sw1" );
  sw1.at< EthIntfStatusDir >( ethStatusPlace )->intfStatusIs( intf( "eth2" ), 1 );
  auto const ids = sw1.at< EthIntfPortIdDir >( portIdPlace );
  ids->portIdIs( intf( "eth2" ), EthPortId( 12 ) );
  ids->portIdIs( intf( "eth10" ), EthPortId( 3 ) );
  sw1.serve( Access::readOnly );
  EXPECT_EQ( run( "show port-id" ).out,
             "port id  interface  note\n"
             "      3  eth10      not there; kept for its return\n"
             "     12  eth2       -\n" );
  auto const all = json::parse( run( "show port-id --json eth10" ).out );
  EXPECT_EQ( all["schema"], "lumo.port-ids/1" );
  EXPECT_EQ( all["portIds"],
             json::parse( R"( [ { "intf": "eth10", "portId": 3, "there": false } ] )" ) );
  refuses( "show port-id eth1", 3, "eth1: no port id" );
}

TEST_F( LumoInterface, vlanInterfacesHaveSources ) {
  System sw1( "sw1" );
  auto const status = sw1.vlan( "vlan10" );
  status->operStatusIs( operUp );
  status->mtuIs( 1500 );
  auto const cli = sw1.at< VlanIntfConfigDir >( std::string( vlanSourcePlace ) + "/cli" );
  auto const bgp = sw1.at< VlanIntfConfigDir >( std::string( vlanSourcePlace ) + "/bgp" );
  cli->intfConfigIs( intf( "vlan10" ) );
  bgp->intfConfigIs( intf( "vlan30" ) );
  auto const list = sw1.at< Lumo::DynVlanIntfList >( dynVlanIntfListPlace );
  list->sourcePriorityIs( intf( "vlan10" ), { "cli", configPriorityHigh } );
  list->sourcePriorityIs( intf( "vlan20" ), { "bgp", 7 } );
  list->intfConfigIs( intf( "vlan20" ), bgp->intfConfigIs( intf( "vlan20" ) ) );
  char const why[] = "Rejected: Higher priority config found";
  for( char const * source : { "bgp", "evpn" } )
    sw1.at< VlanIntfConfigErrorDir >( std::string( vlanSourceErrorPlace ) + "/" + source )
        ->vlanIntfConfigErrorIs( intf( "vlan10" ), why );
  sw1.serve();
  EXPECT_EQ(
      run( "show vlan-interface" ).out,
      "interface  status  link      MTU  address  device  source  priority  published  "
      "rejected\n"
      "vlan10     up      unknown  1500  -        vlan10  cli     high      no         "
      "bgp: Rejected: Higher priority config found; evpn: Rejected: Higher priority config "
      "found\n"
      "vlan20     -       -           -  -        -       bgp     7         yes        -\n"
      "vlan30     -       -           -  -        -       -       -         no         -\n" );
  list->intfConfigErrorIs( intf( "vlan20" ), true );
  auto const all = json::parse( run( "show vlan-interface vlan10 vlan20 --json" ).out );
  EXPECT_EQ( all["schema"], "lumo.vlan-interfaces/1" );
  auto const & first = all["interfaces"][0];
  EXPECT_EQ( first["status"]["deviceName"], "vlan10" );
  EXPECT_EQ( first["source"], "cli" );
  EXPECT_EQ( first["priority"], 2 );
  EXPECT_EQ( first["rejected"]["evpn"], why );
  EXPECT_EQ( all["interfaces"][1], json::parse( R"( { "intf": "vlan20", "status": null,
      "source": "bgp", "priority": 7, "published": true, "failed": true, "rejected": {} } )" ) );
  EXPECT_NE( run( "show vlan-interface vlan20" ).out.find( " failed " ), std::string::npos );
  refuses( "show vlan-interface vlan9", 3, "vlan9: no such VLAN interface" );
}

TEST_F( LumoInterface, countersAreClearedAndShown ) {
  System sw1( "sw1" );
  CounterWriter const counters( "sw1" );
  counters.table->counterIs( entryOf( 20, 1000 ) );
  counters.table->counterIs( entryOf( 10, 100 ) );
  refuses( "clear counters interface", 2, "no system is served below " + namedRoot.path() );

  // What was counted is shown even without the tree, and said to be raw.
  Outcome const alone = run( "show counters interface --sysname sw1 --json" );
  EXPECT_EQ( alone.status, 2 );
  EXPECT_EQ( alone.err, "lumo: nobody serves system sw1: " + socket( "sw1" ) +
                            ": No such file or directory; the counts are shown as they are, "
                            "cleared or not\n" );
  EXPECT_EQ( json::parse( alone.out )["interfaces"][0]["statistics"]["inOctets"], 105 );
  EXPECT_EQ( run( "show counters interface --raw" ).status, 0 );

  auto const all = sw1.at< AllVlanIntfCounterDir >( vlanCounterPlace );
  sw1.serve();
  Outcome const one = run( "clear counters interface vlan10 vlan11" );
  EXPECT_EQ( one.status, 3 );
  EXPECT_EQ( one.out, "cleared: vlan10\n" );
  EXPECT_EQ( one.err, "lumo: vlan11: no counters\n" );
  auto const lastClear =
      all->intfCounterDir( intf( "vlan10" ) )->intfCounter( Name( "lastClear" ) );
  ASSERT_TRUE( lastClear );
  EXPECT_EQ( lastClear->statistics(), entryOf( 10, 100 ).statistics() );
  EXPECT_EQ( lastClear->vlanStatistics(), entryOf( 10, 100 ).vlanStatistics() );
  EXPECT_EQ( lastClear->linkStatusChanges(), 23u );
  EXPECT_EQ( lastClear->genId(), 24u );

  counters.table->counterIs( entryOf( 10, 107 ) );
  Outcome const text = run( "show counters interface" );
  EXPECT_EQ( text.err, "" );
  EXPECT_EQ( text.out,
             "interface  inOctets  inUcastPkts  inMulticastPkts  inBroadcastPkts  inDiscards  "
             "inErrors  outOctets  outUcastPkts  outMulticastPkts  outBroadcastPkts  outDiscards  "
             "outErrors  inUcastOctets  inMulticastOctets  outUcastOctets  outMulticastOctets  "
             "inBitsRate  inPktsRate  outBitsRate  outPktsRate  linkStatusChanges  cleared\n"
             "vlan10            7            7                7                7           7  "
             "       7          7             7                 7                 7            7  "
             "        7              7                  7               7                   7  "
             "       125         126          127          128                  0  "
             "1970-01-01T00:00:17.500000Z\n"
             "vlan20         1005         1006             1007             1008        1009  "
             "    1010       1011          1012              1013              1014         1015  "
             "     1016           1000               1001            1002                1003  "
             "      1018        1019         1020         1021                 23  -\n" );
  auto const shown = json::parse( run( "show counters interface vlan10 --json" ).out );
  EXPECT_EQ( shown["schema"], "lumo.interface-counters/1" );
  EXPECT_EQ( shown["interfaces"][0]["vlanStatistics"]["outUcastOctets"], 7 );
  EXPECT_EQ( shown["interfaces"][0]["clearedAt"], 17.5 );
  EXPECT_EQ( run( "show counters interface vlan20 vlan9" ).err, "lumo: vlan9: no counters\n" );

  // A table that began anew, and another life of the interface.
  counters.table->counterIs( entryOf( 10, 3 ) );
  EXPECT_EQ( json::parse( run( "show counters interface vlan10 --json" )
                              .out )["interfaces"][0]["statistics"]["inOctets"],
             8 );
  counters.table->counterIs( entryOf( 10, 200 ) );
  lastClear->genIdIs( 23 );
  auto const other = json::parse( run( "show counters interface vlan10 --json" ).out );
  EXPECT_EQ( other["interfaces"][0]["statistics"]["inOctets"], 205 );
  EXPECT_EQ( other["interfaces"][0]["clearedAt"], nullptr );

  Outcome const rest = run( "clear counters interface all" );
  EXPECT_EQ( rest.err, "" );
  EXPECT_EQ( rest.out, "cleared: vlan10,vlan20\n" );
  EXPECT_EQ( run( "clear counters interface" ).out, rest.out );  // nothing was counted meanwhile
  auto const raw = json::parse( run( "show counters interface --raw --json" ).out );
  EXPECT_EQ( raw["interfaces"][1]["statistics"]["inOctets"], 1005 );

  sw1.server.reset();
  sw1.serve( Access::readOnly );
  EXPECT_EQ( run( "clear counters interface" ).status, 0 );  // nothing is to be changed
  counters.table->counterIs( entryOf( 20, 2000 ) );
  refuses( "clear counters interface", 2, "system sw1 is served read-only" );
}

/// Ends its process when something is cleared, before that is acknowledged.
struct Ending : AllVlanIntfCounterDir::NotifieeConst {
  using NotifieeConst::onIntfCounterDir;
  void onIntfCounterDir( IntfId const & ) override { raise( SIGKILL ); }
};

TEST_F( LumoInterface, countersAreNotClearedUntilThatIsAcknowledged ) {
  System const sw1( "sw1" );
  CounterWriter const counters( "sw1" );
  counters.table->counterIs( entryOf( 10, 100 ) );
  pid_t const child = fork();
  if( child == 0 ) {
    Ending ending;
    ending.notifierIs( sw1.at< AllVlanIntfCounterDir >( vlanCounterPlace ).ptr() );
    auto const own = Koi::activityFactory();
    Coredb::TreeServer const server( sw1.top,
                                     Coredb::newSystemSocket( namedRoot.root(), Name( "sw1" ) ),
                                     Access::writable, own.ptr() );
    own->run();
  }
  while( Coredb::systemsServed( namedRoot.root() ).empty() &&
         waitpid( child, nullptr, WNOHANG ) == 0 )
    Koi::defaultActivity()->runFor( 0.001 );
  refuses( "clear counters interface", 2,
           "whoever serves system sw1 has ended: " + socket( "sw1" ) + ": the other end has gone" );
  waitpid( child, nullptr, 0 );
}

TEST_F( LumoInterface, theSystemIsFoundOrNamed ) {
  refuses( "show interface", 2, "no system is served below " + namedRoot.path() );
  System sw1( "sw1" ), other( "lab/2" );
  sw1.serve();
  EXPECT_EQ( run( "show vlan-interface" ).out.find( '\n' ) + 1,
             run( "show vlan-interface" ).out.size() );  // nothing there is an empty table
  other.vlan( "vlan7" );
  other.serve();
  refuses( "show interface", 1,
           "there are several systems below " + namedRoot.path() +
               ": lab/2, sw1; --sysname says which" );
  EXPECT_EQ( run( "show interface vlan7 --sysname lab/2" ).status, 0 );
  refuses( "show interface --sysname sw9", 2,
           "nobody serves system sw9: " + socket( "sw9" ) + ": No such file or directory" );
  refuses( "clear counters interface --sysname lab/2", 3,
           "there is no table 'counters/vlanIntf/lab%2F2/counter'" );

  sw1.at< Coredb::Dir >( ethStatusPlace );
  refuses( "show interface --sysname sw1", 2,
           "system sw1 has a Coredb::Dir at interface/status/eth, no Interface::EthIntfStatusDir" );

  // This thread listens, and says nothing.
  Outcome const said = TestSupport::shell( LUMO_PROGRAM, "$program show interface --sysname sw1" );
  EXPECT_EQ( said.status, 2 );
  EXPECT_EQ( said.err, "lumo: whoever serves system sw1 does not answer\n" );
}

}  // namespace
