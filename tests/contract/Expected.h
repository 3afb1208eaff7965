// Expected.h: what the contract says of any value, worked out anew from its fields and their log
// bytes, sharing no code with the library; and the one table of where it does not hold. Tests only.
#pragma once

#include <compare>

#include "contract/Samples.h"

namespace Tests {

/// What a type may leave undone.
enum Rule {
  readFromText,    ///< its printed text is read back
  oneSpelling,     ///< no other text is read
  printsItsField,  ///< a single-field type's text is that of its field
  logIsKept        ///< what is read from a log is written as it was
};

/// The reason why the value, or one that stands in it, is exempt from the rule; null when none is.
char const * exemption( GenericIf const & v, Rule rule );

/// The hash as the rules make it from the fields; needs one that has a hash.
Koi::U32 expectedHash( GenericIf const & v );
/// Whether the rules give it one.
bool expectedHashable( KoiType const * type );

/// Field by field; unordered where a NaN decides.
std::partial_ordering expectedOrder( GenericIf const & a, GenericIf const & b );

/// The text of a structure, of these texts of its fields.
std::string structureText( KoiType const * type, std::vector< std::string > const & fields );

/// The text of a value.
std::string textOf( GenericIf const & v );

}  // namespace Tests
