// Notifiee.h: what observes an entity. A generated entity nests NotifieeConst and Notifiee, made of
// these.
//
// An observer is told inside the mutator, on the thread of the entity. It does not keep the entity
// alive: when the entity goes, notifier() becomes null.
#pragma once

#include <koi/Export.h>

namespace Koi {

class Entity;

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

 protected:
  NotifieeBase() = default;
  virtual ~NotifieeBase() { koiNotifierIs( nullptr ); }

  Entity const * koiNotifier() const { return notifier_; }
  void koiNotifierIs( Entity const * entity );

 private:
  friend class Entity;

  Entity const * notifier_ = nullptr;
  bool registered_ = true;
};

/// The base of every nested NotifieeConst: it may look at what it observes. Base is the
/// NotifieeConst of the entity's own base, where it has one.
template< class E, class Base = NotifieeBase >
class NotifieeOf : public Base {
 public:
  /// What is observed; null when nothing is, or when it is gone.
  E const * notifier() const { return static_cast< E const * >( this->koiNotifier() ); }
  /// Observes that entity from now on, and no longer another; null observes nothing.
  void notifierIs( E const * entity ) { this->koiNotifierIs( entity ); }
};

/// What every nested Notifiee is: a NotifieeConst that may also change what it observes.
template< class NotifieeConst, class E >
class ChangingNotifiee : public NotifieeConst {
 public:
  E * notifier() const {
    // Only notifierIs() below attaches, so the entity was handed over to be changed.
    return const_cast< E * >( static_cast< E const * >( this->koiNotifier() ) );
  }
  void notifierIs( E * entity ) { this->koiNotifierIs( entity ); }
};

}  // namespace Koi
