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
};

/// How an attribute's observers are called: the attribute's place in its entity's table, and the
/// callback, which is asked for when somebody observes. It is a constant, so a reference to it will
/// do.
template< class... Key >
struct AttributeCallback {
  unsigned index;
  AnyCallback< Key... > ( *any )( AttributeCallback const & );
};

/// The same of the callbacks that N, a NotifieeConst, declares: one, and its immediate form.
template< class N, class... Key >
struct Callback : AttributeCallback< Key... > {
  constexpr Callback( unsigned attribute, void ( N::*on )( Key... ),
                      void ( N::*immediate )( Key... ) )
      : AttributeCallback< Key... >{ attribute, &Callback::anyOf },
        on_( on ),
        immediate_( immediate ) {}

 private:
  /// To be called on the N in any NotifieeBase that is one.
  static AnyCallback< Key... > anyOf( AttributeCallback< Key... > const & callback ) {
    auto const & me = static_cast< Callback const & >( callback );
    return { me.index, N::koiDepth, static_cast< void ( NotifieeBase::* )( Key... ) >( me.on_ ),
             static_cast< void ( NotifieeBase::* )( Key... ) >( me.immediate_ ) };
  }

  void ( N::*on_ )( Key... );
  void ( N::*immediate_ )( Key... );
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
      passed_ |= bitOf( callback.index );
  }

 private:
  friend class Entity;
  friend class Observers;

  /// The place of an attribute's callback among those that are passed on; 0: it is none of the
  /// first 64.
  static constexpr U64 bitOf( unsigned index ) { return index < 64 ? U64{ 1 } << index : 0; }

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
  U64 passed_ = 0;  // by bitOf(): the callbacks that it hears, and whose immediate form passes on
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
