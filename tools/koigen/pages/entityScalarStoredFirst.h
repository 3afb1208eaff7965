/// $doc$
$type$ $attr$() const { return $attr$_; }
/// Keeps what it refuses.
void $attr$Is( $argument$ v ) {
  koiStoreThenCheck( $attr$_, v, $bound$(), "$refusal$"$on$ );
}
