$type$ $Owner$::$attr$Is( $parameters$ ) {
  return koiChildIs( $attr$_$on$$arguments$ );
}
$type$ $Owner$::$attr$Del() { return koiChildDel( $attr$_$on$ ); }
