/// $doc$
$virtual$$type$ $attr$() const { return $read$; }
/// Does what follows from it, unless it is that already.
void $attr$Is( $argument$ v ) {
  if( Koi::same( $attr$_, v ) )
    return;
  koiIs( $attr$_, v );
  $then$();
}
