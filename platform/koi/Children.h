// Children.h: how an entity makes the children that it owns, and a reactor its inner reactors: once
// for a key, and never otherwise than they are.
//
// Used on the entity's thread, by the mutators of entities and reactors.
#pragma once

#include <string>
#include <tuple>
#include <utility>

#include <koi/Collections.h>

namespace Koi {

class Entity;

/// The name of an entity that is called after its key: the key's canonical text.
template< class Key >
Name nameOf( Key const & key ) {
  return Name( valueToStrep( key ) );
}

/// One parameter of a constructor: its name as messages give it, how it is read back, and whether
/// it only says what an attribute is at first.
template< class E, class Given >
struct ConstructorParameter {
  char const * name;
  Given ( E::*get )() const;
  bool isInitial;
};
template< class E, class Given >
constexpr ConstructorParameter< E, Given > parameter( char const * name,
                                                      Given ( E::*get )() const ) {
  return { name, get, false };
}
template< class E, class Given >
constexpr ConstructorParameter< E, Given > initial( char const * name, Given ( E::*get )() const ) {
  return { name, get, true };
}

/// The canonical text of a reference: an entity's full name, a reactor's type, or "null".
template< class T >
String8 valueToStrep( Ptr< T > const & object ) {
  if( !object )
    return "null";
  if constexpr( requires { object->koiType(); } )
    return object->fullName();
  else
    return object->fwkType()->name;
}

/// How the refusal below begins.
template< class Child >
std::string reinstantiating( Child const & child ) {
  if constexpr( requires { child.koiType(); } )
    return "Reinstantiating the entity with name " + std::string( child.name().view() );
  else
    return "Reinstantiating the pointer interface";
}

/// Raises NameInUseException when an argument differs from what the child was built with, but for
/// those that may have changed since:
/// "Reinstantiating the entity with name <name> where constructor parameter attribute <parameter>
/// has a different value of <new value> than the current value of <current value> not allowed"; of
/// a reactor "Reinstantiating the pointer interface where ...".
template< class Child, class... Args >
void refuseOtherArguments( Child const & child, Args const &... args ) {
  auto const one = [&]( auto const & parameter, auto const & arg ) {
    if( parameter.isInitial )
      return;
    auto const current = ( child.*parameter.get )();
    std::remove_const_t< decltype( current ) > const asked( arg );
    if( !same( current, asked ) )
      throw NameInUseException(
          reinstantiating( child ) + " where constructor parameter attribute " + parameter.name +
          " has a different value of " + std::string( valueToStrep( asked ) ) +
          " than the current value of " + std::string( valueToStrep( current ) ) + " not allowed" );
  };
  std::apply( [&]( auto const &... parameters ) { ( one( parameters, args ), ... ); },
              Child::koiParameters() );
}

/// Requires that `owner` may take `child` as the one of that name, where `there` is now. Raises
/// RangeException "null child of <owner> not allowed", "a child of <owner> without a name not
/// allowed", "<entity> below itself not allowed", "more than 100 levels below <top> not allowed";
/// NameInUseException "<full name> is another entity", "<full name> has a place in a tree".
KOI_PUBLIC void requireAdoptable( Entity const & owner, Name const & name, Entity const * child,
                                  Entity const * there );

/// A child of that key, of which there is none, made by the change of that stamp. Raises
/// RangeException for a key outside its type's range.
template< class C, class... Args >
typename C::Given newChild( C & children, Stamp stamp, typename C::Key const & k,
                            Args const &... args ) {
  checkRange( k );
  typename C::Given const fresh( new typename CellOf< typename C::Cell >::Child( k, args... ) );
  children.koiSet( k, fresh, stamp );
  return fresh;
}

}  // namespace Koi
