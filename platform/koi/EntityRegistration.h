// EntityRegistration.h: what a module's source says to make its entities and reactors known. koigen
// writes these lines.
#pragma once

#include <array>

#include <koi/AttributeLog.h>
#include <koi/Reactor.h>
#include <koi/TearDown.h>

namespace Koi {

/// The type of what an attribute holds, or that of what it refers to, and how.
template< class Cell >
struct AttributeType {
  static constexpr KoiType const * node = nullptr;
  static constexpr KoiType const * target = nullptr;
  static constexpr bool inKeyOrder = false;
  static constexpr bool isWeak = false;
};
template< Value T >
struct AttributeType< T > : AttributeType< void > {
  static constexpr KoiType const * node = typeNodeOf< T >();
};
template< class Child >
struct AttributeType< Owned< Child > > : AttributeType< void > {
  static constexpr KoiType const * node = &Child::_koiType;
};
/// Children of any type.
template<>
struct AttributeType< Owned< Entity > > : AttributeType< void > {};
template< class T >
struct AttributeType< Ptr< T > > : AttributeType< void > {
  static constexpr KoiType const * target = &T::_koiType;
};
template< class T >
struct AttributeType< WeakPtr< T > > : AttributeType< Ptr< T > > {
  static constexpr bool isWeak = true;
};
template< class Tag, class K, class V >
struct AttributeType< HashMap< Tag, K, V > > : AttributeType< V > {};
template< class Tag, class K, class V >
struct AttributeType< RbTreeMap< Tag, K, V > > : AttributeType< V > {
  static constexpr bool inKeyOrder = true;
};
template< class Tag, class K, class V >
struct AttributeType< LinkQueue< Tag, K, V > > : AttributeType< V > {};
/// Of a table, the type of its entries.
template< class Table >
requires requires { typename Table::TableValue; }
struct AttributeType< Table > : AttributeType< typename Table::TableValue > {};

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
  using R = Row< attributeRows< E >, index >;
  using Type = AttributeType< typename R::Cell >;
  return { .name = R::name.name,
           .type = Type::node,
           .key = keyTypeOf< typename R::Cell >(),
           .access = &attributeAccess< attributeRows< E >, index >,
           .target = Type::target,
           .keyInValue = R::isKeyInValue(),
           .inKeyOrder = Type::inKeyOrder,
           .isWeak = Type::isWeak,
           .isConstant = R::isConstant() };
}
template< class E >
constexpr auto attributeList = []< std::size_t... i >( std::index_sequence< i... > ) {
  return std::array< KoiAttribute, sizeof...( i ) >{ attributeAt< E, i >()... };
}
( std::make_index_sequence< std::tuple_size_v< decltype( attributesOf< E >() ) > >() );

/// The parameters of an entity's constructor.
template< class Of, class Given >
constexpr KoiParameter parameterNode( ConstructorParameter< Of, Given > const & parameter ) {
  using Type = AttributeType< std::remove_cvref_t< Given > >;
  return { parameter.name, Type::node, Type::target, parameter.isInitial };
}
template< class E >
constexpr auto parameterNodes = std::apply(
    []( auto const &... parameter ) { return std::array{ parameterNode( parameter )... }; },
    E::koiParameters() );

/// How an entity is built and observed by who knows only its type's name. GenericIfNotifiee_ is
/// what observes it.
template< class E, class GenericIfNotifiee_ >
class EntityMaker {
  using Arguments = ChildArguments< E >;

 public:
  static GenericIfPtr fromCtorArgs( KoiType const * type, CtorArgs const & args,
                                    bool * notHandled ) {
    if( type != &E::_koiType ) {
      if( notHandled )
        *notHandled = true;
      return nullptr;
    }
    return genericIf( make( Arguments::of( E::koiName, args ) ) );
  }
  static std::unique_ptr< GenericNotifiee > observe( Entity const & entity,
                                                     GenericNotifieeTold told ) {
    return std::make_unique< GenericIfNotifiee_ >( static_cast< E const & >( entity ),
                                                   std::move( told ) );
  }
  static std::optional< Ptr< Entity > > fromLog( Name const & name, FlowIn & flow ) {
    typename Arguments::All arguments{};
    auto const arrival = Arguments::template read< 0 >( flow, arguments );
    if( arrival == FlowIn::notYet )
      return std::nullopt;
    Ptr< E > entity;
    if( arrival == FlowIn::here )
      flow.change( [&] { entity = make( arguments ); } );
    if( entity )
      entity->nameIsFromBackup( name );
    return Ptr< Entity >( entity );
  }
  static bool areAlike( Entity const & a, Entity const & b ) {
    return Arguments::template areAlike< 0 >( static_cast< E const & >( a ),
                                              static_cast< E const & >( b ) );
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
template< class E, class GenericIfNotifiee_ >
constexpr KoiType entityNode() {
  using Maker = EntityMaker< E, GenericIfNotifiee_ >;
  KoiType node{ .name = E::koiName,
                .size = sizeof( E ),
                .kind = KoiType::entity,
                .fields = attributeList< E > };
  node.parameters = parameterNodes< E >;
  node.genericIfFromCtorArgs = Maker::fromCtorArgs;
  node.genericIfAttributeOp = GenericEntityImpl::attributeOp;
  node.genericIfAttributeIterator = GenericEntityImpl::attributeIterator;
  node.genericNotifiee = Maker::observe;
  node.newEntityForAttrLog = Maker::fromLog;
  node.writeCtorArgs = Maker::writeArguments;
  node.areBuiltAlike = Maker::areAlike;
  if( mayHaveReactors< E >() )
    node.endReactors = endReactors< E >;
  return node;
}

/// The type node of a reactor type.
template< class R >
constexpr KoiType reactorNode() {
  return KoiType{ .name = R::koiName, .size = sizeof( R ), .kind = KoiType::reactor };
}

}  // namespace Koi

/// Defines the type node of an entity type, of a reactor type. Scope and T make the entity's name;
/// Scope::_koi_T::GenericIfNotifiee_ is its generic observer.
#define KOI_ENTITY( Scope, T )                      \
  constinit Koi::KoiType const Scope::T::_koiType = \
      Koi::entityNode< Scope::T, Scope::_koi_##T::GenericIfNotifiee_ >();
#define KOI_REACTOR( T ) constinit Koi::KoiType const T::_koiType = Koi::reactorNode< T >();
