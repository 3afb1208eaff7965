// EnumType.h: the descriptor of an enumeration: its names and numbers. Static data; any thread.
//
// A number without a name is kept, for a newer peer may know it: its text is the number.
#pragma once

#include <span>

#include <koi/KoiType.h>
#include <koi/Text.h>

namespace Koi {

struct EnumEntry {
  char const * name;  ///< the enumerator as declared
  U32 value;
};

struct KOI_PUBLIC EnumType {
  char const * name;  ///< fully qualified, "Bridging::NameOrId"
  std::span< EnumEntry const > entries;
  U32 width = 4;  ///< in bytes

  /// The enumerator's name; the number in decimal when none has it.
  String8 stringValue( U32 value ) const;
  /// The number of an enumerator. Raises ParseException "<type> has no enumerator '<name>'".
  U32 value( std::string_view enumerator ) const;
  /// Reads an enumerator's name, or the number of none. Raises ParseException "an enumerator of
  /// <type> was expected at '<rest>'".
  U32 sequenceToValue( String8::IteratorConst & it, String8::IteratorConst const & end ) const;

 private:
  EnumEntry const * entry( U32 value ) const;
  EnumEntry const * entry( std::string_view enumerator ) const;
};

}  // namespace Koi
