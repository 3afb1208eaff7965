#include <koi/KoiType.h>

#include <algorithm>
#include <map>
#include <string_view>

#include <koi/Assert.h>
#include <koi/Exception.h>
#include <koi/GenericEntity.h>
#include <koi/Value.h>

namespace Koi {
namespace {

using Registry = std::map< std::string_view, KoiType const * >;

/// Made by whichever module registers first: the order of initialisers between modules is open.
Registry & registry() {
  static Registry types;
  return types;
}

}  // namespace

void typeNodeIs( KoiType const * node ) {
  auto const [it, fresh] = registry().try_emplace( node->name, node );
  bool const sameNode = fresh || it->second == node;
  KOI_ASSERT( sameNode );
}

KoiType const * typeNode( String8 const & name ) {
  auto const it = registry().find( name.view() );
  if( it == registry().end() )
    throw UnknownTypeException( "type '" + std::string( name.view() ) + "' is not registered" );
  return it->second;
}

std::vector< KoiType const * > typeNodes() {
  std::vector< KoiType const * > nodes;
  for( auto const & [name, node] : registry() )
    nodes.push_back( node );
  return nodes;
}

Ptr< Entity > KoiType::newEntity( Entity * parent, Name const & as, CtorArgs args ) const {
  if( kind != entity )
    throw ArgumentException( std::string( name ) + " is no entity type" );
  auto const at = std::ranges::find( parameters, std::string_view( "_name" ), &KoiParameter::name );
  if( at != parameters.end() &&
      static_cast< std::size_t >( at - parameters.begin() ) <= args.size() )
    args.insert( args.begin() + ( at - parameters.begin() ), genericIf( as ) );
  Ptr< Entity > const fresh = entityIn( *genericIfFromCtorArgs( this, args, nullptr ) );
  fresh->nameIsFromBackup( as );
  if( parent )
    fresh->koiParentIs( parent );
  return fresh;
}

}  // namespace Koi
