/// How a $Type$ lies in a slot: $valueSize$ bytes, of which the key takes the first $keySize$.
///
///     $layout$
///
/// What is read is what lies there, in its range or not: a slot that was never used has a key of
/// zeros.
template<>
struct Quill::Record< $name$ > {
  using Value = ::$name$;
  using Key = $Key$;

  static constexpr char valueType[] = "$name$";
  static constexpr Koi::U32 keySize = $keySize$;
  static constexpr Koi::U32 valueSize = $valueSize$;

  /// Fills the words of a key.
  static void putKey( Key const & key, Koi::U32 * words ) {
    $clearKey$
    $putKey$
  }
  /// Fills the words of a slot.
  static void put( Value const & value, Koi::U32 * words ) {
    $clear$
    putKey( value.$key$(), words );
    $put$
  }
  /// Out of the words of a slot.
  static Key key( Koi::U32 const * words ) {
    return $readKey$;
  }
  static Value value( Koi::U32 const * words ) {
    return $readValue$;
  }
  /// Of the key in these words.
  static Koi::U32 hash( Koi::U32 const * words, Koi::U32 seed ) {
    return BucketHash< Key >::of( key( words ), seed );
  }
};
