// TreePlaces.h: where the agents and tools of a system find its interfaces: the full names, below
// /<sysname>/Coredb, of what they have in common.
#pragma once

namespace Interface {

inline constexpr char ethStatusPlace[] = "interface/status/eth";      ///< EthIntfStatusDir
inline constexpr char vlanStatusPlace[] = "interface/status/vlan";    ///< VlanIntfStatusDir
inline constexpr char subStatusPlace[] = "interface/status/subintf";  ///< SubIntfStatusDir
inline constexpr char portIdPlace[] = "interface/portId";             ///< EthIntfPortIdDir

/// A directory of VlanIntfConfigDirs, by the name of their source.
inline constexpr char vlanSourcePlace[] = "interface/config/vlan/source";
/// A directory of VlanIntfConfigErrorDirs, by the name of the source that is told.
inline constexpr char vlanSourceErrorPlace[] = "interface/config/vlan/error";
/// Lumo::DynVlanIntfList: the configurations that prevail.
inline constexpr char dynVlanIntfListPlace[] = "interface/config/vlan/list";

/// VlanIntfCounterWriterStatus: the VLAN interfaces that are counted. The counts themselves are in
/// the table counters/vlanIntf/<sysname>.
inline constexpr char vlanCounterWriterPlace[] = "counter/vlanWriter";
/// AllVlanIntfCounterDir: what the counts were when they were cleared last.
inline constexpr char vlanCounterPlace[] = "counter/vlan";

}  // namespace Interface
