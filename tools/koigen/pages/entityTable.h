/// $doc$
$type$ $attr$( $key$ k ) const;
$collection$ const & $attr$() const { return $attr$_; }
using $Attr$Iterator = $collection$::Iterator;
$Attr$Iterator $attr$Iterator();
/// In the process that writes the table: an entry that is there already is no change. Raises
/// Quill::TableFullException.
void $attr$Is( $type$ const & v );
$type$ $attr$Del( $key$ k );
$type$ $attr$Del( $Attr$Iterator const & i );
void $attr$DelAll();
/// Opens the value's entry for writing in place: until it is completed readers have it as it was.
void new$Attr$( $type$ const & v );
void $attr$Commit( $type$ const & v );
void $attr$Notify( $key$ k );
void $attr$NotifyCollection();
/// How this process takes part in the table.
KoiQuill::KoiQuillMapBase & $attr$Control() { return $attr$_; }
