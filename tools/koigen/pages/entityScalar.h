/// $doc$
$virtual$$type$ $attr$() const { return $read$; }
$note$
void $attr$Is( $argument$ v );
