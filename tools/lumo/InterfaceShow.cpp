// InterfaceShow.cpp: `lumo show interface`: all interfaces of a system, of whatever kind.
#include <Lumo/SubIntf.h>
#include <Lumo/VlanIntf.h>

#include <interface/TreePlaces.h>

#include "Columns.h"
#include "IntfTexts.h"
#include "Subcommands.h"

namespace Lumo {
namespace {

using Interface::EthIntfStatus;

class InterfaceShow final : public IntfSubcommand {
 public:
  explicit InterfaceShow( CLI::App & show )
      : IntfSubcommand( show, "interface", "shows interfaces, of whatever kind",
                        "these interfaces alone" ) {
    addJson();
  }

  Status run( Output & output ) const override {
    IntfFilter filter( names() );
    SystemTree const system = tree();
    Statuses< EthIntfStatus > all;
    addStatuses( system.at< Interface::EthIntfStatusDir >( Interface::ethStatusPlace ), filter,
                 all );
    addStatuses( system.at< Interface::VlanIntfStatusDir >( Interface::vlanStatusPlace ), filter,
                 all );
    addStatuses( system.at< Interface::SubIntfStatusDir >( Interface::subStatusPlace ), filter,
                 all );
    sort( all );
    output.write( isJson() ? jsonOf( system.sysname(), all ) : textOf( all ) );
    return filter.complainOfMissing( "no such interface" );
  }

 private:
  static std::string textOf( Statuses< EthIntfStatus > const & all ) {
    std::vector< Row > rows;
    for( auto const & status : all )
      rows.push_back( { std::string( status->intfId().stringValue().view() ),
                        operStatusText( status->operStatus() ),
                        linkStatusText( status->linkStatus() ), std::to_string( status->mtu() ),
                        speedText( status->speed() ), addressText( status->addr() ),
                        momentText( status->lastLinkStatusChange() ),
                        printable( status->description().view() ) } );
    return aligned( { { "interface" },
                      { "status" },
                      { "link" },
                      { "MTU", true },
                      { "speed", true },
                      { "address" },
                      { "last change" },
                      { "description" } },
                    rows );
  }

  static std::string jsonOf( std::string const & sysname, Statuses< EthIntfStatus > const & all ) {
    Json interfaces = Json::array();
    for( auto const & status : all )
      interfaces.push_back( statusJson( *status ) );
    return jsonText( "interfaces", sysname, "interfaces", interfaces );
  }
};

}  // namespace

std::unique_ptr< Subcommand > showInterface( CLI::App & show ) {
  return std::make_unique< InterfaceShow >( show );
}

}  // namespace Lumo
