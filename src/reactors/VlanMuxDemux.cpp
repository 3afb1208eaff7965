#include <reactors/VlanMuxDemux.h>

#include <ntrace/Ntrace.h>

namespace Lumo {
namespace {

using Wirex::Pkt;
using Wirex::VlanTag;

}  // namespace

VlanMuxDemux::VlanMuxDemux( Koi::Ptr< Wirex::Pam > const & pam, Koi::String8 const & deviceName,
                            Bridging::VlanIdOrNone const & defaultVlan, bool leaveVlanHdr )
    : Tracked( pam ),
      deviceName_( deviceName ),
      defaultVlan_( defaultVlan ),
      leaveVlanHdr_( leaveVlanHdr ) {
  koiBegin();
}

void VlanMuxDemux::ethPamIs( Koi::Ptr< Wirex::EthDevPam > const & ethPam ) {
  onePamIs( ethPam );
  ethPam_ = ethPam;
}

void VlanMuxDemux::doInitMux() {
  modeIs( muxAndDemux );
  initializedIs( true );
  if( !deviceName_.empty() )
    ethPamIs( new Wirex::EthDevPam( deviceName_, koiFwkActivity() ) );
}

void VlanMuxDemux::doPrepareToDie() {
  ethPam_ = nullptr;
  PamMuxDemux::doPrepareToDie();
}

Koi::U32 VlanMuxDemux::decapsulate( Koi::Ptr< Pkt > const & pkt ) {
  if( pkt->dataBytes() < Pkt::headerBytes )
    return defaultVlan_.value();

  // 1. A tag beside the bytes is the outermost one.
  if( pkt->hasSeparateVlanTag() ) {
    VlanTag const tag = pkt->separateVlanTag();
    if( tag.tpid != VlanTag::dot1Q )
      return defaultVlan_.value();
    if( !leaveVlanHdr_ )
      pkt->delSeparateVlanTag();
    Ntrace::standard().trace( 8, "VlanMuxDemux::decapsulate()",
                              " separateDot1QHdr vlanId: ", tag.vlan() );
    return tag.vlan();
  }

  // 2. A tag among them.
  if( pkt->ethType() == VlanTag::dot1Q && pkt->dataBytes() >= Pkt::headerBytes + VlanTag::bytes ) {
    Koi::U32 const vlan = pkt->number16( Pkt::headerBytes ) & VlanTag::vlanMask;
    if( !leaveVlanHdr_ )
      pkt->tagDel();
    Ntrace::standard().trace( 8, "VlanMuxDemux::decapsulate()", " vlanId: ", vlan );
    return vlan;
  }
  return defaultVlan_.value();
}

void VlanMuxDemux::doEncapsulate( Koi::Ptr< Pkt > const & pkt, Koi::U32 vlan ) {
  Ntrace::standard().trace( 8, "VlanMuxDemux::doEncapsulate()", " vlanId: ", vlan );
  if( leaveVlanHdr_ || pkt->dataBytes() < Pkt::headerBytes )
    return;
  // A tag beside the bytes would go out before this one: it goes among them first.
  if( pkt->hasSeparateVlanTag() ) {
    pkt->tagIs( pkt->separateVlanTag() );
    pkt->delSeparateVlanTag();
  }
  // Deliberate: priority and drop eligibility are 0, whatever the frame had.
  pkt->tagIs( { VlanTag::dot1Q, static_cast< Koi::U16 >( vlan & VlanTag::vlanMask ) } );
}

Koi::Ptr< VlanMuxDemux > VlanMuxDemuxIs( Koi::Ptr< Wirex::Pam > const & pam,
                                         Koi::String8 const & deviceName,
                                         Bridging::VlanIdOrNone const & defaultVlan,
                                         bool leaveVlanHdr ) {
  return Koi::reactorIs< VlanMuxDemux >( pam, deviceName, defaultVlan, leaveVlanHdr );
}
Koi::Ptr< VlanMuxDemux > vlanMuxDemuxFactory( Koi::Ptr< Wirex::Pam > const & pam,
                                              Koi::String8 const & deviceName,
                                              Bridging::VlanIdOrNone const & defaultVlan,
                                              bool leaveVlanHdr ) {
  return VlanMuxDemuxIs( pam, deviceName, defaultVlan, leaveVlanHdr );
}

}  // namespace Lumo
