$type$ $Owner$::$attr$( $key$ k ) const { return $attr$_.value( k ); }
std::vector< $Key$ > $Owner$::$attr$Keys() const { return $attr$_.keys(); }
void $Owner$::$attr$Is( $key$ k, $type$ const & entity ) {
  $refusal$
  $attr$_.bind( k, entity );
}
void $Owner$::$attr$Del( $key$ k ) { $attr$_.remove( k ); }
void $Owner$::$attr$DelAll() { $attr$_.removeAll(); }
