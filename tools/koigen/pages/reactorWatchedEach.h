/// $doc$
$type$ $attr$( $key$ k ) const;
std::vector< $Key$ > $attr$Keys() const;
/// Watches that one under that key from now on; $null$.
void $attr$Is( $key$ k, $type$ const & entity );
void $attr$Del( $key$ k );
void $attr$DelAll();
