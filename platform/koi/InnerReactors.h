// InnerReactors.h: a keyed collection of reactors inside a reactor, which owns them.
//
// Used by the mutators of generated reactors, on their thread. An inner reactor is active when its
// owner is, and a zombie when its owner is one. Whatever takes it out of the collection ends it.
#pragma once

#include <koi/Reactor.h>

namespace Koi {

/// What the owner has of each of its collections. Lives inside the owner.
class KOI_PUBLIC InnerReactorsBase {
 public:
  InnerReactorsBase( InnerReactorsBase const & ) = delete;
  InnerReactorsBase & operator=( InnerReactorsBase const & ) = delete;

  /// Makes all inner reactors what their owner is: active or not, a zombie or not.
  virtual void follow() = 0;
  /// Ends all and lets them go.
  virtual void endAll() = 0;

 protected:
  explicit InnerReactorsBase( Reactor * owner ) : owner_( owner ) {
    owner->inner_.push_back( this );
  }
  ~InnerReactorsBase() = default;

  void follow( Reactor & inner ) const {
    inner.koiDoZombieReactors( owner_->isZombie() );  // first: a zombie's start handler rests
    inner.hasNotificationActiveIs( owner_->hasNotificationActive() );
  }

 private:
  Reactor * owner_;
};

/// C is the collection.
template< class C >
class InnerReactors final : public C, public InnerReactorsBase {
 public:
  using Inner = typename CellOf< typename C::Cell >::Child;

  explicit InnerReactors( Reactor * owner ) : InnerReactorsBase( owner ) {}

  /// The one of that key, built and made what its owner is when there is none. Raises
  /// NameInUseException when it was built with other arguments, RangeException for a key outside
  /// its type's range, and what its start handler throws.
  template< class... Args >
  Ptr< Inner > koiIs( typename C::Key const & k, Args const &... args ) {
    typename C::Key const key = k;  // k may stand in a reactor that a start handler removes
    if( Ptr< Inner > const there = this->value( key ) )
      return refuseOtherArguments( *there, key, args... ), there;
    checkRange( key );
    ValidPtr< Inner > const fresh( new Inner( key, args... ) );
    if( Ptr< Inner > const there = this->value( key ) ) {  // its start handler has led here, too
      fresh->koiDoZombieReactors( true );
      return there;
    }
    this->koiSet( key, fresh, { ++changes_, 0 } );
    InnerReactorsBase::follow( *fresh );
    return fresh;
  }

  void follow() override {
    for( auto const & i : *this )
      if( Ptr< Inner > const inner = i.value() )
        InnerReactorsBase::follow( *inner );
  }
  void endAll() override { this->koiClear(); }

 private:
  U64 changes_ = 0;
};

}  // namespace Koi
