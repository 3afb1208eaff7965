void $Owner$::$attr$Is( $argument$ v ) {
  $refusal$
  koiIs( $attr$_, v$on$ );
}
