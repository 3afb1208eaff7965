// IntfCountersClear.cpp: `lumo clear counters interface`: notes in the tree of a system what its
// VLAN interfaces have counted so far, and waits until whoever serves the tree has that.
#include <algorithm>
#include <optional>
#include <tuple>

#include <interface/TreePlaces.h>

#include "CounterRecords.h"
#include "CountersGroup.h"
#include "IntfSubcommand.h"
#include "LastClear.h"
#include "Subcommands.h"
#include "Waiting.h"

namespace Lumo {
namespace {

using Interface::AllVlanIntfCounterDir;
using Interface::VlanIntfCounterQuill;
using Wirex::IntfId;

/// What is compared of what was taken down.
using Taken =
    std::tuple< Interface::IntfStatistics, Interface::VlanIntfStatistics, Koi::U32, Koi::U32 >;

Taken takenOf( VlanIntfCounterQuill const & record ) {
  return { record.statistics(), record.vlanStatistics(), record.linkStatusChanges(),
           record.genId() };
}
std::optional< Taken > takenIn( Koi::Ptr< AllVlanIntfCounterDir > const & all,
                                IntfId const & intf ) {
  LastClear const one = lastClearOf( all, intf );
  if( !one )
    return std::nullopt;
  return Taken( one->statistics(), one->vlanStatistics(), one->linkStatusChanges(), one->genId() );
}

void takeDown( AllVlanIntfCounterDir & all, VlanIntfCounterQuill const & record ) {
  auto const lastClear =
      all.intfCounterDirIs( record.intfId() )->intfCounterIs( Koi::Name( lastClearName ) );
  lastClear->vlanStatisticsIs( record.vlanStatistics() );
  lastClear->statisticsIs( record.statistics() );
  lastClear->ratesIs( record.rates() );
  lastClear->linkStatusChangesIs( record.linkStatusChanges() );
  lastClear->genIdIs( record.genId() );
}

class IntfCountersClear final : public IntfSubcommand {
 public:
  explicit IntfCountersClear( CLI::App & clear )
      : IntfSubcommand( countersGroup( clear, "begins to count anew" ), "interface",
                        "clears the counters of VLAN interfaces",
                        "these VLAN interfaces, or all" ) {}

  Status run( Output & output ) const override {
    bool const isAll = names() == std::vector< std::string >{ "all" };
    IntfFilter filter( isAll ? std::vector< std::string >() : names() );
    Koi::Name const sysname = systemMeant( root(), givenSysname() );
    SystemTree const system( root(), sysname, Coredb::Access::writable );
    auto const records = intfCounterRecordsOf( root(), sysname );
    IntfCounterRecords wanted;
    std::ranges::copy_if( records, std::inserter( wanted, wanted.end() ),
                          [&]( auto const & record ) { return filter.admits( record.first ); } );
    clear( system, wanted );

    IntfSet cleared;
    for( auto const & [intf, record] : wanted )
      cleared.insert( intf );
    output.write( cleared.empty() ? "nothing to clear\n"
                                  : "cleared: " + intfsText( cleared ) + "\n" );
    return filter.complainOfMissing( "no counters" );
  }

 private:
  /// Raises Failure when not all are cleared.
  void clear( SystemTree const & system, IntfCounterRecords const & records ) const {
    auto const all = system.at< AllVlanIntfCounterDir >( Interface::vlanCounterPlace );
    if( !all )
      throw Failure( unreachable, "system " + system.sysname() + " does not keep what is cleared" );
    // What the server tells another one is what it has itself.
    SystemTree const witness( root(), Koi::Name( system.sysname() ), Coredb::Access::readOnly,
                              Coredb::dirFactory( Koi::Name( "Coredb" ) ) );
    auto const seen = [&]( IntfId const & intf ) {
      return takenIn( witness.at< AllVlanIntfCounterDir >( Interface::vlanCounterPlace ), intf );
    };
    std::map< IntfId, std::optional< Taken > > before;
    for( auto const & [intf, record] : records )
      before[intf] = seen( intf );
    try {
      for( auto const & [intf, record] : records )
        takeDown( *all, record );
    } catch( Koi::ReadOnlyException const & ) {
      throw Failure( unreachable, "system " + system.sysname() + " is served read-only" );
    }
    // One that changed otherwise was cleared by somebody else at the same time.
    bool const isCleared = waitUntil( witness.mount(), [&] {
      std::erase_if( before, [&]( auto const & one ) {
        auto const now = seen( one.first );
        return now == takenOf( records.at( one.first ) ) || now != one.second;
      } );
      return before.empty();
    } );
    if( isCleared )
      return;
    if( !witness.mount().isConnected() )
      throw Failure( unreachable, "whoever serves system " + system.sysname() +
                                      " has ended: " + witness.mount().trouble() );
    IntfSet left;
    for( auto const & [intf, was] : before )
      left.insert( intf );
    throw Failure( unreachable, notClearedText( intfsText( left ) ) );
  }
};

}  // namespace

std::unique_ptr< Subcommand > clearIntfCounters( CLI::App & clear ) {
  return std::make_unique< IntfCountersClear >( clear );
}

}  // namespace Lumo
