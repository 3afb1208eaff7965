void $Owner$::$attr$Is( $argument$ v ) { koiIs( $cell$, v.$field$(), v$on$ ); }
