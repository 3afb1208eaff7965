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
      fit( i, row[i].size() );
}
void Columns::fit( std::size_t column, std::size_t width ) {
  widths_[column] = std::max( widths_[column], width );
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
  for( std::size_t i = 0; i < row.size(); ++i )
    appendCell( text, i, row[i] );
  return text;
}
void Columns::appendCell( std::string & line, std::size_t column, std::string_view text ) const {
  std::size_t const blanks = widths_[column] - std::min( widths_[column], text.size() );
  bool const isLast = column + 1 == columns_.size();
  if( columns_[column].isNumber )
    line.append( blanks, ' ' ).append( text );
  else
    line.append( text ).append( isLast ? 0 : blanks, ' ' );
  line += isLast ? "\n" : "  ";
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
