$type$ $Owner$::$attr$( $key$ k ) const { return $attr$_.value( k ); }
auto $Owner$::$attr$Iterator() -> $Attr$Iterator { return $attr$_.begin(); }
void $Owner$::$attr$Is( $type$ const & v ) { $attr$_.koiIs( v ); }
$type$ $Owner$::$attr$Del( $key$ k ) { return $attr$_.koiDel( k ); }
$type$ $Owner$::$attr$Del( $Attr$Iterator const & i ) { return i ? $attr$_.koiDel( i.key() ) : $type$(); }
void $Owner$::$attr$DelAll() { $attr$_.koiDelAll(); }
void $Owner$::new$Attr$( $type$ const & v ) { $attr$_.koiOpen( v ); }
void $Owner$::$attr$Commit( $type$ const & v ) { $attr$_.koiCommit( v ); }
void $Owner$::$attr$Notify( $key$ k ) { $attr$_.koiNotifyKey( k ); }
void $Owner$::$attr$NotifyCollection() { $attr$_.koiNotifyCollection(); }
