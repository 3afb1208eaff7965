#include "MacTable.h"

#include <fmt/format.h>

#include <koi/UtcText.h>
#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>
#include <vector>

namespace MacTable {

namespace {

struct Column {
  std::string_view heading;
  bool number;  // to the right, as numbers stand
};
constexpr std::array< Column, 6 > columns{ { { "VLAN", true },
                                             { "MAC address", false },
                                             { "Type", false },
                                             { "Port", false },
                                             { "Moves", true },
                                             { "Last move", false } } };
using Row = std::array< std::string, columns.size() >;

std::string string( Koi::String8 const & text ) { return std::string( text.view() ); }

Row rowOf( Bridging::Fid fid, Bridging::LearnedHost const & host ) {
  return { std::to_string( fid.value() ),
           string( host.address().stringValue() ),
           string( Bridging::entryTypeStr( host.entryType() ) ),
           string( host.intf().stringValue() ),
           std::to_string( host.moves() ),
           isEntryTypeConfigured( host.entryType() ) ? "-" : Koi::utcText( host.lastMoveTime() ) };
}

/// Calls visit( fid, host ) in the order of the table.
template< class Visit >
void forEachHost( Bridging::Status const & status, Visit visit ) {
  for( auto const & database : status.fdbStatus() ) {
    Bridging::FdbStatus const & fdb = *database.value();
    std::vector< Wirex::EthAddr > addresses;
    for( auto const & member : fdb.learnedHost() )
      addresses.push_back( member.key() );
    std::sort( addresses.begin(), addresses.end() );
    for( auto const & address : addresses )
      visit( fdb.fid(), fdb.learnedHost( address ) );
  }
}

using Widths = std::array< std::size_t, columns.size() >;

void append( std::string & text, Row const & row, Widths const & widths ) {
  for( std::size_t i = 0; i < columns.size(); ++i ) {
    if( columns[i].number )
      fmt::format_to( std::back_inserter( text ), "{:>{}}", row[i], widths[i] );
    else if( i + 1 < columns.size() )
      fmt::format_to( std::back_inserter( text ), "{:<{}}", row[i], widths[i] );
    else
      text += row[i];  // nothing follows: no blanks at the end of a line
    text += i + 1 < columns.size() ? "  " : "\n";
  }
}

}  // namespace

std::string text( Bridging::Status const & status ) {
  Row headings, rules;
  Widths widths{};
  auto const widen = [&]( Row const & row ) {
    for( std::size_t i = 0; i < columns.size(); ++i )
      widths[i] = std::max( widths[i], row[i].size() );
  };
  for( std::size_t i = 0; i < columns.size(); ++i )
    headings[i] = columns[i].heading;
  widen( headings );
  // Every row is made twice rather than kept: a table can be long.
  forEachHost( status, [&]( auto fid, auto const & host ) { widen( rowOf( fid, host ) ); } );
  for( std::size_t i = 0; i < columns.size(); ++i )
    rules[i].assign( widths[i], '-' );

  std::string all;
  append( all, headings, widths );
  append( all, rules, widths );
  forEachHost( status,
               [&]( auto fid, auto const & host ) { append( all, rowOf( fid, host ), widths ); } );
  return all;
}

std::string json( Bridging::Status const & status ) {
  nlohmann::ordered_json table{ { "schema", "lumo.mac-table/1" },
                                { "entries", nlohmann::ordered_json::array() } };
  auto & entries = table["entries"];
  forEachHost( status, [&]( Bridging::Fid fid, Bridging::LearnedHost const & host ) {
    entries.push_back( { { "fid", fid.value() },
                         { "address", string( host.address().stringValue() ) },
                         { "intf", string( host.intf().stringValue() ) },
                         { "entryType", string( stringValue( host.entryType() ) ) },
                         { "moves", host.moves() },
                         { "lastMoveTime", host.lastMoveTime() } } );
  } );
  return table.dump( 2 ) + "\n";
}

}  // namespace MacTable
