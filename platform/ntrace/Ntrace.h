// Ntrace.h: what the system says of its own doings, by numbered levels: 0 errors, 2 and 3 changes
// of structure, 5 decisions, 7 to 9 details of single entries. One thread at a time.
//
// Lines go to standard error unless the program has another place for them. LUMO_TRACE in the
// environment is the highest level that is written, 0 to 9; without it nothing above 0 is.
#pragma once

#include <functional>
#include <sstream>
#include <string>

#include <koi/Export.h>

namespace Ntrace {

/// Where a facility's lines go.
class KOI_PUBLIC Handler {
 public:
  using Sink = std::function< void( int level, std::string const & line ) >;

  /// To standard error, up to the level that LUMO_TRACE names.
  Handler();
  /// To `sink`, up to `level`.
  Handler( int level, Sink sink ) : level_( level ), sink_( std::move( sink ) ) {}

  bool isOn( int level ) const { return level <= level_; }

  /// Writes one line made of the parts, in decimal, when the level is on.
  template< class... Part >
  void trace( int level, Part const &... part ) const {
    if( !isOn( level ) )
      return;
    std::ostringstream line;
    ( line << ... << part );
    sink_( level, line.str() );
  }

 private:
  int level_;
  Sink sink_;
};

/// What a facility writes to that was given no handler: Handler(), made at the first call.
KOI_PUBLIC Handler const & standard();

}  // namespace Ntrace
