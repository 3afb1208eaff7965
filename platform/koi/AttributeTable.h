// AttributeTable.h: one row of an entity's attribute table: the name, where the attribute lives,
// and the mutators that change it. Attribute logs and reflection read the tables; koigen writes the
// rows. Compile-time only.
#pragma once

#include <cstddef>
#include <type_traits>

#include <koi/Collections.h>
#include <koi/LinkQueue.h>
#include <koi/WeakPtr.h>

namespace Koi {

/// What an attribute is: fixed at construction, made of others or of nothing, a table outside of
/// the entity, one value or reference, the only child of its attribute, a keyed collection of
/// values or references, one of children, a queue.
enum class AttributeKind : U8 {
  parameter,
  computed,
  table,
  scalar,
  child,
  members,
  children,
  queue
};

/// Set and Del are pointers to the mutators, Most to the function that bounds a value which is
/// stored before it is refused; nullptr_t where there is none.
template< AttributeKind kind_, class E, class CellType, class Set = std::nullptr_t,
          class Del = std::nullptr_t, class Most = std::nullptr_t >
struct Attribute {
  using Owner = E;
  using Cell = std::remove_const_t< CellType >;
  static constexpr AttributeKind kind = kind_;

  char const * name;
  CellType E::*cell;
  Set set;
  Del del;
  Most most;
};

/// A constant, or what a function makes of other attributes; it is only read. Get points to that
/// function, a static one or a member.
template< class E, class Result, class Get >
struct ComputedAttribute {
  using Owner = E;
  using Cell = std::remove_cvref_t< Result >;
  static constexpr AttributeKind kind = AttributeKind::computed;

  char const * name;
  Get get;

  Cell of( E const & entity ) const {
    if constexpr( std::is_member_pointer_v< Get > )
      return ( entity.*get )();
    else
      return get();
  }
};

/// A table in shared memory.
template< class E, class Table >
struct TableAttribute {
  using Owner = E;
  using Cell = Table;
  static constexpr AttributeKind kind = AttributeKind::table;

  char const * name;
  Table E::*cell;
};
/// How this process takes part in it, which is only read.
template< class E, class Table >
struct TableControlAttribute {
  using Owner = E;
  using Cell = String8;
  static constexpr AttributeKind kind = AttributeKind::computed;

  char const * name;
  Table E::*cell;

  String8 of( E const & entity ) const { return ( entity.*cell ).koiControl(); }
};

/// How a callback or a mutator takes a key: numbers, bool and enumerators as they are.
template< class Key >
using Argument =
    std::conditional_t< std::is_arithmetic_v< Key > || std::is_enum_v< Key >, Key, Key const & >;

template< class C >
constexpr AttributeKind membersKind = AttributeKind::members;
template< class Tag, class K, class T >
constexpr AttributeKind membersKind< HashMap< Tag, K, Owned< T > > > = AttributeKind::children;
template< class Tag, class K, class T >
constexpr AttributeKind membersKind< RbTreeMap< Tag, K, Owned< T > > > = AttributeKind::children;
template< class Tag, class K, class V >
constexpr AttributeKind membersKind< LinkQueue< Tag, K, V > > = AttributeKind::queue;

/// A constructor parameter.
template< class E, class Cell >
constexpr auto attribute( char const * name, Cell E::*cell ) {
  return Attribute< AttributeKind::parameter, E, Cell >{ name, cell, {}, {}, {} };
}
/// What is made of other attributes.
template< class E, class Result >
constexpr auto computed( char const * name, Result ( E::*get )() const ) {
  return ComputedAttribute< E, Result, Result ( E::* )() const >{ name, get };
}
/// A constant.
template< class E, class Result >
constexpr auto constant( char const * name, Result ( *get )() ) {
  return ComputedAttribute< E, Result, Result ( * )() >{ name, get };
}
/// A table, and how it is taken part in.
template< class E, class Table >
constexpr auto table( char const * name, Table E::*cell ) {
  return TableAttribute< E, Table >{ name, cell };
}
template< class E, class Table >
constexpr auto tableControl( char const * name, Table E::*cell ) {
  return TableControlAttribute< E, Table >{ name, cell };
}
/// A scalar.
template< class E, class Cell, class V >
constexpr auto attribute( char const * name, Cell E::*cell, void ( E::*set )( V ) ) {
  return Attribute< AttributeKind::scalar, E, Cell, void ( E::* )( V ) >{ name, cell, set, {}, {} };
}
/// A number that is stored before it is refused, when it is more than most().
template< class E, class Cell, class V, class Number >
constexpr auto attribute( char const * name, Cell E::*cell, void ( E::*set )( V ),
                          Number ( *most )() ) {
  return Attribute< AttributeKind::scalar, E, Cell, void ( E::* )( V ), std::nullptr_t,
                    Number ( * )() >{ name, cell, set, {}, most };
}
/// The only child of its attribute.
template< class E, class T, class... Args >
constexpr auto attribute( char const * name, Owned< T > E::*cell, Ptr< T > ( E::*set )( Args... ),
                          Ptr< T > ( E::*del )() ) {
  return Attribute< AttributeKind::child, E, Owned< T >, Ptr< T > ( E::* )( Args... ),
                    Ptr< T > ( E::* )() >{ name, cell, set, del, {} };
}
/// A keyed collection or queue; `set` takes the key and what makes the member, or the member alone.
template< class E, class C, class Result, class... Args >
constexpr auto attribute(
    char const * name, C E::*cell, Result ( E::*set )( Args... ),
    std::type_identity_t< typename C::Given ( E::* )( Argument< typename C::Key > ) > del ) {
  using Del = decltype( del );
  return Attribute< membersKind< C >, E, C, Result ( E::* )( Args... ), Del >{
      name, cell, set, del, {} };
}

}  // namespace Koi
