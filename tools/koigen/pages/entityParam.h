/// $doc$
$type$ $attr$() const { return _$read$; }
