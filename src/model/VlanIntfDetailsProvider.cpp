#include <model/VlanIntfDetailsProvider.h>

#include <Lumo/VlanIntf.h>
#include <wirex/NumberedIntfId.h>

namespace Interface {
namespace {

EthIntf::DetailsRegistration const vlanIntfs( []() -> Koi::Ptr< EthIntf::EthIntfDetailsProvider > {
  return new VlanIntfDetailsProvider;
} );

}  // namespace

Koi::String8 VlanIntfDetailsProvider::statusTypeName() const {
  return Koi::String8( VlanIntfStatus::koiName );
}

Koi::I32 VlanIntfDetailsProvider::intfIndex( EthIntfStatus const & status ) const {
  using Wirex::VlanIntfId;
  if( !dynamic_cast< VlanIntfStatus const * >( &status ) ||
      !VlanIntfId::isVlanIntfId( status.intfId() ) )
    return -1;
  return indexOf( VlanIntfId::vlanId( status.intfId() ) );
}

}  // namespace Interface
