// SystemSocket.h: where the tree of a system is served unless somebody says otherwise: at
// <root>/coredb/<sysname>, of the root of shared memory. Any thread.
#pragma once

#include <string>
#include <vector>

#include <koi/Export.h>
#include <koi/String8.h>
#include <mem/TableDir.h>

namespace Coredb {

/// The socket's path. A '/' or '%' in the name is written %2F or %25.
KOI_PUBLIC std::string systemSocket( Mem::RootPath const & root, Koi::Name const & sysname );

/// The same for who is going to serve; makes the root and the directory, with mode 0755, when they
/// are not there. Raises ServeException "cannot make <path>: <why>".
KOI_PUBLIC std::string newSystemSocket( Mem::RootPath const & root, Koi::Name const & sysname );

/// The systems below that root that have a socket there, be it of a dead process, by name.
KOI_PUBLIC std::vector< Koi::Name > systemsServed( Mem::RootPath const & root );

}  // namespace Coredb
