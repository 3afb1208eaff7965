void $Owner$::$attr$Is( $type$ const & entity ) { koiRebind( $attr$_, entity ); }
void $Owner$::$attr$Del() { $attr$Is( nullptr ); }
