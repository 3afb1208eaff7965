// CounterRecords.h: counters as the tables have them, read once beside their writers.
#pragma once

#include <Lumo/VlanCounters.h>
#include <Lumo/VlanIntf.h>
#include <mem/TableDir.h>

#include <map>
#include <string>
#include <vector>

namespace Lumo {

/// One count of the statistics `Statistics`, by its name.
template< class Statistics >
struct Count {
  char const * name;
  Koi::U64 ( Statistics::*of )() const;
};

inline constexpr char vlanCounterTable[] = "vlanCounter";
inline constexpr char vlanCounterSnapshotTable[] = "vlanCounterSnapshot";

using CounterRecords = std::map< Bridging::VlanId, Quill::Bridging::VlanCounter >;

/// All records of that table. Raises Failure when there is no such table, or when it cannot be
/// read.
CounterRecords counterRecordsOf( Mem::RootPath const & root, std::string const & table );

using IntfCounterRecords = std::map< Wirex::IntfId, Interface::VlanIntfCounterQuill >;

/// The same of a system's VLAN interfaces.
IntfCounterRecords intfCounterRecordsOf( Mem::RootPath const & root, Koi::Name const & sysname );

/// The systems that have such a table.
std::vector< Koi::Name > systemsCounted( Mem::RootPath const & root );

}  // namespace Lumo
