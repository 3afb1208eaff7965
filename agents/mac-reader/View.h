// View.h: the MAC table of another process as this one sees it, in one of the ways to do so, and
// how many entries it has seen go. One thread, that of the activity.
#pragma once

#include <memory>
#include <string>

#include <Lumo/FdbStatusSm.h>
#include <koi/Activity.h>
#include <mem/TableDir.h>

namespace MacReader {

/// How the table is seen.
enum class Mode {
  direct,     ///< its files are read, twenty times a second
  keyshadow,  ///< a copy of the keys is kept, and told of changes
  shadow,     ///< so is one of the entries
  status      ///< a bridge's status is kept equal by ReaderFdbStatusSm
};

class View {
 public:
  virtual ~View() = default;

  /// The hosts as they are seen now. Raises Rova::CorruptionDetectedException and
  /// Quill::ReaderStarvedException.
  virtual Koi::Ptr< Bridging::Status > hosts() = 0;
  /// How many entries were seen to go.
  Koi::U64 numDeletions() const { return numDeletions_; }

 protected:
  Koi::U64 numDeletions_ = 0;
};

/// Sees the table of that name as soon as there is one. Raises ArgumentException "<name> is no name
/// of a table".
std::unique_ptr< View > view( Mode mode, Koi::Activity * activity, Mem::RootPath const & root,
                              std::string const & name );

}  // namespace MacReader
