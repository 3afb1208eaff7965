// IntfTexts.h: what there is to be said of an interface, as people and as programs read it. Where
// there is nothing to be said people read "-".
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include <Interface/EthIntf.h>
#include <koi/KeysOf.h>

#include <nlohmann/json.hpp>

#include "IntfSubcommand.h"

namespace Lumo {

/// The text on one line: control characters are written \x0a.
std::string printable( std::string_view text );
/// "up", "lowerLayerDown"; the number of one that is not known.
std::string operStatusText( Interface::IntfOperStatus status );
/// "up".
std::string linkStatusText( Interface::LinkStatus status );
/// Of so many bits a second: "10G", "2.5G", "100M", "1234567".
std::string speedText( Koi::U64 speed );
std::string addressText( Wirex::EthAddr const & address );
/// The moment that many seconds after 1970 began, in UTC.
std::string momentText( Koi::Seconds time );

/// What all kinds of interfaces have.
nlohmann::ordered_json statusJson( Interface::EthIntfStatus const & status );

template< class Status >
using Statuses = std::vector< Koi::Ptr< Status > >;

/// Adds those of a directory that are admitted; none of one that is not there.
template< class Dir, class Status >
void addStatuses( Koi::Ptr< Dir > const & dir, IntfFilter & filter, Statuses< Status > & all ) {
  if( dir )
    for( Wirex::IntfId const & intf : Koi::keysOf( dir->intfStatus() ) )
      if( filter.admits( intf ) )
        all.push_back( dir->intfStatus( intf ) );
}

/// By interface, eth2 before eth10.
template< class Status >
void sort( Statuses< Status > & all ) {
  std::ranges::stable_sort( all, {}, []( auto const & status ) { return status->intfId(); } );
}

}  // namespace Lumo
