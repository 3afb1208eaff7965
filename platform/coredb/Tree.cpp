#include <coredb/Tree.h>

#include <koi/EntityPath.h>

namespace Coredb {
namespace {

std::string_view withoutSlash( std::string_view path ) {
  return path.starts_with( '/' ) ? path.substr( 1 ) : path;
}

}  // namespace

Koi::Ptr< Dir > globalDirectory() {
  // Never destroyed: what stands in it may need what is destroyed before it when a program ends.
  static auto const * const directory = new Koi::Ptr< Dir >( dirFactory( Koi::Name() ) );
  return *directory;
}

Koi::Ptr< Koi::Entity > newEntity( Dir & directory, Koi::Name const & name,
                                   Koi::String8 const & type, Koi::CtorArgs const & args ) {
  Koi::KoiType const & node = *Koi::typeNode( type );
  Koi::Ptr< Koi::Entity > const fresh = node.newEntity( nullptr, name, args );
  Koi::Ptr< Koi::Entity > const there = directory.entity( name );
  bool const isAlike = there && there->koiType() == &node && node.areBuiltAlike( *there, *fresh );
  return directory.entityIs( name, isAlike ? there : fresh );
}

Koi::Ptr< Dir > systemDirectory( Koi::Name const & sysname ) {
  if( sysname.empty() )
    Koi::throwRangeException( "a system without a name not allowed" );
  return directoryIs( globalDirectory(), Koi::escapedName( sysname.view() ) + "/Coredb" );
}

Koi::Ptr< Dir > directoryIs( Koi::Ptr< Dir > const & top, std::string_view path ) {
  Koi::Ptr< Dir > at = top;
  for( path = withoutSlash( path ); !path.empty(); ) {
    Koi::Name const name( Koi::nextName( path ) );
    Koi::Ptr< Koi::Entity > const there = at->entity( name );
    Koi::Ptr< Dir > const below =
        there ? Koi::Ptr< Dir >( dynamic_cast< Dir * >( there.ptr() ) ) : dirFactory( name );
    if( !below )
      throw Koi::NameInUseException( std::string( there->fullName() ) + " is no directory" );
    at->entityIs( name, below );
    at = below;
  }
  return at;
}

Koi::Ptr< Koi::Entity > entityAt( std::string_view fullName ) {
  return Koi::entityNamed( *globalDirectory(), withoutSlash( fullName ) );
}

}  // namespace Coredb
