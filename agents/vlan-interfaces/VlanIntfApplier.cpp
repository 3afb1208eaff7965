// VlanIntfApplier.cpp: how a configuration that prevails becomes an interface.

#include <VlanIntfApplier.h>

#include <koi/KeysOf.h>
#include <koi/UtcText.h>

#include "VlanOf.h"

namespace Interface {

using Wirex::IntfId;

namespace {

void linkStatusIs( VlanIntfStatus & status, bool isUp ) {
  LinkStatus const now = isUp ? linkUp : linkDown;
  if( status.linkStatus() == now )
    return;
  status.linkStatusIs( now );
  status.operStatusIs( isUp ? operUp : operDown );
  status.lastLinkStatusChangeIs( Koi::secondsSince1970() );
  status.linkStatusChangesIs( status.linkStatusChanges() + 1 );
}

void remove( VlanIntfApplySm & sm, IntfId const & intfId ) {
  sm.counted()->intfDel( intfId );
  sm.statuses()->intfStatusDel( intfId );
}

bool canBeApplied( VlanIntfConfig const & config ) {
  return VlanInterfaces::vlanOf( config.intfId() ) != 0 &&
         config.mtu() >= VlanIntfApplySm::mtuMin() && config.mtu() <= VlanIntfApplySm::mtuMax();
}

/// Makes the interface what the configuration of it says, which is there.
void apply( VlanIntfApplySm & sm, IntfId const & intfId ) {
  Koi::Ptr< VlanIntfConfig > const config = sm.config( intfId );
  if( !canBeApplied( *config ) ) {
    remove( sm, intfId );
    return sm.list()->intfConfigErrorIs( intfId, true );
  }
  sm.list()->intfConfigErrorDel( intfId );
  Koi::Ptr< VlanIntfStatus > status = sm.statuses()->intfStatus( intfId );
  if( !status ) {
    sm.numMadeIs( sm.numMade() + 1 );
    status = sm.statuses()->intfStatusIs( intfId, sm.numMade(), Koi::String8() );
  }
  status->descriptionIs( config->description() );
  status->mtuIs( config->mtu() );
  status->addrIs( config->addr() );
  status->activeIs( true );
  linkStatusIs( *status, config->enabled() );
  sm.counted()->intfIs( intfId, true );
}

}  // namespace

void VlanIntfApplySm::handleIntfConfig( IntfId const & intfId ) {
  configIs( intfId, list()->intfConfig( intfId ) );
  if( config( intfId ) )
    apply( *this, intfId );
  else
    remove( *this, intfId );
}

void VlanIntfApplySm::handleIntfConfigs() {
  for( IntfId const & intfId : configKeys() )
    if( !list() || !list()->intfConfig( intfId ) ) {
      configDel( intfId );
      remove( *this, intfId );
    }
  if( list() )
    for( IntfId const & intfId : Koi::keysOf( list()->intfConfig() ) )
      handleIntfConfig( intfId );
}

void VlanIntfApplySm::handleEnabled( IntfId const & intfId ) { apply( *this, intfId ); }
void VlanIntfApplySm::handleDescription( IntfId const & intfId ) { apply( *this, intfId ); }
void VlanIntfApplySm::handleMtu( IntfId const & intfId ) { apply( *this, intfId ); }
void VlanIntfApplySm::handleAddr( IntfId const & intfId ) { apply( *this, intfId ); }

void VlanIntfApplySm::handleCleanup() {
  for( IntfId const & intfId : configKeys() )
    remove( *this, intfId );
}

}  // namespace Interface
