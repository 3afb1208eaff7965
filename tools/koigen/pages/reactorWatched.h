/// $doc$
$type$ $attr$() const { return $attr$_.ptr(); }
/// Watches that one from now on, and starts over; null watches nothing.
void $attr$Is( $type$ const & entity );
/// Watches nothing from now on.
void $attr$Del();
