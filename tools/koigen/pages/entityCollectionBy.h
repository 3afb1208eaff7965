class $Tag$;
/// $doc$
$type$ $attr$( $key$ k ) const { return $attr$_.value( k ); }
$collection$ const & $attr$() const { return $attr$_; }
void $attr$Is( $argument$ v ) { koiIs( $attr$_, v.$field$(), v$on$ ); }
$type$ $attr$Del( $key$ k ) { return koiDel( $attr$_, k$on$ ); }
void $attr$DelAll() { koiDelAll( $attr$_$on$ ); }
$notify$
