// PrivateTable.h: tables that one process has for itself: "QuillTemp-<process>-<number>". They are
// removed by who made them; what a process that was killed left is removed by the next one that
// makes one. One thread of a process at a time.
#pragma once

#include <string>

#include <mem/TableDir.h>

namespace Quill {

static constexpr char privatePrefix[] = "QuillTemp-";

/// A name that no other table below the root has. Removes what dead processes left there.
KOI_PUBLIC std::string newPrivateName( Mem::RootPath const & root );

/// Removes all that there is of a private table that nobody writes any more.
KOI_PUBLIC void removePrivateTable( Mem::RootPath const & root, std::string const & name );

}  // namespace Quill
