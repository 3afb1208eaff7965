// SlotLayout.h: where the fields of a table's value lie in its slot. Needs resolved types.
//
// The fields lie one behind another in declaration order, a structure field by field. Numbers of
// one and two bytes are aligned to their size, what is wider to 4, a foreign value to the greatest
// power of 2 up to 4 that divides its size. The key, which is the first field, and the whole end on
// a multiple of 4.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "Model.h"

namespace Koigen {

struct SlotLayout {
  /// The largest value that may lie in a slot, in bytes.
  static constexpr std::uint32_t sizeMax = 4096;

  /// What is stored in one piece: a primitive, a wrapper, an enumeration or a foreign value.
  struct Piece {
    std::vector< std::string > path;  // the fields that lead to it: "key", "fid"
    TypeUse type;
    std::uint32_t offset = 0, size = 0;

    /// "key.fid", with another separator if one is given.
    std::string dotted( std::string const & between = "." ) const;
  };
  struct Fault {
    Place place;
    std::string text;
  };

  /// Pieces before this one are the key's.
  std::size_t numKeyPieces = 0;
  std::vector< Piece > pieces;
  std::uint32_t keySize = 0, valueSize = 0;
  std::vector< Fault > faults;  // then nothing else is to be believed
};

/// The layout of a structure.
SlotLayout slotLayoutOf( Declaration const & structure );

}  // namespace Koigen
