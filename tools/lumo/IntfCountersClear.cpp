// IntfCountersClear.cpp: `lumo clear counters interface`: notes in the tree of a system what its
// VLAN interfaces have counted so far, and waits until whoever serves the tree has that.
#include <algorithm>

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
    IntfSet intfs;
    for( auto const & [intf, record] : wanted )
      intfs.insert( intf );
    clear( system, wanted, intfsText( intfs ) );
    output.write( intfs.empty() ? "nothing to clear\n" : "cleared: " + intfsText( intfs ) + "\n" );
    return filter.complainOfMissing( "no counters" );
  }

 private:
  /// Raises Failure when not all are known to be cleared, which are called `intfs`.
  static void clear( SystemTree const & system, IntfCounterRecords const & records,
                     std::string const & intfs ) {
    auto const all = system.at< AllVlanIntfCounterDir >( Interface::vlanCounterPlace );
    if( !all )
      throw Failure( unreachable, "system " + system.sysname() + " does not keep what is cleared" );
    try {
      for( auto const & [intf, record] : records )
        takeDown( *all, record );
    } catch( Koi::ReadOnlyException const & ) {
      throw Failure( unreachable, "system " + system.sysname() + " is served read-only" );
    }
    Coredb::TreeMount const & mount = system.mount();
    if( waitUntil( mount, [&] { return mount.isAcknowledged(); } ) )
      return;
    if( !mount.isConnected() )
      throw Failure( unreachable, "whoever serves system " + system.sysname() +
                                      " has ended: " + mount.trouble() );
    throw Failure( unreachable, notClearedText( intfs ) );
  }
};

}  // namespace

std::unique_ptr< Subcommand > clearIntfCounters( CLI::App & clear ) {
  return std::make_unique< IntfCountersClear >( clear );
}

}  // namespace Lumo
