// VlanIntfCounters.h: a system whose VLAN interfaces are counted, for tests of who reads the
// counters. All of a program's tables stand below one root of its own.
#pragma once

#include <gtest/gtest.h>

#include <coredb/Tree.h>
#include <koi/Activity.h>
#include <model/VlanIntfCounterMountHelper.h>
#include <wirex/NumberedIntfId.h>

#include <string>

#include "ShmRoot.h"

namespace Tests {

/// The root that who reads without an agent finds: it is named before anybody asks.
struct NamedRoot : ShmRoot {
  NamedRoot() { setenv( "LUMO_SHM_ROOT", path().c_str(), 1 ); }
};
inline NamedRoot const namedRoot;

inline Wirex::IntfId vlanIntf( unsigned vlan ) { return Wirex::VlanIntfId::intfId( vlan ); }

/// An entry in which every number is another one.
inline Interface::VlanIntfCounterQuill entryOf( unsigned vlan, Koi::U64 first ) {
  Koi::U64 const n = first;
  return Interface::VlanIntfCounterQuill(
      vlanIntf( vlan ), Interface::VlanIntfStatistics( n, n + 1, n + 2, n + 3 ), 4.5,
      Interface::IntfStatistics( n + 5, n + 6, n + 7, n + 8, n + 9, n + 10, n + 11, n + 12, n + 13,
                                 n + 14, n + 15, n + 16, 17.5 ),
      Interface::IntfCounterRates( n + 18, n + 19, n + 20, n + 21, 22.5 ), 23, 24 );
}

/// The table of one system as its writer has it.
struct CounterWriter {
  explicit CounterWriter( std::string const & sysname )
      : table( Interface::vlanIntfCounterMountHelperFactory(
                   new KoiQuill::EntityManager( activity.ptr(), namedRoot.root() ) )
                   ->doMountWrite( Koi::Name( sysname ), 100 ) ) {
    for( int i = 0; i < 30000 && !table->counterControl().isReady(); ++i )
      activity->runFor( 0.001 );
    EXPECT_TRUE( table->counterControl().isReady() );
  }

  Koi::Ptr< Koi::Activity > const activity = Koi::activityFactory();
  Koi::Ptr< Interface::AllVlanIntfCounterQuill > const table;
};

/// While it is there, the process is an agent's.
class AgentEnv {
 public:
  AgentEnv() {
    Coredb::newEntity( *Coredb::globalDirectory(), Koi::Name( "AgentEnv" ), "Coredb::Dir" );
  }
  ~AgentEnv() { Coredb::globalDirectory()->entityDel( Koi::Name( "AgentEnv" ) ); }
  AgentEnv( AgentEnv const & ) = delete;
  AgentEnv & operator=( AgentEnv const & ) = delete;
};

}  // namespace Tests
