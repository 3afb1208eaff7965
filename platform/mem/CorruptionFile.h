// CorruptionFile.h: what is left beside a table whose files were found damaged, for who looks into
// it later. The table's writer writes it, for its readers too, and takes it away when it attaches.
#pragma once

#include <ctime>

#include <mem/Rova.h>
#include <mem/TableDir.h>

namespace Util {

inline constexpr char corruptionFile[] = "corruption-detected";

/// Says when (seconds since 1970) and what. Best effort: a directory that takes no file gets none.
inline void writeCorruptionFile( Mem::TableDir const & dir, std::string const & message ) {
  try {
    dir.putText( corruptionFile, std::to_string( std::time( nullptr ) ) + " " + message + "\n" );
  } catch( Rova::MemoryResourceException const & ) {
    // What was found damaged was said where it was found.
  }
}

}  // namespace Util
