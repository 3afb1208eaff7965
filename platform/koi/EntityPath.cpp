#include <koi/EntityPath.h>

#include <koi/AttributeAccess.h>
#include <koi/Entity.h>

namespace Koi {
namespace {

std::string unescapedName( std::string_view text ) {
  std::string name;
  while( !text.empty() ) {
    bool const isSlash = text.starts_with( "%2F" ), isPercent = text.starts_with( "%25" );
    name += isSlash ? '/' : isPercent ? '%' : text.front();
    text.remove_prefix( isSlash || isPercent ? 3 : 1 );
  }
  return name;
}

}  // namespace

std::string escapedName( std::string_view name ) {
  std::string text;
  for( char const byte : name )
    if( byte == '/' )
      text += "%2F";
    else if( byte == '%' )
      text += "%25";
    else
      text += byte;
  return text;
}

std::string nextName( std::string_view & path ) {
  std::string_view const step = path.substr( 0, path.find( '/' ) );
  path.remove_prefix( std::min( path.size(), step.size() + 1 ) );
  return unescapedName( step );
}

Entity & topOf( Entity & entity ) {
  Entity * top = &entity;
  while( top->parent() )
    top = top->parent();
  return *top;
}

std::optional< std::string > pathBelow( Entity const & top, Entity const & entity ) {
  std::string path;
  for( Entity const * at = &entity; at != &top; at = at->parent() ) {
    if( !at->parent() )
      return std::nullopt;
    KoiAttribute const & attribute = at->parent()->koiType()->fields[at->koiParentAttribute()];
    std::string step = attribute.name;
    if( attribute.access->kind == AttributeKind::children )
      step += "/" + escapedName( at->name().view() );
    path = path.empty() ? step : step + "/" + path;
  }
  return path;
}

Entity * entityAt( Entity & top, std::string_view path ) {
  Entity * at = &top;
  while( at && !path.empty() ) {
    std::string const name = nextName( path );
    Entity * below = nullptr;
    for( KoiAttribute const & attribute : at->koiType()->fields )
      if( attribute.name == name && attribute.access->hasChildren() ) {
        bool const keyed = attribute.access->kind == AttributeKind::children;
        below = attribute.access->childOf( *at, keyed ? nextName( path ) : std::string() );
        break;
      }
    at = below;
  }
  return at;
}

Entity * entityNamed( Entity & top, std::string_view names ) {
  Entity * at = &top;
  while( at && !names.empty() ) {
    std::string const name = nextName( names );
    Entity * below = nullptr;
    for( KoiAttribute const & attribute : at->koiType()->fields )
      if( attribute.access->hasChildren() && !below )
        if( Entity * const child = attribute.access->childOf( *at, name );
            child && child->name().view() == name )
          below = child;
    at = below;
  }
  return at;
}

}  // namespace Koi
