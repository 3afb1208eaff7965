// IntfCounterSearch.h: how the status of an interface finds its counters, by its place in the tree.
//
// Used on the entities' thread. Nothing here raises anything: what is not found is null, and traced
// at level 5.
#pragma once

#include <Interface/EthIntf.h>

namespace Interface {

/// How many levels getParentEntityByName() climbs at most.
constexpr unsigned parentLevelMax = 64;

/// The entity itself, or the nearest one above it, that is called so. Null when none is, and for an
/// empty name.
KOI_PUBLIC Koi::Entity * getParentEntityByName( Koi::Entity & entity, Koi::String8 const & name );
KOI_PUBLIC Koi::Entity const * getParentEntityByName( Koi::Entity const & entity,
                                                      Koi::String8 const & name );

/// Whether a counterDirPath says that the counters are in shared memory: it contains "Quill".
KOI_PUBLIC bool isQuillPath( Koi::String8 const & counterDirPath );

/// The set of counters "current" of an interface: of the counters that its directory holds
/// (counterDir), or that stand where the directory says (counterDirPath, in the global directory),
/// or, when it says nothing, at "counter/<kind>" below the nearest "Coredb". The kind is that of
/// the interface: "eth", "mgmt", "vlan", "vxlan", "lag" (a port-channel), "mlag" (an interface of
/// the peer), "subintf", or "intf".
KOI_PUBLIC Koi::Ptr< IntfCounter > counterCommon( EthIntfStatus const & status );

}  // namespace Interface
