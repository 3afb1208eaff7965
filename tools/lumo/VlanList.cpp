#include "VlanList.h"

#include <algorithm>

#include "NumberRange.h"
#include "Output.h"

namespace Lumo {

using Bridging::VlanId;

VlanSet vlansOf( std::string const & text ) {
  VlanSet vlans;
  std::string_view rest = text;
  for( bool isLast = false; !isLast; ) {
    auto const comma = std::min( rest.find( ',' ), rest.size() );
    isLast = comma == rest.size();
    try {
      auto const range =
          numberRangeOf( rest.substr( 0, comma ), VlanId::koiRange.low, VlanId::koiRange.high );
      for( unsigned vlan = range.first; vlan <= range.last; ++vlan )
        vlans.insert( VlanId( static_cast< Koi::U16 >( vlan ) ) );
    } catch( Koi::RangeException const & e ) {
      throw Failure( wrongUse, "VLANS '" + text + "': " + e.what() );
    }
    rest.remove_prefix( isLast ? comma : comma + 1 );
  }
  return vlans;
}

std::string vlansText( VlanSet const & vlans ) {
  std::string text = vlans.size() == 1 ? "VLAN " : "VLANs ";
  for( auto at = vlans.begin(); at != vlans.end(); ) {
    unsigned const first = at->value();
    unsigned last = first;
    while( ++at != vlans.end() && at->value() == last + 1u )
      ++last;
    text += std::to_string( first );
    if( last != first )
      text += ( last == first + 1 ? "," : "-" ) + std::to_string( last );
    if( at != vlans.end() )
      text += ",";
  }
  return text;
}

}  // namespace Lumo
