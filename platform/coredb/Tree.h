// Tree.h: the tree of this process: a global directory, and below it what each system has.
//
//     /<sysname>/Coredb/...       what the agents of that system have in common
//     /AgentEnv                   there in an agent; not in a tool or a test
//
// Several systems may stand side by side. The tree is one thread's, that of the default activity,
// and is never taken down as a whole. Paths are full names: '/' and '%' inside a name are written
// %2F and %25.
#pragma once

#include <string_view>

#include <Coredb/Dir.h>

namespace Coredb {

/// The top of the tree. Its own name is empty: the full names of what is in it begin with '/'.
KOI_PUBLIC Koi::Ptr< Dir > globalDirectory();

/// The entry of that name, made when there is none, of that type and of what its constructor takes
/// but for a parameter that is the name. Raises what Koi::typeNode() and KoiType::newEntity()
/// raise, and NameInUseException "<full name> is another entity" when the entry is of another type,
/// or was built from other arguments.
KOI_PUBLIC Koi::Ptr< Koi::Entity > newEntity( Dir & directory, Koi::Name const & name,
                                              Koi::String8 const & type,
                                              Koi::CtorArgs const & args = {} );

/// "/<sysname>/Coredb", made when it is not there. Raises RangeException for an empty name, and as
/// directoryIs() does.
KOI_PUBLIC Koi::Ptr< Dir > systemDirectory( Koi::Name const & sysname );

/// The directory at that path below `top`, made with those on the way to it when it is not there;
/// `top` for an empty path. Raises NameInUseException "<full name> is no directory" when something
/// else is in the way.
KOI_PUBLIC Koi::Ptr< Dir > directoryIs( Koi::Ptr< Dir > const & top, std::string_view path );

/// What has that full name in the tree; null when nothing has, or it is of another type. The '/' at
/// the beginning may be left out.
KOI_PUBLIC Koi::Ptr< Koi::Entity > entityAt( std::string_view fullName );
template< class E >
Koi::Ptr< E > entityAt( std::string_view fullName ) {
  return dynamic_cast< E * >( entityAt( fullName ).ptr() );
}

}  // namespace Coredb
