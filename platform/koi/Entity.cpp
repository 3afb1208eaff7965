#include <koi/Entity.h>

namespace Koi {

Entity::~Entity() { retire(); }

void Entity::handleZeroRef() const {
  if( hasBeenKept() )
    return;
  // First: nobody may find, and hold again, what is being taken apart.
  retire();
  delete this;
}

bool Entity::hasBeenKept() const {
  if( !observers_ || observers_->empty() )
    return false;
  koiRefAdd();  // so that references may come and go meanwhile
  auto const tell = [this]( bool gone ) {
    Observers::Walk walk( *observers_, *this );
    while( NotifieeBase * const observer = walk.next( 0 ) )
      try {
        observer->zeroReferencesIs( gone );
      } catch(
          ... ) {  // deliberate: whoever dropped the last reference cannot do anything about it
      }
  };
  tell( true );
  if( koiRefCount() == 1 )
    return false;
  tell( false );
  koiRefDrop();
  return true;
}

void Entity::retire() const {
  if( life_ )
    life_->entity = nullptr;
  observers_.reset();
}

Observers & Entity::observers() const {
  if( !observers_ )
    observers_ = std::make_unique< Observers >();
  return *observers_;
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

}  // namespace Koi
