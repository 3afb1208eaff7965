void $Owner$::$attr$Is( $key$ k, $argument$ v ) {
  $refusal$
  koiIs( $cell$, k, v$on$ );
}
