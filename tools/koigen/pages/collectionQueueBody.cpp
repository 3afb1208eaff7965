$key$ $Owner$::$attr$Enq( $argument$ v ) {
  $refusal$
  return koiEnq( $cell$, v$on$ );
}
$type$ $Owner$::$attr$Deq() { return koiDeq( $cell$$on$ ); }
