// Publication.h: the learner's hosts as the shared table that other processes read. One thread,
// that of the activity.
#pragma once

#include <string>

#include <Lumo/FdbStatusSm.h>
#include <koi/Activity.h>
#include <mem/TableDir.h>

namespace Learn {

/// Where the table is.
struct TablePlace {
  Mem::RootPath root;
  std::string name;
};

/// The hosts that the table has, left by an earlier run; none when there is no table, or none that
/// can be believed: `complain` is told why, then, in a line without its end.
Koi::Ptr< Bridging::Status > hostsLeft( TablePlace const & place,
                                        void ( *complain )( std::string const & why ) );

/// Is the table's only writer as long as it lives. The table stays when it ends.
class Publication {
 public:
  /// The most hosts that the table may hold.
  static constexpr Koi::U32 sizeMax = 1 << 20;

  /// Makes the table equal to the hosts, and keeps it so. Raises Rova::MemoryResourceException and
  /// ArgumentException as Quill::QuillWriter does: another process writes it, or there is no room.
  Publication( Koi::Activity * activity, TablePlace const & place,
               Koi::Ptr< Bridging::Status > const & status );
  ~Publication();

 private:
  Koi::Ptr< Quill::Bridging::Status > const table_;
  Koi::Ptr< Bridging::WriterFdbStatusSm > mirror_;
};

}  // namespace Learn
