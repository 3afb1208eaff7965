class $Tag$;
/// $doc$
$type$ $attr$( $key$ k ) const { return $attr$_.value( k ); }
$collection$ const & $attr$() const { return $attr$_; }
using $Attr$Iterator = $collection$::Iterator;
$Attr$Iterator $attr$Iterator() { return $attr$_.koiIterator(); }
Koi::LinkQueueMetadata< $Key$ > $attr$Metadata() const { return $attr$_.metadata(); }
$Key$ $attr$Enq( $argument$ v ) {
  $refusal$
  return koiEnq( $attr$_, v$on$ );
}
$type$ $attr$Deq() { return koiDeq( $attr$_$on$ ); }
void $attr$Is( $key$ k, $argument$ v ) {
  $refusal$
  koiIs( $attr$_, k, v$on$ );
}
$type$ $attr$Del( $key$ k ) { return koiDel( $attr$_, k$on$ ); }
$type$ $attr$Del( $Attr$Iterator const & i ) { return koiDel( $attr$_, i$on$ ); }
void $attr$DelAll() { koiDelAll( $attr$_$on$ ); }
$notify$
