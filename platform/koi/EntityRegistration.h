// EntityRegistration.h: what a module's source says to make its entities and reactors known. koigen
// writes these lines.
#pragma once

#include <array>

#include <koi/Reactor.h>

namespace Koi {

/// The type of what an attribute holds; none for a reference, which may be to an entity of any
/// type.
template< class Cell >
struct AttributeType {
  static constexpr KoiType const * node = nullptr;
};
template< Value T >
struct AttributeType< T > {
  static constexpr KoiType const * node = typeNodeOf< T >();
};
template< class Child >
struct AttributeType< Owned< Child > > {
  static constexpr KoiType const * node = &Child::_koiType;
};
template< class Tag, class K, class V >
struct AttributeType< HashMap< Tag, K, V > > : AttributeType< V > {};
template< class Tag, class K, class V >
struct AttributeType< RbTreeMap< Tag, K, V > > : AttributeType< V > {};
template< class Tag, class K, class V >
struct AttributeType< LinkQueue< Tag, K, V > > : AttributeType< V > {};

/// The attribute table of an entity behind that of what it extends.
template< class E >
constexpr auto attributesOf() {
  if constexpr( requires { E::KoiBase::koiAttributes(); } )
    return std::tuple_cat( attributesOf< typename E::KoiBase >(), E::koiAttributes() );
  else
    return E::koiAttributes();
}

template< class E >
constexpr auto attributeList = std::apply(
    []< class... Cell, class... Owner >( Attribute< Owner, Cell > const &... attribute ) {
      return std::array< KoiAttribute, sizeof...( attribute ) >{
          KoiAttribute{ attribute.name, AttributeType< std::remove_const_t< Cell > >::node }... };
    },
    attributesOf< E >() );

/// The type node of an entity type.
template< class E >
constexpr KoiType entityNode() {
  return KoiType{ .name = E::koiName,
                  .size = sizeof( E ),
                  .kind = KoiType::entity,
                  .fields = attributeList< E > };
}

/// The type node of a reactor type.
template< class R >
constexpr KoiType reactorNode() {
  return KoiType{ .name = R::koiName, .size = sizeof( R ), .kind = KoiType::reactor };
}

}  // namespace Koi

/// Defines the type node of an entity type, of a reactor type.
#define KOI_ENTITY( T ) constinit Koi::KoiType const T::_koiType = Koi::entityNode< T >();
#define KOI_REACTOR( T ) constinit Koi::KoiType const T::_koiType = Koi::reactorNode< T >();
