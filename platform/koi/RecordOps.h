// RecordOps.h: the words of a table's slot, for who knows the type of the table's values by its
// type node alone. Any thread, but for what Ptr.h says of wrapped values.
#pragma once

#include <koi/GenericIf.h>

namespace Koi {

/// What a type node says of values that lie in slots. The key comes first, and is the first field.
struct RecordOps {
  U32 keySize;    ///< in bytes, a multiple of 4
  U32 valueSize;  ///< in bytes, a multiple of 4; the key's are among them

  /// The hash by which the table files the key in these words.
  U32 ( *hash )( U32 const * words, U32 seed );
  /// What lies in the words, in its range or not.
  GenericIfPtr ( *value )( U32 const * words );
  GenericIfPtr ( *key )( U32 const * words );
  /// Fills all of the words. Raises ArgumentException for a value or a key of another type.
  void ( *put )( GenericIf const & value, U32 * words );
  void ( *putKey )( GenericIf const & key, U32 * words );
};

}  // namespace Koi
