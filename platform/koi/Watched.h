// Watched.h: what a reactor watches: one entity, or the members of a collection by key, each with
// an inner observer.
//
// Used by generated reactors, whose members these are, on their thread. An observer is told while
// the reactor listens.
#pragma once

#include <functional>
#include <utility>
#include <vector>

#include <koi/Reactor.h>

namespace Koi {

/// What a reactor has of everything that it watches. Lives inside the reactor.
class KOI_PUBLIC WatchedBase {
 public:
  WatchedBase( WatchedBase const & ) = delete;
  WatchedBase & operator=( WatchedBase const & ) = delete;

  /// Lets the inner observers be told, or not.
  virtual void listenIs( bool listening ) = 0;
  /// Notes what the watched entities are like now; tells whether they have changed since.
  virtual void mark() = 0;
  virtual bool changed() const = 0;

 protected:
  explicit WatchedBase( Reactor * reactor ) : reactor_( reactor ) {
    reactor->watched_.push_back( this );
  }
  ~WatchedBase() = default;
  bool isListening() const { return reactor_->isListening(); }

 private:
  Reactor * reactor_;
};

/// The copy that outlives its original: a handler may end the observer that calls it.
template< class T >
T copyOf( T const & v ) {
  return v;
}

/// One watched entity and its inner observer.
template< class Observer, class E >
struct Observation {
  template< class... Args >
  explicit Observation( Args const &... args ) : observer( args... ) {}

  void bind( Ptr< E > const & to, bool listening ) {
    Ptr< E > const old = std::exchange( entity, to );  // goes last: that may rebind this
    observer.isRegisteredNotifieeIs( listening );
    observer.notifierIs( to );
    mark();
  }
  void mark() { changes = entity ? entity->koiChanges() : 0; }
  bool changed() const { return entity && entity->koiChanges() != changes; }

  Ptr< E > entity;
  Observer observer;
  U64 changes = 0;
};

/// A watched entity, which may be null.
template< class Observer, class E >
class Watched final : public WatchedBase {
 public:
  using Entity = E;

  template< class R >
  Watched( R * reactor, Ptr< E > const & entity ) : WatchedBase( reactor ), one_( reactor ) {
    bind( entity );
  }
  Ptr< E > const & ptr() const { return one_.entity; }
  void bind( Ptr< E > const & entity ) { one_.bind( entity, isListening() ); }

  void listenIs( bool listening ) override { one_.observer.isRegisteredNotifieeIs( listening ); }
  void mark() override { one_.mark(); }
  bool changed() const override { return one_.changed(); }

 private:
  Observation< Observer, E > one_;
};

/// One of several, which the handler that it calls may remove.
template< class Observer, class E >
struct CountedObservation final : PtrInterface, Observation< Observer, E > {
  using Observation< Observer, E >::Observation;

 private:
  void handleZeroRef() const override { delete this; }
};

/// The watched members of a keyed collection, each with an inner observer of its own.
template< class Observer, class K, class E >
class WatchedEach final : public WatchedBase {
  using One = CountedObservation< Observer, E >;

 public:
  template< class R >
  explicit WatchedEach( R * reactor )
      : WatchedBase( reactor ),
        fresh_( [reactor]( K const & k ) { return new One( reactor, k ); } ) {}

  /// The entity watched under that key; null when there is none.
  Ptr< E > value( K const & k ) const {
    Ptr< One > const one = members_.value( k );
    return one ? one->entity : Ptr< E >();
  }
  /// The keys, in the order of a hashed collection.
  std::vector< K > keys() const {
    std::vector< K > keys;
    for( auto const & member : members_ )
      keys.push_back( member.key() );
    return keys;
  }
  /// Watches that entity under that key, and no longer another; null watches nothing. Raises
  /// RangeException for a key outside its type's range.
  void bind( K const & k, Ptr< E > const & entity ) {
    if( value( k ) == entity )
      return;
    K const key = k;  // k may stand in the observer that goes
    Ptr< One > gone;  // last: that may bind others
    members_.koiTake( key, gone, { ++changes_, 0 } );
    if( !entity )
      return;
    Ptr< One > const one( fresh_( key ) );
    one->bind( entity, isListening() );
    members_.koiSet( key, one, { ++changes_, 0 } );
  }
  void remove( K const & k ) {
    Ptr< One > gone;
    members_.koiTake( k, gone, { ++changes_, 0 } );
  }
  void removeAll() { members_.koiClear(); }

  void listenIs( bool listening ) override {
    for( auto const & member : members_ )
      member.value()->observer.isRegisteredNotifieeIs( listening );
  }
  void mark() override {
    for( auto const & member : members_ )
      member.value()->mark();
  }
  bool changed() const override {
    for( auto const & member : members_ )
      if( member.value()->changed() )
        return true;
    return false;
  }

 private:
  std::function< One *( K const & ) > fresh_;
  HashMap< Observer, K, Ptr< One > > members_;
  U64 changes_ = 0;
};

}  // namespace Koi
