void $Owner$::$attr$Is( $type$ const & entity ) { koiRebind( $attr$_, entity ); }
