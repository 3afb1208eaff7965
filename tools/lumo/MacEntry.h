// MacEntry.h: the entries of a MAC address table, and how they are shown: as cells of a line, and
// as JSON. One thread uses an object.
#pragma once

#include <array>
#include <string>
#include <unordered_map>
#include <vector>

#include <Lumo/QuillBridging.h>

#include "Columns.h"

namespace Lumo {

using Koi::U32;
using Koi::U64;

/// One entry. Small: a million of them are sorted.
struct MacEntry {
  MacEntry() = default;
  explicit MacEntry( Quill::Bridging::QuillFdbStatus const & value );

  /// The six bytes of an address as one number.
  static U64 numberOf( Wirex::EthAddr const & address );
  /// Sorts as databases do, then as addresses do.
  static U64 placeOf( Bridging::HostKey const & key ) {
    return U64{ key.fid().value() } << 48 | numberOf( key.addr() );
  }

  U32 fid() const { return static_cast< U32 >( place >> 48 ); }
  Wirex::EthAddr address() const;

  friend bool operator==( MacEntry const &, MacEntry const & ) = default;

  U64 place = 0;
  Wirex::IntfId intf;
  Koi::Seconds lastMoveTime = 0;
  U32 moves = 0;
  Bridging::EntryType entryType{};
};

/// Makes the texts of entries, and remembers those of interfaces.
class MacTexts {
 public:
  enum { vlan, address, type, port, moves, lastMove, numColumns };
  static std::vector< Column > columns();
  /// Makes columns as wide as this entry needs; the last one is never too narrow. The entry's own
  /// ones begin at `first`.
  void fit( Columns & columns, MacEntry const & entry, std::size_t first = 0 );

  /// What stands in the columns, until the next call. A port or a move that there is not is "-".
  using Cells = std::array< std::string_view, numColumns >;
  Cells cells( MacEntry const & entry );

  /// {"fid": 1, "address": ...}: the names of Bridging::LearnedHost.
  void appendJson( std::string & out, MacEntry const & entry );

 private:
  struct Name {
    std::string text, json;
  };
  static std::string const & number( std::string & text, U32 number );
  std::string const & addressOf( MacEntry const & entry );
  Name const & nameOf( Wirex::IntfId intf );
  Name const & nameOf( Bridging::EntryType entryType );

  std::unordered_map< U64, Name > intfs_;
  std::unordered_map< U32, Name > types_;
  std::string fid_, address_, moves_, time_;
};

}  // namespace Lumo
