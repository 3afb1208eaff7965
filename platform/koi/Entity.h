// Entity.h: the entity contract, stated once. A generated entity only says its attributes.
//
// An entity lives on the heap, while a Ptr refers to it, and is changed and observed on one thread.
//
// Observers are told inside the mutator, in the order in which they were attached, after the change
// is stored. A callback may attach and detach any observer, itself included, and may drop the last
// reference to the entity: one that is detached is not called any more, one that is attached hears
// the next change, and the entity goes when all have been told. Every observer is told, whatever
// another one throws; then the first exception leaves the mutator, and the change stays.
#pragma once

#include <exception>
#include <tuple>
#include <type_traits>
#include <vector>

#include <koi/Children.h>
#include <koi/KoiType.h>
#include <koi/LinkQueue.h>
#include <koi/Notifiee.h>
#include <koi/WeakPtr.h>

namespace Koi {

/// The base of everything in the model that has identity.
class KOI_PUBLIC Entity : public PtrInterface {
 public:
  /// Unique within the parent's collection; never changes.
  Name const & name() const { return name_; }

  /// The entity whose collection or child this is; null when there is none, or when it is gone.
  Entity * parent() const { return parent_; }

  /// The names from the topmost parent down to this entity, '/' between them; a '/' or '%' inside a
  /// name is written %2F or %25.
  String8 fullName() const;

  /// The type node of the entity's own type.
  virtual KoiType const * koiType() const = 0;

  /// How many changes there were so far, observed or not.
  U64 koiChanges() const { return changes_; }

  /// For the collection or child that owns this entity.
  void koiParentIs( Entity * parent ) { parent_ = parent; }

  /// What weak pointers ask whether this entity is still there.
  Ptr< EntityLife > koiLife() const;

 protected:
  explicit Entity( Name name ) : name_( std::move( name ) ) {}
  virtual ~Entity();
  void handleZeroRef() const override;

  /// Counts a change and calls `call( observer )` for every observer, by the rules above.
  template< class Call >
  void koiTellEach( Call call );

 private:
  friend class NotifieeBase;

  /// Walks the observers that are there when it begins. Detached ones leave a null behind, so that
  /// places stay what they are while somebody walks.
  class Walk {
   public:
    explicit Walk( Entity & entity ) : entity_( entity ), end_( entity.notifiees_.size() ) {
      ++entity.numWalks_;
    }
    ~Walk();
    NotifieeBase * next();

   private:
    Entity & entity_;
    std::size_t end_;
    std::size_t at_ = 0;
  };

  void add( NotifieeBase * notifiee ) const { notifiees_.push_back( notifiee ); }
  void remove( NotifieeBase * notifiee ) const;
  void retire() const;

  Name const name_;
  Entity * parent_ = nullptr;
  U64 changes_ = 0;
  U32 numWalks_ = 0;
  // Observing does not change the entity, so an observer attaches to a constant one as well.
  mutable std::vector< NotifieeBase * > notifiees_;
  mutable Ptr< EntityLife > life_;
};

template< class Call >
void Entity::koiTellEach( Call call ) {
  ++changes_;
  if( notifiees_.empty() )
    return;
  // An object that nobody holds, one on the stack, cannot lose its last reference either.
  Ptr< Entity > const alive( koiRefCount() != 0 ? this : nullptr );
  std::exception_ptr first;
  {
    Walk walk( *this );
    while( NotifieeBase * notifiee = walk.next() )
      try {
        call( notifiee );
      } catch( ... ) {  // whatever a callback throws, it is the mutator's caller who gets it
        if( !first )
          first = std::current_exception();
      }
  }
  if( first )
    std::rethrow_exception( first );
}

/// How a callback takes a key: numbers, bool and enumerators as they are.
template< class Key >
using Argument =
    std::conditional_t< std::is_arithmetic_v< Key > || std::is_enum_v< Key >, Key, Key const & >;

/// The name of an entity that is called after its key: the key's canonical text.
template< class Key >
Name nameOf( Key const & key ) {
  return Name( valueToStrep( key ) );
}

/// One attribute as the log and reflection see it: its name and where it lives.
template< class E, class Cell >
struct Attribute {
  char const * name;
  Cell E::*cell;
};
template< class E, class Cell >
constexpr Attribute< E, Cell > attribute( char const * name, Cell E::*cell ) {
  return { name, cell };
}

/// What every generated entity inherits. Derived says koiName, koiAttributes(), koiParameters() and
/// its NotifieeConst; Base is Entity or the entity that it extends.
template< class Derived, class Base = Entity >
class EntityOf : public Base {
 public:
  using KoiBase = Base;

  KoiType const * koiType() const override { return &Derived::_koiType; }

 protected:
  /// The callback of a scalar attribute, and of a collection.
  template< class D = Derived >
  using On = void ( D::NotifieeConst::* )();
  template< class Key, class D = Derived >
  using OnKey = void ( D::NotifieeConst::* )( Argument< Key > );

  template< class... Args >
  explicit EntityOf( Args &&... args ) : Base( std::forward< Args >( args )... ) {}

  /// attrIs( v ): an equal value is a no-op; a value outside its type's range is refused.
  template< class Cell, class D = Derived >
  void koiIs( Cell & cell, typename CellOf< Cell >::Given const & v, On< D > on ) {
    if( store( cell, v ) )
      koiTell( on );
  }

  /// The same for an attribute that keeps the value it refuses; nobody is told of that one.
  template< class Number, class D = Derived >
  void koiStoreThenCheck( Number & cell, std::type_identity_t< Number > v,
                          std::type_identity_t< Number > most, char const * refusal, On< D > on ) {
    if( storeThenCheck( cell, v, most, refusal ) )
      koiTell( on );
  }

  /// attrIs( k, v ): an equal value is a no-op; a key or value outside its type's range is refused.
  template< class C, class D = Derived >
  void koiIs( C & members, typename C::Key const & k, typename C::Given const & v,
              OnKey< typename C::Key, D > on ) {
    typename C::Key const key = k;  // k may stand in a member that an observer removes
    if( members.koiSet( key, v ) )
      koiTell( on, key );
  }

  /// attrDel( k ): what was there, or the default.
  template< class C, class D = Derived >
  typename C::Given koiDel( C & members, typename C::Key const & k,
                            OnKey< typename C::Key, D > on ) {
    typename C::Key const key = k;  // k may stand in the member that goes
    typename C::Given old{};
    if( members.koiTake( key, old ) )
      koiTell( on, key );
    return old;
  }

  /// attrDelAll(): the members that are there now, one by one, in the order of iteration.
  template< class C, class D = Derived >
  void koiDelAll( C & members, OnKey< typename C::Key, D > on ) {
    std::vector< typename C::Key > keys;
    for( auto const & member : members )
      keys.push_back( member.key() );
    for( auto const & key : keys )
      koiDel< C, D >( members, key, on );
  }

  /// attrEnq( v ): the number that v has in the queue.
  template< class Queue, class D = Derived >
  typename Queue::Key koiEnq( Queue & queue, typename Queue::Given const & v,
                              OnKey< typename Queue::Key, D > on ) {
    auto const index = queue.koiEnq( v );
    koiTell( on, index );
    return index;
  }
  /// attrDeq(): what was at the head, or the default.
  template< class Queue, class D = Derived >
  typename Queue::Given koiDeq( Queue & queue, OnKey< typename Queue::Key, D > on ) {
    return koiDel< Queue, D >( queue, queue.metadata().head, on );
  }

  /// attrIs( k, args... ): the child of that key, built when there is none. Raises
  /// NameInUseException when it was built with other arguments, RangeException for a key outside
  /// its type's range.
  template< class C, class D = Derived, class... Args >
  typename C::Given koiChildIs( C & children, OnKey< typename C::Key, D > on,
                                typename C::Key const & k, Args const &... args ) {
    typename C::Key const key = k;  // k may stand in a child that an observer removes
    auto const [child, fresh] = childIs( children, this, key, args... );
    if( fresh )
      koiTell( on, key );
    return child;
  }

  /// The same for a child that is the only one of its attribute.
  template< class Child, class D = Derived, class... Args >
  Ptr< Child > koiChildIs( Owned< Child > & child, On< D > on, Args const &... args ) {
    bool const fresh = childIs( child, this, args... );
    Ptr< Child > const there = child.ptr();  // an observer may remove it
    if( fresh )
      koiTell( on );
    return there;
  }
  template< class Child, class D = Derived >
  Ptr< Child > koiChildDel( Owned< Child > & child, On< D > on ) {
    Ptr< Child > const old = child.ptr();
    if( old ) {
      child = Owned< Child >();
      koiTell( on );
    }
    return old;
  }

  /// attrNotify( k ): calls one callback of every observer.
  template< class D = Derived >
  void koiTell( On< D > on ) {
    this->koiTellEach( [on]( NotifieeBase * notifiee ) {
      if( auto * observer = observerOf< D >( notifiee ) )
        ( observer->*on )();
    } );
  }
  template< class Key, class D = Derived >
  void koiTell( OnKey< Key, D > on, Key const & k ) {
    this->koiTellEach( [on, &k]( NotifieeBase * notifiee ) {
      if( auto * observer = observerOf< D >( notifiee ) )
        ( observer->*on )( k );
    } );
  }

 private:
  template< class D >
  static typename D::NotifieeConst * observerOf( NotifieeBase * notifiee ) {
    // What observes an entity that extends another may have been attached as an observer of that
    // one.
    if constexpr( std::is_same_v< Base, Entity > )
      return static_cast< typename D::NotifieeConst * >( notifiee );
    else
      return dynamic_cast< typename D::NotifieeConst * >( notifiee );
  }
};

}  // namespace Koi
