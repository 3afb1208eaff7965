void $Owner$::$attr$Is( $argument$ v ) {
  koiStoreThenCheck( $attr$_, v, $bound$(), "$refusal$"$on$ );
}
