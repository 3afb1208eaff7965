/// $doc$
$type$ $attr$() const { return $attr$_.ptr(); }
/// The one that is there, or a new one.
$type$ $attr$Is( $parameters$ );
$type$ $attr$Del();
