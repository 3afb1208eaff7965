class $Tag$;
/// $doc$
$type$ $attr$( $key$ k ) const { return $attr$_.value( k ); }
$collection$ const & $attr$() const { return $attr$_; }
/// The one of that key, made when there is none.
$type$ $attr$Is( $key$ k$parameters$ ) {
  return koiChildIs( $attr$_$on$, k$arguments$ );
}
$type$ $attr$Del( $key$ k ) { return koiDel( $attr$_, k$on$ ); }
void $attr$DelAll() { koiDelAll( $attr$_$on$ ); }
$notify$
