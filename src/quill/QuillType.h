// QuillType.h: how a process takes part in a table.
#pragma once

#include <functional>
#include <string>

#include <koi/Activity.h>
#include <mem/TableDir.h>
#include <mem/WriterKickSm.h>

namespace Quill {

using Koi::U32;
using Koi::U64;

enum class QuillType : U32 {
  writer = 0,    ///< the table's only writer
  shadow = 1,    ///< a local copy of keys and values
  reader = 2,    ///< reads the writer's files
  keyshadow = 3  ///< a local copy of the keys; values are read in the writer's files
};

/// "writer", "shadow", "reader", "keyshadow"; "QuillType(<n>)" for any other number.
KOI_PUBLIC std::string quillTypeName( QuillType type );

/// How a table is taken part in, beside the mode and the size.
struct QuillParameters {
  /// Null: the default activity. All of the table's work is done on its thread.
  Koi::Activity * activity = nullptr;
  Mem::RootPath root;

  // ---- of a writer
  std::string classType = "Quill::QuillMap";  ///< the name of the table's class
  bool fixedCapacity = false;                 ///< a new table has its full size at once
  bool shrinkSlots = true;
  bool pruneConquer = true;  ///< what no reader needs any more leaves the queue

  U32 readers = Mem::WriterKickSm::mostReadersOfAUser;  ///< the most of one user

  // ---- of a reader
  bool notifyFlush = false;  ///< when notifications begin, every key that is there is told

  /// Called once, when the collection is ready. Only without synchronous mode.
  std::function< void() > onReadyFn;
};

/// What a front end counts since it began.
struct ReaderCounters {
  U64 numRetries = 0;        ///< look-ups that met a change and began again
  U64 numNotifications = 0;  ///< slots that the queue named
  U64 numResyncs = 0;        ///< times it had to look at the whole table
  U64 numAttached = 0;       ///< times it was attached to files
};
struct WriterCounters {
  U64 numNotifications = 0;
  U64 numTombstones = 0;  ///< notifications that a later one took back
  U64 numKicks = 0;       ///< times a reader was woken
  U32 numReaders = 0;     ///< attached now
};

}  // namespace Quill
