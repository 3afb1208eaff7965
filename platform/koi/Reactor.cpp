#include <koi/Reactor.h>

#include <algorithm>

namespace Koi {

Reactor::~Reactor() {
  if( life_ )
    life_->object = nullptr;
}

Ptr< EntityLife > Reactor::koiLife() const {
  if( !life_ )
    life_ = new EntityLife( this );
  return life_;
}

void Reactor::hasNotificationActiveIs( bool active ) {
  if( active == hasNotificationActive() )
    return;
  Ptr< Reactor > const held( koiRefCount() != 0 ? this : nullptr );
  koiFlagIs( RefWord::notificationActive, active );
  listen();
  if( isListening() && hasMissedChanges() )
    koiRunStart();
  tellInner();
}

void Reactor::koiDoZombieReactors( bool zombie ) {
  if( zombie == isZombie() )
    return;
  Ptr< Reactor > const held( koiRefCount() != 0 ? this : nullptr );
  koiFlagIs( RefWord::zombie, zombie );
  listen();
  if( zombie )
    end();
  tellInner();
}

void Reactor::koiBegin() {
  try {
    koiRunStart();
  } catch( ... ) {  // whatever it is, the members are still there: those inside may look at them
    for( auto * inner : inner_ )
      inner->endAll();
    throw;
  }
  stage_ = alive;
}

void Reactor::koiRunStart() {
  for( auto * watched : watched_ )
    watched->mark();
  koiStart();
}

bool Reactor::hasMissedChanges() const {
  return std::ranges::any_of( watched_, []( auto const * watched ) { return watched->changed(); } );
}

void Reactor::listen() {
  for( auto * watched : watched_ )
    watched->listenIs( isListening() );
}

void Reactor::tellInner() {
  for( auto * inner : inner_ )
    inner->follow();
}

void Reactor::end() {
  if( cleanedUp_ )
    return;
  cleanedUp_ = true;
  try {
    koiCleanup();
  } catch( ... ) {  // deliberate: whoever ends a reactor cannot do anything about it
  }
}

void Reactor::handleZeroRef() const {
  // References that the constructor or the cleanup handler makes to the reactor end here as well.
  if( stage_ != alive )
    return;
  Departure const departure( life_ );
  auto * const self = const_cast< Reactor * >( this );
  self->stage_ = ending;
  self->koiFlagIs( RefWord::notificationActive, false );
  self->koiDoZombieReactors( true );
  for( auto * inner : inner_ )
    inner->endAll();
  delete this;
}

}  // namespace Koi
