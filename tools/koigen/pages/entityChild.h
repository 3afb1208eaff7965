/// $doc$
$type$ $attr$() const { return $attr$_.ptr(); }
/// The one that is there, or a new one.
$type$ $attr$Is( $parameters$ ) {
  return koiChildIs( $attr$_$on$$arguments$ );
}
$type$ $attr$Del() { return koiChildDel( $attr$_$on$ ); }
