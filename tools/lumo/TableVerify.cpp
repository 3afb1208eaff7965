// TableVerify.cpp: `lumo table verify`: whether tables keep what they promise.
//
// A table is copied, and the copy judged as a writer would that attaches to it. Where a writer is
// too busy for a copy, what a reader may believe is checked beside it.
#include <algorithm>
#include <limits>

#include <koi/RecordOps.h>
#include <nlohmann/json.hpp>

#include "Subcommands.h"
#include "TableFacts.h"
#include "WriterLocks.h"

namespace Lumo {
namespace {

using Koi::U32;
using Koi::U64;

constexpr int numCopies = 6;

using Json = nlohmann::ordered_json;

/// What is to be said of a table that is right.
struct Verified {
  bool isWhole = true;  ///< all of it was judged, not what a reader may believe alone
  std::string note;
};

class TableVerify final : public Subcommand {
 public:
  explicit TableVerify( CLI::App & table )
      : Subcommand( table, "verify", "says whether tables keep what they promise" ) {
    auto * const names = command().add_option( "TABLE", names_, "tables, as counters/vlanIntf" );
    names->type_name( "" );
    command().add_flag( "--all", isAll_, "all tables below the root" )->excludes( names );
    command().add_flag( "--json", isJson_, "print one JSON object" );
  }

  Status run( Output & output ) const override {
    if( names_.empty() && !isAll_ )
      throw Failure( wrongUse, "a table is required, or --all" );
    Status status = succeeded;
    auto const failed = [&]( Status why, std::string const & text ) {
      complain( text );
      status = std::max( status, why );
    };
    auto names = names_;
    if( isAll_ ) {
      auto const all = tablesBelow( root() );
      names = all.names;
      for( std::string const & fault : all.faults )
        failed( unreachable, fault );
    }
    Json json{ { "schema", "lumo.table.verify/1" }, { "tables", Json::array() } };
    for( std::string const & name : names ) {
      Json table{ { "name", name } };
      try {
        auto const found = onTable( name, [&] { return verified( name ); } );
        table.update( { { "status", 0 }, { "whole", found.isWhole }, { "note", found.note } } );
        if( !isJson_ )
          output.write( name + ": ok" + ( found.note.empty() ? "" : "; " + found.note ) + "\n" );
      } catch( Failure const & e ) {
        table.update( { { "status", static_cast< int >( e.status ) }, { "fault", e.what() } } );
        failed( e.status, e.what() );
      }
      json["tables"].push_back( std::move( table ) );
      output.flush();
    }
    if( isJson_ )
      output.write( json.dump( 2, ' ', false, Json::error_handler_t::replace ) + "\n" );
    return status;
  }

 private:
  /// Raises Failure for what is not right.
  Verified verified( std::string const & name ) const {
    requireTable( root(), name );
    auto const facts = factsOf( root(), name );
    if( !facts.fault.empty() )
      throw Rova::CorruptionDetectedException( facts.fault );
    auto const & type = knownType( facts );
    if( facts.rootKindle == 0 )
      throw Failure( unreachable, "there is no " + root().path() + "/kindle" );
    Mem::TableDir const dir( root(), name, Mem::MappedFile::readOnly );
    Mem::CopiedDir copy( dir );
    // The lookaside slot's link moves when an operation begins and when it ends.
    if( !copy.tryCopy( tableFiles, Quill::SlotTable::lookasideAt, numCopies ) ) {
      walk( facts, type );
      return { false,
               "checked while it is written: chains and values; free list, counts and queue not "
               "judged" };
    }
    auto const verdict = type.verdict( copy );
    if( !verdict.fault.empty() )
      throw Rova::CorruptionDetectedException( verdict.fault );
    if( !verdict.isMended )
      return {};
    return { true, WriterLocks().writerOf( dir.path() )
                       ? "an operation was under way"
                       : "the stopped writer's last operation will be finished by the next one" };
  }

  /// Reads all entries beside their writer.
  void walk( TableFacts const & before, Quill::TableType const & type ) const {
    auto const reader = type.reader( root(), before.name );
    std::vector< U32 > value( type.valueType().record->valueSize / 4 );
    U64 count = 0;
    for( bool isThere = reader->first( value.data() ); isThere;
         isThere = reader->next( value.data(), value.data() ) )
      ++count;
    // Every entry that came or went meanwhile was notified, but for the one at either end.
    auto const after = factsOf( root(), before.name );
    U64 const changes = after.lastSequence < before.lastSequence  // formatted anew
                            ? std::numeric_limits< U32 >::max()
                            : after.lastSequence - before.lastSequence + 2;
    U64 const counted = before.slots.occupiedSlots;
    if( count > counted + changes || counted > count + changes )
      throw Rova::CorruptionDetectedException( "I2 a walk met " + std::to_string( count ) +
                                               " entries, not " + std::to_string( counted ) );
  }

  std::vector< std::string > names_;
  bool isAll_ = false;
  bool isJson_ = false;
};

}  // namespace

std::unique_ptr< Subcommand > tableVerify( CLI::App & table ) {
  return std::make_unique< TableVerify >( table );
}

}  // namespace Lumo
