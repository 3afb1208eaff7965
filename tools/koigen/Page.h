// Page.h: text with holes. A hole is $name$. A hole alone on its line takes a whole block, indented
// as the hole is; an empty block takes its line and the blank line above it along. What follows
// "//" on a line is repeated on each line of a block.
#pragma once

#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace Koigen {

/// A page and its filling disagree: "entity.h:3: nothing to fill 'doc' with".
struct PageError : std::runtime_error {
  using runtime_error::runtime_error;
};

using Fill = std::map< std::string, std::string >;

class Page {
 public:
  Page( std::string name, std::string_view text ) : name_( std::move( name ) ), text_( text ) {}

  /// The page of that name among those built into the program. Throws PageError for another name.
  static Page named( std::string const & name );

  /// The text with every hole filled. Throws PageError when a hole has no value, when a value has
  /// no hole, or when a hole is not closed.
  std::string filled( Fill const & fill ) const;

 private:
  std::string name_;
  std::string_view text_;
};

/// Blocks one under another with `between` between them; empty blocks leave no trace.
std::string stacked( std::vector< std::string > const & blocks,
                     std::string const & between = "\n" );

}  // namespace Koigen
