#include <interface/IntfCounterSearch.h>

#include <string>

#include <coredb/Tree.h>
#include <koi/EntityPath.h>
#include <ntrace/Ntrace.h>
#include <wirex/GenericIntfId.h>

namespace Interface {
namespace {

char const * kindOf( Wirex::IntfId const & intfId ) {
  using Id = Wirex::GenericIntfId;
  Id const id( intfId );
  bool const isSubIntf = id.part( 0 ) != 0;
  switch( id.typeId() ) {
    case Id::ethernetType:
      return isSubIntf ? "subintf" : "eth";
    case Id::portChannelType:
      return isSubIntf ? "subintf" : "lag";
    case Id::peerEthernetType:
    case Id::peerPortChannelType:
      return "mlag";
    case Id::managementType:
      return "mgmt";
    case Id::vlanType:
      return "vlan";
    case Id::vxlanType:
      return "vxlan";
    default:
      return "intf";
  }
}

/// The entity as one of that type; null, and traced, when it is none.
template< class E >
Koi::Ptr< E > as( Koi::Entity & entity ) {
  auto * const it = dynamic_cast< E * >( &entity );
  if( !it )
    Ntrace::standard().trace( 5, entity.fullName(), ": dynamic_cast to ", E::koiName,
                              " failed; typeid is ", entity.koiType()->name );
  return it;
}

/// What stands at the path that the directory says, or that is made of the kind.
Koi::Ptr< IntfCounterDirDirBase > counterDirOf( IntfStatusDirBase & dir,
                                                Wirex::IntfId const & intfId ) {
  Koi::String8 path = dir.counterDirPath();
  Koi::Ptr< Koi::Entity > top = Coredb::globalDirectory();
  if( path.empty() ) {
    path = Koi::String8( std::string( "counter/" ) + kindOf( intfId ) );
    Ntrace::standard().trace( 7, "Constructed counterDir path ", path, " for ",
                              intfId.stringValue() );
    top = getParentEntityByName( dir, Koi::String8( "Coredb" ) );
    if( !top )
      return nullptr;
  }
  Koi::String8 const fullName = dir.fullName();
  Ntrace::standard().trace( 7, fullName, " has counterDirPath ", path );
  std::string_view const names = path.view();
  Koi::Ptr< Koi::Entity > const found =
      Koi::entityNamed( *top, names.substr( names.starts_with( '/' ) ) );
  bool const isQuill = isQuillPath( path );
  if( !found ) {
    Ntrace::standard().trace(
        5, fullName, isQuill ? " Quill counterDir path not found" : ": ->counterDir() is null" );
    return nullptr;
  }
  auto const counterDir = as< IntfCounterDirDirBase >( *found );
  if( !counterDir && isQuill )
    Ntrace::standard().trace( 5, fullName, " Quill counterDir is null" );
  return counterDir;
}

}  // namespace

Koi::Entity const * getParentEntityByName( Koi::Entity const & entity, Koi::String8 const & name ) {
  if( name.empty() )
    return nullptr;
  Koi::Entity const * at = &entity;
  for( unsigned level = 0; level < parentLevelMax; ++level, at = at->parent() ) {
    if( at->name().view() == name.view() )
      return at;
    if( !at->parent() ) {
      Ntrace::standard().trace( 5, entity.fullName(), ": ->parent() at level ", level, " is null" );
      return nullptr;
    }
  }
  Ntrace::standard().trace( 5, entity.fullName(), ": no ", name, " in ", parentLevelMax,
                            " levels" );
  return nullptr;
}

Koi::Entity * getParentEntityByName( Koi::Entity & entity, Koi::String8 const & name ) {
  return const_cast< Koi::Entity * >( getParentEntityByName( std::as_const( entity ), name ) );
}

bool isQuillPath( Koi::String8 const & counterDirPath ) {
  return counterDirPath.view().find( "Quill" ) != std::string_view::npos;
}

Koi::Ptr< IntfCounter > counterCommon( EthIntfStatus const & status ) {
  if( !status.parent() ) {
    Ntrace::standard().trace( 5, status.fullName(), ": ->parent() is null" );
    return nullptr;
  }
  auto const dir = as< IntfStatusDirBase >( *status.parent() );
  if( !dir )
    return nullptr;
  Wirex::IntfId const intfId = status.intfId();
  Koi::Ptr< IntfCounterDirDirBase > const held = dir->counterDir();
  auto const all = held ? held : counterDirOf( *dir, intfId );
  if( !all )
    return nullptr;
  auto const one = all->doGetIntfCounterDir( intfId );
  if( !one ) {
    Ntrace::standard().trace( 5, all->fullName(), ": ->doGetIntfCounterDir(", intfId.stringValue(),
                              ") returned null" );
    return nullptr;
  }
  auto const counter = one->doGetIntfCounter( Koi::Name( "current" ) );
  if( !counter )
    Ntrace::standard().trace( 5, one->fullName(), ": ->doGetIntfCounter(current) returned null" );
  return counter;
}

}  // namespace Interface
