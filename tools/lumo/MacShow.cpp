// MacShow.cpp: `lumo show mac`: the MAC address table, read once beside its writer.
#include <algorithm>
#include <map>

#include <quill/QuillReader.h>

#include <nlohmann/json.hpp>

#include "MacSubcommand.h"
#include "TableFacts.h"

namespace Lumo {
namespace {

using Entries = std::vector< MacEntry >;
using Json = nlohmann::ordered_json;

class MacShow final : public MacSubcommand {
 public:
  explicit MacShow( CLI::App & show )
      : MacSubcommand( show, "shows MAC addresses by VLAN, then by address" ) {
    command().add_flag( "--count", isCount_, "show how many there are, of each kind" );
    command().add_flag( "--json", isJson_, "print one JSON object" );
  }

  Status run( Output & output ) const override {
    Entries const entries = onTable( table(), [&] { return read(); } );
    if( isCount_ )
      showCounts( output, entries );
    else if( isJson_ )
      showJson( output, entries );
    else
      showLines( output, entries );
    return succeeded;
  }

 private:
  Entries read() const {
    requireMacTable();
    Quill::QuillReader< Quill::Bridging::QuillFdbStatus > reader( root(), table() );
    Entries entries;
    reader.sweep( [&]( auto const & value ) {
      if( MacEntry const entry( value ); filter().admits( entry ) )
        entries.push_back( entry );
    } );
    std::ranges::sort( entries, {}, &MacEntry::place );
    // One whose entry moved was met twice.
    auto const isSame = []( MacEntry const & a, MacEntry const & b ) { return a.place == b.place; };
    entries.erase( std::unique( entries.begin(), entries.end(), isSame ), entries.end() );
    return entries;
  }

  /// Writes what append( text, entry ) makes of each entry, many at a time.
  template< class Append >
  static void write( Output & output, Entries const & entries, Append append ) {
    constexpr std::size_t most = 1 << 16;
    std::string text;
    for( MacEntry const & entry : entries ) {
      append( text, entry );
      if( text.size() < most )
        continue;
      output.write( text );
      if( !output.isOpen() )
        return;
      text.clear();
    }
    output.write( text );
  }

  void showLines( Output & output, Entries const & entries ) const {
    MacTexts texts;
    Columns columns( MacTexts::columns() );
    for( MacEntry const & entry : entries )
      texts.fit( columns, entry );
    output.write( columns.headings() );
    write( output, entries, [&]( std::string & text, MacEntry const & entry ) {
      auto const cells = texts.cells( entry );
      for( std::size_t i = 0; i < cells.size(); ++i )
        columns.appendCell( text, i, cells[i] );
    } );
    output.write( std::to_string( entries.size() ) +
                  ( entries.size() == 1 ? " entry\n" : " entries\n" ) );
  }

  void showJson( Output & output, Entries const & entries ) const {
    MacTexts texts;
    output.write( "{\"schema\": \"lumo.mac-table/1\", \"table\": " + Json( table() ).dump() +
                  ", \"entries\": [" );
    char const * before = "\n  ";
    write( output, entries, [&]( std::string & text, MacEntry const & entry ) {
      text += std::exchange( before, ",\n  " );
      texts.appendJson( text, entry );
    } );
    output.write( entries.empty() ? "]}\n" : "\n]}\n" );
  }

  void showCounts( Output & output, Entries const & entries ) const {
    std::map< Bridging::EntryType, std::size_t > numOfEach;
    for( MacEntry const & entry : entries )
      ++numOfEach[entry.entryType];
    std::vector< Row > rows;
    Json types = Json::object();
    for( auto const & [type, count] : numOfEach ) {
      rows.push_back( { std::string( entryTypeStr( type ).view() ), std::to_string( count ) } );
      types[std::string( stringValue( type ).view() )] = count;
    }
    rows.push_back( { "total", std::to_string( entries.size() ) } );
    Json const all{ { "schema", "lumo.mac-count/1" },
                    { "table", table() },
                    { "types", types },
                    { "total", entries.size() } };
    output.write( isJson_ ? all.dump( 2 ) + "\n"
                          : aligned( { { "type" }, { "entries", true } }, rows ) );
  }

  bool isCount_ = false;
  bool isJson_ = false;
};

}  // namespace

std::unique_ptr< Subcommand > showMac( CLI::App & show ) {
  return std::make_unique< MacShow >( show );
}

}  // namespace Lumo
