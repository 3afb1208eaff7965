class $Tag$;
/// $doc$
$type$ $attr$( $key$ k ) const;
$collection$ const & $attr$() const { return $attr$_; }
using $Attr$Iterator = $collection$::Iterator;
$Attr$Iterator $attr$Iterator();
$mutators$
$type$ $attr$Del( $key$ k );
$type$ $attr$Del( $Attr$Iterator const & i );
void $attr$DelAll();
$notify$
