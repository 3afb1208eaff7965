#include <koi/GenericEntity.h>

#include <koi/AttributeAccess.h>
#include <koi/CtorArguments.h>

namespace Koi {

GenericEntity::GenericEntity( Ptr< Entity > const & entity ) : entity_( entity ) {}
GenericEntity::~GenericEntity() = default;
KoiType const * GenericEntity::type() const { return entity_->koiType(); }
void const * GenericEntity::voidPtrIs( KoiType const * type ) const {
  return type == entity_->koiType() ? entity_.ptr() : nullptr;
}
U32 GenericEntity::hash() const { GenericIfImpl::throwUnhashableException( type() ); }
String8 GenericEntity::strRep() const { return entity_->fullName(); }

GenericIfIterator::~GenericIfIterator() = default;
GenericNotifiee::~GenericNotifiee() = default;

void GenericNotifiee::forward( unsigned attribute, GenericIfPtr const & key ) const {
  told_( entity()->koiType()->fields[attribute], key );
}

GenericIfPtr genericIf( Ptr< Entity > const & entity ) {
  return entity ? GenericIfPtr( new GenericEntity( entity ) ) : GenericIfPtr();
}

Ptr< Entity > entityIn( GenericIf const & wrapper ) {
  auto const * const generic = dynamic_cast< GenericEntity const * >( &wrapper );
  return generic ? generic->entity() : Ptr< Entity >();
}

void requireCount( std::string const & what, CtorArgs const & args, std::size_t count ) {
  if( args.size() != count )
    throw ArgumentException( what + " takes " + std::to_string( count ) + " arguments, not " +
                             std::to_string( args.size() ) );
}

void throwOtherArgument( std::string const & what, CtorArgs const & args, std::size_t index,
                         char const * type ) {
  throw ArgumentException( what + ": argument " + std::to_string( index + 1 ) + " must be a " +
                           type + ", not " + ( args[index] ? args[index]->type()->name : "null" ) );
}

namespace GenericEntityImpl {
namespace {

/// The attribute of that number; null, and *notHandled set, when there is none.
AttributeAccess const * accessOf( Ptr< Entity > const & entity, int attribute, bool * notHandled ) {
  if( entity && attribute >= 0 &&
      static_cast< std::size_t >( attribute ) < entity->koiType()->fields.size() )
    return entity->koiType()->fields[static_cast< unsigned >( attribute )].access;
  if( notHandled )
    *notHandled = true;
  return nullptr;
}

}  // namespace

GenericIfPtr attributeOp( GenericIf const & value, GenericIfOp const & op, CtorArgs const & args,
                          bool * notHandled ) {
  Ptr< Entity > const entity = entityIn( value );
  if( entity && op.attribute == GenericIfOp::noAttribute ) {
    if( op.code != GenericIfOp::equal || args.size() != 1 || !args[0] )
      GenericIfImpl::throwOpNotSupportedException( op );
    return genericIf( entityIn( *args[0] ).ptr() == entity.ptr() );
  }
  AttributeAccess const * const access = accessOf( entity, op.attribute, notHandled );
  return access ? access->attributeOp( *entity, op, args ) : nullptr;
}

Ptr< GenericIfIterator > attributeIterator( GenericIf const & value, int attribute,
                                            bool * notHandled ) {
  Ptr< Entity > const entity = entityIn( value );
  AttributeAccess const * const access = accessOf( entity, attribute, notHandled );
  Ptr< GenericIfIterator > const walk = access ? access->iterator( *entity ) : nullptr;
  if( access && !walk && notHandled )
    *notHandled = true;
  return walk;
}

}  // namespace GenericEntityImpl
}  // namespace Koi
