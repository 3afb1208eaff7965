class $Tag$;
/// $doc$
$type$ $attr$( $key$ k ) const { return $attr$_.value( k ); }
$collection$ const & $attr$() const { return $attr$_; }
using $Attr$Iterator = $collection$::Iterator;
$Attr$Iterator $attr$Iterator() { return $attr$_.koiIterator(); }
/// The one of that key, made when there is none.
$type$ $attr$Is( $key$ k$parameters$ ) {
  return koiChildIs( $attr$_$on$, k$arguments$ );
}
$type$ $attr$Del( $key$ k ) { return koiDel( $attr$_, k$on$ ); }
$type$ $attr$Del( $Attr$Iterator const & i ) { return koiDel( $attr$_, i$on$ ); }
void $attr$DelAll() { koiDelAll( $attr$_$on$ ); }
$notify$
