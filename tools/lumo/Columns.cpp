#include "Columns.h"

#include <algorithm>

namespace Lumo {

Columns::Columns( std::vector< Column > columns ) : columns_( std::move( columns ) ) {
  for( Column const & column : columns_ )
    widths_.push_back( column.heading.size() );
}

void Columns::fit( std::vector< Row > const & rows ) {
  for( Row const & row : rows )
    for( std::size_t i = 0; i < row.size(); ++i )
      widths_[i] = std::max( widths_[i], row[i].size() );
}

std::string Columns::headings( std::string const & indent ) const {
  if( columns_[0].heading.empty() )
    return {};
  Row all;
  for( Column const & column : columns_ )
    all.push_back( column.heading );
  return line( all, indent );
}

std::string Columns::line( Row const & row, std::string const & indent ) const {
  std::string text = indent;
  for( std::size_t i = 0; i < row.size(); ++i ) {
    std::string const blanks( widths_[i] - std::min( widths_[i], row[i].size() ), ' ' );
    bool const isLast = i + 1 == row.size();
    text += columns_[i].isNumber ? blanks + row[i] : row[i] + ( isLast ? "" : blanks );
    text += isLast ? "\n" : "  ";
  }
  return text;
}

std::string aligned( std::vector< Column > const & columns, std::vector< Row > const & rows,
                     std::string const & indent ) {
  Columns fitted( columns );
  fitted.fit( rows );
  std::string text = fitted.headings( indent );
  for( Row const & row : rows )
    text += fitted.line( row, indent );
  return text;
}

}  // namespace Lumo
