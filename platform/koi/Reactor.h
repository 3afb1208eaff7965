// Reactor.h: the reactor contract, stated once. A generated reactor only says what it watches and
// which handlers it has; their bodies are written by hand.
//
// A reactor lives on the heap, on one thread. It is built without listening; its start handler runs
// once inside the constructor, whose references to itself may come and go. It listens while it is
// active and no zombie. A handler may rebind and remove what the reactor watches, end it, or drop
// its last reference.
#pragma once

#include <vector>

#include <koi/Entity.h>
#include <koi/ValidPtr.h>

namespace Koi {

class Activity;
class InnerReactorsBase;
class WatchedBase;

class KOI_PUBLIC Reactor : public PtrInterface {
 public:
  /// Listens, or will when no zombie.
  bool hasNotificationActive() const { return koiFlag( RefWord::notificationActive ); }
  /// Begins or ends listening, with the reactors inside it; saying it again changes nothing. What
  /// changed in a watched entity since the start handler began has told nobody: then the start
  /// handler runs again.
  void hasNotificationActiveIs( bool active );

  bool isZombie() const { return koiFlag( RefWord::zombie ); }
  /// Ends listening for good when what it belongs to is torn down: the cleanup handler runs, once,
  /// then the reactors inside it end. What a cleanup handler throws is dropped: whoever ends a
  /// reactor cannot do anything about it.
  void koiDoZombieReactors( bool zombie );

  /// For the collection or entity that owns it: it is being let go.
  void koiDisowned() { koiDoZombieReactors( true ); }
  /// What weak pointers ask whether this reactor is still there.
  Ptr< EntityLife > koiLife() const;

  /// The type node of the reactor.
  virtual KoiType const * fwkType() const = 0;

  /// What its handlers run on; null: the default activity.
  virtual Activity * koiFwkActivity() const { return nullptr; }

 protected:
  Reactor() = default;
  virtual ~Reactor();
  void handleZeroRef() const override;

  /// The handlers as the model names them; each starts out doing nothing.
  virtual void koiStart() {}
  virtual void koiCleanup() {}

  /// The last step of every constructor: runs the start handler.
  void koiBegin();
  /// Runs the start handler, noting what the watched entities are like before.
  void koiRunStart();

  /// attrIs( entity ) of a watched entity: the same one is a no-op; else the start handler runs
  /// again.
  template< class Watched >
  void koiRebind( Watched & watched, Ptr< typename Watched::Entity > const & entity ) {
    if( watched.ptr() == entity )
      return;
    watched.bind( entity );
    koiRunStart();
  }

 private:
  friend class InnerReactorsBase;
  friend class WatchedBase;
  enum Stage { building, alive, ending };

  bool isListening() const { return hasNotificationActive() && !isZombie(); }
  bool hasMissedChanges() const;
  void listen();
  void tellInner();
  void end();

  std::vector< WatchedBase * > watched_;
  std::vector< InnerReactorsBase * > inner_;
  mutable Ptr< EntityLife > life_;
  Stage stage_ = building;
  bool cleanedUp_ = false;
};

template< class C >
class InnerReactors;

/// What every generated reactor inherits. Derived says koiName, koiParameters() and its handlers.
template< class Derived >
class ReactorOf : public Tracked< Derived, Reactor > {
 public:
  KoiType const * fwkType() const override { return &Derived::_koiType; }

 protected:
  // The mutators of a reactor's own state: those of an entity, with nobody to tell.
  template< class Cell >
  static void koiIs( Cell & cell, typename CellOf< Cell >::Given const & v ) {
    store( cell, v );
  }
  template< class Number >
  static void koiStoreThenCheck( Number & cell, std::type_identity_t< Number > v,
                                 std::type_identity_t< Number > most, char const * refusal ) {
    storeThenCheck( cell, v, most, refusal );
  }
  template< class C >
  void koiIs( C & members, typename C::Key const & k, typename C::Given const & v ) {
    if( members.koiSet( k, v, koiStamp() ) != Change::unchanged )
      leaveWithTarget( members, k,
                       [this, &members]( auto const & gone ) { this->koiDel( members, gone ); } );
  }
  template< class C >
  typename C::Given koiDel( C & members, typename C::Key const & k ) {
    typename C::Given old{};
    members.koiTake( k, old, koiStamp() );
    return old;
  }
  template< class C >
  typename C::Given koiDel( C & members, typename C::Iterator const & i ) {
    return i ? koiDel( members, i.key() ) : typename C::Given{};
  }
  template< class C >
  void koiDelAll( C & members ) {
    members.koiClear();
  }
  template< class C, class... Args >
  typename C::Given koiChildIs( C & children, typename C::Key const & k, Args const &... args ) {
    if( auto const there = children.value( k ) ) {
      refuseOtherArguments( *there, k, args... );
      return there;
    }
    return newChild( children, koiStamp(), k, args... );
  }
  template< class C, class... Args >
  typename C::Given koiChildIs( InnerReactors< C > & inner, typename C::Key const & k,
                                Args const &... args ) {
    return inner.koiIs( k, args... );
  }
  template< class Queue >
  typename Queue::Key koiEnq( Queue & queue, typename Queue::Given const & v ) {
    return queue.koiEnq( v, koiStamp() );
  }
  template< class Queue >
  typename Queue::Given koiDeq( Queue & queue ) {
    return koiDel( queue, queue.metadata().head );
  }

 private:
  Stamp koiStamp() { return { ++changes_, 0 }; }

  U64 changes_ = 0;
};

/// The pointer form: a reactor that is built and listening. Raises what its start handler throws,
/// and RangeException "null ValidPtr" when there is none.
template< class R, class... Args >
Ptr< R > reactorIs( Args const &... args ) {
  ValidPtr< R > const reactor( new R( args... ) );
  reactor->hasNotificationActiveIs( true );
  return reactor;
}

}  // namespace Koi

#include <koi/InnerReactors.h>
#include <koi/Watched.h>
