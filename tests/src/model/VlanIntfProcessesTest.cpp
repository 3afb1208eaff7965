// VlanIntfProcessesTest.cpp: counters of VLAN interfaces that one process counts and others follow.
// Each has an event loop of its own, so they part before anybody has one: this is the only test
// here.
#include <gtest/gtest.h>

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <coredb/TreeMount.h>

#include "support/Refusal.h"
#include "support/VlanIntfCounters.h"

using namespace Interface;
using Tests::CounterWriter;
using Tests::entryOf;
using Tests::vlanIntf;

namespace {

constexpr char dirPath[] = "twins/Coredb/vlanIntfStatus";

/// Has the tree of a system and the table of its counters, and counts on until it is killed.
[[noreturn]] void serveTwins( std::string const & socket ) {
  auto const activity = Koi::activityFactory();
  auto const dir = vlanIntfStatusDirFactory( Koi::Name( "vlanIntfStatus" ) );
  dir->intfStatusIs( vlanIntf( 10 ), 7, "vlan10" );
  Coredb::systemDirectory( Koi::Name( "twins" ) )->entityIs( dir->name(), dir );
  CounterWriter const writer( "twins" );
  Ntrace::Handler const quiet( -1, {} );
  Coredb::TreeServer const server( Coredb::systemDirectory( Koi::Name( "twins" ) ), socket,
                                   Coredb::Access::readOnly, activity.ptr(), quiet );
  for( Koi::U64 first = 1; first < 100000; ++first ) {  // an end, should nobody kill it
    writer.table->counterIs( entryOf( 10, first ) );
    activity->runFor( 0.001 );
  }
  _exit( 1 );
}

/// Mounts that tree, and follows the counters of its interface for a while. True when all is right.
bool followsTwins( std::string const & socket ) {
  auto const activity = Koi::defaultActivity();
  Ntrace::Handler const quiet( -1, {} );
  Coredb::TreeMount const mount( Coredb::systemDirectory( Koi::Name( "twins" ) ), socket,
                                 Coredb::Access::readOnly, {}, activity, quiet );
  Koi::Ptr< VlanIntfStatusCounter > view;
  Koi::U64 last = 0;
  int numGrown = 0;
  for( int i = 0; i < 30000 && numGrown < 20; ++i ) {
    activity->runFor( 0.001 );
    auto const dir = Coredb::entityAt< VlanIntfStatusDir >( dirPath );
    auto const status = dir ? dir->intfStatus( vlanIntf( 10 ) ) : nullptr;
    if( !status || !( view = status->vlanCounter() ) )
      continue;
    if( refusal< Koi::ReadOnlyException >( [&] { status->activeIs( true ); } ) !=
        "write-update from readonly proxy: /twins/Coredb/vlanIntfStatus/'vlan10'" )
      return false;
    VlanIntfCounterQuill const entry = view->record();
    Koi::U64 const first = entry.vlanStatistics().inUcastOctets();
    if( first < last || entry != entryOf( 10, first ) || status->vlanCounter() != view )
      return false;
    numGrown += first > last;
    last = first;
  }
  return numGrown == 20;
}

TEST( VlanIntfProcesses, readTheCountersOfAStatusThatTheyOnlyLookAt ) {
  std::string const socket = Tests::namedRoot.path() + "/tree";
  pid_t const writer = fork();
  if( writer == 0 )
    serveTwins( socket );
  pid_t const other = fork();
  if( other == 0 )
    _exit( followsTwins( socket ) ? 0 : 1 );
  EXPECT_TRUE( followsTwins( socket ) );
  int status = -1;
  waitpid( other, &status, 0 );
  EXPECT_EQ( status, 0 );
  kill( writer, SIGKILL );
  waitpid( writer, nullptr, 0 );
}

}  // namespace
