#include "TableFacts.h"

#include <algorithm>
#include <filesystem>

#include <koijson/NearestName.h>
#include <mem/Plain.h>
#include <quill/Record.h>

namespace Lumo {
namespace {

namespace fs = std::filesystem;
using namespace Quill;
using Koi::U64;
using Mem::MappedFile;
using Mem::Plain;

Ntrace::Handler const silent( -1, {} );

std::string cannotOpen( fs::path const & path, std::error_code const & why ) {
  return "cannot open " + path.string() + ": " + why.message();
}

void addTables( fs::path const & path, std::string const & name, TableNames & all ) {
  std::error_code why;
  fs::directory_iterator entries( path, why );
  if( why )
    all.faults.push_back( cannotOpen( path, why ) );
  for( auto const end = fs::directory_iterator(); !why && entries != end;
       entries.increment( why ) ) {
    std::string const file = entries->path().filename().string();
    auto const kind = entries->symlink_status( why ).type();
    if( kind == fs::file_type::directory && file[0] != '.' )
      addTables( entries->path(), name.empty() ? file : name + "/" + file, all );
    else if( file == SlotTable::fileName && !name.empty() )
      all.names.push_back( name );
    why.clear();
  }
}

template< class Header >
Header headerOf( MappedFile const & file ) {
  return loadedHeader< Plain, Header >( file.base(), file.size() );
}

/// Reads all once. False when a queue changed meanwhile, or a header cannot be believed.
bool tryRead( Mem::TableDir const & dir, TableFacts & facts ) {
  facts.fault.clear();
  std::array< std::unique_ptr< MappedFile >, 4 > files;
  for( std::size_t i = 0; i < files.size(); ++i ) {
    files[i] = dir.open( tableFiles[i], MappedFile::readOnly );
    facts.sizes[i] = files[i] ? files[i]->size() : 0;
    if( !files[i] && facts.fault.empty() )
      facts.fault = std::string( "there is no file " ) + tableFiles[i];
  }
  auto const believed = [&]( MappedFile const * file, auto & header ) {
    if( !file )
      return;
    header = headerOf< std::remove_reference_t< decltype( header ) > >( *file );
    std::string why;
    if( !header.validate( silent, file->size(), 0, why ) && facts.fault.empty() )
      facts.fault = why;
  };
  believed( files[0].get(), facts.slots );
  believed( files[1].get(), facts.buckets );
  believed( files[2].get(), facts.queues[0] );
  believed( files[3].get(), facts.queues[1] );
  auto const & queue = facts.queue();
  MappedFile const * const file = files[2 + ( facts.queues[0].currentTable & 1 )].get();
  facts.lastSequence = queue.minSeq;
  if( !facts.fault.empty() || queue.currentPos > queue.notifications.ref || queue.currentPos == 0 )
    return facts.fault.empty();
  auto const * const last = reinterpret_cast< U32 const * >(
      file->base() + ConquerTable::notificationAt( queue.currentPos - 1 ) );
  U64 const sequence = U64{ Plain::load( last + 1 ) } << 32 | Plain::load( last );
  facts.lastSequence = std::max( sequence, queue.minSeq );
  return headerOf< ConquerTable::Header >( *file ).notifications == queue.notifications;
}

}  // namespace

TableNames tablesBelow( Mem::RootPath const & root ) {
  TableNames all;
  std::error_code why;
  fs::directory_iterator const entries( root.path(), why );
  if( why )
    throw Failure( unreachable, cannotOpen( root.path(), why ) );
  addTables( root.path(), {}, all );
  std::ranges::sort( all.names );
  return all;
}

void requireTable( Mem::RootPath const & root, std::string const & name ) {
  auto const all = tablesBelow( root );
  if( std::ranges::binary_search( all.names, name ) )
    return;
  // What cannot be looked into may have it.
  for( std::string const & fault : all.faults )
    throw Failure( unreachable, fault );
  std::vector< std::string_view > const names( all.names.begin(), all.names.end() );
  auto const meant = Koi::nearestName( name, names );
  throw Failure( absent,
                 "there is no table '" + name + "'" +
                     ( meant.empty() ? "" : "; did you mean " + std::string( meant ) + "?" ) );
}

TableFacts factsOf( Mem::RootPath const & root, std::string const & name ) {
  TableFacts facts;
  facts.name = name;
  Mem::TableDir const dir( root, name, MappedFile::readOnly );
  facts.rootKindle = dir.kindle();
  // A live file changes between two looks: what fails is looked at again.
  constexpr int attempts = 10;
  for( int i = 0; i < attempts && !tryRead( dir, facts ); ++i )
    continue;
  return facts;
}

Quill::TableType const & knownType( TableFacts const & facts ) {
  std::string const name = facts.slots.valueTypeName();
  auto const * const type = Quill::tableType( name );
  if( !type && !facts.fault.empty() )
    throw Failure( corrupt, facts.name + ": corrupt: " + facts.fault );
  if( !type )
    throw Failure( unreachable,
                   "table " + facts.name + " holds " + name + ", which this build does not know" );
  return *type;
}

}  // namespace Lumo
