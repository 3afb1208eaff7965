// Entity.h: the entity contract, stated once. A generated entity only says its attributes.
//
// Used on the entity's thread. docs/entities.md has the rules as tables: what an observer may do
// while it is told, where exceptions go, what a transaction is.
#pragma once

#include <vector>

#include <koi/AllocTrack.h>
#include <koi/AttributeTable.h>
#include <koi/Children.h>
#include <koi/EntityBase.h>
#include <koi/LinkQueue.h>

namespace Koi {

/// What all mutators of all entities are made of. They know neither the entity's type nor which of
/// its attributes it is, so attributes that hold the same share them.
class EntityMutators : public Entity {
 protected:
  using Entity::Entity;

  /// attrIs( v ): an equal value is a no-op; a value outside its type's range is refused.
  template< class Cell >
  void koiIs( Cell & cell, Argument< typename CellOf< Cell >::Given > v,
              AttributeCallback<> const & on ) {
    if( same( CellOf< Cell >::given( cell ), v ) )
      return;
    if constexpr( std::is_trivially_destructible_v< Cell > )
      if( !koiHasAudience() ) [[likely]] {  // a few instructions in each mutator
        checkRange( v );
        koiStamp();
        cell = Cell( v );
        return;
      }
    koiChange( cell, v, on );
  }

  /// The same for an attribute that keeps the value it refuses; nobody is told of that one.
  template< class Number >
  void koiStoreThenCheck( Number & cell, std::type_identity_t< Number > v,
                          std::type_identity_t< Number > most, char const * refusal,
                          AttributeCallback<> const & on ) {
    if( cell == v )
      return;
    koiAdmit();
    Stamp const stamp = koiStamp();
    storeThenCheck( cell, v, most, refusal );
    koiTell( stamp, on );
  }

  /// attrIs( k, v ): an equal value is a no-op; a key or value outside its type's range is refused.
  template< class C >
  void koiIs( C & members, typename C::Key const & k, typename C::Given const & v,
              AttributeCallback< Argument< typename C::Key > > const & on ) {
    if( koiIsRefusing() && !( members.contains( k ) && same( members.value( k ), v ) ) )
      koiRefuse();
    typename C::Key const key = k;  // k may stand in a member that an observer removes
    Stamp const stamp = koiStamp();
    if( members.koiSet( key, v, stamp ) == Change::unchanged )
      return koiUnstamp();
    leaveWithTarget( members, key, [this, &members, &on]( auto const & gone ) {
      this->koiRemove( members, gone, on );
    } );
    koiTell( stamp, on, key );
  }

  /// attrDel( k ): what was there, or the default.
  template< class C >
  typename C::Given koiDel( C & members, typename C::Key const & k,
                            AttributeCallback< Argument< typename C::Key > > const & on ) {
    if( koiIsRefusing() && members.contains( k ) )
      koiRefuse();
    return koiRemove( members, k, on );
  }

  /// What leaves by itself does so on a read-only proxy, too.
  template< class C >
  typename C::Given koiRemove( C & members, typename C::Key const & k,
                               AttributeCallback< Argument< typename C::Key > > const & on ) {
    typename C::Key const key = k;  // k may stand in the member that goes
    typename C::Given old{};
    Stamp const stamp = koiStamp();
    if( members.koiTake( key, old, stamp ) )
      koiTell( stamp, on, key );
    else
      koiUnstamp();
    return old;
  }

  /// attrDel( iterator ): as of its key; nothing at the end. The iterator may go on.
  template< class C, class On >
  typename C::Given koiDel( C & members, typename C::Iterator const & i, On const & on ) {
    return i ? koiDel( members, i.key(), on ) : typename C::Given{};
  }

  /// attrDelAll(): the members that are there now, one by one, in the order of iteration.
  template< class C >
  void koiDelAll( C & members, AttributeCallback< Argument< typename C::Key > > const & on ) {
    std::vector< typename C::Key > keys;
    keys.reserve( members.size() );
    for( auto const & member : members )
      keys.push_back( member.key() );
    for( auto const & key : keys )
      koiDel( members, key, on );
  }

  /// attrEnq( v ): the number that v has in the queue.
  template< class Queue >
  typename Queue::Key koiEnq( Queue & queue, typename Queue::Given const & v,
                              AttributeCallback< typename Queue::Key > const & on ) {
    koiAdmit();
    Stamp const stamp = koiStamp();
    auto const index = queue.koiEnq( v, stamp );
    koiTell( stamp, on, index );
    return index;
  }
  /// attrDeq(): what was at the head, or the default.
  template< class Queue >
  typename Queue::Given koiDeq( Queue & queue,
                                AttributeCallback< typename Queue::Key > const & on ) {
    return koiDel( queue, queue.metadata().head, on );
  }

  /// attrIs( k, args... ): the child of that key, built when there is none. Raises
  /// NameInUseException when it was built with other arguments, RangeException for a key outside
  /// its type's range.
  template< class C, class... Args >
  typename C::Given koiChildIs( C & children,
                                AttributeCallback< Argument< typename C::Key > > const & on,
                                typename C::Key const & k, Args const &... args ) {
    typename C::Key const key = k;  // k may stand in a child that an observer removes
    if( auto const there = children.value( key ) ) {
      refuseOtherArguments( *there, key, args... );
      return there;
    }
    koiAdmit();
    Stamp const stamp = koiStamp();
    auto const child = newChild( children, stamp, key, args... );
    child->koiParentIs( this, on.index );
    koiTell( stamp, on, key );
    return child;
  }

  /// The same for a child that is the only one of its attribute.
  template< class Child, class... Args >
  Ptr< Child > koiChildIs( Owned< Child > & child, AttributeCallback<> const & on,
                           Args const &... args ) {
    if( child.ptr() ) {
      refuseOtherArguments( *child.ptr(), args... );
      return child.ptr();
    }
    koiAdmit();
    Ptr< Child > const fresh( new Child( args... ) );
    Stamp const stamp = koiStamp();
    child = Owned< Child >( fresh );
    fresh->koiParentIs( this, on.index );
    koiTell( stamp, on );
    return fresh;
  }
  /// attrIs( k, entity ): the entity itself is the child from now on, and is called k. Raises
  /// RangeException and NameInUseException as requireAdoptable() says.
  template< class C >
  Ptr< Entity > koiAdopt( C & children, AttributeCallback< Argument< typename C::Key > > const & on,
                          typename C::Key const & k, Ptr< Entity > const & entity ) {
    typename C::Key const key = k;
    Ptr< Entity > const child = entity;
    Ptr< Entity > const there = children.value( key );
    if( child && there == child )
      return child;
    koiAdmit();
    requireAdoptable( *this, key, child.ptr(), there.ptr() );
    child->nameIsFromBackup( key );
    Stamp const stamp = koiStamp();
    children.koiSet( key, child, stamp );
    child->koiParentIs( this, on.index );
    koiTell( stamp, on, key );
    return child;
  }
  template< class Child >
  Ptr< Child > koiChildDel( Owned< Child > & child, AttributeCallback<> const & on ) {
    Ptr< Child > const old = child.ptr();
    if( old ) {
      koiAdmit();
      Stamp const stamp = koiStamp();
      child = Owned< Child >();
      koiTell( stamp, on );
    }
    return old;
  }

 private:
  /// Stores a value that differs, and tells.
  template< class Cell >
  [[gnu::noinline]] void koiChange( Cell & cell, Argument< typename CellOf< Cell >::Given > v,
                                    AttributeCallback<> const & on ) {
    koiAdmit();
    checkRange( v );
    Stamp const stamp = koiStamp();
    cell = Cell( v );
    leaveWithTarget( cell, [this, &on] {  // callbacks are constants
      koiTell( koiStamp(), on );
    } );
    koiTell( stamp, on );
  }

  void koiAdmit() const {
    if( koiIsRefusing() )
      koiRefuse();
  }
};

/// What every generated entity inherits. Derived says koiName, koiAttributes(), koiParameters() and
/// its NotifieeConst; Base is the entity that it extends, if any.
template< class Derived, class Base = EntityMutators >
class EntityOf : public Tracked< Derived, Base > {
 public:
  using KoiBase = Base;

  /// Where the type's own attributes begin in its table; those of the base stand before.
  static constexpr unsigned koiFirst = Base::koiEnd;

  KoiType const * koiType() const override { return &Derived::_koiType; }

 protected:
  template< class... Args >
  explicit EntityOf( Args &&... args )
      : Tracked< Derived, Base >( std::forward< Args >( args )... ) {}
};

}  // namespace Koi
