// Bridging.cpp: what the bridging model computes.

#include <Lumo/Bridging.h>

#include <algorithm>
#include <cstdio>
#include <string_view>

namespace Bridging {
namespace {

/// Whether an attribute is the same in two entities; collections by their members, in whatever
/// order.
template< class Cell >
bool equalCells( Cell const & a, Cell const & b ) {
  if constexpr( requires { typename Cell::Key; } ) {
    bool equal = a.size() == b.size();
    for( auto const & member : a )
      equal = equal && b.contains( member.key() ) && b.value( member.key() ) == member.value();
    return equal;
  } else {
    return Koi::same( a, b );
  }
}

/// Whether all state of two entities of a type is the same, but for the attributes of those names.
template< class E >
bool equalState( E const & a, E const & b, std::initializer_list< std::string_view > but ) {
  auto const isEqual = [&]( auto const & row ) {
    using Row = std::remove_cvref_t< decltype( row ) >;
    if constexpr( Row::kind < Koi::AttributeKind::scalar )
      return true;
    else
      return std::ranges::find( but, row.name ) != but.end() ||
             equalCells( a.*row.cell, b.*row.cell );
  };
  return std::apply( [&]( auto const &... row ) { return ( isEqual( row ) && ... ); },
                     E::koiAttributes() );
}

}  // namespace

VlanTagRequired VlanTagRequired::handleInitialized() {
  return VlanTagRequired( 1u << untagged | 1u << priority );
}

bool VlanTagRequired::drops( VlanTagFormat format ) const {
  return format < 8 && ( vlanTagFormatDrop() >> format & 1 ) != 0;
}

bool VlanConfig::eligibleToBePrimary() const {
  return !internal() && vlanType() == normal && primaryVlan().value() == 0;
}

Koi::U32 HwCapabilities::maxFrameSizeWithoutL2Encapsulation() const { return maxFrameSize() - 22; }

namespace Input {

void FdbConfig::doCreateConfiguredHost( Wirex::EthAddr const & address, Wirex::IntfId const & intf,
                                        EntryType entryType, Koi::String8 const & label ) {
  configuredHostIs( ConfiguredHost( address, intf, entryType, label ) );
}

bool SwitchIntfConfig::isEqual( SwitchIntfConfig const & other ) const {
  return equalState( *this, other, { "source", "version" } );
}

Koi::String8 VlanConfig::defaultName() const {
  if( vlanId().value() == 1 )
    return "default";
  char name[sizeof "VLAN65535"];
  std::snprintf( name, sizeof name, "VLAN%04d", vlanId().value() );
  return name;
}

void Config::doCreateVlan( VlanId const & vlanId ) { vlanConfigIs( vlanId ); }

}  // namespace Input
}  // namespace Bridging
