#include <koi/Entity.h>

#include <koi/AttributeAccess.h>
#include <koi/EntityLogs.h>
#include <koi/EntityPath.h>
#include <koi/KoiNboAttrLogSa.h>
#include <koi/Mirror.h>

namespace Koi {

Entity::Entity( Name name ) : name_( std::move( name ) ) {}
Entity::~Entity() { retire(); }

void Entity::handleZeroRef() const {
  if( hasBeenKept() )
    return;
  Departure const departure( life_ );
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
    life_->object = nullptr;
  observers_.reset();
  logs_.reset();
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
  std::string const own = escapedName( name_.view() );
  return parent_ ? String8( std::string( parent_->fullName() ) + "/" + own ) : String8( own );
}

// ---- owners and logs

void requireAdoptable( Entity const & owner, Name const & name, Entity const * child,
                       Entity const * there ) {
  std::string const at( owner.fullName() );
  if( !child )
    throwRangeException( "null child of " + at + " not allowed" );
  if( name.empty() )
    throwRangeException( "a child of " + at + " without a name not allowed" );
  if( there )
    throw NameInUseException( std::string( there->fullName() ) + " is another entity" );
  if( child->parent() )
    throw NameInUseException( std::string( child->fullName() ) + " has a place in a tree" );
  unsigned levels = 0;
  for( Entity const * above = &owner; above; above = above->parent() ) {
    if( above == child )
      throwRangeException( std::string( child->fullName() ) + " below itself not allowed" );
    // Trees are walked level by level, and a peer may make them.
    if( ++levels > 100 )
      throwRangeException( "more than 100 levels below " + std::string( above->name().view() ) +
                           " not allowed" );
  }
}

void Entity::koiParentIs( Entity * parent, unsigned attribute ) {
  parent_ = parent;
  parentAttribute_ = attribute;
  if( parent )
    incarnation_ = parent->changes_;  // which has grown for this child
  Mirror::appeared();
}

void Entity::koiEndReactors() {
  if( auto const end = koiType()->endReactors )
    end( *this );
}

void Entity::koiDisowned() {
  parent_ = nullptr;
  leaveLogs();
  koiEndReactors();
}

void Entity::leaveLogs() {
  if( !logs_ )
    return;
  logs_->entityLeaves();
  logs_.reset();
  for( KoiAttribute const & attribute : koiType()->fields )
    if( attribute.access->hasChildren() )
      attribute.access->eachChild( *this, []( Entity & child ) { child.leaveLogs(); } );
}

KoiNboAttrLogSa & Entity::koiNboAttrLogSaIs( Mirror & out, bool whole ) {
  if( auto * const there = koiNboAttrLogSa( out ) )
    return *there;
  if( !logs_ )
    logs_ = std::make_unique< EntityLogs >();
  auto const mode = whole ? KoiNboAttrLogSa::fullResync : KoiNboAttrLogSa::incremental;
  auto adapter = std::make_unique< KoiNboAttrLogSa >( out, *this, mode );
  auto & made = *adapter;
  logs_->add( std::move( adapter ) );
  return made;
}

void Entity::koiNboAttrLogSaDel( Mirror & out ) {
  if( !koiNboAttrLogSa( out ) )
    return;
  logs_->remove( out );
  for( KoiAttribute const & attribute : koiType()->fields )
    if( attribute.access->hasChildren() )
      attribute.access->eachChild( *this,
                                   [&]( Entity & child ) { child.koiNboAttrLogSaDel( out ); } );
}

KoiNboAttrLogSa * Entity::koiNboAttrLogSa( Mirror const & out ) const {
  return logs_ ? logs_->adapter( out ) : nullptr;
}

bool Entity::logsRefuse() const { return logs_->isRefusing(); }
U16 Entity::takeOrigin() { return logs_->takeOrigin(); }
void Entity::mark( unsigned attribute, U16 origin ) { logs_->mark( attribute, origin ); }

void Entity::koiRefuse() const {
  throw ReadOnlyException( "write-update from readonly proxy: " + std::string( fullName() ) );
}

}  // namespace Koi
