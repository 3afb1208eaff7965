// SubinterfaceShow.cpp: `lumo show subinterface`: the parts of ports and port-channels that carry a
// tag of their own.
#include <Lumo/SubIntf.h>

#include <interface/TreePlaces.h>
#include <wirex/GenericIntfId.h>

#include "Columns.h"
#include "IntfTexts.h"
#include "Subcommands.h"

namespace Lumo {
namespace {

using Interface::SubIntfStatus;

/// What an interface is a part of; empty when it is not of another one.
std::string parentName( Wirex::IntfId const & intf ) {
  Wirex::GenericIntfId parent( intf );
  parent.partIs( 0, 0 );
  return parent.intfId() == intf ? "" : std::string( parent.intfId().stringValue().view() );
}

class SubinterfaceShow final : public IntfSubcommand {
 public:
  explicit SubinterfaceShow( CLI::App & show )
      : IntfSubcommand( show, "subinterface", "shows sub-interfaces of ports and port-channels",
                        "these sub-interfaces alone" ) {
    addJson();
  }

  Status run( Output & output ) const override {
    IntfFilter filter( names() );
    SystemTree const system = tree();
    Statuses< SubIntfStatus > all;
    addStatuses( system.at< Interface::SubIntfStatusDir >( Interface::subStatusPlace ), filter,
                 all );
    sort( all );
    output.write( isJson() ? jsonOf( system.sysname(), all ) : textOf( all ) );
    return filter.complainOfMissing( "no such sub-interface" );
  }

 private:
  static std::string textOf( Statuses< SubIntfStatus > const & all ) {
    std::vector< Row > rows;
    for( auto const & status : all ) {
      auto const vlan = status->forwardingVlanId().value();
      rows.push_back(
          { std::string( status->intfId().stringValue().view() ),
            printable( parentName( status->intfId() ) ), vlan == 0 ? "-" : std::to_string( vlan ),
            status->programInHw() ? "yes" : "no", operStatusText( status->operStatus() ),
            linkStatusText( status->linkStatus() ), std::to_string( status->mtu() ),
            addressText( status->addr() ), momentText( status->lastLinkStatusChange() ),
            printable( status->description().view() ) } );
    }
    return aligned( { { "subinterface" },
                      { "parent" },
                      { "VLAN", true },
                      { "hardware" },
                      { "status" },
                      { "link" },
                      { "MTU", true },
                      { "address" },
                      { "last change" },
                      { "description" } },
                    rows );
  }

  static std::string jsonOf( std::string const & sysname, Statuses< SubIntfStatus > const & all ) {
    Json subinterfaces = Json::array();
    for( auto const & status : all ) {
      Json & one = subinterfaces.emplace_back( statusJson( *status ) );
      one["parent"] = parentName( status->intfId() );
      one["forwardingVlanId"] = status->forwardingVlanId().value();
      one["programInHw"] = status->programInHw();
    }
    return jsonText( "subinterfaces", sysname, "subinterfaces", subinterfaces );
  }
};

}  // namespace

std::unique_ptr< Subcommand > showSubinterface( CLI::App & show ) {
  return std::make_unique< SubinterfaceShow >( show );
}

}  // namespace Lumo
