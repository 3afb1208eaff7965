/// $doc$
$type$ $attr$() const;
