/// $doc$
$type$ $attr$( $key$ k ) const { return $attr$_.value( k ); }
std::vector< $Key$ > $attr$Keys() const { return $attr$_.keys(); }
/// Watches that one under that key from now on; null watches nothing.
void $attr$Is( $key$ k, $type$ const & entity ) { $attr$_.bind( k, entity ); }
void $attr$Del( $key$ k ) { $attr$_.remove( k ); }
void $attr$DelAll() { $attr$_.removeAll(); }
