#include "Fold.h"

#include <vector>

namespace Koigen {
namespace {

using Lines = std::vector< std::string >;

std::size_t indentOf( std::string const & line ) {
  auto const at = line.find_first_not_of( ' ' );
  return at == line.npos ? line.size() : at;
}

/// "  /// some words" -> the words on several lines, each behind "///".
Lines foldedComment( std::string const & line, std::size_t width ) {
  std::size_t const slashes = indentOf( line );
  std::size_t text = line.find_first_not_of( '/', slashes );
  std::string const lead = line.substr( 0, text ) + " ";
  Lines lines;
  std::string current;
  while( text != line.npos && ( text = line.find_first_not_of( ' ', text ) ) != line.npos ) {
    std::size_t const end = line.find( ' ', text );
    std::string const word = line.substr( text, end - text );
    if( !current.empty() && lead.size() + current.size() + 1 + word.size() > width ) {
      lines.push_back( lead + current );
      current.clear();
    }
    current += ( current.empty() ? "" : " " ) + word;
    text = end;
  }
  lines.push_back( lead + current );
  return lines;
}

/// What one character of a line means for breaking it.
class Scan {
 public:
  explicit Scan( std::string const & line ) : line_( line ) {}

  /// Goes on to the next character outside quotes; false at the end.
  bool next() {
    for( ++at_; at_ < line_.size(); ++at_ ) {
      char const c = line_[at_];
      if( c == '"' )
        quoted_ = !quoted_;
      if( quoted_ )
        continue;
      if( c == '(' || c == '{' )
        ++depth_;
      if( c == ')' || c == '}' )
        --depth_;
      return true;
    }
    return false;
  }
  bool isAt( std::string_view text ) const {
    return std::string_view( line_ ).substr( at_, text.size() ) == text;
  }
  std::size_t at() const { return at_; }
  int depth() const { return depth_; }

 private:
  std::string const & line_;
  std::size_t at_ = static_cast< std::size_t >( -1 );
  int depth_ = 0;
  bool quoted_ = false;
};

/// "T f( K const & k ) { return g( k ); }" -> head, body and brace on lines of their own.
Lines brokenAtBody( std::string const & line ) {
  if( !line.ends_with( "; }" ) )
    return {};
  Scan scan( line );
  while( scan.next() )
    if( scan.isAt( "{ " ) && scan.depth() == 1 ) {
      std::string const indent( indentOf( line ), ' ' );
      std::string const body = line.substr( scan.at() + 2, line.size() - scan.at() - 4 );
      return { line.substr( 0, scan.at() + 1 ), indent + "  " + body, indent + "}" };
    }
  return {};
}

struct Cut {
  std::size_t at = 0;      // 0: there is none
  std::size_t indent = 0;  // of what follows
};

/// The last place where the line may be cut so that its first part fits; the flattest one wins.
/// `first` is the indent of the line that all this was before its first cut.
Cut cutOf( std::string const & line, std::size_t first, std::size_t width ) {
  constexpr std::size_t farthest = 60;  // what follows is not aligned to the right of this
  std::size_t const indent = indentOf( line );
  std::vector< std::size_t > opened;  // columns behind the open parentheses
  Cut best;
  int bestCost = 1000;
  Scan scan( line );
  while( scan.next() && scan.at() <= width ) {
    int cost = scan.depth();
    Cut cut = { 0, first + 4 };
    if( scan.isAt( "(" ) )
      opened.push_back( scan.at() + 2 );
    if( scan.isAt( "( " ) ) {
      // The last resort, for what follows then stands far from its name.
      cut.at = scan.at() + 1;
      cost += 100;
    } else if( scan.isAt( "{ " ) && line.ends_with( " };" ) ) {
      cut.at = scan.at() + 1;
      --cost;
    } else if( scan.isAt( ")" ) && !opened.empty() ) {
      opened.pop_back();
    } else if( scan.isAt( ", " ) ) {
      cut.at = scan.at() + 1;
      if( !opened.empty() && opened.back() <= farthest )
        cut.indent = opened.back();
      else if( line.compare( indent, 2, ": " ) == 0 )
        cut.indent = indent + 2;
    } else if( scan.isAt( " : " ) || scan.isAt( " override" ) ) {
      cut.at = scan.at();
      cost -= 50;
    } else if( scan.isAt( " = " ) ) {
      cut.at = scan.at() + 2;
    }
    if( cut.at > indent && cut.at <= width && cost <= bestCost ) {
      best = cut;
      bestCost = cost;
    }
  }
  return best;
}

void foldCode( std::string line, std::size_t width, Lines & out ) {
  if( auto const parts = brokenAtBody( line ); !parts.empty() ) {
    for( auto const & part : parts )
      part.size() > width ? foldCode( part, width, out ) : out.push_back( part );
    return;
  }
  std::size_t const first = indentOf( line );
  while( line.size() > width ) {
    Cut const cut = cutOf( line, first, width );
    if( cut.at == 0 )
      break;
    out.push_back( line.substr( 0, cut.at ) );
    std::string const rest = line.substr( line.find_first_not_of( ' ', cut.at ) );
    // A line that would only move to the right is left as it is.
    if( cut.indent + rest.size() >= line.size() ) {
      line = std::string( first + 4, ' ' ) + rest;
      break;
    }
    line = std::string( cut.indent, ' ' ) + rest;
  }
  out.push_back( line );
}

}  // namespace

std::string folded( std::string_view text, std::size_t width ) {
  Lines lines;
  while( !text.empty() ) {
    std::string const line( text.substr( 0, text.find( '\n' ) ) );
    text.remove_prefix( std::min( text.size(), line.size() + 1 ) );
    if( line.size() <= width || line.starts_with( '#' ) )
      lines.push_back( line );
    else if( line.compare( indentOf( line ), 2, "//" ) == 0 )
      for( auto const & part : foldedComment( line, width ) )
        lines.push_back( part );
    else
      foldCode( line, width, lines );
  }
  std::string out;
  for( auto const & line : lines )
    out += line + "\n";
  return out;
}

}  // namespace Koigen
