// EntityRegistration.h: what a module's source says to make its entities and reactors known. koigen
// writes these lines.
#pragma once

#include <array>

#include <koi/AttributeLog.h>
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
constexpr auto attributeRows = attributesOf< E >();

/// The type of a collection's keys; none for other attributes.
template< class Cell >
constexpr KoiType const * keyTypeOf() {
  if constexpr( requires { typename Cell::Key; } )
    return typeNodeOf< typename Cell::Key >();
  else
    return nullptr;
}

template< class E, std::size_t index >
constexpr KoiAttribute attributeAt() {
  auto const & row = std::get< index >( attributeRows< E > );
  using Cell = typename std::remove_cvref_t< decltype( row ) >::Cell;
  return { row.name, AttributeType< Cell >::node, false, keyTypeOf< Cell >(),
           &attributeAccess< attributeRows< E >, index > };
}
template< class E >
constexpr auto attributeList = []< std::size_t... i >( std::index_sequence< i... > ) {
  return std::array< KoiAttribute, sizeof...( i ) >{ attributeAt< E, i >()... };
}
( std::make_index_sequence< std::tuple_size_v< decltype( attributesOf< E >() ) > >() );

/// How an entity is built by who knows only its type's name.
template< class E >
class EntityMaker {
  using Arguments = ChildArguments< E >;

 public:
  static Ptr< Entity > fromLog( Name const & name, FlowIn & flow ) {
    typename Arguments::All arguments{};
    Ptr< E > entity;
    if( Arguments::template read< 0 >( flow, arguments ) == FlowIn::here )
      flow.change( [&] { entity = make( arguments ); } );
    if( entity )
      entity->nameIsFromBackup( name );
    return entity;
  }
  static void writeArguments( Entity const & entity, FlowOut & flow ) {
    Arguments::template write< 0 >( static_cast< E const & >( entity ), flow );
  }

 private:
  static Ptr< E > make( typename Arguments::All const & arguments ) {
    return std::apply( []( auto const &... args ) { return Ptr< E >( new E( args... ) ); },
                       arguments );
  }
};

/// The type node of an entity type.
template< class E >
constexpr KoiType entityNode() {
  KoiType node{ .name = E::koiName,
                .size = sizeof( E ),
                .kind = KoiType::entity,
                .fields = attributeList< E > };
  node.newEntityForAttrLog = EntityMaker< E >::fromLog;
  node.writeCtorArgs = EntityMaker< E >::writeArguments;
  return node;
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
