// WriterLocks.h: who holds the locks of tables' writers, as the kernel lists them. To try a lock,
// even for a moment, could turn a writer away that is just starting.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include <sys/types.h>

namespace Lumo {

class WriterLocks {
 public:
  /// What the list says now. Empty where there is none.
  WriterLocks();

  /// The process that holds that table's lock; nothing when none does, or when it is one that this
  /// process cannot see, as outside of its container.
  std::optional< pid_t > writerOf( std::string const & tablePath ) const;

 private:
  struct Lock {
    dev_t device;
    ino_t inode;
    pid_t process;
  };
  std::vector< Lock > locks_;
};

}  // namespace Lumo
