#include "CounterRecords.h"

#include <filesystem>

#include <koi/EntityPath.h>
#include <quill/QuillReader.h>

#include "TableFacts.h"

namespace Lumo {
namespace {

constexpr std::string_view beforeSysname = "counters/vlanIntf/", behindSysname = "/counter";

/// All records of a table of such records, which are counters of `what`.
template< class Record, class Key >
std::map< Key, Record > recordsOf( Mem::RootPath const & root, std::string const & table,
                                   Key ( Record::*keyOf )() const, char const * what ) {
  requireTable( root, table );
  return onTable( table, [&] {
    auto const facts = factsOf( root, table );
    auto const holds = facts.slots.valueTypeName();
    if( facts.fault.empty() && holds != Record::koiName )
      throw Failure( unreachable,
                     "table " + table + " holds " + holds + ", no counters of " + what );
    Quill::QuillReader< Record > reader( root, table );
    std::map< Key, Record > records;
    for( auto record = reader.first(); record; record = reader.next( ( *record.*keyOf )() ) )
      records.insert_or_assign( ( *record.*keyOf )(), *record );
    return records;
  } );
}

}  // namespace

CounterRecords counterRecordsOf( Mem::RootPath const & root, std::string const & table ) {
  return recordsOf( root, table, &Quill::Bridging::VlanCounter::key, "VLANs" );
}

IntfCounterRecords intfCounterRecordsOf( Mem::RootPath const & root, Koi::Name const & sysname ) {
  std::string const table = std::string( beforeSysname ) + Koi::escapedName( sysname.view() ) +
                            std::string( behindSysname );
  return recordsOf( root, table, &Interface::VlanIntfCounterQuill::intfId, "VLAN interfaces" );
}

std::vector< Koi::Name > systemsCounted( Mem::RootPath const & root ) {
  std::vector< Koi::Name > systems;
  std::error_code none;
  if( !std::filesystem::is_directory( root.path(), none ) )
    return systems;
  for( std::string_view name : tablesBelow( root ).names ) {
    if( !name.starts_with( beforeSysname ) || !name.ends_with( behindSysname ) )
      continue;
    name.remove_prefix( beforeSysname.size() );
    std::string const sysname = Koi::nextName( name );
    if( "/" + std::string( name ) == behindSysname )
      systems.emplace_back( sysname );
  }
  return systems;
}

}  // namespace Lumo
