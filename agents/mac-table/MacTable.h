// MacTable.h: the learned hosts of a bridge, for people and for programs.
//
// Both forms list the entries by filtering database, then by the bytes of the address. Used on the
// thread of the status.
#pragma once

#include <string>

#include <Lumo/Bridging.h>

namespace MacTable {

/// The table with a heading. A column is as wide as its widest cell.
std::string text( Bridging::Status const & status );

/// One JSON object: "schema" is "lumo.mac-table/1"; "entries" has an object for each entry: fid,
/// address, intf, entryType (the enumerator's name), moves, lastMoveTime (seconds since 1970).
std::string json( Bridging::Status const & status );

}  // namespace MacTable
