void $Owner$::$attr$Notify( $key$ k ) { koiNotify( $on$, k ); }
