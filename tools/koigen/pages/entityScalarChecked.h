/// $doc$
$type$ $attr$() const { return $read$; }
void $attr$Is( $argument$ v ) {
  $refusal$
  koiIs( $attr$_, v$on$ );
}
