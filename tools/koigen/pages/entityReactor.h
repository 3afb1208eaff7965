/// $doc$
$type$ $attr$() const { return $attr$_.ptr(); }
/// Builds it, of what its constructor takes; it listens. Raises RangeException "entity reactor is
/// already active".
template< class... Args >
$type$ $attr$Is( Args const &... args ) {
  return Koi::entityReactorIs( $attr$_, args... );
}
/// Ends it; so does leaving the tree.
$type$ $attr$Del() { return Koi::entityReactorDel( $attr$_ ); }
