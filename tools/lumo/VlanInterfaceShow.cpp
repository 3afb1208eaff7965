// VlanInterfaceShow.cpp: `lumo show vlan-interface`: the routed interfaces of VLANs, who asks for
// them, and who does in vain.
#include <map>

#include <Lumo/VlanDynIntfSm.h>

#include <interface/TreePlaces.h>

#include "Columns.h"
#include "IntfTexts.h"
#include "Subcommands.h"

namespace Lumo {
namespace {

using Interface::VlanIntfConfigDir;
using Interface::VlanIntfConfigErrorDir;
using Interface::VlanIntfStatus;
using Interface::VlanIntfStatusDir;
using Koi::String8;
using Wirex::IntfId;

struct Shown {
  Koi::Ptr< VlanIntfStatus > status;      ///< null: it is asked for, and not there
  SourcePriorityPair by;                  ///< the source that prevails; of no name: none does
  bool isPublished = false;               ///< its configuration is handed on
  bool hasFailed = false;                 ///< whoever applies it could not
  std::map< String8, String8 > rejected;  ///< by source, why
};
using AllShown = std::map< IntfId, Shown >;

std::string priorityText( int priority ) {
  switch( priority ) {
    case Interface::configPriorityLow:
      return "low";
    case Interface::configPriorityMedium:
      return "medium";
    case Interface::configPriorityHigh:
      return "high";
    default:
      return std::to_string( priority );
  }
}

/// Calls visit( source, entry ) for all entries of that type in a directory.
template< class Entry, class Visit >
void forEachSource( SystemTree const & system, char const * place, Visit visit ) {
  if( auto const dir = system.at< Coredb::Dir >( place ) )
    for( Koi::Name const & source : Koi::keysOf( dir->entity() ) )
      if( auto * const entry = dynamic_cast< Entry * >( dir->entity( source ).ptr() ) )
        visit( source, *entry );
}

class VlanInterfaceShow final : public IntfSubcommand {
 public:
  explicit VlanInterfaceShow( CLI::App & show )
      : IntfSubcommand( show, "vlan-interface",
                        "shows VLAN interfaces, and who configures them or would like to",
                        "these VLAN interfaces alone" ) {
    addJson();
  }

  Status run( Output & output ) const override {
    IntfFilter filter( names() );
    SystemTree const system = tree();
    AllShown const all = read( system, filter );
    output.write( isJson() ? jsonOf( system.sysname(), all ) : textOf( all ) );
    return filter.complainOfMissing( "no such VLAN interface" );
  }

 private:
  static AllShown read( SystemTree const & system, IntfFilter & filter ) {
    AllShown all;
    Statuses< VlanIntfStatus > statuses;
    addStatuses( system.at< VlanIntfStatusDir >( Interface::vlanStatusPlace ), filter, statuses );
    for( auto const & status : statuses )
      all[status->intfId()].status = status;
    if( auto const list = system.at< DynVlanIntfList >( Interface::dynVlanIntfListPlace ) )
      for( IntfId const & intf : Koi::keysOf( list->sourcePriority() ) )
        if( filter.admits( intf ) ) {
          Shown & one = all[intf];
          one.by = list->sourcePriority( intf );
          one.isPublished = list->intfConfig().contains( intf );
          one.hasFailed = list->intfConfigError( intf );
        }
    // What a source asks for is shown, decided or not.
    forEachSource< VlanIntfConfigDir >(
        system, Interface::vlanSourcePlace, [&]( Koi::Name const &, VlanIntfConfigDir & source ) {
          for( IntfId const & intf : Koi::keysOf( source.intfConfig() ) )
            if( filter.admits( intf ) )
              all.try_emplace( intf );
        } );
    forEachSource< VlanIntfConfigErrorDir >(
        system, Interface::vlanSourceErrorPlace,
        [&]( Koi::Name const & source, VlanIntfConfigErrorDir & errors ) {
          for( IntfId const & intf : Koi::keysOf( errors.vlanIntfConfigError() ) )
            if( filter.admits( intf ) )
              all[intf].rejected[String8( source.view() )] = errors.vlanIntfConfigError( intf );
        } );
    return all;
  }

  static std::string textOf( AllShown const & all ) {
    std::vector< Row > rows;
    for( auto const & [intf, one] : all ) {
      auto const & status = one.status;
      bool const isAskedFor = !one.by.source().empty();
      std::string rejected;
      for( auto const & [source, why] : one.rejected )
        ( ( rejected += rejected.empty() ? "" : "; " ) += source.view() ) +=
            ": " + std::string( why.view() );
      rows.push_back( { std::string( intf.stringValue().view() ),
                        status ? operStatusText( status->operStatus() ) : "-",
                        status ? linkStatusText( status->linkStatus() ) : "-",
                        status ? std::to_string( status->mtu() ) : "-",
                        status ? addressText( status->addr() ) : "-",
                        status ? printable( status->deviceName().view() ) : "-",
                        printable( one.by.source().view() ),
                        isAskedFor ? priorityText( one.by.priority() ) : "-",
                        one.hasFailed     ? "failed"
                        : one.isPublished ? "yes"
                                          : "no",
                        printable( rejected ) } );
    }
    return aligned( { { "interface" },
                      { "status" },
                      { "link" },
                      { "MTU", true },
                      { "address" },
                      { "device" },
                      { "source" },
                      { "priority" },
                      { "published" },
                      { "rejected" } },
                    rows );
  }

  static std::string jsonOf( std::string const & sysname, AllShown const & all ) {
    Json interfaces = Json::array();
    for( auto const & [intf, one] : all ) {
      bool const isAskedFor = !one.by.source().empty();
      Json rejected = Json::object();
      for( auto const & [source, why] : one.rejected )
        rejected[std::string( source.view() )] = why.view();
      Json status;
      if( one.status ) {
        status = statusJson( *one.status );
        status["deviceName"] = one.status->deviceName().view();
      }
      interfaces.push_back( { { "intf", intf.stringValue().view() },
                              { "status", status },
                              { "source", isAskedFor ? Json( one.by.source().view() ) : Json() },
                              { "priority", isAskedFor ? Json( one.by.priority() ) : Json() },
                              { "published", one.isPublished },
                              { "failed", one.hasFailed },
                              { "rejected", rejected } } );
    }
    return jsonText( "vlan-interfaces", sysname, "interfaces", interfaces );
  }
};

}  // namespace

std::unique_ptr< Subcommand > showVlanInterface( CLI::App & show ) {
  return std::make_unique< VlanInterfaceShow >( show );
}

}  // namespace Lumo
