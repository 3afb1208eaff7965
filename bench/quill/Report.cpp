#include "Report.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <limits>

#include "Goals.h"
#include "Setting.h"

namespace Bench {
namespace {

constexpr std::size_t columnsAcross = 9;

void addOnce( std::vector< std::string > & names, std::string const & name ) {
  if( std::ranges::find( names, name ) == names.end() )
    names.push_back( name );
}

/// Whether private memory comes in large pages, for no table's speed is independent of that.
std::string hugePages() {
  std::ifstream in( "/sys/kernel/mm/transparent_hugepage/enabled" );
  std::string line;
  std::getline( in, line );
  std::size_t const from = line.find( '[' ), to = line.find( ']' );
  return from == std::string::npos || to == std::string::npos
             ? "unknown"
             : line.substr( from + 1, to - from - 1 );
}

std::vector< std::pair< std::string, std::string > > settingHere() {
  auto all = setting();
  all.emplace_back( "hugepages", hugePages() );
  return all;
}

std::string quoted( std::string const & text ) {
  std::string out = "\"";
  for( char const c : text ) {
    if( c == '"' || c == '\\' )
      out += '\\';
    out += c;
  }
  return out + '"';
}

}  // namespace

double Report::Size::median( std::string const & peer, std::string const & figure ) const {
  auto const found = passes.find( { peer, figure } );
  if( found == passes.end() )
    return std::numeric_limits< double >::quiet_NaN();
  std::vector< double > all = found->second;
  auto const middle = all.begin() + static_cast< std::ptrdiff_t >( all.size() / 2 );
  std::ranges::nth_element( all, middle );
  return *middle;
}

void Report::leftOut( std::string const & line ) { addOnce( leftOut_, line ); }

void Report::add( std::size_t numEntries, std::string const & peer, std::string const & figure,
                  double value ) {
  Size & size = sizes_[numEntries];
  addOnce( size.peers, peer );
  addOnce( size.figures, figure );
  size.passes[{ peer, figure }].push_back( value );
}

void Report::printTable( Size const & size, std::string const & against ) const {
  for( std::size_t from = 0; from < size.figures.size(); from += columnsAcross ) {
    std::size_t const to = std::min( from + columnsAcross, size.figures.size() );
    std::printf( "%-12s", against.empty() ? "" : ( "/ " + against ).c_str() );
    for( std::size_t i = from; i < to; ++i )
      std::printf( " %10s", size.figures[i].c_str() );
    std::printf( "\n" );
    for( std::string const & peer : size.peers ) {
      std::printf( "%-12s", peer.c_str() );
      for( std::size_t i = from; i < to; ++i ) {
        double value = size.median( peer, size.figures[i] );
        if( !against.empty() )
          value /= size.median( against, size.figures[i] );
        if( std::isnan( value ) )
          std::printf( " %10s", "-" );
        else
          std::printf( " %10.*f", !against.empty() ? 2 : value < 1000 ? 1 : 0, value );
      }
      std::printf( "\n" );
    }
    std::printf( "\n" );
  }
}

void Report::printGoals( Size const & size ) const {
  char const * heading = "goals        ours over theirs      at most\n";
  for( Goal const & goal : goals ) {
    double value = size.median( "quill", goal.figure );
    if( goal.peer )
      value /= size.median( goal.peer, goal.peersFigure );
    if( std::isnan( value ) )
      continue;
    std::string const what =
        goal.peer ? std::string( goal.peersFigure ) + " of " + goal.peer : "bytes";
    std::printf( "%s%-12s %8.*f %-22s %6.2f  %s\n", heading, goal.figure, goal.peer ? 2 : 1, value,
                 what.c_str(), goal.most, value <= goal.most ? "reached" : "not reached" );
    heading = "";
  }
}

void Report::print( std::string const & against ) const {
  for( auto const & [what, value] : settingHere() )
    std::printf( "%-9s %s\n", what.c_str(), value.c_str() );
  for( std::string const & line : leftOut_ )
    std::printf( "without   %s\n", line.c_str() );
  for( auto const & [numEntries, size] : sizes_ ) {
    std::printf( "\n%zu entries of 32 bytes; nanoseconds an operation, medians\n\n", numEntries );
    printTable( size, "" );
    if( std::ranges::find( size.peers, against ) != size.peers.end() )
      printTable( size, against );
    printGoals( size );
  }
}

void Report::printJson() const {
  std::printf( "{\n  \"setting\": {" );
  char const * comma = "";
  for( auto const & [what, value] : settingHere() ) {
    std::printf( "%s\n    %s: %s", comma, quoted( what ).c_str(), quoted( value ).c_str() );
    comma = ",";
  }
  std::printf( "\n  },\n  \"leftOut\": [" );
  comma = "";
  for( std::string const & line : leftOut_ ) {
    std::printf( "%s\n    %s", comma, quoted( line ).c_str() );
    comma = ",";
  }
  std::printf( "\n  ],\n  \"figures\": [" );
  comma = "";
  for( auto const & [numEntries, size] : sizes_ )
    for( auto const & [name, passes] : size.passes ) {
      std::printf(
          "%s\n    { \"entries\": %zu, \"peer\": %s, \"figure\": %s, \"median\": %.6g, \"passes\": "
          "[",
          comma, numEntries, quoted( name.first ).c_str(), quoted( name.second ).c_str(),
          size.median( name.first, name.second ) );
      comma = "";
      for( double const pass : passes ) {
        std::printf( "%s%.6g", comma, pass );
        comma = ", ";
      }
      std::printf( "] }" );
      comma = ",";
    }
  std::printf( "\n  ]\n}\n" );
}

}  // namespace Bench
