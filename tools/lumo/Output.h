// Output.h: what the program prints, and how it ends.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace Lumo {

/// The program's exit status.
enum Status {
  succeeded = 0,
  wrongUse = 1,     ///< a wrong argument, a name of a type that is none
  unreachable = 2,  ///< a root or a table that cannot be read; output that cannot be written
  absent = 3,       ///< no table of that name, no entry of that key
  corrupt = 4       ///< a table that cannot be believed
};

/// Why the program ends with a status that is not 0.
class Failure : public std::runtime_error {
 public:
  Failure( Status why, std::string const & text ) : std::runtime_error( text ), status( why ) {}

  Status const status;
};

/// Standard output. Whoever reads it may leave early (`| head`): that is no fault, and what is
/// written from then on is lost.
class Output {
 public:
  /// Needs SIGPIPE to be ignored.
  Output() = default;

  /// Raises Failure "standard output: <why>".
  void write( std::string_view text );
  void flush();
  /// Whether anybody reads it.
  bool isOpen() const { return isOpen_; }

 private:
  void failed();

  bool isOpen_ = true;
};

/// "lumo: <text>" on a line of standard error.
void complain( std::string_view text );

}  // namespace Lumo
