// Entity.h: the entity contract, stated once. A generated entity only says its attributes.
//
// An entity lives on the heap, while a Ptr refers to it, and is changed and observed on one thread.
// docs/entities.md has the rules as tables: what an observer may do while it is told, where
// exceptions go, what a transaction is.
#pragma once

#include <exception>
#include <memory>
#include <tuple>
#include <type_traits>
#include <vector>

#include <koi/Children.h>
#include <koi/KoiType.h>
#include <koi/LinkQueue.h>
#include <koi/Notifiee.h>
#include <koi/Observers.h>
#include <koi/Transaction.h>
#include <koi/WeakPtr.h>

namespace Koi {

/// The base of everything in the model that has identity.
class KOI_PUBLIC Entity : public PtrInterface {
 public:
  /// Unique within the parent's collection.
  Name const & name() const { return name_; }
  /// For an entity that is restored from a backup, before anybody knows it by its name: the name it
  /// had. Nobody is told.
  void nameIsFromBackup( Name const & name ) { name_ = name; }

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

  /// How many attributes this type has: those of a type that extends it begin there.
  static constexpr unsigned koiEnd = 0;

 protected:
  explicit Entity( Name name ) : name_( std::move( name ) ) {}
  virtual ~Entity();
  void handleZeroRef() const override;

  /// Counts a change and tells the observers: now, or at the end of the open transaction.
  template< class N, class... Key >
  void koiTell( Callback< N, Key... > const & callback, std::type_identity_t< Key >... key ) {
    ++changes_;
    if( observers_ && !observers_->empty() )
      tellOrNote( callback, key... );
  }

 private:
  friend class NotifieeBase;
  template< class N, class... Key >
  class ChangeNotice;

  template< class N, class... Key >
  void tellOrNote( Callback< N, Key... > const & callback, std::type_identity_t< Key >... key );
  template< class N, class... Key >
  void tellEach( Callback< N, Key... > const & callback, std::type_identity_t< Key >... key );

  // Observing does not change the entity, so an observer attaches to a constant one as well.
  Observers & observers() const;
  bool hasBeenKept() const;
  void retire() const;

  Name name_;
  Entity * parent_ = nullptr;
  U64 changes_ = 0;
  mutable std::unique_ptr< Observers > observers_;  // none until somebody observes
  mutable Ptr< EntityLife > life_;
};

/// What the end of a transaction tells of one attribute or key of one entity.
template< class N, class... Key >
class Entity::ChangeNotice final : public Notice {
 public:
  ChangeNotice( Entity * entity, Callback< N, Key... > const & callback, Key... key )
      : Notice( hashOf( entity, callback.index, key... ) ),
        entity_( entity ),
        callback_( callback ),
        key_( key... ) {}

  void tell() override {
    std::apply( [&]( auto const &... key ) { entity_->tellEach( callback_, key... ); }, key_ );
  }
  bool isLike( Notice const & other ) const override {
    auto const * const notice = dynamic_cast< ChangeNotice const * >( &other );
    return notice && notice->entity_ == entity_ && notice->callback_.index == callback_.index &&
           notice->key_ == key_;
  }

 private:
  static std::size_t hashOf( Entity * entity, unsigned index, Key const &... key ) {
    std::size_t hash = reinterpret_cast< std::size_t >( entity ) + index;
    ( ( hash = hash * 31 + hashOfKey( key ) ), ... );
    return hash;
  }

  Ptr< Entity > const entity_;
  Callback< N, Key... > const callback_;
  std::tuple< std::remove_cvref_t< Key >... > const key_;
};

template< class N, class... Key >
[[gnu::noinline]] void Entity::tellOrNote( Callback< N, Key... > const & callback,
                                           std::type_identity_t< Key >... key ) {
  if( auto * const open = OpenTransaction::current() )
    open->add( std::make_unique< ChangeNotice< N, Key... > >( this, callback, key... ) );
  else
    tellEach( callback, key... );
}

template< class N, class... Key >
void Entity::tellEach( Callback< N, Key... > const & callback,
                       std::type_identity_t< Key >... key ) {
  if( !observers_ )
    return;
  Ptr< Entity > const alive( this );
  std::exception_ptr first;
  {
    Observers::Walk walk( *observers_, *this );
    while( NotifieeBase * const observer = walk.next( N::koiDepth ) )
      try {
        observer->tell( callback, key... );
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

  /// Where the type's own attributes begin in its table; those of the base stand before.
  static constexpr unsigned koiFirst = Base::koiEnd;

  KoiType const * koiType() const override { return &Derived::_koiType; }

 protected:
  template< class... Args >
  explicit EntityOf( Args &&... args ) : Base( std::forward< Args >( args )... ) {}

  /// attrIs( v ): an equal value is a no-op; a value outside its type's range is refused.
  template< class Cell, class N >
  void koiIs( Cell & cell, typename CellOf< Cell >::Given const & v, Callback< N > const & on ) {
    if( store( cell, v ) )
      this->koiTell( on );
  }

  /// The same for an attribute that keeps the value it refuses; nobody is told of that one.
  template< class Number, class N >
  void koiStoreThenCheck( Number & cell, std::type_identity_t< Number > v,
                          std::type_identity_t< Number > most, char const * refusal,
                          Callback< N > const & on ) {
    if( storeThenCheck( cell, v, most, refusal ) )
      this->koiTell( on );
  }

  /// attrIs( k, v ): an equal value is a no-op; a key or value outside its type's range is refused.
  template< class C, class N >
  void koiIs( C & members, typename C::Key const & k, typename C::Given const & v,
              Callback< N, Argument< typename C::Key > > const & on ) {
    typename C::Key const key = k;  // k may stand in a member that an observer removes
    if( members.koiSet( key, v, koiStamp() ) != Change::unchanged )
      this->koiTell( on, key );
  }

  /// attrDel( k ): what was there, or the default.
  template< class C, class N >
  typename C::Given koiDel( C & members, typename C::Key const & k,
                            Callback< N, Argument< typename C::Key > > const & on ) {
    typename C::Key const key = k;  // k may stand in the member that goes
    typename C::Given old{};
    if( members.koiTake( key, old, koiStamp() ) )
      this->koiTell( on, key );
    return old;
  }

  /// attrDelAll(): the members that are there now, one by one, in the order of iteration.
  template< class C, class N >
  void koiDelAll( C & members, Callback< N, Argument< typename C::Key > > const & on ) {
    std::vector< typename C::Key > keys;
    keys.reserve( members.size() );
    for( auto const & member : members )
      keys.push_back( member.key() );
    for( auto const & key : keys )
      koiDel( members, key, on );
  }

  /// attrEnq( v ): the number that v has in the queue.
  template< class Queue, class N >
  typename Queue::Key koiEnq( Queue & queue, typename Queue::Given const & v,
                              Callback< N, typename Queue::Key > const & on ) {
    auto const index = queue.koiEnq( v, koiStamp() );
    this->koiTell( on, index );
    return index;
  }
  /// attrDeq(): what was at the head, or the default.
  template< class Queue, class N >
  typename Queue::Given koiDeq( Queue & queue, Callback< N, typename Queue::Key > const & on ) {
    return koiDel( queue, queue.metadata().head, on );
  }

  /// attrIs( k, args... ): the child of that key, built when there is none. Raises
  /// NameInUseException when it was built with other arguments, RangeException for a key outside
  /// its type's range.
  template< class C, class N, class... Args >
  typename C::Given koiChildIs( C & children, Callback< N, Argument< typename C::Key > > const & on,
                                typename C::Key const & k, Args const &... args ) {
    typename C::Key const key = k;  // k may stand in a child that an observer removes
    auto const [child, fresh] = childIs( children, this, koiStamp(), key, args... );
    if( fresh )
      this->koiTell( on, key );
    return child;
  }

  /// The same for a child that is the only one of its attribute.
  template< class Child, class N, class... Args >
  Ptr< Child > koiChildIs( Owned< Child > & child, Callback< N > const & on,
                           Args const &... args ) {
    bool const fresh = childIs( child, this, args... );
    Ptr< Child > const there = child.ptr();  // an observer may remove it
    if( fresh )
      this->koiTell( on );
    return there;
  }
  template< class Child, class N >
  Ptr< Child > koiChildDel( Owned< Child > & child, Callback< N > const & on ) {
    Ptr< Child > const old = child.ptr();
    if( old ) {
      child = Owned< Child >();
      this->koiTell( on );
    }
    return old;
  }

 private:
  /// The change that is about to be made.
  Stamp koiStamp() const { return { this->koiChanges() + 1, 0 }; }
};

}  // namespace Koi
