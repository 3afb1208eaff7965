// SystemTree.h: the tree of a system as a command sees it: mounted, and there to be read.
#pragma once

#include <string>
#include <vector>

#include <Coredb/Dir.h>
#include <coredb/TreeMount.h>
#include <koi/EntityPath.h>
#include <mem/TableDir.h>

#include "Output.h"

namespace Lumo {

/// The system that is meant: the given one, or, when none is, the only one that is served below
/// the root. When none is served, it is the only one of `others`. Raises Failure "no system is
/// served below <root>", or, as a wrong use, "there are several systems below <root>: <names>;
/// --sysname says which".
Koi::Name systemMeant( Mem::RootPath const & root, std::string const & given,
                       std::vector< Koi::Name > const & others = {} );

class SystemTree {
 public:
  /// Mounts the tree at /<sysname>/Coredb, and waits until it is there. Raises Failure "nobody
  /// serves system <sysname>: <why>", or "whoever serves system <sysname> does not answer".
  SystemTree( Mem::RootPath const & root, Koi::Name const & sysname,
              Coredb::Access access = Coredb::Access::readOnly );

  std::string sysname() const { return std::string( sysname_.view() ); }
  Coredb::TreeMount const & mount() const { return mount_; }

  /// What stands at that place; null when nothing does. Raises Failure "system <sysname> has a
  /// <type> at <place>, no <other type>".
  template< class E >
  Koi::Ptr< E > at( std::string const & place ) const {
    Koi::Entity * const there = Koi::entityNamed( *top_, place );
    auto * const wanted = dynamic_cast< E * >( there );
    if( there && !wanted )
      otherType( place, *there, E::koiName );
    return wanted;
  }

 private:
  [[noreturn]] void otherType( std::string const & place, Koi::Entity const & there,
                               char const * wanted ) const;

  Koi::Name const sysname_;
  Koi::Ptr< Coredb::Dir > const top_;
  Coredb::TreeMount mount_;
};

}  // namespace Lumo
