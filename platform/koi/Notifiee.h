// Notifiee.h: what observes an entity. A generated entity nests NotifieeConst and Notifiee, made of
// these.
//
// An observer is told inside the mutator, on the thread of the entity; docs/entities.md says what
// it may do meanwhile. It does not keep the entity alive: when the entity goes, notifier() becomes
// null.
#pragma once

#include <type_traits>

#include <koi/Export.h>
#include <koi/Types.h>

namespace Koi {

class Entity;
class NotifieeBase;

/// A callback of whatever type declares it: what telling needs to know.
template< class... Key >
struct AnyCallback {
  unsigned index;
  unsigned depth;  ///< of the NotifieeConst that declares it
  void ( NotifieeBase::*on )( Key... );
  void ( NotifieeBase::*immediate )( Key... );

  /// Its place among those that observers pass on; 0: it is none of the first 64.
  constexpr U64 bit() const { return index < 64 ? U64{ 1 } << index : 0; }
};

/// How an entity calls one attribute's observers: the attribute's place in the entity's table, the
/// callback, and its immediate form. N is the NotifieeConst that declares them.
template< class N, class... Key >
struct Callback {
  unsigned index;
  void ( N::*on )( Key... );
  void ( N::*immediate )( Key... );

  /// The same, to be called on the N in any NotifieeBase that is one.
  AnyCallback< Key... > any() const {
    return { index, N::koiDepth, static_cast< void ( NotifieeBase::* )( Key... ) >( on ),
             static_cast< void ( NotifieeBase::* )( Key... ) >( immediate ) };
  }
};

/// What an entity's list of observers holds.
class KOI_PUBLIC NotifieeBase {
 public:
  NotifieeBase( NotifieeBase const & ) = delete;
  NotifieeBase & operator=( NotifieeBase const & ) = delete;

  /// Whether changes of the entity are told to this observer; true unless it was switched off.
  bool isRegisteredNotifiee() const { return registered_; }
  /// Switches being told off or on, attached or not. Switched on inside a callback, it hears the
  /// next change.
  void isRegisteredNotifieeIs( bool registered );

  /// True: the entity has lost its last reference, and goes unless this observer takes one. False:
  /// an observer took one. What it throws is dropped.
  virtual void zeroReferencesIs( bool ) {}

  /// How often an entity's type extends another, counted from Koi::Entity.
  static constexpr unsigned koiDepth = 0;

 protected:
  NotifieeBase() = default;
  virtual ~NotifieeBase();

  Entity const * koiNotifier() const { return notifier_; }
  void koiNotifierIs( Entity const * entity, unsigned depth );

  /// The own body of an immediate form says so: it is not overridden and need not be called again.
  template< class N, class... Key >
  void koiPass( Callback< N, Key... > const & callback ) {
    if( notifier_ && hears( N::koiDepth ) )
      passed_ |= callback.any().bit();
  }

 private:
  friend class Entity;
  friend class Observers;

  template< class... Key >
  void tell( AnyCallback< Key... > const & callback, U64 bit, std::type_identity_t< Key >... key ) {
    if( ( passed_ & bit ) != 0 ) [[likely]]
      ( this->*callback.on )( key... );
    else
      ( this->*callback.immediate )( key... );
  }

  /// Whether it is told of callbacks that a type of that depth declares.
  bool hears( unsigned depth ) const { return registered_ && depth_ >= depth; }

  Entity const * notifier_ = nullptr;
  U64 passed_ = 0;      // by bit(): the callbacks that it hears, and whose immediate form passes on
  unsigned depth_ = 0;  // of the NotifieeConst that it was attached as
  bool registered_ = true;
};

/// The base of every nested NotifieeConst: it may look at what it observes. Base is the
/// NotifieeConst of the entity's own base, where it has one.
template< class E, class Base = NotifieeBase >
class NotifieeOf : public Base {
 public:
  static constexpr unsigned koiDepth = Base::koiDepth + 1;

  /// What is observed; null when nothing is, or when it is gone.
  E const * notifier() const { return static_cast< E const * >( this->koiNotifier() ); }
  /// Observes that entity from now on, and no longer another; null observes nothing.
  void notifierIs( E const * entity ) { this->koiNotifierIs( entity, koiDepth ); }
};

/// What every nested Notifiee is: a NotifieeConst that may also change what it observes.
template< class NotifieeConst, class E >
class ChangingNotifiee : public NotifieeConst {
 public:
  E * notifier() const {
    // Only notifierIs() below attaches, so the entity was handed over to be changed.
    return const_cast< E * >( static_cast< E const * >( this->koiNotifier() ) );
  }
  void notifierIs( E * entity ) { this->koiNotifierIs( entity, NotifieeConst::koiDepth ); }
};

}  // namespace Koi
