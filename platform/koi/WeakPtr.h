// WeakPtr.h: the pointers to entities that are not plain references: one that owns a child, and one
// that does not keep what it points to alive.
#pragma once

#include <koi/Ptr.h>

namespace Koi {

class Entity;

/// What weak pointers hold of an entity: outlives it, and says so.
struct KOI_PUBLIC EntityLife final : PtrInterface {
  explicit EntityLife( Entity const * of ) : entity( of ) {}
  Entity const * entity;  ///< null when it is gone

 private:
  void handleZeroRef() const override { delete this; }
};

/// A pointer to an entity that does not keep it alive.
template< class T >
class WeakPtr {
 public:
  WeakPtr() = default;
  WeakPtr( Ptr< T > const & object ) : object_( object ) {
    if( object_ )
      life_ = object_->koiLife();
  }
  /// The entity; null when it is gone or never was.
  Ptr< T > ptr() const { return life_ && life_->entity ? Ptr< T >( object_ ) : Ptr< T >(); }

 private:
  T * object_ = nullptr;
  Ptr< EntityLife > life_;
};

/// The reference of the one collection or child attribute that owns an entity: when it goes, the
/// entity has no parent any more.
template< class T >
class Owned {
 public:
  Owned() = default;
  Owned( Ptr< T > child ) : child_( std::move( child ) ) {}
  Owned( Owned && other ) noexcept : child_( std::move( other.child_ ) ) {}
  ~Owned() { orphan(); }
  Owned & operator=( Owned && other ) noexcept {
    if( this != &other ) {
      orphan();
      child_ = std::move( other.child_ );
    }
    return *this;
  }
  Ptr< T > const & ptr() const { return child_; }

 private:
  void orphan() {
    if( child_ )
      child_->koiParentIs( nullptr );
  }

  Ptr< T > child_;
};

}  // namespace Koi
