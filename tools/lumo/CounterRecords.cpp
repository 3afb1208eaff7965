#include "CounterRecords.h"

#include <quill/QuillReader.h>

#include "TableFacts.h"

namespace Lumo {

using Quill::Bridging::VlanCounter;

CounterRecords counterRecordsOf( Mem::RootPath const & root, std::string const & table ) {
  requireTable( root, table );
  return onTable( table, [&] {
    auto const facts = factsOf( root, table );
    auto const holds = facts.slots.valueTypeName();
    if( facts.fault.empty() && holds != VlanCounter::koiName )
      throw Failure( unreachable, "table " + table + " holds " + holds + ", no counters of VLANs" );
    Quill::QuillReader< VlanCounter > reader( root, table );
    CounterRecords records;
    for( auto record = reader.first(); record; record = reader.next( record->key() ) )
      records.insert_or_assign( record->key(), *record );
    return records;
  } );
}

}  // namespace Lumo
