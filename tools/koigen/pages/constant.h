/// $doc$
static $constexpr$$type$ $attr$() { return $initial$; }
