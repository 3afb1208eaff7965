// TableMounter.h: brings an agent and a table together in whatever order they come, and again when
// the table's files are replaced. One thread: its activity's.
//
// It watches the table's directory, or what is there of the way to it, and the root, where the
// kindle file is; and it looks once a second all the same, for watches may be exhausted or
// overflow, and changes inside mapped files raise no event.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <koi/Activity.h>
#include <mem/Kick.h>
#include <mem/TableDir.h>
#include <ntrace/Ntrace.h>

namespace Quill {

class KOI_PUBLIC TableMounter {
 public:
  /// Whose texts it traces by.
  enum Role { reader, writer };
  /// Attaches to what is there now; false when it cannot, and is to try again. Also called when it
  /// is attached, for what is there may be something else by now.
  using TryAttach = std::function< bool() >;

  /// Tries at once when the activity runs, then when something happens, and by time.
  TableMounter( Koi::Activity * activity, Role role, Mem::RootPath root, std::string name,
                TryAttach tryAttach, Ntrace::Handler const & trace );
  ~TableMounter();

  /// What was attached is of no use any more: it is tried again, later each time that it fails.
  void remount();

  /// Seconds between two attempts that fail, the first and the longest, and between two looks.
  static constexpr Koi::Seconds firstDelay = 0.05, longestDelay = 2, lookEvery = 1;
  /// From an event to the attempt: events come in flocks.
  static constexpr Koi::Seconds eventDelay = 0.005;

 private:
  /// A directory: what has its path may be another one by now.
  struct Place {
    std::string path;
    Koi::U64 device, number;
    bool operator==( Place const & ) const = default;
  };

  void watch();
  std::vector< Place > placesToWatch() const;
  void notify();
  void timeout();

  Koi::Activity * const activity_;
  Role const role_;
  Mem::RootPath const root_;
  std::string const name_;
  TryAttach const tryAttach_;
  Ntrace::Handler const & trace_;
  Mem::Descriptor inotify_;
  std::unique_ptr< Koi::DescriptorWatch > watch_;
  std::vector< Place > watched_;
  Koi::Timer timer_;
  Koi::Seconds delay_ = firstDelay;
  bool isAttached_ = false;
};

}  // namespace Quill
