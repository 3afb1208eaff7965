// EntityReactor.h: how an entity comes to the reactor that it owns, and parts with it.
//
// Used by the generated mutators of an entity, on its thread. TearDown.h ends the reactor when the
// entity leaves its tree.
#pragma once

#include <koi/Reactor.h>

namespace Koi {

/// Ends a reactor and lets it go; its cleanup handler finds the cell empty.
template< class R >
void endReactor( Owned< R > & cell ) {
  Owned< R > const gone( std::move( cell ) );
}

/// Builds the reactor, which listens. Raises RangeException "entity reactor is already active" when
/// there is one, and what the start handler throws; the entity then has the one it had.
template< class R, class... Args >
Ptr< R > entityReactorIs( Owned< R > & reactor, Args const &... args ) {
  auto const refuseSecond = [&] {
    if( reactor.ptr() )
      throwRangeException( "entity reactor is already active" );
  };
  refuseSecond();
  Ptr< R > const fresh = reactorIs< R >( args... );
  refuseSecond();  // its start handler may have led here, too
  reactor = Owned< R >( fresh );
  return fresh;
}

/// Ends the reactor and returns it; null when there was none.
template< class R >
Ptr< R > entityReactorDel( Owned< R > & reactor ) {
  Ptr< R > const old = reactor.ptr();
  endReactor( reactor );
  return old;
}

}  // namespace Koi
