#include <koi/Reactor.h>

namespace Koi {

void Reactor::hasNotificationActiveIs( bool active ) {
  if( active == hasNotificationActive() )
    return;
  koiFlagIs( RefWord::notificationActive, active );
  listen();
  if( !isListening() )
    return;
  for( auto const * watched : watched_ )
    if( watched->changed() ) {
      koiRunStart();
      return;
    }
}

void Reactor::koiDoZombieReactors( bool zombie ) {
  if( zombie == isZombie() )
    return;
  Ptr< Reactor > const held( koiRefCount() != 0 ? this : nullptr );
  koiFlagIs( RefWord::zombie, zombie );
  listen();
  if( zombie )
    end();
}

void Reactor::koiBegin() {
  koiRunStart();
  stage_ = alive;
}

void Reactor::koiRunStart() {
  for( auto * watched : watched_ )
    watched->mark();
  koiStart();
}

void Reactor::listen() {
  for( auto * watched : watched_ )
    watched->listenIs( isListening() );
}

void Reactor::end() {
  if( cleanedUp_ )
    return;
  cleanedUp_ = true;
  koiCleanup();
}

void Reactor::handleZeroRef() const {
  // References that the constructor or the cleanup handler makes to the reactor end here as well.
  if( stage_ != alive )
    return;
  auto * const self = const_cast< Reactor * >( this );
  self->stage_ = ending;
  self->koiFlagIs( RefWord::notificationActive, false );
  self->listen();
  self->end();
  delete this;
}

}  // namespace Koi
