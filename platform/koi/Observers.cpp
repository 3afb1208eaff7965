#include <koi/Observers.h>

#include <algorithm>

#include <koi/Entity.h>

namespace Koi {

NotifieeBase::~NotifieeBase() { koiNotifierIs( nullptr, 0 ); }

void NotifieeBase::isRegisteredNotifieeIs( bool registered ) {
  if( registered == registered_ )
    return;
  registered_ = registered;
  // Back to the end of the list: a walk that is under way must not meet it.
  if( notifier_ && registered )
    koiNotifierIs( notifier_, depth_ );
}

void NotifieeBase::koiNotifierIs( Entity const * entity, unsigned depth ) {
  if( notifier_ )
    notifier_->observers_->remove( this );
  notifier_ = entity;
  depth_ = depth;
  if( notifier_ )
    notifier_->observers().add( this );
}

Observers::~Observers() {
  for( auto * observer : list_ )
    if( observer )
      observer->notifier_ = nullptr;
}

void Observers::remove( NotifieeBase * observer ) {
  auto const at = std::find( list_.begin(), list_.end(), observer );
  KOI_ASSERT( at != list_.end() );
  if( numWalks_ != 0 )
    *at = nullptr;
  else
    list_.erase( at );
}

Observers::Walk::Walk( Observers & observers, Entity const & entity )
    : observers_( observers ), end_( observers.list_.size() ) {
  if( observers_.tooDeep_ || observers_.numWalks_ == nestingMost ) {
    observers_.tooDeep_ = true;
    throw NestingException( "notifications nested more than 1000 deep at " +
                            std::string( entity.fullName() ) );
  }
  ++observers_.numWalks_;
}

Observers::Walk::~Walk() {
  if( --observers_.numWalks_ != 0 )
    return;
  observers_.tooDeep_ = false;
  std::erase( observers_.list_, nullptr );
}

NotifieeBase * Observers::Walk::next( unsigned depth ) {
  while( at_ != end_ ) {
    NotifieeBase * const observer = observers_.list_[at_++];
    if( observer && observer->registered_ && observer->depth_ >= depth )
      return observer;
  }
  return nullptr;
}

}  // namespace Koi
