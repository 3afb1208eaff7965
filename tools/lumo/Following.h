// Following.h: a command that shows changes as they come, until it is interrupted, has shown
// enough, or its time is over. One thread.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

#include <koi/Activity.h>
#include <mem/Kick.h>
#include <mem/TableDir.h>

#include "Output.h"

namespace Lumo {

class Following {
 public:
  /// When it ends by itself.
  struct Limits {
    Koi::U64 count = ~Koi::U64{ 0 };
    Koi::Seconds duration = 0;  ///< 0: for ever

    /// Adds --count and --for, which fill this object when the command is parsed.
    void addTo( CLI::App & command );
  };

  /// Of a table, whose files it looks at now and then; nothing is said of how they are now.
  Following( Mem::RootPath const & root, std::string const & table, Limits const & limits,
             Output & output );

  /// On which whatever follows the table is to run.
  Koi::Activity * activity() { return activity_.ptr(); }
  /// The table's files are there.
  bool isThere() const;

  /// Follows. Raises what handlers raise.
  void run();
  /// Prints a line; false when it was the last one, and when none is to come any more.
  bool show( std::string const & line );
  /// Prints one that is no change.
  void write( std::string const & line );
  /// The follower let go of the table's files, or has others: says so on standard error, but for
  /// the first time.
  void attached( bool is );

 private:
  void look();

  std::string const name_, path_;
  Limits const limits_;
  Output & output_;
  Koi::Ptr< Koi::Activity > const activity_;
  Mem::Descriptor const signals_;
  Koi::DescriptorWatch const interrupt_;
  Koi::Timer look_;
  Koi::Timer flush_;
  Koi::U64 numShown_ = 0;
  bool wasThere_, wasAttached_ = false;
};

}  // namespace Lumo
