#include "Page.h"

#include <set>

#include "Pages.h"

namespace Koigen {
namespace {

/// One line of a page, its holes filled.
struct Line {
  std::string text;
  bool hasHole = false;
  bool hasText = false;  // besides holes and indent
};

/// What stands before a block and is repeated on each of its lines: the indent, and a comment's
/// "///".
std::string lead( std::string_view line ) {
  std::size_t end = line.find_first_not_of( ' ' );
  if( end == line.npos )
    return std::string( line );
  if( line.substr( end, 2 ) == "//" ) {
    end = line.find_first_not_of( '/', end );
    end = end == line.npos ? line.size() : line.find_first_not_of( ' ', end );
  }
  return std::string( line.substr( 0, end ) );
}

}  // namespace

Page Page::named( std::string const & name ) {
  auto const text = embeddedPage( name );
  if( !text )
    throw PageError( "there is no page '" + name + "'" );
  return { name, *text };
}

std::string Page::filled( Fill const & fill ) const {
  std::string out;
  std::set< std::string > used;
  std::size_t number = 0;
  auto const where = [&] { return name_ + ":" + std::to_string( number ) + ": "; };

  for( std::string_view rest = text_; !rest.empty(); ) {
    std::string_view line = rest.substr( 0, rest.find( '\n' ) );
    rest.remove_prefix( std::min( rest.size(), line.size() + 1 ) );
    ++number;

    // 1. Fill the holes of the line.
    std::string const before = lead( line );
    Line result;
    for( std::size_t at = before.size(); at < line.size(); ) {
      std::size_t const open = line.find( '$', at );
      result.hasText |= open != at;
      result.text += line.substr( at, open - at );
      if( open == line.npos )
        break;
      std::size_t const close = line.find( '$', open + 1 );
      if( close == line.npos )
        throw PageError( where() + "a hole is not closed" );
      std::string const name( line.substr( open + 1, close - open - 1 ) );
      auto const it = fill.find( name );
      if( it == fill.end() )
        throw PageError( where() + "nothing to fill '" + name + "' with" );
      used.insert( name );
      result.hasHole = true;
      result.text += it->second;
      at = close + 1;
    }

    // 2. An empty block takes its line and the blank line above it along.
    if( result.hasHole && !result.hasText && result.text.empty() ) {
      if( out.ends_with( "\n\n" ) )
        out.pop_back();
      continue;
    }

    // 3. Lay the lines out behind what stands before them.
    std::string_view text = result.text;
    while( text.ends_with( '\n' ) )
      text.remove_suffix( 1 );
    for( bool more = true; more; ) {
      std::size_t const end = text.find( '\n' );
      std::string piece = before + std::string( text.substr( 0, end ) );
      piece.erase( piece.find_last_not_of( ' ' ) + 1 );
      out += piece + "\n";
      more = end != text.npos;
      text.remove_prefix( more ? end + 1 : text.size() );
    }
  }
  for( auto const & [name, value] : fill )
    if( !used.count( name ) )
      throw PageError( name_ + ": has no hole '" + name + "'" );
  return out;
}

std::string stacked( std::vector< std::string > const & blocks, std::string const & between ) {
  std::string out;
  for( auto const & block : blocks )
    if( !block.empty() )
      out += ( out.empty() ? "" : between ) + block;
  return out;
}

}  // namespace Koigen
