$type$ $Owner$::$attr$( $key$ k ) const { return $attr$_.value( k ); }
auto $Owner$::$attr$Iterator() -> $Attr$Iterator { return $attr$_.koiIterator(); }
$mutators$
$type$ $Owner$::$attr$Del( $key$ k ) { return koiDel( $cell$, k$on$ ); }
$type$ $Owner$::$attr$Del( $Attr$Iterator const & i ) { return koiDel( $cell$, i$on$ ); }
void $Owner$::$attr$DelAll() { koiDelAll( $cell$$on$ ); }
$notify$
