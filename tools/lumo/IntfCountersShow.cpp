// IntfCountersShow.cpp: `lumo show counters interface`: what went through each VLAN interface since
// its counters were cleared.
#include <algorithm>
#include <optional>

#include <interface/TreePlaces.h>

#include "Columns.h"
#include "CounterRecords.h"
#include "CountersGroup.h"
#include "IntfTexts.h"
#include "LastClear.h"
#include "Subcommands.h"

namespace Lumo {
namespace {

using Interface::AllVlanIntfCounterDir;
using Interface::IntfCounterRates;
using Interface::IntfStatistics;
using Interface::VlanIntfCounterQuill;
using Interface::VlanIntfStatistics;
using Koi::U64;

constexpr Count< IntfStatistics > intfCounts[] = {
    { "inOctets", &IntfStatistics::inOctets },
    { "inUcastPkts", &IntfStatistics::inUcastPkts },
    { "inMulticastPkts", &IntfStatistics::inMulticastPkts },
    { "inBroadcastPkts", &IntfStatistics::inBroadcastPkts },
    { "inDiscards", &IntfStatistics::inDiscards },
    { "inErrors", &IntfStatistics::inErrors },
    { "outOctets", &IntfStatistics::outOctets },
    { "outUcastPkts", &IntfStatistics::outUcastPkts },
    { "outMulticastPkts", &IntfStatistics::outMulticastPkts },
    { "outBroadcastPkts", &IntfStatistics::outBroadcastPkts },
    { "outDiscards", &IntfStatistics::outDiscards },
    { "outErrors", &IntfStatistics::outErrors } };
constexpr Count< VlanIntfStatistics > octetCounts[] = {
    { "inUcastOctets", &VlanIntfStatistics::inUcastOctets },
    { "inMulticastOctets", &VlanIntfStatistics::inMulticastOctets },
    { "outUcastOctets", &VlanIntfStatistics::outUcastOctets },
    { "outMulticastOctets", &VlanIntfStatistics::outMulticastOctets } };
constexpr Count< IntfCounterRates > rates[] = { { "inBitsRate", &IntfCounterRates::inBitsRate },
                                                { "inPktsRate", &IntfCounterRates::inPktsRate },
                                                { "outBitsRate", &IntfCounterRates::outBitsRate },
                                                { "outPktsRate", &IntfCounterRates::outPktsRate } };

/// More than there is was taken down in an earlier life of the table.
U64 since( U64 then, U64 now ) { return then <= now ? now - then : now; }

/// An entry, and what it was when the counters were cleared.
struct Shown {
  VlanIntfCounterQuill record;
  IntfStatistics then;
  VlanIntfStatistics octetsThen;
  Koi::U32 linkStatusChangesThen = 0;

  /// What was taken down of another generation is of an earlier life of the interface.
  Shown( VlanIntfCounterQuill const & entry, LastClear const & lastClear ) : record( entry ) {
    if( !lastClear || lastClear->genId() != entry.genId() )
      return;
    then = lastClear->statistics();
    octetsThen = lastClear->vlanStatistics();
    linkStatusChangesThen = lastClear->linkStatusChanges();
  }

  U64 of( Count< IntfStatistics > const & count ) const {
    return since( ( then.*count.of )(), ( record.statistics().*count.of )() );
  }
  U64 of( Count< VlanIntfStatistics > const & count ) const {
    return since( ( octetsThen.*count.of )(), ( record.vlanStatistics().*count.of )() );
  }
  U64 of( Count< IntfCounterRates > const & count ) const { return ( record.rates().*count.of )(); }
  U64 linkStatusChanges() const {
    return since( linkStatusChangesThen, record.linkStatusChanges() );
  }
};

class IntfCountersShow final : public IntfSubcommand {
 public:
  explicit IntfCountersShow( CLI::App & show )
      : IntfSubcommand( countersGroup( show, "shows what was counted" ), "interface",
                        "shows the counters of VLAN interfaces, since they were cleared",
                        "these VLAN interfaces alone" ) {
    command().add_flag( "--raw", isRaw_, "show the counts as they are, cleared or not" );
    addJson();
  }

  Status run( Output & output ) const override {
    IntfFilter filter( names() );
    Koi::Name const sysname = systemMeant( root(), givenSysname(), systemsCounted( root() ) );
    // Before the counts: nothing that is subtracted from them is newer than they are.
    std::optional< SystemTree > system;
    Koi::Ptr< AllVlanIntfCounterDir > cleared;
    std::string trouble;
    if( !isRaw_ )
      try {
        system.emplace( root(), sysname );
        cleared = system->at< AllVlanIntfCounterDir >( Interface::vlanCounterPlace );
      } catch( Failure const & e ) {  // the counts can be shown all the same
        trouble = e.what();
      }
    std::vector< Shown > all;
    for( auto const & [intf, record] : intfCounterRecordsOf( root(), sysname ) )
      if( filter.admits( intf ) )
        all.emplace_back( record, lastClearOf( cleared, intf ) );
    if( !trouble.empty() )
      complain( trouble + "; the counts are shown as they are, cleared or not" );
    output.write( isJson() ? jsonOf( std::string( sysname.view() ), all ) : textOf( all ) );
    Status const status = filter.complainOfMissing( "no counters" );
    return trouble.empty() ? status : std::max( status, unreachable );
  }

 private:
  /// Octets, and of the rest what is not 0 everywhere: nobody reads two dozen columns.
  static std::string textOf( std::vector< Shown > const & all ) {
    std::vector< Column > columns{ { "interface" } };
    std::vector< Row > rows;
    for( Shown const & one : all )
      rows.push_back( { std::string( one.record.intfId().stringValue().view() ) } );
    auto const add = [&]( auto const & some ) {
      for( auto const & count : some ) {
        bool const isWanted =
            count.name == std::string_view( "inOctets" ) ||
            count.name == std::string_view( "outOctets" ) ||
            std::ranges::any_of( all, [&]( Shown const & one ) { return one.of( count ) != 0; } );
        if( !isWanted )
          continue;
        columns.push_back( { count.name, true } );
        for( std::size_t i = 0; i < all.size(); ++i )
          rows[i].push_back( std::to_string( all[i].of( count ) ) );
      }
    };
    add( intfCounts );
    add( octetCounts );
    add( rates );
    columns.push_back( { "linkStatusChanges", true } );
    columns.push_back( { "cleared" } );
    for( std::size_t i = 0; i < all.size(); ++i ) {
      rows[i].push_back( std::to_string( all[i].linkStatusChanges() ) );
      rows[i].push_back( momentText( all[i].then.statsUpdateTime() ) );
    }
    return aligned( columns, rows );
  }

  static std::string jsonOf( std::string const & sysname, std::vector< Shown > const & all ) {
    Json interfaces = Json::array();
    for( Shown const & one : all ) {
      auto const object = [&]( auto const & some ) {
        Json members = Json::object();
        for( auto const & count : some )
          members[count.name] = one.of( count );
        return members;
      };
      Json statistics = object( intfCounts ), rate = object( rates );
      statistics["statsUpdateTime"] = one.record.statistics().statsUpdateTime();
      rate["statsUpdateTime"] = one.record.rates().statsUpdateTime();
      Koi::Seconds const clearedAt = one.then.statsUpdateTime();
      interfaces.push_back( { { "intf", one.record.intfId().stringValue().view() },
                              { "genId", one.record.genId() },
                              { "statistics", statistics },
                              { "vlanStatistics", object( octetCounts ) },
                              { "vlanStatsUpdateTime", one.record.vlanStatsUpdateTime() },
                              { "rates", rate },
                              { "linkStatusChanges", one.linkStatusChanges() },
                              { "clearedAt", clearedAt == 0 ? Json() : Json( clearedAt ) } } );
    }
    return jsonText( "interface-counters", sysname, "interfaces", interfaces );
  }

  bool isRaw_ = false;
};

}  // namespace

std::unique_ptr< Subcommand > showIntfCounters( CLI::App & show ) {
  return std::make_unique< IntfCountersShow >( show );
}

}  // namespace Lumo
