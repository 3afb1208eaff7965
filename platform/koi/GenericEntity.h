// GenericEntity.h: an entity whose type is known only at run time: how the command line, bindings
// and tests read, change, walk and observe it by its type's attributes. Used on the entity's
// thread.
//
//   KoiType const * const type = entity->koiType();
//   type->fields[i]                                        name, type and key of attribute i
//   type->genericIfAttributeOp( *genericIf( entity ), { i, GenericIfOp::read }, {}, nullptr )
#pragma once

#include <koi/EntityBase.h>
#include <koi/GenericIf.h>

namespace Koi {

/// Keeps the entity alive. Its text is the entity's full name; it has no hash.
class KOI_PUBLIC GenericEntity final : public GenericIf {
 public:
  explicit GenericEntity( Ptr< Entity > const & entity );
  ~GenericEntity() override;
  Ptr< Entity > const & entity() const { return entity_; }
  KoiType const * type() const override;
  /// The Entity when it is of that very type, null otherwise.
  void const * voidPtrIs( KoiType const * type ) const override;
  /// Raises UnhashableException "<type> is not hashable".
  U32 hash() const override;
  String8 strRep() const override;

 private:
  Ptr< Entity > const entity_;
};

/// An entity wrapped for reflection; null for null.
KOI_PUBLIC GenericIfPtr genericIf( Ptr< Entity > const & entity );

/// The entity inside a wrapper; null when it holds a value.
KOI_PUBLIC Ptr< Entity > entityIn( GenericIf const & wrapper );

/// A walk over the members of a collection or queue. It keeps the entity, and is good whatever
/// happens to the collection, as docs/entities.md says of iterators.
class KOI_PUBLIC GenericIfIterator : public PtrInterface {
 public:
  virtual ~GenericIfIterator();
  /// At a member, even if that went since. The others need this to be so.
  virtual bool iterNonnull() const = 0;
  virtual GenericIfPtr iterKey() const = 0;
  /// The member's value or child now; the default, or null, when it went.
  virtual GenericIfPtr iterObj() const = 0;
  /// To the next member.
  virtual void iterInc() = 0;
  /// Removes the member, as attrDel( iterator ) does; iterInc() goes on from there. Raises what
  /// that raises.
  virtual void iterDel() = 0;

 private:
  void handleZeroRef() const final { delete this; }
};

/// An observer of an entity of any type. It does not keep the entity alive.
class KOI_PUBLIC GenericNotifiee {
 public:
  virtual ~GenericNotifiee();
  /// What is observed; null when it is gone.
  virtual Entity const * entity() const = 0;

 protected:
  explicit GenericNotifiee( GenericNotifieeTold told ) : told_( std::move( told ) ) {}
  void forward( unsigned attribute, GenericIfPtr const & key ) const;

 private:
  GenericNotifieeTold const told_;
};

/// What the generic observer of each entity type is made of; koigen writes its callbacks.
template< class E >
class GenericNotifieeOf : public E::NotifieeConst, public GenericNotifiee {
 public:
  GenericNotifieeOf( E const & entity, GenericNotifieeTold told )
      : GenericNotifiee( std::move( told ) ) {
    this->notifierIs( &entity );
  }
  Entity const * entity() const override { return this->notifier(); }

 protected:
  template< class N >
  void koiForward( Callback< N > const & on ) const {
    forward( on.index, nullptr );
  }
  template< class N, class Key >
  void koiForward( Callback< N, Key > const & on, std::type_identity_t< Key > k ) const {
    forward( on.index, genericIf( k ) );
  }
};

/// What the type node of every entity type answers with.
namespace GenericEntityImpl {

KOI_PUBLIC GenericIfPtr attributeOp( GenericIf const & value, GenericIfOp const & op,
                                     CtorArgs const & args, bool * notHandled );
KOI_PUBLIC Ptr< GenericIfIterator > attributeIterator( GenericIf const & value, int attribute,
                                                       bool * notHandled );

}  // namespace GenericEntityImpl

}  // namespace Koi
