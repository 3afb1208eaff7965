// MacTable.h: what was learned, for people and for programs.
//
// Both forms list the entries by VLAN, then by the bytes of the address.
#pragma once

#include <string>

#include "Learner.h"

namespace Learn {

/// The table with a heading and, below it, the totals. A column is as wide as its widest cell.
std::string macTableText( Learner const & learner );

/// One JSON object: "schema" is "lumo.mac-table/1"; "entries" has an object for each entry: fid,
/// address, intf, entryType (the enumerator's name), moves, lastMoveTime (seconds since 1970).
std::string macTableJson( Learner const & learner );

/// The time as 2012-11-23T17:00:39.425111Z; one outside the years 0 to 9999 as its seconds.
std::string timeText( Koi::Seconds time );

}  // namespace Learn
