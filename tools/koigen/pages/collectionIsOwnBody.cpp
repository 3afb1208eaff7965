$type$ $Owner$::$attr$Is( $key$ k$parameters$ ) {
  return koiChildIs( $cell$$on$, k$arguments$ );
}
