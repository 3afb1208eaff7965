// VlanIntfCounterCheckpointSm.cpp: a set of counters "lastClear" for each interface that is listed.

#include <Lumo/VlanIntf.h>

#include <vector>

#include <ntrace/Ntrace.h>
#include <wirex/NumberedIntfId.h>

namespace Interface {
namespace {

/// The counters as they are now; zeros when there are none to be read.
VlanIntfCounterQuill countersNow( AllVlanIntfCounterDir const & dir,
                                  Wirex::IntfId const & intfId ) {
  Koi::String8 const sysname = getSysnameFromEntity( dir );
  if( sysname.empty() )
    return VlanIntfCounterQuill( intfId );
  return vlanIntfStatusCounterFactory( Koi::Name( "current" ), intfId,
                                       VlanIntfCounterArgs( sysname, getCohabiting() ) )
      ->record();
}

void takeDown( AllVlanIntfCounterDir & dir, Wirex::IntfId const & intfId ) {
  VlanIntfCounterQuill const now = countersNow( dir, intfId );
  Koi::transaction( [&] {  // nobody is told of a set that is not complete
    auto const lastClear =
        dir.intfCounterDirIs( intfId )->intfCounterIs( Koi::Name( "lastClear" ) );
    lastClear->vlanStatisticsIs( now.vlanStatistics() );
    lastClear->statisticsIs( now.statistics() );
    lastClear->ratesIs( now.rates() );
    lastClear->linkStatusChangesIs( now.linkStatusChanges() );
    lastClear->genIdIs( now.genId() );
  } );
}

void handleVlanIntf( VlanIntfCounterCheckpointSm & sm, Wirex::IntfId const & intfId ) {
  Ntrace::standard().trace( 8, "VlanIntfCounterCheckpointSm::handleVlanIntf()",
                            " vlanIntf: ", intfId.stringValue() );
  if( !Wirex::VlanIntfId::isVlanIntfId( intfId ) )
    return;
  auto & dir = *sm.allVlanIntfCounterDir();
  bool const isListed = sm.vlanIntfCounterWriterStatus()->intf().contains( intfId );
  bool const isThere = dir.intfCounterDir().contains( intfId );
  if( isListed && !isThere )
    takeDown( dir, intfId );
  else if( !isListed && isThere )
    dir.intfCounterDirDel( intfId );
}

/// All that are listed, and all that were.
void handleVlanIntf( VlanIntfCounterCheckpointSm & sm ) {
  std::vector< Wirex::IntfId > all;
  for( auto const & i : sm.vlanIntfCounterWriterStatus()->intf() )
    all.push_back( i.key() );
  for( auto const & i : sm.allVlanIntfCounterDir()->intfCounterDir() )
    if( !sm.vlanIntfCounterWriterStatus()->intf().contains( i.key() ) )
      all.push_back( i.key() );
  for( auto const & intfId : all )
    handleVlanIntf( sm, intfId );
}

bool isAtWork( VlanIntfCounterCheckpointSm const & sm ) {
  return sm.initialized() && sm.vlanIntfCounterWriterStatus() && sm.allVlanIntfCounterDir();
}

}  // namespace

void VlanIntfCounterCheckpointSm::handleIntf( Wirex::IntfId const & intfId ) {
  if( isAtWork( *this ) )
    handleVlanIntf( *this, intfId );
}

void VlanIntfCounterCheckpointSm::handleInitialized() {
  if( isAtWork( *this ) )
    handleVlanIntf( *this );
}

}  // namespace Interface
