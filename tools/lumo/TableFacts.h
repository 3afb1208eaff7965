// TableFacts.h: which tables there are, and what the headers of their files say, read beside their
// writers. Nothing is locked, and nothing written.
#pragma once

#include <array>
#include <string>
#include <vector>

#include <mem/Rova.h>
#include <mem/TableDir.h>
#include <quill/BucketTable.h>
#include <quill/ConquerTable.h>
#include <quill/QuillException.h>
#include <quill/SlotTable.h>
#include <quill/TableType.h>

#include "Output.h"

namespace Lumo {

struct TableNames {
  std::vector< std::string > names;   ///< by name: "counters/vlanIntf"
  std::vector< std::string > faults;  ///< "cannot open <path>: <why>"
};

/// All tables below the root: the directories that have a slot file. Raises Failure when the root
/// cannot be read.
TableNames tablesBelow( Mem::RootPath const & root );

struct TableFacts {
  std::string name;
  Quill::SlotTable::Header slots;
  Quill::BucketTable::Header buckets;
  std::array< Quill::ConquerTable::Header, 2 > queues;
  Koi::U64 lastSequence = 0;
  /// In bytes: slots, buckets, the two queues. Of one that is not there 0.
  std::array< Koi::U64, 4 > sizes{};
  Koi::U32 rootKindle = 0;
  std::string fault;  ///< the first thing for which a header is not believed

  Quill::ConquerTable::Header const & queue() const { return queues[queues[0].currentTable & 1]; }
  Koi::U64 bytes() const { return sizes[0] + sizes[1] + sizes[2] + sizes[3]; }
};

/// The names of a table's files, in the order of their sizes above.
inline constexpr std::array< char const *, 4 > tableFiles{
    Quill::SlotTable::fileName, Quill::BucketTable::fileName, Quill::ConquerTable::fileName[0],
    Quill::ConquerTable::fileName[1] };

/// Raises Failure "there is no table 'mca'; did you mean mac?", and for what cannot be read.
void requireTable( Mem::RootPath const & root, std::string const & name );

/// Raises Rova::MemoryResourceException.
TableFacts factsOf( Mem::RootPath const & root, std::string const & name );

/// The type of a table's values. Raises Failure "table <name> holds <type>, which this build does
/// not know".
Quill::TableType const & knownType( TableFacts const & facts );

/// What `work` gives; what the engine refuses in it is a Failure of that table.
template< class Work >
auto onTable( std::string const & name, Work work ) {
  try {
    return work();
  } catch( Rova::CorruptionDetectedException const & e ) {
    throw Failure( corrupt, name + ": corrupt: " + e.what() );
  } catch( Rova::MemoryResourceException const & e ) {
    throw Failure( unreachable, e.what() );
  } catch( Quill::ReaderStarvedException const & e ) {
    throw Failure( unreachable, name + ": " + e.what() );
  }
}

}  // namespace Lumo
