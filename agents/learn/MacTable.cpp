#include "MacTable.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <nlohmann/json.hpp>
#include <vector>

namespace Learn {

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
           isEntryTypeConfigured( host.entryType() ) ? "-" : timeText( host.lastMoveTime() ) };
}

/// Calls visit( fid, host ) in the order of the table.
template< class Visit >
void forEachHost( Learner const & learner, Visit visit ) {
  for( auto const & database : learner.bridge().status->fdbStatus() ) {
    Bridging::FdbStatus const & status = *database.value();
    std::vector< Wirex::EthAddr > addresses;
    for( auto const & member : status.learnedHost() )
      addresses.push_back( member.key() );
    std::sort( addresses.begin(), addresses.end() );
    for( auto const & address : addresses )
      visit( status.fid(), status.learnedHost( address ) );
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

std::string totalsText( Learner const & learner ) {
  Totals const totals = learner.totals();
  std::size_t numVlans = 0;
  for( auto const & database : learner.counts().numHosts() )
    numVlans += database.value() != 0;
  Koi::U64 numNotLearned = 0;
  std::string reasons;
  for( std::size_t i = 0; i < notLearnedTexts.size(); ++i ) {
    if( totals.numNotLearned[i] == 0 )
      continue;
    numNotLearned += totals.numNotLearned[i];
    reasons += fmt::format( "  {}: {}\n", notLearnedTexts[i], totals.numNotLearned[i] );
  }
  return fmt::format(
      "Hosts: {}, VLANs: {}, moves: {}, aged out: {}\nFrames read: {}\n"
      "Frames not learned from: {}\n{}",
      totals.numHosts, numVlans, totals.numMoves, totals.numAged, totals.numFrames, numNotLearned,
      reasons );
}

}  // namespace

std::string macTableText( Learner const & learner ) {
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
  forEachHost( learner, [&]( auto fid, auto const & host ) { widen( rowOf( fid, host ) ); } );
  for( std::size_t i = 0; i < columns.size(); ++i )
    rules[i].assign( widths[i], '-' );

  std::string text;
  append( text, headings, widths );
  append( text, rules, widths );
  forEachHost( learner,
               [&]( auto fid, auto const & host ) { append( text, rowOf( fid, host ), widths ); } );
  return text + "\n" + totalsText( learner );
}

std::string macTableJson( Learner const & learner ) {
  nlohmann::ordered_json table{ { "schema", "lumo.mac-table/1" },
                                { "entries", nlohmann::ordered_json::array() } };
  auto & entries = table["entries"];
  forEachHost( learner, [&]( Bridging::Fid fid, Bridging::LearnedHost const & host ) {
    entries.push_back( { { "fid", fid.value() },
                         { "address", string( host.address().stringValue() ) },
                         { "intf", string( host.intf().stringValue() ) },
                         { "entryType", string( stringValue( host.entryType() ) ) },
                         { "moves", host.moves() },
                         { "lastMoveTime", host.lastMoveTime() } } );
  } );
  return table.dump( 2 ) + "\n";
}

std::string timeText( Koi::Seconds time ) {
  using namespace std::chrono;
  constexpr Koi::Seconds year0 = -62167219200, year10000 = 253402300800;
  if( !( year0 <= time && time < year10000 - 1 ) )
    return fmt::format( "{:.6f}", time );
  sys_time< microseconds > const instant( microseconds( std::llround( time * 1e6 ) ) );
  auto const day = floor< days >( instant );
  year_month_day const date( day );
  hh_mm_ss const clock( instant - day );
  return fmt::format( "{:04}-{:02}-{:02}T{:02}:{:02}:{:02}.{:06}Z",
                      static_cast< int >( date.year() ), static_cast< unsigned >( date.month() ),
                      static_cast< unsigned >( date.day() ), clock.hours().count(),
                      clock.minutes().count(), clock.seconds().count(),
                      clock.subseconds().count() );
}

}  // namespace Learn
