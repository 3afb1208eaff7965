// EntityPath.h: where an entity stands below another one, as text that another process can follow:
// "fdbStatus/1/host/2", the names of attribute and child in turns, '/' and '%' in them escaped as
// in full names. A child that is the only one of its attribute has the attribute's name alone.
//
// Used on the entities' thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <koi/Export.h>

namespace Koi {

class Entity;

/// '/' becomes %2F and '%' becomes %25.
KOI_PUBLIC std::string escapedName( std::string_view name );

/// The topmost of an entity's parents: itself, when it has none.
KOI_PUBLIC Entity & topOf( Entity & entity );

/// The way from `top` down to the entity, empty for `top` itself; nothing when it is not below.
KOI_PUBLIC std::optional< std::string > pathBelow( Entity const & top, Entity const & entity );

/// What stands at that path; null when nothing does.
KOI_PUBLIC Entity * entityAt( Entity & top, std::string_view path );

/// What has that place in the tree by its name: the part of its full name that stands behind that
/// of `top`. Null when nothing has.
KOI_PUBLIC Entity * entityNamed( Entity & top, std::string_view names );

/// A path's first name, unescaped; the path goes on behind it.
KOI_PUBLIC std::string nextName( std::string_view & path );

}  // namespace Koi
