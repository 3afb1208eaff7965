/// $doc$
$type$ $attr$() const { return $cell$; }
$mutator$
