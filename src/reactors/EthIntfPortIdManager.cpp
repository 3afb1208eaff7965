// EthIntfPortIdManager.cpp: how interfaces get their port ids.
//
// P1  reversePortIdMap holds exactly the ids other than 0 that the directory holds, each once.
// P2  vanished and vanishedAs hold exactly those of them whose interface is not there.

#include <Lumo/EthIntfPortIdManager.h>

#include <algorithm>
#include <optional>
#include <vector>

#include <Lumo/LumoIntfId.h>
#include <koi/KeysOf.h>
#include <ntrace/Ntrace.h>
#include <wirex/EthIntfId.h>
#include <wirex/MgmtIntfId.h>
#include <wirex/NumberedIntfId.h>

namespace Interface {

using namespace Wirex;

namespace {

using Id = Koi::U16;

Id wrapped( Koi::U32 sum ) { return static_cast< Id >( sum ); }

bool isChannel( IntfId const & intfId ) {
  return PortChannelIntfId::isPortChannelIntfId( intfId ) ||
         PeerPortChannelIntfId::isPeerPortChannelIntfId( intfId );
}

bool isUnconnected( IntfId const & intfId ) {
  return UnconnectedEthIntfId::isUnconnectedEthIntfId( intfId );
}
/// An unconnected port has no place but its number; what stands above that would be a module.
bool isOnModule( IntfId const & unconnected ) {
  return UnconnectedEthIntfId::port( unconnected ) > 65535;
}

Koi::U32 ethBaseId( IntfId const & intfId ) {
  KOI_ASSERT( Wirex::EthIntfId::isEthIntfId( intfId ) );
  Koi::U32 const module = EthIntfId::module( intfId ), lane = EthIntfId::lane( intfId ),
                 port = EthIntfId::port( intfId ) * ( lane != 0 ? 4 : 1 );
  return module < 16 ? lane + port + module * 150 : lane + port + 300 + ( module - 16 ) * 12;
}

Koi::U32 peerBaseId( IntfId const & intfId ) {
  IntfId const here = PeerEthIntfId::fromPeerEthIntfId( intfId );
  Koi::U32 const module = EthIntfId::module( here ), port = EthIntfId::port( here );
  return module < 3 ? port + 200 : port + 1500 + ( module - 3 ) * 150;
}

Koi::U32 mgmtBaseId( IntfId const & intfId ) {
  Koi::U32 const module = MgmtIntfId::module( intfId ), port = MgmtIntfId::port( intfId );
  if( module == 0 )
    return port + 96;
  KOI_ASSERT( ( port == 1 ) || ( port == 2 ) );
  return port + module * 2 - 2;
}

/// A management port that no supervisor has.
bool isStrangeMgmt( IntfId const & intfId ) {
  if( !MgmtIntfId::isMgmtIntfId( intfId ) || MgmtIntfId::module( intfId ) == 0 )
    return false;
  Koi::U32 const port = MgmtIntfId::port( intfId );
  return port != 1 && port != 2;
}

// ---- the manager

bool isThere( PortIdManager const & sm, IntfId const & intfId ) {
  return sm.allEthIntfStatusDir() && sm.allEthIntfStatusDir()->intfStatus( intfId );
}
bool hasId( PortIdManager const & sm, IntfId const & intfId ) {
  return sm.ethIntfPortIdDir()->portId( intfId ).value() != 0;
}

/// The first id from `first` to `last` that no interface has; 0 when there is none.
Id firstFree( PortIdManager const & sm, Koi::U32 first, Koi::U32 last ) {
  for( Koi::U32 id = first; id <= last; ++id ) {
    EthPortId const portId{ wrapped( id ) };
    if( !sm.reversePortIdMap().contains( portId ) )
      return wrapped( id );
    if( Ntrace::standard().isOn( 9 ) )  // in full it costs more than the search
      Ntrace::standard().trace( 9, id, " is being used by ",
                                sm.reversePortIdMap( portId ).stringValue() );
  }
  return 0;
}

Id freeId( PortIdManager const & sm, Id baseId ) {
  constexpr Koi::U32 most = EthPortId::max();
  Id id = 0;
  if( baseId <= most )
    id = firstFree( sm, std::max< Koi::U32 >( baseId, 1 ), most );  // 0 is no id
  if( id == 0 && baseId >= 2 )
    id = firstFree( sm, 1, std::min< Koi::U32 >( baseId - 1, most ) );
  return id;
}

/// The interface is there again, or it has lost its id.
void isNotVanished( PortIdManager & sm, IntfId const & intfId ) {
  if( !sm.vanishedAs().contains( intfId ) )
    return;
  sm.vanishedDel( sm.vanishedAs( intfId ) );
  sm.vanishedAsDel( intfId );
}
void isVanished( PortIdManager & sm, IntfId const & intfId ) {
  if( sm.vanishedAs().contains( intfId ) )
    return;
  sm.numVanishedIs( sm.numVanished() + 1 );
  sm.vanishedIs( sm.numVanished(), intfId );
  sm.vanishedAsIs( intfId, sm.numVanished() );
}

/// The id of the interface that went first, which loses it; 0 when none went.
Id reclaimedId( PortIdManager & sm ) {
  auto const oldest = sm.vanished().begin();
  if( !oldest )
    return 0;
  IntfId const intfId = oldest.value();
  EthPortId const id = sm.ethIntfPortIdDir()->portId( intfId );
  Ntrace::standard().trace( 5, "reclaiming ", id.value(), " of ", intfId.stringValue() );
  isNotVanished( sm, intfId );
  sm.reversePortIdMapDel( id );
  sm.ethIntfPortIdDir()->portIdDel( intfId );
  return id.value();
}

void allocatePortId( PortIdManager & sm, IntfId const & intfId ) {
  if( !isPortIdNeeded( intfId ) )
    return;
  if( isStrangeMgmt( intfId ) )
    return Ntrace::standard().trace( 0, intfId.stringValue(),
                                     " gets no port id: a supervisor's ports are 1 and 2" );
  Id const baseId = getBaseId( intfId );
  Ntrace::standard().trace( 7, "BaseId: ", baseId );
  Id id = freeId( sm, baseId );
  if( id == 0 )
    id = reclaimedId( sm );
  if( id == 0 ) {
    Ntrace::standard().trace( 0, "No more ids are avaibale for ", intfId.stringValue() );
    return sm.waitingIs( intfId, true );
  }
  Ntrace::standard().trace( 5, "assigning ", id, " to ", intfId.stringValue() );
  sm.waitingDel( intfId );
  sm.reversePortIdMapIs( EthPortId( id ), intfId );
  sm.ethIntfPortIdDir()->portIdIs( intfId, EthPortId( id ) );
}

/// One interface came, changed or went.
void handleEthIntf( PortIdManager & sm, IntfId const & intfId ) {
  if( !isThere( sm, intfId ) ) {
    sm.waitingDel( intfId );
    if( hasId( sm, intfId ) )
      isVanished( sm, intfId );
    if( !sm.waiting().empty() && !sm.vanished().empty() )
      allocatePortId( sm, sm.waiting().begin().key() );
    return;
  }
  isNotVanished( sm, intfId );
  if( !hasId( sm, intfId ) )
    allocatePortId( sm, intfId );
}

/// Of those that are there, in the order of their identifiers.
void handleEthIntf( PortIdManager & sm ) {
  if( !sm.allEthIntfStatusDir() )
    return;
  auto intfs = Koi::keysOf( sm.allEthIntfStatusDir()->intfStatus() );
  std::sort( intfs.begin(), intfs.end() );
  for( IntfId const & intfId : intfs )
    handleEthIntf( sm, intfId );
}

/// Learns which ids there are. Where two interfaces have one, it is left to the one that is there.
void rebuildReversePortIdMap( PortIdManager & sm ) {
  auto intfs = Koi::keysOf( sm.ethIntfPortIdDir()->portId() );
  std::sort( intfs.begin(), intfs.end() );
  std::stable_partition( intfs.begin(), intfs.end(),
                         [&]( IntfId const & intfId ) { return isThere( sm, intfId ); } );
  for( IntfId const & intfId : intfs ) {
    EthPortId const id = sm.ethIntfPortIdDir()->portId( intfId );
    if( id.value() == 0 )
      continue;
    if( sm.reversePortIdMap().contains( id ) ) {
      Ntrace::standard().trace( 0, intfId.stringValue(), " has the port id ", id.value(), " of ",
                                sm.reversePortIdMap( id ).stringValue(), " and loses it" );
      sm.ethIntfPortIdDir()->portIdDel( intfId );
      continue;
    }
    sm.reversePortIdMapIs( id, intfId );
    if( !isThere( sm, intfId ) )
      isVanished( sm, intfId );
  }
}

}  // namespace

bool isPortIdNeeded( IntfId const & intfId ) {
  if( SubIntfId::isSubIntfId( intfId ) )
    return false;
  if( isUnconnected( intfId ) ) {
    if( !isOnModule( intfId ) )
      return true;
    Ntrace::standard().trace( 0, "No support for Ue interface on modulars" );
    Ntrace::standard().trace( 0, intfId.stringValue(), " gets no port id" );
    return false;
  }
  bool const isMgmt = MgmtIntfId::isMgmtIntfId( intfId );
  if( isMgmt && MgmtIntfId::module( intfId ) == 0 && MgmtIntfId::port( intfId ) == 0 ) {
    Ntrace::standard().trace( 5, "mgmt0 doesn't need a port id" );
    return false;
  }
  if( isMgmt || isChannel( intfId ) || EthIntfId::isEthIntfId( intfId ) ||
      PeerEthIntfId::isPeerEthIntfId( intfId ) || VxlanIntfId::isVxlanIntfId( intfId ) )
    return true;
  Ntrace::standard().trace( 5, intfId.stringValue(), " doesnt need port id" );
  return false;
}

Koi::U16 getBaseId( IntfId const & intfId ) {
  if( isChannel( intfId ) )
    return 100;
  if( PeerEthIntfId::isPeerEthIntfId( intfId ) )
    return wrapped( peerBaseId( intfId ) );
  if( MgmtIntfId::isMgmtIntfId( intfId ) )
    return wrapped( mgmtBaseId( intfId ) );
  if( VxlanIntfId::isVxlanIntfId( intfId ) )
    return wrapped( VxlanIntfId::tunnelId( intfId ) + 2000 );
  if( isUnconnected( intfId ) )
    return wrapped( UnconnectedEthIntfId::port( intfId ) + 2500 );
  return wrapped( ethBaseId( intfId ) );
}

void PortIdManager::handleInitialized() {
  reversePortIdMapDelAll();
  vanishedDelAll();
  vanishedAsDelAll();
  waitingDelAll();
  if( !ethIntfPortIdDir() )
    return;
  rebuildReversePortIdMap( *this );
  initializedIs( true );
  handleEthIntf( *this );
}

void PortIdManager::handleIntfStatus( IntfId const & intfId ) {
  if( initialized() )
    handleEthIntf( *this, intfId );
}

}  // namespace Interface
