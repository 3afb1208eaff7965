/// $doc$
$virtual$$type$ $attr$() const { return $read$; }
void $attr$Is( $argument$ v ) { koiIs( $attr$_, v$on$ ); }
