// CountersShow.cpp: `lumo show counters vlan`: what went through each VLAN since its counters were
// cleared.
#include <algorithm>
#include <optional>

#include <koi/UtcText.h>

#include <nlohmann/json.hpp>

#include "Columns.h"
#include "CounterRecords.h"
#include "CountersGroup.h"
#include "Subcommands.h"
#include "TableFacts.h"
#include "VlanList.h"

namespace Lumo {
namespace {

using Bridging::VlanId;
using Koi::U64;
using Quill::Bridging::VlanCounter;
using Quill::Bridging::VlanStats;

constexpr Count< VlanStats > vlanCounts[] = {
    { "inOctets", &VlanStats::inOctets },         { "inUcastPkts", &VlanStats::inUcastPkts },
    { "inMcastPkts", &VlanStats::inMcastPkts },   { "inBcastPkts", &VlanStats::inBcastPkts },
    { "outOctets", &VlanStats::outOctets },       { "outUcastPkts", &VlanStats::outUcastPkts },
    { "outMcastPkts", &VlanStats::outMcastPkts }, { "outBcastPkts", &VlanStats::outBcastPkts } };

/// A record, and what it was when the counters were cleared.
struct Shown {
  VlanCounter record;
  std::optional< VlanCounter > snapshot;

  /// A snapshot of more than there is was taken in an earlier life of the table.
  U64 operator()( Count< VlanStats > const & count ) const {
    U64 const now = ( record.vlanStats().*count.of )();
    U64 const then = snapshot ? ( snapshot->vlanStats().*count.of )() : 0;
    return then <= now ? now - then : now;
  }
};

class CountersShow final : public Subcommand {
 public:
  explicit CountersShow( CLI::App & show )
      : Subcommand( countersGroup( show, "shows what was counted" ), "vlan",
                    "shows the counters of VLANs, since they were cleared" ) {
    command().add_option( "VLANS", vlans_, "these VLANs alone: 1,10-20" )->type_name( "" );
    command().add_flag( "--raw", isRaw_, "show the counts as they are, cleared or not" );
    command().add_flag( "--json", isJson_, "print one JSON object" );
  }

  Status run( Output & output ) const override {
    std::optional< VlanSet > const wanted =
        vlans_.empty() ? std::nullopt : std::optional( vlansOf( vlans_ ) );
    auto const records = counterRecordsOf( root(), vlanCounterTable );
    auto const snapshots = isRaw_ ? CounterRecords() : snapshotsThereAre();
    std::vector< Shown > shown;
    for( auto const & [vlan, record] : records )
      if( !wanted || wanted->count( vlan ) != 0 ) {
        auto const at = snapshots.find( vlan );
        shown.push_back(
            { record, at == snapshots.end() ? std::nullopt : std::optional( at->second ) } );
      }
    output.write( isJson_ ? jsonOf( shown ) : textOf( shown ) );

    VlanSet missing = wanted.value_or( VlanSet() );
    std::erase_if( missing, [&]( VlanId const & vlan ) { return records.count( vlan ) != 0; } );
    if( missing.empty() )
      return succeeded;
    complain( vlansText( missing ) + ": no counters" );
    return absent;
  }

 private:
  CounterRecords snapshotsThereAre() const {
    auto const names = tablesBelow( root() ).names;
    return std::ranges::count( names, vlanCounterSnapshotTable ) != 0
               ? counterRecordsOf( root(), vlanCounterSnapshotTable )
               : CounterRecords();
  }

  static std::string textOf( std::vector< Shown > const & shown ) {
    std::vector< Column > columns{ { "VLAN", true } };
    for( auto const & count : vlanCounts )
      columns.push_back( { count.name, true } );
    columns.push_back( { "cleared" } );
    std::vector< Row > rows;
    for( Shown const & one : shown ) {
      Row & row = rows.emplace_back( Row{ std::to_string( one.record.key().value() ) } );
      for( auto const & count : vlanCounts )
        row.push_back( std::to_string( one( count ) ) );
      row.push_back( one.snapshot ? Koi::utcText( one.snapshot->statsUpdateTime() ) : "-" );
    }
    return aligned( columns, rows );
  }

  static std::string jsonOf( std::vector< Shown > const & shown ) {
    using Json = nlohmann::ordered_json;
    Json vlans = Json::array();
    for( Shown const & one : shown ) {
      Json & vlan = vlans.emplace_back( Json{ { "vlan", one.record.key().value() } } );
      for( auto const & count : vlanCounts )
        vlan[count.name] = one( count );
      vlan["statsUpdateTime"] = one.record.statsUpdateTime();
      vlan["clearedAt"] = one.snapshot ? Json( one.snapshot->statsUpdateTime() ) : Json();
    }
    return Json{ { "schema", "lumo.vlan-counters/1" }, { "vlans", vlans } }.dump( 2 ) + "\n";
  }

  std::string vlans_;
  bool isRaw_ = false;
  bool isJson_ = false;
};

}  // namespace

std::unique_ptr< Subcommand > showVlanCounters( CLI::App & show ) {
  return std::make_unique< CountersShow >( show );
}

}  // namespace Lumo
