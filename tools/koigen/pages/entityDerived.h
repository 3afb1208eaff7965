/// $doc$
$type$ $attr$() const { return $source$().$field$(); }
