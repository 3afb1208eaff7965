#include <koi/Entity.h>

#include <algorithm>

namespace Koi {

void NotifieeBase::isRegisteredNotifieeIs( bool registered ) {
  if( registered == registered_ )
    return;
  registered_ = registered;
  // Back to the end of the list: a walk that is under way must not meet it.
  if( notifier_ && registered ) {
    notifier_->remove( this );
    notifier_->add( this );
  }
}

void NotifieeBase::koiNotifierIs( Entity const * entity ) {
  if( notifier_ )
    notifier_->remove( this );
  notifier_ = entity;
  if( notifier_ )
    notifier_->add( this );
}

Entity::~Entity() { retire(); }

void Entity::handleZeroRef() const {
  // First: nobody may find, and hold again, what is being taken apart.
  retire();
  delete this;
}

void Entity::retire() const {
  if( life_ )
    life_->entity = nullptr;
  for( auto * notifiee : notifiees_ )
    if( notifiee )
      notifiee->notifier_ = nullptr;
  notifiees_.clear();
}

Ptr< EntityLife > Entity::koiLife() const {
  if( !life_ )
    life_ = new EntityLife( this );
  return life_;
}

String8 Entity::fullName() const {
  std::string text;
  for( char const byte : name_.view() )
    if( byte == '/' )
      text += "%2F";
    else if( byte == '%' )
      text += "%25";
    else
      text += byte;
  if( !parent_ )
    return String8( text );
  return String8( std::string( parent_->fullName() ) + "/" + text );
}

void Entity::remove( NotifieeBase * notifiee ) const {
  auto const at = std::find( notifiees_.begin(), notifiees_.end(), notifiee );
  KOI_ASSERT( at != notifiees_.end() );
  if( numWalks_ != 0 )
    *at = nullptr;
  else
    notifiees_.erase( at );
}

Entity::Walk::~Walk() {
  if( --entity_.numWalks_ == 0 )
    std::erase( entity_.notifiees_, nullptr );
}

NotifieeBase * Entity::Walk::next() {
  while( at_ != end_ )
    if( NotifieeBase * notifiee = entity_.notifiees_[at_++]; notifiee && notifiee->registered_ )
      return notifiee;
  return nullptr;
}

}  // namespace Koi
