#include <quill/EntityManager.h>

#include <algorithm>

#include <koi/AttributeAccess.h>
#include <koi/Exception.h>

namespace KoiQuill {
namespace {

[[noreturn]] void refuse( std::string const & path, std::string const & why ) {
  throw Koi::ArgumentException( path + ": " + why );
}

std::vector< KoiQuillMapBase * > tablesOf( Koi::Entity & entity ) {
  std::vector< KoiQuillMapBase * > tables;
  for( auto const & attribute : entity.koiType()->fields )
    if( auto * const table =
            dynamic_cast< KoiQuillMapBase * >( attribute.access->table( entity ) ) )
      tables.push_back( table );
  return tables;
}

}  // namespace

EntityManager::EntityManager( Koi::Activity * activity, Mem::RootPath root )
    : activity_( activity ), root_( std::move( root ) ) {}

Koi::Ptr< Koi::Entity > EntityManager::doMount( std::string const & path,
                                                std::string const & typeName,
                                                MountInfo const & info ) {
  if( mounted_.contains( path ) )
    throw Koi::ArgumentException( path + " is mounted already" );
  Koi::KoiType const * const type = Koi::typeNode( typeName );
  if( type->kind != Koi::KoiType::entity )
    refuse( path, typeName + " is no entity" );
  Koi::Name const name( path.substr( path.rfind( '/' ) + 1 ) );
  Koi::Ptr< Koi::Entity > const entity =
      Koi::entityIn( *type->genericIfFromCtorArgs( type, { Koi::genericIf( name ) }, nullptr ) );
  init( *entity, path, info );
  mounted_.emplace( path, entity );
  return entity;
}

void EntityManager::init( Koi::Entity & entity, std::string const & path,
                          MountInfo const & info ) const {
  std::string const type = entity.koiType()->name;
  auto const tables = tablesOf( entity );
  if( tables.empty() )
    refuse( path, type + " has no table in shared memory" );
  for( auto const & collection : info.collections )
    if( std::ranges::none_of( tables,
                              [&]( auto * table ) { return collection.name == table->name(); } ) )
      refuse( path, type + " has no table " + collection.name );
  for( auto * const table : tables ) {
    auto const collection =
        std::ranges::find( info.collections, table->name(), &CollectionInfo::name );
    bool const isGiven = collection != info.collections.end();
    if( info.mode == Quill::QuillType::writer && !isGiven )
      refuse( path, std::string( "no size is given for the table " ) + table->name() );
    Quill::QuillParameters parameters;
    parameters.activity = activity_;
    parameters.root = root_;
    parameters.classType = type;
    parameters.fixedCapacity = isGiven && collection->fixedCapacity;
    table->init( info.mode, info.synchronous, isGiven ? collection->size : 1, parameters,
                 path + "/" + table->name() );
  }
}

Koi::Ptr< Koi::Entity > EntityManager::getEntity( std::string const & path ) const {
  auto const at = mounted_.find( path );
  return at == mounted_.end() ? nullptr : at->second;
}

void EntityManager::unmount( std::string const & path ) { mounted_.erase( path ); }

}  // namespace KoiQuill
