// Reactor.h: the reactor contract, stated once. A generated reactor only says what it watches and
// which handlers it has; their bodies are written by hand.
//
// A reactor lives on the heap, on one thread. It is built without listening; its start handler runs
// once inside the constructor, whose references to itself may come and go. It listens while it is
// active and no zombie. A handler may rebind and remove what the reactor watches, end it, or drop
// its last reference.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <vector>

#include <koi/Entity.h>

namespace Koi {

class WatchedBase;

class KOI_PUBLIC Reactor : public PtrInterface {
 public:
  /// Listens, or will when no zombie.
  bool hasNotificationActive() const { return koiFlag( RefWord::notificationActive ); }
  /// Begins or ends listening; saying it again changes nothing. What changed in a watched entity
  /// since the start handler began has told nobody: then the start handler runs again.
  void hasNotificationActiveIs( bool active );

  bool isZombie() const { return koiFlag( RefWord::zombie ); }
  /// Ends listening for good when what it belongs to is torn down; the cleanup handler runs.
  void koiDoZombieReactors( bool zombie );

  /// The type node of the reactor.
  virtual KoiType const * fwkType() const = 0;

 protected:
  Reactor() = default;
  virtual ~Reactor() = default;
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
  friend class WatchedBase;
  enum Stage { building, alive, ending };

  bool isListening() const { return hasNotificationActive() && !isZombie(); }
  void listen();
  void end();

  std::vector< WatchedBase * > watched_;
  Stage stage_ = building;
  bool cleanedUp_ = false;
};

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

/// Where what is watched by key is kept: in the order of a hashed collection.
template< class K, class V >
struct InHashOrder {
  struct Member {
    K key;
    V cell;
  };
  using Store = std::multimap< U32, Member >;

  static auto find( auto & store, K const & k ) {
    auto [at, end] = store.equal_range( bitReverse( hashOfKey( k ) ) );
    while( at != end && !( at->second.key == k ) )
      ++at;
    return at == end ? store.end() : at;
  }
  static void insert( Store & store, K const & k, V cell ) {
    store.emplace( bitReverse( hashOfKey( k ) ), Member{ k, std::move( cell ) } );
  }
  static K const & key( auto at ) { return at->second.key; }
  static auto & cell( auto at ) { return at->second.cell; }
};

/// The watched members of a keyed collection, each with an inner observer of its own.
template< class Observer, class K, class E >
class WatchedEach final : public WatchedBase {
  using One = Observation< Observer, E >;
  using Order = InHashOrder< K, std::unique_ptr< One > >;

 public:
  template< class R >
  explicit WatchedEach( R * reactor )
      : WatchedBase( reactor ),
        fresh_( [reactor]( K const & k ) { return std::make_unique< One >( reactor, k ); } ) {}

  /// The entity watched under that key; null when there is none.
  Ptr< E > value( K const & k ) const {
    auto const at = Order::find( members_, k );
    return at == members_.end() ? Ptr< E >() : Order::cell( at )->entity;
  }
  /// The keys, in the order of a hashed collection.
  std::vector< K > keys() const {
    std::vector< K > keys;
    for( auto at = members_.begin(); at != members_.end(); ++at )
      keys.push_back( Order::key( at ) );
    return keys;
  }
  /// Watches that entity under that key, and no longer another; null watches nothing.
  void bind( K const & k, Ptr< E > const & entity ) {
    if( value( k ) == entity )
      return;
    auto const old = taken( k );  // goes last: that may bind others
    if( !entity )
      return;
    auto one = fresh_( k );
    one->bind( entity, isListening() );
    Order::insert( members_, k, std::move( one ) );
  }
  void remove( K const & k ) { auto const old = taken( k ); }
  void removeAll() { auto const old = std::exchange( members_, {} ); }

  void listenIs( bool listening ) override {
    for( auto & member : members_ )
      member.second.cell->observer.isRegisteredNotifieeIs( listening );
  }
  void mark() override {
    for( auto & member : members_ )
      member.second.cell->mark();
  }
  bool changed() const override {
    for( auto & member : members_ )
      if( member.second.cell->changed() )
        return true;
    return false;
  }

 private:
  typename Order::Store::node_type taken( K const & k ) {
    auto const at = Order::find( members_, k );
    return at == members_.end() ? typename Order::Store::node_type() : members_.extract( at );
  }

  std::function< std::unique_ptr< One >( K const & ) > fresh_;
  typename Order::Store members_;
};

/// What every generated reactor inherits. Derived says koiName and its handlers.
template< class Derived >
class ReactorOf : public Reactor {
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
                       [this, &members]( auto const & gone ) { koiDel( members, gone ); } );
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

/// A reactor that is built and listening.
template< class R, class... Args >
Ptr< R > reactorIs( Args const &... args ) {
  Ptr< R > const reactor( new R( args... ) );
  reactor->hasNotificationActiveIs( true );
  return reactor;
}

}  // namespace Koi
