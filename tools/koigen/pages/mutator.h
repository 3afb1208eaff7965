void $attr$Is( $argument$ v ) { $cell$ = v; }
