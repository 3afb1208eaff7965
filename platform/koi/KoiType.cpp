#include <koi/KoiType.h>

#include <map>
#include <string_view>

#include <koi/Assert.h>
#include <koi/Exception.h>

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

}  // namespace Koi
