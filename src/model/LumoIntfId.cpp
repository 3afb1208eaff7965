// LumoIntfId.cpp: the interface kinds of bridging, told apart and converted.

#include <Lumo/LumoIntfId.h>
#include <koi/Assert.h>
#include <wirex/EthIntfId.h>
#include <wirex/GenericIntfId.h>

namespace Wirex {

namespace {

bool isOfType( IntfId const & intfId, Koi::U32 typeId ) {
  return GenericIntfId( intfId ).typeId() == typeId;
}

/// The same identifier under another type number.
IntfId withType( IntfId const & intfId, Koi::U32 typeId ) {
  GenericIntfId changed( intfId );
  changed.typeIdIs( typeId );
  return changed.intfId();
}

}  // namespace

CpuIntfId::CpuIntfId( Koi::String8 const & name ) : CpuIntfId( IntfId( name ) ) {}
CpuIntfId::CpuIntfId( IntfId const & intfId ) : Wrapped( intfId.value() ) {}

bool CpuIntfId::isCpuIntfId( IntfId const & intfId ) {
  return isOfType( intfId, GenericIntfId::cpuType );
}

PortChannelIntfId::PortChannelIntfId( Koi::String8 const & name )
    : PortChannelIntfId( IntfId( name ) ) {}
PortChannelIntfId::PortChannelIntfId( IntfId const & intfId ) : Wrapped( intfId.value() ) {}

bool PortChannelIntfId::isPortChannelIntfId( IntfId const & intfId ) {
  return isOfType( intfId, GenericIntfId::portChannelType );
}

bool PortChannelIntfId::isRecirc( IntfId const & intfId ) {
  return isPortChannelIntfId( intfId ) &&
         GenericIntfId( intfId ).subType() == GenericIntfId::recircSubType;
}

bool PortChannelIntfId::isEcmp( IntfId const & intfId ) {
  return isPortChannelIntfId( intfId ) &&
         GenericIntfId( intfId ).subType() == GenericIntfId::ecmpSubType;
}

Koi::U16 PortChannelIntfId::portChannel( IntfId const & intfId ) {
  KOI_ASSERT( isPortChannelIntfId( intfId ) );
  return static_cast< Koi::U16 >( GenericIntfId( intfId ).part( 1 ) );
}

Koi::U32 PortChannelIntfId::subIntf( IntfId const & intfId ) {
  KOI_ASSERT( isPortChannelIntfId( intfId ) );
  return GenericIntfId( intfId ).part( 0 );
}

IntfId PortChannelIntfId::parentIntfIdFromSubIntf( IntfId const & subIntfId ) {
  KOI_ASSERT( isPortChannelIntfId( subIntfId ) );
  KOI_ASSERT( subIntf( subIntfId ) );
  GenericIntfId parent( subIntfId );
  parent.partIs( 0, 0 );
  return parent.intfId();
}

PeerEthIntfId::PeerEthIntfId( Koi::String8 const & name ) : PeerEthIntfId( IntfId( name ) ) {}
PeerEthIntfId::PeerEthIntfId( IntfId const & intfId ) : Wrapped( intfId.value() ) {}

bool PeerEthIntfId::isPeerEthIntfId( IntfId const & intfId ) {
  return isOfType( intfId, GenericIntfId::peerEthernetType );
}

IntfId PeerEthIntfId::toPeerEthIntfId( IntfId const & intfId ) {
  KOI_ASSERT( EthIntfId::isEthIntfId( intfId ) );
  return withType( intfId, GenericIntfId::peerEthernetType );
}

IntfId PeerEthIntfId::fromPeerEthIntfId( IntfId const & intfId ) {
  KOI_ASSERT( isPeerEthIntfId( intfId ) );
  return withType( intfId, GenericIntfId::ethernetType );
}

PeerPortChannelIntfId::PeerPortChannelIntfId( Koi::String8 const & name )
    : PeerPortChannelIntfId( IntfId( name ) ) {}
PeerPortChannelIntfId::PeerPortChannelIntfId( IntfId const & intfId ) : Wrapped( intfId.value() ) {}

bool PeerPortChannelIntfId::isPeerPortChannelIntfId( IntfId const & intfId ) {
  return isOfType( intfId, GenericIntfId::peerPortChannelType );
}

IntfId PeerPortChannelIntfId::toPeerPortChannelIntfId( IntfId const & intfId ) {
  KOI_ASSERT( PortChannelIntfId::isPortChannelIntfId( intfId ) );
  return withType( intfId, GenericIntfId::peerPortChannelType );
}

IntfId PeerPortChannelIntfId::fromPeerPortChannelIntfId( IntfId const & intfId ) {
  KOI_ASSERT( isPeerPortChannelIntfId( intfId ) );
  return withType( intfId, GenericIntfId::portChannelType );
}

SubIntfId::SubIntfId( Koi::String8 const & name ) : SubIntfId( IntfId( name ) ) {}
SubIntfId::SubIntfId( IntfId const & intfId ) : Wrapped( intfId.value() ) {}

bool SubIntfId::isSubIntfId( IntfId const & intfId ) {
  if( EthIntfId::isEthIntfId( intfId ) )
    return EthIntfId::subIntf( intfId ) != 0;
  return PortChannelIntfId::isPortChannelIntfId( intfId ) &&
         PortChannelIntfId::subIntf( intfId ) != 0;
}

IntfId SubIntfId::parentIntfId( IntfId const & intfId ) {
  if( EthIntfId::isEthIntfId( intfId ) )
    return EthIntfId::parentIntfIdFromSubIntf( intfId );
  KOI_ASSERT( PortChannelIntfId::isPortChannelIntfId( intfId ) );
  return PortChannelIntfId::parentIntfIdFromSubIntf( intfId );
}

}  // namespace Wirex
