// ConquerTable.h: the two files of a table's notification queue: their header, and when it is
// believed. Written by the writer process alone.
//
//     0  magic          8  "QUILLCQR"
//     8  version        4  7
//    12  kindle         4  the generation the file was formatted under
//    16  minSeq         8  the lowest sequence that some reader may still need
//    24  numReaders     4
//    28  reserved       8
//    36  currentTable   4  which queue is current: 0 "conquer.1", 1 "conquer.2"
//    40  corralStart    8  the first sequence of entries that are being moved; 0: none are
//    48  corralEnd      8  the last one; 0: still being moved
//    56  notifications  8  Mem::VersionedRef: the capacity
//    64  currentPos     4  where the next notification goes
//    68  reserved       4
//    72  notifications     12 each: the sequence's low word, its high word, the slot
//
// A slot of 0xFFFFFFFF is a tombstone: that slot was notified again later.
#pragma once

#include <cstddef>
#include <string>

#include <mem/Words.h>
#include <ntrace/Ntrace.h>
#include <quill/Links.h>

namespace Quill {

/// Which of the two files.
enum ConquerTableId : U32 { conquer1 = 0, conquer2 = 1 };

struct KOI_PUBLIC ConquerTable {
  static constexpr char const * fileName[2] = { "conquer.1", "conquer.2" };
  static constexpr U32 minSeqAt = 16, numReadersAt = 24, currentTableAt = 36, corralStartAt = 40,
                       corralEndAt = 48, notificationsAt = 56, currentPosAt = 64,
                       firstNotificationAt = 72, notificationSize = 12;

  class Header;

  static constexpr U64 notificationAt( U32 pos ) {
    return firstNotificationAt + U64{ pos } * notificationSize;
  }
  static constexpr U64 fileSize( U32 capacity ) { return notificationAt( capacity ); }
};

class KOI_PUBLIC ConquerTable::Header {
 public:
  static constexpr U32 currentVersion = 7;

  Header() = default;
  Header( U32 kindle, U32 capacity );

  /// As SlotTable::Header::validate().
  bool validate( Ntrace::Handler const & handler, U64 fileSize, U32 kindle,
                 std::string & message ) const;
  void trace( Ntrace::Handler const & handler ) const;

  U32 magic[2]{};
  U32 version = 0;
  U32 kindle = 0;
  U64 minSeq = 0;
  U32 numReaders = 0;
  U32 reserved[2]{};
  U32 currentTable = conquer1;
  U64 corralStart = 0;
  U64 corralEnd = 0;
  Mem::VersionedRef notifications;
  U32 currentPos = 0;
  U32 reserved2 = 0;
};

static_assert( offsetof( ConquerTable::Header, minSeq ) == ConquerTable::minSeqAt );
static_assert( offsetof( ConquerTable::Header, currentTable ) == ConquerTable::currentTableAt );
static_assert( offsetof( ConquerTable::Header, corralStart ) == ConquerTable::corralStartAt );
static_assert( offsetof( ConquerTable::Header, corralEnd ) == ConquerTable::corralEndAt );
static_assert( offsetof( ConquerTable::Header, notifications ) == ConquerTable::notificationsAt );
static_assert( offsetof( ConquerTable::Header, currentPos ) == ConquerTable::currentPosAt );
static_assert( sizeof( ConquerTable::Header ) == ConquerTable::firstNotificationAt );

}  // namespace Quill
