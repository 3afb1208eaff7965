#include <koi/Observers.h>

#include <algorithm>

#include <koi/Entity.h>

namespace Koi {

NotifieeBase::~NotifieeBase() { koiNotifierIs( nullptr, 0 ); }

void NotifieeBase::isRegisteredNotifieeIs( bool registered ) {
  if( registered == registered_ )
    return;
  registered_ = registered;
  passed_ = 0;
  // Back to the end of the list: a walk that is under way must not meet it.
  if( notifier_ && registered )
    koiNotifierIs( notifier_, depth_ );
}

void NotifieeBase::koiNotifierIs( Entity const * entity, unsigned depth ) {
  if( notifier_ )
    notifier_->observers_->remove( this );
  notifier_ = entity;
  depth_ = depth;
  passed_ = 0;
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
  if( numWalks_ == 0 ) {
    list_.erase( at );
    return;
  }
  *at = nullptr;
  isUntidy_ = true;
}

void Observers::refuse( Entity const & entity ) {
  most_ = 0;
  isUntidy_ = true;
  throw NestingException( "notifications nested more than 1000 deep at " +
                          std::string( entity.fullName() ) );
}

void Observers::tidy() {
  most_ = nestingMost;
  isUntidy_ = false;
  std::erase( list_, nullptr );
}

}  // namespace Koi
