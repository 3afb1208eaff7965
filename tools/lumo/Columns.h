// Columns.h: rows of texts as people read them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Lumo {

struct Column {
  std::string heading;    ///< empty in all of them: no line of headings
  bool isNumber = false;  ///< to the right, as numbers stand
};
using Row = std::vector< std::string >;

class Columns {
 public:
  explicit Columns( std::vector< Column > columns );

  /// Makes each column as wide as its heading and what it has in these rows need; and one column so
  /// wide.
  void fit( std::vector< Row > const & rows );
  void fit( std::size_t column, std::size_t width );

  /// The line of headings, nothing when there are none; and that of a row. Two blanks between
  /// columns, none at a line's end.
  std::string headings( std::string const & indent = {} ) const;
  std::string line( Row const & row, std::string const & indent = {} ) const;
  /// A row's cells, appended one after the other, are its line.
  void appendCell( std::string & line, std::size_t column, std::string_view text ) const;

 private:
  std::vector< Column > columns_;
  std::vector< std::size_t > widths_;
};

/// All of it, with the columns as wide as they need to be.
std::string aligned( std::vector< Column > const & columns, std::vector< Row > const & rows,
                     std::string const & indent = {} );

}  // namespace Lumo
