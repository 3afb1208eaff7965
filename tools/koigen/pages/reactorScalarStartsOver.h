/// $doc$
$virtual$$type$ $attr$() const { return $read$; }
/// Starts over, unless it is that already.
void $attr$Is( $argument$ v ) {
  if( Koi::same( $attr$_, v ) )
    return;
  koiIs( $attr$_, v );
  koiRunStart();
}
