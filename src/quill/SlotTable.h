// SlotTable.h: the slot file of a table: its header, its slots, and the rules by which either is
// believed. The writer process formats and changes the file; readers map it read-only and never
// wait.
//
//     0  magic          8  "QUILLSLT"
//     8  version        4  10
//    12  kindle         4  the generation the file was formatted under
//    16  valueType     64  the value's type name, ended by NUL
//    80  classType     64  the name of the table's class, ended by NUL
//   144  valueSize      4  bytes
//   148  slotSize       4  bytes: 16 and the value, a multiple of 8
//   152  maxSlots       4
//   156  seed           4  of the bucket hash
//   160  hash           4  of the fields from valueType to seed
//   164  occupiedSlots  4
//   168  freeSlots      4  head of the free list; 0xFFFFFFFF: empty
//   172  reserved       4
//   176  numSlots       8  Mem::VersionedRef
//   184  lookaside         one slot, and never less than 48 bytes
//
// A slot:
//     0  link           8  Mem::VersionedRef: the counter grows by 4
//     8  flags          4  OCCUPIED, LOOKASIDE
//    12  sequence       4  odd while the value is rewritten
//    16  value             its key first
//
// The lookaside slot's link names the slot that is being changed, 0xFFFFFFFF when none is; while
// that one's sequence is odd the lookaside slot holds its value as it was. Its own sequence is 1 +
// the slot that an entry leaves which is moving into the named one, else 0.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>

#include <mem/Words.h>
#include <ntrace/Ntrace.h>
#include <quill/Links.h>

namespace Quill {

struct KOI_PUBLIC SlotTable {
  static constexpr char fileName[] = "slots";

  class Header;
  /// What a table is formatted as; kept in its header and checked by whoever opens it.
  struct Layout {
    std::string valueType, classType;
    U32 valueSize = 0;
    U32 maxSlots = 0;
    U32 seed = 0;

    U32 slotSize() const { return slotSizeFor( valueSize ); }
  };

  enum Flags : U32 { occupied = 1, lookaside = 2 };

  static constexpr U32 linkAt = 0, flagsAt = 8, sequenceAt = 12, valueAt = 16;
  static constexpr U32 occupiedSlotsAt = 164, freeSlotsAt = 168, numSlotsAt = 176,
                       lookasideAt = 184;

  static constexpr U32 slotSizeFor( U32 valueSize ) { return ( valueAt + valueSize + 7 ) & ~7u; }
  /// Where slot 0 begins.
  static constexpr U32 firstSlotAt( U32 slotSize ) {
    return lookasideAt + std::max( 48u, slotSize );
  }
  static constexpr U64 fileSize( U32 slotSize, U32 numSlots ) {
    return firstSlotAt( slotSize ) + U64{ slotSize } * numSlots;
  }
};

class KOI_PUBLIC SlotTable::Header {
 public:
  static constexpr U32 currentVersion = 10;

  Header() = default;
  /// As it is formatted: no entry, an empty free list. Raises Rova::InvalidInitializeException
  /// "SlotTable::Header() value typename <name> exceeds 64 characters", and for the other name
  /// "SlotTable::Header() class typename: <name> exceeds 64 characters".
  Header( U32 kindle, Layout const & layout, U32 numSlots );

  /// Whether the file may be believed; if not, `message` says the first reason, and so does a trace
  /// of level 0. A `kindle` of 0 is not compared.
  bool validate( Ntrace::Handler const & handler, U64 fileSize, U32 kindle,
                 std::string & message ) const;
  /// Whether the file holds such a table; if not, `message` says in what it differs.
  bool isOf( Layout const & layout, std::string & message ) const;
  void trace( Ntrace::Handler const & handler ) const;

  U32 layoutHash() const;
  std::string valueTypeName() const { return { valueType, strnlen( valueType ) }; }
  std::string classTypeName() const { return { classType, strnlen( classType ) }; }

  U32 magic[2]{};
  U32 version = 0;
  U32 kindle = 0;
  char valueType[64]{};
  char classType[64]{};
  U32 valueSize = 0;
  U32 slotSize = 0;
  U32 maxSlots = 0;
  U32 seed = 0;
  U32 hash = 0;
  U32 occupiedSlots = 0;
  U32 freeSlots = noIndex;
  U32 reserved = 0;
  Mem::VersionedRef numSlots;

 private:
  static std::size_t strnlen( char const ( &name )[64] ) {
    return static_cast< std::size_t >( std::find( name, name + 64, '\0' ) - name );
  }
};

static_assert( offsetof( SlotTable::Header, valueType ) == 16 );
static_assert( offsetof( SlotTable::Header, classType ) == 80 );
static_assert( offsetof( SlotTable::Header, valueSize ) == 144 );
static_assert( offsetof( SlotTable::Header, seed ) == 156 );
static_assert( offsetof( SlotTable::Header, hash ) == 160 );
static_assert( offsetof( SlotTable::Header, occupiedSlots ) == SlotTable::occupiedSlotsAt );
static_assert( offsetof( SlotTable::Header, freeSlots ) == SlotTable::freeSlotsAt );
static_assert( offsetof( SlotTable::Header, numSlots ) == SlotTable::numSlotsAt );
static_assert( sizeof( SlotTable::Header ) == SlotTable::lookasideAt );
static_assert( SlotTable::firstSlotAt( 48 ) == 232 && SlotTable::firstSlotAt( 96 ) == 280 );

}  // namespace Quill
