// TableList.cpp: `lumo table ls`: which tables there are.
#include <nlohmann/json.hpp>

#include "Columns.h"
#include "Subcommands.h"
#include "TableFacts.h"
#include "WriterLocks.h"

namespace Lumo {
namespace {

using Json = nlohmann::ordered_json;

class TableList final : public Subcommand {
 public:
  explicit TableList( CLI::App & table )
      : Subcommand( table, "ls", "lists the tables below the root" ) {
    command().add_flag( "--json", isJson_, "print one JSON object" );
  }

  Status run( Output & output ) const override {
    auto const all = tablesBelow( root() );
    WriterLocks const locks;
    Status status = succeeded;
    auto const unreadable = [&]( std::string const & why ) {
      complain( why );
      status = unreachable;
    };
    std::vector< Row > rows;
    Json json{
        { "schema", "lumo.table.ls/1" }, { "root", root().path() }, { "tables", Json::array() } };
    for( std::string const & name : all.names ) {
      TableFacts facts;
      try {
        facts = onTable( name, [&] { return factsOf( root(), name ); } );
      } catch( Failure const & e ) {
        unreadable( e.what() );
        continue;
      }
      auto const writer = locks.writerOf( root().path() + "/" + name );
      bool const isKnown = facts.fault.empty();
      rows.push_back( { name, isKnown ? facts.slots.valueTypeName() : "?",
                        isKnown ? std::to_string( facts.slots.occupiedSlots ) : "?",
                        isKnown ? std::to_string( facts.slots.numSlots.ref ) : "?",
                        std::to_string( facts.bytes() ),
                        writer ? std::to_string( *writer ) : "-" } );
      Json table{ { "name", name } };
      if( isKnown ) {
        table["valueType"] = facts.slots.valueTypeName();
        table["entries"] = facts.slots.occupiedSlots;
        table["capacity"] = facts.slots.numSlots.ref;
      } else {
        table["fault"] = facts.fault;
      }
      table["bytes"] = facts.bytes();
      table["writer"] = writer ? Json( *writer ) : Json();
      json["tables"].push_back( std::move( table ) );
    }
    output.write( isJson_ ? json.dump( 2, ' ', false, Json::error_handler_t::replace ) + "\n"
                          : aligned( { { "table" },
                                       { "value type" },
                                       { "entries", true },
                                       { "capacity", true },
                                       { "bytes", true },
                                       { "writer", true } },
                                     rows ) );
    for( std::string const & fault : all.faults )
      unreadable( fault );
    return status;
  }

 private:
  bool isJson_ = false;
};

}  // namespace

std::unique_ptr< Subcommand > tableList( CLI::App & table ) {
  return std::make_unique< TableList >( table );
}

}  // namespace Lumo
