// CounterRecords.h: the counters of VLANs as the tables have them, read once beside their writer.
#pragma once

#include <Lumo/VlanCounters.h>
#include <mem/TableDir.h>

#include <map>
#include <string>

namespace Lumo {

inline constexpr char vlanCounterTable[] = "vlanCounter";
inline constexpr char vlanCounterSnapshotTable[] = "vlanCounterSnapshot";

using CounterRecords = std::map< Bridging::VlanId, Quill::Bridging::VlanCounter >;

/// All records of that table. Raises Failure when there is no such table, or when it cannot be
/// read.
CounterRecords counterRecordsOf( Mem::RootPath const & root, std::string const & table );

}  // namespace Lumo
