#include "VlanList.h"

#include <charconv>

#include "Output.h"

namespace Lumo {
namespace {

using Bridging::VlanId;

/// Reads a number that begins there.
unsigned vlanAt( char const *& at, char const * end, std::string const & all ) {
  unsigned number = 0;
  auto const [stop, error] = std::from_chars( at, end, number );
  if( error != std::errc() || number < VlanId::koiRange.low || number > VlanId::koiRange.high )
    throw Failure( wrongUse,
                   "VLANS '" + all + "': numbers from 1 to 4094 were expected, as in 1,10-20" );
  at = stop;
  return number;
}

}  // namespace

VlanSet vlansOf( std::string const & text ) {
  VlanSet vlans;
  char const * at = text.data();
  char const * const end = at + text.size();
  auto const isAt = [&]( char c ) { return at != end && *at == c && ++at; };
  do {
    unsigned const first = vlanAt( at, end, text );
    unsigned const last = isAt( '-' ) ? vlanAt( at, end, text ) : first;
    if( last < first )
      throw Failure( wrongUse, "VLANS '" + text + "': " + std::to_string( first ) + "-" +
                                   std::to_string( last ) + " goes backwards" );
    for( unsigned vlan = first; vlan <= last; ++vlan )
      vlans.insert( VlanId( vlan ) );
  } while( isAt( ',' ) );
  if( at != end )
    throw Failure( wrongUse, "VLANS '" + text + "': a comma was expected before '" + at + "'" );
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
