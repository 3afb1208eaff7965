// CtorArguments.h: how wrapped arguments become those of a constructor or a mutator. Included only
// where types are registered.
#pragma once

#include <string>

#include <koi/Exception.h>
#include <koi/GenericEntity.h>
#include <koi/Value.h>

namespace Koi {

/// Raises ArgumentException "<what> takes <n> arguments, not <m>".
KOI_PUBLIC void requireCount( std::string const & what, CtorArgs const & args, std::size_t count );

/// Raises ArgumentException "<what>: argument <n> must be a <type>, not <its type or null>".
[[noreturn]] KOI_PUBLIC void throwOtherArgument( std::string const & what, CtorArgs const & args,
                                                 std::size_t index, char const * type );

/// One argument out of the wrapped ones. Raises ArgumentException as above.
template< class T >
struct ArgumentOf {
  static T const & from( std::string const & what, CtorArgs const & args, std::size_t index ) {
    T const * const v = args[index] ? valueIn< T >( *args[index] ) : nullptr;
    if( !v )
      throwOtherArgument( what, args, index, typeNodeOf< T >()->name );
    return *v;
  }
};
/// A reference: an entity, or null for none.
template< class E >
struct ArgumentOf< Ptr< E > > {
  static Ptr< E > from( std::string const & what, CtorArgs const & args, std::size_t index ) {
    if( !args[index] )
      return nullptr;
    auto * const entity = dynamic_cast< E * >( entityIn( *args[index] ).ptr() );
    if( !entity )
      throwOtherArgument( what, args, index, E::_koiType.name );
    return entity;
  }
};

/// Any entity.
template<>
inline Ptr< Entity > ArgumentOf< Ptr< Entity > >::from( std::string const & what,
                                                        CtorArgs const & args, std::size_t index ) {
  Ptr< Entity > const entity = args[index] ? entityIn( *args[index] ) : nullptr;
  if( args[index] && !entity )
    throwOtherArgument( what, args, index, "Koi::Entity" );
  return entity;
}

}  // namespace Koi
