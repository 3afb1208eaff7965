// Choice.cpp: which VLANs may be handed out for internal use, and which one is next.

#include <internal-vlan/Choice.h>

namespace Bridging {

InternalVlanChoice::InternalVlanChoice( InternalVlanAllocator const & allocator )
    : allocator_( allocator ), requests_( *allocator.requests() ), config_( *allocator.config() ) {}

bool InternalVlanChoice::isAllowed( VlanId const & vlan ) const {
  auto const & range = config_.internalVlanRange();
  Koi::Ptr< VlanConfig > const configured = config_.vlanConfig( vlan );
  bool const isUsers = configured && !configured->internal();
  bool const isListed = !requests_.useWhitelist() || requests_.whitelist( vlan );
  return vlan >= range.vlanBegin() && vlan <= range.vlanEnd() && isListed && !isUsers &&
         !requests_.blacklist().contains( vlan );
}

bool InternalVlanChoice::isFree( VlanId const & vlan ) const {
  return isAllowed( vlan ) && !allocator_.owner().contains( vlan );
}

VlanIdOrNone InternalVlanChoice::preferred( InternalVlanKeySourcePair const & pair ) const {
  VlanIdOrNone const wish = requests_.preferred( pair );
  return wish.value() != 0 && isFree( VlanId( wish.value() ) ) ? wish : VlanIdOrNone();
}

VlanIdOrNone InternalVlanChoice::next() const {
  auto const & range = config_.internalVlanRange();
  int const begin = range.vlanBegin().value(), end = range.vlanEnd().value();
  bool const isUp = config_.internalVlanAllocationPolicy() != descending;
  for( int i = 0; i <= end - begin; ++i ) {
    auto const number = static_cast< unsigned >( isUp ? begin + i : end - i );
    if( isFree( VlanId( number ) ) )
      return VlanIdOrNone( number );
  }
  return {};
}

}  // namespace Bridging
