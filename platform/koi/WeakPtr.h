// WeakPtr.h: the pointers to entities and reactors that are not plain references: one that owns
// what it points to, and one that does not keep it alive.
#pragma once

#include <memory>
#include <utility>

#include <koi/EntityLife.h>

namespace Koi {

/// A pointer to an entity or a reactor that does not keep it alive.
template< class T >
class WeakPtr {
 public:
  WeakPtr() = default;
  WeakPtr( Ptr< T > const & object ) : object_( object ) {
    if( object_ )
      life_ = object_->koiLife();
  }
  WeakPtr( WeakPtr && ) noexcept = default;
  WeakPtr & operator=( WeakPtr other ) noexcept {
    std::swap( object_, other.object_ );
    std::swap( life_, other.life_ );
    std::swap( reference_, other.reference_ );
    return *this;
  }

  /// What it points to; null when it is gone or never was.
  Ptr< T > ptr() const { return life_ && life_->object ? Ptr< T >( object_ ) : Ptr< T >(); }

  /// Has a copy of `act` called when the entity goes, if this, wherever it is moved, still refers
  /// to it then. `act` may end this. No entity, no call.
  template< class Act >
  void koiWhenGone( Act const & act ) {
    if( !life_ )
      return;
    reference_ = std::make_unique< Reference< Act > >( act );
    life_->add( *reference_ );
  }

 private:
  template< class Act >
  class Reference final : public WeakReference {
   public:
    explicit Reference( Act const & act ) : act_( act ) {}

   private:
    void targetIsGone() override {
      Act const act = act_;  // it ends this
      act();
    }
    Act const act_;
  };

  T * object_ = nullptr;
  Ptr< EntityLife > life_;
  std::unique_ptr< WeakReference > reference_;  // in the list of life_, so it goes first
};

/// The reference of the one collection or attribute that owns an entity or a reactor: when it goes,
/// the entity has no parent any more, and the reactor ends.
template< class T >
class Owned {
 public:
  Owned() = default;
  Owned( Ptr< T > child ) : child_( std::move( child ) ) {}
  Owned( Owned && other ) noexcept : child_( std::move( other.child_ ) ) {}
  ~Owned() { disown(); }
  Owned & operator=( Owned && other ) noexcept {
    if( this != &other ) {
      disown();
      child_ = std::move( other.child_ );
    }
    return *this;
  }
  Ptr< T > const & ptr() const { return child_; }

 private:
  void disown() {
    if( child_ )
      child_->koiDisowned();
  }

  Ptr< T > child_;
};

}  // namespace Koi
