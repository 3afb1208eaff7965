// TableStat.cpp: `lumo table stat`: all that the headers of a table's files say.
#include <cstdio>

#include <nlohmann/json.hpp>

#include "Columns.h"
#include "Subcommands.h"
#include "TableFacts.h"
#include "WriterLocks.h"

namespace Lumo {
namespace {

using Koi::U32;

std::string inHex( U32 number ) {
  char text[11];
  std::snprintf( text, sizeof text, "0x%08x", number );
  return text;
}
std::string slotText( U32 slot ) {
  return slot == Quill::noIndex ? "none" : std::to_string( slot );
}

std::vector< Row > rowsOf( TableFacts const & facts, std::optional< pid_t > writer ) {
  auto const & slots = facts.slots;
  auto const & queue = facts.queue();
  std::string const corral =
      queue.corralStart == 0
          ? "none"
          : std::to_string( queue.corralStart ) + " to " +
                ( queue.corralEnd == 0 ? "now" : std::to_string( queue.corralEnd ) );
  std::vector< Row > rows{
      { "table", facts.name },
      { "value type", slots.valueTypeName() },
      { "class", slots.classTypeName() },
      { "writer", writer ? std::to_string( *writer ) : "-" },
      { "value size", std::to_string( slots.valueSize ) },
      { "slot size", std::to_string( slots.slotSize ) },
      { "entries", std::to_string( slots.occupiedSlots ) },
      { "slots", std::to_string( slots.numSlots.ref ) },
      { "most slots", std::to_string( slots.maxSlots ) },
      { "first free slot", slotText( slots.freeSlots ) },
      { "buckets", std::to_string( facts.buckets.numBuckets.ref ) },
      { "seed", inHex( slots.seed ) },
      { "kindle", inHex( slots.kindle ) },
      { "kindle of the root",
        facts.rootKindle == 0
            ? "none"
            : inHex( facts.rootKindle ) + ( facts.rootKindle == slots.kindle
                                                ? ""
                                                : ": the table is of another generation" ) },
      { "sequences",
        std::to_string( queue.minSeq ) + " to " + std::to_string( facts.lastSequence ) },
      { "current queue", Quill::ConquerTable::fileName[facts.queues[0].currentTable & 1] },
      { "queue capacity", std::to_string( queue.notifications.ref ) },
      { "queue position", std::to_string( queue.currentPos ) },
      { "corral", corral },
      { "readers", std::to_string( queue.numReaders ) } };
  for( std::size_t i = 0; i < tableFiles.size(); ++i )
    rows.push_back(
        { std::string( "bytes of " ) + tableFiles[i], std::to_string( facts.sizes[i] ) } );
  return rows;
}

using Json = nlohmann::ordered_json;

Json jsonOf( TableFacts const & facts, std::optional< pid_t > writer ) {
  auto const & slots = facts.slots;
  auto const & queue = facts.queue();
  Json json{
      { "schema", "lumo.table.stat/1" },
      { "table", facts.name },
      { "valueType", slots.valueTypeName() },
      { "class", slots.classTypeName() },
      { "writer", writer ? Json( *writer ) : Json() },
      { "valueSize", slots.valueSize },
      { "slotSize", slots.slotSize },
      { "entries", slots.occupiedSlots },
      { "slots", slots.numSlots.ref },
      { "mostSlots", slots.maxSlots },
      { "firstFreeSlot", slots.freeSlots == Quill::noIndex ? Json() : Json( slots.freeSlots ) },
      { "buckets", facts.buckets.numBuckets.ref },
      { "seed", slots.seed },
      { "kindle", slots.kindle },
      { "kindleOfRoot", facts.rootKindle },
      { "lowestSequence", queue.minSeq },
      { "lastSequence", facts.lastSequence },
      { "currentQueue", Quill::ConquerTable::fileName[facts.queues[0].currentTable & 1] },
      { "queueCapacity", queue.notifications.ref },
      { "queuePosition", queue.currentPos },
      { "corralStart", queue.corralStart },
      { "corralEnd", queue.corralEnd },
      { "readers", queue.numReaders } };
  for( std::size_t i = 0; i < tableFiles.size(); ++i )
    json["bytes"][tableFiles[i]] = facts.sizes[i];
  if( !facts.fault.empty() )
    json["fault"] = facts.fault;
  return json;
}

class TableStat final : public Subcommand {
 public:
  explicit TableStat( CLI::App & table )
      : Subcommand( table, "stat", "shows what the headers of a table's files say" ) {
    command()
        .add_option( "TABLE", name_, "a table, as counters/vlanIntf" )
        ->required()
        ->type_name( "" );
    command().add_flag( "--json", isJson_, "print one JSON object" );
  }

  Status run( Output & output ) const override {
    requireTable( root(), name_ );
    auto const facts = onTable( name_, [&] { return factsOf( root(), name_ ); } );
    auto const writer = WriterLocks().writerOf( root().path() + "/" + name_ );
    output.write(
        isJson_
            ? jsonOf( facts, writer ).dump( 2, ' ', false, Json::error_handler_t::replace ) + "\n"
            : aligned( { {}, {} }, rowsOf( facts, writer ) ) );
    if( !facts.fault.empty() )
      throw Failure( corrupt, name_ + ": corrupt: " + facts.fault );
    return succeeded;
  }

 private:
  std::string name_;
  bool isJson_ = false;
};

}  // namespace

std::unique_ptr< Subcommand > tableStat( CLI::App & table ) {
  return std::make_unique< TableStat >( table );
}

}  // namespace Lumo
