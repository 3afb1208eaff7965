// Findings.h: the errors that a check has found so far, and the rules about names that all checks
// share.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Model.h"

namespace Koigen {

class Findings {
 public:
  void add( Place const & place, std::string const & text ) { found_.push_back( { place, text } ); }
  bool empty() const { return found_.empty(); }

  /// One error a line, sorted by file (in the order of the call), line and column.
  std::string text( Model const & model ) const;

 private:
  struct Finding {
    Place place;
    std::string text;
  };
  std::vector< Finding > found_;
};

/// Finds what is wrong with a name as such: reserved in C++, the runtime's own, underscores.
void checkName( Place const & place, std::string const & name, Findings & findings );

/// Finds documentation that is missing or would swallow the next line of a header.
void checkDoc( Place const & place, std::string const & name, std::string const & doc,
               Findings & findings );

/// What a model writes as a whole number: decimal or 0x, with or without a minus. None for anything
/// else, for more than 64 bits and for a decimal number that begins with 0.
std::optional< Integer > integerOf( std::string const & text );

/// True when a primitive is a whole number and can hold that one.
bool fits( Integer number, Primitive primitive );

/// "u16", "Koi::String8".
char const * nameOf( Primitive primitive );

/// a < b.
bool less( Integer a, Integer b );

/// Smallest and greatest of a whole number's type.
Integer lowestOf( Primitive primitive );
Integer highestOf( Primitive primitive );

/// True for u8 to u64 and i32.
bool isWholeNumber( Primitive primitive );

}  // namespace Koigen
