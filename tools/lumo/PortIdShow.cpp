// PortIdShow.cpp: `lumo show port-id`: the small numbers of interfaces.
#include <Interface/EthIntfPortId.h>

#include <interface/TreePlaces.h>

#include "Columns.h"
#include "IntfTexts.h"
#include "Subcommands.h"

namespace Lumo {
namespace {

using Wirex::IntfId;

class PortIdShow final : public IntfSubcommand {
 public:
  explicit PortIdShow( CLI::App & show )
      : IntfSubcommand( show, "port-id", "shows the port ids of interfaces",
                        "those of these interfaces alone" ) {
    addJson();
  }

  Status run( Output & output ) const override {
    IntfFilter filter( names() );
    SystemTree const system = tree();
    auto const ids = system.at< Interface::EthIntfPortIdDir >( Interface::portIdPlace );
    auto const ports = system.at< Interface::EthIntfStatusDir >( Interface::ethStatusPlace );
    std::vector< Shown > all;
    if( ids )
      for( IntfId const & intf : Koi::keysOf( ids->portId() ) )
        if( filter.admits( intf ) )
          all.push_back( { ids->portId( intf ).value(), intf,
                           ports && ports->intfStatus().contains( intf ) } );
    std::ranges::sort( all, {}, []( Shown const & one ) { return std::pair( one.id, one.intf ); } );
    output.write( isJson() ? jsonOf( system.sysname(), all ) : textOf( all ) );
    return filter.complainOfMissing( "no port id" );
  }

 private:
  struct Shown {
    unsigned id;
    IntfId intf;
    bool isThere;
  };

  static std::string textOf( std::vector< Shown > const & all ) {
    std::vector< Row > rows;
    for( Shown const & one : all )
      rows.push_back( { std::to_string( one.id ), std::string( one.intf.stringValue().view() ),
                        one.isThere ? "-" : "not there; kept for its return" } );
    return aligned( { { "port id", true }, { "interface" }, { "note" } }, rows );
  }

  static std::string jsonOf( std::string const & sysname, std::vector< Shown > const & all ) {
    Json portIds = Json::array();
    for( Shown const & one : all )
      portIds.push_back( { { "intf", one.intf.stringValue().view() },
                           { "portId", one.id },
                           { "there", one.isThere } } );
    return jsonText( "port-ids", sysname, "portIds", portIds );
  }
};

}  // namespace

std::unique_ptr< Subcommand > showPortId( CLI::App & show ) {
  return std::make_unique< PortIdShow >( show );
}

}  // namespace Lumo
