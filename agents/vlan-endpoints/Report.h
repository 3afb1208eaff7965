// Report.h: what went through each VLAN, as a table.
#pragma once

#include <vlan-endpoints/Station.h>
#include <wirex/PamMuxDemux.h>

#include <map>
#include <memory>
#include <string>

namespace VlanEndpoints {

using Stations = std::map< Koi::U32, std::unique_ptr< Station > >;

/// A line for each VLAN, then what went nowhere. Octets of a VLAN are those of its frames without
/// their tags; those of unknown VLANs are as they came.
std::string reportOf( Stations const & stations, Wirex::PamMuxDemux const & mux );

}  // namespace VlanEndpoints
