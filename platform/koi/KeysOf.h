// KeysOf.h: the keys that stand in a collection now, for a walk that is not to meet what comes
// meanwhile. Any thread that may read the collection.
#pragma once

#include <vector>

namespace Koi {

/// The keys of an entity's or a reactor's collection or queue, in the order of iteration.
template< class C >
std::vector< typename C::Key > keysOf( C const & members ) {
  std::vector< typename C::Key > keys;
  keys.reserve( members.size() );
  for( auto const & member : members )
    keys.push_back( member.key() );
  return keys;
}

}  // namespace Koi
