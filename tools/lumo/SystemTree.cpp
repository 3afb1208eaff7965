#include "SystemTree.h"

#include <coredb/SystemSocket.h>
#include <coredb/Tree.h>

#include "Waiting.h"

namespace Lumo {

Koi::Name systemMeant( Mem::RootPath const & root, std::string const & given,
                       std::vector< Koi::Name > const & others ) {
  if( !given.empty() )
    return Koi::Name( given );
  auto const served = Coredb::systemsServed( root );
  auto const & all = served.empty() ? others : served;
  if( all.empty() )
    throw Failure( unreachable, "no system is served below " + root.path() );
  if( all.size() == 1 )
    return all.front();
  std::string names;
  for( Koi::Name const & name : all )
    ( names += names.empty() ? "" : ", " ) += name.view();
  throw Failure( wrongUse, "there are several systems below " + root.path() + ": " + names +
                               "; --sysname says which" );
}

SystemTree::SystemTree( Mem::RootPath const & root, Koi::Name const & sysname,
                        Coredb::Access access )
    : sysname_( sysname ),
      top_( Coredb::systemDirectory( sysname ) ),
      mount_( top_, Coredb::systemSocket( root, sysname ), access ) {
  if( waitUntil( mount_, [this] { return mount_.isSynchronised(); } ) )
    return;
  if( mount_.isConnected() )
    throw Failure( unreachable, "whoever serves system " + this->sysname() + " does not answer" );
  throw Failure( unreachable, "nobody serves system " + this->sysname() + ": " + mount_.trouble() );
}

void SystemTree::otherType( std::string const & place, Koi::Entity const & there,
                            char const * wanted ) const {
  throw Failure( unreachable, "system " + sysname() + " has a " + there.koiType()->name + " at " +
                                  place + ", no " + wanted );
}

}  // namespace Lumo
