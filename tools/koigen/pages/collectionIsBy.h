void $attr$Is( $argument$ v );
