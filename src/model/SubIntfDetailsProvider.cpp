#include <model/SubIntfDetailsProvider.h>

#include <Lumo/LumoIntfId.h>
#include <Lumo/SubIntf.h>
#include <koi/Assert.h>
#include <ntrace/Ntrace.h>
#include <wirex/EthIntfId.h>

namespace Interface {
namespace {

using Wirex::EthIntfId;
using Wirex::PortChannelIntfId;

constexpr unsigned subIntfShift = 18;
constexpr Koi::U32 portChannelMark = 0x3E000;  // a module of all ones
constexpr Koi::U32 subIntfMax = 4094, portChannelMax = 8191;

EthIntf::DetailsRegistration const subIntfs( []() -> Koi::Ptr< EthIntf::EthIntfDetailsProvider > {
  return new SubIntfDetailsProvider;
} );

}  // namespace

bool hasSubIntfNumber( Wirex::IntfId const & intfId ) {
  if( EthIntfId::isEthIntfId( intfId ) )
    return EthIntfId::subIntf( intfId ) <= subIntfMax &&
           EthIntf::hasNumber( EthIntfId::module( intfId ), EthIntfId::port( intfId ),
                               EthIntfId::lane( intfId ) );
  return PortChannelIntfId::isPortChannelIntfId( intfId ) &&
         PortChannelIntfId::subIntf( intfId ) <= subIntfMax;
}

Koi::U32 subIntfNumber( Wirex::IntfId const & intfId ) {
  if( EthIntfId::isEthIntfId( intfId ) ) {
    Koi::U32 const subIntfNum = EthIntfId::subIntf( intfId );
    KOI_ASSERT( subIntfNum <= 4094 );
    return EthIntf::numberOfPlace( EthIntfId::module( intfId ), EthIntfId::port( intfId ),
                                   EthIntfId::lane( intfId ) ) |
           subIntfNum << subIntfShift;
  }
  KOI_ASSERT( PortChannelIntfId::isPortChannelIntfId( intfId ) );
  Koi::U32 const subIntfNum = PortChannelIntfId::subIntf( intfId );
  KOI_ASSERT( subIntfNum <= 4094 );
  return PortChannelIntfId::portChannel( intfId ) | portChannelMark | subIntfNum << subIntfShift;
}

Koi::String8 SubIntfDetailsProvider::statusTypeName() const {
  return Koi::String8( SubIntfStatus::koiName );
}

Koi::I32 SubIntfDetailsProvider::intfIndex( EthIntfStatus const & status ) const {
  if( !dynamic_cast< SubIntfStatus const * >( &status ) )
    return -1;
  Wirex::IntfId const intfId = status.intfId();
  if( !hasSubIntfNumber( intfId ) ) {
    Ntrace::standard().trace( 0, "SubIntfDetailsProvider::intfIndex() no index for ",
                              intfId.stringValue() );
    return -1;
  }
  if( PortChannelIntfId::isPortChannelIntfId( intfId ) &&
      PortChannelIntfId::portChannel( intfId ) > portChannelMax )
    Ntrace::standard().trace( 0,
                              "SubIntfDetailsProvider::intfIndex() not the only one of its index: ",
                              intfId.stringValue() );
  return indexOf( subIntfNumber( intfId ) );
}

}  // namespace Interface
